// SPDX-License-Identifier: MIT
// Menus, their items and shortcuts.

#include "kx/ui/controls/Menus.h"
#include "kx/core/Classes.h"
#include "tests/support/Census.h"

#include <gtest/gtest.h>

namespace kx {
namespace {

using namespace test;

TMenuItem* NewItem(TMenuItem& parent, const std::string& caption, TComponent* owner = nullptr) {
    auto* item = new TMenuItem(owner);
    item->SetCaption(caption);
    parent.Add(item);
    return item;
}

/// What the system's menu says about the entry at a position.
struct TEntry {
    std::string Text;
    UINT Type = 0;
    UINT State = 0;
    UINT Id = 0;
    HMENU Submenu = nullptr;
    HBITMAP Bitmap = nullptr;

    TEntry(HMENU menu, int position) {
        char text[200] = {};
        MENUITEMINFOA info = {};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_STRING | MIIM_BITMAP;
        info.dwTypeData = text;
        info.cch = sizeof(text);
        EXPECT_TRUE(GetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &info)) << position;
        Text = text;
        Type = info.fType;
        State = info.fState;
        Id = info.wID;
        Submenu = info.hSubMenu;
        Bitmap = info.hbmpItem;
    }
};

// --- Shortcuts

TEST(ShortCuts, HaveTexts) {
    EXPECT_EQ(ShortCutToText(ShortCut('S', scCtrl)), "Ctrl+S");
    EXPECT_EQ(ShortCutToText(ShortCut(VK_F12, scShift | scCtrl | scAlt)), "Shift+Ctrl+Alt+F12");
    EXPECT_EQ(ShortCutToText(ShortCut(VK_DELETE)), "Del");
    EXPECT_EQ(ShortCutToText(ShortCut(VK_NUMPAD5)), "Num 5");
    EXPECT_EQ(ShortCutToText(0), "");
    EXPECT_EQ(ShortCutToText(ShortCut(VK_SHIFT, scCtrl)), "");
}

TEST(ShortCuts, TextsAreReadInAnyOrderAndLetterCase) {
    EXPECT_EQ(TextToShortCut("ctrl+shift+f1"), ShortCut(VK_F1, scCtrl | scShift));
    EXPECT_EQ(TextToShortCut("Shift+Ctrl+F1"), ShortCut(VK_F1, scCtrl | scShift));
    EXPECT_EQ(TextToShortCut("PGDN"), ShortCut(VK_NEXT));
    for (const char* text : {"", "Ctrl+", "Ctrl+Ctr", "Hello", "F25", "Ctrl+SS"}) {
        EXPECT_EQ(TextToShortCut(text), 0) << text;
    }
    for (int key = 1; key < 256; ++key) {
        for (const TShortCut modifiers : {TShortCut{0}, scCtrl, static_cast<TShortCut>(scShift | scAlt)}) {
            const TShortCut shortCut = ShortCut(static_cast<uint8_t>(key), modifiers);
            const std::string text = ShortCutToText(shortCut);
            EXPECT_TRUE(text.empty() || TextToShortCut(text) == shortCut) << text;
        }
    }
}

TEST(Captions, MarkTheirAccelerator) {
    EXPECT_EQ(StripHotkey("&Save && quit"), "Save & quit");
    EXPECT_EQ(StripHotkey("Save &as..."), "Save as...");
    EXPECT_EQ(StripHotkey("end&"), "end");
    EXPECT_EQ(StripHotkey(""), "");
    EXPECT_EQ(GetHotkey("Save &as..."), 'A');
    EXPECT_EQ(GetHotkey("Black && &White"), 'W');
    EXPECT_EQ(GetHotkey("none"), 0);
    EXPECT_EQ(GetHotkey("end&"), 0);
}

// --- Items

class Menu : public testing::Test {
protected:
    TMenuItem* Add(const std::string& caption) { return NewItem(Popup.Items(), caption); }
    TEntry Entry(int position) { return TEntry(Popup.Handle(), position); }

