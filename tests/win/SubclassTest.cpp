// SPDX-License-Identifier: MIT
// Window procedures before others.

#include "kx/win/Subclass.h"

#include "kx/win/Handles.h"
#include "tests/support/ExceptionLog.h"

#include <gtest/gtest.h>
#include <memory>

namespace kx {
namespace {

using namespace test;

unique_hwnd NewWindow(const char* windowClass = "STATIC") {
    return unique_hwnd(
        CreateWindowExA(0, windowClass, "text", WS_POPUP, 0, 0, 50, 20, nullptr, nullptr, HInstance(), nullptr));
}

LONG_PTR ProcedureOf(HWND window) { return GetWindowLongPtrA(window, GWLP_WNDPROC); }

constexpr UINT Query = WM_USER + 77;

/// A subclass that counts and passes everything on.
struct TCounting {
    int Count = 0;
    TSubclass Subclass{[this](TMessage& m) {
        Count += m.Msg == Query;
        Subclass.CallPrevious(m);
    }};
};

TEST(Subclass, SeesMessagesChangesThemAndAnswersThem) {
    const unique_hwnd window = NewWindow();
    TSubclass* self = nullptr;
    TSubclass subclass(window.get(), [&self](TMessage& m) {
        if (m.Msg == Query) {
            m.Result = 41 + static_cast<LRESULT>(m.WParam);
        } else if (m.Msg == WM_SETTEXT) {
            m.LParam = reinterpret_cast<LPARAM>("changed");
            self->CallPrevious(m);
        } else {
            self->CallPrevious(m);
        }
    });
    self = &subclass;
    EXPECT_EQ(SendMessageA(window.get(), Query, 1, 0), 42);
    SetWindowTextA(window.get(), "given");
    char text[20];
    GetWindowTextA(window.get(), text, sizeof text);
    EXPECT_STREQ(text, "changed");
}

TEST(Subclass, UninstallPutsTheOldProcedureBack) {
    const unique_hwnd window = NewWindow();
    const LONG_PTR before = ProcedureOf(window.get());
    TCounting a;
    a.Subclass.Install(window.get());
    EXPECT_NE(ProcedureOf(window.get()), before);
    EXPECT_EQ(a.Subclass.Handle(), window.get());
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(a.Subclass.Previous().Procedure()), before);
    a.Subclass.Uninstall();
    EXPECT_EQ(ProcedureOf(window.get()), before);
    EXPECT_FALSE(a.Subclass.Installed());
    SendMessageA(window.get(), Query, 0, 0);
    EXPECT_EQ(a.Count, 0);
}

// --- Unicode and ANSI windows

/// A subclass that notes the texts that the window gets, as the window gets them.
struct TReading {
    std::vector<std::wstring> Wide;
    std::vector<std::string> Narrow;
    TSubclass Subclass{[this](TMessage& m) {
        if (m.Msg == WM_SETTEXT && IsWindowUnicode(Subclass.Handle())) {
            Wide.emplace_back(reinterpret_cast<const wchar_t*>(m.LParam));
        } else if (m.Msg == WM_SETTEXT) {
            Narrow.emplace_back(reinterpret_cast<const char*>(m.LParam));
        }
        Subclass.CallPrevious(m);
    }};
};

class SubclassKinds : public testing::TestWithParam<bool> {
protected:
    bool Unicode() const { return GetParam(); }
    bool IsUnicode() const { return IsWindowUnicode(Window.get()) != FALSE; }
    LONG_PTR Procedure() const {
        return Unicode() ? GetWindowLongPtrW(Window.get(), GWLP_WNDPROC)
                         : GetWindowLongPtrA(Window.get(), GWLP_WNDPROC);
    }
    std::wstring Text() const {
        wchar_t text[20];
        GetWindowTextW(Window.get(), text, 20);
        return text;
    }

