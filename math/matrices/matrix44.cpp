#include "math/matrices/matrix44.h"

#include <cmath>
#include <type_traits>

#if defined(__x86_64__) && defined(__GNUC__)
#include <immintrin.h>
#endif

template <typename T>
T C3DMatrix44Tpl<T>::GetDet() const {
    const T(&m)[4][4] = m_Values;
    // The 2x2 minors of rows 0-1 (s) and of rows 2-3 (c) on complementary column pairs.
    const T s0 = m[0][0] * m[1][1] - m[0][1] * m[1][0];
    const T s1 = m[0][0] * m[1][2] - m[0][2] * m[1][0];
    const T s2 = m[0][0] * m[1][3] - m[0][3] * m[1][0];
    const T s3 = m[0][1] * m[1][2] - m[0][2] * m[1][1];
    const T s4 = m[0][1] * m[1][3] - m[0][3] * m[1][1];
    const T s5 = m[0][2] * m[1][3] - m[0][3] * m[1][2];
    const T c5 = m[2][2] * m[3][3] - m[2][3] * m[3][2];
    const T c4 = m[2][1] * m[3][3] - m[2][3] * m[3][1];
    const T c3 = m[2][1] * m[3][2] - m[2][2] * m[3][1];
    const T c2 = m[2][0] * m[3][3] - m[2][3] * m[3][0];
    const T c1 = m[2][0] * m[3][2] - m[2][2] * m[3][0];
    const T c0 = m[2][0] * m[3][1] - m[2][1] * m[3][0];
    return s0 * c5 - s1 * c4 + s2 * c3 + s3 * c2 - s4 * c1 + s5 * c0;
}

template <typename T>
T C3DMatrix44Tpl<T>::GetDet(int row, int col) const {
    return C3DMatrix33Tpl<T>(row, col, *this).GetDet();
}

template <typename T>
int C3DMatrix44Tpl<T>::IsSingular(T /*eps*/) const {
    return GetDet() == T(0) ? 1 : 0;
}

namespace {

// Gauss-Jordan elimination on [src | I]: column by column, the pivot is the diagonal element or,
// below the tolerance, the first element under it that is not, whose row is swapped up.
template <typename T>
int GaussJordan(const T (*src)[4], T (*dst)[4], int transpose, T tolerance) {
    // Rows are swapped through the row order so that nothing but values moves.
    T a[4][8];
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) {
            a[i][j] = src[i][j];
            a[i][4 + j] = T(i == j ? 1 : 0);
        }
    int order[4] = {0, 1, 2, 3};
    for (int k = 0; k < 4; ++k) {
        if (std::fabs(a[order[k]][k]) < tolerance) {
            int r = k + 1;
            while (r < 4 && std::fabs(a[order[r]][k]) < tolerance) ++r;
            if (r == 4) return 0;
            const int swapped = order[k];
            order[k] = order[r];
            order[r] = swapped;
        }
        // Columns up to k of the left half are never read again, so only the others are
        // updated; the right half comes out as if every column were.
        T* pivotRow = a[order[k]];
        const T factor = T(1) / pivotRow[k];
        for (int j = k + 1; j < 8; ++j) pivotRow[j] *= factor;
        for (int r = 0; r < 4; ++r) {
            if (r == k) continue;
            T* row = a[order[r]];
            const T e = row[k];
            for (int j = k + 1; j < 8; ++j) row[j] -= e * pivotRow[j];
        }
    }
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) {
            const T value = a[order[i]][4 + j];
            if (transpose != 0) {
                dst[j][i] = value;
            } else {
                dst[i][j] = value;
            }
        }
    return 1;
}

#if defined(__x86_64__) && defined(__GNUC__)
#define MATH_INVERSE44_AVX
// The same elimination in AVX quadruples, for the usual case where every diagonal pivot is
// acceptable, on processors that have AVX (checked at run time). Each row of [src | I] is two
// quadruples; the left one is updated while one of its columns is still to be read, and every
// value goes through the operations of GaussJordan (no fused multiply-add), so the results are
// the same. The rows stay in registers, which row swaps would not allow.

// Element K of v in the four lanes.
template <int K>
__attribute__((target("avx"))) inline __m256d Broadcast(__m256d v) {
    const __m256d half = _mm256_permute2f128_pd(v, v, K < 2 ? 0x00 : 0x11);
    return _mm256_permute_pd(half, K % 2 == 0 ? 0x0 : 0xF);
}

