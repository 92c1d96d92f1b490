#include "math/matrices/matrix33.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <sstream>

#include "math/matrices/rotation_matrix.h"

#ifdef MATH_HAVE_EIGEN
#include <Eigen/Dense>
#endif

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

    static M Random(std::mt19937& rng) {
        std::uniform_real_distribution<double> d(-1, 1);
        M m;
        for (int k = 0; k < 9; ++k) m.GetArray()[k] = T(d(rng));
        return m;
    }
    static M RandomSymmetric(std::mt19937& rng) {
        M m = Random(rng);
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < i; ++j) m.Set(i, j, m.Get(j, i));
        return m;
    }
    // Naive sum in double; the transposes are applied while reading.
    static double Product(const M& a, const M& b, int i, int j, bool ta = false, bool tb = false) {
        double sum = 0;
        for (int k = 0; k < 3; ++k)
            sum += double(ta ? a.Get(k, i) : a.Get(i, k)) * double(tb ? b.Get(j, k) : b.Get(k, j));
        return sum;
    }
    static void Rows(const M& m, T (&out)[3][3]) {
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) out[i][j] = m.Get(i, j);
    }
    static void ExpectIdentity(const M& m, double tol) {
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) EXPECT_NEAR(m.Get(i, j), i == j ? 1 : 0, tol);
    }
    // The eigenvalues of a symmetric matrix in decreasing order by the trigonometric closed form,
    // in long double.
    static void ClosedFormEigenvalues(const M& m, long double (&out)[3]) {
        auto a = [&](int i, int j) { return static_cast<long double>(m.Get(i, j)); };
        const long double pi = 3.14159265358979323846264338327950288L;
        const long double q = (a(0, 0) + a(1, 1) + a(2, 2)) / 3;
        const long double p1 = a(0, 1) * a(0, 1) + a(0, 2) * a(0, 2) + a(1, 2) * a(1, 2);
        const long double p2 = (a(0, 0) - q) * (a(0, 0) - q) + (a(1, 1) - q) * (a(1, 1) - q) +
                               (a(2, 2) - q) * (a(2, 2) - q) + 2 * p1;
        const long double p = std::sqrt(p2 / 6);
        auto b = [&](int i, int j) { return (a(i, j) - (i == j ? q : 0)) / p; };
        long double r = (b(0, 0) * (b(1, 1) * b(2, 2) - b(1, 2) * b(2, 1)) -
                         b(0, 1) * (b(1, 0) * b(2, 2) - b(1, 2) * b(2, 0)) +
                         b(0, 2) * (b(1, 0) * b(2, 1) - b(1, 1) * b(2, 0))) /
                        2;
        r = r < -1 ? -1 : (r > 1 ? 1 : r);
        const long double phi = std::acos(r) / 3;
        out[0] = q + 2 * p * std::cos(phi);
        out[2] = q + 2 * p * std::cos(phi + 2 * pi / 3);
        out[1] = 3 * q - out[0] - out[2];
    }
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(Matrix33Test, Precisions);

TYPED_TEST(Matrix33Test, ConstructionLayoutAndAccess) {
    using M = typename TestFixture::M;
    using R = typename TestFixture::R;
    using V = typename TestFixture::V;
    EXPECT_TRUE(M().IsNull(0));
    EXPECT_EQ(R(), M(1, 0, 0, 0, 1, 0, 0, 0, 1));
    EXPECT_EQ(M().GetDynamicMemSize(), 0u);

    const M m(1, 2, 3, 4, 5, 6, 7, 8, 9);
    for (int k = 0; k < 9; ++k) EXPECT_EQ(m.GetArray()[k], k + 1);  // row by row
    EXPECT_EQ(m.Get(1, 2), 6);
    EXPECT_EQ(m.GetTrace(), 15);
    const V a(1, 2, 3), b(4, 5, 6), c(7, 8, 9);
    EXPECT_EQ(M(a, b, c, 1), m);
    EXPECT_EQ(M(a, b, c, -3), m);  // any non-zero flag means rows
    M columns(a, b, c, 0);
    EXPECT_EQ(columns, M(m).Transpose());
    EXPECT_EQ(R(a, b, c, 0), columns);
    EXPECT_EQ(M().SetCol(1, b).SetRow(2, 1, 1, 1), M(0, 4, 0, 0, 5, 0, 1, 1, 1));

    const float f33[3][3] = {{0.1f, 2, 3}, {4, 5, 6}, {7, 8, 9}};
    EXPECT_EQ(M(f33).Get(0, 0), TypeParam(0.1f));  // the float widened, not the decimal 0.1
    const float f44[4][4] = {{1, 2, 3, -1}, {4, 5, 6, -1}, {7, 8, 9, -1}, {-1, -1, -1, -1}};
    M upper;
    upper = f44;
    EXPECT_EQ(upper, m);
    const TypeParam rows[3][3] = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
    EXPECT_EQ(M().Set(rows), m);
    EXPECT_EQ(M().Set(2, 0, 5).Get(2, 0), 5);
}

