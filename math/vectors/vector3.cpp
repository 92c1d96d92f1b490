#include "math/vectors/vector3.h"

template <>
const C3DVector3Tpl<float> C3DVector3Tpl<float>::k_UnitVector(1, 1, 1);
template <>
const C3DVector3Tpl<double> C3DVector3Tpl<double>::k_UnitVector(1, 1, 1);

template <typename T>
int C3DVector3Tpl<T>::SetOrthogonal(const C3DVector3Tpl& a, const C3DVector3Tpl& b) {
    const C3DVector3Tpl first = a;
    SetCross(a, b);
    if (IsNull(C3DTolerance<T>::k_Accurate)) return 0;
    SetCross(*this, first);
    return 1;
}

template <typename T>
int C3DVector3Tpl<T>::SetOrthoProj(const C3DVector3Tpl& a, const C3DVector3Tpl& b) {
    const C3DVector3Tpl target = b;
    if (!SetOrthogonal(a, b)) return 0;
    Mul(GetDot(*this, target) / GetDot(*this, *this));
    return 1;
}

template <typename T>
int C3DVector3Tpl<T>::DecomposeIn2Basis(const C3DVector3Tpl& a, const C3DVector3Tpl& b, T& alpha,
                                        T& beta, T eps) const {
    const auto dominant = [](const C3DVector3Tpl& v, T& magnitude) {
        int index = 0;
        magnitude = std::fabs(v.x);
        for (int i = 1; i < 3; ++i) {
            if (std::fabs(v[i]) > magnitude) {
                magnitude = std::fabs(v[i]);
                index = i;
            }
        }
        return index;
    };
    T maxA, maxB;
    const int ia = dominant(a, maxA);
    const int ib = dominant(b, maxB);

    // Two equation rows: the dominant row of the larger vector first, then that of the other
    // one, or, when they coincide, the better of the remaining rows of the other vector.
    const bool bLarger = maxB > maxA;
    const int r1 = bLarger ? ib : ia;
    int r2 = bLarger ? ia : ib;
    if (r1 == r2) {
        const C3DVector3Tpl& other = bLarger ? a : b;
        const int c1 = (r1 + 1) % 3;
        const int c2 = (r1 + 2) % 3;
        r2 = std::fabs(other[c1]) > std::fabs(other[c2]) ? c1 : c2;
    }

    alpha = T(0);
    beta = T(0);
    if (eps > maxA && eps > maxB) return IsNull(eps) ? 1 : 0;

    const T det = a[r1] * b[r2] - b[r1] * a[r2];
    if (eps > std::fabs(det)) {
        // a and b parallel in these rows: succeed only when this is along a.
        if (!(GetCross(a, *this).GetSquaredLength() < eps * eps)) return 0;
        if (std::fabs(a[r1]) > std::fabs(b[r1])) {
            alpha = (*this)[r1] / a[r1];
        } else {
            beta = (*this)[r1] / b[r1];
        }
        return 1;
    }
    alpha = (b[r2] * (*this)[r1] - b[r1] * (*this)[r2]) / det;
    beta = (a[r1] * (*this)[r2] - (*this)[r1] * a[r2]) / det;
    return 1;
}

template <typename T>
C3DVector3Tpl<T>& C3DVector3Tpl<T>::SetMean(const C3DVector3Tpl* points, unsigned int n) {
    if (points == nullptr) return *this;
    C3DVector3Tpl sum(T(0), T(0), T(0));
    for (unsigned int i = 0; i < n; ++i) sum.Add(points[i]);
    return Mul(T(1) / static_cast<T>(n), sum);
}

template <typename T>
T C3DVector3Tpl<T>::LinearPositionUnInterpolate(const C3DVector3Tpl& a, const C3DVector3Tpl& b,
                                                T eps) const {
    const C3DVector3Tpl d = b - a;
    int k = std::fabs(d.y) > std::fabs(d.x) ? 1 : 0;
    if (!(std::fabs(d[k]) > std::fabs(d.z))) k = 2;
    if (eps > std::fabs(d[k])) return T(0);
    return ((*this)[k] - a[k]) / d[k];
}

