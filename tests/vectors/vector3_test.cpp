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
    // Loose enough for either precision on values of order 1.
    static constexpr T kTol = std::is_same<T, float>::value ? T(2e-5) : T(1e-12);

    V Random(std::mt19937& rng, T range = T(10)) {
        std::uniform_real_distribution<T> d(-range, range);
        return V(d(rng), d(rng), d(rng));
    }
    static void ExpectNear(const V& a, const V& b, T tol = kTol) {
        EXPECT_NEAR(a.x, b.x, tol);
        EXPECT_NEAR(a.y, b.y, tol);
        EXPECT_NEAR(a.z, b.z, tol);
    }
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(Vector3Test, Precisions);

TYPED_TEST(Vector3Test, ConstructionAndIndexRules) {
    using V = typename TestFixture::V;
    EXPECT_EQ(V(0, TypeParam(5)), V(5, 0, 0));
    EXPECT_EQ(V(2, TypeParam(5)), V(0, 0, 5));
    EXPECT_EQ(V(5, TypeParam(1)), V(0, 0, 0));
    EXPECT_EQ(V(-1, TypeParam(1)), V(0, 0, 0));
    const TypeParam values[] = {7, 8, 9};
    EXPECT_EQ(V(values), V(7, 8, 9));

    V v(1, 2, 3);
    EXPECT_EQ(v.Get(0), 1);
    EXPECT_EQ(v.Get(1), 2);
    EXPECT_EQ(v.Get(7), 3);  // every other index gives z
    EXPECT_EQ(v.Get(-1), 3);
    v.Set(9, TypeParam(42));
    v.Set(-1, TypeParam(42));
    EXPECT_EQ(v, V(1, 2, 3));
    v.Set(1, TypeParam(42));
    EXPECT_EQ(v, V(1, 42, 3));
    EXPECT_EQ(&v[2], v.GetArray() + 2);
    EXPECT_EQ(v.GetDynamicMemSize(), 0u);
    EXPECT_EQ(V::k_UnitVector, V(1, 1, 1));
}

TYPED_TEST(Vector3Test, KelVectorConversionNarrowsToFloat) {
    using V = typename TestFixture::V;
    const Kel_Vector kel{0.1f, -2.5f, 3.0f};
    V v(kel);
    EXPECT_EQ(v.x, TypeParam(0.1f));  // widened from the float, not the decimal 0.1
    V w(0, 0, 0);
    w = kel;
    EXPECT_EQ(w, v);
    const Kel_Vector back = V(TypeParam(1) / 3, 2, 3);
    EXPECT_EQ(back.x, static_cast<float>(TypeParam(1) / 3));
    EXPECT_EQ(back.z, 3.0f);
}

TEST(Vector3, LessAccurateEpsilonFollowsTheArgumentTypeNotTheInstantiation) {
    EXPECT_EQ(C3DVector3Tpl<float>::GetLessAccurateEpsilon(1.0), 1e-9);
    EXPECT_EQ(C3DVector3Tpl<float>::GetLessAccurateEpsilon(1.0f), 1e-6f);
    EXPECT_EQ(C3DVector3Tpl<double>::GetLessAccurateEpsilon(0.0), 1e-9);
    EXPECT_EQ(C3DVector3Tpl<double>::GetLessAccurateEpsilon(0.0f), 1e-6f);
}

TYPED_TEST(Vector3Test, ArithmeticIsSafeWhenArgumentsAliasTheResult) {
    using V = typename TestFixture::V;
    V v(1, 2, 3);
    v.SetCross(v, V(0, 0, 1));  // (1,2,3) x (0,0,1) = (2, -1, 0)
    EXPECT_EQ(v, V(2, -1, 0));
    v.Set(1, 0, 0);
    v.SetCross(V(0, 1, 0));  // x cross y
    EXPECT_EQ(v, V(0, 0, 1));
    v.Set(1, 2, 3);
    v.SetCross(V(0, 0, 0), v, V(0, 1, 0));
    EXPECT_EQ(v, V(-3, 0, 1));
    v.Set(1, 2, 3);
    v.SetMirror(v, V(0, 0, 0));
    EXPECT_EQ(v, V(-1, -2, -3));
    v.Add(v, v).Sub(V(1, 1, 1)).MulComp(V(2, 3, 4));
    EXPECT_EQ(v, V(-6, -15, -28));
    v.Negate(v).DivComp(V(2, 3, 4));
    EXPECT_EQ(v, V(3, 5, 7));
    v.SetMidpoint(v, V(1, 1, 1));
    EXPECT_EQ(v, V(2, 3, 4));
    v.LinearPositionInterpolate(V(0, 0, 0), v, TypeParam(0.25));
    EXPECT_EQ(v, V(0.5, 0.75, 1));
}

