#include "math/rotations/euler_target.h"

#include <gtest/gtest.h>

#include "euler_test_util.h"

namespace {

using euler_test::kAxes;
using euler_test::kPi;

template <typename T>
class EulerTargetTest : public testing::Test, protected euler_test::Reference<T> {
protected:
    using Ref = euler_test::Reference<T>;
    // Extraction reads the first and last angles scaled by 1 / cos(middle), so their error grows
    // as the rounding of the matrix over cos^2(middle); the random triples keep that cosine above
    // 0.05, the curves pass at 0.0157 from the poles.
    static constexpr double kExtractTol = Ref::kDouble ? 1e-10 : 1e-4;
    static constexpr double kNearPoleTol = Ref::kDouble ? 1e-10 : 1e-3;

    // Extracts with the target, checks that the result is the rotation of m and lies in
    // (target - pi, target + pi] on each axis, and returns it.
    static typename Ref::V Extract(const typename Ref::R& m, const typename Ref::V& target,
                                   int order, double tol = kExtractTol) {
        typename Ref::V angles = target;
        F3DMatToEulerUsingTarget(m, angles, static_cast<tagE3DROTORDER>(order));
        Ref::ExpectNear(Ref::Matrix(angles, order), m, tol, "rotation reproduced");
        const double slack = Ref::kDouble ? 1e-12 : 1e-5;
        for (int axis = 0; axis < 3; ++axis) {
            EXPECT_GT(angles[axis] - target[axis], -kPi - slack) << order;
            EXPECT_LE(angles[axis] - target[axis], kPi + slack) << order;
        }
        return angles;
    }
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(EulerTargetTest, Precisions);

TYPED_TEST(EulerTargetTest, RandomRotationsAndTargets) {
    using Ref = typename TestFixture::Ref;
    using V = typename Ref::V;
    using T = TypeParam;
    std::mt19937 rng(7);
    for (int order = 0; order < 6; ++order) {
        for (int n = 0; n < 300; ++n) {
            const V t = Ref::Triple(rng, order, 3 * kPi, 0.05);
            typename Ref::R m;
            F3DEulerToMat(t, m, static_cast<tagE3DROTORDER>(order));
            this->Extract(m, Ref::Triple(rng, order, 10), order);
            // The triple itself, as target, comes back, also shifted by whole turns.
            const V shift(T(2 * kPi), T(-4 * kPi), 0);
            for (const V& target : {t, t + shift}) {
                const V back = this->Extract(m, target, order);
                for (int axis = 0; axis < 3; ++axis)
                    EXPECT_NEAR(back[axis], target[axis], this->kExtractTol) << order;
            }
        }
    }
}

TYPED_TEST(EulerTargetTest, CurvesStayContinuousThroughGimbalLock) {
    using Ref = typename TestFixture::Ref;
    using V = typename Ref::V;
    using T = TypeParam;
    // The middle angle sweeps from -pi to pi, exactly through both poles at k = 100 and 300,
    // while the first and last angles drift.
    const double step = kPi / 200;
    for (int order = 0; order < 6; ++order) {
        const auto& axes = kAxes[order];
        V previous;
        for (int k = 0; k <= 400; ++k) {
            V t;
            t[axes[0]] = T(0.3 + 0.013 * k);
            t[axes[1]] = T((k - 200) * step);
            t[axes[2]] = T(-0.2 + 0.007 * k);
            typename Ref::R m;
            F3DEulerToMat(t, m, static_cast<tagE3DROTORDER>(order));
            const V angles = this->Extract(m, k == 0 ? t : previous, order, this->kNearPoleTol);
            for (int axis = 0; k > 0 && axis < 3; ++axis)
                EXPECT_LE(std::fabs(angles[axis] - previous[axis]), 3 * step) << order << " " << k;
            previous = angles;
        }
    }
    // Four turns about a tilted axis, in the orders that keep the spin axis Z first or last (the
    // others pass near gimbal lock, where Euler angles must swing): the Z angle keeps growing.
    const C3DVector3Tpl<double> axis(0.2, 0.3, 1);
    for (int order = 0; order < 6; ++order) {
        if (kAxes[order][1] == E3DAXIS_Z) continue;
        V previous(0, 0, 0);
        for (int k = 0; k <= 2600; ++k) {
            C3DQuatTpl<double> q;
            F3DAxisAngleToQuat(axis, 0.01 * k, q);
            C3DRotMatTpl<double> wide;
            QuatToMat(q, wide);
            typename Ref::R m;
            for (int e = 0; e < 9; ++e) m.GetArray()[e] = T(wide.GetArray()[e]);
            const V angles = this->Extract(m, previous, order);
            for (int a = 0; a < 3; ++a)
                EXPECT_LE(std::fabs(angles[a] - previous[a]), 0.03) << order << " " << k;
            previous = angles;
        }
        EXPECT_GT(std::fabs(previous.z), 7 * kPi) << order;
    }
}

TYPED_TEST(EulerTargetTest, WorkedExamples) {
    using Ref = typename TestFixture::Ref;
    using R = typename Ref::R;
    using V = typename Ref::V;
    using T = TypeParam;
    const double tol = Ref::kDouble ? 1e-12 : 1e-5;
    const T halfPi = T(kPi / 2);
    const auto expectNear = [tol](const V& a, const V& b) {
        for (int axis = 0; axis < 3; ++axis) EXPECT_NEAR(a[axis], b[axis], tol) << axis;
    };
    const auto extract = [](const R& m, V target) {
        F3DMatToEulerUsingTarget(m, target, E3DROTORDER_XYZ);
        return target;
    };
    // Nearest to (0, 0, 0) is the second solution, with the middle angle beyond pi/2: distances
    // 3.32 against 6.1.
    R m;
    F3DEulerToMat(V(3, T(0.1), 3), m, E3DROTORDER_XYZ);
    V angles;
    F3DMatToEuler(m, angles, E3DROTORDER_XYZ);
    expectNear(angles, V(T(3 - kPi), T(kPi - 0.1), T(3 - kPi)));
    // Whole turns of the target are kept.
    F3DEulerToMat(V(T(0.1), 0, 0), m, E3DROTORDER_XYZ);
    expectNear(extract(m, V(T(2 * kPi + 0.1), 0, 0)), V(T(2 * kPi + 0.1), 0, 0));
    // The half turn about X: F3DArcSinCos gives -pi, which lies just outside (-pi, pi] and is
    // moved to +pi.
    F3DMatToEuler(R(1, 0, 0, 0, -1, 0, 0, 0, -1), angles, E3DROTORDER_XYZ);
    EXPECT_EQ(angles, V(T(kPi), 0, 0));
    // Gimbal lock at +pi/2 fixes X - Z = 0.2, split evenly around the target.
    F3DEulerToMat(V(T(0.3), halfPi, T(0.1)), m, E3DROTORDER_XYZ);
    expectNear(extract(m, V(1, halfPi, 1)), V(T(1.1), halfPi, T(0.9)));
    // At -pi/2 it fixes X + Z; a sum of 0 keeps -(target X + target Z) / 2 on both, then the
    // nearer half-turn partner: the sum no longer matches the matrix.
    const R sumZero(0, 0, 1, 0, 1, 0, -1, 0, 0);
    angles = extract(sumZero, V(1, -halfPi, 1));
    expectNear(angles, V(T(kPi - 1), -halfPi, T(kPi - 1)));
    EXPECT_FALSE(AreAlmostEqual(Ref::Matrix(angles, E3DROTORDER_XYZ), sumZero, T(0.1)));
    // The middle sine 0.9999995 is gimbal lock in single precision only.
    const double middle = std::asin(0.9999995);
    F3DEulerToMat(V(T(0.2), T(middle), T(0.4)), m, E3DROTORDER_XYZ);
    F3DMatToEuler(m, angles, E3DROTORDER_XYZ);
    if (Ref::kDouble) {
        expectNear(angles, V(T(0.2), T(middle), T(0.4)));
    } else {
        EXPECT_EQ(angles.y, halfPi);
    }
    // An invalid order changes nothing.
    angles.Set(1, 2, 3);
    F3DMatToEulerUsingTarget(m, angles, static_cast<tagE3DROTORDER>(99));
    EXPECT_EQ(angles, V(1, 2, 3));
}

TEST(EulerTarget, TiesChooseTheSecondSolution) {
    using V = C3DVector3Tpl<double>;
    const double h = kPi / 2;
    // A quarter turn about X: (pi/2, 0, 0) and (-pi/2, -pi, pi) both lie at pi/2 from the
    // target on each axis.
    V angles(0, -h, h);
    F3DMatToEulerUsingTarget(C3DRotMatTpl<double>(1, 0, 0, 0, 0, 1, 0, -1, 0), angles,
                             E3DROTORDER_XYZ);
    EXPECT_EQ(angles, V(-h, -kPi, kPi));
    // Gimbal lock with X - Z = pi/2: (pi/2, pi/2, 0) and (-pi/2, pi/2, pi) both lie at pi/2
    // from the target on X and on Z.
    angles.Set(0, h, h);
    F3DMatToEulerUsingTarget(C3DRotMatTpl<double>(0, 0, -1, 1, 0, 0, 0, -1, 0), angles,
                             E3DROTORDER_XYZ);
    EXPECT_EQ(angles, V(-h, h, kPi));
}

}  // namespace
