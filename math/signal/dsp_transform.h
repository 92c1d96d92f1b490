#pragma once
// Transforms of CDSPSignal1D/2D/3D: they own the work areas of the kernels (fft_kernels.h), size
// them on first use and call the kernels in place, with the kernels' sign convention and scaling
// (nothing is normalised here).
//
// Capacity: the first operation records the signal's sizes as the capacities and allocates the
// work areas; a later signal larger than a capacity (in any dimension) is refused (false,
// nothing touched), a smaller one is accepted and the kernel rebuilds its tables as needed. The
// work areas are sized for every operation of the class on signals within the capacities,
// whatever operation came first. A failed allocation writes "Out of memory in
// CDSPTransform1D..." (2D, 3D alike) to the standard error stream and leaves the transform
// uninitialised, so the next operation tries again with its own sizes.
//
// Every operation returns true when the kernel ran and false when it was refused (also for a
// null signal or a signal without data).
#include "math/foundations/export.h"
#include "math/signal/dsp_signal.h"

class MATH_API CDSPTransform1D {
  public:
    CDSPTransform1D();
    ~CDSPTransform1D();
    CDSPTransform1D(const CDSPTransform1D&) = delete;
    CDSPTransform1D& operator=(const CDSPTransform1D&) = delete;

    // cdft over the length doubles (length/2 complex values).
    bool ComplexFFT(int isgn, CDSPSignal1D* signal);
    bool RealFFT(int isgn, CDSPSignal1D* signal);
    bool RealDCT(int isgn, CDSPSignal1D* signal);
    bool RealDST(int isgn, CDSPSignal1D* signal);
    // dfct of size k = length - 1 (reads data[0..length-1]); the capacity compared is k.
    bool DCTOfRealFFT(CDSPSignal1D* signal);
    // dfst of size k = length + 1: works on data[0..length], the signal's spare element
    // included; the capacity compared is k.
    bool DSTOfRealFFT(CDSPSignal1D* signal);

    // Allocates w (wSize doubles), ip (ipSize ints) and t (tSize doubles), each only for a
    // non-zero size and with its first element set to 0, replacing any previous arrays.
    bool InitArrays(unsigned int wSize, unsigned int ipSize, unsigned int tSize);

  private:
    bool Prepare(unsigned long long size);

    double* w;
    double* t;
    int* ip;
    unsigned int capacity;
    bool initialised;
};

class MATH_API CDSPTransform2D {
  public:
    CDSPTransform2D();
    ~CDSPTransform2D();
    CDSPTransform2D(const CDSPTransform2D&) = delete;
    CDSPTransform2D& operator=(const CDSPTransform2D&) = delete;

    bool ComplexFFT(int isgn, CDSPSignal2D* signal);
    // sort true: rows hold two extra doubles; the transform size (and the capacity compared)
    // is n2 - 2, and the data is converted from (isgn < 0) or to (isgn >= 0) the natural half
    // spectrum by rdft2dsort.
    bool RealFFT(int isgn, bool sort, CDSPSignal2D* signal);
    bool RealDCT(int isgn, CDSPSignal2D* signal);
    bool RealDST(int isgn, CDSPSignal2D* signal);

    bool InitArrays(unsigned int wSize, unsigned int ipSize, unsigned int tSize);

  private:
    bool Prepare(unsigned int n1, unsigned int n2);

    double* w;
    double* t;
    int* ip;
    unsigned int capacity1;
    unsigned int capacity2;
    bool initialised;
};

class MATH_API CDSPTransform3D {
  public:
    CDSPTransform3D();
    ~CDSPTransform3D();
    CDSPTransform3D(const CDSPTransform3D&) = delete;
    CDSPTransform3D& operator=(const CDSPTransform3D&) = delete;

    bool ComplexFFT(int isgn, CDSPSignal3D* signal);
    // sort true: the last dimension holds two extra doubles (transform size n3 - 2), converted
    // by rdft3dsort.
    bool RealFFT(int isgn, bool sort, CDSPSignal3D* signal);
    bool RealDCT(int isgn, CDSPSignal3D* signal);
    bool RealDST(int isgn, CDSPSignal3D* signal);

    bool InitArrays(unsigned int wSize, unsigned int ipSize, unsigned int tSize);

  private:
    bool Prepare(unsigned int n1, unsigned int n2, unsigned int n3);

    double* w;
    double* t;
    int* ip;
    unsigned int capacity1;
    unsigned int capacity2;
    unsigned int capacity3;
    bool initialised;
};
