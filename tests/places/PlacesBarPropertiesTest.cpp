// SPDX-License-Identifier: MIT
// Folders dropped on the places bar, and properties changed there.

#include "PlacesBarFixture.h"

#include "kx/places/KxAddPlaceForm.h"
#include "tests/support/Drop.h"

// Files dropped on the places bar, and the properties of its places.

namespace kx::test {
namespace {

class PlacesBarProperties : public TPlacesBarTest {
protected:
    ~PlacesBarProperties() override {
        while (TKxAddPlaceFrm* const form = Properties(false)) {
            form->Free();
        }
    }
    /// The properties form; null when there is none, or, unless hidden ones count too, none is shown and enabled.
    static TKxAddPlaceFrm* Properties(bool isShown = true) {
        for (int i = 0; i < Screen().FormCount(); ++i) {
            auto* const form = dynamic_cast<TKxAddPlaceFrm*>(Screen().Forms(i));
            if (form && (!isShown || (form->Visible() && IsWindowEnabled(form->WindowHandle())))) {
                return form;
            }
        }
        return nullptr;
    }
    static TCondition Shows(const std::string& caption) {
        return [=] { return Properties() && Properties()->eShort->Text() == caption; };
    }
    /// Presses OK or Cancel with the mouse once the properties of that place are shown.
    TStep Answer(const std::string& caption, bool ok, const TAction& look = {}) {
        return {"the properties of " + caption + " are shown", Shows(caption), [ok, look] {
                    if (look) {
                        look();
                    }
                    if (Properties()) {
                        Click((ok ? Properties()->Button1 : Properties()->Button2)->Handle());
                    }
                }};
    }
    /// What the shell sends when the user drops these on the bar. Returns when the bar has handled it.
    void Drop(const std::vector<std::string>& names, std::vector<TStep> steps) {
        const HWND bar = Frm->Handle();
        RunDialog(
            [&] {
                DropOn(bar, names);
                return true;
            },
            std::move(steps));
    }

