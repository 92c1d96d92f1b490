// Polynomial roots, the noise tables and the random-number generator.
#include <iostream>

#include "demo_sections.h"
#include "math/math3d.h"

namespace {

void PrintCubic(double a, double b, double c, double d) {
    unsigned int count = 0;
    double r[3];
    F3DGetCubicRealRoots(a, b, c, d, &count, &r[0], &r[1], &r[2], 1e-12);
    std::cout << a << " x^3 + " << b << " x^2 + " << c << " x + " << d << ": " << count
              << " root(s)";
    for (unsigned int i = 0; i < count; ++i) std::cout << ' ' << r[i];
    std::cout << "\n";
}

void PrintNumbers(const char* title, int n) {
    std::cout << title;
    for (int i = 0; i < n; ++i) std::cout << ' ' << bsd_random();
    std::cout << "\n";
}

}  // namespace

void DemoRootsAndRandom() {
    std::cout << "\n-- Roots, noise tables, random numbers --\n";
    PrintCubic(1, -6, 11, -6);  // three roots, in the order the formulas give
    PrintCubic(1, 0, -3, 2);    // the double root comes twice
    PrintCubic(1, 0, 0, -1);    // one real root

    // A ray hitting the unit sphere: |o + t d|^2 = 1 with o = (-3, 0.5, 0), d = (1, 0, 0).
    tagE3D_QUAD_ROOT_CODE code;
    double t[2];
    if (F3DFindQuadraticRoots(1, -6, 8.25, &code, t) == S_OK && code == E3D_QUAD_TWO_ROOTS)
        std::cout << "Ray enters the sphere at t = " << t[1] << " and leaves at t = " << t[0]
                  << "\n";

    C3DPerlinNoise::InitHashHash();
    const std::uint32_t* rec = C3DPerlinNoise::grad4hashhash[0][7];
    std::cout << "Gradient pair code of grad4[0] and grad4[7]:";
    for (int k = 0; k < 5; ++k) std::cout << ' ' << rec[k];
    std::cout << "\n";

    // A private 128-byte state (type 3): seed it, draw, set it aside and take it up again.
    static char state[128];
    static char other[64];
    char* const previous = bsd_initstate(2024, state, sizeof state);
    PrintNumbers("Seeded with 2024:", 3);
    bsd_initstate(7, other, sizeof other);
    PrintNumbers("Another state:", 2);
    bsd_setstate(state);
    PrintNumbers("Back to the first, where it stopped:", 3);
    bsd_srandom(2024);
    PrintNumbers("Reseeded with 2024, same start:", 3);
    bsd_setstate(previous);
}