TYPED_TEST(Vector3Test, CrossProductSatisfiesTheLagrangeIdentity) {
    using V = typename TestFixture::V;
    std::mt19937 rng(7);
    for (int i = 0; i < 200; ++i) {
        const V a = this->Random(rng), b = this->Random(rng);
        V c;
        c.SetCross(a, b);
        const double scale = a.GetSquaredLength() * b.GetSquaredLength();
        EXPECT_NEAR(GetDot(c, a) / std::sqrt(scale), 0, this->kTol);
        EXPECT_NEAR(GetDot(c, b) / std::sqrt(scale), 0, this->kTol);
        const double dot = GetDot(a, b);
        EXPECT_NEAR(c.GetSquaredLength() / scale, (scale - dot * dot) / scale, 10 * this->kTol);
        EXPECT_EQ(GetCross(a, b), c);
        EXPECT_EQ(a * b, GetDot(a, b));
    }
}

TYPED_TEST(Vector3Test, DivByScalarUsesTheReciprocalAndDivOfVectorDividesDirectly) {
    using V = typename TestFixture::V;
    const TypeParam s = 3;
    // Find a component where x * (1/s) and x / s round differently, so the two forms show.
    TypeParam x = 1;
    while (x * (TypeParam(1) / s) == x / s) x += 1;
    V reciprocal(x, 0, 0), direct(0, 0, 0);
    reciprocal.Div(s);
    direct.Div(V(x, 0, 0), s);
    EXPECT_EQ(reciprocal.x, x * (TypeParam(1) / s));
    EXPECT_EQ(direct.x, x / s);
    EXPECT_NE(reciprocal.x, direct.x);
}

TYPED_TEST(Vector3Test, NormalizeAndSetLengthRefuseShortVectors) {
    using V = typename TestFixture::V;
    V zero(0, 0, 0);
    EXPECT_EQ(zero.Normalize(), 0);
    EXPECT_TRUE(zero.IsExactlyNull());
    V tiny(1e-7, 0, 0);
    const int expected = std::is_same<TypeParam, double>::value ? 1 : 0;
    EXPECT_EQ(tiny.Normalize(), expected);
    EXPECT_EQ(tiny, expected ? V(1, 0, 0) : V(TypeParam(1e-7), 0, 0));
    V nan(std::numeric_limits<TypeParam>::quiet_NaN(), 0, 0);
    EXPECT_EQ(nan.Normalize(), 0);
    EXPECT_EQ(nan.SetLength(1), 0);

    V v(3, 4, 0);
    EXPECT_EQ(v.SetLength(5), 1);
    EXPECT_EQ(v, V(3, 4, 0));
    EXPECT_EQ(v.SetLength(10), 1);
    EXPECT_EQ(v, V(6, 8, 0));
    EXPECT_EQ(zero.SetLength(3), 0);
    EXPECT_TRUE(zero.IsExactlyNull());

    std::mt19937 rng(3);
    for (int i = 0; i < 100; ++i) {
        V r = this->Random(rng);
        const V before = r;
        ASSERT_EQ(r.Normalize(), 1);
        EXPECT_NEAR(r.GetLength(), 1, this->kTol);
        EXPECT_NEAR(GetVctsAngle(r, before), 0, std::sqrt(this->kTol));
    }
}

TYPED_TEST(Vector3Test, ProjectionTestsTheSquaredLength) {
    using V = typename TestFixture::V;
    V v(3, 4, 5);
    EXPECT_EQ(v.SetProjection(V(0, 2, 0)), 1);
    EXPECT_EQ(v, V(0, 4, 0));
    // |a|^2 = 2.5e-7: below the float epsilon 1e-6, above the double one.
    V w(3, 4, 5);
    const int expected = std::is_same<TypeParam, double>::value ? 1 : 0;
    EXPECT_EQ(w.SetProjection(V(0, 5e-4, 0)), expected);
    this->ExpectNear(w, expected ? V(0, 4, 0) : V(3, 4, 5));
    EXPECT_EQ(w.SetProjection(V(0, 0, 0)), 0);
}

