#pragma once
// C3DRotation3Tpl<T>: a rotation held in exactly one of three representations, for float and
// double, converted to the others on request.
//
// It keeps the representation the caller chose, so that Euler angles set by a user survive
// unchanged (angles beyond +-pi and their order included) until an operation needs another one;
// queries convert a copy. Four slots and a one-byte tag:
//   E3DROTREP_QUAT       X, Y, Z, W: the scalar part last, unlike C3DQuatTpl
//   E3DROTREP_EULER      the angles about X, Y, Z, then the rotation order (as a number)
//   E3DROTREP_AXISANGLE  the axis (not necessarily of unit length), then the angle
// The stored quaternion is not kept normalised; it is normalised on a copy wherever it is
// converted. A null axis stands for the identity. Any other tag is no known representation:
// conversions and queries then leave their outputs unchanged and the tests are false.
//
// A plain value with no virtual functions and no heap memory. Set(from, to) and AlignAxesToVct
// compute in double through C3DRotation in both precisions.
#include <istream>
#include <ostream>

#include "math/foundations/export.h"
#include "math/foundations/init_request.h"
#include "math/foundations/tolerance.h"
#include "math/matrices/matrix33.h"
#include "math/matrices/matrix44.h"
#include "math/matrices/rotation_matrix.h"
#include "math/rotations/quaternion.h"
#include "math/rotations/rotation_order.h"
#include "math/vectors/vector3.h"
#include "math/vectors/vector4.h"

// The representation of a C3DRotation3Tpl.
enum MATH_API E3DRotRep : unsigned char {
    E3DROTREP_QUAT = 0,
    E3DROTREP_EULER = 1,
    E3DROTREP_AXISANGLE = 2,
};

template <typename T>
class MATH_API C3DRotation3Tpl {
    using V = C3DVector3Tpl<T>;
    using Q = C3DQuatTpl<T>;
    using R = C3DRotMatTpl<T>;

public:
    using value_type = T;

    // The identity quaternion.
    C3DRotation3Tpl() : m_Slots{0, 0, 0, 1}, m_Rep(E3DROTREP_QUAT) {}
    // Leaves the slots and the tag unwritten.
    explicit C3DRotation3Tpl(const C3DInitRequest_DoNotInitialize&) {}
    C3DRotation3Tpl(T x, T y, T z, tagE3DROTORDER order) { Set(x, y, z, order); }
    C3DRotation3Tpl(const V& angles, tagE3DROTORDER order) { Set(angles, order); }
    C3DRotation3Tpl(const V& axis, T angle) { Set(axis, angle); }
    explicit C3DRotation3Tpl(const Q& q) { Set(q); }
    C3DRotation3Tpl(tagE3DAXISTYPE axis, T angle) : m_Slots{0, 0, 0, 0} { Set(axis, angle); }
    C3DRotation3Tpl(const V& from, const V& to, int* status) { Set(from, to, status); }
    explicit C3DRotation3Tpl(const C3DMatrix33Tpl<T>& m) { Set(m); }
    explicit C3DRotation3Tpl(const C3DMatrix44Tpl<T>& m) { Set(m); }

    unsigned int GetDynamicMemSize() const { return 0; }

    // --- setting (each stores its representation as given, without normalising) ------------
    C3DRotation3Tpl& Set(const C3DRotation3Tpl& r) { return *this = r; }
    // Euler angles.
    C3DRotation3Tpl& Set(T x, T y, T z, tagE3DROTORDER order) {
        return Store(x, y, z, T(order), E3DROTREP_EULER);
    }
    C3DRotation3Tpl& Set(const V& angles, tagE3DROTORDER order) {
        return Set(angles.x, angles.y, angles.z, order);
    }
    // Axis and angle.
    C3DRotation3Tpl& Set(const V& axis, T angle) {
        return Store(axis.x, axis.y, axis.z, angle, E3DROTREP_AXISANGLE);
    }
    // The quaternion.
    C3DRotation3Tpl& Set(const Q& q) {
        return Store(q.GetX(), q.GetY(), q.GetZ(), q.GetW(), E3DROTREP_QUAT);
    }
    // Euler angles in order XZY (harmless: one angle only) with angle on that axis and 0 on the
    // others. Kept for compatibility: any other axis value sets the tag and the order and leaves
    // the three angles as they were.
    C3DRotation3Tpl& Set(tagE3DAXISTYPE axis, T angle);
    // The quaternion of the matrix whose rows are x, y, z (F3DMatToQuat, so normalised).
    C3DRotation3Tpl& Set(const V& x, const V& y, const V& z);
    // The quaternion of the rotation of a matrix (a C3DRotMatTpl too) or of the upper-left 3x3 of a
    // 4x4 matrix, extracted as C3DXfoMatTpl::GetRotation does with the mirror bits set from the
    // sign of the determinant: a mirroring matrix gives the proper rotation of its negation.
    C3DRotation3Tpl& Set(const C3DMatrix33Tpl<T>& m);
    C3DRotation3Tpl& Set(const C3DMatrix44Tpl<T>& m);
    // The quaternion of C3DRotation::Set(from, to, status), computed in double. The status (1 for
    // opposite vectors, else 0) is written through status when it is not null and returned.
    int Set(const V& from, const V& to, int* status);
    // The identity in the same representation: quaternion (0, 0, 0, 1); Euler angles 0 in order
    // XYZ; axis (1, 0, 0) and angle 0.
    C3DRotation3Tpl& SetIdentity();
    // Converts in place to rep, into Euler angles of the given order (nearest to (0, 0, 0)).
    // Nothing changes when rep is the current representation, even for another order (that is
    // Set(order, 1)), nor for an unknown rep. A quaternion or axis that comes out null becomes
    // the axis (1, 0, 0), its angle kept.
    C3DRotation3Tpl& SetRepresentation(E3DRotRep rep, tagE3DROTORDER order = E3DROTORDER_XYZ);
    // Euler angles in the given order: converted to it when in another representation (to order
    // XYZ first when keepRotation is 0). With keepRotation the angles are re-extracted in the new
    // order (nearest to (0, 0, 0)), keeping the rotation; without it only the order changes, and
    // so the rotation.
    C3DRotation3Tpl& Set(tagE3DROTORDER order, int keepRotation);

