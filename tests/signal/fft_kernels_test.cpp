#include <gtest/gtest.h>
#include <sys/resource.h>

#include "fft_reference.h"

using namespace fftref;

namespace {

// Both directions against the sums, the real DFT's inverse on the spectrum of a known array
// (which it returns times the size / 2, leaving the extra doubles of sorted rows alone); any
// positive isgn (or 0) acts as +1, any negative one as -1.
void Check(int kind, const std::vector<int>& dims) {
    int size = 1;
    for (int d : dims) size *= d;
    const int m = dims.back(), row = kind == kSorted ? m + 2 : m;
    for (int s : {1, -1}) {
        const Vec a = Random(kind == kDct1 ? size + 1 : size / m * row, unsigned(size + s));
        Vec in = a, expected = Expected(kind, s, dims, a);
        if ((kind == kReal || kind == kSorted) && s < 0) {
            in = expected;
            for (size_t i = 0; i < a.size(); ++i)
                expected[i] = int(i) % row < m ? a[i] * size / 2 : in[i];
        }
        const Vec out = Transform(kind, s, dims, in);
        EXPECT_LE(RelError(out, expected), kTol)
            << kind << " " << s << " " << testing::PrintToString(dims);
        if (size == 64) {
            EXPECT_EQ(Transform(kind, s > 0 ? 0 : -5, dims, in), out);
        }
    }
}

// Every size from 2 to 1024, every 2D shape up to 2048 values (1 x 1024 and 1024 x 2 among
// them), 3D ones up to 512 and two with a long last dimension. rdft2d with four rows or more
// untangles the folded columns with a loop over row pairs (i, n1 - i) through a double**, the
// shape GCC 12 at -O2 has been seen to drop from its caller: this test runs at -O2.
TEST(Kernels, AgreeWithTheDefiningSumsForEveryShape) {
    std::vector<std::vector<int>> shapes = {{2, 2, 256}, {4, 2, 256}};
    for (int n1 = 1; n1 <= 1024; n1 *= 2) {
        if (n1 > 1) shapes.push_back({n1});
        for (int n2 = 2; n1 * n2 <= 2048; n2 *= 2) shapes.push_back({n1, n2});
    }
    for (int n1 = 1; n1 <= 64; n1 *= 2)
        for (int n2 = 1; n1 * n2 <= 128; n2 *= 2)
            for (int n3 = 2; n1 * n2 * n3 <= 512; n3 *= 2) shapes.push_back({n1, n2, n3});
    for (const auto& dims : shapes) {
        const bool one = dims.size() == 1, ones = std::count(dims.begin(), dims.end() - 1, 1);
        const bool valid[] = {true, !ones, !ones, !ones, one, one, !one && !ones};  // by kind
        for (int kind = kComplex; kind <= kSorted; ++kind)
            if (valid[kind]) Check(kind, dims);
    }
}

// Beyond what the dense sums afford, on inputs with four non-zero values (the complex transforms
// of these sizes go depth first through the cache).
TEST(Kernels, LargeSizesAgreeOnSparseInputs) {
    for (int n : {1 << 17, 1 << 19}) {
        Vec a(n, 0.0);
        std::mt19937 rng{unsigned(n)};
        for (int i = 0; i < 4; ++i) a[rng() % unsigned(n)] = 1.0 + i;
        Tables tb(n);
        for (int kind : {kComplex, kReal, kCosine}) {
            const int s = kind == kReal ? 1 : -1;
            EXPECT_LE(RelError(Transform(kind, s, {n}, a, &tb), Expected(kind, s, {n}, a)), kTol)
                << kind << " " << n;
        }
    }
}

// The published package's outputs for ramps (ten significant digits): the sums above read the
// definitions the same way.
TEST(Kernels1d, ReproduceThePublishedExamples) {
    const Vec r9 = {1, 2, 3, 4, 5, 6, 7, 8, 9}, r8(r9.begin(), r9.end() - 1);
    const Vec packed = {36, -4, -4, -9.656854249, -4, -4, -4, -1.656854249};
    const struct {
        int kind, n, isgn;
        Vec in, out;
    } examples[] = {
        // clang-format off
        {kComplex, 8, 1, r8, {16, 20, 0, -8, -4, -4, -8, 0}},
        {kComplex, 8, -1, r8, {16, 20, -8, 0, -4, -4, 0, -8}},
        {kReal, 8, 1, r8, packed},
        {kReal, 8, -1, packed, {4, 8, 12, 16, 20, 24, 28, 32}},
        {kReal, 2, 1, {3, 5}, {8, -2}},
        {kReal, 2, -1, {3, 5}, {4, -1}},
        {kCosine, 8, -1, r8, {36, -12.88464605, 0, -1.346909602, 0, -0.4018058075, 0, -0.1014046455}},
        {kCosine, 8, 1, r8, {20.16754951, -17.30133595, 7.793870699, -5.604453576, 3.774676139,
                             -2.22672565, 1.592055274, -0.1956364542}},
        {kSine, 8, -1, r8, {-4, 23.06623903, -10.45250372, 8.099786008, -5.656854249, 5.412103982,
                            -4.329568801, 4.588160212}},
        {kSine, 8, 1, r8, {27.59830242, 2.181455098, -1.439528641, 3.488064052, -2.671282185,
                           3.445830029, -3.075321856, 3.296820563}},
        {kDct1, 8, 0, r9, {45, -17.13707118, 5, -5.619914404, 5, -4.723231346, 5, -4.519783065, 5}},
        {kDst1, 8, 0, {99, 1, 2, 3, 4, 5, 6, 7}, {0, 20.10935797, -9.656854249, 5.986423051, -4,
                                                  2.672714552, -1.656854249, 0.7956494695}},
        // clang-format on
    };
    for (const auto& e : examples)
        EXPECT_LE(RelError(Transform(e.kind, e.isgn, {e.n}, e.in), e.out), 1e-9) << e.kind;
}

// ip[0], ip[1] after a first call record the table lengths; a table built for a larger size,
// by any routine, then serves every smaller call with bit-identical results, unchanged.
TEST(Kernels1d, RecordTheirTablesAndReuseLargerOnes) {
    for (int n = 2; n <= 1024; n *= 2) {
        // cdft, rdft, ddct, ddst, dfct, dfst (makewt resets a stale ip[1]).
        const std::pair<int, int> expected[] = {
            {n >> 2, 1}, {n >> 2, n > 4 ? n >> 2 : 1}, {n >> 2, n},
            {n >> 2, n}, {n >> 3, n > 2 ? n >> 1 : 1}, {n >> 3, n > 2 ? n >> 1 : 1}};
        for (int kind = kComplex; kind <= kDst1; ++kind) {
            Tables tb(n);
            tb.ip[1] = 12345;
            Transform(kind, kind % 2 ? 1 : -1, {n}, Vec(n + 1, 1.0), &tb);
            EXPECT_EQ(std::make_pair(tb.ip[0], tb.ip[1]), expected[kind]) << kind << " " << n;
        }
    }
    for (int builder : {kComplex, kReal, kCosine}) {
        Tables big(1024);
        Transform(builder, 1, {1024}, Random(1024, 1), &big);
        const std::vector<int> before = big.ip;
        for (int n = 2; n <= 1024; n *= 2)
            for (int kind = kComplex; kind <= kDst1; ++kind)
                for (int isgn : {1, -1}) {
                    const Vec a = Random(n + 1, unsigned(n + isgn));
                    EXPECT_EQ(Transform(kind, isgn, {n}, a, &big), Transform(kind, isgn, {n}, a))
                        << kind << " " << n;
                }
        if (builder == kCosine) {
            EXPECT_EQ(big.ip, before);  // ddct's tables already serve every routine
        }
    }
}

TEST(Kernels1d, OtherSizesActAsThePowerOfTwoBelowAndTinyOnesChangeNothing) {
    for (int kind = kComplex; kind <= kSine; ++kind) {
        const Vec a = Random(1000, 4);
        EXPECT_EQ(Transform(kind, 1, {1000}, a), Transform(kind, 1, {512}, a)) << kind;
        for (int n : {1, 0, -8}) {
            Tables t3(4);
            t3.ip[0] = 77;
            EXPECT_EQ(Transform(kind, 1, {n}, {3, 4}, &t3), Vec({3, 4})) << kind << " " << n;
            EXPECT_EQ(t3.ip[0], 77);
        }
    }
}

// Without a work area the 2D/3D routines allocate their own; ip[0], ip[1] record the tables.
TEST(Kernels2d3d, WithoutAWorkAreaTheyAllocateTheirOwnAndRecordTheirTables) {
    const struct {
        int kind;
        std::vector<int> dims;
        std::pair<int, int> ip;
    } cases[] = {
        {kComplex, {64, 4}, {32, 1}},   {kComplex, {4, 8, 8}, {4, 1}}, {kReal, {256, 16}, {128, 4}},
        {kReal, {2, 2, 256}, {64, 64}}, {kReal, {16, 2, 4}, {8, 1}},   {kCosine, {16, 4}, {4, 16}},
        {kCosine, {32, 8, 4}, {8, 32}}, {kSine, {8, 32}, {8, 32}},     {kSine, {4, 8, 8}, {2, 8}}};
    for (const auto& c : cases)
        for (int s : {1, -1}) {
            int size = 1;
            for (int d : c.dims) size *= d;
            const Vec a = Random(size, 5);
            Tables tb(256);
            EXPECT_EQ(Transform(c.kind, s, c.dims, a, nullptr, true),
                      Transform(c.kind, s, c.dims, a, &tb))
                << c.kind << " " << c.dims[0];
            EXPECT_EQ(std::make_pair(tb.ip[0], tb.ip[1]), c.ip) << c.kind << " " << c.dims[0];
        }
}

#if !defined(__SANITIZE_ADDRESS__)
// A work area that cannot be allocated (the child process's address space is capped).
TEST(Kernels2d3dDeathTest, AFailedWorkAreaAllocationEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    auto cap = [] {
        rlimit limit{};
        getrlimit(RLIMIT_AS, &limit);
        limit.rlim_cur = rlim_t(1) << 30;
        setrlimit(RLIMIT_AS, &limit);
    };
    int ip[2] = {0, 0};
    EXPECT_EXIT((cap(), cdft2d(1 << 28, 2, 1, nullptr, nullptr, ip, nullptr)),
                testing::ExitedWithCode(1), "^fft2d memory allocation error\n$");
    EXPECT_EXIT((cap(), ddct3d(1 << 28, 2, 2, 1, nullptr, nullptr, ip, nullptr)),
                testing::ExitedWithCode(1), "^fft3d memory allocation error\n$");
}
#endif

// Published outputs: the 4 x 8 complex impulse, the 4 x 4 cosine and sine transforms, and the
// sorted layouts of the 4 x 4 and 2 x 4 x 4 real transforms, which the inverse sort reads back
// (ignoring the redundant entries) and the inverse transform restores.
TEST(Kernels2d3d, ReproduceThePublishedExamplesAndSortedLayouts) {
    Vec impulse(32, 0.0);
    impulse[10] = 1;  // x[1][1]
    const Vec x = Transform(kComplex, 1, {4, 8}, impulse);
    for (int k = 0; k < 16; ++k) {  // i^(k1 + k2)
        const int p = (k / 4 + k % 4) % 4;
        EXPECT_EQ(x[2 * k], p == 0 ? 1 : p == 2 ? -1 : 0);
        EXPECT_EQ(x[2 * k + 1], p == 1 ? 1 : p == 3 ? -1 : 0);
    }
    // clang-format off
    const Vec in2 = {1, 2, 0, -1, 3, 0, 1, 2, 0, -2, 4, 1, 2, 1, -1, 0};
    const Vec in3 = {-5, 2, -2, 5, 1, -3, 4, 0, -4, 3, -1, -5, 2, -2, 5, 1,
                     -3, 4, 0, -4, 3, -1, -5, 2, -2, 5, 1, -3, 4, 0, -4, 3};
    const struct {
        std::vector<int> dims;  // transform sizes; rows hold two more doubles
        Vec in, sorted;         // sorted: the first 24 doubles
    } cases[] = {
        {{4, 4}, in2, {13, 0, 2, -1, 7, 0, -1, 4, 8, 5, -5, 2,
                       -3, 0, -8, 1, 3, 0, -1, -4, 2, 7, -5, -2}},
        {{2, 4, 4}, in3, {1, 0, -2, 9, -13, 0, 3, -8, 0, -11, -11, 0,
                          -19, 0, -22, 33, -33, 0, 3, 8, 0, -11, -11, 0}}};
    // clang-format on
    const Vec c = Transform(kCosine, -1, {4, 4}, in2), s = Transform(kSine, -1, {4, 4}, in2);
    EXPECT_LE(RelError(Vec(c.begin(), c.begin() + 4), {13, 2.547468, 2.12132, 4.302372}), 1e-6);
    EXPECT_LE(RelError(Vec(s.begin(), s.begin() + 4), {3, 0.475538, -4.949747, -6.691327}), 1e-6);
    for (const auto& cs : cases) {
        Vec a(cs.in.size() / 4 * 6, 0.0);  // rows of 4 values and 2 extra doubles
        for (size_t i = 0; i < cs.in.size(); ++i) a[i / 4 * 6 + i % 4] = cs.in[i];
        a = Transform(kSorted, 1, cs.dims, a);
        EXPECT_LE(RelError(Vec(a.begin(), a.begin() + 24), cs.sorted), 1e-15);
        a[3 * 6] = 333, a[1 * 6 + 4] = 111;  // both redundant by symmetry
        a = Transform(kSorted, -1, cs.dims, a);
        for (size_t i = 0; i < cs.in.size(); ++i)
            EXPECT_NEAR(a[i / 4 * 6 + i % 4], double(cs.in.size() / 2) * cs.in[i], 1e-12);
        EXPECT_EQ(a[1 * 6 + 4], 111);  // the extra columns keep what they held
    }
}

}  // namespace
