#include <gtest/gtest.h>

#include "fft_reference.h"
#include "math/signal/fft_kernels.h"

using namespace fftref;

namespace {

using Kernel = void (*)(int, int, double*, int*, double*);
struct Case {
    const char* name;
    Kernel kernel;
    Vec (*reference)(int, int, const Vec&);
};
const Case kCases[] = {
    {"cdft", cdft, Cdft}, {"rdft", rdft, Rdft}, {"ddct", ddct, Ddct}, {"ddst", ddst, Ddst}};

Vec Apply(Kernel kernel, int n, int isgn, Vec a, Tables& tb) {
    kernel(n, isgn, a.data(), tb.ip.data(), tb.w.data());
    return a;
}
Vec Fresh(Kernel kernel, int n, int isgn, const Vec& a) {
    Tables tb(n);
    return Apply(kernel, n, isgn, a, tb);
}
// dfct (sine false, n + 1 values) or dfst (n values).
Vec Symmetric1(bool sine, int n, Vec a, Tables& tb) {
    (sine ? dfst : dfct)(n, a.data(), tb.t.data(), tb.ip.data(), tb.w.data());
    return a;
}

// Every size from 2 to 1024 and both directions; any positive isgn (or 0) acts as +1, any
// negative one as -1.
TEST(Kernels1d, AgreeWithTheDefiningSums) {
    for (int n = 2; n <= 1024; n *= 2) {
        for (const Case& c : kCases)
            for (int isgn : {1, -1}) {
                const Vec a = Random(n, unsigned(3 * n + isgn)), out = Fresh(c.kernel, n, isgn, a);
                EXPECT_LE(RelError(out, c.reference(n, isgn, a)), kTol)
                    << c.name << " " << n << " " << isgn;
                if (n == 64) {
                    EXPECT_EQ(Fresh(c.kernel, n, isgn > 0 ? 0 : -5, a), out) << c.name;
                }
            }
        for (bool sine : {false, true}) {
            Tables tb(n);
            const Vec a = Random(sine ? n : n + 1, unsigned(n));
            EXPECT_LE(RelError(Symmetric1(sine, n, a, tb), Symmetric(sine, n, a)), kTol)
                << sine << " " << n;
        }
    }
}

// Beyond what the sums afford, on inputs with four non-zero values (the complex transforms of
// these sizes go depth first through the cache).
TEST(Kernels1d, LargeSizesAgreeOnSparseInputs) {
    for (int n : {1 << 17, 1 << 19}) {
        Vec a(n, 0.0);
        std::mt19937 rng{unsigned(n)};
        std::vector<int> at;
        for (int i = 0; i < 4; ++i) at.push_back(int(rng() % unsigned(n))), a[at.back()] = 1.0 + i;
        Tables tb(n);
        std::vector<long double> ec(n, 0), er(n, 0), ed(n, 0);
        for (int j : at)
            for (int k = 0; k < n; ++k) {
                if (k < n / 2) {  // complex value j/2 (real or imaginary part) at bin k
                    const Cplx z =
                        (j % 2 ? Cplx(0, a[j]) : Cplx(a[j], 0)) * Turn(-1LL * (j / 2) * k, n / 2);
                    ec[2 * k] += z.real(), ec[2 * k + 1] += z.imag();
                    const Cplx e = Turn(1LL * j * k, n);
                    if (k == 0)
                        er[0] += a[j], er[1] += j % 2 ? -a[j] : a[j];
                    else
                        er[2 * k] += a[j] * e.real(), er[2 * k + 1] += a[j] * e.imag();
                }
                ed[k] += a[j] * Turn((2LL * j + 1) * k, 4LL * n).real();
            }
        EXPECT_LE(RelError(Apply(cdft, n, -1, a, tb), Vec(ec.begin(), ec.end())), kTol) << n;
        EXPECT_LE(RelError(Apply(rdft, n, 1, a, tb), Vec(er.begin(), er.end())), kTol) << n;
        EXPECT_LE(RelError(Apply(ddct, n, -1, a, tb), Vec(ed.begin(), ed.end())), kTol) << n;
    }
}

// The published package's outputs for ramps (ten significant digits): the sums above read the
// definitions the same way.
TEST(Kernels1d, ReproduceThePublishedExamples) {
    const Vec r9 = {1, 2, 3, 4, 5, 6, 7, 8, 9}, r8(r9.begin(), r9.end() - 1);
    const Vec packed = {36, -4, -4, -9.656854249, -4, -4, -4, -1.656854249};
    const struct {
        int routine, n, isgn;  // cdft, rdft, ddct, ddst, dfct, dfst
        Vec in, out;
    } examples[] = {
        // clang-format off
        {0, 8, 1, r8, {16, 20, 0, -8, -4, -4, -8, 0}},
        {0, 8, -1, r8, {16, 20, -8, 0, -4, -4, 0, -8}},
        {1, 8, 1, r8, packed},
        {1, 8, -1, packed, {4, 8, 12, 16, 20, 24, 28, 32}},
        {1, 2, 1, {3, 5}, {8, -2}},
        {1, 2, -1, {3, 5}, {4, -1}},
        {2, 8, -1, r8, {36, -12.88464605, 0, -1.346909602, 0, -0.4018058075, 0, -0.1014046455}},
        {2, 8, 1, r8, {20.16754951, -17.30133595, 7.793870699, -5.604453576, 3.774676139,
                       -2.22672565, 1.592055274, -0.1956364542}},
        {3, 8, -1, r8, {-4, 23.06623903, -10.45250372, 8.099786008, -5.656854249, 5.412103982,
                        -4.329568801, 4.588160212}},
        {3, 8, 1, r8, {27.59830242, 2.181455098, -1.439528641, 3.488064052, -2.671282185,
                       3.445830029, -3.075321856, 3.296820563}},
        {4, 8, 0, r9, {45, -17.13707118, 5, -5.619914404, 5, -4.723231346, 5, -4.519783065, 5}},
        {5, 8, 0, {99, 1, 2, 3, 4, 5, 6, 7}, {0, 20.10935797, -9.656854249, 5.986423051, -4,
                                              2.672714552, -1.656854249, 0.7956494695}},
        // clang-format on
    };
    for (const auto& e : examples) {
        Tables tb(16);
        const Vec got = e.routine >= 4 ? Symmetric1(e.routine == 5, e.n, e.in, tb)
                                       : Apply(kCases[e.routine].kernel, e.n, e.isgn, e.in, tb);
        for (size_t i = 0; i < got.size(); ++i)
            EXPECT_NEAR(got[i], e.out[i], 1e-9 * (1 + std::fabs(e.out[i]))) << e.routine << i;
    }
}

// ip[0], ip[1] after a first call record the table lengths; a table built for a larger size,
// by any routine, then serves every smaller call with bit-identical results, unchanged.
TEST(Kernels1d, RecordTheirTablesAndReuseLargerOnes) {
    for (int n = 2; n <= 1024; n *= 2) {
        // cdft, rdft, ddct, ddst, dfct, dfst (makewt resets a stale ip[1]).
        const int expected[6][2] = {
            {n >> 2, 1}, {n >> 2, n > 4 ? n >> 2 : 1}, {n >> 2, n},
            {n >> 2, n}, {n >> 3, n > 2 ? n >> 1 : 1}, {n >> 3, n > 2 ? n >> 1 : 1}};
        for (int i = 0; i < 6; ++i) {
            Tables tb(n);
            tb.ip[1] = 12345;
            if (i < 4) Apply(kCases[i].kernel, n, i % 2 ? 1 : -1, Vec(n, 1.0), tb);
            if (i >= 4) Symmetric1(i == 5, n, Vec(n + 1, 1.0), tb);
            EXPECT_EQ(std::vector<int>(tb.ip.begin(), tb.ip.begin() + 2),
                      std::vector<int>(expected[i], expected[i] + 2))
                << i << " " << n;
        }
    }
    for (Kernel builder : {cdft, rdft, ddct}) {
        Tables big(1024);
        Apply(builder, 1024, 1, Random(1024, 1), big);
        const std::vector<int> before = big.ip;
        for (int n = 2; n <= 1024; n *= 2) {
            for (const Case& c : kCases)
                for (int isgn : {1, -1}) {
                    const Vec a = Random(n, unsigned(n + isgn));
                    EXPECT_EQ(Apply(c.kernel, n, isgn, a, big), Fresh(c.kernel, n, isgn, a))
                        << c.name << " " << n;
                }
            for (bool sine : {false, true}) {
                const Vec a = Random(n + 1, 3);
                Tables fresh(n);
                EXPECT_EQ(Symmetric1(sine, n, a, big), Symmetric1(sine, n, a, fresh)) << n;
            }
        }
        if (builder == ddct) {
            EXPECT_EQ(big.ip, before);  // ddct's tables already serve every routine
        }
    }
}

TEST(Kernels1d, OtherSizesActAsThePowerOfTwoBelowAndTinyOnesChangeNothing) {
    for (const Case& c : kCases) {
        const Vec a = Random(1000, 4);
        Vec expected = a;
        Tables tb(1024);
        c.kernel(512, 1, expected.data(), tb.ip.data(), tb.w.data());
        EXPECT_EQ(Fresh(c.kernel, 1000, 1, a), expected) << c.name;
        for (int n : {1, 0, -8}) {
            Tables t3(4);
            t3.ip[0] = 77;
            EXPECT_EQ(Apply(c.kernel, n, 1, {3, 4}, t3), Vec({3, 4})) << c.name << " " << n;
            EXPECT_EQ(t3.ip[0], 77);
        }
    }
}

}  // namespace
