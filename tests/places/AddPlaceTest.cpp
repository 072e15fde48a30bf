// SPDX-License-Identifier: MIT
// The form of a place's properties.

#include "AddPlaceFixture.h"

#include "kx/win/Registry.h"

#include <shlobj.h>

namespace kx {
namespace {

using namespace test;

std::string DocumentsFolder() {
    return ExtractRegStringValue("\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders\\Personal");
}

std::string PathOf(const TKxPlace& place) {
    IShellFolder* desktop = nullptr;
    EXPECT_EQ(SHGetDesktopFolder(&desktop), S_OK);
    const unique_com<IShellFolder> holder(desktop);
    return GetPathFromPIDL(place.GetPlacePidl(*desktop).get());
}

// --- Looks

TEST_F(AddPlaceForm, TheFormHasItsControlsWhereTheyBelong) {
    EXPECT_EQ(Form->ClientWidth(), 394);
    EXPECT_EQ(Form->ClientHeight(), 319);
    EXPECT_EQ(Form->BorderStyle(), bsDialog);
    EXPECT_EQ(Form->Position(), poScreenCenter);
    EXPECT_TRUE(Form->ShowHint());
    EXPECT_EQ(Form->ActiveControl(), Form->eShort);
    EXPECT_EQ(Form->Caption(), "Verzeichnis-Shortcut");
    struct TPlaced {
        TControl* Control;
        TRect Bounds;
        const char* Caption;
        const char* Hint;
    };
    const auto at = [](int left, int top, int width, int height) {
        return TRect{left, top, left + width, top + height};
    };
    constexpr const char* normalHint =
        "Auswahl des Icons, welches dargestellt wird, wenn der Verzeichnis-Shortcut nicht gewählt ist";
    constexpr const char* hotHint =
        "Auswahl des Icons, welches dargestellt wird, wenn der Verzeichnis-Shortcut gewählt ist";
    for (const TPlaced& placed : std::vector<TPlaced>{
             {Form->Label7, at(8, 8, 368, 19), "Eigenschaften des neuen Verzeichnis-Shortcuts", ""},
             {Form->Panel1, at(8, 37, 97, 233), "", ""},
             {Form->cbTargetType, at(168, 40, 217, 21), "", ""},
             {Form->ePath, at(168, 72, 217, 21), "", ""},
             {Form->eShort, at(168, 104, 121, 21), "", "Titel"},
             {Form->chkAutoCap, at(296, 104, 89, 17), "&Auto. Titel", ""},
             {Form->eHint, at(168, 136, 217, 21), "", "Hilfehinweis für diesen Verzeichnis-Shortcut"},
             {Form->eIconLib, at(208, 168, 127, 21), "shell32.dll",
              "Verwenden der von dieser Datei bereitgestellten Icons"},
             {Form->btnShowIcons, at(336, 168, 23, 22), "", "Lädt die Icons aus der gewählten Icondatei"},
             {Form->btnBrowseLib, at(359, 168, 23, 22), "", "Suche nach einer Icondatei"},
             {Form->dg1, at(120, 216, 129, 57), "", normalHint},
             {Form->dg2, at(256, 216, 129, 57), "", hotHint},
             {Form->Bevel1, at(8, 280, 377, 10), "", ""},
             {Form->Button1, at(232, 288, 75, 25), "OK", ""},
             {Form->Button2, at(312, 288, 75, 25), "Abbrechen", ""}}) {
        SCOPED_TRACE(placed.Control->Name());
        EXPECT_EQ(placed.Control->BoundsRect(), placed.Bounds);
        EXPECT_EQ(placed.Control->Text(), FromUtf8(placed.Caption));
        EXPECT_EQ(placed.Control->Hint(), FromUtf8(placed.Hint));
    }
    EXPECT_EQ(Form->Image1->Parent(), Form->Panel1);
    EXPECT_EQ(Form->Panel1->BevelInner(), bvLowered);
    EXPECT_EQ(Form->Bevel1->Shape(), bsTopLine);
}

TEST_F(AddPlaceForm, TheLabelsLeadToTheirControls) {
    struct TLabelled {
        TLabel* Label;
        TPoint At;
        const char* Caption;
        TWinControl* Focus;
        WORD Key;
    };
    Show();
    for (const TLabelled& l : std::vector<TLabelled>{{Form->Label8, {120, 40}, "Ziel&art:", Form->cbTargetType, 'A'},
                                                     {Form->Label1, {120, 72}, "&Ziel:", Form->ePath, 'Z'},
                                                     {Form->Label2, {120, 104}, "&Titel:", Form->eShort, 'T'},
                                                     {Form->Label3, {120, 136}, "&Hinweis:", Form->eHint, 'H'},
                                                     {Form->Label6, {120, 168}, "&Icondatei:", Form->eIconLib, 'I'},
                                                     {Form->Label4, {120, 200}, "&Normal:", Form->dg1, 'N'},
                                                     {Form->Label5, {256, 200}, "&Gewählt:", Form->dg2, 'G'}}) {
        SCOPED_TRACE(l.Label->Name());
        EXPECT_EQ(l.Label->Left(), l.At.X);
        EXPECT_EQ(l.Label->Top(), l.At.Y);
        EXPECT_EQ(l.Label->Caption(), FromUtf8(l.Caption));
        EXPECT_EQ(l.Label->FocusControl(), l.Focus);
    }
}

TEST_F(AddPlaceForm, ThePictureFillsThePanelAndTheButtonsHaveGlyphs) {
    EXPECT_EQ(Form->Image1->BoundsRect(), (TRect{2, 2, 95, 231})) << "inside the bevels";
    EXPECT_EQ(Form->Image1->Picture().Width(), Form->Image1->Width());
    EXPECT_EQ(Form->Image1->Picture().Height(), Form->Image1->Height());
    for (TSpeedButton* button : {Form->btnShowIcons, Form->btnBrowseLib}) {
        EXPECT_TRUE(button->Flat());
        EXPECT_EQ(button->Glyph().Width(), 16);
        EXPECT_EQ(button->Glyph().Height(), 16);
    }
}

TEST_F(AddPlaceForm, TheTargetTypesAreOfferedInTheirOrder) {
    EXPECT_EQ(Form->cbTargetType->Style(), csDropDownList);
    EXPECT_EQ(Form->ePath->Style(), csSimple);
    ASSERT_EQ(Form->cbTargetType->Items().Count(), 3);
    EXPECT_EQ(Form->cbTargetType->Items()[0], "Verzeichnis/Dateipfad");
    EXPECT_EQ(Form->cbTargetType->Items()[1], "Spezieller Shellordner");
    EXPECT_EQ(Form->cbTargetType->Items()[2], "Registry Wert");
    EXPECT_EQ(Form->cbTargetType->ItemIndex(), -1);
}

TEST_F(AddPlaceForm, TheCaptionTellsANewPlaceFromAnEditedOne) {
    Show();
    EXPECT_EQ(TextOf(Form->Handle()), "New Places Bar item");
    Form->Hide();
    Form->SetPlace(Places.Add());
    Form->Show();
    EXPECT_EQ(TextOf(Form->Handle()), "Places Bar item");
}

// --- A new place

TEST_F(AddPlaceForm, WhatIsTypedBecomesANewPlace) {
    const TModalResult result = ShowModal(Joined({Pick(*Form->cbTargetType, 0),
                                                  Enter(*Form->ePath, "projects"),
                                                  Enter(*Form->eShort, "work"),
                                                  Enter(*Form->eHint, "all of it"),
                                                  {PressOk()}}));
    EXPECT_EQ(result, mrOk);
    ASSERT_EQ(Places.Count(), 1);
    const TKxPlace& place = Places[0];
    EXPECT_EQ(Form->Place(), &place);
    EXPECT_EQ(place.PlaceName(), "work");
    EXPECT_EQ(place.PlaceDesc(), "all of it");
    EXPECT_EQ(place.PlacePath(), "projects");
    EXPECT_EQ(place.PlaceRegPath(), "");
    EXPECT_EQ(place.PlaceSpecPath(), ftNone);
    EXPECT_EQ(place.PlaceIconDll(), "shell32.dll");
    EXPECT_EQ(place.PlaceIcon(), 0);
    EXPECT_EQ(place.PlaceHotIcon(), 0);
    EXPECT_FALSE(place.AutoCaption());
}

TEST_F(AddPlaceForm, ReturnIsOkAndNothingNeedsToBeFilledIn) {
    EXPECT_EQ(ShowModal({Perform("Return", [] { PressKey(VK_RETURN); })}), mrOk);
    ASSERT_EQ(Places.Count(), 1);
    EXPECT_EQ(Places[0].PlaceName(), "");
    EXPECT_EQ(Places[0].PlacePath(), "");
    EXPECT_EQ(Places[0].PlaceSpecPath(), ftNone);
}

TEST_F(AddPlaceForm, CancelOnANewPlaceAddsNothing) {
    EXPECT_EQ(ShowModal(Joined({Enter(*Form->eShort, "work"), {PressCancel()}})), mrCancel);
    EXPECT_EQ(Places.Count(), 0);
    EXPECT_EQ(Form->Place(), nullptr);
    EXPECT_EQ(ShowModal({Perform("Escape", [] { PressKey(VK_ESCAPE); })}), mrCancel);
    EXPECT_EQ(Places.Count(), 0);
}

TEST_F(AddPlaceForm, WithoutPlacesOkWritesNothingAndCloses) {
    Form->SetPlaces(nullptr);
    TKxPlace& place = *Places.Add();
    place.SetPlaceName("old");
    place.SetPlaceIconDll("shell32.dll");
    Edit(place);
    EXPECT_EQ(ShowModal(Joined({Enter(*Form->eShort, "new"), {PressOk()}})), mrOk);
    EXPECT_EQ(place.PlaceName(), "old");
    EXPECT_EQ(Places.Count(), 1);
}

TEST_F(AddPlaceForm, ARegistryValueNamedPersonalOpensTheUsersDocuments) {
    EXPECT_EQ(ShowModal(Joined({Pick(*Form->cbTargetType, 2), Enter(*Form->ePath, "Personal"), {PressOk()}})), mrOk);
    ASSERT_EQ(Places.Count(), 1);
    EXPECT_EQ(Places[0].PlaceRegPath(), "Personal");
    EXPECT_EQ(Places[0].PlacePath(), "");
    EXPECT_EQ(Places[0].PlaceSpecPath(), ftNone);
    ASSERT_NE(DocumentsFolder(), "");
    EXPECT_TRUE(SameText(PathOf(Places[0]), DocumentsFolder())) << PathOf(Places[0]);
}

TEST_F(AddPlaceForm, EachSpecialFolderCanBeChosen) {
    const TKxSpecShellFolder folders[] = {ftDesktop, ftDrives, ftPersonal, ftFavorites};
    for (int i = 0; i < 4; ++i) {
        SCOPED_TRACE(i);
        Form->SetPlace(nullptr);
        EXPECT_EQ(ShowModal(Joined({Pick(*Form->cbTargetType, 1), Pick(*Form->ePath, i), {PressOk()}})), mrOk);
        ASSERT_EQ(Places.Count(), i + 1);
        EXPECT_EQ(Places[i].PlaceSpecPath(), folders[i]);
        EXPECT_EQ(Places[i].PlacePath(), "");
        EXPECT_EQ(Places[i].PlaceRegPath(), "");
    }
}

TEST_F(AddPlaceForm, ASpecialFolderThatIsNotChosenIsARangeError) {
    Form->cbTargetType->SetItemIndex(1);
    Form->chkClick(nullptr);
    EXPECT_EQ(Form->ePath->ItemIndex(), -1);
    EXPECT_THROW(Form->Button1Click(nullptr), ERangeError);
    Form->SetPlace(nullptr);

    TExceptionLog log;
    EXPECT_EQ(ShowModal({PressOk()}), mrOk) << "of the button, before its handler";
    EXPECT_EQ(log.Messages(), std::vector<std::string>{"Range check error"});
}

TEST_F(AddPlaceForm, AFifthEntryIsARangeErrorToo) {
    Form->cbTargetType->SetItemIndex(1);
    Form->chkClick(nullptr);
    Form->ePath->Items().Add("Printers");
    Form->ePath->SetItemIndex(4);
    EXPECT_THROW(Form->Button1Click(nullptr), ERangeError);
}

// --- Target type and automatic caption

TEST_F(AddPlaceForm, TheTargetTypeMakesThePathAListOrAText) {
    ShowModal(Joined({Pick(*Form->cbTargetType, 1),
                      {Perform("a list of special folders",
                               [this] {
                                   EXPECT_EQ(Form->ePath->Style(), csDropDownList);
                                   TStringList names;
                                   GetSpecFolders(names);
                                   EXPECT_EQ(Form->ePath->Items().Text(), names.Text());
                               })},
                      Pick(*Form->cbTargetType, 2),
                      {Perform("a text", [this] { EXPECT_EQ(Form->ePath->Style(), csSimple); })},
                      Pick(*Form->cbTargetType, 1),
                      {Perform("the list anew", [this] { EXPECT_EQ(Form->ePath->Items().Count(), 4); })},
                      Pick(*Form->cbTargetType, 0),
                      {Perform("a text again",
                               [this] {
                                   EXPECT_EQ(Form->ePath->Style(), csSimple);
                                   EXPECT_EQ(Form->ePath->BoundsRect(), (TRect{168, 72, 385, 93}));
                               })},
                      Enter(*Form->ePath, "projects"),
                      {PressCancel()}}));
}

TEST_F(AddPlaceForm, AnAutomaticCaptionCannotBeTyped) {
    ShowModal({Perform("check", [this] { Click(Form->chkAutoCap->Handle()); }),
               {"the disabled caption", [this] { return !Form->eShort->Enabled(); },
                [this] { Click(Form->chkAutoCap->Handle()); }},
               {"the enabled caption", [this] { return Form->eShort->Enabled(); }, {}},
               Perform("Space", [] { PressKey(VK_SPACE); }),
               {"the disabled caption", [this] { return !Form->eShort->Enabled(); }, {}},
               PressOk()});
    ASSERT_EQ(Places.Count(), 1);
    EXPECT_TRUE(Places[0].AutoCaption());
}

// --- Changing a place

TEST_F(AddPlaceForm, WithoutAPlaceThereIsNothingToShow) {
    Form->eShort->SetText("typed");
    Form->InitControls();
    EXPECT_EQ(Form->eShort->Text(), "typed");
    EXPECT_EQ(Form->dg1->ColCount(), 0);
}

TEST_F(AddPlaceForm, APlaceIsShownAndGivenBackUnchanged) {
    TKxPlace& place = *Places.Add();
    place.SetPlaceName("Pictures");
    place.SetPlaceDesc("of the journey");
    place.SetPlacePath("C:\\journey");
    place.SetPlaceIconDll("shell32.dll");
    place.SetPlaceIcon(4);
    place.SetPlaceHotIcon(120);
    Edit(place);
    EXPECT_EQ(ShowModal({Perform("what is shown",
                                 [this] {
                                     EXPECT_EQ(Form->eShort->Text(), "Pictures");
                                     EXPECT_EQ(Form->eHint->Text(), "of the journey");
                                     EXPECT_EQ(Form->cbTargetType->ItemIndex(), 0);
                                     EXPECT_EQ(Form->ePath->Text(), "C:\\journey");
                                     EXPECT_FALSE(Form->chkAutoCap->Checked());
                                     EXPECT_EQ(Form->dg1->Col(), 4);
                                     EXPECT_EQ(Form->dg1->LeftCol(), 4);
                                     EXPECT_EQ(Form->dg2->Col(), 120);
                                     EXPECT_EQ(Form->dg2->LeftCol(), 120);
                                     EXPECT_TRUE(Form->eShort->Focused());
                                 }),
                         PressOk()}),
              mrOk);
    ASSERT_EQ(Places.Count(), 1);
    EXPECT_EQ(place.PlaceName(), "Pictures");
    EXPECT_EQ(place.PlaceDesc(), "of the journey");
    EXPECT_EQ(place.PlacePath(), "C:\\journey");
    EXPECT_EQ(place.PlaceIconDll(), "shell32.dll");
    EXPECT_EQ(place.PlaceIcon(), 4);
    EXPECT_EQ(place.PlaceHotIcon(), 120);
}

TEST_F(AddPlaceForm, AnAutomaticCaptionIsStoredAsTheNameByOk) {
    TKxPlace& place = *Places.Add();
    place.SetPlacePath("C:\\journey\\pictures");
    place.SetPlaceIconDll("shell32.dll");
    place.SetAutoCaption(true);
    const std::string automatic = place.PlaceName();
    ASSERT_NE(automatic, "");
    Edit(place);
    EXPECT_EQ(Form->eShort->Text(), automatic);
    EXPECT_FALSE(Form->eShort->Enabled());
    EXPECT_EQ(ShowModal({PressOk()}), mrOk);
    EXPECT_TRUE(place.AutoCaption());
    place.SetAutoCaption(false);
    EXPECT_EQ(place.PlaceName(), automatic);
}

TEST_F(AddPlaceForm, ASpecialFolderIsShownByItsName) {
    TKxPlace& place = *Places.Add();
    place.SetPlaceIconDll("shell32.dll");
    const TKxSpecShellFolder folders[] = {ftDesktop, ftDrives, ftPersonal, ftFavorites, ftFonts};
    for (int i = 0; i < 5; ++i) {
        SCOPED_TRACE(i);
        place.SetPlaceSpecPath(folders[i]);
        Edit(place);
        EXPECT_EQ(Form->cbTargetType->ItemIndex(), 1);
        EXPECT_EQ(Form->ePath->Style(), csDropDownList);
        EXPECT_EQ(Form->ePath->Items().Count(), 4);
        EXPECT_EQ(Form->ePath->ItemIndex(), i < 4 ? i : -1) << "a folder that is not offered is none of the list";
    }
}

TEST_F(AddPlaceForm, ARegistryValueIsShownAsATextAfterASpecialFolder) {
    TKxPlace& special = *Places.Add();
    special.SetPlaceIconDll("shell32.dll");
    special.SetPlaceSpecPath(ftDesktop);
    TKxPlace& place = *Places.Add();
    place.SetPlaceIconDll("shell32.dll");
    place.SetPlaceRegPath("Personal");
    place.SetPlacePath("C:\\not this one");
    Edit(special);
    Edit(place);
    EXPECT_EQ(Form->cbTargetType->ItemIndex(), 2);
    EXPECT_EQ(Form->ePath->Style(), csSimple);
    EXPECT_EQ(Form->ePath->Text(), "Personal");
    EXPECT_EQ(ShowModal({PressOk()}), mrOk);
    EXPECT_EQ(place.PlaceRegPath(), "Personal");
    EXPECT_EQ(place.PlacePath(), "");
}

TEST_F(AddPlaceForm, AFormUsedAgainKeepsWhatIsNotSetAgain) {
    EXPECT_EQ(ShowModal(Joined({Enter(*Form->eHint, "one hint for all"), {PressOk()}})), mrOk);
    Form->SetPlace(nullptr);
    EXPECT_EQ(ShowModal(Joined({Enter(*Form->eShort, "second"), {PressOk()}})), mrOk);
    ASSERT_EQ(Places.Count(), 2);
    EXPECT_EQ(Places[1].PlaceName(), "second");
    EXPECT_EQ(Places[1].PlaceDesc(), "one hint for all");
}

TEST_F(AddPlaceForm, ACheckMarkIsNeverTakenAwayByAnotherPlace) {
    // What deserves to be expected is that a place without an automatic caption clears it; it does not.
    TKxPlace& automatic = *Places.Add();
    automatic.SetPlaceIconDll("shell32.dll");
    automatic.SetAutoCaption(true);
    TKxPlace& named = *Places.Add();
    named.SetPlaceIconDll("shell32.dll");
    Edit(automatic);
    Edit(named);
    EXPECT_TRUE(Form->chkAutoCap->Checked());
}

// --- Places that go while the form is shown

TEST_F(AddPlaceForm, IsCancelledWhenThePlaceItShowsGoes) {
    Form->SetPlace(Places.Add());
    EXPECT_EQ(ShowModal({Perform("the places go", [&] { Places.Clear(); })}), mrCancel);
    EXPECT_EQ(Form->Place(), nullptr);
    EXPECT_EQ(Form->Places(), nullptr);
    EXPECT_EQ(Places.Count(), 0);
}

TEST_F(AddPlaceForm, IsCancelledWhenThePlaceItShowsIsReplaced) {
    TKxPlaces others(nullptr);
    others.Add()->SetPlaceName("other");
    Form->SetPlace(Places.Add());
    EXPECT_EQ(ShowModal({Perform("others come", [&] { Places.Assign(&others); })}), mrCancel);
    EXPECT_EQ(Places[0].PlaceName(), "other");
}

TEST_F(AddPlaceForm, IsCancelledWhenItsPlacesGo) {
    for (const bool isNew : {false, true}) {
        auto places = std::make_unique<TKxPlaces>(nullptr);
        Form->SetPlaces(places.get());
        Form->SetPlace(isNew ? nullptr : places->Add());
        EXPECT_EQ(ShowModal({Perform("the places go", [&] { places.reset(); })}), mrCancel);
        EXPECT_EQ(Form->Place(), nullptr);
        EXPECT_EQ(Form->Places(), nullptr);
    }
}

TEST_F(AddPlaceForm, StaysWhenOtherPlacesGo) {
    TKxPlace& place = *Places.Add();
    Places.Add();
    Form->SetPlace(&place);
    EXPECT_EQ(ShowModal({Perform("the other one goes", [&] { Places.Delete(1); }), PressOk()}), mrOk);
    EXPECT_EQ(Form->Place(), &place);
    Form->SetPlace(nullptr);
    EXPECT_EQ(ShowModal({Perform("all go", [&] { Places.Clear(); }), PressOk()}), mrOk);
    EXPECT_EQ(Places.Count(), 1) << "a new place can still be made";
}

TEST_F(AddPlaceForm, MayGoBeforeItsPlacesAndBehindThem) {
    auto places = std::make_unique<TKxPlaces>(nullptr);
    auto* const form = NewForm<TKxAddPlaceFrm>(&Application());
    form->SetPlaces(places.get());
    Form->SetPlaces(places.get());
    form->Free();
    places->Add();
    places.reset();
    EXPECT_EQ(Form->Places(), nullptr);
}

} // namespace
} // namespace kx
