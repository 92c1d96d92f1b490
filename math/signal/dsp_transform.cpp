#include "math/signal/dsp_transform.h"

#include <climits>
#include <cstdio>
#include <new>

#include "math/signal/fft_kernels.h"
#include "math/signal/fft_support.h"

namespace {

using Size = unsigned long long;
namespace fft = math3d_detail::fft;

// A size as the kernels take it.
int KernelSize(Size n) { return n > INT_MAX ? INT_MAX : int(n); }
Size Floor(Size n) { return Size(fft::FloorPow2(KernelSize(n))); }
Size Larger(Size a, Size b) { return a > b ? a : b; }

// Work areas, in elements, that cover every kernel the class calls on sizes up to the given
// ones: the largest twiddle table (ip[0]) plus the largest cosine table, the bit-reversal table
// makewt writes into ip, and the column work area.
struct Areas {
    Size w, ip, t;
};
Areas Need(Size twiddles, Size cosines, Size t) {
    Size ip = 2;
    if (twiddles >= 16) {
        int log2 = 0;
        while ((Size(2) << log2) <= twiddles) ++log2;
        ip = Size(1) << (log2 / 2);
    }
    return {twiddles + cosines, ip, t};
}
Size ColumnArea(Size length, Size rowDoubles) {
    const int l = KernelSize(length), r = KernelSize(rowDoubles);
    return Size(Larger(Size(fft::ComplexColumnsArea(l, r)), Size(fft::RealColumnsArea(l, r))));
}
Areas Need1D(Size n) {
    const Size p = Floor(n);
    if (p < 2) return {0, 0, 0};
    return Need(p / 4, p, p / 2 + 1);  // twiddles: cdft, rdft, ddct; cosines: ddct; t: dfct
}
Areas Need2D(Size n1, Size n2) {
    const Size p1 = Floor(n1), p2 = Floor(n2);
    return Need(Larger(2 * p1, p2) / 4, Larger(p1, p2), ColumnArea(p1, p2));
}
Areas Need3D(Size n1, Size n2, Size n3) {
    const Size p12 = Larger(Floor(n1), Floor(n2)), p3 = Floor(n3);
    return Need(Larger(2 * p12, p3) / 4, Larger(p12, p3), ColumnArea(p12, p3));
}

template <typename T>
bool Allocate(T*& array, Size size, const char* message) {
    delete[] array;
    array = nullptr;
    if (size == 0) return true;
    array = new (std::nothrow) T[size];
    if (!array) {
        std::fputs(message, stderr);
        return false;
    }
    array[0] = 0;
    return true;
}

bool InitWorkAreas(double*& w, int*& ip, double*& t, Areas sizes, const char* message) {
    return Allocate(w, sizes.w, message) && Allocate(ip, sizes.ip, message) &&
           Allocate(t, sizes.t, message);
}

// InitArrays with sizes that may not fit its unsigned int arguments.
template <typename Transform>
bool InitChecked(Transform& transform, Areas sizes, const char* message) {
    if (sizes.w > UINT_MAX || sizes.ip > UINT_MAX || sizes.t > UINT_MAX) {
        std::fputs(message, stderr);
        return false;
    }
    return transform.InitArrays(unsigned(sizes.w), unsigned(sizes.ip), unsigned(sizes.t));
}

unsigned int Capacity(Size n) { return n > UINT_MAX ? UINT_MAX : unsigned(n); }
// The transform size of a sorted real transform: two doubles of the last dimension are extra.
Size Sorted(unsigned int n, bool sort) { return !sort ? n : n >= 2 ? n - 2 : 0; }

const char kMessage1D[] = "Out of memory in CDSPTransform1D...";
const char kMessage2D[] = "Out of memory in CDSPTransform2D...";
const char kMessage3D[] = "Out of memory in CDSPTransform3D...";

}  // namespace

