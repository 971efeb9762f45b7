#include "zro/text/xls/XlsFormatString.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string_view>

#include "zro/text/xls/internal/CellPlace.h"
#include "zro/text/xls/internal/CellText.h"
#include "zro/text/xls/internal/DateWalker.h"
#include "zro/text/xls/internal/FormatCache.h"
#include "zro/text/xls/internal/FormatCompiler.h"
#include "zro/text/xls/internal/GeneralNumber.h"
#include "zro/text/xls/internal/NumberWalker.h"
#include "zro/text/xls/internal/SectionChoice.h"

namespace ZroCommon {

using internal::CellPlace;
using internal::CellText;
using internal::WidthTest;

namespace {

constexpr short kFits = 0;
constexpr short kTooWide = -3;
constexpr unsigned char kDateKind = 2;
constexpr unsigned short kCurrentVersion = 0x800;

CellPlace placeIn(const XlsFormatString& formats, int width, const WidthTest& test) {
    return {.width = width,
            .limit = test.callback != nullptr ? std::numeric_limits<int>::max() : width,
            .isFilled = formats.fill,
            .isSystem1904 = formats.isDate1904(),
            .isCurrentVersion = formats.GetBookVersion() == kCurrentVersion};
}

unsigned char signOf(double number) {
    return number < 0 ? 2 : number > 0 ? 1 : 0;
}

// The end of a walk. A callback may format other cells, so no section is read behind it.
short finish(CellText& text, UnicodeString& result, const CellPlace& place, const WidthTest& test) {
    text.writeTo(result);
    if (test.finds(result)) {
        return kTooWide;
    }
    text.fillUp(result, place.width);
    return kFits;
}

short writeNumber(internal::NumberWalker& walker, double number, CellText& text,
                  UnicodeString& result, const CellPlace& place, const WidthTest& test) {
    if (!walker.walk(number)) {
        text.writeTo(result);
        return kTooWide;
    }
    return finish(text, result, place, test);
}

short writeDate(const FMT& section, double serial, UnicodeString& result, const CellPlace& place,
                const WidthTest& test) {
    using Outcome = internal::DateWalker::Outcome;
    const bool isBeforeFirstDay = serial < 0 && !place.isSystem1904;
    if (!std::isfinite(serial) || isBeforeFirstDay) {
        result = internal::overflowText(place.width);
        return kTooWide;
    }
    CellText text;
    switch (internal::DateWalker(section, place, text).walk(serial)) {
    case Outcome::Written: return finish(text, result, place, test);
    case Outcome::TooWide: text.writeTo(result); return kTooWide;
    case Outcome::NoSuchDate: break;
    }
    result = internal::overflowText(place.width);
    return kTooWide;
}

void writeGeneral(double number, int width, UnicodeString& result) {
    internal::DecimalString digits;
    if (!internal::writeGeneral(number, width, digits)) {
        result = internal::overflowText(width);
        return;
    }
    CellText text;
    text.append(digits.text());
    text.writeTo(result);
}

// A section for text: its literals, and the cell's text for each "@".
void writeText(const FMT& section, const UnicodeString& content, bool isFilled, CellText& text) {
    std::u16string_view format(section.compiled.getBuffer(),
                               static_cast<std::size_t>(section.compiled.length()));
    const std::u16string_view cell(content.getBuffer(),
                                   static_cast<std::size_t>(std::max(content.length(), 0)));
    while (!format.empty()) {
        const char16_t c = format.front();
        format.remove_prefix(1);
        if (c == u'"') {
            const std::size_t end = std::min(format.find(u'"'), format.size());
            text.append(format.substr(0, end));
            format.remove_prefix(std::min(end + 1, format.size()));
        } else if (c == u'*' && !format.empty()) {
            if (isFilled) {
                text.fillHere(format.front());
            } else {
                text.append(format.front());
            }
            format.remove_prefix(1);
        } else if (c == u'@' || c == u'G') {
            text.append(cell);
        }
    }
}

}  // namespace

UnicodeString XlsFormatString::FormatString(const UnicodeString& format, double number) {
    constexpr int kColumns = 100;
    fill = false;
    CELLV cell;
    cell.type = 1;
    cell.number = number;
    UnicodeString result;
    fmtnum(&cell, ZRValue(kColumns), format, result, nullptr, nullptr, ZRLength(), 0, 0, nullptr);
    return result;
}

short XlsFormatString::fmtget(const UnicodeString& format, FMT2* result) const {
    return fmtget(format, result, nullptr);
}

short XlsFormatString::fmtget(const UnicodeString& format, FMT2* result,
                              XlsFormatFault* fault) const {
    const std::u16string_view text(format.getBuffer(),
                                   static_cast<std::size_t>(std::max(format.length(), 0)));
    internal::FormatCompiler compiler(text, GetBookVersion() == kCurrentVersion, *result);
    const bool isValid = compiler.compile();
    if (fault != nullptr) {
        *fault = compiler.fault();
    }
    return isValid ? 1 : 0;
}

// NOLINTNEXTLINE(readability-function-size): the parameters are given
short XlsFormatString::fmtnum(CELLV* cell, const ZRValue& width, const UnicodeString& format,
                              UnicodeString& result, unsigned char* color, XlsWidthTest callback,
                              ZRLength length, int a, int b, void* user) const {
    const WidthTest test{callback, length, a, b, user};
    const CellPlace place = placeIn(*this, width.getIntegerValue(), test);
    const FMT2* const compiled = internal::compiledFormat(format, place.isCurrentVersion);
    if (compiled == nullptr) {
        return kFits;
    }
    double number = cell->number;
    const int index = internal::chooseSection(number, *compiled);
    if (index == internal::kShowNothing) {
        result.remove();
        return kFits;
    }
    if (index == internal::kShowAsGeneral) {
        writeGeneral(number, place.width, result);
        return kFits;
    }
    const FMT& section = compiled->section[static_cast<std::size_t>(index)];
    if (color != nullptr) {
        *color = section.colorIndex;
    }
    short outcome = kFits;
    if (section.kind == kDateKind) {
        outcome = writeDate(section, number, result, place, test);
    } else {
        const unsigned char sign = signOf(number);
        if (number < 0 && internal::showsOwnSign(section)) {
            number = -number;
        }
        CellText text;
        internal::NumberWalker walker(section, place, sign, text);
        outcome = writeNumber(walker, number, text, result, place, test);
    }
    if (outcome < 0) {
        result = internal::overflowText(place.width);
    }
    return outcome;
}

short XlsFormatString::fmtstr(CELLV* cell, const ZRValue& width, const UnicodeString& format,
                              UnicodeString& result, unsigned char* color) const {
    const bool isCurrentVersion = GetBookVersion() == kCurrentVersion;
    const FMT2* const compiled = internal::compiledFormat(format, isCurrentVersion);
    if (compiled == nullptr) {
        return 0;
    }
    const std::optional<std::size_t> index = internal::chooseTextSection(*compiled);
    if (color != nullptr) {
        *color = compiled->section[index.value_or(0)].colorIndex;
    }
    if (!index) {
        result = cell->text;
        return 0;
    }
    CellText text;
    writeText(compiled->section[*index], cell->text, fill, text);
    text.writeTo(result);
    text.fillUp(result, width.getIntegerValue());
    return 1;
}

// NOLINTNEXTLINE(readability-function-size): the parameters are given
short XlsFormatString::fmtnumD(FMT* section, double serial, const ZRValue& width,
                               UnicodeString& result, XlsWidthTest callback, ZRLength length, int a,
                               int b, void* user) const {
    const WidthTest test{callback, length, a, b, user};
    return writeDate(*section, serial, result, placeIn(*this, width.getIntegerValue(), test), test);
}

// NOLINTNEXTLINE(readability-function-size): the parameters are given
short XlsFormatString::fmtnumN(FMT* section, double number, const ZRValue& width,
                               UnicodeString& result, XlsWidthTest callback, ZRLength length, int a,
                               int b, void* user) const {
    const WidthTest test{callback, length, a, b, user};
    const CellPlace place = placeIn(*this, width.getIntegerValue(), test);
    CellText text;
    internal::NumberWalker walker(*section, place, section->valueSign, text);
    const short outcome = writeNumber(walker, number, text, result, place, test);
    section->signState = walker.signState();
    section->exponentSign = walker.exponentSign();
    return outcome;
}

}  // namespace ZroCommon
