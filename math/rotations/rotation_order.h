#pragma once
// The coordinate axes and the six rotation orders of Euler triples.
//
// Both enumerations have the fixed underlying type int, so any int converts to them and a value
// outside the named ones is well defined; the operations taking them say what such a value does.

#include "math/foundations/export.h"

// A coordinate axis.
enum MATH_API tagE3DAXISTYPE : int { E3DAXIS_X = 0, E3DAXIS_Y = 1, E3DAXIS_Z = 2 };

// The order in which the three rotations of an Euler triple are applied, about fixed axes, the
// first letter first. The triple itself is always stored as (about X, about Y, about Z).
enum MATH_API tagE3DROTORDER : int {
    E3DROTORDER_XYZ = 0,
    E3DROTORDER_XZY = 1,
    E3DROTORDER_YXZ = 2,
    E3DROTORDER_YZX = 3,
    E3DROTORDER_ZXY = 4,
    E3DROTORDER_ZYX = 5
};
