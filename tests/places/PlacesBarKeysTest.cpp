// SPDX-License-Identifier: MIT
// The places bar by the keyboard, and for screen readers.

#include "PlacesBarFixture.h"

#include "tests/support/Reader.h"
#include "tests/ui/FocusPump.h"

namespace kx {
namespace {

using namespace test;

class PlacesBarKeys : public PlacesBar {
protected:
    void Open(std::initializer_list<const char*> captions) {
        AddPlaces(captions);
        SetPaths(Folder.Path());
        Show();
        Frm->SetDialog(&Dialog);
        MoveAway();
    }
    void FocusBar() {
        Frm->ToolBar1->SetFocus();
        ASSERT_TRUE(FocusPump([&] { return Frm->ToolBar1->Focused(); }));
    }
    int KeyIndex() const { return Frm->ToolBar1->KeyButton() ? Frm->ToolBar1->KeyButton()->Index() : -1; }
};

TEST_F(PlacesBarKeys, EachPlaceIsAButtonThatCanBePressed) {
    Open({"Desktop", "Data"});
    Button(1).SetHint("All data");
    const TSeen bar = TSeen::Of(Frm->ToolBar1->Handle());
    ASSERT_TRUE(bar);
    EXPECT_EQ(bar.Role(), ROLE_SYSTEM_TOOLBAR);
    const auto children = bar.Children();
    ASSERT_EQ(children.size(), 2u);
    EXPECT_EQ(children[0].Name(), "Desktop");
    EXPECT_EQ(children[1].Name(), "Data");
    EXPECT_EQ(children[1].Description(), "All data");
    EXPECT_EQ(children[1].Role(), ROLE_SYSTEM_PUSHBUTTON);
    EXPECT_EQ(children[1].Action(), "Press");
    EXPECT_EQ(children[1].State() & STATE_SYSTEM_PRESSED, 0);
    EXPECT_EQ(children[1].Do(), S_OK);
    EXPECT_TRUE(PumpUntil([&] { return !Dialog.Log.empty(); }));
    EXPECT_THAT(Dialog.Log, ElementsAre(Folder.Path())) << "it navigates once";
    EXPECT_NE(children[1].State() & STATE_SYSTEM_PRESSED, 0);
    EXPECT_EQ(children[0].State() & STATE_SYSTEM_PRESSED, 0);
}

TEST_F(PlacesBarKeys, ArrowsChooseAPlaceAndReturnOpensIt) {
    Open({"1", "2", "3"});
    FocusBar();
    EXPECT_EQ(KeyIndex(), 0);
    PressKey(VK_DOWN);
    ASSERT_TRUE(FocusPump([&] { return KeyIndex() == 1; }));
    EXPECT_THAT(Dialog.Log, IsEmpty()) << "to look is not to open";
    Screenshot("places-keys", Host->Handle());
    PressKey(VK_RETURN);
    EXPECT_TRUE(FocusPump([&] { return Button(1).Down(); }));
    EXPECT_THAT(Dialog.Log, ElementsAre(Folder.Path()));
    PressKey(VK_END);
    ASSERT_TRUE(FocusPump([&] { return KeyIndex() == 2; }));
    PressKey(VK_SPACE);
    EXPECT_TRUE(FocusPump([&] { return Button(2).Down(); }));
    EXPECT_FALSE(Button(1).Down());
    EXPECT_EQ(Dialog.Log.size(), 2u);
}

TEST_F(PlacesBarKeys, TheMenuIsAboutThePlaceOfTheKeyboard) {
    Open({"1", "2", "3"});
    FocusBar();
    PressKey(VK_DOWN);
    ASSERT_TRUE(FocusPump([&] { return KeyIndex() == 1; }));
    TTestDriver({{"the menu", [] { return ShownMenu() != nullptr; },
                  [] {
                      PressKey(VK_DOWN); // to its first item
                      PressKey(VK_RETURN);
                  }},
                 AnswerBox(IDYES, [](const std::string& text) { EXPECT_THAT(text, HasSubstr("Place: 2")); })})
        .Run([&] {
            PressKey(VK_F10, {VK_SHIFT});
            return FocusPump([&] { return Options.Places().Count() == 2; });
        });
    EXPECT_THAT(ButtonCaptions(), ElementsAre("1", "3"));
}

TEST_F(PlacesBarKeys, AHandlerMayFreeTheBar) {
    Open({"1"});
    SetPaths(Folder.AddFile("file.txt"));
    FocusBar();
    Dialog.OnSetSelPath = [&] { std::exchange(Frm, nullptr)->Free(); };
    PressKey(VK_RETURN);
    EXPECT_TRUE(FocusPump([&] { return Frm == nullptr; }));
    EXPECT_EQ(Dialog.Log.size(), 1u);
}

} // namespace
} // namespace kx
