#include "zro/Library.h"

#include <unicode/uclean.h>

#include "zro/dom/internal/NodeSlab.h"
#include "zro/text/ZRLang.h"
#include "zro/text/ZRUtil.h"
#include "zro/vocabulary/MathMLName.h"
#include "zro/vocabulary/SVGName.h"
#include "zro/vocabulary/ZRNameTable.h"
#include "zro/xml/internal/ExternalSubsetCache.h"
#include "zro/xml/internal/ParserParts.h"

namespace ZroCommon {

int getLibVersion() {
    return 403;
}

void cleanup() {
    internal::forgetExternalSubsets();  // they hold names of the table
    internal::forgetParserParts();
    internal::NodeSlab::trim();
    ZRNameTable::cleanup();
    ZRUtil::cleanup();
    ZRLang::cleanup();
    MathMLName::cleanup();
    SVGName::cleanup();
    u_cleanup();
}

}  // namespace ZroCommon
