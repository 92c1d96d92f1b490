#pragma once
// IUnknown: the reference-counting and query base of every COM interface.
#include "math/platform/guid.h"

struct MATH_API IUnknown {
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) = 0;
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
    virtual ULONG STDMETHODCALLTYPE Release() = 0;

protected:
    // Objects are destroyed by their last Release, never through an interface pointer.
    ~IUnknown() = default;
};
