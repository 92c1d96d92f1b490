#pragma once
// C3DVector4Tpl<T>: the four-component vector, for float and double, used for homogeneous
// coordinates and general 4D arithmetic.
//
// A plain value: four contiguous components x, y, z, w, no virtual functions, no heap memory; the
// default constructor sets all four to 0. Every length, dot product and test covers the four
// components. Operations that can meet a degenerate input return int 1 on success and 0 on failure
// and then leave the vector unchanged.
#include <cmath>
#include <istream>
#include <ostream>

#include "math/foundations/dump.h"
#include "math/foundations/export.h"
#include "math/foundations/forward_declarations.h"
#include "math/foundations/tolerance.h"
#include "math/vectors/vector3.h"

template <typename T>
class MATH_API C3DVector4Tpl {
public:
    using value_type = T;

    T x;
    T y;
    T z;
    T w;

    constexpr C3DVector4Tpl() : x(0), y(0), z(0), w(0) {}
    constexpr C3DVector4Tpl(T x_, T y_, T z_, T w_) : x(x_), y(y_), z(z_), w(w_) {}
    // The point v in homogeneous coordinates of weight w: (v.x w, v.y w, v.z w, w).
    C3DVector4Tpl(const C3DVector3Tpl<T>& v, T w_) : x(v.x * w_), y(v.y * w_), z(v.z * w_), w(w_) {}

    unsigned int GetDynamicMemSize() const { return 0; }

    // --- access ------------------------------------------------------------------------------
    C3DVector4Tpl& Set(T x_, T y_, T z_, T w_) {
        x = x_;
        y = y_;
        z = z_;
        w = w_;
        return *this;
    }
    C3DVector4Tpl& Set(const C3DVector4Tpl& v) { return Set(v.x, v.y, v.z, v.w); }
    // Sets component i (0 to 3); any other index changes nothing.
    C3DVector4Tpl& Set(int i, T value) {
        if (i >= 0 && i <= 3) GetArray()[i] = value;
        return *this;
    }
    C3DVector4Tpl& SetNull() { return Set(T(0), T(0), T(0), T(0)); }
    C3DVector4Tpl& SetX(T value) { return Set(0, value); }
    C3DVector4Tpl& SetY(T value) { return Set(1, value); }
    C3DVector4Tpl& SetZ(T value) { return Set(2, value); }
    C3DVector4Tpl& SetW(T value) { return Set(3, value); }
    T GetX() const { return x; }
    T GetY() const { return y; }
    T GetZ() const { return z; }
    T GetW() const { return w; }
    void Get(T& x_, T& y_, T& z_, T& w_) const {
        x_ = x;
        y_ = y;
        z_ = z;
        w_ = w;
    }
    // x, y, z for 0, 1, 2; w for every other index.
    T Get(int i) const { return i >= 0 && i <= 2 ? GetArray()[i] : w; }
    T* GetArray() { return &x; }
    const T* GetArray() const { return &x; }
    // No range check.
    T& operator[](unsigned int i) { return (&x)[i]; }
    const T& operator[](unsigned int i) const { return (&x)[i]; }

    // --- arithmetic (this = result; arguments may be this vector) ----------------------------
    C3DVector4Tpl& Negate() { return Negate(*this); }
    C3DVector4Tpl& Negate(const C3DVector4Tpl& v) { return Set(-v.x, -v.y, -v.z, -v.w); }
    C3DVector4Tpl& Add(const C3DVector4Tpl& v) { return Add(*this, v); }
    C3DVector4Tpl& Add(const C3DVector4Tpl& a, const C3DVector4Tpl& b) {
        return Set(a.x + b.x, a.y + b.y, a.z + b.z, a.w + b.w);
    }
    C3DVector4Tpl& Sub(const C3DVector4Tpl& v) { return Sub(*this, v); }
    C3DVector4Tpl& Sub(const C3DVector4Tpl& a, const C3DVector4Tpl& b) {
        return Set(a.x - b.x, a.y - b.y, a.z - b.z, a.w - b.w);
    }
    C3DVector4Tpl& Mul(T s) { return Mul(s, *this); }
    C3DVector4Tpl& Mul(T s, const C3DVector4Tpl& v) {
        return Set(s * v.x, s * v.y, s * v.z, s * v.w);
    }
    C3DVector4Tpl& Mul(const C3DVector4Tpl& v, T s) { return Mul(s, v); }
    // Multiplies by the reciprocal 1/s (no zero test).
    C3DVector4Tpl& Div(T s) { return Mul(T(1) / s); }
    // Divides each component of v by s directly; may round differently from Div(s).
    C3DVector4Tpl& Div(const C3DVector4Tpl& v, T s) {
        return Set(v.x / s, v.y / s, v.z / s, v.w / s);
    }
    C3DVector4Tpl& MulComp(const C3DVector4Tpl& v) { return MulComp(*this, v); }
    C3DVector4Tpl& MulComp(const C3DVector4Tpl& a, const C3DVector4Tpl& b) {
        return Set(a.x * b.x, a.y * b.y, a.z * b.z, a.w * b.w);
    }
    // Component-wise quotient, no zero test.
    C3DVector4Tpl& DivComp(const C3DVector4Tpl& v) { return DivComp(*this, v); }
    C3DVector4Tpl& DivComp(const C3DVector4Tpl& a, const C3DVector4Tpl& b) {
        return Set(a.x / b.x, a.y / b.y, a.z / b.z, a.w / b.w);
    }
    // Products with a 4x4 matrix (defined in matrix44.h), formed before they are stored so v may
    // be this vector. An affine C3DXfoMatTpl takes these forms too, its column 3 as stored.
    // this = m * v (v as a column): r_i = sum_j m_ij v_j
    C3DVector4Tpl& Mul(const C3DMatrix44Tpl<T>& m, const C3DVector4Tpl& v);
    // this = v * m (v as a row): r_j = sum_i v_i m_ij
    C3DVector4Tpl& Mul(const C3DVector4Tpl& v, const C3DMatrix44Tpl<T>& m);
    // this = this * m
    C3DVector4Tpl& Mul(const C3DMatrix44Tpl<T>& m);
    // Each component whose magnitude is below value becomes +value or -value with its sign
    // (zero becomes +value).
    C3DVector4Tpl& SetMinimal(T value) {
        using math3d_detail::RaisedMagnitude;
        return Set(RaisedMagnitude(x, value), RaisedMagnitude(y, value), RaisedMagnitude(z, value),
                   RaisedMagnitude(w, value));
    }

