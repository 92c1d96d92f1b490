// The transform engine for every x86-64 processor: SSE2, one complex value per register.
#include <emmintrin.h>

#include "math/signal/fft_engine.h"

namespace {

struct V {
    using R = __m128d;
    static constexpr int W = 1;
    static R Load(const double* p) { return _mm_loadu_pd(p); }
    static void Store(double* p, R v) { _mm_storeu_pd(p, v); }
    static R Add(R a, R b) { return _mm_add_pd(a, b); }
    static R Sub(R a, R b) { return _mm_sub_pd(a, b); }
    static R Set(const struct Cx& c0, const struct Cx& c1);
    // S i (x + i y) = (-S y, S x).
    template <int S>
    static R MulI(R v) {
        const R swapped = _mm_shuffle_pd(v, v, 1);
        return _mm_xor_pd(swapped, S > 0 ? _mm_set_pd(0.0, -0.0) : _mm_set_pd(-0.0, 0.0));
    }
    static R CMul(R a, R t) {
        const R re = _mm_unpacklo_pd(a, a), im = _mm_unpackhi_pd(a, a);
        const R cross = _mm_xor_pd(_mm_mul_pd(im, _mm_shuffle_pd(t, t, 1)), _mm_set_pd(0.0, -0.0));
        return _mm_add_pd(_mm_mul_pd(re, t), cross);
    }
    static R Swap(R v) { return v; }
    static R DupRe(R v) { return _mm_unpacklo_pd(v, v); }
    static R DupIm(R v) { return _mm_unpackhi_pd(v, v); }
    static R Conj(R v) { return _mm_xor_pd(v, _mm_set_pd(-0.0, 0.0)); }
    static R CMulSplit(R a, R re, R im) {
        const R cross = _mm_xor_pd(_mm_mul_pd(_mm_shuffle_pd(a, a, 1), im), _mm_set_pd(0.0, -0.0));
        return _mm_add_pd(_mm_mul_pd(a, re), cross);
    }
    template <int S>
    static void Last4(const R* x, R* y);
    static void StoreLane(double* p, R v, int) { Store(p, v); }
    static void Last2(const R* x, R* y) {
        y[0] = Add(x[0], x[1]);
        y[1] = Sub(x[0], x[1]);
    }
};

#include "math/signal/fft_engine_impl.inc"

inline V::R V::Set(const Cx& c0, const Cx&) { return _mm_set_pd(c0.im, c0.re); }

template <int S>
inline void V::Last4(const R* x, R* y) {
    y[0] = x[0];
    y[1] = x[1];
    y[2] = x[2];
    y[3] = x[3];
    Butterfly<S>(y[0], y[1], y[2], y[3]);
}

}  // namespace

#define MATH_FFT_ISA sse2
#include "math/signal/fft_engine_entry.inc"
