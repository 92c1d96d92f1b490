// Quaternion and Euler-angle operations in double precision against Eigen (Quaterniond,
// AngleAxisd) and GLM (dquat, gtx/euler_angles). Each benchmark runs the operation over the same
// 1024 random rotations; every result is kept alive on its own, so what is measured is the
// operation as a caller meets it, not how well the compiler vectorises a loop of it. Matrices are
// handed to each peer in its own convention (the transpose of ours), so every implementation
// computes the same rotation.
//
// The rotation class C3DRotation is measured against the nearest plain operations of the peers.
// Its Mul does more than a quaternion product: it normalises the result, keeps the rotation angle
// 2 acos(W) and marks the other representations stale. Its cold Euler read includes setting the
// quaternion (a normalisation and the angle again), then the matrix and the extraction nearest to
// (0, 0, 0); the peers convert the quaternion straight to angles.
#include <random>
#include <vector>

#include "math/rotations/euler_angles.h"
#include "math/rotations/quaternion.h"
#include "math/rotations/rotation.h"
#include "peer_ratio.h"

#ifdef MATH_HAVE_EIGEN
#include <Eigen/Geometry>
#endif
#ifdef MATH_HAVE_GLM
#define GLM_ENABLE_EXPERIMENTAL
#include <glm/glm.hpp>
#include <glm/gtc/quaternion.hpp>
#include <glm/gtx/euler_angles.hpp>
#endif

namespace {

using Q = C3DQuatTpl<double>;
using R = C3DRotMatTpl<double>;
using V = C3DVector3Tpl<double>;
constexpr int kCount = 1024;

std::vector<Q> RandomQuaternions(unsigned seed) {
    std::mt19937 rng(seed);
    std::normal_distribution<double> d;
    std::vector<Q> out(kCount);
    for (Q& q : out) q.Set(d(rng), d(rng), d(rng), d(rng)).Normalize();
    return out;
}
std::vector<V> RandomAngles(unsigned seed) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> d(-3.14, 3.14);
    std::vector<V> out(kCount);
    for (V& v : out) v.Set(d(rng), d(rng), d(rng));
    return out;
}
std::vector<double> RandomParameters(unsigned seed) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> d(0, 1);
    std::vector<double> out(kCount);
    for (double& t : out) t = d(rng);
    return out;
}

const std::vector<Q> kA = RandomQuaternions(1);
const std::vector<Q> kB = RandomQuaternions(2);
const std::vector<double> kT = RandomParameters(3);
const std::vector<V> kAngles = RandomAngles(4);
const std::vector<R> kM = Converted<R>(kA, [](const Q& q) {
    R m;
    QuatToMat(q, m);
    return m;
});

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
void QuatProduct_ours(benchmark::State& state) {
    Run(state, [](int i) {
        Q q(C3DInitRequest_DoNotInitialize{});
        q.Mul(kA[i], kB[i]);
        Sink(q.GetW(), q.GetX(), q.GetY(), q.GetZ());
    });
}
void Slerp_ours(benchmark::State& state) {
    Run(state, [](int i) {
        Q q(C3DInitRequest_DoNotInitialize{});
        q.Slerp(kA[i], kB[i], kT[i]);
        Sink(q.GetW(), q.GetX(), q.GetY(), q.GetZ());
    });
}
void QuatToMatrix_ours(benchmark::State& state) {
    Run(state, [](int i) {
        R m(C3DInitRequest_DoNotInitialize{});
        QuatToMat(kA[i], m);
        KeepAlive(m);
    });
}
void MatrixToQuat_ours(benchmark::State& state) {
    Run(state, [](int i) {
        Q q(C3DInitRequest_DoNotInitialize{});
        MatToQuat(kM[i], q);
        Sink(q.GetW(), q.GetX(), q.GetY(), q.GetZ());
    });
}
void EulerToMatrix_ours(benchmark::State& state) {
    Run(state, [](int i) {
        R m(C3DInitRequest_DoNotInitialize{});
        F3DEulerToMat(kAngles[i], m, E3DROTORDER_XYZ);
        KeepAlive(m);
    });
}
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
BENCHMARK(QuatProduct_ours)->Name("QuatProduct/ours");
BENCHMARK(Slerp_ours)->Name("Slerp/ours");
BENCHMARK(QuatToMatrix_ours)->Name("QuatToMatrix/ours");
BENCHMARK(MatrixToQuat_ours)->Name("MatrixToQuat/ours");
BENCHMARK(EulerToMatrix_ours)->Name("EulerToMatrix(XYZ)/ours");
BENCHMARK(RotationMul_ours)->Name("RotationMul/ours");
BENCHMARK(ColdXYZAngles_ours)->Name("ColdXYZAngles(XYZ)/ours");

// --- Eigen --------------------------------------------------------------------------------------
#ifdef MATH_HAVE_EIGEN
using EQ = Eigen::Quaterniond;
using EM = Eigen::Matrix3d;
EQ ToEigen(const Q& q) { return EQ(q.GetW(), q.GetX(), q.GetY(), q.GetZ()); }
EM ToEigenMatrix(const R& m) {
    EM e;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) e(i, j) = m.Get(j, i);  // column vectors: the transpose
    return e;
}
const std::vector<EQ> kEA = Converted<EQ>(kA, ToEigen);
const std::vector<EQ> kEB = Converted<EQ>(kB, ToEigen);
const std::vector<EM> kEM = Converted<EM>(kM, ToEigenMatrix);

