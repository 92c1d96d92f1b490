#include "math/rotations/rotation.h"

#include <algorithm>
#include <cmath>

#include "math/foundations/dump.h"
#include "math/rotations/euler_angles.h"
#include "math/rotations/euler_target.h"

using math3d_detail::IsValidOrder;
using math3d_detail::kPi;

namespace {

// The degeneracy tolerance of every test of this class.
constexpr double kEps = 1e-12;

// The place (0, 1, 2) of the X, Y and Z rotations in each order's sequence.
constexpr int kPlace[6][3] = {
    {0, 1, 2},  // XYZ
    {0, 2, 1},  // XZY
    {1, 0, 2},  // YXZ
    {2, 0, 1},  // YZX
    {1, 2, 0},  // ZXY
    {2, 1, 0},  // ZYX
};

// Whether angles with these non-zero axes (bits X = 1, Y = 2, Z = 4) describe the same rotation in
// both orders: always for one axis, for two when both orders apply them in the same sequence,
// never for three.
bool SameRotationInBothOrders(int nonZero, tagE3DROTORDER from, tagE3DROTORDER to) {
    switch (nonZero) {
        case 0:
        case 1:
        case 2:
        case 4:
            return true;
        case 7:
            return false;
    }
    if (!IsValidOrder(from) || !IsValidOrder(to)) return false;
    const int i = nonZero == 6 ? 1 : 0;  // the two axes i < j
    const int j = nonZero == 3 ? 1 : 2;
    return (kPlace[from][i] < kPlace[from][j]) == (kPlace[to][i] < kPlace[to][j]);
}

// out[i] = in[i] m, or m in[i] for the inverse of a rotation m; copies for the identity.
void RotateVectors(const C3DRotMatTpl<double>& m, bool identity, bool inverse,
                   const C3DVector3Tpl<double>* in, int n, C3DVector3Tpl<double>* out) {
    for (int i = 0; i < n; ++i) {
        if (identity) {
            out[i] = in[i];
        } else if (inverse) {
            out[i].Mul(m, in[i]);
        } else {
            out[i].Mul(in[i], m);
        }
    }
}

double AngleOf(const C3DQuatTpl<double>& q) { return 2.0 * std::acos(q.GetW()); }
double Degrees(double angle) { return angle * 180.0 / kPi; }

}  // namespace

// --- setting ------------------------------------------------------------------------------------

C3DRotation& C3DRotation::SetIdentity() {
    if (HasFlag(k_Identity)) return *this;
    m_Flags = k_Identity | k_MatrixStale | k_AnglesStale;
    m_Quat.SetIdentity();
    m_Angle = 0.0;
    return *this;
}

C3DRotation& C3DRotation::Set(double x, double y, double z, tagE3DROTORDER order) {
    m_Angles.Set(x, y, z);
    m_Order = static_cast<unsigned char>(order);
    m_Flags = k_PrimaryAngles | k_QuatStale | k_MatrixStale;
    if (x == 0.0 && y == 0.0 && z == 0.0) m_Flags |= k_Identity;
    return *this;
}

C3DRotation& C3DRotation::Set(const R& m) {
    SetMatrixPrimary(m);
    return *this;
}

C3DRotation& C3DRotation::Set(const Q& q) {
    Q normalised = q;
    normalised.Normalize();
    SetQuatPrimary(normalised, AngleOf(normalised));
    return *this;
}

C3DRotation& C3DRotation::Set(tagE3DAXISTYPE axis, double angle) {
    if (angle == 0.0) return SetIdentity();
    m_Matrix.Set(axis, angle);
    m_Angle = angle;
    if (axis >= E3DAXIS_X && axis <= E3DAXIS_Z) {
        const double half = angle * 0.5;
        const V u(axis, std::sin(half));
        m_Quat.Set(std::cos(half), u.x, u.y, u.z);
        m_Angles = V(axis, angle);  // the same in every order
    }
    m_Flags = k_PrimaryQuat;
    return *this;
}

