// SPDX-License-Identifier: MIT
// From a lite dialog's opening to its end: vetoes, nesting, handlers that free or fail.

#include "FileDlgTest.h"

#include "kx/ui/controls/Menus.h"

#include <stdexcept>

namespace kx {
namespace {

using namespace test;

class LiteLife : public TFileDlgTest {};

// --- Messages of the dialog window

TEST_F(LiteLife, AVetoedOkKeepsTheDialogOpenAndIsNotReported) {
    auto& dialog = NewDialog();
    int vetoed = 0;
    int reported = 0;
    const auto isOk = [](const TMessage& m) { return m.Msg == WM_COMMAND && m.WParam == IDOK; };
    dialog.SetOnEventHooking([&](TObject* sender, TMessage& m, bool& allow) {
        EXPECT_EQ(sender, &dialog);
        EXPECT_TRUE(allow);
        if (isOk(m)) {
            ++vetoed;
            allow = false;
            m.Result = 4711;
        }
    });
    dialog.SetOnEventHook([&](TMessage& m) { reported += isOk(m) ? 1 : 0; });
    EXPECT_FALSE(Look(dialog, [&] {
        dialog.SetFilenameText("two.txt");
        EXPECT_EQ(SendMessageA(dialog.DlgHandle(), WM_COMMAND, IDOK, 0), 4711);
        EXPECT_TRUE(IsWindowVisible(dialog.DlgHandle()));
    }));
    EXPECT_EQ(vetoed, 1);
    EXPECT_EQ(reported, 0);
}

TEST_F(LiteLife, MessagesAreReportedOnceTheSystemHasAnswered) {
    auto& dialog = NewDialog();
    LRESULT result = 0;
    dialog.SetOnEventHook([&](TMessage& m) {
        if (m.Msg == WM_GETTEXTLENGTH) {
            result = m.Result;
            m.Result = 99;
        }
    });
    dialog.SetTitle("12345");
    Look(dialog, [&] { EXPECT_EQ(SendMessageA(dialog.DlgHandle(), WM_GETTEXTLENGTH, 0, 0), 99); });
    EXPECT_EQ(result, 5);
}

TEST_F(LiteLife, AVetoedDestructionIsTolerated) {
    const TFormPtr form = MakeMarkedForm(clCream, 120, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetRightForm(form.get());
    dialog.SetOnEventHooking([](TObject*, TMessage& m, bool& allow) { allow = m.Msg != WM_DESTROY; });
    int width = 0;
    Look(dialog, [&] { width = Width(ScreenRectOf(dialog.DlgHandle())); });
    EXPECT_EQ(dialog.DlgHandle(), nullptr);
    dialog.SetOnEventHooking({});
    Look(dialog, [&] {
        EXPECT_EQ(Width(ScreenRectOf(dialog.DlgHandle())), width);
        EXPECT_TRUE(IsWindowVisible(form->WindowHandle()));
        ExpectCleanLayout(dialog);
    });
    EXPECT_FALSE(form->Visible());
}

TEST_F(LiteLife, AContextMenuOverAControlWithOneOfItsOwnDoesNotReachTheSystem) {
    const TFormPtr form = MakeMarkedForm(clCream, 150, 60);
    TPopupMenu menu;
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetRightForm(form.get());
    int reported = 0;
    dialog.SetOnEventHook([&](TMessage& m) { reported += m.Msg == WM_CONTEXTMENU ? 1 : 0; });
    Look(dialog, [&] {
        const TPoint centre = CenterOf(form->Handle());
        // The system's answer to the message is 0; kept from it, the answer stays as the sender made it.
        TMessage message{WM_CONTEXTMENU, reinterpret_cast<WPARAM>(form->Handle()), MakeLParam(centre.X, centre.Y), 0};
        bool allow = true;
        TKxCustDlgParams::TrackContextMenus(allow, message);
        EXPECT_TRUE(allow);
        form->SetPopupMenu(&menu);
        TKxCustDlgParams::TrackContextMenus(allow, message);
        EXPECT_FALSE(allow);
        SendMessageA(dialog.DlgHandle(), message.Msg, message.WParam, message.LParam);
        EXPECT_EQ(reported, 1);
        form->SetPopupMenu(nullptr);
        SendMessageA(dialog.DlgHandle(), message.Msg, message.WParam, message.LParam);
        EXPECT_EQ(reported, 2);
    });
}

// --- Dialogs inside dialogs

TEST_F(LiteLife, ADialogOpensFromInsideAnother) {
    const TFormPtr outerForm = MakeMarkedForm(clCream, 120, 60);
    const TFormPtr innerForm = MakeMarkedForm(clSkyBlue, 100, 60);
    auto& outer = NewDialog();
    auto& inner = NewDialog();
    outer.CustDlgParams().SetLeftForm(outerForm.get());
    inner.CustDlgParams().SetRightForm(innerForm.get());
    inner.CustDlgParams().SetPosition(dpScrCenter);
    outer.SetOnUpLevelNavigating([&](TObject*, bool& allow) {
        EXPECT_EQ(TKxCustomOpenLiteDialog::Running(), &outer);
        EXPECT_TRUE(RunDialog(inner,
                              [&] {
                                  EXPECT_EQ(TKxCustomOpenLiteDialog::Running(), &inner);
                                  EXPECT_FALSE(IsWindowEnabled(outer.DlgHandle()));
                                  ExpectCleanLayout(inner);
                                  Screenshot("lite_nested");
                              },
                              {EnterFileName(inner, "one.txt")}));
        EXPECT_EQ(TKxCustomOpenLiteDialog::Running(), &outer);
        allow = false;
    });
    EXPECT_TRUE(RunDialog(outer, [&] { PressToolButton(outer, 40961); },
                          {{"the outer dialog is on top again", Shown(outer),
                            [&] {
                                EXPECT_TRUE(IsWindowEnabled(outer.DlgHandle()));
                                EXPECT_EQ(GetParent(outerForm->WindowHandle()), outer.DlgHandle());
                                ExpectCleanLayout(outer);
                            }},
                           EnterFileName(outer, "two.txt")}));
    EXPECT_EQ(inner.FileName(), Folder.Path("one.txt"));
    EXPECT_EQ(outer.FileName(), Folder.Path("two.txt"));
    EXPECT_EQ(TKxCustomOpenLiteDialog::Running(), nullptr);
}

TEST_F(LiteLife, ADialogOpensFromTheShowingOfAnother) {
    auto& outer = NewDialog();
    auto& inner = NewDialog();
    outer.SetOnShow([&](TObject*) { EXPECT_FALSE(Look(inner)); });
    Look(outer, [&] { EXPECT_EQ(outer.SelectedFolder(), Folder.Path()); });
}

TEST_F(LiteLife, AShownDialogIsNotShownTwice) {
    auto& dialog = NewDialog();
    dialog.CustDlgParams().PosParams().SetShiftX(30);
    Look(dialog, [&] {
        const TRect place = ScreenRectOf(dialog.DlgHandle());
        EXPECT_THROW(dialog.Execute(), EInvalidOperation);
        SetWindowPos(dialog.DlgHandle(), nullptr, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED);
        EXPECT_EQ(ScreenRectOf(dialog.DlgHandle()), place);
        EXPECT_EQ(TKxCustomOpenLiteDialog::Running(), &dialog);
    });
    EXPECT_EQ(TKxCustomOpenLiteDialog::Running(), nullptr);
}

// --- The save dialog

TEST_F(LiteLife, TheSaveDialogSavesUnderANewName) {
    const TFormPtr form = MakeMarkedForm(clCream, 120, 60);
    auto& dialog = NewDialog<TKxSaveLiteDialog>();
    dialog.SetDefaultExt("txt");
    dialog.SetTitle("Keep it");
    dialog.CustDlgParams().SetBottomForm(form.get());
    dialog.DlgItemsCaptions().SetOK("&Keep");
    EXPECT_TRUE(RunDialog(dialog,
                          [&] {
                              EXPECT_EQ(TextOf(dialog.DlgHandle()), "Keep it");
                              EXPECT_EQ(TextOf(ItemOf(dialog, IDOK)), "&Keep");
                              ExpectCleanLayout(dialog);
                              Screenshot("lite_save", dialog.DlgHandle());
                          },
                          {EnterFileName(dialog, "fresh")}));
    EXPECT_EQ(dialog.FileName(), Folder.Path("fresh.txt"));
    EXPECT_FALSE(Folder.Contains("fresh.txt")); // choosing a name writes nothing
}

TEST_F(LiteLife, TheSaveDialogAsksBeforeItOverwrites) {
    auto& dialog = NewDialog<TKxSaveLiteDialog>();
    dialog.SetOptions({ofOverwritePrompt, ofHideReadOnly});
    EXPECT_TRUE(RunDialog(dialog, {EnterFileName(dialog, "one.txt"), AnswerBox(IDNO),
                                   Await("the dialog is open still", Shown(dialog)), EnterFileName(dialog, "one.txt"),
                                   AnswerBox(IDYES)}));
    EXPECT_EQ(dialog.FileName(), Folder.Path("one.txt"));
}

TEST_F(LiteLife, TheSaveDialogStaysTheRunningOneAndDisturbsNobody) {
    auto& save = NewDialog<TKxSaveLiteDialog>();
    auto& open = NewDialog();
    EXPECT_TRUE(RunDialog(save, {EnterFileName(save, "fresh.txt")}));
    EXPECT_EQ(TKxCustomOpenLiteDialog::Running(), &save);
    save.PlacesBar().SetVisible(false);
    EXPECT_TRUE(RunDialog(open,
                          [&] {
                              EXPECT_EQ(TKxCustomOpenLiteDialog::Running(), &open);
                              EXPECT_NE(PlacesBarOf(open), nullptr); // its own choice, not the save dialog's
                          },
                          {EnterFileName(open, "one.txt")}));
    EXPECT_EQ(TKxCustomOpenLiteDialog::Running(), &save);
    EXPECT_FALSE(Look(save, [&] { EXPECT_EQ(PlacesBarOf(save), nullptr); }));
    save.Free();
    EXPECT_EQ(TKxCustomOpenLiteDialog::Running(), nullptr);
}

// --- Freed in the middle

TEST_F(LiteLife, AFormMayBeFreedWhileItIsDocked) {
    TFormPtr left = MakeMarkedForm(clCream, 120, 60);
    TFormPtr bottom = MakeMarkedForm(clSkyBlue, 120, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetLeftForm(left.get());
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    EXPECT_TRUE(RunDialog(dialog,
                          [&] {
                              left.reset();
                              EXPECT_EQ(dialog.CustDlgParams().LeftForm(), nullptr);
                              const TRect outer = ScreenRectOf(dialog.DlgHandle());
                              SetWindowPos(dialog.DlgHandle(), nullptr, 0, 0, Width(outer) + 50, Height(outer) + 50,
                                           SWP_NOMOVE | SWP_NOZORDER);
                              ExpectCleanLayout(dialog);
                          },
                          {EnterFileName(dialog, "two.txt")}));
    EXPECT_FALSE(bottom->IsDocked());
    EXPECT_FALSE(Look(dialog, [&] { ExpectCleanLayout(dialog); }));
}

TEST_F(LiteLife, AFormFreedBetweenShowingsIsForgotten) {
    TFormPtr form = MakeMarkedForm(clCream, 120, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetTopForm(form.get());
    Look(dialog);
    form.reset();
    Look(dialog, [&] { EXPECT_EQ(dialog.CustDlgParams().IncY(), 0); });
}

TEST_F(LiteLife, TheOwnerMayBeFreedWhileTheDialogIsShown) {
    const TFormPtr form = MakeMarkedForm(clCream, 120, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetRightForm(form.get());
    EXPECT_FALSE(RunDialog(dialog, [&] { Owner.reset(); }));
    EXPECT_FALSE(form->IsDocked());
    EXPECT_FALSE(form->Visible());
    EXPECT_EQ(TKxCustomOpenLiteDialog::Running(), nullptr);
    EXPECT_EQ(ActiveDialog(), nullptr);
}

/// Events in which a handler frees the dialog.
class LiteFreedIn : public LiteLife, public testing::WithParamInterface<const char*> {};

TEST_P(LiteFreedIn, AHandlerItIsGoneWithoutATrace) {
    const std::string event = GetParam();
    const TFormPtr form = MakeMarkedForm(clCream, 120, 60);
    auto* dialog = new TKxOpenLiteDialog(nullptr);
    dialog->SetInitialDir(Folder.Path());
    dialog->CustDlgParams().SetLeftForm(form.get());
    const auto free = [&] {
        if (dialog) {
            std::exchange(dialog, nullptr)->Free();
        }
    };
    const TNotifyEvent notify = [&](TObject*) { free(); };
    const TKxCtrlQueryEvent query = [&](TObject*, bool&) { free(); };
    WORD command = 40961;
    if (event == "OnShow") {
        dialog->SetOnShow(notify);
    } else if (event == "OnUpLevelNavigating") {
        dialog->SetOnUpLevelNavigating(query);
    } else if (event == "OnUpLevelNavigate") {
        dialog->SetOnUpLevelNavigate(notify);
    } else if (event == "OnEventHooking") {
        dialog->SetOnEventHooking([&](TObject*, TMessage& m, bool&) {
            if (m.Msg == WM_COMMAND) {
                free();
            }
        });
    } else if (event == "OnEventHook") {
        dialog->SetOnEventHook([&](TMessage& m) {
            if (m.Msg == WM_COMMAND) {
                free();
            }
        });
    } else if (event == "OnFolderChange") {
        dialog->SetOnFolderChange([&](TObject*) {
            if (dialog && dialog->SelectedFolder() != Folder.Path()) {
                free();
            }
        });
    } else if (event == "OnClose") {
        dialog->SetOnClose(notify);
        command = IDCANCEL;
    }
    TTestDriver driver;
    if (event != "OnShow") {
        driver.Then("the dialog is shown", Shown(*dialog),
                    [&] { SendMessageA(dialog->DlgHandle(), WM_COMMAND, command, 0); });
    }
    TKxOpenLiteDialog* const running = dialog;
    EXPECT_FALSE(driver.Run([&] { return running->Execute(); }));
    EXPECT_EQ(dialog, nullptr);
    EXPECT_EQ(ActiveDialog(), nullptr);
    EXPECT_FALSE(form->IsDocked());
    EXPECT_EQ(TKxCustomOpenLiteDialog::Running(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(All, LiteFreedIn,
                         testing::Values("OnShow", "OnUpLevelNavigating", "OnUpLevelNavigate", "OnEventHooking",
                                         "OnEventHook", "OnFolderChange", "OnClose"),
                         [](const testing::TestParamInfo<const char*>& param) { return std::string(param.param); });

// --- Exceptions out of events

TEST_F(LiteLife, ExceptionsOfEveryEventReachTheApplicationAndTheDialogGoesOn) {
    auto& dialog = NewDialog();
    const auto notify = [](const char* what) {
        return TNotifyEvent([what](TObject*) { throw std::runtime_error(what); });
    };
    const auto query = [](const char* what) {
        return TKxCtrlQueryEvent([what](TObject*, bool&) { throw std::runtime_error(what); });
    };
    dialog.SetOnShow(notify("show"));
    dialog.SetCommonDialogInternalShowEvent(notify("internal"));
    EXPECT_FALSE(Look(dialog, [&] {
        EXPECT_THAT(TakeExceptions(), ElementsAre("show", "internal"));
        // A query that fails is no consent: nothing happens.
        dialog.SetOnUpLevelNavigating(query("up?"));
        dialog.SetOnDesktopNavigating(query("desktop?"));
        dialog.SetOnLastFolderNavigating(query("back?"));
        dialog.SetOnFolderCreating(query("folder?"));
        dialog.SetOnFilenameEntering(query("enter?"));
        for (const WORD command : {WORD{40961}, WORD{40969}, WORD{40971}, WORD{40962}}) {
            PressToolButton(dialog, command);
        }
        EXPECT_THAT(TakeExceptions(), ElementsAre("up?", "desktop?", "back?", "folder?"));
        EXPECT_EQ(dialog.SelectedFolder(), Folder.Path());
        dialog.SetFilenameText("two.txt");
        SetFocus(FileNameEditOf(dialog.DlgHandle()));
        SendMessageA(dialog.DlgHandle(), WM_COMMAND, IDOK, 0);
        EXPECT_THAT(TakeExceptions(), ElementsAre("enter?"));
        EXPECT_TRUE(IsWindowVisible(dialog.DlgHandle()));

        dialog.SetOnUpLevelNavigating({});
        dialog.SetOnDesktopNavigating({});
        dialog.SetOnLastFolderNavigating({});
        dialog.SetOnUpLevelNavigate(notify("up"));
        dialog.SetOnDesktopNavigate(notify("desktop"));
        dialog.SetOnLastFolderNavigate(notify("back"));
        dialog.SetOnFilenameChange(notify("change"));
        dialog.SetOnFolderChange(notify("shown"));
        for (const WORD command : {WORD{40961}, WORD{40969}, WORD{40971}}) {
            PressToolButton(dialog, command);
        }
        dialog.SetFilenameText("x");
        const auto messages = TakeExceptions();
        for (const char* what : {"up", "desktop", "back", "change", "shown"}) {
            EXPECT_THAT(messages, Contains(what));
        }
        dialog.SetOnFilenameChange({});
    }));
    TakeExceptions();
    EXPECT_TRUE(RunDialog(dialog,
                          [&] {
                              dialog.SetOnFilenameEntering({});
                              dialog.SetSelectedFolder(Folder.Path());
                          },
                          {EnterFileName(dialog, "two.txt")}));
    TakeExceptions();
}

TEST_F(LiteLife, AHookThatAlwaysFailsDoesNotStopTheDialog) {
    const TFormPtr form = MakeMarkedForm(clCream, 120, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetLeftForm(form.get());
    dialog.SetOnEventHooking([](TObject*, TMessage& m, bool&) {
        if (m.Msg != WM_COMMAND) {
            throw std::runtime_error("hooking");
        }
    });
    dialog.SetOnEventHook([](TMessage&) { throw std::runtime_error("hook"); });
    EXPECT_TRUE(RunDialog(dialog, {EnterFileName(dialog, "two.txt")}));
    const auto messages = TakeExceptions();
    EXPECT_THAT(messages, Contains("hooking"));
    EXPECT_THAT(messages, Contains("hook"));
    EXPECT_EQ(dialog.FileName(), Folder.Path("two.txt"));
    dialog.SetOnEventHooking({});
    dialog.SetOnEventHook({});
    EXPECT_FALSE(Look(dialog, [&] { ExpectCleanLayout(dialog); }));
}

TEST_F(LiteLife, AFormWhoseShowingFailsDoesNotStopTheDialog) {
    const TFormPtr form = MakeMarkedForm(clCream, 120, 60);
    form->SetOnShow([](TObject*) { throw std::runtime_error("form"); });
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetLeftForm(form.get());
    dialog.DlgItemsCaptions().SetOK("&Take");
    bool shown = false;
    dialog.SetOnShow([&](TObject*) { shown = true; });
    Look(dialog, [&] { EXPECT_EQ(TextOf(ItemOf(dialog, IDOK)), "&Take"); });
    EXPECT_TRUE(shown);
    EXPECT_THAT(TakeExceptions(), ElementsAre("form"));
    EXPECT_FALSE(form->IsDocked());
}

} // namespace
} // namespace kx
