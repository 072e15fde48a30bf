// SPDX-License-Identifier: MIT
// Captions of standard buttons, and dialogs driven by their common interface.

#include "FrameDialog.h"

#include "tests/support/TestDriver.h"

namespace kx::test {
namespace {

constexpr int HelpButton = 1038;

class Captions : public testing::Test {
protected:
    Captions() {
        FDialog.SetInitialDir(FFolder.Path());
        FDialog.SetOptions(FDialog.Options() + TOpenOptions{ofShowHelp});
    }

    struct TTexts {
        std::string Ok, Cancel, Help;
        friend bool operator==(const TTexts&, const TTexts&) = default;
    };
    /// What the dialog's buttons read.
    TTexts Shown() {
        TTexts texts;
        RunDialog(FDialog, {{"",
                             {},
                             [&] {
                                 HWND window = FDialog.DialogWindow();
                                 texts = {TextOf(GetDlgItem(window, IDOK)), TextOf(GetDlgItem(window, IDCANCEL)),
                                          TextOf(GetDlgItem(window, HelpButton))};
                             }},
                            Cancel(FDialog)});
        return texts;
    }

    TTempFolder FFolder;
    TFrameDialog FDialog;
};

TEST_F(Captions, EmptyOnesLeaveTheSystemsTexts) {
    const TTexts texts = Shown();
    EXPECT_FALSE(texts.Ok.empty());
    EXPECT_FALSE(texts.Cancel.empty());
    EXPECT_FALSE(texts.Help.empty());
}

TEST_F(Captions, OnlyCancelSetChangesOnlyTheCancelButton) {
    const TTexts system = Shown();
    FDialog.DlgItemsCaptions().SetCancel("No thanks");
    EXPECT_EQ(Shown(), (TTexts{system.Ok, "No thanks", system.Help}));
}

TEST_F(Captions, AllThreeAreApplied) {
    FDialog.DlgItemsCaptions().SetOK("&Take");
    FDialog.DlgItemsCaptions().SetCancel("Leave");
    FDialog.DlgItemsCaptions().SetHelp("Why?");
    EXPECT_EQ(Shown(), (TTexts{"&Take", "Leave", "Why?"}));
}

TEST_F(Captions, ADialogWithoutTheButtonIsLeftAlone) {
    TKxDlgCaptions captions;
    captions.SetHelp("Why?");
    captions.SetCaptions(nullptr);
    SUCCEED();
}

// --- The common dialog interface

class CommonDialog : public Captions {
protected:
    ICommonDialog& Common() { return FDialog; }
};

TEST_F(CommonDialog, HasAHandleOnlyWhileItIsShown) {
    EXPECT_EQ(Common().GetCommonDialogHandle(), nullptr);
    RunDialog(FDialog, {{"", {}, [&] { EXPECT_EQ(Common().GetCommonDialogHandle(), FDialog.DialogWindow()); }},
                        Cancel(FDialog)});
    EXPECT_EQ(Common().GetCommonDialogHandle(), nullptr);
}

TEST_F(CommonDialog, CloseDialogWithAnyOtherResultDoesNothing) {
    bool stillShown = false;
    RunDialog(FDialog, {{"",
                         {},
                         [&] {
                             for (const int result : {3, 0, -1, HelpButton}) {
                                 Common().CloseDialog(result);
                             }
                         }},
                        {"messages went by", [] { return true; },
                         [&] { stillShown = IsWindowVisible(FDialog.DialogWindow()) != 0; }},
                        Cancel(FDialog)});
    EXPECT_TRUE(stillShown);
}

TEST_F(CommonDialog, CloseDialogWithCancelCancels) {
    EXPECT_FALSE(RunDialog(FDialog, {{"", {}, [&] { Common().CloseDialog(mrCancel); }}}));
}

TEST_F(CommonDialog, CloseDialogWithOkTakesTheFileUnlessCanCloseRefuses) {
    const std::string file = FFolder.AddFile("drawing.txt");
    int asked = 0;
    FDialog.SetOnCanClose([&](TObject*, bool& canClose) { canClose = ++asked > 1; });
    const bool confirmed =
        RunDialog(FDialog, {{"",
                             {},
                             [&] {
                                 SetWindowTextA(FileNameEditOf(FDialog.DialogWindow()), "drawing.txt");
                                 Common().CloseDialog(mrOk);
                             }},
                            {"OK is refused", [&] { return asked == 1; },
                             [&] {
                                 EXPECT_TRUE(IsWindowVisible(FDialog.DialogWindow()));
                                 Common().CloseDialog(mrOk);
                             }}});
    EXPECT_TRUE(confirmed);
    EXPECT_EQ(asked, 2);
    EXPECT_TRUE(SameText(FDialog.FileName(), file));
}

TEST_F(CommonDialog, TheInternalShowEventComesBehindOnShow) {
    std::string order;
    FDialog.SetOnShow([&](TObject*) { order += "show "; });
    Common().SetCommonDialogInternalShowEvent([&](TObject* sender) {
        order += "internal";
        EXPECT_EQ(sender, &FDialog);
    });
    EXPECT_TRUE(Common().GetCommonDialogInternalShowEvent());
    RunDialog(FDialog, {Cancel(FDialog)});
    EXPECT_EQ(order, "show internal");
}

TEST_F(CommonDialog, GivesItsParameters) { EXPECT_EQ(&Common().GetCustDlgParams(), &FDialog.CustDlgParams()); }

} // namespace
} // namespace kx::test
