// SPDX-License-Identifier: MIT
// The menu of the places bar.

#include "PlacesBarFixture.h"

// The menu of a place.

namespace kx::test {
namespace {

TEST_F(PlacesBar, DeletingTheMiddleOneLeavesTheOthersInOrderWithoutARebuild) {
    AddPlaces({"1", "2", "3"});
    Show();
    const auto buttons = AllButtons();
    auto steps = ChooseFromMenu(1, *Frm->Deleteplace1);
    steps.push_back(AnswerBox(IDYES, [](const std::string& text) {
        EXPECT_EQ(text, FromUtf8("Wollen Sie diesen Verzeichnis-Shortcut wirklich löschen ?\rPlace: 2"));
        EXPECT_EQ(TextOf(ShownMessageBox()), "Place bar");
        EXPECT_NE(FindChild(ShownMessageBox(), "Button", IDYES), nullptr);
        EXPECT_NE(FindChild(ShownMessageBox(), "Button", IDNO), nullptr);
        EXPECT_EQ(FindChild(ShownMessageBox(), "Button", IDCANCEL), nullptr);
        Screenshot("places-bar-delete");
    }));
    RunDialog([&] { return PumpUntil([&] { return Options.Places().Count() == 2; }); }, std::move(steps));
    EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("1", "3"));
    EXPECT_THAT(ButtonCaptions(), ElementsAre("1", "3"));
    EXPECT_EQ(&Button(0), buttons[0]);
    EXPECT_EQ(&Button(1), buttons[2]);
    EXPECT_EQ(Button(1).Top(), 49);
}

TEST_F(PlacesBar, AnsweringNoDeletesNothing) {
    AddPlaces({"1", "2"});
    Show();
    bool asked = false;
    auto steps = ChooseFromMenu(0, *Frm->Deleteplace1);
    steps.push_back(AnswerBox(IDNO, [&](const std::string&) { asked = true; }));
    RunDialog([&] { return PumpUntil([&] { return asked && ShownMessageBox() == nullptr; }); }, std::move(steps));
    EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("1", "2"));
    EXPECT_THAT(ButtonCaptions(), ElementsAre("1", "2"));
}

TEST_F(PlacesBar, DeletingOverNoButtonDoesNothing) {
    AddPlaces({"1"});
    Show();
    Frm->Deleteplace1Click(Frm->Deleteplace1); // the menu was never open
    const TPoint below = Frm->ToolBar1->ClientToScreen({40, 150});
    std::vector<TStep> steps{{"the menu opens", {}, [&] { ClickAt(below, mbRight); }},
                             {"the first item is chosen", [] { return ShownMenu() != nullptr; },
                              [] {
                                  PressKey(VK_DOWN);
                                  PressKey(VK_RETURN);
                              }}};
    bool chosen = false;
    const TNotifyEvent own = Frm->Deleteplace1->OnClick();
    Frm->Deleteplace1->SetOnClick([&](TObject* sender) {
        own(sender);
        chosen = true;
    });
    RunDialog([&] { return PumpUntil([&] { return chosen; }); }, std::move(steps));
    EXPECT_EQ(Frm->pop1->PopupPoint(), below);
    EXPECT_EQ(ShownMessageBox(), nullptr);
    EXPECT_THAT(ButtonCaptions(), ElementsAre("1"));
}

TEST_F(PlacesBar, WhenDeletingIsNotAllowedTheMenuCannotDelete) {
    AddPlaces({"1", "2"});
    Options.SetAllowDelete(false);
    Frm->Deleteplace1->SetEnabled(Options.AllowDelete());
    Show();
    bool closed = false;
    auto steps = ChooseFromMenu(0, *Frm->Deleteplace1);
    steps.push_back({"the disabled item was clicked", [] { return MouseInputTaken(); }, [] { PressKey(VK_ESCAPE); }});
    steps.push_back({"the menu has closed", [] { return ShownMenu() == nullptr; }, [&] { closed = true; }});
    RunDialog([&] { return PumpUntil([&] { return closed && ShownMenu() == nullptr; }); }, std::move(steps));
    EXPECT_EQ(ShownMessageBox(), nullptr);
    EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("1", "2"));
}

TEST_F(PlacesBar, TheBarMayGoWhileItAsks) {
    AddPlaces({"1"});
    Show();
    auto steps = ChooseFromMenu(0, *Frm->Deleteplace1);
    steps.push_back(AnswerBox(IDYES, [&](const std::string&) { std::exchange(Frm, nullptr)->Free(); }));
    RunDialog([&] { return PumpUntil([&] { return !Frm && ShownMessageBox() == nullptr; }); }, std::move(steps));
    EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("1"));
}

} // namespace
} // namespace kx::test
