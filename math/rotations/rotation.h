#pragma once
// C3DRotation: the double-precision rotation of transforms, caching three representations at
// once: a quaternion, a rotation matrix (rows are the images of the axes, v' = v M) and Euler
// angles with their rotation order.
//
// The representation set last is the primary one; the others are marked stale and recomputed
// only when read, which is why the reading members are not const and one object must not be
// read from two threads at once. A separate identity bit lets identity rotations skip all
// arithmetic: while it is set the rotation is the identity, whatever the stale caches hold.
//
// The flag byte:
//   bits 0-1  the primary representation: 0 quaternion, 1 matrix, 2 Euler angles
//   bit 2     quaternion stale (4)
//   bit 3     matrix stale (8)
//   bit 4     Euler angles stale (16)
//   bit 5     identity (32)
// SetIdentity leaves 56: identity, matrix and angles stale, the quaternion primary and current.
//
// Every setter clears the identity bit unless it says otherwise. The primary quaternion is kept
// normalised (except the raw short axis of Set(axis vector, angle)), and the rotation angle
// 2 acos(W) is kept with it.
#include <ostream>

#include "math/foundations/export.h"
#include "math/matrices/rotation_matrix.h"
#include "math/platform/win_types.h"
#include "math/rotations/quaternion.h"
#include "math/rotations/rotation_order.h"
#include "math/vectors/vector3.h"

class MATH_API C3DRotation {
    using V = C3DVector3Tpl<double>;
    using Q = C3DQuatTpl<double>;
    using R = C3DRotMatTpl<double>;

public:
    // The flag bits.
    static constexpr unsigned char k_PrimaryMask = 3;
    static constexpr unsigned char k_PrimaryQuat = 0;
    static constexpr unsigned char k_PrimaryMatrix = 1;
    static constexpr unsigned char k_PrimaryAngles = 2;
    static constexpr unsigned char k_QuatStale = 4;
    static constexpr unsigned char k_MatrixStale = 8;
    static constexpr unsigned char k_AnglesStale = 16;
    static constexpr unsigned char k_Identity = 32;
    // The chunk of the persisted record ('ROTA') and its version.
    static constexpr DWORD k_dwRotation = 0x524F5441;
    static constexpr DWORD k_dwVersion = 64;

    // The identity in order XYZ, flags 56.
    C3DRotation()
        : m_Angles(0, 0, 0), m_Angle(0), m_Flags(k_Identity | k_MatrixStale | k_AnglesStale),
          m_Order(E3DROTORDER_XYZ) {}

    unsigned int GetDynamicMemSize() const { return 0; }
    unsigned char GetFlags() const { return m_Flags; }
    tagE3DROTORDER GetRotOrder() const { return static_cast<tagE3DROTORDER>(m_Order); }

