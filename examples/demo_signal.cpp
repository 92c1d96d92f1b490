// Signals: low-pass filtering with the real FFT and 8 x 8 block compression with the 2D DCT.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <iostream>
#include <random>

#include "demo_sections.h"
#include "math/math3d.h"

namespace {

double Rms(const double* a, const double* b, int n) {
    double sum = 0;
    for (int i = 0; i < n; ++i) sum += (a[i] - b[i]) * (a[i] - b[i]);
    return std::sqrt(sum / n);
}

void LowPass() {
    const int n = 256;
    const double pi = 3.141592653589793;
    double clean[n];
    CDSPSignal1D signal(n);
    std::mt19937 rng(7);
    std::normal_distribution<double> noise(0.0, 0.3);
    for (int i = 0; i < n; ++i) {
        clean[i] = std::sin(2 * pi * 3 * i / n) + 0.5 * std::sin(2 * pi * 7 * i / n);
        signal.data[i] = clean[i] + noise(rng);
    }
    std::printf("Noisy signal of %d samples (tones at 3 and 7 cycles), rms error %.4f\n", n,
                Rms(signal.data, clean, n));

    // rdft: a[2k], a[2k+1] hold bin k (a[1] holds bin n/2); keep bins 0..16.
    CDSPTransform1D transform;
    transform.RealFFT(1, &signal);
    const int cutoff = 16;
    signal.data[1] = 0;
    for (int k = cutoff + 1; k < n / 2; ++k) signal.data[2 * k] = signal.data[2 * k + 1] = 0;
    transform.RealFFT(-1, &signal);  // n/2 times the inverse
    for (int i = 0; i < n; ++i) signal.data[i] *= 2.0 / n;
    std::printf("After keeping the bins up to %d: rms error %.4f\n", cutoff,
                Rms(signal.data, clean, n));
}

void CompressBlock() {
    const int n = 8;
    CDSPSignal2D block(n, n);
    double original[n][n];
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            block.rows[i][j] = original[i][j] =
                100 + 10 * i - 6 * j +
                20 * std::exp(-((i - 3) * (i - 3) + (j - 4) * (j - 4)) / 6.0);

    CDSPTransform2D transform;
    transform.RealDCT(-1, &block);  // DCT-II along both indices
    // Keep the 12 largest coefficients.
    double magnitudes[n * n];
    for (int i = 0; i < n * n; ++i) magnitudes[i] = std::fabs(block.rows[i / n][i % n]);
    std::sort(magnitudes, magnitudes + n * n, std::greater<double>());
    int kept = 0;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            if (std::fabs(block.rows[i][j]) < magnitudes[11])
                block.rows[i][j] = 0;
            else
                ++kept;
        }
    // Inverse: halve row 0 and column 0, DCT-III, scale by 4 / (n1 n2).
    for (int k = 0; k < n; ++k) block.rows[0][k] *= 0.5, block.rows[k][0] *= 0.5;
    transform.RealDCT(1, &block);
    double worst = 0;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j)
            worst = std::fmax(worst, std::fabs(block.rows[i][j] * 4.0 / (n * n) - original[i][j]));
    std::printf(
        "8 x 8 block through the 2D DCT keeping %d of 64 coefficients: max error %.3f (values "
        "60..190)\n",
        kept, worst);
}

}  // namespace

void DemoSignal() {
    std::cout << "\n-- Signals --\n";
    LowPass();
    CompressBlock();
}