    TTempFolder Folder{"drop"};
};

// --- Drops

TEST_F(PlacesBarProperties, DroppingThreeAndCancellingTheSecondMakesTwoPlacesAtTheEnd) {
    AddPlaces({"Old"});
    Show();
    Drop({Folder.AddFolder("first"), Folder.AddFolder("second"), Folder.AddFolder("third")},
         {Answer("first", true), Answer("second", false), Answer("third", true)});
    EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("Old", "first", "third"));
    EXPECT_THAT(ButtonCaptions(), ElementsAre("Old", "first", "third"));
    EXPECT_EQ(Options.Places()[1].PlacePath(), Folder.Path("first"));
    EXPECT_EQ(Options.Places()[2].PlacePath(), Folder.Path("third"));
    EXPECT_EQ(Button(2).Hint(), "third");
    EXPECT_EQ(Button(2).IconDll(), "Shell32.dll");
    EXPECT_EQ(Button(2).IconIndex(), 3);
    EXPECT_EQ(Button(2).IconSelIndex(), 4);
    EXPECT_EQ(Properties(false), nullptr) << "the form is freed";
}

TEST_F(PlacesBarProperties, ADroppedFolderIsProposedWithTheFolderIcons) {
    Show();
    Drop({Folder.AddFolder("Projects")}, {Answer("Projects", false, [&] {
             const TKxAddPlaceFrm& form = *Properties();
             EXPECT_EQ(form.Caption(), "New Places Bar item");
             EXPECT_EQ(form.ePath->Text(), Folder.Path("Projects"));
             TStringList folders;
             GetSpecFolders(folders);
             ASSERT_EQ(form.ePath->Items().Count(), folders.Count());
             for (int i = 0; i < folders.Count(); ++i) {
                 EXPECT_EQ(form.ePath->Items()[i], folders[i]);
             }
             EXPECT_EQ(form.cbTargetType->ItemIndex(), 0);
             EXPECT_EQ(form.eHint->Text(), "Projects");
             EXPECT_EQ(form.eIconLib->Text(), "Shell32.dll");
             EXPECT_GT(form.dg1->ColCount(), 10);
             EXPECT_EQ(form.dg1->Col(), 3);
             EXPECT_EQ(form.dg1->LeftCol(), 3);
             EXPECT_EQ(form.dg2->Col(), 4);
             EXPECT_EQ(form.dg2->LeftCol(), 4);
             EXPECT_EQ(form.Places(), &Options.Places());
             EXPECT_EQ(form.Place(), nullptr);
             EXPECT_EQ(form.Owner(), &Application());
             EXPECT_FALSE(IsWindowEnabled(Host->Handle()));
             Screenshot("places-bar-drop");
         })});
    EXPECT_EQ(Options.Places().Count(), 0);
    EXPECT_TRUE(IsWindowEnabled(Host->Handle()));
}

TEST_F(PlacesBarProperties, ADroppedFileIsProposedWithTheFirstIcon) {
    Show();
    const std::string file = Folder.AddFile(FromUtf8("Größe.txt"));
    const std::string name = ExtractFileName(file);
    Drop({Folder.AddFolder("folder"), file, Folder.Path("gone")},
         {Answer("folder", false),
          Answer(name, true,
                 [] {
                     EXPECT_EQ(Properties()->dg1->Col(), 0);
                     EXPECT_EQ(Properties()->dg2->Col(), 0);
                 }),
          Answer("gone", false, [] { EXPECT_EQ(Properties()->dg1->Col(), 0); })});
    EXPECT_THAT(ButtonCaptions(), ElementsAre(name));
    EXPECT_EQ(Options.Places()[0].PlacePath(), file);
}

TEST_F(PlacesBarProperties, ClosingTheFormSkipsTheItem) {
    Show();
    Drop({Folder.AddFolder("first"), Folder.AddFolder("second")},
         {{"the properties are shown", Shows("first"),
           [] { PostMessageA(Properties()->Handle(), WM_SYSCOMMAND, SC_CLOSE, 0); }},
          Answer("second", true)});
    EXPECT_THAT(ButtonCaptions(), ElementsAre("second"));
}

TEST_F(PlacesBarProperties, ASpecialFolderChosenForOneLeavesThePathOfTheNext) {
    Show();
    Drop({Folder.AddFolder("first"), Folder.AddFolder("second")},
         {Answer("first", true,
                 [] {
                     ChooseInCombo(Properties()->cbTargetType->Handle(), 1);
                     Properties()->ePath->SetItemIndex(2);
                 }),
          Answer("second", true, [&] {
              EXPECT_EQ(Properties()->cbTargetType->ItemIndex(), 0);
              EXPECT_EQ(Properties()->ePath->Text(), Folder.Path("second"));
              EXPECT_EQ(Properties()->ePath->Items().Count(), 4);
          })});
    ASSERT_EQ(Options.Places().Count(), 2);
    EXPECT_EQ(Options.Places()[0].PlaceSpecPath(), ftPersonal);
    EXPECT_EQ(Options.Places()[1].PlaceSpecPath(), ftNone);
    EXPECT_EQ(Options.Places()[1].PlacePath(), Folder.Path("second"));
}

TEST_F(PlacesBarProperties, AFormThatFailsLeavesThePlacesThatWereMade) {
    Show();
    const TNotifyEvent before = Application().OnModalBegin();
    ExpectedErrors = {"no more forms"};
    Drop({Folder.AddFolder("first"), Folder.AddFolder("second")}, {Answer("first", true, [] {
             Application().SetOnModalBegin([](TObject*) { throw Exception("no more forms"); });
         })});
    Application().SetOnModalBegin(before);
    EXPECT_EQ(Application().ModalLevel(), 0);
    EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("first"));
    EXPECT_THAT(ButtonCaptions(), ElementsAre("first"));
    EXPECT_EQ(Properties(false), nullptr);
}

TEST_F(PlacesBarProperties, TheBarMayGoWhileADroppedFolderIsAskedAbout) {
    Show();
    Drop({Folder.AddFolder("first"), Folder.AddFolder("second")},
         {Answer("first", true, [&] { std::exchange(Frm, nullptr)->Free(); })});
    EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("first"));
    EXPECT_EQ(Properties(false), nullptr);
}