TYPED_TEST(Matrix33Test, ElementwiseArithmetic) {
    using M = typename TestFixture::M;
    const M a(1, 2, 3, 4, 5, 6, 7, 8, 9), b(9, 8, 7, 6, 5, 4, 3, 2, 1);
    EXPECT_EQ(M(a).Add(b), M(10, 10, 10, 10, 10, 10, 10, 10, 10));
    EXPECT_EQ(M().Sub(a, b), M(-8, -6, -4, -2, 0, 2, 4, 6, 8));
    EXPECT_EQ(M(a).Negate(), M(-1, -2, -3, -4, -5, -6, -7, -8, -9));
    EXPECT_EQ(M().Mul(a, TypeParam(2)), M().Add(a, a));
    EXPECT_EQ(M(a).Div(4).Get(0, 0), TypeParam(0.25));
    // Div divides each value; with a divisor whose reciprocal is inexact the two forms differ.
    const TypeParam s = 3;
    EXPECT_EQ(M().Div(a, s).Get(1, 0), TypeParam(4) / s);
}

TYPED_TEST(Matrix33Test, ProductsMatchNaiveSumsWhateverTheAliasing) {
    using M = typename TestFixture::M;
    std::mt19937 rng(1);
    for (int n = 0; n < 100; ++n) {
        const M a = this->Random(rng), b = this->Random(rng);
        M ab, tab, atb, inPlace = a, left = b;
        ab.Mul(a, b);
        tab.MulTransByReg(a, b);
        atb.MulRegByTrans(a, b);
        inPlace.Mul(b);
        left.Mul(a, left);
        for (int i = 0; i < 3; ++i) {
            for (int j = 0; j < 3; ++j) {
                EXPECT_NEAR(ab.Get(i, j), this->Product(a, b, i, j), this->kTol);
                EXPECT_NEAR(tab.Get(i, j), this->Product(a, b, i, j, true, false), this->kTol);
                EXPECT_NEAR(atb.Get(i, j), this->Product(a, b, i, j, false, true), this->kTol);
            }
        }
        EXPECT_EQ(inPlace, ab);
        EXPECT_EQ(left, ab);
        M square = a;
        square.Mul(square, square);
        EXPECT_EQ(square, M().Mul(a, a));
        M t = a;
        t.MulTransByReg(t, t);
        EXPECT_EQ(t, tab.MulTransByReg(a, a));
    }
}

TYPED_TEST(Matrix33Test, VectorProductsUseRowVectorsOnTheLeft) {
    using M = typename TestFixture::M;
    using R = typename TestFixture::R;
    using V = typename TestFixture::V;
    const M m(1, 2, 3, 4, 5, 6, 7, 8, 10);
    V v(1, 0, 0);
    EXPECT_EQ(v.Mul(m), V(1, 2, 3));  // the image of axis i is row i
    EXPECT_EQ(V().Mul(V(1, 1, 2), m), V(19, 23, 29));
    EXPECT_EQ(V().Mul(m, V(1, 1, 2)), V(9, 21, 35));  // column form: v * transpose(m)
    v.Set(1, 1, 2);
    EXPECT_EQ(v.Mul(v, m), V(19, 23, 29));
    v.Set(1, 1, 2);
    EXPECT_EQ(v.Mul(m, v), V(9, 21, 35));

    R quarter;
    quarter.Set(E3DAXIS_Z, TypeParam(kPi / 2));
    V w = V().Mul(V(1, 0, 0), quarter);
    EXPECT_NEAR(w.x, 0, this->kTol);
    EXPECT_NEAR(w.y, 1, this->kTol);
    w.Mul(quarter, V(1, 0, 0));  // the inverse rotation
    EXPECT_NEAR(w.y, -1, this->kTol);
}

