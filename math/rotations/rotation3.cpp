#include "math/rotations/rotation3.h"

#include <cmath>

#include "math/foundations/dump.h"
#include "math/matrices/transformation_matrix.h"
#include "math/rotations/euler_angles.h"
#include "math/rotations/euler_target.h"
#include "math/rotations/rotation.h"

using math3d_detail::IsValidOrder;

namespace {

// The order that applies the same axes backwards.
constexpr tagE3DROTORDER kReverseOrder[6] = {E3DROTORDER_ZYX, E3DROTORDER_YZX, E3DROTORDER_ZXY,
                                             E3DROTORDER_XZY, E3DROTORDER_YXZ, E3DROTORDER_XYZ};
constexpr const char* kOrderNames[6] = {"xyz", "xzy", "yxz", "yzx", "zxy", "zyx"};

template <typename T>
C3DVector3Tpl<double> Wide(const C3DVector3Tpl<T>& v) {
    return C3DVector3Tpl<double>(v.x, v.y, v.z);
}
double Degrees(double angle) { return angle * 180.0 * 0.3183098861837907; }

}  // namespace

template <typename T>
C3DRotation3Tpl<T>& C3DRotation3Tpl<T>::Set(tagE3DAXISTYPE axis, T angle) {
    if (axis >= E3DAXIS_X && axis <= E3DAXIS_Z) {
        const V angles(axis, angle);
        return Set(angles, E3DROTORDER_XZY);
    }
    m_Slots[3] = T(E3DROTORDER_XZY);
    m_Rep = E3DROTREP_EULER;
    return *this;
}

template <typename T>
C3DRotation3Tpl<T>& C3DRotation3Tpl<T>::Set(const V& x, const V& y, const V& z) {
    Q q;
    F3DMatToQuat(R(x, y, z, 1), q);
    return Set(q);
}

template <typename T>
C3DRotation3Tpl<T>& C3DRotation3Tpl<T>::Set(const C3DMatrix33Tpl<T>& m) {
    C3DXfoMatTpl<T> x;
    x.Set(m).ComputeSignBits();
    x.GetRotation(*this);
    return *this;
}

template <typename T>
C3DRotation3Tpl<T>& C3DRotation3Tpl<T>::Set(const C3DMatrix44Tpl<T>& m) {
    C3DXfoMatTpl<T> x(C3DInitRequest_DoNotInitialize{});
    x.Set(m);
    x.ComputeSignBits();
    x.GetRotation(*this);
    return *this;
}

template <typename T>
int C3DRotation3Tpl<T>::Set(const V& from, const V& to, int* status) {
    C3DRotation rotation;
    int result;
    rotation.Set(Wide(from), Wide(to), result);
    C3DQuatTpl<double> q;
    rotation.GetQuat(q);
    Set(Q(T(q.GetW()), T(q.GetX()), T(q.GetY()), T(q.GetZ())));
    if (status != nullptr) *status = result;
    return result;
}

template <typename T>
C3DRotation3Tpl<T>& C3DRotation3Tpl<T>::SetIdentity() {
    switch (m_Rep) {
        case E3DROTREP_QUAT:
            return Store(0, 0, 0, 1, m_Rep);
        case E3DROTREP_EULER:
            return Store(0, 0, 0, 0, m_Rep);
        case E3DROTREP_AXISANGLE:
            return Store(1, 0, 0, 0, m_Rep);
    }
    return *this;
}

template <typename T>
bool C3DRotation3Tpl<T>::UnitQuat(Q& q) const {
    Q unit;
    switch (m_Rep) {
        case E3DROTREP_QUAT:
            unit.Set(m_Slots[3], m_Slots[0], m_Slots[1], m_Slots[2]).Normalize();
            break;
        case E3DROTREP_EULER:
            F3DEulerToQuat(StoredVector(), unit, StoredOrder());
            break;
        case E3DROTREP_AXISANGLE: {
            // The identity for a null axis.
            V axis = StoredVector();
            if (axis.GetLength() > C3DTolerance<T>::k_Accurate) {
                axis.Normalize();
                F3DAxisAngleToQuat(axis, m_Slots[3], unit);
            }
            break;
        }
        default:
            return false;
    }
    q = unit;
    return true;
}