// --- 1D -----------------------------------------------------------------------------------------
CDSPTransform1D::CDSPTransform1D()
    : w(nullptr), t(nullptr), ip(nullptr), capacity(0), initialised(false) {}

CDSPTransform1D::~CDSPTransform1D() {
    delete[] w;
    delete[] t;
    delete[] ip;
}

bool CDSPTransform1D::InitArrays(unsigned int wSize, unsigned int ipSize, unsigned int tSize) {
    return InitWorkAreas(w, ip, t, {wSize, ipSize, tSize}, kMessage1D);
}

bool CDSPTransform1D::Prepare(Size size) {
    if (!initialised) {
        capacity = Capacity(size);
        initialised = InitChecked(*this, Need1D(size), kMessage1D);
        if (!initialised) return false;
    }
    return size <= capacity;
}

bool CDSPTransform1D::ComplexFFT(int isgn, CDSPSignal1D* s) {
    if (!s || !s->data || !Prepare(s->length)) return false;
    cdft(KernelSize(s->length), isgn, s->data, ip, w);
    return true;
}

bool CDSPTransform1D::RealFFT(int isgn, CDSPSignal1D* s) {
    if (!s || !s->data || !Prepare(s->length)) return false;
    rdft(KernelSize(s->length), isgn, s->data, ip, w);
    return true;
}

bool CDSPTransform1D::RealDCT(int isgn, CDSPSignal1D* s) {
    if (!s || !s->data || !Prepare(s->length)) return false;
    ddct(KernelSize(s->length), isgn, s->data, ip, w);
    return true;
}

bool CDSPTransform1D::RealDST(int isgn, CDSPSignal1D* s) {
    if (!s || !s->data || !Prepare(s->length)) return false;
    ddst(KernelSize(s->length), isgn, s->data, ip, w);
    return true;
}

bool CDSPTransform1D::DCTOfRealFFT(CDSPSignal1D* s) {
    if (!s || !s->data) return false;
    const Size k = s->length >= 1 ? Size(s->length) - 1 : 0;
    if (!Prepare(k)) return false;
    dfct(KernelSize(k), s->data, t, ip, w);
    return true;
}

bool CDSPTransform1D::DSTOfRealFFT(CDSPSignal1D* s) {
    if (!s || !s->data) return false;
    const Size k = Size(s->length) + 1;
    if (!Prepare(k)) return false;
    dfst(KernelSize(k), s->data, t, ip, w);
    return true;
}

// --- 2D -----------------------------------------------------------------------------------------
CDSPTransform2D::CDSPTransform2D()
    : w(nullptr), t(nullptr), ip(nullptr), capacity1(0), capacity2(0), initialised(false) {}

CDSPTransform2D::~CDSPTransform2D() {
    delete[] w;
    delete[] t;
    delete[] ip;
}

bool CDSPTransform2D::InitArrays(unsigned int wSize, unsigned int ipSize, unsigned int tSize) {
    return InitWorkAreas(w, ip, t, {wSize, ipSize, tSize}, kMessage2D);
}

bool CDSPTransform2D::Prepare(unsigned int n1, unsigned int n2) {
    if (!initialised) {
        capacity1 = n1;
        capacity2 = n2;
        initialised = InitChecked(*this, Need2D(n1, n2), kMessage2D);
        if (!initialised) return false;
    }
    return n1 <= capacity1 && n2 <= capacity2;
}

bool CDSPTransform2D::ComplexFFT(int isgn, CDSPSignal2D* s) {
    if (!s || !s->rows || !Prepare(s->n1, s->n2)) return false;
    cdft2d(KernelSize(s->n1), KernelSize(s->n2), isgn, s->rows, t, ip, w);
    return true;
}

