// SPDX-License-Identifier: MIT
// The form of the places bar and its buttons.

#include "PlacesBarFixture.h"

#include "tests/support/Census.h"

// The places bar in a window of the test's: its form file, its buttons and reordering.

namespace kx::test {
namespace {

// --- The form

TEST_F(PlacesBar, TheFormIsAsItsFileSays) {
    EXPECT_EQ(Frm->BorderStyle(), bsNone);
    EXPECT_TRUE(Frm->BorderIcons().IsEmpty());
    EXPECT_EQ(Frm->ClientWidth(), 119);
    EXPECT_EQ(Frm->ClientHeight(), 232);
    EXPECT_EQ(Frm->Color(), clBtnShadow);
    EXPECT_EQ(Frm->Font().Name(), "MS Sans Serif");
    EXPECT_EQ(Frm->Font().Height(), -11);
    EXPECT_TRUE(Frm->KeyPreview());
    EXPECT_TRUE(Frm->ShowHint());
    EXPECT_EQ(Frm->Panel1->Align(), alClient);
    EXPECT_EQ(Frm->Panel1->BevelOuter(), bvNone);
    EXPECT_EQ(Frm->Panel1->BorderStyle(), bsSingle);
    EXPECT_EQ(Frm->Panel1->Color(), clBtnShadow);
    EXPECT_EQ(Frm->Panel1->Caption(), "");
    EXPECT_EQ(Frm->ps1->Align(), alClient);
    EXPECT_EQ(Frm->ps1->Orientation(), soVertical);
    EXPECT_TRUE(Frm->ps1->AutoScroll());
    EXPECT_EQ(Frm->ps1->Control(), Frm->ToolBar1);
    EXPECT_EQ(Frm->ps1->Parent(), Frm->Panel1);
    EXPECT_EQ(Frm->ToolBar1->Parent(), Frm->ps1);
    EXPECT_EQ(Frm->ToolBar1->Width(), 115);
    EXPECT_TRUE(Frm->ToolBar1->AutoSize());
    EXPECT_EQ(Frm->ToolBar1->ButtonHeight(), 49);
    EXPECT_EQ(Frm->ToolBar1->ButtonWidth(), 87);
    EXPECT_TRUE(Frm->ToolBar1->EdgeBorders().IsEmpty());
    EXPECT_TRUE(Frm->ToolBar1->Flat());
    EXPECT_EQ(Frm->ToolBar1->PopupMenu(), Frm->pop1);
    ASSERT_EQ(Frm->pop1->Items().Count(), 2);
    EXPECT_EQ(Frm->pop1->Items()[0], Frm->Deleteplace1);
    EXPECT_EQ(Frm->pop1->Items()[1], Frm->Changeplace1);
}

TEST_F(PlacesBar, TheMenusTextsAreTheShellsOrGerman) {
    const auto expected = [](UINT id, const char* german) {
        const std::string text = LoadShellText(id);
        return text.empty() ? FromUtf8(german) : text + "...";
    };
    EXPECT_EQ(Frm->Deleteplace1->Caption(), expected(33553, "Lösche Verzeichnis-Shortcut..."));
    EXPECT_EQ(Frm->Changeplace1->Caption(), expected(33555, "Eigenschaften..."));
}

TEST_F(PlacesBar, HintsAreThoseOfThePlaces) {
    AddPlaces({"One", "Two"});
    Show();
    EXPECT_TRUE(Button(0).ShowHint());
    MoveMouse(Middle(1));
    ASSERT_TRUE(PumpUntil([] { return Application().HintHandle() != nullptr; }));
    EXPECT_EQ(TextOf(Application().HintHandle()), "hint of Two");
}

// --- Buttons

TEST_F(PlacesBar, TheButtonAtIndexIShowsPlaceI) {
    AddPlaces({"One", "Two", "Three"});
    Options.Places()[2].SetAutoCaption(true);
    Options.Places()[2].SetPlacePath("C:\\Some\\Folder");
    Show();
    EXPECT_THAT(ButtonCaptions(), ElementsAre("One", "Two", "Folder"));
    for (int i = 0; i < 3; ++i) {
        const TKxPlaceButton& button = Button(i);
        EXPECT_EQ(button.Top(), 49 * i);
        EXPECT_EQ(button.Style(), tbsCheck);
        EXPECT_TRUE(button.AllowAllUp());
        EXPECT_TRUE(button.Grouped());
        EXPECT_FALSE(button.Down());
        EXPECT_EQ(button.Owner(), Frm->ToolBar1);
        EXPECT_EQ(button.IconDll(), "Shell32.dll");
        EXPECT_EQ(button.IconIndex(), 3 + i);
        EXPECT_EQ(button.IconSelIndex(), 4 + i);
        EXPECT_EQ(button.DragMode(), dmManual);
        EXPECT_EQ(button.DragCursor(), crDrag);
    }
    EXPECT_EQ(Button(1).Hint(), "hint of Two");
}

TEST_F(PlacesBar, RebuildingFreesAllThatTheToolBarOwns) {
    AddPlaces({"One", "Two"});
    Show();
    auto* const foreign = new TToolButton(Frm->ToolBar1);
    foreign->SetParent(Frm->ToolBar1);
    new TComponent(Frm->ToolBar1);
    Options.Places().Delete(0);
    AddPlaces({"Three", "Four"});
    Rebuild();
    EXPECT_THAT(ButtonCaptions(), ElementsAre("Two", "Three", "Four"));
    EXPECT_EQ(Frm->ToolBar1->ComponentCount(), 3);
    Options.Places().Clear();
    Rebuild();
    EXPECT_EQ(Frm->ToolBar1->ButtonCount(), 0);
}

TEST_F(PlacesBar, AtMostOneButtonIsDownAndAClickReleasesIt) {
    AddPlaces({"One", "Two"});
    Show();
    ClickButton(0);
    ClickButton(1);
    EXPECT_FALSE(Button(0).Down());
    TPoint beside = Middle(1);
    beside.X += 20;
    ClickAt(beside);
    EXPECT_TRUE(PumpUntil([&] { return !Button(1).Down(); }));
}

TEST_F(PlacesBar, ANegativeIconIndexIsARangeErrorAndChangesNothing) {
    AddPlaces({"One"});
    Show();
    EXPECT_THROW(Button(0).SetIconIdx(-1), ERangeError);
    EXPECT_THROW(Button(0).SetIconSelIdx(INT32_MIN), ERangeError);
    EXPECT_EQ(Button(0).IconIndex(), 3);
    EXPECT_EQ(Button(0).IconSelIndex(), 4);
}

TEST_F(PlacesBar, APlaceWithANegativeIconIndexLeavesTheBarComplete) {
    AddPlaces({"One", "Two", "Three"});
    Options.Places()[1].SetPlaceIcon(-1);
    EXPECT_THROW(Show(), ERangeError);
    EXPECT_THAT(ButtonCaptions(), ElementsAre("One", "Two", "Three"));
    EXPECT_EQ(Button(1).IconSelIndex(), 5);
    EXPECT_EQ(Frm->ToolBar1->RowCount(), 3) << "the bar has arranged its buttons";
}

TEST_F(PlacesBar, PlacesThatCannotBeReachedDoNotDelayTheBar) {
    for (int i = 0; i < 20; ++i) {
        TKxPlace& place = AddPlace(Options.Places(), "", "\\\\10.255.255.1\\share\\folder" + IntToStr(i));
        place.SetAutoCaption(true);
    }
    AddPlace(Options.Places(), "Drive", "Q:\\nowhere");
    const DWORD begin = GetTickCount();
    Show();
    EXPECT_LT(GetTickCount() - begin, 1500u);
    EXPECT_EQ(Button(19).Caption(), "folder19");
}

TEST_F(PlacesBar, RebuildingLeavesNothingBehind) {
    AddPlaces({"One", "A caption that is far too long for it"});
    Show();
    const auto rebuild = [&] {
        Rebuild();
        Button(1).SetDown(true);
        Frm->ToolBar1->Update();
    };
    for (int i = 0; i < 10; ++i) {
        rebuild();
    }
    const TCensus gdi = GdiCensus();
    const TCensus user = UserCensus();
    const TCensus heap = HeapCensus();
    for (int i = 0; i < 500; ++i) {
        rebuild();
    }
    EXPECT_EQ(Describe(gdi, GdiCensus()), "");
    EXPECT_EQ(Describe(user, UserCensus()), "");
    EXPECT_LE(HeapCensus()[TCensusKind::HeapBlock], heap[TCensusKind::HeapBlock] + 20);
}

TEST_F(PlacesBar, TheOptionsForgetAToolBarThatGoes) {
    EXPECT_EQ(Options.PlacesBar(), nullptr);
    Options.SetPlacesBar(Frm->ToolBar1);
    EXPECT_EQ(Options.PlacesBar(), Frm->ToolBar1);
    std::exchange(Frm, nullptr)->Free();
    EXPECT_EQ(Options.PlacesBar(), nullptr);
    TToolBar other;
    {
        TKxPlacesBarOptions options;
        options.SetPlacesBar(&other);
    }
    Options.SetPlacesBar(&other);
    Options.SetPlacesBar(nullptr);
    EXPECT_EQ(Options.PlacesBar(), nullptr);
}

// --- Clicks

TEST_F(PlacesBar, ALeftClickNavigatesToThePlaceOfTheButton) {
    AddPlaces({"One", "Two"});
    SetPaths(Folder.Path());
    Options.Places()[1].SetPlacePath(Folder.AddFolder("inner"));
    Show();
    Frm->SetDialog(&Dialog);
    ClickButton(1);
    EXPECT_THAT(Dialog.Log, ElementsAre(Folder.Path("inner")));
    ClickButton(0);
    EXPECT_THAT(Dialog.Log, ElementsAre(Folder.Path("inner"), Folder.Path()));
    ClickAt(Middle(1), mbMiddle);
    ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
    EXPECT_EQ(Dialog.Log.size(), 2u);
}

TEST_F(PlacesBar, WithoutDialogAClickDoesNothing) {
    AddPlaces({"One"});
    SetPaths(Folder.Path());
    Show();
    ClickButton(0);
    Frm->SetDialog(&Dialog);
    Frm->SetPlaces(nullptr);
    Frm->OnFolderClick(0);
    EXPECT_THAT(Dialog.Log, testing::IsEmpty());
    Frm->SetPlaces(&Options.Places());
    EXPECT_THROW(Frm->OnFolderClick(1), EListError);
    EXPECT_THROW(Frm->OnFolderClick(-1), EListError);
}

TEST_F(PlacesBar, AScrolledBarClicksTheButtonThatIsSeen) {
    AddPlaces({"0", "1", "2", "3", "4", "5", "6", "7"});
    SetPaths(Folder.Path());
    Options.Places()[6].SetPlacePath(Folder.AddFolder("six"));
    Show();
    Frm->SetDialog(&Dialog);
    Frm->ps1->SetPosition(180);
    ClickButton(6);
    EXPECT_THAT(Dialog.Log, ElementsAre(Folder.Path("six")));
}

TEST_F(PlacesBar, AButtonOutsideAPlacesBarCanBeClickedAndIsNotDragged) {
    TToolBar bar;
    bar.SetParent(Host.get());
    AddPlaces({"One", "Two"});
    Show();
    Frm->SetVisible(false);
    Options.Places().UpdatePlacesOn(bar);
    auto& button = dynamic_cast<TKxPlaceButton&>(*bar.Buttons(0));
    PressAt(button.ClientToScreen({10, 10}));
    MoveMouse(button.ClientToScreen({18, 12}));
    ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
    EXPECT_FALSE(button.Dragging());
    ReleaseAt(button.ClientToScreen({18, 12}));
    EXPECT_TRUE(PumpUntil([&] { return button.Down(); }));
}

TEST_F(PlacesBar, AHandlerMayFreeTheBar) {
    AddPlaces({"One"});
    const std::string file = Folder.AddFile("file.txt");
    SetPaths(file);
    Show();
    Frm->SetDialog(&Dialog);
    Dialog.OnSetSelPath = [&] { std::exchange(Frm, nullptr)->Free(); };
    ClickAt(Middle(0));
    ASSERT_TRUE(PumpUntil([&] { return Frm == nullptr; }));
    Application().ProcessMessages();
    EXPECT_THAT(Dialog.Log, ElementsAre(Folder.Path() + "\\")) << "the name is not set any more";
}

TEST_F(PlacesBar, AHandlerMayRebuildTheBar) {
    AddPlaces({"One", "Two"});
    SetPaths(Folder.Path());
    Show();
    Frm->SetDialog(&Dialog);
    Dialog.OnSetSelPath = [&] { Rebuild(); };
    ClickAt(Middle(1));
    ASSERT_TRUE(PumpUntil([&] { return !Dialog.Log.empty(); }));
    Application().ProcessMessages();
    EXPECT_THAT(ButtonCaptions(), ElementsAre("One", "Two"));
}

TEST_F(PlacesBar, AHandlerThatThrowsIsReportedAndTheBarGoesOn) {
    AddPlaces({"One", "Two"});
    SetPaths(Folder.Path());
    Show();
    Frm->SetDialog(&Dialog);
    Dialog.OnSetSelPath = [] { throw Exception("not today"); };
    ExpectedErrors = {"not today"};
    ClickAt(Middle(0));
    ASSERT_TRUE(PumpUntil([&] { return !Log.Messages().empty(); }));
    Dialog.OnSetSelPath = {};
    ClickButton(1);
    EXPECT_EQ(Dialog.Log.size(), 2u);
}

// --- Reordering

TEST_F(PlacesBar, ADragOntoAnotherBarMovesNothing) {
    AddPlaces({"1", "2"});
    Show();
    TKxPlacesBarOptions others;
    others.Places().Add();
    others.Places().Add();
    const std::unique_ptr<TKxPlacesBarFrm, TFreeDeleter> other(NewForm<TKxPlacesBarFrm>(nullptr));
    other->SetParentWindow(Host->Handle());
    other->SetPlaces(&others.Places());
    other->SetBounds(Frm->Left() + Frm->Width(), Frm->Top(), Frm->Width(), Frm->Height());
    other->SetVisible(true);
    others.Places().UpdatePlacesOn(*other->ToolBar1);
    DragButton(1, other->ToolBar1->Buttons(0)->ClientToScreen({40, 20}));
    EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("1", "2"));
}

TEST_F(PlacesBar, DraggingTheFourthOntoTheFirstMakesItTheFirst) {
    AddPlaces({"1", "2", "3", "4"});
    SetPaths(Folder.Path());
    Show();
    Frm->SetDialog(&Dialog);
    DragButton(3, 0);
    EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("4", "1", "2", "3"));
    EXPECT_THAT(ButtonCaptions(), ElementsAre("4", "1", "2", "3"));
    EXPECT_EQ(Button(0).IconIndex(), 6);
    EXPECT_THAT(Dialog.Log, testing::IsEmpty()) << "a drag is no click";
    for (int i = 0; i < 4; ++i) {
        EXPECT_FALSE(Button(i).Down());
    }
}

