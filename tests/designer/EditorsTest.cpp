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
