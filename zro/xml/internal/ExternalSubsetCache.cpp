#include "zro/xml/internal/ExternalSubsetCache.h"

#include <map>
#include <mutex>
#include <utility>

#include "zro/vocabulary/ZRNameTable.h"
#include "zro/xml/internal/XmlParserImpl.h"

namespace ZroCommon::internal {
namespace {

using Table = std::shared_ptr<const EntityTable>;

struct Cache {
    std::mutex lock;
    bool holdsNames = false;  // the tables are by numbers of the shared name table
    std::map<UnicodeString, Table> tables;
};

// Never destroyed, since parsers of other static objects may still run at the end of the process.
Cache& cache() {
    static auto* const s_cache = new Cache;
    return *s_cache;
}

Table findCached(const UnicodeString& uri) {
    const std::lock_guard guard(cache().lock);
    const auto found = cache().tables.find(uri);
    return found == cache().tables.end() ? nullptr : found->second;
}

Table scan(const UnicodeString& uri, const UnicodeString& baseUri, const ZRLimits& limits) {
    const ZRPtr<XmlParserImpl> parser(new XmlParserImpl);
    parser->setLimits(limits);
    static_cast<ZRXmlParser&>(*parser).setInput(uri, UnicodeString(), baseUri);
    parser->scanExternalSubset();
    return std::make_shared<const EntityTable>(parser->entities());
}

}  // namespace

Table externalSubset(const UnicodeString& uri, const UnicodeString& baseUri,
                     const ZRLimits& limits) {
    if (Table table = findCached(uri)) {
        return table;
    }
    Table table = scan(uri, baseUri, limits);
    const std::lock_guard guard(cache().lock);
    if (!cache().holdsNames) {
        ZRNameTable::addRefSharedNameTable();
        cache().holdsNames = true;
    }
    return cache().tables.emplace(uri, std::move(table)).first->second;
}

void forgetExternalSubsets() {
    const std::lock_guard guard(cache().lock);
    cache().tables.clear();
    if (std::exchange(cache().holdsNames, false)) {
        ZRNameTable::releaseSharedNameTable();
    }
}

}  // namespace ZroCommon::internal