    // --- setting ------------------------------------------------------------------------------
    // Flags 56, quaternion (1, 0, 0, 0), angle 0; nothing at all when the identity bit is set.
    // The order is kept.
    C3DRotation& SetIdentity();
    // Euler angles primary. Angles all exactly 0 set the identity bit (the stale quaternion and
    // matrix are left as they are).
    C3DRotation& Set(double x, double y, double z, tagE3DROTORDER order);
    C3DRotation& Set(const V& angles, tagE3DROTORDER order) {
        return Set(angles.x, angles.y, angles.z, order);
    }
    // The matrix primary, copied as it is.
    C3DRotation& Set(const R& m);
    // The matrix primary with rows x, y, z, taken as they are (not orthonormalised).
    C3DRotation& Set(const V& x, const V& y, const V& z) { return Set(R(x, y, z, 1)); }
    // The quaternion primary, normalised.
    C3DRotation& Set(const Q& q);
    // The rotation by angle about a coordinate axis; all three representations current, the
    // quaternion primary, the order kept. An angle of exactly 0 gives SetIdentity. Kept for
    // compatibility: any other axis value sets the matrix to the identity and the stored angle to
    // angle, and marks the quaternion and the angles current without writing them.
    C3DRotation& Set(tagE3DAXISTYPE axis, double angle);
    // The rotation by angle about axis (not necessarily of unit length). A non-negative
    // single-axis direction, (0, 0, 0) included, takes the coordinate-axis form above; an angle
    // of exactly 0 gives SetIdentity; an axis of length 1e-12 or less is used as the raw vector
    // part of the quaternion.
    C3DRotation& Set(const V& axis, double angle);
    // The shortest rotation carrying from onto to, the quaternion primary. Returns 0 (with the
    // identity) when |from| |to| < 1e-12, else 1. status is 1 when the vectors are opposite: the
    // half turn is then about (1, 0, 0) x from, or about Y when from lies along X; otherwise 0.
    int Set(const V& from, const V& to, int& status);
    // Changes the stored order; Euler angles end primary. With keepRotation the rotation is kept:
    // when another representation is primary the angles are only marked stale; otherwise angles
    // within 1e-12 of 0 become 0, and the angles are kept as they are when at most one is
    // non-zero, or two whose axes the two orders apply in the same sequence, and re-extracted in
    // the new order (nearest to (0, 0, 0)) in every other case. With keepRotation 0 the angles
    // are kept and read in the new order: the rotation changes. With the identity bit set only
    // the order changes.
    C3DRotation& Set(tagE3DROTORDER order, int keepRotation);
    // Copies the current caches, the flags, the angle and the order of r (nothing when r is this
    // rotation); with keepOrder the previous order of this rotation is then restored, keeping the
    // rotation (Set(order, 1)).
    C3DRotation& Set(const C3DRotation& r, int keepOrder);

    // The matrix primary, of the frame whose axis a1 is along p and whose axis a2 lies in the
    // half-plane of p and q, completed to a right-handed orthonormal frame. Returns 0 and changes
    // nothing when a1 == a2, an axis is outside 0 to 2 or p is null (every |component| <= 1e-12). When p and q are parallel,
    // or q is null, status is 1 and q is replaced by p plus 1 on axis a2 (p plus 1 on axis a1 when
    // p lies along a2).
    int AlignAxesToVct(tagE3DAXISTYPE a1, const V& p, tagE3DAXISTYPE a2, const V& q, int& status);
    // The rotation carrying the direction of v onto the positive X (Y, Z) axis, the matrix
    // primary. The identity bit is cleared first; 0 for |v| <= 1e-12. Along the axis itself
    // status is 1 and the result is the identity, or for the negative direction the half turn
    // about the next axis (Y for X, Z for Y, X for Z).
    int AlignToX(const V& v, int& status) { return AlignToAxis(E3DAXIS_X, v, status); }
    int AlignToY(const V& v, int& status) { return AlignToAxis(E3DAXIS_Y, v, status); }
    int AlignToZ(const V& v, int& status) { return AlignToAxis(E3DAXIS_Z, v, status); }

    // --- reading (refreshes stale caches) -----------------------------------------------------
    // Recompute one cache from the primary representation and clear its stale bit. Meant for
    // when that bit is set; the primary representation itself is never rewritten.
    void UpdateQuat();
    void UpdateMatrix();
    void UpdateXYZAngles();
    void GetQuat(Q& q) {
        if (m_Flags & k_QuatStale) UpdateQuat();
        q = m_Quat;
    }
    void GetMatrix(R& m) {
        if (m_Flags & k_MatrixStale) UpdateMatrix();
        m = m_Matrix;
    }
    // The Euler angles in the given order: (0, 0, 0) for the identity, the stored angles in the
    // stored order, re-expressed (nearest to (0, 0, 0)) in another one. The stored angles and
    // order do not change.
    void GetXYZAngles(V& angles, tagE3DROTORDER order);
    // The stored angle and axis = (X, Y, Z) / sin(angle / 2), or (0, 0, 0) when that sine is
    // below 1e-12.
    void GetAxisAngle(V& axis, double& angle);
    // out[i] = in[i] M for n vectors (the inverse: M in[i]); copies when the identity bit is set,
    // NaNs included. out may be in.
    void RotateVct(const V* in, int n, V* out);
    void InvRotateVct(const V* in, int n, V* out);

