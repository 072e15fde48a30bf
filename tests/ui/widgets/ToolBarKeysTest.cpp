// SPDX-License-Identifier: MIT
// Tool bars by the keyboard.

#include "tests/support/Reader.h"
#include "tests/ui/FocusPump.h"
#include "tests/ui/ToolBarFixture.h"

#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx {
namespace {

using namespace test;

class ToolBarKeys : public TFormTest {
protected:
    ToolBarKeys() {
        Bar->SetTabStop(true);
        for (int i = 4; i >= 0; --i) { // each comes before those that are there
            auto* const button = new TToolButton(Form.get());
            button->SetCaption(IntToStr(i));
            button->SetParent(Bar);
            button->SetOnClick([this, i](TObject*) { Clicked.push_back(i); });
        }
        Bar->Buttons(1)->SetStyle(tbsSeparator);
        Bar->Buttons(2)->SetEnabled(false);
    }
    void ShowFocused() {
        Show();
        Bar->SetFocus();
        ASSERT_TRUE(FocusPump([&] { return Bar->Focused(); }));
    }
    int KeyIndex() const { return Bar->KeyButton() ? Bar->KeyButton()->Index() : -1; }
    bool Goes(WORD key, int index) {
        PressKey(key);
        return FocusPump([&] { return KeyIndex() == index; });
    }