template <typename T>
C3DRotation3Tpl<T>& C3DRotation3Tpl<T>::SetRepresentation(E3DRotRep rep, tagE3DROTORDER order) {
    Q q;
    if (rep == m_Rep || !UnitQuat(q)) return *this;
    switch (rep) {
        case E3DROTREP_QUAT:
            return Set(q);
        case E3DROTREP_EULER: {
            V angles;
            F3DQuatToEuler(q, angles, order);
            return Set(angles, order);
        }
        case E3DROTREP_AXISANGLE: {
            V axis;
            T angle = 0;
            F3DQuatToAxisAngle(q, axis, angle);
            if (axis.IsNull()) axis.Set(1, 0, 0);
            return Set(axis, angle);
        }
    }
    return *this;
}

template <typename T>
C3DRotation3Tpl<T>& C3DRotation3Tpl<T>::Set(tagE3DROTORDER order, int keepRotation) {
    if (m_Rep != E3DROTREP_EULER)
        SetRepresentation(E3DROTREP_EULER, keepRotation != 0 ? order : E3DROTORDER_XYZ);
    if (m_Rep != E3DROTREP_EULER || StoredOrder() == order) return *this;
    if (keepRotation == 0) {
        m_Slots[3] = T(order);
        return *this;
    }
    R m;
    F3DEulerToMat(StoredVector(), m, StoredOrder());
    V angles;
    F3DMatToEuler(m, angles, order);
    return Set(angles, order);
}

template <typename T>
void C3DRotation3Tpl<T>::GetQuat(Q& q) const {
    if (m_Rep == E3DROTREP_QUAT) {
        q.Set(m_Slots[3], m_Slots[0], m_Slots[1], m_Slots[2]);
    } else {
        UnitQuat(q);
    }
}

template <typename T>
void C3DRotation3Tpl<T>::GetQuat(C3DVector4Tpl<T>& v) const {
    Q q(v);
    GetQuat(q);
    q.Get(v);
}

template <typename T>
void C3DRotation3Tpl<T>::GetAxisAngle(V& axis, T& angle) const {
    C3DRotation3Tpl r(*this);
    if (r.SetRepresentation(E3DROTREP_AXISANGLE).m_Rep != E3DROTREP_AXISANGLE) return;
    axis = r.StoredVector();
    angle = r.m_Slots[3];
}

template <typename T>
void C3DRotation3Tpl<T>::GetAxisAngle(C3DVector4Tpl<T>& v) const {
    V axis(v.x, v.y, v.z);
    GetAxisAngle(axis, v.w);
    v.Set(axis.x, axis.y, axis.z, v.w);
}

template <typename T>
void C3DRotation3Tpl<T>::GetXYZAngles(V& angles, tagE3DROTORDER order) const {
    C3DRotation3Tpl r(*this);
    if (r.Set(order, 1).m_Rep == E3DROTREP_EULER) angles = r.StoredVector();
}

template <typename T>
void C3DRotation3Tpl<T>::GetXYZAngles(T& x, T& y, T& z) const {
    V angles(x, y, z);
    GetXYZAngles(angles);
    angles.Get(x, y, z);
}

template <typename T>
void C3DRotation3Tpl<T>::GetMatrix(R& m) const {
    Q q;
    if (m_Rep == E3DROTREP_EULER) {
        F3DEulerToMat(StoredVector(), m, StoredOrder());
    } else if (UnitQuat(q)) {
        QuatToMat(q, m);
    }
}

template <typename T>
void C3DRotation3Tpl<T>::GetMatrix(C3DMatrix33Tpl<T>& m) const {
    R r(C3DInitRequest_DoNotInitialize{});
    r.Set(m);
    GetMatrix(r);
    m.Set(r);
}

