#include <gtest/gtest.h>
#include <sys/resource.h>

#include <functional>

#include "fft_reference.h"
#include "math/signal/dsp_transform.h"

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
// The operation of that kind (the kernels' kinds, kDct1/kDst1 for the DCT/DST of the real FFT).
bool Operate(CDSPTransform1D& t, int kind, int isgn, CDSPSignal1D* s) {
    if (kind == kComplex || kind == kReal) return kind ? t.RealFFT(isgn, s) : t.ComplexFFT(isgn, s);
    if (kind == kCosine || kind == kSine)
        return kind == kSine ? t.RealDST(isgn, s) : t.RealDCT(isgn, s);
    return kind == kDct1 ? t.DCTOfRealFFT(s) : t.DSTOfRealFFT(s);
}

// After a first signal of each kind and length, every operation accepts signals whose kernel
// size (the length, less one for the DCT of the real FFT, plus one for its DST) is at most the
// first one's, with the kernel's result on the samples and the spare element, and refuses larger
// ones, touching nothing. Lengths 1023 and 1025 make the DCT/DST of the real FFT transform a
// power of two or not.
TEST(Transform1D, AcceptsSmallerSignalsOfEveryKindAndRefusesLargerOnes) {
    const auto size = [](int kind, unsigned n) {
        return int(kind == kDct1 ? n - 1 : kind == kDst1 ? n + 1 : n);
    };
    for (int first = kComplex; first <= kDst1; ++first)
        for (int next = kComplex; next <= kDst1; ++next)
            for (unsigned length : {1024u, 1025u, 1023u}) {
                CDSPTransform1D transform;
                for (unsigned n : {length, 2u, 3u, 7u, 8u, 255u, 256u, 511u, 512u, length - 1,
                                   length + 1, 2 * length + 4}) {
                    const int kind = n == length ? first : next, isgn = kind % 2 ? 1 : -1;
                    CDSPSignal1D s(n);
                    const Vec in = Random(int(n) + 1, n);
                    std::copy(in.begin(), in.end(), s.data);
                    const bool accepted = size(kind, n) <= size(first, length);
                    EXPECT_EQ(Operate(transform, kind, isgn, &s), accepted)
                        << first << " " << kind << " " << n;
                    EXPECT_EQ(Vec(s.data, s.data + n + 1),
                              accepted ? Transform(kind, isgn, {size(kind, n)}, in) : in)
                        << first << " " << kind << " " << n;
                }
            }
    CDSPTransform1D transform;
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
template <typename T, typename Signal>
bool Operate(T& t, int kind, int isgn, Signal* s) {
    if (kind == kComplex) return t.ComplexFFT(isgn, s);
    if (kind == kReal || kind == kSorted) return t.RealFFT(isgn, kind == kSorted, s);
    return kind == kCosine ? t.RealDCT(isgn, s) : t.RealDST(isgn, s);
}

// One operation on a signal of these transform sizes (the sorted layout's rows two doubles
// longer) holding random values: the kernel's result, or refused with the samples untouched.
template <typename T>
void Expect(T& t, int kind, int isgn, const std::vector<int>& dims, bool accepted) {
    const int row = dims.back() + (kind == kSorted ? 2 : 0);
    const int rows = dims[0] * (dims.size() == 3 ? dims[1] : 1);
    const Vec in = Random(rows * row, unsigned(rows + kind));
    Vec out = in;
    const auto operate = [&](auto& signal, double* const* r) {
        for (int i = 0; i < rows; ++i) std::copy_n(&in[i * row], row, r[i]);
        EXPECT_EQ(Operate(t, kind, isgn, &signal), accepted)
            << kind << testing::PrintToString(dims);
        for (int i = 0; i < rows; ++i) std::copy_n(r[i], row, &out[i * row]);
    };
    if constexpr (std::is_same<T, CDSPTransform2D>::value) {
        CDSPSignal2D s(dims[0], row);
        operate(s, s.rows);
    } else {
        CDSPSignal3D s(dims[0], dims[1], row);
        std::vector<double*> r;
        for (int i = 0; i < dims[0]; ++i) r.insert(r.end(), s.planes[i], s.planes[i] + dims[1]);
        operate(s, r.data());
    }
    EXPECT_EQ(out, accepted ? Transform(kind, isgn, dims, in) : in)
        << kind << testing::PrintToString(dims);
}

// Every pair of operations, after a first signal, on smaller and larger signals (run under the
// sanitizers, this checks that the work areas serve every order of calls); the 3D shape's last
// dimension is much longer than the others, where the real 3D transform's twiddles exceed the
// simple estimate from the sizes. The sorted real transform compares the transform sizes.
TEST(Transform2D3D, AcceptSmallerSignalsOfEveryKindAndRefuseLargerOnes) {
    using Dims = std::vector<int>;
    for (int first : {kComplex, kReal, kSorted, kCosine, kSine})
        for (int next : {kComplex, kReal, kSorted, kCosine, kSine})
            for (int isgn : {1, -1}) {
                CDSPTransform2D t2;
                CDSPTransform3D t3;
                Expect(t2, first, isgn, {16, 32}, true);
                Expect(t3, first, isgn, {4, 2, 256}, true);
                for (const Dims& d : {Dims{16, 32}, {4, 8}, {2, 32}, {16, 2}})
                    Expect(t2, next, isgn, d, true);
                for (const Dims& d : {Dims{32, 32}, {16, 34}}) Expect(t2, next, isgn, d, false);
                for (const Dims& d : {Dims{4, 2, 256}, {2, 2, 256}, {2, 2, 16}, {4, 2, 2}})
                    Expect(t3, next, isgn, d, true);
                for (const Dims& d : {Dims{8, 2, 8}, {2, 4, 8}, {2, 2, 258}})
                    Expect(t3, next, isgn, d, false);
            }
    EXPECT_FALSE(CDSPTransform2D().RealDCT(1, nullptr));
}

}  // namespace
