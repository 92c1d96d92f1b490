// The last static object of the library: completes its construction on load and starts its
// destruction on unload.
#include "math/foundations/load_guard.h"

namespace {
_Initializermath g_loadGuardLast;
}
