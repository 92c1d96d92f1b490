// Matrices: invert a 3x3 matrix, fit a line by least squares through the pseudo-inverse, and
// find the principal axes of a point cloud with the symmetric eigen solver.
#include <iostream>

#include "demo_sections.h"
#include "math/math3d.h"

void DemoMatrices() {
    std::cout << "\n-- Matrices --\n";
    using M = C3DMatrix33Tpl<double>;
    using V = C3DVector3Tpl<double>;

    // A rotation about z by 30 degrees followed by a scaling, and its inverse.
    C3DRotMatTpl<double> rotation;
    rotation.Set(E3DAXIS_Z, 3.141592653589793 / 6);
    M m;
    m.Mul(rotation, M(2, 0, 0, 0, 3, 0, 0, 0, 4));
    M inverse = m;
    if (inverse.Invert()) {
        inverse.Dump("Inverse of rotation * diag(2, 3, 4)", std::cout);
        std::cout << "M * inverse is the identity: " << M().Mul(m, inverse).IsIdentity(1e-12)
                  << "\n";
    }
    M singular(1, 2, 3, 2, 4, 6, 0, 1, 0);  // second row twice the first
    std::cout << "Invert of a singular matrix returns " << singular.Invert()
              << "; the matrix is left as it was\n";

    // Least squares: the line y = a + b x nearest to six points, as (a, b) = A+ y.
    const double xs[] = {0, 1, 2, 3, 4, 5};
    const double ys[] = {1.1, 2.9, 5.2, 7.1, 8.8, 11.1};
    C3DMatrixMN a, pseudoInverse, y, coefficients;
    a.SetDimensions(6, 2);
    y.SetDimensions(6, 1);
    for (int i = 0; i < 6; ++i) {
        a.Set(i, 0, 1).Set(i, 1, xs[i]);
        y.Set(i, 0, ys[i]);
    }
    pseudoInverse.SetDimensions(2, 6);
    coefficients.SetDimensions(2, 1);
    if (pseudoInverse.GrevilleInverse(a)) {
        coefficients.Mul(pseudoInverse, y);
        std::cout << "Least-squares line: y = " << coefficients.Get(0, 0) << " + "
                  << coefficients.Get(1, 0) << " x\n";
    }

    // Principal axes: the eigenvectors of the covariance of points spread mostly along (1, 1, 0).
    const V points[] = {V(-4, -4, 0.2), V(-2, -2.5, -0.1), V(-1, -0.5, 0.3), V(0, 0.4, -0.2),
                        V(1, 1.3, 0.1), V(2, 1.6, -0.3),   V(3, 3.2, 0.2),   V(4, 3.9, -0.1)};
    V mean;
    mean.SetMean(points, 8);
    M covariance;
    for (const V& p : points) {
        const V d = p - mean;
        covariance.Add(M(d.x * d, d.y * d, d.z * d, 1));
    }
    covariance.Div(8);
    M axes;
    V variances;
    if (covariance.GetEigenVectors(axes, variances)) {
        std::cout << "Variances along the principal axes: " << variances << "\n";
        axes.Dump("Principal axes (columns, largest variance first)", std::cout);
    }
}
