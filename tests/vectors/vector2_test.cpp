#include "math/vectors/vector2.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>

namespace {

constexpr double kPi = 3.141592653589793;

template <typename T>
class Vector2Test : public testing::Test {
protected:
    using V = C3DVector2Tpl<T>;
    static constexpr bool kDouble = std::is_same<T, double>::value;
    static constexpr T kTol = kDouble ? T(1e-12) : T(2e-5);

    static V Random(std::mt19937& rng, T range = T(10)) {
        std::uniform_real_distribution<T> d(-range, range);
        return V(d(rng), d(rng));
    }
    static void ExpectNear(const V& a, const V& b, T tol = kTol) {
        EXPECT_NEAR(a.x, b.x, tol);
        EXPECT_NEAR(a.y, b.y, tol);
    }
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(Vector2Test, Precisions);

TYPED_TEST(Vector2Test, ConstructionAndIndexRules) {
    using V = typename TestFixture::V;
    EXPECT_EQ(V(), V(0, 0));
    EXPECT_EQ(V(0, TypeParam(5)), V(TypeParam(5), TypeParam(0)));
    EXPECT_EQ(V(1, TypeParam(5)), V(TypeParam(0), TypeParam(5)));
    EXPECT_EQ(V(2, TypeParam(5)), V());
    EXPECT_EQ(V(3, 4), V());  // an int first argument is an axis
    const TypeParam values[] = {7, 8};
    EXPECT_EQ(V(values), V(TypeParam(7), TypeParam(8)));
    V v(TypeParam(1), TypeParam(2));
    EXPECT_EQ(v.Get(0), 1);
    EXPECT_EQ(v.Get(5), 2);
    EXPECT_EQ(v.Get(-1), 2);
    v.SetComp(2, 9).SetComp(-1, 9);
    EXPECT_EQ(v, V(TypeParam(1), TypeParam(2)));
    v.SetComp(1, 9);
    EXPECT_EQ(v.y, 9);
    EXPECT_EQ(&v[1], v.GetArray() + 1);
}

TYPED_TEST(Vector2Test, ArithmeticAndComponentRules) {
    using V = typename TestFixture::V;
    auto P = [](double x, double y) { return V(TypeParam(x), TypeParam(y)); };
    V v = P(1, 2);
    v.Add(v, P(3, 4)).Sub(P(1, 1)).MulComp(P(2, 3)).DivComp(P(1, 2));
    EXPECT_EQ(v, P(6, 7.5));
    EXPECT_EQ(V().SetMirror(P(1, 1), P(2, 0)), P(3, -1));
    EXPECT_EQ(V().SetMidpoint(P(1, 1), P(2, 0)), P(1.5, 0.5));
    EXPECT_EQ(P(3, 4).Rotate90DegsCCW(), P(-4, 3));
    EXPECT_EQ(V().LinearPositionInterpolate(P(0, 0), P(4, 8), TypeParam(0.25)), P(1, 2));
    EXPECT_EQ(P(-1, 0).SetMinimal(1, 2), P(-2, 2));
    EXPECT_EQ(P(-1, 3).SetMinimal(0, 2), P(2, 3));
    EXPECT_EQ(P(-1, 0.5).SetMinimal(P(0.5, 1), 1), P(-1, 1));
    EXPECT_EQ(P(1, 1).GetIndexOfMaxComponent(0), 1);  // ties give 1
    EXPECT_EQ(P(1, 1).GetIndexOfMinComponent(0), 1);
    EXPECT_EQ(P(2, 1).GetIndexOfMaxComponent(0), 0);
    EXPECT_EQ(P(-2, 1).GetIndexOfMaxComponent(0), 1);
    EXPECT_EQ(P(-2, 1).GetIndexOfMaxComponent(1), 0);
    EXPECT_EQ(P(-2, 1).GetIndexOfMinComponent(1), 1);
    EXPECT_EQ(GetCross(P(1, 0), P(0, 1)), 1);
    EXPECT_EQ(GetDot(P(1, 2), P(3, 4)), 11);
    EXPECT_EQ(GetDistance(P(1, 1), P(4, 5)), 5);
    EXPECT_TRUE(P(0.5, -0.5).IsNull(TypeParam(0.5)));

    // The planar B-spline is the three-component one with z = 0.
    using V3 = C3DVector3Tpl<TypeParam>;
    const V p[4] = {P(0, 0), P(1, 2), P(3, 2), P(4, 0)};
    V3 q[4];
    for (int i = 0; i < 4; ++i) q[i].Set(p[i].x, p[i].y, 0);
    V3 point, tangent;
    point.BsplinePositionInterpolate(q[0], q[1], q[2], q[3], TypeParam(0.3));
    tangent.BsplineVectorInterpolate(q[0], q[1], q[2], q[3], TypeParam(0.3));
    EXPECT_EQ(V().BsplinePositionInterpolate(p[0], p[1], p[2], p[3], TypeParam(0.3)),
              V(point.x, point.y));
    EXPECT_EQ(V().BsplineVectorInterpolate(p[0], p[1], p[2], p[3], TypeParam(0.3)),
              V(tangent.x, tangent.y));
}

TYPED_TEST(Vector2Test, LengthTestsAndProjection) {
    using V = typename TestFixture::V;
    V tiny(TypeParam(1e-7), TypeParam(0));
    EXPECT_EQ(tiny.Normalize(), this->kDouble ? 1 : 0);
    V v(TypeParam(3), TypeParam(4));
    EXPECT_EQ(v.SetLength(10), 1);
    EXPECT_EQ(v, V(TypeParam(6), TypeParam(8)));
    V zero;
    EXPECT_EQ(zero.SetLength(1), 0);
    EXPECT_EQ(zero.Normalize(), 0);
    EXPECT_EQ(zero, V());
    // The projection demands a.a >= 1e-12 in both precisions.
    V w(TypeParam(3), TypeParam(4));
    EXPECT_EQ(w.SetProjection(V(TypeParam(7e-7), TypeParam(0))), 0);  // a.a = 4.9e-13
    EXPECT_EQ(w, V(TypeParam(3), TypeParam(4)));
    EXPECT_EQ(w.SetProjection(V(TypeParam(2e-6), TypeParam(0))), 1);
    this->ExpectNear(w, V(TypeParam(3), TypeParam(0)));
}

TYPED_TEST(Vector2Test, SideAndOrientation) {
    using V = typename TestFixture::V;
    const V a(TypeParam(0), TypeParam(0)), b(TypeParam(2), TypeParam(0));
    EXPECT_EQ(Get2DPntSide(V(TypeParam(1), TypeParam(-1)), a, b), -1);  // right of a -> b
    EXPECT_EQ(Get2DPntSide(V(TypeParam(1), TypeParam(1)), a, b), 1);
    EXPECT_EQ(Get2DPntSide(V(TypeParam(5), TypeParam(0)), a, b), 1);  // on the line
    EXPECT_EQ(ArePntsClockWise(a, b, V(TypeParam(1), TypeParam(-1))), 1);
    EXPECT_EQ(ArePntsClockWise(a, b, V(TypeParam(1), TypeParam(1))), 0);
    EXPECT_EQ(ArePntsClockWise(a, b, V(TypeParam(7), TypeParam(0))), 1);  // straight
}

TYPED_TEST(Vector2Test, ColinearityByDistance) {
    using V = typename TestFixture::V;
    const TypeParam eps = TypeParam(0.001);
    const V p0(TypeParam(0), TypeParam(0)), p1(TypeParam(1), TypeParam(0));
    EXPECT_EQ(ArePntsColinearUsingDistance(p0, p1, V(TypeParam(2), eps / 2), eps), 1);
    EXPECT_EQ(ArePntsColinearUsingDistance(p0, p1, V(TypeParam(2), TypeParam(1)), eps), 0);
    EXPECT_EQ(ArePntsColinearUsingDistance(p0, p0, V(TypeParam(2), TypeParam(1)), eps), 1);
    const TypeParam nan = std::numeric_limits<TypeParam>::quiet_NaN();
    EXPECT_EQ(ArePntsColinearUsingDistance(p0, p1, V(nan, nan), eps), 1);

    // Against the distance of the vertex opposite the longest edge to that edge's line.
    std::mt19937 rng(1);
    for (int n = 0; n < 300; ++n) {
        const V q[3] = {this->Random(rng), this->Random(rng), this->Random(rng)};
        int k = 0;
        for (int i = 1; i < 3; ++i)
            if (GetSquaredDistance(q[(i + 1) % 3], q[i]) > GetSquaredDistance(q[(k + 1) % 3], q[k]))
                k = i;
        const V& s = q[k];
        const V e = q[(k + 1) % 3] - s;
        const V& o = q[(k + 2) % 3];
        const double distance = std::fabs(double(GetCross(e, o - s))) / double(e.GetLength());
        const TypeParam bound = TypeParam(n % 2 == 0 ? distance * 1.01 : distance * 0.99);
        EXPECT_EQ(ArePntsColinearUsingDistance(q[0], q[1], q[2], bound), n % 2 == 0 ? 1 : 0) << n;
    }
}

TYPED_TEST(Vector2Test, BarycentricWeightsOfCounterClockwiseTriangles) {
    using V = typename TestFixture::V;
    const TypeParam eps = TypeParam(1e-4);
    const V a(TypeParam(0), TypeParam(0)), b(TypeParam(4), TypeParam(0)),
        c(TypeParam(0), TypeParam(4));
    TypeParam u, v, w;
    EXPECT_EQ(GetBarycentricCoords(a, a, b, c, u, v, w, eps, 3), 1);
    EXPECT_EQ(u, 1);
    EXPECT_EQ(v, 0);
    EXPECT_EQ(w, 0);
    EXPECT_EQ(GetBarycentricCoords(V(TypeParam(4), TypeParam(4)), a, b, c, u, v, w, eps, 3), 0);
    EXPECT_NEAR(u, -1, this->kTol);  // signed weights outside
    EXPECT_NEAR(u + v + w, 1, this->kTol);

    std::mt19937 rng(2);
    std::uniform_real_distribution<TypeParam> unit(0, 1);
    for (int n = 0; n < 200; ++n) {
        V p0 = this->Random(rng), p1 = this->Random(rng), p2 = this->Random(rng);
        if (GetCross(p1 - p0, p2 - p0) < 1) continue;  // counter-clockwise and not thin
        TypeParam r = unit(rng), s = unit(rng);
        if (std::fabs(r + s - 1) < 1e-3) continue;  // too near the edge b c to tell
        const V p = p0 + r * (p1 - p0) + s * (p2 - p0);
        ASSERT_EQ(GetBarycentricCoords(p, p0, p1, p2, u, v, w, eps, 3), r + s < 1 ? 1 : 0);
        EXPECT_NEAR(u, 1 - r - s, 1e3 * this->kTol);
        EXPECT_NEAR(v, r, 1e3 * this->kTol);
        EXPECT_NEAR(w, s, 1e3 * this->kTol);
    }
}

TYPED_TEST(Vector2Test, BarycentricEdgeFallbackOfClockwiseAndDegenerateTriangles) {
    using V = typename TestFixture::V;
    auto P = [](double x, double y) { return V(TypeParam(x), TypeParam(y)); };
    const TypeParam eps = TypeParam(1e-3);
    TypeParam u, v, w;
    // Clockwise a b c; p on the edge a -> b at t = 0.25.
    const V a = P(0, 0), b = P(4, 0), c = P(0, -4);
    EXPECT_EQ(GetBarycentricCoords(P(1, 0), a, b, c, u, v, w, eps, 3), 1);
    EXPECT_NEAR(u, 0.75, this->kTol);
    EXPECT_NEAR(v, 0.25, this->kTol);
    EXPECT_EQ(w, 0);
    // Off every edge: the nearest in-range edge still sets the weights, the result is 0.
    EXPECT_EQ(GetBarycentricCoords(P(1, 0.5), a, b, c, u, v, w, eps, 3), 0);
    EXPECT_NEAR(v, 0.25, this->kTol);
    // The test compares the squared distance with eps itself: 0.01^2 < 1e-3 passes.
    EXPECT_EQ(GetBarycentricCoords(P(1, 0.01), a, b, c, u, v, w, eps, 3), 1);

    // Degenerate triangle on the x axis with p = (-1, 0) on both c -> a (t = 0.5) and b -> c
    // (t = 0.75) at distance 0: the edge visited first wins the tie, unless the other one touches
    // the preferred vertex.
    const V d0 = P(0, 0), d1 = P(2, 0), d2 = P(-2, 0);
    EXPECT_EQ(GetBarycentricCoords(P(-1, 0), d0, d1, d2, u, v, w, eps, 3), 1);
    EXPECT_EQ(u, 0.5);
    EXPECT_EQ(v, 0);
    EXPECT_EQ(w, 0.5);
    EXPECT_EQ(GetBarycentricCoords(P(-1, 0), d0, d1, d2, u, v, w, eps, 1), 1);
    EXPECT_EQ(u, 0);
    EXPECT_EQ(v, 0.25);
    EXPECT_EQ(w, 0.75);
    // An in-range edge touching the preferred vertex beats a nearer one: c -> a at t = 1.125
    // (within 1 + eps) and distance 1 against a -> b at distance 0.5.
    const TypeParam wide = 2;
    EXPECT_EQ(GetBarycentricCoords(P(1, 0.5), a, b, c, u, v, w, wide, 2), 1);
    EXPECT_EQ(u, 1.125);
    EXPECT_EQ(v, 0);
    EXPECT_EQ(w, -0.125);
    EXPECT_EQ(GetBarycentricCoords(P(1, 0.5), a, b, c, u, v, w, wide, 3), 1);
    EXPECT_EQ(u, 0.75);
    EXPECT_EQ(v, 0.25);
    // A point triangle: every t is 0, every edge is in range at the same distance.
    EXPECT_EQ(GetBarycentricCoords(P(0, 0.01), d0, d0, d0, u, v, w, eps, 3), 1);
    EXPECT_EQ(w, 1);  // start of c -> a
    EXPECT_EQ(u, 0);
}

TYPED_TEST(Vector2Test, SegmentIntersectionIsAlwaysZero) {
    using V = typename TestFixture::V;
    auto P = [](double x, double y) { return V(TypeParam(x), TypeParam(y)); };
    EXPECT_EQ(FSegmentIntersect(P(0, 0), P(2, 2), P(0, 2), P(2, 0)), 0);  // crossing
    EXPECT_EQ(FSegmentIntersect(P(0, 0), P(2, 0), P(1, 0), P(3, 0)), 0);  // overlapping
    std::mt19937 rng(3);
    for (int n = 0; n < 100; ++n) {
        EXPECT_EQ(FSegmentIntersect(this->Random(rng), this->Random(rng), this->Random(rng),
                                    this->Random(rng)),
                  0);
    }
}

TYPED_TEST(Vector2Test, LinesAndTheRelativeFoot) {
    using V = typename TestFixture::V;
    auto P = [](double x, double y) { return V(TypeParam(x), TypeParam(y)); };
    V foot;
    P(7, 9).GetNearestPointToLine(P(5, 5), P(1, 0), foot);
    EXPECT_EQ(foot, P(2, 0));  // relative to o, not the absolute (7, 5)
    P(7, 9).GetNearestPointToLine(P(5, 5), P(0, 0), foot);
    EXPECT_TRUE(std::isnan(foot.x));  // the copy of o is overwritten
    EXPECT_EQ(P(7, 9).GetSquaredDistanceFromLine(P(5, 5), P(2, 0)), 16);
    EXPECT_EQ(P(7, 9).GetSquaredDistanceFromLine(P(5, 5), P(0, 0)), 20);  // to o itself

    std::mt19937 rng(4);
    for (int n = 0; n < 100; ++n) {
        const V p = this->Random(rng), o = this->Random(rng), d = this->Random(rng);
        const double cross = GetCross(d, p - o);
        EXPECT_NEAR(p.GetSquaredDistanceFromLine(o, d), cross * cross / GetDot(d, d),
                    1e3 * this->kTol);
        p.GetNearestPointToLine(o, d, foot);
        EXPECT_NEAR(GetCross(foot, d) / d.GetLength(), 0, 1e2 * this->kTol);  // along d
        EXPECT_NEAR(GetDot(p - o - foot, d), 0, 1e3 * this->kTol);            // perpendicular rest
    }
}

TYPED_TEST(Vector2Test, ParametersAlongASegment) {
    using V = typename TestFixture::V;
    auto P = [](double x, double y) { return V(TypeParam(x), TypeParam(y)); };
    const V a = P(1, 1), b = P(5, 2);
    EXPECT_EQ(P(2, 100).LinearPositionUnInterpolate(a, b), TypeParam(0.25));  // along x only
    EXPECT_EQ(P(0, 2).LinearPositionUnInterpolate(P(0, 0), P(4, 4)), TypeParam(0.5));  // tie: y
    EXPECT_EQ(P(7, 7).LinearPositionUnInterpolate(a, a), 0);
    EXPECT_EQ(P(3, 50).IsBetween(a, b), 1);  // only x is looked at
    EXPECT_EQ(P(6, 1).IsBetween(a, b), 0);
    EXPECT_EQ(P(5.0005, 1).IsBetween(a, b, TypeParam(0.001)), 1);
    EXPECT_EQ(P(3, 50).IsBetween(b, a), 1);  // decreasing extent
    EXPECT_EQ(P(0.9, 0).IsBetween(b, a), 0);
    EXPECT_EQ(P(1, 1).IsBetween(a, a, TypeParam(0.1)), 1);
}

TYPED_TEST(Vector2Test, DecompositionAndIntersection) {
    using V = typename TestFixture::V;
    auto P = [](double x, double y) { return V(TypeParam(x), TypeParam(y)); };
    TypeParam alpha, beta;
    std::mt19937 rng(5);
    for (int n = 0; n < 200; ++n) {
        const V a = this->Random(rng), b = this->Random(rng);
        if (std::fabs(GetCross(a, b)) < 1) continue;
        const TypeParam al = TypeParam(n % 7 - 3), be = TypeParam(n % 5 - 2);
        ASSERT_EQ((al * a + be * b).DecomposeIn2Basis(a, b, alpha, beta), 1);
        EXPECT_NEAR(alpha, al, 1e3 * this->kTol);
        EXPECT_NEAR(beta, be, 1e3 * this->kTol);
    }
    // Parallel basis: the weight goes to the larger vector on the dominant axis.
    EXPECT_EQ(P(4, 2).DecomposeIn2Basis(P(2, 1), P(4, 2), alpha, beta), 1);
    EXPECT_EQ(alpha, 0);
    EXPECT_EQ(beta, 1);
    EXPECT_EQ(P(1, 4).DecomposeIn2Basis(P(-1, -4), P(0.5, 2), alpha, beta), 1);
    EXPECT_EQ(alpha, -1);
    EXPECT_EQ(beta, 0);
    EXPECT_EQ(P(1, 0).DecomposeIn2Basis(P(2, 1), P(4, 2), alpha, beta), 0);  // off the line
    EXPECT_EQ(P(0, 0).DecomposeIn2Basis(P(0, 0), P(0, 0), alpha, beta), 0);  // null basis
    EXPECT_EQ(alpha, 0);
    EXPECT_EQ(beta, 0);

    V x = P(9, 9);
    EXPECT_EQ(x.SetIntersection(P(0, 0), P(1, 1), P(0, 2), P(1, -1)), 1);
    this->ExpectNear(x, P(1, 1));
    EXPECT_EQ(x.SetIntersection(P(0, 0), P(1, 1), P(0, 2), P(2, 2)), 0);  // parallel
    this->ExpectNear(x, P(1, 1));
}

TYPED_TEST(Vector2Test, RotationProductsKeepXAndY) {
    using V = typename TestFixture::V;
    using V3 = C3DVector3Tpl<TypeParam>;
    C3DRotMatTpl<TypeParam> r;
    r.Set(E3DAXIS_Z, TypeParam(kPi / 2));
    V v;
    v.Mul(V3(1, 0, 5), r);  // x -> y
    this->ExpectNear(v, V(TypeParam(0), TypeParam(1)));
    v.Mul(r, V3(1, 0, 5));  // column form: the inverse rotation
    this->ExpectNear(v, V(TypeParam(0), TypeParam(-1)));
}

TYPED_TEST(Vector2Test, TextFormat) {
    using V = typename TestFixture::V;
    std::ostringstream os;
    V(TypeParam(1.5), TypeParam(-2)).Dump("P", os);
    EXPECT_EQ(os.str(), "P\n( 1.5 -2 )\n \n");
    std::istringstream is("3 4");
    V v;
    is >> v;
    EXPECT_EQ(v, V(TypeParam(3), TypeParam(4)));
}

}  // namespace