template <typename T>
void C3DRotation3Tpl<T>::GetMatrix(C3DMatrix44Tpl<T>& m) const {
    if (m_Rep > E3DROTREP_AXISANGLE) return;
    R r;
    GetMatrix(r);
    m.SetIdentity();
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) m.Set(i, j, r.Get(i, j));
}

template <typename T>
bool C3DRotation3Tpl<T>::IsIdentity() const {
    switch (m_Rep) {
        case E3DROTREP_QUAT:
            return F3DIsExactlyNullComponents(m_Slots, 3) && m_Slots[3] == T(1);
        case E3DROTREP_EULER:
            return F3DIsExactlyNullComponents(m_Slots, 3);
        case E3DROTREP_AXISANGLE:
            return m_Slots[3] == T(0);
    }
    return false;
}

template <typename T>
bool C3DRotation3Tpl<T>::IsAlmostIdentity(T eps) const {
    const T zeros[3] = {0, 0, 0};
    switch (m_Rep) {
        case E3DROTREP_QUAT:
            return F3DAreAlmostEqualComponents(m_Slots, zeros, 3, eps) &&
                   std::fabs(double(m_Slots[3]) - 1.0) < double(eps);
        case E3DROTREP_EULER:
            return F3DAreAlmostEqualComponents(m_Slots, zeros, 3, eps);
        case E3DROTREP_AXISANGLE:
            return std::fabs(m_Slots[3]) < eps;
    }
    return false;
}

template <typename T>
bool C3DRotation3Tpl<T>::operator==(const C3DRotation3Tpl& r) const {
    C3DRotation3Tpl b(r);
    b.SetRepresentation(m_Rep);
    // In Euler angles the fourth slots are the orders, integers either way.
    return b.m_Rep == m_Rep && m_Rep <= E3DROTREP_AXISANGLE && m_Slots[0] == b.m_Slots[0] &&
           m_Slots[1] == b.m_Slots[1] && m_Slots[2] == b.m_Slots[2] && m_Slots[3] == b.m_Slots[3];
}

template <typename T>
int AreAlmostEqual(const C3DRotation3Tpl<T>& a, const C3DRotation3Tpl<T>& b,
                   C3DScalarArg<T> eps) {
    const E3DRotRep rep = a.GetRepresentation();
    C3DRotation3Tpl<T> c(b);
    if (c.SetRepresentation(rep).GetRepresentation() != rep || rep > E3DROTREP_AXISANGLE) return 0;
    if (rep == E3DROTREP_EULER) {
        if (a.GetRotOrder() != c.GetRotOrder()) return 0;
        return F3DAreAlmostEqualComponents(a.GetArray(), c.GetArray(), 3, eps);
    }
    return F3DAreAlmostEqualComponents(a.GetArray(), c.GetArray(), 4, eps);
}

template <typename T>
C3DRotation3Tpl<T>& C3DRotation3Tpl<T>::Mul(const C3DRotation3Tpl& a, const C3DRotation3Tpl& b) {
    Q qa, qb;
    a.GetQuat(qa);
    b.GetQuat(qb);
    return Set(Q().Mul(qb, qa).Normalize());
}

template <typename T>
C3DRotation3Tpl<T>& C3DRotation3Tpl<T>::Div(const C3DRotation3Tpl& a, const C3DRotation3Tpl& b) {
    return Mul(a, C3DRotation3Tpl(b).Invert());
}

template <typename T>
C3DRotation3Tpl<T>& C3DRotation3Tpl<T>::Invert() {
    switch (m_Rep) {
        case E3DROTREP_EULER:
            if (IsValidOrder(StoredOrder())) m_Slots[3] = T(kReverseOrder[StoredOrder()]);
            [[fallthrough]];  // the angles are negated as the quaternion's vector part
        case E3DROTREP_QUAT:
            for (int i = 0; i < 3; ++i) m_Slots[i] = -m_Slots[i];
            break;
        case E3DROTREP_AXISANGLE:
            m_Slots[3] = -m_Slots[3];
            break;
    }
    return *this;
}

