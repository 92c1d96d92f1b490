#include "math/foundations/scalar.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double kPi = 3.141592653589793;

TEST(IsValidNumber, OnlyInfinitiesAndNaNsAreInvalid) {
    using D = std::numeric_limits<double>;
    using F = std::numeric_limits<float>;
    for (double v : {0.0, -0.0, -1e300, D::denorm_min(), D::max()})
        EXPECT_TRUE(F3DIsValidNumber(v));
    for (float v : {-0.0f, 1.0f, F::denorm_min(), F::max()}) EXPECT_TRUE(F3DIsValidNumber(v));
    for (double v : {D::infinity(), -D::infinity(), D::quiet_NaN()}) {
        EXPECT_FALSE(F3DIsValidNumber(v));
        EXPECT_FALSE(F3DIsValidNumber(float(v)));
    }
}

TEST(CompareEpsilon, ToleranceScalesWithThePowerOfTwoOfTheLargerMagnitude) {
    EXPECT_EQ(F3DCompareEpsilon(1.0, 1.0 + 1e-7, 1e-6), 0);
    // 1000 = 0.977 * 2^10: the tolerance is 1e-6 * 1024.
    EXPECT_EQ(F3DCompareEpsilon(1000.0, 1000.0005, 1e-6), 0);
    EXPECT_EQ(F3DCompareEpsilon(1000.0, 1000.0011, 1e-6), -1);
    EXPECT_EQ(F3DCompareEpsilon(1000.0011, 1000.0, 1e-6), 1);
    // 1e-7 has exponent -23, so the tolerance shrinks to 1e-6 * 2^-23.
    EXPECT_EQ(F3DCompareEpsilon(0.0, 1e-7, 1e-6), -1);
    EXPECT_EQ(F3DCompareEpsilon(1e-7, 0.0, 1e-6), 1);
    EXPECT_EQ(F3DCompareEpsilon(0.0, 0.0, 1e-6), 0);
    EXPECT_EQ(F3DCompareEpsilon(2.0f, 1.0f, 1e-6f), 1);
    EXPECT_EQ(F3DCompareEpsilon(1.0f, 1.0f + 1e-7f, 1e-6f), 0);
    // A difference of exactly the tolerance is equal: m = 1 = 0.5 * 2^1, tolerance 0.25 * 2.
    EXPECT_EQ(F3DCompareEpsilon(1.0, 0.5, 0.25), 0);
    EXPECT_EQ(F3DCompareEpsilon(0.5, 1.0, 0.25), 0);
    EXPECT_EQ(F3DCompareEpsilon(1.0, 0.4375, 0.25), 1);
}

TEST(ArcSinCos, BranchesAndTheirBoundaries) {
    // The half turn is -pi: asin(0) is not greater than 0.
    EXPECT_EQ(F3DArcSinCos(0, -1), -kPi);
    EXPECT_EQ(F3DArcSinCos(1e-9, -1), kPi - 1e-9);
    EXPECT_EQ(F3DArcSinCos(-1e-9, -1), -kPi + 1e-9);
    // Clamps of the asin branches, unreachable for consistent pairs.
    EXPECT_EQ(F3DArcSinCos(2, -0.9), kPi / 2);
    EXPECT_EQ(F3DArcSinCos(-2, 0.9), -kPi / 2);
    EXPECT_TRUE(std::isnan(F3DArcSinCos(0.5, std::nan(""))));  // the acos branch
}

TEST(ArcSinCos, RecoversTheAngleAllAroundTheCircle) {
    for (int i = -1000; i <= 1000; ++i) {
        const double angle = kPi * i / 1000.0;
        // sin(pi) rounds to +1.2e-16, so +pi comes back as pi; only an exact 0 sine gives -pi.
        EXPECT_NEAR(F3DArcSinCos(std::sin(angle), std::cos(angle)), angle, 4e-16 * 8) << angle;
    }
}

TEST(NearestDiscreteValue, RoundsHalvesAwayFromTheOrigin) {
    EXPECT_EQ(F3DGetNearestDiscreteValue(2.5, 0, 1), 3.0);
    EXPECT_EQ(F3DGetNearestDiscreteValue(-2.5, 0, 1), -3.0);
    EXPECT_EQ(F3DGetNearestDiscreteValue(2.4, 0, 1), 2.0);
    EXPECT_EQ(F3DGetNearestDiscreteValue(7, 1, 0), 7.0);
    EXPECT_EQ(F3DGetNearestDiscreteValue(1.26, 1, 0.25), 1.25);
    EXPECT_EQ(F3DGetNearestDiscreteValue(-0.3, 1, 0.5), -0.5);
    EXPECT_EQ(F3DGetNearestDiscreteValue(1e9 + 0.7, 0, 1), 1e9 + 1);
    EXPECT_TRUE(std::isnan(F3DGetNearestDiscreteValue(std::nan(""), 0, 1)));
}

}  // namespace
