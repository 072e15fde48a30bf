// SPDX-License-Identifier: MIT
// The editor of a places bar's places, as it is used.

#include "PlacesEditorFixture.h"

#include "kx/folder/KxFolderDlg.h"
#include "kx/opensave/KxSaveDlg.h"
#include "tests/support/FormFiles.h"

#include <algorithm>

namespace kx::test {
namespace {

class PlacesEditor : public TPlacesEditorTest {};

TEST_F(PlacesEditor, ShowsThePlacesOfTheDialog) {
    TKxPBarEditFrm& editor = Open();
    EXPECT_EQ(editor.Caption(), "Places of KxOpenDialog1");
    EXPECT_EQ(editor.Places(), &Places());
    EXPECT_EQ(editor.StorageModule, &Designer.Form());
    EXPECT_EQ(&editor.Prop->Designer(), &Designer);
    EXPECT_EQ(editor.Owner(), &Application());
    EXPECT_FALSE(editor.IsModal());
    EXPECT_THAT(Captions(editor), ElementsAre("One", "Two", "Three"));
    EXPECT_EQ(FindPlacesEditor(Places()), &editor);
    EXPECT_EQ(FindPlacesEditor(Add<TKxOpenDialog>()->PlacesBar().Places()), nullptr);
    EXPECT_EQ(Designer.ModifiedCount, 0);
    editor.Update();
    Screenshot("places-editor", editor.Handle());
}

TEST_F(PlacesEditor, HasThisLayout) {
    const TKxPBarEditFrm& editor = Open();
    EXPECT_EQ(editor.Width(), 182);
    EXPECT_EQ(editor.ClientHeight(), 206);
    const int growth = editor.Height() - 233; // by a frame that is higher than 27 pixels
    EXPECT_EQ(growth, std::max(editor.Height() - editor.ClientHeight() - 27, 0));
    EXPECT_EQ(editor.BorderIcons(), (TBorderIcons{biSystemMenu, biMinimize}));
    EXPECT_EQ(const_cast<TKxPBarEditFrm&>(editor).Constraints().MinWidth(), 182);
    EXPECT_EQ(const_cast<TKxPBarEditFrm&>(editor).Constraints().MaxWidth(), 182);
    EXPECT_EQ(const_cast<TKxPBarEditFrm&>(editor).Constraints().MinHeight(), 209 + growth);
    EXPECT_TRUE(editor.ShowHint());
    EXPECT_EQ(editor.ps1->Align(), alLeft);
    EXPECT_EQ(editor.ps1->Width(), 87);
    EXPECT_EQ(editor.ps1->Orientation(), soVertical);
    EXPECT_EQ(editor.ps1->Color(), clBtnShadow);
    EXPECT_EQ(editor.ps1->Control(), editor.ToolBar1);
    EXPECT_EQ(editor.ToolBar1->Width(), 87);
    EXPECT_TRUE(editor.ToolBar1->AutoSize());
    EXPECT_TRUE(editor.ToolBar1->Flat());
    EXPECT_EQ(editor.ToolBar1->EdgeBorders(), TEdgeBorders());
    EXPECT_EQ(editor.ToolBar1->ButtonWidth(), 87);
    EXPECT_EQ(editor.ToolBar1->ButtonHeight(), 49);
    const auto expect = [](const TButton& button, int top, const char* caption, const char* hint, TModalResult result) {
        EXPECT_EQ(button.BoundsRect(), (TRect{96, top, 171, top + 25}));
        EXPECT_EQ(button.Caption(), caption);
        EXPECT_EQ(button.Hint(), hint);
        EXPECT_EQ(button.ModalResult(), result);
    };
    expect(*editor.btnEdit, 8, "&Edit...", "Edit place", mrNone);
    expect(*editor.Button1, 40, "&Add...", "New place", mrNone);
    expect(*editor.Button2, 72, "&Delete...", "Delete place", mrNone);
    expect(*editor.Button3, 104, "&Close", "Close property editor", mrCancel);
    expect(*editor.Button4, 152, "Registry...", "Save all these items in registry and delete them from DFM file",
           mrNone);
    const TFormPtr fresh(NewForm<TKxPBarEditFrm>(nullptr));
    EXPECT_EQ(fresh->Caption(), "Places Bar items");
}

TEST_F(PlacesEditor, OpeningItTwiceBringsTheFirstForward) {
    TKxPBarEditFrm& editor = Open();
    SetActiveWindow(Owner->Handle());
    ASSERT_TRUE(PumpUntil([&] { return Owner->Active(); }));
    EXPECT_EQ(&Open(), &editor);
    EXPECT_EQ(EditorCount(), 1);
    editor.SetWindowState(wsMinimized);
    ASSERT_TRUE(PumpUntil([&] { return IsIconic(editor.Handle()) != 0; }));
    EXPECT_EQ(&Open(), &editor);
    EXPECT_EQ(EditorCount(), 1);
    EXPECT_EQ(editor.WindowState(), wsNormal);
    EXPECT_FALSE(IsIconic(editor.Handle()));
    editor.Hide();
    EXPECT_EQ(&Open(), &editor);
    EXPECT_TRUE(editor.Visible());
    // Another dialog's places have an editor of their own.
    EditorOf(Add<TKxSaveDialog>()->PlacesBar(), "Places")->Edit();
    EXPECT_EQ(EditorCount(), 2);
}

TEST_F(PlacesEditor, EditChangesThePressedPlace) {
    TKxPBarEditFrm& editor = Open();
    PressAndDo(*editor.btnEdit, {}); // nothing is pressed
    EXPECT_EQ(Find<TKxAddPlaceFrm>(), nullptr);
    Select(editor, 1);
    PressAndDo(*editor.btnEdit, {InProperties([&] {
        EXPECT_EQ(Properties().eShort->Text(), "Two");
        EXPECT_EQ(Properties().Place(), &Places()[1]);
        Properties().eShort->SetText("Deux");
        PressButton(Properties().Button1->Handle());
    })});
    EXPECT_THAT(Names(), ElementsAre("One", "Deux", "Three"));
    EXPECT_THAT(Captions(editor), ElementsAre("One", "Deux", "Three"));
    EXPECT_EQ(Designer.ModifiedCount, 1);
    EXPECT_EQ(Find<TKxAddPlaceFrm>(), nullptr) << "the form is freed";
}

TEST_F(PlacesEditor, CancelledPropertiesChangeNothingButTheBarIsMadeAnew) {
    TKxPBarEditFrm& editor = Open();
    Select(editor, 0);
    PressAndDo(*editor.btnEdit, {InProperties([&] {
        Properties().eShort->SetText("Un");
        PressButton(Properties().Button2->Handle());
    })});
    EXPECT_THAT(Names(), ElementsAre("One", "Two", "Three"));
    EXPECT_EQ(Designer.ModifiedCount, 0);
    Places()[0].SetPlaceName("1");
    PressAndDo(*editor.Button1, {InProperties([&] { PressButton(Properties().Button2->Handle()); })});
    EXPECT_THAT(Captions(editor), ElementsAre("1", "Two", "Three"));
    EXPECT_EQ(Designer.ModifiedCount, 0);
}

TEST_F(PlacesEditor, AddMakesANewPlace) {
    TKxPBarEditFrm& editor = Open();
    Select(editor, 0);
    PressAndDo(*editor.Button1, {InProperties([&] {
        EXPECT_EQ(Properties().Place(), nullptr);
        EXPECT_FALSE(Properties().IconLib().empty()) << "its icons can be seen";
        Properties().eShort->SetText("Four");
        Properties().ePath->SetText("C:\\");
        PressButton(Properties().Button1->Handle());
    })});
    EXPECT_THAT(Names(), ElementsAre("One", "Two", "Three", "Four"));
    EXPECT_THAT(Captions(editor), ElementsAre("One", "Two", "Three", "Four"));
    EXPECT_EQ(Designer.ModifiedCount, 1);
    EXPECT_EQ(Find<TKxAddPlaceFrm>(), nullptr);
}

TEST_F(PlacesEditor, DeleteTakesThePressedPlaceAtOnce) {
    TKxPBarEditFrm& editor = Open();
    PressButton(editor.Button2->Handle());
    EXPECT_EQ(Places().Count(), 3);
    EXPECT_EQ(Designer.ModifiedCount, 0);
    Select(editor, 1);
    PressButton(editor.Button2->Handle());
    EXPECT_EQ(ShownMessageBox(), nullptr);
    EXPECT_THAT(Names(), ElementsAre("One", "Three"));
    EXPECT_THAT(Captions(editor), ElementsAre("One", "Three"));
    EXPECT_EQ(Designer.ModifiedCount, 1);
}

TEST_F(PlacesEditor, DeleteTakesTheButtonThoughNobodyRedraws) {
    TKxPBarEditFrm& editor = Open();
    Select(editor, 2);
    editor.Prop.reset();
    PressButton(editor.Button2->Handle());
    EXPECT_THAT(Names(), ElementsAre("One", "Two"));
    EXPECT_THAT(Captions(editor), ElementsAre("One", "Two"));
}

TEST_F(PlacesEditor, CloseFreesTheWindow) {
    PressButton(Open().Button3->Handle());
    EXPECT_TRUE(IsGone());
}

// --- Into the registry

TEST_F(PlacesEditor, AnsweringNoLeavesThePlacesInTheFormFile) {
    TKxPBarEditFrm& editor = Open();
    PressAndDo(*editor.Button4, {AnswerBox(IDNO, [](const std::string& text) { EXPECT_EQ(text, Question); })});
    EXPECT_EQ(Places().Count(), 3);
    EXPECT_EQ(Designer.ModifiedCount, 0);
    EXPECT_THAT(KeysBelow(Key.Path() + "\\Places"), IsEmpty());
    EXPECT_THAT(FormTextOf(Designer.Form()), HasSubstr("PlaceName = 'Two'"));
}

TEST_F(PlacesEditor, AnsweringYesMovesThePlacesToTheRegistry) {
    TKxPBarEditFrm& editor = Open();
    PressAndDo(*editor.Button4, {AnswerBox(IDYES, [](const std::string& text) { EXPECT_EQ(text, Question); })});
    EXPECT_EQ(Places().Count(), 0);
    EXPECT_THAT(Captions(editor), IsEmpty());
    EXPECT_EQ(Designer.ModifiedCount, 1);
    EXPECT_EQ(KeysBelow(Key.Path() + "\\Places").size(), 3U);
    EXPECT_THAT(FormTextOf(Designer.Form()), testing::Not(HasSubstr("PlaceName")));
    Dialog->PlacesBar().LoadFromRegistry();
    EXPECT_THAT(Names(), ElementsAre("One", "Two", "Three"));
}

TEST_F(PlacesEditor, AnEmptyRegistryKeyIsTold) {
    Dialog->PlacesBar().SetRegistryKey("");
    TKxPBarEditFrm& editor = Open();
    PressAndDo(*editor.Button4, {AnswerBox(IDOK, [](const std::string& text) {
        EXPECT_EQ(text, "RegistryKey property is empty. Set this property before.");
    })});
    EXPECT_EQ(Places().Count(), 3);
    EXPECT_EQ(Designer.ModifiedCount, 0);
}

// --- Where the window stands

TEST_F(PlacesEditor, KeepsItsBoundsBelowTheHostsKey) {
    TKxPBarEditFrm& editor = Open();
    editor.SetBounds(40, 50, 182, 300);
    editor.SetWindowState(wsMinimized);
    PumpUntil([&] { return IsIconic(editor.Handle()) != 0; });
    editor.Close();
    ASSERT_TRUE(IsGone());
    TRegistry registry;
    ASSERT_TRUE(registry.OpenKeyReadOnly(Key.Path() + "\\Property Editors\\KXQD\\PlacesEditor"));
    EXPECT_EQ(registry.ReadInteger("Left"), 40);
    EXPECT_EQ(registry.ReadInteger("Top"), 50);
    EXPECT_EQ(registry.ReadInteger("Width"), 182);
    EXPECT_EQ(registry.ReadInteger("Height"), 300);
    EXPECT_EQ(Open().BoundsRect(), (TRect{40, 50, 222, 350}));
}

TEST_F(PlacesEditor, KeepsABoundThatTheRegistryDoesNotTell) {
    const std::string key = Key.Path() + "\\Property Editors\\KXQD\\PlacesEditor";
    {
        TRegistry registry;
        registry.OpenKey(key, true);
        registry.WriteInteger("Height", 280);
        registry.WriteString("Left", "far");
        registry.WriteInteger("Top", 70);
    }
    const TFormPtr form = MakeForm(clRed, 111, 122);
    LoadFormPosFromRegistry(*form, key);
    EXPECT_EQ(form->BoundsRect(), (TRect{30, 70, 141, 350})) << "a width is missing, and a left is no number";
    {
        TRegistry registry;
        registry.OpenKey(key + "\\Other", true);
        registry.WriteInteger("Width", 150);
        registry.WriteInteger("Left", 35);
        registry.WriteString("Height", "tall");
    }
    const TFormPtr other = MakeForm(clRed, 111, 122);
    LoadFormPosFromRegistry(*other, key + "\\Other");
    EXPECT_EQ(other->BoundsRect(), (TRect{35, 40, 185, 162})) << "a top is missing, and a height is no number";
    LoadFormPosFromRegistry(*form, Key.Path() + "\\Nothing");
    EXPECT_EQ(form->BoundsRect(), (TRect{30, 70, 141, 350}));
    EXPECT_TRUE(TRegistry().KeyExists(Key.Path() + "\\Nothing")) << "it is made";
}

TEST_F(PlacesEditor, ShowsWithoutAHost) {
    SetModuleServices(nullptr);
    Open().Close();
    EXPECT_TRUE(IsGone());
    EXPECT_FALSE(TRegistry().KeyExists("Property Editors"));
}

// --- What the designers tell

TEST_F(PlacesEditor, DeletingTheDialogOrClosingItsFormClosesTheEditor) {
    TKxPBarEditFrm* editor = &Open();
    NotifyItemDeleted(Designer, *Add<TKxOpenDialog>());
    NotifyItemDeleted(Designer, *Add<TKxFolderDialog>());
    TTestDesigner other;
    NotifyDesignerClosed(other, false);
    Application().ProcessMessages();
    EXPECT_EQ(Find<TKxPBarEditFrm>(), editor) << "none of them concerns it";
    NotifyItemDeleted(Designer, *Dialog);
    EXPECT_EQ(FindPlacesEditor(Places()), nullptr) << "what is closing edits nothing";
    EXPECT_TRUE(IsGone());

    editor = &Open();
    NotifyDesignerClosed(Designer, true);
    EXPECT_EQ(editor->Prop, nullptr);
    EXPECT_TRUE(IsGone());
}

TEST_F(PlacesEditor, ADeletedSaveDialogClosesItToo) {
    auto* const save = Add<TKxSaveDialog>();
    EditorOf(save->PlacesBar(), "Places")->Edit();
    NotifyItemDeleted(Designer, *save);
    EXPECT_TRUE(IsGone());
}

TEST_F(PlacesEditor, ClosesWhenTheDialogIsFreedUnannounced) {
    Open();
    Dialog->Free();
    EXPECT_TRUE(IsGone());
}

TEST_F(PlacesEditor, ClosesWithItsPlacesPropertiesWhenTheDialogGoes) {
    TKxPBarEditFrm& editor = Open();
    Select(editor, 1);
    PressAndDo(*editor.btnEdit, {InProperties([&] { Dialog->Free(); })});
    EXPECT_TRUE(IsGone());
    EXPECT_EQ(Find<TKxAddPlaceFrm>(), nullptr);
    EXPECT_EQ(Designer.ModifiedCount, 0);
}

TEST_F(PlacesEditor, ShowsWhatAnotherEditorChanges) {
    TKxPBarEditFrm& editor = Open();
    Places()[2].SetPlaceName("Trois");
    NotifyItemsModified(Designer);
    EXPECT_THAT(Captions(editor), ElementsAre("One", "Two", "Trois"));
    Places()[2].SetPlaceName("Drei");
    RefreshPlacesBarEditor(*Dialog);
    EXPECT_THAT(Captions(editor), ElementsAre("One", "Two", "Drei"));
    RefreshPlacesBarEditor(*Add<TKxFolderDialog>()); // has no places
}

TEST_F(PlacesEditor, IsRefreshedWhenTheDialogDesignerIsCancelled) {
    TKxPBarEditFrm& editor = Open();
    Places()[0].SetPlaceName("Uno");
    Designer.Tells = false;
    RunDialog(
        [&] {
            EditorOf(*Dialog, "CustDlgParams")->Edit();
            return true;
        },
        {{"the designer", IsOpen<TDlgDsgnForm>(), [] { PressKey(VK_ESCAPE); }}});
    EXPECT_THAT(Captions(editor), ElementsAre("Uno", "Two", "Three"));
}

} // namespace
} // namespace kx::test