    unique_hwnd Window{
        Unicode() ? CreateWindowExW(0, L"EDIT", L"text", WS_POPUP, 0, 0, 50, 20, nullptr, nullptr, HInstance(), nullptr)
                  : CreateWindowExA(0, "EDIT", "text", WS_POPUP, 0, 0, 50, 20, nullptr, nullptr, HInstance(), nullptr)};
};

TEST_P(SubclassKinds, AWindowStaysOfItsKindWhileItIsWatchedAndAfterwards) {
    const LONG_PTR before = Procedure();
    ASSERT_EQ(IsUnicode(), Unicode());
    TCounting lower;
    TCounting upper;
    lower.Subclass.Install(Window.get());
    EXPECT_EQ(IsUnicode(), Unicode());
    upper.Subclass.Install(Window.get());
    EXPECT_EQ(IsUnicode(), Unicode());
    upper.Subclass.Uninstall();
    EXPECT_EQ(IsUnicode(), Unicode());
    lower.Subclass.Uninstall();
    EXPECT_EQ(IsUnicode(), Unicode());
    EXPECT_EQ(Procedure(), before);
}

TEST_P(SubclassKinds, TextsArriveInTheKindOfTheWindow) {
    TReading reading;
    reading.Subclass.Install(Window.get());
    SetWindowTextW(Window.get(), L"\u00e9\u0416"); // of which a code page of one byte has one at most
    EXPECT_EQ(reading.Wide, Unicode() ? std::vector<std::wstring>{L"\u00e9\u0416"} : std::vector<std::wstring>{});
    EXPECT_EQ(reading.Narrow.size(), Unicode() ? 0u : 1u);
    if (Unicode()) {
        EXPECT_EQ(Text(), L"\u00e9\u0416") << "and reach the replaced procedure unharmed";
        SendMessageW(Window.get(), EM_SETSEL, 0, -1);
        SendMessageW(Window.get(), WM_CHAR, 0x416, 0);
        EXPECT_EQ(Text(), L"\u0416");
    }
    SetWindowTextA(Window.get(), "plain");
    EXPECT_EQ(Unicode() ? reading.Wide.back() == L"plain" : reading.Narrow.back() == "plain", true);
    EXPECT_EQ(Text(), L"plain");
}

TEST_P(SubclassKinds, ThePreviousProcedureCanBeCalledOnceTheObjectHasGone) {
    auto counting = std::make_unique<TCounting>();
    EXPECT_EQ(counting->Subclass.Previous()(WM_GETTEXTLENGTH, 0, 0), 0) << "not installed";
    counting->Subclass.Install(Window.get());
    const TSubclass::TPrevious previous = counting->Subclass.Previous();
    counting.reset();
    EXPECT_EQ(previous(WM_GETTEXTLENGTH, 0, 0), 4);
    if (Unicode()) {
        wchar_t text[20] = {};
        EXPECT_EQ(previous(WM_GETTEXT, 20, reinterpret_cast<LPARAM>(text)), 4);
        EXPECT_STREQ(text, L"text");
    } else {
        char text[20] = {};
        EXPECT_EQ(previous(WM_GETTEXT, 20, reinterpret_cast<LPARAM>(text)), 4);
        EXPECT_STREQ(text, "text");
    }
}

TEST_P(SubclassKinds, ASubclassOfTheOtherKindAboveComesAndGoes) {
    TCounting lower;
    lower.Subclass.Install(Window.get());
    // As others may do it, by the functions of the other kind.
    const auto upper = Unicode()
                           ? SetWindowLongPtrA(Window.get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(DefWindowProcA))
                           : SetWindowLongPtrW(Window.get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(DefWindowProcW));
    EXPECT_NE(IsUnicode(), Unicode());
    Unicode() ? SetWindowLongPtrA(Window.get(), GWLP_WNDPROC, upper)
              : SetWindowLongPtrW(Window.get(), GWLP_WNDPROC, upper);
    EXPECT_EQ(IsUnicode(), Unicode());
    SendMessageW(Window.get(), Query, 0, 0);
    EXPECT_EQ(lower.Count, 1);
    lower.Subclass.Uninstall();
    EXPECT_EQ(IsUnicode(), Unicode());
    SendMessageW(Window.get(), Query, 0, 0);
    EXPECT_EQ(lower.Count, 1) << "uninstalled, not left as a pass-through";
    EXPECT_EQ(Text(), L"text");
}

INSTANTIATE_TEST_SUITE_P(Windows, SubclassKinds, testing::Bool(),
                         [](const auto& kind) { return kind.param ? "Unicode" : "Ansi"; });

TEST(Subclass, RemovedOutOfOrderItPassesMessagesThrough) {
    const unique_hwnd window = NewWindow();
    const LONG_PTR before = ProcedureOf(window.get());
    auto lower = std::make_unique<TCounting>();
    TCounting upper;
    lower->Subclass.Install(window.get());
    const LONG_PTR lowerProcedure = ProcedureOf(window.get());
    upper.Subclass.Install(window.get());

    lower.reset(); // below the other one
    SendMessageA(window.get(), Query, 0, 0);
    EXPECT_EQ(upper.Count, 1);
    char text[20];
    GetWindowTextA(window.get(), text, sizeof text);
    EXPECT_STREQ(text, "text") << "the window's own procedure must still answer";

    upper.Subclass.Uninstall();
    EXPECT_EQ(ProcedureOf(window.get()), lowerProcedure) << "the pass-through stays until the window goes";
    EXPECT_NE(lowerProcedure, before);
    GetWindowTextA(window.get(), text, sizeof text);
    EXPECT_STREQ(text, "text");
}

TEST(Subclass, TheHandlerMayUninstallAndStillPassTheMessageOn) {
    const unique_hwnd window = NewWindow();
    const LONG_PTR before = ProcedureOf(window.get());
    TSubclass subclass;
    subclass.SetHandler([&](TMessage& m) {
        subclass.Uninstall();
        subclass.CallPrevious(m);
    });
    subclass.Install(window.get());
    char text[20];
    GetWindowTextA(window.get(), text, sizeof text);
    EXPECT_STREQ(text, "text");
    EXPECT_EQ(ProcedureOf(window.get()), before);
}

TEST(Subclass, TheHandlerMayFreeItsOwnObject) {
    const unique_hwnd window = NewWindow();
    const LONG_PTR before = ProcedureOf(window.get());
    auto* subclass = new TSubclass;
    subclass->SetHandler([&](TMessage& m) {
        if (m.Msg == Query) {
            delete std::exchange(subclass, nullptr);
            m.Result = 7;
        } else if (subclass) {
            subclass->CallPrevious(m);
        }
    });
    subclass->Install(window.get());
    EXPECT_EQ(SendMessageA(window.get(), Query, 0, 0), 7);
    EXPECT_EQ(subclass, nullptr);
    EXPECT_EQ(ProcedureOf(window.get()), before);
}

TEST(Subclass, TheHandlerMayFreeItsOwnObjectInsideANestedMessage) {
    const unique_hwnd window = NewWindow();
    auto* subclass = new TSubclass;
    std::vector<std::string> log;
    subclass->SetHandler([&](TMessage& m) {
        if (m.Msg == Query) {
            m.Result = SendMessageA(window.get(), Query + 1, 0, 0) + 1;
        } else if (m.Msg == Query + 1) {
            delete std::exchange(subclass, nullptr);
            m.Result = 10;
        } else if (subclass) {
            subclass->CallPrevious(m);
        }
    });
    subclass->Install(window.get());
    EXPECT_EQ(SendMessageA(window.get(), Query, 0, 0), 11);
}

TEST(Subclass, TheHandlerMayMoveItsObjectToAnotherWindowAndFreeItThere) {
    const unique_hwnd first = NewWindow();
    const unique_hwnd second = NewWindow();
    const LONG_PTR before = ProcedureOf(second.get());
    auto* subclass = new TSubclass;
    subclass->SetHandler([&](TMessage& m) {
        if (m.Msg == Query) {
            subclass->Install(second.get());
            SendMessageA(second.get(), Query + 1, 0, 0);
            m.Result = 5;
        } else if (m.Msg == Query + 1) {
            delete std::exchange(subclass, nullptr);
        } else if (subclass) {
            subclass->CallPrevious(m);
        }
    });
    subclass->Install(first.get());
    EXPECT_EQ(SendMessageA(first.get(), Query, 0, 0), 5);
    EXPECT_EQ(subclass, nullptr);
    EXPECT_EQ(ProcedureOf(second.get()), before);
}

TEST(Subclass, TheWindowsEndUninstalls) {
    unique_hwnd window = NewWindow();
    std::vector<UINT> last;
    TSubclass subclass;
    subclass.SetHandler([&](TMessage& m) {
        last.push_back(m.Msg);
        subclass.CallPrevious(m);
    });
    subclass.Install(window.get());
    window.reset();
    ASSERT_FALSE(last.empty());
    EXPECT_EQ(last.back(), UINT{WM_NCDESTROY});
    EXPECT_FALSE(subclass.Installed());
    EXPECT_EQ(subclass.Handle(), nullptr);
}

TEST(Subclass, TheHandlerMayDestroyTheWindow) {
    unique_hwnd window = NewWindow();
    TSubclass subclass;
    subclass.SetHandler([&](TMessage& m) {
        if (m.Msg == Query) {
            window.reset();
            m.Result = 3;
        } else {
            subclass.CallPrevious(m);
        }
    });
    const HWND handle = window.get();
    subclass.Install(handle);
    EXPECT_EQ(SendMessageA(handle, Query, 0, 0), 3);
    EXPECT_FALSE(IsWindow(handle));
    EXPECT_FALSE(subclass.Installed());
}

TEST(Subclass, TheHandlerMayFreeItsObjectInTheLastMessage) {
    unique_hwnd window = NewWindow("EDIT");
    auto* subclass = new TSubclass;
    subclass->SetHandler([&](TMessage& m) {
        subclass->CallPrevious(m);
        if (m.Msg == WM_NCDESTROY) {
            delete std::exchange(subclass, nullptr);
        }
    });
    subclass->Install(window.get());
    window.reset();
    EXPECT_EQ(subclass, nullptr);
}

TEST(Subclass, AnExceptionOfTheHandlerReachesTheApplication) {
    TExceptionLog log;
    const unique_hwnd window = NewWindow();
    TSubclass subclass;
    subclass.SetHandler([&](TMessage& m) {
        if (m.Msg == Query) {
            throw Exception("from the handler");
        }
        subclass.CallPrevious(m);
    });
    subclass.Install(window.get());
    EXPECT_EQ(SendMessageA(window.get(), Query, 0, 0), 0);
    EXPECT_EQ(log.Messages(), std::vector<std::string>{"from the handler"});
    EXPECT_TRUE(subclass.Installed());
}

TEST(Subclass, NoWindowIsAnError) {
    TSubclass subclass;
    EXPECT_THROW(subclass.Install(nullptr), EOSError);
    EXPECT_THROW(subclass.Install(reinterpret_cast<HWND>(INT_PTR{0x7FFF0})), EOSError);
    EXPECT_FALSE(subclass.Installed());
}

} // namespace
} // namespace kx
