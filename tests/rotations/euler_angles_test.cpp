#include "math/rotations/euler_angles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

#include "math/rotations/euler_target.h"
#include "reference_rotations.h"

namespace {

using reference::EulerMatrix;
using reference::kAxes;
using reference::kPi;
using reference::Widened;
constexpr double kTwoPi = 2 * kPi;
const auto kInvalid = static_cast<tagE3DROTORDER>(99);

template <typename T>
class EulerTest : public testing::Test {
protected:
    using V = C3DVector3Tpl<T>;
    using R = C3DRotMatTpl<T>;
    using Q = C3DQuatTpl<T>;
    static constexpr bool kDouble = std::is_same<T, double>::value;
    static constexpr double kTol = kDouble ? 1e-12 : 3e-6;
    // Extraction reads the first and last angles scaled by 1 / cos(middle), so their error grows
    // as the rounding of the matrix over cos^2(middle): the random triples keep that cosine above
    // 0.05, the curves pass at 0.0157 from the poles.
    static constexpr double kExtractTol = kDouble ? 1e-10 : 1e-4;
    static constexpr double kNearPoleTol = kDouble ? 1e-10 : 1e-3;

    static tagE3DROTORDER Order(int order) { return static_cast<tagE3DROTORDER>(order); }
    // Uniform in [-range, range]; the middle angle kept with |cos| >= margin.
    static V Triple(std::mt19937& rng, int order, double range, double margin = 0) {
        std::uniform_real_distribution<double> d(-range, range);
        V v(T(d(rng)), T(d(rng)), T(d(rng)));
        while (std::fabs(std::cos(v[kAxes[order][1]])) < margin) v[kAxes[order][1]] = T(d(rng));
        return v;
    }
    // m is the rotation of the angles in that order, by the product of elementary matrices.
    static void ExpectRotation(const R& m, const V& angles, int order, double tol) {
        EXPECT_EQ(AreAlmostEqual(Widened(m), EulerMatrix(angles, order), tol), 1)
            << m << "\nagainst the angles " << angles << " in order " << order;
    }
    // Extracts with the target, checks that the result is the rotation of m and lies in
    // (target - pi, target + pi] on each axis, and returns it.
    static V Extract(const R& m, const V& target, int order, double tol = kExtractTol) {
        V angles = target;
        F3DMatToEulerUsingTarget(m, angles, Order(order));
        ExpectRotation(m, angles, order, tol);
        const double slack = kDouble ? 1e-12 : 1e-5;
        for (int axis = 0; axis < 3; ++axis) {
            EXPECT_GT(angles[axis] - target[axis], -kPi - slack) << order;
            EXPECT_LE(angles[axis] - target[axis], kPi + slack) << order;
        }
        return angles;
    }
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(EulerTest, Precisions);

TYPED_TEST(EulerTest, RandomTriplesConvertAndComeBackNearTheirTargets) {
    using Q = typename TestFixture::Q;
    using V = typename TestFixture::V;
    using T = TypeParam;
    std::mt19937 rng(7);
    for (int order = 0; order < 6; ++order) {
        for (int n = 0; n < 300; ++n) {
            const V t = this->Triple(rng, order, 3 * kPi, 0.05);
            typename TestFixture::R m;
            F3DEulerToMat(t, m, this->Order(order));
            this->ExpectRotation(m, t, order, this->kTol);
            // The quaternion is that of the matrix, up to its sign.
            Q q, fromMatrix;
            F3DEulerToQuat(t, q, this->Order(order));
            F3DMatToQuat(m, fromMatrix);
            EXPECT_EQ(AreAlmostEqual(q, fromMatrix, T(10 * this->kTol)) +
                          AreAlmostEqual(q, Q(fromMatrix).Negate(), T(10 * this->kTol)),
                      1)
                << q << " " << order;
            this->Extract(m, this->Triple(rng, order, 10), order);
            // The triple itself, as target, comes back, also shifted by whole turns.
            for (const V& target : {t, t + V(T(kTwoPi), T(-2 * kTwoPi), 0)}) {
                const V back = this->Extract(m, target, order);
                EXPECT_EQ(AreAlmostEqual(back, target, T(this->kExtractTol)), 1) << back;
            }
        }
    }
}

TYPED_TEST(EulerTest, NullAnglesSingleAxesAndInvalidOrders) {
    using Q = typename TestFixture::Q;
    using R = typename TestFixture::R;
    using V = typename TestFixture::V;
    using T = TypeParam;
    // No angle: the identity; one angle: the elementary quaternion, whatever the order, with no
    // sign adjustment.
    Q q(2, 2, 2, 2);
    F3DEulerToQuat(V(0, 0, 0), q, kInvalid);
    EXPECT_EQ(q, Q());
    F3DEulerToQuat(V(T(0.5), 0, 0), q, kInvalid);
    EXPECT_EQ(q, Q(T(std::cos(0.25)), T(std::sin(0.25)), 0, 0));
    F3DEulerToQuat(V(T(kTwoPi), 0, 0), q, E3DROTORDER_ZYX);
    EXPECT_EQ(AreAlmostEqual(q, Q(-1, 0, 0, 0), T(this->kTol)), 1);
    // Two angles and an invalid order: q is only normalised; the float forms start from the
    // identity. Matrices are left as they are.
    q.Set(0, 2, 0, 0);
    F3DEulerToQuat(V(T(0.5), T(0.5), 0), q, kInvalid);
    EXPECT_EQ(q, this->kDouble ? Q(0, 1, 0, 0) : Q());
    const R marker(2, 2, 2, 2, 2, 2, 2, 2, 2);
    R m = marker;
    F3DEulerToMat(V(1, 2, 3), m, kInvalid);
    EXPECT_EQ(m, marker);
    V angles(1, 2, 3);
    F3DMatToEulerUsingTarget(marker, angles, kInvalid);
    EXPECT_EQ(angles, V(1, 2, 3));
    F3DMatToEuler(marker, angles, kInvalid);
    EXPECT_EQ(angles, V(0, 0, 0));
}

TYPED_TEST(EulerTest, CurvesStayContinuousThroughGimbalLock) {
    using V = typename TestFixture::V;
    using T = TypeParam;
    // The middle angle sweeps from -pi to pi, exactly through both poles at k = 100 and 300,
    // while the first and last angles drift past +-pi.
    const double step = kPi / 200;
    for (int order = 0; order < 6; ++order) {
        const auto& axes = kAxes[order];
        V previous;
        for (int k = 0; k <= 400; ++k) {
            V t;
            t[axes[0]] = T(0.3 + 0.013 * k);
            t[axes[1]] = T((k - 200) * step);
            t[axes[2]] = T(-0.2 + 0.007 * k);
            typename TestFixture::R m;
            F3DEulerToMat(t, m, this->Order(order));
            const V angles = this->Extract(m, k == 0 ? t : previous, order, this->kNearPoleTol);
            for (int a = 0; k > 0 && a < 3; ++a)
                EXPECT_LE(std::fabs(angles[a] - previous[a]), 3 * step) << order << " " << k;
            previous = angles;
        }
    }
}

TYPED_TEST(EulerTest, WorkedExamplesOfTheExtraction) {
    using R = typename TestFixture::R;
    using V = typename TestFixture::V;
    using T = TypeParam;
    const T h = T(kPi / 2), pi = T(kPi);
    const auto matrix = [](const V& angles) {
        R m;
        F3DEulerToMat(angles, m, E3DROTORDER_XYZ);
        return m;
    };
    const struct {
        R m;
        V target, expected;
        bool exactTie;  // holds in double only
    } cases[] = {
        // Nearest to (0, 0, 0) is the second solution, its middle angle beyond pi/2: distance
        // sums 3.32 against 6.1.
        {matrix(V(3, T(0.1), 3)), V(0, 0, 0), V(3 - pi, pi - T(0.1), 3 - pi), false},
        // Whole turns of the target are kept.
        {matrix(V(T(0.1), 0, 0)), V(T(kTwoPi + 0.1), 0, 0), V(T(kTwoPi + 0.1), 0, 0), false},
        // The half turn about X: F3DArcSinCos gives -pi, outside (-pi, pi], moved to +pi.
        {R(1, 0, 0, 0, -1, 0, 0, 0, -1), V(0, 0, 0), V(pi, 0, 0), false},
        // Gimbal lock at +pi/2 fixes X - Z = 0.2, split evenly around the target.
        {matrix(V(T(0.3), h, T(0.1))), V(1, h, 1), V(T(1.1), h, T(0.9)), false},
        // At -pi/2 it fixes X + Z; a sum of 0 gives -(target X + target Z) / 2 to both, then the
        // nearer half-turn partner: the sum no longer matches the matrix.
        {R(0, 0, 1, 0, 1, 0, -1, 0, 0), V(1, -h, 1), V(pi - 1, -h, pi - 1), false},
        // A target sum of 0 gives half the matrix's sum to each.
        {matrix(V(T(0.3), -h, T(0.1))), V(T(0.5), -h, T(-0.5)), V(T(0.7), -h, T(-0.3)), false},
        // Ties choose the second solution. A quarter turn about X: (pi/2, 0, 0) and
        // (-pi/2, -pi, pi) lie at pi/2 from the target on each axis.
        {R(1, 0, 0, 0, 0, 1, 0, -1, 0), V(0, -h, h), V(-h, -pi, pi), true},
        // Gimbal lock with X - Z = pi/2: (pi/2, pi/2, 0) and (-pi/2, pi/2, pi) lie at pi/2 from
        // the target on X and on Z.
        {R(0, 0, -1, 1, 0, 0, 0, -1, 0), V(0, h, h), V(-h, h, pi), true}};
    for (const auto& c : cases) {
        if (c.exactTie && !this->kDouble) continue;
        V angles = c.target;
        F3DMatToEulerUsingTarget(c.m, angles, E3DROTORDER_XYZ);
        EXPECT_EQ(AreAlmostEqual(angles, c.expected, T(this->kDouble ? 1e-12 : 1e-5)), 1) << angles;
    }
    // The middle sine 0.9999995 is gimbal lock in single precision only.
    const V nearPole(T(0.2), T(std::asin(0.9999995)), T(0.4));
    V angles;
    F3DMatToEuler(matrix(nearPole), angles, E3DROTORDER_XYZ);
    EXPECT_EQ(this->kDouble ? AreAlmostEqual(angles, nearPole, T(1e-12)) : angles.y == h, 1);
}

TEST(EulerAngleUtilities, SuffixedFloatEntryPointsAreTheFloatForms) {
    const C3DQuatTpl<float> q(0.5f, 0.5f, -0.5f, 0.5f);
    C3DRotMatTpl<float> m[2];
    C3DVector3Tpl<float> angles[2];
    F3DQuatToMat(q, m[0]);
    F3DQuatToMatf(q, m[1]);
    F3DQuatToEuler(q, angles[0], E3DROTORDER_YZX);
    F3DQuatfToEuler(q, angles[1], E3DROTORDER_YZX);
    EXPECT_TRUE(m[0] == m[1] && angles[0] == angles[1]);
}

TEST(EulerAngleUtilities, ClosestAngle) {
    // b1 >= b2: the nearer one, b1 on a tie. b1 < b2: tests against the middle m of the arc
    // from b2 up through 2 pi to b1 (1.5 + pi for 1, 2; wrapped to pi - 1 for 3, 5), where a = 0
    // is set apart. Inputs are first brought into [0, 2 pi]: -2 pi is 2 pi, -1 is 2 pi - 1.
    const struct {
        double a, b1, b2, expected;
    } cases[] = {{1, 3, 0.5, 0.5},     {1, 1.5, 0.5, 1.5}, {1.2, 1, 2, 1},
                 {0, 1, 2, 2},         {3, 1, 2, 2},       {5, 1, 2, 1},
                 {kTwoPi, 3, 5, 3},    {0.5, 3, 5, 5},     {1, 3, 5, 3},
                 {6, 3, 5, 5},         {-kTwoPi, 1, 2, 1}, {0, 7, -1, kTwoPi - 1},
                 {1, 8, 2, 8 - kTwoPi}};
    for (const auto& c : cases)
        EXPECT_DOUBLE_EQ(F3DGetClosestAngle(c.a, c.b1, c.b2), c.expected) << c.a << " " << c.b1;
}

TEST(EulerAngleUtilities, UnboundedAngleAndBoundedColumn) {
    // (a, ref, result)
    const double unbounded[][3] = {{0.1, 7, 0.1 + kTwoPi},
                                   {0.1, 3, 0.1},
                                   {0.1, -4, 0.1 - kTwoPi},
                                   {-0.1, 20, -0.1 + 3 * kTwoPi}};
    for (const auto& c : unbounded) EXPECT_DOUBLE_EQ(F3DGetUnboundedAngle(c[0], c[1]), c[2]);

    C3DMatrixMN m;
    m.SetDimensions(3, 2);
    const double values[3] = {7, -7, 20};
    for (int r = 0; r < 3; ++r) m.Set(r, 0, values[r]).Set(r, 1, values[r]);
    F3DBoundAnglesInMatrixInMinus2PITo2PI(m, 1, 1);
    EXPECT_EQ(m.Get(0, 0), 7);
    EXPECT_DOUBLE_EQ(m.Get(1, 0), kTwoPi - 7);         // keeps its sign
    F3DBoundAnglesInMatrixInMinus2PITo2PI(m, -5, -1);  // every row
    EXPECT_DOUBLE_EQ(m.Get(0, 0), 7 - kTwoPi);
    EXPECT_NEAR(m.Get(2, 0), 20 - 3 * kTwoPi, 1e-14);
    for (int r = 0; r < 3; ++r) EXPECT_EQ(m.Get(r, 1), values[r]);
    m.Set(2, 0, -20);
    F3DBoundAnglesInMatrixInMinus2PITo2PI(m, 2, 100);  // past the end: up to the last row
    EXPECT_NEAR(m.Get(2, 0), 3 * kTwoPi - 20, 1e-14);
}

TEST(EulerAngleUtilities, OrderTexts) {
    const struct {
        int order, x, y, z;
        const char* text;
    } built[] = {{E3DROTORDER_ZYX, 1, 1, 1, "ZYX"},
                 {E3DROTORDER_XYZ, 1, 0, 1, "XZ "},
                 {E3DROTORDER_YZX, 0, 0, 7, "Z  "},
                 {6, 1, 1, 1, "   "}};
    for (const auto& c : built) {
        char out[4] = {'#', '#', '#', '#'};
        buildorderstring(static_cast<tagE3DROTORDER>(c.order), c.x, c.y, c.z, out);
        EXPECT_EQ(std::memcmp(out, c.text, 3), 0) << c.text;
        EXPECT_EQ(out[3], '#');  // three characters, no NUL
    }
    const struct {
        const char *a, *b;
        int expected;
    } pairs[] = {{"XYZ", "ZYX", 1}, {"XY ", "YX ", 1}, {"XY ", "Y  ", 1}, {"XY ", "X  ", 0},
                 {"XZ ", "ZYX", 0}, {"X  ", "XZ ", 1}, {"   ", "XYZ", 1}, {"XYZ", "   ", 1}};
    for (const auto& c : pairs) EXPECT_EQ(checkCanAdd(c.a, c.b), c.expected) << c.a << c.b;
}

}  // namespace
