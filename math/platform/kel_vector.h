#pragma once
// The host application's plain record of a point or direction: three floats.

struct Kel_Vector {
    float x;
    float y;
    float z;
};
