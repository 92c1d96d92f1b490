#include "math/rotations/rotation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>

#include "reference_rotations.h"

namespace {

using V = C3DVector3Tpl<double>;
using Q = C3DQuatTpl<double>;
using R = C3DRotMatTpl<double>;
constexpr double kPi = 3.141592653589793;
constexpr double kTol = 1e-9;
using reference::AxisAngleMatrix;
using reference::EulerMatrix;

R Transposed(const R& m) { return R(m).Invert(); }
void ExpectNear(const R& a, const R& b, double tol = kTol) {
    EXPECT_EQ(AreAlmostEqual(a, b, tol), 1) << a << "\nagainst\n" << b;
}
V RandomVector(std::mt19937& rng) {
    std::normal_distribution<double> d;
    return V(d(rng), d(rng), d(rng));
}
double Uniform(std::mt19937& rng, double a, double b) {
    return std::uniform_real_distribution<double>(a, b)(rng);
}
tagE3DROTORDER RandomOrder(std::mt19937& rng) { return tagE3DROTORDER(rng() % 6); }

// The primary representation is never stale, and no bit above the identity bit is used.
void ExpectFlagRules(const C3DRotation& r) {
    const unsigned flags = r.GetFlags();
    EXPECT_LT(flags, 64u);
    ASSERT_NE(flags & 3, 3u);
    EXPECT_EQ(flags & (4u << (flags & 3)), 0u) << flags;
}

// Each representation that a coin picks (so that later operations meet stale caches), read
// through its conversion, is the rotation m; so is the rotation of a vector.
void ExpectDescribes(C3DRotation& r, const R& m, std::mt19937& rng) {
    if (r.GetFlags() & C3DRotation::k_Identity) ExpectNear(m, R());
    R read;
    Q q;
    V v;
    double angle;
    const tagE3DROTORDER order = RandomOrder(rng);
    if (rng() % 2) {
        r.GetMatrix(read);
        ExpectNear(read, m);
    }
    if (rng() % 2) {
        r.GetQuat(q);
        F3DQuatToMat(q, read);
        ExpectNear(read, m);
    }
    if (rng() % 2) {
        r.GetXYZAngles(v, order);
        ExpectNear(EulerMatrix(v, order), m);
    }
    r.GetAxisAngle(v, angle);
    if (std::fabs(std::sin(angle / 2)) > 1e-6) ExpectNear(AxisAngleMatrix(v, angle), m);
    v = RandomVector(rng);
    V rotated, back;
    r.RotateVct(&v, 1, &rotated);
    r.InvRotateVct(&rotated, 1, &back);
    EXPECT_EQ(AreAlmostEqual(rotated, V().Mul(v, m), kTol) & AreAlmostEqual(back, v, kTol), 1);
    ExpectFlagRules(r);
}

TEST(RotationTest, EveryRepresentationFollowsRandomSetterSequences) {
    // The primary representation each operation leaves, -1 where it depends.
    const int primary[16] = {2, 1, 0, -1, -1, -1, -1, -1, -1, 0, -1, -1, 2, 2, 1, -1};
    std::mt19937 rng(11);
    C3DRotation rotation[3];
    R reference[3];
    for (int step = 0; step < 4000; ++step) {
        const int i = rng() % 3, j = rng() % 3, k = rng() % 3, op = rng() % 16;
        C3DRotation& r = rotation[i];
        const R mj = reference[j], mk = reference[k], product = R().Mul(mj, mk);
        R& m = reference[i];
        const V u = RandomVector(rng), w = RandomVector(rng);
        const double angle = Uniform(rng, -7, 7), s = std::sin(angle / 2) / u.GetLength();
        const tagE3DROTORDER order = RandomOrder(rng);
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
                r.Set(Q(std::cos(angle / 2), u.x * s, u.y * s, u.z * s).Mul(Uniform(rng, 0.5, 2)));
                m = AxisAngleMatrix(u, angle);
                break;
            case 3:
                r.Set(tagE3DAXISTYPE(k), angle);
                m = AxisAngleMatrix(V(k, 1), angle);
                break;
            case 4:
                r.Set(u, angle);
                m = AxisAngleMatrix(u, angle);
                break;
            case 5:
                EXPECT_EQ(r.Set(u, w, status), 1);
                m = AxisAngleMatrix(GetCross(u, w), GetVctsAngle(u, w));
                break;
            case 6:
                r.Set(order, 1);
                break;
            case 7:  // the angles read in the new order: the rotation changes
                r.GetXYZAngles(angles, r.GetRotOrder());
                r.Set(order, 0);
                m = EulerMatrix(angles, order);
                break;
            case 8:
                r.Set(rotation[j], int(rng() % 2));
                m = mj;
                break;
            case 9:
                r.Mul(rotation[j], rotation[k]);
                m = product;
                break;
            case 10:
                r.Invert(rotation[j]);
                m = Transposed(mj);
                break;
            case 11: {  // mj (mj^T mk)^t along the shorter arc
                const R relative = R().MulTransByReg(mj, mk);
                const V axis(relative.Get(1, 2) - relative.Get(2, 1),
                             relative.Get(2, 0) - relative.Get(0, 2),
                             relative.Get(0, 1) - relative.Get(1, 0));
                const double full = std::acos(std::min(1.0, (relative.GetTrace() - 1) / 2));
                if (full > 3) continue;  // the axis is ill-conditioned near a half turn
                const double t = Uniform(rng, 0, 1);
                r.Interpolate(rotation[j], rotation[k], t);
                m.Mul(mj, full < 1e-6 ? R() : AxisAngleMatrix(axis, t * full));
                break;
            }
            case 12:  // target receives the stored angles, within pi of it on each axis
                r.MulUsingEulerAnglesTarget(rotation[j], rotation[k], angles, order);
                m = product;
                EXPECT_EQ(AreAlmostEqual(angles, u * 5.0, kPi + 1e-9), 1);
                r.GetXYZAngles(read, order);
                EXPECT_EQ(read, angles);
                break;
            case 13:
                r.MulAndUpdateEulerAngles(rotation[j], rotation[k], 1 + rng() % 2);
                m = product;
                break;
            case 14: {  // Gram-Schmidt frame: row a1 along u, row a2 towards w
                const int a1 = k, a2 = (a1 + 1 + rng() % 2) % 3, third = 3 - a1 - a2;
                V rows[3];
                rows[a1] = u / u.GetLength();
                rows[a2] = w - rows[a1] * (w * rows[a1]);
                rows[a2].Normalize();
                rows[third].SetCross(rows[(third + 1) % 3], rows[(third + 2) % 3]);
                EXPECT_EQ(r.AlignAxesToVct(tagE3DAXISTYPE(a1), u, tagE3DAXISTYPE(a2), w, status), 1);
                m = R(rows[0], rows[1], rows[2], 1);
                break;
            }
            case 15:
                r.SetIdentity();
                m = R();
                break;
        }
        EXPECT_EQ(status, 0);
        EXPECT_TRUE(primary[op] < 0 || (r.GetFlags() & 3) == primary[op]) << op;
        ExpectDescribes(r, m, rng);
        ExpectFlagRules(rotation[j]);
    }
}