TEST_F(PlacesBar, DraggingTheFirstOntoTheFourthMakesItTheLast) {
    AddPlaces({"1", "2", "3", "4"});
    Show();
    DragButton(0, 3);
    EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("2", "3", "4", "1"));
    EXPECT_THAT(ButtonCaptions(), ElementsAre("2", "3", "4", "1"));
}

TEST_F(PlacesBar, DraggingMovesWhatThePlacesHoldAndNotTheItems) {
    AddPlaces({"1", "2", "3"});
    Options.Places()[0].SetPlaceRegPath("Personal");
    Options.Places()[0].SetAutoCaption(true);
    Show();
    const TKxPlace* const items[] = {&Options.Places()[0], &Options.Places()[1], &Options.Places()[2]};
    DragButton(0, 1);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(&Options.Places()[i], items[i]);
    }
    EXPECT_EQ(items[1]->PlaceRegPath(), "Personal");
    EXPECT_EQ(items[1]->PlaceDesc(), "hint of 1");
    EXPECT_EQ(items[0]->PlaceRegPath(), "");
    EXPECT_THAT(ButtonCaptions(), ElementsAre("2", "Personal", "3"));
}

TEST_F(PlacesBar, AButtonDroppedOnItselfChangesNothing) {
    AddPlaces({"1", "2", "3"});
    Show();
    const auto buttons = AllButtons();
    PressAt(Middle(1));
    MoveMouse(Middle(2));
    ASSERT_TRUE(PumpUntil([&] { return buttons[1]->Dragging(); }));
    MoveMouse(Middle(1));
    ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
    ReleaseAt(Middle(1));
    ASSERT_TRUE(PumpUntil([&] { return !buttons[1]->Dragging(); }));
    EXPECT_EQ(AllButtons(), buttons) << "the bar was not rebuilt";
    EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("1", "2", "3"));
    EXPECT_FALSE(Button(1).Down());
}

