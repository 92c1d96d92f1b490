#include "math/rotations/euler_angles.h"

#include <algorithm>
#include <cmath>

#include "math/rotations/euler_target.h"

using math3d_detail::IsValidOrder;
using math3d_detail::kPi;
using math3d_detail::kTwoPi;

namespace {

// q3 q2 q1 expands, in every order, to
//   W = cx cy cz + k0 sx sy sz    X = sx cy cz + k1 cx sy sz
//   Y = cx sy cz + k2 sx cy sz    Z = cx cy sz + k3 sx sy cz
// (c, s: cosine and sine of the half angles); only the signs k change with the order.
constexpr double kQuatSigns[6][4] = {
    {+1, -1, +1, -1},  // XYZ
    {-1, +1, +1, -1},  // XZY
    {-1, -1, +1, +1},  // YXZ
    {+1, -1, -1, +1},  // YZX
    {+1, +1, -1, -1},  // ZXY
    {-1, +1, -1, +1},  // ZYX
};

constexpr char kOrderLetters[6][3] = {{'X', 'Y', 'Z'}, {'X', 'Z', 'Y'}, {'Y', 'X', 'Z'},
                                      {'Y', 'Z', 'X'}, {'Z', 'X', 'Y'}, {'Z', 'Y', 'X'}};

// x brought into [0, 2 pi]; values already there, 2 pi included, are kept.
double IntoTurn(double x) {
    if (x > kTwoPi) {
        x = std::fmod(x, kTwoPi);
    } else if (x < 0.0) {
        x = kTwoPi - std::fmod(-x, kTwoPi);
    }
    return std::min(std::max(x, 0.0), kTwoPi);
}

}  // namespace

void F3DEulerToMat(const C3DVector3Tpl<double>& angles, C3DRotMatTpl<double>& m,
                   tagE3DROTORDER order) {
    const double sa = std::sin(angles.x), ca = std::cos(angles.x);
    const double sb = std::sin(angles.y), cb = std::cos(angles.y);
    const double sc = std::sin(angles.z), cc = std::cos(angles.z);
    // Rx(a) Ry(b) Rz(c) and the other five products, expanded.
    switch (order) {
        case E3DROTORDER_XYZ:
            m.SetRow(0, cb * cc, cb * sc, -sb)
                .SetRow(1, sa * sb * cc - ca * sc, sa * sb * sc + ca * cc, sa * cb)
                .SetRow(2, ca * sb * cc + sa * sc, ca * sb * sc - sa * cc, ca * cb);
            return;
        case E3DROTORDER_XZY:
            m.SetRow(0, cb * cc, sc, -sb * cc)
                .SetRow(1, sa * sb - ca * cb * sc, ca * cc, ca * sb * sc + sa * cb)
                .SetRow(2, ca * sb + sa * cb * sc, -sa * cc, ca * cb - sa * sb * sc);
            return;
        case E3DROTORDER_YXZ:
            m.SetRow(0, cb * cc - sa * sb * sc, cb * sc + sa * sb * cc, -ca * sb)
                .SetRow(1, -ca * sc, ca * cc, sa)
                .SetRow(2, sb * cc + sa * cb * sc, sb * sc - sa * cb * cc, ca * cb);
            return;
        case E3DROTORDER_YZX:
            m.SetRow(0, cb * cc, ca * cb * sc + sa * sb, sa * cb * sc - ca * sb)
                .SetRow(1, -sc, ca * cc, sa * cc)
                .SetRow(2, sb * cc, ca * sb * sc - sa * cb, ca * cb + sa * sb * sc);
            return;
        case E3DROTORDER_ZXY:
            m.SetRow(0, cb * cc + sa * sb * sc, ca * sc, sa * cb * sc - sb * cc)
                .SetRow(1, sa * sb * cc - cb * sc, ca * cc, sa * cb * cc + sb * sc)
                .SetRow(2, ca * sb, -sa, ca * cb);
            return;
        case E3DROTORDER_ZYX:
            m.SetRow(0, cb * cc, ca * sc + sa * sb * cc, sa * sc - ca * sb * cc)
                .SetRow(1, -cb * sc, ca * cc - sa * sb * sc, sa * cc + ca * sb * sc)
                .SetRow(2, sb, -sa * cb, ca * cb);
            return;
    }
}

void F3DEulerToMat(const C3DVector3Tpl<float>& angles, C3DRotMatTpl<float>& m,
                   tagE3DROTORDER order) {
    if (!IsValidOrder(order)) return;
    C3DRotMatTpl<double> wide(C3DInitRequest_DoNotInitialize{});
    F3DEulerToMat(math3d_detail::Widened(angles), wide, order);
    for (int k = 0; k < 9; ++k) m.GetArray()[k] = float(wide.GetArray()[k]);
}

