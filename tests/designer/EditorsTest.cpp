// SPDX-License-Identifier: MIT
// The editors that the designer brings along.

#include "WindowFixture.h"

#include "designer/DialogEditors.h"
#include "kx/ide/ComponentEditors.h"
#include "kx/ui/widgets/ComCtrlsPages.h"

namespace kx::test {
namespace {

class DialogEditors : public TDesignerWindowTest {
protected:
    DialogEditors() { Open(); }

    TPropertyEditorPtr EditorOf(TPersistent& object, const std::string& name) {
        for (const TPropertyEditorPtr& editor : GetPropertyEditors(Designer(), {&object})) {
            if (editor->GetName() == name) {
                return editor;
            }
        }
        throw Exception("no editor for " + name);
    }
    /// The window with the lines that is open; null when there is none.
    static designer::TLinesForm* LinesForm() {
        for (int i = 0; i < Screen().FormCount(); ++i) {
            auto* const form = dynamic_cast<designer::TLinesForm*>(Screen().Forms(i));
            if (form && form->Visible()) {
                return form;
            }
        }
        return nullptr;
    }
};

TEST_F(DialogEditors, LinesAreEditedInAWindow) {
    auto& list = dynamic_cast<TListBox&>(
        *Designer().CreateComponent(TListBox::StaticClass(), &Designer().Form(), {16, 160, 116, 220}));
    const std::string before = Text();
    EXPECT_EQ(EditorOf(list, "Items")->GetValue(), "(0 lines)");
    EXPECT_TRUE(EditorOf(list, "Items")->IsDefault());
    const auto edit = [&](const char* text, const char* button) {
        TTestDriver driver({{"the lines", [] { return LinesForm() != nullptr; },
                             [=] {
                                 LinesForm()->Lines().SetText(text);
                                 Screenshot("designer-lines", LinesForm()->Handle());
                                 PressButton(dynamic_cast<TButton&>(*LinesForm()->FindComponent(button)).Handle());
                             }}});
        driver.Run([&] {
            Designer().Do("Items", [&] { EditorOf(list, "Items")->Edit(); });
            return true;
        });
    };
    edit("one\r\ntwo", "CancelButton");
    EXPECT_EQ(list.Items().Count(), 0);
    edit("one\r\ntwo", "OkButton");
    EXPECT_EQ(list.Items().CommaText(), "one,two");
    EXPECT_EQ(EditorOf(list, "Items")->GetValue(), "(2 lines)");
    EXPECT_FALSE(EditorOf(list, "Items")->IsDefault());
    Designer().Undo();
    EXPECT_EQ(Text(), before);
    Designer().Redo();
    EXPECT_EQ(The<TListBox>("ListBox1").Items().CommaText(), "one,two");
}

TEST_F(DialogEditors, ColoursHaveNamesAndNumbers) {
    const TPropertyEditorPtr editor = EditorOf(The("Box"), "Color");
    editor->SetValue("clRed");
    EXPECT_EQ(The("Box").Color(), clRed);
    The("Box").SetColor(TColor(0x123456));
    EXPECT_EQ(editor->GetValue(), "$00123456");
    editor->SetValue("$00ABCDEF");
    EXPECT_EQ(The("Box").Color(), TColor(0xABCDEF));
    EXPECT_THROW(editor->SetValue("reddish"), Exception);
    EXPECT_EQ(The("Box").Color(), TColor(0xABCDEF));
}

TEST_F(DialogEditors, AColourIsChosenInTheSystemsDialog) {
    Designer().Select({&The("Box"), &The("NameEdit")});
    Settle();
    The("Box").SetColor(clLime);
    Designer().Record("Color");
    designer::TInspectorGrid& grid = Window->ObjectInspector().Grid();
    TTestDriver driver({{"the colours", [] { return ActiveDialog() && ClassOf(ActiveDialog()) == "#32770"; },
                         [] { PressButton(GetDlgItem(ActiveDialog(), IDOK)); }}});
    driver.Run([&] {
        grid.EditRow(grid.FindRow("Color"));
        return true;
    });
    EXPECT_EQ(The("Box").Color(), clLime);
    EXPECT_EQ(dynamic_cast<TEdit&>(The("NameEdit")).Color(), clLime) << "of all that are selected";
    EXPECT_EQ(Designer().Steps().UndoText(), "Color");
}

TEST_F(DialogEditors, AFontIsChosenInTheSystemsDialog) {
    The("NameLabel").Font().SetStyle({fsBold, fsItalic});
    The("NameLabel").Font().SetColor(clNavy);
    The("NameLabel").Font().SetHeight(-15);
    The("NameEdit").Font().SetColor(clHotLight);
    Designer().Record("Font");
    Designer().Select({&The("NameLabel"), &The("NameEdit")});
    Settle();
    designer::TInspectorGrid& grid = Window->ObjectInspector().Grid();
    const auto choose = [&](int button) {
        TTestDriver driver({{"the fonts", [] { return ActiveDialog() && ClassOf(ActiveDialog()) == "#32770"; },
                             [=] { PressButton(GetDlgItem(ActiveDialog(), button)); }}});
        driver.Run([&] {
            grid.EditRow(grid.FindRow("Font"));
            return true;
        });
    };
    const std::string before = Text();
    choose(IDCANCEL);
    EXPECT_EQ(Text(), before);
    choose(IDOK);
    EXPECT_EQ(The("NameEdit").Font().Style(), (TFontStyles{fsBold, fsItalic})) << "of the first, for all";
    EXPECT_EQ(The("NameEdit").Font().Height(), -15);
    EXPECT_EQ(The("NameEdit").Font().Color(), clHotLight) << "a colour that was not changed stays";
}

TEST_F(DialogEditors, APictureWithoutAnythingInItIsNone) {
    TComponent* const button =
        Designer().CreateComponent(TSpeedButton::StaticClass(), &Designer().Form(), {240, 160, 270, 190});
    EXPECT_EQ(EditorOf(*button, "Glyph")->GetValue(), "(none)");
}

TEST_F(DialogEditors, APictureIsLoadedFromAFile) {
    TBitmap bitmap;
    bitmap.SetWidth(7);
    bitmap.SetHeight(5);
    bitmap.SaveToFile(Folder.Path("dot.bmp"));
    Folder.AddFile("broken.bmp", "no picture");
    TComponent* const image =
        Designer().CreateComponent(TImage::StaticClass(), &Designer().Form(), {240, 160, 300, 220});
    EXPECT_EQ(EditorOf(*image, "Picture")->GetValue(), "(none)");
    EXPECT_TRUE(EditorOf(*image, "Picture")->IsDefault());
    designer::TInspectorGrid& grid = Window->ObjectInspector().Grid();
    const auto load = [&](const std::string& name) {
        TTestDriver driver({{"the file dialog", [] { return ActiveDialog() && FileNameEditOf(ActiveDialog()); },
                             [&] {
                                 SetWindowTextA(FileNameEditOf(ActiveDialog()), Folder.Path(name).c_str());
                                 PressButton(GetDlgItem(ActiveDialog(), IDOK));
                             }}});
        driver.Run([&] {
            grid.EditRow(grid.FindRow("Picture"));
            return true;
        });
    };
    load("broken.bmp");
    EXPECT_THAT(grid.Error(), testing::Not(IsEmpty()));
    EXPECT_EQ(EditorOf(*image, "Picture")->GetValue(), "(none)");
    load("dot.bmp");
    EXPECT_THAT(grid.Error(), IsEmpty());
    EXPECT_EQ(EditorOf(*image, "Picture")->GetValue(), "7 x 5");
    EXPECT_FALSE(EditorOf(*image, "Picture")->IsDefault());
    EXPECT_TRUE(grid.RowIsBold(grid.FindRow("Picture")));
    Designer().Undo();
    EXPECT_EQ(EditorOf(The("Image1"), "Picture")->GetValue(), "(none)");
}

TEST_F(DialogEditors, MenusGetItems) {
    TComponent* const menu =
        Designer().CreateComponent(TPopupMenu::StaticClass(), &Designer().Form(), {200, 10, 200, 10});
    GetComponentEditor(*menu, Designer())->Edit();
    auto& item = The<TMenuItem>("MenuItem1");
    EXPECT_EQ(item.GetParentMenu(), menu);
    EXPECT_EQ(PrimaryName(), "MenuItem1");
    const TPropertyEditorPtr keys = EditorOf(item, "ShortCut");
    keys->SetValue("ctrl+s");
    EXPECT_EQ(keys->GetValue(), "Ctrl+S");
    EXPECT_THROW(keys->SetValue("Ctrl+Nothing"), EPropertyError);
    EXPECT_EQ(keys->GetValue(), "Ctrl+S");
    keys->SetValue("");
    EXPECT_EQ(keys->GetValue(), "");
    EXPECT_EQ(item.Caption(), "MenuItem1");
    GetComponentEditor(item, Designer())->ExecuteVerb(1);
    EXPECT_EQ(item.Count(), 1) << "an item holds others";
    EXPECT_TRUE(item[0]->IsLine());
    Designer().SelectOne(*menu);
    Designer().DeleteSelected();
    EXPECT_FALSE(Has("MenuItem1"));
    while (Designer().CanUndo()) {
        Designer().Undo();
    }
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(DialogEditors, PagesAreAddedAndChosen) {
    TComponent* const pages =
        Designer().CreateComponent(TPageControl::StaticClass(), &Designer().Form(), {16, 150, 216, 230});
    GetComponentEditor(*pages, Designer())->ExecuteVerb(2);
    GetComponentEditor(*pages, Designer())->ExecuteVerb(2);
    auto& control = dynamic_cast<TPageControl&>(*pages);
    ASSERT_EQ(control.PageCount(), 2);
    EXPECT_EQ(control.ActivePage(), control.Pages(1));
    Settle();
    // What is dropped goes to the page that is seen.
    Surface().SetTool(&TButton::StaticClass());
    ClickOn(OnForm(60, 190));
    EXPECT_EQ(The("Button1").Parent(), control.Pages(1));
    GetComponentEditor(*control.Pages(1), Designer())->ExecuteVerb(0);
    EXPECT_EQ(control.ActivePage(), control.Pages(0));
    while (Designer().CanUndo()) {
        Designer().Undo();
    }
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(DialogEditors, AFormThatLosesItsFrameKeepsItsClientArea) {
    EditorOf(Designer().Form(), "BorderStyle")->SetValue("bsNone");
    EXPECT_EQ(Designer().Form().ClientWidth(), 320);
    EXPECT_EQ(Designer().Form().ClientHeight(), 240);
    Designer().Undo();
    EXPECT_EQ(Text(), SampleForm);
}

} // namespace
} // namespace kx::test
