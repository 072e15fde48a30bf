#include "FrameDialog.h"

#include "support/DialogDriver.h"
#include "ui/ExtCtrls.h"
#include "ui/Menus.h"
#include "ui/StdCtrls.h"

#include <gtest/gtest.h>

#include <string>

namespace kx::test {
namespace {

enum TSide : unsigned { Left = 1, Top = 2, Right = 4, Bottom = 8, AllSides = 15 };

std::string NameOf(unsigned sides) {
    std::string name;
    for (const auto& [side, text] : {std::pair{Left, "Left"}, {Top, "Top"}, {Right, "Right"}, {Bottom, "Bottom"}}) {
        name += (sides & side) != 0 ? text : "";
    }
    return name.empty() ? "None" : name;
}

COLORREF ScreenPixel(int32_t x, int32_t y) {
    const TWindowDC screen(nullptr);
    return GetPixel(screen.Handle(), x, y);
}

/// The form shows its own colour in its middle and near all its corners: nothing covers it, nothing cuts it off.
bool IsPainted(TForm& form) {
    const TRect r = KxWindowRect(form.Handle());
    constexpr int32_t inset = 2;
    const int32_t middleX = (r.Left + r.Right) / 2;
    const int32_t middleY = (r.Top + r.Bottom) / 2;
    for (const int32_t x : {r.Left + inset, middleX, r.Right - 1 - inset}) {
        for (const int32_t y : {r.Top + inset, middleY, r.Bottom - 1 - inset}) {
            if (ScreenPixel(x, y) != ColorToRGB(form.Color())) {
                return false;
            }
        }
    }
    return true;
}

TRect At(int32_t left, int32_t top, int32_t width, int32_t height) { return {left, top, left + width, top + height}; }

class Docking : public testing::Test {
protected:
    Docking() {
        FFolder.AddFile("drawing.txt");
        FFolder.AddFile("letter.txt");
        FDialog.SetInitialDir(FFolder.Path());
        // Where no test moves it, all of the dialog is to be on the screen, away from the other windows.
        FDialog.CustDlgParams().PosParams().SetFitToScreen(true);
    }

    TKxCustDlgParams& Params() { return FDialog.CustDlgParams(); }
    HWND Window() const { return FDialog.DialogWindow(); }
    TRect ClientSize() const { return KxClientRect(Window()); }
    TRect RectOf(TForm& form) const { return RectIn(Window(), form.WindowHandle()); }

    void DockByForm(unsigned sides) {
        Params().SetLeftForm((sides & Left) != 0 ? FLeft.get() : nullptr);
        Params().SetTopForm((sides & Top) != 0 ? FTop.get() : nullptr);
        Params().SetRightForm((sides & Right) != 0 ? FRight.get() : nullptr);
        Params().SetBottomForm((sides & Bottom) != 0 ? FBottom.get() : nullptr);
    }
    std::vector<TForm*> DockedForms() {
        std::vector<TForm*> forms;
        for (TForm* form : {Params().LeftForm(), Params().TopForm(), Params().RightForm(), Params().BottomForm()}) {
            if (form) {
                forms.push_back(form);
            }
        }
        return forms;
    }
    TCondition AllPainted() {
        return [this] {
            for (TForm* form : DockedForms()) {
                if (!IsPainted(*form)) {
                    return false;
                }
            }
            return true;
        };
    }

    /// All docked forms stand around the middle of a client area of this size.
    void ExpectFormsAround(int32_t width, int32_t height) {
        const int32_t left = Params().LeftForm() ? FLeft->Width() : 0;
        const int32_t top = Params().TopForm() ? FTop->Height() : 0;
        const int32_t right = Params().RightForm() ? FRight->Width() : 0;
        const int32_t bottom = Params().BottomForm() ? FBottom->Height() : 0;
        if (Params().LeftForm()) {
            EXPECT_EQ(RectOf(*FLeft), At(0, 0, left, height - bottom));
        }
        if (Params().TopForm()) {
            EXPECT_EQ(RectOf(*FTop), At(left, 0, width - left - right, top));
        }
        if (Params().RightForm()) {
            EXPECT_EQ(RectOf(*FRight), At(width - right, 0, right, height - bottom));
        }
        if (Params().BottomForm()) {
            EXPECT_EQ(RectOf(*FBottom), At(0, height - bottom, width, bottom));
        }
    }

