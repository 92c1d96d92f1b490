#include "math/rotations/rotation3.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "math/matrices/transformation_matrix.h"
#include "math/rotations/rotation.h"
#include "reference_rotations.h"

namespace {

using reference::AxisAngleMatrix;
using reference::EulerMatrix;
using reference::kPi;
using reference::Matrix;
using reference::Widened;

template <typename T>
class Rotation3Test : public testing::Test {
protected:
    using R3 = C3DRotation3Tpl<T>;
    using V = C3DVector3Tpl<T>;
    using Q = C3DQuatTpl<T>;

    static void ExpectRotation(const R3& r, const Matrix& m) {
        C3DRotMatTpl<T> read;
        r.GetMatrix(read);
        const double tol = std::is_same<T, double>::value ? 1e-10 : 1e-4;
        EXPECT_EQ(AreAlmostEqual(Widened(read), m, tol), 1) << read << "\nagainst\n" << m;
    }
    static void ExpectSlots(const R3& r, T a, T b, T c, T d) {
        const T* s = r.GetArray();
        EXPECT_EQ(C3DVector4Tpl<T>(s[0], s[1], s[2], s[3]), C3DVector4Tpl<T>(a, b, c, d));
    }
    // A rotation in that representation with its reference matrix: Euler angles beyond pi in any
    // order, a quaternion of any length, an axis of any length.
    static R3 Random(std::mt19937& rng, E3DRotRep rep, Matrix& m) {
        std::uniform_real_distribution<double> d(-1, 1);
        const V u{T(d(rng)), T(d(rng)), T(d(rng))}, angles = u * T(7);
        const T angle = T(4 * d(rng)), s = T(std::sin(angle / 2) / u.GetLength());
        const auto order = tagE3DROTORDER(rng() % 6);
        m = rep == E3DROTREP_EULER ? EulerMatrix(angles, order) : AxisAngleMatrix(u, angle);
        if (rep == E3DROTREP_EULER) return R3(angles, order);
        if (rep == E3DROTREP_AXISANGLE) return R3(u, angle);
        return R3(Q(T(std::cos(angle / 2)), u.x * s, u.y * s, u.z * s).Mul(T(1.5 + d(rng))));
    }
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(Rotation3Test, Precisions);

TYPED_TEST(Rotation3Test, ConversionsAndProductsOfRandomRotations) {
    using R3 = typename TestFixture::R3;
    using V = typename TestFixture::V;
    using T = TypeParam;
    std::mt19937 rng(3);
    for (int n = 0; n < 300; ++n) {
        const auto rep = E3DRotRep(n % 3);
        const auto order = tagE3DROTORDER(rng() % 6);
        Matrix m, mb;
        const R3 r = this->Random(rng, rep, m), b = this->Random(rng, E3DRotRep(n / 3 % 3), mb);
        this->ExpectRotation(r, m);
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
        // The inverse in the same representation (Euler angles in the reverse order).
        EXPECT_EQ(R3().Invert(r).GetRepresentation(), rep);
        this->ExpectRotation(R3().Invert(r), Matrix(m).Invert());
        // Products as quaternions; Euler angles of the product nearest a target.
        const Matrix product = Matrix().Mul(m, mb);
        R3 p;
        this->ExpectRotation(p.Mul(r, b), product);
        EXPECT_EQ(p.GetRepresentation(), E3DROTREP_QUAT);
        this->ExpectRotation(R3(p).Div(b), m);
        this->ExpectRotation(p.Interpolate(r, b, 1), mb);
        const V target(3, -2, 8);
        this->ExpectRotation(p.MulUsingEulerAnglesTarget(r, b, target, order), product);
        EXPECT_EQ(p.GetRotOrder(), order);
        EXPECT_EQ(AreAlmostEqual(V(p.GetArray()), target, T(kPi + 1e-5)), 1);
    }
    // The rows x, y, z of a matrix, and the shortest arc between two vectors, in double.
    const V x(0.6f, 0.8f, 0), y(-0.8f, 0.6f, 0), z(0, 0, 1);
    this->ExpectRotation(R3().Set(x, y, z), AxisAngleMatrix(z, std::atan2(0.8, 0.6)));
    int status = -1;
    R3 r(E3DAXIS_X, 1);
    EXPECT_EQ(r.Set(V(2, 0, 0), V(-1, 0, 0), &status) + status, 2);
    this->ExpectSlots(r, 0, 1, 0, T(std::cos(kPi / 2)));
    EXPECT_EQ(r.Set(V(0, 0, 0), V(1, 0, 0), nullptr), 0);
}

TYPED_TEST(Rotation3Test, KeepsTheRepresentationGivenAndComparesInIt) {
    using R3 = typename TestFixture::R3;
    using V = typename TestFixture::V;
    using Q = typename TestFixture::Q;
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
    const R3 quat(Q(T(0.9), T(0.1), T(0.3), T(-0.2)));
    quat.GetXYZAngles(angles, E3DROTORDER_XYZ);  // from another representation, through XYZ
    this->ExpectSlots(R3(quat).Set(E3DROTORDER_ZYX, 0), angles.x, angles.y, angles.z, 5);
    // One axis: order XZY. A null axis is the identity, and comes back as the axis (1, 0, 0).
    this->ExpectSlots(R3(E3DAXIS_Y, 1), 0, 1, 0, 1);
    r.Set(V(0, 0, 0), 1).SetRepresentation(E3DROTREP_QUAT);
    this->ExpectSlots(r, 0, 0, 0, 1);
    this->ExpectSlots(r.SetRepresentation(E3DROTREP_AXISANGLE), 1, 0, 0, 0);
    this->ExpectSlots(R3(V(1, 2, 3), E3DROTORDER_ZYX).SetIdentity(), 0, 0, 0, 0);
    // Identity tests: exact, or strictly within eps, each in its own representation.
    EXPECT_TRUE(R3(V(1, 2, 3), 0).IsIdentity() && R3(0, 0, 0, E3DROTORDER_ZYX).IsIdentity());
    EXPECT_FALSE(R3(T(1e-6), 0, 0, E3DROTORDER_XYZ).IsAlmostIdentity(T(1e-6)) ||
                 R3(Q(-1, 0, 0, 0)).IsAlmostIdentity(T(0.5)) ||
                 R3(Q(T(0.5), 0, 0, 0)).IsAlmostIdentity(T(0.5)));
    // Comparisons convert the right operand, into Euler angles of order XYZ.
    const R3 euler(T(0.3), T(0.2), T(0.1), E3DROTORDER_ZYX),
        xyz = R3(quat).SetRepresentation(E3DROTREP_EULER);
    Q q;
    euler.GetQuat(q);
    EXPECT_TRUE(R3(q) == euler && xyz == quat && R3(0, 0, 0, E3DROTORDER_XYZ) == R3());
    EXPECT_FALSE(euler == R3(q) || R3(0, 0, 0, E3DROTORDER_ZYX) == R3());
    EXPECT_EQ(AreAlmostEqual(xyz, quat, T(1e-5)), 1);
    EXPECT_EQ(AreAlmostEqual(euler, R3(q), T(0.1)), 0);  // orders ZYX and XYZ
    // The same rotation in another order compares unequal without conversion; q and -q differ.
    EXPECT_EQ(AreAlmostEqual(R3(T(0.1), 0, 0, E3DROTORDER_XYZ), R3(T(0.1), 0, 0, E3DROTORDER_ZYX)),
              0);
    EXPECT_TRUE(R3(q) != R3(Q(q).Negate()));
}

TYPED_TEST(Rotation3Test, MatricesInAndOut) {
    using R3 = typename TestFixture::R3;
    using V = typename TestFixture::V;
    using T = TypeParam;
    using M33 = C3DMatrix33Tpl<T>;
    const V angles(T(0.3), T(-1.2), T(2.5));
    const Matrix m = EulerMatrix(angles, E3DROTORDER_YZX);
    C3DRotMatTpl<T> rotation;
    C3DMatrix44Tpl<T> m44;
    R3(angles, E3DROTORDER_YZX).GetMatrix(rotation);
    R3(angles, E3DROTORDER_YZX).GetMatrix(m44);
    EXPECT_TRUE(M33(3, 3, m44) == rotation && m44.Get(3, 3) == 1 && m44.Get(0, 3) == 0);
    // From the matrices as quaternions; a mirroring one gives the rotation of its negation, a
    // translation is ignored.
    this->ExpectRotation(R3(rotation), m);
    this->ExpectRotation(R3(M33(rotation).Mul(T(-2))), m);
    this->ExpectRotation(R3(m44.Set(3, 0, 5)), m);
    // The transformation matrix hands its rotation over with the scaling its bits give: the
    // X bit alone, the identity kept in the order of the rotation.
    C3DXfoMatTpl<T> x;
    V s;
    C3DRotation r64;
    x.Set(M33(-2, 0, 0, 0, 3, 0, 0, 0, 4))
        .SetSclSignBits(2)
        .GetScalingAndRotation(s, r64.Set(E3DROTORDER_ZYX, 0));
    EXPECT_EQ(s, V(-2, 3, 4));
    EXPECT_TRUE(r64.GetFlags() == 21 && r64.GetRotOrder() == E3DROTORDER_ZYX && r64.IsIdentity());
}

TYPED_TEST(Rotation3Test, KeptForCompatibility) {
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
    // Text: the angles with no separator, W last when read.
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
    is >> r;
    this->ExpectSlots(r, T(-0.5), T(0.5), T(0.5), T(0.5));
}

}  // namespace
