// Run-time choice between the two builds of the transform engine.
#include "math/signal/fft_engine.h"

namespace math3d_detail {
namespace fft {

namespace {
// Reads the processor description the runtime filled in at start-up; cheap enough per call.
bool UseAvx2() {
#if defined(__x86_64__) || defined(__i386__)
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
#else
    return false;
#endif
}
}  // namespace

void Complex(double* a, int count, int sign, const double* w, int nw) {
    UseAvx2() ? avx2::Complex(a, count, sign, w, nw) : sse2::Complex(a, count, sign, w, nw);
}
void ComplexMany(double* a, int count, int howMany, int sign, const double* w, int nw) {
    UseAvx2() ? avx2::ComplexMany(a, count, howMany, sign, w, nw)
              : sse2::ComplexMany(a, count, howMany, sign, w, nw);
}
void Decimate(double* a, int count, int sign, const double* w, int nw) {
    UseAvx2() ? avx2::Decimate(a, count, sign, w, nw) : sse2::Decimate(a, count, sign, w, nw);
}
void Radix4Pass(double* a, int count, int sign, const double* w, int nw) {
    UseAvx2() ? avx2::Radix4Pass(a, count, sign, w, nw) : sse2::Radix4Pass(a, count, sign, w, nw);
}
void Radix2Pass(double* a, int count, int sign, const double* w, int nw) {
    UseAvx2() ? avx2::Radix2Pass(a, count, sign, w, nw) : sse2::Radix2Pass(a, count, sign, w, nw);
}
int Passes(double* a, int count, int block, int sign, const double* w, int nw) {
    return UseAvx2() ? avx2::Passes(a, count, block, sign, w, nw)
                     : sse2::Passes(a, count, block, sign, w, nw);
}
void Leaf16(double* a, int count, int sign, const double* w, int nw) {
    UseAvx2() ? avx2::Leaf16(a, count, sign, w, nw) : sse2::Leaf16(a, count, sign, w, nw);
}
void RealSplit(double* a, int n, int sign, int nc, const double* c) {
    UseAvx2() ? avx2::RealSplit(a, n, sign, nc, c) : sse2::RealSplit(a, n, sign, nc, c);
}
void BitReverseComplex(double* a, int count) {
    UseAvx2() ? avx2::BitReverseComplex(a, count) : sse2::BitReverseComplex(a, count);
}
void BitReverseReal(double* a, int count) {
    UseAvx2() ? avx2::BitReverseReal(a, count) : sse2::BitReverseReal(a, count);
}

}  // namespace fft
}  // namespace math3d_detail
