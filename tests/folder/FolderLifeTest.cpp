// SPDX-License-Identifier: MIT
// From the folder dialog's opening to its end: vetoes, nesting, handlers that free or fail.

#include "FolderDlgTest.h"

#include <atomic>
#include <stdexcept>
#include <thread>
#include <tuple>

namespace kx {
namespace {

using namespace test;

class FolderLife : public TFolderDlgTest {};

bool IsOk(const TMessage& m) { return m.Msg == WM_COMMAND && m.WParamLo() == IDOK; }

// --- Messages of the browser

TEST_F(FolderLife, AVetoedOkKeepsTheDialogOpenAndIsNotReported) {
    auto& dialog = NewDialog();
    int vetoed = 0;
    int reported = 0;
    int asked = 0;
    dialog.SetOnCanClose([&](TObject*, bool&) { ++asked; });
    dialog.SetOnEventHooking([&](TObject* sender, TMessage& m, bool& allow) {
        EXPECT_EQ(sender, &dialog);
        EXPECT_TRUE(allow);
        if (IsOk(m)) {
            ++vetoed;
            allow = false;
        }
    });
    dialog.SetOnEventHook([&](TMessage& m) { reported += IsOk(m) ? 1 : 0; });
    EXPECT_FALSE(RunDialog(dialog, [&] { Click(ItemOf(dialog, IDOK)); },
                           {{"the click is vetoed", [&] { return vetoed == 1; },
                             [&] { EXPECT_TRUE(IsWindowVisible(dialog.DialogWindow())); }},
                            Cancel(dialog)}));
    EXPECT_EQ(reported, 0);
    EXPECT_EQ(asked, 0);
}

TEST_F(FolderLife, MessagesAreReportedOnceTheSystemHasAnswered) {
    auto& dialog = NewDialog();
    LRESULT result = 0;
    dialog.SetOnEventHook([&](TMessage& m) {
        if (m.Msg == DM_GETDEFID) {
            result = m.Result;
            m.Result = 99;
        }
    });
    Look(dialog, [&] { EXPECT_EQ(SendMessageA(dialog.DialogWindow(), DM_GETDEFID, 0, 0), 99); });
    EXPECT_EQ(result, MAKELONG(IDOK, DC_HASDEFID));
}

TEST_F(FolderLife, OnCanCloseKeepsTheDialogOpenOrLetsItGo) {
    auto& dialog = NewDialog();
    int asked = 0;
    dialog.SetOnCanClose([&](TObject* sender, bool& canClose) {
        EXPECT_EQ(sender, &dialog);
        EXPECT_TRUE(canClose);
        canClose = ++asked > 2;
    });
    EXPECT_TRUE(RunDialog(
        dialog, [&] { ClickTreeItem(TreeOf(dialog), "alpha"); },
        {{"selected", [&] { return dialog.SelFolder() == Folder.Path("alpha"); }, [] { PressKey(VK_RETURN); }},
         {"refused by key", [&] { return asked == 1; }, [&] { Click(ItemOf(dialog, IDOK)); }},
         {"refused by mouse", [&] { return asked == 2; },
          [&] {
              EXPECT_TRUE(IsWindowVisible(dialog.DialogWindow()));
              dialog.CloseDialog(mrOk);
          }}}));
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(dialog.Folder(), Folder.Path("alpha"));
}

TEST_F(FolderLife, CancellingAsksNobody) {
    auto& dialog = NewDialog();
    dialog.SetOnCanClose([](TObject*, bool& canClose) { canClose = false; });
    EXPECT_FALSE(RunDialog(dialog, [] { PressKey(VK_ESCAPE); }));
}

TEST_F(FolderLife, IsDrivenByTheCommonInterface) {
    auto& dialog = NewDialog();
    ICommonDialog& common = dialog;
    std::vector<std::string> log;
    EXPECT_EQ(common.GetCommonDialogHandle(), nullptr);
    EXPECT_EQ(&common.GetCustDlgParams(), &dialog.CustDlgParams());
    dialog.SetOnShow([&](TObject*) { log.emplace_back("show"); });
    common.SetCommonDialogInternalShowEvent([&](TObject* sender) {
        EXPECT_EQ(sender, &dialog);
        EXPECT_EQ(common.GetCommonDialogHandle(), dialog.DialogWindow());
        log.emplace_back("internal");
    });
    EXPECT_TRUE(common.GetCommonDialogInternalShowEvent());
    dialog.SetOnClose([&](TObject*) { log.emplace_back("close"); });
    EXPECT_FALSE(RunDialog([&] { return common.Execute(); }, {{"the dialog is shown", Shown(dialog), [&] {
                                                                   EXPECT_EQ(TKxCustomFolderDialog::Running(), &dialog);
                                                                   common.CloseDialog(3);
                                                                   EXPECT_TRUE(
                                                                       IsWindowVisible(common.GetCommonDialogHandle()));
                                                                   common.CloseDialog(mrCancel);
                                                               }}}));
    EXPECT_THAT(log, ElementsAre("show", "internal", "close"));
    EXPECT_EQ(common.GetCommonDialogHandle(), nullptr);
    common.CloseDialog(mrOk); // nothing to close
}

TEST_F(FolderLife, AVetoedDestructionIsTolerated) {
    const TFormPtr form = MakeForm(clCream, 120, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetRightForm(form.get());
    dialog.SetOnEventHooking(
        [](TObject*, TMessage& m, bool& allow) { allow = m.Msg != WM_DESTROY && m.Msg != WM_NCDESTROY; });
    Look(dialog);
    EXPECT_EQ(dialog.GetCommonDialogHandle(), nullptr);
    EXPECT_EQ(dialog.Handle(), nullptr);
    EXPECT_FALSE(form->IsDocked());
    dialog.SetOnEventHooking({});
    EXPECT_FALSE(RunDialog(dialog, {Await("the form is painted", [&] { return IsPainted(*form); }), Cancel(dialog)}));
    EXPECT_FALSE(form->IsDocked());
}

TEST_F(FolderLife, AShownDialogIsNotShownTwice) {
    auto& dialog = NewDialog();
    Look(dialog, [&] {
        dialog.SetSelFolder(Folder.Path("alpha"));
        EXPECT_THROW(dialog.Execute(), EInvalidOperation);
        EXPECT_EQ(dialog.SelFolder(), Folder.Path("alpha"));
        EXPECT_EQ(TKxCustomFolderDialog::Running(), &dialog);
        EXPECT_NE(dialog.GetCommonDialogHandle(), nullptr);
    });
}

// --- One dialog inside another

TEST_F(FolderLife, ADialogOpensFromAnEventOfAnother) {
    const TFormPtr outerForm = MakeForm(clCream, 120, 60);
    const TFormPtr innerForm = MakeForm(clSkyBlue, 100, 60);
    auto& outer = NewDialog();
    auto& inner = NewDialog();
    outer.CustDlgParams().SetLeftForm(outerForm.get());
    inner.CustDlgParams().SetRightForm(innerForm.get());
    inner.CustDlgParams().SetPosition(dpScrCenter);
    int opened = 0;
    outer.SetOnSelectionChange([&](TObject*) {
        if (opened++ == 0) {
            EXPECT_TRUE(
                RunDialog(inner, {{"the inner form is painted", [&] { return IsPainted(*innerForm); },
                                   [&] {
                                       EXPECT_EQ(TKxCustomFolderDialog::Running(), &inner);
                                       EXPECT_FALSE(IsWindowEnabled(outer.DialogWindow()));
                                       Screenshot("folder_nested");
                                       ClickTreeItem(TreeOf(inner), "beta");
                                   }},
                                  Await("beta is selected", [&] { return inner.SelFolder() == Folder.Path("beta"); }),
                                  Press(inner, IDOK)}));
            EXPECT_EQ(TKxCustomFolderDialog::Running(), &outer);
        }
    });
    EXPECT_TRUE(
        RunDialog(outer, [&] { ClickTreeItem(TreeOf(outer), "alpha"); },
                  {{"the outer dialog goes on", [&] { return opened == 1 && Shown(outer)() && IsPainted(*outerForm); },
                    [&] { ClickTreeItem(TreeOf(outer), "beta"); }},
                   {"its own event", [&] { return opened == 2; },
                    [&] {
                        EXPECT_EQ(outer.SelFolder(), Folder.Path("beta"));
                        EXPECT_EQ(GetParent(outerForm->WindowHandle()), outer.DialogWindow());
                        ClickTreeItem(TreeOf(outer), "alpha");
                    }},
                   Await("the last click", [&] { return opened == 3; }),
                   Press(outer, IDOK)}));
    EXPECT_EQ(inner.Folder(), Folder.Path("beta"));
    EXPECT_EQ(outer.Folder(), Folder.Path("alpha"));
}

TEST_F(FolderLife, NotificationsGoToTheInnermostDialog) {
    auto& outer = NewDialog();
    auto& inner = NewDialog();
    int innerChanges = 0;
    inner.SetOnSelectionChange([&](TObject*) { ++innerChanges; });
    Look(outer, [&] {
        Look(inner, [&] {
            SelectTreeItem(TreeOf(outer), "alpha");
            EXPECT_EQ(innerChanges, 1);
            EXPECT_EQ(inner.SelFolder(), Folder.Path("alpha"));
        });
        EXPECT_EQ(outer.SelFolder(), "");
        SelectTreeItem(TreeOf(outer), "beta");
        EXPECT_EQ(outer.SelFolder(), Folder.Path("beta"));
    });
}

TEST_F(FolderLife, ADialogOpensFromTheShowingOfAnother) {
    auto& outer = NewDialog();
    auto& inner = NewDialog();
    outer.SetOnShow([&](TObject*) { EXPECT_FALSE(Look(inner)); });
    EXPECT_TRUE(RunDialog(outer, {Choose(outer, "alpha")}));
    EXPECT_EQ(outer.Folder(), Folder.Path("alpha"));
}

TEST_F(FolderLife, TheOuterDialogMayBeFreedInsideTheInner) {
    auto* outer = new TKxFolderDialog(nullptr);
    outer->SetInitialDir(Folder.Path());
    auto& inner = NewDialog();
    EXPECT_FALSE(RunDialog([&] { return outer->Execute(); }, {{"the outer dialog is shown", Shown(*outer), [&] {
                                                                   EXPECT_TRUE(RunDialog(inner, [&] { outer->Free(); },
                                                                                         {Choose(inner, "beta")}));
                                                                   EXPECT_EQ(TKxCustomFolderDialog::Running(), nullptr);
                                                               }}}));
    EXPECT_EQ(inner.Folder(), Folder.Path("beta"));
}

TEST_F(FolderLife, AFailingDialogInsideAnotherLeavesItRunning) {
    auto& outer = NewDialog();
    auto& inner = NewDialog();
    inner.SetInitialDir("C:\\no such folder");
    Look(outer, [&] {
        EXPECT_THROW(inner.Execute(), EOSError);
        EXPECT_EQ(TKxCustomFolderDialog::Running(), &outer);
        SelectTreeItem(TreeOf(outer), "beta");
        EXPECT_EQ(outer.SelFolder(), Folder.Path("beta"));
        EXPECT_TRUE(IsWindowEnabled(outer.DialogWindow()));
    });
}

// --- In other threads

TEST_F(FolderLife, RunsInAThreadOfItsOwn) {
    for (const TKxBrowseForFolderFlagsEx options :
         {TKxBrowseForFolderFlagsEx{}, TKxBrowseForFolderFlagsEx{ffNewDialogStyle}}) {
        auto& dialog = NewDialog();
        dialog.SetOptionsEx(options);
        std::atomic<bool> over = false;
        std::atomic<bool> running = false;
        std::atomic<DWORD> eventThread = 0;
        dialog.SetOnSelectionChange([&](TObject*) { eventThread = GetCurrentThreadId(); });
        dialog.SetOnShow([&](TObject*) { running = TKxCustomFolderDialog::Running() == &dialog; });
        bool result = false;
        DWORD id = 0;
        std::thread worker([&] {
            id = GetCurrentThreadId();
            result = dialog.Execute();
            over = true;
        });
        EXPECT_TRUE(PumpUntil([&] { return running && Shown(dialog)(); }));
        EXPECT_EQ(TKxCustomFolderDialog::Running(), nullptr); // of this thread
        ClickTreeItem(TreeOf(dialog), "alpha");
        EXPECT_TRUE(PumpUntil([&] { return dialog.SelFolder() == Folder.Path("alpha"); }));
        dialog.CloseDialog(mrOk);
        EXPECT_TRUE(PumpUntil([&] { return over.load(); }));
        worker.join();
        EXPECT_TRUE(result);
        EXPECT_EQ(eventThread, id);
        EXPECT_EQ(dialog.Folder(), Folder.Path("alpha"));
    }
}

TEST_F(FolderLife, TwoThreadsShowADialogEach) {
    auto& ours = NewDialog();
    auto& theirs = NewDialog();
    theirs.CustDlgParams().PosParams().SetShiftX(400);
    std::atomic<bool> over = false;
    bool result = false;
    Look(ours, [&] {
        std::thread worker([&] {
            result = theirs.Execute();
            over = true;
        });
        EXPECT_TRUE(PumpUntil([&] { return Shown(theirs)(); }));
        EXPECT_EQ(TKxCustomFolderDialog::Running(), &ours);
        SelectTreeItem(TreeOf(theirs), "beta");
        SelectTreeItem(TreeOf(ours), "alpha");
        EXPECT_EQ(theirs.SelFolder(), Folder.Path("beta"));
        EXPECT_EQ(ours.SelFolder(), Folder.Path("alpha"));
        theirs.CloseDialog(mrOk);
        EXPECT_TRUE(PumpUntil([&] { return over.load(); }));
        worker.join();
    });
    EXPECT_TRUE(result);
    EXPECT_EQ(theirs.Folder(), Folder.Path("beta"));
}

// --- Freed in the middle

TEST_F(FolderLife, TheOwnerMayBeFreedWhileTheDialogIsShown) {
    const TFormPtr form = MakeForm(clCream, 120, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetRightForm(form.get());
    EXPECT_FALSE(RunDialog(dialog, [&] { Owner.reset(); }));
    EXPECT_FALSE(form->IsDocked());
    EXPECT_FALSE(form->Visible());
}

TEST_F(FolderLife, DeletedWhileItIsShown) {
    const TFormPtr form = MakeForm(clCream, 120, 60);
    auto* dialog = new TKxFolderDialog(nullptr);
    dialog->SetInitialDir(Folder.Path());
    dialog->CustDlgParams().SetLeftForm(form.get());
    EXPECT_FALSE(RunDialog([&] { return dialog->Execute(); },
                           {{"the dialog is shown", Shown(*dialog), [&] { delete dialog; }}}));
    EXPECT_FALSE(form->IsDocked());
}

/// Events in which a handler frees the dialog, and the style of the browser.
using TFreedIn = std::tuple<std::string, bool>;
class FolderFreedIn : public FolderLife, public testing::WithParamInterface<TFreedIn> {
protected:
    FolderFreedIn() {
        Dialog->SetInitialDir(Folder.Path());
        Dialog->CustDlgParams().SetLeftForm(Form.get());
        if (std::get<1>(GetParam())) {
            Dialog->SetOptionsEx({ffNewDialogStyle});
        }
        Install(std::get<0>(GetParam()));
    }

    void FreeIt() {
        if (Dialog) {
            std::exchange(Dialog, nullptr)->Free();
        }
    }
    void FreeAt(const std::function<bool(const TMessage&)>& is, bool before) {
        if (before) {
            Dialog->SetOnEventHooking([this, is](TObject*, TMessage& m, bool&) {
                if (Armed && is(m)) {
                    FreeIt();
                }
            });
        } else {
            Dialog->SetOnEventHook([this, is](TMessage& m) {
                if (Armed && is(m)) {
                    FreeIt();
                }
            });
        }
    }
    void Install(const std::string& event) {
        const TNotifyEvent notify = [this](TObject*) {
            if (Armed) {
                FreeIt();
            }
        };
        const auto isSelection = [](const TMessage& m) {
            return m.Msg == WM_NOTIFY && (m.LParamAs<NMHDR>().code == static_cast<UINT>(TVN_SELCHANGEDW) ||
                                          m.LParamAs<NMHDR>().code == static_cast<UINT>(TVN_SELCHANGEDA));
        };
        if (event == "OnShow") {
            Armed = true;
            Dialog->SetOnShow(notify);
        } else if (event == "InternalShow") {
            Armed = true;
            Dialog->SetCommonDialogInternalShowEvent(notify);
        } else if (event == "OnSelectionChange") {
            Dialog->SetOnSelectionChange(notify);
        } else if (event == "OnClose") {
            Dialog->SetOnClose(notify);
        } else if (event == "OnCanClose") {
            Dialog->SetOnCanClose([this](TObject*, bool&) { FreeIt(); });
        } else if (event == "HookingSelection") {
            FreeAt(isSelection, true);
        } else if (event == "HookSelection") {
            FreeAt(isSelection, false);
        } else if (event == "HookingOk") {
            FreeAt(IsOk, true);
        } else if (event == "HookOk") {
            FreeAt(IsOk, false);
        }
    }

    const TFormPtr Form = MakeForm(clCream, 120, 60);
    TKxFolderDialog* Dialog = new TKxFolderDialog(nullptr);
    bool Armed = false;
};

/// With the mouse, so that the system's own code is what the handler returns into.
TEST_P(FolderFreedIn, AHandlerItIsGoneWithoutATrace) {
    TTestDriver driver;
    if (!Armed) { // the events of the showing come by themselves
        driver.Then("the dialog is shown", Shown(*Dialog), [this] {
            Armed = true;
            ClickTreeItem(TreeOf(*Dialog), "beta");
        });
        if (const std::string& event = std::get<0>(GetParam()); event.find("Selection") == std::string::npos) {
            driver.Then(
                "the click", [this] { return Dialog->SelFolder() == Folder.Path("beta"); },
                [this] { Click(ItemOf(*Dialog, IDOK)); });
        }
    }
    TKxFolderDialog* const running = Dialog;
    EXPECT_FALSE(driver.Run([&] { return running->Execute(); }));
    EXPECT_EQ(Dialog, nullptr);
    EXPECT_FALSE(Form->IsDocked());
    EXPECT_FALSE(Form->Visible());
    EXPECT_TRUE(IsWindowEnabled(Owner->Handle()));
}

/// The same with the keyboard.
TEST_P(FolderFreedIn, AHandlerByKeyboardItIsGoneWithoutATrace) {
    TTestDriver driver;
    if (!Armed) {
        driver.Then("the dialog is shown", Shown(*Dialog), [this] {
            SetFocus(TreeOf(*Dialog));
            SelectTreeItem(TreeOf(*Dialog), "alpha");
            Armed = true;
            PressKey(VK_DOWN);
        });
        if (const std::string& event = std::get<0>(GetParam()); event.find("Selection") == std::string::npos) {
            driver.Then(
                "the key", [this] { return Dialog->SelFolder() == Folder.Path("beta"); }, [] { PressKey(VK_RETURN); });
        }
    }
    TKxFolderDialog* const running = Dialog;
    EXPECT_FALSE(driver.Run([&] { return running->Execute(); }));
    EXPECT_EQ(Dialog, nullptr);
    EXPECT_FALSE(Form->IsDocked());
    EXPECT_TRUE(IsWindowEnabled(Owner->Handle()));
}

INSTANTIATE_TEST_SUITE_P(All, FolderFreedIn,
                         testing::Combine(testing::Values("OnShow", "InternalShow", "OnSelectionChange", "OnClose",
                                                          "OnCanClose", "HookingSelection", "HookSelection",
                                                          "HookingOk", "HookOk"),
                                          testing::Bool()),
                         [](const testing::TestParamInfo<TFreedIn>& param) {
                             return std::get<0>(param.param) + (std::get<1>(param.param) ? "NewStyle" : "");
                         });

// --- Exceptions out of events

TEST_F(FolderLife, ExceptionsOfEveryEventReachTheApplicationAndTheDialogGoesOn) {
    auto& dialog = NewDialog();
    const auto notify = [](const char* what) {
        return TNotifyEvent([what](TObject*) { throw std::runtime_error(what); });
    };
    const TFormPtr form = MakeForm(clCream, 120, 60);
    const TFormPtr custom = MakeForm(clAqua, 120, 60);
    form->SetOnShow(notify("form"));
    custom->SetOnShow(notify("custom"));
    dialog.CustDlgParams().SetLeftForm(form.get());
    dialog.CustDlgParams().SetCustomForm(custom.get());
    dialog.SetSelectionType(stCustom);
    dialog.SetOnShow(notify("show"));
    dialog.SetCommonDialogInternalShowEvent(notify("internal"));
    dialog.SetOnSelectionChange(notify("selection"));
    dialog.SetOnClose(notify("close"));
    dialog.SetOnCanClose([](TObject*, bool&) { throw std::runtime_error("close?"); });
    dialog.SetOptions({ffStatusText});
    dialog.SetStatusText("ready");
    EXPECT_TRUE(RunDialog(dialog,
                          [&] {
                              EXPECT_THAT(TakeExceptions(), ElementsAre("form", "custom", "show", "internal"));
                              EXPECT_EQ(TextOf(ItemOf(dialog, StatusId)), "ready");
                              SelectTreeItem(TreeOf(dialog), "alpha");
                              EXPECT_THAT(TakeExceptions(), ElementsAre("selection"));
                              // A query that fails is no consent
                              PressButton(ItemOf(dialog, IDOK));
                              EXPECT_THAT(TakeExceptions(), ElementsAre("close?"));
                              EXPECT_TRUE(IsWindowVisible(dialog.DialogWindow()));
                              dialog.SetOnCanClose({});
                          },
                          {Press(dialog, IDOK)}));
    EXPECT_THAT(TakeExceptions(), ElementsAre("close"));
    EXPECT_EQ(dialog.Folder(), Folder.Path("alpha"));
    EXPECT_FALSE(form->IsDocked());
    EXPECT_FALSE(custom->IsDocked());
    EXPECT_EQ(dialog.GetCommonDialogHandle(), nullptr);
}

TEST_F(FolderLife, AHookThatAlwaysFailsDoesNotStopTheDialog) {
    const TFormPtr form = MakeForm(clCream, 120, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetLeftForm(form.get());
    dialog.SetOnEventHooking([](TObject*, TMessage& m, bool&) {
        if (m.Msg != WM_COMMAND) {
            throw std::runtime_error("hooking");
        }
    });
    dialog.SetOnEventHook([](TMessage&) { throw std::runtime_error("hook"); });
    // By key: an exception while a button is held down takes the mouse from it.
    EXPECT_TRUE(RunDialog(dialog, [&] { SelectTreeItem(TreeOf(dialog), "beta"); },
                          {Perform("confirm", [] { PressKey(VK_RETURN); })}));
    const auto messages = TakeExceptions();
    EXPECT_THAT(messages, Contains("hooking"));
    EXPECT_THAT(messages, Contains("hook"));
    EXPECT_EQ(dialog.Folder(), Folder.Path("beta"));
    EXPECT_FALSE(form->IsDocked());
}

} // namespace
} // namespace kx
