#pragma once
// C3DQuatTpl<T>: the quaternion, for float and double, and its conversions to and from rotation
// matrices and axis-angle pairs.
//
// A plain value: four contiguous components W, X, Y, Z, the scalar part first, no virtual
// functions, no heap memory; the default constructor gives the identity (1, 0, 0, 0). A unit
// quaternion (cos(a/2), sin(a/2) u) is the rotation by a radians about the unit axis u. Nothing
// reports an error; Invert is the conjugate, exact for unit quaternions only.
// The four-component vector stores w last, so every exchange with it reorders.
#include <cmath>
#include <istream>
#include <ostream>
#include <type_traits>

#include "math/foundations/dump.h"
#include "math/foundations/export.h"
#include "math/foundations/init_request.h"
#include "math/foundations/tolerance.h"
#include "math/matrices/rotation_matrix.h"
#include "math/vectors/vector3.h"
#include "math/vectors/vector4.h"

namespace math3d_detail {

#if defined(__SSE2__)
// r = a b for quaternions stored (W, X, Y, Z), r possibly a or b, in SSE2 lane pairs (W, X) and
// (Y, Z). Each lane adds its four products in the order of the scalar formula, a subtraction
// being the addition of the product with a negated factor, so the values are those of the scalar
// form.
inline void QuatMul(const double* a, const double* b, double* r) {
    const __m128d bWX = _mm_loadu_pd(b), bYZ = _mm_loadu_pd(b + 2);
    const __m128d bXW = _mm_shuffle_pd(bWX, bWX, 1), bZY = _mm_shuffle_pd(bYZ, bYZ, 1);
    const __m128d aW = _mm_set1_pd(a[0]), aX = _mm_set1_pd(a[1]);
    const __m128d aY = _mm_set1_pd(a[2]), aZ = _mm_set1_pd(a[3]);
    const __m128d negFirst = _mm_set_pd(0.0, -0.0), negSecond = _mm_set_pd(-0.0, 0.0);
    // (W, X) = aW (bW, bX) + (-aX, aX) (bX, bW) + (-aY, aY) (bY, bZ) + (-aZ, -aZ) (bZ, bY)
    __m128d wx = _mm_mul_pd(aW, bWX);
    wx = _mm_add_pd(wx, _mm_mul_pd(_mm_xor_pd(aX, negFirst), bXW));
    wx = _mm_add_pd(wx, _mm_mul_pd(_mm_xor_pd(aY, negFirst), bYZ));
    wx = _mm_add_pd(wx, _mm_mul_pd(_mm_xor_pd(aZ, _mm_set1_pd(-0.0)), bZY));
    // (Y, Z) = aW (bY, bZ) + (-aX, aX) (bZ, bY) + (aY, -aY) (bW, bX) + (aZ, aZ) (bX, bW)
    __m128d yz = _mm_mul_pd(aW, bYZ);
    yz = _mm_add_pd(yz, _mm_mul_pd(_mm_xor_pd(aX, negFirst), bZY));
    yz = _mm_add_pd(yz, _mm_mul_pd(_mm_xor_pd(aY, negSecond), bWX));
    yz = _mm_add_pd(yz, _mm_mul_pd(aZ, bXW));
    _mm_storeu_pd(r, wx);
    _mm_storeu_pd(r + 2, yz);
}
#endif

}  // namespace math3d_detail

template <typename T>
class MATH_API C3DQuatTpl {
public:
    using value_type = T;

    // The identity (1, 0, 0, 0).
    constexpr C3DQuatTpl() : m_W(1), m_X(0), m_Y(0), m_Z(0) {}
    // Leaves the components unwritten.
    explicit C3DQuatTpl(const C3DInitRequest_DoNotInitialize&) {}
    constexpr C3DQuatTpl(T w, T x, T y, T z) : m_W(w), m_X(x), m_Y(y), m_Z(z) {}
    // W = v.w, (X, Y, Z) = (v.x, v.y, v.z).
    explicit C3DQuatTpl(const C3DVector4Tpl<T>& v) : m_W(v.w), m_X(v.x), m_Y(v.y), m_Z(v.z) {}
    // The pure quaternion (0, v).
    explicit C3DQuatTpl(const C3DVector3Tpl<T>& v) : m_W(0), m_X(v.x), m_Y(v.y), m_Z(v.z) {}