TYPED_TEST(Matrix33Test, DeterminantLeibnizSizeAndAdjugate) {
    using M = typename TestFixture::M;
    const M m(2, -3, 1, 2, 0, -1, 1, 4, 5);  // det = 49 by cofactors along row 1
    EXPECT_EQ(m.GetDet(), 49);
    TypeParam rows[3][3], det, size;
    this->Rows(m, rows);
    m.ComputeDetAndDetSize(rows, det, size);
    EXPECT_EQ(det, 49);
    // |2*0*5| + |-3*-1*1| + |1*2*4| + |1*0*1| + |-3*2*5| + |2*-1*4|
    EXPECT_EQ(size, 0 + 3 + 8 + 0 + 30 + 8);
    EXPECT_EQ(M(m).Adjoint(), M(4, 19, 3, -11, 9, 4, 8, -11, 6));

    std::mt19937 rng(2);
    for (int n = 0; n < 100; ++n) {
        const M a = this->Random(rng), b = this->Random(rng);
        EXPECT_NEAR(M().Mul(a, b).GetDet(), a.GetDet() * b.GetDet(), 10 * this->kTol);
        M adj(a);
        adj.Adjoint();
        M product;
        product.Mul(a, adj);  // det * I
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j)
                EXPECT_NEAR(product.Get(i, j), i == j ? a.GetDet() : 0, 10 * this->kTol);
        TypeParam rowsA[3][3], rowsAdj[3][3];
        this->Rows(a, rowsA);
        this->Rows(adj, rowsAdj);
        EXPECT_NEAR(a.ComputeDetFast(rowsA, rowsAdj), a.GetDet(), 10 * this->kTol);
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
        this->ExpectIdentity(M().Mul(m, inverse), 10 * this->kTol);
        M transposed;
        ASSERT_EQ(transposed.TransposeInverse(m), 1);
        EXPECT_EQ(transposed, inverse.Transpose());
        EXPECT_EQ(m.IsSingular(), 0);
    }
}

TYPED_TEST(Matrix33Test, InverseIsTheAdjugateOverTheOrderedLeibnizDeterminant) {
    using M = typename TestFixture::M;
    using T = TypeParam;
    std::mt19937 rng(6);
    for (int n = 0; n < 200; ++n) {
        const M m = this->Random(rng);
        T a[3][3];
        this->Rows(m, a);
        // The six products summed in their stated order, and their magnitudes likewise.
        const T p[6] = {a[0][0] * a[1][1] * a[2][2], a[0][1] * a[1][2] * a[2][0],
                        a[0][2] * a[1][0] * a[2][1], a[0][2] * a[1][1] * a[2][0],
                        a[0][1] * a[1][0] * a[2][2], a[0][0] * a[1][2] * a[2][1]};
        const T det = p[0] + p[1] + p[2] - p[3] - p[4] - p[5];
        T size = 0;
        for (const T product : p) size += std::fabs(product);
        T d, s;
        m.ComputeDetAndDetSize(a, d, s);
        EXPECT_EQ(d, det);
        EXPECT_EQ(s, size);
        // One reciprocal, then products; the transposed form gives the same values.
        const T k = T(1) / det;
        M inverse, transposed;
        ASSERT_EQ(inverse.Invert(m), 1);
        ASSERT_EQ(transposed.TransposeInverse(m), 1);
        const M adj = M(m).Adjoint();
        for (int i = 0; i < 3; ++i) {
            for (int j = 0; j < 3; ++j) {
                EXPECT_EQ(inverse.Get(i, j), adj.Get(i, j) * k);
                EXPECT_EQ(transposed.Get(j, i), adj.Get(i, j) * k);
            }
        }
        // The test is |det / size| >= eps: the ratio itself passes, the next value up fails.
        const T ratio = std::fabs(det / size);
        T out[3][3];
        EXPECT_EQ(m.ComputeInverse(a, out, 0, ratio), 1);
        EXPECT_EQ(m.ComputeInverse(a, out, 0, std::nextafter(ratio, T(1))), 0);
        EXPECT_EQ(m.IsSingular(ratio), 0);
        EXPECT_EQ(m.IsSingular(std::nextafter(ratio, T(1))), 1);
    }
}

