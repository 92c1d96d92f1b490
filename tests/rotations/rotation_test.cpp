#include "math/rotations/rotation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>

#include "reference_rotations.h"

namespace {

using V = C3DVector3Tpl<double>;
using Q = C3DQuatTpl<double>;
using R = C3DRotMatTpl<double>;
using reference::AxisAngleMatrix;
using reference::EulerMatrix;
using reference::kPi;

void ExpectNear(const R& a, const R& b, double tol = 1e-9) {
    EXPECT_EQ(AreAlmostEqual(a, b, tol), 1) << a << "\nagainst\n" << b;
}
R MatrixOf(C3DRotation& r) {
    R m;
    r.GetMatrix(m);
    return m;
}
V RandomVector(std::mt19937& rng) {
    std::normal_distribution<double> d;
    return V(d(rng), d(rng), d(rng));
}

// The primary representation is never stale, and no bit above the identity bit is used.
void ExpectFlagRules(const C3DRotation& r) {
    const unsigned flags = r.GetFlags();
    EXPECT_TRUE(flags < 64 && (flags & 3) != 3 && (flags & (4u << (flags & 3))) == 0) << flags;
}

// Each representation that a coin picks (so that later operations meet stale caches), read
// through its conversion, is the rotation m; so is the rotation of a vector.
void ExpectDescribes(C3DRotation& r, const R& m, std::mt19937& rng) {
    if (r.GetFlags() & C3DRotation::k_Identity) ExpectNear(m, R());
    R read;
    Q q;
    V v;
    double angle;
    const auto order = tagE3DROTORDER(rng() % 6);
    if (rng() % 2) ExpectNear(MatrixOf(r), m);
    if (rng() % 2) {
        r.GetQuat(q);
        F3DQuatToMat(q, read);
        ExpectNear(read, m);
    }
    if (rng() % 2) {
        // Near gimbal lock in some order (an off-diagonal element near +-1) the angles carry the
        // rounding of the matrix over cos^2 of the middle angle.
        double cos2 = 1;
        for (int k = 1; k < 8; ++k)
            if (k % 4) cos2 = std::min(cos2, 1 - m.GetArray()[k] * m.GetArray()[k]);
        r.GetXYZAngles(v, order);
        ExpectNear(EulerMatrix(v, order), m, 1e-9 + 1e-15 / cos2);
    }
    r.GetAxisAngle(v, angle);
    if (std::fabs(std::sin(angle / 2)) > 1e-6) ExpectNear(AxisAngleMatrix(v, angle), m);
    V rotated, back, in = RandomVector(rng);
    r.RotateVct(&in, 1, &rotated);
    r.InvRotateVct(&rotated, 1, &back);
    EXPECT_EQ(AreAlmostEqual(rotated, V().Mul(in, m), 1e-9) & AreAlmostEqual(back, in, 1e-9), 1);
    ExpectFlagRules(r);
}

TEST(RotationTest, EveryRepresentationFollowsRandomSequences) {
    // The primary representation each operation leaves, -1 where it depends.
    const int primary[14] = {2, 1, 0, 0, 0, -1, -1, -1, 0, -1, 0, 2, 2, -1};
    std::mt19937 rng(11);
    C3DRotation rotation[3];
    R reference[3];
    for (int step = 0; step < 4000; ++step) {
        const int i = rng() % 3, j = rng() % 3, k = rng() % 3, op = rng() % 14;
        C3DRotation &r = rotation[i], &a = rotation[j], &b = rotation[k];
        const R ma = reference[j], mb = reference[k], product = R().Mul(ma, mb);
        R& m = reference[i];
        const V u = RandomVector(rng), w = RandomVector(rng);
        const double angle = std::uniform_real_distribution<double>(-7, 7)(rng);
        const double s = std::sin(angle / 2) / u.GetLength(), t = rng() % 2;
        const auto order = tagE3DROTORDER(rng() % 6);
        int status = 0;
        V angles = u * 5.0, read;
        switch (op) {
            case 0:
                r.Set(u, order);
                m = EulerMatrix(u, order);
                break;
            case 1:
                r.Set(m = AxisAngleMatrix(u, angle));
                break;
            case 2:  // a quaternion of any length
                r.Set(Q(std::cos(angle / 2), u.x * s, u.y * s, u.z * s)
                          .Mul(0.5 + 1.5 * t + u.x * u.x));
                m = AxisAngleMatrix(u, angle);
                break;
            case 3: {  // a coordinate axis takes a path of its own
                const V axis = rng() % 2 ? u : V(k, 1);
                r.Set(axis, angle);
                m = AxisAngleMatrix(axis, angle);
                break;
            }
            case 4:
                EXPECT_EQ(r.Set(u, w, status), 1);
                m = AxisAngleMatrix(GetCross(u, w), GetVctsAngle(u, w));
                break;
            case 5:
                r.Set(order, 1);
                break;
            case 6:  // the angles read in the new order: the rotation changes
                r.GetXYZAngles(angles, r.GetRotOrder());
                r.Set(order, 0);
                m = EulerMatrix(angles, order);
                break;
            case 7: {  // in the order of a, or with this rotation's order restored
                const auto previous = r.GetRotOrder();
                const int keep = rng() % 2;
                r.Set(a, keep);
                EXPECT_EQ(r.GetRotOrder(), keep ? previous : a.GetRotOrder());
                m = ma;
                break;
            }
            case 8:
                r.Mul(a, b);
                m = product;
                break;
            case 9:
                r.Invert(a);
                m = R(ma).Invert();
                break;
            case 10:  // the ends; the arc between is the quaternion's
                r.Interpolate(a, b, t);
                m = t == 0 ? ma : mb;
                break;
            case 11:  // target receives the stored angles, within pi of it on each axis
                r.MulUsingEulerAnglesTarget(a, b, angles, order);
                m = product;
                EXPECT_EQ(AreAlmostEqual(angles, u * 5.0, kPi + 1e-9), 1);
                r.GetXYZAngles(read, order);
                EXPECT_EQ(read, angles);
                break;
            case 12: {  // continuous with the angles of a (useFirst 1) or b, in that order
                const unsigned first = 1 + rng() % 2;
                C3DRotation& chosen = first == 1 ? a : b;
                const auto chosenOrder = chosen.GetRotOrder();
                chosen.GetXYZAngles(angles, chosenOrder);
                r.MulAndUpdateEulerAngles(a, b, first).GetXYZAngles(read, chosenOrder);
                EXPECT_EQ(r.GetRotOrder(), chosenOrder);
                EXPECT_EQ(AreAlmostEqual(read, angles, kPi + 1e-9), 1);
                m = product;
                break;
            }
            case 13:
                r.SetIdentity();
                m = R();
                break;
        }
        EXPECT_EQ(status, 0);
        EXPECT_TRUE(primary[op] < 0 || (r.GetFlags() & 3) == primary[op]) << op;
        ExpectDescribes(r, m, rng);
        ExpectFlagRules(a);
    }
}

TEST(RotationTest, IdentityFlagAndInverse) {
    C3DRotation r, a;
    EXPECT_EQ(r.GetFlags(), 56);
    // Null angles set the flag and keep their order; the flag then makes SetIdentity and an order
    // change touch nothing else.
    r.Set(0.0, 0.0, 0.0, E3DROTORDER_ZYX).SetIdentity();
    EXPECT_TRUE(r.IsIdentity());
    EXPECT_EQ(r.Set(E3DROTORDER_YXZ, 1).GetFlags(), 32 | 2 | 4 | 8);
    EXPECT_EQ(r.GetRotOrder(), E3DROTORDER_YXZ);
    // The exact test reads the first current representation and sets the flag; the tolerant one
    // is non-strict.
    EXPECT_TRUE(r.Set(R()).IsIdentity(0.0));
    EXPECT_EQ(r.GetFlags(), 32 | 21);
    r.Set(E3DAXIS_X, 1e-3);
    EXPECT_EQ(r.IsIdentity() + 2 * r.IsIdentity(1e-3) + 4 * r.IsAlmostIdentity(0.9e-3), 2);
    EXPECT_EQ(r.Set(E3DAXIS_Y, 0.0).GetFlags(), 56);
    // A product with the identity copies the other operand in this rotation's own order, the
    // quaternion primary and the angles stale.
    r.Set(E3DROTORDER_ZYX, 0).Mul(a.Set(0.3, 0.2, 0.1, E3DROTORDER_XYZ), r);
    EXPECT_EQ(r.GetRotOrder(), E3DROTORDER_ZYX);
    EXPECT_EQ(r.GetFlags() & (3 | C3DRotation::k_AnglesStale), C3DRotation::k_AnglesStale);
    // The inverse of a matrix is its exact transpose; angles within 1e-12 of 0 give the identity.
    const R m = AxisAngleMatrix(V(1, -2, 0.5), 2.5);
    EXPECT_EQ(MatrixOf(r.Invert(a.Set(m))), R(m).Invert());
    EXPECT_EQ(r.GetFlags(), 21);
    EXPECT_EQ(r.Invert(a.Set(1e-12, -1e-12, 0.0, E3DROTORDER_XYZ)).GetFlags(), 56);
    // Vectors are copied exactly, NaN included.
    const V in[2] = {V(std::numeric_limits<double>::quiet_NaN(), -0.0, 1e300), V(1, 2, 3)};
    V out[2];
    r.RotateVct(in, 2, out);
    EXPECT_EQ(std::memcmp(in, out, sizeof in), 0);
    r.InvRotateVct(in, 2, out);
    EXPECT_EQ(std::memcmp(in, out, sizeof in), 0);
}

TEST(RotationTest, ShortestArcBetweenParallelVectors) {
    const auto expect = [](const V& from, const V& to, const Q& expected, int result, int status) {
        C3DRotation r;
        int s = -1;
        Q q;
        EXPECT_EQ(r.Set(E3DAXIS_X, 1.0).Set(from, to, s) + 2 * s, result + 2 * status);
        r.GetQuat(q);
        EXPECT_EQ(AreAlmostEqual(q, expected, 1e-15), 1) << q;
    };
    expect(V(1, 0, 0), V(-2, 0, 0), Q(std::cos(kPi / 2), 0, 1, 0), 1, 1);  // about Y
    expect(V(0, 0, 1), V(0, 0, -1), Q(0, 0, -1, 0), 1, 1);                 // about (1, 0, 0) x from
    expect(V(0, 2, 0), V(0, 3, 0), Q(), 1, 0);
    expect(V(0, 0, 0), V(1, 0, 0), Q(), 0, 0);
}

TEST(RotationTest, OrderChangeKeepsAnglesByRelativeSequence) {
    // The angles, within 1e-12 of 0 made 0, are kept or re-extracted; the rotation stays.
    const auto expect = [](const V& given, tagE3DROTORDER from, tagE3DROTORDER to, bool kept) {
        C3DRotation r;
        V angles;
        r.Set(given, from).Set(to, 1).GetXYZAngles(angles, to);
        EXPECT_EQ(r.GetFlags(), 14);
        EXPECT_EQ(angles == V(given.x, given.y == 1e-13 ? 0 : given.y, given.z), kept) << angles;
        ExpectNear(EulerMatrix(angles, to), EulerMatrix(given, from), 1e-12);
    };
    expect(V(0, 0, 0.3), E3DROTORDER_XYZ, E3DROTORDER_ZYX, true);
    expect(V(0.3, 0.2, 0), E3DROTORDER_XYZ, E3DROTORDER_ZYX, false);  // X, Y swap
    expect(V(0.3, 0, 0.2), E3DROTORDER_XYZ, E3DROTORDER_XZY, true);   // X before Z in both
    expect(V(0, 0.3, 0.2), E3DROTORDER_YXZ, E3DROTORDER_YZX, true);
    expect(V(0, 0.3, 0.2), E3DROTORDER_YXZ, E3DROTORDER_ZXY, false);
    expect(V(0.3, 1e-13, 0.2), E3DROTORDER_XYZ, E3DROTORDER_YXZ, true);
    expect(V(0.1, 0.2, 0.3), E3DROTORDER_XYZ, E3DROTORDER_XZY, false);
    // Another primary representation: only the order changes, the angles become stale.
    C3DRotation r;
    EXPECT_EQ(r.Set(AxisAngleMatrix(V(1, 2, 3), 1)).Set(E3DROTORDER_ZYX, 1).GetFlags(), 21);
}

TEST(RotationTest, Alignment) {
    // The rows: axis a1 along p, axis a2 towards q. With p and q parallel, or q null, status 1
    // and q = p moved by 1 on a2, or on a1 when p lies along a2.
    const auto expect = [](int a1, const V& p, int a2, const V& q, int status, const R& m) {
        C3DRotation r;
        int s = -1;
        EXPECT_EQ(r.AlignAxesToVct(tagE3DAXISTYPE(a1), p, tagE3DAXISTYPE(a2), q, s) + 2 * s,
                  1 + 2 * status);
        ExpectNear(MatrixOf(r), m, 1e-15);
    };
    expect(E3DAXIS_Y, V(0, 3, 4), E3DAXIS_Z, V(1, 0, 0), 0, R(0, 0.8, -0.6, 0, 0.6, 0.8, 1, 0, 0));
    expect(E3DAXIS_X, V(0, 0, 2), E3DAXIS_Y, V(0, 0, 5), 1, R(0, 0, 1, 0, 1, 0, -1, 0, 0));
    expect(E3DAXIS_X, V(0, 0, 2), E3DAXIS_Y, V(0, 0, 0), 1, R(0, 0, 1, 0, 1, 0, -1, 0, 0));
    expect(E3DAXIS_Z, V(0, -2, 0), E3DAXIS_Y, V(0, 1, 0), 1, R(1, 0, 0, 0, 0, 1, 0, -1, 0));
    // Refusals change nothing.
    C3DRotation r;
    int status = 1;
    EXPECT_EQ(r.AlignAxesToVct(E3DAXIS_Y, V(1, 0, 0), E3DAXIS_Y, V(0, 1, 0), status) +
                  r.AlignAxesToVct(E3DAXIS_Y, V(1e-12, 0, 0), E3DAXIS_Z, V(0, 1, 0), status) +
                  status + r.GetFlags(),
              56);
    // Onto an axis: any direction; along the axis the identity, or a half turn about the next
    // axis; a null vector fails with the identity flag cleared.
    std::mt19937 rng(5);
    int (C3DRotation::*const align[3])(const V&, int&) = {
        &C3DRotation::AlignToX, &C3DRotation::AlignToY, &C3DRotation::AlignToZ};
    for (int axis = 0; axis < 3; ++axis) {
        const auto alignTo = [&r, &align, axis](const V& v, int& s) {
            return (r.*align[axis])(v, s);
        };
        const V v = RandomVector(rng);
        EXPECT_EQ(alignTo(v, status) - status, 1);
        // The rows form a right-handed orthonormal frame.
        ExpectNear(R().MulRegByTrans(MatrixOf(r), MatrixOf(r)), R(), 1e-15);
        EXPECT_NEAR(MatrixOf(r).GetDet(), 1, 1e-15);
        EXPECT_EQ(AreAlmostEqual(V().Mul(v, MatrixOf(r)), V(axis, v.GetLength()), 1e-15), 1);
        EXPECT_EQ(alignTo(V(axis, 2), status) + status + r.GetFlags(), 2 + 56);
        EXPECT_EQ(alignTo(V(axis, -2), status) + status, 2);
        ExpectNear(MatrixOf(r), AxisAngleMatrix(V((axis + 1) % 3, 1), kPi), 1e-15);
        r.SetIdentity();
        EXPECT_EQ(alignTo(V(0, 0, 0), status) + r.GetFlags(), 24);
    }
}

TEST(RotationTest, DumpTexts) {
    std::ostringstream os;
    C3DRotation r;
    r.DumpMatrix("m", os);
    r.DumpQuat(nullptr, os);
    r.Set(kPi / 2, kPi / 4, 0.0, E3DROTORDER_ZYX).DumpXYZAngles("e", os);
    r.Set(E3DAXIS_Z, kPi / 2000).DumpAxisAngle(nullptr, os);  // sin(angle / 2) > 1e-12: an axis
    EXPECT_EQ(os.str(),
              "m\n(Rotation Matrix representation)\n( 1 0 0 )\n( 0 1 0 )\n( 0 0 1 )\n"
              "(Quaternion representation)\n( W:1  X:0  Y:0  Z:0 )\n"
              "e\n(XYZ Euler Angles representation)\n90 deg,45 deg,0 deg\n"
              "(Axis-Angle representation)\n( 0 0 1 ), 0.09 degrees\n");
}

}  // namespace