template <typename T>
C3DVector3Tpl<T>& C3DVector3Tpl<T>::BsplinePositionInterpolate(
    const C3DVector3Tpl& p0, const C3DVector3Tpl& p1, const C3DVector3Tpl& p2,
    const C3DVector3Tpl& p3, T t) {
    // Kept for compatibility: 0.1666667, not the exact 1/6, in both precisions.
    const T k = T(0.1666667);
    const T t2 = t * t;
    const T t3 = t2 * t;
    const T w0 = T(3) * t2 - t3 - T(3) * t + T(1);
    const T w1 = T(3) * t3 - T(6) * t2 + T(4);
    const T w2 = T(3) * t2 - T(3) * t3 + T(3) * t + T(1);
    const T w3 = t3;
    return Set(k * (w0 * p0.x + w1 * p1.x + w2 * p2.x + w3 * p3.x),
               k * (w0 * p0.y + w1 * p1.y + w2 * p2.y + w3 * p3.y),
               k * (w0 * p0.z + w1 * p1.z + w2 * p2.z + w3 * p3.z));
}

template <typename T>
C3DVector3Tpl<T>& C3DVector3Tpl<T>::BsplineVectorInterpolate(
    const C3DVector3Tpl& p0, const C3DVector3Tpl& p1, const C3DVector3Tpl& p2,
    const C3DVector3Tpl& p3, T t) {
    const T t2 = t * t;
    const T w0 = t - t2 * T(0.5) - T(0.5);
    const T w1 = T(1.5) * t2 - T(2) * t;
    const T w2 = t - T(1.5) * t2 + T(0.5);
    const T w3 = t2 * T(0.5);
    return Set(w0 * p0.x + w1 * p1.x + w2 * p2.x + w3 * p3.x,
               w0 * p0.y + w1 * p1.y + w2 * p2.y + w3 * p3.y,
               w0 * p0.z + w1 * p1.z + w2 * p2.z + w3 * p3.z);
}

template <typename T>
void C3DVector3Tpl<T>::Dump(const char* title, std::ostream& os) const {
    F3DDumpValue(*this, title, os);
}

// --- free functions ---------------------------------------------------------------------------

template <typename T>
T GetVctsCosAngle(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b, C3DScalarArg<T> eps) {
    const T lengths = a.GetLength() * b.GetLength();
    if (lengths < eps) return T(1);
    const T c = GetDot(a, b) / lengths;
    return c > T(1) ? T(1) : (c < T(-1) ? T(-1) : c);
}

template <typename T>
T GetVctsAngle(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b, C3DScalarArg<T> eps) {
    return std::acos(GetVctsCosAngle(a, b, eps));
}

template <typename T>
T GetPntsCosAngle(const C3DVector3Tpl<T>& o, const C3DVector3Tpl<T>& a,
                  const C3DVector3Tpl<T>& b) {
    return GetVctsCosAngle(a - o, b - o, C3DTolerance<T>::k_Accurate);
}

template <typename T>
T GetPntsAngle(const C3DVector3Tpl<T>& o, const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b) {
    return GetVctsAngle(a - o, b - o, C3DTolerance<T>::k_Accurate);
}

template <typename T>
T Get2DVctsAngleSigned(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b) {
    const T angle = GetVctsAngle(a, b, C3DTolerance<T>::k_Accurate);
    return a.x * b.y - a.y * b.x < T(0) ? -angle : angle;
}

template <typename T>
T Get2DPntsAngleSigned(const C3DVector3Tpl<T>& o, const C3DVector3Tpl<T>& a,
                       const C3DVector3Tpl<T>& b) {
    return Get2DVctsAngleSigned(a - o, b - o);
}

