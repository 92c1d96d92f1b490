#pragma once
// C3DXfoMatTpl<T>: the affine transformation matrix, for float and double.
//
// The 4x4 storage of C3DMatrix44Tpl read as a 3x3 linear part (rows 0-2, columns 0-2), a
// translation (row 3, columns 0-2) and column 3 = (0, 0, 0, 1); it adds no fields. Bits 1, 2 and 3
// of the mask byte (mask 14) are the scale-sign bits of the X, Y and Z axes: a set bit marks a
// mirrored axis, so that a negative scaling can be read back from the matrix. The other bits of
// the byte are kept by every operation here.
//
// The bits are consistent when (4x4 determinant < 0) equals (an odd number of them is set). Every
// member of this class that writes the linear part or builds the matrix from others leaves them
// consistent (the inherited element and arithmetic members do not look at them); when they are
// not, an axis counts as mirrored exactly when its bit is clear, which gives the same scaling as
// flipping all three.
#include "math/matrices/matrix44.h"
#include "math/matrices/rotation_matrix.h"

template <typename T>
class MATH_API C3DXfoMatTpl : public C3DMatrix44Tpl<T> {
    using Base = C3DMatrix44Tpl<T>;
    using V = C3DVector3Tpl<T>;
    using Base::m_MaskInfo;
    using Base::m_Values;

public:
    // The scale-sign bits within the mask byte.
    static constexpr unsigned char k_SclSignBits = 14;

    // The identity, mask byte 0.
    C3DXfoMatTpl() : Base(C3DInitRequest_DoNotInitialize{}) {
        Base::SetMaskInfo(0);
        Base::SetIdentity();
    }
    // Leaves the values and the mask byte unwritten.
    explicit C3DXfoMatTpl(const C3DInitRequest_DoNotInitialize& request) : Base(request) {}

    // The 4x4 members not redefined below: element access, Set of sixteen values or of another
    // matrix (values and mask byte copied as they are), arithmetic, TransposeInverse.
    using Base::Mul;
    using Base::Set;
    using Base::SetCol;
    using Base::SetRow;

    // --- scale-sign bits ---------------------------------------------------------------------
    unsigned char GetSclSignBits() const { return m_MaskInfo & k_SclSignBits; }
    C3DXfoMatTpl& SetSclSignBits(unsigned char bits) {
        m_MaskInfo =
            static_cast<unsigned char>((m_MaskInfo & ~k_SclSignBits) | (bits & k_SclSignBits));
        return *this;
    }
    // The bit of each axis whose scale is negative (0 > s_i).
    C3DXfoMatTpl& SetSclSignBits(const V& s) {
        return SetSclSignBits(static_cast<unsigned char>(
            (T(0) > s.x ? 2 : 0) | (T(0) > s.y ? 4 : 0) | (T(0) > s.z ? 8 : 0)));
    }
    C3DXfoMatTpl& XORSclSignBits(unsigned char a, unsigned char b) {
        return SetSclSignBits(static_cast<unsigned char>(a ^ b));
    }
    C3DXfoMatTpl& ClearSclSignBits() { return SetSclSignBits(0); }
    int NegSclSignCount() const {
        const unsigned char bits = GetSclSignBits();
        return ((bits >> 1) & 1) + ((bits >> 2) & 1) + ((bits >> 3) & 1);
    }
    // Clears the bits and sets all three when the determinant is negative; returns them (0 or 14).
    unsigned char ComputeSignBits() {
        SetSclSignBits(Base::GetDet() < T(0) ? k_SclSignBits : 0);
        return GetSclSignBits();
    }
    // 1 when (determinant < 0) equals (the number of set bits is odd).
    int ValidateSclSignBits() const {
        return (Base::GetDet() < T(0)) == (NegSclSignCount() % 2 == 1) ? 1 : 0;
    }
    // Keeps consistent bits; flips all three of inconsistent ones. Every operation below that
    // writes the linear part ends with it.
    C3DXfoMatTpl& RepairSclSignBits() {
        return ValidateSclSignBits() ? *this : XORSclSignBits(GetSclSignBits(), k_SclSignBits);
    }

