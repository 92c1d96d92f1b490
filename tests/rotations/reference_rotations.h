#pragma once
// Independent references for the rotation tests, in double and in the row-vector convention
// (v' = v M): products of elementary rotations and Rodrigues' formula.
#include <cmath>

#include "math/matrices/rotation_matrix.h"
#include "math/vectors/vector3.h"

namespace reference {

constexpr double kPi = 3.141592653589793;
using Matrix = C3DRotMatTpl<double>;

// The axes of each order, the first applied first.
constexpr tagE3DAXISTYPE kAxes[6][3] = {
    {E3DAXIS_X, E3DAXIS_Y, E3DAXIS_Z}, {E3DAXIS_X, E3DAXIS_Z, E3DAXIS_Y},
    {E3DAXIS_Y, E3DAXIS_X, E3DAXIS_Z}, {E3DAXIS_Y, E3DAXIS_Z, E3DAXIS_X},
    {E3DAXIS_Z, E3DAXIS_X, E3DAXIS_Y}, {E3DAXIS_Z, E3DAXIS_Y, E3DAXIS_X}};

// R_first R_middle R_last.
template <typename T>
Matrix EulerMatrix(const C3DVector3Tpl<T>& angles, int order) {
    Matrix product, elementary;
    for (const tagE3DAXISTYPE axis : kAxes[order])
        product.Mul(elementary.Set(axis, double(angles[axis])));
    return product;
}

// m_ij = c d_ij + (1 - c) u_i u_j + s (e_i x e_j).u for the unit axis u.
template <typename T>
Matrix AxisAngleMatrix(const C3DVector3Tpl<T>& axis, double angle) {
    C3DVector3Tpl<double> u(axis.x, axis.y, axis.z);
    u.Normalize();
    const double c = std::cos(angle), s = std::sin(angle);
    Matrix m;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            const C3DVector3Tpl<double> ei(i, 1), ej(j, 1);
            m.Set(i, j, (i == j ? c : 0) + (1 - c) * u[i] * u[j] + s * (GetCross(ei, ej) * u));
        }
    return m;
}

template <typename T>
Matrix Widened(const C3DRotMatTpl<T>& m) {
    Matrix wide;
    for (int k = 0; k < 9; ++k) wide.GetArray()[k] = m.GetArray()[k];
    return wide;
}

}  // namespace reference
