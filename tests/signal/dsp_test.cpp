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

// Allocations above 2 GB fail while it lives (the sanitizer build caps them at 1 GB instead).
struct AllocationCap {
    rlimit saved{};
#if !defined(__SANITIZE_ADDRESS__)
    AllocationCap() {
        getrlimit(RLIMIT_AS, &saved);
        rlimit capped = saved;
        capped.rlim_cur = rlim_t(2) << 30;
        setrlimit(RLIMIT_AS, &capped);
    }
    ~AllocationCap() { setrlimit(RLIMIT_AS, &saved); }
#endif
};

// The standard error output since CaptureStderr, without the sanitizer's own notes.
std::string Captured() {
    std::string text = testing::internal::GetCapturedStderr(), kept;
    for (size_t start = 0, end; start < text.size(); start = end) {
        end = std::min(text.find('\n', start), text.size() - 1) + 1;
        if (text.compare(start, 2, "==") != 0) kept += text.substr(start, end - start);
    }
    return kept;
}

// --- 1D -----------------------------------------------------------------------------------------
// Each operation with the kernel call it makes on a signal of that length (the spare element
// included).
struct Op1 {
    const char* name;
    std::function<bool(CDSPTransform1D&, CDSPSignal1D*)> run;
    std::function<void(int, double*, Tables&)> kernel;
};
const Op1 kOps1[] = {
    {"ComplexFFT", [](CDSPTransform1D& t, CDSPSignal1D* s) { return t.ComplexFFT(-1, s); },
     [](int n, double* a, Tables& tb) { cdft(n, -1, a, tb.ip.data(), tb.w.data()); }},
    {"RealFFT", [](CDSPTransform1D& t, CDSPSignal1D* s) { return t.RealFFT(1, s); },
     [](int n, double* a, Tables& tb) { rdft(n, 1, a, tb.ip.data(), tb.w.data()); }},
    {"RealDCT", [](CDSPTransform1D& t, CDSPSignal1D* s) { return t.RealDCT(-1, s); },
     [](int n, double* a, Tables& tb) { ddct(n, -1, a, tb.ip.data(), tb.w.data()); }},
    {"RealDST", [](CDSPTransform1D& t, CDSPSignal1D* s) { return t.RealDST(1, s); },
     [](int n, double* a, Tables& tb) { ddst(n, 1, a, tb.ip.data(), tb.w.data()); }},
    {"DCTOfRealFFT", [](CDSPTransform1D& t, CDSPSignal1D* s) { return t.DCTOfRealFFT(s); },
     [](int n, double* a, Tables& tb) { dfct(n - 1, a, tb.t.data(), tb.ip.data(), tb.w.data()); }},
    {"DSTOfRealFFT", [](CDSPTransform1D& t, CDSPSignal1D* s) { return t.DSTOfRealFFT(s); },
     [](int n, double* a, Tables& tb) { dfst(n + 1, a, tb.t.data(), tb.ip.data(), tb.w.data()); }},
};

// After a first signal of each kind and length, every operation accepts smaller signals with
// the kernel's result and refuses larger ones, touching nothing. Lengths 1023 and 1025 make the
// DCT/DST of the real FFT transform a power of two (k = n + 1, n - 1) or not.
TEST(Transform1D, AcceptsSmallerSignalsOfEveryKindAndRefusesLargerOnes) {
    for (int first = 0; first < 6; ++first)
        for (int next = 0; next < 6; ++next)
            for (unsigned length : {1024u, 1025u, 1023u}) {
                CDSPTransform1D transform;
                for (unsigned n :
                     {length, 2u, 3u, 7u, 8u, 255u, 256u, 511u, 512u, 2 * length + 4}) {
                    const int op = n == length ? first : next;
                    CDSPSignal1D s(n);
                    const Vec in = Random(int(n) + 1, n);
                    std::copy(in.begin(), in.end(), s.data);
                    Vec expected = in;
                    Tables tb(4096);
                    kOps1[op].kernel(int(n), expected.data(), tb);
                    const bool accepted = n < 2 * length;
                    EXPECT_EQ(kOps1[op].run(transform, &s), accepted)
                        << kOps1[first].name << " " << kOps1[op].name << " " << n;
                    EXPECT_EQ(Vec(s.data, s.data + n + 1), accepted ? expected : in)
                        << kOps1[op].name << " " << n;
                }
            }
    CDSPTransform1D transform;  // the DCT/DST of the real FFT compare k, not the length
    CDSPSignal1D s1023(1023), s1024(1024), s1025(1025);
    for (CDSPSignal1D* s : {&s1023, &s1024, &s1025})
        std::fill(s->data, s->data + s->length + 1, 1.0);
    EXPECT_TRUE(transform.RealFFT(1, &s1024));
    EXPECT_FALSE(transform.RealDCT(1, &s1025));
    EXPECT_TRUE(transform.DCTOfRealFFT(&s1025));
    EXPECT_FALSE(transform.DSTOfRealFFT(&s1024));
    EXPECT_TRUE(transform.DSTOfRealFFT(&s1023));
    EXPECT_FALSE(transform.ComplexFFT(1, nullptr));
}

