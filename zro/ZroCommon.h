#pragma once

/// \file
/// Everything the library offers, in one include.

#include "zro/foundation/Export.h"
#include "zro/foundation/Text.h"
#include "zro/foundation/ZRCStr.h"
#include "zro/foundation/ZREmptyString.h"
#include "zro/foundation/ZRError.h"
#include "zro/foundation/ZRLock.h"
#include "zro/foundation/ZRMessage.h"
#include "zro/foundation/ZRObjectBase.h"
#include "zro/foundation/ZRPtr.h"
#include "zro/foundation/ZRRCObject.h"
#include "zro/vocabulary/ZRName.h"
#include "zro/vocabulary/ZRNameTable.h"
#include "zro/xml/ZRLimits.h"
#include "zro/xml/ZRXmlParser.h"
