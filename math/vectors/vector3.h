#pragma once
// C3DVector3Tpl<T>: the point and direction type of the library, for float and double.
//
// A plain value: three contiguous components x, y, z, no virtual functions, no heap memory.
// Operations that can meet a degenerate input (a zero-length vector, parallel vectors) return
// int 1 on success and 0 on failure and then leave the vector unchanged; everything else computes
// without tests (division by zero gives infinities or NaN).
#include <cmath>
#include <istream>
#include <ostream>

#include "math/foundations/dump.h"
#include "math/foundations/export.h"
#include "math/foundations/forward_declarations.h"
#include "math/foundations/tolerance.h"
#include "math/platform/kel_vector.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace math3d_detail {

// a0 b0 + a1 b1 + a2 b2, summed in that order. In double precision the first two products are
// formed in one SSE2 operation, which every x86-64 processor has; the result is the same.
inline double Dot3(const double* a, const double* b) {
#if defined(__SSE2__)
    const __m128d xy = _mm_mul_pd(_mm_loadu_pd(a), _mm_loadu_pd(b));
    return _mm_cvtsd_f64(_mm_add_sd(xy, _mm_unpackhi_pd(xy, xy))) + a[2] * b[2];
#else
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
#endif
}
inline float Dot3(const float* a, const float* b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

// The correctly rounded square root without the errno bookkeeping of std::sqrt; same value.
inline double Sqrt(double v) {
#if defined(__SSE2__)
    const __m128d x = _mm_set_sd(v);
    return _mm_cvtsd_f64(_mm_sqrt_sd(x, x));
#else
    return std::sqrt(v);
#endif
}
inline float Sqrt(float v) { return std::sqrt(v); }

// v[i] / d for i = 0, 1, 2, each correctly rounded.
inline void Div3(double* v, double d) {
#if defined(__SSE2__)
    _mm_storeu_pd(v, _mm_div_pd(_mm_loadu_pd(v), _mm_set1_pd(d)));
    v[2] /= d;
#else
    v[0] /= d;
    v[1] /= d;
    v[2] /= d;
#endif
}
inline void Div3(float* v, float d) {
    v[0] /= d;
    v[1] /= d;
    v[2] /= d;
}

// The two rules of SetMinimal for one component: raise the value to the bound, or raise its
// magnitude to the bound keeping its sign (zero counts as positive).
template <typename T>
inline T RaisedValue(T c, T bound) {
    return bound > c ? bound : c;
}
template <typename T>
inline T RaisedMagnitude(T c, T bound) {
    return bound > std::fabs(c) ? (c >= T(0) ? bound : -bound) : c;
}

}  // namespace math3d_detail

template <typename T>
class MATH_API C3DVector3Tpl {
public:
    using value_type = T;

    T x;
    T y;
    T z;

    // (1, 1, 1): all ones, not an axis.
    static const C3DVector3Tpl k_UnitVector;

    // Leaves the components unwritten.
    C3DVector3Tpl() = default;
    constexpr C3DVector3Tpl(T x_, T y_, T z_) : x(x_), y(y_), z(z_) {}
    // Copies three values.
    explicit C3DVector3Tpl(const T* values) : x(values[0]), y(values[1]), z(values[2]) {}
    C3DVector3Tpl(const Kel_Vector& v) : x(v.x), y(v.y), z(v.z) {}
    // value on axis 0, 1 or 2; the null vector for any other axis.
    C3DVector3Tpl(int axis, T value)
        : x(axis == 0 ? value : T(0)), y(axis == 1 ? value : T(0)), z(axis == 2 ? value : T(0)) {}

    C3DVector3Tpl& operator=(const Kel_Vector& v) { return Set(T(v.x), T(v.y), T(v.z)); }
    // Narrows each component to float.
    operator Kel_Vector() const {
        return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
    }

    // 1e-9 for a double argument, 1e-6 for a float one, whatever T is; the value is ignored.
    static double GetLessAccurateEpsilon(const double&) { return C3DTolerance<double>::k_LessAccurate; }
    static float GetLessAccurateEpsilon(const float&) { return C3DTolerance<float>::k_LessAccurate; }