TYPED_TEST(Vector3Test, OrthogonalAndOrthoProjection) {
    using V = typename TestFixture::V;
    V v;
    // (a x b) x a = b (a.a) - a (a.b), unnormalised.
    EXPECT_EQ(v.SetOrthogonal(V(2, 0, 0), V(1, 1, 0)), 1);
    EXPECT_EQ(v, V(0, 4, 0));
    EXPECT_EQ(v.SetOrthoProj(V(2, 0, 0), V(1, 3, 4)), 1);
    this->ExpectNear(v, V(0, 3, 4));
    // Parallel: 0, and the vector holds a x b.
    EXPECT_EQ(v.SetOrthogonal(V(1, 2, 3), V(2, 4, 6)), 0);
    EXPECT_TRUE(v.IsExactlyNull());
    v.Set(9, 9, 9);
    EXPECT_EQ(v.SetOrthoProj(V(1, 0, 0), V(-3, 0, 0)), 0);

    std::mt19937 rng(11);
    for (int i = 0; i < 100; ++i) {
        const V a = this->Random(rng), b = this->Random(rng);
        V p;
        ASSERT_EQ(p.SetOrthoProj(a, b), 1);
        // p is orthogonal to a and b - p is along a.
        EXPECT_NEAR(GetDot(p, a) / (a.GetLength() * b.GetLength()), 0, 10 * this->kTol);
        EXPECT_NEAR(GetCross(b - p, a).GetLength() / (a.GetLength() * b.GetLength()), 0,
                    10 * this->kTol);
        V q = b;
        q.SetOrthoProj(a, q);  // b aliasing the result
        EXPECT_EQ(q, p);
    }
}

TYPED_TEST(Vector3Test, DecomposeIn2BasisReconstructsPlanarCombinations) {
    using V = typename TestFixture::V;
    std::mt19937 rng(5);
    for (int i = 0; i < 200; ++i) {
        const V a = this->Random(rng), b = this->Random(rng);
        std::uniform_real_distribution<TypeParam> d(-3, 3);
        const TypeParam alpha0 = d(rng), beta0 = d(rng);
        const V v = alpha0 * a + beta0 * b;
        TypeParam alpha = 99, beta = 99;
        ASSERT_EQ(v.DecomposeIn2Basis(a, b, alpha, beta), 1);
        // The residual is small relative to the data; the coefficients can only be as exact as
        // the conditioning of the two chosen rows allows.
        const V rebuilt = alpha * a + beta * b;
        EXPECT_LT((rebuilt - v).GetLength(), 1e3 * this->kTol * (a.GetLength() + b.GetLength()))
            << i;
    }
}

TYPED_TEST(Vector3Test, DecomposeIn2BasisDegenerateCases) {
    using V = typename TestFixture::V;
    TypeParam alpha = 7, beta = 7;
    // Both basis vectors null: success only for a null vector; coefficients zeroed.
    EXPECT_EQ(V(0, 0, 0).DecomposeIn2Basis(V(0, 0, 0), V(0, 0, 0), alpha, beta), 1);
    EXPECT_EQ(alpha, 0);
    EXPECT_EQ(beta, 0);
    EXPECT_EQ(V(1, 0, 0).DecomposeIn2Basis(V(0, 0, 0), V(0, 0, 0), alpha, beta), 0);
    // Parallel basis, vector along it: the larger of a[r1], b[r1] takes the whole weight.
    EXPECT_EQ(V(4, 0, 0).DecomposeIn2Basis(V(1, 0, 0), V(2, 0, 0), alpha, beta), 1);
    EXPECT_EQ(alpha, 0);
    EXPECT_EQ(beta, 2);
    EXPECT_EQ(V(4, 0, 0).DecomposeIn2Basis(V(2, 0, 0), V(1, 0, 0), alpha, beta), 1);
    EXPECT_EQ(alpha, 2);
    EXPECT_EQ(beta, 0);
    // Parallel basis, vector off it.
    EXPECT_EQ(V(0, 1, 0).DecomposeIn2Basis(V(1, 0, 0), V(2, 0, 0), alpha, beta), 0);
    EXPECT_EQ(alpha, 0);
    EXPECT_EQ(beta, 0);
    // The third equation is not tested: z is ignored here.
    EXPECT_EQ(V(1, 2, 5).DecomposeIn2Basis(V(1, 0, 0), V(0, 1, 0), alpha, beta), 1);
    EXPECT_EQ(alpha, 1);
    EXPECT_EQ(beta, 2);
    // Same dominant row (x) for both: the second row comes from b's remaining components,
    // taking z on a tie of |b.y| and |b.z|: rows x and z give alpha = 1, beta = 1 for this
    // vector, whereas rows x and y would give alpha = 3, beta = -1.
    EXPECT_EQ(V(3, 1, 2).DecomposeIn2Basis(V(2, 0, 1), V(1, 1, 1), alpha, beta), 1);
    EXPECT_EQ(alpha, 1);
    EXPECT_EQ(beta, 1);
}

