#pragma once
// C3DVector2Tpl<T>: the planar point and direction type, for float and double, and the planar
// predicates: side of a line, orientation, colinearity, barycentric weights, segment test.
//
// A plain value: two contiguous components x, y, no virtual functions, no heap memory. Unlike the
// three-component vector, the default constructor sets (0, 0). Operations that can meet a
// degenerate input return int 1 on success and 0 on failure and then leave the vector unchanged.
#include <cmath>
#include <istream>
#include <ostream>

#include "math/foundations/dump.h"
#include "math/foundations/export.h"
#include "math/foundations/tolerance.h"
#include "math/matrices/rotation_matrix.h"
#include "math/vectors/vector3.h"

template <typename T>
class MATH_API C3DVector2Tpl {
public:
    using value_type = T;

    T x;
    T y;

    constexpr C3DVector2Tpl() : x(0), y(0) {}
    constexpr C3DVector2Tpl(T x_, T y_) : x(x_), y(y_) {}
    // Copies two values.
    explicit C3DVector2Tpl(const T* values) : x(values[0]), y(values[1]) {}
    // value on axis 0 or 1; the null vector for any other axis. An int first argument selects
    // this constructor over (x, y): C3DVector2Tpl<double>(3, 4) is (0, 0), write (3.0, 4.0).
    C3DVector2Tpl(int axis, T value) : x(axis == 0 ? value : T(0)), y(axis == 1 ? value : T(0)) {}

    unsigned int GetDynamicMemSize() const { return 0; }

    // --- access ------------------------------------------------------------------------------
    C3DVector2Tpl& Set(T x_, T y_) {
        x = x_;
        y = y_;
        return *this;
    }
    C3DVector2Tpl& Set(const C3DVector2Tpl& v) { return Set(v.x, v.y); }
    C3DVector2Tpl& SetNull() { return Set(T(0), T(0)); }
    C3DVector2Tpl& SetX(T value) {
        x = value;
        return *this;
    }
    C3DVector2Tpl& SetY(T value) {
        y = value;
        return *this;
    }
    // Sets x for 0, y for 1; any other index changes nothing.
    C3DVector2Tpl& SetComp(int i, T value) {
        if (i == 0) x = value;
        if (i == 1) y = value;
        return *this;
    }
    T GetX() const { return x; }
    T GetY() const { return y; }
    void Get(T& x_, T& y_) const {
        x_ = x;
        y_ = y;
    }
    // x for 0, y for every other index.
    T Get(int i) const { return i == 0 ? x : y; }
    T* GetArray() { return &x; }
    const T* GetArray() const { return &x; }
    // No range check.
    T& operator[](unsigned int i) { return (&x)[i]; }
    const T& operator[](unsigned int i) const { return (&x)[i]; }

