#pragma once
// C3DMatrix44Tpl<T>: the general 4x4 matrix, for float and double, used for projective maps and
// as the storage of the affine transformation matrix (transformation_matrix.h).
//
// A plain value: sixteen values stored row by row, element (row, col) at row * 4 + col, then one
// mask byte that this class never interprets but every copy carries along (Set(m),
// SetFromDouble). Points are row vectors multiplied on the left (v' = v * M): rows 0-2 are the
// images of the axes, row 3 holds the translation and column 3 is the projective column. Every
// product is formed before it is stored, so any argument may be the matrix itself. Inversion
// returns int 1 on success and 0 on failure and then leaves the matrix as it was; nothing else
// tests its input.
#include <cmath>
#include <istream>
#include <ostream>

#include "math/foundations/dump.h"
#include "math/foundations/export.h"
#include "math/foundations/init_request.h"
#include "math/foundations/tolerance.h"
#include "math/matrices/matrix33.h"
#include "math/vectors/vector3.h"
#include "math/vectors/vector4.h"

namespace math3d_detail {

// r = a * b for row-major 4x4 arrays; r may be a or b. Each element sums its products in order.
// The affine form reads a's column 3 as (0, 0, 0, 1) and writes (0, 0, 0, 1) into r's: the
// product of two affine maps, whatever their column 3 holds.
template <bool Affine, typename T>
inline void Mul44(const T* a, const T* b, T* r) {
    T t[16];
    for (int i = 0; i < 4; ++i) {
        const T* row = a + 4 * i;
        for (int j = 0; j < 4; ++j) {
            const T sum = row[0] * b[j] + row[1] * b[4 + j] + row[2] * b[8 + j];
            t[4 * i + j] = Affine ? (i == 3 ? sum + b[12 + j] : sum) : sum + row[3] * b[12 + j];
        }
        if (Affine) t[4 * i + 3] = T(i == 3 ? 1 : 0);
    }
    for (int k = 0; k < 16; ++k) r[k] = t[k];
}
#if defined(__SSE2__)
// The same in SSE2 lane pairs, with the sums in the same order, so the values are those of the
// scalar form. b is held in registers before anything is stored, and each row of a is read
// before its row of r is written.
template <bool Affine>
inline void Mul44(const double* a, const double* b, double* r) {
    __m128d lo[4], hi[4];
    for (int k = 0; k < 4; ++k) {
        lo[k] = _mm_loadu_pd(b + 4 * k);
        hi[k] = _mm_loadu_pd(b + 4 * k + 2);
    }
    for (int i = 0; i < 4; ++i) {
        const double* row = a + 4 * i;
        const __m128d r01 = _mm_loadu_pd(row), r23 = _mm_loadu_pd(row + 2);
        const __m128d c0 = _mm_unpacklo_pd(r01, r01), c1 = _mm_unpackhi_pd(r01, r01);
        const __m128d c2 = _mm_unpacklo_pd(r23, r23), c3 = _mm_unpackhi_pd(r23, r23);
        __m128d l = _mm_add_pd(_mm_mul_pd(c0, lo[0]), _mm_mul_pd(c1, lo[1]));
        __m128d h = _mm_add_pd(_mm_mul_pd(c0, hi[0]), _mm_mul_pd(c1, hi[1]));
        l = _mm_add_pd(l, _mm_mul_pd(c2, lo[2]));
        h = _mm_add_pd(h, _mm_mul_pd(c2, hi[2]));
        if (!Affine) {
            l = _mm_add_pd(l, _mm_mul_pd(c3, lo[3]));
            h = _mm_add_pd(h, _mm_mul_pd(c3, hi[3]));
        } else if (i == 3) {
            l = _mm_add_pd(l, lo[3]);
            h = _mm_add_pd(h, hi[3]);
        }
        if (Affine) h = _mm_move_sd(_mm_set_pd(i == 3 ? 1.0 : 0.0, 0.0), h);
        _mm_storeu_pd(r + 4 * i, l);
        _mm_storeu_pd(r + 4 * i + 2, h);
    }
}
#endif

}  // namespace math3d_detail

