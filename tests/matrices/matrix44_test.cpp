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
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(Matrix44Test, Precisions);

TYPED_TEST(Matrix44Test, LayoutAndTheMaskByte) {
    using M = typename TestFixture::M;
    using V4 = typename TestFixture::V4;
    const M m(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
    const V4 a(1, 2, 3, 4), b(5, 6, 7, 8), c(9, 10, 11, 12), d(13, 14, 15, 16);
    EXPECT_TRUE(M().IsNull(0) && m.GetArray()[6] == 7 && M(a, b, c, d, 2) == m);
    EXPECT_EQ(M(a, b, c, d, 0), this->Transposed(m));
    // The mask byte travels with copies, not with values written into a matrix.
    M copy = m;
    EXPECT_EQ(M().Set(copy.SetMaskInfo(0xA5)).GetMaskInfo(), 0xA5);
    const float f44[4][4] = {{0.1f, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    EXPECT_TRUE((copy = f44).GetMaskInfo() == 0xA5 && copy.Get(0, 0) == TypeParam(0.1f));
    C3DMatrix44Tpl<double> wide(f44);
    EXPECT_EQ(copy.SetFromDouble(wide.Set(0, 0, 0.1).SetMaskInfo(0x0E)).GetMaskInfo(), 0x0E);
    EXPECT_EQ(copy.Get(0, 0), TypeParam(0.1));
}

// Products, determinants and inverses of random matrices against sums in long double.
TYPED_TEST(Matrix44Test, RandomMatricesAgainstNaiveSums) {
    using M = typename TestFixture::M;
    using V4 = typename TestFixture::V4;
    const double tol = this->kTol;
    std::mt19937 rng(1);
    for (int n = 0; n < 200; ++n) {
        const M a = this->Random(rng), b = this->Random(rng);
        M ab, left = a, right = b;
        ab.Mul(a, b);
        for (int k = 0; k < 16; ++k) {
            long double sum = 0;
            for (int l = 0; l < 4; ++l) sum += (long double)a.Get(k / 4, l) * b.Get(l, k % 4);
            EXPECT_NEAR(ab.GetArray()[k], double(sum), tol);
        }
        EXPECT_TRUE(left.Mul(b) == ab && right.Mul(a, right) == ab);  // whatever the aliasing
        EXPECT_EQ(M().MulTransByReg(a, b), M().Mul(this->Transposed(a), b));
        EXPECT_EQ(M().MulRegByTrans(a, b), M().Mul(a, this->Transposed(b)));
        // Row 0 of a times b is row 0 of the product, with the matrix on either side.
        V4 v(a.Get(0, 0), a.Get(0, 1), a.Get(0, 2), a.Get(0, 3));
        const V4 w = v;
        EXPECT_EQ(v.Mul(v, b), V4(ab.Get(0, 0), ab.Get(0, 1), ab.Get(0, 2), ab.Get(0, 3)));
        EXPECT_TRUE(V4(w).Mul(b) == v && V4().Mul(this->Transposed(b), w) == v);
        // The determinant: the sum over the 24 permutations, and the Laplace expansion along a
        // row with the unsigned minors.
        int p[4] = {0, 1, 2, 3};
        long double det = 0, laplace = 0;
        do {
            long double product = 1;
            for (int i = 0; i < 4; ++i)
                for (int j = i; j < 4; ++j)
                    product *= j == i ? a.Get(i, p[i]) : p[i] > p[j] ? -1 : 1;
            det += product;
        } while (std::next_permutation(p, p + 4));
        for (int j = 0, i = n % 4; j < 4; ++j)
            laplace += ((i + j) % 2 ? -1 : 1) * a.Get(i, j) * (long double)a.GetDet(i, j);
        EXPECT_NEAR(a.GetDet(), double(det), 10 * tol);
        EXPECT_NEAR(double(laplace), double(det), 10 * tol);
        // The inverse of a diagonally dominant matrix, so well conditioned, at scales the
        // absolute pivot test accepts.
        M m = a, inverse, transposed;
        inverse =
            m.Add(M().SetIdentity().Mul(3)).Mul(TypeParam(std::ldexp(1, int(rng() % 17) - 8)));
        ASSERT_EQ(inverse.Invert() + transposed.TransposeInverse(m), 2);
        EXPECT_TRUE(M().Mul(inverse, m).IsIdentity(TypeParam(10 * tol)));
        EXPECT_EQ(transposed, this->Transposed(inverse));
    }
}

TYPED_TEST(Matrix44Test, PointsSkipZeroComponentsAndDivideWithoutTest) {
    using M = typename TestFixture::M;
    using V = C3DVector3Tpl<TypeParam>;
    const TypeParam inf = std::numeric_limits<TypeParam>::infinity();
    // Row 0 is infinite, but x = 0 leaves it out; w = 2 halves the rest.
    M m(inf, inf, inf, inf, 0, 1, 0, 0, 0, 0, 1, 0, 4, 6, 8, 2);
    EXPECT_EQ(V().Mul(V(0, 2, 4), m), V(2, 4, 6));
    const V nan = V().Mul(V(0, 0, 0), m.SetRow(3, 0, 0, 0, 0));  // 0 / 0
    EXPECT_TRUE(std::isnan(nan.x) && std::isnan(nan.y) && std::isnan(nan.z));
}

TYPED_TEST(Matrix44Test, SingularityPivotsAndTheirAbsoluteTolerance) {
    using M = typename TestFixture::M;
    using T = TypeParam;
    // Singular exactly when the determinant is 0, whatever eps.
    const M twin(1, 2, 3, 4, 5, 6, 7, 8, 1, 2, 3, 4, 0, 0, 1, 1);
    const T t = this->kDouble ? T(1e-75) : T(1e-10);
    const M tiny(t, 0, 0, 0, 0, t, 0, 0, 0, 0, t, 0, 0, 0, 0, t);
    EXPECT_TRUE(twin.IsSingular() == 1 && tiny.GetDet() != 0 && tiny.IsSingular(1) == 0);
    // No pivot in a column: 0, and the matrix is kept.
    M kept = twin;
    EXPECT_EQ(kept.Invert() + kept.TransposeInverse(), 0);
    EXPECT_EQ(kept, twin);
    // A zero on the diagonal is passed by a row swap.
    const M cycle(0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 1, 0, 0, 0);
    M inverse = cycle;
    ASSERT_EQ(inverse.Invert(), 1);
    EXPECT_EQ(inverse, this->Transposed(cycle));
    // The tolerance is absolute: just below it a regular diagonal matrix fails, at it it passes,
    // on the diagonal or swapped in from below.
    const T tol = C3DTolerance<T>::k_Accurate;
    EXPECT_EQ(this->Block(std::nextafter(tol, T(0)), 0, 0, 1).Invert(), 0);
    EXPECT_EQ(this->Block(0, 1, tol, 0).Invert(), 1);
    M atTolerance = this->Block(tol, 0, 0, 1);
    ASSERT_EQ(atTolerance.Invert(), 1);
    EXPECT_EQ(atTolerance.Get(0, 0), T(1) / tol);
    // The first acceptable pivot is kept although a larger one lies below it: with the larger
    // one the second pivot would be -a d, below the tolerance, and the inversion would fail.
    const T a = 2 * tol, d = T(0.05);
    M lower = this->Block(a, 0, 1, d);
    ASSERT_EQ(lower.Invert(), 1);
    EXPECT_TRUE(M().Mul(lower, this->Block(a, 0, 1, d)).IsIdentity(T(10 * this->kTol)));
}

}  // namespace
