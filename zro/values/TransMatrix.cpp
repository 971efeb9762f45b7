#include "zro/values/TransMatrix.h"

namespace ZroCommon {
namespace {

// It moves numbers about and rounds none.
constexpr TransMatrix kQuarterTurn(0, 1, -1, 0, 0, 0);

// Elimination with `a` and what is left of `d` as pivots. False when one of them is 0.
bool eliminate(TransMatrix& m) {
    const double pivot = m.a;
    if (pivot == 0) {
        return false;
    }
    const double above = m.b / pivot;
    const double secondPivot = m.d - m.c * above;
    if (secondPivot == 0) {
        return false;
    }
    const double d = 1 / secondPivot;
    const double c = -(m.c / pivot) * d;
    const double b = -above * d;
    const double a = 1 / pivot - above * c;
    const auto e = static_cast<float>(-(m.e * a + m.f * c));
    const auto f = static_cast<float>(-(m.e * b + m.f * d));
    m = {static_cast<float>(a),
         static_cast<float>(b),
         static_cast<float>(c),
         static_cast<float>(d),
         e,
         f};
    return true;
}

}  // namespace

TransMatrix TransMatrix::operator*(const TransMatrix& other) const {
    return {a * other.a + b * other.c,           a * other.b + b * other.d,
            c * other.a + d * other.c,           c * other.b + d * other.d,
            e * other.a + f * other.c + other.e, e * other.b + f * other.d + other.f};
}

bool TransMatrix::reverse() {
    const bool needsTurn = a == 0;
    if (needsTurn) {
        *this = *this * kQuarterTurn;
    }
    if (!eliminate(*this)) {
        init();
        return false;
    }
    if (needsTurn) {
        *this = kQuarterTurn * *this;
    }
    return true;
}

}  // namespace ZroCommon
