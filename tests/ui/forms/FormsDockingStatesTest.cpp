// SPDX-License-Identifier: MIT
// Icons and maximised forms in a dialog.

#include "tests/ui/HostDialog.h"
#include "tests/ui/SampleForms.h"
#include "tests/ui/SecondMonitor.h"

#include "kx/win/System.h"

#include "support/WindowTools.h"

#include <gtest/gtest.h>

// Docking of forms that are icons or fill the screen, and docking that fails.

namespace kx {
namespace {

using namespace test;

class FormsDockingStates : public testing::Test {
protected:
    FormsDockingStates() : Form(NewForm<TAllControlsForm>(nullptr)) {}
    THostDialog Host;
    std::unique_ptr<TAllControlsForm, TFreeDeleter> Form;
};

/// Forms that the user has made an icon, or as large as the screen.
class FormsDockingOfState : public FormsDockingStates, public testing::WithParamInterface<TWindowState> {
protected:
    FormsDockingOfState() {
        Form->SetBounds(60, 50, 300, 200);
        Form->Show();
        Form->SetWindowState(GetParam());
        Window = Form->Handle();
        EXPECT_TRUE(HasState());
        Form->SetBorderStyle(bsNone);
    }
    bool HasState() const { return GetParam() == wsMinimized ? IsIconic(Window) : IsZoomed(Window); }
    bool IsOrdinary() const { return !IsIconic(Window) && !IsZoomed(Window); }
    HWND Window = nullptr;
};

INSTANTIATE_TEST_SUITE_P(AllStates, FormsDockingOfState, testing::Values(wsMinimized, wsMaximized),
                         [](const auto& test) { return test.param == wsMinimized ? "Icon" : "FullScreen"; });

TEST_P(FormsDockingOfState, HasItsOrdinarySizeInTheDialog) {
    EXPECT_EQ(Form->NormalBounds(), (TRect{60, 50, 360, 250}));
    Form->SetParentWindow(Host.Window);
    EXPECT_TRUE(IsOrdinary());
    EXPECT_TRUE(IsWindowVisible(Window));
    EXPECT_EQ(Form->Width(), 300);
    EXPECT_EQ(Form->Height(), 200);
    EXPECT_EQ(Width(ScreenRectOf(Window)), 300);
    EXPECT_EQ(Height(ScreenRectOf(Window)), 200);
    Form->SetBounds(10, 70, 200, 100);
    EXPECT_EQ(RectIn(Host.Window, Window), (TRect{10, 70, 210, 170}));
    EXPECT_EQ(Form->ClientWidth(), 200);
    EXPECT_EQ(Form->NormalBounds(), (TRect{10, 70, 210, 170}));
}

TEST_P(FormsDockingOfState, HasItsStateAgainWhenItIsShownByItself) {
    Form->SetParentWindow(Host.Window);
    Form->Hide();
    Form->SetParentWindow(nullptr);
    EXPECT_TRUE(IsOrdinary());
    EXPECT_FALSE(IsWindowVisible(Window));
    Form->Show();
    EXPECT_TRUE(HasState());
    EXPECT_EQ(Form->WindowState(), GetParam());
}

TEST_P(FormsDockingOfState, HasItsStateAgainWhenItLeavesTheDialogShown) {
    Form->SetParentWindow(Host.Window);
    Form->SetParentWindow(nullptr);
    EXPECT_TRUE(IsWindowVisible(Window));
    EXPECT_TRUE(HasState());
    EXPECT_EQ(Form->WindowState(), GetParam());
}

TEST_P(FormsDockingOfState, StaysHiddenInTheDialogWhenItIsHidden) {
    Form->Hide();
    Form->SetParentWindow(Host.Window);
    EXPECT_TRUE(IsOrdinary());
    EXPECT_FALSE(IsWindowVisible(Window));
    EXPECT_EQ(Form->Width(), 300);
    Form->Show();
    EXPECT_EQ(Form->Width(), 300);
    EXPECT_TRUE(IsOrdinary());
}

TEST_F(FormsDockingStates, TheOrdinaryPlaceIsThatOfTheScreenWhateverBarsTheSystemHas) {
    Form->SetBounds(60, 50, 300, 200);
    Form->Show();
    Form->SetWindowState(wsMaximized);
    const TSecondMonitor second(Form->Handle());
    EXPECT_EQ(Form->NormalBounds(), (TRect{60, 50, 360, 250}));
    const TAssumedSystem windows({.Wine = false});
    EXPECT_EQ(Form->NormalBounds(), (TRect{60 + 30, 50 + 40, 360 + 30, 250 + 40}));
    Form->SetBorderStyle(bsToolWindow);
    ASSERT_TRUE(IsZoomed(Form->Handle()));
    EXPECT_EQ(Form->NormalBounds(), (TRect{60, 50, 360, 250}));
}

TEST_F(FormsDockingStates, AFormThatFillsTheScreenMayBeFreedWhenItGetsItsOrdinarySize) {
    TAllControlsForm& form = *Form;
    form.Show();
    form.SetWindowState(wsMaximized);
    const HWND window = form.Handle();
    form.SetOnResize([this](TObject*) { Form.reset(); });
    form.SetParentWindow(Host.Window);
    EXPECT_FALSE(Form);
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(FormsDockingStates, AnotherBorderLeavesAnIconAnIcon) {
    Form->SetBounds(60, 50, 300, 200);
    Form->Show();
    Form->SetWindowState(wsMinimized);
    const TRect icon = ScreenRectOf(Form->Handle());
    Form->SetBorderStyle(bsSingle);
    EXPECT_EQ(ScreenRectOf(Form->Handle()), icon);
    Form->SetWindowState(wsNormal);
    EXPECT_EQ(ScreenRectOf(Form->Handle()), (TRect{60, 50, 360, 250}));
}

/// The system puts no window into one that is inside it.
HWND InsideOf(HWND window) {
    return CreateWindowExA(0, "STATIC", "", WS_CHILD, 0, 0, 9, 9, window, nullptr, nullptr, nullptr);
}

TEST_F(FormsDockingStates, AFormThatTheSystemRefusesToDockStaysWhatItIs) {
    Form->SetBounds(60, 50, 300, 200);
    Form->Show();
    const HWND window = Form->Handle();
    const HWND inside = InsideOf(window);
    const auto style = GetWindowLongA(window, GWL_STYLE);
    const auto exStyle = GetWindowLongA(window, GWL_EXSTYLE);
    EXPECT_THROW(Form->SetParentWindow(inside), EOSError);
    EXPECT_EQ(Form->ParentWindow(), nullptr);
    EXPECT_FALSE(Form->IsDocked());
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_EQ(GetWindowLongA(window, GWL_STYLE), style);
    EXPECT_EQ(GetWindowLongA(window, GWL_EXSTYLE), exStyle);
    EXPECT_EQ(ScreenRectOf(window), (TRect{60, 50, 360, 250}));
    Form->SetParentWindow(Host.Window);
    EXPECT_EQ(GetParent(window), Host.Window);
    EXPECT_THROW(Form->SetParentWindow(inside), EOSError);
    EXPECT_EQ(GetParent(window), Host.Window) << "it stays where it was";
    EXPECT_EQ(Form->ParentWindow(), Host.Window);
    EXPECT_TRUE(IsWindowVisible(window));
}

TEST_F(FormsDockingStates, AControlThatTheSystemRefusesToMoveStaysWhereItIs) {
    TPanel panel;
    panel.SetParentWindow(Host.Window);
    EXPECT_THROW(panel.SetParentWindow(InsideOf(panel.WindowHandle())), EOSError);
    EXPECT_EQ(panel.ParentWindow(), Host.Window);
    EXPECT_EQ(GetParent(panel.WindowHandle()), Host.Window);
}

/// Fails once its window is made.
class TFailingPanel : public TPanel {
protected:
    void CreateWnd() override {
        TPanel::CreateWnd();
        throw Exception("failed");
    }
};

TEST_F(FormsDockingStates, AControlThatFailsInItsNewWindowIsThere) {
    TFailingPanel panel;
    EXPECT_THROW(panel.SetParentWindow(Host.Window), Exception);
    EXPECT_EQ(panel.ParentWindow(), Host.Window);
    EXPECT_EQ(GetParent(panel.WindowHandle()), Host.Window);
}

TEST_F(FormsDockingStates, AFormThatCannotBeDockedKeepsItsMenu) {
    TMainMenu menu(nullptr);
    TMenuItem item;
    item.SetCaption("File");
    menu.Items().Add(&item);
    Form->SetMenu(&menu);
    Form->Show();
    ASSERT_EQ(GetMenu(Form->Handle()), menu.Handle());
    EXPECT_THROW(Form->SetParentWindow(InsideOf(Form->Handle())), EOSError);
    EXPECT_EQ(GetMenu(Form->Handle()), menu.Handle());
    Form->SetMenu(nullptr);
}

} // namespace
} // namespace kx