template <typename T>
class MATH_API C3DMatrix44Tpl {
public:
    using value_type = T;

    // The identity, shared by SetIdentity.
    static constexpr T k_Identity[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};

    // The null matrix, mask byte 0.
    C3DMatrix44Tpl() : m_MaskInfo(0) { SetNull(); }
    // Leaves the values and the mask byte unwritten.
    explicit C3DMatrix44Tpl(const C3DInitRequest_DoNotInitialize&) {}
    C3DMatrix44Tpl(T m00, T m01, T m02, T m03, T m10, T m11, T m12, T m13, T m20, T m21, T m22,
                   T m23, T m30, T m31, T m32, T m33)
        : m_MaskInfo(0) {
        Set(m00, m01, m02, m03, m10, m11, m12, m13, m20, m21, m22, m23, m30, m31, m32, m33);
    }
    // Widens each value to T; mask byte 0.
    explicit C3DMatrix44Tpl(const float (&values)[4][4]) : m_MaskInfo(0) { *this = values; }
    // a, b, c, d become the rows when asRows != 0, the columns when asRows == 0; mask byte 0.
    C3DMatrix44Tpl(const C3DVector4Tpl<T>& a, const C3DVector4Tpl<T>& b, const C3DVector4Tpl<T>& c,
                   const C3DVector4Tpl<T>& d, int asRows)
        : m_MaskInfo(0) {
        if (asRows != 0) {
            SetRow(0, a).SetRow(1, b).SetRow(2, c).SetRow(3, d);
        } else {
            SetCol(0, a).SetCol(1, b).SetCol(2, c).SetCol(3, d);
        }
    }
    // Widens each value to T; the mask byte is kept.
    C3DMatrix44Tpl& operator=(const float (&values)[4][4]) {
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j) m_Values[i][j] = T(values[i][j]);
        return *this;
    }

    unsigned int GetDynamicMemSize() const { return 0; }

    // --- mask byte ---------------------------------------------------------------------------
    unsigned char GetMaskInfo() const { return m_MaskInfo; }
    C3DMatrix44Tpl& SetMaskInfo(const unsigned char& mask) {
        m_MaskInfo = mask;
        return *this;
    }

    // --- access (row and column indices 0..3 are not checked) --------------------------------
    T Get(int row, int col) const { return m_Values[row][col]; }
    C3DMatrix44Tpl& Set(int row, int col, T value) {
        m_Values[row][col] = value;
        return *this;
    }
    C3DMatrix44Tpl& Set(T m00, T m01, T m02, T m03, T m10, T m11, T m12, T m13, T m20, T m21, T m22,
                        T m23, T m30, T m31, T m32, T m33) {
        return SetRow(0, m00, m01, m02, m03)
            .SetRow(1, m10, m11, m12, m13)
            .SetRow(2, m20, m21, m22, m23)
            .SetRow(3, m30, m31, m32, m33);
    }
    C3DMatrix44Tpl& Set(const T (*values)[4]) { return Set(values[0]); }
    // Sixteen values, row by row.
    C3DMatrix44Tpl& Set(const T* values) {
        for (int k = 0; k < 16; ++k) GetArray()[k] = values[k];
        return *this;
    }
    // Copies the values and the mask byte.
    C3DMatrix44Tpl& Set(const C3DMatrix44Tpl& m) { return *this = m; }
    // Copies the values, converted to T, and the mask byte.
    C3DMatrix44Tpl& SetFromDouble(const C3DMatrix44Tpl<double>& m) {
        for (int k = 0; k < 16; ++k) GetArray()[k] = T(m.GetArray()[k]);
        m_MaskInfo = m.GetMaskInfo();
        return *this;
    }
    C3DMatrix44Tpl& SetRow(int i, T a, T b, T c, T d) {
        m_Values[i][0] = a;
        m_Values[i][1] = b;
        m_Values[i][2] = c;
        m_Values[i][3] = d;
        return *this;
    }
    C3DMatrix44Tpl& SetRow(int i, const C3DVector4Tpl<T>& v) {
        return SetRow(i, v.x, v.y, v.z, v.w);
    }
    C3DMatrix44Tpl& SetCol(int j, T a, T b, T c, T d) {
        m_Values[0][j] = a;
        m_Values[1][j] = b;
        m_Values[2][j] = c;
        m_Values[3][j] = d;
        return *this;
    }
    C3DMatrix44Tpl& SetCol(int j, const C3DVector4Tpl<T>& v) {
        return SetCol(j, v.x, v.y, v.z, v.w);
    }
    C3DMatrix44Tpl& SetNull() {
        for (int k = 0; k < 16; ++k) GetArray()[k] = T(0);
        return *this;
    }
    // The values only; the mask byte is kept.
    C3DMatrix44Tpl& SetIdentity() { return Set(k_Identity); }
    T* GetArray() { return &m_Values[0][0]; }
    const T* GetArray() const { return &m_Values[0][0]; }
    // The sixteen values narrowed to float, as the host application takes them.
    void GetKelMatrix(float (*out)[4]) const {
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j) out[i][j] = static_cast<float>(m_Values[i][j]);
    }

    // --- arithmetic (this = result; arguments may be this matrix; the mask byte is kept) ------
    C3DMatrix44Tpl& Add(const C3DMatrix44Tpl& m) { return Add(*this, m); }
    C3DMatrix44Tpl& Add(const C3DMatrix44Tpl& a, const C3DMatrix44Tpl& b) {
        for (int k = 0; k < 16; ++k) GetArray()[k] = a.GetArray()[k] + b.GetArray()[k];
        return *this;
    }
    C3DMatrix44Tpl& Sub(const C3DMatrix44Tpl& m) { return Sub(*this, m); }
    C3DMatrix44Tpl& Sub(const C3DMatrix44Tpl& a, const C3DMatrix44Tpl& b) {
        for (int k = 0; k < 16; ++k) GetArray()[k] = a.GetArray()[k] - b.GetArray()[k];
        return *this;
    }
    C3DMatrix44Tpl& Negate() { return Negate(*this); }
    C3DMatrix44Tpl& Negate(const C3DMatrix44Tpl& m) {
        for (int k = 0; k < 16; ++k) GetArray()[k] = -m.GetArray()[k];
        return *this;
    }
    C3DMatrix44Tpl& Mul(T s) { return Mul(s, *this); }
    C3DMatrix44Tpl& Mul(T s, const C3DMatrix44Tpl& m) {
        for (int k = 0; k < 16; ++k) GetArray()[k] = s * m.GetArray()[k];
        return *this;
    }
    C3DMatrix44Tpl& Mul(const C3DMatrix44Tpl& m, T s) { return Mul(s, m); }
    // Divides each value by s (no zero test).
    C3DMatrix44Tpl& Div(T s) { return Div(*this, s); }
    C3DMatrix44Tpl& Div(const C3DMatrix44Tpl& m, T s) {
        for (int k = 0; k < 16; ++k) GetArray()[k] = m.GetArray()[k] / s;
        return *this;
    }
    // this = a * b
    C3DMatrix44Tpl& Mul(const C3DMatrix44Tpl& a, const C3DMatrix44Tpl& b) {
        math3d_detail::Mul44<false>(a.GetArray(), b.GetArray(), GetArray());
        return *this;
    }
    // this = this * m
    C3DMatrix44Tpl& Mul(const C3DMatrix44Tpl& m) { return Mul(*this, m); }
    // this = transpose(a) * b
    C3DMatrix44Tpl& MulTransByReg(const C3DMatrix44Tpl& a, const C3DMatrix44Tpl& b) {
        return Mul(Transposed(a), b);
    }
    // this = a * transpose(b)
    C3DMatrix44Tpl& MulRegByTrans(const C3DMatrix44Tpl& a, const C3DMatrix44Tpl& b) {
        return Mul(a, Transposed(b));
    }
    C3DMatrix44Tpl& Transpose() { return Transpose(*this); }
    // The values of transpose(m); the mask byte is kept.
    C3DMatrix44Tpl& Transpose(const C3DMatrix44Tpl& m) {
        const C3DMatrix44Tpl t = Transposed(m);
        return Set(t.GetArray());
    }

    // --- measures ----------------------------------------------------------------------------
    T GetTrace() const { return m_Values[0][0] + m_Values[1][1] + m_Values[2][2] + m_Values[3][3]; }
    // The 4x4 determinant, expanded on the 2x2 minors of rows 0-1 and rows 2-3.
    T GetDet() const;
    // The determinant of the 3x3 minor without that row and column (no cofactor sign).
    T GetDet(int row, int col) const;
    // 1 exactly when GetDet() is 0; eps is not used.
    int IsSingular(T eps = C3DTolerance<T>::k_Accurate) const;

    // --- inverse -----------------------------------------------------------------------------
    // this = inverse(m) by Gauss-Jordan elimination; fails (0, unchanged) when some column has no
    // pivot of magnitude at least the accurate epsilon (1e-6 float, 1e-12 double), an absolute
    // test.
    int Invert() { return Invert(*this); }
    int Invert(const C3DMatrix44Tpl& m) { return ComputeInverse(m.m_Values, m_Values, 0); }
    // this = transpose(inverse(m)); the same test as Invert.
    int TransposeInverse() { return TransposeInverse(*this); }
    int TransposeInverse(const C3DMatrix44Tpl& m) {
        return ComputeInverse(m.m_Values, m_Values, 1);
    }
    // Gauss-Jordan elimination on [src | I]. Column by column the pivot is the diagonal element,
    // or, when its magnitude is below the accurate epsilon, the first element below it that is
    // not (its row is swapped up; the largest one is not searched for). Without one the result
    // is 0 and dst is not written; otherwise dst (which may be src) receives the inverse,
    // transposed when transpose != 0, and the result is 1.
    int ComputeInverse(const T (*src)[4], T (*dst)[4], int transpose) const;

    // --- comparisons -------------------------------------------------------------------------
    // The sixteen values, exactly; the mask byte is not compared.
    bool operator==(const C3DMatrix44Tpl& m) const {
        for (int k = 0; k < 16; ++k)
            if (!(GetArray()[k] == m.GetArray()[k])) return false;
        return true;
    }
    bool operator!=(const C3DMatrix44Tpl& m) const { return !(*this == m); }
    // Every |value| <= eps.
    bool IsNull(T eps = C3DTolerance<T>::k_Accurate) const {
        return F3DIsNullComponents(GetArray(), 16, eps);
    }
    // Every value within eps of the identity's (strict).
    bool IsIdentity(T eps = C3DTolerance<T>::k_Accurate) const {
        return F3DAreAlmostEqualComponents(GetArray(), &k_Identity[0][0], 16, eps) != 0;
    }
    bool IsExactlyIdentity() const {
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j)
                if (!(m_Values[i][j] == k_Identity[i][j])) return false;
        return true;
    }

    void Dump(const char* title, std::ostream& os) const;

