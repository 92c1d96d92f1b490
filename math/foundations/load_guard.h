#pragma once
// Library load and unload.
//
// Two static instances of _Initializermath, the first and the last of the library's static
// objects, share a counter: loading takes it 0 -> 1 (register the library with the runtime)
// -> 2 (the runtime's post-construct step), unloading 2 -> 1 -> 0 in reverse. A third
// construction or destruction is reported and changes nothing; a call made while another one is
// running (re-entrancy during load or unload) is ignored.
#include "math/foundations/export.h"
#include "math/platform/win_types.h"

class MATH_API _Initializermath {
public:
    _Initializermath();
    ~_Initializermath();
    _Initializermath(const _Initializermath&) = delete;
    _Initializermath& operator=(const _Initializermath&) = delete;

    // Load state: 0 unloaded, 1 registered, 2 constructed.
    static int ref;
    // The module handle the runtime gave at registration.
    static HINSTANCE handle;
    // Set while a constructor or destructor runs.
    static bool infunc;

private:
    static void pre_construct();
    static void construct();
    static void destruct();
    static int post_destruct();
};

// The library's entry point: TRUE for every reason; on process attach it first asks the runtime
// for no per-thread notifications.
extern "C" MATH_API BOOL _math_DllMain(HINSTANCE module, DWORD reason, LPVOID reserved);
// The wrapped entry point registered with the runtime.
extern "C" MATH_API BOOL Mw___math_wrapDllMain(HINSTANCE module, DWORD reason, LPVOID reserved);