    // --- translation (row 3) -----------------------------------------------------------------
    void GetTranslation(V& t) const { t.Set(m_Values[3][0], m_Values[3][1], m_Values[3][2]); }
    C3DXfoMatTpl& SetTranslation(const V& t) {
        m_Values[3][0] = t.x;
        m_Values[3][1] = t.y;
        m_Values[3][2] = t.z;
        return *this;
    }
    C3DXfoMatTpl& AddTranslation(const V& t) {
        m_Values[3][0] += t.x;
        m_Values[3][1] += t.y;
        m_Values[3][2] += t.z;
        return *this;
    }

    // --- scaling and rotation of the linear part ---------------------------------------------
    // s_i = the length of row i, at least 1e-12, negated when axis i is mirrored.
    void GetScaling(V& s) const;
    // Row i = row i of the linear part / s_i, with s_i as GetScaling gives it. Not
    // re-orthogonalised: a sheared matrix gives a non-orthogonal result. The sign rule makes the
    // result proper (determinant >= 0) whatever the bits.
    void GetRotation(C3DRotMatTpl<T>& r) const;
    // The same rotation handed to the rotation classes: to C3DRotation as its matrix (widened to
    // double, the order of r kept), to C3DRotation3Tpl as its quaternion (F3DMatToQuat).
    void GetRotation(C3DRotation& r) const;
    void GetRotation(C3DRotation3Tpl<T>& r) const;
    // GetScaling and GetRotation.
    void GetScalingAndRotation(V& s, C3DRotation& r) const;
    void GetScalingAndRotation(V& s, C3DRotation3Tpl<T>& r) const;
    // Row i of the linear part = f_i * row i of r and the bits from the signs of s, where f_i is
    // s_i, except that |s_i| < 1e-12 gives 9.999999974752427e-07 (the single-precision 1e-6)
    // for s_i >= 0 and -1e-12 for s_i < 0. The translation and column 3 are kept.
    C3DXfoMatTpl& SetScalingAndRotation(const V& s, const C3DRotMatTpl<T>& r);
    // SetScalingAndRotation(s, GetRotation()): the rotation is kept.
    C3DXfoMatTpl& SetScaling(const V& s);
    // SetScalingAndRotation(GetScaling(), r): the scaling is kept.
    C3DXfoMatTpl& SetRotation(const C3DRotMatTpl<T>& r);
    // Compounds the scaling: SetScaling(GetScaling() * s, component by component), which is the
    // linear part multiplied on the left by diag(s).
    C3DXfoMatTpl& AddScaling(const V& s);
    // The linear part := rotation * rest, with rotation proper and orthonormal and rest an affine
    // matrix free of shear: its linear part is diag(S) * Q with Q proper and orthonormal, its
    // bits those of the signs of S, its translation this matrix's translation. From a singular
    // value decomposition of the linear part; singular values below the accurate epsilon (1e-6
    // float, 1e-12 double) are raised to it. rest may be this matrix.
    void GetAffineDecomposition(C3DRotMatTpl<T>& rotation, C3DXfoMatTpl& rest) const;

    // --- writing parts of the matrix (the bits are repaired afterwards) -----------------------
    // The linear part; the translation and column 3 are kept.
    C3DXfoMatTpl& Set(const C3DMatrix33Tpl<T>& m) { return SetLinearPart(m.GetArray(), false); }
    C3DXfoMatTpl& SetWithTranspose(const C3DMatrix33Tpl<T>& m) {
        return SetLinearPart(m.GetArray(), true);
    }
    C3DXfoMatTpl& Set(const T (*values)[3]) { return SetLinearPart(values[0], false); }
    // The sixteen values.
    C3DXfoMatTpl& Set(const T (*values)[4]) {
        Base::Set(values);
        return RepairSclSignBits();
    }
    C3DXfoMatTpl& SetRow(int i, T a, T b, T c, T d) {
        Base::SetRow(i, a, b, c, d);
        return RepairSclSignBits();
    }
    C3DXfoMatTpl& SetRow(int i, const C3DVector4Tpl<T>& v) { return SetRow(i, v.x, v.y, v.z, v.w); }
    C3DXfoMatTpl& SetCol(int j, T a, T b, T c, T d) {
        Base::SetCol(j, a, b, c, d);
        return RepairSclSignBits();
    }
    C3DXfoMatTpl& SetCol(int j, const C3DVector4Tpl<T>& v) { return SetCol(j, v.x, v.y, v.z, v.w); }

