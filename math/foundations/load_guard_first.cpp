// The first static object of the library: registers it with the runtime on load and releases
// it last on unload.
#include "math/foundations/load_guard.h"

namespace {
_Initializermath g_loadGuardFirst;
}
