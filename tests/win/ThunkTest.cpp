// SPDX-License-Identifier: MIT
// Functions that carry an object.

#include "kx/win/Thunk.h"

#include "kx/win/Subclass.h"
#include "kx/win/System.h"

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
    EXPECT_EQ(info.Type, DWORD{MEM_PRIVATE}) << "code made at run time, which this process may make";
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

// --- Where no code may be made

class BuiltInThunks : public testing::Test {
protected:
    BuiltInThunks() : Assumed(WithoutDynamicCode()) {}
    static TSystem WithoutDynamicCode() {
        TSystem system = System();
        system.DynamicCode = false;
        return system;
    }
    static DWORD ProtectionOf(const TThunk& thunk) {
        MEMORY_BASIC_INFORMATION info = {};
        VirtualQuery(reinterpret_cast<void*>(thunk.Procedure()), &info, sizeof info);
        return info.Type;
    }

    TAssumedSystem Assumed;
    TReceiver Receiver;
};

TEST_F(BuiltInThunks, ThisProcessMayMakeCode) {
    const TAssumedSystem as(TSystem{});
    const TThunk thunk(Receive, &Receiver);
    EXPECT_EQ(ProtectionOf(thunk), DWORD{MEM_PRIVATE});
}

TEST_F(BuiltInThunks, AreCodeOfTheProgram) {
    const TThunk thunk(Receive, &Receiver);
    EXPECT_EQ(ProtectionOf(thunk), DWORD{MEM_IMAGE});
}

TEST_F(BuiltInThunks, CarryTheirObjectsAndPassTheOtherArguments) {
    TReceiver other;
    const TThunk first(Receive, &Receiver);
    const TThunk second(Receive, &other);
    const auto wParam = static_cast<WPARAM>(0x89ABCDEF01234567ull); // cut on 32 bits
    EXPECT_EQ(first.Procedure()(nullptr, WM_USER + 1, wParam, -77), static_cast<LRESULT>(~wParam));
    EXPECT_EQ(second.Procedure()(nullptr, WM_USER + 2, 1, 2), ~LRESULT{1});
    EXPECT_EQ(Receiver.Message, UINT{WM_USER + 1});
    EXPECT_EQ(Receiver.WParam, wParam);
    EXPECT_EQ(Receiver.LParam, -77);
    EXPECT_EQ(other.Message, UINT{WM_USER + 2});
    EXPECT_EQ(other.WParam, WPARAM{1});
    EXPECT_EQ(other.LParam, 2);
}

TEST_F(BuiltInThunks, ThatAreGoneAnswerZero) {
    WNDPROC procedure = nullptr;
    {
        const TThunk thunk(Receive, &Receiver);
        procedure = thunk.Procedure();
    }
    EXPECT_EQ(procedure(nullptr, WM_USER, 1, 2), 0);
    EXPECT_EQ(Receiver.Message, 0u);
}

TEST_F(BuiltInThunks, AreAnErrorWhenAllAreTakenAndAreUsedAgain) {
    for (int round = 0; round < 2; ++round) {
        std::vector<std::unique_ptr<TThunk>> thunks;
        std::vector<WNDPROC> addresses;
        for (size_t i = 0; i < TThunk::MaxBuiltIn; ++i) {
            thunks.push_back(std::make_unique<TThunk>(Receive, &Receiver));
            addresses.push_back(thunks.back()->Procedure());
            EXPECT_EQ(addresses.back()(nullptr, WM_USER, i, 0), ~static_cast<LRESULT>(i));
        }
        std::sort(addresses.begin(), addresses.end());
        EXPECT_EQ(std::unique(addresses.begin(), addresses.end()), addresses.end());
        try {
            const TThunk more(Receive, &Receiver);
            ADD_FAILURE() << "more than there are";
        } catch (const EOSError& error) {
            EXPECT_EQ(error.ErrorCode(), 1655u);
        }
    }
}

TEST_F(BuiltInThunks, SubclassWindows) {
    HWND window = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, HInstance(), nullptr);
    UINT seen = 0;
    {
        TSubclass subclass;
        subclass.SetHandler([&](TMessage& m) {
            seen = m.Msg;
            subclass.CallPrevious(m);
        });
        subclass.Install(window);
        SendMessageA(window, WM_USER + 5, 0, 0);
        EXPECT_EQ(seen, UINT{WM_USER + 5});
    }
    SendMessageA(window, WM_USER + 6, 0, 0);
    EXPECT_EQ(seen, UINT{WM_USER + 5});
    DestroyWindow(window);
}

} // namespace
} // namespace kx
