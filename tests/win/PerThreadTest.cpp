// SPDX-License-Identifier: MIT
// Values of which each thread has its own.

#include "kx/win/PerThread.h"
#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <gtest/gtest.h>
#include <string>
#include <thread>

namespace kx {
namespace {

/// Used by a static object that is made before it, as those of a program may be made before those of the library.
extern const TPerThread<int> Early;
const bool UsedEarly = [] {
    *Early = 7;
    return true;
}();
const TPerThread<int> Early;

TEST(PerThreadValue, IsThereBeforeStaticObjectsAre) {
    EXPECT_TRUE(UsedEarly);
    EXPECT_EQ(*Early, 7);
    std::thread([] { EXPECT_EQ(*Early, 0); }).join();
}

/// The library in which threads have values.
class PerThread : public testing::Test {
protected:
    PerThread() {
        char path[MAX_PATH];
        GetModuleFileNameA(nullptr, path, MAX_PATH);
        Library.reset(LoadLibraryA((ExtractFilePath(std::string(path)) + "library\\kx_win_library.dll").c_str()));
        Find(Watch, "WatchValues");
        Find(Exchange, "ExchangeValue");
    }
    template <class F> void Find(F& function, const char* name) const {
        function = reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(Library.get(), name)));
    }
    void SetUp() override {
        ASSERT_TRUE(Watch && Exchange);
        Watch(&Going);
    }

    unique_hmodule Library;
    void (*Watch)(int* going) = nullptr;
    int (*Exchange)(int number) = nullptr;
    int Going = 0; ///< Values that went.
};

TEST_F(PerThread, EachThreadHasAValueOfItsOwnThatGoesWithIt) {
    EXPECT_EQ(Exchange(1), 0);
    std::thread([this] {
        EXPECT_EQ(Exchange(2), 0);
        EXPECT_EQ(Exchange(3), 2);
    }).join();
    EXPECT_EQ(Going, 1);
    EXPECT_EQ(Exchange(4), 1);
}

TEST_F(PerThread, ThreadsMayOutliveTheLibrary) {
    const unique_handle_object used(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    const unique_handle_object unloaded(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    std::thread thread([&] {
        Exchange(5);
        SetEvent(used.get());
        WaitForSingleObject(unloaded.get(), INFINITE);
    });
    WaitForSingleObject(used.get(), INFINITE);
    Library.reset();
    EXPECT_EQ(GetModuleHandleA("kx_win_library.dll"), nullptr);
    EXPECT_EQ(Going, 1);
    SetEvent(unloaded.get());
    thread.join(); // its end would call what is not there any more
    EXPECT_EQ(Going, 1);
}

} // namespace
} // namespace kx
