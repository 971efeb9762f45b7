// Any sequence of operations on a handful of values, and the laws that hold between them.
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>
#include <vector>

#include "zro/foundation/internal/PrintReal.h"
#include "zro/values/ZRNamedValueMap.h"

#include "fuzz/Input.h"

namespace {

using ZroCommon::fuzzing::require;
using namespace ZroCommon;  // NOLINT(google-build-using-namespace)

// Hands out the input piece by piece; zeros when it is used up.
class Bytes {
public:
    explicit Bytes(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

    bool isEmpty() const { return m_bytes.empty(); }
    unsigned next() {
        if (m_bytes.empty()) {
            return 0;
        }
        const unsigned byte = m_bytes.front();
        m_bytes = m_bytes.subspan(1);
        return byte;
    }
    std::uint32_t nextWord() {
        std::uint32_t word = next();
        for (const unsigned shift : {8U, 16U, 24U}) {
            word |= next() << shift;
        }
        return word;
    }

private:
    std::span<const std::uint8_t> m_bytes;
};

ZRName nameOf(unsigned byte) {
    constexpr std::array kNames = {ZRN_EMPTY, ZRN_length, ZRN_minimum, ZRN_true};
    return kNames[byte % kNames.size()];
}

// Without a locale, and else as C does.
void checkPrint(float number) {
    std::array<char, 32> wanted{};
    std::snprintf(wanted.data(), wanted.size(), "%g", static_cast<double>(number));
    UnicodeString printed;
    require(number != number || internal::appendReal(printed, number) == wanted.data());
}

class Machine {
public:
    explicit Machine(std::span<const std::uint8_t> bytes) : m_input(bytes) {}
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    // Maps may hold each other in circles, which nothing frees but taking the items out.
    ~Machine() {
        for (const auto& map : m_maps) {
            while (map->getCount() > 0) {
                map->removeNamedItem(map->item(0).getName());
            }
        }
    }

    void run() {
        while (!m_input.isEmpty()) {
            const unsigned operation = m_input.next();
            ZRValue& left = m_values[m_input.next() % m_values.size()];
            const ZRValue& right = m_values[m_input.next() % m_values.size()];
            apply(operation % 20, left, right);
            if (ZRNamedValueMap* map = left.getNamedValueMap()) {
                m_maps.emplace_back(map);
            }
            check(left, right);
        }
    }

private:
    void apply(unsigned operation, ZRValue& left, const ZRValue& right) {
        switch (operation) {
        case 0: left = fresh(); return;
        case 1: left = right; return;
        case 2: left += right; return;
        case 3: left -= right; return;
        case 4: left *= right; return;
        case 5: left /= right; return;
        case 6: remainder(left, right); return;
        case 7: left = -right; return;
        case 8: left = right.abs(); return;
        case 9: left = right.floor(); return;
        case 10: left = right.ceiling(); return;
        case 11: left = right.round(); return;
        case 12: left.normalizeUnit(); return;
        case 13: setUnchecked(left); return;
        case 14: left.makeCompound(); return;
        case 15: setItem(left, right); return;
        case 16: left = right.getNamedItem(nameOf(m_input.next())); return;
        case 17: left.removeNamedItem(nameOf(m_input.next())); return;
        case 18: left = ZRValue(right.toString()); return;
        default: cloneMap(left, right); return;
        }
    }

    ZRValue fresh() {
        const unsigned kind = m_input.next();
        const auto unit = static_cast<ZRValueUnitType>(m_input.next());
        switch (kind % 5) {
        case 0: return ZRValue(std::bit_cast<float>(m_input.nextWord()), unit);
        case 1: return ZRValue(nameOf(m_input.next()));
        case 2: return {UnicodeString(static_cast<UChar32>(m_input.next())), unit};
        case 3: return {};
        default: break;
        }
        ZRValue integer(std::bit_cast<int>(m_input.nextWord()));
        integer.setUnitType(unit);
        return integer;
    }

    // The remainder of an integer by 0, and of the lowest by -1, is the caller's to prevent.
    static void remainder(ZRValue& left, const ZRValue& right) {
        if (right.isReal() || right.getIntegerValue() > 0) {
            left %= right;
        }
    }

    void setUnchecked(ZRValue& value) {
        if (!value.isRCObject()) {
            value.setValueType(static_cast<ZRValueType>(m_input.next()));
        }
        value.setUnitType(static_cast<ZRValueUnitType>(m_input.next()));
    }

    // Few maps in maps: shared ones make texts that grow as a power.
    void setItem(ZRValue& left, const ZRValue& right) {
        if (!right.isCompound() || ++m_nested < 9) {
            left.setNamedItem(nameOf(m_input.next()), right);
        }
    }

    static void cloneMap(ZRValue& left, const ZRValue& right) {
        if (const ZRNamedValueMap* map = right.getNamedValueMap()) {
            left = ZRValue(map->clone().get());
        }
    }

    static void check(const ZRValue& left, const ZRValue& right) {
        require((left == right) == (right == left));
        require(!(left < right && right < left));
        require((left <= right) == !(right < left));
        const ZRValue copy(left);  // NOLINT(performance-unnecessary-copy-initialization)
        require(copy == left
                || left.getRealValue(ZRValueUnitNone) != left.getRealValue(ZRValueUnitNone));
        require((left + right).isNull() == (right + left).isNull());
        require(left.toString() == copy.toString());
        require(left.isAbsoluteLength() || left.isCompound() || left.getLengthValue().isAuto());
        require(ZRLength(left).getPixelCount(96) == left.getLengthValue().getPixelCount(96));
        left.getIntegerValue();
    }

    Bytes m_input;
    std::array<ZRValue, 6> m_values;
    std::vector<ZRPtr<ZRNamedValueMap>> m_maps;
    int m_nested = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Machine(std::span(data, size)).run();
    for (Bytes bytes(std::span(data, size)); !bytes.isEmpty();) {
        const std::uint32_t word = bytes.nextWord();
        checkPrint(std::bit_cast<float>(word));
        checkPrint(static_cast<float>(static_cast<int>(word % 20'000'001) - 10'000'000) / 1000);
    }
    return 0;
}