TEST_F(PlacesBarProperties, WithoutPlacesADropDoesNothing) {
    Show();
    Frm->SetPlaces(nullptr);
    Drop({Folder.Path()}, {});
    EXPECT_EQ(Properties(false), nullptr);
}

// --- Properties of a place

TEST_F(PlacesBarProperties, ConfirmedChangesShowOnTheButton) {
    AddPlaces({"1", "2", "3"});
    Options.Places()[1].SetPlacePath(Folder.Path());
    Show();
    TKxPlaceButton* const button = &Button(1);
    auto steps = ChooseFromMenu(1, *Frm->Changeplace1);
    steps.push_back(Answer("2", true, [&] {
        TKxAddPlaceFrm& form = *Properties();
        EXPECT_EQ(form.Caption(), "Places Bar item");
        EXPECT_EQ(form.ePath->Text(), Folder.Path());
        EXPECT_EQ(form.dg1->Col(), 4);
        form.eShort->SetText("Renamed");
        form.eHint->SetText("another hint");
        form.dg1->SetCol(8);
        form.dg2->SetCol(9);
    }));
    RunDialog([&] { return PumpUntil([&] { return Button(1).Caption() == "Renamed"; }); }, std::move(steps));
    EXPECT_EQ(&Button(1), button) << "the bar is not rebuilt";
    EXPECT_THAT(ButtonCaptions(), ElementsAre("1", "Renamed", "3"));
    EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("1", "Renamed", "3"));
    EXPECT_EQ(button->Hint(), "another hint");
    EXPECT_EQ(button->IconIndex(), 8);
    EXPECT_EQ(button->IconSelIndex(), 9);
    ASSERT_NE(Properties(false), nullptr) << "the form is not freed";
    EXPECT_EQ(Properties(false)->Owner(), &Application());
}

TEST_F(PlacesBarProperties, CancelledChangesLeaveEverything) {
    AddPlaces({"1", "2"});
    Show();
    bool answered = false;
    auto steps = ChooseFromMenu(0, *Frm->Changeplace1);
    steps.push_back(Answer("1", false, [&] { Properties()->eHint->SetText("another hint"); }));
    steps.push_back({"the form has closed", [] { return !Properties(); }, [&] { answered = true; }});
    RunDialog([&] { return PumpUntil([&] { return answered; }); }, std::move(steps));
    EXPECT_EQ(Button(0).Hint(), "hint of 1");
    EXPECT_EQ(Options.Places()[0].PlaceDesc(), "hint of 1");
}

TEST_F(PlacesBarProperties, ChangingOverNoButtonDoesNothing) {
    AddPlaces({"1"});
    Show();
    Frm->Changeplace1Click(Frm->Changeplace1);
    EXPECT_EQ(Properties(false), nullptr);
}

TEST_F(PlacesBarProperties, WhenChangingIsNotAllowedTheMenuCannotChange) {
    AddPlaces({"1"});
    Options.SetAllowEdit(false);
    Frm->Changeplace1->SetEnabled(Options.AllowEdit());
    Show();
    bool closed = false;
    auto steps = ChooseFromMenu(0, *Frm->Changeplace1);
    steps.push_back({"the disabled item was clicked", [] { return MouseInputTaken(); }, [] { PressKey(VK_ESCAPE); }});
    steps.push_back({"the menu has closed", [] { return ShownMenu() == nullptr; }, [&] { closed = true; }});
    RunDialog([&] { return PumpUntil([&] { return closed; }); }, std::move(steps));
    EXPECT_EQ(Properties(false), nullptr);
}

TEST_F(PlacesBarProperties, TheBarMayGoWhileItsPlaceIsChanged) {
    AddPlaces({"1"});
    Show();
    bool answered = false;
    auto steps = ChooseFromMenu(0, *Frm->Changeplace1);
    steps.push_back(Answer("1", true, [&] {
        Properties()->eShort->SetText("Renamed");
        std::exchange(Frm, nullptr)->Free();
    }));
    steps.push_back({"the form has closed", [] { return !Properties(); }, [&] { answered = true; }});
    RunDialog([&] { return PumpUntil([&] { return answered; }); }, std::move(steps));
    EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("Renamed"));
}

} // namespace
} // namespace kx::test
