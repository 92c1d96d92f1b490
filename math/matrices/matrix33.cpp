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

template <typename T>
void C3DMatrix33Tpl<T>::ComputeDetAndDetSize(const T (*m)[3], T& det, T& size) const {
    const T p0 = m[0][0] * m[1][1] * m[2][2];
    const T p1 = m[0][1] * m[1][2] * m[2][0];
    const T p2 = m[0][2] * m[1][0] * m[2][1];
    const T p3 = m[0][2] * m[1][1] * m[2][0];
    const T p4 = m[0][1] * m[1][0] * m[2][2];
    const T p5 = m[0][0] * m[1][2] * m[2][1];
    det = p0 + p1 + p2 - p3 - p4 - p5;
    size = std::fabs(p0) + std::fabs(p1) + std::fabs(p2) + std::fabs(p3) + std::fabs(p4) +
           std::fabs(p5);
}

template <typename T>
void C3DMatrix33Tpl<T>::ComputeAdjoint(const T (*src)[3], T (*dst)[3]) const {
    const T(*m)[3] = src;
    const T adj[3][3] = {
        {m[1][1] * m[2][2] - m[1][2] * m[2][1], m[0][2] * m[2][1] - m[0][1] * m[2][2],
         m[0][1] * m[1][2] - m[0][2] * m[1][1]},
        {m[1][2] * m[2][0] - m[1][0] * m[2][2], m[0][0] * m[2][2] - m[0][2] * m[2][0],
         m[0][2] * m[1][0] - m[0][0] * m[1][2]},
        {m[1][0] * m[2][1] - m[1][1] * m[2][0], m[0][1] * m[2][0] - m[0][0] * m[2][1],
         m[0][0] * m[1][1] - m[0][1] * m[1][0]}};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) dst[i][j] = adj[i][j];
}

template <typename T>
int C3DMatrix33Tpl<T>::ComputeInverse(const T (*src)[3], T (*dst)[3], int transpose, T eps) const {
    T m[3][3];
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) m[i][j] = src[i][j];
    T det, size;
    ComputeDetAndDetSize(m, det, size);
    if (size == T(0)) return 0;
    if (!(std::fabs(det / size) >= eps)) return 0;
    T adj[3][3];
    ComputeAdjoint(m, adj);
    const T factor = T(1) / det;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) dst[i][j] = (transpose != 0 ? adj[j][i] : adj[i][j]) * factor;
    return 1;
}

namespace {

// The off-diagonal pairs (p, q) in sweep order, with the index of a_pq in the upper-triangle
// array {a01, a02, a12} and of the elements a_rp, a_rq that the rotation mixes (r the third index).
struct JacobiPair {
    int p, q, pq, rp, rq;
};
constexpr JacobiPair kJacobiPairs[3] = {{0, 1, 0, 1, 2}, {0, 2, 1, 0, 2}, {1, 2, 2, 0, 1}};

}  // namespace

template <typename T>
int C3DMatrix33Tpl<T>::ComputeEigen(const T (*src)[3], T (*vectors)[3], C3DVector3Tpl<T>& values,
                                    T eps) const {
    T off[3] = {src[0][1], src[0][2], src[1][2]};
    T d[3] = {src[0][0], src[1][1], src[2][2]};
    // start: the diagonal at the start of the sweep; drift: its corrections during the sweep.
    T start[3] = {d[0], d[1], d[2]};
    T drift[3] = {0, 0, 0};
    T v[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

    int converged = 0;
    for (int sweep = 1; sweep <= 50; ++sweep) {
        const T o0 = std::fabs(off[0]), o1 = std::fabs(off[1]), o2 = std::fabs(off[2]);
        if (o0 < eps && o1 < eps && o2 < eps) {
            converged = 1;
            break;
        }
        const T threshold = sweep < 4 ? (o0 + o1 + o2) / T(45) : eps;
        for (const JacobiPair& pair : kJacobiPairs) {
            const int p = pair.p, q = pair.q;
            T& apq = off[pair.pq];
            const T g = T(100) * std::fabs(apq);
            if (sweep > 4 && std::fabs(d[p] * eps) > g && std::fabs(d[q] * eps) > g) {
                // Negligible beside both diagonal values.
                apq = T(0);
                continue;
            }
            if (!(std::fabs(apq) > threshold)) continue;
            T h = d[q] - d[p];
            T t;
            if (std::fabs(eps * h) > g) {
                t = apq / h;
            } else {
                const T theta = T(0.5) * h / apq;
                t = T(1) / (std::fabs(theta) + math3d_detail::Sqrt(theta * theta + T(1)));
                if (theta < T(0)) t = -t;
            }
            const T c = T(1) / math3d_detail::Sqrt(t * t + T(1));
            const T s = t * c;
            const T tau = s / (T(1) + c);
            h = t * apq;
            drift[p] -= h;
            drift[q] += h;
            d[p] -= h;
            d[q] += h;
            apq = T(0);
            const T arp = off[pair.rp], arq = off[pair.rq];
            off[pair.rp] = arp - s * (arq + arp * tau);
            off[pair.rq] = arq + s * (arp - arq * tau);
            for (int j = 0; j < 3; ++j) {
                const T vp = v[j][p], vq = v[j][q];
                v[j][p] = vp - s * (vq + vp * tau);
                v[j][q] = vq + s * (vp - vq * tau);
            }
        }
        for (int i = 0; i < 3; ++i) {
            start[i] += drift[i];
            d[i] = start[i];
            drift[i] = T(0);
        }
    }

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
