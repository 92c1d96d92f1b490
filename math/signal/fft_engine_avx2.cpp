// The transform engine for processors with AVX2 and FMA: two complex values per register. This
// file alone is compiled with -mavx2 -mfma and is only entered after a run-time check; it
// includes no header with inline functions of its own besides the intrinsics.
#include <immintrin.h>

#include "math/signal/fft_engine.h"

namespace {

struct V {
    using R = __m256d;
    static constexpr int W = 2;
    static R Load(const double* p) { return _mm256_loadu_pd(p); }
    static void Store(double* p, R v) { _mm256_storeu_pd(p, v); }
    static R Add(R a, R b) { return _mm256_add_pd(a, b); }
    static R Sub(R a, R b) { return _mm256_sub_pd(a, b); }
    static R Set(const struct Cx& c0, const struct Cx& c1);
    // S i (x + i y) = (-S y, S x), for both values.
    template <int S>
    static R MulI(R v) {
        const R swapped = _mm256_permute_pd(v, 0x5);
        return _mm256_xor_pd(swapped, S > 0 ? _mm256_set_pd(0.0, -0.0, 0.0, -0.0)
                                            : _mm256_set_pd(-0.0, 0.0, -0.0, 0.0));
    }
    static R CMul(R a, R t) {
        const R re = _mm256_movedup_pd(t), im = _mm256_permute_pd(t, 0xF);
        return _mm256_fmaddsub_pd(a, re, _mm256_mul_pd(_mm256_permute_pd(a, 0x5), im));
    }
    static R Swap(R v) { return _mm256_permute2f128_pd(v, v, 1); }
    static R Conj(R v) { return _mm256_xor_pd(v, _mm256_set_pd(-0.0, 0.0, -0.0, 0.0)); }
    static R DupRe(R v) { return _mm256_movedup_pd(v); }
    static R DupIm(R v) { return _mm256_permute_pd(v, 0xF); }
    // The quadruples hold W^k and the conjugate of W^3k.
    static void Quads(R x, R y, R& w1, R& w3) {
        w1 = _mm256_permute2f128_pd(x, y, 0x20);
        w3 = Conj(_mm256_permute2f128_pd(x, y, 0x31));
    }
    // Mirrored about the diagonal: W^(M/4 - k') = (sin, cos) of k', W^3(M/4 - k') = (-sin 3,
    // -cos 3) of k'.
    static void MirroredQuads(R x, R y, R& w1, R& w3) {
        w1 = _mm256_permute_pd(_mm256_permute2f128_pd(x, y, 0x20), 0x5);
        w3 = Conj(_mm256_permute_pd(_mm256_permute2f128_pd(x, y, 0x31), 0x5));
    }
    static R Mean(R x, R y, double h1, double h3) {
        return _mm256_mul_pd(_mm256_add_pd(x, y), _mm256_set_pd(h3, h3, h1, h1));
    }
    static R CMulSplit(R a, R re, R im) {
        return _mm256_fmaddsub_pd(a, re, _mm256_mul_pd(_mm256_permute_pd(a, 0x5), im));
    }
    template <int S>
    static void Last4(const R* x, R* y);
    static void StoreLane(double* p, R v, int lane) {
        _mm_storeu_pd(p, lane == 0 ? _mm256_castpd256_pd128(v) : _mm256_extractf128_pd(v, 1));
    }
    // (x0 + x1, x0 - x1) from the register (x0, x1).
    static void Last2(const R* x, R* y) {
        const R swapped = _mm256_permute2f128_pd(x[0], x[0], 1);
        y[0] = _mm256_blend_pd(Add(x[0], swapped), Sub(swapped, x[0]), 0xC);
    }
};

#include "math/signal/fft_engine_impl.inc"

inline V::R V::Set(const Cx& c0, const Cx& c1) { return _mm256_set_pd(c1.im, c1.re, c0.im, c0.re); }

// x[0] = (v0, v1), x[1] = (v2, v3): sums and differences across the registers give
// (v0 + v2, v1 + v3) and (v0 - v2, v1 - v3); regrouping the 128-bit halves finishes the
// butterfly, and the outputs leave in the order v0', v2', v1', v3'.
template <int S>
inline void V::Last4(const R* x, R* y) {
    const R s = Add(x[0], x[1]), d = Sub(x[0], x[1]);
    const R lo = _mm256_permute2f128_pd(s, d, 0x20), hi = _mm256_permute2f128_pd(s, d, 0x31);
    const R turned = _mm256_blend_pd(hi, MulI<S>(hi), 0xC);
    const R plus = Add(lo, turned), minus = Sub(lo, turned);
    y[0] = _mm256_permute2f128_pd(plus, minus, 0x20);
    y[1] = _mm256_permute2f128_pd(plus, minus, 0x31);
}

}  // namespace

#define MATH_FFT_ISA avx2
#include "math/signal/fft_engine_entry.inc"
