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
        for (int k = 0; k < 4; ++k) EXPECT_NEAR(a.GetArray()[k], b.GetArray()[k], tol) << k;
    }
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(QuaternionTest, Precisions);

TYPED_TEST(QuaternionTest, LayoutAndTests) {
    using Q = typename TestFixture::Q;
    using T = TypeParam;
    EXPECT_TRUE(Q().IsIdentity());
    EXPECT_FALSE(Q(-1, 0, 0, 0).IsIdentity());  // the same rotation, not the identity
    EXPECT_FALSE(Q(-1, 0, 0, 0).IsIdentity(T(0.1)));
    EXPECT_TRUE(Q(T(0.75), T(0.25), 0, 0).IsIdentity(T(0.25)));  // <=
    // The four-component vector keeps w last.
    C3DVector4Tpl<T> v(1, 2, 3, 4);
    EXPECT_EQ(Q(v), Q(4, 1, 2, 3));
    Q(4, 1, 2, 3).Get(v);
    EXPECT_EQ(v, C3DVector4Tpl<T>(1, 2, 3, 4));
    EXPECT_EQ(Q().Set(C3DVector3Tpl<T>(1, 2, 3)), Q(0, 1, 2, 3));
    EXPECT_TRUE(Q(T(0.25), 5, 5, 5).IsPure(T(0.5)));
    EXPECT_FALSE(Q(T(0.25), 5, 5, 5).IsPure(T(0.25)));  // strict
    EXPECT_TRUE(Q(T(0.25), T(-0.25), 0, 0).IsNull(T(0.25)));
    EXPECT_EQ(AreAlmostEqual(Q(1, 0, 0, 0), Q(1, 0, 0, T(0.25)), T(0.25)), 0);
    EXPECT_EQ(AreAlmostEqual(Q(1, 0, 0, 0), Q(-1, 0, 0, 0), T(0.5)), 0);
    EXPECT_TRUE(std::signbit(Q().Negate().GetX()));
}

TYPED_TEST(QuaternionTest, HamiltonProductOfTheBasisUnits) {
    using Q = typename TestFixture::Q;
    // product[a][b] = e_a e_b for e = 1, i, j, k, as (sign) (1 + index).
    const int product[4][4] = {{1, 2, 3, 4}, {2, -1, 4, -3}, {3, -4, -1, 2}, {4, 3, -2, -1}};
    const auto unit = [](int signedIndex) {
        Q q(0, 0, 0, 0);
        q.GetArray()[std::abs(signedIndex) - 1] = signedIndex < 0 ? -1 : 1;
        return q;
    };
    for (int a = 0; a < 4; ++a) {
        for (int b = 0; b < 4; ++b)
            EXPECT_EQ(Q().Mul(unit(a + 1), unit(b + 1)), unit(product[a][b])) << a << b;
        Q aliased = unit(a + 1);
        EXPECT_EQ(aliased.Mul(aliased, aliased), unit(product[a][a]));
    }
    // Products with a vector are products with its pure quaternion.
    const C3DVector3Tpl<TypeParam> v(1, 2, 3);
    const Q q(4, 5, 6, 7);
    EXPECT_EQ(Q().Mul(q, v), Q().Mul(q, Q(v)));
    EXPECT_EQ(Q().Mul(v, q), Q().Mul(Q(v), q));
    // The inverse is the conjugate and does not divide by the squared length.
    EXPECT_EQ(Q(2, 0, 0, 0).Invert(), Q(2, 0, 0, 0));
    EXPECT_EQ(Q(1, 2, 3, 4).Invert(), Q(1, -2, -3, -4));
    EXPECT_EQ(Q().Mul(q, Q().Conjugate(q)), Q(q.GetSquaredLength(), 0, 0, 0));
}

TYPED_TEST(QuaternionTest, NormalizeCases) {
    using Q = typename TestFixture::Q;
    using T = TypeParam;
    const struct {
        Q in, out;
    } cases[] = {{Q(0, 0, 0, 0), Q()},              // below 1e-12: the identity
                 {Q(T(1e-7), 0, T(1e-7), 0), Q()},  // 2e-14
                 {Q(2, 0, 0, 0), Q()},
                 {Q(-3, 0, 4, 0), Q(T(-0.6), 0, T(0.8), 0)}};
    for (const auto& c : cases) this->ExpectNear(Q(c.in).Normalize(), c.out, this->kTol);
    if (this->kDouble) {
        // Within 1e-12 of unit length: no scaling, only the clamp of W.
        const Q nearUnit(T(1 + 1e-13), T(1e-7), 0, 0);
        EXPECT_EQ(Q(nearUnit).Normalize(), Q(1, T(1e-7), 0, 0));
    }
    std::mt19937 rng(1);
    for (int n = 0; n < 100; ++n) {
        const Q unit = this->RandomUnit(rng);
        this->ExpectNear(Q().Mul(T(3), unit).Normalize(), unit, this->kTol);
    }
}

