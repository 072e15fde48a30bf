// SPDX-License-Identifier: MIT
// Tool bars and the places of their buttons.

#include "tests/ui/ToolBarFixture.h"

#include "tests/support/ProcessorTime.h"

namespace kx::test {
namespace {

TEST_F(ToolBar, ANewButtonOfAColumnComesFirst) {
    MakeColumn();
    Show();
    for (const char* caption : {"d", "c", "b", "a"}) {
        Add(caption);
    }
    EXPECT_EQ(Order(), "abcd");
    EXPECT_EQ(Bar->RowCount(), 4);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(Bar->Buttons(i)->BoundsRect(), (TRect{0, i * 49, 87, i * 49 + 49}));
        EXPECT_EQ(SystemRect(i), Bar->Buttons(i)->BoundsRect());
    }
    EXPECT_EQ(Bar->Height(), 4 * 49);
    EXPECT_EQ(SendMessageA(Bar->Handle(), TB_BUTTONCOUNT, 0, 0), 4);
}

TEST_F(ToolBar, ButtonsHaveTheSamePlacesWithAndWithoutAWindow) {
    MakeColumn();
    for (const char* caption : {"c", "b", "a"}) {
        Add(caption);
    }
    EXPECT_EQ(Order(), "abc");
    EXPECT_EQ(Bar->Buttons(2)->BoundsRect(), (TRect{0, 98, 87, 147}));
    EXPECT_EQ(Bar->Height(), 3 * 49);
    Show();
    EXPECT_EQ(Bar->Buttons(2)->BoundsRect(), (TRect{0, 98, 87, 147}));
    EXPECT_EQ(SystemRect(2), Bar->Buttons(2)->BoundsRect());
    Bar->RecreateWnd();
    EXPECT_EQ(SystemRect(2), (TRect{0, 98, 87, 147}));
}

TEST_F(ToolBar, ButtonsGoWhereTheirLeftAndTopSay) {
    Bar->SetFlat(true);
    Show();
    Append("a");
    Append("b");
    Append("c");
    EXPECT_EQ(Order(), "abc");
    auto* const between = new TToolButton(Bar);
    between->SetCaption("x");
    between->SetLeft(Bar->Buttons(1)->Left());
    between->SetParent(Bar);
    EXPECT_EQ(Order(), "axbc");
    EXPECT_EQ(Bar->Buttons(3)->Left(), 3 * 23);
    EXPECT_EQ(SystemRect(3), Bar->Buttons(3)->BoundsRect());
    EXPECT_THROW(Bar->Buttons(4), EListError);
    EXPECT_THROW(Bar->Buttons(-1), EListError);
}

TEST_F(ToolBar, FreedButtonsVanishAndTheOthersKeepTheirOrder) {
    MakeColumn();
    Show();
    for (const char* caption : {"d", "c", "b", "a"}) {
        Add(caption);
    }
    Bar->Buttons(1)->Free();
    EXPECT_EQ(Order(), "acd");
    EXPECT_EQ(SendMessageA(Bar->Handle(), TB_BUTTONCOUNT, 0, 0), 3);
    EXPECT_EQ(SystemRect(1), Bar->Buttons(1)->BoundsRect());
    EXPECT_EQ(Bar->Buttons(2)->Top(), 98);
    EXPECT_EQ(Bar->Height(), 3 * 49);
    Bar->Buttons(0)->SetParent(Form.get());
    EXPECT_EQ(Order(), "cd");
    while (Bar->ComponentCount() > 0) {
        Bar->Components(0)->Free();
    }
    EXPECT_EQ(Bar->ButtonCount(), 0);
    EXPECT_EQ(SendMessageA(Bar->Handle(), TB_BUTTONCOUNT, 0, 0), 0);
}

TEST_F(ToolBar, RowsFollowTheWidth) {
    Bar->SetAlign(alNone);
    Bar->SetBounds(0, 0, 100, 29);
    Bar->SetFlat(true);
    Bar->SetButtonWidth(30);
    Bar->SetAutoSize(true);
    Show();
    for (int i = 0; i < 7; ++i) {
        Append(IntToStr(i));
    }
    EXPECT_EQ(Bar->RowCount(), 3);
    EXPECT_EQ(Bar->Height(), 66);
    Bar->SetWidth(220);
    EXPECT_EQ(Bar->RowCount(), 1);
    EXPECT_EQ(Bar->Height(), 22);
    EXPECT_EQ(SystemRect(6), (TRect{180, 0, 210, 22}));
    Bar->SetWidth(65);
    EXPECT_EQ(Bar->RowCount(), 4);
    EXPECT_EQ(SystemRect(6), (TRect{0, 66, 30, 88}));
    Bar->Buttons(0)->SetVisible(false);
    EXPECT_EQ(Bar->RowCount(), 3);
    EXPECT_EQ(SystemRect(6), Bar->Buttons(6)->BoundsRect());
    Bar->SetWrapable(false);
    EXPECT_EQ(Bar->RowCount(), 1);
    Bar->Buttons(2)->SetWrap(true);
    EXPECT_EQ(Bar->RowCount(), 2);
    EXPECT_EQ(SystemRect(3), (TRect{0, 22, 30, 44}));
}

TEST_F(ToolBar, HundredsOfButtonsAreRebuiltQuickly) {
    MakeColumn();
    Show();
    const auto rebuild = [&](bool update) {
        const double begin = ProcessorTime();
        if (update) {
            Bar->BeginUpdate();
        }
        while (Bar->ComponentCount() > 0) {
            Bar->Components(0)->Free();
        }
        for (int i = 0; i < 200; ++i) {
            Add<TPaintedButton>(IntToStr(i));
        }
        if (update) {
            Bar->EndUpdate();
        }
        EXPECT_EQ(Bar->Buttons(199)->Top(), 199 * 49);
        EXPECT_EQ(SystemRect(199).Top, 199 * 49);
        EXPECT_EQ(Bar->Buttons(0)->Caption(), "199");
        EXPECT_EQ(Bar->Height(), 200 * 49);
        return static_cast<int>(ProcessorTime() - begin);
    };
    rebuild(true);
    const int together = rebuild(true);
    const int singly = rebuild(false);
    RecordProperty("together", together);
    RecordProperty("singly", singly);
    EXPECT_LT(together, 500);
    EXPECT_LT(singly, 5000);
}

// --- Clicks

TEST_F(ToolBar, GroupedButtonsWithAllowAllUpAreDownOneAtATimeOrNone) {
    MakeColumn();
    Show();
    for (const char* caption : {"c", "b", "a"}) {
        TToolButton* const button = Add(caption);
        button->SetStyle(tbsCheck);
        button->SetGrouped(true);
        button->SetAllowAllUp(true);
    }
    std::string clicked;
    for (int i = 0; i < 3; ++i) {
        Bar->Buttons(i)->SetOnClick([&](TObject* sender) {
            auto* const button = static_cast<TToolButton*>(sender);
            clicked += button->Caption() + (button->Down() ? "+" : "-");
        });
    }
    const auto click = [&](int index) {
        const size_t before = clicked.size();
        ClickAt(Middle(*Bar->Buttons(index)));
        ASSERT_TRUE(PumpUntil([&] { return clicked.size() > before; }));
    };
    click(1);
    EXPECT_TRUE(Bar->Buttons(1)->Down());
    EXPECT_NE(SendMessageA(Bar->Handle(), TB_GETSTATE, 2, 0) & TBSTATE_CHECKED, 0);
    click(2);
    EXPECT_FALSE(Bar->Buttons(1)->Down());
    click(2);
    EXPECT_FALSE(Bar->Buttons(2)->Down());
    EXPECT_EQ(clicked, "b+c+c-");
    Bar->Buttons(0)->SetDown(true);
    Bar->Buttons(1)->SetDown(true);
    EXPECT_FALSE(Bar->Buttons(0)->Down());
    Bar->Buttons(1)->SetAllowAllUp(false);
    click(1);
    EXPECT_TRUE(Bar->Buttons(1)->Down()) << "the one that is down stays";
}

TEST_F(ToolBar, ASeparatorDividesGroups) {
    Bar->SetFlat(true);
    for (int i = 0; i < 5; ++i) {
        TToolButton* const button = Append(IntToStr(i));
        button->SetStyle(i == 2 ? tbsSeparator : tbsCheck);
        button->SetGrouped(true);
    }
    Bar->Buttons(2)->SetWidth(8);
    Show();
    EXPECT_EQ(SystemRect(3).Left, 23 * 2 + 8);
    EXPECT_EQ(Bar->Buttons(3)->Left(), 23 * 2 + 8);
    Bar->Buttons(0)->SetDown(true);
    Bar->Buttons(4)->SetDown(true);
    EXPECT_TRUE(Bar->Buttons(0)->Down());
    Bar->Buttons(1)->SetDown(true);
    EXPECT_FALSE(Bar->Buttons(0)->Down());
    EXPECT_TRUE(Bar->Buttons(4)->Down());
}

TEST_F(ToolBar, OnlyAReleaseOverTheButtonIsAClick) {
    MakeColumn();
    Show();
    Add("b");
    TToolButton* const button = Add("a");
    std::string log;
    button->SetOnClick([&](TObject*) { log += "click "; });
    button->SetOnMouseDown([&](TObject*, TMouseButton, TShiftState, int x, int y) {
        log += "down" + IntToStr(x) + "," + IntToStr(y) + " ";
    });
    button->SetOnMouseUp([&](TObject*, TMouseButton, TShiftState, int, int) { log += "up "; });
    PressAt(button->ClientToScreen({5, 6}));
    ASSERT_TRUE(PumpUntil([&] { return !log.empty(); }));
    EXPECT_NE(SendMessageA(Bar->Handle(), TB_GETSTATE, 2, 0) & TBSTATE_PRESSED, 0);
    ReleaseAt(Middle(*Bar->Buttons(1)));
    ASSERT_TRUE(PumpUntil([&] { return log.find("up") != std::string::npos; }));
    EXPECT_EQ(log, "down5,6 up ");
    EXPECT_EQ(SendMessageA(Bar->Handle(), TB_GETSTATE, 2, 0) & TBSTATE_PRESSED, 0);
    button->SetEnabled(false);
    ClickAt(Middle(*button));
    bool later = false;
    Bar->Buttons(1)->SetOnClick([&](TObject*) { later = true; });
    ClickAt(Middle(*Bar->Buttons(1)));
    ASSERT_TRUE(PumpUntil([&] { return later; }));
    EXPECT_EQ(log, "down5,6 up ");
}

TEST_F(ToolBar, AClickHandlerMayFreeItsButtonOrRebuildTheBar) {
    MakeColumn();
    Show();
    Add("b");
    Add("a")->SetOnClick([](TObject* sender) { static_cast<TToolButton*>(sender)->Free(); });
    ClickAt(Middle(*Bar->Buttons(0)));
    ASSERT_TRUE(PumpUntil([&] { return Bar->ButtonCount() == 1; }));
    TExceptionLog log;
    Bar->Buttons(0)->SetOnMouseUp([&](TObject*, TMouseButton, TShiftState, int, int) {
        while (Bar->ComponentCount() > 0) {
            Bar->Components(0)->Free();
        }
        Add("new");
        throw Exception("up");
    });
    ClickAt(Middle(*Bar->Buttons(0)));
    ASSERT_TRUE(PumpUntil([&] { return log.Messages().size() == 1; }));
    EXPECT_EQ(Order(), "new");
}

TEST_F(ToolBar, ADragOfAButtonPopsItUpAndReachesAnotherOne) {
    MakeColumn();
    Show();
    for (const char* caption : {"c", "b", "a"}) {
        TToolButton* const button = Add(caption);
        button->SetDragMode(dmAutomatic);
        button->SetOnDragOver([](TObject*, TObject*, int, int, TDragState, bool& accept) { accept = true; });
    }
    std::string dropped;
    int clicks = 0;
    Bar->Buttons(2)->SetOnClick([&](TObject*) { ++clicks; });
    Bar->Buttons(0)->SetOnDragDrop(
        [&](TObject*, TObject* source, int, int) { dropped = static_cast<TToolButton*>(source)->Caption(); });
    PressAt(Middle(*Bar->Buttons(2)));
    MoveMouse(Middle(*Bar->Buttons(1)));
    ASSERT_TRUE(PumpUntil([&] { return Bar->Buttons(2)->Dragging(); }));
    EXPECT_EQ(SendMessageA(Bar->Handle(), TB_GETSTATE, 1, 0) & TBSTATE_PRESSED, 0);
    ReleaseAt(Middle(*Bar->Buttons(0)));
    ASSERT_TRUE(PumpUntil([&] { return dropped == "c"; }));
    EXPECT_EQ(clicks, 0);
}

TEST_F(ToolBar, ARightClickOnAButtonOpensTheBarsMenu) {
    MakeColumn();
    TPopupMenu menu(nullptr);
    auto* const item = new TMenuItem(&menu);
    item->SetCaption("item");
    menu.Items().Add(item);
    Bar->SetPopupMenu(&menu);
    Show();
    Add("b");
    Add("a");
    bool opened = false;
    menu.SetOnPopup([&](TObject*) { opened = true; });
    RunDialog(
        [&] {
            ClickAt(Middle(*Bar->Buttons(1)), mbRight);
            return PumpUntil([&] { return opened && !ShownMenu(); });
        },
        {{"the menu", [] { return ShownMenu() != nullptr; }, [] { PressKey(VK_ESCAPE); }}});
    EXPECT_EQ(FindDragTarget(menu.PopupPoint(), true), Bar->Buttons(1));
}

TEST_F(ToolBar, AMenuDropsDownBelowItsButton) {
    Bar->SetFlat(true);
    TPopupMenu menu(nullptr);
    auto* const item = new TMenuItem(&menu);
    item->SetCaption("item");
    menu.Items().Add(item);
    Show();
    TToolButton* const button = Append("a");
    button->SetStyle(tbsDropDown);
    button->SetDropdownMenu(&menu);
    EXPECT_GT(button->Width(), 23) << "the arrow has room";
    int clicks = 0;
    button->SetOnClick([&](TObject*) { ++clicks; });
    RunDialog(
        [&] {
            ClickAt(button->ClientToScreen({button->Width() - 4, 10}));
            return PumpUntil([&] { return menu.PopupPoint().X >= 0 && !ShownMenu(); });
        },
        {{"the menu", [] { return ShownMenu() != nullptr; }, [] { PressKey(VK_ESCAPE); }}});
    EXPECT_EQ(menu.PopupPoint(), button->ClientToScreen({0, button->Height()}));
    EXPECT_EQ(clicks, 0);
    ClickAt(button->ClientToScreen({5, 10}));
    EXPECT_TRUE(PumpUntil([&] { return clicks == 1; }));
}

TEST_F(ToolBar, AButtonStandsForAMenuItem) {
    TMenuItem item;
    item.SetCaption("Open");
    item.SetHint("Opens");
    item.SetEnabled(false);
    int clicks = 0;
    item.SetOnClick([&](TObject*) { ++clicks; });
    TToolButton* const button = Add();
    button->SetMenuItem(&item);
    EXPECT_EQ(button->Caption(), "Open");
    EXPECT_EQ(button->Hint(), "Opens");
    EXPECT_FALSE(button->Enabled());
    item.SetEnabled(true);
    button->Click();
    EXPECT_EQ(clicks, 1);
}

} // namespace
} // namespace kx::test
