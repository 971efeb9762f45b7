// An empty library with the dependencies of the real one; load_bench subtracts what it costs.

extern "C" int zroBenchEmpty();

extern "C" int zroBenchEmpty() {
    return 0;
}
