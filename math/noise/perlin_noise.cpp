#include "math/noise/perlin_noise.h"

static_assert(sizeof(bool) == 1, "grad4hashhashinited is one byte");

// clang-format off
const double C3DPerlinNoise::grad3[12][3] = {
    {1, 1, 0}, {-1, 1, 0}, {1, -1, 0}, {-1, -1, 0},
    {1, 0, 1}, {-1, 0, 1}, {1, 0, -1}, {-1, 0, -1},
    {0, 1, 1}, {0, -1, 1}, {0, 1, -1}, {0, -1, -1}};

const double C3DPerlinNoise::grad4[32][4] = {
    {0, 1, 1, 1}, {0, 1, 1, -1}, {0, 1, -1, 1}, {0, 1, -1, -1},
    {0, -1, 1, 1}, {0, -1, 1, -1}, {0, -1, -1, 1}, {0, -1, -1, -1},
    {1, 0, 1, 1}, {1, 0, 1, -1}, {1, 0, -1, 1}, {1, 0, -1, -1},
    {-1, 0, 1, 1}, {-1, 0, 1, -1}, {-1, 0, -1, 1}, {-1, 0, -1, -1},
    {1, 1, 0, 1}, {1, 1, 0, -1}, {1, -1, 0, 1}, {1, -1, 0, -1},
    {-1, 1, 0, 1}, {-1, 1, 0, -1}, {-1, -1, 0, 1}, {-1, -1, 0, -1},
    {1, 1, 1, 0}, {1, 1, -1, 0}, {1, -1, 1, 0}, {1, -1, -1, 0},
    {-1, 1, 1, 0}, {-1, 1, -1, 0}, {-1, -1, 1, 0}, {-1, -1, -1, 0}};

const std::int32_t C3DPerlinNoise::simplex[64][4] = {
    {0, 1, 2, 3}, {0, 1, 3, 2}, {0, 0, 0, 0}, {0, 2, 3, 1},
    {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {1, 2, 3, 0},
    {0, 2, 1, 3}, {0, 0, 0, 0}, {0, 3, 1, 2}, {0, 3, 2, 1},
    {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {1, 3, 2, 0},
    {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0},
    {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0},
    {1, 2, 0, 3}, {0, 0, 0, 0}, {1, 3, 0, 2}, {0, 0, 0, 0},
    {0, 0, 0, 0}, {0, 0, 0, 0}, {2, 3, 0, 1}, {2, 3, 1, 0},
    {1, 0, 2, 3}, {1, 0, 3, 2}, {0, 0, 0, 0}, {0, 0, 0, 0},
    {0, 0, 0, 0}, {2, 0, 3, 1}, {0, 0, 0, 0}, {2, 1, 3, 0},
    {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0},
    {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0},
    {2, 0, 1, 3}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0},
    {3, 0, 1, 2}, {3, 0, 2, 1}, {0, 0, 0, 0}, {3, 1, 2, 0},
    {2, 1, 0, 3}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0},
    {3, 1, 0, 2}, {0, 0, 0, 0}, {3, 2, 0, 1}, {3, 2, 1, 0}};
// clang-format on

std::uint32_t C3DPerlinNoise::grad4hashhash[32][32][5] = {};
bool C3DPerlinNoise::grad4hashhashinited = false;

namespace {

// The code of the component pair (a, b), both in {-1, 0, 1}: 3 c(a) + c(b) with c(-1) = 0,
// c(0) = 1, c(1) = 2, decided by exact comparisons; (1, 1) and anything unexpected give 8.
std::uint32_t PairCode(double a, double b) {
    if (a == -1 && b == -1) return 0;
    if (a == -1 && b == 0) return 1;
    if (a == -1 && b == 1) return 2;
    if (a == 0 && b == -1) return 3;
    if (a == 0 && b == 0) return 4;
    if (a == 0 && b == 1) return 5;
    if (a == 1 && b == -1) return 6;
    if (a == 1 && b == 0) return 7;
    return 8;
}

}  // namespace

void C3DPerlinNoise::InitHashHash() {
    if (grad4hashhashinited) return;
    for (int i = 0; i < 32; ++i) {
        for (int j = 0; j < 32; ++j) {
            const double* a = grad4[i];
            const double* b = grad4[j];
            std::uint32_t* record = grad4hashhash[i][j];
            for (int k = 0; k < 4; ++k) record[k] = PairCode(a[k], b[k]);
            // Kept as existing callers read it: the order is the reverse of c() above.
            record[4] = b[3] == -1 ? 5 : (b[3] == 0 ? 4 : 3);
        }
    }
    grad4hashhashinited = true;
}
