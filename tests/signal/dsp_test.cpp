#include <gtest/gtest.h>
#include <sys/resource.h>

#include <functional>

#include "fft_reference.h"
#include "math/signal/dsp_transform.h"
#include "math/signal/fft_kernels.h"

#if defined(__SANITIZE_ADDRESS__)
// Let the failure paths see a null allocation instead of a sanitizer report.
extern "C" __attribute__((visibility("default"))) const char* __asan_default_options() {
    return "allocator_may_return_null=1:max_allocation_size_mb=1024";
}
#endif

using namespace fftref;

namespace {

// Makes allocations above about 2 GB fail for the lifetime of the object (the sanitizer build
// caps single allocations at 1 GB instead).
class AllocationCap {
  public:
    AllocationCap() {
#if !defined(__SANITIZE_ADDRESS__)
        getrlimit(RLIMIT_AS, &saved_);
        rlimit capped = saved_;
        capped.rlim_cur = rlim_t(2) << 30;
        setrlimit(RLIMIT_AS, &capped);
#endif
    }
    ~AllocationCap() {
#if !defined(__SANITIZE_ADDRESS__)
        setrlimit(RLIMIT_AS, &saved_);
#endif
    }

  private:
    rlimit saved_{};
};

// What the code under test wrote to the standard error stream since CaptureStderr, without
// the sanitizer's own notes about failed allocations.
std::string Captured() {
    std::string text = testing::internal::GetCapturedStderr(), kept;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        end = end == std::string::npos ? text.size() : end + 1;
        if (text.compare(start, 2, "==") != 0) kept += text.substr(start, end - start);
        start = end;
    }
    return kept;
}

void Fill(CDSPSignal1D& s, unsigned seed) {
    const Vec v = Random(int(s.length) + 1, seed);
    std::copy(v.begin(), v.end(), s.data);
}
Vec Contents(const CDSPSignal1D& s, unsigned extra = 0) {
    return Vec(s.data, s.data + s.length + extra);
}

// The kernel on a copy of the signal with work areas of its own.
Vec Expected(const std::function<void(double*, Tables&)>& kernel, const Vec& in, int largest) {
    Vec a = in;
    Tables tb(largest);
    kernel(a.data(), tb);
    return a;
}

// Operations of CDSPTransform1D with the kernel each one calls and the size it compares.
struct Op1 {
    const char* name;
    std::function<bool(CDSPTransform1D&, CDSPSignal1D*)> run;
    std::function<void(int length, double*, Tables&)> kernel;
};
std::vector<Op1> Operations1D() {
    return {
        {"ComplexFFT", [](CDSPTransform1D& t, CDSPSignal1D* s) { return t.ComplexFFT(-1, s); },
         [](int n, double* a, Tables& tb) { cdft(n, -1, a, tb.ip.data(), tb.w.data()); }},
        {"RealFFT", [](CDSPTransform1D& t, CDSPSignal1D* s) { return t.RealFFT(1, s); },
         [](int n, double* a, Tables& tb) { rdft(n, 1, a, tb.ip.data(), tb.w.data()); }},
        {"RealDCT", [](CDSPTransform1D& t, CDSPSignal1D* s) { return t.RealDCT(-1, s); },
         [](int n, double* a, Tables& tb) { ddct(n, -1, a, tb.ip.data(), tb.w.data()); }},
        {"RealDST", [](CDSPTransform1D& t, CDSPSignal1D* s) { return t.RealDST(1, s); },
         [](int n, double* a, Tables& tb) { ddst(n, 1, a, tb.ip.data(), tb.w.data()); }},
        {"DCTOfRealFFT", [](CDSPTransform1D& t, CDSPSignal1D* s) { return t.DCTOfRealFFT(s); },
         [](int n, double* a, Tables& tb) {
             dfct(n - 1, a, tb.t.data(), tb.ip.data(), tb.w.data());
         }},
        {"DSTOfRealFFT", [](CDSPTransform1D& t, CDSPSignal1D* s) { return t.DSTOfRealFFT(s); },
         [](int n, double* a, Tables& tb) {
             dfst(n + 1, a, tb.t.data(), tb.ip.data(), tb.w.data());
         }},
    };
}