    unsigned int GetDynamicMemSize() const { return 0; }

    // --- access ------------------------------------------------------------------------------
    C3DVector3Tpl& Set(T x_, T y_, T z_) {
        x = x_;
        y = y_;
        z = z_;
        return *this;
    }
    C3DVector3Tpl& Set(const C3DVector3Tpl& v) { return Set(v.x, v.y, v.z); }
    // Sets component i (0, 1, 2); any other index changes nothing.
    C3DVector3Tpl& Set(int i, T value) {
        if (i >= 0 && i <= 2) GetArray()[i] = value;
        return *this;
    }
    C3DVector3Tpl& SetNull() { return Set(T(0), T(0), T(0)); }
    C3DVector3Tpl& SetX(T value) {
        x = value;
        return *this;
    }
    C3DVector3Tpl& SetY(T value) {
        y = value;
        return *this;
    }
    C3DVector3Tpl& SetZ(T value) {
        z = value;
        return *this;
    }
    T GetX() const { return x; }
    T GetY() const { return y; }
    T GetZ() const { return z; }
    void Get(T& x_, T& y_, T& z_) const {
        x_ = x;
        y_ = y;
        z_ = z;
    }
    // x for 0, y for 1, z for every other index.
    T Get(int i) const { return i == 0 ? x : (i == 1 ? y : z); }
    T* GetArray() { return &x; }
    const T* GetArray() const { return &x; }
    // No range check.
    T& operator[](unsigned int i) { return (&x)[i]; }
    const T& operator[](unsigned int i) const { return (&x)[i]; }

