// The cos/sin tables of the transform kernels and the rules that decide when to rebuild them.
#include <cmath>

#include "math/signal/fft_kernels.h"
#include "math/signal/fft_support.h"

void makewt(int nw, int* ip, double* w) {
    ip[0] = nw;
    ip[1] = 1;
    if (nw <= 2) return;
    if (nw >= 16) makeipt(nw, ip);
    // Block 0 (transform size 2 nw) is computed; each deeper block (half the size) copies every
    // other group of four values of the block before it.
    const int h0 = nw >> 1;
    const double d0 = std::atan(1.0) / h0;
    w[0] = 1;
    w[1] = std::cos(d0 * h0);
    if (h0 == 4) {
        w[2] = std::cos(d0 * 2);
        w[3] = std::sin(d0 * 2);
    } else if (h0 > 4) {
        w[2] = 0.5 / std::cos(d0 * 2);
        w[3] = 0.5 / std::cos(d0 * 6);
        for (int j = 4; j < h0; j += 4) {
            w[j] = std::cos(d0 * j);
            w[j + 1] = std::sin(d0 * j);
            w[j + 2] = std::cos(3 * d0 * j);
            w[j + 3] = -std::sin(3 * d0 * j);
        }
    }
    for (int prev = 0, cur = h0, h = h0 >> 1; h >= 2; prev = cur, cur += h, h >>= 1) {
        const double* p = w + prev;
        double* b = w + cur;
        b[0] = 1;
        b[1] = p[1];
        if (h == 4) {
            b[2] = p[4];
            b[3] = p[5];
        } else if (h > 4) {
            b[2] = 0.5 / p[4];
            b[3] = 0.5 / p[6];
            for (int j = 4; j < h; j += 4) {
                b[j] = p[2 * j];
                b[j + 1] = p[2 * j + 1];
                b[j + 2] = p[2 * j + 2];
                b[j + 3] = p[2 * j + 3];
            }
        }
    }
}

void makeipt(int nw, int* ip) {
    ip[2] = 0;
    ip[3] = 16;
    int m = 2;
    for (int l = nw; l > 32; l >>= 2) {
        const int m2 = m << 1, q = m2 << 3;
        for (int j = m; j < m2; ++j) {
            const int p = ip[j] << 2;
            ip[m + j] = p;
            ip[m2 + j] = p + q;
        }
        m = m2;
    }
}

void makect(int nc, int* ip, double* c) {
    ip[1] = nc;
    if (nc <= 1) return;
    const int h = nc >> 1;
    const double d = std::atan(1.0) / h;
    c[0] = std::cos(d * h);
    c[h] = 0.5 * c[0];
    for (int j = 1; j < h; ++j) {
        c[j] = 0.5 * std::cos(d * j);
        c[nc - j] = 0.5 * std::sin(d * j);
    }
}

namespace math3d_detail {
namespace fft {

int FloorPow2(int n) {
    if (n <= 0) return 0;
    int p = 1;
    while (p <= n / 2) p <<= 1;
    return p;
}

void EnsureTwiddles(long long length, int* ip, double* w) {
    if (length > 4LL * ip[0]) makewt(int(length >> 2), ip, w);
}

void EnsureCosines(long long length, int divisor, int* ip, double* w) {
    if (length > 1LL * divisor * ip[1]) makect(int(length / divisor), ip, w + ip[0]);
}

}  // namespace fft
}  // namespace math3d_detail
