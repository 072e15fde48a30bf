// SPDX-License-Identifier: MIT
// Clicks, keys and the menu of the drop-down button.

#include "ButtonFixture.h"

#include "tests/support/Cycles.h"
#include "tests/support/ExceptionLog.h"

namespace kx::test {
namespace {

// --- Presses

TEST_F(BitBtn, APressAtTheSplitIsOneOnTheBodyAndBehindItOneOnTheArrow) {
    Button->SetDropDownMenu(&MenuA);
    Show();
    ClickAt(At(84));
    EXPECT_TRUE(PumpUntil([&] { return Clicks == 1; }));
    EXPECT_EQ(Popups, 0);
    ClickForMenu(At(85), {MenuKey(VK_ESCAPE)});
    EXPECT_EQ(Popups, 1);
    EXPECT_EQ(Clicks, 1);
}

TEST_F(BitBtn, TheMenuOpensUnderItsLeftEdge) {
    Button->SetDropDownMenu(&MenuA);
    Show();
    TRect menu;
    ClickForMenu(At(95), {{"look", MenuShown, [&] { menu = ScreenRectOf(ShownMenu()); }}, MenuKey(VK_ESCAPE)});
    const TRect button = ScreenRectOf(Button->Handle());
    EXPECT_EQ(menu.Left, button.Left);
    EXPECT_EQ(menu.Top, button.Bottom);
}

TEST_F(BitBtn, ClosingTheMenuWithoutAChoiceLetsGoOfTheMouse) {
    Button->SetDropDownMenu(&MenuA);
    Show();
    ClickForMenu(At(95), {MenuKey(VK_ESCAPE)});
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(SendMessageA(Button->Handle(), BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    EXPECT_EQ(Clicks, 0);
    EXPECT_TRUE(Chosen.empty());
    ClickAt(CenterOf(Other->Handle()));
    EXPECT_TRUE(PumpUntil([&] { return Other->Focused(); })) << "the next click goes where it is made";
}

TEST_F(BitBtn, ADoubleClickOnTheArrowOpensTheMenuAndClosesTheState) {
    Button->SetDropDownMenu(&MenuA);
    Show();
    DoubleClickAt(At(95));
    EXPECT_TRUE(PumpUntil([&] { return Popups == 1 && !MenuShown() && !Button->PressingDropDown(); }));
    EXPECT_EQ(Popups, 1);
    EXPECT_EQ(Clicks, 0);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(BitBtn, ADoubleClickOnTheBodyIsTwoClicks) {
    Show();
    DoubleClickAt(At(30));
    EXPECT_TRUE(PumpUntil([&] { return Clicks == 2; }));
}

TEST_F(BitBtn, TheSecondPressOnTheArrowClosesItsState) {
    Show();
    const auto press = [&](int x) { SendMessageA(Button->Handle(), WM_LBUTTONDOWN, MK_LBUTTON, MakeLParam(x, 12)); };
    press(95);
    EXPECT_TRUE(Button->PressingDropDown()) << "without a menu only the look changes";
    press(95);
    EXPECT_FALSE(Button->PressingDropDown());
    press(95);
    press(10);
    EXPECT_FALSE(Button->PressingDropDown()) << "by a press on the body";
    SendMessageA(Button->Handle(), WM_LBUTTONUP, 0, MakeLParam(-10, -10));
    press(95);
    EXPECT_TRUE(Button->PressingDropDown());
    SendMessageA(Button->Handle(), WM_LBUTTONUP, 0, MakeLParam(-10, -10));
    EXPECT_TRUE(Button->PressingDropDown());
    Other->SetFocus();
    EXPECT_FALSE(Button->PressingDropDown()) << "by the loss of the focus";
    EXPECT_EQ(Clicks, 0);
}

TEST_F(BitBtn, APressOnTheArrowWithoutAMenuOnlyChangesItsLooks) {
    Show();
    for (const bool pressed : {true, false}) {
        ClickAt(At(92));
        ASSERT_TRUE(PumpUntil([&] { return MouseInputTaken() && Button->PressingDropDown() == pressed; }));
        Settle();
        EXPECT_EQ(Clicks, 0);
        EXPECT_EQ(GetCapture(), nullptr);
        EXPECT_FALSE(SendMessageA(Button->Handle(), BM_GETSTATE, 0, 0) & BST_PUSHED);
    }
    ClickAt(At(40));
    ASSERT_TRUE(PumpUntil([&] { return Clicks == 1; })) << "the body is pressed as ever";
}

TEST_F(BitBtn, TheKeyboardAndItsDefaultClickIt) {
    Show();
    Button->SetFocus();
    PressKey(VK_SPACE);
    EXPECT_TRUE(PumpUntil([&] { return Clicks == 1; }));
    PressKey(VK_RETURN);
    // Return is the application's, which sees it before the button does.
    for (const ULONGLONG end = GetTickCount64() + 30'000; Clicks < 2 && GetTickCount64() < end;) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
        Application().ProcessMessages();
    }
    EXPECT_EQ(Clicks, 2);
    EXPECT_EQ(Popups, 0);
}

TEST_F(BitBtn, ACloseButtonClosesItsForm) {
    Button->SetKind(bkClose);
    Show();
    ClickAt(At(30));
    EXPECT_TRUE(PumpUntil([&] { return !Form->Visible(); }));
    EXPECT_EQ(Clicks, 0);
}

TEST_F(BitBtn, AHelpButtonShowsTheNearestHelpTopicAroundIt) {
    std::vector<int> topics;
    Application().SetOnHelp([&](uint16_t command, LPARAM data, bool& callHelp) {
        EXPECT_EQ(command, HELP_CONTEXT);
        topics.push_back(static_cast<int>(data));
        callHelp = false;
    });
    Button->SetKind(bkHelp);
    Show();
    ClickAt(At(30));
    EXPECT_TRUE(PumpUntil([&] { return Clicks == 1; })) << "without help the click is an ordinary one";
    Form->SetHelpContext(12);
    Button->Click();
    Button->SetHelpContext(11);
    Button->Click();
    Application().SetOnHelp({});
    EXPECT_EQ(topics, (std::vector<int>{12, 11}));
    EXPECT_EQ(Clicks, 1);
    Button->SetKind(bkCustom);
    Button->Click();
    EXPECT_EQ(Clicks, 2) << "only bkHelp shows help";
}

// --- Choices

TEST_F(BitBtn, ChoosingAnItemRunsItsOwnHandlerAfterTheMouseIsFree) {
    Button->SetDropDownMenu(&MenuA);
    HWND capture = Button->Handle();
    MenuB.Items()[0]->SetOnClick({}); // not attached
    TMenuItem* const second = MenuA.Items()[1];
    Button->SetDropDownMenu(nullptr);
    const TNotifyEvent own = second->OnClick();
    second->SetOnClick([&, own](TObject* sender) {
        capture = GetCapture();
        own(sender);
    });
    Button->SetDropDownMenu(&MenuA);
    Show();
    ClickForMenu(At(95), {MenuKey(VK_DOWN), MenuKey(VK_DOWN), MenuKey(VK_RETURN)});
    EXPECT_TRUE(PumpUntil([&] { return !Chosen.empty(); }));
    EXPECT_THAT(Chosen, ElementsAre("a1"));
    EXPECT_EQ(capture, nullptr);
    EXPECT_EQ(Clicks, 0) << "it is no click of the button";
    EXPECT_EQ(SendMessageA(Button->Handle(), BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    EXPECT_EQ(Button->SelectedDropDownMenuIndex(), -1) << "whatever is chosen";
}

TEST_F(BitBtn, ChoosingWithTheMouseWorksToo) {
    Button->SetDropDownMenu(&MenuA);
    Show();
    ClickForMenu(At(95), {{"click the last item", MenuShown, [] {
                               const TRect menu = ScreenRectOf(ShownMenu());
                               ClickAt({menu.Left + 15, menu.Bottom - 8});
                           }}});
    EXPECT_TRUE(PumpUntil([&] { return !Chosen.empty(); }));
    EXPECT_THAT(Chosen, ElementsAre("a2"));
}

TEST_F(BitBtn, AnotherMenuGivesTheFirstOneItsHandlersBack) {
    const TNotifyEvent ownA = MenuA.Items()[0]->OnClick();
    const TNotifyEvent ownB = MenuB.Items()[0]->OnClick();
    Button->SetDropDownMenu(&MenuA);
    EXPECT_FALSE(MenuA.Items()[0]->OnClick() == ownA);
    Button->SetDropDownMenu(&MenuB);
    EXPECT_TRUE(MenuA.Items()[0]->OnClick() == ownA);
    EXPECT_FALSE(MenuB.Items()[0]->OnClick() == ownB);
    MenuB.Items()[2]->Click();
    EXPECT_THAT(Chosen, ElementsAre("b2"));
    Button->SetDropDownMenu(&MenuB);
    MenuB.Items()[1]->Click();
    EXPECT_THAT(Chosen, ElementsAre("b2", "b1")) << "once, attached again or not";
    Button->SetDropDownMenu(nullptr);
    EXPECT_TRUE(MenuB.Items()[0]->OnClick() == ownB);
}

TEST_F(BitBtn, ItemsOfSubmenusKeepTheirHandlers) {
    auto* const inner = new TMenuItem(&MenuA);
    const TNotifyEvent own = [this](TObject*) { Chosen.emplace_back("inner"); };
    inner->SetOnClick(own);
    MenuA.Items()[0]->Add(inner);
    Button->SetDropDownMenu(&MenuA);
    EXPECT_TRUE(inner->OnClick() == own);
}

TEST_F(BitBtn, AMenuThatChangesMeanwhileGetsEachHandlerBackToItsItem) {
    const TNotifyEvent own1 = MenuA.Items()[1]->OnClick();
    Button->SetDropDownMenu(&MenuA);
    MenuA.Items()[0]->Free();
    auto* const added = new TMenuItem(&MenuA);
    MenuA.Items().Insert(0, added);
    MenuA.Items().Add(new TMenuItem(&MenuA));
    const TNotifyEvent replaced = [](TObject*) {};
    MenuA.Items()[2]->SetOnClick(replaced);
    Button->SetDropDownMenu(nullptr);
    EXPECT_FALSE(added->OnClick());
    EXPECT_TRUE(MenuA.Items()[1]->OnClick() == own1);
    EXPECT_TRUE(MenuA.Items()[2]->OnClick() == replaced) << "what the application set stays";
}

// --- Whoever goes first

TEST_F(BitBtn, TheButtonGoesFirstAndGivesTheHandlersBack) {
    const TNotifyEvent own = MenuA.Items()[0]->OnClick();
    Button->SetDropDownMenu(&MenuA);
    Button->Free();
    EXPECT_TRUE(MenuA.Items()[0]->OnClick() == own);
    MenuA.Items()[0]->Click();
    EXPECT_THAT(Chosen, ElementsAre("a0"));
}

TEST_F(BitBtn, TheMenuGoesFirst) {
    auto menu = std::make_unique<TPopupMenu>();
    FillMenu(*menu, "m");
    Button->SetDropDownMenu(menu.get());
    menu.reset();
    EXPECT_EQ(Button->DropDownMenu(), nullptr);
    Button->ShowDropDownMenu();
    EXPECT_EQ(Popups, 0);
}

TEST_F(BitBtn, BothGoTogetherWithTheirOwner) {
    for (const bool menuFirst : {true, false}) {
        TComponent owner;
        auto* const menu = menuFirst ? new TPopupMenu(&owner) : nullptr;
        auto* const button = new TKxBitBtn(&owner);
        auto* const used = menu ? menu : new TPopupMenu(&owner);
        FillMenu(*used, "m");
        button->SetDropDownMenu(used);
    }
}

TEST_F(BitBtn, TwoButtonsOnOneMenuMayGoInAnyOrder) {
    const TNotifyEvent own = MenuA.Items()[0]->OnClick();
    auto first = std::make_unique<TKxBitBtn>();
    auto second = std::make_unique<TKxBitBtn>();
    first->SetDropDownMenu(&MenuA);
    second->SetDropDownMenu(&MenuA);
    first.reset();
    MenuA.Items()[0]->Click();
    EXPECT_THAT(Chosen, ElementsAre("a0"));
    second.reset();
    MenuA.Items()[0]->Click();
    EXPECT_THAT(Chosen, ElementsAre("a0", "a0"));
}

TEST_F(BitBtn, AHandlerMayFreeItsButton) {
    MenuA.Items()[0]->SetOnClick([this](TObject*) {
        Button->Free();
        Chosen.emplace_back("freed");
    });
    Button->SetDropDownMenu(&MenuA);
    Show();
    ClickForMenu(At(95), {MenuKey(VK_DOWN), MenuKey(VK_RETURN)});
    EXPECT_TRUE(PumpUntil([&] { return !Chosen.empty(); }));
    MenuA.Items()[1]->Click();
    EXPECT_THAT(Chosen, ElementsAre("freed", "a1"));
}

TEST_F(BitBtn, TheButtonMayGoWhileItsMenuIsOpen) {
    Button->SetDropDownMenu(&MenuA);
    Show();
    ClickForMenu(At(95), {{"free it", MenuShown, [&] { Button->Free(); }}, MenuKey(VK_ESCAPE)});
    Button = new TKxBitBtn(Form.get());
    EXPECT_EQ(Popups, 1);
}

TEST_F(BitBtn, AHandlerThatThrowsReachesTheApplication) {
    const TExceptionLog log;
    MenuA.Items()[0]->SetOnClick([](TObject*) { throw EInvalidOperation("no such choice"); });
    Button->SetDropDownMenu(&MenuA);
    Show();
    ClickForMenu(At(95), {MenuKey(VK_DOWN), MenuKey(VK_RETURN)});
    EXPECT_TRUE(PumpUntil([&] { return !log.Messages().empty(); }));
    EXPECT_THAT(log.Messages(), ElementsAre("no such choice"));
    EXPECT_EQ(GetCapture(), nullptr);
    MenuA.SetOnPopup([](TObject*) { throw EInvalidOperation("no menu"); });
    ClickAt(At(30)); // ends the state of the arrow
    EXPECT_TRUE(PumpUntil([&] { return Clicks == 1; }));
    ClickAt(At(95));
    EXPECT_TRUE(PumpUntil([&] { return log.Messages().size() == 2; }));
    EXPECT_EQ(log.Messages().back(), "no menu");
    ClickAt(At(30));
    EXPECT_TRUE(PumpUntil([&] { return Clicks == 2; }));
}

TEST_F(BitBtn, KeepsNothingOfTheSystemsWhenItGoes) {
    Show();
    const auto round = [&] {
        for (int i = 0; i < 10; ++i) {
            auto* const button = new TKxBitBtn(Form.get());
            button->SetParent(Form.get());
            button->SetBounds(150, 20 + i, 100, 25);
            button->SetDropDownMenu(&MenuA);
            button->SetEnabled(i % 2 == 0);
            button->Update();
            button->Free();
        }
    };
    EXPECT_EQ(LeftBehind(round, [] { return GdiCensus() + UserCensus(); }), "");
}

} // namespace
} // namespace kx::test