TEST(Transforms, FailedAllocationsWriteTheirMessages) {
    AllocationCap cap;
    testing::internal::CaptureStderr();
    CDSPSignal1D huge(0x7FFFFFFF);
    EXPECT_EQ(Captured(), "Out of memory in CDSPSignal1D...");
    EXPECT_EQ(huge.data, nullptr);
    CDSPTransform1D t1;
    EXPECT_FALSE(t1.RealFFT(1, &huge));
    testing::internal::CaptureStderr();
    CDSPSignal2D rows(2, 0x7FFFFFFF);
    CDSPSignal3D planes(2, 2, 0x7FFFFFFF);
    EXPECT_EQ(Captured(), "");  // no message for these
    EXPECT_EQ(rows.rows, nullptr);
    EXPECT_EQ(planes.planes, nullptr);

    CDSPTransform2D t2;
    CDSPTransform3D t3;
    const std::pair<std::function<bool()>, const char*> init[] = {
        {[&] { return t1.InitArrays(0xFFFFFFFF, 8, 8); }, "Out of memory in CDSPTransform1D..."},
        {[&] { return t2.InitArrays(8, 0xFFFFFFFF, 8); }, "Out of memory in CDSPTransform2D..."},
        {[&] { return t3.InitArrays(8, 8, 0xFFFFFFFF); }, "Out of memory in CDSPTransform3D..."}};
    for (const auto& [call, message] : init) {
        testing::internal::CaptureStderr();
        EXPECT_FALSE(call());
        EXPECT_EQ(Captured(), message);
    }
    // An operation whose work areas fail leaves the transform uninitialised: the next one sizes
    // it afresh with its own signal.
    CDSPSignal1D s(8), s16(16);
    std::fill(s.data, s.data + 9, 1.0), std::fill(s16.data, s16.data + 17, 1.0);
    s.length = 0x40000000;  // claims 2^30 values: about 10 GB of work areas
    CDSPTransform1D transform;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(transform.RealDCT(1, &s));
    EXPECT_EQ(Captured(), "Out of memory in CDSPTransform1D...");
    s.length = 8;
    EXPECT_TRUE(transform.RealDCT(1, &s));
    EXPECT_FALSE(transform.RealDCT(1, &s16));
}

// --- 2D and 3D ----------------------------------------------------------------------------------
enum Kind { kComplex, kReal, kSorted, kCosine, kSine };

template <typename Transform, typename Signal>
bool Run(Transform& t, Kind kind, int isgn, Signal* s) {
    if (kind == kComplex) return t.ComplexFFT(isgn, s);
    if (kind == kReal || kind == kSorted) return t.RealFFT(isgn, kind == kSorted, s);
    return kind == kCosine ? t.RealDCT(isgn, s) : t.RealDST(isgn, s);
}

