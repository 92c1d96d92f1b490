// The SSE2 build of the transform engine, compiled into this test (tests/CMakeLists.txt): the
// library runs the AVX2 build wherever the processor has it.
#include <gtest/gtest.h>

#include "fft_reference.h"
#include "math/signal/fft_engine.h"

using namespace fftref;
namespace sse2 = math3d_detail::fft::sse2;

namespace {

// Complex transforms up to 1024 values against the sums, 4096 (depth first, 8-point leaves)
// against the library; the real split and the bit reversal of doubles against the library.
TEST(EngineSse2, AgreesWithTheSumsAndTheLibrary) {
    for (int count = 1; count <= 4096; count *= 2)
        for (int sign : {1, -1}) {
            Tables tb(2 * count);
            rdft(4 * count, 1, Vec(4 * count).data(), tb.ip.data(), tb.w.data());
            const Vec a = Random(2 * count, unsigned(count));
            Vec x = a, y = a, z = a, expected = count <= 1024 ? Cdft(2 * count, sign, a) : a;
            if (count > 1024) cdft(2 * count, sign, expected.data(), tb.ip.data(), tb.w.data());
            sse2::Complex(x.data(), count, sign, tb.w.data(), tb.ip[0]);
            EXPECT_LE(RelError(x, expected), kTol) << count << " " << sign;
            if (count < 4) continue;
            sse2::RealSplit(y.data(), 2 * count, sign, tb.ip[1], &tb.w[tb.ip[0]]);
            (sign > 0 ? rftfsub : rftbsub)(2 * count, z.data(), tb.ip[1], &tb.w[tb.ip[0]]);
            EXPECT_LE(RelError(y, z), 1e-15) << count;
            y = a;
            sse2::BitReverseReal(y.data(), 2 * count);
            for (int i = 0; i < 2 * count; ++i)
                ASSERT_EQ(y[BitRev(i, 2 * count)], a[i]) << count << " " << i;
        }
}

}  // namespace
