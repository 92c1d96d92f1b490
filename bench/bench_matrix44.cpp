// 4x4 matrix operations in double precision against Eigen (Matrix4d) and GLM (dmat4), and the
// affine decomposition of a transformation matrix against Eigen's JacobiSVD of its 3x3 block
// with both factors computed. Each benchmark runs the operation over the same 1024 random
// matrices (diagonally dominant where they are inverted, affine where they are decomposed);
// every result is stored on its own, as in bench_matrix33.cpp.
#include <random>
#include <vector>

#include "math/matrices/matrix44.h"
#include "math/matrices/transformation_matrix.h"
#include "peer_ratio.h"

#ifdef MATH_HAVE_EIGEN
#include <Eigen/Dense>
#endif
#ifdef MATH_HAVE_GLM
#include <glm/glm.hpp>
#endif

namespace {

using M = C3DMatrix44Tpl<double>;
using X = C3DXfoMatTpl<double>;
constexpr int kCount = 1024;

enum class Kind { General, Regular, Affine };

std::vector<M> RandomMatrices(unsigned seed, Kind kind) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> d(-1, 1);
    std::vector<M> out(kCount);
    for (M& m : out) {
        for (int k = 0; k < 16; ++k) m.GetArray()[k] = d(rng);
        if (kind == Kind::Regular) m.Add(M(3, 0, 0, 0, 0, 3, 0, 0, 0, 0, 3, 0, 0, 0, 0, 3));
        if (kind == Kind::Affine) m.SetCol(3, 0, 0, 0, 1);
    }
    return out;
}

const std::vector<M> kA = RandomMatrices(1, Kind::General);
const std::vector<M> kB = RandomMatrices(2, Kind::General);
const std::vector<M> kRegular = RandomMatrices(3, Kind::Regular);
const std::vector<X> kAffine = Converted<X>(RandomMatrices(4, Kind::Affine), [](const M& m) {
    X x(C3DInitRequest_DoNotInitialize{});
    x.Set(m);
    return x;
});

template <typename Body>
void Run(benchmark::State& state, Body body) {
    RunEach(state, kCount, body);
}

// --- ours ---------------------------------------------------------------------------------------
void Multiply_ours(benchmark::State& state) {
    Run(state, [](int i) {
        M r(C3DInitRequest_DoNotInitialize{});
        KeepAlive(r.Mul(kA[i], kB[i]));
    });
}
void Invert_ours(benchmark::State& state) {
    Run(state, [](int i) {
        M r(C3DInitRequest_DoNotInitialize{});
        r.Invert(kRegular[i]);
        KeepAlive(r);
    });
}
void AffineDecomposition_ours(benchmark::State& state) {
    Run(state, [](int i) {
        C3DRotMatTpl<double> rotation(C3DInitRequest_DoNotInitialize{});
        X rest(C3DInitRequest_DoNotInitialize{});
        kAffine[i].GetAffineDecomposition(rotation, rest);
        KeepAlive(rotation);
        KeepAlive(rest);
    });
}
BENCHMARK(Multiply_ours)->Name("Multiply/ours");
BENCHMARK(Invert_ours)->Name("Invert/ours");
BENCHMARK(AffineDecomposition_ours)->Name("AffineDecomposition/ours");

// --- Eigen --------------------------------------------------------------------------------------
#ifdef MATH_HAVE_EIGEN
using E = Eigen::Matrix4d;
E ToEigen(const M& m) {
    E e;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) e(i, j) = m.Get(i, j);
    return e;
}
const std::vector<E> kEA = Converted<E>(kA, ToEigen);
const std::vector<E> kEB = Converted<E>(kB, ToEigen);
const std::vector<E> kERegular = Converted<E>(kRegular, ToEigen);
const std::vector<Eigen::Matrix3d> kEBlocks = Converted<Eigen::Matrix3d>(kAffine, [](const X& m) {
    Eigen::Matrix3d e;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) e(i, j) = m.Get(i, j);
    return e;
});

void Multiply_eigen(benchmark::State& state) {
    Run(state, [](int i) {
        E r = kEA[i] * kEB[i];
        KeepAlive(r);
    });
}
void Invert_eigen(benchmark::State& state) {
    Run(state, [](int i) {
        E r = kERegular[i].inverse();
        KeepAlive(r);
    });
}
void AffineDecomposition_eigen(benchmark::State& state) {
    Run(state, [](int i) {
        Eigen::JacobiSVD<Eigen::Matrix3d> svd(kEBlocks[i],
                                              Eigen::ComputeFullU | Eigen::ComputeFullV);
        Eigen::Matrix3d u = svd.matrixU(), v = svd.matrixV();
        Eigen::Vector3d s = svd.singularValues();
        KeepAlive(u);
        KeepAlive(v);
        KeepAlive(s);
    });
}
BENCHMARK(Multiply_eigen)->Name("Multiply/eigen");
BENCHMARK(Invert_eigen)->Name("Invert/eigen");
BENCHMARK(AffineDecomposition_eigen)->Name("AffineDecomposition/eigen");
#endif

// --- GLM ----------------------------------------------------------------------------------------
#ifdef MATH_HAVE_GLM
using G = glm::dmat4;
G ToGlm(const M& m) {
    G g;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) g[j][i] = m.Get(i, j);  // GLM indexes column first
    return g;
}
const std::vector<G> kGA = Converted<G>(kA, ToGlm);
const std::vector<G> kGB = Converted<G>(kB, ToGlm);
const std::vector<G> kGRegular = Converted<G>(kRegular, ToGlm);

void Multiply_glm(benchmark::State& state) {
    Run(state, [](int i) {
        G r = kGA[i] * kGB[i];
        KeepAlive(r);
    });
}
void Invert_glm(benchmark::State& state) {
    Run(state, [](int i) {
        G r = glm::inverse(kGRegular[i]);
        KeepAlive(r);
    });
}
BENCHMARK(Multiply_glm)->Name("Multiply/glm");
BENCHMARK(Invert_glm)->Name("Invert/glm");
#endif

}  // namespace
