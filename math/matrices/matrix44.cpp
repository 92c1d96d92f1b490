#include "math/matrices/matrix44.h"

#include <cmath>

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

template <typename T>
int C3DMatrix44Tpl<T>::ComputeInverse(const T (*src)[4], T (*dst)[4], int transpose) const {
    const T tolerance = C3DTolerance<T>::k_Accurate;
    // [src | I]; rows are swapped through the row order so that nothing but values moves.
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