TYPED_TEST(Matrix33Test, SingularMatricesAreJudgedRelativelyAndLeftUnchanged) {
    using M = typename TestFixture::M;
    M zero;
    EXPECT_EQ(zero.Invert(), 0);
    EXPECT_EQ(zero.TransposeInverse(), 0);
    EXPECT_TRUE(zero.IsNull(0));
    EXPECT_EQ(zero.IsSingular(), 1);
    EXPECT_EQ(zero.IsSingular(0), 1);  // size 0 is singular whatever eps

    // Every diagonal matrix has det / size = 1, at any scale.
    M tiny(1e-20, 0, 0, 0, 1e-20, 0, 0, 0, 1e-20);
    if (this->kDouble) {
        ASSERT_EQ(tiny.Invert(), 1);
        EXPECT_NEAR(tiny.Get(1, 1), 1e20, 1e8);
    }
    M small(1e-3, 0, 0, 0, 1e-3, 0, 0, 0, 1e-3);
    EXPECT_EQ(small.IsSingular(), 0);

    // det / size is 5e-14 here: singular in both precisions (in float the perturbation is lost).
    const M almost(1, 1, 0, 1, TypeParam(1 + 1e-13), 0, 0, 0, 1);
    M before = almost, m = almost;
    EXPECT_EQ(m.Invert(), 0);
    EXPECT_EQ(m, before);
    EXPECT_EQ(m.IsSingular(), 1);
    // det / size is 1e-7: below the float tolerance 1e-6, above the double one 1e-12.
    const M nearly(1, 1, 0, 1, TypeParam(1.0000002), 0, 0, 0, 1);
    m = nearly;
    EXPECT_EQ(m.Invert(), this->kDouble ? 1 : 0);
    EXPECT_EQ(nearly.IsSingular(), this->kDouble ? 0 : 1);
    EXPECT_EQ(nearly.IsSingular(TypeParam(1e-8)), 0);
    // The measure does not depend on the scale.
    EXPECT_EQ(M(nearly).Mul(TypeParam(1e-30)).IsSingular(), nearly.IsSingular());

    // NaN: the ratio test of IsSingular is false, the inverse still fails.
    M nan(std::numeric_limits<TypeParam>::quiet_NaN(), 0, 0, 0, 1, 0, 0, 0, 1);
    EXPECT_EQ(nan.IsSingular(), 0);
    EXPECT_EQ(nan.Invert(), 0);
    EXPECT_TRUE(std::isnan(nan.Get(0, 0)));
}

TYPED_TEST(Matrix33Test, StrictAndNonStrictComparisons) {
    using M = typename TestFixture::M;
    const TypeParam eps = TypeParam(0.25);  // exact in binary
    M m(1, 0, 0, 0, 1, 0, 0, 0, 1);
    EXPECT_TRUE(m.IsIdentity(eps));
    m.Set(2, 1, eps);
    EXPECT_FALSE(m.IsIdentity(eps));  // |m21| == eps is not < eps
    EXPECT_EQ(m.IsSymmetric(eps), 0);
    EXPECT_EQ(m.IsSymmetric(TypeParam(0.5)), 1);
    EXPECT_FALSE(M(1, 0, 0, 0, 1.25, 0, 0, 0, 1).IsIdentity(eps));
    EXPECT_TRUE(M(eps, -eps, 0, 0, 0, 0, 0, 0, eps).IsNull(eps));  // <= eps is null
    EXPECT_EQ(AreAlmostEqual(m, M(1, 0, 0, 0, 1, 0, 0, 0.125, 1), eps), 1);
    EXPECT_EQ(AreAlmostEqual(m, M(1, 0, 0, 0, 1, 0, 0, 0, 1), eps), 0);
    EXPECT_TRUE(m != M());
    const TypeParam nan = std::numeric_limits<TypeParam>::quiet_NaN();
    EXPECT_FALSE(M(nan, 0, 0, 0, 1, 0, 0, 0, 1).IsIdentity(eps));
    EXPECT_FALSE(M(nan, 0, 0, 0, 0, 0, 0, 0, 0) == M(nan, 0, 0, 0, 0, 0, 0, 0, 0));
}

TYPED_TEST(Matrix33Test, EigenPairsOfDiagonalMatricesAndTheirTies) {
    using M = typename TestFixture::M;
    using V = typename TestFixture::V;
    M vectors;
    V values;
    ASSERT_EQ(M(1, 0, 0, 0, 3, 0, 0, 0, 2).GetEigenVectors(vectors, values), 1);
    EXPECT_EQ(values, V(3, 2, 1));
    EXPECT_EQ(vectors, M(0, 0, 1, 1, 0, 0, 0, 1, 0));  // columns e_y, e_z, e_x
    // On equal values the later one wins the position: e_y comes before e_x.
    ASSERT_EQ(M(2, 0, 0, 0, 2, 0, 0, 0, 1).GetEigenVectors(vectors, values), 1);
    EXPECT_EQ(values, V(2, 2, 1));
    EXPECT_EQ(vectors, M(0, 1, 0, 1, 0, 0, 0, 0, 1));
    // Off-diagonal values below eps count as converged at once.
    ASSERT_EQ(M(1, 0.1, 0, 0.1, 2, 0, 0, 0, 3).GetEigenVectors(vectors, values, 0.5), 1);
    EXPECT_EQ(values, V(3, 2, 1));
}

