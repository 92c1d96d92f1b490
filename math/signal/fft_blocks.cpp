// The exported stages of the complex transform: thin entries into the engine.
#include "math/signal/fft_engine.h"
#include "math/signal/fft_kernels.h"
#include "math/signal/fft_support.h"

namespace fft = math3d_detail::fft;

void cftfsub(int n, double* a, int*, int nw, double* w) {
    if (n >= 2) fft::Complex(a, fft::FloorPow2(n) / 2, 1, w, nw);
}
void cftbsub(int n, double* a, int*, int nw, double* w) {
    if (n >= 2) fft::Complex(a, fft::FloorPow2(n) / 2, -1, w, nw);
}

void bitrv2(int n, int*, double* a) {
    n = fft::FloorPow2(n);
    if (n >= 2) fft::BitReverseComplex(a, n / 2);
}
void bitrv2conj(int n, int* ip, double* a) {
    n = fft::FloorPow2(n);
    bitrv2(n, ip, a);
    for (int i = 1; i < n; i += 2) a[i] = -a[i];
}
void bitrv216(double* a) { fft::BitReverseComplex(a, 16); }
void bitrv208(double* a) { fft::BitReverseComplex(a, 8); }

namespace {
// Value bitrev(-p mod count) to place p: bit reversal, then the order of values 1..count-1
// reversed.
void BitReverseNegated(double* a, int count) {
    fft::BitReverseComplex(a, count);
    for (int i = 1, j = count - 1; i < j; ++i, --j) {
        for (int c = 0; c < 2; ++c) {
            const double t = a[2 * i + c];
            a[2 * i + c] = a[2 * j + c];
            a[2 * j + c] = t;
        }
    }
}
}  // namespace

void bitrv216neg(double* a) { BitReverseNegated(a, 16); }
void bitrv208neg(double* a) { BitReverseNegated(a, 8); }

namespace {
// One pass over the n/2 values of a with the twiddle table w of a makewt(n/4).
void FirstPass(void (*pass)(double*, int, int, const double*, int), int n, double* a, int sign,
               const double* w) {
    n = fft::FloorPow2(n);
    if (n >= 16) pass(a, n / 2, sign, w, n / 4);
}
}  // namespace

void cftf1st(int n, double* a, double* w) { FirstPass(fft::Radix4Pass, n, a, 1, w); }
void cftb1st(int n, double* a, double* w) { FirstPass(fft::Radix4Pass, n, a, -1, w); }
void cftmdl1(int n, double* a, double* w) { FirstPass(fft::Radix2Pass, n, a, 1, w); }
void cftmdl2(int n, double* a, double* w) { FirstPass(fft::Radix2Pass, n, a, -1, w); }

void cftrec4(int n, double* a, int nw, double* w) {
    n = fft::FloorPow2(n);
    if (n >= 4) fft::Decimate(a, n / 2, 1, w, nw);
}

int cfttree(int n, int j, int k, double* a, int nw, double* w) {
    n = fft::FloorPow2(n);
    k = fft::FloorPow2(k);
    if (n < 32 || k < 4) return 0;
    return fft::Passes(a + 2 * j, n / 2, k, 1, w, nw);
}

void cftleaf(int n, int isplt, double* a, int nw, double* w) {
    n = fft::FloorPow2(n);
    isplt = fft::FloorPow2(isplt);
    if (isplt < 2) return;
    for (int b = 0; b + isplt <= n / 2; b += isplt) fft::Decimate(a + 2 * b, isplt, 1, w, nw);
}

void cftfx41(int n, double* a, int nw, double* w) {
    n = fft::FloorPow2(n);
    if (n >= 32) fft::Leaf16(a, n / 2, 1, w, nw);
}

void cftf161(double* a, double* w) { fft::Leaf16(a, 16, 1, w, 8); }
void cftf162(double* a, double* w) { fft::Leaf16(a, 16, -1, w, 8); }
void cftf081(double* a, double* w) { fft::Decimate(a, 8, 1, w, 4); }
void cftf082(double* a, double* w) { fft::Decimate(a, 8, -1, w, 4); }
void cftf040(double* a) { fft::Complex(a, 4, 1, nullptr, 0); }
void cftb040(double* a) { fft::Complex(a, 4, -1, nullptr, 0); }
void cftx020(double* a) { fft::Complex(a, 2, 1, nullptr, 0); }