bool CDSPTransform2D::RealFFT(int isgn, bool sort, CDSPSignal2D* s) {
    if (!s || !s->rows) return false;
    const unsigned int n2 = unsigned(Sorted(s->n2, sort));
    if (!Prepare(s->n1, n2)) return false;
    const int k1 = KernelSize(s->n1), k2 = KernelSize(n2);
    if (sort && isgn < 0) rdft2dsort(k1, k2, isgn, s->rows);
    rdft2d(k1, k2, isgn, s->rows, t, ip, w);
    if (sort && isgn >= 0) rdft2dsort(k1, k2, isgn, s->rows);
    return true;
}

bool CDSPTransform2D::RealDCT(int isgn, CDSPSignal2D* s) {
    if (!s || !s->rows || !Prepare(s->n1, s->n2)) return false;
    ddct2d(KernelSize(s->n1), KernelSize(s->n2), isgn, s->rows, t, ip, w);
    return true;
}

bool CDSPTransform2D::RealDST(int isgn, CDSPSignal2D* s) {
    if (!s || !s->rows || !Prepare(s->n1, s->n2)) return false;
    ddst2d(KernelSize(s->n1), KernelSize(s->n2), isgn, s->rows, t, ip, w);
    return true;
}

// --- 3D -----------------------------------------------------------------------------------------
CDSPTransform3D::CDSPTransform3D()
    : w(nullptr),
      t(nullptr),
      ip(nullptr),
      capacity1(0),
      capacity2(0),
      capacity3(0),
      initialised(false) {}

CDSPTransform3D::~CDSPTransform3D() {
    delete[] w;
    delete[] t;
    delete[] ip;
}

bool CDSPTransform3D::InitArrays(unsigned int wSize, unsigned int ipSize, unsigned int tSize) {
    return InitWorkAreas(w, ip, t, {wSize, ipSize, tSize}, kMessage3D);
}

bool CDSPTransform3D::Prepare(unsigned int n1, unsigned int n2, unsigned int n3) {
    if (!initialised) {
        capacity1 = n1;
        capacity2 = n2;
        capacity3 = n3;
        initialised = InitChecked(*this, Need3D(n1, n2, n3), kMessage3D);
        if (!initialised) return false;
    }
    return n1 <= capacity1 && n2 <= capacity2 && n3 <= capacity3;
}

bool CDSPTransform3D::ComplexFFT(int isgn, CDSPSignal3D* s) {
    if (!s || !s->planes || !Prepare(s->n1, s->n2, s->n3)) return false;
    cdft3d(KernelSize(s->n1), KernelSize(s->n2), KernelSize(s->n3), isgn, s->planes, t, ip, w);
    return true;
}

bool CDSPTransform3D::RealFFT(int isgn, bool sort, CDSPSignal3D* s) {
    if (!s || !s->planes) return false;
    const unsigned int n3 = unsigned(Sorted(s->n3, sort));
    if (!Prepare(s->n1, s->n2, n3)) return false;
    const int k1 = KernelSize(s->n1), k2 = KernelSize(s->n2), k3 = KernelSize(n3);
    if (sort && isgn < 0) rdft3dsort(k1, k2, k3, isgn, s->planes);
    rdft3d(k1, k2, k3, isgn, s->planes, t, ip, w);
    if (sort && isgn >= 0) rdft3dsort(k1, k2, k3, isgn, s->planes);
    return true;
}

bool CDSPTransform3D::RealDCT(int isgn, CDSPSignal3D* s) {
    if (!s || !s->planes || !Prepare(s->n1, s->n2, s->n3)) return false;
    ddct3d(KernelSize(s->n1), KernelSize(s->n2), KernelSize(s->n3), isgn, s->planes, t, ip, w);
    return true;
}

bool CDSPTransform3D::RealDST(int isgn, CDSPSignal3D* s) {
    if (!s || !s->planes || !Prepare(s->n1, s->n2, s->n3)) return false;
    ddst3d(KernelSize(s->n1), KernelSize(s->n2), KernelSize(s->n3), isgn, s->planes, t, ip, w);
    return true;
}