C3DRotation& C3DRotation::Set(const V& axis, double angle) {
    if (angle == 0.0) return SetIdentity();
    if (axis.x == 0.0 && axis.y == 0.0 && axis.z >= 0.0) return Set(E3DAXIS_Z, angle);
    if (axis.x == 0.0 && axis.z == 0.0 && axis.y >= 0.0) return Set(E3DAXIS_Y, angle);
    if (axis.y == 0.0 && axis.z == 0.0 && axis.x > 0.0) return Set(E3DAXIS_X, angle);
    Q q;
    F3DAxisAngleToQuat(axis, angle, q);
    SetQuatPrimary(q, angle);
    return *this;
}

int C3DRotation::Set(const V& from, const V& to, int& status) {
    status = 0;
    const double length = from.GetLength() * to.GetLength();
    if (length < kEps) {
        SetIdentity();
        return 0;
    }
    const double dot = from * to;
    double angle = std::acos(std::min(1.0, std::max(-1.0, dot / length)));
    V axis = GetCross(from, to);
    if (axis.GetLength() < kEps) {
        if (dot > 0.0) {
            SetIdentity();
            return 1;
        }
        // Opposite: a half turn about an axis orthogonal to from.
        status = 1;
        angle = kPi;
        axis.Set(0.0, -from.z, from.y);  // (1, 0, 0) x from
        if (axis.GetLength() < kEps) {
            Set(E3DAXIS_Y, kPi);
            return 1;
        }
    }
    const double factor = std::sin(angle * 0.5) / axis.GetLength();
    Q q(std::cos(angle * 0.5), axis.x * factor, axis.y * factor, axis.z * factor);
    q.Normalize();
    SetQuatPrimary(q, angle);
    return 1;
}

C3DRotation& C3DRotation::Set(tagE3DROTORDER order, int keepRotation) {
    if (HasFlag(k_Identity)) {
        m_Order = static_cast<unsigned char>(order);
        return *this;
    }
    if (order == m_Order) return *this;
    if (keepRotation != 0 && Primary() != k_PrimaryAngles) {
        m_Order = static_cast<unsigned char>(order);
        m_Flags |= k_AnglesStale;
        return *this;
    }
    if (HasFlag(k_AnglesStale)) UpdateXYZAngles();
    if (keepRotation != 0) {
        int nonZero = 0;
        for (int i = 0; i < 3; ++i) {
            if (std::fabs(m_Angles[i]) < kEps) m_Angles[i] = 0.0;
            if (m_Angles[i] != 0.0) nonZero |= 1 << i;
        }
        if (!SameRotationInBothOrders(nonZero, GetRotOrder(), order)) {
            R m;
            F3DEulerToMat(m_Angles, m, GetRotOrder());
            F3DMatToEuler(m, m_Angles, order);
        }
    }
    m_Order = static_cast<unsigned char>(order);
    m_Flags = k_PrimaryAngles | k_QuatStale | k_MatrixStale;
    return *this;
}

C3DRotation& C3DRotation::Set(const C3DRotation& r, int keepOrder) {
    if (&r == this) return *this;
    const tagE3DROTORDER previous = GetRotOrder();
    if (r.HasFlag(k_Identity)) {
        SetIdentity();
        if (keepOrder == 0) m_Order = r.m_Order;
        return *this;
    }
    if (!r.HasFlag(k_QuatStale)) m_Quat = r.m_Quat;
    if (!r.HasFlag(k_MatrixStale)) m_Matrix = r.m_Matrix;
    if (!r.HasFlag(k_AnglesStale)) m_Angles = r.m_Angles;
    m_Flags = r.m_Flags;
    m_Angle = r.m_Angle;
    m_Order = r.m_Order;
    if (keepOrder != 0 && previous != m_Order) Set(previous, 1);
    return *this;
}

