#include "math/rotations/euler_target.h"

#include <cmath>

#include "math/foundations/scalar.h"
#include "math/foundations/tolerance.h"

using math3d_detail::kPi;
using math3d_detail::kTwoPi;

namespace {

// Where each order keeps its angles in the row-vector matrix R_first R_middle R_last. Elements
// are indices 3 row + col into the row-major array.
struct OrderLayout {
    unsigned int first, middle, last;  // the axes: 0 X, 1 Y, 2 Z
    int sigma;                         // sin(middle) = sigma m[middleSine]
    int middleSine;
    // cos(middle) (sin, cos) of the first angle = (-sigma m[firstSine], m[firstCosine]).
    int firstSine, firstCosine;
    // Likewise for the last angle.
    int lastSine, lastCosine;
    // At gimbal lock, the sine and cosine of the sum or difference of first and last.
    int gimbalSine, gimbalCosine;
    bool even;  // XYZ, YZX, ZXY: the cyclic orders
};

constexpr int E(int row, int col) { return 3 * row + col; }

// Indexed by the tagE3DROTORDER value.
constexpr OrderLayout kLayouts[6] = {
    {0, 1, 2, -1, E(0, 2), E(1, 2), E(2, 2), E(0, 1), E(0, 0), E(1, 0), E(1, 1), true},   // XYZ
    {0, 2, 1, +1, E(0, 1), E(2, 1), E(1, 1), E(0, 2), E(0, 0), E(1, 2), E(2, 2), false},  // XZY
    {1, 0, 2, +1, E(1, 2), E(0, 2), E(2, 2), E(1, 0), E(1, 1), E(2, 0), E(0, 0), false},  // YXZ
    {1, 2, 0, -1, E(1, 0), E(2, 0), E(0, 0), E(1, 2), E(1, 1), E(2, 1), E(2, 2), true},   // YZX
    {2, 0, 1, -1, E(2, 1), E(0, 1), E(1, 1), E(2, 0), E(2, 2), E(0, 2), E(0, 0), true},   // ZXY
    {2, 1, 0, +1, E(2, 0), E(1, 0), E(0, 0), E(2, 1), E(2, 2), E(0, 1), E(1, 1), false},  // ZYX
};

// |sin(middle)| from which the matrix counts as gimbal locked.
template <typename T>
struct GimbalThreshold;
template <>
struct GimbalThreshold<float> {
    static constexpr float k_Value = 0.999999f;
};
template <>
struct GimbalThreshold<double> {
    static constexpr double k_Value = 0.999999999999;
};

// 2 pi floor(q): the whole turns counted by the quotient q, rounded to T.
template <typename T>
T WholeTurns(double q) {
    return T(kTwoPi * std::floor(q));
}

// t moved by whole turns into [-pi, pi).
template <typename T>
T Wrapped(T t) {
    const T u = t + T(kPi);
    if (u >= T(0) && u < T(kTwoPi)) return t;
    return t - WholeTurns<T>(u * 0.15915494309189535);
}

// x moved by whole turns into [0, 2 pi).
template <typename T>
T Reduced(T x) {
    return x - WholeTurns<T>(x / kTwoPi);
}

// c moved by whole turns into (t - pi, t + pi].
template <typename T>
T Unwrapped(T c, T t) {
    const T u = t + T(kPi) - c;
    if (u >= T(0) && u < T(kTwoPi)) return c;
    return c + WholeTurns<T>(u / kTwoPi);
}

// The distance around the circle from a wrapped target angle t to a candidate angle c, for c
// in [-2 pi, 2 pi).
template <typename T>
T Distance(T t, T c) {
    const T twoPi = T(kTwoPi);
    T d;
    if (t < T(0)) {
        d = c < T(0) ? std::fabs(t - c) : std::fabs(twoPi + t - c);
    } else {
        d = c < T(0) ? std::fabs(t - c - twoPi) : std::fabs(t - c);
    }
    return d > T(kPi) ? twoPi - d : d;
}

template <typename T>
T DistanceSum(const C3DVector3Tpl<T>& t, const C3DVector3Tpl<T>& c) {
    return Distance(t.x, c.x) + Distance(t.y, c.y) + Distance(t.z, c.z);
}

// The triple (about X, Y, Z) with the first, middle and last angles of the order.
template <typename T>
C3DVector3Tpl<T> Arranged(const OrderLayout& o, T first, T middle, T last) {
    C3DVector3Tpl<T> v;
    v[o.first] = first;
    v[o.middle] = middle;
    v[o.last] = last;
    return v;
}

// The two solutions (first, middle, last) and (first -+ pi, +-pi - middle, last -+ pi) of a
// matrix that is not gimbal locked, the chosen one about X, Y, Z.
template <typename T>
C3DVector3Tpl<T> RegularSolution(const T* e, const OrderLayout& o, T s,
                                 const C3DVector3Tpl<T>& target) {
    const T pi = T(kPi);
    const T theta = std::asin(s);
    const T otherTheta = theta > T(0) ? pi - theta : -pi - theta;
    // A guard on 1 / cos(theta); the gimbal thresholds keep theta 1.4e-6 (double) or 1.4e-3
    // (float) away from +-pi/2, so finite input does not reach it.
    if (std::fabs(std::fabs(theta) - T(kPi / 2)) <= T(1e-6)) {
        return Arranged(o, T(0), otherTheta, T(0));
    }
    const T k = T(1) / std::cos(std::fabs(theta));
    const T sigma = T(o.sigma);
    const T phi = T(F3DArcSinCos(-sigma * e[o.firstSine] * k, e[o.firstCosine] * k));
    const T psi = T(F3DArcSinCos(-sigma * e[o.lastSine] * k, e[o.lastCosine] * k));
    const auto opposite = [pi](T x) { return x > T(0) ? x - pi : x + pi; };
    const C3DVector3Tpl<T> a = Arranged(o, phi, theta, psi);
    const C3DVector3Tpl<T> b = Arranged(o, opposite(phi), otherTheta, opposite(psi));
    return DistanceSum(target, b) > DistanceSum(target, a) ? a : b;
}

// At gimbal lock the middle angle is +-pi/2 and the matrix fixes only the sum or the difference
// of the first and last angles; they are split evenly around the target's a and c.
template <typename T>
C3DVector3Tpl<T> GimbalSolution(const T* e, const OrderLayout& o, T s,
                                const C3DVector3Tpl<T>& target) {
    const T small = C3DTolerance<T>::k_Accurate;
    const T middle = s < T(0) ? T(-kPi / 2) : T(kPi / 2);
    const T a = target[o.first];
    const T c = target[o.last];
    T first, last;
    if ((middle < T(0)) == o.even) {
        // first + last = beta.
        const T beta = T(F3DArcSinCos(T(o.sigma) * e[o.gimbalSine], e[o.gimbalCosine]));
        if (std::fabs(beta) < small) {
            first = last = -(a + c) / T(2);  // kept for compatibility: the sum is -(a + c)
        } else if (std::fabs(a + c) < small) {
            first = a + beta / T(2);
            last = c + beta / T(2);
        } else {
            const T half = (beta - (a + c)) / T(2);
            first = a + half;
            last = c + half;
        }
    } else {
        // first - last = beta.
        const T beta = T(F3DArcSinCos(e[o.gimbalSine], e[o.gimbalCosine]));
        if (std::fabs(beta) < small) {
            first = last = (a + c) / T(2);
        } else if (std::fabs(a - c) < small) {
            first = a + beta / T(2);
            last = c - beta / T(2);
        } else {
            const T half = (beta - (a - c)) / T(2);
            first = a + half;
            last = c - half;
        }
    }
    // The second solution turns both by a half turn (pi rounded to T).
    const T pi = T(kPi);
    const C3DVector3Tpl<T> sa = Arranged(o, Reduced(first), middle, Reduced(last));
    const C3DVector3Tpl<T> sb = Arranged(o, Reduced(first + pi), middle, Reduced(last + pi));
    const auto sum = [&](const C3DVector3Tpl<T>& v) {
        return Distance(target[o.first], v[o.first]) + Distance(target[o.last], v[o.last]);
    };
    return sum(sb) > sum(sa) ? sa : sb;
}

}  // namespace