    // --- arithmetic (this = result; arguments may be this vector) ----------------------------
    C3DVector2Tpl& Negate() { return Set(-x, -y); }
    C3DVector2Tpl& Negate(const C3DVector2Tpl& v) { return Set(-v.x, -v.y); }
    C3DVector2Tpl& Add(const C3DVector2Tpl& v) { return Set(x + v.x, y + v.y); }
    C3DVector2Tpl& Add(const C3DVector2Tpl& a, const C3DVector2Tpl& b) {
        return Set(a.x + b.x, a.y + b.y);
    }
    C3DVector2Tpl& Sub(const C3DVector2Tpl& v) { return Set(x - v.x, y - v.y); }
    C3DVector2Tpl& Sub(const C3DVector2Tpl& a, const C3DVector2Tpl& b) {
        return Set(a.x - b.x, a.y - b.y);
    }
    C3DVector2Tpl& Mul(T s) { return Set(x * s, y * s); }
    C3DVector2Tpl& Mul(T s, const C3DVector2Tpl& v) { return Set(s * v.x, s * v.y); }
    C3DVector2Tpl& Mul(const C3DVector2Tpl& v, T s) { return Mul(s, v); }
    // Multiplies by the reciprocal 1/s (no zero test).
    C3DVector2Tpl& Div(T s) { return Mul(T(1) / s); }
    // Divides each component of v by s directly; may round differently from Div(s).
    C3DVector2Tpl& Div(const C3DVector2Tpl& v, T s) { return Set(v.x / s, v.y / s); }
    C3DVector2Tpl& MulComp(const C3DVector2Tpl& v) { return Set(x * v.x, y * v.y); }
    C3DVector2Tpl& MulComp(const C3DVector2Tpl& a, const C3DVector2Tpl& b) {
        return Set(a.x * b.x, a.y * b.y);
    }
    // Component-wise quotient, no zero test.
    C3DVector2Tpl& DivComp(const C3DVector2Tpl& v) { return Set(x / v.x, y / v.y); }
    C3DVector2Tpl& DivComp(const C3DVector2Tpl& a, const C3DVector2Tpl& b) {
        return Set(a.x / b.x, a.y / b.y);
    }
    // (a + b) * 0.5
    C3DVector2Tpl& SetMidpoint(const C3DVector2Tpl& a, const C3DVector2Tpl& b) {
        return Set((a.x + b.x) * T(0.5), (a.y + b.y) * T(0.5));
    }
    // 2c - p: the point reflection of p through c.
    C3DVector2Tpl& SetMirror(const C3DVector2Tpl& p, const C3DVector2Tpl& c) {
        return Set(T(2) * c.x - p.x, T(2) * c.y - p.y);
    }
    // (x, y) becomes (-y, x).
    C3DVector2Tpl& Rotate90DegsCCW() { return Set(-y, x); }
    // (1 - t) * a + t * b
    C3DVector2Tpl& LinearPositionInterpolate(const C3DVector2Tpl& a, const C3DVector2Tpl& b, T t) {
        const T s = T(1) - t;
        return Set(s * a.x + t * b.x, s * a.y + t * b.y);
    }
    // The uniform cubic B-spline point and tangent of C3DVector3Tpl, in the plane.
    C3DVector2Tpl& BsplinePositionInterpolate(const C3DVector2Tpl& p0, const C3DVector2Tpl& p1,
                                              const C3DVector2Tpl& p2, const C3DVector2Tpl& p3,
                                              T t);
    C3DVector2Tpl& BsplineVectorInterpolate(const C3DVector2Tpl& p0, const C3DVector2Tpl& p1,
                                            const C3DVector2Tpl& p2, const C3DVector2Tpl& p3, T t);
    // x and y of the column product r * v.
    C3DVector2Tpl& Mul(const C3DRotMatTpl<T>& r, const C3DVector3Tpl<T>& v) {
        C3DVector3Tpl<T> p;
        p.Mul(r, v);
        return Set(p.x, p.y);
    }
    // x and y of the row product v * r.
    C3DVector2Tpl& Mul(const C3DVector3Tpl<T>& v, const C3DRotMatTpl<T>& r) {
        C3DVector3Tpl<T> p;
        p.Mul(v, r);
        return Set(p.x, p.y);
    }
    // mode 0: each component becomes max(component, value); otherwise each component whose
    // magnitude is below value becomes +value or -value with its sign (zero becomes +value).
    C3DVector2Tpl& SetMinimal(int mode, T value) {
        return SetMinimal(C3DVector2Tpl(value, value), mode);
    }
    // The same with a bound per component.
    C3DVector2Tpl& SetMinimal(const C3DVector2Tpl& bound, int mode) {
        using math3d_detail::RaisedMagnitude;
        using math3d_detail::RaisedValue;
        if (mode == 0) return Set(RaisedValue(x, bound.x), RaisedValue(y, bound.y));
        return Set(RaisedMagnitude(x, bound.x), RaisedMagnitude(y, bound.y));
    }

    // --- measures ----------------------------------------------------------------------------
    T GetSquaredLength() const { return x * x + y * y; }
    T GetLength() const { return math3d_detail::Sqrt(GetSquaredLength()); }
    // Index of the larger (smaller) component, comparing magnitudes when useAbs != 0; a tie
    // gives 1.
    int GetIndexOfMaxComponent(int useAbs) const {
        return useAbs != 0 ? (std::fabs(x) > std::fabs(y) ? 0 : 1) : (x > y ? 0 : 1);
    }
    int GetIndexOfMinComponent(int useAbs) const {
        return useAbs != 0 ? (std::fabs(y) > std::fabs(x) ? 0 : 1) : (y > x ? 0 : 1);
    }