// Column K; false, with nothing done, when its diagonal pivot is below the tolerance.
template <int K>
__attribute__((target("avx"))) inline bool Eliminate(__m256d (&left)[4], __m256d (&right)[4],
                                                     double tolerance) {
    const __m256d pivot = Broadcast<K>(left[K]);
    if (std::fabs(_mm256_cvtsd_f64(pivot)) < tolerance) return false;
    const __m256d factor = _mm256_div_pd(_mm256_set1_pd(1.0), pivot);
    if (K < 3) left[K] = _mm256_mul_pd(left[K], factor);
    right[K] = _mm256_mul_pd(right[K], factor);
    for (int r = 0; r < 4; ++r) {
        if (r == K) continue;
        const __m256d e = Broadcast<K>(left[r]);
        if (K < 3) left[r] = _mm256_sub_pd(left[r], _mm256_mul_pd(e, left[K]));
        right[r] = _mm256_sub_pd(right[r], _mm256_mul_pd(e, right[K]));
    }
    return true;
}

// 1 with dst written, or 0 without when a diagonal pivot is not acceptable.
__attribute__((target("avx"))) int GaussJordanOnDiagonal(const double (*src)[4], double (*dst)[4],
                                                         int transpose, double tolerance) {
    __m256d left[4], right[4];
    for (int i = 0; i < 4; ++i) {
        left[i] = _mm256_loadu_pd(src[i]);
        right[i] = _mm256_set_pd(i == 3, i == 2, i == 1, i == 0);
    }
    if (!Eliminate<0>(left, right, tolerance) || !Eliminate<1>(left, right, tolerance) ||
        !Eliminate<2>(left, right, tolerance) || !Eliminate<3>(left, right, tolerance))
        return 0;
    if (transpose != 0) {
        const __m256d t0 = _mm256_unpacklo_pd(right[0], right[1]);
        const __m256d t1 = _mm256_unpackhi_pd(right[0], right[1]);
        const __m256d t2 = _mm256_unpacklo_pd(right[2], right[3]);
        const __m256d t3 = _mm256_unpackhi_pd(right[2], right[3]);
        right[0] = _mm256_permute2f128_pd(t0, t2, 0x20);
        right[1] = _mm256_permute2f128_pd(t1, t3, 0x20);
        right[2] = _mm256_permute2f128_pd(t0, t2, 0x31);
        right[3] = _mm256_permute2f128_pd(t1, t3, 0x31);
    }
    for (int i = 0; i < 4; ++i) _mm256_storeu_pd(dst[i], right[i]);
    return 1;
}
#endif

}  // namespace

template <typename T>
int C3DMatrix44Tpl<T>::ComputeInverse(const T (*src)[4], T (*dst)[4], int transpose) const {
#if defined(MATH_INVERSE44_AVX)
    if constexpr (std::is_same<T, double>::value) {
        if (__builtin_cpu_supports("avx") &&
            GaussJordanOnDiagonal(src, dst, transpose, C3DTolerance<T>::k_Accurate))
            return 1;
    }
#endif
    return GaussJordan(src, dst, transpose, C3DTolerance<T>::k_Accurate);
}

template <typename T>
void C3DMatrix44Tpl<T>::Dump(const char* title, std::ostream& os) const {
    F3DDumpValue(*this, title, os);
}

#define MATH_INSTANTIATE_MATRIX44_PRODUCTS(T)                                               \
    template C3DMatrix33Tpl<T>::C3DMatrix33Tpl(int, int, const C3DMatrix44Tpl<T>&);         \
    template C3DMatrix33Tpl<T>& C3DMatrix33Tpl<T>::Set(int, int, const C3DMatrix44Tpl<T>&); \
    template C3DVector3Tpl<T>& C3DVector3Tpl<T>::Mul(const C3DVector3Tpl<T>&,               \
                                                     const C3DMatrix44Tpl<T>&);             \
    template C3DVector4Tpl<T>& C3DVector4Tpl<T>::Mul(const C3DMatrix44Tpl<T>&,              \
                                                     const C3DVector4Tpl<T>&);              \
    template C3DVector4Tpl<T>& C3DVector4Tpl<T>::Mul(const C3DVector4Tpl<T>&,               \
                                                     const C3DMatrix44Tpl<T>&);             \
    template C3DVector4Tpl<T>& C3DVector4Tpl<T>::Mul(const C3DMatrix44Tpl<T>&);

template class C3DMatrix44Tpl<float>;
template class C3DMatrix44Tpl<double>;
// The 3x3 minor and the vectors' 4x4 products are inline in matrix44.h; these copies in the
// library serve callers that see only the 3x3 matrix's or the vectors' declarations.
MATH_INSTANTIATE_MATRIX44_PRODUCTS(float)
MATH_INSTANTIATE_MATRIX44_PRODUCTS(double)
