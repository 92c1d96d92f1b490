#include "math/vectors/vector4.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>

#include "math/vectors/color.h"
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

TYPED_TEST(Vector4Test, ConstructionAndIndexRules) {
    using V = typename TestFixture::V;
    EXPECT_EQ(V(), V(0, 0, 0, 0));
    EXPECT_EQ(V(C3DVector3Tpl<TypeParam>(1, 2, 3), 2), V(2, 4, 6, 2));  // lifted with weight 2
    V v(1, 2, 3, 4);
    EXPECT_EQ(v.Get(2), 3);
    EXPECT_EQ(v.Get(9), 4);  // every other index gives w
    EXPECT_EQ(v.Get(-1), 4);
    v.Set(9, 7).Set(-1, 7);
    EXPECT_EQ(v, V(1, 2, 3, 4));
    v.SetW(7).SetX(0);
    EXPECT_EQ(v, V(0, 2, 3, 7));
    EXPECT_EQ(v.GetDynamicMemSize(), 0u);
}

TYPED_TEST(Vector4Test, ArithmeticCoversAllFourComponents) {
    using V = typename TestFixture::V;
    V v(1, 2, 3, 4);
    v.Add(v, v).Sub(V(1, 1, 1, 1)).MulComp(V(1, 2, 3, 4)).DivComp(V(1, 1, 1, 2));
    EXPECT_EQ(v, V(1, 6, 15, 14));
    EXPECT_EQ(V(v).Negate(), V(-1, -6, -15, -14));
    EXPECT_EQ(V().Mul(V(1, 2, 3, 4), 2), V(2, 4, 6, 8));
    EXPECT_EQ(V(2, 4, 6, 8).Div(2), V(1, 2, 3, 4));
    EXPECT_EQ(V().Div(V(3, 6, 9, 12), 3), V(1, 2, 3, 4));
    EXPECT_EQ(V(-1, 0, 3, -0.5).SetMinimal(2), V(-2, 2, 3, -2));
    EXPECT_EQ(V(1, 2, 2, 4).GetLength(), 5);
    EXPECT_EQ(GetDot(V(1, 2, 3, 4), V(1, 1, 1, 1)), 10);
    EXPECT_EQ(GetDistance(V(1, 1, 1, 1), V(2, 3, 3, 5)), 5);
    EXPECT_EQ(GetSquaredDistance(V(1, 1, 1, 1), V(2, 3, 3, 5)), 25);
    EXPECT_TRUE(V(0.5, -0.5, 0, 0.5).IsNull(0.5));
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
    V below(0, 0, 0, eps / 2);
    EXPECT_EQ(below.SetLength(2), 0);
    V nan(std::numeric_limits<TypeParam>::quiet_NaN(), 0, 0, 0);
    EXPECT_EQ(nan.Normalize(), 0);
    EXPECT_EQ(nan.SetLength(1), 1);  // NaN is not below the epsilon

    std::mt19937 rng(1);
    std::uniform_real_distribution<TypeParam> d(-10, 10);
    for (int n = 0; n < 100; ++n) {
        V v(d(rng), d(rng), d(rng), d(rng));
        const V before = v;
        ASSERT_EQ(v.Normalize(), 1);
        EXPECT_NEAR(v.GetLength(), 1, this->kTol);
        EXPECT_NEAR(GetDot(v, before), before.GetLength(), 10 * this->kTol * before.GetLength());
    }
}

TYPED_TEST(Vector4Test, ProjectionAndTheSignedOrthogonalityTest) {
    using V = typename TestFixture::V;
    V v(3, 4, 5, 6);
    EXPECT_EQ(v.SetProjection(V(0, 0, 0, 2)), 1);
    EXPECT_EQ(v, V(0, 0, 0, 6));
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

TYPED_TEST(Vector4Test, TextFormat) {
    using V = typename TestFixture::V;
    std::ostringstream os;
    V(1, 2, 3, 4.5).Dump("V", os);
    EXPECT_EQ(os.str(), "V\n( 1 2 3 4.5 )\n \n");
    std::istringstream is("5 6 7 8");
    V v;
    is >> v;
    EXPECT_EQ(v, V(5, 6, 7, 8));
}

TEST(VectorW, WeightIsLeftAlone) {
    const C3DVectorw origin;
    EXPECT_EQ(origin.w, 1);
    EXPECT_EQ(origin.x, 0);
    C3DVectorw v(3, 4, 0, 7);
    ASSERT_EQ(v.Normalize(), 1);
    EXPECT_NEAR(v.x, 0.6, 1e-15);
    EXPECT_NEAR(v.y, 0.8, 1e-15);
    EXPECT_EQ(v.w, 7);
    ASSERT_EQ(v.SetLength(10), 1);
    EXPECT_NEAR(v.x, 6, 1e-14);
    EXPECT_EQ(v.w, 7);
    C3DVectorw weightOnly(0, 0, 0, 5);
    EXPECT_EQ(weightOnly.Normalize(), 0);
    EXPECT_EQ(weightOnly.SetLength(1), 0);
    C3DVectorw atEps(1e-12, 0, 0, 5);
    EXPECT_EQ(atEps.Normalize(), 0);
    EXPECT_EQ(atEps.SetLength(2), 1);
    EXPECT_NEAR(atEps.x, 2, 1e-15);
    EXPECT_EQ(GetDistance(C3DVectorw(1, 1, 1, 0), C3DVectorw(2, 3, 3, 100)), 3);
    EXPECT_EQ(GetSquaredDistance(C3DVectorw(1, 1, 1, 0), C3DVectorw(2, 3, 3, 100)), 9);
    std::ostringstream os;
    os << C3DVectorw(1, 2, 3, 4);
    EXPECT_EQ(os.str(), "( 1 2 3 4 )");
}

TEST(Color4f, FourChannelsInOrder) {
    const C3DColor4f color(0.1f, 0.2f, 0.3f, 1.0f);
    EXPECT_EQ(color.GetArray()[0], 0.1f);
    EXPECT_EQ(color.GetArray()[3], 1.0f);
    EXPECT_EQ(sizeof(C3DColor4f), 4 * sizeof(float));
    EXPECT_EQ(C3DColor4f().a, 0.0f);
}

}  // namespace
