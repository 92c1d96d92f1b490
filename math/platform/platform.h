#pragma once
// Everything the library declares of the Win32-compatibility runtime and of the host.
#include "math/platform/guid.h"
#include "math/platform/kel_vector.h"
#include "math/platform/runtime_hooks.h"
#include "math/platform/stream.h"
#include "math/platform/task_memory.h"
#include "math/platform/unknown.h"
#include "math/platform/win_types.h"
