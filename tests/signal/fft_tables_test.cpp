#include <gtest/gtest.h>

#include "fft_reference.h"
#include "math/signal/fft_kernels.h"

using namespace fftref;

namespace {

// Values printed by the published package (17 significant digits: the exact doubles).
TEST(Tables, PublishedExamples) {
    std::vector<int> ip(64, 0);
    Vec w(16, 0.0);
    makewt(16, ip.data(), w.data());
    EXPECT_EQ(ip[0], 16);
    EXPECT_EQ(ip[1], 1);
    const Vec wt = {1,
                    0.70710678118654757,
                    0.50979557910415918,
                    0.60134488693504529,
                    0.92387953251128674,
                    0.38268343236508978,
                    0.38268343236508984,
                    -0.92387953251128674,
                    1,
                    0.70710678118654757,
                    0.92387953251128674,
                    0.38268343236508978,
                    1,
                    0.70710678118654757};
    EXPECT_EQ(Vec(w.begin(), w.begin() + 14), wt);

    Vec c(8, 0.0);
    makect(8, ip.data(), c.data());
    EXPECT_EQ(ip[1], 8);
    EXPECT_EQ(c, Vec({0.70710678118654757, 0.49039264020161522, 0.46193976625564337,
                      0.41573480615127262, 0.35355339059327379, 0.27778511650980109,
                      0.19134171618254489, 0.097545161008064124}));

    makeipt(1024, ip.data());
    EXPECT_EQ(std::vector<int>(ip.begin() + 2, ip.begin() + 32),
              std::vector<int>({0,   16,   0,   64,   32,  96,   0,   256,  128, 384,
                                64,  320,  192, 448,  0,   1024, 512, 1536, 256, 1280,
                                768, 1792, 128, 1152, 640, 1664, 384, 1408, 896, 1920}));
}

// Every block of makewt(nw) against cos/sin of its angles, and the exact length written.
TEST(Tables, TwiddleBlocksHoldTheirAngles) {
    for (int nw = 4; nw <= 4096; nw *= 2) {
        std::vector<int> ip(2 + 128, -1);
        Vec w(nw + 4, 1e300);
        makewt(nw, ip.data(), w.data());
        EXPECT_EQ(w[nw - 3] != 1e300, true) << nw;
        EXPECT_EQ(w[nw - 2], 1e300) << "writes past nw - 2, nw=" << nw;
        int start = 0;
        for (int h = nw / 2; h >= 2; start += h, h /= 2) {
            const double* b = &w[start];
            const int M = 4 * h;  // transform size of the block
            EXPECT_EQ(b[0], 1);
            EXPECT_NEAR(b[1], std::sqrt(0.5), 1e-16);
            if (h == 4) {
                EXPECT_NEAR(b[2], double(Turn(1, 16).real()), 1e-16);
                EXPECT_NEAR(b[3], double(Turn(1, 16).imag()), 1e-16);
            } else if (h > 4) {
                EXPECT_NEAR(b[2], double(0.5L / Turn(1, M).real()), 1e-15);
                EXPECT_NEAR(b[3], double(0.5L / Turn(3, M).real()), 1e-15);
            }
            for (int j = 4; j < h; j += 4) {
                const int k = j / 2;
                EXPECT_NEAR(b[j], double(Turn(k, M).real()), 1e-15) << nw << " " << h << " " << j;
                EXPECT_NEAR(b[j + 1], double(Turn(k, M).imag()), 1e-15);
                EXPECT_NEAR(b[j + 2], double(Turn(3 * k, M).real()), 1e-15);
                EXPECT_NEAR(b[j + 3], double(-Turn(3 * k, M).imag()), 1e-15);
            }
        }
        // ip: exactly max(2, 2^floor(log2(nw) / 2)) ints are written.
        int log2 = 0;
        while ((2 << log2) <= nw) ++log2;
        const int touched = std::max(2, 1 << (log2 / 2));
        for (int i = 0; i < int(ip.size()); ++i)
            EXPECT_EQ(ip[i] != -1, i < touched) << nw << " " << i;
    }
}

TEST(Tables, CosineTableHoldsHalfCosinesAndSines) {
    for (int nc = 2; nc <= 4096; nc *= 2) {
        std::vector<int> ip(2, 0);
        Vec c(nc, 0.0);
        makect(nc, ip.data(), c.data());
        EXPECT_EQ(ip[1], nc);
        EXPECT_NEAR(c[0], std::sqrt(0.5), 1e-16);
        for (int j = 1; j <= nc / 2; ++j) {
            EXPECT_NEAR(c[j], double(0.5L * Turn(j, 4LL * nc).real()), 1e-16) << nc << " " << j;
            EXPECT_NEAR(c[nc - j], double(0.5L * Turn(j, 4LL * nc).imag()), 1e-16);
        }
    }
}

// --- building blocks ----------------------------------------------------------------------------
Vec Indexed(int count) {  // complex value p = (p, -p - 0.5)
    Vec v(2 * count);
    for (int p = 0; p < count; ++p) {
        v[2 * p] = p;
        v[2 * p + 1] = -p - 0.5;
    }
    return v;
}
int BitRev(int p, int count) {
    int r = 0;
    for (int bit = 1; bit < count; bit <<= 1) r = (r << 1) | ((p & bit) ? 1 : 0);
    return r;
}

TEST(BuildingBlocks, BitReversals) {
    for (int count = 1; count <= 512; count *= 2) {
        std::vector<int> ip(64, 0);
        Vec a = Indexed(count), b = a;
        bitrv2(2 * count, ip.data(), a.data());
        bitrv2conj(2 * count, ip.data(), b.data());
        for (int p = 0; p < count; ++p) {
            const int q = BitRev(p, count);
            EXPECT_EQ(a[2 * p], q);
            EXPECT_EQ(a[2 * p + 1], -q - 0.5);
            EXPECT_EQ(b[2 * p + 1], q + 0.5);
        }
    }
    for (int count : {8, 16}) {
        Vec a = Indexed(count), n = a;
        (count == 8 ? bitrv208 : bitrv216)(a.data());
        (count == 8 ? bitrv208neg : bitrv216neg)(n.data());
        for (int p = 0; p < count; ++p) {
            EXPECT_EQ(a[2 * p], BitRev(p, count));
            EXPECT_EQ(n[2 * p], BitRev((count - p) % count, count));
        }
    }
}

TEST(BuildingBlocks, SmallTransformsAndWholeTransforms) {
    Tables tb(64);
    Vec warm(64);
    cdft(64, 1, warm.data(), tb.ip.data(), tb.w.data());  // twiddle table for 32 values
    const int nw = tb.ip[0];
    for (int s : {1, -1}) {
        const Vec a = Random(64, 9);
        Vec x = a;
        (s > 0 ? cftfsub : cftbsub)(64, x.data(), tb.ip.data(), nw, tb.w.data());
        EXPECT_LE(RelError(x, Cdft(64, s, a)), kTol);
        Vec four(a.begin(), a.begin() + 8), two(a.begin(), a.begin() + 4);
        (s > 0 ? cftf040 : cftb040)(four.data());
        EXPECT_LE(RelError(four, Cdft(8, s, Vec(a.begin(), a.begin() + 8))), kTol);
        cftx020(two.data());
        EXPECT_LE(RelError(two, Cdft(4, s, Vec(a.begin(), a.begin() + 4))), kTol);
        // 8- and 16-point leaves give bit-reversed output, with the blocks of a makewt table.
        Vec eight(a.begin(), a.begin() + 16), sixteen(a.begin(), a.begin() + 32);
        (s > 0 ? cftf081 : cftf082)(eight.data(), &tb.w[nw - 4]);
        (s > 0 ? cftf161 : cftf162)(sixteen.data(), &tb.w[nw - 8]);
        bitrv208(eight.data());
        bitrv216(sixteen.data());
        EXPECT_LE(RelError(eight, Cdft(16, s, Vec(a.begin(), a.begin() + 16))), kTol);
        EXPECT_LE(RelError(sixteen, Cdft(32, s, Vec(a.begin(), a.begin() + 32))), kTol);
    }
}

// The decimation stages compose into the whole transform, however they are chained.
TEST(BuildingBlocks, StagesComposeIntoTheTransform) {
    for (int count : {64, 128, 256}) {  // complex values
        const int n = 2 * count;
        Tables tb(n);
        makewt(n / 4, tb.ip.data(), tb.w.data());
        const int nw = tb.ip[0];
        const Vec a = Random(n, unsigned(count));
        const Vec expected = Cdft(n, 1, a);
        auto finish = [&](Vec x) {
            bitrv2(n, tb.ip.data(), x.data());
            return RelError(x, expected);
        };
        Vec x = a;
        cftrec4(n, x.data(), nw, tb.w.data());
        EXPECT_LE(finish(x), kTol) << count;
        x = a;  // first pass (radix 4 on powers of four, radix 2 otherwise), then the parts
        const bool four = count == 64 || count == 256;
        if (four) {
            cftf1st(n, x.data(), tb.w.data());
            cftleaf(n, count / 4, x.data(), nw, tb.w.data());
        } else {
            cftmdl1(n, x.data(), tb.w.data());
            cftleaf(n, count / 2, x.data(), nw, tb.w.data());
        }
        EXPECT_LE(finish(x), kTol) << count;
        if (four) {  // passes down to blocks of 16, then the 16-point leaves
            x = a;
            EXPECT_EQ(cfttree(n, 0, 16, x.data(), nw, tb.w.data()), count == 64 ? 1 : 2);
            cftfx41(n, x.data(), nw, tb.w.data());
            EXPECT_LE(finish(x), kTol) << count;
        }
    }
    // The backward passes are the conjugates of the forward ones.
    Tables tb(128);
    makewt(32, tb.ip.data(), tb.w.data());
    const Vec a = Random(128, 3);
    auto conjugate = [](Vec v) {
        for (size_t i = 1; i < v.size(); i += 2) v[i] = -v[i];
        return v;
    };
    for (auto passes : {std::make_pair(cftf1st, cftb1st), std::make_pair(cftmdl1, cftmdl2)}) {
        Vec forward = conjugate(a), backward = a;
        passes.first(128, forward.data(), tb.w.data());
        passes.second(128, backward.data(), tb.w.data());
        EXPECT_LE(RelError(backward, conjugate(forward)), kTol);
    }
}

TEST(BuildingBlocks, RealAndCosineSteps) {
    for (int n : {8, 64, 512}) {
        Tables tb(n);
        const Vec a = Random(n, unsigned(n));
        Vec warm(n);
        rdft(n, 1, warm.data(), tb.ip.data(), tb.w.data());
        const int nw = tb.ip[0], nc = tb.ip[1];
        Vec x = a;  // rdft(+1) = complex transform, rftfsub, then (a0, a1) <- (a0 + a1, a0 - a1)
        cftfsub(n, x.data(), tb.ip.data(), nw, tb.w.data());
        rftfsub(n, x.data(), nc, &tb.w[nw]);
        const double x0 = x[0];
        x[0] = x0 + x[1];
        x[1] = x0 - x[1];
        EXPECT_LE(RelError(x, Rdft(n, 1, a)), kTol);
        x = a;  // and rdft(-1) the reverse, with the halved (a0, a1)
        x[1] = 0.5 * (a[0] - a[1]);
        x[0] = 0.5 * (a[0] + a[1]);
        rftbsub(n, x.data(), nc, &tb.w[nw]);
        cftbsub(n, x.data(), tb.ip.data(), nw, tb.w.data());
        EXPECT_LE(RelError(x, Rdft(n, -1, a)), kTol);

        Vec c(2 * n);
        std::vector<int> ip(2);
        makect(2 * n, ip.data(), c.data());  // nc = 2n >= n: read with stride 2
        for (bool sine : {false, true}) {
            Vec y = a;
            (sine ? dstsub : dctsub)(n, y.data(), 2 * n, c.data());
            Vec expected = a;
            for (int j = 1; 2 * j < n; ++j) {
                const long double co = QuarterCos(j, n), si = QuarterSin(j, n);
                const long double u = (co - si) / 2, v = (co + si) / 2;
                const int k = n - j;
                const double p = sine ? a[k] : a[j], q = sine ? a[j] : a[k];
                (sine ? expected[k] : expected[j]) = double(u * p + v * q);
                (sine ? expected[j] : expected[k]) = double(v * p - u * q);
            }
            expected[n / 2] = a[n / 2] * std::sqrt(0.5);
            EXPECT_LE(RelError(y, expected), kTol) << n << " " << sine;
        }
    }
}

}  // namespace
