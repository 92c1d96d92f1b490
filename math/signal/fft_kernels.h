#pragma once
// Fast transform kernels: complex and real discrete Fourier transforms, discrete cosine and sine
// transforms (types II and III), and the cosine/sine transforms of symmetric and antisymmetric
// data (types I), in one, two and three dimensions, on power-of-two sizes.
//
// Plain functions over caller-owned arrays, with C++ linkage (the names are short and common, so
// they are kept out of the C symbol space). Every routine transforms in place and scales nothing.
// Arguments shared by all routines:
//   n, n1, n2, n3  lengths in doubles (for complex data twice the number of complex values),
//                  powers of two. A length that is not a power of two is treated as the largest
//                  power of two below it; a length below a routine's minimum leaves everything
//                  untouched.
//   isgn           direction: any value >= 0 uses exp(+i...), any negative value exp(-i...).
//   ip, w          the table cache. Set ip[0] = 0 before the first call; the routine then builds
//                  its cos/sin tables in w and records their sizes in ip[0] (twiddle table at w)
//                  and ip[1] (cosine table at w + ip[0]). A later call of the same or another
//                  routine that needs tables no larger reuses them and gives the same results.
//   t              work area of dfct, dfst and of the 2D and 3D routines.
// Work-area sizes for one routine used alone (N the largest complex length):
//   cdft(n): w n/4; rdft(n): w n/2; ddct, ddst(n): w 5n/4; dfct, dfst(n): w 5n/8, t n/2 + 1;
//   cdft2d: w max(n1/2, n2/4), t 8 n1; rdft2d: w max(n1/2, n2/4) + n2/4, t 8 n1;
//   ddct2d, ddst2d: w 5/4 max(n1, n2), t 4 n1; cdft3d: w max(n1/2, n2/2, n3/4),
//   t 8 max(n1, n2); rdft3d: that w + n3/4, same t; ddct3d, ddst3d: w 5/4 max(n1, n2, n3),
//   t 4 max(n1, n2); ip 2 + sqrt(N) everywhere.
// When the 2D and 3D routines get t null they allocate it themselves; if that fails they write
// "fft2d memory allocation error\n" (or "fft3d ...") to the standard error stream and end the
// process with exit status 1. No other routine allocates.
#include "math/foundations/export.h"

// --- one dimension ------------------------------------------------------------------------------
// Complex DFT of n/2 points x[j] = a[2j] + i a[2j+1]: X[k] = sum_j x[j] exp(s 2 pi i j k / (n/2)).
// Inverse: the opposite sign, then multiply by 2/n. n >= 2.
MATH_API void cdft(int n, int isgn, double* a, int* ip, double* w);
// Real DFT, R[k] + i I[k] = sum_j a[j] exp(+2 pi i j k / n). isgn >= 0: a[0] = R[0],
// a[1] = R[n/2], a[2k] = R[k], a[2k+1] = I[k]; isgn < 0 reads that layout and returns n/2 times
// the inverse. n >= 2.
MATH_API void rdft(int n, int isgn, double* a, int* ip, double* w);
// isgn < 0: DCT-II, C[k] = sum_j a[j] cos(pi (j + 1/2) k / n). isgn >= 0: DCT-III with a[0] at
// full weight, C[k] = sum_j a[j] cos(pi j (k + 1/2) / n). n >= 2.
MATH_API void ddct(int n, int isgn, double* a, int* ip, double* w);
// isgn < 0: DST-II, S[k] = sum_j a[j] sin(pi (j + 1/2) k / n) for k = 1..n, S[n] stored in a[0].
// isgn >= 0: DST-III of A[j] = a[j] (j < n), A[n] = a[0] at full weight,
// S[k] = sum_{j=1..n} A[j] sin(pi j (k + 1/2) / n). n >= 2.
MATH_API void ddst(int n, int isgn, double* a, int* ip, double* w);
// DCT-I of the n + 1 values a[0..n], neither end halved. n >= 2.
MATH_API void dfct(int n, double* a, double* t, int* ip, double* w);
// DST-I of a[1..n-1]; a[0] is ignored and set to 0. n >= 2.
MATH_API void dfst(int n, double* a, double* t, int* ip, double* w);

