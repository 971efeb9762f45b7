// A shared library of the same dependencies that does nothing: what loading is compared with.