TYPED_TEST(Vector3Test, MeanOfPoints) {
    using V = typename TestFixture::V;
    const V points[] = {V(0, 0, 0), V(2, 0, 4), V(4, 6, 2)};
    V mean(9, 9, 9);
    mean.SetMean(points, 3);
    this->ExpectNear(mean, V(2, 2, 2));
    mean.SetMean(nullptr, 5);
    this->ExpectNear(mean, V(2, 2, 2));
    mean.SetMean(points, 0);
    EXPECT_TRUE(std::isnan(mean.x) && std::isnan(mean.y) && std::isnan(mean.z));
}

TYPED_TEST(Vector3Test, SetMinimalRaisesValuesOrMagnitudes) {
    using V = typename TestFixture::V;
    V v(-1, 0, 3);
    v.SetMinimal(1, 2);
    EXPECT_EQ(v, V(-2, 2, 3));
    v.Set(-1, 0, 3);
    v.SetMinimal(0, 2);
    EXPECT_EQ(v, V(2, 2, 3));
    v.Set(-1, -0.5, 3);
    v.SetMinimal(V(0.5, 1, 4), 1);
    EXPECT_EQ(v, V(-1, -1, 4));
    v.Set(-1, -0.5, 3);
    v.SetMinimal(V(0.5, 1, 4), 0);
    EXPECT_EQ(v, V(0.5, 1, 4));
}

TYPED_TEST(Vector3Test, ComponentExtremesAndTheirTies) {
    using V = typename TestFixture::V;
    EXPECT_EQ(V(1, 1, 1).GetIndexOfMaxComponent(0), 2);
    EXPECT_EQ(V(1, 1, 1).GetIndexOfMinComponent(0), 2);
    EXPECT_EQ(V(3, 3, 1).GetIndexOfMaxComponent(0), 1);
    EXPECT_EQ(V(1, 1, 3).GetIndexOfMinComponent(0), 1);
    EXPECT_EQ(V(5, 1, 2).GetIndexOfMaxComponent(0), 0);
    EXPECT_EQ(V(-5, 1, 2).GetIndexOfMaxComponent(0), 2);
    EXPECT_EQ(V(-5, 1, 2).GetIndexOfMaxComponent(1), 0);
    EXPECT_EQ(V(-5, 1, 2).GetIndexOfMinComponent(0), 0);
    EXPECT_EQ(V(-5, 1, 2).GetIndexOfMinComponent(1), 1);
    EXPECT_EQ(V(-5, 1, 2).GetMaxComponent(1), 5);  // the magnitude, not -5
    EXPECT_EQ(V(-5, 1, 2).GetMaxComponent(0), 2);
    EXPECT_EQ(V(-5, 1, -2).GetMinComponent(0), -5);
    EXPECT_EQ(V(-5, -1, 2).GetMinComponent(1), 1);
}

