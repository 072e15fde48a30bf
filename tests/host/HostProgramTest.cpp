// SPDX-License-Identifier: MIT
// A program with a window class and a message loop of its own.

#include "examples/win32-host/Host.h"
#include "examples/win32-host/PlainPanel.h"

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Handles.h"
#include "tests/support/FormTest.h"
#include "tests/support/TestDriver.h"

namespace kx {
namespace {

using namespace test;

HWND DialogOf(HWND owner) {
    for (HWND window : TopWindows("#32770")) {
        if (GetWindow(window, GW_OWNER) == owner && FileListOf(window)) {
            return window;
        }
    }
    return nullptr;
}

/// The example's program, in its own message loop.
class HostProgram : public testing::Test {
protected:
    HostProgram() : Window(CreateHostWindow(HInstance())) { ShowWindow(Window, SW_SHOW); }
    ~HostProgram() override {
        if (IsWindow(Window)) {
            DestroyWindow(Window);
            MSG message;
            PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
        }
    }

    /// Runs the program; the last step is to end it.
    void Run(std::vector<TStep> steps) {
        SetForegroundWindow(Window);
        TTestDriver driver(std::move(steps));
        EXPECT_TRUE(driver.Run([this] { return RunMessageLoop(Window) == 0; }));
    }
    HWND Dialog() const { return DialogOf(Window); }
    TCondition DialogShown() const {
        return [this] { return Dialog() && IsWindowEnabled(Dialog()) && ItemCount(FileListOf(Dialog())) >= 0; };
    }
    TCondition DialogClosed() const {
        return [this] { return !Dialog() && IsWindowEnabled(Window); };
    }
    HWND PanelItem(int id) const { return GetDlgItem(FindDescendant(Dialog(), "PlainPanel"), id); }
    HWND RemarkEdit() const { return FindDescendant(Dialog(), "TEdit"); }
    std::string Status() const { return TextOf(GetDlgItem(Window, ID_STATUS)); }
    void Command(HWND window, int id) const { PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(id), 0); }
    TStep Cancel() const {
        return {"the dialog closes", DialogShown(), [this] { Command(Dialog(), IDCANCEL); }};
    }
    TStep End() const {
        return {"the program ends", DialogClosed(), [this] { Command(Window, ID_EXIT); }};
    }