    // Scales to unit length. Fails (0, unchanged) unless the length exceeds the accurate epsilon
    // (1e-6 float, 1e-12 double); a NaN length fails too.
    int Normalize() {
        const T length = GetLength();
        if (!(length > C3DTolerance<T>::k_Accurate)) return 0;
        x /= length;
        y /= length;
        return 1;
    }
    // Scales to the given length; same zero test as Normalize.
    int SetLength(T length) {
        const T current = GetLength();
        if (!(current > C3DTolerance<T>::k_Accurate)) return 0;
        Mul(length / current);
        return 1;
    }
    // this becomes its projection on the direction a. Fails (0, unchanged) unless a.a is at
    // least 1e-12 in both precisions.
    int SetProjection(const C3DVector2Tpl& a) {
        const T squared = a.GetSquaredLength();
        if (!(static_cast<double>(squared) >= 1e-12)) return 0;
        Mul(GetDot(*this, a) / squared, a);
        return 1;
    }

    // The parameter of this point on a -> b along x when |d.x| > eps and |d.x| > |d.y|
    // (d = b - a), else along y when |d.y| > eps, else 0.
    T LinearPositionUnInterpolate(const C3DVector2Tpl& a, const C3DVector2Tpl& b,
                                  T eps = C3DTolerance<T>::k_Accurate) const;
    // 1 when this point lies between a and b within eps on the dominant coordinate of b - a
    // (x when |d.x| > |d.y|, else y); the other coordinate is not looked at.
    int IsBetween(const C3DVector2Tpl& a, const C3DVector2Tpl& b,
                  T eps = C3DTolerance<T>::k_Accurate) const;
    // The squared distance to the line through o along d; to o itself when d.d < eps.
    T GetSquaredDistanceFromLine(const C3DVector2Tpl& o, const C3DVector2Tpl& d,
                                 T eps = C3DTolerance<T>::k_Accurate) const;
    // Kept for compatibility: result is t * d, the foot of the perpendicular on the line through
    // o along d expressed relative to o, not the absolute point; with d null it is NaN (the
    // early copy of o for d.d < eps is always overwritten).
    void GetNearestPointToLine(const C3DVector2Tpl& o, const C3DVector2Tpl& d,
                               C3DVector2Tpl& result, T eps = C3DTolerance<T>::k_Accurate) const;
    // Finds alpha, beta with this = alpha * a + beta * b. With a and b parallel (|det| < eps)
    // it succeeds only for a vector along a, putting the whole weight on the larger of the two
    // along the dominant axis; 0 otherwise (alpha = beta = 0).
    int DecomposeIn2Basis(const C3DVector2Tpl& a, const C3DVector2Tpl& b, T& alpha, T& beta,
                          T eps = C3DTolerance<T>::k_Accurate) const;
    // The intersection of the lines p1 + s d1 and p2 + t d2; 0 (unchanged) when
    // DecomposeIn2Basis of p1 - p2 on (d1, d2) fails.
    int SetIntersection(const C3DVector2Tpl& p1, const C3DVector2Tpl& d1, const C3DVector2Tpl& p2,
                        const C3DVector2Tpl& d2, T eps = C3DTolerance<T>::k_Accurate);

    // --- comparisons -------------------------------------------------------------------------
    bool operator==(const C3DVector2Tpl& v) const { return x == v.x && y == v.y; }
    bool operator!=(const C3DVector2Tpl& v) const { return !(*this == v); }
    // Both |components| <= eps.
    bool IsNull(T eps = C3DTolerance<T>::k_Accurate) const {
        return F3DIsNullComponents(GetArray(), 2, eps);
    }

    void Dump(const char* title, std::ostream& os) const;
};

using C3DVector2f = C3DVector2Tpl<float>;
using C3DVector2d = C3DVector2Tpl<double>;