template <typename T>
void MatToEulerUsingTarget(const C3DRotMatTpl<T>& m, C3DVector3Tpl<T>& angles,
                           tagE3DROTORDER order) {
    if (!math3d_detail::IsValidOrder(order)) return;
    const OrderLayout& o = kLayouts[order];
    const T* e = m.GetArray();
    const T s = T(o.sigma) * e[o.middleSine];
    const T threshold = GimbalThreshold<T>::k_Value;
    const C3DVector3Tpl<T> target(Wrapped(angles.x), Wrapped(angles.y), Wrapped(angles.z));
    // A NaN sine takes the regular path.
    const C3DVector3Tpl<T> chosen = s <= -threshold || s >= threshold
                                        ? GimbalSolution(e, o, s, target)
                                        : RegularSolution(e, o, s, target);
    angles.Set(Unwrapped(chosen.x, angles.x), Unwrapped(chosen.y, angles.y),
               Unwrapped(chosen.z, angles.z));
}

void F3DMatToEulerUsingTarget(const C3DRotMatTpl<double>& m, C3DVector3Tpl<double>& angles,
                              tagE3DROTORDER order) {
    MatToEulerUsingTarget(m, angles, order);
}
void F3DMatToEulerUsingTarget(const C3DRotMatTpl<float>& m, C3DVector3Tpl<float>& angles,
                              tagE3DROTORDER order) {
    MatToEulerUsingTarget(m, angles, order);
}

#define MATH_INSTANTIATE_EULER_TARGET(T) \
    template void MatToEulerUsingTarget(const C3DRotMatTpl<T>&, C3DVector3Tpl<T>&, tagE3DROTORDER);

MATH_INSTANTIATE_EULER_TARGET(float)
MATH_INSTANTIATE_EULER_TARGET(double)
