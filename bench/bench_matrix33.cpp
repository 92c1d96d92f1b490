// 3x3 matrix operations in double precision against Eigen (Matrix3d, SelfAdjointEigenSolver) and
// GLM (dmat3; GLM has no eigen solver), and the pseudo-inverse of a 6x4 matrix against Eigen's
// complete orthogonal decomposition. Each 3x3 benchmark runs the operation over the same 1024
// random matrices (diagonally dominant where they are inverted, symmetric where they are
// decomposed); every result is stored on its own, so what is measured is the operation as a
// caller meets it, not how well the compiler vectorises a loop of it.
#include <random>
#include <vector>

#include "math/matrices/matrix33.h"
#include "math/matrices/matrix_mn.h"
#include "peer_ratio.h"

#ifdef MATH_HAVE_EIGEN
#include <Eigen/Dense>
#endif
#ifdef MATH_HAVE_GLM
#include <glm/glm.hpp>
#endif

namespace {

using M = C3DMatrix33Tpl<double>;
using V = C3DVector3Tpl<double>;
constexpr int kCount = 1024;

enum class Kind { General, Regular, Symmetric };

std::vector<M> RandomMatrices(unsigned seed, Kind kind) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> d(-1, 1);
    std::vector<M> out(kCount);
    for (M& m : out) {
        for (int k = 0; k < 9; ++k) m.GetArray()[k] = d(rng);
        if (kind == Kind::Regular) m.Add(M(3, 0, 0, 0, 3, 0, 0, 0, 3));
        if (kind == Kind::Symmetric) {
            for (int i = 0; i < 3; ++i)
                for (int j = 0; j < i; ++j) m.Set(i, j, m.Get(j, i));
        }
    }
    return out;
}

const std::vector<M> kA = RandomMatrices(1, Kind::General);
const std::vector<M> kB = RandomMatrices(2, Kind::General);
const std::vector<M> kRegular = RandomMatrices(3, Kind::Regular);
const std::vector<M> kSymmetric = RandomMatrices(4, Kind::Symmetric);

template <typename Body>
void Run(benchmark::State& state, Body body) {
    RunEach(state, kCount, body);
}

// The 6x4 matrix of the pseudo-inverse benchmark.
constexpr int kRows = 6, kCols = 4;
double Element(int i, int j) { return kA[i % kCount].Get(i % 3, j % 3) + (i == j ? 2 : 0); }

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
void Determinant_ours(benchmark::State& state) {
    Run(state, [](int i) { KeepAlive(kA[i].GetDet()); });
}
void EigenSymmetric_ours(benchmark::State& state) {
    Run(state, [](int i) {
        M vectors(C3DInitRequest_DoNotInitialize{});
        V values;
        kSymmetric[i].GetEigenVectors(vectors, values);
        KeepAlive(vectors);
        KeepAlive(values);
    });
}
void GrevilleInverse_ours(benchmark::State& state) {
    C3DMatrixMN a, x;
    a.SetDimensions(kRows, kCols);
    x.SetDimensions(kCols, kRows);
    for (int i = 0; i < kRows; ++i)
        for (int j = 0; j < kCols; ++j) a.Set(i, j, Element(i, j));
    for (auto _ : state) {
        KeepAlive(x.GrevilleInverse(a));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(Multiply_ours)->Name("Multiply/ours");
BENCHMARK(Invert_ours)->Name("Invert/ours");
BENCHMARK(Determinant_ours)->Name("Determinant/ours");
BENCHMARK(EigenSymmetric_ours)->Name("EigenSymmetric/ours");
BENCHMARK(GrevilleInverse_ours)->Name("GrevilleInverse/ours/6x4");

// --- Eigen --------------------------------------------------------------------------------------
#ifdef MATH_HAVE_EIGEN
using E = Eigen::Matrix3d;
E ToEigen(const M& m) {
    E e;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) e(i, j) = m.Get(i, j);
    return e;
}
const std::vector<E> kEA = Converted<E>(kA, ToEigen);
const std::vector<E> kEB = Converted<E>(kB, ToEigen);
const std::vector<E> kERegular = Converted<E>(kRegular, ToEigen);
const std::vector<E> kESymmetric = Converted<E>(kSymmetric, ToEigen);

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
void Determinant_eigen(benchmark::State& state) {
    Run(state, [](int i) { KeepAlive(kEA[i].determinant()); });
}
void EigenSymmetric_eigen(benchmark::State& state) {
    Run(state, [](int i) {
        Eigen::SelfAdjointEigenSolver<E> solver(kESymmetric[i]);
        E vectors = solver.eigenvectors();
        Eigen::Vector3d values = solver.eigenvalues();
        KeepAlive(vectors);
        KeepAlive(values);
    });
}
void GrevilleInverse_eigen(benchmark::State& state) {
    Eigen::MatrixXd a(kRows, kCols);
    for (int i = 0; i < kRows; ++i)
        for (int j = 0; j < kCols; ++j) a(i, j) = Element(i, j);
    for (auto _ : state) {
        Eigen::MatrixXd x = a.completeOrthogonalDecomposition().pseudoInverse();
        KeepAlive(x.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(Multiply_eigen)->Name("Multiply/eigen");
BENCHMARK(Invert_eigen)->Name("Invert/eigen");
BENCHMARK(Determinant_eigen)->Name("Determinant/eigen");
BENCHMARK(EigenSymmetric_eigen)->Name("EigenSymmetric/eigen");
BENCHMARK(GrevilleInverse_eigen)->Name("GrevilleInverse/eigen/6x4");
#endif

// --- GLM ----------------------------------------------------------------------------------------
#ifdef MATH_HAVE_GLM
using G = glm::dmat3;
G ToGlm(const M& m) {
    G g;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) g[j][i] = m.Get(i, j);  // GLM indexes column first
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
void Determinant_glm(benchmark::State& state) {
    Run(state, [](int i) { KeepAlive(glm::determinant(kGA[i])); });
}
BENCHMARK(Multiply_glm)->Name("Multiply/glm");
BENCHMARK(Invert_glm)->Name("Invert/glm");
BENCHMARK(Determinant_glm)->Name("Determinant/glm");
#endif

}  // namespace
