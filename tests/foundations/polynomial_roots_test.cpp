#include "math/foundations/polynomial_roots.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace {

constexpr double kUnset = -777.0;  // marks an output that must stay unwritten

struct Roots {
    unsigned int count = 99;
    double r[3] = {kUnset, kUnset, kUnset};
};

// Solves with the finder of the given degree; coefficients from the highest power down.
Roots Solve(int degree, const double* k, double eps = 1e-12) {
    Roots s;
    if (degree == 1) F3DGetLinearRealRoots(k[0], k[1], &s.count, &s.r[0], eps);
    if (degree == 2) F3DGetQuadraticRealRoots(k[0], k[1], k[2], &s.count, &s.r[0], &s.r[1], eps);
    if (degree == 3)
        F3DGetCubicRealRoots(k[0], k[1], k[2], k[3], &s.count, &s.r[0], &s.r[1], &s.r[2], eps);
    return s;
}

TEST(RealRoots, HandWorkedCasesInFormulaOrder) {
    struct Case {
        int degree;
        double k[4];
        double eps;
        unsigned int count;
        double r[3];
    } const cases[] = {
        {1, {2, -3}, 1e-12, 1, {1.5, kUnset, kUnset}},
        {1, {0, 0}, 1e-12, 1, {0, kUnset, kUnset}},  // identically zero: the single root 0
        {1, {0, 5}, 1e-12, 0, {kUnset, kUnset, kUnset}},
        {1, {0.5, 1}, 0.5, 1, {-2, kUnset, kUnset}},         // |a| == eps still divides
        {1, {0.25, 0.5}, 0.5, 0, {kUnset, kUnset, kUnset}},  // |b| == eps is not zero
        {2, {-2, 2, 4}, 1e-12, 2, {-1, 2, kUnset}},           // (sqrt(D) - b) / 2a comes first
        {2, {1, -2, 1}, 1e-12, 0, {kUnset, kUnset, kUnset}},  // the double root is not reported
        {2, {1, 0, 4}, 1e-12, 0, {kUnset, kUnset, kUnset}},
        {2, {1e-13, 4, -2}, 1e-12, 1, {0.5, kUnset, kUnset}},  // linear
        {3, {1, -6, 11, -6}, 1e-12, 3, {3, 2, 1}},
        {3, {-2, 12, -22, 12}, 1e-12, 3, {1, 2, 3}},  // a < 0 reverses the order
        {3, {1, 0, -3, 2}, 1e-12, 3, {-2, 1, 1}},     // the double root comes twice
        {3, {1, 0, 0, -1}, 1e-12, 1, {1, kUnset, kUnset}},
        {3, {1e-30, -6e-30, 11e-30, -6e-30}, 1e-12, 3, {3, 2, 1}},  // the tolerance is relative
        {3, {1e-20, 1, -3, 2}, 1e-12, 2, {2, 1, kUnset}},           // quadratic
        // tol = (1e-20 + 1e-12 + 1 + 2) * 1e-12 exceeds |b| as well: linear. The quadratic
        // with the unscaled 1e-12 would have kept b.
        {3, {1e-20, 1e-12, 1, -2}, 1e-12, 1, {2, kUnset, kUnset}},
        {3, {0, 0, 0, 0}, 1e-12, 1, {0, kUnset, kUnset}},  // tolerance kept positive
    };
    for (const Case& c : cases) {
        const Roots s = Solve(c.degree, c.k, c.eps);
        EXPECT_EQ(s.count, c.count) << c.degree << ": " << c.k[0] << " " << c.k[1];
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(s.r[i], c.r[i], 1e-12) << c.k[0] << " " << c.k[1];
    }
}

TEST(RealRoots, RandomCubicsGiveBackTheirRoots) {
    std::mt19937 rng(7);
    std::uniform_real_distribution<double> u(-4, 4), lead(0.2, 3);
    for (int trial = 0; trial < 1000; ++trial) {
        const double a = trial % 2 ? lead(rng) : -lead(rng);
        double want[3] = {u(rng), u(rng), u(rng)};
        std::sort(want, want + 3);
        if (want[1] - want[0] < 0.1 || want[2] - want[1] < 0.1) continue;
        const double k[4] = {a, -a * (want[0] + want[1] + want[2]),
                             a * (want[0] * want[1] + want[0] * want[2] + want[1] * want[2]),
                             -a * want[0] * want[1] * want[2]};
        Roots s = Solve(3, k);
        ASSERT_EQ(s.count, 3u);
        std::sort(s.r, s.r + 3);
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(s.r[i], want[i], 1e-8);
        // (x - r)(x^2 + p x + q) with p^2 < 4q: the single real root r.
        const double r = want[0], p = u(rng), q = p * p / 4 + lead(rng);
        const double k1[4] = {a, a * (p - r), a * (q - p * r), -a * q * r};
        s = Solve(3, k1);
        ASSERT_EQ(s.count, 1u);
        EXPECT_NEAR(s.r[0], r, 1e-8);
    }
}