// A transform sized by a first signal refuses larger signals and accepts smaller ones, whatever
// operations come first and next; every accepted call gives the kernel's result. The lengths
// make DCTOfRealFFT and DSTOfRealFFT transform powers of two (k = n - 1, n + 1) or not.
TEST(Transform1D, AcceptsSmallerSignalsOfEveryKindAndRefusesLargerOnes) {
    const auto ops = Operations1D();
    for (const Op1& first : ops)
        for (const Op1& next : ops)
            for (unsigned length : {1024u, 1025u, 1023u}) {
                CDSPTransform1D transform;
                CDSPSignal1D sized(length);
                Fill(sized, 1);
                const Vec in = Contents(sized, 1);
                ASSERT_TRUE(first.run(transform, &sized)) << first.name;
                EXPECT_EQ(Contents(sized, 1),
                          Expected([&](double* a, Tables& tb) { first.kernel(int(length), a, tb); },
                                   in, 2048))
                    << first.name << " " << length;
                for (unsigned n : {2u, 3u, 7u, 8u, 255u, 256u, 511u, 512u}) {
                    CDSPSignal1D small(n);
                    Fill(small, n);
                    const Vec before = Contents(small, 1);
                    ASSERT_TRUE(next.run(transform, &small))
                        << first.name << " then " << next.name << " " << n;
                    EXPECT_EQ(Contents(small, 1),
                              Expected([&](double* a, Tables& tb) { next.kernel(int(n), a, tb); },
                                       before, 2048))
                        << first.name << " then " << next.name << " " << n;
                }
                CDSPSignal1D large(2 * length + 4);
                Fill(large, 2);
                const Vec untouched = Contents(large, 1);
                EXPECT_FALSE(next.run(transform, &large)) << first.name << " then " << next.name;
                EXPECT_EQ(Contents(large, 1), untouched);
            }
}

TEST(Transform1D, TheSizeComparedIsTheTransformSize) {
    CDSPTransform1D transform;
    CDSPSignal1D s1024(1024), s1023(1023), s1025(1025), s2048(2048), s512(512);
    Fill(s1024, 1), Fill(s1023, 2), Fill(s1025, 3), Fill(s2048, 4), Fill(s512, 5);
    EXPECT_TRUE(transform.RealFFT(1, &s1024));
    EXPECT_FALSE(transform.RealFFT(1, &s2048));
    EXPECT_TRUE(transform.RealFFT(1, &s512));
    EXPECT_FALSE(transform.RealDCT(1, &s1025));
    EXPECT_TRUE(transform.DCTOfRealFFT(&s1025));   // k = 1024
    EXPECT_FALSE(transform.DSTOfRealFFT(&s1024));  // k = 1025
    EXPECT_TRUE(transform.DSTOfRealFFT(&s1023));   // k = 1024
}

TEST(Transform1D, NullSignalsAreRefused) {
    CDSPTransform1D transform;
    EXPECT_FALSE(transform.ComplexFFT(1, nullptr));
    CDSPTransform2D t2;
    EXPECT_FALSE(t2.RealFFT(1, true, nullptr));
    CDSPTransform3D t3;
    EXPECT_FALSE(t3.RealDCT(1, nullptr));
}

TEST(Signals, FailedAllocationsAreReported) {
    AllocationCap cap;
    testing::internal::CaptureStderr();
    CDSPSignal1D huge(0x7FFFFFFF);
    EXPECT_EQ(Captured(), "Out of memory in CDSPSignal1D...");
    EXPECT_EQ(huge.data, nullptr);
    EXPECT_EQ(huge.length, 0x7FFFFFFFu);
    CDSPTransform1D transform;
    EXPECT_FALSE(transform.RealFFT(1, &huge));

    testing::internal::CaptureStderr();
    CDSPSignal2D rows(2, 0x7FFFFFFF);
    CDSPSignal3D planes(2, 2, 0x7FFFFFFF);
    EXPECT_EQ(Captured(), "");
    EXPECT_EQ(rows.rows, nullptr);
    EXPECT_EQ(planes.planes, nullptr);
}

