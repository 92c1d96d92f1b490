#pragma once
// Direct O(n^2) evaluations of the transforms' defining sums, in long double with the phase
// reduced exactly in integers, and helpers shared by the signal tests.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <random>
#include <vector>

namespace fftref {

using Vec = std::vector<double>;
using Cplx = std::complex<long double>;
constexpr long double kPi = 3.141592653589793238462643383279502884L;

// exp(i 2 pi num / den) with num reduced modulo den first.
inline Cplx Turn(long long num, long long den) {
    num %= den;
    if (num < 0) num += den;
    const long double x = 2 * kPi * num / den;
    return {std::cos(x), std::sin(x)};
}

// exp(i 2 pi m / den) for m = 0..den-1.
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
constexpr double kTol = 1e-13;

// --- one dimension (the layouts of fft_kernels.h) ---------------------------------------------
inline Vec Cdft(int n, int s, const Vec& a) {
    const int N = n / 2;
    const auto roots = Roots(N);
    Vec r(n);
    for (int k = 0; k < N; ++k) {
        Cplx sum = 0;
        for (int j = 0; j < N; ++j)
            sum += Cplx(a[2 * j], a[2 * j + 1]) * roots[(N + s * (1LL * j * k % N)) % N];
        r[2 * k] = double(sum.real());
        r[2 * k + 1] = double(sum.imag());
    }
    return r;
}

inline Vec Rdft(int n, int s, const Vec& a) {
    const auto roots = Roots(n);
    Vec r(n);
    if (s >= 0) {
        for (int k = 0; k <= n / 2; ++k) {
            Cplx sum = 0;
            for (int j = 0; j < n; ++j) sum += Cplx(a[j]) * roots[1LL * j * k % n];
            if (k == 0)
                r[0] = double(sum.real());
            else if (k == n / 2)
                r[1] = double(sum.real());
            else {
                r[2 * k] = double(sum.real());
                r[2 * k + 1] = double(sum.imag());
            }
        }
    } else {
        for (int j = 0; j < n; ++j) {
            long double v = (a[0] + (j % 2 ? -a[1] : a[1])) / 2.0L;
            for (int k = 1; k < n / 2; ++k) {
                const Cplx e = roots[1LL * j * k % n];
                v += a[2 * k] * e.real() + a[2 * k + 1] * e.imag();
            }
            r[j] = double(v);
        }
    }
    return r;
}

// cos / sin of pi num / (2n).
inline long double QuarterCos(long long num, int n) { return Turn(num, 4LL * n).real(); }
inline long double QuarterSin(long long num, int n) { return Turn(num, 4LL * n).imag(); }

inline Vec Ddct(int n, int s, const Vec& a) {
    Vec r(n);
    for (int k = 0; k < n; ++k) {
        long double v = 0;
        for (int j = 0; j < n; ++j)
            v += a[j] *
                 (s < 0 ? QuarterCos((2LL * j + 1) * k, n) : QuarterCos(j * (2LL * k + 1), n));
        r[k] = double(v);
    }
    return r;
}

inline Vec Ddst(int n, int s, const Vec& a) {
    const auto q = Roots(4LL * n);
    Vec r(n);
    if (s < 0) {
        for (int k = 1; k <= n; ++k) {
            long double v = 0;
            for (int j = 0; j < n; ++j) v += a[j] * q[(2LL * j + 1) * k % (4 * n)].imag();
            r[k % n] = double(v);
        }
    } else {
        for (int k = 0; k < n; ++k) {
            long double v = 0;
            for (int j = 1; j <= n; ++j)
                v += (j < n ? a[j] : a[0]) * QuarterSin(j * (2LL * k + 1), n);
            r[k] = double(v);
        }
    }
    return r;
}

inline Vec Dfct(int n, const Vec& a) {
    const auto q = Roots(2LL * n);
    Vec r(n + 1);
    for (int k = 0; k <= n; ++k) {
        long double v = 0;
        for (int j = 0; j <= n; ++j) v += a[j] * q[1LL * j * k % (2 * n)].real();
        r[k] = double(v);
    }
    return r;
}

inline Vec Dfst(int n, const Vec& a) {
    const auto q = Roots(2LL * n);
    Vec r(n, 0.0);
    for (int k = 1; k < n; ++k) {
        long double v = 0;
        for (int j = 1; j < n; ++j) v += a[j] * q[1LL * j * k % (2 * n)].imag();
        r[k] = double(v);
    }
    return r;
}

// --- several dimensions: row-major arrays, the 1D reference along one axis --------------------
// Applies f (a 1D reference over 'len' doubles) to every line of 'stride'-spaced elements of
// group 'width' doubles (1 real, 2 complex) along an axis of 'count' elements.
template <typename F>
void AlongAxis(Vec& data, int outer, int count, int inner, int width, F f) {
    for (int o = 0; o < outer; ++o)
        for (int in = 0; in < inner; in += width) {
            Vec line(count * width);
            for (int c = 0; c < count; ++c)
                for (int x = 0; x < width; ++x)
                    line[c * width + x] = data[(o * count + c) * inner + in + x];
            line = f(line);
            for (int c = 0; c < count; ++c)
                for (int x = 0; x < width; ++x)
                    data[(o * count + c) * inner + in + x] = line[c * width + x];
        }
}

// Full complex spectrum Z (interleaved) of a real array of dims (sign +), any rank.
inline Vec FullSpectrum(const Vec& real, const std::vector<int>& dims) {
    Vec z(2 * real.size());
    for (size_t i = 0; i < real.size(); ++i) z[2 * i] = real[i];
    int outer = 1, inner = 2 * int(real.size());
    for (int d : dims) {
        inner /= d;
        AlongAxis(z, outer, d, inner, 2, [d](const Vec& l) { return Cdft(2 * d, 1, l); });
        outer *= d;
    }
    return z;
}

// Packed layout of a real 2D or 3D spectrum (last dimension m = dims.back(), the cells being
// the elements of the leading dimensions, with their Hermitian mirror).
inline Vec Pack(const Vec& z, const std::vector<int>& dims) {
    const int m = dims.back();
    int cells = 1;
    for (size_t i = 0; i + 1 < dims.size(); ++i) cells *= dims[i];
    // lower: the first index that is not self-mirrored (k != -k) lies in the lower half, scanning
    // from the innermost leading index outwards.
    auto kind = [&](int cell) {  // 0 self-conjugate, 1 lower, 2 upper
        int rest = cell;
        std::vector<int> k(dims.size() - 1);
        for (int i = int(dims.size()) - 2; i >= 0; --i) {
            k[i] = rest % dims[i];
            rest /= dims[i];
        }
        for (int i = int(k.size()) - 1; i >= 0; --i) {
            if (2 * k[i] % dims[i] == 0) continue;
            return 2 * k[i] < dims[i] ? 1 : 2;
        }
        return 0;
    };
    Vec a(size_t(cells) * m);
    for (int c = 0; c < cells; ++c) {
        const double* zr = &z[2 * size_t(c) * m];
        double* row = &a[size_t(c) * m];
        for (int k = 1; k < m / 2; ++k) {
            row[2 * k] = zr[2 * k];
            row[2 * k + 1] = zr[2 * k + 1];
        }
        const double* half = zr + m;  // Z[...][m/2]
        switch (kind(c)) {
            case 0:
                row[0] = zr[0];
                row[1] = half[0];
                break;
            case 1:
                row[0] = zr[0];
                row[1] = zr[1];
                break;
            default:
                row[0] = half[1];
                row[1] = half[0];
                break;
        }
    }
    return a;
}

// Row pointers over a row-major array.
struct Rows2 {
    std::vector<double*> rows;
    Rows2(Vec& data, int n1, int n2) : rows(n1) {
        for (int i = 0; i < n1; ++i) rows[i] = &data[size_t(i) * n2];
    }
    double** get() { return rows.data(); }
};
struct Rows3 {
    std::vector<double*> rows;
    std::vector<double**> planes;
    Rows3(Vec& data, int n1, int n2, int n3) : rows(size_t(n1) * n2), planes(n1) {
        for (int i = 0; i < n1 * n2; ++i) rows[i] = &data[size_t(i) * n3];
        for (int i = 0; i < n1; ++i) planes[i] = &rows[size_t(i) * n2];
    }
    double*** get() { return planes.data(); }
};

// Work areas large enough for any routine at these sizes.
struct Tables {
    std::vector<int> ip;
    Vec w, t;
    explicit Tables(int largest)
        : ip(2 + 64 + int(std::sqrt(double(largest))), 0), w(2 * largest + 8), t(8 * largest + 8) {}
};

}  // namespace fftref