TYPED_TEST(Matrix33Test, EigenSolverRefusesNonSymmetricAndReportsNonConvergence) {
    using M = typename TestFixture::M;
    using V = typename TestFixture::V;
    const M marker(7, 7, 7, 7, 7, 7, 7, 7, 7);
    M vectors = marker;
    V values(7, 7, 7);
    EXPECT_EQ(M(1, 2, 0, 0, 1, 0, 0, 0, 1).GetEigenVectors(vectors, values), 0);
    // Symmetric within 0.25 (strict): the difference 0.25 itself is not.
    EXPECT_EQ(M(1, 0.25, 0, 0, 1, 0, 0, 0, 1).GetEigenVectors(vectors, values, 0.25), 0);
    EXPECT_EQ(vectors, marker);
    EXPECT_EQ(values, V(7, 7, 7));

    // A NaN off-diagonal never converges: after 50 sweeps the last state is written, unsorted.
    const TypeParam nan = std::numeric_limits<TypeParam>::quiet_NaN();
    const TypeParam src[3][3] = {{1, nan, 0}, {nan, 2, 0}, {0, 0, 3}};
    TypeParam out[3][3];
    EXPECT_EQ(M().ComputeEigen(src, out, values, TypeParam(1e-6)), 0);
    EXPECT_EQ(values, V(1, 2, 3));
    EXPECT_EQ(M().Set(out), M(1, 0, 0, 0, 1, 0, 0, 0, 1));
    EXPECT_EQ(M(1, nan, 0, nan, 2, 0, 0, 0, 3).GetEigenVectors(vectors, values), 0);
}

TYPED_TEST(Matrix33Test, EigenPairsOfRandomSymmetricMatrices) {
    using M = typename TestFixture::M;
    using V = typename TestFixture::V;
    std::mt19937 rng(4);
    std::uniform_int_distribution<int> exponent(-10, 10);
    for (int n = 0; n < 300; ++n) {
        const double scale = std::ldexp(1.0, exponent(rng));
        M a = this->RandomSymmetric(rng);
        if (n % 3 == 0) a.Mul(TypeParam(scale));
        // Rounding relative to the scale, plus the off-diagonal remainder that convergence
        // accepts: below the accurate epsilon in absolute terms.
        const double tol =
            100 * this->kTol * (n % 3 == 0 ? scale : 1) + 2 * C3DTolerance<TypeParam>::k_Accurate;
        M vectors;
        V values;
        ASSERT_EQ(a.GetEigenVectors(vectors, values), 1) << n;
        EXPECT_GE(values.x, values.y);
        EXPECT_GE(values.y, values.z);
        long double reference[3];
        this->ClosedFormEigenvalues(a, reference);
        for (int i = 0; i < 3; ++i) {
            EXPECT_NEAR(values[i], double(reference[i]), tol) << n;
            // A v = lambda v with v the column i.
            const V v(vectors.Get(0, i), vectors.Get(1, i), vectors.Get(2, i));
            EXPECT_NEAR(v.GetLength(), 1, 10 * this->kTol);
            const V av = V().Mul(a, v);
            for (int k = 0; k < 3; ++k) EXPECT_NEAR(av[k], values[i] * v[k], tol) << n;
        }
        // V diag(values) V^T rebuilds A, and V is orthonormal.
        M scaled = vectors;
        for (int j = 0; j < 3; ++j)
            scaled.SetCol(j,
                          values[j] * V(vectors.Get(0, j), vectors.Get(1, j), vectors.Get(2, j)));
        EXPECT_EQ(AreAlmostEqual(M().MulRegByTrans(scaled, vectors), a, TypeParam(tol)), 1) << n;
        this->ExpectIdentity(M().MulTransByReg(vectors, vectors), 10 * this->kTol);
    }
}

