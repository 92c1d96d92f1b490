#pragma once
// Shared main of the benchmark programs.
//
// Benchmarks are named "<operation>/<implementation>", the implementation being "ours" or a
// peer ("eigen", "glm", "fftw", "kissfft"), optionally followed by "/<argument>". After the run a
// table gives, per operation and argument, ours / peer for every peer measured in the same run
// (below 1.0: ours is faster), and ours / the fastest peer.
#include <benchmark/benchmark.h>

#include <vector>

// Keeps the optimiser from discarding a computed value or from hoisting a load out of a loop.
template <typename T>
inline void KeepAlive(T&& value) {
    benchmark::DoNotOptimize(value);
}

// Each value of in converted for a peer, in the same order.
template <typename Out, typename In, typename Convert>
std::vector<Out> Converted(const std::vector<In>& in, Convert convert) {
    std::vector<Out> out;
    out.reserve(in.size());
    for (const In& value : in) out.push_back(convert(value));
    return out;
}

// Runs body(0) .. body(count - 1) per benchmark iteration and counts them as the items processed.
template <typename Body>
void RunEach(benchmark::State& state, int count, Body body) {
    for (auto _ : state) {
        for (int i = 0; i < count; ++i) body(i);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * count);
}
