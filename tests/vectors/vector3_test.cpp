#include "math/vectors/vector3.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr double kPi = 3.141592653589793;

template <typename T>
class Vector3Test : public testing::Test {
protected:
    using V = C3DVector3Tpl<T>;
    static constexpr bool kDouble = std::is_same<T, double>::value;
    static constexpr T kTol = kDouble ? T(1e-12) : T(2e-5);
    static constexpr T kNaN = std::numeric_limits<T>::quiet_NaN();

    static V Random(std::mt19937& rng) {
        std::uniform_real_distribution<T> d(-10, 10);
        return V(d(rng), d(rng), d(rng));
    }
    static void ExpectNear(const V& a, const V& b, double tol = kTol) {
        for (int k = 0; k < 3; ++k) EXPECT_NEAR(a[k], b[k], tol) << a << " against " << b;
    }
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(Vector3Test, Precisions);

TYPED_TEST(Vector3Test, AxisAndIndexRules) {
    using V = typename TestFixture::V;
    EXPECT_EQ(V(2, TypeParam(5)), V(0, 0, 5));
    EXPECT_EQ(V(5, TypeParam(1)), V(0, 0, 0));  // no such axis: the null vector
    EXPECT_EQ(V(-1, TypeParam(1)), V(0, 0, 0));
    V v(1, 2, 3);
    EXPECT_EQ(v.Get(7), 3);  // every other index gives z
    EXPECT_EQ(v.Get(-1), 3);
    EXPECT_EQ(v.Set(9, TypeParam(42)).Set(-1, TypeParam(42)), V(1, 2, 3));
    EXPECT_EQ(V::k_UnitVector, V(1, 1, 1));
    // The less accurate epsilon follows the argument's type, not the instantiation.
    EXPECT_EQ(V::GetLessAccurateEpsilon(1.0), 1e-9);
    EXPECT_EQ(V::GetLessAccurateEpsilon(0.0f), 1e-6f);
    // Kel_Vector: widened from the float (not the decimal 0.1), narrowed back to float.
    const Kel_Vector kel{0.1f, -2.5f, 3.0f};
    V w(0, 0, 0);
    w = kel;
    EXPECT_EQ(w, V(kel));
    EXPECT_EQ(w.x, TypeParam(0.1f));
    EXPECT_EQ(Kel_Vector(V(TypeParam(1) / 3, 2, 3)).x, static_cast<float>(TypeParam(1) / 3));
}

TYPED_TEST(Vector3Test, ProductsAndArithmeticAlsoWithAliasedArguments) {
    using V = typename TestFixture::V;
    EXPECT_EQ(GetCross(V(1, 2, 3), V(-2, 0, 5)), V(10, -11, 4));
    EXPECT_EQ(V(1, 2, 3) * V(-2, 0, 5), 13);
    V v(1, 2, 3);
    EXPECT_EQ(v.SetCross(v, V(0, 0, 1)), V(2, -1, 0));
    EXPECT_EQ(v.Set(1, 0, 0).SetCross(V(0, 1, 0)), V(0, 0, 1));
    EXPECT_EQ(v.Set(1, 2, 3).SetCross(V(0, 0, 0), v, V(0, 1, 0)), V(-3, 0, 1));
    EXPECT_EQ(v.Set(1, 2, 3).SetMirror(v, V(0, 0, 0)), V(-1, -2, -3));
    EXPECT_EQ(v.Add(v, v).Sub(V(1, 1, 1)).MulComp(V(2, 3, 4)), V(-6, -15, -28));
    EXPECT_EQ(v.Negate(v).DivComp(V(2, 3, 4)), V(3, 5, 7));
    EXPECT_EQ(v.SetMidpoint(v, V(1, 1, 1)), V(2, 3, 4));
    EXPECT_EQ(v.LinearPositionInterpolate(V(0, 0, 0), v, TypeParam(0.25)), V(0.5, 0.75, 1));
}

TYPED_TEST(Vector3Test, DivByScalarUsesTheReciprocalAndDivOfVectorDividesDirectly) {
    using V = typename TestFixture::V;
    const TypeParam s = 3;
    TypeParam x = 1;  // a component where x * (1/s) and x / s round differently
    while (x * (TypeParam(1) / s) == x / s) x += 1;
    EXPECT_EQ(V(x, 0, 0).Div(s).x, x * (TypeParam(1) / s));
    EXPECT_EQ(V().Div(V(x, 0, 0), s).x, x / s);
}

TYPED_TEST(Vector3Test, LengthChangesRefuseShortVectors) {
    using V = typename TestFixture::V;
    V zero(0, 0, 0), nan(this->kNaN, 0, 0), v(2, -3, 6);
    EXPECT_EQ(zero.Normalize() + zero.SetLength(3), 0);
    EXPECT_TRUE(zero.IsExactlyNull());
    EXPECT_EQ(nan.Normalize() + nan.SetLength(1), 0);
    // Length 1e-7: above the double epsilon 1e-12, below the float one 1e-6.
    V tiny(1e-7, 0, 0);
    EXPECT_EQ(tiny.Normalize(), this->kDouble ? 1 : 0);
    EXPECT_EQ(tiny.x, this->kDouble ? 1 : TypeParam(1e-7));
    EXPECT_EQ(v.SetLength(14), 1);  // from length 7
    EXPECT_EQ(v, V(4, -6, 12));
    EXPECT_EQ(v.Normalize(), 1);
    this->ExpectNear(v, V(2, -3, 6) * TypeParam(1.0 / 7));
}

TYPED_TEST(Vector3Test, ProjectionsAndTheirDegenerateCases) {
    using V = typename TestFixture::V;
    V v(3, 4, 5);
    EXPECT_EQ(v.SetProjection(V(0, 2, 0)), 1);
    EXPECT_EQ(v, V(0, 4, 0));
    // SetProjection tests |a|^2 = 2.5e-7: below the float epsilon 1e-6, above the double one.
    EXPECT_EQ(v.Set(3, 4, 5).SetProjection(V(0, 5e-4, 0)), this->kDouble ? 1 : 0);
    this->ExpectNear(v, this->kDouble ? V(0, 4, 0) : V(3, 4, 5));
    // (a x b) x a = b (a.a) - a (a.b), unnormalised; parallel vectors give 0 and leave a x b.
    EXPECT_EQ(v.SetOrthogonal(V(2, 0, 0), V(1, 1, 0)), 1);
    EXPECT_EQ(v, V(0, 4, 0));
    EXPECT_EQ(v.SetOrthogonal(V(1, 2, 3), V(2, 4, 6)), 0);
    EXPECT_TRUE(v.IsExactlyNull());
    EXPECT_EQ(v.Set(9, 9, 9).SetOrthoProj(V(1, 0, 0), V(-3, 0, 0)), 0);
    // b - a (a.b) / (a.a), with b aliasing the result.
    V b(3, 0, 4);
    EXPECT_EQ(b.SetOrthoProj(V(1, 2, 2), b), 1);
    this->ExpectNear(b, V(16, -22, 14) * TypeParam(1.0 / 9));
}

TYPED_TEST(Vector3Test, DecomposeIn2Basis) {
    using V = typename TestFixture::V;
    using T = TypeParam;
    const struct {
        V v, a, b;
        int result;
        T alpha, beta;
    } cases[] = {
        {V(0, 0, 0), V(0, 0, 0), V(0, 0, 0), 1, 0, 0},  // null basis: only the null vector
        {V(1, 0, 0), V(0, 0, 0), V(0, 0, 0), 0, 0, 0},
        // Parallel basis: the larger of a[r], b[r] on the dominant row takes the whole weight.
        {V(4, 0, 0), V(1, 0, 0), V(2, 0, 0), 1, 0, 2},
        {V(4, 0, 0), V(2, 0, 0), V(1, 0, 0), 1, 2, 0},
        {V(0, 1, 0), V(1, 0, 0), V(2, 0, 0), 0, 0, 0},  // off the line
        {V(1, 2, 5), V(1, 0, 0), V(0, 1, 0), 1, 1, 2},  // the third equation is not checked
        // Same dominant row x for both: the second row is the larger of |b.y|, |b.z|, z on a
        // tie. Rows x and z give (-2, 7); rows x and y would give (1, 1).
        {V(3, 1, 5), V(2, 0, 1), V(1, 1, 1), 1, -2, 7},
        // b larger: the second row is chosen on a, here y (rows x and z would give (6, -1.5)).
        {V(3, 1, 0), V(1, 1, 0.25), V(2, 0, 1), 1, 1, 1},
        // Dominance goes by magnitude: a's row is y (-5), b's is z; rows z and x would give
        // (4, 2).
        {V(4, -3, 6), V(1, -5, 0), V(0, 1, 3), 1, 1, 2},
    };
    for (const auto& c : cases) {
        T alpha = 7, beta = 7;
        EXPECT_EQ(c.v.DecomposeIn2Basis(c.a, c.b, alpha, beta), c.result) << c.v;
        EXPECT_EQ(alpha, c.alpha) << c.v;
        EXPECT_EQ(beta, c.beta) << c.v;
    }
}

TYPED_TEST(Vector3Test, MeanAndMinimalValues) {
    using V = typename TestFixture::V;
    const V points[] = {V(0, 0, 0), V(2, 0, 4), V(4, 6, 2)};
    V mean(9, 9, 9);
    this->ExpectNear(mean.SetMean(points, 3), V(2, 2, 2));
    this->ExpectNear(mean.SetMean(nullptr, 5), V(2, 2, 2));  // unchanged
    mean.SetMean(points, 0);
    EXPECT_TRUE(std::isnan(mean.x) && std::isnan(mean.y) && std::isnan(mean.z));
    // Mode 0 raises values; any other raises magnitudes, zero counting as positive.
    EXPECT_EQ(V(-1, 0, 3).SetMinimal(1, 2), V(-2, 2, 3));
    EXPECT_EQ(V(-1, 0, 3).SetMinimal(0, 2), V(2, 2, 3));
    EXPECT_EQ(V(-1, -0.5, 3).SetMinimal(V(0.5, 1, 4), 1), V(-1, -1, 4));
}

TYPED_TEST(Vector3Test, ComponentExtremesGoToTheLaterIndexOnTies) {
    using V = typename TestFixture::V;
    const struct {
        V v;
        int useAbs, max, min;
    } cases[] = {{V(1, 1, 1), 0, 2, 2}, {V(3, 3, 1), 0, 1, 2},  {V(1, 1, 3), 0, 2, 1},
                 {V(5, 1, 2), 0, 0, 1}, {V(-5, 1, 2), 0, 2, 0}, {V(-5, 1, 2), 1, 0, 1},
                 {V(2, 1, 2), 0, 2, 1}, {V(1, 2, 1), 0, 1, 2}};
    for (const auto& c : cases) {
        EXPECT_EQ(c.v.GetIndexOfMaxComponent(c.useAbs), c.max) << c.v << c.useAbs;
        EXPECT_EQ(c.v.GetIndexOfMinComponent(c.useAbs), c.min) << c.v << c.useAbs;
    }
    EXPECT_EQ(V(-5, 1, 2).GetMaxComponent(1), 5);  // the magnitude, not -5
    EXPECT_EQ(V(-5, -1, 2).GetMinComponent(1), 1);
}

TYPED_TEST(Vector3Test, LinearUnInterpolateUsesOnlyTheDominantAxis) {
    using V = typename TestFixture::V;
    const V a(1, 1, 1), b(5, 3, 2);
    EXPECT_EQ(V(2, 100, -100).LinearPositionUnInterpolate(a, b), TypeParam(0.25));
    EXPECT_EQ(V(6, 100, -100).LinearPositionUnInterpolate(b, a), TypeParam(-0.25));  // x < 0
    EXPECT_EQ(V(0, 0, 2).LinearPositionUnInterpolate(V(4, 4, 4), V(0, 0, 0)), 0.5);   // tie: z
    EXPECT_EQ(V(3, 0, 2).LinearPositionUnInterpolate(V(0, 0, 0), V(4, 4, 0)), 0.75);  // x, y: x
    EXPECT_EQ(V(7, 7, 7).LinearPositionUnInterpolate(a, a), 0);
    EXPECT_EQ(V(7, 7, 7).LinearPositionUnInterpolate(a, V(1.5, 1, 1), TypeParam(1)), 0);
}

TYPED_TEST(Vector3Test, BsplineMatchesTheUniformCubicBasisWithItsRoundedConstant) {
    using V = typename TestFixture::V;
    const V p[4] = {V(0, 0, 0), V(1, 2, 0), V(3, 2, 1), V(4, 0, -2)};
    const double k = 0.1666667 * 6;  // the point's constant is slightly above 1/6
    for (double t = 0; t <= 1.0; t += 0.125) {
        const double b[4] = {(1 - t) * (1 - t) * (1 - t) / 6, (3 * t * t * t - 6 * t * t + 4) / 6,
                             (-3 * t * t * t + 3 * t * t + 3 * t + 1) / 6, t * t * t / 6};
        // The tangent is the derivative of the exact 1/6 basis.
        const double d[4] = {-(1 - t) * (1 - t) / 2, (9 * t * t - 12 * t) / 6,
                             (-9 * t * t + 6 * t + 3) / 6, t * t / 2};
        const V pos = V().BsplinePositionInterpolate(p[0], p[1], p[2], p[3], TypeParam(t));
        const V tangent = V().BsplineVectorInterpolate(p[0], p[1], p[2], p[3], TypeParam(t));
        for (int c = 0; c < 3; ++c) {
            double point = 0, slope = 0;
            for (int i = 0; i < 4; ++i) point += b[i] * p[i][c], slope += d[i] * p[i][c];
            EXPECT_NEAR(pos[c], k * point, 8 * this->kTol) << t;
            EXPECT_NEAR(tangent[c], slope, 8 * this->kTol) << t;
        }
    }
}

TYPED_TEST(Vector3Test, AnglesBetweenVectorsAndPoints) {
    using V = typename TestFixture::V;
    const TypeParam pi = TypeParam(kPi), tol = this->kTol;
    EXPECT_NEAR(GetVctsAngle(V(1, 0, 0), V(-1, 0, 0)), pi, tol);
    EXPECT_NEAR(GetVctsAngle(V(2, 0, 0), V(3, 0, 3)), pi / 4, tol);
    EXPECT_EQ(GetVctsAngle(V(0, 0, 0), V(1, 0, 0)), 0);
    // |a| |b| below eps counts as degenerate: cosine 1.
    EXPECT_EQ(GetVctsCosAngle(V(1, 0, 0), V(-0.5, 0, 0), TypeParam(0.6)), 1);
    // Parallel vectors whose quotient rounds beyond 1 are clamped.
    std::mt19937 rng(19);
    for (int i = 0; i < 100; ++i) {
        const V u = this->Random(rng);
        EXPECT_LE(GetVctsCosAngle(u, u * TypeParam(3)), 1);
        EXPECT_GE(GetVctsCosAngle(u, u * TypeParam(-3)), -1);
    }
    EXPECT_NEAR(Get2DVctsAngleSigned(V(1, 0, 0), V(0, -1, 0)), -pi / 2, tol);
    EXPECT_NEAR(Get2DVctsAngleSigned(V(1, 0, 0), V(0, 1, 0)), pi / 2, tol);
    EXPECT_NEAR(Get2DPntsAngleSigned(V(1, 1, 0), V(2, 1, 0), V(1, 0, 5)), -pi / 2, tol);
    EXPECT_NEAR(GetPntsAngle(V(1, 1, 1), V(2, 1, 1), V(1, 2, 1)), pi / 2, tol);
    EXPECT_EQ(GetPntsAngle(V(1, 1, 1), V(1, 1, 1), V(3, 1, 1)), 0);
}

TYPED_TEST(Vector3Test, TriangleAreaAndCollinearity) {
    using V = typename TestFixture::V;
    EXPECT_NEAR(GetTriangleArea(V(1, 1, 1), V(1, 5, 1), V(1, 1, 4)), 6, this->kTol);
    EXPECT_EQ(ArePntsCollinear(V(0, 0, 0), V(1, 1, 1), V(3, 3, 3)), 1);
    EXPECT_EQ(ArePntsCollinear(V(0, 0, 0), V(1, 1, 1), V(3, 3, 3.1)), 0);
    // Sine of the angle at p0 ~ 1e-4: collinear for eps 1e-3, not for 1e-5.
    EXPECT_EQ(ArePntsCollinear(V(0, 0, 0), V(1, 0, 0), V(1, 1e-4, 0), TypeParam(1e-3)), 1);
    EXPECT_EQ(ArePntsCollinear(V(0, 0, 0), V(1, 0, 0), V(1, 1e-4, 0), TypeParam(1e-5)), 0);
    // Coincident points make the quotient NaN: not collinear.
    EXPECT_EQ(ArePntsCollinear(V(2, 2, 2), V(2, 2, 2), V(3, 3, 3)), 0);
    EXPECT_EQ(ArePntsCollinear(V(2, 2, 2), V(3, 3, 3), V(2, 2, 2)), 0);
}

TYPED_TEST(Vector3Test, OrthogonalBasisZeroesTheSmallestComponentByMagnitude) {
    using V = typename TestFixture::V;
    const struct {
        V n, u;
    } cases[] = {{V(1, -3, 2), V(0, -2, -3)}, {V(-2, 3, 1), V(-3, -2, 0)},
                 {V(3, 1, -2), V(2, 0, 3)},   {V(3, 2, 1), V(-2, 3, 0)},
                 // Ties: the comparisons are strict.
                 {V(2, 2, 3), V(-3, 0, 2)},   {V(1, 2, 1), V(-2, 1, 0)},   {V(1, 1, 1), V(-1, 1, 0)}};
    for (const auto& c : cases) {
        V u, v;
        GetOrthogonalBasis(c.n, u, v);
        EXPECT_EQ(u, c.u) << c.n;
        EXPECT_EQ(v, GetCross(c.n, c.u)) << c.n;
    }
}

TYPED_TEST(Vector3Test, BarycentricCoordinatesAreUnsignedAreaWeights) {
    using V = typename TestFixture::V;
    using T = TypeParam;
    const V a(0, 0, 0), b(4, 0, 0), c(0, 4, 0);
    T u, v, w;
    GetBarycentricCoords(V(4, 4, 0), a, b, c, u, v, w);  // outside: still positive, sum 1
    this->ExpectNear(V(u, v, w), V(1, 1, 1) * T(1.0 / 3));
    GetBarycentricCoords(V(1, 0, 0), a, b, V(2, 0, 0), u, v, w);  // degenerate: all zero
    EXPECT_EQ(V(u, v, w), V(0, 0, 0));
    std::mt19937 rng(17);
    std::uniform_real_distribution<T> unit(0, 1);
    for (int i = 0; i < 100; ++i) {
        const V p0 = this->Random(rng), p1 = this->Random(rng), p2 = this->Random(rng);
        T r = unit(rng), s = unit(rng);
        if (r + s > 1) r = 1 - r, s = 1 - s;
        const V p = p0 * (1 - r - s) + p1 * r + p2 * s;  // inside: the weights reproduce p
        GetBarycentricCoords(p, p0, p1, p2, u, v, w);
        this->ExpectNear(p0 * u + p1 * v + p2 * w, p, 2e3 * this->kTol);
    }
}

TYPED_TEST(Vector3Test, PlanarSideOfTheThreeComponentVectorIsAlwaysOne) {
    using V = typename TestFixture::V;
    const TypeParam nan = this->kNaN, inf = std::numeric_limits<TypeParam>::infinity();
    EXPECT_EQ(Get2DPntSide(V(0, -5, 0), V(0, 0, 0), V(1, 0, 0)), 1);  // right of the line
    EXPECT_EQ(Get2DPntSide(V(nan, nan, nan), V(nan, 0, 0), V(1, nan, 0)), 1);
    EXPECT_EQ(Get2DPntSide(V(0, 0, 0), V(0, 0, 0), V(inf, 1, 0)), 1);
}

TYPED_TEST(Vector3Test, AlmostEqualIsStrictAndIsNullIsNot) {
    using V = typename TestFixture::V;
    const TypeParam eps = TypeParam(0.5), nan = this->kNaN;  // exact in binary
    EXPECT_EQ(AreAlmostEqual(V(1, 2, 3), V(1, 2, 3.5), eps), 0);
    EXPECT_EQ(AreAlmostEqual(V(1, 2, 3), V(1, 2, 3.25), eps), 1);
    EXPECT_EQ(AreAlmostEqual(V(nan, 0, 0), V(nan, 0, 0), eps), 0);
    EXPECT_TRUE(V(0.5, -0.5, 0.5).IsNull(eps));
    EXPECT_FALSE(V(0.5, -0.75, 0).IsNull(eps));
    EXPECT_FALSE(V(nan, 0, 0).IsNull(eps));
    EXPECT_TRUE(V(-0.0, 0, -0.0).IsExactlyNull());
    EXPECT_FALSE(V(nan, 0, 0).IsExactlyNull());
    EXPECT_FALSE(V(1e-13, 0, 0).IsExactlyNull());
    EXPECT_EQ(GetDistance(V(1, 2, 3), V(4, 6, 3)), 5);
}

}  // namespace
