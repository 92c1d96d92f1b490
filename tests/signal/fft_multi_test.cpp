#include <gtest/gtest.h>
#include <sys/resource.h>

#include "fft_reference.h"
#include "math/signal/fft_kernels.h"

using namespace fftref;

namespace {

enum Kind { kComplex, kReal, kCosine, kSine };

// The 2D or 3D routine of that kind on a row-major array of dims (t null: its own work area);
// ip receives the recorded table lengths.
Vec Transform(Kind kind, int s, const std::vector<int>& dims, Vec a, bool ownWorkArea = false,
              int* ip = nullptr) {
    Tables tb(*std::max_element(dims.begin(), dims.end()));
    double* t = ownWorkArea ? nullptr : tb.t.data();
    const bool two = dims.size() == 2;
    Grid g(a, two ? 1 : dims[0], dims[dims.size() - 2], dims.back());
    using K2 = void (*)(int, int, int, double**, double*, int*, double*);
    using K3 = void (*)(int, int, int, int, double***, double*, int*, double*);
    const K2 k2[] = {cdft2d, rdft2d, ddct2d, ddst2d};
    const K3 k3[] = {cdft3d, rdft3d, ddct3d, ddst3d};
    if (two)
        k2[kind](dims[0], dims[1], s, g.rows.data(), t, tb.ip.data(), tb.w.data());
    else
        k3[kind](dims[0], dims[1], dims[2], s, g.planes.data(), t, tb.ip.data(), tb.w.data());
    if (ip) ip[0] = tb.ip[0], ip[1] = tb.ip[1];
    return a;
}

// The 1D sums along every axis; the real DFT through its full spectrum, its inverse checked on
// the packed spectrum of a known array (which it returns times (product of dims) / 2).
void Check(Kind kind, const std::vector<int>& dims) {
    int size = 1;
    for (int d : dims) size *= d;
    for (int s : {1, -1}) {
        const Vec a = Random(size, unsigned(size + s));
        Vec in = a, expected = a;
        if (kind == kReal && s < 0) {
            in = Pack(FullSpectrum(a, dims), dims);
            for (double& e : expected) e *= size / 2.0;
        } else if (kind == kReal) {
            expected = Pack(FullSpectrum(a, dims), dims);
        } else {
            int outer = 1, inner = size;
            for (size_t axis = 0; axis < dims.size(); ++axis) {
                const bool last = axis + 1 == dims.size();
                const int width = kind == kComplex ? 2 : 1;
                inner /= dims[axis];
                AlongAxis(expected, outer, last ? dims[axis] / width : dims[axis],
                          last ? width : inner, width, [&](const Vec& l) {
                              const int n = int(l.size());
                              return kind == kComplex ? Cdft(n, s, l)
                                                      : CosSin(kind == kSine, n, s, l);
                          });
                outer *= dims[axis];
            }
        }
        EXPECT_LE(RelError(Transform(kind, s, dims, in), expected), kTol)
            << kind << " " << s << " " << dims[0] << "x" << dims[1];
    }
}

// Every shape up to 2048 values (2 x 1024 and 1024 x 2 among them). rdft2d with four rows or
// more untangles the folded columns with a loop over row pairs (i, n1 - i) through a double**,
// the shape GCC 12 at -O2 has been seen to drop from its caller: this test runs at -O2.
TEST(Kernels2d3d, AgreeWithTheDefiningSumsForEveryShape) {
    for (int n1 = 1; n1 <= 1024; n1 *= 2)
        for (int n2 = 2; n1 * n2 <= 2048; n2 *= 2)
            for (Kind kind : {kComplex, kReal, kCosine, kSine})
                if (kind == kComplex || n1 >= 2) Check(kind, {n1, n2});
    std::vector<std::vector<int>> shapes = {{2, 2, 256}, {4, 2, 256}, {1, 8, 4}};
    for (int n1 = 1; n1 <= 64; n1 *= 2)
        for (int n2 = 1; n1 * n2 <= 128; n2 *= 2)
            for (int n3 = 2; n1 * n2 * n3 <= 512; n3 *= 2) shapes.push_back({n1, n2, n3});
    for (const auto& dims : shapes)
        for (Kind kind : {kComplex, kReal, kCosine, kSine})
            if (kind == kComplex || (dims[0] >= 2 && dims[1] >= 2)) Check(kind, dims);
}

TEST(Kernels2d3d, WithoutAWorkAreaTheyAllocateTheirOwnAndRecordTheirTables) {
    for (Kind kind : {kComplex, kReal, kCosine, kSine}) {
        const Vec a = Random(256, 5);
        EXPECT_EQ(Transform(kind, 1, {8, 32}, a, true), Transform(kind, 1, {8, 32}, a)) << kind;
        EXPECT_EQ(Transform(kind, -1, {4, 8, 8}, a, true), Transform(kind, -1, {4, 8, 8}, a))
            << kind;
    }
    const struct {
        Kind kind;
        std::vector<int> dims;
        int ip[2];
    } cases[] = {{kReal, {256, 16}, {128, 4}},   {kCosine, {32, 8, 4}, {8, 32}},
                 {kComplex, {64, 4}, {32, 1}},   {kSine, {8, 32}, {8, 32}},
                 {kReal, {2, 2, 256}, {64, 64}}, {kReal, {16, 2, 4}, {8, 1}}};
    for (const auto& c : cases) {
        int size = 1, ip[2];
        for (int d : c.dims) size *= d;
        Transform(c.kind, 1, c.dims, Vec(size, 1.0), false, ip);
        EXPECT_EQ(ip[0], c.ip[0]) << c.kind << " " << c.dims[0];
        EXPECT_EQ(ip[1], c.ip[1]) << c.kind << " " << c.dims[0];
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
        const int m = cs.dims.back(), cells = int(cs.in.size()) / m;
        Vec a(size_t(cells) * (m + 2), 0.0);
        for (int i = 0; i < cells * m; ++i) a[i / m * (m + 2) + i % m] = cs.in[i];
        const bool two = cs.dims.size() == 2;
        Grid g(a, two ? 1 : cs.dims[0], cs.dims[cs.dims.size() - 2], m + 2);
        Tables tb(16);
        const auto sort = [&](int isgn) {
            if (two) rdft2dsort(4, 4, isgn, g.rows.data());
            if (!two) rdft3dsort(2, 4, 4, isgn, g.planes.data());
        };
        const auto transform = [&](int isgn) {
            if (two) rdft2d(4, 4, isgn, g.rows.data(), tb.t.data(), tb.ip.data(), tb.w.data());
            if (!two)
                rdft3d(2, 4, 4, isgn, g.planes.data(), tb.t.data(), tb.ip.data(), tb.w.data());
        };
        transform(1);
        sort(1);
        EXPECT_LE(RelError(Vec(a.begin(), a.begin() + 24), cs.sorted), 1e-15);
        a[3 * 6] = 333, a[1 * 6 + 4] = 111;  // both redundant by symmetry
        sort(-1);
        transform(-1);
        for (int i = 0; i < cells * m; ++i)
            EXPECT_NEAR(a[i / m * (m + 2) + i % m], cells * m / 2 * cs.in[i], 1e-12);
        EXPECT_EQ(a[1 * 6 + 4], 111);  // the extra columns keep what they held
    }
}

}  // namespace
