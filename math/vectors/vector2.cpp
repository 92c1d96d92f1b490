#include "math/vectors/vector2.h"

#include <limits>

namespace {

template <typename T>
C3DVector3Tpl<T> Lifted(const C3DVector2Tpl<T>& v) {
    return C3DVector3Tpl<T>(v.x, v.y, T(0));
}

// Half the planar cross product (r - q) x (p - q): the signed area of the triangle q r p.
template <typename T>
T SignedArea(const C3DVector2Tpl<T>& q, const C3DVector2Tpl<T>& r, const C3DVector2Tpl<T>& p) {
    return T(0.5) * ((r.x - q.x) * (p.y - q.y) - (r.y - q.y) * (p.x - q.x));
}

}  // namespace

template <typename T>
C3DVector2Tpl<T>& C3DVector2Tpl<T>::BsplinePositionInterpolate(const C3DVector2Tpl& p0,
                                                               const C3DVector2Tpl& p1,
                                                               const C3DVector2Tpl& p2,
                                                               const C3DVector2Tpl& p3, T t) {
    C3DVector3Tpl<T> point;
    point.BsplinePositionInterpolate(Lifted(p0), Lifted(p1), Lifted(p2), Lifted(p3), t);
    return Set(point.x, point.y);
}

template <typename T>
C3DVector2Tpl<T>& C3DVector2Tpl<T>::BsplineVectorInterpolate(const C3DVector2Tpl& p0,
                                                             const C3DVector2Tpl& p1,
                                                             const C3DVector2Tpl& p2,
                                                             const C3DVector2Tpl& p3, T t) {
    C3DVector3Tpl<T> tangent;
    tangent.BsplineVectorInterpolate(Lifted(p0), Lifted(p1), Lifted(p2), Lifted(p3), t);
    return Set(tangent.x, tangent.y);
}

template <typename T>
T C3DVector2Tpl<T>::LinearPositionUnInterpolate(const C3DVector2Tpl& a, const C3DVector2Tpl& b,
                                                T eps) const {
    const C3DVector2Tpl d = b - a;
    if (std::fabs(d.x) > eps && std::fabs(d.x) > std::fabs(d.y)) return (x - a.x) / d.x;
    if (std::fabs(d.y) > eps) return (y - a.y) / d.y;
    return T(0);
}

template <typename T>
int C3DVector2Tpl<T>::IsBetween(const C3DVector2Tpl& a, const C3DVector2Tpl& b, T eps) const {
    const C3DVector2Tpl d = b - a;
    const int k = std::fabs(d.x) > std::fabs(d.y) ? 0 : 1;
    const T extent = d[k];
    const T r = (*this)[k] - a[k];
    if (extent > T(0)) return r > -eps && r < extent + eps ? 1 : 0;
    return r < eps && r > extent - eps ? 1 : 0;
}

template <typename T>
T C3DVector2Tpl<T>::GetSquaredDistanceFromLine(const C3DVector2Tpl& o, const C3DVector2Tpl& d,
                                               T eps) const {
    const T s = GetDot(d, d);
    const C3DVector2Tpl w = *this - o;
    if (eps > s) return w.GetSquaredLength();
    const T t = GetDot(w, d) / s;
    return (w - t * d).GetSquaredLength();
}

template <typename T>
void C3DVector2Tpl<T>::GetNearestPointToLine(const C3DVector2Tpl& o, const C3DVector2Tpl& d,
                                             C3DVector2Tpl& result, T eps) const {
    const T s = GetDot(d, d);
    if (eps > s) result = o;
    const C3DVector2Tpl w = *this - o;
    const T t = GetDot(w, d) / s;
    result = w - (w - t * d);
}

template <typename T>
int C3DVector2Tpl<T>::DecomposeIn2Basis(const C3DVector2Tpl& a, const C3DVector2Tpl& b, T& alpha,
                                        T& beta, T eps) const {
    alpha = T(0);
    beta = T(0);
    const T det = a.x * b.y - b.x * a.y;
    if (eps > std::fabs(det)) {
        if (!(eps > std::fabs(a.x * y - a.y * x))) return 0;
        const T mx = std::fabs(a.x) > std::fabs(b.x) ? std::fabs(a.x) : std::fabs(b.x);
        const T my = std::fabs(a.y) > std::fabs(b.y) ? std::fabs(a.y) : std::fabs(b.y);
        const int k = mx > my ? 0 : 1;
        if (eps > (k == 0 ? mx : my)) return 0;
        if (std::fabs(a[k]) > std::fabs(b[k])) {
            alpha = (*this)[k] / a[k];
        } else {
            beta = (*this)[k] / b[k];
        }
        return 1;
    }
    alpha = (b.y * x - b.x * y) / det;
    beta = (a.x * y - x * a.y) / det;
    return 1;
}

template <typename T>
int C3DVector2Tpl<T>::SetIntersection(const C3DVector2Tpl& p1, const C3DVector2Tpl& d1,
                                      const C3DVector2Tpl& p2, const C3DVector2Tpl& d2, T eps) {
    T alpha, beta;
    if (!(p1 - p2).DecomposeIn2Basis(d1, d2, alpha, beta, eps)) return 0;
    *this = p2 + beta * d2;
    return 1;
}

template <typename T>
void C3DVector2Tpl<T>::Dump(const char* title, std::ostream& os) const {
    F3DDumpValue(*this, title, os);
}

// --- planar predicates ------------------------------------------------------------------------

