#include "zro/containers/ole/OlePropertySet.h"

#include "zro/containers/ole/OleSummaryInformation.h"
#include "zro/values/ZRValue.h"

namespace ZroCommon {

void OlePropertySet::init(OleCompFile* file) {
    OleSummaryInformation summary;
    if (summary.initSummaryInformation(file) <= 0) {
        return;
    }
    UnicodeString* const texts[] = {&m_title, &m_subject, &m_author, &m_keywords};
    unsigned long id = 2;
    for (UnicodeString* text : texts) {
        ZRValue value;
        // On purpose: what the file lacks keeps the text of the file before.
        if (summary.getProperty(id++, value) > 0) {
            *text = value.getStringValue();
        }
    }
}

}  // namespace ZroCommon