    TStep Cancel() { return Press(FDialog, IDCANCEL); }

    TTempFolder FFolder;
    TFormPtr<TLeftForm> FLeft = MakeForm<TLeftForm>();
    TFormPtr<TTopForm> FTop = MakeForm<TTopForm>();
    TFormPtr<TRightForm> FRight = MakeForm<TRightForm>();
    TFormPtr<TBottomForm> FBottom = MakeForm<TBottomForm>();
    TFrameDialog FDialog;
};

// --- Every combination of sides

class DockedSides : public Docking, public testing::WithParamInterface<unsigned> {};
INSTANTIATE_TEST_SUITE_P(All, DockedSides, testing::Range(0u, 16u),
                         [](const auto& tested) { return NameOf(tested.param); });

TEST_P(DockedSides, FormsStandAroundTheDialogWhichGrowsByTheirSizes) {
    const unsigned sides = GetParam();
    DockByForm(sides);
    const int32_t width = ((sides & Left) != 0 ? 120 : 0) + ((sides & Right) != 0 ? 70 : 0);
    const int32_t height = ((sides & Top) != 0 ? 50 : 0) + ((sides & Bottom) != 0 ? 80 : 0);
    RunDialog(FDialog, {{"forms are painted", AllPainted(),
                         [&] {
                             Screenshot("docked-" + NameOf(sides), Window());
                             const TRect now = KxWindowRect(Window());
                             const TRect& before = FDialog.SystemRect();
                             EXPECT_EQ(Width(now), Width(before) + width);
                             EXPECT_EQ(Height(now), Height(before) + height);
                             EXPECT_EQ(Params().IncX(), width);
                             EXPECT_EQ(Params().IncY(), height);
                             EXPECT_EQ(Params().Handle(), Window());
                             ExpectFormsAround(FDialog.SystemClient().Right + width,
                                               FDialog.SystemClient().Bottom + height);
                             for (TForm* form : DockedForms()) {
                                 EXPECT_EQ(form->BorderStyle(), bsNone);
                                 EXPECT_EQ(form->ParentWindow(), Window());
                                 EXPECT_TRUE(IsWindowVisible(form->WindowHandle()));
                             }
                         }},
                        Cancel()});
}

TEST_P(DockedSides, DialogControlsMakeRoomForTheLeftAndTheTopForm) {
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
    RunDialog(FDialog, {Cancel()});
    EXPECT_FALSE(FDialog.SystemChildren().empty());
}

TEST_P(DockedSides, FormsFollowTheRunningDialogsSize) {
    DockByForm(GetParam());
    const auto resizeBy = [&](int32_t dx, int32_t dy) {
        const TRect r = KxWindowRect(Window());
        SetWindowPos(Window(), nullptr, 0, 0, Width(r) + dx, Height(r) + dy, SWP_NOMOVE | SWP_NOZORDER);
    };
    RunDialog(FDialog, {{"forms are painted", AllPainted(), [&] { resizeBy(150, 90); }},
                        {"forms are painted anew", AllPainted(),
                         [&] {
                             Screenshot("resized-" + NameOf(GetParam()), Window());
                             ExpectFormsAround(ClientSize().Right, ClientSize().Bottom);
                             resizeBy(-70, -40);
                         }},
                        {"forms are painted once more", AllPainted(),
                         [&] { ExpectFormsAround(ClientSize().Right, ClientSize().Bottom); }},
                        Cancel()});
}

TEST_P(DockedSides, FormsLeaveTheClosingDialogUnharmed) {
    DockByForm(GetParam());
    RunDialog(FDialog, {{"forms are painted", AllPainted(), {}}, Cancel()});
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
    RunDialog(FDialog, {{"forms are painted", AllPainted(), {}},
                        EnterFileName(FDialog, "inside"),
                        {"the folder is shown", FolderIs(FDialog, FFolder.Path("inside")), redraw},
                        {"forms are painted", AllPainted(),
                         [&] {
                             Screenshot("docked-other-folder", Window());
                             ExpectFormsAround(ClientSize().Right, ClientSize().Bottom);
                             const TRect list = RectIn(Window(), FileListOf(Window()));
                             EXPECT_GE(list.Left, 120);
                             EXPECT_GE(list.Top, 50);
                             EXPECT_LE(list.Right, ClientSize().Right - 70);
                             EXPECT_LE(list.Bottom, ClientSize().Bottom - 80);
                         }},
                        Cancel()});
}

TEST_F(Docking, ADialogOfFixedSizeGrowsLikewise) {
    FDialog.SetOptions(FDialog.Options() - TOpenOptions{ofEnableSizing});
    DockByForm(AllSides);
    RunDialog(FDialog, {{"forms are painted", AllPainted(),
                         [&] {
                             Screenshot("docked-fixed-size", Window());
                             const TRect& client = FDialog.SystemClient();
                             ExpectFormsAround(client.Right + 190, client.Bottom + 130);
                         }},
                        Cancel()});
}

TEST_F(Docking, ADialogWithTheSystemsPlacesBarGrowsLikewise) {
    FDialog.SetOptionsEx({});
    DockByForm(AllSides);
    RunDialog(FDialog, {{"forms are painted", AllPainted(),
                         [&] {
                             Screenshot("docked-places-bar", Window());
                             const TRect& client = FDialog.SystemClient();
                             ExpectFormsAround(client.Right + 190, client.Bottom + 130);
                         }},
                        Cancel()});
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
    RunDialog(FDialog,
              {{"forms are painted", [&] { return DockedForms().size() == 4 && AllPainted()(); }, {}}, Cancel()});
    EXPECT_EQ(Params().LeftForm(), FLeft.get());
    EXPECT_EQ(Params().TopForm(), FTop.get());
    EXPECT_EQ(Params().RightForm(), FRight.get());
    EXPECT_EQ(Params().BottomForm(), FBottom.get());
    EXPECT_EQ(Params().LeftFormName(), "LEFTFORM");
}

TEST_F(Docking, ANameWithoutAFormLeavesTheSideEmpty) {
    Params().SetLeftFormName("NoSuchForm");
    Params().SetBottomFormName("TBottomForm"); // a class name is not a form name
    RunDialog(FDialog, {Cancel()});
    EXPECT_EQ(Params().LeftForm(), nullptr);
    EXPECT_EQ(Params().BottomForm(), nullptr);
    EXPECT_EQ(Params().IncX(), 0);
    EXPECT_EQ(Params().IncY(), 0);
}

TEST_F(Docking, TheFirstFormOfAClassIsTaken) {
    const TFormPtr<TLeftForm> second = MakeForm<TLeftForm>();
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
    RunDialog(FDialog, {Cancel()});
    EXPECT_EQ(Application().ComponentCount(), before);
}

TEST_F(Docking, TheCustomFormIsFoundAndBorderlessButNotDocked) {
    const TFormPtr<TCentreForm> centre = MakeForm<TCentreForm>();
    Params().SetCustFormName("CentreForm");
    RunDialog(FDialog, {{"custom form is found", [&] { return Params().CustomForm() == centre.get(); },
                         [&] {
                             EXPECT_EQ(centre->BorderStyle(), bsNone);
                             EXPECT_EQ(centre->ParentWindow(), nullptr);
                             EXPECT_FALSE(centre->Visible());
                             EXPECT_EQ(Params().IncX(), 0);
                         }},
                        Cancel()});
}

TEST_F(Docking, TheReferenceFormOfThePositionIsFoundAndKeepsItsBorder) {
    Params().PosParams().SetFormName("LeftForm");
    RunDialog(FDialog, {Cancel()});
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
                        Cancel()});
}

