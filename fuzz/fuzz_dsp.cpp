// Drives the signal transforms with arbitrary sequences of operations, directions and signal
// sizes on one transform object of each dimension, so that the sanitizers see every work-area
// and table size the capacity rule lets through (sizes need not be powers of two).
#include <cstdint>
#include <cstring>
#include <memory>

#include "math/math3d.h"

namespace {

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
    bool Empty() const { return size_ == 0; }
    unsigned int Byte() {
        if (size_ == 0) return 0;
        --size_;
        return *data_++;
    }
    // A size in 0..max, biased towards powers of two.
    unsigned int Size(unsigned int maxLog2) {
        const unsigned int b = Byte();
        const unsigned int power = 1u << (b % (maxLog2 + 1));
        return b & 0x80 ? power + Byte() % power : power;
    }

private:
    const std::uint8_t* data_;
    std::size_t size_;
};

void Fill(double* values, unsigned int n, unsigned int seed) {
    for (unsigned int i = 0; i < n; ++i) values[i] = static_cast<double>((seed + 7 * i) % 13) - 6;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input in(data, size);
    CDSPTransform1D t1;
    CDSPTransform2D t2;
    CDSPTransform3D t3;
    for (int step = 0; step < 8 && !in.Empty(); ++step) {
        const unsigned int op = in.Byte();
        const int isgn = op & 1 ? 1 : -1;
        const bool sort = (op & 2) != 0;
        switch ((op >> 2) % 3) {
            case 0: {
                CDSPSignal1D s(in.Size(10));
                if (s.data == nullptr) break;
                Fill(s.data, s.length + 1, op);
                switch ((op >> 4) % 6) {
                    case 0: t1.ComplexFFT(isgn, &s); break;
                    case 1: t1.RealFFT(isgn, &s); break;
                    case 2: t1.RealDCT(isgn, &s); break;
                    case 3: t1.RealDST(isgn, &s); break;
                    case 4: t1.DCTOfRealFFT(&s); break;
                    default: t1.DSTOfRealFFT(&s); break;
                }
                break;
            }
            case 1: {
                CDSPSignal2D s(in.Size(5), in.Size(6));
                if (s.rows == nullptr) break;
                for (unsigned int i = 0; i < s.n1; ++i) Fill(s.rows[i], s.n2, op + i);
                switch ((op >> 4) % 4) {
                    case 0: t2.ComplexFFT(isgn, &s); break;
                    case 1: t2.RealFFT(isgn, sort, &s); break;
                    case 2: t2.RealDCT(isgn, &s); break;
                    default: t2.RealDST(isgn, &s); break;
                }
                break;
            }
            default: {
                CDSPSignal3D s(in.Size(4), in.Size(4), in.Size(5));
                if (s.planes == nullptr) break;
                for (unsigned int i = 0; i < s.n1; ++i)
                    for (unsigned int j = 0; j < s.n2; ++j) Fill(s.planes[i][j], s.n3, op + i + j);
                switch ((op >> 4) % 4) {
                    case 0: t3.ComplexFFT(isgn, &s); break;
                    case 1: t3.RealFFT(isgn, sort, &s); break;
                    case 2: t3.RealDCT(isgn, &s); break;
                    default: t3.RealDST(isgn, &s); break;
                }
                break;
            }
        }
    }
    return 0;
}
