#include "zro/text/xls/internal/DecimalString.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace ZroCommon::internal {
namespace {

constexpr std::size_t kSignificant = 15;
constexpr std::size_t kMaxDecimals = 32;
constexpr std::size_t kChunk = 9;  // decimals that are split off at once

constexpr std::array<double, kChunk + 1> kPowers = {1e0, 1e1, 1e2, 1e3, 1e4,
                                                    1e5, 1e6, 1e7, 1e8, 1e9};

// Once all decimals that are looked at have been split off, what is left rounds into them only when
// it reaches this.
constexpr double kMayCarry = 0.999;

// "00" to "99".
constexpr auto kPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t index = 0; index < pairs.size(); ++index) {
        const std::size_t number = index / 2;
        pairs[index] = static_cast<char>('0' + (index % 2 == 0 ? number / 10 : number % 10));
    }
    return pairs;
}();

constexpr auto kIntegerPowers = [] {
    std::array<std::uint64_t, 20> powers{};
    std::uint64_t power = 1;
    for (std::uint64_t& each : powers) {
        each = power;
        power *= 10;
    }
    return powers;
}();

// Below 10^19; 0 has none.
std::size_t digitCount(std::uint64_t number) {
    const auto* const end = std::upper_bound(kIntegerPowers.begin(), kIntegerPowers.end(), number);
    return static_cast<std::size_t>(end - kIntegerPowers.begin());
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

}  // namespace

void DecimalString::insert(std::size_t index, std::size_t count, char c) {
    const std::size_t added = std::min(count, kCapacity - m_size);
    std::memmove(m_chars.data() + index + added, m_chars.data() + index, m_size - index);
    std::memset(m_chars.data() + index, c, added);
    m_size += added;
}

std::size_t DecimalString::pointIndex() const {
    return std::min(text().find('.'), m_size);
}

std::string_view DecimalString::decimals() const {
    return hasPoint() ? text().substr(pointIndex() + 1) : std::string_view();
}

// Writing a double.

void DecimalString::appendInteger(double whole) {
    constexpr double kMaxInteger = 9e18;
    char* const first = m_chars.data() + m_size;
    char* const last = m_chars.data() + kCapacity;
    const auto end = whole < kMaxInteger
                         ? std::to_chars(first, last, static_cast<std::int64_t>(whole))
                         : std::to_chars(first, last, whole, std::chars_format::fixed, 0);
    m_size = static_cast<std::size_t>(end.ptr - m_chars.data());
}

// Nine digits or fewer, with zeros ahead.
void DecimalString::appendChunk(std::uint32_t chunk, std::size_t places) {
    char* digit = m_chars.data() + m_size + places;
    m_size += places;
    for (; places >= 2; places -= 2, chunk /= 100) {
        digit -= 2;
        std::memcpy(digit, kPairs.data() + 2 * static_cast<std::size_t>(chunk % 100), 2);
    }
    if (places == 1) {
        *--digit = static_cast<char>('0' + chunk % 10);
    }
}

// Splits decimals off in chunks, each product rounded as doubles are; what is left of the fraction
// behind the last one tells whether it is to be rounded up. Once `enough` characters stand behind
// zeros, those that cannot carry into them are not written.
bool DecimalString::appendDecimals(double fraction, std::size_t decimals, std::size_t enough) {
    bool isSmall = m_chars[m_size - 2] == '0' && m_size == signLength() + 2;
    enough += isSmall ? kChunk + 1 : 0;  // zeros ahead of the first digit, in its chunk too
    for (std::size_t left = decimals; left > 0;) {
        const std::size_t places = std::min(left, kChunk);
        const double scaled = fraction * kPowers[places];
        const auto chunk = static_cast<std::uint32_t>(scaled);
        fraction = scaled - chunk;
        isSmall = isSmall && chunk == 0;
        if (isSmall) {
            enough += places;
        }
        appendChunk(chunk, places);
        left -= places;
        if (m_size > enough && fraction < kMayCarry) {
            return false;
        }
    }
    return fraction > 0.5;  // On purpose: a half is rounded down.
}

bool DecimalString::assignFixed(double number, std::size_t decimals) {
    return write(number, decimals, kCapacity);
}

