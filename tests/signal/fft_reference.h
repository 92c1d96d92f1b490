#pragma once
// Direct O(n^2) evaluations of the transforms' defining sums (long double, phases reduced
// exactly in integers), and helpers shared by the signal tests.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <random>
#include <vector>

#include "math/signal/fft_kernels.h"

namespace fftref {

using Vec = std::vector<double>;
using Cplx = std::complex<long double>;
constexpr double kTol = 1e-13;  // relative to the largest output

// exp(2 pi i num / den).
inline Cplx Turn(long long num, long long den) {
    num %= den;
    const long double x =
        2 * 3.141592653589793238462643383279502884L * (num < 0 ? num + den : num) / den;
    return {std::cos(x), std::sin(x)};
}
inline std::vector<Cplx> Roots(long long den) {
    std::vector<Cplx> r(den);
    for (long long m = 0; m < den; ++m) r[m] = Turn(m, den);
    return r;
}

inline Vec Random(int n, unsigned seed) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> d(-1, 1);
    Vec v(n);
    for (double& x : v) x = d(rng);
    return v;
}

// p with its log2(count) bits reversed.
inline int BitRev(int p, int count) {
    int r = 0;
    for (int bit = 1; bit < count; bit <<= 1) r = (r << 1) | ((p & bit) ? 1 : 0);
    return r;
}

// max |a - b| / max |b|.
inline double RelError(const Vec& a, const Vec& b) {
    double err = 0, big = 0;
    for (size_t i = 0; i < b.size(); ++i) {
        err = std::max(err, std::fabs(a[i] - b[i]));
        big = std::max(big, std::fabs(b[i]));
    }
    return big > 0 ? err / big : err;
}

// --- one dimension, in the layouts of fft_kernels.h (zero inputs skipped: sparse ones are cheap)
inline Vec Cdft(int n, int s, const Vec& a) {
    const int N = n / 2;
    const auto e = Roots(N);
    std::vector<Cplx> r(N);
    for (int j = 0; j < N; ++j)
        for (int k = 0; k < N && (a[2 * j] != 0 || a[2 * j + 1] != 0); ++k)
            r[k] += Cplx(a[2 * j], a[2 * j + 1]) * e[(N + s * (1LL * j * k % N)) % N];
    Vec out(n);
    for (int k = 0; k < N; ++k)
        out[2 * k] = double(r[k].real()), out[2 * k + 1] = double(r[k].imag());
    return out;
}

// isgn < 0: type II (the DST's index n stored in slot 0); isgn >= 0: type III (the DST reads
// A[n] from slot 0). Angle pi num / (2n) with num = (2j + 1) k or j (2k + 1).
inline Vec CosSin(bool sine, int n, int s, const Vec& a) {
    const auto e = Roots(4LL * n);
    std::vector<long double> r(n, 0.0L);
    for (int j = 0; j < n; ++j)
        for (int k = 0; k < n && a[j] != 0; ++k) {
            const int kk = sine && s < 0 ? (k ? k : n) : k, jj = sine && s >= 0 ? (j ? j : n) : j;
            const Cplx z = e[(s < 0 ? (2LL * jj + 1) * kk : jj * (2LL * kk + 1)) % (4 * n)];
            r[k] += a[j] * (sine ? z.imag() : z.real());
        }
    return Vec(r.begin(), r.end());
}

// DCT-I of a[0..n] (sine false) or DST-I of a[1..n-1] (slot 0 ignored, output 0).
inline Vec Symmetric(bool sine, int n, const Vec& a) {
    const auto e = Roots(2LL * n);
    std::vector<long double> r(sine ? n : n + 1, 0.0L);
    for (size_t k = sine ? 1 : 0; k < r.size(); ++k)
        for (size_t j = sine ? 1 : 0; j < r.size(); ++j) {
            const Cplx z = e[j * k % (2 * n)];
            r[k] += a[j] * (sine ? z.imag() : z.real());
        }
    return Vec(r.begin(), r.end());
}

// --- several dimensions: row-major arrays, the last dimension in doubles -----------------------
// f (a 1D reference) along every axis of a row-major array of counts[i] elements of 'width'
// doubles each.
template <typename F>
Vec Separable(Vec data, const std::vector<int>& counts, size_t width, F f) {
    size_t outer = 1, inner = data.size() / width;
    for (size_t count : counts) {
        inner /= count;
        for (size_t o = 0; o < outer; ++o)
            for (size_t in = 0; in < inner; ++in) {
                const auto at = [&](size_t c) -> double& {
                    return data[((o * count + c / width) * inner + in) * width + c % width];
                };
                Vec line(count * width);
                for (size_t c = 0; c < line.size(); ++c) line[c] = at(c);
                line = f(line);
                for (size_t c = 0; c < line.size(); ++c) at(c) = line[c];
            }
        outer *= count;
    }
    return data;
}

