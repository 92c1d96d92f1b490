#pragma once
// Independent references for the Euler tests: the matrix and quaternion of a triple as products of
// elementary rotations, and seeded random triples.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "math/rotations/euler_angles.h"

namespace euler_test {

constexpr double kPi = 3.141592653589793;

// The axes of each order, first applied first.
constexpr tagE3DAXISTYPE kAxes[6][3] = {
    {E3DAXIS_X, E3DAXIS_Y, E3DAXIS_Z}, {E3DAXIS_X, E3DAXIS_Z, E3DAXIS_Y},
    {E3DAXIS_Y, E3DAXIS_X, E3DAXIS_Z}, {E3DAXIS_Y, E3DAXIS_Z, E3DAXIS_X},
    {E3DAXIS_Z, E3DAXIS_X, E3DAXIS_Y}, {E3DAXIS_Z, E3DAXIS_Y, E3DAXIS_X}};

template <typename T>
struct Reference {
    using V = C3DVector3Tpl<T>;
    using R = C3DRotMatTpl<T>;
    using Q = C3DQuatTpl<T>;
    static constexpr bool kDouble = std::is_same<T, double>::value;
    // Rounding of a few operations on values of order 1.
    static constexpr double kTol = kDouble ? 1e-12 : 3e-6;

    // R_first R_middle R_last (row vectors on the left).
    static R Matrix(const V& angles, int order) {
        R product;
        for (const tagE3DAXISTYPE axis : kAxes[order]) {
            R elementary;
            elementary.Set(axis, angles[axis]);
            product.Mul(elementary);
        }
        return product;
    }
    // q_last q_middle q_first, each (cos(t/2), sin(t/2) u), in double.
    static C3DQuatTpl<double> Quaternion(const V& angles, int order) {
        C3DQuatTpl<double> product;
        for (const tagE3DAXISTYPE axis : kAxes[order]) {
            const double half = double(angles[axis]) / 2;
            const C3DVector3Tpl<double> u(int(axis), std::sin(half));
            product.Mul(C3DQuatTpl<double>(std::cos(half), u.x, u.y, u.z), product);
        }
        return product;
    }
    // Uniform in [-range, range] on each axis; the middle angle of the order kept at least
    // margin away from the gimbal poles.
    static V Triple(std::mt19937& rng, int order, double range, double margin = 0) {
        std::uniform_real_distribution<double> d(-range, range);
        V v(T(d(rng)), T(d(rng)), T(d(rng)));
        while (std::fabs(std::cos(v[kAxes[order][1]])) < margin) v[kAxes[order][1]] = T(d(rng));
        return v;
    }
    static void ExpectNear(const R& a, const R& b, double tol, const char* what) {
        for (int k = 0; k < 9; ++k) EXPECT_NEAR(a.GetArray()[k], b.GetArray()[k], tol) << what;
    }
};

}  // namespace euler_test
