#pragma once
// C3DRotMatTpl<T>: the rotation matrix of every rotation conversion, for float and double.
//
// The same nine values as C3DMatrix33Tpl with rotation semantics: identity by default, the
// transpose as inverse, elementary rotations about the coordinate axes. It adds no fields. The
// members that write the matrix return the rotation matrix itself; products take rotation
// matrices, so that a product of rotations stays one.
#include "math/matrices/matrix33.h"
#include "math/rotations/rotation_order.h"

template <typename T>
class MATH_API C3DRotMatTpl : public C3DMatrix33Tpl<T> {
    using Base = C3DMatrix33Tpl<T>;

public:
    // The identity.
    C3DRotMatTpl() : Base(C3DInitRequest_DoNotInitialize{}) { Base::SetIdentity(); }
    // Leaves the values unwritten.
    explicit C3DRotMatTpl(const C3DInitRequest_DoNotInitialize& request) : Base(request) {}
    C3DRotMatTpl(T m00, T m01, T m02, T m10, T m11, T m12, T m20, T m21, T m22)
        : Base(m00, m01, m02, m10, m11, m12, m20, m21, m22) {}
    // a, b, c become the rows when asRows != 0, the columns when asRows == 0.
    C3DRotMatTpl(const C3DVector3Tpl<T>& a, const C3DVector3Tpl<T>& b, const C3DVector3Tpl<T>& c,
                 int asRows)
        : Base(a, b, c, asRows) {}

    // The rotation by angle radians about a coordinate axis, right-handed for row vectors on
    // the left (about Z by a quarter turn, (1, 0, 0) goes to (0, 1, 0)). Any other axis value
    // gives the identity.
    C3DRotMatTpl& Set(tagE3DAXISTYPE axis, T angle);

    // --- the 3x3 members, returning the rotation matrix --------------------------------------
    C3DRotMatTpl& Set(int row, int col, T value) {
        Base::Set(row, col, value);
        return *this;
    }
    C3DRotMatTpl& Set(T m00, T m01, T m02, T m10, T m11, T m12, T m20, T m21, T m22) {
        Base::Set(m00, m01, m02, m10, m11, m12, m20, m21, m22);
        return *this;
    }
    C3DRotMatTpl& Set(const T (*values)[3]) {
        Base::Set(values);
        return *this;
    }
    C3DRotMatTpl& Set(const Base& m) {
        Base::Set(m);
        return *this;
    }
    C3DRotMatTpl& SetRow(int i, T a, T b, T c) {
        Base::SetRow(i, a, b, c);
        return *this;
    }
    C3DRotMatTpl& SetRow(int i, const C3DVector3Tpl<T>& v) {
        Base::SetRow(i, v);
        return *this;
    }
    C3DRotMatTpl& SetCol(int j, T a, T b, T c) {
        Base::SetCol(j, a, b, c);
        return *this;
    }
    C3DRotMatTpl& SetCol(int j, const C3DVector3Tpl<T>& v) {
        Base::SetCol(j, v);
        return *this;
    }
    C3DRotMatTpl& SetNull() {
        Base::SetNull();
        return *this;
    }
    C3DRotMatTpl& SetIdentity() {
        Base::SetIdentity();
        return *this;
    }
    C3DRotMatTpl& Negate() {
        Base::Negate();
        return *this;
    }
    // this = a * b
    C3DRotMatTpl& Mul(const C3DRotMatTpl& a, const C3DRotMatTpl& b) {
        Base::Mul(a, b);
        return *this;
    }
    // this = this * m
    C3DRotMatTpl& Mul(const C3DRotMatTpl& m) {
        Base::Mul(m);
        return *this;
    }
    // this = transpose(a) * b
    C3DRotMatTpl& MulTransByReg(const C3DRotMatTpl& a, const C3DRotMatTpl& b) {
        Base::MulTransByReg(a, b);
        return *this;
    }
    // this = a * transpose(b)
    C3DRotMatTpl& MulRegByTrans(const C3DRotMatTpl& a, const C3DRotMatTpl& b) {
        Base::MulRegByTrans(a, b);
        return *this;
    }
    // The inverse of an orthonormal matrix: the transpose, with no test.
    C3DRotMatTpl& Invert() {
        Base::Transpose();
        return *this;
    }
    C3DRotMatTpl& Invert(const C3DRotMatTpl& m) {
        Base::Transpose(m);
        return *this;
    }
};

using C3DRotMatf = C3DRotMatTpl<float>;
using C3DRotMatd = C3DRotMatTpl<double>;

// --- the rotation-matrix products of C3DVector3Tpl, declared with it ---------------------------

template <typename T>
inline C3DVector3Tpl<T>& C3DVector3Tpl<T>::Mul(const C3DVector3Tpl& v, const C3DRotMatTpl<T>& m) {
    return Mul(v, static_cast<const C3DMatrix33Tpl<T>&>(m));
}
template <typename T>
inline C3DVector3Tpl<T>& C3DVector3Tpl<T>::Mul(const C3DRotMatTpl<T>& m, const C3DVector3Tpl& v) {
    return Mul(static_cast<const C3DMatrix33Tpl<T>&>(m), v);
}
