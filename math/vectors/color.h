#pragma once
// C3DColor4f: a colour of four single-precision channels, red, green, blue and alpha in that
// storage order. The library only stores it and hands it on.
#include "math/foundations/export.h"

class MATH_API C3DColor4f {
public:
    float r;
    float g;
    float b;
    float a;

    // All four channels 0.
    constexpr C3DColor4f() : r(0), g(0), b(0), a(0) {}
    constexpr C3DColor4f(float r_, float g_, float b_, float a_) : r(r_), g(g_), b(b_), a(a_) {}

    float* GetArray() { return &r; }
    const float* GetArray() const { return &r; }
};