    // True when the identity bit is set, or when the first current representation among the
    // angles, the quaternion and the matrix is exactly the identity; then sets the bit.
    bool IsExactlyIdentity();
    bool IsIdentity() { return IsExactlyIdentity(); }
    // IsExactlyIdentity for eps == 0, IsAlmostIdentity(eps) otherwise.
    bool IsIdentity(double eps) { return eps == 0.0 ? IsExactlyIdentity() : IsAlmostIdentity(eps); }
    // True when the identity bit is set, or the first current representation among the angles,
    // the quaternion and the matrix is within eps of the identity (non-strict): every angle; or
    // X, Y, Z and 1 - W; or every element.
    bool IsAlmostIdentity(const double& eps) const;

    // --- composition (a and b may be this rotation) ------------------------------------------
    // this = a then b: the normalised product qb qa, the quaternion primary; the order is kept.
    // An identity operand makes this a copy of the other (as Set(other, 1)).
    C3DRotation& Mul(C3DRotation& a, C3DRotation& b);
    // The product with Euler angles primary: the triple of the given order nearest to target,
    // which receives it.
    C3DRotation& MulUsingEulerAnglesTarget(C3DRotation& a, C3DRotation& b, V& target,
                                           tagE3DROTORDER order);
    // The same with target's angles and order.
    C3DRotation& MulUsingEulerAnglesTarget(C3DRotation& a, C3DRotation& b, C3DRotation& target);
    // The product with Euler angles primary, continuous with those of a (useFirst == 1) or of b
    // (any other value) and in that rotation's order. When one operand is the identity the other
    // one's angles are kept if they are the chosen ones; otherwise they are extracted nearest to
    // (0, 0, 0) in the chosen order.
    C3DRotation& MulAndUpdateEulerAngles(C3DRotation& a, C3DRotation& b, unsigned int useFirst);
    // this = the inverse of r, in r's current representation (quaternion first, then matrix: a
    // matrix is transposed exactly). The order is kept.
    C3DRotation& Invert(C3DRotation& r);
    C3DRotation& Invert() { return Invert(*this); }
    // Spherical interpolation from a (t = 0) to b (t = 1), normalised, the quaternion primary.
    C3DRotation& Interpolate(C3DRotation& a, C3DRotation& b, double t);

    // --- text: the title line, a heading, the cache (refreshed), a line end -------------------
    // "(Rotation Matrix representation)", then the three rows.
    void DumpMatrix(const char* title, std::ostream& os);
    // "(XYZ Euler Angles representation)", then "x deg,y deg,z deg" in degrees, in the stored
    // order (which is not written).
    void DumpXYZAngles(const char* title, std::ostream& os);
    // "(Axis-Angle representation)", then "( x y z ), a degrees".
    void DumpAxisAngle(const char* title, std::ostream& os);
    // "(Quaternion representation)", then the quaternion.
    void DumpQuat(const char* title, std::ostream& os);

private:
    bool HasFlag(unsigned char bit) const { return (m_Flags & bit) != 0; }
    unsigned char Primary() const { return m_Flags & k_PrimaryMask; }
    // The quaternion primary and current with that angle, matrix and angles stale.
    void SetQuatPrimary(const Q& q, double angle);
    // The matrix primary and current, quaternion and angles stale.
    void SetMatrixPrimary(const R& m);
    // The normalised product qb qa with its angle, the quaternion primary.
    void SetProduct(C3DRotation& a, C3DRotation& b);
    // The matrix rebuilt from the quaternion and the Euler triple of that order nearest to
    // target, stored with the order and written to target; every representation current, the
    // angles primary.
    void SetAnglesNearest(V& target, tagE3DROTORDER order);
    int AlignToAxis(tagE3DAXISTYPE axis, const V& v, int& status);

    Q m_Quat;
    R m_Matrix;
    V m_Angles;
    double m_Angle;
    unsigned char m_Flags;
    unsigned char m_Order;
};
