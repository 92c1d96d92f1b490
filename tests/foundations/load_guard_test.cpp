#include "math/foundations/load_guard.h"

#include <gtest/gtest.h>

namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

TEST(LoadGuard, LoadGoesUpToTwoAndUnloadBackToZero) {
    // As the library's statics left it: loaded and registered.
    EXPECT_EQ(_Initializermath::ref, 2);
    EXPECT_FALSE(_Initializermath::infunc);
    const HINSTANCE loaded = _Initializermath::handle;
    EXPECT_NE(loaded, nullptr);
    _Initializermath::ref = 0;
    CaptureStderr();
    {
        _Initializermath first;  // registers: a new module handle
        EXPECT_EQ(_Initializermath::ref, 1);
        EXPECT_NE(_Initializermath::handle, nullptr);
        EXPECT_NE(_Initializermath::handle, loaded);
        {
            _Initializermath last;
            EXPECT_EQ(_Initializermath::ref, 2);
        }
        EXPECT_EQ(_Initializermath::ref, 1);
    }
    EXPECT_EQ(_Initializermath::ref, 0);
    EXPECT_EQ(GetCapturedStderr(), "");
    _Initializermath::ref = 2;
    _Initializermath::handle = loaded;
}

TEST(LoadGuard, ExtraConstructionIsReportedAndChangesNothing) {
    CaptureStderr();
    {
        _Initializermath extra;
        EXPECT_EQ(_Initializermath::ref, 2);
        EXPECT_FALSE(_Initializermath::infunc);
        _Initializermath::ref = 0;  // so that the destructor below reports too
    }
    EXPECT_EQ(GetCapturedStderr(),
              " *** Called constructor of DLL math more then once !!! ***\n"
              " *** Called destructor of DLL math more then once !!! ***\n");
    _Initializermath::ref = 2;
}

TEST(LoadGuard, NestedCallsAreIgnored) {
    _Initializermath::infunc = true;
    CaptureStderr();
    {
        _Initializermath nested;  // neither the constructor nor the destructor does anything
        EXPECT_EQ(_Initializermath::ref, 2);
    }
    EXPECT_EQ(GetCapturedStderr(), "");
    EXPECT_EQ(_Initializermath::ref, 2);
    EXPECT_TRUE(_Initializermath::infunc);  // still owned by the outer call
    _Initializermath::infunc = false;
}

TEST(LoadGuard, EntryPointSucceedsForEveryReason) {
    for (DWORD reason : {DLL_PROCESS_DETACH, DLL_PROCESS_ATTACH, DLL_THREAD_ATTACH,
                         DLL_THREAD_DETACH, DWORD(77)}) {
        EXPECT_EQ(_math_DllMain(_Initializermath::handle, reason, nullptr), TRUE);
        EXPECT_EQ(Mw___math_wrapDllMain(_Initializermath::handle, reason, nullptr), TRUE);
    }
}

}  // namespace
