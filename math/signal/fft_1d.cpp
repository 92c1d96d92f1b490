// One-dimensional transforms: complex and real DFT, DCT/DST of types II and III (through a
// complex transform of half the length), and DCT-I/DST-I (by halving into a type III transform
// and a type I transform of half the size).
#include <utility>

#include "math/signal/fft_engine.h"
#include "math/signal/fft_kernels.h"
#include "math/signal/fft_support.h"

namespace math3d_detail {
namespace fft {

namespace {

// Unshuffle moves element 2i + b to b n/2 + i (a rotation of the index bits, which is a bit
// reversal of the complex values followed by one of the doubles); Shuffle undoes it.
void Unshuffle(double* a, int n) {
    BitReverseComplex(a, n / 2);
    BitReverseReal(a, n);
}
void Shuffle(double* a, int n) {
    BitReverseReal(a, n);
    BitReverseComplex(a, n / 2);
}

// Reverses the order of the odd-indexed elements, negating them when asked.
void ReverseOdd(double* a, int n, bool negate) {
    for (int i = 1, j = n - 1; i < j; i += 2, j -= 2) {
        const double t = a[i];
        a[i] = negate ? -a[j] : a[j];
        a[j] = negate ? -t : t;
    }
}

// DCT-II / DST-II of n >= 4 values. The even-indexed values followed by the odd-indexed ones in
// reverse order go through the real transform (complex transform of n/2 values, then the split);
// the outputs are the real and imaginary parts of exp(i pi k / (2n)) V[k], V the spectrum
// conjugated (+ sign here). They are written as pairs (out[i], out[n/2 + i]), which one last
// reordering puts in place. The DST is the DCT of the input with odd elements negated, outputs
// read backwards.
void CosSinForward(int n, bool sine, double* a, int nw, const double* w, int nc, const double* c) {
    const int half = n / 2, cs = nc / n;
    ReverseOdd(a, n, sine);
    Unshuffle(a, n);
    Complex(a, half, 1, w, nw);
    RealSplit(a, n, 1, nc, c);
    const double r0 = a[0], r1 = a[1];
    a[0] = r0 + r1;
    a[1] = (r0 - r1) * c[0];
    for (int k = 1; 2 * k <= half; ++k) {  // V[k] and V[m] in slots k and m
        const int m = half - k;
        const double ck = 2 * c[k * cs], sk = 2 * c[nc - k * cs];
        const double cm = 2 * c[m * cs], sm = 2 * c[nc - m * cs];
        const double u1r = ck * a[2 * k] - sk * a[2 * k + 1],
                     u1i = sk * a[2 * k] + ck * a[2 * k + 1];
        const double u2r = cm * a[2 * m] - sm * a[2 * m + 1],
                     u2i = sm * a[2 * m] + cm * a[2 * m + 1];
        a[2 * k] = sine ? u1i : u1r;
        a[2 * k + 1] = sine ? u2r : u2i;
        a[2 * m] = sine ? u2i : u2r;
        a[2 * m + 1] = sine ? u1r : u1i;
    }
    Unshuffle(a, n);
}

// DCT-III / DST-III of n >= 4 values: the transpose of the above, step by step in reverse.
void CosSinBackward(int n, bool sine, double* a, int nw, const double* w, int nc, const double* c) {
    const int half = n / 2, cs = nc / n;
    Shuffle(a, n);
    // Pair k holds (x[k], x[half + k]); the DST reads x[j] = a[n - j] (x[0] = a[0]).
    const double x0 = a[0], xh = a[1] * c[0];
    a[0] = x0 + xh;
    a[1] = x0 - xh;
    for (int k = 1; 2 * k <= half; ++k) {  // exp(-i pi j / (2n)) (x[j] + i x[n - j]), j = k, m
        const int m = half - k;
        double xk = a[2 * k], xnk = a[2 * m + 1], xm = a[2 * m], xnm = a[2 * k + 1];
        if (sine) {
            std::swap(xk, xnk);
            std::swap(xm, xnm);
        }
        const double ck = 2 * c[k * cs], sk = 2 * c[nc - k * cs];
        const double cm = 2 * c[m * cs], sm = 2 * c[nc - m * cs];
        a[2 * k] = ck * xk + sk * xnk;
        a[2 * k + 1] = ck * xnk - sk * xk;
        a[2 * m] = cm * xm + sm * xnm;
        a[2 * m + 1] = cm * xnm - sm * xm;
    }
    RealSplit(a, n, -1, nc, c);
    Complex(a, half, -1, w, nw);
    Shuffle(a, n);
    ReverseOdd(a, n, sine);
}

}  // namespace

void ComplexDft(int n, int isgn, double* a, const int* ip, const double* w) {
    Complex(a, n / 2, isgn >= 0 ? 1 : -1, w, ip[0]);
}

void ComplexDfts(int n, int howMany, int isgn, double* a, const int* ip, const double* w) {
    ComplexMany(a, n / 2, howMany, isgn >= 0 ? 1 : -1, w, ip[0]);
}

void RealDft(int n, int isgn, double* a, const int* ip, const double* w) {
    const int nw = ip[0], nc = ip[1];
    const double* c = w + nw;
    if (isgn >= 0) {
        if (n > 2) Complex(a, n / 2, 1, w, nw);
        if (n > 4) RealSplit(a, n, 1, nc, c);
        const double x = a[0] - a[1];
        a[0] += a[1];
        a[1] = x;
    } else {
        a[1] = 0.5 * (a[0] - a[1]);
        a[0] -= a[1];
        if (n > 4) RealSplit(a, n, -1, nc, c);
        if (n > 2) Complex(a, n / 2, -1, w, nw);
    }
}

void CosSinDft(int n, int isgn, bool sine, double* a, const int* ip, const double* w) {
    const int nw = ip[0], nc = ip[1];
    const double* c = w + nw;
    if (n == 2) {
        const double x = a[0], y = a[1], r = c[0];
        if (isgn < 0) {
            a[0] = sine ? x - y : x + y;
            a[1] = sine ? (x + y) * r : (x - y) * r;
        } else {
            a[0] = sine ? y * r + x : x + y * r;
            a[1] = sine ? y * r - x : x - y * r;
        }
    } else if (isgn < 0) {
        CosSinForward(n, sine, a, nw, w, nc, c);
    } else {
        CosSinBackward(n, sine, a, nw, w, nc, c);
    }
}

}  // namespace fft
}  // namespace math3d_detail

