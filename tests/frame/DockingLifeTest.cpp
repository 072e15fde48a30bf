// SPDX-License-Identifier: MIT
// Docked forms over several showings, and forms that go.

#include "DockingFixture.h"

namespace kx::test {
namespace {

// --- Showing again

TEST_F(Docking, TheNextShowingDocksTheFormsInTheirChangedSizes) {
    DockByForm(AllSides);
    LookPainted();
    const TRect first = FDialog.SystemRect();
    FLeft->SetWidth(95);
    FBottom->SetHeight(111);
    LookPainted([&] {
        Screenshot("docked-again", Window());
        EXPECT_EQ(Params().IncX(), 95 + 70);
        EXPECT_EQ(Params().IncY(), 50 + 111);
        const TRect now = KxWindowRect(Window());
        EXPECT_EQ(Width(now), Width(first) + 95 + 70);
        EXPECT_EQ(Height(now), Height(first) + 50 + 111);
        ExpectFormsAround(ClientSize().Right, ClientSize().Bottom);
    });
}

TEST_F(Docking, AFormResizedWhileDockedComesBackInThatSize) {
    DockByForm(Right);
    LookPainted([&] { FRight->SetWidth(140); });
    LookPainted([&] { EXPECT_EQ(Params().IncX(), 140); });
}

TEST_F(Docking, AFormCanMoveToAnotherDialogThatRunsInsideTheFirst) {
    DockByForm(Bottom);
    TFrameDialog inner;
    inner.SetInitialDir(FFolder.Path());
    inner.CustDlgParams().SetBottomForm(FBottom.get());
    LookPainted([&] { inner.Execute(); },
                {{"inner dialog is shown with the form",
                  [&] { return inner.DialogWindow() && Shown(inner)() && IsPainted(*FBottom); },
                  [&] {
                      EXPECT_EQ(FBottom->ParentWindow(), inner.DialogWindow());
                      inner.CloseDialog(mrCancel);
                  }},
                 {"inner dialog is gone", [&] { return !inner.DialogWindow() && Shown(FDialog)(); }, {}}});
    EXPECT_EQ(FBottom->ParentWindow(), nullptr);
}

// --- Order

TEST_F(Docking, FormsAreDockedFromLeftToBottomAndUndockedFromBottomToRight) {
    std::vector<std::string> order;
    const auto note = [&](TForm& form, const std::string& name) {
        form.SetOnShow([&order, name](TObject*) { order.push_back("+" + name); });
        form.SetOnHide([&order, name](TObject*) { order.push_back("-" + name); });
    };
    note(*FLeft, "left");
    note(*FTop, "top");
    note(*FRight, "right");
    note(*FBottom, "bottom");
    DockByForm(AllSides);
    RunDialog(FDialog, {Cancel(FDialog)});
    EXPECT_EQ(order,
              (std::vector<std::string>{"+left", "+top", "+right", "+bottom", "-bottom", "-top", "-left", "-right"}));
}

TEST_F(Docking, TheHandleOfTheLastDockingStaysBehindTheUndocking) {
    EXPECT_EQ(Params().Handle(), nullptr);
    HWND window = nullptr;
    DockByForm(Left);
    Look(FDialog, [&] { window = Window(); });
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(Params().Handle(), window);
}

TEST_F(Docking, ADialogDockedFromInsideTheDockingOfAFormDoesNotTakeTheOthersRoom) {
    TFrameDialog inner;
    inner.SetInitialDir(FFolder.Path());
    inner.CustDlgParams().SetRightForm(FRight.get());
    bool opened = false;
    FLeft->SetOnShow([&](TObject*) {
        if (!std::exchange(opened, true)) {
            RunDialog(inner, {Cancel(inner)});
        }
    });
    DockByForm(Left | Top);
    HWND label = nullptr; // a control that docking moves
    LookPainted([&] {
        const TDlgFrame frame = KxDlgFrame();
        for (const TFrameDialog::TChild& child : FDialog.SystemChildren()) {
            if (GetDlgCtrlID(child.Window) == 1091) {
                label = child.Window;
                EXPECT_EQ(RectIn(Window(), label).Left, child.Rect.Left + RoomAtLeft(120, frame));
                EXPECT_EQ(RectIn(Window(), label).Top, child.Rect.Top + RoomAtTop(50, frame));
            }
        }
    });
    EXPECT_TRUE(opened);
    EXPECT_NE(label, nullptr);
}

// --- Forms and dialogs that go

class FreedWhileDocked : public Docking, public testing::WithParamInterface<unsigned> {};
INSTANTIATE_TEST_SUITE_P(Sides, FreedWhileDocked, testing::Values(Left, Top, Right, Bottom),
                         [](const auto& tested) { return NameOf(tested.param); });

TEST_P(FreedWhileDocked, IsForgottenAndTheDialogGoesOn) {
    DockByForm(AllSides);
    LookPainted(
        [&] {
            switch (GetParam()) {
            case Left: FLeft.reset(); break;
            case Top: FTop.reset(); break;
            case Right: FRight.reset(); break;
            default: FBottom.reset();
            }
            EXPECT_EQ(DockedForms().size(), 3u);
            RedrawWindow(Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
        },
        {{"the others are painted", AllPainted(), [&] {
              const TRect r = KxWindowRect(Window());
              SetWindowPos(Window(), nullptr, 0, 0, Width(r) + 50, Height(r) + 50, SWP_NOMOVE | SWP_NOZORDER);
              const TRect client = ClientSize();
              if (Params().BottomForm()) {
                  EXPECT_EQ(FBottom->Width(), client.Right);
              }
              if (Params().LeftForm()) {
                  EXPECT_EQ(FLeft->Height(), client.Bottom - (Params().BottomForm() ? 80 : 0));
              }
          }}});
    LookPainted([&] { EXPECT_EQ(DockedForms().size(), 3u); });
}

TEST_F(Docking, AFormThatReleasesItselfWhenShownIsForgotten) {
    DockByForm(Left | Bottom);
    TForm* const bottom = FBottom.release();
    bottom->SetOnShow([=](TObject*) { bottom->Release(); });
    RunDialog(FDialog, {{"the form is gone", [&] { return Params().BottomForm() == nullptr; }, {}}, Cancel(FDialog)});
}

TEST_F(Docking, AFormThatFreesItselfWhenShownIsForgotten) {
    DockByForm(Left | Bottom);
    TForm* const bottom = FBottom.release();
    bottom->SetOnShow([=](TObject*) { bottom->Free(); });
    LookPainted([&] { EXPECT_EQ(DockedForms().size(), 1u); });
}

TEST_F(Docking, AFormThatFreesItselfWhenHiddenIsForgottenAndTheOthersAreUndocked) {
    DockByForm(AllSides);
    TForm* const bottom = FBottom.release(); // the first one that is undocked
    bottom->SetOnHide([=](TObject*) { bottom->Free(); });
    LookPainted();
    EXPECT_EQ(Params().BottomForm(), nullptr);
    for (TForm* const form : DockedForms()) {
        EXPECT_FALSE(form->Visible());
        EXPECT_EQ(form->ParentWindow(), nullptr);
    }
}

TEST_F(Docking, AFormThatFreesTheDialogWhenHiddenHasTheOthersUndocked) {
    auto* dialog = new TFrameDialog;
    dialog->SetInitialDir(FFolder.Path());
    dialog->CustDlgParams().SetBottomForm(FBottom.get());
    dialog->CustDlgParams().SetLeftForm(FLeft.get());
    dialog->CustDlgParams().SetRightForm(FRight.get());
    FBottom->SetOnHide([&](TObject*) { std::exchange(dialog, nullptr)->Free(); });
    TFrameDialog* const running = dialog;
    RunDialog([&] { return running->Execute(); }, {Cancel(*running)});
    EXPECT_EQ(dialog, nullptr);
    for (TForm* const form :
         {static_cast<TForm*>(FBottom.get()), static_cast<TForm*>(FLeft.get()), static_cast<TForm*>(FRight.get())}) {
        EXPECT_FALSE(form->Visible());
        EXPECT_EQ(form->ParentWindow(), nullptr);
    }
}

TEST_F(Docking, AFormThatIsElsewhereByTheEndOfTheDialogComponentIsLeftAlone) {
    auto* dialog = new TFrameDialog;
    dialog->SetInitialDir(FFolder.Path());
    dialog->CustDlgParams().SetLeftForm(FLeft.get());
    dialog->SetOnEventHooking([](TObject*, TMessage& m, bool& allow) { allow = m.Msg != WM_DESTROY; });
    RunDialog(*dialog, {Cancel(*dialog)}); // the form stays in the window to its end
    FLeft->SetParentWindow(nullptr);
    FLeft->Show();
    dialog->Free();
    EXPECT_TRUE(FLeft->Visible());
    FLeft->Hide();
}

TEST_F(Docking, AFormThatWasNamedAndFreedBeforeTheShowingLeavesTheSideEmpty) {
    Params().SetLeftForm(FLeft.get());
    FLeft.reset();
    RunDialog(FDialog, {Cancel(FDialog)});
    EXPECT_EQ(Params().LeftForm(), nullptr);
    EXPECT_EQ(Params().IncX(), 0);
}

TEST_F(Docking, AFormWhoseShowingRaisesAnExceptionDoesNotHarmTheDialog) {
    const TExceptionLog caught;
    DockByForm(AllSides);
    FLeft->SetOnShow([](TObject*) { throw Exception("no preview"); });
    RunDialog(FDialog, {Cancel(FDialog)});
    ASSERT_EQ(caught.Messages().size(), 1u);
    EXPECT_EQ(caught.Messages()[0], "no preview");
    FLeft->SetOnShow(nullptr);
    LookPainted();
}

TEST_F(Docking, FormsSurviveADialogComponentThatIsFreedWhileTheyAreDocked) {
    auto dialog = std::make_unique<TFrameDialog>();
    dialog->SetInitialDir(FFolder.Path());
    dialog->CustDlgParams().SetLeftForm(FLeft.get());
    dialog->CustDlgParams().SetBottomForm(FBottom.get());
    RunDialog([&] { return dialog->Execute(); },
              {{"dialog is shown", [&] { return Shown(*dialog)() && IsPainted(*FLeft); },
                [&] { dialog.release()->Free(); }}});
    EXPECT_FALSE(FLeft->HandleAllocated() && GetParent(FLeft->WindowHandle()) != nullptr &&
                 GetAncestor(FLeft->WindowHandle(), GA_PARENT) != GetDesktopWindow());
    DockByForm(Left | Bottom);
    LookPainted();
}

TEST_F(Docking, FormsSurviveADialogWhoseDestructionIsVetoed) {
    DockByForm(AllSides);
    FDialog.SetOnEventHooking([](TObject*, TMessage& m, bool& allow) { allow = m.Msg != WM_DESTROY; });
    LookPainted();
    FDialog.SetOnEventHooking(nullptr);
    LookPainted();
    for (TForm* form : DockedForms()) {
        EXPECT_EQ(form->ParentWindow(), nullptr);
    }
}

// --- Context menus

TEST_F(Docking, AContextMenuOfOurOwnKeepsTheDialogsHelpAway) {
    TPopupMenu menu;
    DockByForm(Bottom);
    LookPainted([&] {
        const TPoint over = CenterOf(FBottom->Handle());
        TMessage m{WM_CONTEXTMENU, 0, MakeLParam(over.X, over.Y)};
        bool showWhatsThis = true;
        TKxCustDlgParams::TrackContextMenus(showWhatsThis, m);
        EXPECT_TRUE(showWhatsThis) << "a control without a menu";
        FBottom->SetPopupMenu(&menu);
        TKxCustDlgParams::TrackContextMenus(showWhatsThis, m);
        EXPECT_FALSE(showWhatsThis);
        showWhatsThis = true;
        m.Msg = WM_LBUTTONDOWN;
        TKxCustDlgParams::TrackContextMenus(showWhatsThis, m);
        EXPECT_TRUE(showWhatsThis) << "another message";
        m.Msg = WM_CONTEXTMENU;
        m.LParam = MakeLParam(-1, -1); // the keyboard's; read as (65535, 65535)
        TKxCustDlgParams::TrackContextMenus(showWhatsThis, m);
        EXPECT_TRUE(showWhatsThis) << "no control there";
    });
}

} // namespace
} // namespace kx::test