template <typename T>
int Get2DPntSide(const C3DVector2Tpl<T>& p, const C3DVector2Tpl<T>& a, const C3DVector2Tpl<T>& b) {
    const T cross = (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
    return T(0) > cross ? -1 : 1;
}

template <typename T>
int ArePntsClockWise(const C3DVector2Tpl<T>& a, const C3DVector2Tpl<T>& b,
                     const C3DVector2Tpl<T>& c) {
    return T(0) >= (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x) ? 1 : 0;
}

template <typename T>
int ArePntsColinearUsingDistance(const C3DVector2Tpl<T>& p0, const C3DVector2Tpl<T>& p1,
                                 const C3DVector2Tpl<T>& p2, C3DScalarArg<T> eps) {
    const C3DVector2Tpl<T> edges[3] = {p1 - p0, p2 - p1, p0 - p2};
    const T lengths[3] = {edges[0].GetSquaredLength(), edges[1].GetSquaredLength(),
                          edges[2].GetSquaredLength()};
    const T eps2 = eps * eps;
    for (const T length : lengths)
        if (eps2 > length) return 1;
    // The longest edge, the first one on a tie; none qualifies only with NaN lengths.
    int k = 0;
    while (k < 3 && !(lengths[k] >= lengths[(k + 2) % 3] && lengths[k] >= lengths[(k + 1) % 3]))
        ++k;
    if (k == 3) return 1;
    const C3DVector2Tpl<T>& e = edges[k];
    const C3DVector2Tpl<T>& f = edges[(k + 1) % 3];
    const T t = GetDot(e, f) / lengths[k];
    return eps2 > (f - t * e).GetSquaredLength() ? 1 : 0;
}

template <typename T>
int GetBarycentricCoords(const C3DVector2Tpl<T>& p, const C3DVector2Tpl<T>& a,
                         const C3DVector2Tpl<T>& b, const C3DVector2Tpl<T>& c, T& u, T& v, T& w,
                         C3DScalarArg<T> eps, unsigned int preferred) {
    u = SignedArea(b, c, p);
    v = SignedArea(c, a, p);
    w = SignedArea(a, b, p);
    const T sum = u + v + w;
    if (sum > eps) {
        const T factor = T(1) / sum;
        u *= factor;
        v *= factor;
        w *= factor;
        return u > -eps && v > -eps && w > -eps ? 1 : 0;
    }

    // Clockwise or degenerate: the nearest edge, as start vertex j -> end vertex i.
    const C3DVector2Tpl<T>* vertices[3] = {&a, &b, &c};
    T* weights[3] = {&u, &v, &w};
    constexpr unsigned int kEdges[3][2] = {{2, 0}, {0, 1}, {1, 2}};
    u = v = w = T(0);
    T best = static_cast<T>(std::numeric_limits<float>::max());
    int bestPriority = 0;
    for (const auto& edge : kEdges) {
        const unsigned int j = edge[0], i = edge[1];
        const C3DVector2Tpl<T>& start = *vertices[j];
        const C3DVector2Tpl<T> d = *vertices[i] - start;
        T t = T(0);
        if (std::fabs(d.x) > eps && std::fabs(d.x) > std::fabs(d.y)) {
            t = (p.x - start.x) / d.x;
        } else if (std::fabs(d.y) > eps) {
            t = (p.y - start.y) / d.y;
        }
        const T distance2 = GetSquaredDistance(start + t * d, p);
        const bool inRange = t >= -eps && static_cast<double>(t) <= static_cast<double>(eps) + 1.0;
        const int priority = inRange ? (j == preferred || i == preferred ? 2 : 1) : 0;
        if ((inRange && priority > bestPriority) ||
            (priority == bestPriority && distance2 < best)) {
            u = v = w = T(0);
            *weights[j] = T(1) - t;
            *weights[i] = t;
            best = distance2;
            bestPriority = priority;
        }
    }
    return eps > best && bestPriority != 0 ? 1 : 0;
}

template <typename T>
int FSegmentIntersect(const C3DVector2Tpl<T>& /*p0*/, const C3DVector2Tpl<T>& /*p1*/,
                      const C3DVector2Tpl<T>& /*q0*/, const C3DVector2Tpl<T>& /*q1*/) {
    // The bounding-interval rejection and the side tests of p0 and p1 against q0 -> q1 can only
    // answer 0, and the side test of q0 and q1 against p0 -> p1 that would follow never decides
    // the result, so every input gives 0.
    return 0;
}

#define MATH_INSTANTIATE_VECTOR2_FUNCTIONS(T)                                                   \
    template int Get2DPntSide(const C3DVector2Tpl<T>&, const C3DVector2Tpl<T>&,                 \
                              const C3DVector2Tpl<T>&);                                         \
    template int ArePntsClockWise(const C3DVector2Tpl<T>&, const C3DVector2Tpl<T>&,             \
                                  const C3DVector2Tpl<T>&);                                     \
    template int ArePntsColinearUsingDistance(const C3DVector2Tpl<T>&, const C3DVector2Tpl<T>&, \
                                              const C3DVector2Tpl<T>&, C3DScalarArg<T>);        \
    template int GetBarycentricCoords(const C3DVector2Tpl<T>&, const C3DVector2Tpl<T>&,         \
                                      const C3DVector2Tpl<T>&, const C3DVector2Tpl<T>&, T&, T&, \
                                      T&, C3DScalarArg<T>, unsigned int);                       \
    template int FSegmentIntersect(const C3DVector2Tpl<T>&, const C3DVector2Tpl<T>&,            \
                                   const C3DVector2Tpl<T>&, const C3DVector2Tpl<T>&);

template class C3DVector2Tpl<float>;
template class C3DVector2Tpl<double>;
MATH_INSTANTIATE_VECTOR2_FUNCTIONS(float)
MATH_INSTANTIATE_VECTOR2_FUNCTIONS(double)