    unsigned int GetDynamicMemSize() const { return 0; }

    // --- access ------------------------------------------------------------------------------
    C3DQuatTpl& Set(T w, T x, T y, T z) {
        m_W = w;
        m_X = x;
        m_Y = y;
        m_Z = z;
        return *this;
    }
    C3DQuatTpl& Set(const C3DQuatTpl& q) { return *this = q; }
    C3DQuatTpl& Set(const C3DVector4Tpl<T>& v) { return Set(v.w, v.x, v.y, v.z); }
    C3DQuatTpl& Set(const C3DVector3Tpl<T>& v) { return Set(T(0), v.x, v.y, v.z); }
    C3DQuatTpl& SetW(T w) {
        m_W = w;
        return *this;
    }
    C3DQuatTpl& SetX(T x) {
        m_X = x;
        return *this;
    }
    C3DQuatTpl& SetY(T y) {
        m_Y = y;
        return *this;
    }
    C3DQuatTpl& SetZ(T z) {
        m_Z = z;
        return *this;
    }
    T GetW() const { return m_W; }
    T GetX() const { return m_X; }
    T GetY() const { return m_Y; }
    T GetZ() const { return m_Z; }
    void Get(T& w, T& x, T& y, T& z) const {
        w = m_W;
        x = m_X;
        y = m_Y;
        z = m_Z;
    }
    // v = (X, Y, Z, W).
    void Get(C3DVector4Tpl<T>& v) const { v.Set(m_X, m_Y, m_Z, m_W); }
    // W, X, Y, Z in that order.
    T* GetArray() { return &m_W; }
    const T* GetArray() const { return &m_W; }
    C3DQuatTpl& SetIdentity() { return Set(T(1), T(0), T(0), T(0)); }
    C3DQuatTpl& SetNull() { return Set(T(0), T(0), T(0), T(0)); }

    // --- tests and measures ------------------------------------------------------------------
    // Exactly (1, 0, 0, 0); (-1, 0, 0, 0), the same rotation, is not the identity.
    bool IsIdentity() const { return m_W == T(1) && m_X == T(0) && m_Y == T(0) && m_Z == T(0); }
    // |X|, |Y|, |Z| <= eps and |1 - W| <= eps, W compared in double; W near -1 does not qualify.
    bool IsIdentity(T eps) const {
        return F3DIsNullComponents(&m_X, 3, eps) && std::fabs(1.0 - double(m_W)) <= double(eps);
    }
    // Every |component| <= eps.
    bool IsNull(T eps = C3DTolerance<T>::k_Accurate) const {
        return F3DIsNullComponents(GetArray(), 4, eps);
    }
    // |W| < eps (strict).
    bool IsPure(T eps = C3DTolerance<T>::k_Accurate) const { return std::fabs(m_W) < eps; }
    T GetSquaredLength() const { return m_W * m_W + m_X * m_X + m_Y * m_Y + m_Z * m_Z; }
    T GetLength() const { return math3d_detail::Sqrt(GetSquaredLength()); }
    bool operator==(const C3DQuatTpl& q) const {
        return m_W == q.m_W && m_X == q.m_X && m_Y == q.m_Y && m_Z == q.m_Z;
    }
    bool operator!=(const C3DQuatTpl& q) const { return !(*this == q); }

