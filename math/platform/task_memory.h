#pragma once
// The COM task allocator: memory handed across the library boundary (contact arrays, strings)
// is allocated here and freed by whoever receives it.
#include "math/foundations/export.h"
#include "math/platform/win_types.h"

// A block of at least size bytes, or null when the memory cannot be had (also for size 0,
// which yields a valid unique block as the Win32 allocator does).
extern "C" MATH_API LPVOID CoTaskMemAlloc(SIZE_T size);
// Resizes a block from CoTaskMemAlloc; a null block allocates, and on failure the old block stays.
extern "C" MATH_API LPVOID CoTaskMemRealloc(LPVOID block, SIZE_T size);
// Frees a block from CoTaskMemAlloc; null is accepted.
extern "C" MATH_API void CoTaskMemFree(LPVOID block);
