#include "math/matrices/matrix_mn.h"

#include <cmath>
#include <new>

#include "math/foundations/dump.h"

C3DMatrixMN::C3DMatrixMN(const C3DMatrixMN& m) {
    SetDimensions(m.m_RowCount, m.m_ColCount);
    Copy(m);
}

C3DMatrixMN& C3DMatrixMN::operator=(const C3DMatrixMN& m) {
    if (&m != this) {
        SetDimensions(m.m_RowCount, m.m_ColCount);
        Copy(m);
    }
    return *this;
}

C3DMatrixMN::~C3DMatrixMN() { Free(); }

void C3DMatrixMN::Free() {
    for (int i = 0; i < m_RowCount; ++i) delete[] m_Rows[i];
    delete[] m_Rows;
    m_Rows = nullptr;
    m_RowCount = 0;
    m_ColCount = 0;
}

void C3DMatrixMN::Swap(C3DMatrixMN& m) {
    std::swap(m_RowCount, m.m_RowCount);
    std::swap(m_ColCount, m.m_ColCount);
    std::swap(m_Rows, m.m_Rows);
}

int C3DMatrixMN::SetDimensions(int m, int n) {
    if (m == m_RowCount && n == m_ColCount) return 1;
    Free();
    if (m <= 0 || n <= 0) return 1;
    m_Rows = new (std::nothrow) double*[m];
    if (m_Rows == nullptr) return 1;
    m_ColCount = n;
    while (m_RowCount < m) {
        double* row = new (std::nothrow) double[n];
        if (row == nullptr) break;
        m_Rows[m_RowCount++] = row;
    }
    return 1;
}

C3DMatrixMN& C3DMatrixMN::SetIdentity() {
    for (int i = 0; i < m_RowCount; ++i)
        for (int j = 0; j < m_ColCount; ++j) m_Rows[i][j] = i == j ? 1.0 : 0.0;
    return *this;
}

C3DMatrixMN& C3DMatrixMN::Copy(const C3DMatrixMN& m) {
    if (&m == this || !Covers(m, m_RowCount, m_ColCount)) return *this;
    for (int i = 0; i < m_RowCount; ++i)
        for (int j = 0; j < m_ColCount; ++j) m_Rows[i][j] = m.m_Rows[i][j];
    return *this;
}

C3DMatrixMN& C3DMatrixMN::Add(const C3DMatrixMN& a, const C3DMatrixMN& b) {
    if (!Covers(a, m_RowCount, m_ColCount) || !Covers(b, m_RowCount, m_ColCount)) return *this;
    for (int i = 0; i < m_RowCount; ++i)
        for (int j = 0; j < m_ColCount; ++j) m_Rows[i][j] = a.m_Rows[i][j] + b.m_Rows[i][j];
    return *this;
}

C3DMatrixMN& C3DMatrixMN::Sub(const C3DMatrixMN& a, const C3DMatrixMN& b) {
    if (!Covers(a, m_RowCount, m_ColCount) || !Covers(b, m_RowCount, m_ColCount)) return *this;
    for (int i = 0; i < m_RowCount; ++i)
        for (int j = 0; j < m_ColCount; ++j) m_Rows[i][j] = a.m_Rows[i][j] - b.m_Rows[i][j];
    return *this;
}

C3DMatrixMN& C3DMatrixMN::Mul(const C3DMatrixMN& a, const C3DMatrixMN& b) {
    const int inner = a.m_ColCount;
    if (!Covers(a, m_RowCount, 0) || !Covers(b, inner, m_ColCount)) return *this;
    if (&a == this || &b == this) {
        // Formed aside, then taken over.
        C3DMatrixMN product;
        product.SetDimensions(m_RowCount, m_ColCount);
        if (product.m_RowCount == m_RowCount) Swap(product.Mul(a, b));
        return *this;
    }
    for (int i = 0; i < m_RowCount; ++i) {
        for (int j = 0; j < m_ColCount; ++j) {
            double sum = 0.0;
            for (int k = 0; k < inner; ++k) sum += a.m_Rows[i][k] * b.m_Rows[k][j];
            m_Rows[i][j] = sum;
        }
    }
    return *this;
}

C3DMatrixMN& C3DMatrixMN::Mul(const C3DMatrixMN& m) {
    if (!Covers(m, m_ColCount, 0)) return *this;
    C3DMatrixMN product;
    product.SetDimensions(m_RowCount, m.m_ColCount);
    if (product.m_RowCount == m_RowCount) Swap(product.Mul(*this, m));
    return *this;
}

