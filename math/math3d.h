#pragma once
// The whole public interface of the math library, and the platform declarations it uses.

// Platform: Win32-compatibility runtime and host declarations.
#include "math/platform/platform.h"

// Numeric foundations.
#include "math/foundations/dump.h"
#include "math/foundations/export.h"
#include "math/foundations/init_request.h"
#include "math/foundations/load_guard.h"
#include "math/foundations/polynomial_roots.h"
#include "math/foundations/scalar.h"
#include "math/foundations/tolerance.h"

// Vectors.
#include "math/vectors/color.h"
#include "math/vectors/vector2.h"
#include "math/vectors/vector3.h"
#include "math/vectors/vector4.h"
#include "math/vectors/weighted_vector.h"

// Matrices.
#include "math/matrices/matrix33.h"
#include "math/matrices/matrix44.h"
#include "math/matrices/matrix_mn.h"
#include "math/matrices/rotation_matrix.h"
#include "math/matrices/transformation_matrix.h"

// Rotations.
#include "math/rotations/euler_angles.h"
#include "math/rotations/euler_target.h"
#include "math/rotations/quaternion.h"
#include "math/rotations/rotation.h"
#include "math/rotations/rotation3.h"
#include "math/rotations/rotation_order.h"

// Signal processing.
#include "math/signal/dsp_signal.h"
#include "math/signal/dsp_transform.h"
#include "math/signal/fft_kernels.h"

// Noise tables and random numbers.
#include "math/noise/bsd_random.h"
#include "math/noise/perlin_noise.h"
