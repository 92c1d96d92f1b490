#pragma once
// C3DPerlinNoise: the constant tables of simplex noise in 2D, 3D and 4D, and one table derived
// from them on demand. Evaluating noise over these tables is left to the callers.
#include <cstdint>

#include "math/foundations/export.h"

class MATH_API C3DPerlinNoise {
public:
    // The 12 gradients of 3D noise: the midpoints of the edges of a cube.
    static const double grad3[12][3];

    // The 32 gradients of 4D noise: every vector with one zero component and three +-1, grouped
    // by the position of the zero (x, y, z, w); within a group the non-zero components run
    // through the signs +++, ++-, +-+, +--, -++, -+-, --+, ---.
    static const double grad4[32][4];

    // The 4D traversal table, indexed by the 6-bit code of the pairwise magnitude comparisons of
    // the four coordinates; a valid row holds the ranks of x, y, z, w, an unused row is zero.
    static const std::int32_t simplex[64][4];

    // grad4hashhash[i][j] codes the gradient pair (grad4[i], grad4[j]): for each component k,
    // 3 c(grad4[i][k]) + c(grad4[j][k]) with c(-1) = 0, c(0) = 1, c(1) = 2; then a fifth code
    // from grad4[j][3] alone, 5 for -1, 4 for 0 and 3 for 1 (note: in the reverse order).
    // Filled by InitHashHash.
    static std::uint32_t grad4hashhash[32][32][5];
    static bool grad4hashhashinited;

    // Fills grad4hashhash the first time; later calls return at once. Not locked: concurrent
    // first calls write the same values.
    static void InitHashHash();
};
