// SPDX-License-Identifier: MIT
// All windows of the framework are Unicode windows.

#include "kx/ui/StandardClasses.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ComCtrlsPageScroller.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Handles.h"
#include "kx/win/Timers.h"
#include "tests/support/FormTest.h"

#include <set>

// Built twice: into a program whose code page is the system's, and into one whose code page is UTF-8, whose controls
// are those of version 6.

namespace kx {
namespace {

using namespace test;

BOOL CALLBACK AddWindow(HWND window, LPARAM list) {
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

/// The window, and all that are inside it.
std::vector<HWND> WithInner(HWND window) {
    std::vector<HWND> windows{window};
    EnumChildWindows(window, AddWindow, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

/// The classes of windows that are not Unicode ones.
std::set<std::string> OtherKinds(const std::vector<HWND>& windows) {
    std::set<std::string> classes;
    for (HWND window : windows) {
        if (!IsWindowUnicode(window)) {
            classes.insert(ClassOf(window));
        }
    }
    return classes;
}

class UnicodeWindows : public TFormTest {};

TEST_F(UnicodeWindows, AreThoseOfAllControlsAlsoWhenMadeAnew) {
    RegisterStandardClasses();
    std::set<std::string> made;
    for (const TClass* cls : RegisteredClasses()) {
        if (!cls->IsCreatable()) {
            continue;
        }
        TComponent* const component = cls->Create(Form.get());
        auto* const control = dynamic_cast<TWinControl*>(component);
        if (!control || dynamic_cast<TCustomForm*>(component)) {
            component->Free();
            continue;
        }
        control->SetParent(Form.get());
        for (const char* when : {"first", "made anew"}) {
            const std::vector<HWND> windows = WithInner(control->Handle());
            EXPECT_EQ(OtherKinds(windows), std::set<std::string>{}) << cls->Name() << " " << when;
            for (HWND window : windows) {
                const LRESULT asked =
                    SendMessageW(GetParent(window), WM_NOTIFYFORMAT, reinterpret_cast<WPARAM>(window), NF_QUERY);
                EXPECT_EQ(asked, NFR_UNICODE) << cls->Name() << " " << ClassOf(window);
            }
            DestroyWindow(control->Handle());
        }
        made.insert(cls->Name());
        control->Free();
    }
    for (const char* name : {"TEdit", "TMemo", "TComboBox", "TListBox", "TListView", "TTreeView", "TStringGrid",
                             "TToolBar", "TStatusBar", "TPageControl", "TPageScroller", "TButton", "TPanel"}) {
        EXPECT_TRUE(made.contains(name)) << name;
    }
}

TEST_F(UnicodeWindows, AskForUnicodeNotificationsInsideAnAnsiWindowToo) {
    const unique_hwnd host(
        CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 300, 300, nullptr, nullptr, nullptr, nullptr));
    SetWindowLongPtrA(host.get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(DefWindowProcA));
    ASSERT_FALSE(IsWindowUnicode(host.get()));
    TToolBar bar;
    TPageScroller scroller;
    TPanel panel;
    for (TWinControl* parent : std::initializer_list<TWinControl*>{&bar, &scroller, &panel}) {
        parent->SetParentWindow(host.get());
        TListView list;
        list.SetParent(parent);
        list.HandleNeeded();
        SendMessageW(parent->Handle(), WM_NOTIFYFORMAT, reinterpret_cast<WPARAM>(host.get()), NF_REQUERY);
        EXPECT_EQ(SendMessageW(parent->Handle(), WM_NOTIFYFORMAT, reinterpret_cast<WPARAM>(list.Handle()), NF_QUERY),
                  NFR_UNICODE)
            << ClassOf(parent->Handle());
        list.SetParent(nullptr);
        parent->SetParentWindow(nullptr);
    }
}

TEST_F(UnicodeWindows, AreThoseOfFormsAndTheApplication) {
    Show();
    EXPECT_EQ(OtherKinds({Form->Handle(), Application().Handle()}), std::set<std::string>{});
    EXPECT_TRUE(IsWindow(Application().Handle()));
}

/// The first window of that class among those that no window is around, or among those that only messages reach.
HWND HiddenWindow(const wchar_t* className, HWND parent = nullptr) {
    for (HWND window = nullptr; (window = FindWindowExW(parent, window, className, nullptr)) != nullptr;) {
        if (GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId()) {
            return window;
        }
    }
    return nullptr;
}

TEST_F(UnicodeWindows, AreTheHiddenOnes) {
    Show();
    TTimer timer;
    timer.SetOnTimer([](TObject*) {});
    HWND timers = HiddenWindow(L"Static", HWND_MESSAGE);
    TPopupMenu menu;
    menu.Items().Add(new TMenuItem(&menu));
    RunDialog(
        [&] {
            menu.Popup(200, 150);
            return true;
        },
        {{"the menu is open", [] { return ShownMenu() != nullptr; },
          [] { PostMessageW(ShownMenu(), WM_KEYDOWN, VK_ESCAPE, 0); }}});
    HWND menus = HiddenWindow(L"KxPopupMenuOwner");
    auto* const edit = Add<TEdit>(0, 0, 50, 20);
    edit->BeginDrag(true);
    HWND drags = HiddenWindow(L"KxDragCapture");
    edit->EndDrag(false);
    for (HWND window : {timers, menus, drags}) {
        EXPECT_TRUE(window && IsWindowUnicode(window)) << (window ? ClassOf(window) : "none");
    }
}

TEST_F(UnicodeWindows, IsThatOfAHint) {
    Form->SetHint("a hint");
    Form->SetShowHint(true);
    Application().SetHintPause(1);
    Show();
    MoveMouse(Middle(*Form));
    ASSERT_TRUE(PumpUntil([] { return Application().HintHandle() != nullptr; }));
    EXPECT_TRUE(IsWindowUnicode(Application().HintHandle()));
    Application().SetHintPause(500);
    Application().CancelHint();
}

TEST_F(UnicodeWindows, KeepTextsThatTheCodePageDoesNotHold) {
    auto* const edit = Add<TEdit>(0, 0, 100, 20);
    Show();
    for (HWND window : {Form->Handle(), edit->Handle(), Application().Handle()}) {
        SetWindowTextW(window, L"\u0416\u4E2D\U0001F600");
        EXPECT_EQ(WideWindowText(window), L"\u0416\u4E2D\U0001F600") << ClassOf(window);
        SetWindowTextW(window, L"");
    }
}

TEST_F(UnicodeWindows, TextsOfTheCodePageComeBackAsTheyWereSet) {
    std::string text = FromUtf8("Größe");
    for (const char* more : {"Ж", "中", "\xF0\x9F\x98\x80", "مَ"}) {
        text += CodePageHolds(more) ? FromUtf8(more) : std::string();
    }
    auto* const edit = Add<TEdit>(0, 0, 100, 20);
    edit->SetText(text);
    Form->SetCaption(text);
    Show();
    EXPECT_EQ(edit->Text(), text);
    EXPECT_EQ(Form->Caption(), text);
    EXPECT_EQ(WideWindowText(edit->Handle()), ToWide(text));
    EXPECT_EQ(WideWindowText(Form->Handle()), ToWide(text));
    edit->SetText(text + "!");
    edit->RecreateWnd();
    EXPECT_EQ(edit->Text(), text + "!");
}

} // namespace
} // namespace kx
