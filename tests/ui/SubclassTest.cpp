#include "ui/Subclass.h"

#include "support/ExceptionLog.h"
#include "ui/Handles.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

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
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(a.Subclass.Previous()), before);
    a.Subclass.Uninstall();
    EXPECT_EQ(ProcedureOf(window.get()), before);
    EXPECT_FALSE(a.Subclass.Installed());
    SendMessageA(window.get(), Query, 0, 0);
    EXPECT_EQ(a.Count, 0);
}

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