TEST(RotationTest, IdentityFlagAndTests) {
    C3DRotation r;
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
}

TEST(RotationTest, ShortestArcBetweenVectors) {
    const double h = std::sqrt(0.5);
    const struct {
        V from, to;
        Q q;
        int result, status;
    } cases[] = {{V(1, 0, 0), V(-2, 0, 0), Q(std::cos(kPi / 2), 0, 1, 0), 1, 1},  // about Y
                 {V(0, 0, 1), V(0, 0, -1), Q(0, 0, -1, 0), 1, 1},  // about (1, 0, 0) x from
                 {V(1, 0, 0), V(0, 3, 0), Q(h, 0, 0, h), 1, 0},
                 {V(0, 2, 0), V(0, 3, 0), Q(), 1, 0},
                 {V(0, 0, 0), V(1, 0, 0), Q(), 0, 0}};
    for (const auto& c : cases) {
        C3DRotation r;
        int status = -1;
        EXPECT_EQ(r.Set(E3DAXIS_X, 1.0).Set(c.from, c.to, status), c.result);
        EXPECT_EQ(status, c.status);
        Q q;
        r.GetQuat(q);
        EXPECT_EQ(AreAlmostEqual(q, c.q, 1e-15), 1) << q;
    }
}

TEST(RotationTest, OrderChangeKeepsAnglesByRelativeSequence) {
    const struct {
        V angles;
        tagE3DROTORDER from, to;
        bool kept;
    } cases[] = {{V(0.3, 0, 0), E3DROTORDER_XYZ, E3DROTORDER_ZYX, true},
                 {V(0.3, 0.2, 0), E3DROTORDER_XYZ, E3DROTORDER_ZYX, false},  // X, Y swap
                 {V(0.3, 0, 0.2), E3DROTORDER_XYZ, E3DROTORDER_XZY, true},   // X before Z in both
                 {V(0, 0.3, 0.2), E3DROTORDER_YXZ, E3DROTORDER_YZX, true},
                 {V(0, 0.3, 0.2), E3DROTORDER_YXZ, E3DROTORDER_ZXY, false},
                 {V(0.3, 1e-13, 0.2), E3DROTORDER_XYZ, E3DROTORDER_YXZ, true},  // 1e-13 is 0
                 {V(0.1, 0.2, 0.3), E3DROTORDER_XYZ, E3DROTORDER_XZY, false}};
    for (const auto& c : cases) {
        C3DRotation r;
        V angles;
        r.Set(c.angles, c.from).Set(c.to, 1).GetXYZAngles(angles, c.to);
        EXPECT_EQ(r.GetFlags(), 14);
        EXPECT_EQ(angles == V(c.angles.x, c.angles.y == 1e-13 ? 0 : c.angles.y, c.angles.z), c.kept);
        ExpectNear(EulerMatrix(angles, c.to), EulerMatrix(c.angles, c.from), 1e-12);
    }
    // Another primary representation: only the order changes, the angles become stale.
    C3DRotation r;
    EXPECT_EQ(r.Set(AxisAngleMatrix(V(1, 2, 3), 1)).Set(E3DROTORDER_ZYX, 1).GetFlags(), 21);
}