#ifdef MATH_HAVE_EIGEN
TEST(Matrix33, EigenSolverAgreesWithEigensSelfAdjointSolver) {
    using M = C3DMatrix33Tpl<double>;
    std::mt19937 rng(5);
    std::uniform_real_distribution<double> d(-1, 1);
    for (int n = 0; n < 1000; ++n) {
        M a;
        Eigen::Matrix3d e;
        for (int i = 0; i < 3; ++i)
            for (int j = i; j < 3; ++j) {
                const double value = d(rng);
                a.Set(i, j, value).Set(j, i, value);
                e(i, j) = e(j, i) = value;
            }
        M vectors;
        C3DVector3Tpl<double> values;
        ASSERT_EQ(a.GetEigenVectors(vectors, values), 1);
        const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> solver(e);
        const Eigen::Vector3d& reference = solver.eigenvalues();
        for (int i = 0; i < 3; ++i) {
            const int k = 2 - i;  // Eigen sorts increasing
            EXPECT_NEAR(values[i], reference(k), 1e-12) << n;
            // Convergence accepts off-diagonal remainders below 1e-12, so a vector is only as
            // close as that remainder over the gap to the nearest other eigenvalue.
            const Eigen::Vector3d ours(vectors.Get(0, i), vectors.Get(1, i), vectors.Get(2, i));
            EXPECT_LT((e * ours - values[i] * ours).cwiseAbs().maxCoeff(), 1e-12) << n;
            const double gap = std::min({std::fabs(reference(k) - reference((k + 1) % 3)),
                                         std::fabs(reference(k) - reference((k + 2) % 3)), 1.0});
            const double sign = ours.dot(solver.eigenvectors().col(k)) < 0 ? -1 : 1;
            EXPECT_LT((ours - sign * solver.eigenvectors().col(k)).cwiseAbs().maxCoeff(),
                      1e-12 / gap)
                << n;
        }
    }
}
#endif

TYPED_TEST(Matrix33Test, ElementaryRotations) {
    using M = typename TestFixture::M;
    using R = typename TestFixture::R;
    using V = typename TestFixture::V;
    const TypeParam quarter = TypeParam(kPi / 2);
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
        r.Set(c.axis, quarter);
        const V image = V().Mul(c.from, r);
        for (int k = 0; k < 3; ++k) EXPECT_NEAR(image[k], c.to[k], this->kTol) << c.axis;
        // The axis itself is fixed.
        const V axis(int(c.axis), TypeParam(1));
        EXPECT_EQ(V().Mul(axis, r), axis);
    }
    R r;
    r.Set(E3DAXIS_X, 1);
    EXPECT_EQ(r.Set(static_cast<tagE3DAXISTYPE>(7), 1), R());

    // Angles about one axis add up; the inverse is the transpose, and is the inverse.
    R a, b, ab, expected;
    a.Set(E3DAXIS_Y, TypeParam(0.3));
    b.Set(E3DAXIS_Y, TypeParam(0.5));
    expected.Set(E3DAXIS_Y, TypeParam(0.8));
    EXPECT_EQ(AreAlmostEqual(ab.Mul(a, b), expected, TypeParam(10 * this->kTol)), 1);
    R inverse;
    inverse.Invert(ab);
    EXPECT_EQ(inverse, M(ab).Transpose());
    this->ExpectIdentity(R().Mul(ab, inverse), 10 * this->kTol);
    this->ExpectIdentity(R().MulRegByTrans(ab, ab), 10 * this->kTol);
    this->ExpectIdentity(R().MulTransByReg(ab, ab), 10 * this->kTol);
    R transposeInverse = ab;
    ASSERT_EQ(transposeInverse.TransposeInverse(), 1);  // the rotation itself
    EXPECT_EQ(AreAlmostEqual(transposeInverse, ab, TypeParam(10 * this->kTol)), 1);
    EXPECT_NEAR(ab.GetDet(), 1, 10 * this->kTol);
    // The members that write return the rotation matrix.
    R& self = ab.SetNull().SetIdentity().Invert();
    EXPECT_EQ(&self, &ab);
}

TYPED_TEST(Matrix33Test, TextFormat) {
    using M = typename TestFixture::M;
    const M m(1, 2, 3, 4, 5, 6, 7, 8, 9.5);
    std::ostringstream os;
    os << m;
    EXPECT_EQ(os.str(), "( 1 2 3 )\n( 4 5 6 )\n( 7 8 9.5 )");
    std::ostringstream dump;
    m.Dump("M", dump);
    EXPECT_EQ(dump.str(), "M\n( 1 2 3 )\n( 4 5 6 )\n( 7 8 9.5 )\n \n");
    std::istringstream is("9 8 7 6 5 4 3 2 1");
    M read;
    is >> read;
    EXPECT_EQ(read, M(9, 8, 7, 6, 5, 4, 3, 2, 1));
}

}  // namespace
