#pragma once
// C3DVectorw: a double-precision point with a weight, (x, y, z, w). Its length and distance
// operations cover x, y, z only and leave the weight alone.
#include <cmath>
#include <istream>
#include <ostream>

#include "math/foundations/dump.h"
#include "math/foundations/export.h"
#include "math/foundations/tolerance.h"
#include "math/vectors/vector3.h"

class MATH_API C3DVectorw {
public:
    double x;
    double y;
    double z;
    double w;

    // (0, 0, 0, 1)
    constexpr C3DVectorw() : x(0), y(0), z(0), w(1) {}
    constexpr C3DVectorw(double x_, double y_, double z_, double w_) : x(x_), y(y_), z(z_), w(w_) {}

    double* GetArray() { return &x; }
    const double* GetArray() const { return &x; }
    double GetSquaredLength() const { return math3d_detail::Dot3(&x, &x); }
    double GetLength() const { return math3d_detail::Sqrt(GetSquaredLength()); }

    // Scales x, y, z to unit length, w unchanged. Fails (0, unchanged) unless their length
    // exceeds 1e-12; a NaN length fails too.
    int Normalize() {
        const double length = GetLength();
        if (!(length > C3DTolerance<double>::k_Accurate)) return 0;
        math3d_detail::Div3(&x, length);
        return 1;
    }
    // Scales x, y, z to the given length, w unchanged. Fails (0, unchanged) only when their
    // length is below 1e-12: a length equal to it passes, and so does NaN.
    int SetLength(double length) {
        const double current = GetLength();
        if (current < C3DTolerance<double>::k_Accurate) return 0;
        const double factor = length / current;
        x *= factor;
        y *= factor;
        z *= factor;
        return 1;
    }

    void Dump(const char* title, std::ostream& os) const;
};

// Over x, y, z only.
inline double GetSquaredDistance(const C3DVectorw& a, const C3DVectorw& b) {
    const double dx = a.x - b.x, dy = a.y - b.y, dz = a.z - b.z;
    return dx * dx + dy * dy + dz * dz;
}
inline double GetDistance(const C3DVectorw& a, const C3DVectorw& b) {
    return std::sqrt(GetSquaredDistance(a, b));
}
// "( x y z w )"
inline std::ostream& operator<<(std::ostream& os, const C3DVectorw& v) {
    return F3DWriteComponents(os, v.GetArray(), 4);
}
// Four bare numbers.
inline std::istream& operator>>(std::istream& is, C3DVectorw& v) {
    return F3DReadComponents(is, v.GetArray(), 4);
}