// One operation on a signal of these transform sizes (the sorted layout's rows two doubles
// longer), filled with ones: accepted, or refused with the samples untouched.
template <typename Transform>
void Expect(Transform& t, Kind kind, int isgn, std::vector<unsigned> dims, bool accepted) {
    if (kind == kSorted) dims.back() += 2;
    std::vector<double*> rows;
    auto run = [&](auto& signal) {
        for (double* r : rows) std::fill(r, r + dims.back(), 1.0);
        EXPECT_EQ(Run(t, kind, isgn, &signal), accepted)
            << kind << " " << dims[0] << " " << dims.back();
        for (double* r : rows)
            EXPECT_TRUE(accepted || std::count(r, r + dims.back(), 1.0) == int(dims.back()));
    };
    if constexpr (std::is_same<Transform, CDSPTransform2D>::value) {
        CDSPSignal2D s(dims[0], dims[1]);
        rows.assign(s.rows, s.rows + s.n1);
        run(s);
    } else {
        CDSPSignal3D s(dims[0], dims[1], dims[2]);
        for (unsigned i = 0; i < s.n1; ++i)
            rows.insert(rows.end(), s.planes[i], s.planes[i] + s.n2);
        run(s);
    }
}

// Every pair of operations, after a first signal, on smaller and larger signals (run under the
// sanitizers, this checks that the work areas serve every order of calls); the 3D shape's last
// dimension is much longer than the others, where the real 3D transform's twiddles exceed the
// simple estimate from the sizes.
TEST(Transform2D3D, AcceptSmallerSignalsOfEveryKindAndRefuseLargerOnes) {
    const Kind kinds[] = {kComplex, kReal, kSorted, kCosine, kSine};
    for (Kind first : kinds)
        for (Kind next : kinds)
            for (int isgn : {1, -1}) {
                CDSPTransform2D t2;
                CDSPTransform3D t3;
                Expect(t2, first, isgn, {16, 32}, true);
                Expect(t3, first, isgn, {2, 2, 256}, true);
                for (const auto& d : {std::vector<unsigned>{16, 32}, {4, 8}, {2, 32}, {16, 2}})
                    Expect(t2, next, isgn, d, true);
                for (const auto& d : {std::vector<unsigned>{32, 32}, {16, 64}})
                    Expect(t2, next, isgn, d, false);
                for (unsigned n3 : {256u, 16u, 2u}) Expect(t3, next, isgn, {2, 2, n3}, true);
                Expect(t3, next, isgn, {4, 2, 8}, false);
            }
    CDSPTransform2D transform;  // sorted rows of 10 doubles transform 8 columns: capacity 8
    Expect(transform, kSorted, 1, {4, 8}, true);
    Expect(transform, kReal, 1, {4, 8}, true);
    Expect(transform, kReal, 1, {4, 10}, false);
    Expect(transform, kSorted, 1, {4, 10}, false);
    EXPECT_FALSE(transform.RealDCT(1, nullptr));
}

// The sorted real transform forward then backward: the first n - 2 values of each row come
// back times n1 n2 / 2 (resp. n1 n2 n3 / 2 for 3D) over the transform sizes.
TEST(Transform2D3D, SortedRealTransformsRoundTrip) {
    CDSPSignal2D s2(8, 18);
    CDSPSignal3D s3(4, 2, 10);
    CDSPTransform2D t2;
    CDSPTransform3D t3;
    const Vec in = Random(8 * 18, 5);
    for (unsigned i = 0; i < 8; ++i) std::copy(&in[18 * i], &in[18 * i] + 18, s2.rows[i]);
    for (unsigned i = 0; i < 8; ++i)
        std::copy(&in[10 * i], &in[10 * i] + 10, s3.planes[i / 2][i % 2]);
    ASSERT_TRUE(t2.RealFFT(1, true, &s2) && t2.RealFFT(-1, true, &s2));
    ASSERT_TRUE(t3.RealFFT(1, true, &s3) && t3.RealFFT(-1, true, &s3));
    for (unsigned i = 0; i < 8; ++i)
        for (unsigned j = 0; j < 16; ++j) {
            EXPECT_NEAR(s2.rows[i][j], 64 * in[18 * i + j], 1e-12);
            if (j < 8) {
                EXPECT_NEAR(s3.planes[i / 2][i % 2][j], 32 * in[10 * i + j], 1e-12);
            }
        }
}

}  // namespace