TYPED_TEST(Vector3Test, LinearUnInterpolateUsesOnlyTheDominantAxis) {
    using V = typename TestFixture::V;
    const V a(1, 1, 1), b(5, 3, 2);
    EXPECT_EQ(V(2, 100, -100).LinearPositionUnInterpolate(a, b), TypeParam(0.25));
    EXPECT_EQ(V(3, 2, 1.5).LinearPositionUnInterpolate(a, b), TypeParam(0.5));
    // Equal extents go to z.
    EXPECT_EQ(V(0, 0, 2).LinearPositionUnInterpolate(V(0, 0, 0), V(4, 4, 4)), TypeParam(0.5));
    EXPECT_EQ(V(7, 7, 7).LinearPositionUnInterpolate(a, a), 0);
    EXPECT_EQ(V(7, 7, 7).LinearPositionUnInterpolate(a, V(1.5, 1, 1), TypeParam(1)), 0);
    std::mt19937 rng(2);
    for (int i = 0; i < 50; ++i) {
        const V p = this->Random(rng), q = this->Random(rng);
        V m;
        m.LinearPositionInterpolate(p, q, TypeParam(0.3));
        EXPECT_NEAR(m.LinearPositionUnInterpolate(p, q), 0.3, 100 * this->kTol);
    }
}

TYPED_TEST(Vector3Test, BsplineMatchesTheUniformCubicBasisWithItsRoundedConstant) {
    using V = typename TestFixture::V;
    const V p0(0, 0, 0), p1(1, 2, 0), p2(3, 2, 1), p3(4, 0, -2);
    const double k = 0.1666667 * 6;  // the constant is slightly above 1/6
    for (double t = 0; t <= 1.0; t += 0.125) {
        const double b0 = (1 - t) * (1 - t) * (1 - t) / 6;
        const double b1 = (3 * t * t * t - 6 * t * t + 4) / 6;
        const double b2 = (-3 * t * t * t + 3 * t * t + 3 * t + 1) / 6;
        const double b3 = t * t * t / 6;
        V pos, tangent;
        pos.BsplinePositionInterpolate(p0, p1, p2, p3, TypeParam(t));
        for (int c = 0; c < 3; ++c) {
            const double expected = k * (b0 * p0[c] + b1 * p1[c] + b2 * p2[c] + b3 * p3[c]);
            EXPECT_NEAR(pos[c], expected, 8 * this->kTol) << t;
        }
        // The tangent is the derivative of the exact 1/6 basis.
        const double d0 = -(1 - t) * (1 - t) / 2, d1 = (9 * t * t - 12 * t) / 6;
        const double d2 = (-9 * t * t + 6 * t + 3) / 6, d3 = t * t / 2;
        tangent.BsplineVectorInterpolate(p0, p1, p2, p3, TypeParam(t));
        for (int c = 0; c < 3; ++c) {
            EXPECT_NEAR(tangent[c], d0 * p0[c] + d1 * p1[c] + d2 * p2[c] + d3 * p3[c],
                        8 * this->kTol);
        }
    }
}

TYPED_TEST(Vector3Test, AnglesBetweenVectorsAndPoints) {
    using V = typename TestFixture::V;
    const TypeParam pi = TypeParam(kPi);
    EXPECT_NEAR(GetVctsAngle(V(1, 0, 0), V(-1, 0, 0)), pi, this->kTol);
    EXPECT_NEAR(GetVctsAngle(V(2, 0, 0), V(0, 0, 3)), pi / 2, this->kTol);
    EXPECT_EQ(GetVctsAngle(V(0, 0, 0), V(1, 0, 0)), 0);
    EXPECT_EQ(GetVctsCosAngle(V(0, 0, 0), V(1, 0, 0)), 1);
    // Below eps in |a|*|b| counts as degenerate.
    EXPECT_EQ(GetVctsCosAngle(V(1, 0, 0), V(-0.5, 0, 0), TypeParam(0.6)), 1);
    // Parallel vectors whose quotient rounds beyond 1 are clamped.
    const V u(TypeParam(0.1), TypeParam(0.7), TypeParam(0.3));
    EXPECT_LE(GetVctsCosAngle(u, u * TypeParam(3)), 1);
    EXPECT_GE(GetVctsCosAngle(u, u * TypeParam(-3)), -1);

    EXPECT_NEAR(Get2DVctsAngleSigned(V(1, 0, 0), V(0, -1, 0)), -pi / 2, this->kTol);
    EXPECT_NEAR(Get2DVctsAngleSigned(V(1, 0, 0), V(0, 1, 0)), pi / 2, this->kTol);
    EXPECT_NEAR(Get2DPntsAngleSigned(V(1, 1, 0), V(2, 1, 0), V(1, 0, 5)), -pi / 2, this->kTol);
    EXPECT_NEAR(GetPntsAngle(V(1, 1, 1), V(2, 1, 1), V(1, 2, 1)), pi / 2, this->kTol);
    EXPECT_NEAR(GetPntsCosAngle(V(1, 1, 1), V(2, 1, 1), V(3, 1, 1)), 1, this->kTol);
    EXPECT_EQ(GetPntsAngle(V(1, 1, 1), V(1, 1, 1), V(3, 1, 1)), 0);
}