    // --- queries (on converted copies; this rotation does not change) ------------------------
    E3DRotRep GetRepresentation() const { return m_Rep; }
    // The four slots, in storage order.
    const T* GetArray() const { return m_Slots; }
    // The stored order in Euler angles, otherwise XYZ.
    tagE3DROTORDER GetRotOrder() const {
        return m_Rep == E3DROTREP_EULER ? StoredOrder() : E3DROTORDER_XYZ;
    }
    // The stored quaternion as it is, or the unit quaternion of the other representations.
    void GetQuat(Q& q) const;
    // The same as (x, y, z, w) = (X, Y, Z, W).
    void GetQuat(C3DVector4Tpl<T>& v) const;
    // The stored axis and angle, or those of the unit quaternion (an angle in [0, 2 pi]).
    void GetAxisAngle(V& axis, T& angle) const;
    // The same as (x, y, z) = axis, w = angle.
    void GetAxisAngle(C3DVector4Tpl<T>& v) const;
    // The stored angles when they are in that order, otherwise those of Set(order, 1) on a copy.
    void GetXYZAngles(V& angles, tagE3DROTORDER order) const;
    // In the stored order, XYZ when not in Euler angles.
    void GetXYZAngles(V& angles) const { GetXYZAngles(angles, GetRotOrder()); }
    void GetXYZAngles(T& x, T& y, T& z) const;
    // The rotation matrix: F3DEulerToMat in the stored order, or the matrix of the unit
    // quaternion.
    void GetMatrix(R& m) const;
    void GetMatrix(C3DMatrix33Tpl<T>& m) const;
    // The same in the upper-left 3x3 of the identity (the mask byte is kept).
    void GetMatrix(C3DMatrix44Tpl<T>& m) const;

    // --- tests -------------------------------------------------------------------------------
    // Exact: quaternion (0, 0, 0, 1); Euler angles all 0, whatever the order; angle 0, whatever
    // the axis.
    bool IsIdentity() const;
    // The same within eps (strict), W compared in double.
    bool IsAlmostIdentity(T eps = C3DTolerance<T>::k_Accurate) const;
    // r converted to this rotation's representation (Euler angles in order XYZ), then the four
    // slots compared exactly: Euler angles compare equal only in the same order.
    bool operator==(const C3DRotation3Tpl& r) const;
    bool operator!=(const C3DRotation3Tpl& r) const { return !(*this == r); }

