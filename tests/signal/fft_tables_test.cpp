#include <gtest/gtest.h>

#include "fft_reference.h"

using namespace fftref;

namespace {

// Every block of makewt(nw) holds its angles, nothing is written past w[nw - 3], and ip gets
// exactly max(2, 2^floor(log2(nw) / 2)) ints; makect holds half cosines and sines.
TEST(Tables, HoldTheirAngles) {
    for (int nw = 4; nw <= 4096; nw *= 2) {
        std::vector<int> ip(2 + 128, -1);
        Vec w(nw + 4, 1e300);
        makewt(nw, ip.data(), w.data());
        EXPECT_EQ(ip[0], nw);
        EXPECT_EQ(ip[1], 1);
        EXPECT_NE(w[nw - 3], 1e300);
        EXPECT_EQ(w[nw - 2], 1e300) << nw;
        for (int start = 0, h = nw / 2; h >= 2; start += h, h /= 2) {
            const double* b = &w[start];
            const int M = 4 * h;  // the block's transform size
            EXPECT_EQ(b[0], 1);
            EXPECT_NEAR(b[1], std::sqrt(0.5), 1e-16);
            if (h == 4) {
                EXPECT_NEAR(std::abs(Cplx(b[2], b[3]) - Turn(1, 16)), 0, 1e-16);
            }
            if (h > 4) {
                EXPECT_NEAR(b[2], double(0.5L / Turn(1, M).real()), 1e-15);
                EXPECT_NEAR(b[3], double(0.5L / Turn(3, M).real()), 1e-15);
            }
            for (int j = 4; j < h; j += 4) {
                const Cplx w1 = Turn(j / 2, M), w3 = Turn(3 * j / 2, M);
                EXPECT_LE(
                    std::abs(Cplx(b[j], b[j + 1]) - w1) + std::abs(Cplx(b[j + 2], -b[j + 3]) - w3),
                    2e-15);
            }
        }
        for (int i = 0; i < int(ip.size()); ++i)
            EXPECT_EQ(ip[i] != -1, i < std::max(2, 1 << (std::ilogb(nw) / 2))) << nw;

        Vec c(nw, 0.0);
        makect(nw, ip.data(), c.data());
        EXPECT_EQ(ip[1], nw);
        EXPECT_NEAR(c[0], std::sqrt(0.5), 1e-16);
        for (int j = 1; j <= nw / 2; ++j)
            EXPECT_LE(std::abs(Cplx(c[j], c[nw - j]) - 0.5L * Turn(j, 4LL * nw)), 1e-16)
                << nw << " " << j;
    }
    // The package's bit-reversal offsets for 1024 (the routines here compute the order instead).
    std::vector<int> ip(32, 0);
    makeipt(1024, ip.data());
    EXPECT_EQ(std::vector<int>(ip.begin() + 2, ip.end()),
              std::vector<int>({0,   16,   0,   64,   32,  96,   0,   256,  128, 384,
                                64,  320,  192, 448,  0,   1024, 512, 1536, 256, 1280,
                                768, 1792, 128, 1152, 640, 1664, 384, 1408, 896, 1920}));
}

// --- building blocks ------------------------------------------------------------------------
// bitrv2, bitrv208 and bitrv216 are checked through the stages below; the conjugating and
// negated forms here.
TEST(BuildingBlocks, BitReversals) {
    for (int count = 1; count <= 512; count *= 2) {
        Vec a(2 * count), n(2 * count);
        for (int p = 0; p < count; ++p) a[2 * p] = n[2 * p] = p, a[2 * p + 1] = -p - 0.5;
        std::vector<int> ip(64, 0);
        bitrv2conj(2 * count, ip.data(), a.data());
        if (count == 8 || count == 16) (count == 8 ? bitrv208neg : bitrv216neg)(n.data());
        for (int p = 0; p < count; ++p) {
            EXPECT_EQ(a[2 * p], BitRev(p, count));
            EXPECT_EQ(a[2 * p + 1], BitRev(p, count) + 0.5);
            EXPECT_EQ(n[2 * p], count == 8 || count == 16 ? BitRev((count - p) % count, count) : p);
        }
    }
}

// The stages of the complex transform (cftfsub and cftbsub, the whole transforms, are checked
// through the real transform's steps below): leaves and stage chains in bit-reversed order,
// backward stages the conjugates of the forward ones.
TEST(BuildingBlocks, ComplexStagesComposeIntoTheTransform) {
    for (int count : {16, 64, 128, 256}) {
        const int n = 2 * count;
        Tables tb(n);
        makewt(n / 4, tb.ip.data(), tb.w.data());
        double* w = tb.w.data();
        const int nw = tb.ip[0];
        const Vec a = Random(n, unsigned(count));
        auto natural = [&](Vec x) {
            bitrv2(n, tb.ip.data(), x.data());
            return RelError(x, Cdft(n, 1, a));
        };
        Vec x = a, y = a, z = a;
        cftrec4(n, x.data(), nw, w);
        EXPECT_LE(natural(x), kTol) << count;
        const bool four = count != 128;  // radix-4 first pass on powers of four, radix 2 otherwise
        x = a, y = a, z = a;
        for (size_t i = 1; i < y.size(); i += 2)
            y[i] = -y[i];  // backward(a) = conj forward(conj a)
        (four ? cftf1st : cftmdl1)(n, x.data(), w);
        (four ? cftf1st : cftmdl1)(n, y.data(), w);
        (four ? cftb1st : cftmdl2)(n, z.data(), w);
        for (size_t i = 1; i < y.size(); i += 2) y[i] = -y[i];
        EXPECT_LE(RelError(z, y), kTol);
        cftleaf(n, four ? count / 4 : count / 2, x.data(), nw, w);
        EXPECT_LE(natural(x), kTol) << count;
        if (four) {  // radix-4 passes down to blocks of 16, then the 16-point leaves
            x = a;
            EXPECT_EQ(cfttree(n, 0, 16, x.data(), nw, w), count == 16 ? 0 : count == 64 ? 1 : 2);
            cftfx41(n, x.data(), nw, w);
            EXPECT_LE(natural(x), kTol) << count;
        }
    }
    Tables tb(64);
    makewt(16, tb.ip.data(), tb.w.data());
    for (int s : {1, -1}) {
        const Vec a = Random(32, 9);
        Vec two(a.begin(), a.begin() + 4), four(a.begin(), a.begin() + 8),
            eight(a.begin(), a.begin() + 16), sixteen = a;
        cftx020(two.data());
        (s > 0 ? cftf040 : cftb040)(four.data());
        (s > 0 ? cftf081 : cftf082)(eight.data(), &tb.w[16 - 4]);
        (s > 0 ? cftf161 : cftf162)(sixteen.data(), &tb.w[16 - 8]);
        bitrv208(eight.data());
        bitrv216(sixteen.data());
        for (const Vec* v : {&two, &four, &eight, &sixteen})
            EXPECT_LE(RelError(*v, Cdft(int(v->size()), s, Vec(a.begin(), a.begin() + v->size()))),
                      kTol)
                << v->size();
    }
}

// rdft = complex transform, rftfsub, then (a0, a1) <- (a0 + a1, a0 - a1), and backwards;
// dctsub / dstsub rotate the pairs (a[j], a[n - j]) as documented.
TEST(BuildingBlocks, RealAndCosineSteps) {
    for (int n : {8, 64, 512}) {
        Tables tb(n);
        rdft(n, 1, Vec(n).data(), tb.ip.data(), tb.w.data());
        const int nw = tb.ip[0], nc = tb.ip[1];
        const Vec a = Random(n, unsigned(n)), packed = Expected(kReal, 1, {n}, a);
        Vec x = a, y = packed;
        cftfsub(n, x.data(), tb.ip.data(), nw, tb.w.data());
        rftfsub(n, x.data(), nc, &tb.w[nw]);
        x[0] += x[1], x[1] = x[0] - 2 * x[1];
        EXPECT_LE(RelError(x, packed), kTol);
        y[0] = 0.5 * (packed[0] + packed[1]), y[1] = 0.5 * (packed[0] - packed[1]);
        rftbsub(n, y.data(), nc, &tb.w[nw]);
        cftbsub(n, y.data(), tb.ip.data(), nw, tb.w.data());
        for (double& v : y) v *= 2.0 / n;  // back to a
        EXPECT_LE(RelError(y, a), kTol);

        Vec c(2 * n);
        std::vector<int> ip(2);
        makect(2 * n, ip.data(), c.data());  // nc = 2n >= n: read with stride 2
        for (bool sine : {false, true}) {
            Vec got = a, expected = a;
            (sine ? dstsub : dctsub)(n, got.data(), 2 * n, c.data());
            for (int j = 1; 2 * j < n; ++j) {
                const Cplx e = Turn(j, 4LL * n);
                const long double u = (e.real() - e.imag()) / 2, v = (e.real() + e.imag()) / 2;
                const int p = sine ? n - j : j, q = n - p;
                expected[p] = double(u * a[p] + v * a[q]);
                expected[q] = double(v * a[p] - u * a[q]);
            }
            expected[n / 2] = a[n / 2] * std::sqrt(0.5);
            EXPECT_LE(RelError(got, expected), kTol) << n << " " << sine;
        }
    }
}

}  // namespace