    TPopupMenu Popup;
};

TEST_F(Menu, ItemsFormATree) {
    TMenuItem* file = Add("&File");
    TMenuItem* open = NewItem(*file, "&Open...");
    TMenuItem* save = NewItem(*file, "&Save");
    EXPECT_EQ(Popup.Items().Count(), 1);
    EXPECT_EQ(file->Count(), 2);
    EXPECT_EQ(file->Items(1), save);
    EXPECT_EQ((*file)[0], open);
    EXPECT_EQ(save->Parent(), file);
    EXPECT_EQ(save->MenuIndex(), 1);
    EXPECT_EQ(save->GetParentMenu(), &Popup);
    EXPECT_EQ(file->Find("save"), save);
    EXPECT_EQ(file->Find("Print"), nullptr);
    save->SetMenuIndex(0);
    EXPECT_EQ(file->Items(0), save);
    EXPECT_EQ(file->IndexOf(open), 1);
    file->Remove(save);
    EXPECT_EQ(save->Parent(), nullptr);
    EXPECT_EQ(save->MenuIndex(), -1);
    EXPECT_EQ(save->GetParentMenu(), nullptr);
    Popup.Items().Insert(0, save);
    EXPECT_EQ(file->MenuIndex(), 1);
}

TEST_F(Menu, RefusesItemsAndIndexesThatDoNotFit) {
    TMenuItem* file = Add("File");
    TMenuItem* open = NewItem(*file, "Open");
    EXPECT_THROW(Popup.Items().Add(open), EMenuError) << "it is in a menu already";
    EXPECT_THROW(open->Add(open), EMenuError);
    EXPECT_THROW(Popup.Items().Items(1), EMenuError);
    EXPECT_THROW(Popup.Items().Items(-1), EMenuError);
    EXPECT_THROW(Popup.Items().Delete(1), EMenuError);
    EXPECT_THROW(Popup.Items().Remove(open), EMenuError);
    Popup.Items().Remove(file);
    EXPECT_THROW(open->Add(file), EMenuError) << "an item cannot be below itself";
    TMenuItem item;
    EXPECT_THROW(Popup.Items().Insert(5, &item), EMenuError);
    EXPECT_THROW(item.Add(&Popup.Items()), EMenuError);
    file->Free();
}

TEST_F(Menu, AnItemFreesTheItemsBelowItAndLeavesItsMenu) {
    TComponent owner;
    TMenuItem* file = NewItem(Popup.Items(), "File", &owner);
    NewItem(*file, "Open", &owner);
    NewItem(*file, "Save", &owner);
    EXPECT_EQ(owner.ComponentCount(), 3);
    Popup.Handle();
    file->Free();
    EXPECT_EQ(owner.ComponentCount(), 0);
    EXPECT_EQ(Popup.Items().Count(), 0);
    EXPECT_EQ(GetMenuItemCount(Popup.Handle()), 0);
    NewItem(Popup.Items(), "One", &owner);
    NewItem(Popup.Items(), "Two", &owner);
    Popup.Items().Clear();
    EXPECT_EQ(owner.ComponentCount(), 0);
}

TEST_F(Menu, TheSystemsMenuShowsWhatTheItemsSay) {
    TMenuItem* open = Add("&Open...");
    open->SetShortCut(ShortCut('O', scCtrl));
    open->SetDefault(true);
    Add("-");
    TMenuItem* hidden = Add("Hidden");
    hidden->SetVisible(false);
    TMenuItem* check = Add("Check");
    check->SetChecked(true);
    check->SetEnabled(false);
    TMenuItem* more = Add("More");
    more->SetShortCut(ShortCut('M', scCtrl));
    TMenuItem* inner = NewItem(*more, "Inner");

    ASSERT_EQ(GetMenuItemCount(Popup.Handle()), 4);
    EXPECT_EQ(Entry(0).Text, "&Open...\tCtrl+O");
    EXPECT_EQ(Entry(0).Id, open->Command());
    EXPECT_TRUE(Entry(0).State & MFS_DEFAULT);
    EXPECT_EQ(Entry(0).Submenu, nullptr);
    EXPECT_TRUE(Entry(1).Type & MFT_SEPARATOR);
    EXPECT_EQ(Entry(2).Text, "Check");
    EXPECT_TRUE(Entry(2).State & MFS_CHECKED);
    EXPECT_TRUE(Entry(2).State & MFS_DISABLED);
    EXPECT_FALSE(Entry(2).Type & MFT_RADIOCHECK);
    EXPECT_EQ(Entry(3).Text, "More") << "a submenu shows no shortcut";
    EXPECT_EQ(Entry(3).Submenu, more->Handle());
    EXPECT_EQ(TEntry(more->Handle(), 0).Text, "Inner");

    hidden->SetVisible(true);
    ASSERT_EQ(GetMenuItemCount(Popup.Handle()), 5);
    EXPECT_EQ(Entry(2).Text, "Hidden");
    hidden->SetCaption("Seen");
    EXPECT_EQ(Entry(2).Text, "Seen");
    inner->Free();
    EXPECT_EQ(Entry(4).Submenu, nullptr) << "without items it is no submenu any more";
    EXPECT_EQ(Entry(4).Text, "More\tCtrl+M");
    NewItem(*more, "Again");
    EXPECT_EQ(Entry(4).Submenu, more->Handle());
    check->SetEnabled(true);
    EXPECT_FALSE(Entry(3).State & MFS_DISABLED);
}

TEST_F(Menu, ItsHandleStaysTheSame) {
    const HMENU handle = Popup.Handle();
    TMenuItem* more = Add("More");
    NewItem(*more, "Inner");
    const HMENU submenu = more->Handle();
    Add("Other")->SetChecked(true);
    EXPECT_EQ(Popup.Handle(), handle);
    EXPECT_EQ(more->Handle(), submenu);
    EXPECT_TRUE(IsMenu(submenu));
}

TEST_F(Menu, OfARadioGroupOnlyOneItemIsChecked) {
    TMenuItem* items[4];
    for (TMenuItem*& item : items) {
        item = Add("x");
        item->SetRadioItem(true);
        item->SetGroupIndex(1);
    }
    items[3]->SetGroupIndex(2);
    items[3]->SetChecked(true);
    items[0]->SetChecked(true);
    items[1]->SetChecked(true);
    EXPECT_FALSE(items[0]->Checked());
    EXPECT_TRUE(items[1]->Checked());
    EXPECT_TRUE(items[3]->Checked());
    EXPECT_TRUE(Entry(1).Type & MFT_RADIOCHECK);
    items[3]->SetGroupIndex(1);
    EXPECT_FALSE(items[1]->Checked());
    TMenuItem* plain = Add("plain");
    plain->SetGroupIndex(1);
    plain->SetChecked(true);
    EXPECT_TRUE(items[3]->Checked());
}

TEST_F(Menu, OnlyOneItemIsTheDefault) {
    TMenuItem* first = Add("first");
    TMenuItem* second = Add("second");
    first->SetDefault(true);
    second->SetDefault(true);
    EXPECT_FALSE(first->Default());
    EXPECT_TRUE(Entry(1).State & MFS_DEFAULT);
    EXPECT_FALSE(Entry(0).State & MFS_DEFAULT);
}

// --- Clicks

TEST_F(Menu, ACommandReachesItsItemAndNoOther) {
    TMenuItem* item = Add("item");
    int clicks = 0;
    item->SetOnClick([&](TObject* sender) {
        EXPECT_EQ(sender, item);
        ++clicks;
    });
    LRESULT result = 0;
    EXPECT_TRUE(DispatchMenuMessage(&Popup, WM_COMMAND, item->Command(), 0, result));
    EXPECT_EQ(clicks, 1);
    TPopupMenu other;
    EXPECT_FALSE(DispatchMenuMessage(&other, WM_COMMAND, item->Command(), 0, result)) << "not one of its items";
    EXPECT_FALSE(DispatchMenuMessage(&Popup, WM_COMMAND, item->Command(), 1, result)) << "a control's command";
    EXPECT_FALSE(DispatchMenuMessage(&Popup, WM_COMMAND, MAKEWPARAM(item->Command(), 1), 0, result));
    EXPECT_FALSE(DispatchMenuMessage(&Popup, WM_COMMAND, 1, 0, result));
    EXPECT_TRUE(DispatchMenuMessage(nullptr, WM_COMMAND, item->Command(), 0, result)) << "of any menu";
    EXPECT_EQ(clicks, 2);
    item->SetEnabled(false);
    EXPECT_TRUE(DispatchMenuMessage(&Popup, WM_COMMAND, item->Command(), 0, result));
    EXPECT_EQ(clicks, 2);
    const WORD command = item->Command();
    item->Free();
    EXPECT_FALSE(DispatchMenuMessage(&Popup, WM_COMMAND, command, 0, result));
}

TEST_F(Menu, CommandsAreNotUsedAgainSoon) {
    WORD last = 0;
    for (int i = 0; i < 1000; ++i) {
        const TMenuItem item;
        EXPECT_NE(item.Command(), last);
        EXPECT_GE(item.Command(), 0x100);
        EXPECT_LT(item.Command(), 0xF000);
        last = item.Command();
    }
}

TEST_F(Menu, AnItemIsClickedBeforeItsSubmenuOpens) {
    TMenuItem* more = Add("More");
    NewItem(*more, "placeholder");
    more->SetOnClick([&](TObject*) {
        more->Clear();
        NewItem(*more, "made just now");
    });
    const HMENU submenu = more->Handle();
    LRESULT result = 0;
    DispatchMenuMessage(&Popup, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(submenu), 0, result);
    ASSERT_EQ(more->Count(), 1);
    EXPECT_EQ(TEntry(submenu, 0).Text, "made just now");
    Popup.Items().SetOnClick([](TObject*) { ADD_FAILURE() << "the root is no item"; });
    DispatchMenuMessage(&Popup, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(Popup.Handle()), 0, result);
}

TEST_F(Menu, AHandlerMayFreeItsItem) {
    TMenuItem* item = Add("item");
    item->SetOnClick([&](TObject*) { item->Free(); });
    LRESULT result = 0;
    EXPECT_TRUE(DispatchMenuMessage(&Popup, WM_COMMAND, item->Command(), 0, result));
    EXPECT_EQ(Popup.Items().Count(), 0);
}

constexpr LPARAM AltHeld = 0x20000000;

TEST_F(Menu, AShortCutClicksTheItemsAboveFirst) {
    std::string clicks;
    TMenuItem* edit = Add("Edit");
    TMenuItem* copy = NewItem(*edit, "Copy");
    copy->SetShortCut(ShortCut(VK_F5));
    copy->SetOnClick([&](TObject*) { clicks += "c"; });
    edit->SetOnClick([&](TObject*) { clicks += "e"; });
    EXPECT_TRUE(Popup.IsShortCut(VK_F5, 0));
    EXPECT_EQ(clicks, "ec");
    EXPECT_FALSE(Popup.IsShortCut(VK_F5, AltHeld));
    EXPECT_FALSE(Popup.IsShortCut(VK_F6, 0));
    copy->SetEnabled(false);
    EXPECT_FALSE(Popup.IsShortCut(VK_F5, 0));
    edit->SetOnClick([&](TObject*) { copy->SetEnabled(false); });
    copy->SetEnabled(true);
    EXPECT_FALSE(Popup.IsShortCut(VK_F5, 0)) << "the item above said no";
    EXPECT_EQ(clicks, "ec");
    edit->SetOnClick([&](TObject*) { edit->Clear(); });
    copy->SetEnabled(true);
    EXPECT_FALSE(Popup.IsShortCut(VK_F5, 0)) << "the item above freed it";
}

TEST_F(Menu, AnItemWithoutShortCutAnswersToNoKey) {
    Add("plain")->SetOnClick([](TObject*) { ADD_FAILURE(); });
    EXPECT_FALSE(Popup.IsShortCut(0, 0));
    EXPECT_EQ(Popup.FindShortCut(0), nullptr);
}

// --- Images

TEST_F(Menu, ImagesOfItemsAreMeasuredAndDrawn) {
    TImageList images(10, 12);
    TBitmap bitmap(10, 12);
    bitmap.Canvas().Brush().SetColor(clRed);
    bitmap.Canvas().FillRect({0, 0, 10, 12});
    images.AddMasked(&bitmap, clFuchsia);
    TMenuItem* item = Add("item");
    TMenuItem* plain = Add("plain");
    plain->SetImageIndex(1);
    item->SetImageIndex(0);
    EXPECT_EQ(Entry(0).Bitmap, nullptr);
    Popup.SetImages(&images);
    EXPECT_EQ(Entry(0).Bitmap, HBMMENU_CALLBACK);
    EXPECT_EQ(Entry(1).Bitmap, nullptr) << "there is no such image";

    MEASUREITEMSTRUCT measure = {};
    measure.CtlType = ODT_MENU;
    measure.itemID = item->Command();
    LRESULT result = 0;
    EXPECT_TRUE(DispatchMenuMessage(&Popup, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&measure), result));
    EXPECT_EQ(measure.itemWidth, 10u);
    EXPECT_EQ(measure.itemHeight, 12u);
    measure.itemID = plain->Command();
    EXPECT_FALSE(DispatchMenuMessage(&Popup, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&measure), result));
    measure.CtlType = ODT_BUTTON;
    measure.itemID = item->Command();
    EXPECT_FALSE(DispatchMenuMessage(&Popup, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&measure), result));

    TBitmap target(20, 20);
    DRAWITEMSTRUCT draw = {};
    draw.CtlType = ODT_MENU;
    draw.itemID = item->Command();
    draw.hDC = target.Canvas().Handle();
    draw.rcItem = {3, 4, 13, 16};
    EXPECT_TRUE(DispatchMenuMessage(&Popup, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&draw), result));
    EXPECT_EQ(target.Canvas().Pixels(3, 4), clRed);
    EXPECT_EQ(target.Canvas().Pixels(12, 15), clRed);
    EXPECT_EQ(target.Canvas().Pixels(2, 4), clWhite);

    images.Clear();
    EXPECT_EQ(Entry(0).Bitmap, nullptr) << "the menu follows its images";
}

