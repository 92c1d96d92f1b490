#pragma once
// C3DMatrixMN: a double-precision matrix of any size, held on the heap, chiefly for least-squares
// solutions through the Moore-Penrose pseudo-inverse (Greville's column-recursive method).
//
// Its whole layout is three fields: the number of rows M, the number of columns N and an array of
// M row pointers, each row N doubles that the matrix owns. Element (i, j) is row i, position j.
// Copies copy the rows. Operations work over the sizes of this matrix, which the caller sets
// beforehand with SetDimensions; an operand too small for them (one that would be read out of
// its bounds) leaves the matrix unchanged.
#include <ostream>

#include "math/foundations/export.h"

class MATH_API C3DMatrixMN {
public:
    // The empty matrix: 0 rows, 0 columns, no storage.
    C3DMatrixMN() = default;
    C3DMatrixMN(const C3DMatrixMN& m);
    C3DMatrixMN& operator=(const C3DMatrixMN& m);
    ~C3DMatrixMN();

    // Returns 1. Sizes equal to the current ones keep the matrix and its values. Otherwise the
    // storage is freed and, when m > 0 and n > 0, m rows of n uninitialised values are
    // allocated; if an allocation fails the rows obtained so far are kept and the row count is
    // their number (0 when not even the row array could be allocated).
    int SetDimensions(int m, int n);
    int GetRowCount() const { return m_RowCount; }
    int GetColCount() const { return m_ColCount; }
    // Element access; i and j are not checked.
    double Get(int i, int j) const { return m_Rows[i][j]; }
    C3DMatrixMN& Set(int i, int j, double value) {
        m_Rows[i][j] = value;
        return *this;
    }

    // 1 on the diagonal, 0 elsewhere, over the current sizes.
    C3DMatrixMN& SetIdentity();
    // Copy the values of m, over the current sizes, into the current storage.
    C3DMatrixMN& Set(const C3DMatrixMN& m) { return Copy(m); }
    C3DMatrixMN& Copy(const C3DMatrixMN& m);
    // Element-wise a + b, a - b over the current sizes.
    C3DMatrixMN& Add(const C3DMatrixMN& a, const C3DMatrixMN& b);
    C3DMatrixMN& Sub(const C3DMatrixMN& a, const C3DMatrixMN& b);
    // this(i, j) = sum over k < a's column count of a(i, k) b(k, j), over the current sizes.
    C3DMatrixMN& Mul(const C3DMatrixMN& a, const C3DMatrixMN& b);
    // this = this * m, and this = m * this; the matrix takes the sizes of the product.
    C3DMatrixMN& Mul(const C3DMatrixMN& m);
    C3DMatrixMN& LeftMul(const C3DMatrixMN& m);
    // this(i, j) = m(j, i) over the current sizes.
    C3DMatrixMN& Transpose(const C3DMatrixMN& m);

    // This matrix, sized cols x rows beforehand, becomes the pseudo-inverse of the upper-left
    // rows x cols block of m. A column whose residual against the previous ones has a sum of
    // magnitudes below 0.001 times its own counts as dependent on them. 0 when a work vector
    // cannot be allocated or a size does not fit; 1 otherwise.
    int GrevilleInverse(const C3DMatrixMN& m, unsigned int rows, unsigned int cols);
    int GrevilleInverse(const C3DMatrixMN& m);

    // The pseudo-inverse of the vector v of n values: v / (v.v), or zeros when v.v <= 1e-10.
    // out may be v.
    static void InverseVector(const double* v, double* out, int n);
    // The sum of |v_i|; 0 for n < 1.
    static double SumAbsVal(const double* v, int n);

    void Dump(const char* title, std::ostream& os) const;

private:
    void Free();
    void Swap(C3DMatrixMN& m);
    // m has at least rows rows and cols columns.
    static bool Covers(const C3DMatrixMN& m, long long rows, long long cols) {
        return m.m_RowCount >= rows && m.m_ColCount >= cols;
    }

    int m_RowCount = 0;
    int m_ColCount = 0;
    double** m_Rows = nullptr;
};

// Each row as "( " then every value followed by " ", then ")" and a line end.
MATH_API std::ostream& operator<<(std::ostream& os, const C3DMatrixMN& m);
