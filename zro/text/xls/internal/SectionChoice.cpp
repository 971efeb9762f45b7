#include "zro/text/xls/internal/SectionChoice.h"

#include <algorithm>
#include <cmath>

namespace ZroCommon::internal {
namespace {

constexpr int kTextKind = 3;

bool holds(const FMT& section, double number) {
    const double right = section.conditionValue;
    switch (section.condition) {
    case 1: return number >= right;
    case 2: return number <= right;
    case 3: return number != right;
    case 4: return number < right;
    case 5: return number > right;
    case 6: return number == right;
    default: return false;
    }
}

// Whether the section is for the number: by its condition or, without one, by its place.
bool takes(const FMT& section, double number, bool byPlace) {
    return section.condition != 0 ? holds(section, number) : byPlace;
}

int chooseOfTwo(double number, const FMT& first, const FMT& second) {
    if (takes(first, number, number >= 0)) {
        return 0;
    }
    if (takes(second, number, true)) {
        return 1;
    }
    return first.condition != 0 ? kShowNothing : kShowAsGeneral;
}

// A condition makes the third section the one for everything else.
int chooseOfThree(double number, const FMT& first, const FMT& second) {
    if (takes(first, number, number > 0)) {
        return 0;
    }
    if (takes(second, number, number < 0)) {
        return 1;
    }
    const bool isForTheRest = first.condition != 0 || second.condition != 0 || number == 0;
    return isForTheRest ? 2 : kShowAsGeneral;
}

}  // namespace

std::optional<std::size_t> chooseTextSection(const FMT2& format) {
    for (std::size_t index = 0; index < format.sectionCount; ++index) {
        if (format.section[index].kind == kTextKind) {
            return index;
        }
    }
    return std::nullopt;
}

int chooseSection(double number, const FMT2& format) {
    const std::size_t numeric = chooseTextSection(format).value_or(format.sectionCount);
    if (std::isnan(number)) {
        return kShowAsGeneral;
    }
    const FMT& first = format.section[0];
    const FMT& second = format.section[1];
    switch (numeric) {
    case 0: return kShowAsGeneral;
    case 1: return takes(first, number, true) ? 0 : kShowNothing;
    case 2: return chooseOfTwo(number, first, second);
    default: return chooseOfThree(number, first, second);
    }
}

bool showsOwnSign(const FMT& section) {
    if (section.sectionIndex == 1) {
        return section.condition == 0;
    }
    // On purpose: "[<0]" alone drops the minus; "[<=0]" and "[<-1]" keep it.
    constexpr int kLess = 4;
    return section.sectionIndex == 0 && section.condition == kLess && section.conditionValue == 0;
}

}  // namespace ZroCommon::internal
