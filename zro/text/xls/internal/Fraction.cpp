#include "zro/text/xls/internal/Fraction.h"

#include <cmath>
#include <limits>

namespace ZroCommon::internal {
namespace {

constexpr double kAlmostInteger = 1e-6;
constexpr double kGain = 1e-8;  // by which a fraction must be better than the best so far

struct Candidate {
    double numerator = 0;
    double denominator = 1;
    double distance = 1;  // of the denominator from the exact one

    double error() const { return distance / denominator; }
};

// Upward to an integer; of what fits one, without a call.
double roundedUp(double number) {
    constexpr double kMaxExact = 9e15;
    if (number > kMaxExact) {
        return std::ceil(number);
    }
    const auto whole = static_cast<double>(static_cast<std::int64_t>(number));
    return whole < number ? whole + 1 : whole;
}

// The fraction with this numerator: the denominator is the nearer integer, of two the lower.
Candidate candidateFor(double numerator, double fraction) {
    const double exact = numerator / fraction;
    const double denominator = roundedUp(exact - 0.5);
    return {numerator, denominator, std::fabs(exact - denominator)};
}

// The smallest numerator of a fraction strictly between two positive numbers, found by their
// continued fractions as far as they agree.
double smallestNumeratorBetween(double low, double high) {
    double numerator = 1;  // of the last two convergents
    double before = 0;
    constexpr int kMaxTerms = 64;  // of doubles that differ no two agree for longer
    for (int term = 0; term < kMaxTerms; ++term) {
        const double whole = std::floor(low);
        if (whole + 1 < high) {
            return (whole + 1) * numerator + before;
        }
        const double next = whole * numerator + before;
        before = numerator;
        numerator = next;
        const double top = high - whole;
        high = low > whole ? 1 / (low - whole) : std::numeric_limits<double>::infinity();
        low = 1 / top;
    }
    return std::numeric_limits<double>::infinity();
}

// What beats the best has an error below its own less the gain. The error of m/d is its distance
// from the fraction, divided by the fraction; so whatever wins next lies between two numbers, and
// numerators that have no fraction there need no try.
double smallestWinner(const Candidate& best, double fraction, double slack) {
    const double error = best.error() - kGain + slack;
    return smallestNumeratorBetween(fraction * (1 - error), fraction * (1 + error));
}

// The numerator to be tried behind the one that has been.
double nextNumerator(const Candidate& tried, const Candidate& best, double fraction) {
    constexpr double kNeighbours = 8192;
    constexpr double kSlack = 1e-15;  // errors are rounded
    const double winner = smallestWinner(best, fraction, kSlack);
    if (winner > tried.numerator) {
        return winner;
    }
    // It was tried and has lost: up to here because the nearer denominator need not be the better
    // one, and further on by rounding alone.
    return tried.denominator < kNeighbours
               ? tried.numerator + 1
               : std::fmax(smallestWinner(best, fraction, -kSlack), tried.numerator + 1);
}

// The fraction with the smallest error whose numerator and denominator stay below the limit.
Candidate bestWithin(double limit, double fraction) {
    constexpr double kTriedSingly = 128;  // one try costs less than a look ahead
    Candidate best;
    double error = 1;
    double numerator = 1;
    while (numerator < limit && error > kGain) {
        const Candidate tried = candidateFor(numerator, fraction);
        if (tried.denominator >= limit) {
            break;
        }
        const bool mayWin = tried.distance < error * tried.denominator;  // saves a division
        if (mayWin && tried.error() + kGain < error) {
            best = tried;
            error = best.error();
        }
        numerator =
            tried.denominator < kTriedSingly ? numerator + 1 : nextNumerator(tried, best, fraction);
    }
    return best;
}

}  // namespace

Fraction fractionOver(std::uint16_t denominator, double magnitude) {
    double whole = 0;
    const double fraction = std::modf(magnitude, &whole);
    const double numerator = std::floor(fraction * denominator + 0.5);
    return {denominator * whole + numerator, static_cast<std::int16_t>(denominator)};
}

Fraction fractionWithin(int digits, double magnitude) {
    double whole = 0;
    const double fraction = std::modf(magnitude, &whole);
    double limit = 1;
    for (int digit = 0; digit < digits; ++digit) {
        limit *= 10;
    }
    const Candidate best = fraction < kAlmostInteger ? Candidate() : bestWithin(limit, fraction);
    const auto wrapped = static_cast<std::uint16_t>(static_cast<std::uint64_t>(best.denominator));
    return {best.denominator * whole + best.numerator, static_cast<std::int16_t>(wrapped)};
}

}  // namespace ZroCommon::internal
