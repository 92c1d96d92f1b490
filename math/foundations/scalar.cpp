#include "math/foundations/scalar.h"

#include <cmath>
#include <cstdint>
#include <cstring>

bool F3DIsValidNumber(float x) {
    std::uint32_t bits;
    std::memcpy(&bits, &x, sizeof bits);
    return (bits & 0x7F800000u) != 0x7F800000u;
}

bool F3DIsValidNumber(double x) {
    std::uint64_t bits;
    std::memcpy(&bits, &x, sizeof bits);
    const auto high = static_cast<std::uint32_t>(bits >> 32);
    return (high & 0x7FF00000u) != 0x7FF00000u;
}

namespace {

template <typename T>
int CompareEpsilon(T a, T b, T eps) {
    const T magA = std::fabs(a);
    const T magB = std::fabs(b);
    const T larger = magB <= magA ? magA : magB;
    int exponent = 0;
    std::frexp(larger, &exponent);
    const T tolerance = std::ldexp(eps, exponent);
    const T difference = a - b;
    if (-tolerance > difference) return -1;
    return difference > tolerance ? 1 : 0;
}

}  // namespace

int F3DCompareEpsilon(float a, float b, float eps) { return CompareEpsilon(a, b, eps); }
int F3DCompareEpsilon(double a, double b, double eps) { return CompareEpsilon(a, b, eps); }

double F3DArcSinCos(double sine, double cosine) {
    constexpr double kHalfPi = 1.5707963267948966;
    constexpr double kPi = 3.141592653589793;
    constexpr double kBranch = 0.70710679;
    if (cosine < -kBranch) {
        // Near the half turn. The clamps cannot be reached by a consistent pair.
        if (sine <= -1.0) return -kHalfPi;
        if (sine >= 1.0) return kHalfPi;
        const double a = std::asin(sine);
        return a > 0.0 ? kPi - a : -kPi - a;
    }
    if (cosine > kBranch) {
        if (sine <= -1.0) return -kHalfPi;
        if (sine >= 1.0) return kHalfPi;
        return std::asin(sine);
    }
    // Where acos is well conditioned (also a NaN cosine).
    const double a = std::acos(cosine);
    return sine < 0.0 ? -a : a;
}

double F3DGetNearestDiscreteValue(double value, double origin, double step) {
    if (step == 0.0) return value;
    double integral = 0.0;
    const double fraction = std::modf((value - origin) / step, &integral);
    const double rounded = fraction < 0.0 ? fraction - 0.5 : fraction + 0.5;
    // Truncation toward zero rounds the halves away from zero. |rounded| < 1.5 unless it is NaN,
    // and then the result is NaN whatever k is.
    const std::int32_t k = std::isnan(rounded) ? 0 : static_cast<std::int32_t>(rounded);
    return (static_cast<double>(k) + integral) * step + origin;
}