TEST(RealRoots, NearlyDoubleRootsStayFinite) {
    // Two roots 3e-11 or 2e-9 apart: rounding pushes the cosine of the trigonometric form just
    // past 1 for these coefficients.
    struct Case {
        double k[4], simple, pair;
    } const cases[] = {
        {{1, -1.9999999999672582, -3.0468750000040927, 6.1523437498925659}, -1.75, 1.875},
        {{1, -1.2500000020954758, -3.8593750007858034, 5.2812500068102963}, -2, 1.625},
        {{1, -0.24999999790452421, -4.3593750028812792, -3.1640625058935257}, 2.5, -1.125},
    };
    for (const Case& c : cases) {
        Roots s = Solve(3, c.k);
        ASSERT_EQ(s.count, 3u);
        std::sort(s.r, s.r + 3);
        const double want[3] = {std::min(c.simple, c.pair), c.pair, std::max(c.simple, c.pair)};
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(s.r[i], want[i], 1e-5) << c.simple;
    }
}

TEST(FindQuadraticRoots, ClassifiesEveryBranch) {
    EXPECT_EQ(F3DFindQuadraticRoots(1, 2, 3, nullptr, nullptr), E_POINTER);
    struct Case {
        double a, b, c;
        HRESULT status;
        tagE3D_QUAD_ROOT_CODE code;
        double r0, r1;
    } const cases[] = {
        {0, 0, 0, S_OK, E3D_QUAD_ANY_ROOT, kUnset, kUnset},
        {0, 0, 1e-9, S_OK, E3D_QUAD_ANY_ROOT, kUnset, kUnset},
        {0, 0, 1, S_FALSE, E3D_QUAD_NO_ROOT, kUnset, kUnset},
        {1e-10, 2, -3, S_OK, E3D_QUAD_ONE_ROOT, 1.5, kUnset},  // linear
        {1, 0, -4, S_OK, E3D_QUAD_TWO_ROOTS, 2, -2},
        {1, 0, 4, S_FALSE, E3D_QUAD_NO_ROOT, kUnset, kUnset},
        {1, 0, -1e-10, S_OK, E3D_QUAD_ONE_ROOT, 0, kUnset},  // -c/a within the tolerance
        {1, 0, 1e-10, S_OK, E3D_QUAD_ONE_ROOT, 0, kUnset},
        {2, 6, 0, S_OK, E3D_QUAD_TWO_ROOTS, -3, 0},
        {1, -2, 1, S_OK, E3D_QUAD_ONE_ROOT, 1, kUnset},                  // double root
        {1, 1, 0.25 + 1.25e-10, S_OK, E3D_QUAD_ONE_ROOT, -0.5, kUnset},  // D = -5e-10
        {1, -3, 2, S_OK, E3D_QUAD_TWO_ROOTS, 2, 1},
        {1, 3, 2, S_OK, E3D_QUAD_TWO_ROOTS, -2, -1},
        {1, 1, 1, S_FALSE, E3D_QUAD_NO_ROOT, kUnset, kUnset},
        // x^2 - 1e8 x + 1: the small root 1e-8 survives (the textbook form loses it).
        {1, -1e8, 1, S_OK, E3D_QUAD_TWO_ROOTS, 1e8, 1e-8},
    };
    for (const Case& c : cases) {
        tagE3D_QUAD_ROOT_CODE code = E3D_QUAD_ANY_ROOT;
        double roots[2] = {kUnset, kUnset};
        EXPECT_EQ(F3DFindQuadraticRoots(c.a, c.b, c.c, &code, roots), c.status) << c.a << c.b;
        EXPECT_EQ(code, c.code) << c.a << " " << c.b << " " << c.c;
        EXPECT_NEAR(roots[0], c.r0, 4e-16 * std::fabs(c.r0)) << c.a << " " << c.b << " " << c.c;
        EXPECT_NEAR(roots[1], c.r1, 4e-16 * std::fabs(c.r1)) << c.a << " " << c.b << " " << c.c;
    }
}

}  // namespace