TEST_F(Docking, MoveLeftShiftsChildrenByTheFrameHeightAndLeavesGrandchildren) {
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
                        Cancel()});
}

TEST_F(Docking, MovingBeyondTheCoordinatesIsReportedAndEndsNoEnumeration) {
    const TCaughtExceptions caught;
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
                        Cancel()});
    EXPECT_EQ(caught.Messages.size(), 2u);
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
                        Cancel()});
}

TEST_F(Docking, WithoutAnIconTheDialogWindowKeepsItsOwn) {
    RunDialog(FDialog, {{"",
                         {},
                         [&] {
                             const LRESULT before = SendMessageA(Window(), WM_GETICON, ICON_SMALL, 0);
                             Params().SetIcon2(Window());
                             EXPECT_EQ(SendMessageA(Window(), WM_GETICON, ICON_SMALL, 0), before);
                         }},
                        Cancel()});
}

TEST_F(Docking, RectanglesOfTheDialogAndItsSelectionFollowTheSize) {
    DockByForm(Right | Bottom);
    Params().SetCustRect({10, 20, 310, 220});
    RunDialog(FDialog, {{"forms are painted", AllPainted(),
                         [&] {
                             const TRect& client = FDialog.SystemClient();
                             EXPECT_EQ(Params().ClientRect(), (TRect{0, 0, client.Right + 70, client.Bottom + 80}));
                             EXPECT_EQ(Params().CustRect(), (TRect{10, 20, 380, 300}));
                         }},
                        Cancel()});
}