// --- two dimensions (a: n1 row pointers) ------------------------------------------------------
// Row-column transforms: the 1D transform along every row, then along every column.
MATH_API void cdft2d(int n1, int n2, int isgn, double** a, double* t, int* ip, double* w);
// Real 2D DFT in the packed layout: columns 2..n2-1 hold Z[k1][k2] for 1 <= k2 < n2/2; columns 0
// and 1 hold the k2 = 0 and k2 = n2/2 columns folded together (rows below n1/2: the k2 = 0 value;
// rows above: the k2 = n2/2 value as (Im, Re); rows 0 and n1/2: both real values).
MATH_API void rdft2d(int n1, int n2, int isgn, double** a, double* t, int* ip, double* w);
// Packed layout <-> natural half spectrum, on rows of n2 + 2 doubles (n2 is the transform size).
MATH_API void rdft2dsort(int n1, int n2, int isgn, double** a);
MATH_API void ddct2d(int n1, int n2, int isgn, double** a, double* t, int* ip, double* w);
MATH_API void ddst2d(int n1, int n2, int isgn, double** a, double* t, int* ip, double* w);

// --- three dimensions (a: n1 planes of n2 row pointers) --------------------------------------
MATH_API void cdft3d(int n1, int n2, int n3, int isgn, double*** a, double* t, int* ip, double* w);
MATH_API void rdft3d(int n1, int n2, int n3, int isgn, double*** a, double* t, int* ip, double* w);
MATH_API void rdft3dsort(int n1, int n2, int n3, int isgn, double*** a);
MATH_API void ddct3d(int n1, int n2, int n3, int isgn, double*** a, double* t, int* ip, double* w);
MATH_API void ddst3d(int n1, int n2, int n3, int isgn, double*** a, double* t, int* ip, double* w);

// --- table builders -----------------------------------------------------------------------------
// Twiddle table of nw doubles: ip[0] = nw, ip[1] = 1, w[0..nw-3] a chain of blocks, one per
// transform size 2nw, nw, nw/2, ... (block of size M: 1, cos(pi/4), two interpolation constants,
// then cos, sin of 2 pi k / M and cos, -sin of 6 pi k / M for even k < M/8). Calls makeipt when
// nw >= 16.
MATH_API void makewt(int nw, int* ip, double* w);
// Bit-reversal offset table in ip[2..].
MATH_API void makeipt(int nw, int* ip);
// Cosine table of nc doubles: ip[1] = nc, c[0] = cos(pi/4), c[j] = cos(j pi / (2 nc)) / 2 and
// c[nc - j] = sin(j pi / (2 nc)) / 2 for 0 < j <= nc/2.
MATH_API void makect(int nc, int* ip, double* c);

