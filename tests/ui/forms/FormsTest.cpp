// SPDX-License-Identifier: MIT
// Forms, the screen and the application.

#include "tests/ui/SampleForms.h"

#include "tests/support/ExceptionLog.h"
#include "tests/support/TestDriver.h"
#include "tests/support/TestForms.h"

#include <thread>

namespace kx {
namespace {

using namespace test;
DWORD StyleOf(const TForm& form) { return static_cast<DWORD>(GetWindowLongA(form.WindowHandle(), GWL_STYLE)); }
DWORD ExStyleOf(const TForm& form) { return static_cast<DWORD>(GetWindowLongA(form.WindowHandle(), GWL_EXSTYLE)); }

TEST(Forms, BorderStylesAreTheWindowsFrame) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    form->SetBounds(50, 60, 300, 200);
    form->Show();
    const HWND window = form->Handle();
    EXPECT_EQ(StyleOf(*form) & (WS_CAPTION | WS_THICKFRAME), DWORD{WS_CAPTION | WS_THICKFRAME});
    form->SetBorderStyle(bsDialog);
    EXPECT_EQ(StyleOf(*form) & (WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX), 0u);
    EXPECT_NE(ExStyleOf(*form) & WS_EX_DLGMODALFRAME, 0u);
    form->SetBorderStyle(bsToolWindow);
    EXPECT_NE(ExStyleOf(*form) & WS_EX_TOOLWINDOW, 0u);
    form->SetBorderStyle(bsNone);
    EXPECT_EQ(StyleOf(*form) & WS_CAPTION, 0u);
    EXPECT_EQ(form->ClientRect(), (TRect{0, 0, 300, 200}));
    form->SetBorderStyle(bsSizeable);
    form->SetBorderIcons({biSystemMenu});
    EXPECT_EQ(StyleOf(*form) & (WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX), DWORD{WS_SYSMENU});
    EXPECT_EQ(form->Handle(), window) << "the window stays";
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_EQ(ScreenRectOf(window), (TRect{50, 60, 350, 260}));
}

TEST(Forms, PositionsAreAppliedAtTheFirstShowing) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    form->SetBounds(7, 8, 300, 200);
    form->SetPosition(poScreenCenter);
    form->Show();
    EXPECT_EQ(form->Left(), (Screen().Width() - 300) / 2);
    EXPECT_EQ(form->Top(), (Screen().Height() - 200) / 2);

    auto* const owned = NewForm<TForm>(form.get());
    owned->SetPosition(poOwnerFormCenter);
    owned->SetBounds(0, 0, 100, 100);
    owned->Show();
    EXPECT_EQ(owned->Left(), form->Left() + 100);
    EXPECT_EQ(owned->Top(), form->Top() + 50);
    owned->Hide();
    owned->SetLeft(3);
    owned->Show();
    EXPECT_EQ(owned->Left(), 3) << "moved by the user, it stays there";
}

TEST(Forms, ClosingAsksAndHides) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    std::vector<std::string> log;
    bool allow = false;
    form->SetOnCloseQuery([&](TObject*, bool& canClose) {
        log.emplace_back("query");
        canClose = allow;
    });
    form->SetOnClose(
        [&](TObject*, TCloseAction& action) { log.emplace_back(action == caHide ? "close hide" : "close other"); });
    form->SetOnHide([&](TObject*) { log.emplace_back("hide"); });
    form->Show();
    PostMessageA(form->Handle(), WM_SYSCOMMAND, SC_CLOSE, 0);
    ASSERT_TRUE(PumpUntil([&] { return log.size() == 1; }));
    EXPECT_TRUE(form->Visible());
    allow = true;
    form->Close();
    EXPECT_EQ(log, (std::vector<std::string>{"query", "query", "close hide", "hide"}));
    EXPECT_FALSE(IsWindowVisible(form->Handle()));
}