namespace fft = math3d_detail::fft;

void rftfsub(int n, double* a, int nc, double* c) {
    n = fft::FloorPow2(n);
    if (n >= 8) fft::RealSplit(a, n, 1, nc, c);
}
void rftbsub(int n, double* a, int nc, double* c) {
    n = fft::FloorPow2(n);
    if (n >= 8) fft::RealSplit(a, n, -1, nc, c);
}

namespace {
// (a[j], a[n - j]) <- (u a[j] + v a[n - j], v a[j] - u a[n - j]) with u, v = (cos -/+ sin)/2 of
// pi j / (2n), for 0 < j < n/2 (dstsub: the pair in the other order), then a[n/2] *= cos(pi/4).
void RotatePairs(int n, double* a, int nc, const double* c, bool sine) {
    const int ks = nc / n;
    for (int j = 1, kk = ks; 2 * j < n; ++j, kk += ks) {
        const double u = c[kk] - c[nc - kk], v = c[kk] + c[nc - kk];
        double& x = sine ? a[n - j] : a[j];
        double& y = sine ? a[j] : a[n - j];
        const double x0 = x;
        x = u * x0 + v * y;
        y = v * x0 - u * y;
    }
    a[n / 2] *= c[0];
}
}  // namespace

void dctsub(int n, double* a, int nc, double* c) { RotatePairs(n, a, nc, c, false); }
void dstsub(int n, double* a, int nc, double* c) { RotatePairs(n, a, nc, c, true); }

