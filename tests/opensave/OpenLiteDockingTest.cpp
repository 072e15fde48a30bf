// SPDX-License-Identifier: MIT
// Forms at the lite dialogs' sides.

#include "FileDlgTest.h"

#include "tests/support/UnevenFrames.h"

namespace kx {
namespace {

using namespace test;

constexpr int LeftW = 120;
constexpr int TopH = 50;
constexpr int RightW = 140;
constexpr int BottomH = 80;

/// A dialog as the system makes it, in pixels.
struct TBare {
    int OuterWidth = 0;
    int OuterHeight = 0;
    TRect Client;
    TRect OkButton; ///< In client coordinates, like the list.
    TRect List;
};

class LiteDocking : public TFileDlgTest {
protected:
    /// The dialog as it is before forms are docked into it.
    TBare Measure(TKxOpenLiteDialog& like) {
        TBare bare;
        auto& dialog = NewDialog();
        dialog.SetOptions(like.Options());
        dialog.PlacesBar().SetVisible(like.PlacesBar().Visible());
        Look(dialog, [&] {
            const TRect outer = ScreenRectOf(dialog.DlgHandle());
            bare = {Width(outer), Height(outer), ClientRectOf(dialog.DlgHandle()),
                    RectIn(dialog.DlgHandle(), ItemOf(dialog, IDOK)), RectIn(dialog.DlgHandle(), ListOf(dialog))};
        });
        return bare;
    }

    void Dock(TKxOpenLiteDialog& dialog, bool left, bool top, bool right, bool bottom) {
        dialog.CustDlgParams().SetLeftForm(left ? Left.get() : nullptr);
        dialog.CustDlgParams().SetTopForm(top ? Top.get() : nullptr);
        dialog.CustDlgParams().SetRightForm(right ? Right.get() : nullptr);
        dialog.CustDlgParams().SetBottomForm(bottom ? Bottom.get() : nullptr);
    }

    /// The docked forms lie where they belong in a dialog of the client size `own`, before docking.
    void ExpectDocked(const TKxOpenLiteDialog& dialog, int ownWidth, int ownHeight) {
        auto& params = const_cast<TKxOpenLiteDialog&>(dialog).CustDlgParams();
        HWND window = dialog.DlgHandle();
        const int left = params.LeftForm() ? LeftW : 0;
        const int top = params.TopForm() ? TopH : 0;
        const int right = params.RightForm() ? RightW : 0;
        if (params.LeftForm()) {
            EXPECT_EQ(RectIn(window, Left->WindowHandle()), (TRect{0, 0, LeftW, top + ownHeight}));
        }
        if (params.TopForm()) {
            EXPECT_EQ(RectIn(window, Top->WindowHandle()), (TRect{left, 0, left + ownWidth, TopH}));
        }
        if (params.RightForm()) {
            const int x = left + ownWidth;
            EXPECT_EQ(RectIn(window, Right->WindowHandle()), (TRect{x, 0, x + RightW, top + ownHeight}));
        }
        if (params.BottomForm()) {
            const int y = top + ownHeight;
            EXPECT_EQ(RectIn(window, Bottom->WindowHandle()), (TRect{0, y, left + ownWidth + right, y + BottomH}));
        }
        const TRect client = ClientRectOf(window);
        EXPECT_EQ(client.Right, left + ownWidth + right);
        EXPECT_EQ(client.Bottom, top + ownHeight + (params.BottomForm() ? BottomH : 0));
    }