bool DecimalString::write(double number, std::size_t decimals, std::size_t enough) {
    m_size = 0;
    if (number < 0) {
        push('-');
    }
    double whole = 0;
    const double fraction = std::modf(std::fabs(number), &whole);
    appendInteger(whole);
    push('.');
    if (appendDecimals(fraction, decimals, enough)) {
        push('5');
        return roundDecimals(decimals);
    }
    if (decimals == 0) {
        --m_size;
    }
    return false;
}

void DecimalString::assignSixDecimals(double number) {
    const auto end = std::to_chars(m_chars.data(), m_chars.data() + kCapacity, number,
                                   std::chars_format::fixed, 6);
    m_size = static_cast<std::size_t>(end.ptr - m_chars.data());
}

// Rounds eighteen decimals half up by the first that is dropped, and writes them without their
// zeros at the end. `places` is below 18.
void DecimalString::writeRounded(std::uint64_t whole, std::uint64_t decimals, std::size_t places) {
    decimals /= kIntegerPowers[2 * kChunk - 1 - places];
    decimals = decimals / 10 + (decimals % 10 >= 5 ? 1 : 0);
    if (decimals == kIntegerPowers[places]) {
        ++whole;
        decimals = 0;
    }
    if (decimals == 0) {
        places = 1;
    }
    for (const std::size_t step : {8U, 4U, 2U, 1U}) {
        if (places > step && decimals % kIntegerPowers[step] == 0) {
            decimals /= kIntegerPowers[step];
            places -= step;
        }
    }
    const auto end = std::to_chars(m_chars.data(), m_chars.data() + kCapacity, whole);
    m_size = static_cast<std::size_t>(end.ptr - m_chars.data());
    m_chars[m_size++] = '.';
    if (places > kChunk) {
        appendChunk(static_cast<std::uint32_t>(decimals / kIntegerPowers[kChunk]), places - kChunk);
        decimals %= kIntegerPowers[kChunk];
        places = kChunk;
    }
    appendChunk(static_cast<std::uint32_t>(decimals), places);
}

// What most numbers are: fifteen digits of two chunks of decimals, all in integers. False for
// others, which take the long way to the same digits.
bool DecimalString::assignInIntegers(double magnitude) {
    constexpr double kMaxWhole = 1e14;
    if (!(magnitude < kMaxWhole)) {
        return false;
    }
    const auto chunkOf = [](double& fraction) {
        const double scaled = fraction * kPowers[kChunk];
        const auto chunk = static_cast<std::uint64_t>(scaled);
        fraction = scaled - static_cast<double>(static_cast<std::int64_t>(chunk));
        return chunk;
    };
    const auto whole = static_cast<std::uint64_t>(magnitude);
    double fraction = magnitude - static_cast<double>(static_cast<std::int64_t>(whole));
    const std::uint64_t high = chunkOf(fraction);
    const std::uint64_t decimals = high * kIntegerPowers[kChunk] + chunkOf(fraction);
    const std::size_t length = whole > 0 ? digitCount(whole) : digitCount(decimals);
    const std::size_t places = whole > 0 ? kSignificant - length : 33 - length;
    if (fraction >= kMayCarry || places >= 2 * kChunk) {
        return false;
    }
    writeRounded(whole, decimals, places);
    return true;
}

void DecimalString::assign(double magnitude) {
    constexpr std::size_t kPointAndOneMore = 2;
    if (assignInIntegers(magnitude)) {
        return;
    }
    write(magnitude, kMaxDecimals, kSignificant + kPointAndOneMore);
    stripZeros();
    roundToFifteenDigits();
    normalise();
}

// Rounding.

// Adds one to the digit that ends ahead of `end`, with its carry through nines and over the point.
// False when the carry leaves the digits, or there are none.
bool DecimalString::increment(std::size_t end) {
    while (end > signLength()) {
        char& digit = m_chars[--end];
        if (digit == '.') {
            continue;
        }
        if (digit != '9') {
            ++digit;
            return true;
        }
        digit = '0';
    }
    return false;
}

// Adds one ahead of `end`, where a new digit in front is made if need be.
bool DecimalString::incrementOrGrow(std::size_t end) {
    const bool grows = !increment(end);
    if (grows) {
        insert(signLength(), 1, '1');
    }
    return grows;
}

