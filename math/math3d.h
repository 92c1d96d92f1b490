#pragma once
// The whole public interface of the math library, and the platform declarations it uses.

// Platform: Win32-compatibility runtime and host declarations.
#include "math/platform/platform.h"

// Numeric foundations.
#include "math/foundations/dump.h"
#include "math/foundations/export.h"
#include "math/foundations/init_request.h"
#include "math/foundations/load_guard.h"
#include "math/foundations/scalar.h"
#include "math/foundations/tolerance.h"

// Vectors.
#include "math/vectors/vector3.h"

// Signal processing.
#include "math/signal/dsp_signal.h"
#include "math/signal/dsp_transform.h"
#include "math/signal/fft_kernels.h"
