// The SSE2 build of the transform engine, compiled into this test (see tests/CMakeLists.txt):
// the library itself runs the AVX2 build wherever the processor has it.
#include <gtest/gtest.h>

#include "fft_reference.h"
#include "math/signal/fft_engine.h"
#include "math/signal/fft_kernels.h"

using namespace fftref;
namespace sse2 = math3d_detail::fft::sse2;

namespace {

// Up to 1024 values against the sums; 2048 and 4096 (depth-first, 8-point leaves) against the
// library's build.
TEST(EngineSse2, ComplexTransformsAgreeWithTheDefiningSums) {
    for (int count = 1; count <= 4096; count *= 2)
        for (int sign : {1, -1}) {
            Tables tb(2 * count);
            makewt(std::max(count / 2, 1), tb.ip.data(), tb.w.data());
            const Vec a = Random(2 * count, unsigned(count));
            Vec x = a, expected = a;
            sse2::Complex(x.data(), count, sign, tb.w.data(), tb.ip[0]);
            if (count <= 1024)
                expected = Cdft(2 * count, sign, a);
            else
                cdft(2 * count, sign, expected.data(), tb.ip.data(), tb.w.data());
            EXPECT_LE(RelError(x, expected), kTol) << count << " " << sign;
        }
}

TEST(EngineSse2, RealSplitAndBitReversalsMatchTheLibrary) {
    for (int n : {8, 64, 1024}) {
        Tables tb(n);
        Vec warm(n);
        rdft(n, 1, warm.data(), tb.ip.data(), tb.w.data());
        const Vec a = Random(n, 2);
        for (int sign : {1, -1}) {
            Vec x = a, y = a;
            sse2::RealSplit(x.data(), n, sign, tb.ip[1], &tb.w[tb.ip[0]]);
            (sign > 0 ? rftfsub : rftbsub)(n, y.data(), tb.ip[1], &tb.w[tb.ip[0]]);
            EXPECT_LE(RelError(x, y), 1e-15) << n;
        }
        Vec x = a, y = a;
        sse2::BitReverseReal(x.data(), n);
        for (int i = 0; i < n; ++i) {
            int r = 0;
            for (int bit = 1; bit < n; bit <<= 1) r = (r << 1) | ((i & bit) ? 1 : 0);
            EXPECT_EQ(x[r], y[i]) << n << " " << i;
        }
    }
}

}  // namespace