protected:
    static C3DMatrix44Tpl Transposed(const C3DMatrix44Tpl& m) {
        C3DMatrix44Tpl t(C3DInitRequest_DoNotInitialize{});
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j) t.m_Values[i][j] = m.m_Values[j][i];
        t.m_MaskInfo = m.m_MaskInfo;
        return t;
    }

    T m_Values[4][4];
    unsigned char m_MaskInfo;
};

using C3DMatrix44f = C3DMatrix44Tpl<float>;
using C3DMatrix44d = C3DMatrix44Tpl<double>;

// 1 when every |a_ij - b_ij| < eps (strict), else 0.
template <typename T>
inline int AreAlmostEqual(const C3DMatrix44Tpl<T>& a, const C3DMatrix44Tpl<T>& b,
                          C3DScalarArg<T> eps = C3DTolerance<T>::k_Accurate) {
    return F3DAreAlmostEqualComponents(a.GetArray(), b.GetArray(), 16, eps);
}
// Four lines "( m00 m01 m02 m03 )" ..., no line end after the last.
template <typename T>
inline std::ostream& operator<<(std::ostream& os, const C3DMatrix44Tpl<T>& m) {
    return F3DWriteRows(os, m.GetArray(), 4, 4);
}
// Sixteen bare numbers, row by row; the mask byte is kept.
template <typename T>
inline std::istream& operator>>(std::istream& is, C3DMatrix44Tpl<T>& m) {
    return F3DReadComponents(is, m.GetArray(), 16);
}

