#include "math/vectors/vector4.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "math/vectors/weighted_vector.h"

namespace {

template <typename T>
class Vector4Test : public testing::Test {
protected:
    using V = C3DVector4Tpl<T>;
    static constexpr T kTol = std::is_same<T, double>::value ? T(1e-12) : T(2e-5);
    static constexpr T kEps = C3DTolerance<T>::k_Accurate;
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(Vector4Test, Precisions);

TYPED_TEST(Vector4Test, ConstructionIndexAndArithmetic) {
    using V = typename TestFixture::V;
    EXPECT_EQ(V(C3DVector3Tpl<TypeParam>(1, 2, 3), 2), V(2, 4, 6, 2));  // lifted with weight 2
    V v(1, 2, 3, 4);
    EXPECT_EQ(v.Get(9), 4);  // every other index gives w
    EXPECT_EQ(v.Set(9, 7).Set(-1, 7), V(1, 2, 3, 4));
    v.Add(v, v).Sub(V(1, 1, 1, 1)).MulComp(V(1, 2, 3, 4)).DivComp(V(1, 1, 1, 2));
    EXPECT_EQ(v, V(1, 6, 15, 14));
    EXPECT_EQ(V(-1, 0, 3, -0.5).SetMinimal(2), V(-2, 2, 3, -2));
    EXPECT_EQ(GetDistance(V(1, 1, 1, 1), V(2, 3, 3, 5)), 5);
    EXPECT_FALSE(V(0, 0, 0, 0.75).IsNull(0.5));
}

TYPED_TEST(Vector4Test, LengthTestsAtTheirBoundary) {
    using V = typename TestFixture::V;
    const TypeParam eps = this->kEps;
    // Length exactly eps: SetLength accepts it (fails only below), Normalize refuses it.
    V atEps(0, 0, 0, eps);
    EXPECT_EQ(atEps.Normalize(), 0);
    EXPECT_EQ(atEps, V(0, 0, 0, eps));
    EXPECT_EQ(atEps.SetLength(2), 1);
    EXPECT_NEAR(atEps.w, 2, this->kTol);
    V v(1, -2, 2, 4);  // length 5
    EXPECT_EQ(v.Normalize(), 1);
    for (int k = 0; k < 4; ++k) EXPECT_NEAR(v[k], V(0.2, -0.4, 0.4, 0.8)[k], this->kTol);
    V below(0, 0, 0, eps / 2);
    EXPECT_EQ(below.SetLength(2), 0);
    V nan(std::numeric_limits<TypeParam>::quiet_NaN(), 0, 0, 0);
    EXPECT_EQ(nan.Normalize(), 0);
    EXPECT_EQ(nan.SetLength(1), 1);  // NaN is not below the epsilon
}

TYPED_TEST(Vector4Test, ProjectionAndTheSignedOrthogonalityTest) {
    using V = typename TestFixture::V;
    V v(3, 4, 5, 6);
    EXPECT_EQ(v.SetProjection(V(0, 0, 0, 2)), 1);
    EXPECT_EQ(v.SetProjection(V(0, 0, 0, 0)), 0);
    EXPECT_EQ(v, V(0, 0, 0, 6));
    // a.a = 2.5e-7: below the float epsilon, above the double one.
    const int expected = std::is_same<TypeParam, double>::value ? 1 : 0;
    EXPECT_EQ(V(3, 4, 5, 6).SetProjection(V(0, 5e-4, 0, 0)), expected);

    EXPECT_EQ(AreOrthogonal(V(1, 0, 0, 0), V(0, 1, 0, 0)), 1);
    EXPECT_EQ(AreOrthogonal(V(1, 0, 0, 0), V(-1, 0, 0, 0)), 1);  // the dot product is signed
    EXPECT_EQ(AreOrthogonal(V(1, 0, 0, 0), V(1, 0, 0, 0)), 0);
    EXPECT_EQ(AreOrthogonal(V(1, 0, 0, 0), V(0.25, 0, 0, 0), TypeParam(0.25)), 0);
}

TEST(VectorW, WeightIsLeftAlone) {
    EXPECT_EQ(C3DVectorw().w, 1);
    C3DVectorw v(3, 4, 0, 7);
    ASSERT_EQ(v.Normalize(), 1);
    EXPECT_NEAR(v.x, 0.6, 1e-15);
    EXPECT_EQ(v.w, 7);
    C3DVectorw weightOnly(0, 0, 0, 5), atEps(1e-12, 0, 0, 5);
    EXPECT_EQ(weightOnly.SetLength(1), 0);
    EXPECT_EQ(atEps.Normalize(), 0);
    EXPECT_EQ(atEps.SetLength(2), 1);
    EXPECT_NEAR(atEps.x, 2, 1e-15);
    EXPECT_EQ(atEps.w, 5);
    EXPECT_EQ(GetDistance(C3DVectorw(1, 1, 1, 0), C3DVectorw(2, 3, 3, 100)), 3);
}

}  // namespace