TYPED_TEST(Vector3Test, TriangleAreaAndCollinearity) {
    using V = typename TestFixture::V;
    EXPECT_NEAR(GetTriangleArea(V(0, 0, 0), V(4, 0, 0), V(0, 3, 0)), 6, this->kTol);
    EXPECT_NEAR(GetTriangleArea(V(1, 1, 1), V(1, 5, 1), V(1, 1, 4)), 6, this->kTol);
    EXPECT_EQ(ArePntsCollinear(V(0, 0, 0), V(1, 1, 1), V(3, 3, 3)), 1);
    EXPECT_EQ(ArePntsCollinear(V(0, 0, 0), V(1, 1, 1), V(3, 3, 3.1)), 0);
    // Sine of the angle at p0 ~ 1e-4: collinear for eps 1e-3, not for 1e-5.
    EXPECT_EQ(ArePntsCollinear(V(0, 0, 0), V(1, 0, 0), V(1, 1e-4, 0), TypeParam(1e-3)), 1);
    EXPECT_EQ(ArePntsCollinear(V(0, 0, 0), V(1, 0, 0), V(1, 1e-4, 0), TypeParam(1e-5)), 0);
    // Coincident points make the quotient NaN.
    EXPECT_EQ(ArePntsCollinear(V(2, 2, 2), V(2, 2, 2), V(3, 3, 3)), 0);
    EXPECT_EQ(ArePntsCollinear(V(2, 2, 2), V(3, 3, 3), V(2, 2, 2)), 0);
}

TYPED_TEST(Vector3Test, OrthogonalBasisCompletesEveryDirection) {
    using V = typename TestFixture::V;
    V u, v;
    // Each branch: which component is zeroed.
    GetOrthogonalBasis(V(1, 2, 3), u, v);  // |y| > |x|, |z| > |x|
    EXPECT_EQ(u, V(0, -3, 2));
    GetOrthogonalBasis(V(3, 4, 1), u, v);  // |y| > |x|, |z| <= |x|
    EXPECT_EQ(u, V(-4, 3, 0));
    GetOrthogonalBasis(V(3, 1, 2), u, v);  // |y| <= |x|, |z| > |y|
    EXPECT_EQ(u, V(-2, 0, 3));
    GetOrthogonalBasis(V(3, 2, 1), u, v);  // |y| <= |x|, |z| <= |y|
    EXPECT_EQ(u, V(-2, 3, 0));
    EXPECT_EQ(v, GetCross(V(3, 2, 1), u));

    std::mt19937 rng(13);
    for (int i = 0; i < 200; ++i) {
        const V n = this->Random(rng);
        GetOrthogonalBasis(n, u, v);
        const TypeParam scale = n.GetSquaredLength();
        EXPECT_GT(u.GetSquaredLength(), scale / 4);  // never degenerate
        EXPECT_NEAR(GetDot(n, u) / scale, 0, this->kTol);
        EXPECT_NEAR(GetDot(n, v) / (scale * n.GetLength()), 0, this->kTol);
        EXPECT_NEAR(GetDot(u, v) / (scale * n.GetLength()), 0, this->kTol);
    }
}