// --- the 4x4 members of C3DMatrix33Tpl, declared with it ---------------------------------------

template <typename T>
inline C3DMatrix33Tpl<T>::C3DMatrix33Tpl(int row, int col, const C3DMatrix44Tpl<T>& m) {
    Set(row, col, m);
}
template <typename T>
inline C3DMatrix33Tpl<T>& C3DMatrix33Tpl<T>::Set(int row, int col, const C3DMatrix44Tpl<T>& m) {
    for (int i = 0, si = 0; i < 3; ++i, ++si) {
        if (si == row) ++si;
        for (int j = 0, sj = 0; j < 3; ++j, ++sj) {
            if (sj == col) ++sj;
            m_Values[i][j] = m.Get(si, sj);
        }
    }
    return *this;
}

// --- the 4x4 products of C3DVector3Tpl and C3DVector4Tpl, declared with them --------------------

template <typename T>
inline C3DVector3Tpl<T>& C3DVector3Tpl<T>::Mul(const C3DVector3Tpl& v, const C3DMatrix44Tpl<T>& m) {
    // From row 3; a zero component adds nothing, not even 0 * infinity.
    const T* e = m.GetArray();
    T r[4] = {e[12], e[13], e[14], e[15]};
    for (int i = 0; i < 3; ++i) {
        const T c = v[i];
        if (c == T(0)) continue;
        for (int j = 0; j < 4; ++j) r[j] += c * e[4 * i + j];
    }
    return Set(r[0] / r[3], r[1] / r[3], r[2] / r[3]);
}

template <typename T>
inline C3DVector4Tpl<T>& C3DVector4Tpl<T>::Mul(const C3DMatrix44Tpl<T>& m, const C3DVector4Tpl& v) {
    const T* e = m.GetArray();
    T r[4];
    for (int i = 0; i < 4; ++i)
        r[i] = e[4 * i] * v.x + e[4 * i + 1] * v.y + e[4 * i + 2] * v.z + e[4 * i + 3] * v.w;
    return Set(r[0], r[1], r[2], r[3]);
}
template <typename T>
inline C3DVector4Tpl<T>& C3DVector4Tpl<T>::Mul(const C3DVector4Tpl& v, const C3DMatrix44Tpl<T>& m) {
    const T* e = m.GetArray();
    T r[4];
    for (int j = 0; j < 4; ++j)
        r[j] = v.x * e[j] + v.y * e[4 + j] + v.z * e[8 + j] + v.w * e[12 + j];
    return Set(r[0], r[1], r[2], r[3]);
}
template <typename T>
inline C3DVector4Tpl<T>& C3DVector4Tpl<T>::Mul(const C3DMatrix44Tpl<T>& m) {
    return Mul(*this, m);
}
