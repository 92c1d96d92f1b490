#include "math/rotations/euler_angles.h"

#include <gtest/gtest.h>

#include <cstring>

#include "euler_test_util.h"

namespace {

using euler_test::kPi;
constexpr double kTwoPi = 2 * kPi;
const auto kInvalid = static_cast<tagE3DROTORDER>(99);

template <typename T>
class EulerAnglesTest : public testing::Test, protected euler_test::Reference<T> {};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(EulerAnglesTest, Precisions);

TYPED_TEST(EulerAnglesTest, ClosedFormsAgreeWithElementaryProducts) {
    using Ref = euler_test::Reference<TypeParam>;
    using R = typename Ref::R;
    using Q = typename Ref::Q;
    std::mt19937 rng(1);
    for (int order = 0; order < 6; ++order) {
        const auto o = static_cast<tagE3DROTORDER>(order);
        for (int n = 0; n < 200; ++n) {
            const typename Ref::V t = Ref::Triple(rng, order, 2 * kPi);
            R m;
            F3DEulerToMat(t, m, o);
            Ref::ExpectNear(m, Ref::Matrix(t, order), Ref::kTol, "elementary matrices");
            Q q;
            F3DEulerToQuat(t, q, o);
            const C3DQuatTpl<double> reference = Ref::Quaternion(t, order);
            for (int k = 0; k < 4; ++k)
                EXPECT_NEAR(q.GetArray()[k], reference.GetArray()[k], Ref::kTol) << order;
            R fromQuat;
            QuatToMat(q, fromQuat);
            Ref::ExpectNear(fromQuat, m, 2 * Ref::kTol, "QuatToMat of the Euler quaternion");
            Q fromMat;
            F3DMatToQuat(m, fromMat);
            if (q.GetW() < 0) q.Negate();
            for (int k = 0; k < 4; ++k)
                EXPECT_NEAR(fromMat.GetArray()[k], q.GetArray()[k], 10 * Ref::kTol) << order;
            // Back to angles through the quaternion: the same rotation.
            typename Ref::V angles;
            F3DQuatToEuler(q, angles, o);
            Ref::ExpectNear(Ref::Matrix(angles, order), m, 1e3 * Ref::kTol, "F3DQuatToEuler");
        }
    }
}

TYPED_TEST(EulerAnglesTest, NullAnglesSingleAxesAndInvalidOrders) {
    using Ref = euler_test::Reference<TypeParam>;
    using R = typename Ref::R;
    using Q = typename Ref::Q;
    using V = typename Ref::V;
    using T = TypeParam;
    const R marker(2, 2, 2, 2, 2, 2, 2, 2, 2);
    for (int order = 0; order < 6; ++order) {
        R m = marker;
        F3DEulerToMat(V(0, 0, 0), m, static_cast<tagE3DROTORDER>(order));
        EXPECT_EQ(m, R());
        Q q(2, 2, 2, 2);
        F3DEulerToQuat(V(0, 0, 0), q, static_cast<tagE3DROTORDER>(order));
        EXPECT_EQ(q, Q());
    }
    R m;
    F3DEulerToMat(V(T(kPi / 2), 0, 0), m, E3DROTORDER_XYZ);
    Ref::ExpectNear(m, R(1, 0, 0, 0, 0, 1, 0, -1, 0), Ref::kTol, "the image of Y is +Z");
    // One angle: the elementary quaternion, whatever the order; no sign adjustment.
    Q q;
    F3DEulerToQuat(V(T(0.5), 0, 0), q, kInvalid);
    EXPECT_EQ(q, Q(T(std::cos(0.25)), T(std::sin(0.25)), 0, 0));
    F3DEulerToQuat(V(T(kTwoPi), 0, 0), q, E3DROTORDER_ZYX);
    EXPECT_EQ(AreAlmostEqual(q, Q(-1, 0, 0, 0), T(Ref::kTol)), 1);
    // Two angles and an invalid order: the quaternion is only normalised, and the float forms
    // start from the identity.
    q.Set(0, 2, 0, 0);
    F3DEulerToQuat(V(T(0.5), T(0.5), 0), q, kInvalid);
    EXPECT_EQ(q, Ref::kDouble ? Q(0, 1, 0, 0) : Q());
    m = marker;
    F3DEulerToMat(V(1, 2, 3), m, kInvalid);
    EXPECT_EQ(m, marker);
    V angles(1, 2, 3);
    F3DMatToEuler(marker, angles, kInvalid);
    EXPECT_EQ(angles, V(0, 0, 0));
}

TEST(EulerAngleUtilities, ClosestAngle) {
    const struct {
        double a, b1, b2, expected;
    } cases[] = {
        {1, 3, 0.5, 0.5},    // b1 >= b2: the nearer one
        {1, 1.5, 0.5, 1.5},  // a tie goes to b1
        // b1 < b2: tests against the middle of the arc from b2 through 2 pi to b1
        {1.2, 1, 2, 1},  // middle 1.5 + pi: every a in (0, b2] gives b1
        {0, 1, 2, 2},    // but a = 0 gives b2
        {3, 1, 2, 2},
        {5, 1, 2, 1},
        {kTwoPi, 1, 2, 1},
        {0.5, 3, 5, 5},  // middle pi - 1 after wrapping
        {1, 3, 5, 3},
        {6, 3, 5, 5},
        // Inputs are brought into [0, 2 pi] first: -2 pi is 2 pi, 7 is 7 - 2 pi.
        {-kTwoPi, 1, 2, 1},
        {0, 7, -1, kTwoPi - 1},
        {1, 8, 2, 8 - kTwoPi},
    };
    for (const auto& c : cases)
        EXPECT_DOUBLE_EQ(F3DGetClosestAngle(c.a, c.b1, c.b2), c.expected) << c.a << " " << c.b1;
}

TEST(EulerAngleUtilities, UnboundedAngleAndBoundedColumn) {
    EXPECT_DOUBLE_EQ(F3DGetUnboundedAngle(0.1, 7.0), 0.1 + kTwoPi);
    EXPECT_DOUBLE_EQ(F3DGetUnboundedAngle(0.1, 3.0), 0.1);
    EXPECT_DOUBLE_EQ(F3DGetUnboundedAngle(0.1, 4.0), 0.1 + kTwoPi);
    EXPECT_DOUBLE_EQ(F3DGetUnboundedAngle(0.1, -4.0), 0.1 - kTwoPi);
    EXPECT_DOUBLE_EQ(F3DGetUnboundedAngle(-0.1, 20.0), -0.1 + 3 * kTwoPi);

    C3DMatrixMN m;
    m.SetDimensions(4, 2);
    const double values[4] = {7, -7, 1, 20};
    for (int r = 0; r < 4; ++r) m.Set(r, 0, values[r]).Set(r, 1, values[r]);
    F3DBoundAnglesInMatrixInMinus2PITo2PI(m, 1, 1);
    EXPECT_EQ(m.Get(0, 0), 7);
    EXPECT_DOUBLE_EQ(m.Get(1, 0), kTwoPi - 7);         // keeps its sign
    F3DBoundAnglesInMatrixInMinus2PITo2PI(m, -5, -1);  // every row
    EXPECT_DOUBLE_EQ(m.Get(0, 0), 7 - kTwoPi);
    EXPECT_NEAR(m.Get(3, 0), 20 - 3 * kTwoPi, 1e-14);
    for (int r = 0; r < 4; ++r) EXPECT_EQ(m.Get(r, 1), values[r]);
    m.Set(3, 0, -20);
    F3DBoundAnglesInMatrixInMinus2PITo2PI(m, 3, 100);  // past the end: up to the last row
    EXPECT_NEAR(m.Get(3, 0), 3 * kTwoPi - 20, 1e-14);
}

TEST(EulerAngleUtilities, OrderTexts) {
    const struct {
        int order, x, y, z;
        const char* text;
    } built[] = {{E3DROTORDER_ZYX, 1, 1, 1, "ZYX"},
                 {E3DROTORDER_XYZ, 1, 0, 1, "XZ "},
                 {E3DROTORDER_YZX, 0, 0, 7, "Z  "},
                 {E3DROTORDER_XZY, 0, 0, 0, "   "},
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
    } pairs[] = {{"XYZ", "ZYX", 1}, {"XY ", "YX ", 1}, {"XY ", "Y  ", 1},
                 {"XY ", "X  ", 0}, {"XYZ", "ZXY", 0}, {"XZ ", "ZYX", 0},
                 {"X  ", "XZ ", 1}, {"   ", "XYZ", 1}, {"XYZ", "   ", 1}};
    for (const auto& c : pairs) EXPECT_EQ(checkCanAdd(c.a, c.b), c.expected) << c.a << c.b;
}

}  // namespace