TEST(Transforms, FailedInitArraysWriteTheirMessageAndTheNextCallTriesAgain) {
    AllocationCap cap;
    const char* messages[] = {"Out of memory in CDSPTransform1D...",
                              "Out of memory in CDSPTransform2D...",
                              "Out of memory in CDSPTransform3D..."};
    CDSPTransform1D t1;
    CDSPTransform2D t2;
    CDSPTransform3D t3;
    const std::function<bool()> init[] = {[&] { return t1.InitArrays(0xFFFFFFFF, 8, 8); },
                                          [&] { return t2.InitArrays(8, 0xFFFFFFFF, 8); },
                                          [&] { return t3.InitArrays(8, 8, 0xFFFFFFFF); }};
    for (int i = 0; i < 3; ++i) {
        testing::internal::CaptureStderr();
        EXPECT_FALSE(init[i]());
        EXPECT_EQ(Captured(), messages[i]);
    }
    EXPECT_TRUE(t1.InitArrays(0, 0, 0));

    // An operation whose work areas cannot be allocated fails and leaves the transform
    // uninitialised: the next one sizes it afresh.
    CDSPSignal1D s(8);
    Fill(s, 3);
    s.length = 0x40000000;  // claims 2^30 values: about 10 GB of work areas
    testing::internal::CaptureStderr();
    CDSPTransform1D transform;
    EXPECT_FALSE(transform.RealDCT(1, &s));
    EXPECT_EQ(Captured(), messages[0]);
    s.length = 8;
    EXPECT_TRUE(transform.RealDCT(1, &s));
    CDSPSignal1D s16(16);
    Fill(s16, 4);
    EXPECT_FALSE(transform.RealDCT(1, &s16));
}

// --- 2D and 3D ----------------------------------------------------------------------------------
template <typename Signal>
Vec Flatten(const Signal& s);
template <>
Vec Flatten(const CDSPSignal2D& s) {
    Vec v;
    for (unsigned i = 0; i < s.n1; ++i) v.insert(v.end(), s.rows[i], s.rows[i] + s.n2);
    return v;
}
template <>
Vec Flatten(const CDSPSignal3D& s) {
    Vec v;
    for (unsigned i = 0; i < s.n1; ++i)
        for (unsigned j = 0; j < s.n2; ++j)
            v.insert(v.end(), s.planes[i][j], s.planes[i][j] + s.n3);
    return v;
}
void Load(CDSPSignal2D& s, const Vec& v) {
    for (unsigned i = 0; i < s.n1; ++i) std::copy(&v[i * s.n2], &v[i * s.n2] + s.n2, s.rows[i]);
}
void Load(CDSPSignal3D& s, const Vec& v) {
    for (unsigned i = 0; i < s.n1 * s.n2; ++i)
        std::copy(&v[i * s.n3], &v[i * s.n3] + s.n3, s.planes[i / s.n2][i % s.n2]);
}

enum Kind { kComplex, kReal, kSorted, kCosine, kSine };

// The kernels on a row-major copy, with the sorted layout handled as the transforms do.
Vec Kernel2(Kind kind, int isgn, int n1, int n2, Vec a) {
    Tables tb(std::max(n1, n2));
    Rows2 rows(a, n1, n2);
    double *t = tb.t.data(), *w = tb.w.data();
    int* ip = tb.ip.data();
    switch (kind) {
        case kComplex:
            cdft2d(n1, n2, isgn, rows.get(), t, ip, w);
            break;
        case kReal:
            rdft2d(n1, n2, isgn, rows.get(), t, ip, w);
            break;
        case kSorted:
            if (isgn < 0) rdft2dsort(n1, n2 - 2, isgn, rows.get());
            rdft2d(n1, n2 - 2, isgn, rows.get(), t, ip, w);
            if (isgn >= 0) rdft2dsort(n1, n2 - 2, isgn, rows.get());
            break;
        case kCosine:
            ddct2d(n1, n2, isgn, rows.get(), t, ip, w);
            break;
        case kSine:
            ddst2d(n1, n2, isgn, rows.get(), t, ip, w);
            break;
    }
    return a;
}
Vec Kernel3(Kind kind, int isgn, int n1, int n2, int n3, Vec a) {
    Tables tb(std::max({n1, n2, n3}));
    Rows3 cells(a, n1, n2, n3);
    double *t = tb.t.data(), *w = tb.w.data();
    int* ip = tb.ip.data();
    switch (kind) {
        case kComplex:
            cdft3d(n1, n2, n3, isgn, cells.get(), t, ip, w);
            break;
        case kReal:
            rdft3d(n1, n2, n3, isgn, cells.get(), t, ip, w);
            break;
        case kSorted:
            if (isgn < 0) rdft3dsort(n1, n2, n3 - 2, isgn, cells.get());
            rdft3d(n1, n2, n3 - 2, isgn, cells.get(), t, ip, w);
            if (isgn >= 0) rdft3dsort(n1, n2, n3 - 2, isgn, cells.get());
            break;
        case kCosine:
            ddct3d(n1, n2, n3, isgn, cells.get(), t, ip, w);
            break;
        case kSine:
            ddst3d(n1, n2, n3, isgn, cells.get(), t, ip, w);
            break;
    }
    return a;
}

