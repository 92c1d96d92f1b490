#pragma once
// Scalar functions shared by the whole library.
#include "math/foundations/export.h"

// True when x is finite (neither infinite nor NaN), decided on the bit pattern: the exponent
// field is not all ones. Denormals and both zeros are valid.
MATH_API bool F3DIsValidNumber(float x);
MATH_API bool F3DIsValidNumber(double x);

// Relative three-way comparison: -1 when a < b, 1 when a > b, 0 when they are equal within
// eps scaled by the power of two of the larger magnitude (eps * 2^e with max(|a|,|b|) = f * 2^e,
// f in [0.5, 1)). A difference of exactly that tolerance counts as equal.
MATH_API int F3DCompareEpsilon(float a, float b, float eps);
MATH_API int F3DCompareEpsilon(double a, double b, double eps);

// The angle in [-pi, pi] whose sine and cosine are given, using asin near 0 and pi and acos in
// between so that each branch reads only its well-conditioned argument. The half turn is -pi:
// F3DArcSinCos(0, -1) == -pi.
MATH_API double F3DArcSinCos(double sine, double cosine);

// The point of the grid origin + k * step nearest to value, halves rounded away from the origin.
// A zero step returns value unchanged.
MATH_API double F3DGetNearestDiscreteValue(double value, double origin, double step);