    // --- measures ----------------------------------------------------------------------------
    T GetSquaredLength() const { return x * x + y * y + z * z + w * w; }
    T GetLength() const { return math3d_detail::Sqrt(GetSquaredLength()); }

    // Scales to unit length. Fails (0, unchanged) unless the length exceeds the accurate epsilon
    // (1e-6 float, 1e-12 double); a NaN length fails too.
    int Normalize() {
        const T length = GetLength();
        if (!(length > C3DTolerance<T>::k_Accurate)) return 0;
        Set(x / length, y / length, z / length, w / length);
        return 1;
    }
    // Scales to the given length. Fails (0, unchanged) only when the current length is below the
    // accurate epsilon: a length equal to it passes, and so does NaN.
    int SetLength(T length) {
        const T current = GetLength();
        if (current < C3DTolerance<T>::k_Accurate) return 0;
        Mul(length / current);
        return 1;
    }
    // this becomes its projection on the direction a. Fails (0, unchanged) unless a.a is at
    // least the accurate epsilon.
    int SetProjection(const C3DVector4Tpl& a) {
        const T squared = a.GetSquaredLength();
        if (!(squared >= C3DTolerance<T>::k_Accurate)) return 0;
        Mul(GetDot(*this, a) / squared, a);
        return 1;
    }

    // --- comparisons -------------------------------------------------------------------------
    bool operator==(const C3DVector4Tpl& v) const {
        return x == v.x && y == v.y && z == v.z && w == v.w;
    }
    bool operator!=(const C3DVector4Tpl& v) const { return !(*this == v); }
    // Every |component| <= eps.
    bool IsNull(T eps = C3DTolerance<T>::k_Accurate) const {
        return F3DIsNullComponents(GetArray(), 4, eps);
    }

    void Dump(const char* title, std::ostream& os) const;
};

using C3DVector4f = C3DVector4Tpl<float>;
using C3DVector4d = C3DVector4Tpl<double>;

// The four-term dot product.
template <typename T>
inline T GetDot(const C3DVector4Tpl<T>& a, const C3DVector4Tpl<T>& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w;
}
template <typename T>
inline T GetSquaredDistance(const C3DVector4Tpl<T>& a, const C3DVector4Tpl<T>& b) {
    const T dx = a.x - b.x, dy = a.y - b.y, dz = a.z - b.z, dw = a.w - b.w;
    return dx * dx + dy * dy + dz * dz + dw * dw;
}
template <typename T>
inline T GetDistance(const C3DVector4Tpl<T>& a, const C3DVector4Tpl<T>& b) {
    return std::sqrt(GetSquaredDistance(a, b));
}
// Kept for compatibility: 1 when eps > a.b, a test on the signed dot product, so that every
// pair with a negative dot product counts as orthogonal.
template <typename T>
inline int AreOrthogonal(const C3DVector4Tpl<T>& a, const C3DVector4Tpl<T>& b,
                         C3DScalarArg<T> eps = C3DTolerance<T>::k_Accurate) {
    return eps > GetDot(a, b) ? 1 : 0;
}
// "( x y z w )"
template <typename T>
inline std::ostream& operator<<(std::ostream& os, const C3DVector4Tpl<T>& v) {
    return F3DWriteComponents(os, v.GetArray(), 4);
}
// Four bare numbers.
template <typename T>
inline std::istream& operator>>(std::istream& is, C3DVector4Tpl<T>& v) {
    return F3DReadComponents(is, v.GetArray(), 4);
}