// --- Showing again

TEST_F(Docking, TheNextShowingDocksTheFormsInTheirChangedSizes) {
    DockByForm(AllSides);
    RunDialog(FDialog, {{"forms are painted", AllPainted(), {}}, Cancel()});
    const TRect first = FDialog.SystemRect();
    FLeft->SetWidth(95);
    FBottom->SetHeight(111);
    RunDialog(FDialog, {{"forms are painted", AllPainted(),
                         [&] {
                             Screenshot("docked-again", Window());
                             EXPECT_EQ(Params().IncX(), 95 + 70);
                             EXPECT_EQ(Params().IncY(), 50 + 111);
                             const TRect now = KxWindowRect(Window());
                             EXPECT_EQ(Width(now), Width(first) + 95 + 70);
                             EXPECT_EQ(Height(now), Height(first) + 50 + 111);
                             ExpectFormsAround(ClientSize().Right, ClientSize().Bottom);
                         }},
                        Cancel()});
}

TEST_F(Docking, AFormResizedWhileDockedComesBackInThatSize) {
    DockByForm(Right);
    RunDialog(FDialog, {{"forms are painted", AllPainted(), [&] { FRight->SetWidth(140); }}, Cancel()});
    RunDialog(FDialog, {{"forms are painted", AllPainted(), [&] { EXPECT_EQ(Params().IncX(), 140); }}, Cancel()});
}

TEST_F(Docking, AFormCanMoveToAnotherDialogThatRunsInsideTheFirst) {
    DockByForm(Bottom);
    TFrameDialog inner;
    inner.SetInitialDir(FFolder.Path());
    inner.CustDlgParams().SetBottomForm(FBottom.get());
    RunDialog(FDialog, {{"forms are painted", AllPainted(), [&] { inner.Execute(); }},
                        {"inner dialog is shown with the form",
                         [&] { return inner.DialogWindow() && Shown(inner)() && IsPainted(*FBottom); },
                         [&] {
                             EXPECT_EQ(FBottom->ParentWindow(), inner.DialogWindow());
                             inner.CloseDialog(mrCancel);
                         }},
                        {"inner dialog is gone", [&] { return !inner.DialogWindow() && Shown(FDialog)(); }, {}},
                        Cancel()});
    EXPECT_EQ(FBottom->ParentWindow(), nullptr);
}

// --- Forms and dialogs that go

class FreedWhileDocked : public Docking, public testing::WithParamInterface<unsigned> {};
INSTANTIATE_TEST_SUITE_P(Sides, FreedWhileDocked, testing::Values(Left, Top, Right, Bottom),
                         [](const auto& tested) { return NameOf(tested.param); });

