#pragma once
// C3DMatrix33Tpl<T>: the general 3x3 matrix, for float and double.
//
// A plain value: nine values stored row by row, element (row, col) at row * 3 + col, no virtual
// functions, no heap memory. Points and directions are row vectors multiplied on the left
// (v' = v * M), so row i is the image of axis i. Every product is formed in a temporary before it
// is stored, so any argument may be the matrix itself. Inversion and the eigen solver return int 1
// on success and 0 on failure and then leave the matrix (or their outputs) as they were; nothing
// else tests its input.
#include <cmath>
#include <istream>
#include <ostream>
#include <type_traits>

#include "math/foundations/dump.h"
#include "math/foundations/export.h"
#include "math/foundations/forward_declarations.h"
#include "math/foundations/init_request.h"
#include "math/foundations/tolerance.h"
#include "math/vectors/vector3.h"

namespace math3d_detail {

// r = a * b for row-major 3x3 arrays; r may be a or b. Each element sums its three products in
// order.
template <typename T>
inline void Mul33(const T* a, const T* b, T* r) {
    T t[9];
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            t[3 * i + j] = a[3 * i] * b[j] + a[3 * i + 1] * b[3 + j] + a[3 * i + 2] * b[6 + j];
    for (int k = 0; k < 9; ++k) r[k] = t[k];
}
#if defined(__SSE2__)
// The same in SSE2 lane pairs: the first two columns of each row, then the last column of rows
// 0 and 1; the sums keep their order, so the values are those of the scalar form.
inline void Mul33(const double* a, const double* b, double* r) {
    const __m128d b0 = _mm_loadu_pd(b), b1 = _mm_loadu_pd(b + 3), b2 = _mm_loadu_pd(b + 6);
    __m128d head[3];
    for (int i = 0; i < 3; ++i) {
        const double* row = a + 3 * i;
        head[i] = _mm_add_pd(
            _mm_add_pd(_mm_mul_pd(_mm_set1_pd(row[0]), b0), _mm_mul_pd(_mm_set1_pd(row[1]), b1)),
            _mm_mul_pd(_mm_set1_pd(row[2]), b2));
    }
    const __m128d a0 = _mm_loadu_pd(a), a1 = _mm_loadu_pd(a + 3);
    const __m128d a2 = _mm_loadu_pd(a + 1), a3 = _mm_loadu_pd(a + 4);
    const __m128d tail =
        _mm_add_pd(_mm_add_pd(_mm_mul_pd(_mm_unpacklo_pd(a0, a1), _mm_set1_pd(b[2])),
                              _mm_mul_pd(_mm_unpackhi_pd(a0, a1), _mm_set1_pd(b[5]))),
                   _mm_mul_pd(_mm_unpackhi_pd(a2, a3), _mm_set1_pd(b[8])));
    const double last = a[6] * b[2] + a[7] * b[5] + a[8] * b[8];
    _mm_storeu_pd(r, head[0]);
    _mm_store_sd(r + 2, tail);
    _mm_storeu_pd(r + 3, head[1]);
    _mm_storeh_pd(r + 5, tail);
    _mm_storeu_pd(r + 6, head[2]);
    r[8] = last;
}

// The three products of the cross product a x b (rows of 3 doubles) in SSE2 lane pairs:
// x = (a1 b2, a2 b1), y = (a2 b0, a0 b2), z = (a0 b1, a1 b0), each component being the first
// product minus the second.
struct Cross33 {
    __m128d x, y, z;
};
inline Cross33 CrossProducts(const double* a, const double* b) {
    const __m128d a01 = _mm_loadu_pd(a), a12 = _mm_loadu_pd(a + 1);
    const __m128d b01 = _mm_loadu_pd(b), b12 = _mm_loadu_pd(b + 1);
    return {_mm_mul_pd(a12, _mm_shuffle_pd(b12, b12, 1)),
            _mm_mul_pd(_mm_shuffle_pd(a12, a01, 1), _mm_shuffle_pd(b01, b12, 2)),
            _mm_mul_pd(a01, _mm_shuffle_pd(b01, b01, 1))};
}
// (x, y) and (z, -) of the cross product from its products.
inline __m128d CrossXY(const Cross33& c) {
    return _mm_sub_pd(_mm_unpacklo_pd(c.x, c.y), _mm_unpackhi_pd(c.x, c.y));
}
inline __m128d CrossZ(const Cross33& c) { return _mm_sub_sd(c.z, _mm_unpackhi_pd(c.z, c.z)); }

// The inverse of the row-major array s into d, transposed when transpose != 0; d may be s. The
// adjugate's columns are the cross products r1 x r2, r2 x r0, r0 x r1 of the rows, and the six
// Leibniz products reuse those of r0 x r1: (m00 m11) m22, (m01 m12) m20, (m02 m10) m21,
// (m02 m11) m20, (m01 m10) m22, (m00 m12) m21. Determinant and size are summed in that order in
// the two lanes of one register, so the results are those of the scalar code, rounding included.
inline int Inverse33(const double* s, double* d, int transpose, double eps) {
    const Cross33 p0 = CrossProducts(s + 3, s + 6);
    const Cross33 p1 = CrossProducts(s + 6, s);
    const Cross33 p2 = CrossProducts(s, s + 3);
    const __m128d m2 = _mm_loadu_pd(s + 6);
    const __m128d lx = _mm_mul_pd(p2.z, _mm_set1_pd(s[8]));        // p0, p4
    const __m128d ly = _mm_mul_pd(p2.x, _mm_unpacklo_pd(m2, m2));  // p1, p3
    const __m128d lz = _mm_mul_pd(p2.y, _mm_unpackhi_pd(m2, m2));  // p2, p5
    // Lane 0 sums the signed products, lane 1 their magnitudes: a - (-|p|) is exactly a + |p|.
    const __m128d sign = _mm_set1_pd(-0.0);
    __m128d acc = _mm_unpacklo_pd(lx, _mm_andnot_pd(sign, lx));
    acc = _mm_add_pd(acc, _mm_unpacklo_pd(ly, _mm_andnot_pd(sign, ly)));
    acc = _mm_add_pd(acc, _mm_unpacklo_pd(lz, _mm_andnot_pd(sign, lz)));
    acc = _mm_sub_pd(acc, _mm_unpackhi_pd(ly, _mm_or_pd(sign, ly)));
    acc = _mm_sub_pd(acc, _mm_unpackhi_pd(lx, _mm_or_pd(sign, lx)));
    acc = _mm_sub_pd(acc, _mm_unpackhi_pd(lz, _mm_or_pd(sign, lz)));
    // (det / size, 1 / det) in one division.
    const __m128d q = _mm_div_pd(_mm_move_sd(_mm_set1_pd(1.0), acc), _mm_shuffle_pd(acc, acc, 1));
    if (_mm_cvtsd_f64(_mm_unpackhi_pd(acc, acc)) == 0.0) return 0;
    if (!(std::fabs(_mm_cvtsd_f64(q)) >= eps)) return 0;
    const __m128d k = _mm_unpackhi_pd(q, q);
    const __m128d c0 = CrossXY(p0), c1 = CrossXY(p1), c2 = CrossXY(p2);
    const __m128d z0 = CrossZ(p0), z1 = CrossZ(p1), z2 = CrossZ(p2);
    if (transpose != 0) {
        _mm_storeu_pd(d, _mm_mul_pd(c0, k));
        _mm_store_sd(d + 2, _mm_mul_sd(z0, k));
        _mm_storeu_pd(d + 3, _mm_mul_pd(c1, k));
        _mm_store_sd(d + 5, _mm_mul_sd(z1, k));
        _mm_storeu_pd(d + 6, _mm_mul_pd(c2, k));
        _mm_store_sd(d + 8, _mm_mul_sd(z2, k));
    } else {
        const __m128d last = _mm_mul_pd(c2, k);
        _mm_storeu_pd(d, _mm_mul_pd(_mm_unpacklo_pd(c0, c1), k));
        _mm_store_sd(d + 2, last);
        _mm_storeu_pd(d + 3, _mm_mul_pd(_mm_unpackhi_pd(c0, c1), k));
        _mm_storeh_pd(d + 5, last);
        _mm_storeu_pd(d + 6, _mm_mul_pd(_mm_unpacklo_pd(z0, z1), k));
        _mm_store_sd(d + 8, _mm_mul_sd(z2, k));
    }
    return 1;
}
#endif

}  // namespace math3d_detail

