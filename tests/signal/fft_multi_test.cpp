#include <gtest/gtest.h>
#include <sys/resource.h>

#include "fft_reference.h"
#include "math/signal/fft_kernels.h"

using namespace fftref;

namespace {

enum Kind { kComplex, kReal, kCosine, kSine };
const char* const kNames[] = {"complex", "real", "cosine", "sine"};

// Reference of the 2D/3D transform of 'kind' over a row-major array of dims (last dimension in
// doubles), from the 1D sums along every axis (the real DFT through its full spectrum).
Vec Reference(Kind kind, int s, const std::vector<int>& dims, const Vec& a) {
    if (kind == kReal) {
        if (s >= 0) return Pack(FullSpectrum(a, dims), dims);
        return a;  // the inverse is checked on packed spectra of known arrays, see Check
    }
    Vec r = a;
    int outer = 1, inner = int(a.size());
    for (size_t axis = 0; axis < dims.size(); ++axis) {
        const bool last = axis + 1 == dims.size();
        const int width = kind == kComplex ? 2 : 1;
        const int count = kind == kComplex && last ? dims[axis] / 2 : dims[axis];
        inner /= dims[axis];
        auto f = [&](const Vec& l) {
            const int n = int(l.size());
            return kind == kComplex  ? Cdft(n, s, l)
                   : kind == kCosine ? Ddct(n, s, l)
                                     : Ddst(n, s, l);
        };
        if (last)
            AlongAxis(r, outer, count, width, width, f);
        else
            AlongAxis(r, outer, count, inner, width, f);
        outer *= dims[axis];
    }
    return r;
}

using Kernel2 = void (*)(int, int, int, double**, double*, int*, double*);
using Kernel3 = void (*)(int, int, int, int, double***, double*, int*, double*);
const Kernel2 k2[] = {cdft2d, rdft2d, ddct2d, ddst2d};
const Kernel3 k3[] = {cdft3d, rdft3d, ddct3d, ddst3d};

Vec Transform(Kind kind, int s, const std::vector<int>& dims, Vec a, bool ownWorkArea = false) {
    int largest = 1;
    for (int d : dims) largest = std::max(largest, d);
    Tables tb(largest);
    double* t = ownWorkArea ? nullptr : tb.t.data();
    if (dims.size() == 2) {
        Rows2 rows(a, dims[0], dims[1]);
        k2[kind](dims[0], dims[1], s, rows.get(), t, tb.ip.data(), tb.w.data());
    } else {
        Rows3 rows(a, dims[0], dims[1], dims[2]);
        k3[kind](dims[0], dims[1], dims[2], s, rows.get(), t, tb.ip.data(), tb.w.data());
    }
    return a;
}

// Forward transforms against the reference; the inverse real DFT of a packed spectrum of a known
// array returns that array times (product of dims) / 2.
void Check(Kind kind, const std::vector<int>& dims) {
    int size = 1;
    for (int d : dims) size *= d;
    std::string shape;
    for (int d : dims) shape += std::to_string(d) + " ";
    for (int s : {1, -1}) {
        const Vec a = Random(size, unsigned(size + s));
        if (kind == kReal && s < 0) {
            Vec expected = a;
            for (double& e : expected) e *= size / 2.0;
            const Vec packed = Pack(FullSpectrum(a, dims), dims);
            EXPECT_LE(RelError(Transform(kind, s, dims, packed), expected), kTol)
                << kNames[kind] << " inverse, " << shape;
        } else {
            EXPECT_LE(RelError(Transform(kind, s, dims, a), Reference(kind, s, dims, a)), kTol)
                << kNames[kind] << " isgn=" << s << ", " << shape;
        }
    }
}

// All shapes up to 2048 values (so 2 x 1024 and 1024 x 2 too), square or not. rdft2d with four
// rows or more exercises the untangling of the folded columns: a loop over row pairs (i, n1 - i)
// through a double** that GCC 12 at -O2 has been seen to delete from a caller of that shape.
TEST(Kernels2d, AgreeWithTheDefiningSumsForEveryShape) {
    for (int n1 = 1; n1 <= 1024; n1 *= 2)
        for (int n2 = 2; n1 * n2 <= 2048; n2 *= 2)
            for (Kind kind : {kComplex, kReal, kCosine, kSine})
                if (kind == kComplex || n1 >= 2) Check(kind, {n1, n2});
}

TEST(Kernels3d, AgreeWithTheDefiningSumsForEveryShape) {
    std::vector<std::vector<int>> shapes = {
        {2, 2, 256}, {2, 4, 128}, {4, 2, 256}, {1, 1, 8}, {1, 8, 4}};
    for (int n1 = 1; n1 <= 64; n1 *= 2)
        for (int n2 = 1; n1 * n2 <= 128; n2 *= 2)
            for (int n3 = 2; n1 * n2 * n3 <= 512; n3 *= 2) shapes.push_back({n1, n2, n3});
    for (const auto& dims : shapes)
        for (Kind kind : {kComplex, kReal, kCosine, kSine})
            if (kind == kComplex || (dims[0] >= 2 && dims[1] >= 2)) Check(kind, dims);
}

TEST(Kernels2d, ForwardThenInverseWithTheDocumentedScaleReturnsTheInput) {
    for (const auto& dims :
         {std::vector<int>{8, 16}, std::vector<int>{32, 4}, std::vector<int>{4, 8, 16}}) {
        int size = 1;
        for (int d : dims) size *= d;
        const Vec x = Random(size, 21);
        auto scaled = [](Vec v, double f) {
            for (double& e : v) e *= f;
            return v;
        };
        EXPECT_LE(RelError(scaled(Transform(kComplex, 1, dims, Transform(kComplex, -1, dims, x)),
                                  2.0 / size),
                           x),
                  kTol);
        EXPECT_LE(
            RelError(scaled(Transform(kReal, -1, dims, Transform(kReal, 1, dims, x)), 2.0 / size),
                     x),
            kTol);
        for (Kind kind : {kCosine, kSine}) {
            Vec y = Transform(kind, -1, dims, x);
            // halve every element with a zero index, once per such index
            for (int i = 0; i < size; ++i) {
                int rest = i;
                for (int axis = int(dims.size()) - 1; axis >= 0; --axis) {
                    if (rest % dims[axis] == 0) y[i] *= 0.5;
                    rest /= dims[axis];
                }
            }
            const double scale = double(1 << dims.size()) / size;
            EXPECT_LE(RelError(scaled(Transform(kind, 1, dims, y), scale), x), kTol)
                << kNames[kind];
        }
    }
}

TEST(Kernels2d, WithoutAWorkAreaTheyAllocateTheirOwn) {
    for (Kind kind : {kComplex, kReal, kCosine, kSine}) {
        const Vec a = Random(8 * 32, 5);
        EXPECT_EQ(Transform(kind, 1, {8, 32}, a, true), Transform(kind, 1, {8, 32}, a))
            << kNames[kind];
        EXPECT_EQ(Transform(kind, -1, {4, 8, 8}, a, true), Transform(kind, -1, {4, 8, 8}, a))
            << kNames[kind];
    }
}

// An allocation that cannot succeed: the address space is capped in the child process.
#if !defined(__SANITIZE_ADDRESS__)
void CapAddressSpace() {
    rlimit limit{};
    getrlimit(RLIMIT_AS, &limit);
    limit.rlim_cur = rlim_t(1) << 30;
    setrlimit(RLIMIT_AS, &limit);
}
TEST(Kernels2dDeathTest, AFailedWorkAreaAllocationEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    double* row = nullptr;
    int ip[2] = {0, 0};
    EXPECT_EXIT(
        {
            CapAddressSpace();
            cdft2d(1 << 28, 2, 1, &row, nullptr, ip, nullptr);
        },
        testing::ExitedWithCode(1), "^fft2d memory allocation error\n$");
    EXPECT_EXIT(
        {
            CapAddressSpace();
            ddct3d(1 << 28, 2, 2, 1, nullptr, nullptr, ip, nullptr);
        },
        testing::ExitedWithCode(1), "^fft3d memory allocation error\n$");
}
#endif

TEST(Kernels2d, RecordTheirTableSizesInIp) {
    struct Case {
        Kind kind;
        std::vector<int> dims;
        int ip0, ip1;
    };
    const Case cases[] = {{kReal, {256, 16}, 128, 4},   {kCosine, {32, 8, 4}, 8, 32},
                          {kComplex, {4, 64}, 16, 1},   {kComplex, {64, 4}, 32, 1},
                          {kReal, {4, 64}, 16, 16},     {kSine, {8, 32}, 8, 32},
                          {kComplex, {2, 16, 8}, 8, 1}, {kReal, {2, 2, 256}, 64, 64},
                          {kReal, {16, 2, 4}, 8, 1},    {kSine, {2, 64, 2}, 16, 64}};
    for (const Case& c : cases) {
        int largest = 1, size = 1;
        for (int d : c.dims) largest = std::max(largest, d), size *= d;
        Tables tb(largest);
        Vec a(size, 1.0);
        if (c.dims.size() == 2) {
            Rows2 rows(a, c.dims[0], c.dims[1]);
            k2[c.kind](c.dims[0], c.dims[1], 1, rows.get(), tb.t.data(), tb.ip.data(), tb.w.data());
        } else {
            Rows3 rows(a, c.dims[0], c.dims[1], c.dims[2]);
            k3[c.kind](c.dims[0], c.dims[1], c.dims[2], 1, rows.get(), tb.t.data(), tb.ip.data(),
                       tb.w.data());
        }
        EXPECT_EQ(tb.ip[0], c.ip0) << kNames[c.kind] << " " << c.dims[0];
        EXPECT_EQ(tb.ip[1], c.ip1) << kNames[c.kind] << " " << c.dims[0];
    }
}

Vec FourByFour() { return {1, 2, 0, -1, 3, 0, 1, 2, 0, -2, 4, 1, 2, 1, -1, 0}; }

TEST(Kernels2d, ReproduceThePublishedExamples) {
    Vec impulse(4 * 8, 0.0);
    impulse[1 * 8 + 2] = 1;  // x[1][1]
    const Vec x = Transform(kComplex, 1, {4, 8}, impulse);
    for (int k1 = 0; k1 < 4; ++k1)
        for (int k2 = 0; k2 < 4; ++k2) {  // i^(k1 + k2)
            const int p = (k1 + k2) % 4;
            EXPECT_EQ(x[k1 * 8 + 2 * k2], p == 0 ? 1 : p == 2 ? -1 : 0);
            EXPECT_EQ(x[k1 * 8 + 2 * k2 + 1], p == 1 ? 1 : p == 3 ? -1 : 0);
        }
    const Vec packed = {13, 7, 2, -1, -1, 4, 8, 5, -3, 3, -8, 1, -2, -5, 2, 7};
    EXPECT_LE(RelError(Transform(kReal, 1, {4, 4}, FourByFour()), packed), 1e-15);
    Vec eight = FourByFour();
    for (double& e : eight) e *= 8;
    EXPECT_LE(RelError(Transform(kReal, -1, {4, 4}, packed), eight), 1e-15);
    const Vec c = Transform(kCosine, -1, {4, 4}, FourByFour()),
              s = Transform(kSine, -1, {4, 4}, FourByFour());
    EXPECT_LE(RelError(Vec(c.begin(), c.begin() + 4), {13, 2.547468, 2.12132, 4.302372}), 1e-6);
    EXPECT_LE(RelError(Vec(s.begin(), s.begin() + 4), {3, 0.475538, -4.949747, -6.691327}), 1e-6);

    // 2 x 4 x 4 real transform, packed then sorted.
    const Vec planes = {-5, 2, -2, 5,  1, -3, 4,  0, -4, 3, -1, -5, 2, -2, 5,  1,
                        -3, 4, 0,  -4, 3, -1, -5, 2, -2, 5, 1,  -3, 4, 0,  -4, 3};
    const Vec packed3 = {1, -13, -2,  9,   3,  -8, 0, -11, -19, -33, -22, 33,  0, -11, 0, -11,
                         1, 11,  -22, -11, 11, 0,  0, -11, -11, -33, 22,  -11, 0, -11, 0, -11};
    EXPECT_LE(RelError(Transform(kReal, 1, {2, 4, 4}, planes), packed3), 1e-15);
}

// Sorted layout: rows of n2 + 2 doubles.
TEST(Kernels2d, SortConvertsBetweenPackedAndNaturalHalfSpectra) {
    Vec a(4 * 6, 0.0);
    const Vec in = FourByFour();
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) a[i * 6 + j] = in[i * 4 + j];
    Rows2 rows(a, 4, 6);
    Tables tb(16);
    rdft2d(4, 4, 1, rows.get(), tb.t.data(), tb.ip.data(), tb.w.data());
    rdft2dsort(4, 4, 1, rows.get());
    const Vec sorted = {13, 0, 2,  -1, 7, 0, -1, 4,  8, 5, -5, 2,
                        -3, 0, -8, 1,  3, 0, -1, -4, 2, 7, -5, -2};
    EXPECT_LE(RelError(a, sorted), 1e-15);
    a[1 * 6 + 4] = 111;  // redundant entries: ignored by the inverse sort
    a[1 * 6 + 5] = 222;
    a[3 * 6 + 0] = 333;
    a[3 * 6 + 1] = 444;
    rdft2dsort(4, 4, -1, rows.get());
    rdft2d(4, 4, -1, rows.get(), tb.t.data(), tb.ip.data(), tb.w.data());
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) EXPECT_NEAR(a[i * 6 + j], 8 * in[i * 4 + j], 1e-13);
    EXPECT_EQ(a[1 * 6 + 4], 111);
    EXPECT_EQ(a[1 * 6 + 5], 222);

    // 3D: the first plane of the sorted 2 x 4 x 4 example.
    const Vec planes = {-5, 2, -2, 5,  1, -3, 4,  0, -4, 3, -1, -5, 2, -2, 5,  1,
                        -3, 4, 0,  -4, 3, -1, -5, 2, -2, 5, 1,  -3, 4, 0,  -4, 3};
    Vec b(2 * 4 * 6, 0.0);
    for (int r = 0; r < 8; ++r)
        for (int j = 0; j < 4; ++j) b[r * 6 + j] = planes[r * 4 + j];
    Rows3 cells(b, 2, 4, 6);
    rdft3d(2, 4, 4, 1, cells.get(), tb.t.data(), tb.ip.data(), tb.w.data());
    rdft3dsort(2, 4, 4, 1, cells.get());
    EXPECT_LE(
        RelError(Vec(b.begin(), b.begin() + 24), {1,   0, -2,  9,  -13, 0, 3, -8, 0, -11, -11, 0,
                                                  -19, 0, -22, 33, -33, 0, 3, 8,  0, -11, -11, 0}),
        1e-15);
    rdft3dsort(2, 4, 4, -1, cells.get());
    rdft3d(2, 4, 4, -1, cells.get(), tb.t.data(), tb.ip.data(), tb.w.data());
    for (int r = 0; r < 8; ++r)
        for (int j = 0; j < 4; ++j) EXPECT_NEAR(b[r * 6 + j], 16 * planes[r * 4 + j], 1e-12);
}

