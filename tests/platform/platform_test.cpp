#include "math/platform/platform.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

TEST(Guid, EqualityComparesAllSixteenBytes) {
    GUID a = IID_IUnknown;
    EXPECT_TRUE(IsEqualGUID(a, IID_IUnknown));
    EXPECT_TRUE(a == IID_IUnknown);
    a.Data4[7] ^= 1;
    EXPECT_FALSE(IsEqualGUID(a, IID_IUnknown));
    EXPECT_FALSE(IsEqualIID(IID_IStream, IID_IUnknown));
    EXPECT_EQ(IID_IUnknown.Data4[0], 0xC0);
    EXPECT_EQ(IID_IUnknown.Data4[7], 0x46);
    EXPECT_EQ(IID_IStream.Data1, 0x0000000Cu);
}

TEST(HResult, SignDecidesSuccess) {
    EXPECT_TRUE(SUCCEEDED(S_OK) && SUCCEEDED(S_FALSE));
    for (HRESULT hr :
         {E_NOTIMPL, E_NOINTERFACE, E_POINTER, E_UNEXPECTED, E_OUTOFMEMORY, E_INVALIDARG, E_FAIL})
        EXPECT_TRUE(FAILED(hr));
    EXPECT_EQ(static_cast<std::uint32_t>(E_INVALIDARG), 0x80070057u);
    EXPECT_EQ(static_cast<std::uint32_t>(E_POINTER), 0x80004003u);
}

TEST(TaskMemory, AllocatesReallocatesAndFrees) {
    auto* block = static_cast<unsigned char*>(CoTaskMemAlloc(8));
    ASSERT_NE(block, nullptr);
    std::memset(block, 0xAB, 8);
    block = static_cast<unsigned char*>(CoTaskMemRealloc(block, 4096));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block[7], 0xAB);
    CoTaskMemFree(block);
    CoTaskMemFree(nullptr);
    void* empty = CoTaskMemAlloc(0);
    EXPECT_NE(empty, nullptr);
    CoTaskMemFree(empty);
}

TEST(RuntimeHooks, CharToOemCopiesAlsoInPlace) {
    char out[16] = {};
    EXPECT_EQ(CharToOemA("Title", out), TRUE);
    EXPECT_STREQ(out, "Title");
    EXPECT_EQ(CharToOemA(out, out), TRUE);
    EXPECT_STREQ(out, "Title");
    EXPECT_EQ(CharToOemA(nullptr, out), FALSE);
}

std::vector<DWORD> g_reasons;
BOOL RecordingEntry(HINSTANCE, DWORD reason, LPVOID) {
    g_reasons.push_back(reason);
    return TRUE;
}

TEST(RuntimeHooks, RegisteredLibraryIsAttachedAndDetached) {
    g_reasons.clear();
    HINSTANCE module = MwInitDLL("probe", &RecordingEntry, nullptr, nullptr);
    ASSERT_NE(module, nullptr);
    MwDllInPostConstruct(module);
    MwDllInPreDestruct(module);
    MwDllInPostDestruct(module);
    MwDllInPostConstruct(module);  // forgotten: no call
    EXPECT_EQ(g_reasons, (std::vector<DWORD>{DLL_PROCESS_ATTACH, DLL_PROCESS_DETACH}));
    MwDllInPostConstruct(nullptr);  // unknown handles are ignored
    EXPECT_EQ(DisableThreadLibraryCalls(module), TRUE);
}

TEST(RuntimeHooks, BugCheckWritesTheMessageLine) {
    testing::internal::CaptureStderr();
    MwApplicationBugCheck("broken");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "broken\n");
}

}  // namespace
