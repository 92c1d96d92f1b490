#include "math/matrices/matrix44.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <sstream>

namespace {

template <typename T>
class Matrix44Test : public testing::Test {
protected:
    using M = C3DMatrix44Tpl<T>;
    using V = C3DVector3Tpl<T>;
    using V4 = C3DVector4Tpl<T>;
    static constexpr bool kDouble = std::is_same<T, double>::value;
    static constexpr double kTol = kDouble ? 1e-12 : 2e-5;
    static constexpr T kPivotTolerance = C3DTolerance<T>::k_Accurate;

    static M Random(std::mt19937& rng) {
        std::uniform_real_distribution<double> d(-1, 1);
        M m;
        for (int k = 0; k < 16; ++k) m.GetArray()[k] = T(d(rng));
        return m;
    }
    static M Transposed(const M& m) { return M(m).Transpose(); }
    static void ExpectIdentity(const M& m, double tol) {
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j) EXPECT_NEAR(m.Get(i, j), i == j ? 1 : 0, tol);
    }
    // The determinant as the sum over the 24 permutations, in long double.
    static long double Leibniz(const M& m) {
        int p[4] = {0, 1, 2, 3};
        long double sum = 0;
        do {
            int inversions = 0;
            for (int i = 0; i < 4; ++i)
                for (int j = i + 1; j < 4; ++j) inversions += p[i] > p[j];
            long double product = inversions % 2 ? -1 : 1;
            for (int i = 0; i < 4; ++i) product *= m.Get(i, p[i]);
            sum += product;
        } while (std::next_permutation(p, p + 4));
        return sum;
    }
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(Matrix44Test, Precisions);

TYPED_TEST(Matrix44Test, LayoutConversionsAndTheMaskByte) {
    using M = typename TestFixture::M;
    using V4 = typename TestFixture::V4;
    EXPECT_TRUE(M().IsNull(0));
    EXPECT_EQ(M().GetMaskInfo(), 0);
    const M m(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
    for (int k = 0; k < 16; ++k) EXPECT_EQ(m.GetArray()[k], k + 1);  // row by row
    const V4 a(1, 2, 3, 4), b(5, 6, 7, 8), c(9, 10, 11, 12), d(13, 14, 15, 16);
    EXPECT_EQ(M(a, b, c, d, 2), m);
    EXPECT_EQ(M(a, b, c, d, 0), this->Transposed(m));

    // The mask byte travels with copies, not with values written into a matrix.
    M marked = m;
    marked.SetMaskInfo(0xA5);
    M copy;
    EXPECT_EQ(copy.Set(marked).GetMaskInfo(), 0xA5);
    C3DMatrix44Tpl<double> wide(0.1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    wide.SetMaskInfo(0x0E);
    EXPECT_EQ(copy.SetFromDouble(wide).GetMaskInfo(), 0x0E);
    EXPECT_EQ(copy.Get(0, 0), TypeParam(0.1));
    EXPECT_EQ(copy.SetIdentity().Transpose().Mul(2).GetMaskInfo(), 0x0E);
    EXPECT_TRUE(copy.Div(2).IsExactlyIdentity());
    const float f44[4][4] = {{0.1f, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    EXPECT_EQ((copy = f44).Get(0, 0), TypeParam(0.1f));  // the float widened
    EXPECT_EQ(copy.GetMaskInfo(), 0x0E);
    float kel[4][4];
    wide.GetKelMatrix(kel);
    EXPECT_EQ(kel[0][0], 0.1f);
    EXPECT_EQ(M(f44), copy);

    // Identity tests are strict; IsNull is not.
    const TypeParam eps = TypeParam(0.25);
    EXPECT_FALSE(M(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, eps, 0, 0, 0, 1).IsIdentity(eps));
    EXPECT_TRUE(M(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, eps, 0, 0, 0, 1).IsIdentity(2 * eps));
    EXPECT_TRUE(M(eps, -eps, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, eps).IsNull(eps));
    EXPECT_EQ(AreAlmostEqual(m, M(m).Add(M(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, eps)), eps),
              0);

    // The 3x3 minors keep the remaining rows and columns in order.
    using M33 = C3DMatrix33Tpl<TypeParam>;
    EXPECT_EQ(M33(3, 3, m), M33(1, 2, 3, 5, 6, 7, 9, 10, 11));
    EXPECT_EQ(M33(0, 0, m), M33(6, 7, 8, 10, 11, 12, 14, 15, 16));
    EXPECT_EQ(M33().Set(1, 2, m), M33(1, 2, 4, 9, 10, 12, 13, 14, 16));

    std::ostringstream dump;
    m.Dump("M", dump);
    EXPECT_EQ(dump.str(), "M\n( 1 2 3 4 )\n( 5 6 7 8 )\n( 9 10 11 12 )\n( 13 14 15 16 )\n \n");
    std::istringstream is("16 15 14 13 12 11 10 9 8 7 6 5 4 3 2 1");
    M read;
    is >> read;
    EXPECT_EQ(read, M(16, 15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1));
}

TYPED_TEST(Matrix44Test, ProductsMatchNaiveSumsWhateverTheAliasing) {
    using M = typename TestFixture::M;
    using V4 = typename TestFixture::V4;
    std::mt19937 rng(1);
    for (int n = 0; n < 100; ++n) {
        const M a = this->Random(rng), b = this->Random(rng);
        M ab, left = a, right = b;
        ab.Mul(a, b);
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j) {
                long double sum = 0;
                for (int k = 0; k < 4; ++k) sum += (long double)a.Get(i, k) * b.Get(k, j);
                EXPECT_NEAR(ab.Get(i, j), double(sum), this->kTol);
            }
        EXPECT_EQ(left.Mul(b), ab);
        EXPECT_EQ(right.Mul(a, right), ab);
        EXPECT_EQ(M().MulTransByReg(a, b), M().Mul(this->Transposed(a), b));
        EXPECT_EQ(M().MulRegByTrans(a, b), M().Mul(a, this->Transposed(b)));

        // Row and column vectors, aliasing allowed.
        const V4 w(a.Get(0, 0), a.Get(1, 1), a.Get(2, 2), a.Get(3, 3));
        V4 row, v = w;
        row.Mul(w, b);
        for (int j = 0; j < 4; ++j)
            EXPECT_NEAR(
                row[j],
                w.x * b.Get(0, j) + w.y * b.Get(1, j) + w.z * b.Get(2, j) + w.w * b.Get(3, j),
                this->kTol);
        EXPECT_EQ(v.Mul(v, b), row);
        EXPECT_EQ(V4(w).Mul(b), row);
        EXPECT_EQ(V4().Mul(this->Transposed(b), w), row);

        // The point through the matrix: (w, 1) * b divided by its last component.
        using V = typename TestFixture::V;
        const V p(w.x, w.y, w.z);
        const V4 h = V4().Mul(V4(p, 1), b);
        const V image = V().Mul(p, b);
        for (int k = 0; k < 3; ++k)
            EXPECT_NEAR(image[k], h[k] / h.w, 1e3 * this->kTol * (1 + std::fabs(h[k] / h.w)));
    }
}

TYPED_TEST(Matrix44Test, PointsSkipZeroComponentsAndDivideWithoutTest) {
    using M = typename TestFixture::M;
    using V = typename TestFixture::V;
    const TypeParam inf = std::numeric_limits<TypeParam>::infinity();
    // Row 0 is infinite, but x = 0 leaves it out; w = 2 halves the rest.
    const M m(inf, inf, inf, inf, 0, 1, 0, 0, 0, 0, 1, 0, 4, 6, 8, 2);
    EXPECT_EQ(V().Mul(V(0, 2, 4), m), V(2, 4, 6));
    M flat = m;
    flat.SetRow(3, 0, 0, 0, 0);
    const V nan = V().Mul(V(0, 0, 0), flat);  // 0 / 0
    EXPECT_TRUE(std::isnan(nan.x) && std::isnan(nan.y) && std::isnan(nan.z));
}

TYPED_TEST(Matrix44Test, DeterminantAndMinors) {
    using M = typename TestFixture::M;
    std::mt19937 rng(2);
    for (int n = 0; n < 100; ++n) {
        const M m = this->Random(rng);
        const long double det = this->Leibniz(m);
        EXPECT_NEAR(m.GetDet(), double(det), 10 * this->kTol);
        // Laplace expansion along every row with the unsigned minors.
        for (int i = 0; i < 4; ++i) {
            long double sum = 0;
            for (int j = 0; j < 4; ++j)
                sum += ((i + j) % 2 ? -1 : 1) * m.Get(i, j) * (long double)m.GetDet(i, j);
            EXPECT_NEAR(double(sum), double(det), 10 * this->kTol);
        }
    }
    // Singular exactly when the determinant is 0, whatever eps.
    const M twin(1, 2, 3, 4, 5, 6, 7, 8, 1, 2, 3, 4, 0, 0, 1, 1);
    EXPECT_EQ(twin.IsSingular(), 1);
    const TypeParam tiny =
        this->kDouble ? TypeParam(1e-75) : TypeParam(1e-10);  // det 1e-300, 1e-40
    const M small(tiny, 0, 0, 0, 0, tiny, 0, 0, 0, 0, tiny, 0, 0, 0, 0, tiny);
    EXPECT_NE(small.GetDet(), 0);
    EXPECT_EQ(small.IsSingular(1), 0);
}

TYPED_TEST(Matrix44Test, InverseTimesMatrixIsTheIdentity) {
    using M = typename TestFixture::M;
    std::mt19937 rng(3);
    std::uniform_int_distribution<int> exponent(-8, 8);
    for (int n = 0; n < 300; ++n) {
        // Diagonally dominant, so well conditioned, at scales the absolute pivot test accepts.
        M m = this->Random(rng);
        m.Add(M(3, 0, 0, 0, 0, 3, 0, 0, 0, 0, 3, 0, 0, 0, 0, 3))
            .Mul(TypeParam(std::ldexp(1.0, exponent(rng))));
        M inverse = m, transposed;
        ASSERT_EQ(inverse.Invert(), 1);
        this->ExpectIdentity(M().Mul(inverse, m), 10 * this->kTol);
        this->ExpectIdentity(M().Mul(m, inverse), 10 * this->kTol);
        ASSERT_EQ(transposed.TransposeInverse(m), 1);
        EXPECT_EQ(transposed, this->Transposed(inverse));
    }
}

TYPED_TEST(Matrix44Test, PivotsAreTheFirstAcceptableWithAnAbsoluteTolerance) {
    using M = typename TestFixture::M;
    using T = TypeParam;
    // A zero on the diagonal is passed by a row swap.
    const M cycle(0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 1, 0, 0, 0);
    M inverse = cycle;
    ASSERT_EQ(inverse.Invert(), 1);
    EXPECT_EQ(inverse, this->Transposed(cycle));

    // No pivot in a column: 0, and the matrix is kept.
    const M twin(1, 2, 3, 4, 5, 6, 7, 8, 1, 2, 3, 4, 0, 0, 1, 1);
    M kept = twin;
    EXPECT_EQ(kept.Invert(), 0);
    EXPECT_EQ(kept.TransposeInverse(), 0);
    EXPECT_EQ(kept, twin);
    // The tolerance is absolute: below it a regular diagonal matrix fails, at it it passes.
    const T tol = this->kPivotTolerance;
    EXPECT_EQ(M(std::nextafter(tol, T(0)), 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1).Invert(),
              0);
    M atTolerance(tol, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    ASSERT_EQ(atTolerance.Invert(), 1);
    EXPECT_EQ(atTolerance.Get(0, 0), T(1) / tol);

    // The first acceptable pivot is kept although a larger one lies below it: with the larger
    // one the second pivot would be -a * d, below the tolerance, and the inversion would fail.
    const T a = 2 * tol, d = T(0.05);
    M lower(a, 0, 0, 0, 1, d, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    ASSERT_EQ(lower.Invert(), 1);
    EXPECT_NEAR(lower.Get(0, 0) * a, 1, this->kTol);
    EXPECT_NEAR(lower.Get(1, 0) * a * d, -1, this->kTol);
    EXPECT_NEAR(lower.Get(1, 1) * d, 1, this->kTol);
}

}  // namespace