template <typename T>
class MATH_API C3DMatrix33Tpl {
public:
    using value_type = T;

    // The null matrix.
    C3DMatrix33Tpl() { SetNull(); }
    // Leaves the values unwritten.
    explicit C3DMatrix33Tpl(const C3DInitRequest_DoNotInitialize&) {}
    C3DMatrix33Tpl(T m00, T m01, T m02, T m10, T m11, T m12, T m20, T m21, T m22) {
        Set(m00, m01, m02, m10, m11, m12, m20, m21, m22);
    }
    // a, b, c become the rows when asRows != 0, the columns when asRows == 0.
    C3DMatrix33Tpl(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b, const C3DVector3Tpl<T>& c,
                   int asRows) {
        if (asRows != 0) {
            SetRow(0, a).SetRow(1, b).SetRow(2, c);
        } else {
            SetCol(0, a).SetCol(1, b).SetCol(2, c);
        }
    }
    // Widens each value to T.
    explicit C3DMatrix33Tpl(const float (&values)[3][3]) {
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) m_Values[i][j] = T(values[i][j]);
    }
    // The 3x3 minor of m without that row and column, the others kept in order (defined in
    // matrix44.h).
    C3DMatrix33Tpl(int row, int col, const C3DMatrix44Tpl<T>& m);
    // Takes the upper-left 3x3 of a 4x4 float array.
    C3DMatrix33Tpl& operator=(const float (&values)[4][4]) {
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) m_Values[i][j] = T(values[i][j]);
        return *this;
    }

    unsigned int GetDynamicMemSize() const { return 0; }

    // --- access (row and column indices 0..2 are not checked) --------------------------------
    T Get(int row, int col) const { return m_Values[row][col]; }
    C3DMatrix33Tpl& Set(int row, int col, T value) {
        m_Values[row][col] = value;
        return *this;
    }
    C3DMatrix33Tpl& Set(T m00, T m01, T m02, T m10, T m11, T m12, T m20, T m21, T m22) {
        return SetRow(0, m00, m01, m02).SetRow(1, m10, m11, m12).SetRow(2, m20, m21, m22);
    }
    C3DMatrix33Tpl& Set(const T (*values)[3]) {
        for (int i = 0; i < 3; ++i) SetRow(i, values[i][0], values[i][1], values[i][2]);
        return *this;
    }
    C3DMatrix33Tpl& Set(const C3DMatrix33Tpl& m) { return *this = m; }
    // The 3x3 minor of m without that row and column.
    C3DMatrix33Tpl& Set(int row, int col, const C3DMatrix44Tpl<T>& m);
    C3DMatrix33Tpl& SetRow(int i, T a, T b, T c) {
        m_Values[i][0] = a;
        m_Values[i][1] = b;
        m_Values[i][2] = c;
        return *this;
    }
    C3DMatrix33Tpl& SetRow(int i, const C3DVector3Tpl<T>& v) { return SetRow(i, v.x, v.y, v.z); }
    C3DMatrix33Tpl& SetCol(int j, T a, T b, T c) {
        m_Values[0][j] = a;
        m_Values[1][j] = b;
        m_Values[2][j] = c;
        return *this;
    }
    C3DMatrix33Tpl& SetCol(int j, const C3DVector3Tpl<T>& v) { return SetCol(j, v.x, v.y, v.z); }
    C3DMatrix33Tpl& SetNull() { return Set(0, 0, 0, 0, 0, 0, 0, 0, 0); }
    C3DMatrix33Tpl& SetIdentity() { return Set(1, 0, 0, 0, 1, 0, 0, 0, 1); }
    T* GetArray() { return &m_Values[0][0]; }
    const T* GetArray() const { return &m_Values[0][0]; }

    // --- arithmetic (this = result; arguments may be this matrix) ----------------------------
    C3DMatrix33Tpl& Add(const C3DMatrix33Tpl& m) { return Add(*this, m); }
    C3DMatrix33Tpl& Add(const C3DMatrix33Tpl& a, const C3DMatrix33Tpl& b) {
        for (int k = 0; k < 9; ++k) GetArray()[k] = a.GetArray()[k] + b.GetArray()[k];
        return *this;
    }
    C3DMatrix33Tpl& Sub(const C3DMatrix33Tpl& m) { return Sub(*this, m); }
    C3DMatrix33Tpl& Sub(const C3DMatrix33Tpl& a, const C3DMatrix33Tpl& b) {
        for (int k = 0; k < 9; ++k) GetArray()[k] = a.GetArray()[k] - b.GetArray()[k];
        return *this;
    }
    C3DMatrix33Tpl& Negate() { return Negate(*this); }
    C3DMatrix33Tpl& Negate(const C3DMatrix33Tpl& m) {
        for (int k = 0; k < 9; ++k) GetArray()[k] = -m.GetArray()[k];
        return *this;
    }
    C3DMatrix33Tpl& Mul(T s) { return Mul(s, *this); }
    C3DMatrix33Tpl& Mul(T s, const C3DMatrix33Tpl& m) {
        for (int k = 0; k < 9; ++k) GetArray()[k] = s * m.GetArray()[k];
        return *this;
    }
    C3DMatrix33Tpl& Mul(const C3DMatrix33Tpl& m, T s) { return Mul(s, m); }
    // Divides each value by s (no zero test).
    C3DMatrix33Tpl& Div(T s) { return Div(*this, s); }
    C3DMatrix33Tpl& Div(const C3DMatrix33Tpl& m, T s) {
        for (int k = 0; k < 9; ++k) GetArray()[k] = m.GetArray()[k] / s;
        return *this;
    }
    // this = a * b
    C3DMatrix33Tpl& Mul(const C3DMatrix33Tpl& a, const C3DMatrix33Tpl& b) {
        math3d_detail::Mul33(a.GetArray(), b.GetArray(), GetArray());
        return *this;
    }
    // this = this * m
    C3DMatrix33Tpl& Mul(const C3DMatrix33Tpl& m) { return Mul(*this, m); }
    // this = transpose(a) * b
    C3DMatrix33Tpl& MulTransByReg(const C3DMatrix33Tpl& a, const C3DMatrix33Tpl& b) {
        return Mul(Transposed(a), b);
    }
    // this = a * transpose(b)
    C3DMatrix33Tpl& MulRegByTrans(const C3DMatrix33Tpl& a, const C3DMatrix33Tpl& b) {
        return Mul(a, Transposed(b));
    }
    C3DMatrix33Tpl& Transpose() { return Transpose(*this); }
    C3DMatrix33Tpl& Transpose(const C3DMatrix33Tpl& m) { return *this = Transposed(m); }

    // --- measures ----------------------------------------------------------------------------
    T GetTrace() const { return m_Values[0][0] + m_Values[1][1] + m_Values[2][2]; }
    // m00 (m11 m22 - m12 m21) - m01 (m22 m10 - m12 m20) + m02 (m21 m10 - m11 m20)
    T GetDet() const {
        const T(&m)[3][3] = m_Values;
        return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
               m[0][1] * (m[2][2] * m[1][0] - m[1][2] * m[2][0]) +
               m[0][2] * (m[2][1] * m[1][0] - m[1][1] * m[2][0]);
    }
    // Every |m_ii - 1| < eps and every off-diagonal |m_ij| < eps (strict).
    bool IsIdentity(T eps = C3DTolerance<T>::k_Accurate) const {
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j)
                if (!(std::fabs(m_Values[i][j] - T(i == j ? 1 : 0)) < eps)) return false;
        return true;
    }
    // 1 when |m_ij - m_ji| < eps for the three pairs (strict).
    int IsSymmetric(T eps = C3DTolerance<T>::k_Accurate) const {
        const T(&m)[3][3] = m_Values;
        const bool symmetric = std::fabs(m[0][1] - m[1][0]) < eps &&
                               std::fabs(m[0][2] - m[2][0]) < eps &&
                               std::fabs(m[1][2] - m[2][1]) < eps;
        return symmetric ? 1 : 0;
    }
    // The relative test: 1 when every Leibniz product is zero, or when eps > |det / size| (det
    // and size as ComputeDetAndDetSize gives them); a NaN ratio is not singular.
    int IsSingular(T eps = C3DTolerance<T>::k_Accurate) const;

    // --- adjugate, inverse, eigen system -----------------------------------------------------
    // The adjugate (transpose of the cofactor matrix): m * adj(m) = det(m) * I.
    C3DMatrix33Tpl& Adjoint() { return Adjoint(*this); }
    C3DMatrix33Tpl& Adjoint(const C3DMatrix33Tpl& m) {
        ComputeAdjoint(m.m_Values, m_Values);
        return *this;
    }
    // this = inverse(m). Fails (0, unchanged) when the relative measure |det / size| is below the
    // accurate epsilon (1e-6 float, 1e-12 double) or every Leibniz product is zero.
    int Invert() { return Invert(*this); }
    int Invert(const C3DMatrix33Tpl& m) {
        return ComputeInverse(m.m_Values, m_Values, 0, C3DTolerance<T>::k_Accurate);
    }
    // this = transpose(inverse(m)); the same test as Invert.
    int TransposeInverse() { return TransposeInverse(*this); }
    int TransposeInverse(const C3DMatrix33Tpl& m) {
        return ComputeInverse(m.m_Values, m_Values, 1, C3DTolerance<T>::k_Accurate);
    }
    // Eigenvectors (the columns of vectors) and eigenvalues of a symmetric matrix, by the cyclic
    // Jacobi method, sorted by decreasing value. 0 without writing anything when the matrix is
    // not symmetric within eps (IsSymmetric); 0 with the unsorted state of the last sweep written
    // when 50 sweeps do not bring every off-diagonal magnitude below eps; 1 otherwise.
    int GetEigenVectors(C3DMatrix33Tpl& vectors, C3DVector3Tpl<T>& values,
                        T eps = C3DTolerance<T>::k_Accurate) const;

    // --- the building blocks of the above, on raw row arrays -----------------------------------
    // det: the six Leibniz products summed in the order +m00 m11 m22, +m01 m12 m20,
    // +m02 m10 m21, -m02 m11 m20, -m01 m10 m22, -m00 m12 m21; size: the sum of their magnitudes,
    // so that det / size is a scale-free measure in [-1, 1].
    void ComputeDetAndDetSize(const T (*m)[3], T& det, T& size) const {
        const T p0 = m[0][0] * m[1][1] * m[2][2];
        const T p1 = m[0][1] * m[1][2] * m[2][0];
        const T p2 = m[0][2] * m[1][0] * m[2][1];
        const T p3 = m[0][2] * m[1][1] * m[2][0];
        const T p4 = m[0][1] * m[1][0] * m[2][2];
        const T p5 = m[0][0] * m[1][2] * m[2][1];
        det = p0 + p1 + p2 - p3 - p4 - p5;
        size = std::fabs(p0) + std::fabs(p1) + std::fabs(p2) + std::fabs(p3) + std::fabs(p4) +
               std::fabs(p5);
    }
    // dst = adj(src); dst may be src.
    void ComputeAdjoint(const T (*src)[3], T (*dst)[3]) const {
        const T(*m)[3] = src;
        const T adj[3][3] = {
            {m[1][1] * m[2][2] - m[1][2] * m[2][1], m[0][2] * m[2][1] - m[0][1] * m[2][2],
             m[0][1] * m[1][2] - m[0][2] * m[1][1]},
            {m[1][2] * m[2][0] - m[1][0] * m[2][2], m[0][0] * m[2][2] - m[0][2] * m[2][0],
             m[0][2] * m[1][0] - m[0][0] * m[1][2]},
            {m[1][0] * m[2][1] - m[1][1] * m[2][0], m[0][1] * m[2][0] - m[0][0] * m[2][1],
             m[0][0] * m[1][1] - m[0][1] * m[1][0]}};
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) dst[i][j] = adj[i][j];
    }
    // dst = inverse(src), transposed when transpose != 0; src and dst may be the same. 0 without
    // writing dst when size is 0 or not (|det / size| >= eps).
    int ComputeInverse(const T (*src)[3], T (*dst)[3], int transpose, T eps) const {
#if defined(__SSE2__)
        if constexpr (std::is_same<T, double>::value)
            return math3d_detail::Inverse33(src[0], dst[0], transpose, eps);
#endif
        T m[3][3];
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) m[i][j] = src[i][j];
        T det, size;
        ComputeDetAndDetSize(m, det, size);
        if (size == T(0)) return 0;
        if (!(std::fabs(det / size) >= eps)) return 0;
        T adj[3][3];
        ComputeAdjoint(m, adj);
        const T factor = T(1) / det;
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j)
                dst[i][j] = (transpose != 0 ? adj[j][i] : adj[i][j]) * factor;
        return 1;
    }
    // The first row of m times the first column of adj: det(m) when adj is its adjugate.
    T ComputeDetFast(const T (*m)[3], const T (*adj)[3]) const {
        return m[0][0] * adj[0][0] + m[0][1] * adj[1][0] + m[0][2] * adj[2][0];
    }
    // The Jacobi iteration of GetEigenVectors on src, without the symmetry test.
    int ComputeEigen(const T (*src)[3], T (*vectors)[3], C3DVector3Tpl<T>& values, T eps) const;

    // --- comparisons -------------------------------------------------------------------------
    bool operator==(const C3DMatrix33Tpl& m) const {
        for (int k = 0; k < 9; ++k)
            if (!(GetArray()[k] == m.GetArray()[k])) return false;
        return true;
    }
    bool operator!=(const C3DMatrix33Tpl& m) const { return !(*this == m); }
    // Every |value| <= eps.
    bool IsNull(T eps = C3DTolerance<T>::k_Accurate) const {
        return F3DIsNullComponents(GetArray(), 9, eps);
    }

    void Dump(const char* title, std::ostream& os) const;