    // --- arithmetic (this = result; arguments may be this vector) ----------------------------
    C3DVector3Tpl& Negate() { return Set(-x, -y, -z); }
    C3DVector3Tpl& Negate(const C3DVector3Tpl& v) { return Set(-v.x, -v.y, -v.z); }
    C3DVector3Tpl& Add(const C3DVector3Tpl& v) { return Set(x + v.x, y + v.y, z + v.z); }
    C3DVector3Tpl& Add(T dx, T dy, T dz) { return Set(x + dx, y + dy, z + dz); }
    C3DVector3Tpl& Add(const C3DVector3Tpl& a, const C3DVector3Tpl& b) {
        return Set(a.x + b.x, a.y + b.y, a.z + b.z);
    }
    C3DVector3Tpl& Sub(const C3DVector3Tpl& v) { return Set(x - v.x, y - v.y, z - v.z); }
    C3DVector3Tpl& Sub(T dx, T dy, T dz) { return Set(x - dx, y - dy, z - dz); }
    C3DVector3Tpl& Sub(const C3DVector3Tpl& a, const C3DVector3Tpl& b) {
        return Set(a.x - b.x, a.y - b.y, a.z - b.z);
    }
    C3DVector3Tpl& Mul(T s) { return Set(x * s, y * s, z * s); }
    C3DVector3Tpl& Mul(T s, const C3DVector3Tpl& v) { return Set(s * v.x, s * v.y, s * v.z); }
    C3DVector3Tpl& Mul(const C3DVector3Tpl& v, T s) { return Mul(s, v); }
    // Multiplies by the reciprocal 1/s (no zero test).
    C3DVector3Tpl& Div(T s) { return Mul(T(1) / s); }
    // Divides each component of v by s directly; may round differently from Div(s).
    C3DVector3Tpl& Div(const C3DVector3Tpl& v, T s) { return Set(v.x / s, v.y / s, v.z / s); }
    C3DVector3Tpl& MulComp(const C3DVector3Tpl& v) { return Set(x * v.x, y * v.y, z * v.z); }
    C3DVector3Tpl& MulComp(const C3DVector3Tpl& a, const C3DVector3Tpl& b) {
        return Set(a.x * b.x, a.y * b.y, a.z * b.z);
    }
    // Component-wise quotient, no zero test.
    C3DVector3Tpl& DivComp(const C3DVector3Tpl& v) { return Set(x / v.x, y / v.y, z / v.z); }
    C3DVector3Tpl& DivComp(const C3DVector3Tpl& a, const C3DVector3Tpl& b) {
        return Set(a.x / b.x, a.y / b.y, a.z / b.z);
    }
    // (a + b) * 0.5
    C3DVector3Tpl& SetMidpoint(const C3DVector3Tpl& a, const C3DVector3Tpl& b) {
        return Set((a.x + b.x) * T(0.5), (a.y + b.y) * T(0.5), (a.z + b.z) * T(0.5));
    }
    // 2c - p: the point reflection of p through c.
    C3DVector3Tpl& SetMirror(const C3DVector3Tpl& p, const C3DVector3Tpl& c) {
        return Set(T(2) * c.x - p.x, T(2) * c.y - p.y, T(2) * c.z - p.z);
    }
    // this = this x v
    C3DVector3Tpl& SetCross(const C3DVector3Tpl& v) { return SetCross(*this, v); }
    // this = a x b
    C3DVector3Tpl& SetCross(const C3DVector3Tpl& a, const C3DVector3Tpl& b) {
        return Set(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
    }
    // this = (p1 - p0) x (p2 - p0), the unnormalised normal of the triangle p0 p1 p2.
    C3DVector3Tpl& SetCross(const C3DVector3Tpl& p0, const C3DVector3Tpl& p1,
                            const C3DVector3Tpl& p2) {
        const C3DVector3Tpl e1(p1.x - p0.x, p1.y - p0.y, p1.z - p0.z);
        const C3DVector3Tpl e2(p2.x - p0.x, p2.y - p0.y, p2.z - p0.z);
        return SetCross(e1, e2);
    }
    // Products with a 3x3 matrix (defined in matrix33.h and rotation_matrix.h). Points are row
    // vectors on the left: this = this * m, this = v * m; the column form this = m * v is
    // v * transpose(m).
    C3DVector3Tpl& Mul(const C3DMatrix33Tpl<T>& m);
    C3DVector3Tpl& Mul(const C3DVector3Tpl& v, const C3DMatrix33Tpl<T>& m);
    C3DVector3Tpl& Mul(const C3DMatrix33Tpl<T>& m, const C3DVector3Tpl& v);
    C3DVector3Tpl& Mul(const C3DVector3Tpl& v, const C3DRotMatTpl<T>& m);
    C3DVector3Tpl& Mul(const C3DRotMatTpl<T>& m, const C3DVector3Tpl& v);
    // The point v through a 4x4 matrix (defined in matrix44.h): (X, Y, Z, W) starts from row 3,
    // each non-zero component of v adds its row (a zero component is skipped, so it meets no
    // infinite element), and this = (X, Y, Z) / W, with no test of W.
    C3DVector3Tpl& Mul(const C3DVector3Tpl& v, const C3DMatrix44Tpl<T>& m);
    // The point v through an affine matrix (defined in transformation_matrix.h): the same from
    // the translation row, without W and without the divide.
    C3DVector3Tpl& Mul(const C3DVector3Tpl& v, const C3DXfoMatTpl<T>& m);
    // (1 - t) * a + t * b
    C3DVector3Tpl& LinearPositionInterpolate(const C3DVector3Tpl& a, const C3DVector3Tpl& b,
                                             T t) {
        const T s = T(1) - t;
        return Set(s * a.x + t * b.x, s * a.y + t * b.y, s * a.z + t * b.z);
    }

    // --- measures ----------------------------------------------------------------------------
    T GetSquaredLength() const { return math3d_detail::Dot3(&x, &x); }
    T GetLength() const { return math3d_detail::Sqrt(GetSquaredLength()); }

    // Scales to unit length. Fails (0, unchanged) unless the length exceeds the accurate epsilon
    // (1e-6 float, 1e-12 double); a NaN length fails too.
    int Normalize() {
        const T length = GetLength();
        if (!(length > C3DTolerance<T>::k_Accurate)) return 0;
        math3d_detail::Div3(&x, length);
        return 1;
    }
    // Scales to the given length; same zero test as Normalize.
    int SetLength(T length) {
        const T current = GetLength();
        if (!(current > C3DTolerance<T>::k_Accurate)) return 0;
        const T factor = length / current;
        x *= factor;
        y *= factor;
        z *= factor;
        return 1;
    }
    // this becomes its projection on the direction a. Fails (0, unchanged) unless a.a is at
    // least the accurate epsilon (a test on the squared length, unlike Normalize).
    int SetProjection(const C3DVector3Tpl& a) {
        const T squared = a.GetSquaredLength();
        if (!(squared >= C3DTolerance<T>::k_Accurate)) return 0;
        Mul(math3d_detail::Dot3(&x, &a.x) / squared, a);
        return 1;
    }
    // this = (a x b) x a, the part of b orthogonal to a scaled by |a|^2. When every component of
    // a x b is within the accurate epsilon of 0 it returns 0 and the vector holds a x b.
    int SetOrthogonal(const C3DVector3Tpl& a, const C3DVector3Tpl& b);
    // The projection of b on the plane orthogonal to a, with its true length; 0 as SetOrthogonal.
    int SetOrthoProj(const C3DVector3Tpl& a, const C3DVector3Tpl& b);
    // Finds alpha, beta with this = alpha * a + beta * b by solving the two best-conditioned
    // component equations; the third is not checked. 0 when a and b are parallel and this is not
    // along them (alpha = beta = 0), or when both are null and this is not.
    int DecomposeIn2Basis(const C3DVector3Tpl& a, const C3DVector3Tpl& b, T& alpha, T& beta,
                          T eps = C3DTolerance<T>::k_Accurate) const;
    // The mean of n points; nothing changes for null points, and n = 0 gives NaN components.
    C3DVector3Tpl& SetMean(const C3DVector3Tpl* points, unsigned int n);

    // mode 0: each component becomes max(component, value). Otherwise each component whose
    // magnitude is below value becomes +value or -value with its sign (zero becomes +value).
    C3DVector3Tpl& SetMinimal(int mode, T value) {
        return SetMinimal(C3DVector3Tpl(value, value, value), mode);
    }
    // The same with a bound per component.
    C3DVector3Tpl& SetMinimal(const C3DVector3Tpl& bound, int mode) {
        using math3d_detail::RaisedMagnitude;
        using math3d_detail::RaisedValue;
        if (mode == 0) {
            return Set(RaisedValue(x, bound.x), RaisedValue(y, bound.y), RaisedValue(z, bound.z));
        }
        return Set(RaisedMagnitude(x, bound.x), RaisedMagnitude(y, bound.y),
                   RaisedMagnitude(z, bound.z));
    }

    // Index of the largest (smallest) component, comparing magnitudes when useAbs != 0; ties go
    // to the later index.
    int GetIndexOfMaxComponent(int useAbs) const {
        const C3DVector3Tpl c = Compared(useAbs);
        if (c.x > c.y) return c.x > c.z ? 0 : 2;
        return c.y > c.z ? 1 : 2;
    }
    int GetIndexOfMinComponent(int useAbs) const {
        const C3DVector3Tpl c = Compared(useAbs);
        if (c.y > c.x) return c.z > c.x ? 0 : 2;
        return c.z > c.y ? 1 : 2;
    }
    // The value at that index; its magnitude when useAbs != 0.
    T GetMaxComponent(int useAbs) const { return Compared(useAbs)[GetIndexOfMaxComponent(useAbs)]; }
    T GetMinComponent(int useAbs) const { return Compared(useAbs)[GetIndexOfMinComponent(useAbs)]; }

    // The parameter of this point on a -> b along the dominant axis of b - a only (the point need
    // not lie on the line); 0 when that axis' extent is below eps.
    T LinearPositionUnInterpolate(const C3DVector3Tpl& a, const C3DVector3Tpl& b,
                                  T eps = C3DTolerance<T>::k_Accurate) const;
    // Uniform cubic B-spline point and tangent at t in [0, 1] with control points p0..p3.
    C3DVector3Tpl& BsplinePositionInterpolate(const C3DVector3Tpl& p0, const C3DVector3Tpl& p1,
                                              const C3DVector3Tpl& p2, const C3DVector3Tpl& p3,
                                              T t);
    C3DVector3Tpl& BsplineVectorInterpolate(const C3DVector3Tpl& p0, const C3DVector3Tpl& p1,
                                            const C3DVector3Tpl& p2, const C3DVector3Tpl& p3, T t);

    // --- comparisons -------------------------------------------------------------------------
    bool operator==(const C3DVector3Tpl& v) const { return x == v.x && y == v.y && z == v.z; }
    bool operator!=(const C3DVector3Tpl& v) const { return !(*this == v); }
    bool IsExactlyNull() const { return F3DIsExactlyNullComponents(GetArray(), 3); }
    // Every |component| <= eps.
    bool IsNull(T eps = C3DTolerance<T>::k_Accurate) const {
        return F3DIsNullComponents(GetArray(), 3, eps);
    }

    void Dump(const char* title, std::ostream& os) const;

    // --- operators ---------------------------------------------------------------------------
    C3DVector3Tpl operator-() const { return C3DVector3Tpl(-x, -y, -z); }
    C3DVector3Tpl& operator+=(const C3DVector3Tpl& v) { return Add(v); }
    C3DVector3Tpl& operator-=(const C3DVector3Tpl& v) { return Sub(v); }
    C3DVector3Tpl& operator*=(T s) { return Mul(s); }
    C3DVector3Tpl& operator/=(T s) { return Div(s); }

private:
    C3DVector3Tpl Compared(int useAbs) const {
        return useAbs != 0 ? C3DVector3Tpl(std::fabs(x), std::fabs(y), std::fabs(z)) : *this;
    }
};

// Defined once, in the library.
template <>
const C3DVector3Tpl<float> C3DVector3Tpl<float>::k_UnitVector;
template <>
const C3DVector3Tpl<double> C3DVector3Tpl<double>::k_UnitVector;

using C3DVector3f = C3DVector3Tpl<float>;
using C3DVector3d = C3DVector3Tpl<double>;

// --- inline free operations ------------------------------------------------------------------
template <typename T>
inline C3DVector3Tpl<T> operator+(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b) {
    return C3DVector3Tpl<T>(a.x + b.x, a.y + b.y, a.z + b.z);
}
template <typename T>
inline C3DVector3Tpl<T> operator-(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b) {
    return C3DVector3Tpl<T>(a.x - b.x, a.y - b.y, a.z - b.z);
}
// The scalar is not deduced, so v * 2 works for both precisions.
template <typename T>
inline C3DVector3Tpl<T> operator*(const C3DVector3Tpl<T>& v,
                                  typename C3DVector3Tpl<T>::value_type s) {
    return C3DVector3Tpl<T>(v.x * s, v.y * s, v.z * s);
}
template <typename T>
inline C3DVector3Tpl<T> operator*(typename C3DVector3Tpl<T>::value_type s,
                                  const C3DVector3Tpl<T>& v) {
    return C3DVector3Tpl<T>(s * v.x, s * v.y, s * v.z);
}
// Multiplies by the reciprocal, as Div(s).
template <typename T>
inline C3DVector3Tpl<T> operator/(const C3DVector3Tpl<T>& v,
                                  typename C3DVector3Tpl<T>::value_type s) {
    return v * (T(1) / s);
}
// The dot product.
template <typename T>
inline T operator*(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b) {
    return math3d_detail::Dot3(a.GetArray(), b.GetArray());
}
template <typename T>
inline T GetDot(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b) {
    return math3d_detail::Dot3(a.GetArray(), b.GetArray());
}
template <typename T>
inline C3DVector3Tpl<T> GetCross(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b) {
    return C3DVector3Tpl<T>(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
}
template <typename T>
inline T GetSquaredDistance(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b) {
    const T dx = a.x - b.x, dy = a.y - b.y, dz = a.z - b.z;
    return dx * dx + dy * dy + dz * dz;
}
template <typename T>
inline T GetDistance(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b) {
    return std::sqrt(GetSquaredDistance(a, b));
}
// 1 when every |a_i - b_i| < eps (strict), else 0.
template <typename T>
inline int AreAlmostEqual(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b,
                          C3DScalarArg<T> eps = C3DTolerance<T>::k_Accurate) {
    return F3DAreAlmostEqualComponents(a.GetArray(), b.GetArray(), 3, eps);
}
// "( x y z )"
template <typename T>
inline std::ostream& operator<<(std::ostream& os, const C3DVector3Tpl<T>& v) {
    return F3DWriteComponents(os, v.GetArray(), 3);
}
// Three bare numbers.
template <typename T>
inline std::istream& operator>>(std::istream& is, C3DVector3Tpl<T>& v) {
    return F3DReadComponents(is, v.GetArray(), 3);
}

// Area weights of p in the triangle a b c: u = area(b, c, p), v = area(c, a, p),
// w = area(a, b, p), each never negative, scaled to sum 1 (all 0 when they sum to 0). Points
// outside the triangle also get positive weights summing to 1.
template <typename T>
inline void GetBarycentricCoords(const C3DVector3Tpl<T>& p, const C3DVector3Tpl<T>& a,
                                 const C3DVector3Tpl<T>& b, const C3DVector3Tpl<T>& c, T& u, T& v,
                                 T& w) {
    u = T(0.5) * GetCross(c - b, p - b).GetLength();
    v = T(0.5) * GetCross(a - c, p - c).GetLength();
    w = T(0.5) * GetCross(b - a, p - a).GetLength();
    const T sum = u + v + w;
    const T factor = sum == T(0) ? sum : T(1) / sum;
    u *= factor;
    v *= factor;
    w *= factor;
}

// --- free functions compiled in the library (float and double) -------------------------------

// Cosine of the angle between a and b, clamped to [-1, 1]; 1 when |a|*|b| < eps.
template <typename T>
MATH_API T GetVctsCosAngle(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b,
                           C3DScalarArg<T> eps = C3DTolerance<T>::k_Accurate);
// Angle between a and b in [0, pi]; 0 when |a|*|b| < eps.
template <typename T>
MATH_API T GetVctsAngle(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b,
                        C3DScalarArg<T> eps = C3DTolerance<T>::k_Accurate);
// The same for a - o and b - o, with the accurate epsilon.
template <typename T>
MATH_API T GetPntsCosAngle(const C3DVector3Tpl<T>& o, const C3DVector3Tpl<T>& a,
                           const C3DVector3Tpl<T>& b);
template <typename T>
MATH_API T GetPntsAngle(const C3DVector3Tpl<T>& o, const C3DVector3Tpl<T>& a,
                        const C3DVector3Tpl<T>& b);
// GetVctsAngle, negated when the z of a x b is negative (a turn clockwise in the xy plane).
template <typename T>
MATH_API T Get2DVctsAngleSigned(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b);
template <typename T>
MATH_API T Get2DPntsAngleSigned(const C3DVector3Tpl<T>& o, const C3DVector3Tpl<T>& a,
                                const C3DVector3Tpl<T>& b);
// 0.5 * |(b - a) x (c - a)|
template <typename T>
MATH_API T GetTriangleArea(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b,
                           const C3DVector3Tpl<T>& c);
// 1 when the sine of the angle at p0 between p1 and p2 is below eps (computed in double); 0 when
// p0 coincides with p1 or p2.
template <typename T>
MATH_API int ArePntsCollinear(const C3DVector3Tpl<T>& p0, const C3DVector3Tpl<T>& p1,
                              const C3DVector3Tpl<T>& p2, C3DScalarArg<T> eps = C3DTolerance<T>::k_Accurate);
// Two vectors completing n to an orthogonal triple (n, u, v = n x u); not normalised.
template <typename T>
MATH_API void GetOrthogonalBasis(const C3DVector3Tpl<T>& n, C3DVector3Tpl<T>& u,
                                 C3DVector3Tpl<T>& v);
// Kept for compatibility: reads neither p nor the full line and returns 1 for every input. The
// working planar side test is the one on C3DVector2Tpl.
template <typename T>
MATH_API int Get2DPntSide(const C3DVector3Tpl<T>& p, const C3DVector3Tpl<T>& a,
                          const C3DVector3Tpl<T>& b);
