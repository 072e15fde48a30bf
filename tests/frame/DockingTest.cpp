// SPDX-License-Identifier: MIT
// Forms at a dialog's sides.

#include "DockingFixture.h"

#include "tests/support/UnevenFrames.h"

namespace kx::test {
namespace {

// --- Every combination of sides

class DockedSides : public Docking, public testing::WithParamInterface<unsigned> {};
INSTANTIATE_TEST_SUITE_P(All, DockedSides, testing::Range(0u, 16u),
                         [](const auto& tested) { return NameOf(tested.param); });

TEST_P(DockedSides, FormsStandAroundTheDialogWhichGrowsByTheirSizes) {
    const unsigned sides = GetParam();
    DockByForm(sides);
    const int32_t width = ((sides & Left) != 0 ? 120 : 0) + ((sides & Right) != 0 ? 70 : 0);
    const int32_t height = ((sides & Top) != 0 ? 50 : 0) + ((sides & Bottom) != 0 ? 80 : 0);
    LookPainted([&] {
        Screenshot("docked-" + NameOf(sides), Window());
        const TRect now = KxWindowRect(Window());
        const TRect& before = FDialog.SystemRect();
        EXPECT_EQ(Width(now), Width(before) + width);
        EXPECT_EQ(Height(now), Height(before) + height);
        EXPECT_EQ(Params().IncX(), width);
        EXPECT_EQ(Params().IncY(), height);
        EXPECT_EQ(Params().Handle(), Window());
        ExpectFormsAround(FDialog.SystemClient().Right + width, FDialog.SystemClient().Bottom + height);
        for (TForm* form : DockedForms()) {
            EXPECT_EQ(form->BorderStyle(), bsNone);
            EXPECT_EQ(form->ParentWindow(), Window());
            EXPECT_TRUE(IsWindowVisible(form->WindowHandle()));
        }
    });
}

TEST_P(DockedSides, DialogControlsMakeRoomForTheLeftAndTheTopForm) {
    const TUnevenFrames frames;
    const unsigned sides = GetParam();
    DockByForm(sides);
    const int32_t dx = (sides & Left) != 0 ? 120 + GetSystemMetrics(SM_CYDLGFRAME) : 0;
    const int32_t dy = (sides & Top) != 0 ? 50 + GetSystemMetrics(SM_CXDLGFRAME) : 0;
    FDialog.SetOnShow([&](TObject*) {
        for (const auto& [child, rect] : FDialog.SystemChildren()) {
            EXPECT_EQ(RectIn(Window(), child), At(rect.Left + dx, rect.Top + dy, Width(rect), Height(rect)))
                << ClassOf(child) << ' ' << GetDlgCtrlID(child);
        }
    });
    RunDialog(FDialog, {Cancel(FDialog)});
    EXPECT_FALSE(FDialog.SystemChildren().empty());
}

TEST_P(DockedSides, FormsFollowTheRunningDialogsSize) {
    DockByForm(GetParam());
    const auto resizeBy = [&](int32_t dx, int32_t dy) {
        const TRect r = KxWindowRect(Window());
        SetWindowPos(Window(), nullptr, 0, 0, Width(r) + dx, Height(r) + dy, SWP_NOMOVE | SWP_NOZORDER);
    };
    LookPainted([&] { resizeBy(150, 90); }, {{"forms are painted anew", AllPainted(),
                                              [&] {
                                                  Screenshot("resized-" + NameOf(GetParam()), Window());
                                                  ExpectFormsAround(ClientSize().Right, ClientSize().Bottom);
                                                  resizeBy(-70, -40);
                                              }},
                                             {"forms are painted once more", AllPainted(),
                                              [&] { ExpectFormsAround(ClientSize().Right, ClientSize().Bottom); }}});
}

TEST_P(DockedSides, FormsLeaveTheClosingDialogUnharmed) {
    DockByForm(GetParam());
    LookPainted();
    for (TForm* form : DockedForms()) {
        EXPECT_FALSE(form->Visible());
        EXPECT_EQ(form->ParentWindow(), nullptr);
        EXPECT_EQ(form->BorderStyle(), bsNone);
    }
    if (FTop->ParentWindow() == nullptr && Params().TopForm()) {
        FTop->Show(); // an ordinary form again
        EXPECT_TRUE(PumpUntil([&] { return IsPainted(*FTop); }));
        EXPECT_EQ(GetAncestor(FTop->Handle(), GA_ROOT), FTop->Handle());
        FTop->Hide();
    }
}

TEST_F(Docking, FormsStayInFrontOfTheListsOfOtherFolders) {
    FFolder.AddFile("inside\\other.txt");
    DockByForm(AllSides);
    const auto redraw = [&] { RedrawWindow(Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN); };
    LookPainted({}, {EnterFileName(FDialog, "inside"),
                     {"the folder is shown", FolderIs(FDialog, FFolder.Path("inside")), redraw},
                     {"forms are painted", AllPainted(), [&] {
                          Screenshot("docked-other-folder", Window());
                          ExpectFormsAround(ClientSize().Right, ClientSize().Bottom);
                          const TRect list = RectIn(Window(), FileListOf(Window()));
                          EXPECT_GE(list.Left, 120);
                          EXPECT_GE(list.Top, 50);
                          EXPECT_LE(list.Right, ClientSize().Right - 70);
                          EXPECT_LE(list.Bottom, ClientSize().Bottom - 80);
                      }}});
}

TEST_F(Docking, IconsAndFormsThatFillTheScreenAreDockedInTheirOrdinarySize) {
    for (const TWindowState state : {wsMinimized, wsMaximized}) {
        DockByForm(AllSides);
        for (TForm* form : DockedForms()) {
            form->SetBorderStyle(bsNone); // no frame widens it
            form->Show();
            form->SetWindowState(state);
        }
        LookPainted([&] {
            EXPECT_EQ(Params().IncX(), 120 + 70);
            EXPECT_EQ(Params().IncY(), 50 + 80);
            const TRect& client = FDialog.SystemClient();
            ExpectFormsAround(client.Right + 190, client.Bottom + 130);
        });
        for (TForm* form : DockedForms()) {
            EXPECT_EQ(form->WindowState(), state);
        }
    }
}

TEST_F(Docking, ADialogOfFixedSizeGrowsLikewise) {
    FDialog.SetOptions(FDialog.Options() - TOpenOptions{ofEnableSizing});
    DockByForm(AllSides);
    LookPainted([&] {
        Screenshot("docked-fixed-size", Window());
        const TRect& client = FDialog.SystemClient();
        ExpectFormsAround(client.Right + 190, client.Bottom + 130);
    });
}

TEST_F(Docking, ADialogWithTheSystemsPlacesBarGrowsLikewise) {
    FDialog.SetOptionsEx({});
    DockByForm(AllSides);
    LookPainted([&] {
        Screenshot("docked-places-bar", Window());
        const TRect& client = FDialog.SystemClient();
        ExpectFormsAround(client.Right + 190, client.Bottom + 130);
    });
}

/// A preview such as applications dock: a label, an edit that follows the form's width, and a button.
class TPreview {
public:
    explicit TPreview(TForm& form) : Edit(new TEdit(&form)), Button(new TButton(&form)) {
        auto* const label = new TLabel(&form);
        label->SetParent(&form);
        label->SetBounds(8, 8, 60, 13);
        label->SetCaption("Note:");
        Edit->SetParent(&form);
        Edit->SetBounds(60, 5, form.ClientWidth() - 160, 21);
        Edit->SetAnchors({akLeft, akTop, akRight});
        Button->SetParent(&form);
        Button->SetBounds(form.ClientWidth() - 90, 5, 80, 21);
        Button->SetAnchors({akTop, akRight});
        Button->SetCaption("&Keep");
    }
    TEdit* Edit;
    TButton* Button;
};

TEST_F(Docking, ADockedFormTakesTheMouseAndTheKeyboard) {
    FBottom->SetBounds(300, 300, 300, 34);
    FBottom->SetColor(clBtnFace);
    const TPreview preview(*FBottom);
    int kept = 0;
    preview.Button->SetOnClick([&](TObject*) { ++kept; });
    DockByForm(Bottom);
    RunDialog(FDialog, {{"the edit is shown", [&] { return IsWindowVisible(preview.Edit->Handle()) != 0; },
                         [&] { Click(preview.Edit->Handle()); }},
                        {"the edit has the focus", [&] { return preview.Edit->Focused(); }, [] { TypeText("seen"); }},
                        {"the text is there", [&] { return preview.Edit->Text() == "seen"; },
                         [&] {
                             Screenshot("docked-controls", Window());
                             const TRect form = FBottom->ClientRect();
                             EXPECT_EQ(form.Right, ClientSize().Right); // the system may restore a remembered size
                             EXPECT_EQ(preview.Button->Left(), form.Right - 90);
                             Click(preview.Button->Handle());
                         }},
                        {"the button was clicked", [&] { return kept == 1; }, [&] { PressKey(VK_ESCAPE); }}});
    EXPECT_EQ(preview.Edit->Text(), "seen");
}

// --- Finding forms

TEST_F(Docking, AFormIsFoundByItsNameInAnyLetterCase) {
    Params().SetLeftFormName("LEFTFORM");
    Params().SetTopFormName("topform");
    Params().SetRightFormName("RightForm");
    Params().SetBottomFormName("bOTTOMfORM");
    RunDialog(FDialog, {{"forms are painted", [&] { return DockedForms().size() == 4 && AllPainted()(); }, {}},
                        Cancel(FDialog)});
    EXPECT_EQ(Params().LeftForm(), FLeft.get());
    EXPECT_EQ(Params().TopForm(), FTop.get());
    EXPECT_EQ(Params().RightForm(), FRight.get());
    EXPECT_EQ(Params().BottomForm(), FBottom.get());
    EXPECT_EQ(Params().LeftFormName(), "LEFTFORM");
}

TEST_F(Docking, ANameWithoutAFormLeavesTheSideEmpty) {
    Params().SetLeftFormName("NoSuchForm");
    Params().SetBottomFormName("TBottomForm"); // a class name is not a form name
    RunDialog(FDialog, {Cancel(FDialog)});
    EXPECT_EQ(Params().LeftForm(), nullptr);
    EXPECT_EQ(Params().BottomForm(), nullptr);
    EXPECT_EQ(Params().IncX(), 0);
    EXPECT_EQ(Params().IncY(), 0);
}

TEST_F(Docking, TheFirstFormOfAClassIsTaken) {
    const TFormPtr second = MakeForm<TLeftForm>();
    TForm* found = nullptr;
    TKxCustDlgParams::CreateFormAs(found, "LeftForm");
    EXPECT_EQ(found, FLeft.get());
}

TEST_F(Docking, AFormThatIsGivenIsNotLookedUp) {
    TForm* found = FTop.get();
    TKxCustDlgParams::CreateFormAs(found, "LeftForm");
    EXPECT_EQ(found, FTop.get());
    found = nullptr;
    TKxCustDlgParams::CreateFormAs(found, "");
    EXPECT_EQ(found, nullptr);
}

TEST_F(Docking, NothingIsCreatedForAName) {
    const int before = Application().ComponentCount();
    Params().SetLeftFormName("OtherForm");
    RunDialog(FDialog, {Cancel(FDialog)});
    EXPECT_EQ(Application().ComponentCount(), before);
}

TEST_F(Docking, TheCustomFormIsFoundAndBorderlessButNotDocked) {
    const TFormPtr centre = MakeForm<TCentreForm>();
    Params().SetCustFormName("CentreForm");
    RunDialog(FDialog, {{"custom form is found", [&] { return Params().CustomForm() == centre.get(); },
                         [&] {
                             EXPECT_EQ(centre->BorderStyle(), bsNone);
                             EXPECT_EQ(centre->ParentWindow(), nullptr);
                             EXPECT_FALSE(centre->Visible());
                             EXPECT_EQ(Params().IncX(), 0);
                         }},
                        Cancel(FDialog)});
}

TEST_F(Docking, TheReferenceFormOfThePositionIsFoundAndKeepsItsBorder) {
    Params().PosParams().SetFormName("LeftForm");
    RunDialog(FDialog, {Cancel(FDialog)});
    EXPECT_EQ(Params().PosParams().Form(), FLeft.get());
    EXPECT_EQ(FLeft->BorderStyle(), bsSizeable);
}

// --- The window

TEST_F(Docking, WithoutFormsTheDialogStillComesToTheTopInItsOwnSize) {
    HWND above = nullptr;
    RunDialog(FDialog, {{"",
                         {},
                         [&] {
                             const TRect before = KxWindowRect(Window());
                             FTop->SetFormStyle(fsNormal);
                             FTop->Show();
                             above = FTop->Handle();
                             SetWindowPos(above, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
                             Params().ConnectForms(Window());
                             EXPECT_EQ(KxWindowRect(Window()), before);
                             EXPECT_EQ(Params().IncX(), 0);
                             EXPECT_EQ(Params().IncY(), 0);
                             const std::vector<HWND> order = TopWindows();
                             ASSERT_FALSE(order.empty());
                             EXPECT_EQ(order.front(), Window());
                             FTop->Hide();
                         }},
                        Cancel(FDialog)});
}

TEST_F(Docking, AFormNamedWhileTheDialogRunsKeepsItsSizeUntilItIsDocked) {
    RunDialog(FDialog, {{"",
                         {},
                         [&] {
                             Params().SetBottomForm(FBottom.get());
                             const int32_t width = FBottom->Width();
                             const TRect r = KxWindowRect(Window());
                             ResizeWindow(Window(), Width(r) + 40, Height(r) + 30);
                             EXPECT_EQ(FBottom->Width(), width);
                             Params().ConnectForms(Window());
                             EXPECT_EQ(FBottom->Width(), KxClientRect(Window()).Right);
                         }},
                        Cancel(FDialog)});
}

TEST_F(Docking, MoveLeftShiftsChildrenByTheFrameHeightAndLeavesGrandchildren) {
    const TUnevenFrames frames;
    RunDialog(FDialog, {{"",
                         {},
                         [&] {
                             HWND ok = GetDlgItem(Window(), IDOK);
                             HWND edit = FileNameEditOf(Window()); // inside its combo box
                             HWND combo = GetParent(edit);
                             ASSERT_NE(combo, Window());
                             const TRect okBefore = RectIn(Window(), ok);
                             const TRect editBefore = RectIn(combo, edit);
                             GHandle = Window();
                             EnumChildWindows(Window(), MoveLeft, 100);
                             const int32_t dx = 100 + GetSystemMetrics(SM_CYDLGFRAME);
                             EXPECT_EQ(RectIn(Window(), ok),
                                       At(okBefore.Left + dx, okBefore.Top, Width(okBefore), Height(okBefore)));
                             EXPECT_EQ(RectIn(combo, edit), editBefore);
                             EnumChildWindows(Window(), MoveDown, 40);
                             const int32_t dy = 40 + GetSystemMetrics(SM_CXDLGFRAME);
                             EXPECT_EQ(RectIn(Window(), ok),
                                       At(okBefore.Left + dx, okBefore.Top + dy, Width(okBefore), Height(okBefore)));
                         }},
                        Cancel(FDialog)});
}

TEST_F(Docking, MovingBeyondTheCoordinatesIsReportedAndEndsNoEnumeration) {
    const TExceptionLog caught;
    RunDialog(FDialog, {{"",
                         {},
                         [&] {
                             HWND ok = GetDlgItem(Window(), IDOK);
                             const TRect before = RectIn(Window(), ok);
                             GHandle = Window();
                             EXPECT_EQ(MoveLeft(ok, INT32_MAX), TRUE);
                             EXPECT_EQ(MoveDown(ok, INT32_MAX), TRUE);
                             EXPECT_EQ(RectIn(Window(), ok), before);
                         }},
                        Cancel(FDialog)});
    EXPECT_EQ(caught.Messages().size(), 2u);
}

TEST_F(Docking, TheDialogWindowGetsTheIcon) {
    TIcon icon;
    icon.SetHandle(CopyIcon(LoadIconA(nullptr, reinterpret_cast<LPCSTR>(IDI_WARNING))));
    Params().SetIcon(icon);
    RunDialog(FDialog, {{"",
                         {},
                         [&] {
                             const LRESULT small = SendMessageA(Window(), WM_GETICON, ICON_SMALL, 0);
                             EXPECT_EQ(reinterpret_cast<HICON>(small), Params().Icon().Handle());
                         }},
                        Cancel(FDialog)});
}

TEST_F(Docking, WithoutAnIconTheDialogWindowKeepsItsOwn) {
    RunDialog(FDialog, {{"",
                         {},
                         [&] {
                             const LRESULT before = SendMessageA(Window(), WM_GETICON, ICON_SMALL, 0);
                             Params().SetIcon2(Window());
                             EXPECT_EQ(SendMessageA(Window(), WM_GETICON, ICON_SMALL, 0), before);
                         }},
                        Cancel(FDialog)});
}

TEST_F(Docking, RectanglesOfTheDialogAndItsSelectionFollowTheSize) {
    DockByForm(Right | Bottom);
    Params().SetCustRect({10, 20, 310, 220});
    LookPainted([&] {
        const TRect& client = FDialog.SystemClient();
        EXPECT_EQ(Params().ClientRect(), (TRect{0, 0, client.Right + 70, client.Bottom + 80}));
        EXPECT_EQ(Params().CustRect(), (TRect{10, 20, 380, 300}));
    });
}

} // namespace
} // namespace kx::test
