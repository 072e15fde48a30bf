// SPDX-License-Identifier: MIT
// Windows that another framework has made, on forms and docked into dialogs.

#include "PlainWindow.h"
#include "examples/win32-host/PlainPanel.h"

#include "kx/opensave/KxOpenLite.h"
#include "kx/ui/forms/ForeignControl.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/FormTest.h"
#include "tests/ui/FocusPump.h"
#include "tests/ui/HostDialog.h"

#include <algorithm>

namespace kx {
namespace {

using namespace test;

/// A form with an edit, the foreign control and another edit.
class ForeignControl : public TFormTest {
protected:
    ForeignControl()
        : First(Add<TEdit>(10, 10, 100, 24)), Foreign(Add<TForeignControl>(10, 50, 320, 60)),
          Last(Add<TEdit>(10, 130, 100, 24)) {
        Foreign->SetOnCreateForeign([this](TObject*, HWND parent, HWND& window) {
            ++Asked;
            window = CreatePlainPanel(parent);
        });
        Foreign->SetOnForeignGone([this](TObject*) { ++Gone; });
    }
    HWND Panel() const { return Foreign->ForeignWindow(); }
    HWND Item(int id) const { return GetDlgItem(Panel(), id); }
    std::vector<HWND> TabStops() const {
        return {First->WindowHandle(), Item(PanelEditId), Item(PanelReadOnlyId), Item(PanelClearId),
                Last->WindowHandle()};
    }