void QuatProduct_eigen(benchmark::State& state) {
    Run(state, [](int i) {
        const EQ q = kEA[i] * kEB[i];
        Sink(q.w(), q.x(), q.y(), q.z());
    });
}
void Slerp_eigen(benchmark::State& state) {
    Run(state, [](int i) {
        const EQ q = kEA[i].slerp(kT[i], kEB[i]);
        Sink(q.w(), q.x(), q.y(), q.z());
    });
}
void QuatToMatrix_eigen(benchmark::State& state) {
    Run(state, [](int i) {
        EM m = kEA[i].toRotationMatrix();
        KeepAlive(m);
    });
}
void MatrixToQuat_eigen(benchmark::State& state) {
    Run(state, [](int i) {
        const EQ q(kEM[i]);
        Sink(q.w(), q.x(), q.y(), q.z());
    });
}
void EulerToMatrix_eigen(benchmark::State& state) {
    Run(state, [](int i) {
        const V& a = kAngles[i];
        // X first: the rightmost factor for column vectors.
        EM m = (Eigen::AngleAxisd(a.z, Eigen::Vector3d::UnitZ()) *
                Eigen::AngleAxisd(a.y, Eigen::Vector3d::UnitY()) *
                Eigen::AngleAxisd(a.x, Eigen::Vector3d::UnitX()))
                   .toRotationMatrix();
        KeepAlive(m);
    });
}
void ColdXYZAngles_eigen(benchmark::State& state) {
    Run(state, [](int i) {
        // Z Y X for column vectors: X applied first, as our order XYZ.
        const Eigen::Vector3d angles = kEA[i].toRotationMatrix().eulerAngles(2, 1, 0);
        Sink(angles[2], angles[1], angles[0]);
    });
}
BENCHMARK(QuatProduct_eigen)->Name("QuatProduct/eigen");
BENCHMARK(Slerp_eigen)->Name("Slerp/eigen");
BENCHMARK(QuatToMatrix_eigen)->Name("QuatToMatrix/eigen");
BENCHMARK(MatrixToQuat_eigen)->Name("MatrixToQuat/eigen");
BENCHMARK(EulerToMatrix_eigen)->Name("EulerToMatrix(XYZ)/eigen");
BENCHMARK(QuatProduct_eigen)->Name("RotationMul/eigen");
BENCHMARK(ColdXYZAngles_eigen)->Name("ColdXYZAngles(XYZ)/eigen");
#endif

// --- GLM ----------------------------------------------------------------------------------------
#ifdef MATH_HAVE_GLM
using GQ = glm::dquat;
using GM = glm::dmat3;
GQ ToGlm(const Q& q) { return GQ(q.GetW(), q.GetX(), q.GetY(), q.GetZ()); }
GM ToGlmMatrix(const R& m) {
    GM g;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) g[i][j] = m.Get(i, j);  // column i of the transpose
    return g;
}
const std::vector<GQ> kGA = Converted<GQ>(kA, ToGlm);
const std::vector<GQ> kGB = Converted<GQ>(kB, ToGlm);
const std::vector<GM> kGM = Converted<GM>(kM, ToGlmMatrix);

void QuatProduct_glm(benchmark::State& state) {
    Run(state, [](int i) {
        const GQ q = kGA[i] * kGB[i];
        Sink(q.w, q.x, q.y, q.z);
    });
}
void Slerp_glm(benchmark::State& state) {
    Run(state, [](int i) {
        const GQ q = glm::slerp(kGA[i], kGB[i], kT[i]);
        Sink(q.w, q.x, q.y, q.z);
    });
}
void QuatToMatrix_glm(benchmark::State& state) {
    Run(state, [](int i) {
        GM m = glm::mat3_cast(kGA[i]);
        KeepAlive(m);
    });
}
void MatrixToQuat_glm(benchmark::State& state) {
    Run(state, [](int i) {
        const GQ q = glm::quat_cast(kGM[i]);
        Sink(q.w, q.x, q.y, q.z);
    });
}
void EulerToMatrix_glm(benchmark::State& state) {
    Run(state, [](int i) {
        const V& a = kAngles[i];
        glm::dmat4 m = glm::eulerAngleXYZ(a.x, a.y, a.z);  // GLM gives the 4x4 form only
        KeepAlive(m);
    });
}
void ColdXYZAngles_glm(benchmark::State& state) {
    Run(state, [](int i) {
        const glm::dvec3 angles = glm::eulerAngles(kGA[i]);  // pitch (X), yaw (Y), roll (Z)
        Sink(angles.x, angles.y, angles.z);
    });
}
BENCHMARK(QuatProduct_glm)->Name("QuatProduct/glm");
BENCHMARK(Slerp_glm)->Name("Slerp/glm");
BENCHMARK(QuatToMatrix_glm)->Name("QuatToMatrix/glm");
BENCHMARK(MatrixToQuat_glm)->Name("MatrixToQuat/glm");
BENCHMARK(EulerToMatrix_glm)->Name("EulerToMatrix(XYZ)/glm");
BENCHMARK(QuatProduct_glm)->Name("RotationMul/glm");
BENCHMARK(ColdXYZAngles_glm)->Name("ColdXYZAngles(XYZ)/glm");
#endif

}  // namespace