TEST_P(FreedWhileDocked, IsForgottenAndTheDialogGoesOn) {
    DockByForm(AllSides);
    RunDialog(FDialog, {{"forms are painted", AllPainted(),
                         [&] {
                             switch (GetParam()) {
                             case Left: FLeft.reset(); break;
                             case Top: FTop.reset(); break;
                             case Right: FRight.reset(); break;
                             default: FBottom.reset();
                             }
                             EXPECT_EQ(DockedForms().size(), 3u);
                             RedrawWindow(Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
                         }},
                        {"the others are painted", AllPainted(),
                         [&] {
                             const TRect r = KxWindowRect(Window());
                             SetWindowPos(Window(), nullptr, 0, 0, Width(r) + 50, Height(r) + 50,
                                          SWP_NOMOVE | SWP_NOZORDER);
                             const TRect client = ClientSize();
                             if (Params().BottomForm()) {
                                 EXPECT_EQ(FBottom->Width(), client.Right);
                             }
                             if (Params().LeftForm()) {
                                 EXPECT_EQ(FLeft->Height(), client.Bottom - (Params().BottomForm() ? 80 : 0));
                             }
                         }},
                        Cancel()});
    RunDialog(FDialog,
              {{"the others are docked again", AllPainted(), [&] { EXPECT_EQ(DockedForms().size(), 3u); }}, Cancel()});
}

TEST_F(Docking, AFormThatReleasesItselfWhenShownIsForgotten) {
    DockByForm(Left | Bottom);
    TForm* const bottom = FBottom.release();
    bottom->SetOnShow([=](TObject*) { bottom->Release(); });
    RunDialog(FDialog, {{"the form is gone", [&] { return Params().BottomForm() == nullptr; }, {}}, Cancel()});
}

TEST_F(Docking, AFormThatFreesItselfWhenShownIsForgotten) {
    DockByForm(Left | Bottom);
    TForm* const bottom = FBottom.release();
    bottom->SetOnShow([=](TObject*) { bottom->Free(); });
    RunDialog(FDialog,
              {{"the other form is painted", AllPainted(), [&] { EXPECT_EQ(DockedForms().size(), 1u); }}, Cancel()});
}

TEST_F(Docking, AFormThatWasNamedAndFreedBeforeTheShowingLeavesTheSideEmpty) {
    Params().SetLeftForm(FLeft.get());
    FLeft.reset();
    RunDialog(FDialog, {Cancel()});
    EXPECT_EQ(Params().LeftForm(), nullptr);
    EXPECT_EQ(Params().IncX(), 0);
}

TEST_F(Docking, AFormWhoseShowingRaisesAnExceptionDoesNotHarmTheDialog) {
    const TCaughtExceptions caught;
    DockByForm(AllSides);
    FLeft->SetOnShow([](TObject*) { throw Exception("no preview"); });
    RunDialog(FDialog, {Cancel()});
    ASSERT_EQ(caught.Messages.size(), 1u);
    EXPECT_EQ(caught.Messages[0], "no preview");
    FLeft->SetOnShow(nullptr);
    RunDialog(FDialog, {{"forms are painted", AllPainted(), {}}, Cancel()});
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
    RunDialog(FDialog, {{"forms are painted", AllPainted(), {}}, Cancel()});
}

TEST_F(Docking, FormsSurviveADialogWhoseDestructionIsVetoed) {
    DockByForm(AllSides);
    FDialog.SetOnEventHooking([](TObject*, TMessage& m, bool& allow) { allow = m.Msg != WM_DESTROY; });
    RunDialog(FDialog, {{"forms are painted", AllPainted(), {}}, Cancel()});
    FDialog.SetOnEventHooking(nullptr);
    RunDialog(FDialog, {{"forms are painted", AllPainted(), {}}, Cancel()});
    for (TForm* form : DockedForms()) {
        EXPECT_EQ(form->ParentWindow(), nullptr);
    }
}

// --- Context menus

TEST_F(Docking, AContextMenuOfOurOwnKeepsTheDialogsHelpAway) {
    TPopupMenu menu;
    DockByForm(Bottom);
    RunDialog(FDialog, {{"forms are painted", AllPainted(),
                         [&] {
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
                         }},
                        Cancel()});
}

} // namespace
} // namespace kx::test
