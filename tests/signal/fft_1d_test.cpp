#include "math/signal/fft_kernels.h"

#include <gtest/gtest.h>

#include "fft_reference.h"

using namespace fftref;

namespace {

using Kernel = void (*)(int, int, double*, int*, double*);
using Reference = Vec (*)(int, int, const Vec&);
struct SignedCase {
    const char* name;
    Kernel kernel;
    Reference reference;
};
const SignedCase kSigned[] = {
    {"cdft", cdft, Cdft}, {"rdft", rdft, Rdft}, {"ddct", ddct, Ddct}, {"ddst", ddst, Ddst}};

Vec Apply(Kernel kernel, int n, int isgn, Vec a, Tables& tb) {
    kernel(n, isgn, a.data(), tb.ip.data(), tb.w.data());
    return a;
}
Vec RunFresh(Kernel kernel, int n, int isgn, const Vec& a) {
    Tables tb(n);
    return Apply(kernel, n, isgn, a, tb);
}
Vec RunSymmetric(bool cosine, int n, Vec a, Tables& tb) {
    (cosine ? dfct : dfst)(n, a.data(), tb.t.data(), tb.ip.data(), tb.w.data());
    return a;
}

TEST(Kernels1d, AgreeWithTheDefiningSumsAtEverySizeAndDirection) {
    for (int n = 2; n <= 1024; n *= 2) {
        for (const SignedCase& c : kSigned)
            for (int isgn : {1, -1}) {
                const Vec a = Random(n, unsigned(3 * n + isgn));
                EXPECT_LE(RelError(RunFresh(c.kernel, n, isgn, a), c.reference(n, isgn, a)), kTol)
                    << c.name << " n=" << n << " isgn=" << isgn;
            }
        Tables tb(n);
        const Vec s = Random(n + 1, unsigned(n));
        EXPECT_LE(RelError(RunSymmetric(true, n, s, tb), Dfct(n, s)), kTol) << "dfct n=" << n;
        Tables tb2(n);
        EXPECT_LE(RelError(RunSymmetric(false, n, Vec(s.begin(), s.end() - 1), tb2), Dfst(n, s)),
                  kTol)
            << "dfst n=" << n;
    }
}

TEST(Kernels1d, OnlyTheSignOfTheDirectionMatters) {
    for (const SignedCase& c : kSigned)
        for (int n : {8, 256}) {
            const Vec a = Random(n, 5);
            EXPECT_EQ(RunFresh(c.kernel, n, 0, a), RunFresh(c.kernel, n, 1, a)) << c.name;
            EXPECT_EQ(RunFresh(c.kernel, n, 7, a), RunFresh(c.kernel, n, 1, a)) << c.name;
            EXPECT_EQ(RunFresh(c.kernel, n, -3, a), RunFresh(c.kernel, n, -1, a)) << c.name;
        }
}

// The inverse of each transform up to its documented scale returns the input.
TEST(Kernels1d, ForwardThenInverseWithTheDocumentedScaleReturnsTheInput) {
    for (int n = 2; n <= 1024; n *= 4) {
        const Vec x = Random(n, 11);
        Tables tb(n);
        const double scale = 2.0 / n;
        auto scaled = [scale](Vec v) {
            for (double& e : v) e *= scale;
            return v;
        };
        EXPECT_LE(RelError(scaled(Apply(cdft, n, 1, Apply(cdft, n, -1, x, tb), tb)), x), kTol);
        EXPECT_LE(RelError(scaled(Apply(rdft, n, -1, Apply(rdft, n, 1, x, tb), tb)), x), kTol);
        for (Kernel k : {ddct, ddst}) {
            Vec y = Apply(k, n, -1, x, tb);
            y[0] *= 0.5;
            EXPECT_LE(RelError(scaled(Apply(k, n, 1, y, tb)), x), kTol);
        }
        const Vec e = Random(n + 1, 12);
        Vec y = e;
        for (int pass = 0; pass < 2; ++pass) {  // "halve the ends, transform" twice: n/2 identity
            y[0] *= 0.5;
            y[n] *= 0.5;
            y = RunSymmetric(true, n, y, tb);
        }
        EXPECT_LE(RelError(scaled(y), e), kTol);
        Vec s = Random(n, 13);
        s[0] = 0;
        EXPECT_LE(RelError(scaled(RunSymmetric(false, n, RunSymmetric(false, n, s, tb), tb)), s),
                  kTol);
    }
}

// Outputs of the published package for these inputs, as printed (ten significant digits).
struct Example {
    const char* name;
    int n, isgn;
    Vec in, out;
};
Vec Ramp(int n) {
    Vec v(n);
    for (int i = 0; i < n; ++i) v[i] = i + 1;
    return v;
}
Vec Unit(int n, int i) {
    Vec v(n, 0.0);
    v[i] = 1;
    return v;
}

TEST(Kernels1d, ReproduceThePublishedExamples) {
    const double r = 0.7071067812;
    const Example examples[] = {
        {"cdft", 8, 1, Unit(8, 2), {1, 0, 0, 1, -1, 0, 0, -1}},
        {"cdft", 8, -1, Unit(8, 2), {1, 0, 0, -1, -1, 0, 0, 1}},
        {"cdft", 8, 1, Ramp(8), {16, 20, 0, -8, -4, -4, -8, 0}},
        {"cdft", 8, -1, Ramp(8), {16, 20, -8, 0, -4, -4, 0, -8}},
        {"rdft", 8, 1, Ramp(8), {36, -4, -4, -9.656854249, -4, -4, -4, -1.656854249}},
        {"rdft", 8, 1, Unit(8, 1), {1, -1, r, r, 0, 1, -r, r}},
        {"rdft",
         8,
         -1,
         {36, -4, -4, -9.656854249, -4, -4, -4, -1.656854249},
         {4, 8, 12, 16, 20, 24, 28, 32}},
        {"rdft", 8, -1, Unit(8, 1), {0.5, -0.5, 0.5, -0.5, 0.5, -0.5, 0.5, -0.5}},
        {"rdft", 8, -1, Unit(8, 3), {0, r, 1, r, 0, -r, -1, -r}},
        {"rdft", 4, 1, Ramp(4), {10, -2, -2, -2}},
        {"rdft", 2, 1, {3, 5}, {8, -2}},
        {"rdft", 2, -1, {3, 5}, {4, -1}},
        {"ddct",
         8,
         -1,
         Ramp(8),
         {36, -12.88464605, 0, -1.346909602, 0, -0.4018058075, 0, -0.1014046455}},
        {"ddct", 8, 1, Unit(8, 0), {1, 1, 1, 1, 1, 1, 1, 1}},
        {"ddct",
         8,
         1,
         Ramp(8),
         {20.16754951, -17.30133595, 7.793870699, -5.604453576, 3.774676139, -2.22672565,
          1.592055274, -0.1956364542}},
        {"ddst",
         8,
         -1,
         Unit(8, 0),
         {1, 0.195090322, 0.3826834324, 0.555570233, 0.7071067812, 0.8314696123, 0.9238795325,
          0.9807852804}},
        {"ddst",
         8,
         -1,
         Ramp(8),
         {-4, 23.06623903, -10.45250372, 8.099786008, -5.656854249, 5.412103982, -4.329568801,
          4.588160212}},
        {"ddst", 8, 1, Unit(8, 0), {1, -1, 1, -1, 1, -1, 1, -1}},
        {"ddst",
         8,
         1,
         Ramp(8),
         {27.59830242, 2.181455098, -1.439528641, 3.488064052, -2.671282185, 3.445830029,
          -3.075321856, 3.296820563}},
        {"dfct", 8, 0, Unit(9, 8), {1, -1, 1, -1, 1, -1, 1, -1, 1}},
        {"dfct",
         8,
         0,
         Ramp(9),
         {45, -17.13707118, 5, -5.619914404, 5, -4.723231346, 5, -4.519783065, 5}},
        {"dfct", 8, 0, {0.5, 0, 0, 0, 0, 0, 0, 0, 0.5}, {1, 0, 1, 0, 1, 0, 1, 0, 1}},
        {"dfst",
         8,
         0,
         {99, 1, 2, 3, 4, 5, 6, 7},
         {0, 20.10935797, -9.656854249, 5.986423051, -4, 2.672714552, -1.656854249, 0.7956494695}},
    };
    for (const Example& e : examples) {
        Tables tb(16);
        const std::string name = e.name;
        Vec got = e.in;
        if (name == "dfct" || name == "dfst") {
            got = RunSymmetric(name == "dfct", e.n, got, tb);
        } else {
            const Kernel k = name == "cdft"   ? cdft
                             : name == "rdft" ? rdft
                             : name == "ddct" ? ddct
                                              : ddst;
            got = Apply(k, e.n, e.isgn, got, tb);
        }
        ASSERT_EQ(got.size(), e.out.size());
        for (size_t i = 0; i < got.size(); ++i)
            EXPECT_NEAR(got[i], e.out[i], 1e-9 * (1 + std::fabs(e.out[i]))) << e.name << " #" << i;
    }
}

// ip[0], ip[1] after a first call: the twiddle and cosine table lengths each routine needs.
TEST(Kernels1d, RecordTheirTableSizesInIp) {
    for (int n = 2; n <= 1024; n *= 2) {
        struct Expect {
            const char* name;
            int ip0, ip1;
        };
        auto check = [n](const char* name, auto call, int ip0, int ip1) {
            Tables tb(n);
            tb.ip[1] = 12345;  // overwritten: makewt resets it
            call(tb);
            EXPECT_EQ(tb.ip[0], ip0) << name << " n=" << n;
            EXPECT_EQ(tb.ip[1], ip1) << name << " n=" << n;
        };
        Vec a(n + 1, 1.0);
        check(
            "cdft", [&](Tables& tb) { cdft(n, 1, a.data(), tb.ip.data(), tb.w.data()); }, n >> 2,
            1);
        check(
            "rdft", [&](Tables& tb) { rdft(n, 1, a.data(), tb.ip.data(), tb.w.data()); }, n >> 2,
            n > 4 ? n >> 2 : 1);
        check(
            "ddct", [&](Tables& tb) { ddct(n, 1, a.data(), tb.ip.data(), tb.w.data()); }, n >> 2,
            n);
        check(
            "ddst", [&](Tables& tb) { ddst(n, -1, a.data(), tb.ip.data(), tb.w.data()); }, n >> 2,
            n);
        check(
            "dfct", [&](Tables& tb) { dfct(n, a.data(), tb.t.data(), tb.ip.data(), tb.w.data()); },
            n >> 3, n > 2 ? n >> 1 : 1);
        check(
            "dfst", [&](Tables& tb) { dfst(n, a.data(), tb.t.data(), tb.ip.data(), tb.w.data()); },
            n >> 3, n > 2 ? n >> 1 : 1);
    }
}

// A table built for a larger size, by any routine, serves smaller calls of every routine: the
// results are bit for bit those of fresh tables and the table is left as it was.
TEST(Kernels1d, ReuseLargerTablesWithIdenticalResults) {
    for (Kernel builder : {cdft, rdft, ddct}) {
        Tables big(1024);
        Vec warm = Random(1024, 1);
        builder(1024, 1, warm.data(), big.ip.data(), big.w.data());
        for (int n = 2; n <= 1024; n *= 2) {
            for (const SignedCase& c : kSigned)
                for (int isgn : {1, -1}) {
                    const Vec a = Random(n, unsigned(n + isgn));
                    const std::vector<int> before = big.ip;
                    const Vec fresh = RunFresh(c.kernel, n, isgn, a);
                    const Vec reused = Apply(c.kernel, n, isgn, a, big);
                    EXPECT_EQ(reused, fresh) << c.name << " n=" << n << " after a 1024 build";
                    if (builder == ddct) {
                        EXPECT_EQ(big.ip, before) << c.name << " n=" << n;
                    }
                }
            const Vec s = Random(n + 1, 3);
            Tables fresh(n);
            EXPECT_EQ(RunSymmetric(true, n, s, big), RunSymmetric(true, n, s, fresh)) << n;
            EXPECT_EQ(RunSymmetric(false, n, Vec(s.begin(), s.end() - 1), big),
                      RunSymmetric(false, n, Vec(s.begin(), s.end() - 1), fresh))
                << n;
        }
    }
}

TEST(Kernels1d, OtherSizesActAsTheLargestPowerOfTwoBelowAndTinyOnesAreLeftAlone) {
    for (const SignedCase& c : kSigned) {
        Vec a = Random(1000, 4);
        Vec expected = a;
        Tables tb(1024), tb2(1024);
        c.kernel(1000, 1, a.data(), tb.ip.data(), tb.w.data());
        c.kernel(512, 1, expected.data(), tb2.ip.data(), tb2.w.data());
        EXPECT_EQ(a, expected) << c.name;
        for (int n : {1, 0, -8}) {
            Vec b = {3, 4};
            Tables t3(4);
            t3.ip[0] = 77;
            c.kernel(n, 1, b.data(), t3.ip.data(), t3.w.data());
            EXPECT_EQ(b, Vec({3, 4})) << c.name << " n=" << n;
            EXPECT_EQ(t3.ip[0], 77);
        }
    }
}

}  // namespace