int C3DRotation::AlignAxesToVct(tagE3DAXISTYPE a1, const V& p, tagE3DAXISTYPE a2, const V& q,
                                int& status) {
    status = 0;
    const auto valid = [](int axis) { return axis >= 0 && axis <= 2; };
    if (a1 == a2 || !valid(a1) || !valid(a2) || p.IsNull(kEps)) return 0;
    int k = (a1 + 1) % 3;  // the third axis
    if (k == a2) k = (a2 + 1) % 3;
    V r[3];
    // Row i from the two others, so that the frame is right-handed.
    const auto complete = [&r](int i) { r[i].SetCross(r[(i + 1) % 3], r[(i + 2) % 3]); };
    r[a1] = p;
    r[a2] = q;
    complete(k);
    if (r[k].IsNull(kEps)) {
        // q gives no direction beside p: p moved off its own line instead.
        status = 1;
        const bool offAxis2 = std::fabs(p[a1]) >= kEps || std::fabs(p[k]) >= kEps;
        r[a2] = p;
        r[a2][offAxis2 ? a2 : a1] += 1.0;
        complete(k);
    }
    r[a1].Normalize();
    r[k].Normalize();
    complete(a2);
    SetMatrixPrimary(R(r[0], r[1], r[2], 1));
    return 1;
}

int C3DRotation::AlignToAxis(tagE3DAXISTYPE axis, const V& v, int& status) {
    m_Flags &= static_cast<unsigned char>(~k_Identity);
    status = 0;
    const double length = v.GetLength();
    if (length <= kEps) return 0;
    // The columns i, j, k of the matrix are the unit vector a along v, c = e_i x a and c x a, so
    // that v M = (|v| on axis i).
    const int i = axis, j = (i + 1) % 3, k = (i + 2) % 3;
    V a;
    a.Div(v, length);
    V c = GetCross(V(i, 1.0), a);
    if (c.GetSquaredLength() < kEps) {
        status = 1;
        if (v[i] > 0.0) {
            SetIdentity();
        } else {
            Set(static_cast<tagE3DAXISTYPE>(j), kPi);
        }
        return 1;
    }
    c.Normalize();
    R m;
    m.SetCol(i, a).SetCol(j, GetCross(c, a)).SetCol(k, c);
    SetMatrixPrimary(m);
    return 1;
}

// --- reading ------------------------------------------------------------------------------------

void C3DRotation::UpdateQuat() {
    if (HasFlag(k_Identity)) m_Quat.SetIdentity();
    if (Primary() == k_PrimaryMatrix) {
        F3DMatToQuat(m_Matrix, m_Quat);
    } else if (Primary() == k_PrimaryAngles) {
        F3DEulerToQuat(m_Angles, m_Quat, GetRotOrder());
    }
    m_Angle = AngleOf(m_Quat);
    m_Flags &= static_cast<unsigned char>(~k_QuatStale);
}

void C3DRotation::UpdateMatrix() {
    if (HasFlag(k_Identity)) m_Matrix.SetIdentity();
    if (Primary() == k_PrimaryAngles) {
        F3DEulerToMat(m_Angles, m_Matrix, GetRotOrder());
    } else if (Primary() == k_PrimaryQuat) {
        F3DQuatToMat(m_Quat, m_Matrix);
    }
    m_Flags &= static_cast<unsigned char>(~k_MatrixStale);
}

void C3DRotation::UpdateXYZAngles() {
    m_Flags &= static_cast<unsigned char>(~k_AnglesStale);
    if (HasFlag(k_Identity)) {
        m_Angles.SetNull();
        return;
    }
    if (Primary() == k_PrimaryAngles) return;
    if (HasFlag(k_MatrixStale)) {
        F3DQuatToMat(m_Quat, m_Matrix);
        m_Flags &= static_cast<unsigned char>(~k_MatrixStale);
    }
    F3DMatToEuler(m_Matrix, m_Angles, GetRotOrder());
}

void C3DRotation::GetXYZAngles(V& angles, tagE3DROTORDER order) {
    if (HasFlag(k_Identity)) {
        angles.SetNull();
        return;
    }
    if (HasFlag(k_AnglesStale)) UpdateXYZAngles();
    if (order == m_Order) {
        angles = m_Angles;
        return;
    }
    R m;
    F3DEulerToMat(m_Angles, m, GetRotOrder());
    F3DMatToEuler(m, angles, order);
}

void C3DRotation::GetAxisAngle(V& axis, double& angle) {
    if (HasFlag(k_QuatStale)) UpdateQuat();
    angle = m_Angle;
    const double s = std::sin(angle * 0.5);
    if (std::fabs(s) < kEps) {
        axis.SetNull();
    } else {
        axis.Set(m_Quat.GetX() / s, m_Quat.GetY() / s, m_Quat.GetZ() / s);
    }
}

