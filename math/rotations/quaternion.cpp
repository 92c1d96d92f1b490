#include "math/rotations/quaternion.h"

#include <cmath>

template <typename T>
C3DQuatTpl<T>& C3DQuatTpl<T>::Slerp(const C3DQuatTpl& a, const C3DQuatTpl& b, T t) {
    const T dot = a.m_W * b.m_W + a.m_X * b.m_X + a.m_Y * b.m_Y + a.m_Z * b.m_Z;
    const double d = std::fabs(double(dot));
    double wa = 1.0 - t;
    double wb = t;
    if (!(d >= 0.999999999999)) {
        // Below the threshold |d| < 1, so acos needs no clamp.
        const double theta = std::acos(d);
        const double sine = std::sin(theta);
        wa = std::sin(wa * theta) / sine;
        wb = std::sin(wb * theta) / sine;
    }
    if (dot < T(0)) wb = -wb;  // the shorter arc: towards -b
    return Set(T(wa * a.m_W + wb * b.m_W), T(wa * a.m_X + wb * b.m_X), T(wa * a.m_Y + wb * b.m_Y),
               T(wa * a.m_Z + wb * b.m_Z));
}

template <typename T>
void C3DQuatTpl<T>::Dump(const char* title, std::ostream& os) const {
    F3DDumpTitle(title, os);
    os << *this << '\n';
}

template <typename T>
void QuatToAxisAngle(const C3DQuatTpl<T>& q, C3DVector3Tpl<T>& axis, T& angle) {
    angle = T(2) * std::acos(q.GetW());
    const T s = std::sin(angle * T(0.5));
    if (std::fabs(s) < C3DTolerance<T>::k_Accurate) {
        axis.SetNull();
    } else {
        axis.Set(q.GetX(), q.GetY(), q.GetZ()).Mul(T(1) / s);
    }
}

void F3DQuatToMat(const C3DQuatTpl<double>& q, C3DRotMatTpl<double>& m) { QuatToMat(q, m); }
void F3DQuatToMat(const C3DQuatTpl<float>& q, C3DRotMatTpl<float>& m) { QuatToMat(q, m); }
void F3DQuatToMatf(const C3DQuatTpl<float>& q, C3DRotMatTpl<float>& m) { QuatToMat(q, m); }
void F3DMatToQuat(const C3DRotMatTpl<double>& m, C3DQuatTpl<double>& q) { MatToQuat(m, q); }
void F3DMatToQuat(const C3DRotMatTpl<float>& m, C3DQuatTpl<float>& q) { MatToQuat(m, q); }
void F3DQuatToAxisAngle(const C3DQuatTpl<double>& q, C3DVector3Tpl<double>& axis, double& angle) {
    QuatToAxisAngle(q, axis, angle);
}
void F3DQuatToAxisAngle(const C3DQuatTpl<float>& q, C3DVector3Tpl<float>& axis, float& angle) {
    QuatToAxisAngle(q, axis, angle);
}

void F3DAxisAngleToQuat(const C3DVector3Tpl<double>& axis, double angle, C3DQuatTpl<double>& q) {
    const double s = std::sin(angle * 0.5);
    const double length = axis.GetLength();
    const C3DVector3Tpl<double> v = length > 1e-12 ? axis * (s / length) : axis;
    q.Set(std::cos(angle * 0.5), v.x, v.y, v.z);
}
void F3DAxisAngleToQuat(const C3DVector3Tpl<float>& axis, float angle, C3DQuatTpl<float>& q) {
    F3DAxisAngleToQuatf(axis, angle, q);
}
void F3DAxisAngleToQuatf(const C3DVector3Tpl<float>& axis, float angle, C3DQuatTpl<float>& q) {
    C3DQuatTpl<double> wide;
    F3DAxisAngleToQuat(math3d_detail::Widened(axis), angle, wide);
    q = math3d_detail::Narrowed(wide);
}

#define MATH_INSTANTIATE_QUATERNION_FUNCTIONS(T) \
    template void QuatToAxisAngle(const C3DQuatTpl<T>&, C3DVector3Tpl<T>&, T&);

template class C3DQuatTpl<float>;
template class C3DQuatTpl<double>;
MATH_INSTANTIATE_QUATERNION_FUNCTIONS(float)
MATH_INSTANTIATE_QUATERNION_FUNCTIONS(double)
