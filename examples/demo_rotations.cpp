// Rotations: a quaternion from Euler angles and back, halfway by slerp, and the Euler curves of a
// spinning object, extracted frame by frame next to the previous frame so that they stay
// continuous, beside the nearest-to-zero extraction that jumps at every half turn.
#include <iomanip>
#include <iostream>

#include "demo_sections.h"
#include "math/math3d.h"

void DemoRotations() {
    std::cout << "\n-- Rotations --\n";
    using V = C3DVector3Tpl<double>;
    using Q = C3DQuatTpl<double>;

    // Euler angles (about X, Y, Z, applied X first) to a quaternion, and back.
    const V euler(0.3, -0.2, 1.2);
    Q q;
    F3DEulerToQuat(euler, q, E3DROTORDER_XYZ);
    std::cout << "Quaternion of Euler XYZ " << euler << ": " << q << "\n";
    V back;
    F3DQuatToEuler(q, back, E3DROTORDER_XYZ);
    std::cout << "Back to Euler XYZ: " << back << "\n";
    std::cout << "Halfway from the identity by slerp: " << Q().Slerp(Q(), q, 0.5) << "\n";

    // Three turns about a tilted axis, sampled every 0.01 rad, printed every 2 rad.
    const std::ios_base::fmtflags flags = std::cout.flags();
    const std::streamsize precision = std::cout.precision();
    std::cout << std::fixed << std::setprecision(2);
    std::cout << "Spinning about (0.2, 0.3, 1): XYZ angles, continuous | nearest to zero\n";
    const V axis(0.2, 0.3, 1);
    V continuous(0, 0, 0);
    for (int frame = 0; frame <= 1900; ++frame) {
        Q spin;
        F3DAxisAngleToQuat(axis, 0.01 * frame, spin);
        C3DRotMatTpl<double> m;
        QuatToMat(spin, m);
        F3DMatToEulerUsingTarget(m, continuous, E3DROTORDER_XYZ);  // previous frame as target
        if (frame % 200 != 100) continue;
        V nearest;
        F3DMatToEuler(m, nearest, E3DROTORDER_XYZ);
        std::cout << "  " << std::setw(5) << 0.01 * frame << " rad:  " << continuous << "  |  "
                  << nearest << "\n";
    }
    std::cout.flags(flags);
    std::cout.precision(precision);
}