TYPED_TEST(QuaternionTest, SlerpFollowsTheShorterGreatArc) {
    using Q = typename TestFixture::Q;
    using T = TypeParam;
    std::mt19937 rng(2);
    for (int n = 0; n < 200; ++n) {
        const Q a = this->RandomUnit(rng), b = this->RandomUnit(rng);
        // a (a* b')^t with b' = +-b on a's side: the relative rotation (cos phi, sin phi u).
        const T dot =
            a.GetW() * b.GetW() + a.GetX() * b.GetX() + a.GetY() * b.GetY() + a.GetZ() * b.GetZ();
        const Q near = dot < 0 ? Q(b).Negate() : b;
        const Q relative = Q().Mul(Q().Conjugate(a), near);
        const double phi = std::acos(std::min(1.0, double(relative.GetW())));
        const double k = std::sin(phi) > 1e-6 ? 1 / std::sin(phi) : 0;
        for (const double t : {0.0, 0.3, 1.0, 1.5}) {
            const Q power(T(std::cos(t * phi)), T(relative.GetX() * k * std::sin(t * phi)),
                          T(relative.GetY() * k * std::sin(t * phi)),
                          T(relative.GetZ() * k * std::sin(t * phi)));
            this->ExpectNear(Q().Slerp(a, b, T(t)), Q().Mul(a, power), 10 * this->kTol);
        }
    }
    // Equal and opposite ends blend linearly, the second negated: a itself comes back.
    const Q a(T(0.5), T(0.5), T(-0.5), T(0.5));
    this->ExpectNear(Q().Slerp(a, Q(a).Negate(), T(0.5)), a, 1e-15);
    this->ExpectNear(Q().Slerp(a, a, T(0.3)), a, 1e-7);
}

TYPED_TEST(QuaternionTest, TextFormat) {
    using Q = typename TestFixture::Q;
    std::ostringstream os;
    os << Q();
    EXPECT_EQ(os.str(), "( W:1  X:0  Y:0  Z:0 )");
    std::ostringstream dump;
    Q(0.5, 1, 2, 3).Dump("q", dump);
    EXPECT_EQ(dump.str(), "q\n( W:0.5  X:1  Y:2  Z:3 )\n");  // no blank line
    std::istringstream is("4 1 2 3");
    Q read;
    is >> read;
    EXPECT_EQ(read, Q(4, 1, 2, 3));
}

TYPED_TEST(QuaternionTest, MatrixConversions) {
    using Q = typename TestFixture::Q;
    using R = typename TestFixture::R;
    using V = typename TestFixture::V;
    using T = TypeParam;
    std::mt19937 rng(3);
    for (int n = 0; n < 500; ++n) {
        const Q q = this->RandomUnit(rng), p = this->RandomUnit(rng);
        R m, mp;
        QuatToMat(q, m);
        QuatToMat(p, mp);
        // Rows are the images of the axes: v m = q (0, v) q*.
        for (int axis = 0; axis < 3; ++axis) {
            const Q image = Q().Mul(Q().Mul(q, V(axis, T(1))), Q().Conjugate(q));
            for (int k = 0; k < 3; ++k)
                EXPECT_NEAR(m.Get(axis, k), image.GetArray()[k + 1], this->kTol);
        }
        // q p applies p first: its matrix is m_p m_q.
        R product;
        QuatToMat(Q().Mul(q, p), product);
        EXPECT_EQ(AreAlmostEqual(product, R().Mul(mp, m), T(10 * this->kTol)), 1);
        // Back to the quaternion with W >= 0: q or -q.
        Q back;
        MatToQuat(m, back);
        EXPECT_GE(back.GetW(), 0);
        this->ExpectNear(back, q.GetW() < 0 ? Q(q).Negate() : q, 10 * this->kTol);
        Q exported;
        F3DMatToQuat(m, exported);
        EXPECT_EQ(exported, back);
    }
    // Half turns, where the trace loses to each diagonal element in turn.
    const struct {
        R m;
        Q q;
    } halfTurns[] = {{R(1, 0, 0, 0, -1, 0, 0, 0, -1), Q(0, 1, 0, 0)},
                     {R(-1, 0, 0, 0, 1, 0, 0, 0, -1), Q(0, 0, 1, 0)},
                     {R(-1, 0, 0, 0, -1, 0, 0, 0, 1), Q(0, 0, 0, 1)}};
    for (const auto& c : halfTurns) {
        Q q;
        MatToQuat(c.m, q);
        EXPECT_EQ(q, c.q);
    }
    // A quarter turn about X: the trace 1 does not exceed m00 = 1, so X, not W, is the square
    // root (in double the two differ in the last bit).
    Q q;
    MatToQuat(R(1, 0, 0, 0, 0, 1, 0, -1, 0), q);
    EXPECT_EQ(q.GetX(), T(std::sqrt(2.0) * 0.5));
    EXPECT_NEAR(q.GetW(), q.GetX(), this->kTol);
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
        for (int k = 0; k < 3; ++k) EXPECT_NEAR(axis[k], c.axis[k], 10 * this->kTol);
    }
    // The axis need not be of unit length; a null one is kept as the vector part.
    Q q;
    F3DAxisAngleToQuat(V(0, 0, 2), T(1), q);
    this->ExpectNear(q, Q(T(std::cos(0.5)), 0, 0, T(std::sin(0.5))), this->kTol);
    F3DAxisAngleToQuat(V(0, 0, 0), T(1), q);
    EXPECT_EQ(q, Q(T(std::cos(0.5)), 0, 0, 0));
    // The float forms are the double computation, narrowed.
    C3DQuatTpl<double> wide;
    F3DAxisAngleToQuat(C3DVector3Tpl<double>(1, 2, 3), double(0.7f), wide);
    C3DQuatTpl<float> narrow;
    F3DAxisAngleToQuatf(C3DVector3Tpl<float>(1, 2, 3), 0.7f, narrow);
    EXPECT_EQ(narrow, C3DQuatTpl<float>(float(wide.GetW()), float(wide.GetX()), float(wide.GetY()),
                                        float(wide.GetZ())));
}

}  // namespace