TEST(Forms, AFormThatFreesItselfOnCloseIsFreedByTheMessageLoop) {
    TComponent owner;
    auto* const form = NewForm<TForm>(&owner);
    form->SetOnClose([](TObject*, TCloseAction& action) { action = caFree; });
    form->Show();
    SendMessageA(form->Handle(), WM_CLOSE, 0, 0);
    EXPECT_EQ(owner.ComponentCount(), 1);
    EXPECT_TRUE(PumpUntil([&] { return owner.ComponentCount() == 0; }));
}

TEST(Forms, ReleasedTwiceOrFreedMeanwhileIsFreedOnce) {
    TComponent owner;
    auto* const form = NewForm<TForm>(&owner);
    form->Release();
    form->Release();
    form->Free();
    Application().ProcessMessages();
    EXPECT_EQ(owner.ComponentCount(), 0);
}

TEST(Forms, ActivationFiresItsEventsAndNamesTheActiveForm) {
    std::vector<std::string> log; // outlives the forms, which are deactivated when they go
    const TFormPtr first(NewForm<TForm>(nullptr));
    const TFormPtr second(NewForm<TForm>(nullptr));
    first->SetOnActivate([&](TObject*) { log.emplace_back("activate 1"); });
    first->SetOnDeactivate([&](TObject*) { log.emplace_back("deactivate 1"); });
    second->SetOnActivate([&](TObject*) { log.emplace_back("activate 2"); });
    first->Show();
    ASSERT_TRUE(PumpUntil([&] { return Screen().ActiveForm() == first.get(); }));
    second->Show();
    ASSERT_TRUE(PumpUntil([&] { return Screen().ActiveForm() == second.get(); }));
    EXPECT_EQ(log, (std::vector<std::string>{"activate 1", "deactivate 1", "activate 2"}));
    EXPECT_TRUE(second->Active());
    EXPECT_FALSE(first->Active());
}

TEST(Forms, TheScreenKnowsAllForms) {
    const int before = Screen().FormCount();
    {
        const TFormPtr form(NewForm<TForm>(nullptr));
        EXPECT_EQ(Screen().FormCount(), before + 1);
        EXPECT_EQ(Screen().Forms(before), form.get());
    }
    EXPECT_EQ(Screen().FormCount(), before);
    EXPECT_THROW(Screen().Forms(before), EListError);
}

TEST(Forms, AMenuBarDispatchesItsCommands) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    auto* const menu = new TMainMenu(form.get());
    auto* const item = new TMenuItem(form.get());
    int clicks = 0;
    item->SetCaption("&Go");
    item->SetOnClick([&](TObject*) { ++clicks; });
    menu->Items().Add(item);
    form->SetMenu(menu);
    form->SetClientSize(200, 100);
    form->Show();
    EXPECT_EQ(form->ClientHeight(), 100);
    EXPECT_NE(GetMenu(form->Handle()), nullptr);
    SendMessageA(form->Handle(), WM_COMMAND, item->Command(), 0);
    EXPECT_EQ(clicks, 1);
    menu->Free();
    EXPECT_EQ(form->Menu(), nullptr);
    EXPECT_EQ(GetMenu(form->Handle()), nullptr);
}

TEST(Forms, TheStateThatAFormIsToBeShownInStaysWhileItsWindowIsMade) {
    for (const TWindowState state : {wsMaximized, wsMinimized}) {
        const TFormPtr form(NewForm<TForm>(nullptr));
        auto* const menu = new TMainMenu(form.get());
        menu->Items().Add(new TMenuItem(form.get()));
        form->SetMenu(menu);
        form->SetWindowState(state);
        form->Show();
        EXPECT_EQ(form->WindowState(), state);
        EXPECT_EQ(IsZoomed(form->Handle()) != 0, state == wsMaximized);
        EXPECT_EQ(IsIconic(form->Handle()) != 0, state == wsMinimized);
        ShowWindow(form->Handle(), SW_RESTORE);
        EXPECT_TRUE(PumpUntil([&] { return form->WindowState() == wsNormal; })) << "the user's doing is noted";
        ShowWindow(form->Handle(), SW_MAXIMIZE);
        EXPECT_TRUE(PumpUntil([&] { return form->WindowState() == wsMaximized; }));
    }
}

