#pragma once
// Shared pieces of the transform kernels (internal, not exported): the table rules and the
// one-dimensional transforms on tables already built, for the 2D and 3D routines and the
// DCT-I / DST-I recursion.
#include <cstddef>
#include <cstring>

namespace math3d_detail {
namespace fft {

// The largest power of two <= n, 0 for n <= 0.
int FloorPow2(int n);

// Builds the twiddle table when the transform needs one of 'length' doubles and w holds a
// smaller one (length > 4 ip[0]); builds the cosine table when 'length' / divisor values are
// needed and w holds fewer (length > divisor ip[1]).
void EnsureTwiddles(long long length, int* ip, double* w);
void EnsureCosines(long long length, int divisor, int* ip, double* w);

// The 1D transforms of fft_kernels.h on powers of two >= 2 with the tables in place (twiddles
// at w, ip[0] doubles; cosines at w + ip[0], ip[1] doubles).
void ComplexDft(int n, int isgn, double* a, const int* ip, const double* w);
// howMany of them on consecutive arrays of n doubles.
void ComplexDfts(int n, int howMany, int isgn, double* a, const int* ip, const double* w);
void RealDft(int n, int isgn, double* a, const int* ip, const double* w);
// DCT (sine false) or DST (sine true), types II (isgn < 0) and III.
void CosSinDft(int n, int isgn, bool sine, double* a, const int* ip, const double* w);

// The work area t of the 2D and 3D routines: t itself, or one allocated here when t is null (on
// failure: message to the standard error stream, exit status 1). ReleaseWorkArea frees it.
double* WorkArea(double* t, long long size, const char* message);
void ReleaseWorkArea(double* own, const double* given);
// Doubles of t that a column pass needs over columns of 'length' values, rows of rowDoubles
// doubles: up to four complex (resp. real) columns at a time.
long long ComplexColumnsArea(int length, int rowDoubles);
long long RealColumnsArea(int length, int rowDoubles);
// The folded k = 0 / k = n/2 transforms of the real 2D and 3D DFT: cell c and its mirror m hold
// C = P0 + i Ph in their first two doubles; forward (isgn >= 0) leaves P0 in c and (Im, Re) of
// Ph at the mirror in m, backward restores C.
void Untangle(int isgn, double* c, double* m);

// The sorted layout of the real 2D and 3D DFT (rdft2dsort, rdft3dsort), one row of n doubles
// (n + 2 with the sorted extra pair) at a time. A self-conjugate row holds Re F(0) and Re F(n/2)
// in its first pair; sorted, Re F(n/2) moves to the extra pair (imaginary parts 0).
inline void SortSelfConjugateRow(int n, int isgn, double* row) {
    if (isgn >= 0) {
        row[n] = row[1];
        row[1] = 0;
        row[n + 1] = 0;
    } else {
        row[1] = row[n];
    }
}
// An upper row's first pair holds its value at n/2, stored (Im, Re). Sorted, that value goes to
// its extra pair and its conjugate to the mirror row's, and the first pair becomes the conjugate
// of the mirror's (the value at 0). Unsorting takes the value at n/2 back into the first pair.
inline void SortConjugateRows(int n, double* upper, double* mirror) {
    const double re = upper[1], im = upper[0];
    upper[n] = re;
    upper[n + 1] = im;
    mirror[n] = re;
    mirror[n + 1] = -im;
    upper[0] = mirror[0];
    upper[1] = -mirror[1];
}
inline void UnsortConjugateRow(int n, double* upper) {
    upper[0] = upper[n + 1];
    upper[1] = upper[n];
}

// Transforms along columns of 'length' elements: row(i) is the row that holds element i, of
// rowDoubles doubles; groups of up to four complex (two doubles each) or real columns are copied
// into t, transformed and copied back.
template <typename Row>
void ComplexColumns(int length, int rowDoubles, int isgn, Row row, double* t, int* ip, double* w) {
    if (length < 2) return;
    const int group = rowDoubles >= 8 ? 8 : rowDoubles;
    for (int j = 0; j < rowDoubles; j += group) {
        for (int i = 0; i < length; ++i)
            for (int c = 0; c < group; c += 2)
                std::memcpy(t + size_t(c) * length + 2 * i, row(i) + j + c, 2 * sizeof(double));
        ComplexDfts(2 * length, group / 2, isgn, t, ip, w);
        for (int i = 0; i < length; ++i)
            for (int c = 0; c < group; c += 2)
                std::memcpy(row(i) + j + c, t + size_t(c) * length + 2 * i, 2 * sizeof(double));
    }
}

template <typename Row>
void RealColumns(int length, int rowDoubles, int isgn, bool sine, Row row, double* t, int* ip,
                 double* w) {
    const int group = rowDoubles >= 4 ? 4 : rowDoubles;
    for (int j = 0; j < rowDoubles; j += group) {
        for (int i = 0; i < length; ++i)
            for (int c = 0; c < group; ++c) t[size_t(c) * length + i] = row(i)[j + c];
        for (int c = 0; c < group; ++c)
            CosSinDft(length, isgn, sine, t + size_t(c) * length, ip, w);
        for (int i = 0; i < length; ++i)
            for (int c = 0; c < group; ++c) row(i)[j + c] = t[size_t(c) * length + i];
    }
}

}  // namespace fft
}  // namespace math3d_detail