    // --- arithmetic (this = result; arguments may be this quaternion) ------------------------
    C3DQuatTpl& Add(const C3DQuatTpl& q) { return Add(*this, q); }
    C3DQuatTpl& Add(const C3DQuatTpl& a, const C3DQuatTpl& b) {
        return Set(a.m_W + b.m_W, a.m_X + b.m_X, a.m_Y + b.m_Y, a.m_Z + b.m_Z);
    }
    C3DQuatTpl& Sub(const C3DQuatTpl& q) { return Sub(*this, q); }
    C3DQuatTpl& Sub(const C3DQuatTpl& a, const C3DQuatTpl& b) {
        return Set(a.m_W - b.m_W, a.m_X - b.m_X, a.m_Y - b.m_Y, a.m_Z - b.m_Z);
    }
    C3DQuatTpl& Mul(T s) { return Mul(s, *this); }
    C3DQuatTpl& Mul(T s, const C3DQuatTpl& q) {
        return Set(s * q.m_W, s * q.m_X, s * q.m_Y, s * q.m_Z);
    }
    C3DQuatTpl& Mul(const C3DQuatTpl& q, T s) { return Mul(s, q); }
    // this = a b, the Hamilton product: i j = k, j k = i, k i = j, i i = j j = k k = -1.
    C3DQuatTpl& Mul(const C3DQuatTpl& a, const C3DQuatTpl& b) {
#if defined(__SSE2__)
        if constexpr (std::is_same<T, double>::value) {
            math3d_detail::QuatMul(a.GetArray(), b.GetArray(), GetArray());
            return *this;
        }
#endif
        return Set(a.m_W * b.m_W - a.m_X * b.m_X - a.m_Y * b.m_Y - a.m_Z * b.m_Z,
                   a.m_W * b.m_X + a.m_X * b.m_W + a.m_Y * b.m_Z - a.m_Z * b.m_Y,
                   a.m_W * b.m_Y - a.m_X * b.m_Z + a.m_Y * b.m_W + a.m_Z * b.m_X,
                   a.m_W * b.m_Z + a.m_X * b.m_Y - a.m_Y * b.m_X + a.m_Z * b.m_W);
    }
    // this = this q
    C3DQuatTpl& Mul(const C3DQuatTpl& q) { return Mul(*this, q); }
    // this = q (0, v) and this = (0, v) q.
    C3DQuatTpl& Mul(const C3DQuatTpl& q, const C3DVector3Tpl<T>& v) {
        return Mul(q, C3DQuatTpl(v));
    }
    C3DQuatTpl& Mul(const C3DVector3Tpl<T>& v, const C3DQuatTpl& q) {
        return Mul(C3DQuatTpl(v), q);
    }
    C3DQuatTpl& Negate() { return Set(-m_W, -m_X, -m_Y, -m_Z); }
    // (W, -X, -Y, -Z)
    C3DQuatTpl& Conjugate() { return Conjugate(*this); }
    C3DQuatTpl& Conjugate(const C3DQuatTpl& q) { return Set(q.m_W, -q.m_X, -q.m_Y, -q.m_Z); }
    // The conjugate, without the division by the squared length: the inverse of a unit
    // quaternion only, which is what rotations keep.
    C3DQuatTpl& Invert() { return Conjugate(*this); }
    C3DQuatTpl& Invert(const C3DQuatTpl& q) { return Conjugate(q); }

    // Scales to unit length, then clamps W into [-1, 1] so that a later acos(W) stays defined.
    // A squared length within 1e-12 of 1 is kept as it is (no square root); one below 1e-12
    // gives the identity, unclamped. The squared length is summed in T; the tests and the factor
    // 1/sqrt are formed in double.
    C3DQuatTpl& Normalize() {
        const double s = GetSquaredLength();
        if (!(std::fabs(s - 1.0) < 1e-12)) {
            if (s < 1e-12) return SetIdentity();
            const double k = 1.0 / math3d_detail::Sqrt(s);
            Set(T(m_W * k), T(m_X * k), T(m_Y * k), T(m_Z * k));
        }
        if (m_W < T(-1)) m_W = T(-1);
        if (m_W > T(1)) m_W = T(1);
        return *this;
    }

