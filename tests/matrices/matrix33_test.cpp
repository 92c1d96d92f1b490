#include "math/matrices/matrix33.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>

#include "math/matrices/rotation_matrix.h"

namespace {

constexpr double kPi = 3.141592653589793;

template <typename T>
class Matrix33Test : public testing::Test {
protected:
    using M = C3DMatrix33Tpl<T>;
    using R = C3DRotMatTpl<T>;
    using V = C3DVector3Tpl<T>;
    static constexpr bool kDouble = std::is_same<T, double>::value;
    // Loose enough for either precision on values of order 1.
    static constexpr double kTol = kDouble ? 1e-12 : 2e-5;

    static M Random(std::mt19937& rng, bool symmetric = false) {
        std::uniform_real_distribution<double> d(-1, 1);
        M m;
        for (int k = 0; k < 9; ++k) m.GetArray()[k] = T(d(rng));
        for (int i = 0; symmetric && i < 3; ++i)
            for (int j = 0; j < i; ++j) m.Set(i, j, m.Get(j, i));
        return m;
    }
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(Matrix33Test, Precisions);

TYPED_TEST(Matrix33Test, LayoutAndComparisons) {
    using M = typename TestFixture::M;
    using V = typename TestFixture::V;
    EXPECT_TRUE(M().IsNull(0));
    const M m(1, 2, 3, 4, 5, 6, 7, 8, 9);
    for (int k = 0; k < 9; ++k) EXPECT_EQ(m.GetArray()[k], k + 1);  // row by row
    const V a(1, 2, 3), b(4, 5, 6), c(7, 8, 9);
    EXPECT_EQ(M(a, b, c, -3), m);  // any non-zero flag: rows
    EXPECT_EQ(M(a, b, c, 0), M(m).Transpose());
    const float f33[3][3] = {{0.1f, 2, 3}, {4, 5, 6}, {7, 8, 9}};
    EXPECT_EQ(M(f33).Get(0, 0), TypeParam(0.1f));  // the float widened, not the decimal 0.1
    const float f44[4][4] = {{1, 2, 3, -1}, {4, 5, 6, -1}, {7, 8, 9, -1}, {-1, -1, -1, -1}};
    EXPECT_EQ(M() = f44, m);  // the upper-left 3x3
    EXPECT_EQ(M(2, -3, 1, 2, 0, -1, 1, 4, 5).Adjoint(), M(4, 19, 3, -11, 9, 4, 8, -11, 6));
    // Differences must be < eps, strictly; IsNull takes <= eps. 0.25 is exact in binary.
    const TypeParam eps = TypeParam(0.25);
    const M off(1, 0, 0, 0, 1, 0, 0, eps, 1);
    EXPECT_TRUE(!off.IsIdentity(eps) && off.IsSymmetric(eps) == 0);
    EXPECT_EQ(AreAlmostEqual(off, M(1, 0, 0, 0, 1, 0, 0, 0, 1), eps), 0);
    EXPECT_TRUE(M(eps, -eps, 0, 0, 0, 0, 0, 0, eps).IsNull(eps));
}

TYPED_TEST(Matrix33Test, ProductsMatchNaiveSumsWhateverTheAliasing) {
    using M = typename TestFixture::M;
    using V = typename TestFixture::V;
    std::mt19937 rng(1);
    for (int n = 0; n < 100; ++n) {
        const M a = this->Random(rng), b = this->Random(rng);
        M ab, left = a, right = b, both = a;
        ab.Mul(a, b);
        for (int k = 0; k < 9; ++k) {
            double sum = 0;
            for (int l = 0; l < 3; ++l) sum += double(a.Get(k / 3, l)) * b.Get(l, k % 3);
            EXPECT_NEAR(ab.GetArray()[k], sum, this->kTol);
        }
        EXPECT_TRUE(left.Mul(b) == ab && right.Mul(a, right) == ab);
        EXPECT_EQ(both.MulTransByReg(both, b), M().Mul(M(a).Transpose(), b));
        EXPECT_EQ(M().MulRegByTrans(a, b), M().Mul(a, M(b).Transpose()));
        // Row vectors on the left, aliasing allowed; the column form is v * transpose(m).
        const V w(a.Get(0, 0), a.Get(1, 1), a.Get(2, 2));
        V v = w;
        EXPECT_EQ(v.Mul(v, b), V(w).Mul(b));
        EXPECT_EQ(V().Mul(b, w), V().Mul(w, M(b).Transpose()));
    }
    EXPECT_EQ(V().Mul(V(1, 1, 2), M(1, 2, 3, 4, 5, 6, 7, 8, 10)), V(19, 23, 29));
}

TYPED_TEST(Matrix33Test, InverseOfWellConditionedMatrices) {
    using M = typename TestFixture::M;
    using T = TypeParam;
    const auto rows = [](const M& m) { return reinterpret_cast<const T(*)[3]>(m.GetArray()); };
    std::mt19937 rng(3);
    std::uniform_int_distribution<int> exponent(-20, 20);
    for (int n = 0; n < 500; ++n) {
        // Diagonally dominant, so well conditioned, at scales far from 1.
        M m = this->Random(rng);
        m.Add(M(3, 0, 0, 0, 3, 0, 0, 0, 3)).Mul(T(std::ldexp(1.0, exponent(rng))));
        M inverse, transposed;
        ASSERT_EQ(inverse.Invert(m) + transposed.TransposeInverse(m), 2);
        EXPECT_TRUE(M().Mul(inverse, m).IsIdentity(T(10 * this->kTol)));
        // The six Leibniz products summed in the stated order, and their magnitudes likewise;
        // the inverse is one reciprocal of that, then products, to the last bit.
        const auto a = rows(m);
        const T p[6] = {a[0][0] * a[1][1] * a[2][2], a[0][1] * a[1][2] * a[2][0],
                        a[0][2] * a[1][0] * a[2][1], a[0][2] * a[1][1] * a[2][0],
                        a[0][1] * a[1][0] * a[2][2], a[0][0] * a[1][2] * a[2][1]};
        const T det = p[0] + p[1] + p[2] - p[3] - p[4] - p[5];
        T size = 0;
        for (const T product : p) size += std::fabs(product);
        const M adj = M(m).Adjoint();
        EXPECT_NEAR(m.ComputeDetFast(a, rows(adj)) / det, 1, 10 * this->kTol);
        for (int k = 0; k < 9; ++k) {
            EXPECT_EQ(inverse.GetArray()[k], adj.GetArray()[k] * (T(1) / det));
            EXPECT_EQ(transposed.Get(k % 3, k / 3), inverse.GetArray()[k]);
        }
        // |det / size| >= eps passes: the ratio itself does, the next value up does not.
        const T ratio = std::fabs(det / size), above = std::nextafter(ratio, T(1));
        T out[3][3];
        EXPECT_EQ(m.ComputeInverse(a, out, 0, ratio) - m.ComputeInverse(a, out, 0, above), 1);
        EXPECT_EQ(m.IsSingular(above) - m.IsSingular(ratio), 1);
    }
}

TYPED_TEST(Matrix33Test, SingularMatricesAreJudgedRelativelyAndLeftUnchanged) {
    using M = typename TestFixture::M;
    EXPECT_TRUE(M().Invert() == 0 && M().IsSingular(0) == 1);  // every product zero
    // Every diagonal matrix has det / size = 1, at any scale.
    M tiny(1e-20, 0, 0, 0, 1e-20, 0, 0, 0, 1e-20);
    ASSERT_EQ(tiny.Invert(), this->kDouble ? 1 : 0);  // 1e-60 underflows in float
    EXPECT_NEAR(tiny.Get(1, 1), this->kDouble ? 1e20 : 1e-20, 1e8);
    // det / size = 5e-14 (in float the perturbation is lost altogether): singular.
    const M almost(1, 1, 0, 1, TypeParam(1 + 1e-13), 0, 0, 0, 1);
    M m = almost;
    EXPECT_TRUE(m.Invert() == 0 && m == almost);
    // det / size = 1e-7: below the float tolerance 1e-6, above the double one 1e-12.
    const M nearly(1, 1, 0, 1, TypeParam(1.0000002), 0, 0, 0, 1);
    EXPECT_EQ(M(nearly).Invert(), this->kDouble ? 1 : 0);
    EXPECT_EQ(nearly.IsSingular(), this->kDouble ? 0 : 1);
    EXPECT_EQ(M(nearly).Mul(TypeParam(1e-30)).IsSingular(), nearly.IsSingular());
    // A NaN ratio is not singular, yet the inverse fails.
    M nan(std::numeric_limits<TypeParam>::quiet_NaN(), 0, 0, 0, 1, 0, 0, 0, 1);
    EXPECT_TRUE(nan.IsSingular() == 0 && nan.Invert() == 0);
}

TYPED_TEST(Matrix33Test, EigenSolverOnDiagonalNonSymmetricAndDivergentInput) {
    using M = typename TestFixture::M;
    using V = typename TestFixture::V;
    M vectors;
    V values;
    ASSERT_EQ(M(1, 0, 0, 0, 3, 0, 0, 0, 2).GetEigenVectors(vectors, values), 1);
    EXPECT_EQ(values, V(3, 2, 1));
    EXPECT_EQ(vectors, M(0, 0, 1, 1, 0, 0, 0, 1, 0));  // columns e_y, e_z, e_x
    // On equal values the later one wins the position: e_y comes before e_x.
    ASSERT_EQ(M(2, 0, 0, 0, 2, 0, 0, 0, 1).GetEigenVectors(vectors, values), 1);
    EXPECT_EQ(vectors, M(0, 1, 0, 1, 0, 0, 0, 0, 1));
    // Off-diagonal values below eps (strictly) count as converged at once.
    for (const TypeParam off : {0.25, 0.125}) {
        ASSERT_EQ(M(1, off, 0, off, 2, 0, 0, 0, 3).GetEigenVectors(vectors, values, 0.25), 1);
        EXPECT_EQ(values == V(3, 2, 1), off < 0.25) << off;
    }

    // Not symmetric within eps (strictly): 0 and nothing written.
    const M marker(7, 7, 7, 7, 7, 7, 7, 7, 7);
    vectors = marker;
    EXPECT_EQ(M(1, 0.25, 0, 0, 1, 0, 0, 0, 1).GetEigenVectors(vectors, values, 0.25), 0);
    EXPECT_EQ(vectors, marker);
    EXPECT_EQ(values, V(3, 2, 1));
    // A NaN off-diagonal never converges: after 50 sweeps the last state is written, unsorted.
    const TypeParam nan = std::numeric_limits<TypeParam>::quiet_NaN();
    const TypeParam src[3][3] = {{1, nan, 0}, {nan, 2, 0}, {0, 0, 3}};
    TypeParam out[3][3];
    EXPECT_EQ(M().ComputeEigen(src, out, values, TypeParam(1e-6)), 0);
    EXPECT_EQ(values, V(1, 2, 3));
    EXPECT_EQ(M().Set(out), M(1, 0, 0, 0, 1, 0, 0, 0, 1));
}

TYPED_TEST(Matrix33Test, EigenPairsOfRandomSymmetricMatrices) {
    using M = typename TestFixture::M;
    using V = typename TestFixture::V;
    std::mt19937 rng(4);
    std::uniform_int_distribution<int> exponent(-10, 10);
    for (int n = 0; n < 300; ++n) {
        const double scale = n % 3 == 0 ? std::ldexp(1.0, exponent(rng)) : 1;
        M a = this->Random(rng, true);
        a.Mul(TypeParam(scale));
        // Rounding relative to the scale, plus the off-diagonal remainder that convergence
        // accepts, below the accurate epsilon in absolute terms.
        const double tol = 100 * this->kTol * scale + 2 * C3DTolerance<TypeParam>::k_Accurate;
        M vectors;
        V values;
        ASSERT_EQ(a.GetEigenVectors(vectors, values), 1) << n;
        EXPECT_TRUE(values.x >= values.y && values.y >= values.z) << n;
        // A V = V diag(values), V orthonormal and V diag(values) V^T = A.
        const M scaled = M().Mul(vectors, M(values.x, 0, 0, 0, values.y, 0, 0, 0, values.z));
        EXPECT_EQ(AreAlmostEqual(M().Mul(a, vectors), scaled, TypeParam(tol)), 1) << n;
        EXPECT_TRUE(M().MulTransByReg(vectors, vectors).IsIdentity(TypeParam(10 * this->kTol)));
        EXPECT_EQ(AreAlmostEqual(M().MulRegByTrans(scaled, vectors), a, TypeParam(tol)), 1) << n;
    }
}

TYPED_TEST(Matrix33Test, ElementaryRotations) {
    using M = typename TestFixture::M;
    using R = typename TestFixture::R;
    using V = typename TestFixture::V;
    // Right-handed quarter turns with row vectors on the left, whose rows are the images of the
    // axes: about X y -> z, about Y z -> x and x -> -z, about Z x -> y.
    const struct {
        tagE3DAXISTYPE axis;
        M images;
    } cases[] = {{E3DAXIS_X, M(1, 0, 0, 0, 0, 1, 0, -1, 0)},
                 {E3DAXIS_Y, M(0, 0, -1, 0, 1, 0, 1, 0, 0)},
                 {E3DAXIS_Z, M(0, 1, 0, -1, 0, 0, 0, 0, 1)}};
    for (const auto& c : cases) {
        const R r = R().Set(c.axis, TypeParam(kPi / 2));
        EXPECT_EQ(AreAlmostEqual(r, c.images, TypeParam(this->kTol)), 1) << c.axis;
        EXPECT_EQ(V().Mul(V(0, 1, 0), r), V(r.Get(1, 0), r.Get(1, 1), r.Get(1, 2)));
    }
    EXPECT_EQ(R().Set(E3DAXIS_X, 1).Set(static_cast<tagE3DAXISTYPE>(7), 1), R());

    // Angles about one axis add up; the inverse is the transpose, and is the inverse.
    const auto y = [](double angle) { return R().Set(E3DAXIS_Y, TypeParam(angle)); };
    R ab, inverse;
    EXPECT_EQ(AreAlmostEqual(ab.Mul(y(0.3), y(0.5)), y(0.8), TypeParam(10 * this->kTol)), 1);
    EXPECT_EQ(inverse.Invert(ab), M(ab).Transpose());
    ASSERT_EQ(inverse.TransposeInverse(ab), 1);  // the rotation itself
    EXPECT_EQ(AreAlmostEqual(inverse, ab, TypeParam(10 * this->kTol)), 1);
}

TYPED_TEST(Matrix33Test, TextFormat) {
    using M = typename TestFixture::M;
    std::ostringstream dump;
    M(1, 2, 3, 4, 5, 6, 7, 8, 9.5).Dump("M", dump);
    EXPECT_EQ(dump.str(), "M\n( 1 2 3 )\n( 4 5 6 )\n( 7 8 9.5 )\n \n");
    M read;
    std::istringstream("9 8 7 6 5 4 3 2 1") >> read;
    EXPECT_EQ(read, M(9, 8, 7, 6, 5, 4, 3, 2, 1));
}

}  // namespace
