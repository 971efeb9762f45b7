#include "bench/peers/Contenders.h"

namespace ZroCommon::bench {

Tally& Tally::operator+=(const Tally& other) {
    elements += other.elements;
    attributes += other.attributes;
    units += other.units;
    return *this;
}

Contenders allContenders() {
    Contenders contenders;
    addZro(contenders);
#ifdef ZRO_BENCH_QT
    addQt(contenders);
#endif
#ifdef ZRO_BENCH_LIBXML
    addLibxml(contenders);
#endif
#ifdef ZRO_BENCH_EXPAT
    addExpat(contenders);
#endif
#ifdef ZRO_BENCH_XERCES
    addXerces(contenders);
#endif
#ifdef ZRO_BENCH_PUGIXML
    addPugixml(contenders);
#endif
    return contenders;
}

}  // namespace ZroCommon::bench
