#pragma once
// Shared main of the benchmark programs.
//
// Benchmarks are named "<operation>/<implementation>", the implementation being "ours" or a
// peer ("eigen", "glm", "fftw", "kissfft"), optionally followed by "/<argument>". After the run a
// table gives, per operation and argument, ours / peer for every peer measured in the same run
// (below 1.0: ours is faster), and ours / the fastest peer.
#include <benchmark/benchmark.h>

// Keeps the optimiser from discarding a computed value or from hoisting a load out of a loop.
template <typename T>
inline void KeepAlive(T&& value) {
    benchmark::DoNotOptimize(value);
}
