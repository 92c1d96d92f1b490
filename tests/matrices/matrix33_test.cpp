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
    static void Rows(const M& m, T (&out)[3][3]) {
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) out[i][j] = m.Get(i, j);
    }
    static void ExpectIdentity(const M& m, double tol) {
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) EXPECT_NEAR(m.Get(i, j), i == j ? 1 : 0, tol);
    }
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(Matrix33Test, Precisions);

TYPED_TEST(Matrix33Test, ConstructionAndLayout) {
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
    M upper;
    EXPECT_EQ(upper = f44, m);
    EXPECT_EQ(M(2, -3, 1, 2, 0, -1, 1, 4, 5).Adjoint(), M(4, 19, 3, -11, 9, 4, 8, -11, 6));
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
            const int i = k / 3, j = k % 3;
            double sum = 0;
            for (int l = 0; l < 3; ++l) sum += double(a.Get(i, l)) * b.Get(l, j);
            EXPECT_NEAR(ab.Get(i, j), sum, this->kTol);
        }
        EXPECT_EQ(left.Mul(b), ab);
        EXPECT_EQ(right.Mul(a, right), ab);
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

TYPED_TEST(Matrix33Test, InverseIsTheAdjugateOverTheOrderedLeibnizDeterminant) {
    using M = typename TestFixture::M;
    using T = TypeParam;
    std::mt19937 rng(6);
    for (int n = 0; n < 200; ++n) {
        const M m = this->Random(rng);
        T a[3][3];
        this->Rows(m, a);
        // The six products summed in the stated order, and their magnitudes likewise.
        const T p[6] = {a[0][0] * a[1][1] * a[2][2], a[0][1] * a[1][2] * a[2][0],
                        a[0][2] * a[1][0] * a[2][1], a[0][2] * a[1][1] * a[2][0],
                        a[0][1] * a[1][0] * a[2][2], a[0][0] * a[1][2] * a[2][1]};
        const T det = p[0] + p[1] + p[2] - p[3] - p[4] - p[5];
        T size = 0;
        for (const T product : p) size += std::fabs(product);
        // One reciprocal, then products, to the last bit; the transposed form alike.
        M inverse, transposed;
        ASSERT_EQ(inverse.Invert(m), 1);
        ASSERT_EQ(transposed.TransposeInverse(m), 1);
        const M adj = M(m).Adjoint();
        T adjRows[3][3];
        this->Rows(adj, adjRows);
        EXPECT_NEAR(m.ComputeDetFast(a, adjRows), det, 10 * this->kTol);
        for (int i = 0; i < 3; ++i) {
            for (int j = 0; j < 3; ++j) {
                EXPECT_EQ(inverse.Get(i, j), adj.Get(i, j) * (T(1) / det));
                EXPECT_EQ(transposed.Get(j, i), inverse.Get(i, j));
            }
        }
        // |det / size| >= eps passes: the ratio itself does, the next value up does not.
        const T ratio = std::fabs(det / size);
        T out[3][3];
        EXPECT_EQ(m.ComputeInverse(a, out, 0, ratio), 1);
        EXPECT_EQ(m.ComputeInverse(a, out, 0, std::nextafter(ratio, T(1))), 0);
        EXPECT_EQ(m.IsSingular(std::nextafter(ratio, T(1))), 1);
    }
}

TYPED_TEST(Matrix33Test, InverseTimesMatrixIsTheIdentity) {
    using M = typename TestFixture::M;
    std::mt19937 rng(3);
    std::uniform_int_distribution<int> exponent(-20, 20);
    for (int n = 0; n < 500; ++n) {
        // Diagonally dominant, so well conditioned, at scales far from 1.
        M m = this->Random(rng);
        m.Add(M(3, 0, 0, 0, 3, 0, 0, 0, 3)).Mul(TypeParam(std::ldexp(1.0, exponent(rng))));
        M inverse = m;
        ASSERT_EQ(inverse.Invert(), 1);
        this->ExpectIdentity(M().Mul(inverse, m), 10 * this->kTol);
    }
}