// --- building blocks ----------------------------------------------------------------------------
// Complex transforms of n/2 points (n doubles) with the twiddle table w of nw = ip[0] doubles
// (nw >= n/4): cftfsub uses exp(+i...), cftbsub exp(-i...); natural order in and out.
MATH_API void cftfsub(int n, double* a, int* ip, int nw, double* w);
MATH_API void cftbsub(int n, double* a, int* ip, int nw, double* w);
// Permutes the n/2 complex values into bit-reversed order; bitrv2conj also negates every
// imaginary part. ip is not read: the order is computed.
MATH_API void bitrv2(int n, int* ip, double* a);
MATH_API void bitrv2conj(int n, int* ip, double* a);
// Bit reversal of 16 and 8 complex values; the neg forms put input value bitrev(-p mod N) at p.
MATH_API void bitrv216(double* a);
MATH_API void bitrv216neg(double* a);
MATH_API void bitrv208(double* a);
MATH_API void bitrv208neg(double* a);
// Stages of the transform's own design: radix-4 decimation in frequency (a radix-2 pass first
// when log2 of the size is odd), output in bit-reversed order. w is a twiddle table of nw
// doubles (makewt); a stage on transforms of M complex values reads its block at w + nw - M/2.
// The f/1 forms use exp(+i...), the b/2 forms exp(-i...).
// cftf1st, cftb1st: one radix-4 pass over the n/2 values of a (n >= 16); w = makewt(n/4) table.
MATH_API void cftf1st(int n, double* a, double* w);
MATH_API void cftb1st(int n, double* a, double* w);
// cftmdl1, cftmdl2: one radix-2 pass over the n/2 values of a (n >= 16); w as for cftf1st.
MATH_API void cftmdl1(int n, double* a, double* w);
MATH_API void cftmdl2(int n, double* a, double* w);
// cftrec4: the whole + sign decimation of the n/2 values of a (n >= 4), depth first for large n.
MATH_API void cftrec4(int n, double* a, int nw, double* w);
// cfttree: the + sign radix-4 passes of the n/2 values starting at complex value j of a, from
// span n/8 down to span k (k >= 4, n >= 32), which leaves blocks of k values; returns the
// number of passes.
MATH_API int cfttree(int n, int j, int k, double* a, int nw, double* w);
// cftleaf: the whole + sign decimation of every block of isplt complex values of the n/2 values
// of a.
MATH_API void cftleaf(int n, int isplt, double* a, int nw, double* w);
// cftfx41: the last two radix-4 passes (+ sign) of every block of 16 complex values of the n/2
// values of a (n >= 32).
MATH_API void cftfx41(int n, double* a, int nw, double* w);
// The whole decimation of 16 (cftf161 + sign, cftf162 - sign) and 8 (cftf081 +, cftf082 -)
// complex values; w points at the table's block for that size (w + nw - 8, resp. w + nw - 4).
MATH_API void cftf161(double* a, double* w);
MATH_API void cftf162(double* a, double* w);
MATH_API void cftf081(double* a, double* w);
MATH_API void cftf082(double* a, double* w);
// 4-point transforms in natural order (+ and - sign) and the 2-point transform.
MATH_API void cftf040(double* a);
MATH_API void cftb040(double* a);
MATH_API void cftx020(double* a);
// Real-transform post-step (rftfsub) and pre-step (rftbsub) of rdft, over the n doubles of a,
// with a cosine table of nc >= n/4 doubles.
MATH_API void rftfsub(int n, double* a, int nc, double* c);
MATH_API void rftbsub(int n, double* a, int nc, double* c);
// Rotation of the pairs (a[j], a[n-j]), 0 < j < n/2, by the angle pi j / (2n) after forming
// ((a[j] + a[n-j]) + i (a[j] - a[n-j])) / 2 (dstsub: the pair taken as (a[n-j], a[j])), and
// a[n/2] *= cos(pi/4); a cosine table of nc >= n doubles.
MATH_API void dctsub(int n, double* a, int nc, double* c);
MATH_API void dstsub(int n, double* a, int nc, double* c);
// Column passes of the 2D routines: groups of columns are copied into t, transformed and copied
// back. ics: 0 DCT, 1 DST. rdft2d_sub untangles (isgn >= 0) or re-tangles the folded columns 0, 1.
MATH_API void cdft2d_sub(int n1, int n2, int isgn, double** a, double* t, int* ip, double* w);
MATH_API void rdft2d_sub(int n1, int n2, int isgn, double** a);
MATH_API void ddxt2d_sub(int n1, int n2, int ics, int isgn, double** a, double* t, int* ip,
                         double* w);
// Passes of the 3D routines: xdft3da_sub / ddxt3da_sub transform every plane along its rows and
// columns (icr: 0 complex rows, 1 real rows), cdft3db_sub / ddxt3db_sub along the first index,
// rdft3d_sub untangles or re-tangles the folded k3 = 0 / n3/2 planes.
MATH_API void xdft3da_sub(int n1, int n2, int n3, int icr, int isgn, double*** a, double* t,
                          int* ip, double* w);
MATH_API void cdft3db_sub(int n1, int n2, int n3, int isgn, double*** a, double* t, int* ip,
                          double* w);
MATH_API void rdft3d_sub(int n1, int n2, int n3, int isgn, double*** a);
MATH_API void ddxt3da_sub(int n1, int n2, int n3, int ics, int isgn, double*** a, double* t,
                          int* ip, double* w);
MATH_API void ddxt3db_sub(int n1, int n2, int n3, int ics, int isgn, double*** a, double* t,
                          int* ip, double* w);
