#pragma once
// Euler extraction nearest a target triple.
//
// A rotation has two Euler triples in a given order away from gimbal lock (the second with its
// middle angle beyond +-pi/2), a one-parameter family at gimbal lock, and each of them shifted by
// whole turns. Animation wants the one that continues the previous frame's triple, so that angle
// curves have no jumps and may grow past +-pi.
#include "math/foundations/export.h"
#include "math/matrices/rotation_matrix.h"
#include "math/rotations/rotation_order.h"
#include "math/vectors/vector3.h"

namespace math3d_detail {

constexpr double kPi = 3.141592653589793;
constexpr double kTwoPi = 6.283185307179586;

// 0 to 5 are the six orders.
inline bool IsValidOrder(tagE3DROTORDER order) { return order >= 0 && order <= 5; }

}  // namespace math3d_detail

// On entry angles holds the target (radians about X, Y, Z), on return the Euler triple of m in
// the given order nearest to it: of the two solutions the one with the smaller sum of per-axis
// distances to the target (the second one on a tie), then moved by whole turns on each axis into
// (target - pi, target + pi].
//
// Within 1e-6 (float) or 1e-12 (double) of |middle sine| = 1 the matrix is taken as gimbal
// locked: the middle angle becomes exactly +-pi/2 and the first and last angles are those whose
// sum or difference the matrix fixes, split evenly around the target's. When that sum is below
// the small-angle tolerance (1e-6 float, 1e-12 double) both become -(target first + target
// last) / 2, kept for compatibility although their sum then does not match the matrix.
//
// An order outside 0 to 5 leaves angles unchanged.
template <typename T>
MATH_API void MatToEulerUsingTarget(const C3DRotMatTpl<T>& m, C3DVector3Tpl<T>& angles,
                                    tagE3DROTORDER order);

MATH_API void F3DMatToEulerUsingTarget(const C3DRotMatTpl<double>& m, C3DVector3Tpl<double>& angles,
                                       tagE3DROTORDER order);
MATH_API void F3DMatToEulerUsingTarget(const C3DRotMatTpl<float>& m, C3DVector3Tpl<float>& angles,
                                       tagE3DROTORDER order);
