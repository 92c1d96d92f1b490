// Transformation matrices: split a mirrored, sheared affine matrix into a rotation and a
// shear-free rest, and watch the scale-sign bits remember which axis is mirrored.
#include <iostream>

#include "demo_sections.h"
#include "math/math3d.h"

void DemoAffineDecomposition() {
    std::cout << "\n-- Transformation matrices --\n";
    using X = C3DXfoMatTpl<double>;
    using R = C3DRotMatTpl<double>;
    using V = C3DVector3Tpl<double>;

    // An eighth of a turn about Z, then a scaling by (-2, 1, 1) (row vectors: the turn acts
    // first): mirrored, and sheared, since no scaling followed by a rotation gives it.
    R turn;
    turn.Set(E3DAXIS_Z, 3.141592653589793 / 4);
    X rotation, scaling, m;
    rotation.SetRotation(turn);
    scaling.SetScaling(V(-2, 1, 1));
    m.Mul(rotation, scaling).SetTranslation(V(1, 2, 3));
    m.Dump("Rotation by 45 degrees about Z, then scaling by (-2, 1, 1)", std::cout);
    std::cout << "Mirror bits " << int(m.GetSclSignBits()) << " (X), determinant " << m.GetDet33()
              << ", consistent: " << m.ValidateSclSignBits() << "\n";

    // rotation * rest is the linear part again; the rest is a scaling and a rotation only.
    R split;
    X rest;
    m.GetAffineDecomposition(split, rest);
    split.Dump("Rotation split off", std::cout);
    V s;
    rest.GetScaling(s);
    std::cout << "Scaling of the rest: " << s << "\n";
    rest.Dump("Rest (no shear, same translation)", std::cout);
    X product;
    product.Set(split).Mul(product, rest);
    using M44 = C3DMatrix44Tpl<double>;
    std::cout << "rotation * rest gives the matrix back: "
              << AreAlmostEqual(static_cast<const M44&>(product), m, 1e-12) << "\n";

    // The bits decide how a mirror reads back: on X as it was set, or on all three axes (a
    // half turn about X and a negative scaling) once recomputed from the determinant alone.
    X mirror;
    mirror.SetScaling(V(-1, 1, 1));
    R r;
    mirror.GetScaling(s);
    std::cout << "Mirror in X reads back as scaling " << s;
    mirror.ComputeSignBits();
    mirror.GetScaling(s);
    mirror.GetRotation(r);
    std::cout << "; with recomputed bits as " << s << " and rotation\n" << r << "\n";
}