    // Spherical linear interpolation from a (t = 0) to b (t = 1) along the shorter arc (b is
    // taken negated when a.b < 0); t outside [0, 1] extrapolates. When |a.b| >= 0.999999999999
    // the blend is linear, (1 - t) a + t b. The result is not normalised. The dot product is
    // summed in T, the weights are computed in double.
    C3DQuatTpl& Slerp(const C3DQuatTpl& a, const C3DQuatTpl& b, T t);

    // Title line, the quaternion, a line end; unlike the other value types, no blank line.
    void Dump(const char* title, std::ostream& os) const;

private:
    T m_W;
    T m_X;
    T m_Y;
    T m_Z;
};

using C3DQuatf = C3DQuatTpl<float>;
using C3DQuatd = C3DQuatTpl<double>;

// 1 when every |a_i - b_i| < eps (strict), else 0; q and -q differ.
template <typename T>
inline int AreAlmostEqual(const C3DQuatTpl<T>& a, const C3DQuatTpl<T>& b,
                          C3DScalarArg<T> eps = C3DTolerance<T>::k_Accurate) {
    return F3DAreAlmostEqualComponents(a.GetArray(), b.GetArray(), 4, eps);
}
// "( W:w  X:x  Y:y  Z:z )"
template <typename T>
inline std::ostream& operator<<(std::ostream& os, const C3DQuatTpl<T>& q) {
    return os << "( W:" << double(q.GetW()) << "  X:" << double(q.GetX())
              << "  Y:" << double(q.GetY()) << "  Z:" << double(q.GetZ()) << " )";
}
// Four bare numbers W X Y Z; the labels of operator<< are not read.
template <typename T>
inline std::istream& operator>>(std::istream& is, C3DQuatTpl<T>& q) {
    return F3DReadComponents(is, q.GetArray(), 4);
}

// --- conversions -------------------------------------------------------------------------------

namespace math3d_detail {

// The single-precision entry points that compute in double widen their input and narrow the
// result with these.
inline C3DVector3Tpl<double> Widened(const C3DVector3Tpl<float>& v) {
    return C3DVector3Tpl<double>(v.x, v.y, v.z);
}
inline C3DQuatTpl<float> Narrowed(const C3DQuatTpl<double>& q) {
    return C3DQuatTpl<float>(float(q.GetW()), float(q.GetX()), float(q.GetY()), float(q.GetZ()));
}

}  // namespace math3d_detail

// The rotation matrix of q (rows are the images of the axes: v' = v m). q is used as it is: a
// quaternion that is not of unit length gives a matrix that is not orthonormal.
template <typename T>
inline void QuatToMat(const C3DQuatTpl<T>& q, C3DRotMatTpl<T>& m) {
    const T w = q.GetW(), x = q.GetX(), y = q.GetY(), z = q.GetZ();
    const T x2 = x + x, y2 = y + y, z2 = z + z;
    m.SetRow(0, T(1) - y * y2 - z * z2, w * z2 + y * x2, x * z2 - w * y2);
    m.SetRow(1, y * x2 - w * z2, T(1) - x * x2 - z * z2, w * x2 + z * y2);
    m.SetRow(2, w * y2 + x * z2, z * y2 - w * x2, T(1) - x * x2 - y * y2);
}

