#pragma once
// Direct O(n^2) evaluations of the transforms' defining sums (long double, phases reduced
// exactly in integers), and helpers shared by the signal tests.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <random>
#include <vector>

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

// max |a - b| / max |b|.
inline double RelError(const Vec& a, const Vec& b) {
    double err = 0, big = 0;
    for (size_t i = 0; i < b.size(); ++i) {
        err = std::max(err, std::fabs(a[i] - b[i]));
        big = std::max(big, std::fabs(b[i]));
    }
    return big > 0 ? err / big : err;
}

// --- one dimension, in the layouts of fft_kernels.h --------------------------------------------
inline Vec Cdft(int n, int s, const Vec& a) {
    const int N = n / 2;
    const auto e = Roots(N);
    Vec r(n);
    for (int k = 0; k < N; ++k) {
        Cplx sum = 0;
        for (int j = 0; j < N; ++j)
            sum += Cplx(a[2 * j], a[2 * j + 1]) * e[(N + s * (1LL * j * k % N)) % N];
        r[2 * k] = double(sum.real());
        r[2 * k + 1] = double(sum.imag());
    }
    return r;
}

// Forward: packed R[0], R[n/2], (R[k], I[k]); backward: the half-weighted cos/sin sum.
inline Vec Rdft(int n, int s, const Vec& a) {
    const auto e = Roots(n);
    std::vector<long double> r(n, 0.0L);
    for (int k = 0; k <= n / 2; ++k)
        for (int j = 0; j < n; ++j) {
            const Cplx z = e[1LL * j * k % n];
            if (s < 0 && k > 0 && k < n / 2)
                r[j] += a[2 * k] * z.real() + a[2 * k + 1] * z.imag();
            else if (s < 0)
                r[j] += (k == 0 ? a[0] : (j % 2 ? -a[1] : a[1])) / 2.0L;
            else if (k == 0 || k == n / 2)
                r[k ? 1 : 0] += a[j] * z.real();
            else {
                r[2 * k] += a[j] * z.real();
                r[2 * k + 1] += a[j] * z.imag();
            }
        }
    return Vec(r.begin(), r.end());
}

// isgn < 0: type II (the DST's index n stored in slot 0); isgn >= 0: type III (the DST reads
// A[n] from slot 0). Angle pi num / (2n) with num = (2j + 1) k or j (2k + 1).
inline Vec CosSin(bool sine, int n, int s, const Vec& a) {
    const auto e = Roots(4LL * n);
    std::vector<long double> r(n, 0.0L);
    for (int k = 0; k < n; ++k)
        for (int j = 0; j < n; ++j) {
            const int kk = sine && s < 0 ? (k ? k : n) : k, jj = sine && s >= 0 ? (j ? j : n) : j;
            const Cplx z = e[(s < 0 ? (2LL * jj + 1) * kk : jj * (2LL * kk + 1)) % (4 * n)];
            r[k] += a[j] * (sine ? z.imag() : z.real());
        }
    return Vec(r.begin(), r.end());
}
inline Vec Ddct(int n, int s, const Vec& a) { return CosSin(false, n, s, a); }
inline Vec Ddst(int n, int s, const Vec& a) { return CosSin(true, n, s, a); }

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
// f (a 1D reference) along the axis of 'count' elements of 'width' doubles, 'inner' doubles
// apart, for each of 'outer' blocks.
template <typename F>
void AlongAxis(Vec& data, int outer, int count, int inner, int width, F f) {
    for (int o = 0; o < outer; ++o)
        for (int in = 0; in < inner; in += width) {
            Vec line(count * width);
            for (int c = 0; c < count * width; ++c)
                line[c] = data[(o * count + c / width) * inner + in + c % width];
            line = f(line);
            for (int c = 0; c < count * width; ++c)
                data[(o * count + c / width) * inner + in + c % width] = line[c];
        }
}

// Full complex spectrum (sign +, interleaved) of a real array.
inline Vec FullSpectrum(const Vec& real, const std::vector<int>& dims) {
    Vec z(2 * real.size(), 0.0);
    for (size_t i = 0; i < real.size(); ++i) z[2 * i] = real[i];
    int outer = 1, inner = int(z.size());
    for (int d : dims) {
        inner /= d;
        AlongAxis(z, outer, d, inner, 2, [d](const Vec& l) { return Cdft(2 * d, 1, l); });
        outer *= d;
    }
    return z;
}

// Packed layout of a real 2D/3D spectrum: per cell (element of the leading dimensions) the
// k = 1..m/2-1 values, then in slots 0, 1 the k = 0 and m/2 values: (Re, Im) of k = 0 for lower
// cells, (Im, Re) of k = m/2 for upper ones, both real parts for self-conjugate ones. A cell is
// lower (upper) when its innermost leading index that differs from its mirror is below (above)
// half its dimension.
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
        row[1] = kind == 0 ? zr[m] : kind == 1 ? zr[1] : zr[m];
    }
    return a;
}

// Row (2D) and plane (3D) pointers over a row-major array.
struct Grid {
    std::vector<double*> rows;
    std::vector<double**> planes;
    Grid(Vec& data, int outer, int middle, int last) : rows(size_t(outer) * middle), planes(outer) {
        for (size_t i = 0; i < rows.size(); ++i) rows[i] = &data[i * last];
        for (int i = 0; i < outer; ++i) planes[i] = &rows[size_t(i) * middle];
    }
};

// Work areas large enough for any routine at these sizes.
struct Tables {
    std::vector<int> ip;
    Vec w, t;
    explicit Tables(int largest)
        : ip(66 + int(std::sqrt(double(largest))), 0), w(2 * largest + 8), t(8 * largest + 8) {}
};

}  // namespace fftref