    // --- the affine form: column 3 is read as and written (0, 0, 0, 1) ------------------------
    // this = a * b, the bits the exclusive or of a's and b's, then repaired.
    C3DXfoMatTpl& Mul(const C3DXfoMatTpl& a, const C3DXfoMatTpl& b) {
        const unsigned char bits =
            static_cast<unsigned char>(a.GetSclSignBits() ^ b.GetSclSignBits());
        math3d_detail::Mul44<true>(a.GetArray(), b.GetArray(), Base::GetArray());
        return SetSclSignBits(bits).RepairSclSignBits();
    }
    // this = this * m
    C3DXfoMatTpl& Mul(const C3DXfoMatTpl& m) { return Mul(*this, m); }
    // this = inverse(m): the linear part inverted as a 3x3 matrix (the relative test of
    // C3DMatrix33Tpl::Invert), the translation -t * inverse; m's bits, repaired. Fails (0,
    // unchanged) when the linear part is singular.
    int Invert() { return Invert(*this); }
    int Invert(const C3DXfoMatTpl& m);
    // The linear part transposed; translation and bits of m kept (bits repaired).
    C3DXfoMatTpl& Transpose() { return Transpose(*this); }
    C3DXfoMatTpl& Transpose(const C3DXfoMatTpl& m);
    // The determinant of the linear part.
    T GetDet33() const { return C3DMatrix33Tpl<T>(3, 3, *this).GetDet(); }
    // The linear part and the translation, every |value| <= eps.
    bool IsNull(T eps = C3DTolerance<T>::k_Accurate) const {
        return F3DIsNullComponents(m_Values[0], 3, eps) &&
               F3DIsNullComponents(m_Values[1], 3, eps) &&
               F3DIsNullComponents(m_Values[2], 3, eps) && F3DIsNullComponents(m_Values[3], 3, eps);
    }
    // The linear part within eps of the identity and the translation within eps of 0 (strict).
    bool IsIdentity(T eps = C3DTolerance<T>::k_Accurate) const {
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 3; ++j)
                if (!(std::fabs(m_Values[i][j] - Base::k_Identity[i][j]) < eps)) return false;
        return true;
    }
    bool IsExactlyIdentity() const { return *this == C3DXfoMatTpl(); }
    // The linear part and the translation, exactly; neither column 3 nor the bits are compared.
    bool operator==(const C3DXfoMatTpl& m) const {
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 3; ++j)
                if (!(m_Values[i][j] == m.m_Values[i][j])) return false;
        return true;
    }
    bool operator!=(const C3DXfoMatTpl& m) const { return !(*this == m); }

private:
    // Writes nine values, transposed or not, into the linear part and repairs the bits.
    C3DXfoMatTpl& SetLinearPart(const T* linear, bool transpose);
    // The affine matrix of that linear part and translation, with those bits, repaired.
    C3DXfoMatTpl& SetAffine(const C3DMatrix33Tpl<T>& linear, const V& t, unsigned char bits);
    // The scale of each axis as GetScaling gives it.
    void SignedRowLengths(T (&s)[3]) const;
};

using C3DXfoMatf = C3DXfoMatTpl<float>;
using C3DXfoMatd = C3DXfoMatTpl<double>;

// The sixteen values within eps (strict), and equal sign bits.
template <typename T>
inline int AreAlmostEqual(const C3DXfoMatTpl<T>& a, const C3DXfoMatTpl<T>& b,
                          C3DScalarArg<T> eps = C3DTolerance<T>::k_Accurate) {
    return a.GetSclSignBits() == b.GetSclSignBits() &&
                   AreAlmostEqual(static_cast<const C3DMatrix44Tpl<T>&>(a),
                                  static_cast<const C3DMatrix44Tpl<T>&>(b), eps)
               ? 1
               : 0;
}

// --- the affine product of C3DVector3Tpl, declared with it -------------------------------------

template <typename T>
inline C3DVector3Tpl<T>& C3DVector3Tpl<T>::Mul(const C3DVector3Tpl& v, const C3DXfoMatTpl<T>& m) {
    const T* e = m.GetArray();
    T r[3] = {e[12], e[13], e[14]};
    for (int i = 0; i < 3; ++i) {
        const T c = v[i];
        if (c == T(0)) continue;
        for (int j = 0; j < 3; ++j) r[j] += c * e[4 * i + j];
    }
    return Set(r[0], r[1], r[2]);
}