template <typename T>
C3DRotation3Tpl<T>& C3DRotation3Tpl<T>::Interpolate(const C3DRotation3Tpl& a,
                                                   const C3DRotation3Tpl& b, T t) {
    Q qa, qb;
    a.GetQuat(qa);
    b.GetQuat(qb);
    return Set(Q().Slerp(qa, qb, t));
}

template <typename T>
C3DRotation3Tpl<T>& C3DRotation3Tpl<T>::Mul(T s) {
    switch (m_Rep) {
        case E3DROTREP_QUAT:
        case E3DROTREP_EULER:
            return Interpolate(C3DRotation3Tpl(), *this, s);
        case E3DROTREP_AXISANGLE:
            m_Slots[3] *= s;
            break;
    }
    return *this;
}

template <typename T>
C3DRotation3Tpl<T>& C3DRotation3Tpl<T>::MulUsingEulerAnglesTarget(const C3DRotation3Tpl& a,
                                                                 const C3DRotation3Tpl& b,
                                                                 const V& target,
                                                                 tagE3DROTORDER order) {
    Q q;
    Mul(a, b).GetQuat(q);
    R m;
    QuatToMat(q, m);
    V angles = target;
    F3DMatToEulerUsingTarget(m, angles, order);
    return Set(angles, order);
}

template <typename T>
C3DRotation3Tpl<T>& C3DRotation3Tpl<T>::MulUsingEulerAnglesTarget(const C3DRotation3Tpl& a,
                                                                 const C3DRotation3Tpl& b,
                                                                 const C3DRotation3Tpl& target) {
    V angles(0, 0, 0);
    target.GetXYZAngles(angles);
    return MulUsingEulerAnglesTarget(a, b, angles, target.GetRotOrder());
}

template <typename T>
int C3DRotation3Tpl<T>::AlignAxesToVct(tagE3DAXISTYPE a1, const V& p, tagE3DAXISTYPE a2,
                                       const V& q, int* status) const {
    C3DRotation discarded;
    int result;
    discarded.AlignAxesToVct(a1, Wide(p), a2, Wide(q), result);
    if (status != nullptr) *status = result;
    return result;
}

template <typename T>
void C3DRotation3Tpl<T>::DumpXYZAngles(const char* title, std::ostream& os) const {
    F3DDumpTitle(title, os);
    V angles(0, 0, 0);
    GetXYZAngles(angles);
    os << "Euler(" << Degrees(angles.x) << Degrees(angles.y) << Degrees(angles.z) << ", Order(";
    const tagE3DROTORDER order = GetRotOrder();
    if (IsValidOrder(order)) os << kOrderNames[order];
    os << ")\n";
}

template <typename T>
void C3DRotation3Tpl<T>::DumpAxisAngle(const char* title, std::ostream& os) const {
    F3DDumpTitle(title, os);
    V axis(0, 0, 0);
    T angle = 0;
    GetAxisAngle(axis, angle);
    os << "Axis" << axis << ", Angle(" << Degrees(angle) << ")\n";
}

template <typename T>
void C3DRotation3Tpl<T>::DumpQuat(const char* title, std::ostream& os) const {
    F3DDumpTitle(title, os);
    Q q;
    GetQuat(q);
    os << "Quaternion" << q << '\n';
}

#define MATH_INSTANTIATE_ROTATION3_FUNCTIONS(T)                                           \
    template int AreAlmostEqual(const C3DRotation3Tpl<T>&, const C3DRotation3Tpl<T>&, \
                                C3DScalarArg<T>);

template class C3DRotation3Tpl<float>;
template class C3DRotation3Tpl<double>;
MATH_INSTANTIATE_ROTATION3_FUNCTIONS(float)
MATH_INSTANTIATE_ROTATION3_FUNCTIONS(double)