TEST(Forms, OnResizeRunsWhenTheWindowIsMadeAndWhenItsSizeChanges) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    int resizes = 0;
    form->SetOnResize([&](TObject*) { ++resizes; });
    form->Show();
    EXPECT_EQ(resizes, 1);
    form->SetWidth(form->Width() + 10);
    EXPECT_EQ(resizes, 2);
    form->SetLeft(form->Left() + 10);
    EXPECT_EQ(resizes, 2);
}

// --- The application

TEST(Application, ExceptionsWithoutAHandlerAreShown) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    auto* const button = new TButton(form.get());
    button->SetParent(form.get());
    button->SetOnClick([](TObject*) { throw Exception("It failed"); });
    form->Show();
    std::string text;
    bool enabled = true;
    RunDialog(
        [&] {
            SendMessageA(button->Handle(), BM_CLICK, 0, 0);
            return true;
        },
        {AnswerBox(IDOK, [&](const std::string& shown) {
            text = shown;
            enabled = IsWindowEnabled(form->Handle()) != 0;
        })});
    EXPECT_EQ(text, "It failed");
    EXPECT_FALSE(enabled);
    EXPECT_TRUE(IsWindowEnabled(form->Handle()));
}

TEST(Application, AnAbortIsSilent) {
    TExceptionLog log;
    const TFormPtr form(NewForm<TForm>(nullptr));
    auto* const button = new TButton(form.get());
    button->SetParent(form.get());
    button->SetOnClick([](TObject*) { throw EAbort("never seen"); });
    form->Show();
    SendMessageA(button->Handle(), BM_CLICK, 0, 0);
    EXPECT_TRUE(log.Messages().empty());
    button->SetOnClick([](TObject*) { throw 5; });
    SendMessageA(button->Handle(), BM_CLICK, 0, 0);
    EXPECT_EQ(log.Messages(), std::vector<std::string>{"Unknown exception"});
}