// --- inline free operations ------------------------------------------------------------------
template <typename T>
inline C3DVector2Tpl<T> operator+(const C3DVector2Tpl<T>& a, const C3DVector2Tpl<T>& b) {
    return C3DVector2Tpl<T>(a.x + b.x, a.y + b.y);
}
template <typename T>
inline C3DVector2Tpl<T> operator-(const C3DVector2Tpl<T>& a, const C3DVector2Tpl<T>& b) {
    return C3DVector2Tpl<T>(a.x - b.x, a.y - b.y);
}
template <typename T>
inline C3DVector2Tpl<T> operator*(typename C3DVector2Tpl<T>::value_type s,
                                  const C3DVector2Tpl<T>& v) {
    return C3DVector2Tpl<T>(s * v.x, s * v.y);
}
// a.x b.x + a.y b.y
template <typename T>
inline T GetDot(const C3DVector2Tpl<T>& a, const C3DVector2Tpl<T>& b) {
    return a.x * b.x + a.y * b.y;
}
// The z of the planar cross product: a.x b.y - b.x a.y.
template <typename T>
inline T GetCross(const C3DVector2Tpl<T>& a, const C3DVector2Tpl<T>& b) {
    return a.x * b.y - b.x * a.y;
}
template <typename T>
inline T GetSquaredDistance(const C3DVector2Tpl<T>& a, const C3DVector2Tpl<T>& b) {
    const T dx = a.x - b.x, dy = a.y - b.y;
    return dx * dx + dy * dy;
}
template <typename T>
inline T GetDistance(const C3DVector2Tpl<T>& a, const C3DVector2Tpl<T>& b) {
    return std::sqrt(GetSquaredDistance(a, b));
}
// "( x y )"
template <typename T>
inline std::ostream& operator<<(std::ostream& os, const C3DVector2Tpl<T>& v) {
    return F3DWriteComponents(os, v.GetArray(), 2);
}
// Two bare numbers.
template <typename T>
inline std::istream& operator>>(std::istream& is, C3DVector2Tpl<T>& v) {
    return F3DReadComponents(is, v.GetArray(), 2);
}

// --- planar predicates compiled in the library (float and double) ----------------------------

// -1 when p lies right of the directed line a -> b, 1 otherwise (on the line included).
template <typename T>
MATH_API int Get2DPntSide(const C3DVector2Tpl<T>& p, const C3DVector2Tpl<T>& a,
                          const C3DVector2Tpl<T>& b);
// 1 when the turn a -> b -> c is clockwise or straight.
template <typename T>
MATH_API int ArePntsClockWise(const C3DVector2Tpl<T>& a, const C3DVector2Tpl<T>& b,
                              const C3DVector2Tpl<T>& c);
// 1 when two of the points are within eps of each other, or when the vertex opposite the
// longest edge is within eps of that edge's line.
template <typename T>
MATH_API int ArePntsColinearUsingDistance(const C3DVector2Tpl<T>& p0, const C3DVector2Tpl<T>& p1,
                                          const C3DVector2Tpl<T>& p2, C3DScalarArg<T> eps);
// Signed area weights u, v, w of p in the triangle a b c (u for a, v for b, w for c). When the
// signed areas sum above eps (a counter-clockwise triangle) they are scaled to sum 1 and the
// result is 1 when none is below -eps. Otherwise (clockwise or degenerate) p is matched to the
// nearest edge whose parameter lies in [-eps, 1 + eps], edges touching the vertex `preferred`
// (0 a, 1 b, 2 c, any other value none) taking precedence; the two end weights are 1 - t and t
// and the result is 1 when the squared distance to that edge is below eps itself.
template <typename T>
MATH_API int GetBarycentricCoords(const C3DVector2Tpl<T>& p, const C3DVector2Tpl<T>& a,
                                  const C3DVector2Tpl<T>& b, const C3DVector2Tpl<T>& c, T& u, T& v,
                                  T& w, C3DScalarArg<T> eps, unsigned int preferred);
// Kept for compatibility: returns 0 for every input, crossing segments included. The segment
// tests of the geometry routines are the working ones.
template <typename T>
MATH_API int FSegmentIntersect(const C3DVector2Tpl<T>& p0, const C3DVector2Tpl<T>& p1,
                               const C3DVector2Tpl<T>& q0, const C3DVector2Tpl<T>& q1);
