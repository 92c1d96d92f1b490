#include "math/matrices/matrix44.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace {

template <typename T>
class Matrix44Test : public testing::Test {
protected:
    using M = C3DMatrix44Tpl<T>;
    using V = C3DVector3Tpl<T>;
    using V4 = C3DVector4Tpl<T>;
    static constexpr bool kDouble = std::is_same<T, double>::value;
    static constexpr double kTol = kDouble ? 1e-12 : 2e-5;

    static M Random(std::mt19937& rng) {
        std::uniform_real_distribution<double> d(-1, 1);
        M m;
        for (int k = 0; k < 16; ++k) m.GetArray()[k] = T(d(rng));
        return m;
    }
    // The identity with the upper-left 2x2 replaced.
    static M Block(T m00, T m01, T m10, T m11) {
        return M(m00, m01, 0, 0, m10, m11, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    }
    static M Transposed(const M& m) { return M(m).Transpose(); }
    static void ExpectIdentity(const M& m, double tol) {
        for (int k = 0; k < 16; ++k) EXPECT_NEAR(m.GetArray()[k], k % 5 == 0 ? 1 : 0, tol);
    }
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(Matrix44Test, Precisions);

TYPED_TEST(Matrix44Test, LayoutConversionsAndTheMaskByte) {
    using M = typename TestFixture::M;
    using V4 = typename TestFixture::V4;
    EXPECT_TRUE(M().IsNull(0));
    const M m(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
    for (int k = 0; k < 16; ++k) EXPECT_EQ(m.GetArray()[k], k + 1);  // row by row
    const V4 a(1, 2, 3, 4), b(5, 6, 7, 8), c(9, 10, 11, 12), d(13, 14, 15, 16);
    EXPECT_EQ(M(a, b, c, d, 2), m);
    EXPECT_EQ(M(a, b, c, d, 0), this->Transposed(m));

    // The mask byte travels with copies, not with values written into a matrix.
    M copy = m;
    copy.SetMaskInfo(0xA5);
    EXPECT_EQ(M().Set(copy).GetMaskInfo(), 0xA5);
    C3DMatrix44Tpl<double> wide = C3DMatrix44Tpl<double>().SetIdentity().Set(0, 0, 0.1);
    EXPECT_EQ(copy.SetFromDouble(wide.SetMaskInfo(0x0E)).GetMaskInfo(), 0x0E);
    EXPECT_EQ(copy.Get(0, 0), TypeParam(0.1));
    const float f44[4][4] = {{0.1f, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    EXPECT_EQ((copy = f44).GetMaskInfo(), 0x0E);
    EXPECT_EQ(copy.Get(0, 0), TypeParam(0.1f));  // the float widened
    float kel[4][4];
    wide.GetKelMatrix(kel);
    EXPECT_EQ(kel[0][0], 0.1f);

    // The 3x3 minors keep the remaining rows and columns in order.
    using M33 = C3DMatrix33Tpl<TypeParam>;
    EXPECT_EQ(M33(3, 3, m), M33(1, 2, 3, 5, 6, 7, 9, 10, 11));
    EXPECT_EQ(M33(0, 0, m), M33(6, 7, 8, 10, 11, 12, 14, 15, 16));
    EXPECT_EQ(M33().Set(1, 2, m), M33(1, 2, 4, 9, 10, 12, 13, 14, 16));
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

        // Row 0 of a times b is row 0 of the product.
        const V4 w(a.Get(0, 0), a.Get(0, 1), a.Get(0, 2), a.Get(0, 3));
        V4 v = w;
        EXPECT_EQ(v.Mul(v, b), V4(ab.Get(0, 0), ab.Get(0, 1), ab.Get(0, 2), ab.Get(0, 3)));
        EXPECT_EQ(V4(w).Mul(b), v);
        EXPECT_EQ(V4().Mul(this->Transposed(b), w), v);
    }
}

TYPED_TEST(Matrix44Test, PointsSkipZeroComponentsAndDivideWithoutTest) {
    using M = typename TestFixture::M;
    using V = typename TestFixture::V;
    const TypeParam inf = std::numeric_limits<TypeParam>::infinity();
    // Row 0 is infinite, but x = 0 leaves it out; w = 2 halves the rest.
    M m(inf, inf, inf, inf, 0, 1, 0, 0, 0, 0, 1, 0, 4, 6, 8, 2);
    EXPECT_EQ(V().Mul(V(0, 2, 4), m), V(2, 4, 6));
    const V nan = V().Mul(V(0, 0, 0), m.SetRow(3, 0, 0, 0, 0));  // 0 / 0
    EXPECT_TRUE(std::isnan(nan.x) && std::isnan(nan.y) && std::isnan(nan.z));
}

TYPED_TEST(Matrix44Test, DeterminantMinorsAndSingularity) {
    using M = typename TestFixture::M;
    std::mt19937 rng(2);
    for (int n = 0; n < 100; ++n) {
        const M m = this->Random(rng);
        // The sum over the 24 permutations, in long double.
        int p[4] = {0, 1, 2, 3};
        long double det = 0;
        do {
            long double product = 1;
            for (int i = 0; i < 4; ++i) {
                product *= m.Get(i, p[i]);
                for (int j = i + 1; j < 4; ++j) product *= p[i] > p[j] ? -1 : 1;
            }
            det += product;
        } while (std::next_permutation(p, p + 4));
        EXPECT_NEAR(m.GetDet(), double(det), 10 * this->kTol);
        // Laplace expansion along a row with the unsigned minors.
        const int i = n % 4;
        long double sum = 0;
        for (int j = 0; j < 4; ++j)
            sum += ((i + j) % 2 ? -1 : 1) * m.Get(i, j) * (long double)m.GetDet(i, j);
        EXPECT_NEAR(double(sum), double(det), 10 * this->kTol);
    }
    // Singular exactly when the determinant is 0, whatever eps: det 1e-300 (1e-40 in float) is
    // regular.
    EXPECT_EQ(M(1, 2, 3, 4, 5, 6, 7, 8, 1, 2, 3, 4, 0, 0, 1, 1).IsSingular(), 1);
    const TypeParam t = this->kDouble ? TypeParam(1e-75) : TypeParam(1e-10);
    const M tiny(t, 0, 0, 0, 0, t, 0, 0, 0, 0, t, 0, 0, 0, 0, t);
    EXPECT_NE(tiny.GetDet(), 0);
    EXPECT_EQ(tiny.IsSingular(1), 0);
}

TYPED_TEST(Matrix44Test, InverseTimesMatrixIsTheIdentity) {
    using M = typename TestFixture::M;
    std::mt19937 rng(3);
    std::uniform_int_distribution<int> exponent(-8, 8);
    for (int n = 0; n < 300; ++n) {
        // Diagonally dominant, so well conditioned, at scales the absolute pivot test accepts.
        M m = this->Random(rng);
        m.Add(M().SetIdentity().Mul(3)).Mul(TypeParam(std::ldexp(1.0, exponent(rng))));
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
    // The tolerance is absolute: just below it a regular diagonal matrix fails, at it it passes.
    const T tol = C3DTolerance<T>::k_Accurate;
    EXPECT_EQ(this->Block(std::nextafter(tol, T(0)), 0, 0, 1).Invert(), 0);
    M atTolerance = this->Block(tol, 0, 0, 1);
    ASSERT_EQ(atTolerance.Invert(), 1);
    EXPECT_EQ(atTolerance.Get(0, 0), T(1) / tol);
    // The first acceptable pivot is kept although a larger one lies below it: with the larger
    // one the second pivot would be -a d, below the tolerance, and the inversion would fail.
    const T a = 2 * tol, d = T(0.05);
    M lower = this->Block(a, 0, 1, d);
    ASSERT_EQ(lower.Invert(), 1);
    EXPECT_NEAR(lower.Get(0, 0) * a, 1, this->kTol);
    EXPECT_NEAR(lower.Get(1, 0) * a * d, -1, this->kTol);
    EXPECT_NEAR(lower.Get(1, 1) * d, 1, this->kTol);
}

}  // namespace