TYPED_TEST(Matrix33Test, SingularMatricesAreJudgedRelativelyAndLeftUnchanged) {
    using M = typename TestFixture::M;
    M zero;
    EXPECT_EQ(zero.Invert(), 0);
    EXPECT_EQ(zero.IsSingular(0), 1);  // every product zero: singular whatever eps
    // Every diagonal matrix has det / size = 1, at any scale.
    M tiny(1e-20, 0, 0, 0, 1e-20, 0, 0, 0, 1e-20);
    ASSERT_EQ(tiny.Invert(), this->kDouble ? 1 : 0);  // 1e-60 underflows in float
    EXPECT_NEAR(tiny.Get(1, 1), this->kDouble ? 1e20 : 1e-20, 1e8);
    // det / size = 5e-14 (in float the perturbation is lost altogether): singular.
    const M almost(1, 1, 0, 1, TypeParam(1 + 1e-13), 0, 0, 0, 1);
    M m = almost;
    EXPECT_EQ(m.Invert(), 0);
    EXPECT_EQ(m, almost);
    // det / size = 1e-7: below the float tolerance 1e-6, above the double one 1e-12.
    const M nearly(1, 1, 0, 1, TypeParam(1.0000002), 0, 0, 0, 1);
    EXPECT_EQ(M(nearly).Invert(), this->kDouble ? 1 : 0);
    EXPECT_EQ(nearly.IsSingular(), this->kDouble ? 0 : 1);
    EXPECT_EQ(M(nearly).Mul(TypeParam(1e-30)).IsSingular(), nearly.IsSingular());
    // A NaN ratio is not singular, yet the inverse fails.
    M nan(std::numeric_limits<TypeParam>::quiet_NaN(), 0, 0, 0, 1, 0, 0, 0, 1);
    EXPECT_EQ(nan.IsSingular(), 0);
    EXPECT_EQ(nan.Invert(), 0);
}

TYPED_TEST(Matrix33Test, StrictAndNonStrictComparisons) {
    using M = typename TestFixture::M;
    const TypeParam eps = TypeParam(0.25);  // exact in binary
    const M m(1, 0, 0, 0, 1, 0, 0, eps, 1);
    EXPECT_FALSE(m.IsIdentity(eps));  // |m21| == eps is not < eps
    EXPECT_EQ(m.IsSymmetric(eps), 0);
    EXPECT_TRUE(M(eps, -eps, 0, 0, 0, 0, 0, 0, eps).IsNull(eps));  // <= eps
    EXPECT_EQ(AreAlmostEqual(m, M(1, 0, 0, 0, 1, 0, 0, 0, 1), eps), 0);
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
    // Off-diagonal values below eps count as converged at once.
    ASSERT_EQ(M(1, 0.1, 0, 0.1, 2, 0, 0, 0, 3).GetEigenVectors(vectors, values, 0.5), 1);
    EXPECT_EQ(values, V(3, 2, 1));

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
        M vectors, scaled;
        V values;
        ASSERT_EQ(a.GetEigenVectors(vectors, values), 1) << n;
        EXPECT_GE(values.x, values.y);
        EXPECT_GE(values.y, values.z);
        for (int i = 0; i < 3; ++i)
            scaled.SetCol(i,
                          values[i] * V(vectors.Get(0, i), vectors.Get(1, i), vectors.Get(2, i)));
        // V orthonormal and V diag(values) V^T = A: the values are the eigenvalues of A (to the
        // reconstruction error) and the columns their vectors.
        this->ExpectIdentity(M().MulTransByReg(vectors, vectors), 10 * this->kTol);
        EXPECT_EQ(AreAlmostEqual(M().MulRegByTrans(scaled, vectors), a, TypeParam(tol)), 1) << n;
    }
}

TYPED_TEST(Matrix33Test, ElementaryRotations) {
    using M = typename TestFixture::M;
    using R = typename TestFixture::R;
    using V = typename TestFixture::V;
    // Right-handed quarter turns with row vectors on the left: x -> y, y -> z, z -> x.
    const struct {
        tagE3DAXISTYPE axis;
        V from, to;
    } cases[] = {{E3DAXIS_Z, V(1, 0, 0), V(0, 1, 0)},
                 {E3DAXIS_X, V(0, 1, 0), V(0, 0, 1)},
                 {E3DAXIS_Y, V(0, 0, 1), V(1, 0, 0)},
                 {E3DAXIS_Y, V(1, 0, 0), V(0, 0, -1)}};
    for (const auto& c : cases) {
        R r;
        r.Set(c.axis, TypeParam(kPi / 2));
        const V image = V().Mul(c.from, r);
        for (int k = 0; k < 3; ++k) EXPECT_NEAR(image[k], c.to[k], this->kTol) << c.axis;
        EXPECT_EQ(V().Mul(V(int(c.axis), TypeParam(1)), r), V(int(c.axis), TypeParam(1)));
    }
    R r;
    EXPECT_EQ(r.Set(E3DAXIS_X, 1).Set(static_cast<tagE3DAXISTYPE>(7), 1), R());

    // Angles about one axis add up; the inverse is the transpose, and is the inverse.
    R a, b, ab, expected, inverse;
    a.Set(E3DAXIS_Y, TypeParam(0.3));
    b.Set(E3DAXIS_Y, TypeParam(0.5));
    expected.Set(E3DAXIS_Y, TypeParam(0.8));
    EXPECT_EQ(AreAlmostEqual(ab.Mul(a, b), expected, TypeParam(10 * this->kTol)), 1);
    EXPECT_EQ(inverse.Invert(ab), M(ab).Transpose());
    this->ExpectIdentity(R().Mul(ab, inverse), 10 * this->kTol);
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
