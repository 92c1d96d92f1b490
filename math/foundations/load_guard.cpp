#include "math/foundations/load_guard.h"

#include "math/platform/runtime_hooks.h"

int _Initializermath::ref = 0;
HINSTANCE _Initializermath::handle = nullptr;
bool _Initializermath::infunc = false;

namespace {

// The runtime's image-base pointer of this library.
HINSTANCE g_imageBase = nullptr;

// Sets the re-entrancy flag for the duration of a call and clears it on every way out.
class InFunction {
public:
    InFunction() : entered_(!_Initializermath::infunc) { _Initializermath::infunc = true; }
    ~InFunction() {
        if (entered_) _Initializermath::infunc = false;
    }
    InFunction(const InFunction&) = delete;
    InFunction& operator=(const InFunction&) = delete;
    bool Entered() const { return entered_; }

private:
    bool entered_;
};

}  // namespace

_Initializermath::_Initializermath() {
    const InFunction guard;
    if (!guard.Entered()) return;
    switch (ref) {
        case 0:
            ref = 1;
            pre_construct();
            break;
        case 1:
            ref = 2;
            construct();
            break;
        default:
            MwApplicationBugCheck(" *** Called constructor of DLL math more then once !!! ***");
            break;
    }
}

_Initializermath::~_Initializermath() {
    const InFunction guard;
    if (!guard.Entered()) return;
    switch (ref) {
        case 2:
            ref = 1;
            destruct();
            break;
        case 1:
            ref = 0;
            post_destruct();
            break;
        default:
            MwApplicationBugCheck(" *** Called destructor of DLL math more then once !!! ***");
            break;
    }
}

void _Initializermath::pre_construct() {
    handle = MwInitDLL("math", &Mw___math_wrapDllMain, &_math_DllMain, nullptr);
    g_imageBase = handle;
}

void _Initializermath::construct() { MwDllInPostConstruct(handle); }

void _Initializermath::destruct() { MwDllInPreDestruct(handle); }

int _Initializermath::post_destruct() {
    if (ref != 0) return ref;
    MwDllInPostDestruct(handle);
    return 0;
}

extern "C" BOOL _math_DllMain(HINSTANCE module, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) DisableThreadLibraryCalls(module);
    return TRUE;
}

extern "C" BOOL Mw___math_wrapDllMain(HINSTANCE module, DWORD reason, LPVOID reserved) {
    return _math_DllMain(module, reason, reserved);
}
