#include "math/foundations/polynomial_roots.h"

#include <cmath>

namespace {

// The real cube root, keeping the sign of x.
double RealCubeRoot(double x) {
    const double r = std::pow(std::fabs(x), 1.0 / 3.0);
    return x < 0.0 ? -r : r;
}

}  // namespace

void F3DGetLinearRealRoots(double const& a, double const& b, unsigned int* count, double* root,
                           double const& eps) {
    *count = 0;
    if (std::fabs(a) >= eps) {
        *root = -b / a;
        *count = 1;
    } else if (std::fabs(b) < eps) {
        *root = 0.0;
        *count = 1;
    }
}

void F3DGetQuadraticRealRoots(double const& a, double const& b, double const& c,
                              unsigned int* count, double* root1, double* root2,
                              double const& eps) {
    *count = 0;
    if (std::fabs(a) < eps) return F3DGetLinearRealRoots(b, c, count, root1, eps);
    const double discriminant = b * b + (a * -4.0) * c;
    if (discriminant > 0.0) {
        const double s = std::sqrt(discriminant);
        *root1 = (s - b) / (2.0 * a);
        *root2 = (-b - s) / (2.0 * a);
        *count += 2;
    }
}

void F3DGetCubicRealRoots(double const& a, double b, double c, double const& d, unsigned int* count,
                          double* root1, double* root2, double* root3, double const& eps) {
    // The 1e-79 keeps the tolerance positive for the all-zero polynomial.
    const double tol = (std::fabs(a) + std::fabs(b) + std::fabs(c) + std::fabs(d) + 1e-79) * eps;
    *count = 0;
    if (tol > std::fabs(a)) return F3DGetQuadraticRealRoots(b, c, d, count, root1, root2, tol);

    // With z = a x and z = y - q the equation becomes y^3 + 3 h y + g = 0.
    const double q = b / 3.0;
    const double p = c / 3.0;
    const double h = p * a - q * q;
    const double g = p * (-3.0 * a * q) + a * d * a + q * (2.0 * q * q);
    const double disc = g * g + 4.0 * h * h * h;
    if (disc < 0.0) {
        // Three distinct real roots: y = 2 sqrt(-h) cos(phi) with cos(3 phi) = g / (2 h sqrt(-h)).
        // The quotient lies in [-1, 1] but rounding can push it past by an ulp; acos would then
        // give NaN, so it is clamped.
        constexpr double kTwoPi = 6.283185307179586;
        const double s = std::sqrt(-h);
        const double cosine = g / (2.0 * h * s);
        const double theta = std::acos(cosine > 1.0 ? 1.0 : (cosine < -1.0 ? -1.0 : cosine));
        *root1 = (2.0 * s * std::cos(theta / 3.0) - q) / a;
        *root2 = (2.0 * s * std::cos((kTwoPi - theta) / 3.0) - q) / a;
        *root3 = (2.0 * s * std::cos((kTwoPi + theta) / 3.0) - q) / a;
        *count = 3;
        return;
    }
    const double w = std::sqrt(disc);
    const double u = RealCubeRoot((g + w) / 2.0);
    const double v = RealCubeRoot((g - w) / 2.0);
    if (tol > u - v) {
        // The two cube roots coincide: a simple root and a double root, reported twice.
        *root1 = (-2.0 * u - q) / a;
        *root2 = (u - q) / a;
        *root3 = *root2;
        *count = 3;
    } else {
        *root1 = (-u - v - q) / a;
        *count = 1;
    }
}

HRESULT F3DFindQuadraticRoots(double a, double b, double c, tagE3D_QUAD_ROOT_CODE* code,
                              double* roots) {
    constexpr double kEps = 1e-9;
    if (code == nullptr) return E_POINTER;
    *code = E3D_QUAD_NO_ROOT;
    if (std::fabs(a) < kEps) {
        if (std::fabs(b) >= kEps) {
            *code = E3D_QUAD_ONE_ROOT;
            roots[0] = -c / b;
            return S_OK;
        }
        if (std::fabs(c) <= kEps) {
            *code = E3D_QUAD_ANY_ROOT;
            return S_OK;
        }
        return S_FALSE;
    }
    if (std::fabs(b) < kEps) {
        const double x = -c / a;
        if (x >= kEps) {
            *code = E3D_QUAD_TWO_ROOTS;
            roots[0] = std::sqrt(x);
            roots[1] = -roots[0];
            return S_OK;
        }
        if (x < -kEps) return S_FALSE;
        *code = E3D_QUAD_ONE_ROOT;
        roots[0] = 0.0;
        return S_OK;
    }
    if (std::fabs(c) < kEps) {
        *code = E3D_QUAD_TWO_ROOTS;
        roots[0] = -b / a;
        roots[1] = 0.0;
        return S_OK;
    }
    const double discriminant = b * b + (a * -4.0) * c;
    if (discriminant >= kEps) {
        const double sign = b >= 0.0 ? 1.0 : -1.0;
        const double t = -0.5 * (b + sign * std::sqrt(discriminant));
        *code = E3D_QUAD_TWO_ROOTS;
        roots[0] = t / a;
        roots[1] = c / t;
        return S_OK;
    }
    if (discriminant > -kEps) {
        *code = E3D_QUAD_ONE_ROOT;
        roots[0] = -0.5 * b / a;
        return S_OK;
    }
    return S_FALSE;
}
