// SPDX-License-Identifier: MIT
// The way of a message through a dialog.

#include "FrameDialog.h"

#include "kx/ui/controls/Menus.h"
#include "tests/support/TestDriver.h"

#include <set>

namespace kx::test {
namespace {

constexpr UINT WM_PROBE = WM_APP + 77; // nobody else uses it

class Pipeline : public testing::Test {
protected:
    Pipeline() {
        FFolder.AddFile("drawing.txt");
        FDialog->SetInitialDir(FFolder.Path());
    }

    HWND Window() const { return FDialog->DialogWindow(); }
    /// Does something inside the shown dialog and cancels it.
    void Inside(const TAction& action) { Look(*FDialog, action); }

    TTempFolder FFolder;
    std::unique_ptr<TFrameDialog, TFreeDeleter> FDialog{new TFrameDialog};
};

TEST_F(Pipeline, HookingOwnCasesSystemAndHookFollowEachOther) {
    std::string order;
    const auto note = [&](const TMessage& m, const char* what) {
        if (m.Msg == WM_PROBE) {
            order += what;
        }
    };
    FDialog->SetOnEventHooking([&](TObject* sender, TMessage& m, bool& allow) {
        note(m, "hooking ");
        EXPECT_EQ(sender, FDialog.get());
        EXPECT_TRUE(allow);
    });
    FDialog->SetOwnCases([&](TMessage& m) {
        note(m, "before ");
        return mvPass;
    });
    FDialog->SetOwnCasesAfter([&](TMessage& m) { note(m, "after "); });
    FDialog->SetOnEventHook([&](TMessage& m) { note(m, "hook"); });
    Inside([&] { SendMessageA(Window(), WM_PROBE, 1, 2); });
    EXPECT_EQ(order, "hooking before after hook");
}

TEST_F(Pipeline, TheHookSeesTheSystemsAnswer) {
    LRESULT seen = 0;
    FDialog->SetOnEventHook([&](TMessage& m) {
        if (m.Msg == WM_GETTEXTLENGTH) {
            seen = m.Result;
            m.Result = 4711;
        }
    });
    Inside([&] {
        EXPECT_EQ(SendMessageA(Window(), WM_GETTEXTLENGTH, 0, 0), 4711);
        EXPECT_GT(seen, 0);
    });
}

TEST_F(Pipeline, AHandlerMayChangeTheMessageOnItsWayToTheSystem) {
    FDialog->SetOnEventHooking([](TObject*, TMessage& m, bool&) {
        if (m.Msg == WM_SETTEXT) {
            m.LParam = reinterpret_cast<LPARAM>("changed");
        }
    });
    Inside([&] {
        SetWindowTextA(Window(), "as given");
        EXPECT_EQ(TextOf(Window()), "changed");
    });
}

TEST_F(Pipeline, AVetoedMessageIsNeitherPassedNorReportedAndItsResultStays) {
    int hooks = 0;
    FDialog->SetOnEventHooking([](TObject*, TMessage& m, bool& allow) {
        if (m.Msg == WM_GETTEXTLENGTH) {
            m.Result = 1234;
            allow = false;
        }
    });
    FDialog->SetOnEventHook([&](TMessage& m) { hooks += m.Msg == WM_GETTEXTLENGTH ? 1 : 0; });
    FDialog->SetOwnCases([&](TMessage& m) {
        EXPECT_NE(m.Msg, UINT{WM_GETTEXTLENGTH});
        return mvPass;
    });
    Inside([&] { EXPECT_EQ(SendMessageA(Window(), WM_GETTEXTLENGTH, 0, 0), 1234); });
    EXPECT_EQ(hooks, 0);
}

TEST_F(Pipeline, VetoingTheOkCommandKeepsTheDialogOpenAndUnreported) {
    bool vetoed = false;
    bool reported = false;
    const auto isOk = [](const TMessage& m) { return m.Msg == WM_COMMAND && m.WParamLo() == IDOK; };
    FDialog->SetOnEventHooking([&](TObject*, TMessage& m, bool& allow) {
        if (isOk(m)) {
            vetoed = true;
            allow = false;
        }
    });
    FDialog->SetOnEventHook([&](TMessage& m) { reported |= isOk(m); });
    bool shownAfterwards = false;
    EXPECT_FALSE(RunDialog(*FDialog, {{"",
                                       {},
                                       [&] {
                                           SetWindowTextA(FileNameEditOf(Window()), "drawing.txt");
                                           FDialog->CloseDialog(mrOk);
                                           shownAfterwards = IsWindowVisible(Window()) != 0;
                                       }},
                                      Cancel(*FDialog)}));
    EXPECT_TRUE(vetoed);
    EXPECT_TRUE(shownAfterwards);
    EXPECT_FALSE(reported);
}

TEST_F(Pipeline, OwnCasesMayKeepAMessageFromTheSystemAndStillReportIt) {
    int hooks = 0;
    int afters = 0;
    FDialog->SetOwnCases([](TMessage& m) {
        if (m.Msg == WM_GETTEXTLENGTH) {
            m.Result = 99;
            return mvSkip;
        }
        return mvPass;
    });
    FDialog->SetOwnCasesAfter([&](TMessage& m) { afters += m.Msg == WM_GETTEXTLENGTH ? 1 : 0; });
    FDialog->SetOnEventHook([&](TMessage& m) { hooks += m.Msg == WM_GETTEXTLENGTH ? 1 : 0; });
    Inside([&] {
        hooks = 0;
        EXPECT_EQ(SendMessageA(Window(), WM_GETTEXTLENGTH, 0, 0), 99);
        EXPECT_EQ(hooks, 1);
        EXPECT_EQ(afters, 0);
    });
}

TEST_F(Pipeline, OwnCasesMayStopAMessage) {
    int hooks = 0;
    FDialog->SetOwnCases([](TMessage& m) { return m.Msg == WM_PROBE ? mvStop : mvPass; });
    FDialog->SetOnEventHook([&](TMessage& m) { hooks += m.Msg == WM_PROBE ? 1 : 0; });
    Inside([&] { SendMessageA(Window(), WM_PROBE, 0, 0); });
    EXPECT_EQ(hooks, 0);
}

// --- The notification of the showing

TEST_F(Pipeline, TheInternalNotificationIsTheOneThatOnShowHasInstalled) {
    std::string order;
    FDialog->SetCommonDialogInternalShowEvent([&](TObject*) { order += "old "; });
    FDialog->SetOnShow([&](TObject*) {
        order += "show ";
        FDialog->SetCommonDialogInternalShowEvent([&](TObject* sender) {
            EXPECT_EQ(sender, FDialog.get());
            order += "new ";
        });
    });
    Inside([] {});
    EXPECT_EQ(order, "show new ");
}

TEST_F(Pipeline, AnInternalNotificationThatOnShowHasTakenAwayIsNotSent) {
    bool sent = false;
    FDialog->SetCommonDialogInternalShowEvent([&](TObject*) { sent = true; });
    FDialog->SetOnShow([&](TObject*) { FDialog->SetCommonDialogInternalShowEvent(nullptr); });
    Inside([] {});
    EXPECT_FALSE(sent);
}

TEST_F(Pipeline, AnOnShowThatFailsDoesNotKeepTheInternalNotification) {
    const TExceptionLog caught;
    bool sent = false;
    FDialog->SetCommonDialogInternalShowEvent([&](TObject*) { sent = true; });
    FDialog->SetOnShow([](TObject*) { throw Exception("no"); });
    Inside([] {});
    EXPECT_TRUE(sent);
    EXPECT_EQ(caught.Messages(), std::vector<std::string>{"no"});
}

// --- Exceptions

TEST_F(Pipeline, AHookingHandlerThatAlwaysThrowsStopsCommandsAndNothingElse) {
    const TExceptionLog caught;
    const auto form = MakeForm<TBottomForm>();
    FDialog->CustDlgParams().SetBottomForm(form.get());
    FDialog->SetOnEventHooking([](TObject*, TMessage&, bool&) { throw Exception("no"); });
    bool shownAfterCancel = false;
    RunDialog(*FDialog, {{"",
                          {},
                          [&] {
                              FDialog->CloseDialog(mrCancel);
                              shownAfterCancel = IsWindowVisible(Window()) != 0;
                              FDialog->SetOnEventHooking(nullptr);
                          }},
                         Cancel(*FDialog)});
    EXPECT_TRUE(shownAfterCancel);
    EXPECT_FALSE(caught.Messages().empty());
    EXPECT_EQ(std::set<std::string>(caught.Messages().begin(), caught.Messages().end()), std::set<std::string>{"no"});
    EXPECT_EQ(form->ParentWindow(), nullptr);
}

TEST_F(Pipeline, AHookingHandlerThatThrowsWhileTheDialogGoesDoesNotKeepItsFormsOrItsProcedure) {
    const TExceptionLog caught;
    const auto form = MakeForm<TBottomForm>();
    FDialog->CustDlgParams().SetBottomForm(form.get());
    FDialog->SetOnEventHooking([](TObject*, TMessage& m, bool&) {
        if (m.Msg == WM_DESTROY || m.Msg == WM_NCDESTROY) {
            throw Exception("no");
        }
    });
    RunDialog(*FDialog, {Cancel(*FDialog)});
    EXPECT_GE(caught.Messages().size(), 1u);
    EXPECT_EQ(FDialog->GetCommonDialogHandle(), nullptr);
    FDialog->SetOnEventHooking(nullptr);
    RunDialog(*FDialog, {Cancel(*FDialog)});
    EXPECT_EQ(form->ParentWindow(), nullptr);
}

TEST_F(Pipeline, AHookHandlerThatAlwaysThrowsDoesNotHarmTheDialog) {
    const TExceptionLog caught;
    FDialog->SetOnEventHook([](TMessage&) { throw Exception("late"); });
    EXPECT_TRUE(RunDialog(*FDialog, {EnterFileName(*FDialog, "drawing.txt")}));
    EXPECT_FALSE(caught.Messages().empty());
}

TEST_F(Pipeline, OwnCasesThatThrowInACommandRefuseIt) {
    const TExceptionLog caught;
    FDialog->SetOwnCases([](TMessage& m) {
        if (m.Msg == WM_COMMAND && m.WParamLo() == IDOK) {
            throw EConvertError("'x' is not a valid integer value");
        }
        return mvPass;
    });
    bool shown = false;
    EXPECT_FALSE(RunDialog(*FDialog, {{"",
                                       {},
                                       [&] {
                                           SetWindowTextA(FileNameEditOf(Window()), "drawing.txt");
                                           FDialog->CloseDialog(mrOk);
                                           shown = IsWindowVisible(Window()) != 0;
                                       }},
                                      Cancel(*FDialog)}));
    EXPECT_TRUE(shown);
    EXPECT_EQ(caught.Messages(), std::vector<std::string>{"'x' is not a valid integer value"});
}

// --- Changes in the middle of a message

TEST_F(Pipeline, AHandlerMayReplaceItsOwnEvent) {
    int first = 0;
    int second = 0;
    FDialog->SetOnEventHooking([&](TObject*, TMessage& m, bool&) {
        if (m.Msg == WM_PROBE) {
            FDialog->SetOnEventHooking([&](TObject*, TMessage& n, bool&) { second += n.Msg == WM_PROBE ? 1 : 0; });
            ++first;
        }
    });
    FDialog->SetOnEventHook([&](TMessage& m) {
        if (m.Msg == WM_PROBE) {
            FDialog->SetOnEventHook(nullptr);
        }
    });
    Inside([&] {
        SendMessageA(Window(), WM_PROBE, 0, 0);
        SendMessageA(Window(), WM_PROBE, 0, 0);
    });
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
    EXPECT_FALSE(FDialog->OnEventHook());
}

TEST_F(Pipeline, DetachingInAnOwnCaseStillLetsTheSystemSeeTheMessage) {
    LRESULT length = 0;
    FDialog->SetOwnCases([&](TMessage& m) {
        if (m.Msg == WM_GETTEXTLENGTH) {
            FDialog->DetachDialog();
        }
        return mvPass;
    });
    Inside([&] {
        length = SendMessageA(Window(), WM_GETTEXTLENGTH, 0, 0);
        EXPECT_EQ(FDialog->GetCommonDialogHandle(), nullptr);
    });
    EXPECT_GT(length, 0);
}

class FreedIn : public Pipeline, public testing::WithParamInterface<const char*> {};
INSTANTIATE_TEST_SUITE_P(Handlers, FreedIn, testing::Values("Hooking", "OwnCase", "OwnCaseAfter", "Hook"),
                         [](const auto& tested) { return std::string(tested.param); });

TEST_P(FreedIn, TheDialogComponentGoesWithoutHarm) {
    const std::string where = GetParam();
    const auto form = MakeForm<TBottomForm>();
    FDialog->CustDlgParams().SetBottomForm(form.get());
    const auto freeAt = [&](const TMessage& m, const char* place) {
        if (m.Msg == WM_PROBE && where == place) {
            FDialog.reset();
        }
    };
    FDialog->SetOnEventHooking([&](TObject*, TMessage& m, bool&) { freeAt(m, "Hooking"); });
    FDialog->SetOwnCases([&](TMessage& m) {
        freeAt(m, "OwnCase");
        return mvPass;
    });
    FDialog->SetOwnCasesAfter([&](TMessage& m) { freeAt(m, "OwnCaseAfter"); });
    FDialog->SetOnEventHook([&](TMessage& m) { freeAt(m, "Hook"); });
    TFrameDialog* const dialog = FDialog.get();
    RunDialog([&] { return dialog->Execute(); }, {{"dialog is shown", [&] { return FDialog && Shown(*FDialog)(); },
                                                   [&] { SendMessageA(Window(), WM_PROBE, 0, 0); }}});
    EXPECT_EQ(FDialog, nullptr);
    EXPECT_EQ(form->ParentWindow(), nullptr);
}

} // namespace
} // namespace kx::test
