#include "math/signal/dsp_signal.h"

#include <cstdio>
#include <new>

CDSPSignal1D::CDSPSignal1D(unsigned int n)
    : data(new (std::nothrow) double[size_t(n) + 1]), length(n) {
    if (!data) std::fputs("Out of memory in CDSPSignal1D...", stderr);
}

CDSPSignal1D::~CDSPSignal1D() { delete[] data; }

namespace {
// Releases the first 'count' rows and the pointer array.
void FreeRows(double** rows, unsigned int count) {
    if (!rows) return;
    for (unsigned int i = 0; i < count; ++i) delete[] rows[i];
    delete[] rows;
}

double** AllocateRows(unsigned int count, unsigned int length) {
    double** rows = new (std::nothrow) double*[count];
    if (!rows) return nullptr;
    for (unsigned int i = 0; i < count; ++i) {
        rows[i] = new (std::nothrow) double[length];
        if (!rows[i]) {
            FreeRows(rows, i);
            return nullptr;
        }
    }
    return rows;
}
}  // namespace

CDSPSignal2D::CDSPSignal2D(unsigned int n1_, unsigned int n2_)
    : rows(AllocateRows(n1_, n2_)), n1(n1_), n2(n2_) {}

CDSPSignal2D::~CDSPSignal2D() { FreeRows(rows, n1); }

CDSPSignal3D::CDSPSignal3D(unsigned int n1_, unsigned int n2_, unsigned int n3_)
    : planes(new (std::nothrow) double**[n1_]), n1(n1_), n2(n2_), n3(n3_) {
    if (!planes) return;
    for (unsigned int i = 0; i < n1; ++i) {
        planes[i] = AllocateRows(n2, n3);
        if (!planes[i]) {
            for (unsigned int j = 0; j < i; ++j) FreeRows(planes[j], n2);
            delete[] planes;
            planes = nullptr;
            return;
        }
    }
}

CDSPSignal3D::~CDSPSignal3D() {
    if (!planes) return;
    for (unsigned int i = 0; i < n1; ++i) FreeRows(planes[i], n2);
    delete[] planes;
}