TEST_F(Menu, ForgetsImagesThatAreFreed) {
    auto images = std::make_unique<TImageList>();
    Popup.SetImages(images.get());
    images.reset();
    EXPECT_EQ(Popup.Images(), nullptr);
}

TEST_F(Menu, InnerItemsShowTheirState) {
    TMenuItem* const item = Add("item");
    NewItem(*item, "hidden")->SetVisible(false);
    TMenuItem* const first = NewItem(*item, "first");
    TMenuItem* const second = NewItem(*item, "second");
    second->SetDefault(true);
    Popup.Handle();
    const HMENU inner = item->Handle();
    const auto state = [inner](int at) { return TEntry(inner, at).State; };
    int changes = 0;
    Popup.SetOnChange([&](TObject*) { ++changes; });
    second->SetEnabled(false);
    second->SetChecked(true);
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(state(0), UINT{MFS_ENABLED});
    EXPECT_EQ(state(1), UINT{MFS_DISABLED} | UINT{MFS_CHECKED} | UINT{MFS_DEFAULT});
    first->SetChecked(true);
    second->SetEnabled(true);
    second->SetChecked(false);
    EXPECT_EQ(state(0), UINT{MFS_CHECKED});
    EXPECT_EQ(state(1), UINT{MFS_DEFAULT});
    EXPECT_EQ(GetMenuItemCount(inner), 2);
    EXPECT_EQ(item->Handle(), inner);
}