    TToolBar* Bar = Add<TToolBar>(0, 0, 300, 30);
    std::vector<int> Clicked;
};

TEST_F(ToolBarKeys, ArrowsGoFromButtonToButtonThatCanBePressed) {
    ShowFocused();
    EXPECT_EQ(KeyIndex(), 0);
    EXPECT_TRUE(Goes(VK_RIGHT, 3)) << "past the separator and the disabled one";
    EXPECT_TRUE(Goes(VK_DOWN, 4));
    PressKey(VK_RIGHT);
    EXPECT_TRUE(Goes(VK_LEFT, 3)) << "at the end there is no further one";
    EXPECT_TRUE(Goes(VK_UP, 0));
    EXPECT_TRUE(Goes(VK_END, 4));
    EXPECT_TRUE(Goes(VK_HOME, 0));
    EXPECT_THAT(Clicked, IsEmpty());
    Bar->Buttons(4)->SetVisible(false);
    EXPECT_TRUE(Goes(VK_END, 3)) << "before one that is hidden";
}

TEST_F(ToolBarKeys, ArrowsWithControlOrAltDoNotMove) {
    ShowFocused();
    PressKey(VK_RIGHT, {VK_CONTROL});
    PressKey(VK_RIGHT, {VK_MENU});
    ASSERT_TRUE(Goes(VK_RIGHT, 3)) << "only this one did";
}

TEST_F(ToolBarKeys, ArrowsGoWhereTheyPointInAMirroredWindow) {
    Form->HandleNeeded();
    Bar->HandleNeeded();
    SetWindowLongW(Bar->Handle(), GWL_EXSTYLE, GetWindowLongW(Bar->Handle(), GWL_EXSTYLE) | WS_EX_LAYOUTRTL);
    ShowFocused();
    EXPECT_TRUE(Goes(VK_LEFT, 3));
    EXPECT_TRUE(Goes(VK_DOWN, 4));
    EXPECT_TRUE(Goes(VK_RIGHT, 3));
    EXPECT_TRUE(Goes(VK_UP, 0));
}

TEST_F(ToolBarKeys, SpaceAndReturnPressTheButton) {
    ShowFocused();
    ASSERT_TRUE(Goes(VK_END, 4));
    PressKey(VK_SPACE);
    EXPECT_TRUE(FocusPump([&] { return Clicked == std::vector<int>{4}; }));
    ASSERT_TRUE(Goes(VK_LEFT, 3));
    PressKey(VK_RETURN);
    EXPECT_TRUE(FocusPump([&] { return Clicked == (std::vector<int>{4, 3}); }));
}

TEST_F(ToolBarKeys, TheFocusBeginsAtTheButtonThatIsDown) {
    Bar->Buttons(3)->SetStyle(tbsCheck);
    Bar->Buttons(3)->SetDown(true);
    auto* const edit = Add<TEdit>(0, 100, 100, 20);
    ShowFocused();
    EXPECT_EQ(KeyIndex(), 3);
    PressKey(VK_TAB);
    ASSERT_TRUE(FocusPump([&] { return edit->Focused(); }));
    EXPECT_EQ(KeyIndex(), -1) << "the bar is left";
}

TEST_F(ToolBarKeys, ScreenReadersHearOfTheButton) {
    ShowFocused();
    const TListener listener;
    ASSERT_TRUE(Goes(VK_RIGHT, 3));
    EXPECT_TRUE(PumpUntil([&] { return listener.Heard(EVENT_OBJECT_FOCUS, Bar->Handle(), 4); }));
    const auto children = TSeen::Of(Bar->Handle()).Children();
    ASSERT_EQ(children.size(), 5u);
    EXPECT_EQ(children[3].State(), STATE_SYSTEM_FOCUSED);
    EXPECT_EQ(children[4].State(), 0);
    ASSERT_TRUE(Goes(VK_END, 4));
    {
        const TListener again;
        PressKey(VK_END);
        ASSERT_TRUE(Goes(VK_HOME, 0));
        EXPECT_TRUE(PumpUntil([&] { return again.Heard(EVENT_OBJECT_FOCUS, Bar->Handle(), 1); }));
        EXPECT_FALSE(again.Heard(EVENT_OBJECT_FOCUS, Bar->Handle(), 5)) << "it has been told of";
    }
    auto* const edit = Add<TEdit>(0, 100, 100, 20);
    Bar->SetTabStop(false);
    edit->SetFocus();
    EXPECT_EQ(children[0].State() & STATE_SYSTEM_FOCUSED, 0);
}

TEST_F(ToolBarKeys, AButtonThatGoesIsNoMorePressed) {
    ShowFocused();
    ASSERT_TRUE(Goes(VK_END, 4));
    Bar->Buttons(4)->Free();
    EXPECT_EQ(Bar->KeyButton(), nullptr);
    PressKey(VK_SPACE);
    EXPECT_TRUE(Goes(VK_HOME, 0));
    EXPECT_THAT(Clicked, IsEmpty());
}

TEST_F(ToolBarKeys, MenusOfTheBarAndOfButtonsOpen) {
    TPopupMenu menu;
    auto* const item = new TMenuItem(&menu);
    menu.Items().Add(item);
    TPoint at;
    menu.SetOnPopup([&](TObject*) { at = menu.PopupPoint(); });
    Bar->SetPopupMenu(&menu);
    Bar->Buttons(4)->SetDropdownMenu(&menu);
    ShowFocused();
    ASSERT_TRUE(Goes(VK_END, 4));
    TToolButton* const button = Bar->Buttons(4);
    TTestDriver({{"a menu", [] { return ShownMenu() != nullptr; }, [] { PressKey(VK_ESCAPE); }}}).Run([&] {
        PressKey(VK_APPS);
        return FocusPump([&] { return at != TPoint() && !ShownMenu(); });
    });
    EXPECT_EQ(at, Middle(*button));
    at = {};
    TTestDriver({{"a menu", [] { return ShownMenu() != nullptr; }, [] { PressKey(VK_ESCAPE); }}}).Run([&] {
        PressKey(VK_DOWN, {VK_MENU});
        return FocusPump([&] { return at != TPoint() && !ShownMenu(); });
    });
    EXPECT_EQ(at, button->ClientToScreen({0, button->Height()}));
    at = {};
    TTestDriver({{"a menu", [] { return ShownMenu() != nullptr; }, [] { PressKey(VK_ESCAPE); }}}).Run([&] {
        PressKey(VK_F4);
        return FocusPump([&] { return at != TPoint() && !ShownMenu(); });
    });
    EXPECT_EQ(at, button->ClientToScreen({0, button->Height()}));
    EXPECT_THAT(Clicked, IsEmpty());
}

} // namespace
} // namespace kx