    // --- composition (results in the representation named; arguments may be this rotation) --
    // The normalised product qb qa of the quaternions (a first, then b), as a quaternion.
    C3DRotation3Tpl& Mul(const C3DRotation3Tpl& a, const C3DRotation3Tpl& b);
    C3DRotation3Tpl& Mul(const C3DRotation3Tpl& b) { return Mul(*this, b); }
    C3DRotation3Tpl& LeftMul(const C3DRotation3Tpl& a) { return Mul(a, *this); }
    // a then the inverse of b.
    C3DRotation3Tpl& Div(const C3DRotation3Tpl& a, const C3DRotation3Tpl& b);
    C3DRotation3Tpl& Div(const C3DRotation3Tpl& b) { return Div(*this, b); }
    // In the same representation: the quaternion conjugated; the angles negated in the reverse
    // order (XYZ <-> ZYX, XZY <-> YZX, YXZ <-> ZXY); the angle negated.
    C3DRotation3Tpl& Invert();
    C3DRotation3Tpl& Invert(const C3DRotation3Tpl& r) { return Set(r).Invert(); }
    // C3DQuatTpl::Slerp of the two quaternions, not normalised, as a quaternion.
    C3DRotation3Tpl& Interpolate(const C3DRotation3Tpl& a, const C3DRotation3Tpl& b, T t);
    // Scales this rotation's own angle by s; the first argument is ignored, kept for
    // compatibility. A quaternion or Euler angles become Interpolate(identity, this, s), a
    // quaternion; an axis and angle keep their axis.
    C3DRotation3Tpl& Mul(const C3DRotation3Tpl&, T s) { return Mul(s); }
    C3DRotation3Tpl& Mul(T s);
    // Scales by 1 / s the same way (no zero test).
    C3DRotation3Tpl& Div(const C3DRotation3Tpl&, T s) { return Mul(T(1) / s); }
    C3DRotation3Tpl& Div(T s) { return Mul(T(1) / s); }
    // The product a then b as Euler angles of the given order, the triple nearest to target.
    C3DRotation3Tpl& MulUsingEulerAnglesTarget(const C3DRotation3Tpl& a, const C3DRotation3Tpl& b,
                                               const V& target, tagE3DROTORDER order);
    // The same with target's angles in its own order (XYZ when target is not in Euler angles).
    C3DRotation3Tpl& MulUsingEulerAnglesTarget(const C3DRotation3Tpl& a, const C3DRotation3Tpl& b,
                                               const C3DRotation3Tpl& target);
    // The same with a (useFirst != 0) or b as the target, so that animated angles stay
    // continuous across the product.
    C3DRotation3Tpl& MulAndUpdateEulerAngles(const C3DRotation3Tpl& a, const C3DRotation3Tpl& b,
                                             int useFirst) {
        return MulUsingEulerAnglesTarget(a, b, useFirst != 0 ? a : b);
    }
    // Kept for compatibility: computes C3DRotation::AlignAxesToVct in double and discards the
    // rotation, so this object never changes. The status is written through status when it is
    // not null and returned.
    int AlignAxesToVct(tagE3DAXISTYPE a1, const V& p, tagE3DAXISTYPE a2, const V& q,
                       int* status) const;

    // --- text: the title line, then one line --------------------------------------------------
    // "Euler(" and the three angles in degrees with no separator between them (kept for
    // compatibility), then ", Order(xyz)" with the order in lower case.
    void DumpXYZAngles(const char* title, std::ostream& os) const;
    // "Axis( x y z ), Angle(a)" with the angle in degrees.
    void DumpAxisAngle(const char* title, std::ostream& os) const;
    // "Quaternion( W:w  X:x  Y:y  Z:z )"
    void DumpQuat(const char* title, std::ostream& os) const;

private:
    C3DRotation3Tpl& Store(T a, T b, T c, T d, E3DRotRep rep) {
        m_Slots[0] = a;
        m_Slots[1] = b;
        m_Slots[2] = c;
        m_Slots[3] = d;
        m_Rep = rep;
        return *this;
    }
    tagE3DROTORDER StoredOrder() const { return static_cast<tagE3DROTORDER>(int(m_Slots[3])); }
    V StoredVector() const { return V(m_Slots); }
    // The unit quaternion of a known representation (the stored quaternion normalised); false,
    // with q unchanged, for an unknown one.
    bool UnitQuat(Q& q) const;

    T m_Slots[4];
    E3DRotRep m_Rep;
};

using C3DRotation3f = C3DRotation3Tpl<float>;
using C3DRotation3d = C3DRotation3Tpl<double>;

// b converted to a's representation as for operator==, then: Euler angles in the same order each
// within eps; otherwise the four slots each within eps (strict). 0 for an unknown representation.
template <typename T>
MATH_API int AreAlmostEqual(const C3DRotation3Tpl<T>& a, const C3DRotation3Tpl<T>& b,
                            C3DScalarArg<T> eps = C3DTolerance<T>::k_Accurate);

// The quaternion, as C3DQuatTpl writes it.
template <typename T>
inline std::ostream& operator<<(std::ostream& os, const C3DRotation3Tpl<T>& r) {
    C3DQuatTpl<T> q;
    r.GetQuat(q);
    return os << q;
}
// Four bare numbers W X Y Z into an identity quaternion, stored as the quaternion.
template <typename T>
inline std::istream& operator>>(std::istream& is, C3DRotation3Tpl<T>& r) {
    C3DQuatTpl<T> q;
    is >> q;
    r.Set(q);
    return is;
}