    TFormPtr Left = MakeMarkedForm(clMoneyGreen, LeftW, 33);
    TFormPtr Top = MakeMarkedForm(clSkyBlue, 44, TopH);
    TFormPtr Right = MakeMarkedForm(clCream, RightW, 55);
    TFormPtr Bottom = MakeMarkedForm(clSilver, 66, BottomH);
    TFormPtr Custom = MakeMarkedForm(clYellow, 222, 111);
};

// --- Every combination of sides, with and without the system's places bar, resizable and not

struct TCombination {
    int Sides; ///< 1 left, 2 top, 4 right, 8 bottom
    bool PlacesBar;
    bool Sizeable;
};

std::string NameOf(const TCombination& c) {
    std::string name;
    name += (c.Sides & 1) != 0 ? "Left" : "";
    name += (c.Sides & 2) != 0 ? "Top" : "";
    name += (c.Sides & 4) != 0 ? "Right" : "";
    name += (c.Sides & 8) != 0 ? "Bottom" : "";
    name += c.Sides == 0 ? "Nothing" : "";
    name += c.PlacesBar ? "WithPlaces" : "";
    return name + (c.Sizeable ? "Sizeable" : "");
}

std::vector<TCombination> AllCombinations() {
    std::vector<TCombination> all;
    for (int i = 0; i < 64; ++i) {
        all.push_back({i & 15, (i & 16) != 0, (i & 32) != 0});
    }
    return all;
}

class LiteDockingSides : public LiteDocking, public testing::WithParamInterface<TCombination> {};

TEST_P(LiteDockingSides, GrowTheDialogAndLieAroundIt) {
    const auto [sides, placesBar, sizeable] = GetParam();
    auto& dialog = NewDialog();
    dialog.PlacesBar().SetVisible(placesBar);
    dialog.SetOptions(sizeable ? TOpenOptions{ofHideReadOnly, ofEnableSizing} : TOpenOptions{ofHideReadOnly});
    const bool left = (sides & 1) != 0;
    const bool top = (sides & 2) != 0;
    Dock(dialog, left, top, (sides & 4) != 0, (sides & 8) != 0);
    const TBare bare = Measure(dialog);

    Look(dialog, [&] {
        ExpectDocked(dialog, bare.Client.Right, bare.Client.Bottom);
        const TRect outer = ScreenRectOf(dialog.DlgHandle());
        const TKxCustDlgParams& params = dialog.CustDlgParams();
        EXPECT_EQ(Width(outer), bare.OuterWidth + params.IncX());
        EXPECT_EQ(Height(outer), bare.OuterHeight + params.IncY());
        // The dialog's own controls make room by the form and the dialog frame.
        const int dx = left ? LeftW + GetSystemMetrics(SM_CYDLGFRAME) : 0;
        const int dy = top ? TopH + GetSystemMetrics(SM_CXDLGFRAME) : 0;
        const auto shifted = [&](const TRect& r) {
            return TRect{r.Left + dx, r.Top + dy, r.Right + dx, r.Bottom + dy};
        };
        EXPECT_EQ(RectIn(dialog.DlgHandle(), ItemOf(dialog, IDOK)), shifted(bare.OkButton));
        EXPECT_EQ(RectIn(dialog.DlgHandle(), ListOf(dialog)), shifted(bare.List));
        ExpectCleanLayout(dialog);
        Screenshot("lite_" + NameOf(GetParam()), dialog.DlgHandle());
    });
    for (const TForm* form : {Left.get(), Top.get(), Right.get(), Bottom.get()}) {
        EXPECT_FALSE(form->Visible());
        EXPECT_FALSE(form->IsDocked());
    }
}

INSTANTIATE_TEST_SUITE_P(All, LiteDockingSides, testing::ValuesIn(AllCombinations()),
                         [](const testing::TestParamInfo<TCombination>& param) { return NameOf(param.param); });

// --- Resizing

TCondition SizeIs(const TKxCustomOpenLiteDialog& dialog, int width, int height) {
    return [&dialog, width, height] {
        const TRect outer = ScreenRectOf(dialog.DlgHandle());
        return Width(outer) == width && Height(outer) == height;
    };
}

TEST_F(LiteDocking, FormsFollowADialogThatIsDraggedLargerAndSmaller) {
    auto& dialog = NewDialog();
    Dock(dialog, true, true, true, true);
    dialog.CustDlgParams().SetPosition(dpScrCenter);
    const TBare bare = Measure(dialog);
    const int width = bare.OuterWidth + LeftW + RightW;
    const int height = bare.OuterHeight + TopH + BottomH;
    const auto check = [&](int growX, int growY, const char* picture) {
        ExpectDocked(dialog, bare.Client.Right + growX, bare.Client.Bottom + growY);
        ExpectCleanLayout(dialog);
        Screenshot(picture, dialog.DlgHandle());
    };
    TTestDriver driver;
    const auto drag = [&](int dx, int dy) {
        for (TStep& step : DragCorner(dialog, dx, dy)) {
            driver.Then(step.What, step.When, step.Do);
        }
    };
    driver.Then("the dialog is shown", Shown(dialog));
    drag(100, 90);
    driver.Then("it is larger", SizeIs(dialog, width + 100, height + 90),
                [&] { check(100, 90, "lite_dragged_larger"); });
    drag(-60, -30);
    driver.Then("it is a little smaller", SizeIs(dialog, width + 40, height + 60),
                [&] { check(40, 60, "lite_dragged_smaller"); });
    drag(-200, -200);
    // The size at the first showing is the least one.
    driver.Then("it has its first size again", SizeIs(dialog, width, height),
                [&] { check(0, 0, "lite_dragged_back"); });
    driver.Then("it can be cancelled", {}, [&] { dialog.CloseDialog(mrCancel); });
    driver.Run([&] { return dialog.Execute(); });
}

TEST_F(LiteDocking, AResizableDialogReopensAtTheSizeItWasLeftAt) {
    auto& dialog = NewDialog();
    Dock(dialog, true, true, true, true);
    dialog.CustDlgParams().SetPosition(dpScrCenter);
    const TBare bare = Measure(dialog);
    const int width = bare.OuterWidth + LeftW + RightW + 70;
    const int height = bare.OuterHeight + TopH + BottomH + 60;
    std::vector<TStep> steps = DragCorner(dialog, 70, 60);
    steps.insert(steps.begin(), Await("the dialog is shown", Shown(dialog)));
    steps.push_back(Await("it is larger", SizeIs(dialog, width, height)));
    steps.push_back(Cancel(dialog));
    RunDialog(dialog, steps);
    for (int run = 0; run < 2; ++run) {
        Look(dialog, [&] {
            EXPECT_TRUE(SizeIs(dialog, width, height)());
            ExpectDocked(dialog, bare.Client.Right + 70, bare.Client.Bottom + 60);
            ExpectCleanLayout(dialog);
            Screenshot("lite_reopened" + std::to_string(run), dialog.DlgHandle());
        });
    }
    // Without forms it has the same size of its own.
    Dock(dialog, false, false, false, false);
    Look(dialog, [&] { EXPECT_TRUE(SizeIs(dialog, bare.OuterWidth + 70, bare.OuterHeight + 60)()); });
}

TEST_F(LiteDocking, ADialogWithoutSizingAlwaysHasTheSystemsSize) {
    auto& dialog = NewDialog();
    dialog.SetOptions({ofHideReadOnly});
    Dock(dialog, false, false, true, false);
    const TBare bare = Measure(dialog);
    Look(dialog, [&] { SetWindowPos(dialog.DlgHandle(), nullptr, 0, 0, 900, 700, SWP_NOMOVE | SWP_NOZORDER); });
    Look(dialog, [&] { EXPECT_TRUE(SizeIs(dialog, bare.OuterWidth + RightW, bare.OuterHeight)()); });
}

// --- Undocking, and docking again

TEST_F(LiteDocking, FormsAreWindowsOfTheirOwnAfterwards) {
    auto& dialog = NewDialog();
    Dock(dialog, true, false, false, true);
    Look(dialog, [&] {
        EXPECT_TRUE(Left->IsDocked());
        EXPECT_EQ(GetParent(Left->WindowHandle()), dialog.DlgHandle());
    });
    EXPECT_EQ(Left->ParentWindow(), nullptr);
    EXPECT_EQ(Left->Width(), LeftW);
    EXPECT_EQ(Bottom->Height(), BottomH);
    Left->Show();
    EXPECT_TRUE(IsWindowVisible(Left->Handle()));
    EXPECT_EQ(GetAncestor(Left->Handle(), GA_PARENT), GetDesktopWindow());
    Left->Hide();
}

TEST_F(LiteDocking, FormsAreDockedAnewAtEachShowing) {
    auto& dialog = NewDialog();
    Dock(dialog, true, true, true, true);
    const TBare bare = Measure(dialog);
    for (int run = 0; run < 3; ++run) {
        Look(dialog, [&] {
            ExpectDocked(dialog, bare.Client.Right, bare.Client.Bottom);
            ExpectCleanLayout(dialog);
        });
    }
}

TEST_F(LiteDocking, AFormMayMoveToAnotherSideBetweenShowings) {
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetLeftForm(Left.get());
    Look(dialog, [&] { EXPECT_EQ(RectIn(dialog.DlgHandle(), Left->WindowHandle()).Left, 0); });
    dialog.CustDlgParams().SetLeftForm(nullptr);
    dialog.CustDlgParams().SetRightForm(Left.get());
    const TBare bare = Measure(dialog);
    Look(dialog, [&] { EXPECT_EQ(RectIn(dialog.DlgHandle(), Left->WindowHandle()).Left, bare.Client.Right); });
}

TEST_F(LiteDocking, TheCustomFormIsMadeReadyAndNotShown) {
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetCustomForm(Custom.get());
    const TBare bare = Measure(dialog);
    Look(dialog, [&] {
        EXPECT_EQ(Custom->BorderStyle(), bsNone);
        EXPECT_FALSE(Custom->Visible());
        EXPECT_TRUE(IsWindowVisible(ListOf(dialog)));
        EXPECT_EQ(ClientRectOf(dialog.DlgHandle()), bare.Client);
    });
    EXPECT_FALSE(Custom->IsDocked());
}

TEST_F(LiteDocking, ACustomFormThatWasShownIsHiddenInTheEnd) {
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetCustomForm(Custom.get());
    Look(dialog, [&] {
        const TRect& area = dialog.CustDlgParams().CustRect();
        Custom->SetParentWindow(dialog.DlgHandle());
        Custom->SetBounds(area.Left, area.Top, area.Right, area.Bottom);
        Custom->Show();
        Custom->BringToFront();
        EXPECT_EQ(GetParent(Custom->WindowHandle()), dialog.DlgHandle());
    });
    EXPECT_FALSE(Custom->Visible());
    EXPECT_EQ(Custom->ParentWindow(), nullptr);
}

TEST_F(LiteDocking, FormsAreFoundByNameInAnyLetterCase) {
    const TFormPtr form(new TPreviewForm(&Application()));
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetRightFormName("pREVIEWform");
    const TBare bare = Measure(dialog);
    Look(dialog, [&] {
        EXPECT_EQ(dialog.CustDlgParams().RightForm(), form.get());
        EXPECT_EQ(RectIn(dialog.DlgHandle(), form->WindowHandle()).Left, bare.Client.Right);
    });
}

TEST_F(LiteDocking, ANameWithoutAFormLeavesItsSideEmpty) {
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetTopFormName("NoSuchForm");
    const TBare bare = Measure(dialog);
    Look(dialog, [&] { EXPECT_EQ(ClientRectOf(dialog.DlgHandle()), bare.Client); });
}

TEST_F(LiteDocking, TheSelectionAreaIsThatOfTheFileList) {
    const TUnevenFrames frames;
    auto& dialog = NewDialog();
    Dock(dialog, true, true, false, false);
    Look(dialog, [&] {
        HWND placeholder = ItemOf(dialog, 1120);
        const TRect place = RectIn(dialog.DlgHandle(), placeholder);
        const TRect inside = ClientRectOf(placeholder);
        EXPECT_EQ(dialog.CustDlgParams().CustRect(),
                  (TRect{place.Left, place.Top, inside.Right + GetSystemMetrics(SM_CXDLGFRAME),
                         inside.Bottom + GetSystemMetrics(SM_CYDLGFRAME)}));
    });
}

TEST_F(LiteDocking, TheIconIsTheDialogWindows) {
    auto& dialog = NewDialog();
    dialog.CustDlgParams().Icon().SetHandle(CopyIcon(LoadIconA(nullptr, IDI_WARNING)));
    Look(dialog, [&] {
        EXPECT_EQ(reinterpret_cast<HICON>(SendMessageA(dialog.DlgHandle(), WM_GETICON, ICON_SMALL, 0)),
                  dialog.CustDlgParams().Icon().Handle());
    });
}

TEST_F(LiteDocking, FolderChangesLeaveTheLayoutAlone) {
    auto& dialog = NewDialog();
    Dock(dialog, true, true, true, true);
    const TBare bare = Measure(dialog);
    RunDialog(dialog, [&] { PressToolButton(dialog, 40961); },
              {{"the parent folder is shown", FolderIs(dialog, ExtractFileDir(Folder.Path())),
                [&] {
                    ExpectDocked(dialog, bare.Client.Right, bare.Client.Bottom);
                    ExpectCleanLayout(dialog);
                }},
               Cancel(dialog)});
}

TEST_F(LiteDocking, DockedFormsTakeTheMouse) {
    auto& dialog = NewDialog();
    Dock(dialog, true, false, true, true);
    int clicks = 0;
    for (TForm* form : {Left.get(), Right.get(), Bottom.get()}) {
        form->SetOnClick([&](TObject*) { ++clicks; });
    }
    RunDialog(dialog, [&] { Click(Left->Handle()); },
              {{"the left form was clicked", [&] { return clicks == 1; }, [&] { Click(Right->Handle()); }},
               {"the right form was clicked", [&] { return clicks == 2; }, [&] { Click(Bottom->Handle()); }},
               Await("the bottom form was clicked", [&] { return clicks == 3; }),
               Cancel(dialog)});
}

} // namespace
} // namespace kx
