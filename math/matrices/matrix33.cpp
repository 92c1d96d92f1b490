#include "math/matrices/matrix33.h"

#include <cmath>

template <typename T>
int C3DMatrix33Tpl<T>::IsSingular(T eps) const {
    T det, size;
    ComputeDetAndDetSize(m_Values, det, size);
    if (size == T(0)) return 1;
    return eps > std::fabs(det / size) ? 1 : 0;
}

template <typename T>
int C3DMatrix33Tpl<T>::GetEigenVectors(C3DMatrix33Tpl& vectors, C3DVector3Tpl<T>& values,
                                       T eps) const {
    if (!IsSymmetric(eps)) return 0;
    return ComputeEigen(m_Values, vectors.m_Values, values, eps);
}

namespace {

// The working state of the Jacobi iteration: the upper off-diagonal elements, the diagonal with
// its value at the start of the sweep and the corrections made since, and the eigenvectors.
template <typename T>
struct Jacobi {
    T a01, a02, a12;
    T d[3], start[3], drift[3];
    T v[3][3];
};

// The step of the sweep for the pair p < q: apq is the element to annihilate, arp and arq the
// elements with the third index r that the rotation mixes. The indices are template arguments
// so that the whole state stays in registers.
template <int p, int q, typename T>
inline void JacobiStep(Jacobi<T>& s, T& apq, T& arp, T& arq, int sweep, T threshold, T eps) {
    const T g = T(100) * std::fabs(apq);
    if (sweep > 4 && std::fabs(s.d[p] * eps) > g && std::fabs(s.d[q] * eps) > g) {
        apq = T(0);  // negligible beside both diagonal values
        return;
    }
    if (!(std::fabs(apq) > threshold)) return;
    T h = s.d[q] - s.d[p];
    T t;
    if (std::fabs(eps * h) > g) {
        t = apq / h;
    } else {
        const T theta = T(0.5) * h / apq;
        t = T(1) / (std::fabs(theta) + math3d_detail::Sqrt(theta * theta + T(1)));
        if (theta < T(0)) t = -t;
    }
    const T c = T(1) / math3d_detail::Sqrt(t * t + T(1));
    const T sine = t * c;
    const T tau = sine / (T(1) + c);
    h = t * apq;
    s.drift[p] -= h;
    s.drift[q] += h;
    s.d[p] -= h;
    s.d[q] += h;
    apq = T(0);
    const T rp = arp, rq = arq;
    arp = rp - sine * (rq + rp * tau);
    arq = rq + sine * (rp - rq * tau);
    for (int j = 0; j < 3; ++j) {
        const T vp = s.v[j][p], vq = s.v[j][q];
        s.v[j][p] = vp - sine * (vq + vp * tau);
        s.v[j][q] = vq + sine * (vp - vq * tau);
    }
}

}  // namespace

template <typename T>
int C3DMatrix33Tpl<T>::ComputeEigen(const T (*src)[3], T (*vectors)[3], C3DVector3Tpl<T>& values,
                                    T eps) const {
    Jacobi<T> s{src[0][1],
                src[0][2],
                src[1][2],
                {src[0][0], src[1][1], src[2][2]},
                {src[0][0], src[1][1], src[2][2]},
                {0, 0, 0},
                {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    int converged = 0;
    for (int sweep = 1; sweep <= 50; ++sweep) {
        const T o01 = std::fabs(s.a01), o02 = std::fabs(s.a02), o12 = std::fabs(s.a12);
        if (o01 < eps && o02 < eps && o12 < eps) {
            converged = 1;
            break;
        }
        const T threshold = sweep < 4 ? (o01 + o02 + o12) / T(45) : eps;
        JacobiStep<0, 1>(s, s.a01, s.a02, s.a12, sweep, threshold, eps);
        JacobiStep<0, 2>(s, s.a02, s.a01, s.a12, sweep, threshold, eps);
        JacobiStep<1, 2>(s, s.a12, s.a01, s.a02, sweep, threshold, eps);
        for (int i = 0; i < 3; ++i) {
            s.start[i] += s.drift[i];
            s.d[i] = s.start[i];
            s.drift[i] = T(0);
        }
    }

    T(&d)[3] = s.d;
    T(&v)[3][3] = s.v;
    if (converged) {
        // Decreasing selection sort; a later equal value wins the position.
        for (int i = 0; i < 2; ++i) {
            int k = i;
            for (int j = i + 1; j < 3; ++j)
                if (d[j] >= d[k]) k = j;
            if (k == i) continue;
            const T value = d[k];
            d[k] = d[i];
            d[i] = value;
            for (int j = 0; j < 3; ++j) {
                const T e = v[j][k];
                v[j][k] = v[j][i];
                v[j][i] = e;
            }
        }
    }
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) vectors[i][j] = v[i][j];
    values.Set(d[0], d[1], d[2]);
    return converged;
}

template <typename T>
void C3DMatrix33Tpl<T>::Dump(const char* title, std::ostream& os) const {
    F3DDumpValue(*this, title, os);
}

#define MATH_INSTANTIATE_VECTOR3_MATRIX33_PRODUCTS(T)                           \
    template C3DVector3Tpl<T>& C3DVector3Tpl<T>::Mul(const C3DMatrix33Tpl<T>&); \
    template C3DVector3Tpl<T>& C3DVector3Tpl<T>::Mul(const C3DVector3Tpl<T>&,   \
                                                     const C3DMatrix33Tpl<T>&); \
    template C3DVector3Tpl<T>& C3DVector3Tpl<T>::Mul(const C3DMatrix33Tpl<T>&,  \
                                                     const C3DVector3Tpl<T>&);

template class C3DMatrix33Tpl<float>;
template class C3DMatrix33Tpl<double>;
// The vector's matrix products are inline in matrix33.h; these copies in the library serve
// callers that see only the vector's declarations.
MATH_INSTANTIATE_VECTOR3_MATRIX33_PRODUCTS(float)
MATH_INSTANTIATE_VECTOR3_MATRIX33_PRODUCTS(double)