    TExceptionLog Exceptions;
    int Asked = 0;
    int Gone = 0;
    TEdit* First;
    TForeignControl* Foreign;
    TEdit* Last;
};

TEST_F(ForeignControl, AsksForItsWindowAndFillsItself) {
    EXPECT_EQ(Panel(), nullptr);
    EXPECT_EQ(Asked, 0) << "there is no window to be its parent yet";
    Show();
    ASSERT_NE(Panel(), nullptr);
    EXPECT_EQ(Asked, 1);
    EXPECT_EQ(GetParent(Panel()), Foreign->WindowHandle());
    EXPECT_EQ(RectIn(Foreign->WindowHandle(), Panel()), (TRect{0, 0, 320, 60}));
    Foreign->SetBounds(10, 50, 250, 44);
    EXPECT_EQ(RectIn(Foreign->WindowHandle(), Panel()), (TRect{0, 0, 250, 44}));
    Screenshot("foreign-control", Form->WindowHandle());
}

TEST_F(ForeignControl, TabGoesIntoTheWindowThroughItAndOut) {
    Show();
    First->SetFocus();
    const std::vector<HWND> stops = TabStops();
    for (size_t i = 1; i <= stops.size(); ++i) {
        PressKey(VK_TAB);
        ASSERT_TRUE(FocusPump([&] { return GetFocus() == stops[i % stops.size()]; })) << i;
    }
    for (size_t i = stops.size(); i-- > 0;) {
        PressKey(VK_TAB, {VK_SHIFT});
        ASSERT_TRUE(FocusPump([&] { return GetFocus() == stops[i]; })) << i;
    }
}

TEST_F(ForeignControl, IsTheActiveControlWhileTheFocusIsInside) {
    int entered = 0;
    int left = 0;
    Foreign->SetOnEnter([&](TObject*) { ++entered; });
    Foreign->SetOnExit([&](TObject*) { ++left; });
    Show();
    First->SetFocus();
    Click(Item(PanelEditId));
    ASSERT_TRUE(PumpUntil([&] { return Form->ActiveControl() == Foreign; }));
    EXPECT_EQ(GetFocus(), Item(PanelEditId));
    EXPECT_EQ(entered, 1);
    Click(Last->WindowHandle());
    ASSERT_TRUE(PumpUntil([&] { return Form->ActiveControl() == Last; }));
    EXPECT_EQ(left, 1);
}

TEST_F(ForeignControl, GivesTheFocusBackToWhereItWas) {
    Show();
    Click(Item(PanelReadOnlyId));
    ASSERT_TRUE(PumpUntil([&] { return Form->ActiveControl() == Foreign; }));
    Last->SetFocus();
    Foreign->SetFocus();
    EXPECT_EQ(GetFocus(), Item(PanelReadOnlyId));
}

TEST_F(ForeignControl, LeavesKeysThatItsWindowDoesNotTakeToTheForm) {
    auto* const ok = Add<TButton>(10, 200, 80, 25);
    ok->SetDefault(true);
    int clicks = 0;
    ok->SetOnClick([&](TObject*) { ++clicks; });
    Show();
    SetFocus(Item(PanelEditId));
    PressKey(VK_RETURN);
    ASSERT_TRUE(FocusPump([&] { return clicks == 1; }));
    // The panel's own letter and button
    PressKey('L', {VK_MENU});
    ASSERT_TRUE(FocusPump([&] { return TextOf(Item(PanelEditId)).empty(); }));
    SetWindowTextW(Item(PanelEditId), L"text");
    SetFocus(Item(PanelClearId));
    PressKey(VK_RETURN);
    ASSERT_TRUE(FocusPump([&] { return TextOf(Item(PanelEditId)).empty(); }));
    EXPECT_EQ(clicks, 1);
}

TEST_F(ForeignControl, TypedLettersReachTheWindow) {
    Show();
    SetFocus(Item(PanelEditId));
    SendMessageW(Item(PanelEditId), EM_SETSEL, 0, -1);
    TypeText("abc");
    EXPECT_TRUE(FocusPump([&] { return TextOf(Item(PanelEditId)) == "abc"; }));
}

// --- Ends

TEST_F(ForeignControl, HearsOfTheEndOfItsWindow) {
    Show();
    DestroyWindow(Panel());
    EXPECT_EQ(Panel(), nullptr);
    EXPECT_EQ(Gone, 1);
    EXPECT_EQ(Asked, 1) << "who destroyed it did not want it";
    First->SetFocus();
    PressKey(VK_TAB);
    EXPECT_TRUE(FocusPump([&] { return GetFocus() == Foreign->WindowHandle(); }));
    Foreign->SetBounds(10, 50, 200, 40); // nothing to size
    Foreign->RecreateWnd();
    EXPECT_NE(Panel(), nullptr);
    EXPECT_EQ(Asked, 2);
}

TEST_F(ForeignControl, AsksAgainWhenItsOwnWindowIsMadeAnew) {
    Show();
    HWND before = Panel();
    Foreign->RecreateWnd();
    EXPECT_FALSE(IsWindow(before));
    EXPECT_EQ(Asked, 2);
    EXPECT_EQ(Gone, 1);
    ASSERT_NE(Panel(), nullptr);
    EXPECT_EQ(RectIn(Foreign->WindowHandle(), Panel()), (TRect{0, 0, 320, 60}));
    Form->RecreateWnd();
    EXPECT_EQ(Asked, 3);
    EXPECT_NE(Panel(), nullptr);
}

TEST_F(ForeignControl, MayGoBeforeItsWindowsMaker) {
    Show();
    HWND panel = Panel();
    Foreign->Free();
    EXPECT_FALSE(IsWindow(panel));
    EXPECT_EQ(Gone, 0) << "the control cannot be used any more";
}

TEST_F(ForeignControl, MayBeFreedWhenItsWindowGoes) {
    Show();
    Foreign->SetOnForeignGone([this](TObject*) { Foreign->Free(); });
    DestroyWindow(Panel());
    EXPECT_EQ(Form->ControlCount(), 2);
}

TEST_F(ForeignControl, MayBeFreedWhileItAsks) {
    Foreign->SetOnCreateForeign([this](TObject*, HWND parent, HWND& window) {
        window = CreatePlainPanel(parent);
        Foreign->Free();
    });
    Form->Show();
    EXPECT_EQ(Form->ControlCount(), 2);
}

// --- Bad windows

TEST_F(ForeignControl, StaysEmptyWithoutAWindow) {
    Foreign->SetOnCreateForeign([](TObject*, HWND, HWND&) { throw Exception("No panel today"); });
    Show();
    EXPECT_EQ(Panel(), nullptr);
    EXPECT_THAT(Exceptions.Take(), ElementsAre("No panel today"));
    Foreign->SetOnCreateForeign({});
    Foreign->RecreateWnd();
    EXPECT_EQ(Panel(), nullptr);
    Foreign->SetFocus();
    EXPECT_EQ(GetFocus(), Foreign->WindowHandle());
}

TEST_F(ForeignControl, TakesNoWindowThatIsElsewhere) {
    const TPlainWindow elsewhere;
    Foreign->SetOnCreateForeign([&](TObject*, HWND, HWND& window) { window = elsewhere.Get(); });
    Show();
    EXPECT_EQ(Panel(), nullptr);
    EXPECT_THAT(Exceptions.Take(), ElementsAre("The foreign window is no child of the control that has asked for it"));
    Foreign->SetBounds(0, 50, 100, 20);
    EXPECT_NE(Width(ScreenRectOf(elsewhere.Get())), 100);
}

TEST_F(ForeignControl, TellsOfAnotherResolution) {
    std::vector<int> resolutions;
    Foreign->SetOnForeignDpi([&](TObject*, int dpi) { resolutions.push_back(dpi); });
    Show();
    resolutions.clear();
    Form->ScaleForDpi(144, 96);
    EXPECT_THAT(resolutions, ElementsAre(144));
    EXPECT_EQ(ClientRectOf(Panel()), (TRect{0, 0, 480, 90}));
}

// --- In windows of others

TEST_F(ForeignControl, TabOfASystemsDialogGoesThroughIt) {
    THostDialog host;
    Form->SetParentWindow(host.Window);
    Form->SetBounds(10, 80, 400, 250);
    Form->Show();
    SetForegroundWindow(host.Window);
    SetFocus(GetDlgItem(host.Window, 100));
    std::vector<HWND> stops = TabStops();
    std::vector<HWND> seen;
    for (int i = 0; i < 8; ++i) { // the dialog's three and these five
        HWND before = GetFocus();
        seen.push_back(before);
        PressKey(VK_TAB);
        ASSERT_TRUE(host.PumpUntil([&] { return GetFocus() != before; })) << i;
    }
    EXPECT_EQ(GetFocus(), seen.front());
    const auto at = std::find(seen.begin(), seen.end(), stops.front());
    ASSERT_LE(stops.size(), static_cast<size_t>(seen.end() - at));
    EXPECT_EQ(std::vector<HWND>(at, at + static_cast<std::ptrdiff_t>(stops.size())), stops);
    host.Destroy();
    EXPECT_EQ(Panel(), nullptr);
    EXPECT_EQ(Gone, 1);
}

TEST_F(ForeignControl, GoesWithAFormFromDialogToDialog) {
    Form->SetBorderStyle(bsNone);
    for (int i = 0; i < 2; ++i) {
        TKxOpenLiteDialog dialog(nullptr);
        dialog.CustDlgParams().SetBottomForm(Form.get());
        Look(dialog, [&] {
            EXPECT_TRUE(IsWindowVisible(Item(PanelEditId)));
            EXPECT_TRUE(IsChild(dialog.DialogWindow(), Panel()));
        });
    }
    EXPECT_EQ(Asked, 1) << "the form has kept its window";
    EXPECT_EQ(Gone, 0);
}

} // namespace
} // namespace kx