TEST(RotationTest, InvertInTheCurrentRepresentation) {
    const R m = AxisAngleMatrix(V(1, -2, 0.5), 2.5);
    C3DRotation r, inverse;
    R read;
    inverse.Invert(r.Set(m)).GetMatrix(read);
    EXPECT_EQ(read, Transposed(m));  // exactly
    EXPECT_EQ(inverse.GetFlags(), 21);
    // Angles primary: the identity for angles within 1e-12 of 0, else through the quaternion.
    EXPECT_EQ(inverse.Invert(r.Set(1e-12, -1e-12, 0.0, E3DROTORDER_XYZ)).GetFlags(), 56);
    inverse.Invert(r.Set(V(0.3, 0.2, 0.1), E3DROTORDER_YZX));
    EXPECT_EQ(inverse.GetFlags(), 24);
}

// The rows of m form a right-handed orthonormal frame.
void ExpectProper(const R& m) {
    ExpectNear(R().MulRegByTrans(m, m), R(), 1e-15);
    EXPECT_NEAR(m.GetDet(), 1, 1e-15);
}

TEST(RotationTest, AlignAxesFallsBackWhenTheSecondVectorIsParallel) {
    const struct {
        tagE3DAXISTYPE a1;
        V p;
        tagE3DAXISTYPE a2;
        V q, row0;
    } cases[] = {// q parallel to p, or null: q = p moved by 1 on a2
                 {E3DAXIS_X, V(0, 0, 2), E3DAXIS_Y, V(0, 0, 5), V(0, 0, 1)},
                 {E3DAXIS_X, V(0, 0, 2), E3DAXIS_Y, V(0, 0, 0), V(0, 0, 1)},
                 // p along a2: moved by 1 on a1 instead
                 {E3DAXIS_Z, V(0, -2, 0), E3DAXIS_Y, V(0, 1, 0), V(1, 0, 0)}};
    for (const auto& c : cases) {
        C3DRotation r;
        int status = 0;
        EXPECT_EQ(r.AlignAxesToVct(c.a1, c.p, c.a2, c.q, status) + status, 2);
        R m;
        r.GetMatrix(m);
        ExpectProper(m);
        EXPECT_EQ(V(m.GetArray() + 3 * c.a1), c.p / c.p.GetLength());
        EXPECT_EQ(V(m.GetArray()), c.row0) << m;
    }
    // Refusals change nothing.
    C3DRotation r;
    int status = 1;
    EXPECT_EQ(r.AlignAxesToVct(E3DAXIS_Y, V(1, 0, 0), E3DAXIS_Y, V(0, 1, 0), status) +
                  r.AlignAxesToVct(E3DAXIS_Y, V(1e-12, 0, 0), E3DAXIS_Z, V(0, 1, 0), status) +
                  status + r.GetFlags(),
              56);
}

