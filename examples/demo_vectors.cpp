// Points and directions: build, combine, normalise, measure and print three-component vectors.
#include <iostream>

#include "demo_sections.h"
#include "math/math3d.h"

void DemoVectors() {
    std::cout << "\n-- Vectors --\n";
    using V = C3DVector3Tpl<double>;

    // A triangle and its normal.
    const V p0(0, 0, 0), p1(4, 0, 0), p2(0, 3, 0);
    V normal;
    normal.SetCross(p0, p1, p2);
    normal.Dump("Unnormalised normal of the triangle", std::cout);
    if (normal.Normalize()) normal.Dump("Unit normal", std::cout);
    std::cout << "Triangle area: " << GetTriangleArea(p0, p1, p2) << "\n";

    // Degenerate input is refused, not turned into NaN.
    V zero(0, 0, 0);
    std::cout << "Normalize of the null vector returns " << zero.Normalize() << ", vector stays "
              << zero << "\n";

    // Angles between directions.
    std::cout << "Angle between edges at p0: " << GetPntsAngle(p0, p1, p2) * 180 / 3.141592653589793
              << " deg\n";
    std::cout << "Signed planar angle x -> -y: "
              << Get2DVctsAngleSigned(V(1, 0, 0), V(0, -1, 0)) * 180 / 3.141592653589793
              << " deg\n";

    // Where a point sits in the triangle.
    double u, v, w;
    GetBarycentricCoords(V(1, 1, 0), p0, p1, p2, u, v, w);
    std::cout << "Barycentric weights of (1, 1, 0): " << u << " " << v << " " << w << "\n";

    // Decompose a vector in a basis of two directions.
    double alpha, beta;
    if (V(5, 3, 0).DecomposeIn2Basis(V(1, 1, 0), V(1, -1, 0), alpha, beta))
        std::cout << "(5, 3, 0) = " << alpha << " * (1, 1, 0) + " << beta << " * (1, -1, 0)\n";

    // A smooth path through four control points.
    std::cout << "B-spline samples:";
    for (double t = 0; t <= 1.0; t += 0.25) {
        V point;
        point.BsplinePositionInterpolate(p0, p1, p2, V(4, 3, 2), t);
        std::cout << ' ' << point;
    }
    std::cout << "\n";

    // Exchange with the host's float record.
    const Kel_Vector kel = normal;
    std::cout << "As the host's Kel_Vector: " << kel.x << " " << kel.y << " " << kel.z << "\n";
}