C3DMatrixMN& C3DMatrixMN::LeftMul(const C3DMatrixMN& m) {
    if (!Covers(*this, m.m_ColCount, 0)) return *this;
    C3DMatrixMN product;
    product.SetDimensions(m.m_RowCount, m_ColCount);
    if (product.m_RowCount == m.m_RowCount) Swap(product.Mul(m, *this));
    return *this;
}

C3DMatrixMN& C3DMatrixMN::Transpose(const C3DMatrixMN& m) {
    if (!Covers(m, m_ColCount, m_RowCount)) return *this;
    if (&m == this) {
        C3DMatrixMN copy(m);
        return Transpose(copy);
    }
    for (int i = 0; i < m_RowCount; ++i)
        for (int j = 0; j < m_ColCount; ++j) m_Rows[i][j] = m.m_Rows[j][i];
    return *this;
}

void C3DMatrixMN::InverseVector(const double* v, double* out, int n) {
    double squared = 0.0;
    for (int i = 0; i < n; ++i) squared += v[i] * v[i];
    if (squared <= 1e-10) {
        for (int i = 0; i < n; ++i) out[i] = 0.0;
        return;
    }
    for (int i = 0; i < n; ++i) out[i] = v[i] / squared;
}

double C3DMatrixMN::SumAbsVal(const double* v, int n) {
    double sum = 0.0;
    for (int i = 0; i < n; ++i) sum += std::fabs(v[i]);
    return sum;
}

int C3DMatrixMN::GrevilleInverse(const C3DMatrixMN& a) {
    return GrevilleInverse(a, static_cast<unsigned int>(a.m_RowCount),
                           static_cast<unsigned int>(a.m_ColCount));
}

int C3DMatrixMN::GrevilleInverse(const C3DMatrixMN& a, unsigned int rows, unsigned int cols) {
    if (!Covers(a, rows, cols) || !Covers(*this, cols, rows)) return 0;
    if (&a == this) {
        const C3DMatrixMN copy(a);
        return GrevilleInverse(copy, rows, cols);
    }
    if (rows == 0 || cols == 0) return 1;
    const int m = static_cast<int>(rows);
    const int n = static_cast<int>(cols);

    double* column = new (std::nothrow) double[m];
    double* residual = new (std::nothrow) double[m];
    double* b = new (std::nothrow) double[m];
    double* d = new (std::nothrow) double[n];
    const bool allocated = column != nullptr && residual != nullptr && b != nullptr && d != nullptr;
    if (allocated) {
        // Row k of this matrix is the pseudo-inverse row of column k once the first k + 1
        // columns have been taken in; rows 0..k-1 are P below.
        for (int i = 0; i < m; ++i) column[i] = a.m_Rows[i][0];
        InverseVector(column, m_Rows[0], m);
        for (int k = 1; k < n; ++k) {
            for (int i = 0; i < m; ++i) column[i] = a.m_Rows[i][k];
            // d = P a_k
            for (int j = 0; j < k; ++j) {
                double sum = 0.0;
                for (int i = 0; i < m; ++i) sum += m_Rows[j][i] * column[i];
                d[j] = sum;
            }
            // r = a_k - A_k d
            for (int i = 0; i < m; ++i) {
                double sum = 0.0;
                for (int j = 0; j < k; ++j) sum += a.m_Rows[i][j] * d[j];
                residual[i] = column[i] - sum;
            }
            if (SumAbsVal(residual, m) >= 0.001 * SumAbsVal(column, m)) {
                InverseVector(residual, b, m);
            } else {
                // Dependent column: b = d^T P / (1 + d.d).
                double dd = 0.0;
                for (int j = 0; j < k; ++j) dd += d[j] * d[j];
                for (int i = 0; i < m; ++i) {
                    double sum = 0.0;
                    for (int j = 0; j < k; ++j) sum += d[j] * m_Rows[j][i];
                    b[i] = sum / (1.0 + dd);
                }
            }
            for (int j = 0; j < k; ++j)
                for (int i = 0; i < m; ++i) m_Rows[j][i] -= d[j] * b[i];
            for (int i = 0; i < m; ++i) m_Rows[k][i] = b[i];
        }
    }
    delete[] column;
    delete[] residual;
    delete[] b;
    delete[] d;
    return allocated ? 1 : 0;
}

void C3DMatrixMN::Dump(const char* title, std::ostream& os) const {
    F3DDumpValue(*this, title, os);
}

std::ostream& operator<<(std::ostream& os, const C3DMatrixMN& m) {
    for (int i = 0; i < m.GetRowCount(); ++i) {
        os << "( ";
        for (int j = 0; j < m.GetColCount(); ++j) os << m.Get(i, j) << ' ';
        os << ")\n";
    }
    return os;
}
