// Three-component vector operations in double precision against Eigen (Vector3d) and GLM (dvec3).
// Each benchmark runs the operation over the same 1024 random vectors; every result is kept
// alive on its own, so what is measured is the operation as a caller meets it, not how well the
// compiler vectorises a loop of it.
#include <random>
#include <vector>

#include "math/vectors/vector3.h"
#include "peer_ratio.h"

#ifdef MATH_HAVE_EIGEN
#include <Eigen/Dense>
#endif
#ifdef MATH_HAVE_GLM
#include <glm/glm.hpp>
#endif

namespace {

using V = C3DVector3Tpl<double>;
constexpr int kCount = 1024;

std::vector<V> RandomVectors(unsigned seed) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> d(-10, 10);
    std::vector<V> out(kCount);
    for (V& v : out) v.Set(d(rng), d(rng), d(rng));
    return out;
}

const std::vector<V> kA = RandomVectors(1);
const std::vector<V> kB = RandomVectors(2);
const std::vector<V> kC = RandomVectors(3);
const std::vector<V> kP = RandomVectors(4);

// Keeps the three components alive in registers: taking the address of a whole vector would make
// the compiler copy it through the stack, which measures the harness rather than the operation.
template <typename Vec>
inline void Sink(const Vec& v) {
    double x = v[0], y = v[1], z = v[2];
    KeepAlive(x);
    KeepAlive(y);
    KeepAlive(z);
}

template <typename Body>
void Run(benchmark::State& state, Body body) {
    RunEach(state, kCount, body);
}

// --- ours ---------------------------------------------------------------------------------------
void Normalize_ours(benchmark::State& state) {
    std::vector<V> a = kA;
    Run(state, [&](int i) {
        V v = a[i];
        v.Normalize();
        Sink(v);
    });
}
void Cross_ours(benchmark::State& state) {
    Run(state, [&](int i) {
        V c;
        c.SetCross(kA[i], kB[i]);
        Sink(c);
    });
}
void Dot_ours(benchmark::State& state) {
    Run(state, [&](int i) { KeepAlive(GetDot(kA[i], kB[i])); });
}
void Length_ours(benchmark::State& state) {
    Run(state, [&](int i) { KeepAlive(kA[i].GetLength()); });
}
void SetMinimalMagnitude_ours(benchmark::State& state) {
    Run(state, [&](int i) {
        V v = kA[i];
        v.SetMinimal(kB[i], 1);
        Sink(v);
    });
}
void SetMinimalMax_ours(benchmark::State& state) {
    Run(state, [&](int i) {
        V v = kA[i];
        v.SetMinimal(kB[i], 0);
        Sink(v);
    });
}
void Barycentric_ours(benchmark::State& state) {
    Run(state, [&](int i) {
        V w;
        GetBarycentricCoords(kP[i], kA[i], kB[i], kC[i], w.x, w.y, w.z);
        Sink(w);
    });
}
BENCHMARK(Normalize_ours)->Name("Normalize/ours");
BENCHMARK(Cross_ours)->Name("Cross/ours");
BENCHMARK(Dot_ours)->Name("Dot/ours");
BENCHMARK(Length_ours)->Name("Length/ours");
BENCHMARK(SetMinimalMagnitude_ours)->Name("SetMinimal(magnitude)/ours");
BENCHMARK(SetMinimalMax_ours)->Name("SetMinimal(max)/ours");
BENCHMARK(Barycentric_ours)->Name("GetBarycentricCoords/ours");

// --- Eigen --------------------------------------------------------------------------------------
#ifdef MATH_HAVE_EIGEN
using E = Eigen::Vector3d;
E ToEigen(const V& v) { return E(v.x, v.y, v.z); }
const std::vector<E> kEA = Converted<E>(kA, ToEigen);
const std::vector<E> kEB = Converted<E>(kB, ToEigen);
const std::vector<E> kEC = Converted<E>(kC, ToEigen);
const std::vector<E> kEP = Converted<E>(kP, ToEigen);

