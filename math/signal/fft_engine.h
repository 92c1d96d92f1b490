#pragma once
// The complex transform engine behind the kernels of fft_kernels.h (internal, not exported).
//
// Radix-4 decimation in frequency, in place on interleaved complex values: natural order in,
// bit-reversed order out; for the whole transform the bit reversal is fused with the last
// stages, so the order comes out natural. Groups that fit the cache go pass by pass, larger ones
// depth first (one pass, then each quarter). Twiddle factors come from the makewt table: the
// block for a transform of M values sits at w + nw - M/2 and holds cos, sin of 2 pi k / M and of
// 6 pi k / M for even k < M/8, plus the two constants that give the odd k by interpolation; the
// other octants follow by symmetry.
//
// Two builds of the same code: SSE2 (one complex value per register, every x86-64 processor) and
// AVX2 + FMA (two per register), chosen at run time. FMA rounds differently from a separate
// multiply and add, so the two agree to the last few bits only.
//
// count is a number of complex values, a power of two; sign is +1 (exp(+i...)) or -1. Nothing
// here allocates: twiddles are derived in small blocks on the stack (at most 6 KB).

namespace math3d_detail {
namespace fft {

// Whole transform, natural order in and out (count >= 1, nw >= count / 2).
void Complex(double* a, int count, int sign, const double* w, int nw);
// howMany such transforms of consecutive arrays of count values.
void ComplexMany(double* a, int count, int howMany, int sign, const double* w, int nw);
// The decimation only: natural order in, bit-reversed order out (count >= 2).
void Decimate(double* a, int count, int sign, const double* w, int nw);
// One radix-4 pass over a single group of count values (count >= 8), twiddles of that size.
void Radix4Pass(double* a, int count, int sign, const double* w, int nw);
// One radix-2 pass over a single group of count values (count >= 4).
void Radix2Pass(double* a, int count, int sign, const double* w, int nw);
// The radix-4 passes of one group of count values from span count/4 down to span block/4
// (block a power of four >= 16 dividing count); returns the number of passes.
int Passes(double* a, int count, int block, int sign, const double* w, int nw);
// The last two radix-4 stages of every block of 16 values of count values (count >= 16).
void Leaf16(double* a, int count, int sign, const double* w, int nw);

// The step between the complex transform of n/2 values and the real spectrum of n doubles
// (sign +1 after the forward transform, -1 before the inverse one); nc >= n/4 cosines in c.
void RealSplit(double* a, int n, int sign, int nc, const double* c);

// Bit reversal of count complex values (16-byte elements) and of count doubles.
void BitReverseComplex(double* a, int count);
void BitReverseReal(double* a, int count);

// The same entry points per instruction set; the ones above dispatch to them.
#define MATH_FFT_ENGINE_DECLARE(ns)                                                         \
    namespace ns {                                                                          \
    void Complex(double* a, int count, int sign, const double* w, int nw);                  \
    void ComplexMany(double* a, int count, int howMany, int sign, const double* w, int nw); \
    void Decimate(double* a, int count, int sign, const double* w, int nw);                 \
    void Radix4Pass(double* a, int count, int sign, const double* w, int nw);               \
    void Radix2Pass(double* a, int count, int sign, const double* w, int nw);               \
    int Passes(double* a, int count, int block, int sign, const double* w, int nw);         \
    void Leaf16(double* a, int count, int sign, const double* w, int nw);                   \
    void RealSplit(double* a, int n, int sign, int nc, const double* c);                    \
    void BitReverseComplex(double* a, int count);                                           \
    void BitReverseReal(double* a, int count);                                              \
    }
MATH_FFT_ENGINE_DECLARE(sse2)
MATH_FFT_ENGINE_DECLARE(avx2)
#undef MATH_FFT_ENGINE_DECLARE

}  // namespace fft
}  // namespace math3d_detail
