#include "math/noise/perlin_noise.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace {

using P = C3DPerlinNoise;

TEST(PerlinNoiseTables, Grad3IsTheTwelveCubeEdgeMidpointsInOrder) {
    // Zero in z, then y, then x; signs of the two others (+,+), (-,+), (+,-), (-,-).
    const int zeroAt[3] = {2, 1, 0};
    for (int row = 0; row < 12; ++row) {
        const int zero = zeroAt[row / 4];
        const double first = row % 2 ? -1 : 1, second = row % 4 >= 2 ? -1 : 1;
        double want[3];
        want[zero] = 0;
        want[zero == 0 ? 1 : 0] = first;
        want[zero == 2 ? 1 : 2] = second;
        for (int k = 0; k < 3; ++k) EXPECT_EQ(P::grad3[row][k], want[k]) << row << " " << k;
    }
}

TEST(PerlinNoiseTables, Grad4RowsByZeroPositionThenSignPattern) {
    for (int row = 0; row < 32; ++row) {
        const int zero = row / 8, pattern = row % 8;
        int nonZero = 0;
        for (int k = 0; k < 4; ++k) {
            if (k == zero) {
                EXPECT_EQ(P::grad4[row][k], 0.0) << row;
                continue;
            }
            // Pattern bit 2 is the sign of the first non-zero component, bit 0 of the last.
            const double sign = (pattern >> (2 - nonZero++)) & 1 ? -1 : 1;
            EXPECT_EQ(P::grad4[row][k], sign) << row << " " << k;
        }
    }
}

TEST(PerlinNoiseTables, SimplexRowsAreTheRanksOfEveryOrdering) {
    // Every ordering of four distinct magnitudes sets the six comparison bits
    // x>y 32, x>z 16, y>z 8, x>w 4, y>w 2, z>w 1; its row gives each coordinate's rank.
    std::array<int, 4> rank = {0, 1, 2, 3};
    bool valid[64] = {};
    do {
        const auto& v = rank;  // distinct values ordered like the ranks
        const int code = (v[0] > v[1]) * 32 + (v[0] > v[2]) * 16 + (v[1] > v[2]) * 8 +
                         (v[0] > v[3]) * 4 + (v[1] > v[3]) * 2 + (v[2] > v[3]);
        valid[code] = true;
        for (int k = 0; k < 4; ++k) EXPECT_EQ(P::simplex[code][k], rank[k]) << code;
    } while (std::next_permutation(rank.begin(), rank.end()));
    int validRows = 0;
    for (int code = 0; code < 64; ++code) {
        if (valid[code]) {
            ++validRows;
            continue;
        }
        for (int k = 0; k < 4; ++k) EXPECT_EQ(P::simplex[code][k], 0) << code;
    }
    EXPECT_EQ(validRows, 24);
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
