#include "math/matrices/transformation_matrix.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "math/rotations/euler_angles.h"
#include "math/rotations/quaternion.h"
#include "math/rotations/rotation.h"
#include "math/rotations/rotation3.h"

namespace {

using M33 = C3DMatrix33Tpl<double>;

constexpr double kPi = 3.141592653589793;

// A scale of magnitude below 1e-12 is not stored as it is: +1e-6 (the single-precision value)
// stands for a non-negative one, -1e-12 for a negative one.
template <typename T>
T StoredScale(T s) {
    if (!(std::fabs(s) < T(1e-12))) return s;
    return s >= T(0) ? T(9.999999974752427e-07) : T(-1e-12);
}

// --- singular value decomposition of a 3x3 matrix (Golub-Kahan-Reinsch) --------------------------
//
// a = u * diag(d) * transpose(v) with u, v orthogonal and d >= 0, unsorted. Householder
// reflections bring a to upper bidiagonal form (diagonal d, superdiagonal f[1], f[2]); implicitly
// shifted QR steps, made of Givens rotations, then drive the superdiagonal to zero. Every
// transformation is accumulated into u (from the left) or v (from the right).

// |a| sqrt(1 + (b / a)^2) with a the larger magnitude: the hypotenuse without overflow. Which
// one is larger is decided without a branch, as it changes from call to call.
double Hypot(double a, double b) {
    const double large = std::max(std::fabs(a), std::fabs(b));
    const double small = std::min(std::fabs(a), std::fabs(b));
    if (large == 0) return 0;
    const double ratio = small / large;
    return large * math3d_detail::Sqrt(1 + ratio * ratio);
}

// The reflection I - tau x' x'^T that takes the n values x onto alpha e_0 with
// alpha = -sign(x_0) |x|, x' being x - alpha e_0; computed on x scaled by the sum of its
// magnitudes, which leaves the reflection as it is and keeps the squares finite. False when
// x already lies on e_0: no reflection is needed.
struct Reflection {
    double v[3];
    double tau;
    double alpha;
};
bool MakeReflection(const double* x, int n, int stride, Reflection& h) {
    double tail = 0;
    for (int i = 1; i < n; ++i) tail += std::fabs(x[i * stride]);
    if (tail == 0) return false;
    const double scale = tail + std::fabs(x[0]);
    double squares = 0;
    for (int i = 0; i < n; ++i) {
        h.v[i] = x[i * stride] / scale;
        squares += h.v[i] * h.v[i];
    }
    const double head = h.v[0];
    const double alpha = head >= 0 ? -math3d_detail::Sqrt(squares) : math3d_detail::Sqrt(squares);
    h.v[0] = head - alpha;
    h.tau = 1 / (alpha * (alpha - head));
    h.alpha = alpha * scale;
    return true;
}
// y := H y for the n values y (with the stride), H = I - tau v v^T.
void Reflect(const Reflection& h, double* y, int n, int stride) {
    double dot = 0;
    for (int i = 0; i < n; ++i) dot += h.v[i] * y[i * stride];
    const double k = h.tau * dot;
    for (int i = 0; i < n; ++i) y[i * stride] -= k * h.v[i];
}
// Columns i and j of m := (c m_i + s m_j, -s m_i + c m_j).
void Rotate(double (&m)[3][3], int i, int j, double c, double s) {
    for (int r = 0; r < 3; ++r) {
        const double a = m[r][i], b = m[r][j];
        m[r][i] = c * a + s * b;
        m[r][j] = c * b - s * a;
    }
}

struct Svd {
    double u[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    double v[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    double d[3];              // the diagonal, at the end the singular values
    double f[3] = {0, 0, 0};  // f[i] = bidiagonal(i - 1, i); f[0] stays 0
};

void Bidiagonalize(double (&b)[3][3], Svd& svd) {
    Reflection h;
    for (int k = 0; k < 3; ++k) {
        // Column k below the diagonal, from the left.
        if (MakeReflection(&b[k][k], 3 - k, 3, h)) {
            for (int j = k + 1; j < 3; ++j) Reflect(h, &b[k][j], 3 - k, 3);
            for (int r = 0; r < 3; ++r) Reflect(h, &svd.u[r][k], 3 - k, 1);
            b[k][k] = h.alpha;
        }
        svd.d[k] = b[k][k];
        if (k == 2) break;
        // Row k right of the superdiagonal, from the right.
        if (MakeReflection(&b[k][k + 1], 2 - k, 1, h)) {
            for (int r = k + 1; r < 3; ++r) Reflect(h, &b[r][k + 1], 2 - k, 1);
            for (int r = 0; r < 3; ++r) Reflect(h, &svd.v[r][k + 1], 2 - k, 1);
            b[k][k + 1] = h.alpha;
        }
        svd.f[k + 1] = b[k][k + 1];
    }
}

// d[l - 1] is negligible: rotations of row l - 1 against rows l..k carry f[l] away into the
// diagonal, so that the bidiagonal splits before l.
void CancelSuperdiagonal(Svd& svd, int l, int k, double tol) {
    double g = svd.f[l];
    svd.f[l] = 0;
    for (int i = l; i <= k && std::fabs(g) > tol; ++i) {
        // g sits at (l - 1, i); rotating rows i and l - 1 moves it onto d[i].
        const double r = Hypot(g, svd.d[i]);
        const double c = svd.d[i] / r, s = g / r;
        svd.d[i] = r;
        if (i < k) {
            g = -s * svd.f[i + 1];
            svd.f[i + 1] *= c;
        }
        Rotate(svd.u, i, l - 1, c, s);
    }
}

// One implicitly shifted QR step on the bidiagonal block l..k (l < k): the shift is the
// eigenvalue of the trailing 2x2 of B^T B nearer to its last diagonal element; the bulge made by
// the first rotation is chased down by alternating right and left rotations.
void QrStep(Svd& svd, int l, int k) {
    double(&d)[3] = svd.d;
    double(&f)[3] = svd.f;
    const double a = d[k - 1] * d[k - 1] + (k - 1 > l ? f[k - 1] * f[k - 1] : 0);
    const double b = d[k - 1] * f[k];
    const double c = d[k] * d[k] + f[k] * f[k];
    const double half = 0.5 * (a - c);
    const double denominator = half + std::copysign(Hypot(half, b), half);
    const double shift = denominator == 0 ? c : c - b * b / denominator;

    double x = d[l] * d[l] - shift, y = d[l] * f[l + 1];
    for (int i = l; i < k; ++i) {
        // Columns i and i + 1, zeroing y against x: (c1, s1) = (x, y) / r.
        const double r = Hypot(x, y);
        const double c1 = r == 0 ? 1 : x / r, s1 = r == 0 ? 0 : y / r;
        if (i > l) f[i] = r;
        // They leave (x d_i + y f_i+1, y d_i+1) / r in column i of rows i and i + 1, the bulge
        // below the diagonal. The rotation of rows i and i + 1 that zeroes it depends only on
        // the numerators, so both hypotenuses are computed side by side.
        const double nx = r == 0 ? d[i] : x * d[i] + y * f[i + 1], ny = y * d[i + 1];
        const double h = Hypot(nx, ny);
        const double c2 = h == 0 ? 1 : nx / h, s2 = h == 0 ? 0 : ny / h;
        const double fi = c1 * f[i + 1] - s1 * d[i], di = c1 * d[i + 1];
        d[i] = r == 0 ? h : h / r;
        x = c2 * fi + s2 * di;
        d[i + 1] = c2 * di - s2 * fi;
        if (i + 1 < k) {
            y = s2 * f[i + 2];
            f[i + 2] *= c2;
        }
        Rotate(svd.v, i, i + 1, c1, s1);
        Rotate(svd.u, i, i + 1, c2, s2);
    }
    f[k] = x;
}

void Diagonalize(Svd& svd) {
    double norm = 0;
    for (int i = 0; i < 3; ++i) norm = std::max(norm, std::fabs(svd.d[i]) + std::fabs(svd.f[i]));
    const double tol = std::numeric_limits<double>::epsilon() * norm;
    constexpr int kMaxSteps = 30;  // per singular value; a few suffice, NaN never converges
    for (int k = 2; k >= 0; --k) {
        for (int step = 0; step < kMaxSteps; ++step) {
            // The start l of the unreduced block that ends at k.
            int l = k;
            for (; l > 0; --l) {
                if (std::fabs(svd.f[l]) <= tol) break;
                if (std::fabs(svd.d[l - 1]) <= tol) {
                    CancelSuperdiagonal(svd, l, k, tol);
                    break;
                }
            }
            if (l == k) break;
            QrStep(svd, l, k);
        }
        if (svd.d[k] < 0) {
            svd.d[k] = -svd.d[k];
            for (double(&row)[3] : svd.v) row[k] = -row[k];
        }
    }
}

// a = p * diag(s) * q with p, q orthogonal and s >= 0.
void ComputeSvd(const double (&a)[3][3], M33& p, double (&s)[3], M33& q) {
    double b[3][3];
    std::copy(&a[0][0], &a[0][0] + 9, &b[0][0]);
    Svd svd;
    Bidiagonalize(b, svd);
    Diagonalize(svd);
    p.Set(svd.u);
    q.Set(svd.v).Transpose();
    std::copy(svd.d, svd.d + 3, s);
}

// Takes half turns out of p: with (x, y, z) the XYZ Euler angles of p nearest to (0, 0, 0), as long
// as the angle about Z, then Y, then X is within eps of +-pi, that angle becomes 0 and the scales
// of the two other axes change sign; p is then rebuilt from the angles. Each such step writes
// p = p' * H with H the half turn about that axis, whose diagonal of two -1 moves onto s.
void RemoveHalfTurns(C3DRotMatTpl<double>& p, double (&s)[3], double eps) {
    C3DVector3Tpl<double> angles;
    F3DMatToEuler(p, angles, E3DROTORDER_XYZ);
    int axis = 2;
    for (; axis >= 0 && std::fabs(std::fabs(angles[axis]) - kPi) < eps; --axis) {
        angles[axis] = 0;
        for (int i = 0; i < 3; ++i)
            if (i != axis) s[i] = -s[i];
    }
    if (axis < 2) F3DEulerToMat(angles, p, E3DROTORDER_XYZ);
}

}  // namespace

// --- scaling and rotation ----------------------------------------------------------------------

template <typename T>
void C3DXfoMatTpl<T>::SignedRowLengths(T (&s)[3]) const {
    // Consistent bits mark the mirrored axes, inconsistent ones the others.
    const unsigned mirrored =
        ValidateSclSignBits() ? GetSclSignBits() : GetSclSignBits() ^ k_SclSignBits;
    for (int i = 0; i < 3; ++i) {
        const T* row = m_Values[i];
        const T length = std::max(math3d_detail::Sqrt(math3d_detail::Dot3(row, row)), T(1e-12));
        s[i] = (mirrored >> (i + 1)) & 1 ? -length : length;
    }
}

template <typename T>
void C3DXfoMatTpl<T>::GetScaling(V& s) const {
    T values[3];
    SignedRowLengths(values);
    s.Set(values[0], values[1], values[2]);
}

template <typename T>
void C3DXfoMatTpl<T>::GetRotation(C3DRotMatTpl<T>& r) const {
    T s[3];
    SignedRowLengths(s);
    for (int i = 0; i < 3; ++i)
        r.SetRow(i, m_Values[i][0] / s[i], m_Values[i][1] / s[i], m_Values[i][2] / s[i]);
}

template <typename T>
void C3DXfoMatTpl<T>::GetRotation(C3DRotation& r) const {
    C3DRotMatTpl<T> m(C3DInitRequest_DoNotInitialize{});
    GetRotation(m);
    C3DRotMatTpl<double> wide(C3DInitRequest_DoNotInitialize{});
    for (int k = 0; k < 9; ++k) wide.GetArray()[k] = m.GetArray()[k];
    r.Set(wide);
}

template <typename T>
void C3DXfoMatTpl<T>::GetRotation(C3DRotation3Tpl<T>& r) const {
    C3DRotMatTpl<T> m(C3DInitRequest_DoNotInitialize{});
    GetRotation(m);
    C3DQuatTpl<T> q;
    F3DMatToQuat(m, q);
    r.Set(q);
}

template <typename T>
void C3DXfoMatTpl<T>::GetScalingAndRotation(V& s, C3DRotation& r) const {
    GetScaling(s);
    GetRotation(r);
}

template <typename T>
void C3DXfoMatTpl<T>::GetScalingAndRotation(V& s, C3DRotation3Tpl<T>& r) const {
    GetScaling(s);
    GetRotation(r);
}

template <typename T>
C3DXfoMatTpl<T>& C3DXfoMatTpl<T>::SetScalingAndRotation(const V& s, const C3DRotMatTpl<T>& r) {
    SetSclSignBits(s);
    for (int i = 0; i < 3; ++i) {
        const T factor = StoredScale(s[i]);
        for (int j = 0; j < 3; ++j) m_Values[i][j] = factor * r.Get(i, j);
    }
    return RepairSclSignBits();
}

template <typename T>
C3DXfoMatTpl<T>& C3DXfoMatTpl<T>::SetScaling(const V& s) {
    C3DRotMatTpl<T> r(C3DInitRequest_DoNotInitialize{});
    GetRotation(r);
    return SetScalingAndRotation(s, r);
}

template <typename T>
C3DXfoMatTpl<T>& C3DXfoMatTpl<T>::SetRotation(const C3DRotMatTpl<T>& r) {
    V s;
    GetScaling(s);
    return SetScalingAndRotation(s, r);
}

template <typename T>
C3DXfoMatTpl<T>& C3DXfoMatTpl<T>::AddScaling(const V& s) {
    V scaling;
    GetScaling(scaling);
    return SetScaling(scaling.MulComp(s));
}

// --- parts and the affine form -----------------------------------------------------------------

template <typename T>
C3DXfoMatTpl<T>& C3DXfoMatTpl<T>::SetLinearPart(const T* linear, bool transpose) {
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            m_Values[i][j] = transpose ? linear[3 * j + i] : linear[3 * i + j];
    return RepairSclSignBits();
}

template <typename T>
C3DXfoMatTpl<T>& C3DXfoMatTpl<T>::SetAffine(const C3DMatrix33Tpl<T>& linear, const V& t,
                                            unsigned char bits) {
    Base::SetCol(3, 0, 0, 0, 1);
    SetTranslation(t);
    SetSclSignBits(bits);
    return SetLinearPart(linear.GetArray(), false);
}

template <typename T>
int C3DXfoMatTpl<T>::Invert(const C3DXfoMatTpl& m) {
    C3DMatrix33Tpl<T> inverse(3, 3, m);
    if (!inverse.Invert()) return 0;
    V t;
    m.GetTranslation(t);
    t.Mul(t, inverse).Negate();
    SetAffine(inverse, t, m.GetSclSignBits());
    return 1;
}

template <typename T>
C3DXfoMatTpl<T>& C3DXfoMatTpl<T>::Transpose(const C3DXfoMatTpl& m) {
    V t;
    m.GetTranslation(t);
    return SetAffine(C3DMatrix33Tpl<T>(3, 3, m).Transpose(), t, m.GetSclSignBits());
}

// --- affine decomposition ----------------------------------------------------------------------

template <typename T>
void C3DXfoMatTpl<T>::GetAffineDecomposition(C3DRotMatTpl<T>& rotation, C3DXfoMatTpl& rest) const {
    const double eps = C3DTolerance<T>::k_Accurate;
    // Everything is read before rest, which may be this matrix, is written.
    double block[3][3];
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) block[i][j] = m_Values[i][j];
    V translation;
    GetTranslation(translation);

