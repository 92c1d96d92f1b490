#include "math/matrices/matrix_mn.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>
#include <vector>

namespace {

using Rows = std::vector<std::vector<double>>;

C3DMatrixMN Make(const Rows& rows) {
    C3DMatrixMN m;
    m.SetDimensions(int(rows.size()), int(rows[0].size()));
    for (int i = 0; i < m.GetRowCount(); ++i)
        for (int j = 0; j < m.GetColCount(); ++j) m.Set(i, j, rows[i][j]);
    return m;
}

C3DMatrixMN Random(std::mt19937& rng, int rows, int cols) {
    std::uniform_real_distribution<double> d(-1, 1);
    Rows values(rows, std::vector<double>(cols));
    for (auto& row : values) std::generate(row.begin(), row.end(), [&] { return d(rng); });
    return Make(values);
}

// a * b, sized as the product.
C3DMatrixMN Product(C3DMatrixMN a, const C3DMatrixMN& b) { return a.Mul(b); }

void ExpectNear(const C3DMatrixMN& a, const C3DMatrixMN& b, double tol) {
    ASSERT_EQ(a.GetRowCount(), b.GetRowCount());
    ASSERT_EQ(a.GetColCount(), b.GetColCount());
    for (int i = 0; i < a.GetRowCount(); ++i)
        for (int j = 0; j < a.GetColCount(); ++j)
            EXPECT_NEAR(a.Get(i, j), b.Get(i, j), tol) << i << "," << j;
}

TEST(MatrixMN, DimensionsStorageAndCopies) {
    EXPECT_EQ(sizeof(C3DMatrixMN), 2 * sizeof(int) + sizeof(double**));
    C3DMatrixMN m = Make({{1, 2, 3}, {4, 5, 6}});
    EXPECT_TRUE(m.SetDimensions(2, 3) == 1 && m.Get(1, 2) == 6);  // same sizes keep the values
    EXPECT_TRUE(m.SetDimensions(3, 0) == 1 && m.GetRowCount() + m.GetColCount() == 0);  // empty
    EXPECT_TRUE(m.SetDimensions(3, 2) == 1 && m.GetRowCount() == 3 && m.GetColCount() == 2);

    // Copies own their rows; self-assignment keeps them.
    const C3DMatrixMN original = Make({{1, 2}, {3, 4}});
    C3DMatrixMN copy(original), assigned = Make({{7}});
    assigned = original;
    copy.Set(0, 0, 9);
    assigned.Set(1, 1, 9);
    ExpectNear(original, Make({{1, 2}, {3, 4}}), 0);
    const C3DMatrixMN& alias = assigned;
    ExpectNear(assigned = alias, Make({{1, 2}, {3, 9}}), 0);
}

TEST(MatrixMN, ArithmeticOverTheCurrentSizes) {
    const C3DMatrixMN a = Make({{1, 2, 3}, {4, 5, 6}});
    const C3DMatrixMN b = Make({{1, 0}, {0, 1}, {2, 3}});
    const C3DMatrixMN ab = Make({{7, 11}, {16, 23}});
    C3DMatrixMN m = a, left = b;
    ExpectNear(m.Mul(b), ab, 0);  // takes the sizes of the product
    ExpectNear(left.LeftMul(a), ab, 0);
    ExpectNear(m.Mul(m, m), Make({{225, 330}, {480, 705}}), 0);  // the result may be an operand
    C3DMatrixMN t, square = Make({{1, 2}, {3, 4}});
    t.SetDimensions(3, 2);
    ExpectNear(t.Transpose(a), Make({{1, 4}, {2, 5}, {3, 6}}), 0);
    ExpectNear(square.Transpose(square), Make({{1, 3}, {2, 4}}), 0);
    C3DMatrixMN sum;
    sum.SetDimensions(2, 3);
    ExpectNear(sum.Add(a, a).Sub(sum, a), a, 0);
    ExpectNear(sum.SetIdentity(), Make({{1, 0, 0}, {0, 1, 0}}), 0);
    C3DMatrixMN block;  // only the current sizes are written
    block.SetDimensions(1, 2);
    ExpectNear(block.Set(a), Make({{1, 2}}), 0);
}

TEST(MatrixMN, OperandsTooSmallLeaveTheMatrixUnchanged) {
    const C3DMatrixMN small = Make({{1, 2}}), before = Make({{5, 6, 7}, {8, 9, 10}});
    C3DMatrixMN m = before, inverse;
    m.Copy(small).Add(small, before).Transpose(small).Mul(small, before).Mul(small);
    ExpectNear(m, before, 0);
    inverse.SetDimensions(2, 2);
    EXPECT_EQ(inverse.GrevilleInverse(before), 0);  // needs 3 x 2
}

TEST(MatrixMN, VectorHelpers) {
    const double edge[] = {6e-6, 8e-6};  // squared norm exactly 1e-10: still taken as zero
    double out[2] = {1, 1};
    C3DMatrixMN::InverseVector(edge, out, 2);
    EXPECT_TRUE(out[0] == 0 && out[1] == 0);
    const double v[] = {1, -2, 2};
    EXPECT_TRUE(C3DMatrixMN::SumAbsVal(v, 3) == 5 && C3DMatrixMN::SumAbsVal(v, -4) == 0);
}

TEST(MatrixMN, GrevilleInverseOfHandWorkedMatrices) {
    // Two equal columns (1, 2, 2) share the weight: each row is half (1/9, 2/9, 2/9), the
    // inverse of the column.
    C3DMatrixMN inverse;
    inverse.SetDimensions(2, 3);
    ASSERT_EQ(inverse.GrevilleInverse(Make({{1, 1}, {2, 2}, {2, 2}})), 1);
    ExpectNear(inverse, Make({{1.0 / 18, 1.0 / 9, 1.0 / 9}, {1.0 / 18, 1.0 / 9, 1.0 / 9}}), 1e-15);
    // The explicit sizes take the upper-left block of m.
    inverse.SetDimensions(1, 2);
    ASSERT_EQ(inverse.GrevilleInverse(Make({{3, 9}, {4, 9}, {9, 9}}), 2, 1), 1);
    ExpectNear(inverse, Make({{3.0 / 25, 4.0 / 25}}), 1e-15);
    // Of a square regular matrix: the inverse; and in place.
    C3DMatrixMN m = Make({{2, 1}, {1, 1}});
    ASSERT_EQ(m.GrevilleInverse(m), 1);
    ExpectNear(m, Make({{1, -1}, {-1, 2}}), 1e-14);
}

TEST(MatrixMN, GrevilleInverseSatisfiesTheMoorePenroseConditions) {
    std::mt19937 rng(7);
    struct Shape {
        int rows, cols, rank;
    };
    // Full column rank, full row rank, and rank-deficient products B C.
    const Shape shapes[] = {{6, 4, 4}, {3, 3, 3}, {3, 5, 3}, {5, 5, 3}, {6, 4, 2}, {4, 7, 1}};
    for (const Shape& shape : shapes) {
        for (int n = 0; n < 50; ++n) {
            C3DMatrixMN a = Random(rng, shape.rows, shape.cols);
            if (shape.rank < std::min(shape.rows, shape.cols))
                a = Product(Random(rng, shape.rows, shape.rank),
                            Random(rng, shape.rank, shape.cols));
            C3DMatrixMN x;
            x.SetDimensions(shape.cols, shape.rows);
            ASSERT_EQ(x.GrevilleInverse(a), 1);
            const C3DMatrixMN ax = Product(a, x), xa = Product(x, a);
            const double tol = 1e-9;
            ExpectNear(Product(ax, a), a, tol);      // A X A = A
            ExpectNear(Product(xa, x), x, tol);      // X A X = X
            for (const C3DMatrixMN* p : {&ax, &xa})  // A X and X A symmetric
                for (int i = 0; i < p->GetRowCount(); ++i)
                    for (int j = 0; j < i; ++j) EXPECT_NEAR(p->Get(i, j), p->Get(j, i), tol);
        }
    }
}

TEST(MatrixMN, TextFormat) {
    std::ostringstream dump;
    Make({{1, 2.5}, {-3, 4}}).Dump("M", dump);
    EXPECT_EQ(dump.str(), "M\n( 1 2.5 )\n( -3 4 )\n\n \n");
}

}  // namespace
