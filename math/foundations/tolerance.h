#pragma once
// The tolerances the library uses by itself, and the two comparison rules every value type shares:
//   AreAlmostEqual  strict      |a_i - b_i| < eps for every component (false on NaN)
//   IsNull          non-strict  |c_i| <= eps for every component
// The asymmetry is deliberate: a component of magnitude exactly eps is null but not almost equal
// to zero.
#include <cmath>

template <typename T>
struct C3DTolerance;

template <>
struct C3DTolerance<float> {
    using Scalar = float;
    // Degeneracy tests (zero length, singular matrix) in single precision.
    static constexpr float k_Accurate = 1e-6f;
    // Looser tests requested by callers.
    static constexpr float k_LessAccurate = 1e-6f;
};

template <>
struct C3DTolerance<double> {
    using Scalar = double;
    static constexpr double k_Accurate = 1e-12;
    static constexpr double k_LessAccurate = 1e-9;
};

// A scalar parameter of a free function template that is not used to deduce T, so that
// AreAlmostEqual(floatVectorA, floatVectorB, 1e-3) compiles.
template <typename T>
using C3DScalarArg = typename C3DTolerance<T>::Scalar;

// Component-wise strict comparison in storage order, stopping at the first failure.
template <typename T>
inline int F3DAreAlmostEqualComponents(const T* a, const T* b, unsigned int n, T eps) {
    for (unsigned int i = 0; i < n; ++i) {
        if (!(std::fabs(a[i] - b[i]) < eps)) return 0;
    }
    return 1;
}

// Component-wise non-strict null test.
template <typename T>
inline bool F3DIsNullComponents(const T* c, unsigned int n, T eps) {
    for (unsigned int i = 0; i < n; ++i) {
        if (!(std::fabs(c[i]) <= eps)) return false;
    }
    return true;
}

// Exact null test: every component compares equal to 0 (-0 counts as zero, NaN does not).
template <typename T>
inline bool F3DIsExactlyNullComponents(const T* c, unsigned int n) {
    for (unsigned int i = 0; i < n; ++i) {
        if (!(c[i] == T(0))) return false;
    }
    return true;
}
