#pragma once
// Signals: owned arrays of doubles in one, two and three dimensions, transformed in place by
// the CDSPTransform classes (dsp_transform.h). The fields are public, as hosts fill and read the
// samples directly; element values start uninitialised.
#include "math/foundations/export.h"

class MATH_API CDSPSignal1D {
  public:
    // Allocates n doubles and one spare (some transforms read one past the end, see
    // CDSPTransform1D::DSTOfRealFFT). On failure writes "Out of memory in CDSPSignal1D..." to
    // the standard error stream and keeps data null.
    explicit CDSPSignal1D(unsigned int n);
    ~CDSPSignal1D();
    CDSPSignal1D(const CDSPSignal1D&) = delete;
    CDSPSignal1D& operator=(const CDSPSignal1D&) = delete;

    double* data;
    unsigned int length;
};

class MATH_API CDSPSignal2D {
  public:
    // n1 rows of n2 doubles, each row its own array. If an allocation fails nothing is kept and
    // rows is null (no message).
    CDSPSignal2D(unsigned int n1, unsigned int n2);
    ~CDSPSignal2D();
    CDSPSignal2D(const CDSPSignal2D&) = delete;
    CDSPSignal2D& operator=(const CDSPSignal2D&) = delete;

    double** rows;
    unsigned int n1;
    unsigned int n2;
};

class MATH_API CDSPSignal3D {
  public:
    // n1 planes of n2 rows of n3 doubles, each row its own array. If an allocation fails nothing
    // is kept and planes is null (no message).
    CDSPSignal3D(unsigned int n1, unsigned int n2, unsigned int n3);
    ~CDSPSignal3D();
    CDSPSignal3D(const CDSPSignal3D&) = delete;
    CDSPSignal3D& operator=(const CDSPSignal3D&) = delete;

    double*** planes;
    unsigned int n1;
    unsigned int n2;
    unsigned int n3;
};
