#pragma once
// The library-management services of the Win32-compatibility runtime that a library calls from
// its load guard and entry point, and the code-page conversion of dump titles.
//
// On Linux the stand-in keeps a small table of registered libraries: MwInitDLL hands out a module
// handle, MwDllInPostConstruct runs the library's entry point for process attach,
// MwDllInPreDestruct for process detach, and MwDllInPostDestruct forgets the library.
#include "math/foundations/export.h"
#include "math/platform/win_types.h"

// The entry point of a library: (module, reason, reserved) -> TRUE on success.
using MwDllEntryPoint = BOOL (*)(HINSTANCE module, DWORD reason, LPVOID reserved);

// Registers a library under name with its wrapped and raw entry points and its dependency node
// (opaque to the runtime stand-in). Returns the module handle, or null when the table is full.
extern "C" MATH_API HINSTANCE MwInitDLL(LPCSTR name, MwDllEntryPoint wrappedEntry,
                                        MwDllEntryPoint rawEntry, LPVOID dependencyNode);
// Runs after the library's static objects are built: calls its entry point for process attach.
extern "C" MATH_API void MwDllInPostConstruct(HINSTANCE module);
// Runs before the library's static objects are destroyed: calls its entry point for detach.
extern "C" MATH_API void MwDllInPreDestruct(HINSTANCE module);
// Runs after the library's static objects are destroyed: the handle is no longer valid.
extern "C" MATH_API void MwDllInPostDestruct(HINSTANCE module);
// Reports a broken invariant of the application or a library; on Linux the message goes to the
// standard error stream, followed by a line end, and execution goes on.
extern "C" MATH_API void MwApplicationBugCheck(LPCSTR message);
// Asks for no per-thread attach/detach calls of the library's entry point. Always TRUE here.
extern "C" MATH_API BOOL DisableThreadLibraryCalls(HMODULE module);
// Converts text from the Windows code page to the OEM (console) code page. Linux has one code
// page for both, so this copies src to dst (which may be src itself). FALSE for null arguments.
extern "C" MATH_API BOOL CharToOemA(LPCSTR src, LPSTR dst);
