#include "math/platform/task_memory.h"

#include <cstdlib>

extern "C" {

LPVOID CoTaskMemAlloc(SIZE_T size) { return std::malloc(size == 0 ? 1 : size); }

LPVOID CoTaskMemRealloc(LPVOID block, SIZE_T size) {
    return std::realloc(block, size == 0 ? 1 : size);
}

void CoTaskMemFree(LPVOID block) { std::free(block); }

}  // extern "C"
