#include "math/matrices/rotation_matrix.h"

#include <cmath>

template <typename T>
C3DRotMatTpl<T>& C3DRotMatTpl<T>::Set(tagE3DAXISTYPE axis, T angle) {
    const T c = std::cos(angle);
    const T s = std::sin(angle);
    SetIdentity();
    switch (axis) {
        case E3DAXIS_X:
            return SetRow(1, 0, c, s).SetRow(2, 0, -s, c);
        case E3DAXIS_Y:
            return SetRow(0, c, 0, -s).SetRow(2, s, 0, c);
        case E3DAXIS_Z:
            return SetRow(0, c, s, 0).SetRow(1, -s, c, 0);
    }
    return *this;
}

#define MATH_INSTANTIATE_VECTOR3_ROTATION_PRODUCTS(T)                         \
    template C3DVector3Tpl<T>& C3DVector3Tpl<T>::Mul(const C3DVector3Tpl<T>&, \
                                                     const C3DRotMatTpl<T>&); \
    template C3DVector3Tpl<T>& C3DVector3Tpl<T>::Mul(const C3DRotMatTpl<T>&,  \
                                                     const C3DVector3Tpl<T>&);

template class C3DRotMatTpl<float>;
template class C3DRotMatTpl<double>;
// As in matrix33.cpp: library copies of the vector's inline rotation products.
MATH_INSTANTIATE_VECTOR3_ROTATION_PRODUCTS(float)
MATH_INSTANTIATE_VECTOR3_ROTATION_PRODUCTS(double)