void cdft(int n, int isgn, double* a, int* ip, double* w) {
    n = fft::FloorPow2(n);
    if (n < 2) return;
    fft::EnsureTwiddles(n, ip, w);
    fft::ComplexDft(n, isgn, a, ip, w);
}

void rdft(int n, int isgn, double* a, int* ip, double* w) {
    n = fft::FloorPow2(n);
    if (n < 2) return;
    fft::EnsureTwiddles(n, ip, w);
    fft::EnsureCosines(n, 4, ip, w);
    fft::RealDft(n, isgn, a, ip, w);
}

void ddct(int n, int isgn, double* a, int* ip, double* w) {
    n = fft::FloorPow2(n);
    if (n < 2) return;
    fft::EnsureTwiddles(n, ip, w);
    fft::EnsureCosines(n, 1, ip, w);
    fft::CosSinDft(n, isgn, false, a, ip, w);
}

void ddst(int n, int isgn, double* a, int* ip, double* w) {
    n = fft::FloorPow2(n);
    if (n < 2) return;
    fft::EnsureTwiddles(n, ip, w);
    fft::EnsureCosines(n, 1, ip, w);
    fft::CosSinDft(n, isgn, true, a, ip, w);
}

namespace {

// DCT-I of a[0..n]: the even outputs are the DCT-I of s[j] = a[j] + a[n - j] (n/2 + 1 values,
// s[n/2] = a[n/2]), the odd ones the DCT-III of d[j] = a[j] - a[n - j] (n/2 values). s goes to
// t, d stays in a; the half-size DCT-I then runs in t with the free upper half of a as its
// work area, and the two halves are interleaved back.
void CosineOfSymmetric(int n, double* a, double* t, const int* ip, const double* w) {
    if (n == 1) {
        const double x = a[0] - a[1];
        a[0] += a[1];
        a[1] = x;
        return;
    }
    const int h = n / 2;
    t[0] = a[0] + a[n];
    a[0] -= a[n];
    for (int j = 1; j < h; ++j) {
        t[j] = a[j] + a[n - j];
        a[j] -= a[n - j];
    }
    t[h] = a[h];
    if (h >= 2) fft::CosSinDft(h, 1, false, a, ip, w);
    CosineOfSymmetric(h, t, a + h, ip, w);
    for (int m = h; m >= 0; --m) {
        if (m < h) a[2 * m + 1] = a[m];
        a[2 * m] = t[m];
    }
}

// DST-I of a[1..n-1]: the even outputs are the DST-I of d[j] = a[j] - a[n - j], the odd ones
// the DST-III of s[j] = a[j] + a[n - j] with s[n/2] = a[n/2] (kept in s[0], where the DST-III
// reads its last input).
void SineOfAntisymmetric(int n, double* a, double* t, const int* ip, const double* w) {
    a[0] = 0;
    if (n == 2) return;
    const int h = n / 2;
    for (int j = 1; j < h; ++j) {
        t[j] = a[j] - a[n - j];
        a[j] += a[n - j];
    }
    a[0] = a[h];
    fft::CosSinDft(h, 1, true, a, ip, w);
    SineOfAntisymmetric(h, t, a + h, ip, w);
    for (int m = h - 1; m >= 0; --m) {
        a[2 * m + 1] = a[m];
        a[2 * m] = t[m];
    }
    a[0] = 0;
}

}  // namespace

void dfct(int n, double* a, double* t, int* ip, double* w) {
    n = fft::FloorPow2(n);
    if (n < 2) return;
    fft::EnsureTwiddles(n / 2, ip, w);
    fft::EnsureCosines(n, 2, ip, w);
    CosineOfSymmetric(n, a, t, ip, w);
}

void dfst(int n, double* a, double* t, int* ip, double* w) {
    n = fft::FloorPow2(n);
    if (n < 2) return;
    fft::EnsureTwiddles(n / 2, ip, w);
    fft::EnsureCosines(n, 2, ip, w);
    SineOfAntisymmetric(n, a, t, ip, w);
}