namespace {

// Beyond the sizes the direct sums can afford: inputs with a few non-zero values, whose sums
// cost little. The complex transforms of these sizes go depth first through the cache.
TEST(Kernels1d, LargeSizesAgreeWithTheSumsOnSparseInputs) {
    for (int n : {1 << 17, 1 << 19})
        for (int isgn : {1, -1}) {
            Vec a(n, 0.0);
            std::mt19937 rng(unsigned(n + isgn));
            std::vector<int> at;
            for (int i = 0; i < 4; ++i) {
                at.push_back(int(rng() % unsigned(n)));
                a[at.back()] = 1.0 + i;
            }
            Tables tb(n);
            const int N = n / 2;
            Vec c = Apply(cdft, n, isgn, a, tb), r = Apply(rdft, n, 1, a, tb),
                d = Apply(ddct, n, -1, a, tb);
            Vec ec(n, 0.0), er(n, 0.0), ed(n, 0.0);
            for (int j : at) {
                for (int k = 0; k < N; ++k) {  // complex value j/2, real or imaginary part
                    const Cplx z =
                        (j % 2 ? Cplx(0, a[j]) : Cplx(a[j], 0)) * Turn(isgn * 1LL * (j / 2) * k, N);
                    ec[2 * k] += double(z.real());
                    ec[2 * k + 1] += double(z.imag());
                }
                for (int k = 1; k < N; ++k) {
                    er[2 * k] += double(a[j] * Turn(1LL * j * k, n).real());
                    er[2 * k + 1] += double(a[j] * Turn(1LL * j * k, n).imag());
                }
                er[0] += a[j];
                er[1] += j % 2 ? -a[j] : a[j];
                for (int k = 0; k < n; ++k)
                    ed[k] += double(a[j] * QuarterCos((2LL * j + 1) * k, n));
            }
            EXPECT_LE(RelError(c, ec), kTol) << n << " " << isgn;
            EXPECT_LE(RelError(r, er), kTol) << n;
            EXPECT_LE(RelError(d, ed), kTol) << n;
        }
}

}  // namespace
