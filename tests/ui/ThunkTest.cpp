#include "ui/Thunk.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace kx {
namespace {

struct TReceiver {
    UINT Message = 0;
    WPARAM WParam = 0;
    LPARAM LParam = 0;
};

LRESULT CALLBACK Receive(void* object, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& receiver = *static_cast<TReceiver*>(object);
    receiver.Message = message;
    receiver.WParam = wParam;
    receiver.LParam = lParam;
    return static_cast<LRESULT>(~wParam);
}

TEST(Thunk, CarriesItsObjectAndPassesTheOtherArguments) {
    TReceiver a;
    TReceiver b;
    const TThunk first(Receive, &a);
    const TThunk second(Receive, &b);
    const auto wParam = static_cast<WPARAM>(0x89ABCDEF01234567ull); // cut on 32 bits
    const auto lParam = static_cast<LPARAM>(-77);
    EXPECT_EQ(first.Procedure()(nullptr, WM_USER + 1, wParam, lParam), static_cast<LRESULT>(~wParam));
    EXPECT_EQ(second.Procedure()(nullptr, WM_USER + 2, 1, 2), ~LRESULT{1});
    EXPECT_EQ(a.Message, UINT{WM_USER + 1});
    EXPECT_EQ(a.WParam, wParam);
    EXPECT_EQ(a.LParam, lParam);
    EXPECT_EQ(b.Message, UINT{WM_USER + 2});
}

TEST(Thunk, CodeIsExecutableAndNotWritable) {
    TReceiver receiver;
    const TThunk thunk(Receive, &receiver);
    MEMORY_BASIC_INFORMATION info;
    ASSERT_NE(VirtualQuery(reinterpret_cast<void*>(thunk.Procedure()), &info, sizeof info), SIZE_T{0});
    EXPECT_EQ(info.Protect, DWORD{PAGE_EXECUTE_READ});
}

TEST(Thunk, AnAddressOfAThunkThatIsGoneAnswersZero) {
    TReceiver receiver;
    WNDPROC procedure = nullptr;
    {
        const TThunk thunk(Receive, &receiver);
        procedure = thunk.Procedure();
    }
    EXPECT_EQ(procedure(nullptr, WM_USER, 1, 2), 0);
    EXPECT_EQ(receiver.Message, 0u);
}

TEST(Thunk, ThousandsHaveAnAddressEachAndAddressesAreUsedAgain) {
    TReceiver receiver;
    size_t distinct = 0;
    {
        std::vector<std::unique_ptr<TThunk>> thunks;
        std::vector<WNDPROC> addresses;
        for (int i = 0; i < 3000; ++i) {
            thunks.push_back(std::make_unique<TThunk>(Receive, &receiver));
            addresses.push_back(thunks.back()->Procedure());
            EXPECT_EQ(addresses.back()(nullptr, WM_USER, static_cast<WPARAM>(i), 0), ~static_cast<LRESULT>(i));
        }
        std::sort(addresses.begin(), addresses.end());
        distinct = static_cast<size_t>(std::unique(addresses.begin(), addresses.end()) - addresses.begin());
    }
    EXPECT_EQ(distinct, 3000u);

    WNDPROC last = nullptr;
    for (int i = 0; i < 20000; ++i) { // far more than there is room for at once: none is lost
        const TThunk thunk(Receive, &receiver);
        EXPECT_NE(thunk.Procedure(), last) << "used again at once";
        last = thunk.Procedure();
    }
}

} // namespace
} // namespace kx
