#pragma once
// Independent references for the rotation tests: products of elementary rotations and Rodrigues'
// formula, both in the row-vector convention (v' = v M).
#include <cmath>

#include "math/matrices/rotation_matrix.h"
#include "math/vectors/vector3.h"

namespace reference {

// The axes of each rotation order, the first applied first.
constexpr tagE3DAXISTYPE kAxes[6][3] = {
    {E3DAXIS_X, E3DAXIS_Y, E3DAXIS_Z}, {E3DAXIS_X, E3DAXIS_Z, E3DAXIS_Y},
    {E3DAXIS_Y, E3DAXIS_X, E3DAXIS_Z}, {E3DAXIS_Y, E3DAXIS_Z, E3DAXIS_X},
    {E3DAXIS_Z, E3DAXIS_X, E3DAXIS_Y}, {E3DAXIS_Z, E3DAXIS_Y, E3DAXIS_X}};

// R_first R_middle R_last, in double.
template <typename T>
C3DRotMatTpl<double> EulerMatrix(const C3DVector3Tpl<T>& angles, int order) {
    C3DRotMatTpl<double> product, elementary;
    for (const tagE3DAXISTYPE axis : kAxes[order])
        product.Mul(elementary.Set(axis, double(angles[axis])));
    return product;
}

// m_ij = c d_ij + (1 - c) u_i u_j + s (e_i x e_j).u for the unit axis u, in double.
template <typename T>
C3DRotMatTpl<double> AxisAngleMatrix(const C3DVector3Tpl<T>& axis, double angle) {
    C3DVector3Tpl<double> u(axis.x, axis.y, axis.z);
    u.Normalize();
    const double c = std::cos(angle), s = std::sin(angle);
    C3DRotMatTpl<double> m;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            const C3DVector3Tpl<double> ei(i, 1), ej(j, 1);
            m.Set(i, j, (i == j ? c : 0) + (1 - c) * u[i] * u[j] + s * (GetCross(ei, ej) * u));
        }
    return m;
}

// A matrix widened to double.
template <typename T>
C3DRotMatTpl<double> Wide(const C3DRotMatTpl<T>& m) {
    C3DRotMatTpl<double> w;
    for (int k = 0; k < 9; ++k) w.GetArray()[k] = m.GetArray()[k];
    return w;
}

}  // namespace reference