TYPED_TEST(Vector3Test, BarycentricCoordinatesAreUnsignedAreaWeights) {
    using V = typename TestFixture::V;
    const V a(0, 0, 0), b(4, 0, 0), c(0, 4, 0);
    TypeParam u, v, w;
    GetBarycentricCoords(V(1, 1, 0), a, b, c, u, v, w);
    EXPECT_NEAR(u, 0.5, this->kTol);
    EXPECT_NEAR(v, 0.25, this->kTol);
    EXPECT_NEAR(w, 0.25, this->kTol);
    GetBarycentricCoords(a, a, b, c, u, v, w);
    EXPECT_EQ(u, 1);
    EXPECT_EQ(v, 0);
    EXPECT_EQ(w, 0);
    // Outside the triangle the weights stay positive and sum to 1.
    GetBarycentricCoords(V(4, 4, 0), a, b, c, u, v, w);
    EXPECT_GT(u, 0);
    EXPECT_GT(v, 0);
    EXPECT_GT(w, 0);
    EXPECT_NEAR(u + v + w, 1, this->kTol);
    // Degenerate triangle with p on it: all zero.
    GetBarycentricCoords(V(1, 0, 0), a, b, V(2, 0, 0), u, v, w);
    EXPECT_EQ(u, 0);
    EXPECT_EQ(v, 0);
    EXPECT_EQ(w, 0);

    std::mt19937 rng(17);
    std::uniform_real_distribution<TypeParam> unit(0, 1);
    for (int i = 0; i < 100; ++i) {
        const V p0 = this->Random(rng), p1 = this->Random(rng), p2 = this->Random(rng);
        TypeParam r = unit(rng), s = unit(rng);
        if (r + s > 1) r = 1 - r, s = 1 - s;
        const V p = p0 * (1 - r - s) + p1 * r + p2 * s;  // inside: weights reproduce p
        GetBarycentricCoords(p, p0, p1, p2, u, v, w);
        this->ExpectNear(p0 * u + p1 * v + p2 * w, p, 2e3 * this->kTol);
    }
}

TYPED_TEST(Vector3Test, PlanarSideOfTheThreeComponentVectorIsAlwaysOne) {
    using V = typename TestFixture::V;
    const TypeParam nan = std::numeric_limits<TypeParam>::quiet_NaN();
    const TypeParam inf = std::numeric_limits<TypeParam>::infinity();
    EXPECT_EQ(Get2DPntSide(V(0, -5, 0), V(0, 0, 0), V(1, 0, 0)), 1);  // right of the line
    EXPECT_EQ(Get2DPntSide(V(0, 5, 0), V(0, 0, 0), V(1, 0, 0)), 1);
    EXPECT_EQ(Get2DPntSide(V(nan, nan, nan), V(nan, 0, 0), V(1, nan, 0)), 1);
    EXPECT_EQ(Get2DPntSide(V(0, 0, 0), V(0, 0, 0), V(inf, 1, 0)), 1);
}

TYPED_TEST(Vector3Test, AlmostEqualIsStrictAndIsNullIsNot) {
    using V = typename TestFixture::V;
    const TypeParam eps = TypeParam(0.5);  // exact in binary
    EXPECT_EQ(AreAlmostEqual(V(1, 2, 3), V(1, 2, 3.5), eps), 0);
    EXPECT_EQ(AreAlmostEqual(V(1, 2, 3), V(1, 2, 3.25), eps), 1);
    EXPECT_EQ(AreAlmostEqual(V(0.5, 0, 0), V(0, 0, 0), eps), 0);
    EXPECT_TRUE(V(0.5, -0.5, 0.5).IsNull(eps));
    EXPECT_FALSE(V(0.5, -0.75, 0).IsNull(eps));
    const TypeParam nan = std::numeric_limits<TypeParam>::quiet_NaN();
    EXPECT_EQ(AreAlmostEqual(V(nan, 0, 0), V(nan, 0, 0), eps), 0);
    EXPECT_FALSE(V(nan, 0, 0).IsNull(eps));
    EXPECT_TRUE(V(-0.0, 0, -0.0).IsExactlyNull());
    EXPECT_FALSE(V(nan, 0, 0).IsExactlyNull());
    EXPECT_TRUE(V(1e-13, 0, 0).IsNull(1e-12));
    EXPECT_FALSE(V(1e-13, 0, 0).IsExactlyNull());
    EXPECT_TRUE(V(1, 2, 3) != V(1, 2, 4));
    EXPECT_NEAR(GetSquaredDistance(V(1, 2, 3), V(4, 6, 3)), 25, this->kTol);
    EXPECT_NEAR(GetDistance(V(1, 2, 3), V(4, 6, 3)), 5, this->kTol);
}

}  // namespace