// The unit quaternion of a rotation matrix, with W >= 0. The trace is compared with the largest
// diagonal element (not with 0) to choose which component to take from a square root, so that
// the division is always by the largest of the four; the result is then normalised. The float
// instantiation takes the square root in double.
template <typename T>
inline void MatToQuat(const C3DRotMatTpl<T>& m, C3DQuatTpl<T>& q) {
    const T* e = m.GetArray();  // element (r, c) at 3 r + c
    // s = sqrt(v) / 2, the square root taken in double, and f = 1 / (4 s).
    const auto root = [](T v, T& f) {
        const T s = T(math3d_detail::Sqrt(double(v)) * 0.5);
        f = T(0.25) / s;
        return s;
    };
    const T trace = e[0] + e[4] + e[8];
    const int i = e[4] > e[0] ? (e[8] > e[4] ? 2 : 1) : (e[8] > e[0] ? 2 : 0);
    T w, x, y, z, f;
    if (trace > e[4 * i]) {
        w = root(trace + T(1), f);
        x = (e[5] - e[7]) * f;
        y = (e[6] - e[2]) * f;
        z = (e[1] - e[3]) * f;
    } else if (i == 0) {
        // Component i from m_ii - m_jj - m_kk with j = i + 1, k = i + 2 (mod 3); j and k from
        // the sums m_ij + m_ji and m_ik + m_ki, W from m_jk - m_kj.
        x = root(e[0] - e[4] - e[8] + T(1), f);
        y = (e[1] + e[3]) * f;
        z = (e[2] + e[6]) * f;
        w = (e[5] - e[7]) * f;
    } else if (i == 1) {
        y = root(e[4] - e[8] - e[0] + T(1), f);
        z = (e[5] + e[7]) * f;
        x = (e[3] + e[1]) * f;
        w = (e[6] - e[2]) * f;
    } else {
        z = root(e[8] - e[0] - e[4] + T(1), f);
        x = (e[6] + e[2]) * f;
        y = (e[7] + e[5]) * f;
        w = (e[1] - e[3]) * f;
    }
    // W >= 0 (-0 is kept), by a factor rather than a branch that would wait for the division.
    const T sign = w < T(0) ? T(-1) : T(1);
    q.Set(sign * w, sign * x, sign * y, sign * z).Normalize();
}

// angle = 2 acos(W) in [0, 2 pi] and axis = (X, Y, Z) / sin(angle / 2). When that sine is below
// the accurate epsilon (1e-6 float, 1e-12 double) the axis is (0, 0, 0). No sign is adjusted: a
// negative W gives an angle above pi.
template <typename T>
MATH_API void QuatToAxisAngle(const C3DQuatTpl<T>& q, C3DVector3Tpl<T>& axis, T& angle);

// The exported forms of the conversions.
MATH_API void F3DQuatToMat(const C3DQuatTpl<double>& q, C3DRotMatTpl<double>& m);
MATH_API void F3DQuatToMat(const C3DQuatTpl<float>& q, C3DRotMatTpl<float>& m);
MATH_API void F3DQuatToMatf(const C3DQuatTpl<float>& q, C3DRotMatTpl<float>& m);
MATH_API void F3DMatToQuat(const C3DRotMatTpl<double>& m, C3DQuatTpl<double>& q);
MATH_API void F3DMatToQuat(const C3DRotMatTpl<float>& m, C3DQuatTpl<float>& q);
MATH_API void F3DQuatToAxisAngle(const C3DQuatTpl<double>& q, C3DVector3Tpl<double>& axis,
                                 double& angle);
MATH_API void F3DQuatToAxisAngle(const C3DQuatTpl<float>& q, C3DVector3Tpl<float>& axis,
                                 float& angle);

// q = (cos(angle/2), sin(angle/2) axis / |axis|): the axis need not be of unit length. An axis
// of length 1e-12 or less is kept as the vector part unscaled, so the null axis gives
// (cos(angle/2), 0, 0, 0) without complaint. The float forms compute in double.
MATH_API void F3DAxisAngleToQuat(const C3DVector3Tpl<double>& axis, double angle,
                                 C3DQuatTpl<double>& q);
MATH_API void F3DAxisAngleToQuat(const C3DVector3Tpl<float>& axis, float angle,
                                 C3DQuatTpl<float>& q);
MATH_API void F3DAxisAngleToQuatf(const C3DVector3Tpl<float>& axis, float angle,
                                  C3DQuatTpl<float>& q);
