// SPDX-License-Identifier: MIT
// The drop-down button without the mouse, and without the eyes.

#include "ButtonFixture.h"

#include "tests/support/Reader.h"
#include "tests/support/TestDriver.h"

namespace kx {
namespace {

using namespace test;

using BitBtnAccess = BitBtn;

TEST_F(BitBtnAccess, IsASplitButtonWithAMenu) {
    Button->SetCaption("&Open");
    Show();
    const TSeen seen = TSeen::Of(Button->Handle());
    ASSERT_TRUE(seen);
    EXPECT_EQ(seen.Role(), ROLE_SYSTEM_SPLITBUTTON);
    EXPECT_EQ(seen.Name(), "Open");
    EXPECT_EQ(seen.ShortCut(), "Alt+O");
    EXPECT_EQ(seen.Action(), "Press");
    EXPECT_EQ(seen.State() & STATE_SYSTEM_HASPOPUP, 0) << "no menu yet";
    EXPECT_EQ(seen.Children().size(), 0u);
    Button->SetDropDownMenu(&MenuA);
    EXPECT_NE(seen.State() & STATE_SYSTEM_HASPOPUP, 0);
    const auto children = seen.Children();
    ASSERT_EQ(children.size(), 1u);
    EXPECT_EQ(children[0].Role(), ROLE_SYSTEM_BUTTONMENU);
    EXPECT_EQ(children[0].Name(), "Open");
    EXPECT_EQ(children[0].ShortCut(), "Alt+Down");
    EXPECT_EQ(children[0].Action(), "Open");
    EXPECT_EQ(children[0].State(), STATE_SYSTEM_HASPOPUP);
    const TPoint arrow = At(85, 0);
    const TPoint end = At(100, 25);
    EXPECT_EQ(children[0].Rect(), (TRect{arrow.X, arrow.Y, end.X, end.Y}));
    EXPECT_EQ(TSeen::AtPoint(seen, At(85).X, At(85).Y).Number(), 1);
    EXPECT_EQ(TSeen::AtPoint(seen, At(84).X, At(84).Y).Number(), CHILDID_SELF);
}

TEST_F(BitBtnAccess, ActionsPressItAndOpenItsMenu) {
    Button->SetDropDownMenu(&MenuA);
    Show();
    const TSeen seen = TSeen::Of(Button->Handle());
    EXPECT_EQ(seen.Do(), S_OK);
    EXPECT_TRUE(PumpUntil([&] { return Clicks == 1; }));
    TTestDriver({MenuKey(VK_DOWN), MenuKey(VK_RETURN)}).Run([&] {
        seen.Children()[0].Do();
        return PumpUntil([&] { return !Chosen.empty(); });
    });
    EXPECT_EQ(Chosen, std::vector<std::string>{"a0"});
    EXPECT_EQ(Clicks, 1);
    EXPECT_FALSE(Button->PressingDropDown());
}

TEST_F(BitBtnAccess, KeysOpenItsMenu) {
    Button->SetDropDownMenu(&MenuA);
    Show();
    Button->SetFocus();
    const auto opensBy = [&](const TAction& press) {
        const int before = Popups;
        TTestDriver({{"the menu", MenuShown,
                      [&] {
                          EXPECT_TRUE(Button->PressingDropDown());
                          EXPECT_NE(TSeen::Of(Button->Handle()).Children()[0].State() & STATE_SYSTEM_PRESSED, 0);
                          PostMessageA(ShownMenu(), WM_KEYDOWN, VK_ESCAPE, 0);
                      }}})
            .Run([&] {
                press();
                return PumpUntil([&] { return Popups == before + 1 && !MenuShown() && !Button->PressingDropDown(); });
            });
        return Popups == before + 1;
    };
    EXPECT_TRUE(opensBy([] { PressKey(VK_F4); }));
    EXPECT_TRUE(opensBy([] { PressKey(VK_DOWN, {VK_MENU}); }));
    EXPECT_EQ(Clicks, 0);
    EXPECT_EQ(TSeen::Of(Button->Handle()).Children()[0].State() & STATE_SYSTEM_PRESSED, 0);
    bool closes = false;
    Form->SetOnCloseQuery([&](TObject*, bool& can) {
        closes = true;
        can = false;
    });
    PressKey(VK_DOWN);
    PressKey(VK_F4, {VK_MENU});
    EXPECT_TRUE(PumpUntil([&] { return closes; })) << "which is not for the button";
    PressKey(VK_SPACE);
    EXPECT_TRUE(PumpUntil([&] { return Clicks == 1; })) << "the others are the button's";
    EXPECT_EQ(Popups, 2);
}

TEST_F(BitBtnAccess, ItMayGoWhileTheKeyboardsMenuIsOpen) {
    Button->SetDropDownMenu(&MenuA);
    Show();
    Button->SetFocus();
    TTestDriver({{"the menu", MenuShown,
                  [&] {
                      std::exchange(Button, nullptr)->Free();
                      PostMessageA(ShownMenu(), WM_KEYDOWN, VK_ESCAPE, 0);
                  }}})
        .Run([&] {
            PressKey(VK_F4);
            return PumpUntil([&] { return !Button && !MenuShown(); });
        });
}

} // namespace
} // namespace kx
