#pragma once
// Real roots of polynomials of degree one to three with double coefficients.
//
// The three F3DGet...RealRoots functions write the number of roots through count and the roots
// through the root pointers, in the order their formulas give (not sorted); outputs beyond the
// count are left unwritten. When the leading coefficient is negligible they solve the polynomial
// of the next lower degree instead.
#include "math/foundations/export.h"
#include "math/platform/win_types.h"

// What F3DFindQuadraticRoots found.
enum MATH_API tagE3D_QUAD_ROOT_CODE {
    E3D_QUAD_NO_ROOT = 0,
    E3D_QUAD_ONE_ROOT = 1,
    E3D_QUAD_TWO_ROOTS = 2,
    E3D_QUAD_ANY_ROOT = 3,  // the equation is identically zero: every number is a root
};

// a x + b = 0. One root -b/a when |a| >= eps; when both |a| < eps and |b| < eps the equation is
// taken as identically zero and reports the single root 0; otherwise there is no root.
MATH_API void F3DGetLinearRealRoots(double const& a, double const& b, unsigned int* count,
                                    double* root, double const& eps);

// a x^2 + b x + c = 0. Falls back to the linear equation b x + c = 0 when |a| < eps. Two roots,
// (sqrt(D) - b) / 2a then (-b - sqrt(D)) / 2a, only when the discriminant D is strictly positive:
// a double root (D == 0) is not reported (count 0), kept for compatibility with existing callers.
MATH_API void F3DGetQuadraticRealRoots(double const& a, double const& b, double const& c,
                                       unsigned int* count, double* root1, double* root2,
                                       double const& eps);

// a x^3 + b x^2 + c x + d = 0. The tolerance is relative: tol = (|a| + |b| + |c| + |d| + 1e-79)
// * eps; when |a| < tol the quadratic b x^2 + c x + d = 0 is solved with tol as its eps. Three
// distinct real roots come from the trigonometric form (count 3); a double root comes as the
// simple root followed by the double root twice (count 3); otherwise the single real root
// (count 1).
MATH_API void F3DGetCubicRealRoots(double const& a, double b, double c, double const& d,
                                   unsigned int* count, double* root1, double* root2, double* root3,
                                   double const& eps);

// a x^2 + b x + c = 0 with the fixed tolerance 1e-9, classifying the solutions in *code and
// writing up to two roots to roots[0], roots[1]. Returns S_OK when there is at least one root or
// the equation is identically zero, S_FALSE when there is no real root, E_POINTER when code is
// null. Two roots are computed without cancellation: t = -(b + sign(b) sqrt(D)) / 2, then t / a
// and c / t.
MATH_API HRESULT F3DFindQuadraticRoots(double a, double b, double c, tagE3D_QUAD_ROOT_CODE* code,
                                       double* roots);
