#pragma once
// GUID / IID and their comparison.
#include <cstring>

#include "math/foundations/export.h"
#include "math/platform/win_types.h"

struct MATH_API GUID {
    DWORD Data1;
    WORD Data2;
    WORD Data3;
    BYTE Data4[8];
};
using IID = GUID;
using CLSID = GUID;
using REFGUID = const GUID&;
using REFIID = const IID&;
using REFCLSID = const CLSID&;

inline BOOL IsEqualGUID(REFGUID a, REFGUID b) {
    return std::memcmp(&a, &b, sizeof(GUID)) == 0 ? TRUE : FALSE;
}
inline BOOL IsEqualIID(REFIID a, REFIID b) { return IsEqualGUID(a, b); }
inline bool operator==(REFGUID a, REFGUID b) { return IsEqualGUID(a, b) != FALSE; }
inline bool operator!=(REFGUID a, REFGUID b) { return !(a == b); }

// {00000000-0000-0000-C000-000000000046}
extern "C" MATH_API const IID IID_IUnknown;