// Packed layout of a real 1D/2D/3D spectrum (z: the full complex one, interleaved): per cell
// (element of the leading dimensions) the k = 1..m/2-1 values, then in slots 0, 1 the k = 0 and
// m/2 values: (Re, Im) of k = 0 for lower cells, (Im, Re) of k = m/2 for upper ones, both real
// parts for self-conjugate ones. A cell is lower (upper) when its innermost leading index that
// differs from its mirror is below (above) half its dimension.
inline Vec Pack(const Vec& z, const std::vector<int>& dims) {
    const int m = dims.back();
    Vec a(z.size() / 2);
    for (size_t c = 0; c < a.size() / m; ++c) {
        int kind = 0, rest = int(c);  // 0 self-conjugate, 1 lower, 2 upper
        for (int i = int(dims.size()) - 2; i >= 0; --i) {
            const int k = rest % dims[i];
            rest /= dims[i];
            if (kind == 0 && 2 * k % dims[i]) kind = 2 * k < dims[i] ? 1 : 2;
        }
        const double* zr = &z[2 * c * m];
        double* row = &a[c * m];
        for (int j = 2; j < m; ++j) row[j] = zr[j];
        row[0] = kind == 2 ? zr[m + 1] : zr[0];
        row[1] = kind == 1 ? zr[1] : zr[m];
    }
    return a;
}

// The routines by kind: cdft, rdft, ddct, ddst and their 2D/3D forms; dfct, dfst (1D only);
// rdft2d/rdft3d with the sort into (isgn >= 0) or from (isgn < 0) the natural half spectrum,
// whose rows hold two more doubles than the transform size.
enum Kind { kComplex, kReal, kCosine, kSine, kDct1, kDst1, kSorted };

// What the routine of that kind computes, by the sums along every axis; the real DFT forward
// only (whatever s): the packed spectrum, or for kSorted the natural half spectrum (input rows'
// last two doubles ignored).
inline Vec Expected(int kind, int s, std::vector<int> dims, const Vec& a) {
    if (kind == kDct1 || kind == kDst1) return Symmetric(kind == kDst1, dims[0], a);
    if (kind == kCosine || kind == kSine)
        return Separable(a, dims, 1,
                         [&](const Vec& l) { return CosSin(kind == kSine, int(l.size()), s, l); });
    const size_t m = dims.back(), row = kind == kSorted ? m + 2 : m;
    const auto dft = [&](const Vec& l) { return Cdft(int(l.size()), kind == kComplex ? s : 1, l); };
    if (kind == kComplex) {
        dims.back() /= 2;
        return Separable(a, dims, 2, dft);
    }
    Vec z(2 * a.size() / row * m, 0.0), sorted(a.size());
    for (size_t i = 0; i < a.size(); ++i)
        if (i % row < m) z[2 * (i / row * m + i % row)] = a[i];
    z = Separable(z, dims, 2, dft);
    for (size_t i = 0; i < a.size(); ++i) sorted[i] = z[i / row * 2 * m + i % row];
    return kind == kReal ? Pack(z, dims) : sorted;
}

// Work areas large enough for any routine at these sizes.
struct Tables {
    std::vector<int> ip;
    Vec w, t;
    explicit Tables(int largest)
        : ip(66 + int(std::sqrt(double(largest))), 0), w(2 * largest + 8), t(8 * largest + 8) {}
};

// The routine of that kind on a row-major array of the sizes it takes (the last in doubles),
// with these tables or fresh ones; t null when ownWorkArea.
inline Vec Transform(int kind, int s, const std::vector<int>& dims, Vec a, Tables* tables = nullptr,
                     bool ownWorkArea = false) {
    Tables fresh(tables ? 1 : *std::max_element(dims.begin(), dims.end()));
    Tables& tb = tables ? *tables : fresh;
    double *t = ownWorkArea ? nullptr : tb.t.data(), *w = tb.w.data();
    int* ip = tb.ip.data();
    const decltype(&cdft) k1[] = {cdft, rdft, ddct, ddst};
    const decltype(&cdft2d) k2[] = {cdft2d, rdft2d, ddct2d, ddst2d};
    const decltype(&cdft3d) k3[] = {cdft3d, rdft3d, ddct3d, ddst3d};
    const int d = int(dims.size()), n = dims.back(), n1 = dims[0];
    if (d == 1 && kind >= kDct1) (kind == kDst1 ? dfst : dfct)(n, a.data(), t, ip, w);
    if (d == 1 && kind < kDct1) k1[kind](n, s, a.data(), ip, w);
    if (d == 1) return a;
    const bool sort = kind == kSorted;  // rows of n + 2 doubles
    const int n2 = dims[d - 2], row = sort ? n + 2 : n;
    std::vector<double*> rows(a.size() / row);
    std::vector<double**> planes(d == 3 ? n1 : 0);
    for (size_t i = 0; i < rows.size(); ++i) rows[i] = &a[i * row];
    for (size_t i = 0; i < planes.size(); ++i) planes[i] = &rows[i * n2];
    double **r = rows.data(), ***p = planes.data();
    if (sort && s < 0) d == 2 ? rdft2dsort(n1, n, s, r) : rdft3dsort(n1, n2, n, s, p);
    if (d == 2) k2[sort ? kReal : kind](n1, n, s, r, t, ip, w);
    if (d == 3) k3[sort ? kReal : kind](n1, n2, n, s, p, t, ip, w);
    if (sort && s >= 0) d == 2 ? rdft2dsort(n1, n, s, r) : rdft3dsort(n1, n2, n, s, p);
    return a;
}

}  // namespace fftref