    HWND Window;
};

TEST_F(HostProgram, ShowsADialogWithItsFormsOverItsWindow) {
    Run({{"the accelerator", [this] { return GetActiveWindow() == Window; }, [] { PressKey('O', {VK_CONTROL}); }},
         {"the dialog is there", DialogShown(),
          [this] {
              EXPECT_FALSE(IsWindowEnabled(Window));
              EXPECT_TRUE(IsWindowVisible(RemarkEdit()));
              EXPECT_TRUE(IsWindowVisible(PanelItem(PanelEditId)));
              EXPECT_TRUE(IsWindowVisible(FindDescendant(Dialog(), "TKxPlacesBarFrm")));
              Screenshot("win32-host-open");
          }},
         Cancel(),
         {"the main window again", [this] { return GetActiveWindow() == Window; },
          [this] { EXPECT_TRUE(IsWindowEnabled(Window)); }},
         End()});
}

TEST_F(HostProgram, KeysServeTheFormsInTheDialog) {
    std::vector<HWND> seen;
    Run({Perform("open", [this] { Command(Window, ID_OPEN); }),
         {"a letter", DialogShown(), [] { PressKey('R', {VK_MENU}); }},
         {"leads to the edit", [this] { return GetFocus() == RemarkEdit(); }, [] { TypeText("fine"); }},
         {"text is typed", [this] { return TextOf(RemarkEdit()) == "fine"; }, [] { PressKey('L', {VK_MENU}); }},
         {"the panel's letter", [this] { return TextOf(PanelItem(PanelEditId)).empty(); },
          [&] {
              SetFocus(PanelItem(PanelEditId));
              PressKey(VK_TAB);
          }},
         {"Tab", [this] { return GetFocus() == PanelItem(PanelReadOnlyId); }, {}},
         Cancel(),
         End()});
}

TEST_F(HostProgram, HearsOfErrorsInItsOwnWay) {
    TTempFolder folder;
    const std::string file = folder.AddFile("one.txt");
    Run({Perform("open", [this] { Command(Window, ID_OPEN); }),
         {"an error", DialogShown(),
          [&] {
              PressButton(PanelItem(PanelReadOnlyId));
              SetWindowTextA(FileNameEditOf(Dialog()), file.c_str());
              Command(Dialog(), IDOK);
          }},
         {"is shown", [this] { return Status() == "Files that are read only cannot be opened here"; },
          [&] {
              EXPECT_TRUE(DialogShown()()) << "a handler that fails refuses";
              PressButton(PanelItem(PanelReadOnlyId));
              Command(Dialog(), IDOK);
          }},
         {"the file is chosen", [&] { return Status() == file; }, {}},
         End()});
}

TEST_F(HostProgram, AModelessDialogLeavesItUsable) {
    Run({Perform("browse", [this] { Command(Window, ID_BROWSE); }),
         {"both can be used", DialogShown(),
          [this] {
              EXPECT_TRUE(IsWindowEnabled(Window));
              SetForegroundWindow(Dialog());
              Click(RemarkEdit());
          }},
         {"the keys of its forms come to the program's loop", [this] { return GetFocus() == RemarkEdit(); },
          [] { TypeText("a"); }},
         {"letters", [this] { return TextOf(RemarkEdit()) == "a"; }, [] { PressKey(VK_TAB); }},
         {"Tab", [this] { return GetFocus() != RemarkEdit(); }, [] {}},
         {"the main window's keys",
          [this] {
              SetForegroundWindow(Window);
              return GetActiveWindow() == Window;
          },
          [this] { Command(Dialog(), IDCANCEL); }},
         {"the result", [this] { return Status() == "Nothing was chosen"; }, {}},
         End()});
}

TEST_F(HostProgram, EndsWithAModelessDialogOpen) {
    Run({Perform("browse", [this] { Command(Window, ID_BROWSE); }),
         {"it is there", DialogShown(), [this] { Command(Window, ID_EXIT); }}});
    EXPECT_EQ(DialogOf(Window), nullptr);
}

// --- What a loop of the program's own can rely on

/// Handles messages as programs do that know nothing of the framework.
bool PlainLoop(const TCondition& until, bool offers) {
    const ULONGLONG since = GetTickCount64();
    while (!until() && GetTickCount64() - since < 10'000) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (!offers || !Application().PreTranslateMessage(message)) {
                TranslateMessage(&message);
                DispatchMessageW(&message);
            }
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return until();
}

class ForeignLoop : public TFormTest {
protected:
    void ShowInLoop() {
        Form->Show();
        ASSERT_TRUE(PlainLoop([this] { return Form->Active(); }, true));
    }
};

TEST_F(ForeignLoop, ServesTheKeysOfFormsWhenItOffersItsMessages) {
    auto* const first = Add<TEdit>(10, 10, 100, 24);
    auto* const second = Add<TEdit>(10, 50, 100, 24);
    ShowInLoop();
    first->SetFocus();
    PressKey(VK_TAB);
    EXPECT_TRUE(PlainLoop([&] { return second->Focused(); }, true));
}

TEST_F(ForeignLoop, FiresOnMessage) {
    int messages = 0;
    Application().SetOnMessage([&](MSG& message, bool& handled) {
        if (message.message == WM_APP + 77) {
            ++messages;
            handled = true;
        }
    });
    PostMessageW(Application().Handle(), WM_APP + 77, 0, 0);
    MSG message;
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_APP + 77, WM_APP + 77, PM_REMOVE));
    EXPECT_TRUE(Application().PreTranslateMessage(message));
    EXPECT_EQ(messages, 1);
    Application().SetOnMessage({});
    EXPECT_FALSE(Application().PreTranslateMessage(message));
}

TEST_F(ForeignLoop, CarriesOutQueuedCallsAndReleasesWithoutBeingTold) {
    bool called = false;
    Application().QueueCall([&] { called = true; });
    EXPECT_TRUE(PlainLoop([&] { return called; }, false));
    bool destroyed = false;
    auto* const form = NewForm<TForm>(nullptr);
    form->SetOnDestroy([&](TObject*) { destroyed = true; });
    form->Release();
    EXPECT_TRUE(PlainLoop([&] { return destroyed; }, false));
}

TEST_F(ForeignLoop, GetsTheEndThatCameWhileAFormWasModal) {
    Form->SetOnActivate([](TObject*) { PostQuitMessage(42); });
    EXPECT_EQ(Form->ShowModal(), mrCancel);
    MSG message;
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    while (message.message != WM_QUIT && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    }
    EXPECT_EQ(message.message, UINT{WM_QUIT});
    EXPECT_EQ(message.wParam, WPARAM{42});
    EXPECT_FALSE(Application().Terminated());
}

TEST_F(ForeignLoop, GetsTheEndThatCameWhileMessagesWereProcessed) {
    PostQuitMessage(43);
    Application().ProcessMessages();
    MSG message;
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, WPARAM{43});
}

} // namespace
} // namespace kx
