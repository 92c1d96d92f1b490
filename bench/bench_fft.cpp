// Transform kernels against FFTW 3 (double precision, plans made once with FFTW_MEASURE and
// reused, in place like ours) and KissFFT (single precision: the Debian package has only the
// float library, so it is a secondary reference that does half the memory traffic).
//   cdft   complex DFT of the argument's number of complex values, sign -1 (FFTW_FORWARD)
//   rdft   real DFT of the argument's number of values (FFTW r2c)
//   ddct   DCT-II of the argument's number of values (FFTW REDFT10; KissFFT has none)
//   rdft2d real 2D DFT of 512 x 512 values (FFTW r2c 2D)
// Each iteration transforms the same array again; the values grow, which costs nothing on x86.
#include <cstring>
#include <map>
#include <memory>
#include <new>
#include <vector>

#include "math/signal/fft_kernels.h"
#include "peer_ratio.h"

#ifdef MATH_HAVE_FFTW
#include <fftw3.h>
#endif
#ifdef MATH_HAVE_KISSFFT
#include <kissfft/kiss_fft.h>
#include <kissfft/kiss_fftr.h>
#endif

namespace {

// Arrays aligned on cache lines, as FFTW's own allocator gives.
template <typename T>
struct Aligned {
    using value_type = T;
    Aligned() = default;
    template <typename U>
    Aligned(const Aligned<U>&) {}
    T* allocate(size_t n) { return static_cast<T*>(::operator new(n * sizeof(T), std::align_val_t(64))); }
    void deallocate(T* p, size_t) { ::operator delete(p, std::align_val_t(64)); }
    bool operator==(const Aligned&) const { return true; }
    bool operator!=(const Aligned&) const { return false; }
};
using Doubles = std::vector<double, Aligned<double>>;

Doubles Signal(size_t n) {
    Doubles v(n);
    for (size_t i = 0; i < n; ++i) v[i] = double((i * 7919) % 1000) / 1000.0 - 0.5;
    return v;
}

// Tables of our kernels, built by one call before the timing.
struct OurTables {
    std::vector<int> ip;
    Doubles w, t;
    explicit OurTables(int n) : ip(2 + 2048, 0), w(2 * size_t(n)), t(8 * size_t(n)) {}
};

constexpr int kSide = 512;  // of the 2D transform

template <typename Body>
void Loop(benchmark::State& state, double* data, Body body) {
    for (auto _ : state) {
        body();
        benchmark::ClobberMemory();
    }
    KeepAlive(data[1]);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// --- ours ---------------------------------------------------------------------------------------
void Cdft_ours(benchmark::State& state) {
    const int n = 2 * int(state.range(0));
    Doubles a = Signal(n);
    OurTables tb(n);
    cdft(n, -1, a.data(), tb.ip.data(), tb.w.data());
    Loop(state, a.data(), [&] { cdft(n, -1, a.data(), tb.ip.data(), tb.w.data()); });
}
void Rdft_ours(benchmark::State& state) {
    const int n = int(state.range(0));
    Doubles a = Signal(n);
    OurTables tb(n);
    rdft(n, 1, a.data(), tb.ip.data(), tb.w.data());
    Loop(state, a.data(), [&] { rdft(n, 1, a.data(), tb.ip.data(), tb.w.data()); });
}
void Ddct_ours(benchmark::State& state) {
    const int n = int(state.range(0));
    Doubles a = Signal(n);
    OurTables tb(n);
    ddct(n, -1, a.data(), tb.ip.data(), tb.w.data());
    Loop(state, a.data(), [&] { ddct(n, -1, a.data(), tb.ip.data(), tb.w.data()); });
}
void Rdft2d_ours(benchmark::State& state) {
    const int n = kSide;
    Doubles a = Signal(size_t(n) * n);
    std::vector<double*> rows(n);
    for (int i = 0; i < n; ++i) rows[i] = &a[size_t(i) * n];
    OurTables tb(n);
    rdft2d(n, n, 1, rows.data(), tb.t.data(), tb.ip.data(), tb.w.data());
    Loop(state, a.data(),
         [&] { rdft2d(n, n, 1, rows.data(), tb.t.data(), tb.ip.data(), tb.w.data()); });
}

// --- FFTW ---------------------------------------------------------------------------------------
#ifdef MATH_HAVE_FFTW
// One plan per transform and size, made on first use over an array that then keeps serving it.
struct FftwCase {
    double* data = nullptr;
    fftw_plan plan = nullptr;
};
template <typename MakePlan>
FftwCase& Planned(const char* kind, int size, size_t doubles, MakePlan make) {
    static std::map<std::pair<std::string, int>, FftwCase> cases;
    FftwCase& c = cases[{kind, size}];
    if (!c.plan) {
        c.data = static_cast<double*>(fftw_malloc(sizeof(double) * doubles));
        c.plan = make(c.data);  // FFTW_MEASURE overwrites the array
    }
    const Doubles v = Signal(doubles);
    std::memcpy(c.data, v.data(), sizeof(double) * doubles);
    return c;
}
void Cdft_fftw(benchmark::State& state) {
    const int n = int(state.range(0));
    FftwCase& c = Planned("cdft", n, 2 * size_t(n), [n](double* d) {
        auto* z = reinterpret_cast<fftw_complex*>(d);
        return fftw_plan_dft_1d(n, z, z, FFTW_FORWARD, FFTW_MEASURE);
    });
    Loop(state, c.data, [&] { fftw_execute(c.plan); });
}
void Rdft_fftw(benchmark::State& state) {
    const int n = int(state.range(0));
    FftwCase& c = Planned("rdft", n, size_t(n) + 2, [n](double* d) {
        return fftw_plan_dft_r2c_1d(n, d, reinterpret_cast<fftw_complex*>(d), FFTW_MEASURE);
    });
    Loop(state, c.data, [&] { fftw_execute(c.plan); });
}
void Ddct_fftw(benchmark::State& state) {
    const int n = int(state.range(0));
    FftwCase& c = Planned("ddct", n, size_t(n), [n](double* d) {
        return fftw_plan_r2r_1d(n, d, d, FFTW_REDFT10, FFTW_MEASURE);
    });
    Loop(state, c.data, [&] { fftw_execute(c.plan); });
}
void Rdft2d_fftw(benchmark::State& state) {
    FftwCase& c = Planned("rdft2d", kSide, size_t(kSide) * (kSide + 2), [](double* d) {
        return fftw_plan_dft_r2c_2d(kSide, kSide, d, reinterpret_cast<fftw_complex*>(d),
                                    FFTW_MEASURE);
    });
    Loop(state, c.data, [&] { fftw_execute(c.plan); });
}
#endif

// --- KissFFT (single precision) -------------------------------------------------------------
#ifdef MATH_HAVE_KISSFFT
std::vector<float> FloatSignal(size_t n) {
    const Doubles v = Signal(n);
    return std::vector<float>(v.begin(), v.end());
}
void Cdft_kissfft(benchmark::State& state) {
    state.SetLabel("single precision");
    const int n = int(state.range(0));
    kiss_fft_cfg cfg = kiss_fft_alloc(n, 0, nullptr, nullptr);
    std::vector<float> in = FloatSignal(2 * size_t(n)), out(2 * size_t(n));
    auto* x = reinterpret_cast<kiss_fft_cpx*>(in.data());
    auto* y = reinterpret_cast<kiss_fft_cpx*>(out.data());
    for (auto _ : state) {
        kiss_fft(cfg, x, y);
        benchmark::ClobberMemory();
    }
    KeepAlive(out[1]);
    kiss_fft_free(cfg);
    state.SetItemsProcessed(state.iterations() * n);
}
void Rdft_kissfft(benchmark::State& state) {
    state.SetLabel("single precision");
    const int n = int(state.range(0));
    kiss_fftr_cfg cfg = kiss_fftr_alloc(n, 0, nullptr, nullptr);
    std::vector<float> in = FloatSignal(size_t(n)), out(size_t(n) + 2);
    for (auto _ : state) {
        kiss_fftr(cfg, in.data(), reinterpret_cast<kiss_fft_cpx*>(out.data()));
        benchmark::ClobberMemory();
    }
    KeepAlive(out[1]);
    kiss_fftr_free(cfg);
    state.SetItemsProcessed(state.iterations() * n);
}
#endif

void Sizes(benchmark::internal::Benchmark* b) {
    for (int log2 : {10, 14, 18, 20}) b->Arg(1 << log2);
    b->Unit(benchmark::kMicrosecond);
}
void Square(benchmark::internal::Benchmark* b) { b->Arg(512)->Unit(benchmark::kMicrosecond); }

}  // namespace

BENCHMARK(Cdft_ours)->Name("cdft/ours")->Apply(Sizes);
BENCHMARK(Rdft_ours)->Name("rdft/ours")->Apply(Sizes);
BENCHMARK(Ddct_ours)->Name("ddct/ours")->Apply(Sizes);
BENCHMARK(Rdft2d_ours)->Name("rdft2d/ours")->Apply(Square);
#ifdef MATH_HAVE_FFTW
BENCHMARK(Cdft_fftw)->Name("cdft/fftw")->Apply(Sizes);
BENCHMARK(Rdft_fftw)->Name("rdft/fftw")->Apply(Sizes);
BENCHMARK(Ddct_fftw)->Name("ddct/fftw")->Apply(Sizes);
BENCHMARK(Rdft2d_fftw)->Name("rdft2d/fftw")->Apply(Square);
#endif
#ifdef MATH_HAVE_KISSFFT
BENCHMARK(Cdft_kissfft)->Name("cdft/kissfft")->Apply(Sizes);
BENCHMARK(Rdft_kissfft)->Name("rdft/kissfft")->Apply(Sizes);
#endif
