// Two-dimensional transforms: the 1D transform of every row, then of every column, the columns
// copied a few at a time into the work area t.
#include <cstdio>
#include <cstdlib>
#include <new>

#include "math/signal/fft_kernels.h"
#include "math/signal/fft_support.h"

namespace fft = math3d_detail::fft;

namespace math3d_detail {
namespace fft {

double* WorkArea(double* t, long long size, const char* message) {
    if (t) return t;
    double* own = new (std::nothrow) double[size_t(size)];
    if (!own) {
        std::fputs(message, stderr);
        std::exit(1);
    }
    return own;
}

void ReleaseWorkArea(double* own, const double* given) {
    if (own != given) delete[] own;
}

// Doubles of t a complex column pass needs: up to four columns of 'length' complex values.
long long ComplexColumnsArea(int length, int rowDoubles) {
    return 2LL * length * (rowDoubles >= 8 ? 4 : rowDoubles / 2);
}

// Doubles of t a real column pass needs: up to four columns of 'length' values.
long long RealColumnsArea(int length, int rowDoubles) {
    return 1LL * length * (rowDoubles >= 4 ? 4 : rowDoubles);
}

// Untangles (forward) or re-tangles the pair of cells c and m = its mirror, whose first two
// doubles hold the complex transforms C of the folded k = 0 / k = n/2 columns.
void Untangle(int isgn, double* c, double* m) {
    if (isgn >= 0) {
        const double x = 0.5 * (c[0] - m[0]), y = 0.5 * (c[1] + m[1]);
        m[0] = x;
        m[1] = y;
        c[0] -= x;
        c[1] -= y;
    } else {
        const double x = c[0] + m[0], y = c[1] + m[1];
        const double u = c[0] - m[0], v = m[1] - c[1];
        c[0] = x;
        c[1] = y;
        m[0] = u;
        m[1] = v;
    }
}

}  // namespace fft
}  // namespace math3d_detail

void cdft2d_sub(int n1, int n2, int isgn, double** a, double* t, int* ip, double* w) {
    fft::ComplexColumns(
        n1, n2, isgn, [a](int i) { return a[i]; }, t, ip, w);
}

void ddxt2d_sub(int n1, int n2, int ics, int isgn, double** a, double* t, int* ip, double* w) {
    fft::RealColumns(
        n1, n2, isgn, ics != 0, [a](int i) { return a[i]; }, t, ip, w);
}

void rdft2d_sub(int n1, int, int isgn, double** a) {
    for (int i = 1; 2 * i < n1; ++i) fft::Untangle(isgn, a[i], a[n1 - i]);
}

void cdft2d(int n1, int n2, int isgn, double** a, double* t, int* ip, double* w) {
    n1 = fft::FloorPow2(n1);
    n2 = fft::FloorPow2(n2);
    if (n1 < 1 || n2 < 2) return;
    double* work =
        fft::WorkArea(t, fft::ComplexColumnsArea(n1, n2), "fft2d memory allocation error\n");
    fft::EnsureTwiddles(n1 > n2 / 2 ? 2LL * n1 : n2, ip, w);
    for (int i = 0; i < n1; ++i) fft::ComplexDft(n2, isgn, a[i], ip, w);
    cdft2d_sub(n1, n2, isgn, a, work, ip, w);
    fft::ReleaseWorkArea(work, t);
}

void rdft2d(int n1, int n2, int isgn, double** a, double* t, int* ip, double* w) {
    n1 = fft::FloorPow2(n1);
    n2 = fft::FloorPow2(n2);
    if (n1 < 2 || n2 < 2) return;
    double* work =
        fft::WorkArea(t, fft::ComplexColumnsArea(n1, n2), "fft2d memory allocation error\n");
    fft::EnsureTwiddles(n1 > n2 / 2 ? 2LL * n1 : n2, ip, w);
    fft::EnsureCosines(n2, 4, ip, w);
    if (isgn >= 0) {
        for (int i = 0; i < n1; ++i) fft::RealDft(n2, isgn, a[i], ip, w);
        cdft2d_sub(n1, n2, isgn, a, work, ip, w);
        rdft2d_sub(n1, n2, isgn, a);
    } else {
        rdft2d_sub(n1, n2, isgn, a);
        cdft2d_sub(n1, n2, isgn, a, work, ip, w);
        for (int i = 0; i < n1; ++i) fft::RealDft(n2, isgn, a[i], ip, w);
    }
    fft::ReleaseWorkArea(work, t);
}

void rdft2dsort(int n1, int n2, int isgn, double** a) {
    n1 = fft::FloorPow2(n1);
    n2 = fft::FloorPow2(n2);
    if (n1 < 1 || n2 < 2) return;
    const int rows[2] = {0, n1 / 2};
    const int selfConjugate = n1 >= 2 ? 2 : 1;
    for (int k = n1 / 2 + 1; k < n1; ++k) {
        if (isgn >= 0)
            fft::SortConjugateRows(n2, a[k], a[n1 - k]);
        else
            fft::UnsortConjugateRow(n2, a[k]);
    }
    for (int r = 0; r < selfConjugate; ++r) fft::SortSelfConjugateRow(n2, isgn, a[rows[r]]);
}

namespace {
void CosSin2d(int n1, int n2, int isgn, bool sine, double** a, double* t, int* ip, double* w) {
    n1 = fft::FloorPow2(n1);
    n2 = fft::FloorPow2(n2);
    if (n1 < 2 || n2 < 2) return;
    const int longest = n1 > n2 ? n1 : n2;
    double* work =
        fft::WorkArea(t, fft::RealColumnsArea(n1, n2), "fft2d memory allocation error\n");
    fft::EnsureTwiddles(longest, ip, w);
    fft::EnsureCosines(longest, 1, ip, w);
    for (int i = 0; i < n1; ++i) fft::CosSinDft(n2, isgn, sine, a[i], ip, w);
    ddxt2d_sub(n1, n2, sine ? 1 : 0, isgn, a, work, ip, w);
    fft::ReleaseWorkArea(work, t);
}
}  // namespace

void ddct2d(int n1, int n2, int isgn, double** a, double* t, int* ip, double* w) {
    CosSin2d(n1, n2, isgn, false, a, t, ip, w);
}

void ddst2d(int n1, int n2, int isgn, double** a, double* t, int* ip, double* w) {
    CosSin2d(n1, n2, isgn, true, a, t, ip, w);
}
