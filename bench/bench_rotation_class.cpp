// The cached rotation class against the nearest plain operations of Eigen (Quaterniond) and GLM
// (dquat): the product, and Euler angles read cold, just after a quaternion was set.
//
// C3DRotation::Mul does more than a quaternion product: it normalises the result, keeps the
// rotation angle 2 acos(W) and marks the other representations stale. The cold read includes
// setting the quaternion (a normalisation and the angle again), then the matrix and the Euler
// extraction nearest to (0, 0, 0); the peers convert the quaternion straight to angles. Each
// benchmark runs over the same 1024 random rotations, every result kept alive on its own.
#include <random>
#include <vector>

#include "math/rotations/rotation.h"
#include "peer_ratio.h"

#ifdef MATH_HAVE_EIGEN
#include <Eigen/Geometry>
#endif
#ifdef MATH_HAVE_GLM
#define GLM_ENABLE_EXPERIMENTAL
#include <glm/glm.hpp>
#include <glm/gtc/quaternion.hpp>
#endif

namespace {

using Q = C3DQuatTpl<double>;
using V = C3DVector3Tpl<double>;
constexpr int kCount = 1024;

std::vector<Q> RandomQuaternions(unsigned seed) {
    std::mt19937 rng(seed);
    std::normal_distribution<double> d;
    std::vector<Q> out(kCount);
    for (Q& q : out) q.Set(d(rng), d(rng), d(rng), d(rng)).Normalize();
    return out;
}

const std::vector<Q> kA = RandomQuaternions(1);
const std::vector<Q> kB = RandomQuaternions(2);

template <typename Body>
void Run(benchmark::State& state, Body body) {
    RunEach(state, kCount, body);
}

// Keeps the components alive in registers.
inline void Sink(double x, double y, double z) {
    KeepAlive(x);
    KeepAlive(y);
    KeepAlive(z);
}
inline void Sink(double w, double x, double y, double z) {
    KeepAlive(w);
    Sink(x, y, z);
}

// --- ours ---------------------------------------------------------------------------------------
// Rotations with a current quaternion, as a transform's rotations usually are.
std::vector<C3DRotation> Rotations(const std::vector<Q>& quaternions) {
    return Converted<C3DRotation>(quaternions, [](const Q& q) {
        C3DRotation r;
        r.Set(q);
        return r;
    });
}

void RotationMul_ours(benchmark::State& state) {
    std::vector<C3DRotation> a = Rotations(kA), b = Rotations(kB);
    C3DRotation r;
    Run(state, [&](int i) {
        r.Mul(a[i], b[i]);
        Q q(C3DInitRequest_DoNotInitialize{});
        r.GetQuat(q);
        Sink(q.GetW(), q.GetX(), q.GetY(), q.GetZ());
    });
}
void ColdXYZAngles_ours(benchmark::State& state) {
    C3DRotation r;
    Run(state, [&](int i) {
        V angles;
        r.Set(kA[i]).GetXYZAngles(angles, E3DROTORDER_XYZ);
        Sink(angles.x, angles.y, angles.z);
    });
}
BENCHMARK(RotationMul_ours)->Name("RotationMul/ours");
BENCHMARK(ColdXYZAngles_ours)->Name("ColdXYZAngles(XYZ)/ours");

// --- Eigen --------------------------------------------------------------------------------------
#ifdef MATH_HAVE_EIGEN
using EQ = Eigen::Quaterniond;
EQ ToEigen(const Q& q) { return EQ(q.GetW(), q.GetX(), q.GetY(), q.GetZ()); }
const std::vector<EQ> kEA = Converted<EQ>(kA, ToEigen);
const std::vector<EQ> kEB = Converted<EQ>(kB, ToEigen);

void RotationMul_eigen(benchmark::State& state) {
    Run(state, [](int i) {
        const EQ q = kEB[i] * kEA[i];
        Sink(q.w(), q.x(), q.y(), q.z());
    });
}
void ColdXYZAngles_eigen(benchmark::State& state) {
    Run(state, [](int i) {
        // Z Y X for column vectors: X applied first, as our order XYZ.
        const Eigen::Vector3d angles = kEA[i].toRotationMatrix().eulerAngles(2, 1, 0);
        Sink(angles[2], angles[1], angles[0]);
    });
}
BENCHMARK(RotationMul_eigen)->Name("RotationMul/eigen");
BENCHMARK(ColdXYZAngles_eigen)->Name("ColdXYZAngles(XYZ)/eigen");
#endif

// --- GLM ----------------------------------------------------------------------------------------
#ifdef MATH_HAVE_GLM
using GQ = glm::dquat;
GQ ToGlm(const Q& q) { return GQ(q.GetW(), q.GetX(), q.GetY(), q.GetZ()); }
const std::vector<GQ> kGA = Converted<GQ>(kA, ToGlm);
const std::vector<GQ> kGB = Converted<GQ>(kB, ToGlm);

void RotationMul_glm(benchmark::State& state) {
    Run(state, [](int i) {
        const GQ q = kGB[i] * kGA[i];
        Sink(q.w, q.x, q.y, q.z);
    });
}
void ColdXYZAngles_glm(benchmark::State& state) {
    Run(state, [](int i) {
        const glm::dvec3 angles = glm::eulerAngles(kGA[i]);  // pitch (X), yaw (Y), roll (Z)
        Sink(angles.x, angles.y, angles.z);
    });
}
BENCHMARK(RotationMul_glm)->Name("RotationMul/glm");
BENCHMARK(ColdXYZAngles_glm)->Name("ColdXYZAngles(XYZ)/glm");
#endif

}  // namespace