TEST_F(Menu, TellsOfChanges) {
    int changes = 0;
    Popup.SetOnChange([&](TObject* sender) {
        EXPECT_EQ(sender, &Popup);
        ++changes;
    });
    TMenuItem* item = Add("item");
    EXPECT_EQ(changes, 1);
    item->SetChecked(true);
    EXPECT_EQ(changes, 2);
    item->SetChecked(true);
    EXPECT_EQ(changes, 2);
    NewItem(*item, "inner");
    EXPECT_EQ(changes, 3);
}

TEST(MenuItem, ByAutoCheckAClickTurnsItsMarkOver) {
    TPopupMenu menu;
    TMenuItem* const item = NewItem(menu.Items(), "a", &menu);
    std::vector<bool> seen;
    item->SetOnClick([&](TObject*) { seen.push_back(item->Checked()); });
    item->Click();
    item->SetAutoCheck(true);
    item->Click();
    item->Click();
    EXPECT_EQ(seen, (std::vector<bool>{false, true, false})) << "handlers see the new mark";
    item->SetEnabled(false);
    item->Click();
    EXPECT_FALSE(item->Checked());
    item->SetEnabled(true);
    item->SetRadioItem(true);
    item->SetGroupIndex(1);
    TMenuItem* const fellow = NewItem(menu.Items(), "b", &menu);
    fellow->SetRadioItem(true);
    fellow->SetGroupIndex(1);
    fellow->SetChecked(true);
    item->Click();
    EXPECT_TRUE(item->Checked());
    EXPECT_FALSE(fellow->Checked());
    item->Click();
    EXPECT_TRUE(item->Checked()) << "one of a group stays checked";
}