// Sorting round trip on random data of several shapes: sort(+1) gives the natural half spectrum.
TEST(Kernels2d, SortedSpectraAreTheNaturalHalfSpectra) {
    for (const auto& dims : {std::vector<int>{8, 16}, std::vector<int>{2, 8},
                             std::vector<int>{4, 8, 8}, std::vector<int>{2, 2, 16}}) {
        const int m = dims.back();
        int cells = 1;
        for (size_t i = 0; i + 1 < dims.size(); ++i) cells *= dims[i];
        const Vec x = Random(cells * m, 8);
        const Vec z = FullSpectrum(x, dims);
        Vec a(size_t(cells) * (m + 2), 0.0);
        for (int c = 0; c < cells; ++c)
            for (int j = 0; j < m; ++j) a[c * (m + 2) + j] = x[c * m + j];
        Tables tb(64);
        if (dims.size() == 2) {
            Rows2 rows(a, dims[0], m + 2);
            rdft2d(dims[0], m, 1, rows.get(), tb.t.data(), tb.ip.data(), tb.w.data());
            rdft2dsort(dims[0], m, 1, rows.get());
        } else {
            Rows3 rows(a, dims[0], dims[1], m + 2);
            rdft3d(dims[0], dims[1], m, 1, rows.get(), tb.t.data(), tb.ip.data(), tb.w.data());
            rdft3dsort(dims[0], dims[1], m, 1, rows.get());
        }
        Vec expected(a.size());
        for (int c = 0; c < cells; ++c)
            for (int j = 0; j < m + 2; ++j) expected[c * (m + 2) + j] = z[2 * c * m + j];
        EXPECT_LE(RelError(a, expected), kTol) << dims.size() << "D " << dims[0];
    }
}

}  // namespace