// Fifteen significant digits, rounded half up by the sixteenth alone.
void DecimalString::roundToFifteenDigits() {
    const std::size_t first = std::min(text().find_first_not_of("0."), m_size);
    const std::size_t point = pointIndex();
    const std::size_t index =
        first + kSignificant + (point > first && point - first <= kSignificant);
    if (index >= m_size) {
        return;
    }
    const bool roundsUp = m_chars[index] >= '5';
    if (point < index) {
        m_size = index;  // zeros, which the normal form goes without
    } else {
        std::memset(m_chars.data() + index, '0', point - index);
        m_size = point;
    }
    if (!roundsUp) {
        return;
    }
    if (point == index - 1 && m_chars[index - 2] == '9') {
        // On purpose: behind fifteen integer digits that end in 9, the point itself is raised.
        ++m_chars[point];
        push('0');
        return;
    }
    incrementOrGrow(index);
}

// Digits at the end carry inward one by one, as long as they lie at `first` or behind.
bool DecimalString::cascade(std::size_t first) {
    // On purpose: rounding twice. The first fifteen characters are spared.
    for (std::size_t index = m_size; index > std::max(first, kSignificant);) {
        char& digit = m_chars[--index];
        if (digit > '4' && isDigit(digit)) {
            digit = '0';
            if (incrementOrGrow(index)) {
                return true;
            }
        }
    }
    return false;
}

bool DecimalString::roundDecimals(std::size_t decimals) {
    const std::size_t point = pointIndex();
    if (point == m_size) {
        return false;
    }
    std::size_t first = std::min(point + 1 + decimals, m_size);
    bool grows = cascade(first + 1);
    if (!grows && first < m_size && m_chars[first] >= '5') {
        grows = incrementOrGrow(first);
    }
    first = std::min(first + (grows ? 1 : 0), m_size);
    std::memset(m_chars.data() + first, '0', m_size - first);
    return grows;
}

// The form of the text.

void DecimalString::stripZeros() {
    if (!hasPoint()) {
        return;
    }
    while (m_chars[m_size - 1] == '0') {
        --m_size;
    }
    if (m_chars[m_size - 1] == '.') {
        --m_size;
    }
}

void DecimalString::dropDecimal() {
    if (hasPoint()) {
        --m_size;
        if (m_chars[m_size - 1] == '.') {
            --m_size;
        }
    }
}

void DecimalString::appendExponent(int exponent) {
    push('E');
    push(exponent < 0 ? '-' : '+');
    if (std::abs(exponent) < 10) {
        push('0');
    }
    appendInteger(std::abs(exponent));
}

void DecimalString::normalise() {
    const std::size_t start = signLength();
    std::size_t first = start;
    while (first + 1 < m_size && m_chars[first] == '0' && isDigit(m_chars[first + 1])) {
        ++first;
    }
    std::memmove(m_chars.data() + start, m_chars.data() + first, m_size - first);
    m_size -= first - start;
    if (m_size == start || m_chars[start] == '.') {
        insert(start, 1, '0');
    }
    const std::size_t point = pointIndex();
    if (point == m_size) {
        push('.');
    }
    while (m_size > point + 2 && m_chars[m_size - 1] == '0') {
        --m_size;
    }
    if (m_size == point + 1) {
        push('0');
    }
}

void DecimalString::movePointRight(std::size_t places) {
    const std::size_t point = pointIndex();
    const std::size_t behind = m_size - point - 1;
    if (behind < places) {
        insert(m_size, places - behind, '0');
    }
    const std::size_t moved = std::min(places, m_size - point - 1);
    std::memmove(m_chars.data() + point, m_chars.data() + point + 1, moved);
    m_chars[point + moved] = '.';
}

void DecimalString::movePointLeft(std::size_t places) {
    const std::size_t start = signLength();
    const std::size_t ahead = pointIndex() - start;
    if (ahead < places) {
        insert(start, places - ahead, '0');
    }
    const std::size_t point = pointIndex();
    const std::size_t moved = std::min(places, point - start);
    std::memmove(m_chars.data() + point - moved + 1, m_chars.data() + point - moved, moved);
    m_chars[point - moved] = '.';
}

void DecimalString::movePoint(int places) {
    if (places == 0) {
        return;
    }
    if (!hasPoint()) {
        push('.');
    }
    if (places > 0) {
        movePointRight(static_cast<std::size_t>(places));
    } else {
        movePointLeft(static_cast<std::size_t>(-places));
    }
    normalise();
}

}  // namespace ZroCommon::internal