TEST_F(PlacesBar, AButtonDroppedBesideTheBarChangesNothing) {
    AddPlaces({"1", "2"});
    Show();
    const auto buttons = AllButtons();
    const TPoint outside = Host->ClientToScreen({200, 200});
    PressAt(Middle(0));
    MoveMouse(Middle(1));
    ASSERT_TRUE(PumpUntil([&] { return buttons[0]->Dragging(); }));
    MoveMouse(outside);
    ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
    ReleaseAt(outside);
    ASSERT_TRUE(PumpUntil([&] { return !buttons[0]->Dragging(); }));
    EXPECT_EQ(AllButtons(), buttons);
    EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("1", "2"));
}

TEST_F(PlacesBar, OnlyOtherPlaceButtonsAreAccepted) {
    AddPlaces({"1", "2"});
    Show();
    const auto accepts = [&](TObject* source) {
        bool accept = true;
        Button(0).OnDragOver()(&Button(0), source, 1, 1, dsDragMove, accept);
        return accept;
    };
    TToolButton plain;
    TDragObject object;
    EXPECT_TRUE(accepts(&Button(1)));
    EXPECT_FALSE(accepts(&Button(0)));
    EXPECT_FALSE(accepts(&plain));
    EXPECT_FALSE(accepts(&object));
    EXPECT_FALSE(accepts(nullptr));
}

TEST_F(PlacesBar, AShortMoveWithTheButtonHeldStaysAClick) {
    AddPlaces({"1", "2"});
    Show();
    const TPoint at = Middle(0);
    PressAt(at);
    MoveMouse({at.X + 1, at.Y + 1});
    ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
    ReleaseAt({at.X + 1, at.Y + 1});
    EXPECT_TRUE(PumpUntil([&] { return Button(0).Down(); }));
}

} // namespace
} // namespace kx::test