protected:
    static C3DMatrix33Tpl Transposed(const C3DMatrix33Tpl& m) {
        const T(&v)[3][3] = m.m_Values;
        return C3DMatrix33Tpl(v[0][0], v[1][0], v[2][0], v[0][1], v[1][1], v[2][1], v[0][2],
                              v[1][2], v[2][2]);
    }

    T m_Values[3][3];
};

using C3DMatrix33f = C3DMatrix33Tpl<float>;
using C3DMatrix33d = C3DMatrix33Tpl<double>;

// 1 when every |a_ij - b_ij| < eps (strict), else 0.
template <typename T>
inline int AreAlmostEqual(const C3DMatrix33Tpl<T>& a, const C3DMatrix33Tpl<T>& b,
                          C3DScalarArg<T> eps = C3DTolerance<T>::k_Accurate) {
    return F3DAreAlmostEqualComponents(a.GetArray(), b.GetArray(), 9, eps);
}
// Three lines "( m00 m01 m02 )" ..., no line end after the last.
template <typename T>
inline std::ostream& operator<<(std::ostream& os, const C3DMatrix33Tpl<T>& m) {
    return F3DWriteRows(os, m.GetArray(), 3, 3);
}
// Nine bare numbers, row by row.
template <typename T>
inline std::istream& operator>>(std::istream& is, C3DMatrix33Tpl<T>& m) {
    return F3DReadComponents(is, m.GetArray(), 9);
}

// --- the 3x3 products of C3DVector3Tpl, declared with it ---------------------------------------

template <typename T>
inline C3DVector3Tpl<T>& C3DVector3Tpl<T>::Mul(const C3DMatrix33Tpl<T>& m) {
    return Mul(*this, m);
}
template <typename T>
inline C3DVector3Tpl<T>& C3DVector3Tpl<T>::Mul(const C3DVector3Tpl& v, const C3DMatrix33Tpl<T>& m) {
    const T* e = m.GetArray();
    return Set(v.x * e[0] + v.y * e[3] + v.z * e[6], v.x * e[1] + v.y * e[4] + v.z * e[7],
               v.x * e[2] + v.y * e[5] + v.z * e[8]);
}
template <typename T>
inline C3DVector3Tpl<T>& C3DVector3Tpl<T>::Mul(const C3DMatrix33Tpl<T>& m, const C3DVector3Tpl& v) {
    const T* e = m.GetArray();
    const T* c = v.GetArray();
    return Set(math3d_detail::Dot3(e, c), math3d_detail::Dot3(e + 3, c),
               math3d_detail::Dot3(e + 6, c));
}
