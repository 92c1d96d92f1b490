// Rotation classes: C3DRotation converting lazily between its cached representations, a
// composition that keeps animated Euler angles continuous, and C3DRotation3Tpl keeping a user's
// Euler angles untouched until another representation is needed.
#include <iomanip>
#include <iostream>

#include "demo_sections.h"
#include "math/math3d.h"

void DemoRotationClass() {
    std::cout << "\n-- Rotation class --\n";
    using V = C3DVector3Tpl<double>;
    const std::ios_base::fmtflags flags = std::cout.flags();
    const std::streamsize precision = std::cout.precision();
    std::cout << std::fixed << std::setprecision(4);

    // Flags: bits 0-1 the primary representation (2 = Euler angles), 4 quaternion stale,
    // 8 matrix stale, 16 angles stale, 32 identity.
    C3DRotation r;
    std::cout << "Identity: flags " << int(r.GetFlags()) << "\n";
    r.Set(V(0.3, -0.2, 1.2), E3DROTORDER_XYZ);
    std::cout << "Euler XYZ (0.3, -0.2, 1.2) set: flags " << int(r.GetFlags()) << "\n";
    C3DQuatTpl<double> q;
    r.GetQuat(q);
    std::cout << "Quaternion read " << q << ": flags " << int(r.GetFlags()) << "\n";
    C3DRotMatTpl<double> m;
    r.GetMatrix(m);
    std::cout << "Matrix read: flags " << int(r.GetFlags()) << "\n" << m << "\n";

    // A spin about X in steps of 0.4 rad from X = 2.8: the continuous product grows past pi,
    // the plain product's angles are re-extracted nearest to zero and jump.
    C3DRotation continuous, plain, step;
    continuous.Set(2.8, 0.1, 0.2, E3DROTORDER_XYZ);
    plain.Set(continuous, 0);
    step.Set(E3DAXIS_X, 0.4);
    for (int frame = 1; frame <= 3; ++frame) {
        continuous.MulAndUpdateEulerAngles(continuous, step, 1);
        plain.Mul(plain, step);
        V a, b;
        continuous.GetXYZAngles(a, E3DROTORDER_XYZ);
        plain.GetXYZAngles(b, E3DROTORDER_XYZ);
        std::cout << "  frame " << frame << ": continuous " << a << "  |  plain " << b << "\n";
    }

    // The multi-representation rotation keeps what the user typed, 7 rad included.
    C3DRotation3Tpl<double> user(0.1, 7.0, 0.0, E3DROTORDER_ZYX);
    V angles;
    user.GetXYZAngles(angles);
    std::cout << "User Euler ZYX kept as " << angles << "; in XYZ: ";
    user.GetXYZAngles(angles, E3DROTORDER_XYZ);
    std::cout << angles << "\n";
    user.Mul(C3DRotation3Tpl<double>(E3DAXIS_Z, 0.5));
    user.GetXYZAngles(angles, E3DROTORDER_ZYX);
    std::cout << "After a product it holds a quaternion (representation "
              << int(user.GetRepresentation()) << "), read in ZYX as " << angles << "\n";
    std::cout.flags(flags);
    std::cout.precision(precision);
}