void C3DRotation::RotateVct(const V* in, int n, V* out) {
    if (HasFlag(k_MatrixStale)) UpdateMatrix();
    RotateVectors(m_Matrix, HasFlag(k_Identity), false, in, n, out);
}

void C3DRotation::InvRotateVct(const V* in, int n, V* out) {
    if (HasFlag(k_MatrixStale)) UpdateMatrix();
    RotateVectors(m_Matrix, HasFlag(k_Identity), true, in, n, out);
}

bool C3DRotation::IsExactlyIdentity() {
    if (HasFlag(k_Identity)) return true;
    bool identity;
    if (!HasFlag(k_AnglesStale)) {
        identity = m_Angles.IsExactlyNull();
    } else if (!HasFlag(k_QuatStale)) {
        identity = m_Quat.IsIdentity();
    } else {
        identity = m_Matrix == R();
    }
    if (identity) m_Flags |= k_Identity;
    return identity;
}

bool C3DRotation::IsAlmostIdentity(const double& eps) const {
    if (HasFlag(k_Identity)) return true;
    if (!HasFlag(k_AnglesStale)) return m_Angles.IsNull(eps);
    if (!HasFlag(k_QuatStale)) return m_Quat.IsIdentity(eps);
    return C3DMatrix33Tpl<double>().Sub(m_Matrix, R()).IsNull(eps);
}

// --- composition --------------------------------------------------------------------------------

void C3DRotation::SetQuatPrimary(const Q& q, double angle) {
    m_Quat = q;
    m_Angle = angle;
    m_Flags = k_PrimaryQuat | k_MatrixStale | k_AnglesStale;
}

void C3DRotation::SetMatrixPrimary(const R& m) {
    m_Matrix = m;
    m_Flags = k_PrimaryMatrix | k_QuatStale | k_AnglesStale;
}

void C3DRotation::SetProduct(C3DRotation& a, C3DRotation& b) {
    if (a.HasFlag(k_QuatStale)) a.UpdateQuat();
    if (b.HasFlag(k_QuatStale)) b.UpdateQuat();
    Q q(C3DInitRequest_DoNotInitialize{});
    q.Mul(b.m_Quat, a.m_Quat).Normalize();
    SetQuatPrimary(q, AngleOf(q));
}

void C3DRotation::SetAnglesNearest(V& target, tagE3DROTORDER order) {
    if (HasFlag(k_QuatStale)) UpdateQuat();
    F3DQuatToMat(m_Quat, m_Matrix);
    F3DMatToEulerUsingTarget(m_Matrix, target, order);
    m_Angles = target;
    m_Order = static_cast<unsigned char>(order);
    m_Flags = k_PrimaryAngles;
}

C3DRotation& C3DRotation::Mul(C3DRotation& a, C3DRotation& b) {
    const bool aIdentity = a.HasFlag(k_Identity), bIdentity = b.HasFlag(k_Identity);
    if (!aIdentity && !bIdentity) {
        SetProduct(a, b);
        return *this;
    }
    if (!aIdentity) {
        Set(a, 1);
    } else if (!bIdentity) {
        Set(b, 1);
    } else {
        SetIdentity();
    }
    if (HasFlag(k_QuatStale)) UpdateQuat();
    m_Flags = static_cast<unsigned char>((m_Flags & ~k_PrimaryMask) | k_PrimaryQuat | k_AnglesStale);
    return *this;
}

C3DRotation& C3DRotation::MulUsingEulerAnglesTarget(C3DRotation& a, C3DRotation& b, V& target,
                                                    tagE3DROTORDER order) {
    const bool aIdentity = a.HasFlag(k_Identity), bIdentity = b.HasFlag(k_Identity);
    if (!aIdentity && !bIdentity) {
        SetProduct(a, b);
    } else {
        Set(aIdentity ? b : a, 0);
    }
    SetAnglesNearest(target, order);
    return *this;
}

C3DRotation& C3DRotation::MulUsingEulerAnglesTarget(C3DRotation& a, C3DRotation& b,
                                                    C3DRotation& target) {
    const tagE3DROTORDER order = target.GetRotOrder();
    V angles;
    target.GetXYZAngles(angles, order);
    return MulUsingEulerAnglesTarget(a, b, angles, order);
}

