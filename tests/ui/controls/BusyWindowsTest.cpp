// SPDX-License-Identifier: MIT
// A control that loses its window in a notification of that window: the window's own procedure comes to its end first.

#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ComCtrlsPages.h"
#include "kx/ui/widgets/ComCtrlsTree.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/FormTest.h"

namespace kx {
namespace {

using namespace test;

using THandler = std::function<void()>;

/// A control of a system class that notifies while a message of its window is handled.
struct TNotifier {
    const char* Name;
    /// Makes the control, with `handler` as what its notification brings about.
    std::function<TWinControl*(TForm& form, TWinControl& parent, const THandler& handler)> Make;
    /// Sends the message.
    std::function<void(HWND window)> Notify;
};

template <class T> T* New(TForm& form, TWinControl& parent) {
    auto* const control = new T(&form);
    control->SetBounds(10, 10, 200, 100);
    control->SetParent(&parent);
    return control;
}
TNotifyEvent Event(const THandler& handler) {
    return [handler](TObject*) { handler(); };
}
template <class T> T* NewLines(TForm& form, TWinControl& parent) {
    T* const control = New<T>(form, parent);
    control->Items().SetText("one\ntwo\nthree\n");
    return control;
}
void Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    SendMessageA(window, message, wParam, lParam);
}
template <class T> TNotifier Clicked(const char* name) {
    return {name,
            [](TForm& form, TWinControl& parent, const THandler& handler) -> TWinControl* {
                T* const button = New<T>(form, parent);
                button->SetOnClick(Event(handler));
                return button;
            },
            [](HWND window) { Send(window, BM_CLICK); }};
}
template <class T> TNotifier Typed(const char* name) {
    return {name,
            [](TForm& form, TWinControl& parent, const THandler& handler) -> TWinControl* {
                T* const edit = New<T>(form, parent);
                edit->SetOnChange(Event(handler));
                return edit;
            },
            [](HWND window) { Send(window, WM_CHAR, 'x', 1); }};
}
template <class T> TNotifier Chosen(const char* name) {
    return {name,
            [](TForm& form, TWinControl& parent, const THandler& handler) -> TWinControl* {
                T* const list = NewLines<T>(form, parent);
                list->SetOnClick(Event(handler));
                return list;
            },
            [](HWND window) {
                Send(window, WM_KEYDOWN, VK_DOWN, 1);
                Send(window, WM_KEYUP, VK_DOWN, 1);
            }};
}

const std::vector<TNotifier>& Notifiers() {
    static const std::vector<TNotifier> notifiers{
        Clicked<TButton>("Button"),
        Clicked<TCheckBox>("CheckBox"),
        Typed<TEdit>("Edit"),
        Typed<TMemo>("Memo"),
        Chosen<TListBox>("ListBox"),
        Chosen<TComboBox>("ComboBox"),
        {"EditOfAComboBox",
         [](TForm& form, TWinControl& parent, const THandler& handler) -> TWinControl* {
             auto* const combo = NewLines<TComboBox>(form, parent);
             combo->SetOnChange(Event(handler));
             return combo;
         },
         [](HWND window) { Send(GetWindow(window, GW_CHILD), WM_CHAR, 'x', 1); }},
        {"ListOfAComboBox",
         [](TForm& form, TWinControl& parent, const THandler& handler) -> TWinControl* {
             auto* const combo = NewLines<TComboBox>(form, parent);
             combo->SetStyle(csDropDownList);
             combo->SetOnClick(Event(handler));
             return combo;
         },
         [](HWND window) {
             COMBOBOXINFO info{};
             info.cbSize = sizeof info;
             Send(window, CB_SHOWDROPDOWN, TRUE);
             ASSERT_TRUE(GetComboBoxInfo(window, &info));
             Send(info.hwndList, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
             Send(info.hwndList, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
         }},
        {"ListView",
         [](TForm& form, TWinControl& parent, const THandler& handler) -> TWinControl* {
             auto* const list = New<TListView>(form, parent);
             list->Items().Add().SetCaption("one");
             list->Items().Add().SetCaption("two");
             list->SetOnSelectItem([handler](TObject*, TListItem*, bool selected) {
                 if (selected) {
                     handler();
                 }
             });
             return list;
         },
         [](HWND window) { Send(window, WM_KEYDOWN, VK_DOWN, 1); }},
        {"TreeView",
         [](TForm& form, TWinControl& parent, const THandler& handler) -> TWinControl* {
             auto* const tree = New<TTreeView>(form, parent);
             tree->Items().Add(nullptr, "one");
             tree->Items().Add(nullptr, "two");
             tree->SetOnChange([handler](TObject*, TTreeNode*) { handler(); });
             return tree;
         },
         [](HWND window) { Send(window, WM_KEYDOWN, VK_DOWN, 1); }},
        {"PageControl",
         [](TForm& form, TWinControl& parent, const THandler& handler) -> TWinControl* {
             auto* const pages = New<TPageControl>(form, parent);
             for (int i = 0; i < 2; ++i) {
                 auto* const page = new TTabSheet(&form);
                 page->SetPageControl(pages);
                 New<TEdit>(form, *page);
             }
             pages->SetOnChange(Event(handler));
             return pages;
         },
         [](HWND window) { Send(window, TCM_SETCURFOCUS, SendMessageA(window, TCM_GETCURSEL, 0, 0) == 0 ? 1 : 0); }},
    };
    return notifiers;
}

class BusyWindows : public TFormTest, public testing::WithParamInterface<size_t> {
protected:
    /// Lets the control notify. `loseWindow` takes its window away meanwhile.
    void Run(const THandler& loseWindow) {
        const TNotifier& notifier = Notifiers()[GetParam()];
        bool isReady = false; // some controls notify when they get the focus
        int notified = 0;
        Control = notifier.Make(*Form, *Panel, [&] {
            if (!isReady || ++notified > 1) {
                return;
            }
            const HWND window = Control->WindowHandle();
            loseWindow();
            EXPECT_TRUE(IsWindow(window));
            EXPECT_FALSE(IsWindowVisible(window));
            EXPECT_FALSE(IsWindowEnabled(window));
            EXPECT_EQ(FindControl(window), nullptr);
        });
        Show();
        const HWND window = Control->Handle();
        Window = window;
        ::SetFocus(window);
        isReady = true;
        notifier.Notify(window);
        EXPECT_EQ(notified, 1);
        EXPECT_TRUE(PumpUntil([=] { return !IsWindow(window); }));
        EXPECT_EQ(Log.Messages(), std::vector<std::string>());
    }
    /// The control notifies with its new window as well.
    void StillNotifies() {
        ASSERT_TRUE(Control->HandleAllocated());
        EXPECT_NE(Control->WindowHandle(), Window);
        EXPECT_TRUE(IsWindowVisible(Control->WindowHandle()));
        EXPECT_EQ(FindControl(Control->WindowHandle()), Control);
    }

    TExceptionLog Log;
    TPanel* Panel = Add<TPanel>(5, 5, 300, 200);
    TPanel* Other = Add<TPanel>(5, 210, 300, 80);
    TWinControl* Control = nullptr;
    HWND Window = nullptr;
};

TEST_P(BusyWindows, OutliveTheirControl) {
    Run([this] { Control->Free(); });
}

TEST_P(BusyWindows, OutliveTheParent) {
    Run([this] { Panel->Free(); });
}

TEST_P(BusyWindows, OutliveTheForm) {
    Run([this] { Form.reset(); });
}

TEST_P(BusyWindows, OutliveTheMakingOfAnother) {
    Run([this] { Control->RecreateWnd(); });
    StillNotifies();
}

TEST_P(BusyWindows, OutliveTheMakingOfAnotherForTheParent) {
    Run([this] { Panel->RecreateWnd(); });
    StillNotifies();
}

TEST_P(BusyWindows, OutliveTheMoveToAnotherParent) {
    Run([this] { Control->SetParent(Other); });
    StillNotifies();
}

INSTANTIATE_TEST_SUITE_P(Controls, BusyWindows, testing::Range(size_t{0}, Notifiers().size()),
                         [](const auto& test) { return Notifiers()[test.param].Name; });

class BusyWindow : public TFormTest {};

TEST_F(BusyWindow, KeepsWhatWasTyped) {
    auto* const edit = Add<TEdit>(10, 10, 100, 21);
    edit->SetOnChange([&](TObject*) { edit->RecreateWnd(); });
    Show();
    ::SetFocus(edit->Handle());
    for (const char letter : {'a', 'b', 'c'}) {
        Send(edit->WindowHandle(), WM_CHAR, static_cast<WPARAM>(letter), 1);
        edit->SetSelStart(9);
    }
    EXPECT_EQ(edit->Text(), "abc");
    EXPECT_EQ(::GetFocus(), edit->WindowHandle());
}

TEST_F(BusyWindow, GoesAtOnceOutsideOfItsProcedure) {
    auto* const edit = Add<TEdit>(10, 10, 100, 21);
    Show();
    const HWND window = edit->Handle();
    Send(window, WM_CHAR, 'x', 1);
    edit->Free();
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(BusyWindow, MayBeDestroyedByOthers) {
    auto* const button = Add<TButton>(10, 10, 100, 21);
    bool clicked = false;
    button->SetOnClick([&](TObject*) {
        clicked = true;
        DestroyWindow(button->WindowHandle()); // the framework is not asked
        button->Free();
    });
    Show();
    const HWND window = button->Handle();
    Send(window, BM_CLICK);
    EXPECT_TRUE(clicked);
    EXPECT_FALSE(IsWindow(window));
}

} // namespace
} // namespace kx
