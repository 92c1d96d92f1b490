#include "math/matrices/transformation_matrix.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>

#include "math/rotations/euler_angles.h"

namespace {

constexpr double kPi = 3.141592653589793;

template <typename T>
class XfoMatTest : public testing::Test {
public:
    using X = C3DXfoMatTpl<T>;
    using R = C3DRotMatTpl<T>;
    using M33 = C3DMatrix33Tpl<T>;
    using V = C3DVector3Tpl<T>;
    static constexpr bool kDouble = std::is_same<T, double>::value;
    static constexpr T kTol = kDouble ? T(1e-12) : T(2e-5);

    // Rx Ry Rz, a product of elementary rotations.
    static R Rotation(const V& angles) {
        R r, axis;
        for (int a = 0; a < 3; ++a) r.Mul(axis.Set(tagE3DAXISTYPE(a), angles[a]));
        return r;
    }
    static R RandomRotation(std::mt19937& rng) {
        std::uniform_real_distribution<double> d(-kPi, kPi);
        return Rotation(V{T(d(rng)), T(d(rng)), T(d(rng))});
    }
    // Magnitudes in [0.1, 10], each negative with the given probability.
    static V RandomScale(std::mt19937& rng, double negative = 0.5) {
        std::uniform_real_distribution<double> magnitude(0.1, 10);
        std::bernoulli_distribution sign(negative);
        V s;
        for (int i = 0; i < 3; ++i) s[i] = T(sign(rng) ? -magnitude(rng) : magnitude(rng));
        return s;
    }
    static M33 Diagonal(const V& s) { return M33(s.x, 0, 0, 0, s.y, 0, 0, 0, s.z); }
    static X Affine(const M33& linear, const V& t) { return X().Set(linear).SetTranslation(t); }
    static M33 Linear(const X& m) { return M33(3, 3, m); }
    // Decomposes m and checks what the result promises: p proper and orthonormal, rest free of
    // shear with consistent bits and m's translation, and p * rest's linear part = m's to tol.
    static void ExpectDecomposes(const X& m, R& p, X& rest, T tol) {
        m.GetAffineDecomposition(p, rest);
        EXPECT_EQ(AreAlmostEqual(M33().MulRegByTrans(p, p), R(), 10 * kTol), 1);
        EXPECT_NEAR(p.GetDet(), 1, 10 * kTol);
        EXPECT_EQ(AreAlmostEqual(M33().Mul(p, Linear(rest)), Linear(m), tol), 1);
        const M33 gram = M33().MulRegByTrans(Linear(rest), Linear(rest));  // row dot products
        for (int i = 0, j = 1; i < 3; ++i, j = (i + 1) % 3)
            EXPECT_NEAR(gram.Get(i, j), 0, 10 * kTol * std::sqrt(gram.Get(i, i) * gram.Get(j, j)));
        EXPECT_EQ(rest.ValidateSclSignBits(), 1);
        EXPECT_TRUE(rest.Get(3, 0) == m.Get(3, 0) && rest.Get(3, 2) == m.Get(3, 2));
    }
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(XfoMatTest, Precisions);

TYPED_TEST(XfoMatTest, SignBitsGiveScalingAndRotation) {
    using X = typename TestFixture::X;
    using V = typename TestFixture::V;
    X m;
    EXPECT_TRUE(m.IsExactlyIdentity() && m.GetMaskInfo() == 0);
    // The bits are 2, 4, 8 of the byte; the others are kept.
    m.SetMaskInfo(0xF1);
    EXPECT_EQ(m.SetSclSignBits(0xFF).NegSclSignCount(), 3);
    EXPECT_EQ(m.SetSclSignBits(V(-1, 0, TypeParam(-0.0))).GetMaskInfo(), 0xF3);  // -0 is not < 0
    EXPECT_TRUE(m.ComputeSignBits() == 0 && m.GetMaskInfo() == 0xF1);
    // Inconsistent bits (an even count for a negative determinant) count the clear axes.
    m = this->Affine(this->Diagonal(V(-2, 3, 4)), V(1, 2, 3));  // repaired: all three bits
    EXPECT_EQ(m.GetSclSignBits(), 14);
    EXPECT_EQ(m.ClearSclSignBits().ComputeSignBits(), 14);
    const auto expect = [&m](unsigned char bits, int consistent, V scale, V rotation) {
        V s;
        typename TestFixture::R r;
        m.SetSclSignBits(bits).GetScaling(s);
        m.GetRotation(r);
        EXPECT_EQ(m.ValidateSclSignBits(), consistent) << int(bits);
        EXPECT_TRUE(s == scale && r == TestFixture::Diagonal(rotation)) << int(bits) << r;
    };
    expect(14, 1, V(-2, -3, -4), V(1, -1, -1));
    expect(2, 1, V(-2, 3, 4), V(1, 1, 1));
    expect(4, 1, V(2, -3, 4), V(-1, -1, 1));
    expect(0, 0, V(-2, -3, -4), V(1, -1, -1));
    expect(12, 0, V(-2, 3, 4), V(1, 1, 1));
    // AreAlmostEqual compares the bits as well, operator== does not.
    X other = m;
    EXPECT_TRUE(AreAlmostEqual(m, other) == 1 && AreAlmostEqual(m, other.SetSclSignBits(14)) == 0);
    EXPECT_TRUE(m == other);
    V s;
    m.SetRow(0, 0, 0, 0, 0).GetScaling(s);
    EXPECT_EQ(std::fabs(s.x), TypeParam(1e-12));  // the lower bound, for a null row
}

TYPED_TEST(XfoMatTest, SetScalingReplacesTinyScalesByTwoDifferentValues) {
    using X = typename TestFixture::X;
    using V = typename TestFixture::V;
    using T = TypeParam;
    std::mt19937 rng(7);
    X m;
    m.SetRotation(this->RandomRotation(rng));
    typename TestFixture::R r;
    m.GetRotation(r);
    const auto expect = [&](const V& scale, const V& factors, unsigned char bits) {
        X scaled = m;
        EXPECT_EQ(scaled.SetScaling(scale).GetSclSignBits(), bits);
        for (int k = 0; k < 9; ++k)
            EXPECT_EQ(scaled.Get(k / 3, k % 3), factors[k / 3] * r.Get(k / 3, k % 3));
    };
    const T small = T(9.999999974752427e-07);
    expect(V(0, T(-1e-13), T(1e-13)), V(small, T(-1e-12), small), 4);
    expect(V(T(-0.0), T(1e-12), T(-1e-12)), V(small, T(1e-12), T(-1e-12)), 8);
}

TYPED_TEST(XfoMatTest, EveryOperationLeavesConsistentBits) {
    using X = typename TestFixture::X;
    using R = typename TestFixture::R;
    using M33 = typename TestFixture::M33;
    using T = TypeParam;
    X other;
    typename TestFixture::V s;
    R r, u;  // r proper or not
    const std::function<void(X&)> operations[] = {
        [&](X& m) { m.Set(M33(3, 3, other)); },
        [&](X& m) { m.SetWithTranspose(M33(3, 3, other)); },
        [&](X& m) { m.Set(reinterpret_cast<const T(*)[4]>(other.GetArray())); },
        [&](X& m) { m.SetRow(1, s.x, s.y, s.z, 0); },
        [&](X& m) { m.SetCol(0, C3DVector4Tpl<T>(s, 1)); },
        [&](X& m) { m.SetScaling(s); },
        [&](X& m) { m.SetRotation(r); },
        [&](X& m) { m.SetScalingAndRotation(s, r); },
        [&](X& m) { m.AddScaling(s); },
        [&](X& m) { m.Mul(other, m); },
        [&](X& m) { m.Mul(other); },
        [&](X& m) { m.Invert(); },
        [&](X& m) { m.Transpose(other); },
        [&](X& m) { other.GetAffineDecomposition(u, m); },
    };
    std::mt19937 rng(9);
    std::uniform_real_distribution<double> d(-1, 1);
    const auto random = [&] {
        X m;
        for (int k = 0; k < 12; ++k) m.Set(k / 3, k % 3, T(d(rng)));
        return m.SetSclSignBits(static_cast<unsigned char>(2 * (rng() % 8)));  // consistent or not
    };
    for (int n = 0; n < 100; ++n) {
        const X start = random();
        other = random();
        s = this->RandomScale(rng);
        r = this->RandomRotation(rng);
        if (n % 2) r.Negate();
        for (const auto& operation : operations) {
            X m = start;
            operation(m);
            EXPECT_EQ(m.ValidateSclSignBits(), 1) << &operation - operations << " " << n;
        }
    }
}

TYPED_TEST(XfoMatTest, RandomAffineMatrices) {
    using X = typename TestFixture::X;
    using R = typename TestFixture::R;
    using V = typename TestFixture::V;
    using M44 = C3DMatrix44Tpl<TypeParam>;
    const TypeParam tol = 100 * this->kTol;
    std::mt19937 rng(8);
    for (int n = 0; n < 200; ++n) {
        const V s = this->RandomScale(rng), t = this->RandomScale(rng), k = this->RandomScale(rng);
        const R r = this->RandomRotation(rng), r2 = this->RandomRotation(rng);
        X a, b;
        a.SetTranslation(t).SetScalingAndRotation(s, r);
        b.SetTranslation(k).SetScalingAndRotation(k, r2);
        // The linear part is diag(s) * r, the bits those of the signs of s.
        const auto product = typename TestFixture::M33().Mul(this->Diagonal(s), r);
        EXPECT_EQ(AreAlmostEqual(this->Linear(a), product, tol), 1);
        EXPECT_EQ(a.GetSclSignBits(), X().SetSclSignBits(s).GetSclSignBits());
        // The product of affine matrices is their 4x4 product; the bits combine by parity.
        const X ab = X().Mul(a, b);
        EXPECT_EQ(static_cast<const M44&>(ab), M44().Mul(a, b));
        EXPECT_EQ(ab.GetSclSignBits(), a.GetSclSignBits() ^ b.GetSclSignBits());
        EXPECT_NEAR(a.GetDet33(), a.GetDet(), tol * std::fabs(a.GetDet()));
        X inverse = a;
        ASSERT_EQ(inverse.Invert(), 1);
        EXPECT_TRUE(X().Mul(a, inverse).IsIdentity(tol) && X().Mul(inverse, a).IsIdentity(tol));
        EXPECT_EQ(inverse.GetSclSignBits(), a.GetSclSignBits());
        const X transposed = this->Affine(this->Linear(a).Transpose(), t);
        EXPECT_TRUE(X().Transpose(a) == transposed &&
                    X(a).SetWithTranspose(this->Linear(a)) == transposed);
        // Scaling and rotation read back, each written keeping the other and the translation.
        V as, ks;
        R ar, kr;
        a.SetRotation(r2).GetScaling(as);
        a.GetRotation(ar);
        a.AddScaling(k).GetScaling(ks);
        a.GetRotation(kr);
        EXPECT_TRUE(AreAlmostEqual(as, s, tol) && AreAlmostEqual(ar, r2, tol)) << n;
        EXPECT_TRUE(AreAlmostEqual(ks, V(s).MulComp(k), tol) && AreAlmostEqual(kr, r2, tol)) << n;
        EXPECT_EQ(a.Get(3, 1), t.y);
    }
}

TYPED_TEST(XfoMatTest, SingularAndProjectiveMatrices) {
    using X = typename TestFixture::X;
    using V = typename TestFixture::V;
    using M33 = typename TestFixture::M33;
    using M44 = C3DMatrix44Tpl<TypeParam>;
    // A singular linear part: 0, the matrix kept.
    const X singular = this->Affine(M33(1, 2, 3, 2, 4, 6, 0, 0, 1), V(1, 1, 1));
    X kept = singular;
    EXPECT_TRUE(kept.Invert() == 0 && kept == singular);
    // Column 3 takes no part in the affine tests and comes out of affine results as (0, 0, 0, 1);
    // a point starts from the translation and skips the row of a zero coordinate, infinite or not.
    X projective;
    const TypeParam half = TypeParam(0.5);
    projective.SetCol(3, 1, 2, 3, 4).SetTranslation(V(half, half, half));
    EXPECT_FALSE(projective.IsIdentity(half) || projective.IsNull(half));  // 0.5 is not < 0.5
    EXPECT_TRUE(this->Affine(M33(), V(0, 0, 0)).IsNull(0) &&
                !this->Affine(M33(), V(0, 1, 0)).IsNull(half));
    EXPECT_TRUE(projective.SetTranslation(V(0, 0, 0)).IsExactlyIdentity() && projective == X() &&
                projective.IsIdentity());
    EXPECT_FALSE(static_cast<const M44&>(projective) == X());
    EXPECT_TRUE(X().Mul(projective, projective).IsExactlyIdentity());
    projective.SetRow(0, std::numeric_limits<TypeParam>::infinity(), 0, 0, 0)
        .SetTranslation(V(1, 1, 1));
    EXPECT_EQ(V().Mul(V(0, 2, 3), projective), V(1, 3, 4));
}

TYPED_TEST(XfoMatTest, AffineDecomposition) {
    using X = typename TestFixture::X;
    using R = typename TestFixture::R;
    using M33 = typename TestFixture::M33;
    using V = typename TestFixture::V;
    using T = TypeParam;
    R p;
    X rest;
    std::mt19937 rng(11);
    const auto rotation = [&] { return M33(TestFixture::RandomRotation(rng)); };
    const auto scaled = [&](double negative, const V& extra) {
        return M33().Mul(this->Diagonal(V(this->RandomScale(rng, negative)).MulComp(extra)),
                         rotation());
    };
    const V one(1, 1, 1), small(1, T(0.5), this->kDouble ? T(1e-9) : T(1e-4));
    const std::function<M33()> families[] = {
        [&] { return rotation().Mul(this->RandomScale(rng).x); },  // uniform
        [&] { return scaled(0, one); },
        [&] { return scaled(0, V(-1, 1, 1)); },                   // mirrored on one axis
        [&] { return scaled(1, one); },                           // on three
        [&] { return M33().Mul(rotation(), scaled(0.5, one)); },  // shear
        [&] { return M33().Mul(rotation(), scaled(0, small)); },  // near-singular
        // R1 D R2 with a half turn as R1's Z angle, which the singular value decomposition
        // often hands on to its factor before it is taken out
        [&] {
            std::uniform_real_distribution<double> d(-1, 1);
            const R r1 = TestFixture::Rotation(
                V{rng() % 2 ? 0 : T(d(rng)), rng() % 3 ? 0 : T(d(rng)), T(kPi)});
            const M33 r2 = rng() % 2 ? rotation() : M33(R());
            return M33(r1).Mul(M33().Mul(this->Diagonal(V(T(1 + d(rng) / 2), 2.5, -4)), r2));
        },
    };
    for (const auto& family : families) {
        SCOPED_TRACE(&family - families);
        for (int n = 0; n < 200; ++n) {
            const M33 block = family();
            T size = 0;
            for (int k = 0; k < 9; ++k) size = std::max(size, std::fabs(block.GetArray()[k]));
            this->ExpectDecomposes(this->Affine(block, this->RandomScale(rng)), p, rest,
                                   this->kTol * size);
            // A uniform scale splits off no rotation (in single precision the rounding of a
            // larger scale can exceed the absolute tolerance of that test); any other carries no
            // half turn about Z.
            EXPECT_TRUE(&family != &families[0] || !this->kDouble || p == R()) << n;
            V angles;
            F3DMatToEuler(p, angles, E3DROTORDER_XYZ);
            EXPECT_TRUE(!this->kDouble || std::fabs(std::fabs(angles.z) - kPi) > 1e-12) << n;
        }
    }

    const T eps = C3DTolerance<T>::k_Accurate;
    // An axis-aligned block splits off no rotation; its mirror makes all three scales negative.
    const X diagonal = this->Affine(this->Diagonal(V(-2, 3, 4)), V(1, 2, 3));
    diagonal.GetAffineDecomposition(p, rest);
    EXPECT_TRUE(p == R() && rest == diagonal && rest.GetSclSignBits() == 14);
    X self = diagonal;  // rest may be the matrix itself
    self.GetAffineDecomposition(p, self);
    EXPECT_TRUE(self == diagonal);
    // Singular values below eps are raised to it: a null block gets the scale eps on every
    // axis, a rank-deficient one is reproduced to within eps.
    V s;
    this->Affine(M33(), V(0, 0, 0)).GetAffineDecomposition(p, rest);
    rest.GetScaling(s);
    EXPECT_TRUE(p == R() && AreAlmostEqual(s, V(eps, eps, eps), this->kTol * eps));
    const M33 blocks[] = {M33(1, 2, 3, 2, 4, 6, 0, 1, 0), M33(0, 0, 0, 1, 2, 3, 4, 5, 6),
                          M33(1, 0, 0, 0, 0, 0, 0, 0, 2), M33(0, 1, 0, 0, 0, 1, 0, 0, 0),
                          M33(1, 2, 3, 0, 4, 5, 0, 6, 7)};  // one reflection: an improper factor
    for (const M33& block : blocks)
        this->ExpectDecomposes(this->Affine(block, V(0, 0, 0)), p, rest, 2 * eps);
    // Non-finite input ends (the iteration is bounded) and spreads NaN.
    const T nan = std::numeric_limits<T>::quiet_NaN();
    this->Affine(M33(nan, 1, 0, 0, 1, 0, 0, 0, 1), V(0, 0, 0)).GetAffineDecomposition(p, rest);
    EXPECT_TRUE(std::isnan(rest.Get(0, 0)) || std::isnan(p.Get(0, 0)));
}

}  // namespace