TEST(MenuItem, ByAutoCheckAHandlerOfTheChangeMayFreeIt) {
    TPopupMenu menu;
    TMenuItem* item = NewItem(menu.Items(), "a");
    item->SetAutoCheck(true);
    bool clicked = false;
    item->SetOnClick([&](TObject*) { clicked = true; });
    menu.SetOnChange([&](TObject*) {
        if (item) {
            std::exchange(item, nullptr)->Free();
        }
    });
    item->Click();
    EXPECT_EQ(item, nullptr);
    EXPECT_FALSE(clicked);
}

TEST(MenuItem, ABreakBeginsAColumn) {
    TPopupMenu menu;
    TMenuItem* const item = NewItem(menu.Items(), "a", &menu);
    const auto breaks = [&] { return TEntry(menu.Handle(), 0).Type & (MFT_MENUBREAK | MFT_MENUBARBREAK); };
    EXPECT_EQ(breaks(), 0U);
    item->SetBreak(mbBreak);
    EXPECT_EQ(breaks(), UINT{MFT_MENUBREAK});
    item->SetBreak(mbBarBreak);
    EXPECT_EQ(breaks(), UINT{MFT_MENUBARBREAK});
    item->SetBreak(mbNone);
    EXPECT_EQ(breaks(), 0U);
}

} // namespace
} // namespace kx
