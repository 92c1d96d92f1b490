#include "math/noise/perlin_noise.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace {

using P = C3DPerlinNoise;

TEST(PerlinNoiseTables, Grad3IsTheTwelveCubeEdgeMidpointsInOrder) {
    const double want[12][3] = {{1, 1, 0},  {-1, 1, 0},  {1, -1, 0}, {-1, -1, 0},
                                {1, 0, 1},  {-1, 0, 1},  {1, 0, -1}, {-1, 0, -1},
                                {0, 1, 1},  {0, -1, 1},  {0, 1, -1}, {0, -1, -1}};
    for (int row = 0; row < 12; ++row)
        for (int k = 0; k < 3; ++k) EXPECT_EQ(P::grad3[row][k], want[row][k]) << row << " " << k;
}

TEST(PerlinNoiseTables, Grad4RowsByZeroPositionThenSignPattern) {
    // The zero at row / 8; bit 2 of row % 8 is the sign of the first non-zero, bit 0 of the last.
    for (int row = 0; row < 32; ++row) {
        for (int k = 0, nonZero = 0; k < 4; ++k) {
            const double want = k == row / 8 ? 0 : (((row % 8) >> (2 - nonZero++)) & 1 ? -1 : 1);
            EXPECT_EQ(P::grad4[row][k], want) << row << " " << k;
        }
    }
}

TEST(PerlinNoiseTables, SimplexRowsAreTheRanksOfEveryOrdering) {
    // Every ordering of four distinct magnitudes sets the six comparison bits
    // x>y 32, x>z 16, y>z 8, x>w 4, y>w 2, z>w 1; its row gives each coordinate's rank.
    // The ranks themselves serve as the four distinct magnitudes. Every other row is zero.
    std::array<int, 4> v = {0, 1, 2, 3};
    bool valid[64] = {};
    do {
        const int code = (v[0] > v[1]) * 32 + (v[0] > v[2]) * 16 + (v[1] > v[2]) * 8 +
                         (v[0] > v[3]) * 4 + (v[1] > v[3]) * 2 + (v[2] > v[3]);
        valid[code] = true;
        for (int k = 0; k < 4; ++k) EXPECT_EQ(P::simplex[code][k], v[k]) << code;
    } while (std::next_permutation(v.begin(), v.end()));
    for (int code = 0; code < 64; ++code)
        for (int k = 0; k < 4 && !valid[code]; ++k) EXPECT_EQ(P::simplex[code][k], 0) << code;
}

TEST(PerlinNoiseTables, HashHashBuiltOnceFromItsRule) {
    P::InitHashHash();
    ASSERT_TRUE(P::grad4hashhashinited);
    auto level = [](double c) { return c < 0 ? 0u : (c == 0 ? 1u : 2u); };
    for (int i = 0; i < 32; ++i) {
        for (int j = 0; j < 32; ++j) {
            const std::uint32_t* rec = P::grad4hashhash[i][j];
            for (int k = 0; k < 4; ++k)
                EXPECT_EQ(rec[k], 3 * level(P::grad4[i][k]) + level(P::grad4[j][k])) << i << j;
            // The fifth code runs the other way: 5 for -1, 4 for 0, 3 for +1.
            EXPECT_EQ(rec[4], 5 - level(P::grad4[j][3])) << i << " " << j;
        }
    }
    // Once set, the flag makes later calls return without writing.
    P::grad4hashhash[3][4][2] = 1234;
    P::InitHashHash();
    EXPECT_EQ(P::grad4hashhash[3][4][2], 1234u);
    P::grad4hashhashinited = false;
    P::InitHashHash();
    EXPECT_EQ(P::grad4hashhash[3][4][2], 3 * level(P::grad4[3][2]) + level(P::grad4[4][2]));
}

}  // namespace
