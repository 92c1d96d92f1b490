#include "math/rotations/rotation3.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>

#include "math/matrices/transformation_matrix.h"
#include "math/rotations/rotation.h"
#include "reference_rotations.h"

namespace {

using reference::AxisAngleMatrix;
using reference::EulerMatrix;
using reference::Wide;
constexpr double kPi = 3.141592653589793;

template <typename T>
class Rotation3Test : public testing::Test {
protected:
    using R3 = C3DRotation3Tpl<T>;
    using V = C3DVector3Tpl<T>;
    using Q = C3DQuatTpl<T>;
    using R = C3DRotMatTpl<T>;
    static constexpr bool kDouble = std::is_same<T, double>::value;
    static constexpr double kTol = kDouble ? 1e-10 : 1e-4;

    static void ExpectRotation(const R3& r, const C3DRotMatTpl<double>& m) {
        R read;
        r.GetMatrix(read);
        EXPECT_EQ(AreAlmostEqual(Wide(read), m, kTol), 1) << read << "\nagainst\n" << m;
    }
    static void ExpectSlots(const R3& r, T a, T b, T c, T d) {
        const T* s = r.GetArray();
        EXPECT_TRUE(s[0] == a && s[1] == b && s[2] == c && s[3] == d)
            << s[0] << " " << s[1] << " " << s[2] << " " << s[3];
    }
    // A rotation in each representation, with its reference matrix: Euler angles beyond pi in
    // any order, a quaternion of any length, an axis of any length.
    static R3 Random(std::mt19937& rng, E3DRotRep rep, C3DRotMatTpl<double>& m) {
        std::uniform_real_distribution<double> d(-1, 1);
        const V u(T(d(rng)), T(d(rng)), T(d(rng)));
        const T angle = T(4 * d(rng)), scale = T(1.5 + d(rng));
        if (rep == E3DROTREP_EULER) {
            const auto order = tagE3DROTORDER(rng() % 6);
            const V angles = u * T(7);
            m = EulerMatrix(angles, order);
            return R3(angles, order);
        }
        m = AxisAngleMatrix(u, angle);
        if (rep == E3DROTREP_AXISANGLE) return R3(u, angle);
        const T s = T(std::sin(angle / 2) / u.GetLength());
        return R3(Q(T(std::cos(angle / 2)), u.x * s, u.y * s, u.z * s).Mul(scale));
    }
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(Rotation3Test, Precisions);

TYPED_TEST(Rotation3Test, QueriesConversionsAndProductsOfRandomRotations) {
    using R3 = typename TestFixture::R3;
    using V = typename TestFixture::V;
    using T = TypeParam;
    const int reverse[6] = {5, 3, 4, 1, 2, 0};
    std::mt19937 rng(3);
    for (int n = 0; n < 300; ++n) {
        const auto rep = E3DRotRep(n % 3);
        C3DRotMatTpl<double> m, mb;
        const R3 r = this->Random(rng, rep, m), b = this->Random(rng, E3DRotRep(n / 3 % 3), mb);
        this->ExpectRotation(r, m);
        const auto order = tagE3DROTORDER(rng() % 6);
        V angles;
        r.GetXYZAngles(angles, order);
        this->ExpectRotation(R3(angles, order), m);
        for (int to = 0; to < 3; ++to) {
            R3 converted = r;
            converted.SetRepresentation(E3DRotRep(to), order);
            EXPECT_EQ(converted.GetRepresentation(), E3DRotRep(to));
            EXPECT_TRUE(to != E3DROTREP_EULER || rep == to || converted.GetRotOrder() == order);
            this->ExpectRotation(converted, m);
        }
        // The inverse in the same representation, Euler angles in the reverse order.
        const R3 inverse = R3().Invert(r);
        EXPECT_EQ(inverse.GetRepresentation(), rep);
        EXPECT_TRUE(rep != E3DROTREP_EULER || inverse.GetRotOrder() == reverse[r.GetRotOrder()]);
        this->ExpectRotation(inverse, C3DRotMatTpl<double>(m).Invert());
        // Products as quaternions; Euler angles of the product nearest a target.
        const C3DRotMatTpl<double> product = C3DRotMatTpl<double>().Mul(m, mb);
        R3 p;
        this->ExpectRotation(p.Mul(r, b), product);
        EXPECT_EQ(p.GetRepresentation(), E3DROTREP_QUAT);
        this->ExpectRotation(R3(p).Div(b), m);
        this->ExpectRotation(p.Interpolate(r, b, 1), mb);
        const V target(T(3), T(-2), T(8));
        this->ExpectRotation(p.MulUsingEulerAnglesTarget(r, b, target, order), product);
        EXPECT_EQ(p.GetRotOrder(), order);
        EXPECT_EQ(AreAlmostEqual(V(p.GetArray()), target, T(kPi + 1e-5)), 1);
    }
    // The rows x, y, z of a matrix, and the shortest arc between two vectors, in double.
    const V x(0.6f, 0.8f, 0), y(-0.8f, 0.6f, 0), z(0, 0, 1);
    this->ExpectRotation(R3().Set(x, y, z), reference::AxisAngleMatrix(z, std::atan2(0.8, 0.6)));
    int status = -1;
    R3 r(E3DAXIS_X, 1);
    EXPECT_EQ(r.Set(V(2, 0, 0), V(-1, 0, 0), &status) + status, 2);
    this->ExpectSlots(r, 0, 1, 0, T(std::cos(kPi / 2)));
    EXPECT_EQ(r.Set(V(0, 0, 0), V(1, 0, 0), nullptr), 0);
}

TYPED_TEST(Rotation3Test, KeepsTheRepresentationGiven) {
    using R3 = typename TestFixture::R3;
    using V = typename TestFixture::V;
    using T = TypeParam;
    this->ExpectSlots(R3(), 0, 0, 0, 1);
    // User angles beyond pi stay until another order is asked for.
    R3 r(T(0.1), T(7), 0, E3DROTORDER_ZYX);
    V angles;
    r.GetXYZAngles(angles, E3DROTORDER_ZYX);
    EXPECT_EQ(angles, V(T(0.1), 7, 0));
    r.GetXYZAngles(angles, E3DROTORDER_XYZ);
    EXPECT_EQ(AreAlmostEqual(angles, V(0, 0, 0), T(kPi)), 1);
    r.SetRepresentation(E3DROTREP_EULER, E3DROTORDER_YXZ);  // the same tag: nothing
    this->ExpectSlots(r, T(0.1), 7, 0, 5);
    r.Set(E3DROTORDER_XZY, 0);  // the angles stay, the rotation changes
    this->ExpectSlots(r, T(0.1), 7, 0, 1);
    // One axis: order XZY. A null axis is the identity, and comes back as the axis (1, 0, 0).
    this->ExpectSlots(R3(E3DAXIS_Y, 1), 0, 1, 0, 1);
    r.Set(V(0, 0, 0), 1).SetRepresentation(E3DROTREP_QUAT);
    this->ExpectSlots(r, 0, 0, 0, 1);
    this->ExpectSlots(r.SetRepresentation(E3DROTREP_AXISANGLE), 1, 0, 0, 0);
    this->ExpectSlots(R3(V(1, 2, 3), E3DROTORDER_ZYX).SetIdentity(), 0, 0, 0, 0);
    // Identity tests: exact, or strictly within eps, each in its own representation.
    EXPECT_TRUE(R3(V(1, 2, 3), 0).IsIdentity());
    EXPECT_FALSE(R3(T(1e-6), 0, 0, E3DROTORDER_XYZ).IsAlmostIdentity(T(1e-6)));
    EXPECT_FALSE(R3(typename TestFixture::Q(-1, 0, 0, 0)).IsAlmostIdentity(T(0.5)));
}

TYPED_TEST(Rotation3Test, ScalingContinuityAndAlignment) {
    using R3 = typename TestFixture::R3;
    using V = typename TestFixture::V;
    using T = TypeParam;
    // Animated angles stay continuous across a small step.
    const R3 animated(7, T(0.2), T(-4), E3DROTORDER_ZXY), step(E3DAXIS_X, T(0.01));
    R3 r;
    r.MulAndUpdateEulerAngles(animated, step, 1);
    EXPECT_EQ(r.GetRotOrder(), E3DROTORDER_ZXY);
    EXPECT_EQ(AreAlmostEqual(V(r.GetArray()), V(animated.GetArray()), T(0.1)), 1);
    // Scaling the angle ignores the first argument.
    r.Set(V(0, 0, 2), T(1.2)).Mul(animated, T(0.5));
    this->ExpectSlots(r, 0, 0, 2, T(0.6));
    r.Set(T(0.8), 0, 0, E3DROTORDER_ZYX).Mul(animated, T(0.5));
    EXPECT_EQ(r.GetRepresentation(), E3DROTREP_QUAT);
    this->ExpectRotation(r, EulerMatrix(V(T(0.4), 0, 0), 0));
    this->ExpectRotation(r.Div(step, T(0.5)), EulerMatrix(V(T(0.8), 0, 0), 0));
    // Alignment reports its status and never changes the rotation.
    int status = -1;
    EXPECT_EQ(animated.AlignAxesToVct(E3DAXIS_X, V(0, 0, 2), E3DAXIS_Y, V(0, 0, 5), &status), 1);
    EXPECT_EQ(status, 1);
    this->ExpectSlots(animated, 7, T(0.2), T(-4), 4);
}

TYPED_TEST(Rotation3Test, MatricesAndTheTransformationMatrix) {
    using R3 = typename TestFixture::R3;
    using V = typename TestFixture::V;
    using T = TypeParam;
    std::mt19937 rng(6);
    C3DRotMatTpl<double> m;
    const R3 r = this->Random(rng, E3DROTREP_EULER, m);
    typename TestFixture::R rotation;
    C3DMatrix33Tpl<T> m33;
    C3DMatrix44Tpl<T> m44;
    r.GetMatrix(rotation);
    r.GetMatrix(m33);
    r.GetMatrix(m44);
    EXPECT_EQ(C3DMatrix33Tpl<T>(3, 3, m44), rotation);
    EXPECT_TRUE(m44.Get(3, 3) == 1 && m44.Get(3, 0) == 0 && m44.Get(0, 3) == 0);
    // From the matrices as quaternions; a mirroring one gives the rotation of its negation, a
    // translation is ignored.
    this->ExpectRotation(R3(rotation), m);
    this->ExpectRotation(R3(m33.Mul(T(-2))), m);
    this->ExpectRotation(R3(m44.Set(3, 0, 5)), m);
    // The transformation matrix hands its rotation over with the scaling its bits give.
    C3DXfoMatTpl<T> x;
    x.Set(C3DMatrix33Tpl<T>(-2, 0, 0, 0, 3, 0, 0, 0, 4));  // all three bits
    V s;
    R3 r3;
    x.GetScalingAndRotation(s, r3);
    EXPECT_EQ(s, V(-2, -3, -4));
    this->ExpectSlots(r3, 1, 0, 0, 0);  // the half turn about X
    C3DRotation r64;
    r64.Set(E3DROTORDER_ZYX, 0);
    x.SetSclSignBits(2).GetScalingAndRotation(s, r64);  // the X bit alone
    EXPECT_EQ(s, V(-2, 3, 4));
    EXPECT_EQ(r64.GetFlags(), 21);
    EXPECT_EQ(r64.GetRotOrder(), E3DROTORDER_ZYX);
    EXPECT_TRUE(r64.IsIdentity());
}

TYPED_TEST(Rotation3Test, ComparisonsConvertTheRightOperand) {
    using R3 = typename TestFixture::R3;
    using T = TypeParam;
    const R3 euler(T(0.3), T(0.2), T(0.1), E3DROTORDER_ZYX);
    typename TestFixture::Q q;
    euler.GetQuat(q);
    const R3 quat(q);
    EXPECT_TRUE(quat == euler);   // converted into a quaternion: the same one
    EXPECT_FALSE(euler == quat);  // converted into Euler angles of order XYZ
    const R3 xyz = R3(quat).SetRepresentation(E3DROTREP_EULER);
    EXPECT_TRUE(xyz == quat);
    EXPECT_EQ(AreAlmostEqual(xyz, quat, T(1e-5)), 1);
    EXPECT_EQ(AreAlmostEqual(euler, quat, T(0.1)), 0);  // orders ZYX and XYZ
    // The same rotation in another order compares unequal without conversion; q and -q differ.
    EXPECT_EQ(AreAlmostEqual(R3(T(0.1), 0, 0, E3DROTORDER_XYZ), R3(T(0.1), 0, 0, E3DROTORDER_ZYX)),
              0);
    EXPECT_TRUE(quat != R3(typename TestFixture::Q(q).Negate()));
}

TYPED_TEST(Rotation3Test, TextForms) {
    using R3 = typename TestFixture::R3;
    using V = typename TestFixture::V;
    using T = TypeParam;
    std::ostringstream os;
    R3(E3DAXIS_Z, T(kPi / 2)).DumpXYZAngles("t", os);
    R3().DumpXYZAngles(nullptr, os);  // order XYZ, where the identity's Y angle is asin(-0)
    R3(V(0, 0, 2), T(kPi / 2)).DumpAxisAngle(nullptr, os);
    R3().DumpQuat(nullptr, os);
    os << R3(V(0, 0, 0), 0);
    EXPECT_EQ(os.str(),
              "t\nEuler(0090, Order(xzy)\nEuler(0-00, Order(xyz)\nAxis( 0 0 2 ), Angle(90)\n"
              "Quaternion( W:1  X:0  Y:0  Z:0 )\n( W:1  X:0  Y:0  Z:0 )");
    std::istringstream is("0.5 -0.5 0.5 0.5");
    R3 read(E3DAXIS_X, 1);
    is >> read;
    this->ExpectSlots(read, T(-0.5), T(0.5), T(0.5), T(0.5));  // W last
}

}  // namespace