TEST(RotationTest, AlignToAxes) {
    std::mt19937 rng(5);
    int (C3DRotation::*const align[3])(const V&, int&) = {
        &C3DRotation::AlignToX, &C3DRotation::AlignToY, &C3DRotation::AlignToZ};
    for (int axis = 0; axis < 3; ++axis) {
        C3DRotation r;
        R m;
        const auto alignTo = [&r, &align, axis](const V& v, int& status) {
            return (r.*align[axis])(v, status);
        };
        int status = 1;
        const V v = RandomVector(rng);
        EXPECT_EQ(alignTo(v, status) - status, 1);
        r.GetMatrix(m);
        ExpectProper(m);
        EXPECT_EQ(AreAlmostEqual(V().Mul(v, m), V(axis, v.GetLength()), 1e-15), 1);
        // Along the axis: the identity, or a half turn about the next axis; a null vector fails
        // with the identity flag cleared.
        EXPECT_EQ(alignTo(V(axis, 2), status) + status + r.GetFlags(), 2 + 56);
        EXPECT_EQ(alignTo(V(axis, -2), status) + status, 2);
        r.GetMatrix(m);
        ExpectNear(m, AxisAngleMatrix(V((axis + 1) % 3, 1), kPi), 1e-15);
        r.SetIdentity();
        EXPECT_EQ(alignTo(V(0, 0, 0), status) + r.GetFlags(), 24);
    }
}

TEST(RotationTest, RotateVctCopiesIdentityExactly) {
    const V in[2] = {V(std::numeric_limits<double>::quiet_NaN(), -0.0, 1e300), V(1, 2, 3)};
    V out[2];
    C3DRotation r;
    r.RotateVct(nullptr, 0, nullptr);  // refreshes the matrix all the same
    EXPECT_EQ(r.GetFlags(), 48);
    r.RotateVct(in, 2, out);
    EXPECT_EQ(std::memcmp(in, out, sizeof in), 0);
    r.InvRotateVct(in, 2, out);
    EXPECT_EQ(std::memcmp(in, out, sizeof in), 0);
}

TEST(RotationTest, EulerContinuityAndIdentityOperands) {
    C3DRotation a, b, r, identity;
    a.Set(7.0, 0.2, -4.0, E3DROTORDER_XYZ);
    b.Set(E3DAXIS_Z, 0.05);
    V angles;
    r.MulAndUpdateEulerAngles(a, b, 1).GetXYZAngles(angles, E3DROTORDER_XYZ);
    EXPECT_EQ(AreAlmostEqual(angles, V(7.0, 0.2, -4.0), 0.1), 1);
    // With the identity on one side the other's angles are kept when they are the chosen ones,
    // and extracted nearest to (0, 0, 0) in the identity's order otherwise.
    identity.Set(E3DROTORDER_YXZ, 0);
    r.MulAndUpdateEulerAngles(identity, a, 2).GetXYZAngles(angles, E3DROTORDER_XYZ);
    EXPECT_EQ(angles, V(7.0, 0.2, -4.0));
    r.MulAndUpdateEulerAngles(identity, a, 1).GetXYZAngles(angles, E3DROTORDER_YXZ);
    EXPECT_EQ(r.GetRotOrder(), E3DROTORDER_YXZ);
    EXPECT_EQ(AreAlmostEqual(angles, V(0, 0, 0), kPi), 1);
    // Mul copies the other operand in this rotation's own order, the quaternion primary.
    r.Set(E3DROTORDER_ZYX, 0).Mul(a, identity);
    EXPECT_EQ(r.GetRotOrder(), E3DROTORDER_ZYX);
    EXPECT_EQ(r.GetFlags() & (3 | C3DRotation::k_AnglesStale), C3DRotation::k_AnglesStale);
}

TEST(RotationTest, DumpTexts) {
    std::ostringstream os;
    C3DRotation r;
    r.DumpMatrix("m", os);
    r.DumpQuat(nullptr, os);
    r.Set(kPi / 2, kPi / 4, 0.0, E3DROTORDER_ZYX).DumpXYZAngles("e", os);
    r.Set(E3DAXIS_Z, kPi / 2).DumpAxisAngle(nullptr, os);
    EXPECT_EQ(os.str(),
              "m\n(Rotation Matrix representation)\n( 1 0 0 )\n( 0 1 0 )\n( 0 0 1 )\n"
              "(Quaternion representation)\n( W:1  X:0  Y:0  Z:0 )\n"
              "e\n(XYZ Euler Angles representation)\n90 deg,45 deg,0 deg\n"
              "(Axis-Angle representation)\n( 0 0 1 ), 90 degrees\n");
}

}  // namespace