void F3DEulerToQuat(const C3DVector3Tpl<double>& angles, C3DQuatTpl<double>& q,
                    tagE3DROTORDER order) {
    const int mask =
        (angles.x != 0.0 ? 1 : 0) | (angles.y != 0.0 ? 2 : 0) | (angles.z != 0.0 ? 4 : 0);
    if (mask == 0) {
        q.SetIdentity();
        return;
    }
    if (mask == 1 || mask == 2 || mask == 4) {
        const int axis = mask >> 1;
        const double half = angles[axis] * 0.5;
        const C3DVector3Tpl<double> v(axis, std::sin(half));
        q.Set(std::cos(half), v.x, v.y, v.z);
        return;
    }
    if (IsValidOrder(order)) {
        const double sx = std::sin(angles.x * 0.5), cx = std::cos(angles.x * 0.5);
        const double sy = std::sin(angles.y * 0.5), cy = std::cos(angles.y * 0.5);
        const double sz = std::sin(angles.z * 0.5), cz = std::cos(angles.z * 0.5);
        const double* k = kQuatSigns[order];
        q.Set(cx * cy * cz + k[0] * sx * sy * sz, sx * cy * cz + k[1] * cx * sy * sz,
              cx * sy * cz + k[2] * sx * cy * sz, cx * cy * sz + k[3] * sx * sy * cz);
    }
    q.Normalize();
}

void F3DEulerToQuat(const C3DVector3Tpl<float>& angles, C3DQuatTpl<float>& q,
                    tagE3DROTORDER order) {
    F3DEulerToQuatf(angles, q, order);
}
void F3DEulerToQuatf(const C3DVector3Tpl<float>& angles, C3DQuatTpl<float>& q,
                     tagE3DROTORDER order) {
    C3DQuatTpl<double> wide;
    F3DEulerToQuat(math3d_detail::Widened(angles), wide, order);
    q = math3d_detail::Narrowed(wide);
}

void F3DMatToEuler(const C3DRotMatTpl<double>& m, C3DVector3Tpl<double>& angles,
                   tagE3DROTORDER order) {
    angles.SetNull();
    MatToEulerUsingTarget(m, angles, order);
}
void F3DMatToEuler(const C3DRotMatTpl<float>& m, C3DVector3Tpl<float>& angles,
                   tagE3DROTORDER order) {
    angles.SetNull();
    MatToEulerUsingTarget(m, angles, order);
}

void F3DQuatToEuler(const C3DQuatTpl<double>& q, C3DVector3Tpl<double>& angles,
                    tagE3DROTORDER order) {
    C3DRotMatTpl<double> m(C3DInitRequest_DoNotInitialize{});
    QuatToMat(q, m);
    F3DMatToEuler(m, angles, order);
}
void F3DQuatToEuler(const C3DQuatTpl<float>& q, C3DVector3Tpl<float>& angles,
                    tagE3DROTORDER order) {
    C3DRotMatTpl<float> m(C3DInitRequest_DoNotInitialize{});
    QuatToMat(q, m);
    F3DMatToEuler(m, angles, order);
}
void F3DQuatfToEuler(const C3DQuatTpl<float>& q, C3DVector3Tpl<float>& angles,
                     tagE3DROTORDER order) {
    F3DQuatToEuler(q, angles, order);
}

double F3DGetClosestAngle(double a, double b1, double b2) {
    a = IntoTurn(a);
    b1 = IntoTurn(b1);
    b2 = IntoTurn(b2);
    if (b1 >= b2) return std::fabs(a - b1) > std::fabs(a - b2) ? b2 : b1;
    // The middle of the arc from b2 up through 2 pi to b1.
    const double middle = IntoTurn(b2 + (kTwoPi - b2 + b1) * 0.5);
    if (a <= b2) return a > middle || (a > 0.0 && middle > b2) ? b1 : b2;
    if (middle > a) return b2;
    return a >= kTwoPi || middle >= b2 ? b1 : b2;
}

double F3DGetUnboundedAngle(double a, double ref) {
    double turns = std::trunc(ref / kTwoPi);
    const double rest = std::fmod(ref, kTwoPi);
    if (rest > kPi) {
        turns += 1.0;
    } else if (rest < -kPi) {
        turns -= 1.0;
    }
    return a + turns * kTwoPi;
}

void F3DBoundAnglesInMatrixInMinus2PITo2PI(C3DMatrixMN& m, int first, int last) {
    if (m.GetColCount() < 1) return;
    const int end = m.GetRowCount() - 1;
    if (first < 0) first = 0;
    if (last < 0 || last > end) last = end;
    for (int r = first; r <= last; ++r) m.Set(r, 0, std::fmod(m.Get(r, 0), kTwoPi));
}

void buildorderstring(tagE3DROTORDER order, int useX, int useY, int useZ, char* out) {
    if (out == nullptr) return;
    const int use[3] = {useX, useY, useZ};
    int n = 0;
    if (IsValidOrder(order)) {
        for (const char letter : kOrderLetters[order])
            if (use[letter - 'X'] != 0) out[n++] = letter;
    }
    while (n < 3) out[n++] = ' ';
}

int checkCanAdd(const char* a, const char* b) {
    if (a == nullptr || b == nullptr || a[0] == ' ' || b[0] == ' ') return 1;
    int last = 2;
    while (a[last] == ' ') --last;
    // a backwards against b forwards.
    for (int k = 0; k <= last; ++k) {
        if (b[k] == ' ') return 1;
        if (a[last - k] != b[k]) return 0;
    }
    return 1;
}
