#pragma once
// The host application's plain record of a point or direction: three floats.

#include "math/foundations/export.h"

struct MATH_API Kel_Vector {
    float x;
    float y;
    float z;
};
