#include "math/platform/runtime_hooks.h"

#include <cstdio>
#include <cstring>

namespace {

// One slot per loaded library; the address of a slot is the library's module handle.
struct Registration {
    const char* name;
    MwDllEntryPoint entry;
    bool used;
};

constexpr int kMaxLibraries = 64;
Registration g_libraries[kMaxLibraries];

Registration* FromHandle(HINSTANCE module) {
    auto* slot = static_cast<Registration*>(module);
    if (slot < g_libraries || slot >= g_libraries + kMaxLibraries || !slot->used) return nullptr;
    return slot;
}

}  // namespace

extern "C" {

HINSTANCE MwInitDLL(LPCSTR name, MwDllEntryPoint wrappedEntry, MwDllEntryPoint rawEntry,
                    LPVOID /*dependencyNode*/) {
    for (Registration& slot : g_libraries) {
        if (!slot.used) {
            slot = {name, wrappedEntry != nullptr ? wrappedEntry : rawEntry, true};
            return &slot;
        }
    }
    return nullptr;
}

void MwDllInPostConstruct(HINSTANCE module) {
    if (Registration* slot = FromHandle(module); slot != nullptr && slot->entry != nullptr)
        slot->entry(module, DLL_PROCESS_ATTACH, nullptr);
}

void MwDllInPreDestruct(HINSTANCE module) {
    if (Registration* slot = FromHandle(module); slot != nullptr && slot->entry != nullptr)
        slot->entry(module, DLL_PROCESS_DETACH, nullptr);
}

void MwDllInPostDestruct(HINSTANCE module) {
    if (Registration* slot = FromHandle(module)) *slot = {};
}

void MwApplicationBugCheck(LPCSTR message) {
    std::fprintf(stderr, "%s\n", message != nullptr ? message : "");
}

BOOL DisableThreadLibraryCalls(HMODULE /*module*/) { return TRUE; }

BOOL CharToOemA(LPCSTR src, LPSTR dst) {
    if (src == nullptr || dst == nullptr) return FALSE;
    if (src != dst) std::memmove(dst, src, std::strlen(src) + 1);
    return TRUE;
}

}  // extern "C"
