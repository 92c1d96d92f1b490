#include "math/rotations/quaternion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>

namespace {

template <typename T>
class QuaternionTest : public testing::Test {
protected:
    using Q = C3DQuatTpl<T>;
    using V = C3DVector3Tpl<T>;
    using R = C3DRotMatTpl<T>;
    static constexpr bool kDouble = std::is_same<T, double>::value;
    static constexpr double kTol = kDouble ? 1e-12 : 3e-6;

    static Q RandomUnit(std::mt19937& rng) {
        std::normal_distribution<double> d;
        const double w = d(rng), x = d(rng), y = d(rng), z = d(rng);
        const double n = std::sqrt(w * w + x * x + y * y + z * z);
        return Q(T(w / n), T(x / n), T(y / n), T(z / n));
    }
    static void ExpectNear(const Q& a, const Q& b, double tol) {
        EXPECT_EQ(AreAlmostEqual(a, b, T(tol)), 1) << a << " against " << b;
    }
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(QuaternionTest, Precisions);

TYPED_TEST(QuaternionTest, LayoutTestsProductsAndText) {
    using Q = typename TestFixture::Q;
    using T = TypeParam;
    EXPECT_TRUE(Q().IsIdentity());
    EXPECT_FALSE(Q(-1, 0, 0, 0).IsIdentity(T(0.1)));  // the same rotation, not the identity
    EXPECT_TRUE(Q(T(0.75), T(0.25), 0, 0).IsIdentity(T(0.25)));  // <=
    EXPECT_FALSE(Q(T(0.25), 5, 5, 5).IsPure(T(0.25)));           // <
    C3DVector4Tpl<T> v(1, 2, 3, 4);                              // w last
    EXPECT_EQ(Q(v), Q(4, 1, 2, 3));
    // Hamilton products worked by hand, the second one into an argument.
    Q a(1, 2, 3, 4);
    EXPECT_EQ(Q().Mul(a, Q(5, 6, 7, 8)), Q(-60, 12, 30, 24));
    EXPECT_EQ(a.Mul(a, a), Q(-28, 4, 6, 8));
    // The inverse is the conjugate, not divided by the squared length.
    EXPECT_EQ(Q(2, 1, 0, 0).Invert(), Q(2, -1, 0, 0));
    std::ostringstream dump;
    Q(0.5, 1, 2, 3).Dump("q", dump);
    EXPECT_EQ(dump.str(), "q\n( W:0.5  X:1  Y:2  Z:3 )\n");  // no blank line
}

TYPED_TEST(QuaternionTest, NormalizeCases) {
    using Q = typename TestFixture::Q;
    using T = TypeParam;
    this->ExpectNear(Q(-3, 0, 4, 0).Normalize(), Q(T(-0.6), 0, T(0.8), 0), this->kTol);
    // A squared length below 1e-12 gives the identity.
    EXPECT_EQ(Q(T(1e-7), 0, T(1e-7), 0).Normalize(), Q());
    // Within 1e-12 of unit length: not scaled, only W clamped into [-1, 1].
    if (this->kDouble) {
        EXPECT_EQ(Q(T(1 + 1e-13), T(1e-7), 0, 0).Normalize(), Q(1, T(1e-7), 0, 0));
        EXPECT_EQ(Q(T(-1 - 1e-13), 0, 0, 0).Normalize(), Q(-1, 0, 0, 0));
    }
}

TYPED_TEST(QuaternionTest, SlerpFollowsTheShorterGreatArc) {
    using Q = typename TestFixture::Q;
    using T = TypeParam;
    std::mt19937 rng(2);
    for (int n = 0; n < 200; ++n) {
        // a (a* b)^t, b taken on a's side: the relative rotation is (cos phi, sin phi u).
        const Q a = this->RandomUnit(rng), b = this->RandomUnit(rng);
        Q relative = Q().Mul(Q().Conjugate(a), b);
        if (relative.GetW() < 0) relative.Negate();
        const double phi = std::acos(std::min(1.0, double(relative.GetW())));
        for (const double t : {0.0, 0.3, 1.0, 1.5}) {
            const double k = std::sin(t * phi) / std::sin(phi);
            const Q power(T(std::cos(t * phi)), T(relative.GetX() * k), T(relative.GetY() * k),
                          T(relative.GetZ() * k));
            this->ExpectNear(Q().Slerp(a, b, T(t)), Q().Mul(a, power), 10 * this->kTol);
        }
    }
    // Equal or opposite ends blend linearly, the second negated: a comes back.
    const Q a(T(0.5), T(0.5), T(-0.5), T(0.5));
    EXPECT_EQ(Q().Slerp(a, Q(a).Negate(), T(0.5)), a);
    this->ExpectNear(Q().Slerp(a, a, T(0.3)), a, 1e-7);
}

TYPED_TEST(QuaternionTest, MatrixConversions) {
    using Q = typename TestFixture::Q;
    using R = typename TestFixture::R;
    using T = TypeParam;
    std::mt19937 rng(3);
    for (int n = 0; n < 500; ++n) {
        const Q q = this->RandomUnit(rng);
        R m;
        QuatToMat(q, m);
        Q back;
        F3DMatToQuat(m, back);  // W >= 0: q or -q
        this->ExpectNear(back, q.GetW() < 0 ? Q(q).Negate() : q, 10 * this->kTol);
    }
    // Half turns, where each diagonal element in turn beats the trace.
    const R halfTurns[] = {R(1, 0, 0, 0, -1, 0, 0, 0, -1), R(-1, 0, 0, 0, 1, 0, 0, 0, -1),
                           R(-1, 0, 0, 0, -1, 0, 0, 0, 1)};
    for (int i = 0; i < 3; ++i) {
        Q q;
        MatToQuat(halfTurns[i], q);
        EXPECT_EQ(q, Q(0, T(i == 0), T(i == 1), T(i == 2)));
    }
    // A quarter turn about X: the trace 1 does not exceed m00 = 1, so X, not W, comes from the
    // square root (in double the two differ in the last bit).
    Q q;
    MatToQuat(R(1, 0, 0, 0, 0, 1, 0, -1, 0), q);
    EXPECT_EQ(q.GetX(), T(std::sqrt(2.0) * 0.5));
}

TYPED_TEST(QuaternionTest, AxisAngle) {
    using Q = typename TestFixture::Q;
    using V = typename TestFixture::V;
    using T = TypeParam;
    const struct {
        Q q;
        V axis;
        double angle;
    } cases[] = {{Q(T(std::cos(0.5)), T(std::sin(0.5)), 0, 0), V(1, 0, 0), 1},
                 {Q(), V(0, 0, 0), 0},
                 {Q(-1, 0, 0, 0), V(0, 0, 0), 2 * 3.141592653589793},
                 {Q(T(std::cos(2.0)), 0, T(std::sin(2.0)), 0), V(0, 1, 0), 4}};  // W < 0
    for (const auto& c : cases) {
        V axis;
        T angle;
        F3DQuatToAxisAngle(c.q, axis, angle);
        EXPECT_NEAR(angle, c.angle, 10 * this->kTol);
        EXPECT_EQ(AreAlmostEqual(axis, c.axis, T(10 * this->kTol)), 1) << axis;
    }
    // A sine far below 1e-3 still gives the axis (in float W rounds to 1: no angle, no axis).
    V axis;
    T angle;
    F3DQuatToAxisAngle(Q(T(std::cos(1e-4)), T(std::sin(1e-4)), 0, 0), axis, angle);
    EXPECT_NEAR(axis.x, this->kDouble ? 1 : 0, 1e-6);
    // The axis need not be of unit length; a null one is kept as the vector part.
    Q q;
    F3DAxisAngleToQuat(V(0, 0, 2), T(1), q);
    this->ExpectNear(q, Q(T(std::cos(0.5)), 0, 0, T(std::sin(0.5))), this->kTol);
    F3DAxisAngleToQuat(V(0, 0, 0), T(1), q);
    EXPECT_EQ(q, Q(T(std::cos(0.5)), 0, 0, 0));
}

}  // namespace