TEST(Application, QueuedWorkRunsInTheMessageLoop) {
    std::vector<int> order;
    Application().QueueCall([&] { order.push_back(1); });
    Application().QueueCall([&] {
        order.push_back(2);
        throw EAbort("ends only this call");
    });
    Application().QueueCall([&] { order.push_back(3); });
    EXPECT_TRUE(order.empty());
    EXPECT_TRUE(PumpUntil([&] { return order.size() == 3; }));
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

// --- Modal forms

TEST(ModalForms, DisableTheOtherWindowsUntilTheyAreClosed) {
    const TFormPtr other(NewForm<TForm>(nullptr));
    other->Show();
    ASSERT_TRUE(PumpUntil([&] { return other->Active(); }));
    const std::unique_ptr<TAllControlsForm, TFreeDeleter> form(NewForm<TAllControlsForm>(nullptr));
    bool disabled = false;
    TModalResult result = mrNone;
    RunDialog(
        [&] {
            result = form->ShowModal();
            return true;
        },
        {{"the form is active", [&] { return form->Active() && form->Edit1->Focused(); },
          [&] {
              disabled = !IsWindowEnabled(other->Handle());
              EXPECT_EQ(Application().ModalLevel(), 1);
              EXPECT_EQ(GetWindow(form->Handle(), GW_OWNER), other->Handle());
              PressKey(VK_ESCAPE);
          }}});
    EXPECT_EQ(result, mrCancel);
    EXPECT_TRUE(disabled);
    EXPECT_TRUE(IsWindowEnabled(other->Handle()));
    EXPECT_FALSE(form->Visible());
    EXPECT_EQ(Application().ModalLevel(), 0);
    EXPECT_TRUE(PumpUntil([&] { return other->Active(); }));
}

TEST(ModalForms, AFormMayRefuseToCloseAndCloseLater) {
    const std::unique_ptr<TAllControlsForm, TFreeDeleter> form(NewForm<TAllControlsForm>(nullptr));
    int queries = 0;
    form->SetOnCloseQuery([&](TObject*, bool& canClose) { canClose = ++queries == 2; });
    TModalResult result = mrNone;
    RunDialog(
        [&] {
            result = form->ShowModal();
            return true;
        },
        {{"the form is active", [&] { return form->Active(); }, [&] { form->OkButton->Click(); }},
         {"it refused", [&] { return queries == 1 && form->ModalResult() == mrNone; },
          [&] { SendMessageA(form->Handle(), WM_CLOSE, 0, 0); }}});
    EXPECT_EQ(queries, 2);
    EXPECT_EQ(result, mrCancel);
}

TEST(ModalForms, MayBeNestedAndShownAgain) {
    const std::unique_ptr<TAllControlsForm, TFreeDeleter> outer(NewForm<TAllControlsForm>(nullptr));
    const std::unique_ptr<TAllControlsForm, TFreeDeleter> inner(NewForm<TAllControlsForm>(nullptr));
    TModalResult innerResult = mrNone;
    for (int round = 0; round < 2; ++round) {
        TModalResult outerResult = mrNone;
        RunDialog(
            [&] {
                outerResult = outer->ShowModal();
                return true;
            },
            {{"outer is active", [&] { return outer->Active(); }, [&] { innerResult = inner->ShowModal(); }},
             {"inner is active", [&] { return inner->Active(); },
              [&] {
                  EXPECT_FALSE(IsWindowEnabled(outer->Handle()));
                  EXPECT_EQ(Application().ModalLevel(), 2);
                  inner->OkButton->Click();
              }},
             {"outer is active again", [&] { return outer->Active() && innerResult == mrOk; },
              [&] { outer->SetModalResult(static_cast<TModalResult>(42)); }}});
        EXPECT_EQ(static_cast<int>(outerResult), 42);
    }
}

TEST(ModalForms, AnExceptionInAHandlerDoesNotEndThem) {
    TExceptionLog log;
    const std::unique_ptr<TAllControlsForm, TFreeDeleter> form(NewForm<TAllControlsForm>(nullptr));
    form->CheckBox1->SetOnClick([](TObject*) { throw Exception("in a modal form"); });
    TModalResult result = mrNone;
    RunDialog(
        [&] {
            result = form->ShowModal();
            return true;
        },
        {{"the form is active", [&] { return form->Active(); },
          [&] { SendMessageA(form->CheckBox1->Handle(), BM_CLICK, 0, 0); }},
         {"it was reported", [&] { return log.Messages().size() == 1; }, [&] { form->OkButton->Click(); }}});
    EXPECT_EQ(result, mrOk);
}

TEST(ModalForms, AVisibleFormCannotBecomeModal) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    form->Show();
    EXPECT_THROW(form->ShowModal(), EInvalidOperation);
    EXPECT_EQ(Application().ModalLevel(), 0);
}

// The last ones: once terminated, no modal form stays open.
TEST(ApplicationRun, TheFirstFormIsTheMainFormAndClosingItEndsTheLoop) {
    ASSERT_EQ(Application().MainForm(), nullptr);
    TAllControlsForm* form = nullptr;
    Application().CreateForm(&form);
    EXPECT_EQ(Application().MainForm(), form);
    EXPECT_EQ(form->Owner(), &Application());
    EXPECT_EQ(form->Log, std::vector<std::string>{"create"});
    form->SetOnActivate([&](TObject*) { PostMessageA(form->Handle(), WM_CLOSE, 0, 0); });
    Application().Run();
    EXPECT_TRUE(Application().Terminated());
    form->Free();
    EXPECT_EQ(Application().MainForm(), nullptr);
}

TEST(ApplicationRun, AnyThreadMayEndTheLoop) {
    std::thread worker([] { Application().Terminate(); });
    Application().Run();
    EXPECT_TRUE(Application().Terminated());
    worker.join();
}

} // namespace
} // namespace kx