template <typename T>
T GetTriangleArea(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b,
                  const C3DVector3Tpl<T>& c) {
    return T(0.5) * GetCross(b - a, c - a).GetLength();
}

template <typename T>
int ArePntsCollinear(const C3DVector3Tpl<T>& p0, const C3DVector3Tpl<T>& p1,
                     const C3DVector3Tpl<T>& p2, C3DScalarArg<T> eps) {
    const C3DVector3Tpl<double> q0(p0.x, p0.y, p0.z);
    const C3DVector3Tpl<double> u = q0 - C3DVector3Tpl<double>(p1.x, p1.y, p1.z);
    const C3DVector3Tpl<double> w = q0 - C3DVector3Tpl<double>(p2.x, p2.y, p2.z);
    const double sine = GetCross(u, w).GetLength() / (u.GetLength() * w.GetLength());
    return static_cast<double>(eps) > sine ? 1 : 0;
}

template <typename T>
void GetOrthogonalBasis(const C3DVector3Tpl<T>& n, C3DVector3Tpl<T>& u, C3DVector3Tpl<T>& v) {
    const T ax = std::fabs(n.x), ay = std::fabs(n.y), az = std::fabs(n.z);
    if (ay > ax) {
        if (az > ax) {
            u.Set(T(0), -n.z, n.y);
        } else {
            u.Set(-n.y, n.x, T(0));
        }
    } else if (az > ay) {
        u.Set(-n.z, T(0), n.x);
    } else {
        u.Set(-n.y, n.x, T(0));
    }
    v.SetCross(n, u);
}

template <typename T>
int Get2DPntSide(const C3DVector3Tpl<T>& /*p*/, const C3DVector3Tpl<T>& a,
                 const C3DVector3Tpl<T>& b) {
    // The product is subtracted from itself, so the test never fires: 1 for every input.
    const T d = (b.x - a.x) * (b.y - a.y);
    return T(0) > d - d ? -1 : 1;
}

#define MATH_INSTANTIATE_VECTOR3_FUNCTIONS(T)                                                    \
    template T GetVctsCosAngle(const C3DVector3Tpl<T>&, const C3DVector3Tpl<T>&, C3DScalarArg<T>);    \
    template T GetVctsAngle(const C3DVector3Tpl<T>&, const C3DVector3Tpl<T>&, C3DScalarArg<T>);       \
    template T GetPntsCosAngle(const C3DVector3Tpl<T>&, const C3DVector3Tpl<T>&,        \
                                        const C3DVector3Tpl<T>&);                                \
    template T GetPntsAngle(const C3DVector3Tpl<T>&, const C3DVector3Tpl<T>&,           \
                                     const C3DVector3Tpl<T>&);                                   \
    template T Get2DVctsAngleSigned(const C3DVector3Tpl<T>&, const C3DVector3Tpl<T>&);  \
    template T Get2DPntsAngleSigned(const C3DVector3Tpl<T>&, const C3DVector3Tpl<T>&,   \
                                             const C3DVector3Tpl<T>&);                           \
    template T GetTriangleArea(const C3DVector3Tpl<T>&, const C3DVector3Tpl<T>&,        \
                                        const C3DVector3Tpl<T>&);                                \
    template int ArePntsCollinear(const C3DVector3Tpl<T>&, const C3DVector3Tpl<T>&,     \
                                           const C3DVector3Tpl<T>&, C3DScalarArg<T>);                          \
    template void GetOrthogonalBasis(const C3DVector3Tpl<T>&, C3DVector3Tpl<T>&,        \
                                              C3DVector3Tpl<T>&);                                \
    template int Get2DPntSide(const C3DVector3Tpl<T>&, const C3DVector3Tpl<T>&,         \
                                       const C3DVector3Tpl<T>&);

template class C3DVector3Tpl<float>;
template class C3DVector3Tpl<double>;
MATH_INSTANTIATE_VECTOR3_FUNCTIONS(float)
MATH_INSTANTIATE_VECTOR3_FUNCTIONS(double)
