#include "math/matrices/transformation_matrix.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>

#ifdef MATH_HAVE_EIGEN
#include <Eigen/Dense>
#endif
#if __has_include("math/rotations/euler_angles.h")
#include "math/rotations/euler_angles.h"
#define MATH_HAVE_EULER_CONVERSIONS
#endif

namespace {

constexpr double kPi = 3.141592653589793;

template <typename T>
class XfoMatTest : public testing::Test {
protected:
    using X = C3DXfoMatTpl<T>;
    using R = C3DRotMatTpl<T>;
    using M33 = C3DMatrix33Tpl<T>;
    using V = C3DVector3Tpl<T>;
    static constexpr bool kDouble = std::is_same<T, double>::value;
    static constexpr double kTol = kDouble ? 1e-12 : 2e-5;

    // A product of elementary rotations, proper and orthonormal.
    static R RandomRotation(std::mt19937& rng) {
        std::uniform_real_distribution<double> angle(-kPi, kPi);
        R x, y, z;
        x.Set(E3DAXIS_X, T(angle(rng)));
        y.Set(E3DAXIS_Y, T(angle(rng)));
        z.Set(E3DAXIS_Z, T(angle(rng)));
        return R().Mul(x, y).Mul(z);
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
    static X Affine(const M33& linear, const V& t) {
        X m;
        m.Set(linear).SetTranslation(t);
        return m;
    }
    static M33 Linear(const X& m) { return M33(3, 3, m); }
    static void ExpectNear(const M33& a, const M33& b, double tol, const char* what) {
        for (int k = 0; k < 9; ++k) EXPECT_NEAR(a.GetArray()[k], b.GetArray()[k], tol) << what;
    }
    static void ExpectNear(const V& a, const V& b, double tol, const char* what) {
        for (int k = 0; k < 3; ++k) EXPECT_NEAR(a[k], b[k], tol) << what;
    }
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(XfoMatTest, Precisions);

TYPED_TEST(XfoMatTest, SignBitsLeaveTheRestOfTheMaskByte) {
    using X = typename TestFixture::X;
    using V = typename TestFixture::V;
    X m;
    EXPECT_TRUE(m.IsExactlyIdentity());
    EXPECT_EQ(m.GetMaskInfo(), 0);
    m.SetMaskInfo(0xF1);
    EXPECT_EQ(m.SetSclSignBits(0xFF).GetMaskInfo(), 0xFF);
    EXPECT_EQ(m.NegSclSignCount(), 3);
    EXPECT_EQ(m.ClearSclSignBits().GetMaskInfo(), 0xF1);
    EXPECT_EQ(m.XORSclSignBits(0x06, 0x0C).GetSclSignBits(), 0x0A);
    EXPECT_EQ(m.NegSclSignCount(), 2);
    EXPECT_EQ(m.SetSclSignBits(V(-1, 0, TypeParam(-0.0))).GetMaskInfo(), 0xF3);  // -0 is not < 0
    EXPECT_EQ(m.ComputeSignBits(), 0);
    EXPECT_EQ(m.GetMaskInfo(), 0xF1);
}

TYPED_TEST(XfoMatTest, ScalingAndRotationFollowTheBitsAndTheirParity) {
    using X = typename TestFixture::X;
    using R = typename TestFixture::R;
    using M33 = typename TestFixture::M33;
    using V = typename TestFixture::V;
    X m = this->Affine(M33(-2, 0, 0, 0, 3, 0, 0, 0, 4), V(1, 2, 3));
    EXPECT_EQ(m.ComputeSignBits(), 14);
    // Inconsistent bits (an even count for a negative determinant) count the clear axes.
    const struct {
        unsigned char bits;
        int consistent;
        V scale, rotation;  // the rotation's diagonal
    } cases[] = {{14, 1, V(-2, -3, -4), V(1, -1, -1)},
                 {2, 1, V(-2, 3, 4), V(1, 1, 1)},
                 {4, 1, V(2, -3, 4), V(-1, -1, 1)},
                 {0, 0, V(-2, -3, -4), V(1, -1, -1)},
                 {12, 0, V(-2, 3, 4), V(1, 1, 1)}};
    for (const auto& c : cases) {
        m.SetSclSignBits(c.bits);
        EXPECT_EQ(m.ValidateSclSignBits(), c.consistent) << int(c.bits);
        V s;
        R r;
        m.GetScaling(s);
        m.GetRotation(r);
        EXPECT_EQ(s, c.scale) << int(c.bits);
        EXPECT_EQ(r, this->Diagonal(c.rotation)) << int(c.bits);
    }
    // AreAlmostEqual compares the bits as well.
    X other = m;
    EXPECT_EQ(AreAlmostEqual(m, other), 1);
    EXPECT_EQ(AreAlmostEqual(m, other.SetSclSignBits(14)), 0);
    EXPECT_TRUE(m == other);

    // A null row: the lower bound 1e-12, and a null row of the rotation.
    const X flat = this->Affine(M33(0, 0, 0, 0, 1, 0, 0, 0, 1), V(0, 0, 0));
    V s;
    R r;
    flat.GetScaling(s);
    flat.GetRotation(r);
    EXPECT_EQ(s, V(TypeParam(1e-12), 1, 1));
    EXPECT_EQ(r, M33(0, 0, 0, 0, 1, 0, 0, 0, 1));
}

TYPED_TEST(XfoMatTest, SetScalingReplacesTinyScalesByTwoDifferentValues) {
    using X = typename TestFixture::X;
    using R = typename TestFixture::R;
    using V = typename TestFixture::V;
    using T = TypeParam;
    std::mt19937 rng(7);
    X m;
    m.SetRotation(this->RandomRotation(rng)).SetTranslation(V(5, 6, 7));
    R r;
    m.GetRotation(r);
    const struct {
        V scale, factors;
        unsigned char bits;
    } cases[] = {
        {V(0, T(-1e-13), T(1e-13)),
         V(T(9.999999974752427e-07), T(-1e-12), T(9.999999974752427e-07)), 4},
        {V(T(-0.0), T(1e-12), T(-1e-12)), V(T(9.999999974752427e-07), T(1e-12), T(-1e-12)), 8}};
    for (const auto& c : cases) {
        X scaled = m;
        scaled.SetScaling(c.scale);
        EXPECT_EQ(scaled.GetSclSignBits(), c.bits);
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) EXPECT_EQ(scaled.Get(i, j), c.factors[i] * r.Get(i, j));
        V t;
        scaled.GetTranslation(t);
        EXPECT_EQ(t, V(5, 6, 7));
        EXPECT_EQ(C3DVector4Tpl<T>().Mul(C3DVector4Tpl<T>(0, 0, 0, 1), scaled),
                  C3DVector4Tpl<T>(5, 6, 7, 1));
    }
}

TYPED_TEST(XfoMatTest, ScalingAndRotationRoundTrip) {
    using X = typename TestFixture::X;
    using R = typename TestFixture::R;
    using M33 = typename TestFixture::M33;
    using V = typename TestFixture::V;
    std::mt19937 rng(8);
    const double tol = 100 * this->kTol;
    for (int n = 0; n < 200; ++n) {
        const V s = this->RandomScale(rng), t = this->RandomScale(rng), k = this->RandomScale(rng);
        const R r = this->RandomRotation(rng), r2 = this->RandomRotation(rng);
        X m;
        m.SetTranslation(t).SetScalingAndRotation(s, r);
        // The linear part is diag(s) * r, the bits the signs of s.
        this->ExpectNear(this->Linear(m), M33().Mul(this->Diagonal(s), r), tol, "diag(s) r");
        EXPECT_EQ(m.GetSclSignBits(), X().SetSclSignBits(s).GetSclSignBits());
        V scaling, translation;
        R rotation;
        const auto expect = [&](const V& es, const R& er, const char* what) {
            m.GetScaling(scaling);
            m.GetRotation(rotation);
            m.GetTranslation(translation);
            this->ExpectNear(scaling, es, tol, what);
            this->ExpectNear(rotation, er, tol, what);
            EXPECT_EQ(translation, t) << what;
            EXPECT_EQ(m.ValidateSclSignBits(), 1) << what;
        };
        expect(s, r, "SetScalingAndRotation");
        m.SetRotation(r2);
        expect(s, r2, "SetRotation");
        m.AddScaling(k);
        expect(V(s).MulComp(k), r2, "AddScaling");
        m.SetScaling(s);
        expect(s, r2, "SetScaling");
    }
}

TYPED_TEST(XfoMatTest, EveryOperationLeavesConsistentBits) {
    using X = typename TestFixture::X;
    using R = typename TestFixture::R;
    using M33 = typename TestFixture::M33;
    using V = typename TestFixture::V;
    using T = TypeParam;
    struct Args {
        const X& other;
        V s;
        R r;  // proper or not
    };
    const std::pair<const char*, std::function<void(X&, const Args&)>> operations[] = {
        {"Set(3x3)", [](X& m, const Args& a) { m.Set(M33(3, 3, a.other)); }},
        {"SetWithTranspose", [](X& m, const Args& a) { m.SetWithTranspose(M33(3, 3, a.other)); }},
        {"Set(T[3][3])",
         [](X& m, const Args& a) {
             T v[3][3];
             for (int k = 0; k < 9; ++k) v[k / 3][k % 3] = a.other.Get(k / 3, k % 3);
             m.Set(v);
         }},
        {"Set(T[4][4])",
         [](X& m, const Args& a) {
             T v[4][4];
             for (int k = 0; k < 16; ++k) v[k / 4][k % 4] = a.other.Get(k / 4, k % 4);
             m.Set(v);
         }},
        {"SetRow", [](X& m, const Args& a) { m.SetRow(1, a.s.x, a.s.y, a.s.z, 0); }},
        {"SetCol", [](X& m, const Args& a) { m.SetCol(0, C3DVector4Tpl<T>(a.s, 1)); }},
        {"SetScaling", [](X& m, const Args& a) { m.SetScaling(a.s); }},
        {"SetRotation", [](X& m, const Args& a) { m.SetRotation(a.r); }},
        {"SetScalingAndRotation", [](X& m, const Args& a) { m.SetScalingAndRotation(a.s, a.r); }},
        {"AddScaling", [](X& m, const Args& a) { m.AddScaling(a.s); }},
        {"Mul(a, b)", [](X& m, const Args& a) { m.Mul(a.other, m); }},
        {"Mul(m)", [](X& m, const Args& a) { m.Mul(a.other); }},
        {"Invert", [](X& m, const Args&) { m.Invert(); }},
        {"Transpose", [](X& m, const Args& a) { m.Transpose(a.other); }},
        {"GetAffineDecomposition",
         [](X& m, const Args& a) {
             R rotation;
             a.other.GetAffineDecomposition(rotation, m);
         }},
    };
    std::mt19937 rng(9);
    std::uniform_real_distribution<double> d(-1, 1);
    std::uniform_int_distribution<int> bits(0, 7);
    const auto random = [&] {
        X m;
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 3; ++j) m.Set(i, j, T(d(rng)));
        return m.SetSclSignBits(static_cast<unsigned char>(2 * bits(rng)));  // consistent or not
    };
    for (int n = 0; n < 100; ++n) {
        const X start = random(), other = random();
        R r = this->RandomRotation(rng);
        if (n % 2) r.Negate();
        const Args args{other, this->RandomScale(rng), r};
        for (const auto& operation : operations) {
            X m = start;
            operation.second(m, args);
            EXPECT_EQ(m.ValidateSclSignBits(), 1) << operation.first << " " << n;
        }
    }
}

TYPED_TEST(XfoMatTest, AffineFormOperations) {
    using X = typename TestFixture::X;
    using M33 = typename TestFixture::M33;
    using V = typename TestFixture::V;
    using M44 = C3DMatrix44Tpl<TypeParam>;
    std::mt19937 rng(10);
    for (int n = 0; n < 100; ++n) {
        X a, b;
        a.SetTranslation(this->RandomScale(rng))
            .SetScalingAndRotation(this->RandomScale(rng), this->RandomRotation(rng));
        b.SetTranslation(this->RandomScale(rng))
            .SetScalingAndRotation(this->RandomScale(rng), this->RandomRotation(rng));
        // The product of affine matrices is their 4x4 product; the bits combine by parity.
        X ab;
        ab.Mul(a, b);
        EXPECT_EQ(static_cast<const M44&>(ab), M44().Mul(a, b));
        EXPECT_EQ(ab.GetSclSignBits(), a.GetSclSignBits() ^ b.GetSclSignBits());
        EXPECT_NEAR(a.GetDet33(), a.GetDet(), 100 * this->kTol * std::fabs(a.GetDet()));

        X inverse = a;
        ASSERT_EQ(inverse.Invert(), 1);
        EXPECT_TRUE(X().Mul(a, inverse).IsIdentity(TypeParam(100 * this->kTol)));
        EXPECT_TRUE(X().Mul(inverse, a).IsIdentity(TypeParam(100 * this->kTol)));
        EXPECT_EQ(inverse.GetSclSignBits(), a.GetSclSignBits());

        X transposed;
        transposed.Transpose(a);
        EXPECT_EQ(this->Linear(transposed), M33(this->Linear(a)).Transpose());
        EXPECT_EQ(transposed.Get(3, 1), a.Get(3, 1));

        // Points: v * linear + translation.
        const V v = this->RandomScale(rng), image = V().Mul(v, a);
        for (int j = 0; j < 3; ++j)
            EXPECT_NEAR(image[j],
                        v.x * a.Get(0, j) + v.y * a.Get(1, j) + v.z * a.Get(2, j) + a.Get(3, j),
                        100 * this->kTol);
    }
    // A singular linear part: 0, the matrix kept.
    const X singular = this->Affine(M33(1, 2, 3, 2, 4, 6, 0, 0, 1), V(1, 1, 1));
    X kept = singular;
    EXPECT_EQ(kept.Invert(), 0);
    EXPECT_TRUE(kept == singular);
    // Column 3 takes no part in the affine tests and is rewritten by affine results; a zero
    // coordinate skips its row, infinite or not.
    X projective;
    projective.SetCol(3, 1, 2, 3, 4);
    EXPECT_TRUE(projective.IsExactlyIdentity() && projective.IsIdentity() && projective == X());
    EXPECT_FALSE(static_cast<const M44&>(projective) == X());
    EXPECT_TRUE(X(projective).Mul(X()).IsExactlyIdentity());
    EXPECT_EQ(X().Mul(projective, X()).Get(2, 3), 0);
    projective.SetRow(0, std::numeric_limits<TypeParam>::infinity(), 0, 0, 0);
    EXPECT_EQ(V().Mul(V(0, 2, 3), projective), V(0, 2, 3));
    X null;
    null.SetNull();
    EXPECT_FALSE(X().IsNull(TypeParam(0.5)));
    EXPECT_TRUE(null.SetCol(3, 1, 1, 1, 1).IsNull(0));
}

// --- affine decomposition -----------------------------------------------------------------------

TYPED_TEST(XfoMatTest, AffineDecompositionReproducesTheBlock) {
    using X = typename TestFixture::X;
    using R = typename TestFixture::R;
    using M33 = typename TestFixture::M33;
    using V = typename TestFixture::V;
    using T = TypeParam;
    using Build = std::function<M33(std::mt19937&)>;
    const auto rotation = [this](std::mt19937& rng) { return M33(this->RandomRotation(rng)); };
    const auto scaled = [this, rotation](std::mt19937& rng, double negative) {
        return M33().Mul(this->Diagonal(this->RandomScale(rng, negative)), rotation(rng));
    };
    const T smallest = this->kDouble ? T(1e-9) : T(1e-4);
    const std::pair<const char*, Build> families[] = {
        {"uniform", [&](std::mt19937& rng) { return rotation(rng).Mul(this->RandomScale(rng).x); }},
        {"non-uniform", [&](std::mt19937& rng) { return scaled(rng, 0); }},
        {"mirrored on one axis",
         [&](std::mt19937& rng) {
             return M33().Mul(M33(-1, 0, 0, 0, 1, 0, 0, 0, 1), scaled(rng, 0));
         }},
        {"mirrored on three axes", [&](std::mt19937& rng) { return scaled(rng, 1); }},
        {"sheared", [&](std::mt19937& rng) { return M33().Mul(rotation(rng), scaled(rng, 0.5)); }},
        {"near-singular",
         [&](std::mt19937& rng) {
             return M33().Mul(rotation(rng),
                              M33().Mul(this->Diagonal(V(1, T(0.5), smallest)), rotation(rng)));
         }},
        {"general",
         [&](std::mt19937& rng) {
             std::uniform_real_distribution<double> d(-1, 1);
             M33 m;
             for (int k = 0; k < 9; ++k) m.GetArray()[k] = T(d(rng));
             return m;
         }},
    };
    std::mt19937 rng(11);
    for (const auto& family : families) {
        const bool uniform = &family == &families[0];
        for (int n = 0; n < 200; ++n) {
            const M33 block = family.second(rng);
            const V t = this->RandomScale(rng);
            const X m = this->Affine(block, t);
            R p;
            X rest;
            m.GetAffineDecomposition(p, rest);
            // p proper and orthonormal.
            this->ExpectNear(M33().MulRegByTrans(p, p), R(), 10 * this->kTol, family.first);
            EXPECT_NEAR(p.GetDet(), 1, 10 * this->kTol) << family.first;
            // block = p * rest's linear part, to the relative tolerance.
            T size = 0;
            for (int k = 0; k < 9; ++k) size = std::max(size, std::fabs(block.GetArray()[k]));
            this->ExpectNear(M33().Mul(p, this->Linear(rest)), block, this->kTol * size,
                             family.first);
            // rest: rows orthogonal (no shear), consistent bits, the same translation.
            const M33 linear = this->Linear(rest);
            for (int i = 0; i < 3; ++i) {
                const V ri(linear.Get(i, 0), linear.Get(i, 1), linear.Get(i, 2));
                const V rj(linear.Get((i + 1) % 3, 0), linear.Get((i + 1) % 3, 1),
                           linear.Get((i + 1) % 3, 2));
                EXPECT_NEAR(ri * rj, 0, 10 * this->kTol * ri.GetLength() * rj.GetLength())
                    << family.first;
            }
            EXPECT_EQ(rest.ValidateSclSignBits(), 1) << family.first;
            V translation;
            rest.GetTranslation(translation);
            EXPECT_EQ(translation, t);
            // A uniform scale splits off no rotation (in single precision the rounding of a
            // larger scale can exceed the absolute tolerance of that test).
            EXPECT_TRUE(!uniform || !this->kDouble || p == R()) << n;
        }
    }
}

TYPED_TEST(XfoMatTest, AffineDecompositionOfSpecialBlocks) {
    using X = typename TestFixture::X;
    using R = typename TestFixture::R;
    using M33 = typename TestFixture::M33;
    using V = typename TestFixture::V;
    const TypeParam eps = C3DTolerance<TypeParam>::k_Accurate;
    R p;
    X rest;
    // An axis-aligned block splits off no rotation; the mirror leaves all three axes negative.
    const X diagonal = this->Affine(M33(-2, 0, 0, 0, 3, 0, 0, 0, 4), V(1, 2, 3));
    diagonal.GetAffineDecomposition(p, rest);
    EXPECT_EQ(p, R());
    EXPECT_TRUE(rest == diagonal);
    EXPECT_EQ(rest.GetSclSignBits(), 14);
    // rest may be the matrix itself.
    X self = diagonal;
    self.GetAffineDecomposition(p, self);
    EXPECT_TRUE(self == diagonal);
    // Singular values below eps are raised to it: a null block gives the scale eps on every axis,
    // a rank-deficient one is reproduced to within eps.
    this->Affine(M33(), V(0, 0, 0)).GetAffineDecomposition(p, rest);
    EXPECT_EQ(p, R());
    V s;
    rest.GetScaling(s);
    this->ExpectNear(s, V(eps, eps, eps), this->kTol * eps, "null block");
    const M33 blocks[] = {M33(1, 2, 3, 2, 4, 6, 0, 1, 0), M33(0, 0, 0, 1, 2, 3, 4, 5, 6),
                          M33(1, 0, 0, 0, 0, 0, 0, 0, 2), M33(0, 1, 0, 0, 0, 1, 0, 0, 0)};
    for (const M33& block : blocks) {
        this->Affine(block, V(0, 0, 0)).GetAffineDecomposition(p, rest);
        EXPECT_NEAR(p.GetDet(), 1, 10 * this->kTol);
        this->ExpectNear(M33().Mul(p, this->Linear(rest)), block, 2 * eps + 10 * this->kTol,
                         "rank-deficient");
    }
    // Non-finite input ends (the iteration is bounded) and spreads NaN.
    const TypeParam nan = std::numeric_limits<TypeParam>::quiet_NaN();
    this->Affine(M33(nan, 1, 0, 0, 1, 0, 0, 0, 1), V(0, 0, 0)).GetAffineDecomposition(p, rest);
    EXPECT_TRUE(std::isnan(rest.Get(0, 0)) || std::isnan(p.Get(0, 0)));
}

#ifdef MATH_HAVE_EULER_CONVERSIONS
TEST(XfoMat, DecompositionRotationCarriesNoHalfTurnAboutZ) {
    // Blocks R1 * D * R2 whose R1 has a half turn as its Z angle, so that the factor of the
    // singular value decomposition often has one too, before it is taken out.
    using R = C3DRotMatTpl<double>;
    using V = C3DVector3Tpl<double>;
    using M33 = C3DMatrix33Tpl<double>;
    std::mt19937 rng(13);
    std::uniform_real_distribution<double> d(-1, 1);
    for (int n = 0; n < 500; ++n) {
        R r1, r2;
        F3DEulerToMat(V(n % 2 ? 0 : d(rng), n % 3 ? 0 : d(rng), kPi), r1, E3DROTORDER_XYZ);
        F3DEulerToMat(V(d(rng), d(rng), d(rng)), r2, E3DROTORDER_XYZ);
        if (n % 4 == 0) r2.SetIdentity();
        const M33 block =
            M33().Mul(r1, M33().Mul(M33(1 + d(rng) / 2, 0, 0, 0, 2.5, 0, 0, 0, -4), r2));
        C3DXfoMatTpl<double> m, rest;
        m.Set(block);
        R p;
        m.GetAffineDecomposition(p, rest);
        V angles;
        F3DMatToEuler(p, angles, E3DROTORDER_XYZ);
        EXPECT_GT(std::fabs(std::fabs(angles.z) - kPi), 1e-12) << n;
        const M33 product = M33().Mul(p, M33(3, 3, rest));
        EXPECT_EQ(AreAlmostEqual(product, block, 1e-12 * 4), 1) << n;
    }
}
#endif

#ifdef MATH_HAVE_EIGEN
TEST(XfoMat, DecompositionScalesAreEigensSingularValues) {
    std::mt19937 rng(12);
    std::uniform_real_distribution<double> d(-1, 1);
    for (int n = 0; n < 200; ++n) {
        C3DXfoMatTpl<double> m;
        Eigen::Matrix3d e;
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) m.Set(i, j, e(i, j) = d(rng));
        C3DRotMatTpl<double> p;
        C3DXfoMatTpl<double> rest;
        m.GetAffineDecomposition(p, rest);
        C3DVector3Tpl<double> s;
        rest.GetScaling(s);
        double ours[3] = {std::fabs(s.x), std::fabs(s.y), std::fabs(s.z)};
        std::sort(ours, ours + 3, std::greater<double>());
        const Eigen::Vector3d reference = Eigen::JacobiSVD<Eigen::Matrix3d>(e).singularValues();
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(ours[i], reference(i), 1e-12 * reference(0)) << n;
    }
}
#endif

}  // namespace
