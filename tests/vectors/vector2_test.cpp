#include "math/vectors/vector2.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>

namespace {

template <typename T>
class Vector2Test : public testing::Test {
protected:
    using V = C3DVector2Tpl<T>;
    static constexpr bool kDouble = std::is_same<T, double>::value;
    static constexpr T kTol = kDouble ? T(1e-12) : T(2e-5);

    static V P(double x, double y) { return V(T(x), T(y)); }
    static V Random(std::mt19937& rng) {
        std::uniform_real_distribution<T> d(-10, 10);
        return V(d(rng), d(rng));
    }
    static void ExpectNear(const V& a, const V& b, double tol = kTol) {
        for (int k = 0; k < 2; ++k) EXPECT_NEAR(a[k], b[k], tol) << a << " against " << b;
    }
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(Vector2Test, Precisions);

TYPED_TEST(Vector2Test, ConstructionIndexAndComponentRules) {
    using V = typename TestFixture::V;
    auto P = TestFixture::P;
    EXPECT_EQ(V(1, TypeParam(5)), P(0, 5));
    EXPECT_EQ(V(3, 4), P(0, 0));  // an int first argument is an axis, and 3 is none
    EXPECT_EQ(P(1, 2).Get(5), 2);
    EXPECT_EQ(P(1, 2).SetComp(2, 9).SetComp(-1, 9), P(1, 2));
    EXPECT_EQ(P(3, 4).Rotate90DegsCCW(), P(-4, 3));
    EXPECT_EQ(P(1, 1).GetIndexOfMaxComponent(0), 1);  // ties give 1
    EXPECT_EQ(P(1, 1).GetIndexOfMinComponent(0), 1);
    EXPECT_EQ(P(-2, 1).GetIndexOfMaxComponent(0), 1);
    EXPECT_EQ(P(-2, 1).GetIndexOfMaxComponent(1), 0);
    // The B-spline weights at t = 0.5 are (1, 23, 23, 1) / 8, scaled by 0.1666667 * 8.
    this->ExpectNear(V().BsplinePositionInterpolate(P(0, 0), P(1, 2), P(3, 2), P(4, 0), 0.5),
                     P(0.1666667 * 12, 0.1666667 * 11.5), 1e-6);
}

TYPED_TEST(Vector2Test, LengthTestsAndProjection) {
    auto P = TestFixture::P;
    EXPECT_EQ(P(1e-7, 0).Normalize(), this->kDouble ? 1 : 0);
    EXPECT_EQ(P(0, 0).SetLength(1), 0);
    auto u = P(-3, 4);
    EXPECT_EQ(u.SetLength(10), 1);
    EXPECT_EQ(u, P(-6, 8));
    EXPECT_EQ(u.Normalize(), 1);
    this->ExpectNear(u, P(-0.6, 0.8));
    // The projection demands a.a >= 1e-12 in both precisions.
    auto w = P(3, 4);
    EXPECT_EQ(w.SetProjection(P(7e-7, 0)), 0);  // a.a = 4.9e-13
    EXPECT_EQ(w, P(3, 4));
    EXPECT_EQ(w.SetProjection(P(2e-6, 0)), 1);
    this->ExpectNear(w, P(3, 0));
}

TYPED_TEST(Vector2Test, SideOrientationColinearityAndTheSegmentTest) {
    auto P = TestFixture::P;
    const auto a = P(0, 0), b = P(2, 0);
    EXPECT_EQ(Get2DPntSide(P(1, -1), a, b), -1);  // right of a -> b
    EXPECT_EQ(Get2DPntSide(P(5, 0), a, b), 1);    // on the line
    EXPECT_EQ(ArePntsClockWise(a, b, P(1, -1)), 1);
    EXPECT_EQ(ArePntsClockWise(a, b, P(1, 1)), 0);
    EXPECT_EQ(ArePntsClockWise(a, b, P(7, 0)), 1);  // straight

    const TypeParam eps = TypeParam(0.001);
    EXPECT_EQ(ArePntsColinearUsingDistance(a, P(1, 0), P(2, eps / 2), eps), 1);
    EXPECT_EQ(ArePntsColinearUsingDistance(a, P(1, 0), P(2, 1), eps), 0);
    EXPECT_EQ(ArePntsColinearUsingDistance(a, a, P(2, 1), eps), 1);  // coincident points
    const TypeParam nan = std::numeric_limits<TypeParam>::quiet_NaN();
    EXPECT_EQ(ArePntsColinearUsingDistance(a, b, P(nan, nan), eps), 1);
    // The vertex opposite the longest edge (0, 0) -> (4, 1) lies 1 / sqrt(17) from its line.
    const TypeParam d = TypeParam(1 / std::sqrt(17.0));
    EXPECT_EQ(ArePntsColinearUsingDistance(P(4, 1), a, P(1, 0.5), d * TypeParam(1.01)), 1);
    EXPECT_EQ(ArePntsColinearUsingDistance(P(4, 1), a, P(1, 0.5), d * TypeParam(0.99)), 0);
    // Two longest edges of equal length: the first of them is taken.
    EXPECT_EQ(ArePntsColinearUsingDistance(a, P(1, 0), P(0.5, 2), eps), 0);
    EXPECT_EQ(FSegmentIntersect(a, P(2, 2), P(0, 2), b), 0);  // crossing segments: still 0
}

TYPED_TEST(Vector2Test, BarycentricWeightsOfCounterClockwiseTriangles) {
    const TypeParam eps = TypeParam(1e-4);
    TypeParam u, v, w;
    std::mt19937 rng(2);
    std::uniform_real_distribution<TypeParam> unit(0, 1);
    for (int n = 0; n < 200; ++n) {
        const auto p0 = this->Random(rng), p1 = this->Random(rng), p2 = this->Random(rng);
        const TypeParam r = unit(rng), s = unit(rng);
        if (GetCross(p1 - p0, p2 - p0) < 1 || std::fabs(r + s - 1) < 1e-3) continue;
        const auto p = p0 + r * (p1 - p0) + s * (p2 - p0);  // signed weights 1 - r - s, r, s
        ASSERT_EQ(GetBarycentricCoords(p, p0, p1, p2, u, v, w, eps, 3), r + s < 1 ? 1 : 0);
        EXPECT_NEAR(u, 1 - r - s, 1e3 * this->kTol);
        EXPECT_NEAR(v, r, 1e3 * this->kTol);
        EXPECT_NEAR(w, s, 1e3 * this->kTol);
    }
}

TYPED_TEST(Vector2Test, BarycentricEdgeFallbackOfClockwiseAndDegenerateTriangles) {
    auto P = TestFixture::P;
    const TypeParam eps = TypeParam(1e-3);
    TypeParam u, v, w;
    const auto a = P(0, 0), b = P(4, 0), c = P(0, -4);                      // clockwise
    EXPECT_EQ(GetBarycentricCoords(P(1, 0), a, b, c, u, v, w, eps, 3), 1);  // on a -> b, t = 0.25
    this->ExpectNear(P(u, v), P(0.75, 0.25), 0);
    EXPECT_EQ(w, 0);
    // Off every edge: the nearest in-range edge still sets the weights, the result is 0; the
    // squared distance is compared with eps itself, so 0.01^2 < 1e-3 passes.
    EXPECT_EQ(GetBarycentricCoords(P(1, 0.5), a, b, c, u, v, w, eps, 3), 0);
    EXPECT_EQ(v, 0.25);
    EXPECT_EQ(GetBarycentricCoords(P(1, 0.01), a, b, c, u, v, w, eps, 3), 1);
    // An in-range edge touching the preferred vertex beats a nearer one: c -> a at t = 1.125
    // (within 1 + eps) and distance 1 against a -> b at distance 0.5.
    EXPECT_EQ(GetBarycentricCoords(P(1, 0.5), a, b, c, u, v, w, TypeParam(2), 2), 1);
    this->ExpectNear(P(u, w), P(1.125, -0.125), 0);
    EXPECT_EQ(v, 0);
    // Touching it as the end vertex counts too: a -> b (distance 1.5) beats c -> a (0.25), and
    // as a tie of priorities the nearer a -> b beats b -> c (distance 5.25). Too far: 0.
    EXPECT_EQ(GetBarycentricCoords(P(0.25, 1.5), a, b, c, u, v, w, TypeParam(2), 1), 0);
    this->ExpectNear(P(u, v), P(0.9375, 0.0625), 0);
    EXPECT_EQ(w, 0);
    // Degenerate triangle with p = (-1, 0) on c -> a (t = 0.5) and b -> c (t = 0.75), both at
    // distance 0: the edge visited first wins, unless the other touches the preferred vertex.
    const auto d0 = P(0, 0), d1 = P(2, 0), d2 = P(-2, 0);
    EXPECT_EQ(GetBarycentricCoords(P(-1, 0), d0, d1, d2, u, v, w, eps, 3), 1);
    this->ExpectNear(P(u, w), P(0.5, 0.5), 0);
    EXPECT_EQ(GetBarycentricCoords(P(-1, 0), d0, d1, d2, u, v, w, eps, 1), 1);
    this->ExpectNear(P(v, w), P(0.25, 0.75), 0);
    EXPECT_EQ(u, 0);
}

TYPED_TEST(Vector2Test, LinesAndTheRelativeFoot) {
    auto P = TestFixture::P;
    // (9, 13) - o = (4, 8) = 2 d + (-2, 6), with (-2, 6) across d.
    const auto p = P(9, 13), o = P(5, 5), d = P(3, 1);
    typename TestFixture::V foot;
    p.GetNearestPointToLine(o, d, foot);
    EXPECT_EQ(foot, P(6, 2));  // relative to o, not the absolute (11, 7)
    EXPECT_EQ(p.GetSquaredDistanceFromLine(o, d), 40);
    p.GetNearestPointToLine(o, P(0, 0), foot);
    EXPECT_TRUE(std::isnan(foot.x));  // the copy of o is overwritten
    EXPECT_EQ(p.GetSquaredDistanceFromLine(o, P(0, 0)), 80);  // to o itself
}

TYPED_TEST(Vector2Test, ParametersAlongASegment) {
    auto P = TestFixture::P;
    const auto a = P(1, 1), b = P(5, 2);
    EXPECT_EQ(P(2, 100).LinearPositionUnInterpolate(a, b), TypeParam(0.25));  // along x only
    EXPECT_EQ(P(0, 2).LinearPositionUnInterpolate(P(0, 0), P(4, 4)), TypeParam(0.5));  // tie: y
    EXPECT_EQ(P(7, 7).LinearPositionUnInterpolate(a, a), 0);
    EXPECT_EQ(P(3, 50).IsBetween(a, b), 1);  // only x is looked at
    EXPECT_EQ(P(6, 1).IsBetween(a, b), 0);
    EXPECT_EQ(P(5.0005, 1).IsBetween(a, b, TypeParam(0.001)), 1);
    EXPECT_EQ(P(3, 50).IsBetween(b, a), 1);  // decreasing extent
    EXPECT_EQ(P(0.9, 0).IsBetween(b, a), 0);
}

TYPED_TEST(Vector2Test, DecompositionAndIntersection) {
    auto P = TestFixture::P;
    TypeParam alpha, beta;
    ASSERT_EQ(P(1, 7).DecomposeIn2Basis(P(1, 2), P(-1, 1), alpha, beta), 1);
    this->ExpectNear(P(alpha, beta), P(8.0 / 3, 5.0 / 3));
    // Parallel basis: the weight goes to the larger vector on the dominant axis.
    EXPECT_EQ(P(4, 2).DecomposeIn2Basis(P(2, 1), P(4, 2), alpha, beta), 1);
    EXPECT_EQ(alpha * 10 + beta, 1);
    EXPECT_EQ(P(1, 4).DecomposeIn2Basis(P(-1, -4), P(0.5, 2), alpha, beta), 1);
    EXPECT_EQ(alpha * 10 + beta, -10);
    EXPECT_EQ(P(1, 0).DecomposeIn2Basis(P(2, 1), P(4, 2), alpha, beta), 0);  // off the line
    EXPECT_EQ(P(0, 0).DecomposeIn2Basis(P(0, 0), P(0, 0), alpha, beta), 0);  // null basis

    auto x = P(9, 9);
    EXPECT_EQ(x.SetIntersection(P(0, 0), P(1, 1), P(0, 2), P(1, -1)), 1);
    this->ExpectNear(x, P(1, 1));
    EXPECT_EQ(x.SetIntersection(P(0, 0), P(1, 1), P(0, 2), P(2, 2)), 0);  // parallel
    this->ExpectNear(x, P(1, 1));
}

TYPED_TEST(Vector2Test, RotationProductsAndText) {
    using V3 = C3DVector3Tpl<TypeParam>;
    C3DRotMatTpl<TypeParam> r;
    r.Set(E3DAXIS_Z, TypeParam(3.141592653589793 / 2));
    typename TestFixture::V v;
    this->ExpectNear(v.Mul(V3(1, 0, 5), r), this->P(0, 1));   // x -> y
    this->ExpectNear(v.Mul(r, V3(1, 0, 5)), this->P(0, -1));  // column form: the inverse
    std::ostringstream os;
    this->P(1.5, -2).Dump("P", os);
    EXPECT_EQ(os.str(), "P\n( 1.5 -2 )\n \n");
    std::istringstream("3 4") >> v;
    EXPECT_EQ(v, this->P(3, 4));
}

}  // namespace
