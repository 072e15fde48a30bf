// SPDX-License-Identifier: MIT
// Menus that pop up.

#include "kx/ui/controls/Menus.h"
#include "tests/support/Cycles.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/TestDriver.h"

namespace kx {
namespace {

using namespace test;

bool MenuShown() { return ShownMenu() != nullptr; }

/// Types a key into the menu that is open.
TStep Key(WPARAM key) {
    return {"key " + IntToStr(static_cast<int64_t>(key)), MenuShown,
            [key] { PostMessageA(ShownMenu(), WM_KEYDOWN, key, 0); }};
}

class PopupMenu : public testing::Test {
protected:
    PopupMenu() {
        for (const char* caption : {"&First", "&Second", "&Third"}) {
            auto* item = new TMenuItem(&Menu);
            item->SetCaption(caption);
            item->SetOnClick([this, caption](TObject*) { Clicked += std::string(caption) + ";"; });
            Menu.Items().Add(item);
        }
    }

    void Popup(std::vector<TStep> steps, int x = 200, int y = 150) {
        RunDialog(
            [&] {
                Menu.Popup(x, y);
                return true;
            },
            std::move(steps));
    }
    static TRect MenuRect() { return ScreenRectOf(ShownMenu()); }

    TPopupMenu Menu;
    std::string Clicked;
};

TEST_F(PopupMenu, OpensAtThePointOfTheScreen) {
    TRect rect;
    Popup({{"look", MenuShown, [&] { rect = MenuRect(); }}, Key(VK_ESCAPE)});
    EXPECT_EQ(rect.Left, 200);
    EXPECT_EQ(rect.Top, 150);
    EXPECT_EQ(Menu.PopupPoint(), (TPoint{200, 150}));
    EXPECT_EQ(Clicked, "");
    EXPECT_EQ(ShownMenu(), nullptr);
}

TEST_F(PopupMenu, LiesBesideThePointAsAligned) {
    TRect rect;
    Menu.SetAlignment(paRight);
    Popup({{"look", MenuShown, [&] { rect = MenuRect(); }}, Key(VK_ESCAPE)}, 400, 150);
    EXPECT_EQ(rect.Right, 400);
    Menu.SetAlignment(paCenter);
    Popup({{"look", MenuShown, [&] { rect = MenuRect(); }}, Key(VK_ESCAPE)}, 400, 150);
    EXPECT_NEAR((rect.Left + rect.Right) / 2.0, 400, 1);
}

TEST_F(PopupMenu, TheChosenItemIsClickedAfterPopupHasReturned) {
    bool returned = false;
    Menu.Items()[1]->SetOnClick([&](TObject*) { Clicked = returned ? "after" : "before"; });
    Popup({Key(VK_DOWN), Key(VK_DOWN), Key(VK_RETURN)});
    returned = true;
    EXPECT_EQ(Clicked, "");
    EXPECT_TRUE(PumpUntil([&] { return !Clicked.empty(); }));
    EXPECT_EQ(Clicked, "after");
}

TEST_F(PopupMenu, AnItemIsChosenByItsAccelerator) {
    Popup({Key('T')});
    EXPECT_TRUE(PumpUntil([&] { return !Clicked.empty(); }));
    EXPECT_EQ(Clicked, "&Third;");
}

TEST_F(PopupMenu, ShowsTheHintOfTheItemUnderTheBar) {
    Menu.Items()[1]->SetHint("short|Takes the second");
    TApplication& application = Application(); // where hints are shown; without one there is none
    std::string first;
    std::string second;
    Popup({Key(VK_DOWN),
           {"look", MenuShown, [&] { first = application.Hint(); }},
           Key(VK_DOWN),
           {"the hint is shown", [&] { return !application.Hint().empty(); }, [&] { second = application.Hint(); }},
           Key(VK_ESCAPE)});
    EXPECT_EQ(first, "");
    EXPECT_EQ(second, "Takes the second");
    EXPECT_EQ(application.Hint(), "") << "the menu is closed";
}

TEST_F(PopupMenu, AnItemIsChosenByTheMouse) {
    Popup({{"click", MenuShown, [] {
                const TRect rect = MenuRect();
                ClickAt({rect.Left + 20, rect.Top + 10});
            }}});
    EXPECT_TRUE(PumpUntil([&] { return !Clicked.empty(); }));
    EXPECT_EQ(Clicked, "&First;");
}

TEST_F(PopupMenu, HandlersOfOnPopupMayStillChangeTheItems) {
    Menu.SetOnPopup([&](TObject* sender) {
        EXPECT_EQ(sender, &Menu);
        EXPECT_EQ(Menu.PopupPoint(), (TPoint{200, 150}));
        Menu.Items()[0]->SetVisible(false);
    });
    int count = 0;
    Popup({{"look", MenuShown, [&] { count = GetMenuItemCount(Menu.Handle()); }}, Key(VK_DOWN), Key(VK_RETURN)});
    EXPECT_TRUE(PumpUntil([&] { return !Clicked.empty(); }));
    EXPECT_EQ(count, 2);
    EXPECT_EQ(Clicked, "&Second;");
}

TEST_F(PopupMenu, OpensSubmenusThatAreFilledWhenTheyOpen) {
    auto* inner = new TMenuItem(&Menu);
    inner->SetCaption("placeholder");
    Menu.Items()[0]->Add(inner);
    Menu.Items()[0]->SetOnClick([&](TObject*) {
        inner->SetCaption("&Inner");
        inner->SetOnClick([&](TObject*) { Clicked += "inner;"; });
    });
    Popup({Key(VK_DOWN),
           Key(VK_RIGHT),
           {"the submenu is open", [] { return TopWindows("#32768").size() == 2; },
            [] { PostMessageA(ShownMenu(), WM_KEYDOWN, VK_RETURN, 0); }}});
    EXPECT_TRUE(PumpUntil([&] { return !Clicked.empty(); }));
    EXPECT_EQ(Clicked, "inner;");
}

TEST_F(PopupMenu, ClosesWhenItIsTold) {
    Popup({{"close", MenuShown, [&] { Menu.CloseMenu(); }}});
    EXPECT_EQ(ShownMenu(), nullptr);
    EXPECT_EQ(Clicked, "");
}

TEST_F(PopupMenu, WorksOverADialogOfTheSystem) {
    bool chosen = false;
    TPopupMenu menu;
    auto* item = new TMenuItem(&menu);
    item->SetCaption("&Item");
    item->SetOnClick([&](TObject*) { chosen = true; });
    menu.Items().Add(item);
    RunDialog([] { return MessageBoxA(nullptr, "text", "caption", MB_OK) == IDOK; },
              {{"open the menu", BoxShown(), [&] { menu.Popup(300, 200); }},
               Key('I'),
               {"the item is clicked while the box waits", [&] { return chosen && ShownMessageBox(); }, {}},
               AnswerBox(IDOK)});
    EXPECT_TRUE(chosen);
}

TEST_F(PopupMenu, MayBeFreedByItsOwnHandlers) {
    auto* menu = new TPopupMenu;
    menu->SetOnPopup([&](TObject*) { menu->Free(); });
    menu->Popup(10, 10);
    EXPECT_EQ(ShownMenu(), nullptr);

    menu = new TPopupMenu;
    auto* item = new TMenuItem(menu);
    item->SetCaption("&Item");
    bool freed = false;
    item->SetOnClick([&](TObject*) {
        menu->Free();
        freed = true;
    });
    menu->Items().Add(item);
    RunDialog(
        [&] {
            menu->Popup(10, 10);
            return true;
        },
        {Key('I')});
    EXPECT_TRUE(PumpUntil([&] { return freed; }));
}

TEST_F(PopupMenu, ExceptionsOfItemsReachTheApplication) {
    TExceptionLog log;
    Menu.Items()[0]->SetOnClick([](TObject*) { throw Exception("from the item"); });
    Popup({Key('F')});
    EXPECT_TRUE(PumpUntil([&] { return !log.Messages().empty(); }));
    EXPECT_EQ(log.Messages()[0], "from the item");
    Menu.SetOnPopup([](TObject*) { throw Exception("from OnPopup"); });
    EXPECT_THROW(Menu.Popup(10, 10), Exception);
}

TEST_F(PopupMenu, ForgetsAComponentThatIsFreed) {
    auto* component = new TComponent;
    Menu.SetPopupComponent(component);
    EXPECT_EQ(Menu.PopupComponent(), component);
    component->Free();
    EXPECT_EQ(Menu.PopupComponent(), nullptr);
}

TEST_F(PopupMenu, OpenedAgainAndAgainLeavesNothingBehind) {
    const auto work = [&] {
        for (int i = 0; i < 5; ++i) {
            Popup({Key(VK_DOWN), Key(VK_ESCAPE)});
        }
        Clicked.clear();
    };
    EXPECT_EQ(LeftBehind(work, [] { return GdiCensus() + UserCensus() + ThreadCensus(); }), "");
}

} // namespace
} // namespace kx