void Normalize_eigen(benchmark::State& state) {
    std::vector<E> a = kEA;
    Run(state, [&](int i) {
        E v = a[i];
        v.normalize();
        Sink(v);
    });
}
void Cross_eigen(benchmark::State& state) {
    Run(state, [&](int i) { Sink(E(kEA[i].cross(kEB[i]))); });
}
void Dot_eigen(benchmark::State& state) {
    Run(state, [&](int i) { KeepAlive(kEA[i].dot(kEB[i])); });
}
void Length_eigen(benchmark::State& state) {
    Run(state, [&](int i) { KeepAlive(kEA[i].norm()); });
}
void SetMinimalMagnitude_eigen(benchmark::State& state) {
    Run(state, [&](int i) {
        const E& v = kEA[i];
        const E& m = kEB[i];
        const E sign = (v.array() >= 0.0).select(m, -m);
        Sink(E((m.array() > v.array().abs()).select(sign, v)));
    });
}
void SetMinimalMax_eigen(benchmark::State& state) {
    Run(state, [&](int i) { Sink(E(kEA[i].cwiseMax(kEB[i]))); });
}
void Barycentric_eigen(benchmark::State& state) {
    Run(state, [&](int i) {
        const E &p = kEP[i], &a = kEA[i], &b = kEB[i], &c = kEC[i];
        double u = 0.5 * (c - b).cross(p - b).norm();
        double v = 0.5 * (a - c).cross(p - c).norm();
        double w = 0.5 * (b - a).cross(p - a).norm();
        const double s = u + v + w;
        const double f = s == 0 ? s : 1 / s;
        Sink(E(u * f, v * f, w * f));
    });
}
BENCHMARK(Normalize_eigen)->Name("Normalize/eigen");
BENCHMARK(Cross_eigen)->Name("Cross/eigen");
BENCHMARK(Dot_eigen)->Name("Dot/eigen");
BENCHMARK(Length_eigen)->Name("Length/eigen");
BENCHMARK(SetMinimalMagnitude_eigen)->Name("SetMinimal(magnitude)/eigen");
BENCHMARK(SetMinimalMax_eigen)->Name("SetMinimal(max)/eigen");
BENCHMARK(Barycentric_eigen)->Name("GetBarycentricCoords/eigen");
#endif

// --- GLM ----------------------------------------------------------------------------------------
#ifdef MATH_HAVE_GLM
using G = glm::dvec3;
G ToGlm(const V& v) { return G(v.x, v.y, v.z); }
const std::vector<G> kGA = Converted<G>(kA, ToGlm);
const std::vector<G> kGB = Converted<G>(kB, ToGlm);
const std::vector<G> kGC = Converted<G>(kC, ToGlm);
const std::vector<G> kGP = Converted<G>(kP, ToGlm);

void Normalize_glm(benchmark::State& state) {
    std::vector<G> a = kGA;
    Run(state, [&](int i) { Sink(glm::normalize(a[i])); });
}
void Cross_glm(benchmark::State& state) {
    Run(state, [&](int i) { Sink(glm::cross(kGA[i], kGB[i])); });
}
void Dot_glm(benchmark::State& state) {
    Run(state, [&](int i) { KeepAlive(glm::dot(kGA[i], kGB[i])); });
}
void Length_glm(benchmark::State& state) {
    Run(state, [&](int i) { KeepAlive(glm::length(kGA[i])); });
}
void SetMinimalMagnitude_glm(benchmark::State& state) {
    Run(state, [&](int i) {
        const G& v = kGA[i];
        const G& m = kGB[i];
        const G sign = glm::mix(-m, m, glm::greaterThanEqual(v, G(0)));
        Sink(glm::mix(v, sign, glm::greaterThan(m, glm::abs(v))));
    });
}
void SetMinimalMax_glm(benchmark::State& state) {
    Run(state, [&](int i) { Sink(glm::max(kGA[i], kGB[i])); });
}
void Barycentric_glm(benchmark::State& state) {
    Run(state, [&](int i) {
        const G &p = kGP[i], &a = kGA[i], &b = kGB[i], &c = kGC[i];
        double u = 0.5 * glm::length(glm::cross(c - b, p - b));
        double v = 0.5 * glm::length(glm::cross(a - c, p - c));
        double w = 0.5 * glm::length(glm::cross(b - a, p - a));
        const double s = u + v + w;
        const double f = s == 0 ? s : 1 / s;
        Sink(G(u * f, v * f, w * f));
    });
}
BENCHMARK(Normalize_glm)->Name("Normalize/glm");
BENCHMARK(Cross_glm)->Name("Cross/glm");
BENCHMARK(Dot_glm)->Name("Dot/glm");
BENCHMARK(Length_glm)->Name("Length/glm");
BENCHMARK(SetMinimalMagnitude_glm)->Name("SetMinimal(magnitude)/glm");
BENCHMARK(SetMinimalMax_glm)->Name("SetMinimal(max)/glm");
BENCHMARK(Barycentric_glm)->Name("GetBarycentricCoords/glm");
#endif

}  // namespace
