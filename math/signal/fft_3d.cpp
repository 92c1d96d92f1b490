// Three-dimensional transforms: every plane along its rows and columns, then along the first
// index, the columns copied a few at a time into the work area t.
#include "math/signal/fft_kernels.h"
#include "math/signal/fft_support.h"

namespace fft = math3d_detail::fft;

namespace {
constexpr const char* kMessage = "fft3d memory allocation error\n";

int Max(int x, int y) { return x > y ? x : y; }

// Lower cells of the folded planes: 0 < k2 < n2/2, or k2 in {0, n2/2} with 0 < k1 < n1/2.
bool IsLower(int n1, int n2, int k1, int k2) {
    if (2 * k2 > 0 && 2 * k2 < n2) return true;
    return (k2 == 0 || 2 * k2 == n2) && k1 > 0 && 2 * k1 < n1;
}
bool IsUpper(int n1, int n2, int k1, int k2) {
    return IsLower(n1, n2, (n1 - k1) % n1, (n2 - k2) % n2);
}
}  // namespace

void xdft3da_sub(int n1, int n2, int n3, int icr, int isgn, double*** a, double* t, int* ip,
                 double* w) {
    for (int i = 0; i < n1; ++i) {
        double** plane = a[i];
        const auto row = [plane](int j) { return plane[j]; };
        if (isgn < 0) fft::ComplexColumns(n2, n3, isgn, row, t, ip, w);
        for (int j = 0; j < n2; ++j) {
            if (icr == 0)
                fft::ComplexDft(n3, isgn, plane[j], ip, w);
            else
                fft::RealDft(n3, isgn, plane[j], ip, w);
        }
        if (isgn >= 0) fft::ComplexColumns(n2, n3, isgn, row, t, ip, w);
    }
}

void cdft3db_sub(int n1, int n2, int n3, int isgn, double*** a, double* t, int* ip, double* w) {
    for (int j = 0; j < n2; ++j) {
        const auto row = [a, j](int i) { return a[i][j]; };
        fft::ComplexColumns(n1, n3, isgn, row, t, ip, w);
    }
}

void ddxt3da_sub(int n1, int n2, int n3, int ics, int isgn, double*** a, double* t, int* ip,
                 double* w) {
    for (int i = 0; i < n1; ++i) {
        double** plane = a[i];
        for (int j = 0; j < n2; ++j) fft::CosSinDft(n3, isgn, ics != 0, plane[j], ip, w);
        const auto row = [plane](int j) { return plane[j]; };
        fft::RealColumns(n2, n3, isgn, ics != 0, row, t, ip, w);
    }
}

void ddxt3db_sub(int n1, int n2, int n3, int ics, int isgn, double*** a, double* t, int* ip,
                 double* w) {
    for (int j = 0; j < n2; ++j) {
        const auto row = [a, j](int i) { return a[i][j]; };
        fft::RealColumns(n1, n3, isgn, ics != 0, row, t, ip, w);
    }
}

void rdft3d_sub(int n1, int n2, int, int isgn, double*** a) {
    for (int k1 = 0; k1 < n1; ++k1)
        for (int k2 = 0; k2 < n2; ++k2)
            if (IsLower(n1, n2, k1, k2))
                fft::Untangle(isgn, a[k1][k2], a[(n1 - k1) % n1][(n2 - k2) % n2]);
}

void cdft3d(int n1, int n2, int n3, int isgn, double*** a, double* t, int* ip, double* w) {
    n1 = fft::FloorPow2(n1);
    n2 = fft::FloorPow2(n2);
    n3 = fft::FloorPow2(n3);
    if (n1 < 1 || n2 < 1 || n3 < 2) return;
    double* work = fft::WorkArea(t, fft::ComplexColumnsArea(Max(n1, n2), n3), kMessage);
    fft::EnsureTwiddles(2LL * Max(n1, n2) > n3 ? 2LL * Max(n1, n2) : n3, ip, w);
    xdft3da_sub(n1, n2, n3, 0, isgn, a, work, ip, w);
    cdft3db_sub(n1, n2, n3, isgn, a, work, ip, w);
    fft::ReleaseWorkArea(work, t);
}

void rdft3d(int n1, int n2, int n3, int isgn, double*** a, double* t, int* ip, double* w) {
    n1 = fft::FloorPow2(n1);
    n2 = fft::FloorPow2(n2);
    n3 = fft::FloorPow2(n3);
    if (n1 < 2 || n2 < 2 || n3 < 2) return;
    double* work = fft::WorkArea(t, fft::ComplexColumnsArea(Max(n1, n2), n3), kMessage);
    fft::EnsureTwiddles(2LL * Max(n1, n2) > n3 ? 2LL * Max(n1, n2) : n3, ip, w);
    fft::EnsureCosines(n3, 4, ip, w);
    if (isgn >= 0) {
        xdft3da_sub(n1, n2, n3, 1, isgn, a, work, ip, w);
        cdft3db_sub(n1, n2, n3, isgn, a, work, ip, w);
        rdft3d_sub(n1, n2, n3, isgn, a);
    } else {
        rdft3d_sub(n1, n2, n3, isgn, a);
        cdft3db_sub(n1, n2, n3, isgn, a, work, ip, w);
        xdft3da_sub(n1, n2, n3, 1, isgn, a, work, ip, w);
    }
    fft::ReleaseWorkArea(work, t);
}

void rdft3dsort(int n1, int n2, int n3, int isgn, double*** a) {
    n1 = fft::FloorPow2(n1);
    n2 = fft::FloorPow2(n2);
    n3 = fft::FloorPow2(n3);
    if (n1 < 1 || n2 < 1 || n3 < 2) return;
    for (int k1 = 0; k1 < n1; ++k1)
        for (int k2 = 0; k2 < n2; ++k2) {
            double* cell = a[k1][k2];
            const bool self = (2 * k1 % n1 == 0) && (2 * k2 % n2 == 0);
            if (self) {
                fft::SortSelfConjugateRow(n3, isgn, cell);
            } else if (IsUpper(n1, n2, k1, k2)) {
                if (isgn >= 0)
                    fft::SortConjugateRows(n3, cell, a[(n1 - k1) % n1][(n2 - k2) % n2]);
                else
                    fft::UnsortConjugateRow(n3, cell);
            }
        }
}

namespace {
void CosSin3d(int n1, int n2, int n3, int isgn, bool sine, double*** a, double* t, int* ip,
              double* w) {
    n1 = fft::FloorPow2(n1);
    n2 = fft::FloorPow2(n2);
    n3 = fft::FloorPow2(n3);
    if (n1 < 2 || n2 < 2 || n3 < 2) return;
    const int longest = Max(Max(n1, n2), n3);
    double* work = fft::WorkArea(t, fft::RealColumnsArea(Max(n1, n2), n3), kMessage);
    fft::EnsureTwiddles(longest, ip, w);
    fft::EnsureCosines(longest, 1, ip, w);
    ddxt3da_sub(n1, n2, n3, sine ? 1 : 0, isgn, a, work, ip, w);
    ddxt3db_sub(n1, n2, n3, sine ? 1 : 0, isgn, a, work, ip, w);
    fft::ReleaseWorkArea(work, t);
}
}  // namespace

void ddct3d(int n1, int n2, int n3, int isgn, double*** a, double* t, int* ip, double* w) {
    CosSin3d(n1, n2, n3, isgn, false, a, t, ip, w);
}

void ddst3d(int n1, int n2, int n3, int isgn, double*** a, double* t, int* ip, double* w) {
    CosSin3d(n1, n2, n3, isgn, true, a, t, ip, w);
}