C3DRotation& C3DRotation::MulAndUpdateEulerAngles(C3DRotation& a, C3DRotation& b,
                                                  unsigned int useFirst) {
    const bool first = useFirst == 1;
    const tagE3DROTORDER order = (first ? a : b).GetRotOrder();
    const bool aIdentity = a.HasFlag(k_Identity), bIdentity = b.HasFlag(k_Identity);
    if (!aIdentity && !bIdentity) {
        for (C3DRotation* r : {&a, &b}) {
            if (r->HasFlag(k_MatrixStale)) r->UpdateMatrix();
            if (r->HasFlag(k_AnglesStale)) r->UpdateXYZAngles();
            if (r->HasFlag(k_QuatStale)) r->UpdateQuat();
        }
        V target = (first ? a : b).m_Angles;
        SetProduct(a, b);
        SetAnglesNearest(target, order);
        return *this;
    }
    // One side is the identity: this becomes the other, whose angles are kept when they are the
    // chosen ones.
    Set(aIdentity ? b : a, 0);
    if (aIdentity != first) {
        if (HasFlag(k_AnglesStale)) UpdateXYZAngles();
        m_Flags = static_cast<unsigned char>((m_Flags & ~k_PrimaryMask) | k_PrimaryAngles);
    } else {
        V target(0, 0, 0);
        SetAnglesNearest(target, order);
    }
    return *this;
}

C3DRotation& C3DRotation::Invert(C3DRotation& r) {
    if (r.HasFlag(k_Identity)) return SetIdentity();
    if (r.HasFlag(k_QuatStale)) {
        if (!r.HasFlag(k_MatrixStale)) {
            if (r.m_Matrix == R()) return SetIdentity();
            SetMatrixPrimary(R(C3DInitRequest_DoNotInitialize{}).Invert(r.m_Matrix));
            return *this;
        }
        // The angles are primary.
        if (r.m_Angles.IsNull(kEps)) return SetIdentity();
        r.UpdateQuat();
    }
    if (r.m_Quat.IsIdentity()) return SetIdentity();
    SetQuatPrimary(Q().Conjugate(r.m_Quat), r.m_Angle);
    return *this;
}

C3DRotation& C3DRotation::Interpolate(C3DRotation& a, C3DRotation& b, double t) {
    if (a.HasFlag(k_Identity) && b.HasFlag(k_Identity)) return SetIdentity();
    if (a.HasFlag(k_QuatStale)) a.UpdateQuat();
    if (b.HasFlag(k_QuatStale)) b.UpdateQuat();
    Q q(C3DInitRequest_DoNotInitialize{});
    q.Slerp(a.m_Quat, b.m_Quat, t).Normalize();
    SetQuatPrimary(q, AngleOf(q));
    return *this;
}

// --- text ---------------------------------------------------------------------------------------

void C3DRotation::DumpMatrix(const char* title, std::ostream& os) {
    F3DDumpTitle(title, os);
    if (HasFlag(k_MatrixStale)) UpdateMatrix();
    os << "(Rotation Matrix representation)\n" << m_Matrix << '\n';
}

void C3DRotation::DumpXYZAngles(const char* title, std::ostream& os) {
    F3DDumpTitle(title, os);
    if (HasFlag(k_AnglesStale)) UpdateXYZAngles();
    os << "(XYZ Euler Angles representation)\n"
       << Degrees(m_Angles.x) << " deg," << Degrees(m_Angles.y) << " deg," << Degrees(m_Angles.z)
       << " deg\n";
}

void C3DRotation::DumpAxisAngle(const char* title, std::ostream& os) {
    F3DDumpTitle(title, os);
    V axis;
    double angle;
    GetAxisAngle(axis, angle);
    os << "(Axis-Angle representation)\n" << axis << ", " << Degrees(angle) << " degrees\n";
}

void C3DRotation::DumpQuat(const char* title, std::ostream& os) {
    F3DDumpTitle(title, os);
    if (HasFlag(k_QuatStale)) UpdateQuat();
    os << "(Quaternion representation)\n" << m_Quat << '\n';
}