bool Run2(CDSPTransform2D& t, Kind kind, int isgn, CDSPSignal2D* s) {
    switch (kind) {
        case kComplex:
            return t.ComplexFFT(isgn, s);
        case kReal:
            return t.RealFFT(isgn, false, s);
        case kSorted:
            return t.RealFFT(isgn, true, s);
        case kCosine:
            return t.RealDCT(isgn, s);
        default:
            return t.RealDST(isgn, s);
    }
}
bool Run3(CDSPTransform3D& t, Kind kind, int isgn, CDSPSignal3D* s) {
    switch (kind) {
        case kComplex:
            return t.ComplexFFT(isgn, s);
        case kReal:
            return t.RealFFT(isgn, false, s);
        case kSorted:
            return t.RealFFT(isgn, true, s);
        case kCosine:
            return t.RealDCT(isgn, s);
        default:
            return t.RealDST(isgn, s);
    }
}
// The last dimension of a signal for an operation on a transform size: two more when sorted.
int Last(Kind kind, int n) { return kind == kSorted ? n + 2 : n; }

// Every pair of operations, first on one shape then on smaller and larger ones, against the
// kernels; the shapes include a last dimension much longer than the others (the real 3D
// transform's twiddle table then exceeds the simple estimate).
TEST(Transform2D3D, AcceptSmallerSignalsOfEveryKindAndRefuseLargerOnes) {
    const Kind kinds[] = {kComplex, kReal, kSorted, kCosine, kSine};
    for (Kind first : kinds)
        for (Kind next : kinds)
            for (int isgn : {1, -1}) {
                CDSPTransform2D t2;
                CDSPSignal2D s(16, Last(first, 32));
                const Vec in = Random(int(s.n1 * s.n2), 1);
                Load(s, in);
                ASSERT_TRUE(Run2(t2, first, isgn, &s));
                EXPECT_EQ(Flatten(s), Kernel2(first, isgn, 16, Last(first, 32), in));
                for (auto dims : {std::pair<int, int>{16, 32}, {4, 8}, {2, 32}, {16, 2}}) {
                    CDSPSignal2D small(dims.first, Last(next, dims.second));
                    const Vec v = Random(int(small.n1 * small.n2), 2);
                    Load(small, v);
                    ASSERT_TRUE(Run2(t2, next, isgn, &small));
                    EXPECT_EQ(Flatten(small),
                              Kernel2(next, isgn, dims.first, Last(next, dims.second), v));
                }
                for (auto dims : {std::pair<int, int>{32, 32}, {16, 64}}) {
                    CDSPSignal2D large(dims.first, Last(next, dims.second));
                    Load(large, Vec(large.n1 * large.n2, 1.0));
                    EXPECT_FALSE(Run2(t2, next, isgn, &large));
                    EXPECT_EQ(Flatten(large), Vec(large.n1 * large.n2, 1.0));
                }

                CDSPTransform3D t3;
                CDSPSignal3D c(2, 2, Last(first, 256));
                const Vec in3 = Random(int(c.n1 * c.n2 * c.n3), 3);
                Load(c, in3);
                ASSERT_TRUE(Run3(t3, first, isgn, &c));
                EXPECT_EQ(Flatten(c), Kernel3(first, isgn, 2, 2, Last(first, 256), in3));
                for (int n3 : {256, 16, 2}) {
                    CDSPSignal3D small(2, 2, Last(next, n3));
                    const Vec v = Random(int(small.n1 * small.n2 * small.n3), 4);
                    Load(small, v);
                    ASSERT_TRUE(Run3(t3, next, isgn, &small));
                    EXPECT_EQ(Flatten(small), Kernel3(next, isgn, 2, 2, Last(next, n3), v));
                }
                CDSPSignal3D deeper(4, 2, Last(next, 8));
                EXPECT_FALSE(Run3(t3, next, isgn, &deeper));
            }
}

// A sorted real transform of rows of 10 doubles transforms 8 columns: the capacity is 8.
TEST(Transform2D3D, SortedTransformsCompareTheReducedSize) {
    CDSPTransform2D transform;
    CDSPSignal2D ten(4, 10), eight(4, 8), twelve(4, 12);
    Load(ten, Random(40, 1));
    Load(eight, Random(32, 2));
    Load(twelve, Random(48, 3));
    EXPECT_TRUE(transform.RealFFT(1, true, &ten));
    EXPECT_TRUE(transform.RealFFT(1, false, &eight));
    EXPECT_FALSE(transform.RealFFT(1, false, &ten));
    EXPECT_FALSE(transform.RealFFT(1, true, &twelve));
    EXPECT_TRUE(transform.RealDCT(-1, &eight));
}

}  // namespace
