#pragma once
// Euler angles: conversions between Euler triples, rotation matrices and quaternions in the six
// rotation orders, and small angle utilities.
//
// A triple always holds the angles about X, Y and Z, in radians, whatever the order; the order
// applies them about the fixed axes, the first letter first. With row vectors on the left the
// matrix of order PQR is R_P R_Q R_R, and the quaternion q_R q_Q q_P. The float forms of the
// conversions from angles widen to double, compute there and narrow the result; those to angles
// compute in float.
#include "math/foundations/export.h"
#include "math/matrices/matrix_mn.h"
#include "math/matrices/rotation_matrix.h"
#include "math/rotations/quaternion.h"
#include "math/rotations/rotation_order.h"
#include "math/vectors/vector3.h"

// The matrix of the triple. An invalid order leaves m unchanged.
MATH_API void F3DEulerToMat(const C3DVector3Tpl<double>& angles, C3DRotMatTpl<double>& m,
                            tagE3DROTORDER order);
MATH_API void F3DEulerToMat(const C3DVector3Tpl<float>& angles, C3DRotMatTpl<float>& m,
                            tagE3DROTORDER order);

// The unit quaternion of the triple. With all three angles exactly 0 it is the identity; with
// one angle non-zero, the elementary quaternion about that axis, whatever the order and without
// normalisation. Otherwise an invalid order only normalises q as it stood; the float forms start
// from the identity, so there an invalid order gives the identity. No sign is adjusted:
// (2 pi, 0, 0) gives (-1, 0, 0, 0).
MATH_API void F3DEulerToQuat(const C3DVector3Tpl<double>& angles, C3DQuatTpl<double>& q,
                             tagE3DROTORDER order);
MATH_API void F3DEulerToQuat(const C3DVector3Tpl<float>& angles, C3DQuatTpl<float>& q,
                             tagE3DROTORDER order);
MATH_API void F3DEulerToQuatf(const C3DVector3Tpl<float>& angles, C3DQuatTpl<float>& q,
                              tagE3DROTORDER order);

// The triple of the matrix (or of the quaternion's matrix) nearest to (0, 0, 0), as
// F3DMatToEulerUsingTarget chooses it: not always the one with the middle angle within
// [-pi/2, pi/2]. An invalid order leaves angles at (0, 0, 0).
MATH_API void F3DMatToEuler(const C3DRotMatTpl<double>& m, C3DVector3Tpl<double>& angles,
                            tagE3DROTORDER order);
MATH_API void F3DMatToEuler(const C3DRotMatTpl<float>& m, C3DVector3Tpl<float>& angles,
                            tagE3DROTORDER order);
MATH_API void F3DQuatToEuler(const C3DQuatTpl<double>& q, C3DVector3Tpl<double>& angles,
                             tagE3DROTORDER order);
MATH_API void F3DQuatToEuler(const C3DQuatTpl<float>& q, C3DVector3Tpl<float>& angles,
                             tagE3DROTORDER order);
MATH_API void F3DQuatfToEuler(const C3DQuatTpl<float>& q, C3DVector3Tpl<float>& angles,
                              tagE3DROTORDER order);

// One of b1 and b2, never a: each of the three is first brought into [0, 2 pi] (values already
// there, 2 pi included, are kept). For b1 >= b2 the nearer to a (b1 on a tie); for b1 < b2 a
// choice against the middle of the arc from b2 up through 2 pi to b1, kept for compatibility
// with its uneven treatment of a = 0 and a = 2 pi.
MATH_API double F3DGetClosestAngle(double a, double b1, double b2);

// a moved by whole turns into the turn of ref: a + 2 pi k with k the turns of ref rounded to the
// nearest. Meant for a in [-pi, pi].
MATH_API double F3DGetUnboundedAngle(double a, double ref);

// Element 0 of rows first to last becomes fmod(element, 2 pi), in (-2 pi, 2 pi) with its sign.
// A negative first is 0; a negative last, or one past the matrix, is the last row.
MATH_API void F3DBoundAnglesInMatrixInMinus2PITo2PI(C3DMatrixMN& m, int first, int last);

// Writes exactly three characters to out, no terminating NUL: the letters of the order's axes
// in sequence, leaving out each axis whose flag is 0, then blanks up to three (XYZ with useY = 0
// gives 'X', 'Z', ' '). An invalid order gives three blanks; a null out nothing.
MATH_API void buildorderstring(tagE3DROTORDER order, int useX, int useY, int useZ, char* out);

// Whether two such three-character texts may follow one another: 1 when either has no axis;
// otherwise a read backwards from its last letter must match b read forwards until b ends (a
// blank) or a is used up, 1 if so and 0 at the first mismatch. A null text counts as no axis.
MATH_API int checkCanAdd(const char* a, const char* b);