    // block = p * diag(s) * q; p ends as the rotation, diag(s) * q as rest's linear part.
    C3DRotMatTpl<double> p(C3DInitRequest_DoNotInitialize{});
    M33 q(C3DInitRequest_DoNotInitialize{});
    double s[3];
    ComputeSvd(block, p, s, q);
    for (double& value : s)
        if (std::fabs(value) < eps) value = value < 0 ? -eps : eps;
    // Both factors proper: a sign moves from the factor onto the scale.
    const auto negateScale = [&s](int keep) {
        for (int i = 0; i < 3; ++i)
            if (i != keep) s[i] = -s[i];
    };
    if (p.GetDet() < 0) {
        negateScale(-1);
        p.Negate();
    }
    if (q.GetDet() < 0) {
        negateScale(-1);
        q.Negate();
    }
    // Equal magnitudes with two of them negative: diag(s) = diag(|s|) * R with R the half turn
    // about the positive axis, which moves into q. (The singular values computed here are not
    // negative, so the signs are all alike at this point and this never applies; the rule is kept
    // whole for factorisations that return signed values.)
    const bool sameMagnitude = std::fabs(std::fabs(s[0]) - std::fabs(s[1])) < eps &&
                               std::fabs(std::fabs(s[1]) - std::fabs(s[2])) < eps;
    const int negatives = (s[0] < 0) + (s[1] < 0) + (s[2] < 0);
    if (sameMagnitude && negatives == 2) {
        const int positive = s[0] >= 0 ? 0 : (s[1] >= 0 ? 1 : 2);
        negateScale(positive);
        C3DRotMatTpl<double> halfTurn;
        F3DEulerToMat(C3DVector3Tpl<double>(positive, kPi), halfTurn, E3DROTORDER_XYZ);
        q.Mul(halfTurn, q);
    }
    if (std::fabs(s[0] - s[1]) >= eps || std::fabs(s[1] - s[2]) >= eps) {
        RemoveHalfTurns(p, s, eps);
    } else {
        // A uniform scale commutes with p, which joins q: no rotation is split off.
        q.Mul(p, q);
        p.SetIdentity();
    }

    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) rotation.Set(i, j, T(p.Get(i, j)));
    C3DMatrix33Tpl<T> linear(C3DInitRequest_DoNotInitialize{});
    for (int k = 0; k < 9; ++k) linear.GetArray()[k] = T(q.GetArray()[k]);
    rest.SetAffine(linear, V(0, 0, 0), 0);
    rest.SetScaling(V(T(s[0]), T(s[1]), T(s[2])));
    rest.SetTranslation(translation);
}

template class C3DXfoMatTpl<float>;
template class C3DXfoMatTpl<double>;
// As in matrix44.cpp: a library copy of the vector's inline affine product.
template C3DVector3Tpl<float>& C3DVector3Tpl<float>::Mul(const C3DVector3Tpl<float>&,
                                                         const C3DXfoMatTpl<float>&);
template C3DVector3Tpl<double>& C3DVector3Tpl<double>::Mul(const C3DVector3Tpl<double>&,
                                                           const C3DXfoMatTpl<double>&);
