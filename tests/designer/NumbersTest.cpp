// SPDX-License-Identifier: MIT
// Numbers keep the spelling that a form's text gives them, and files in the binary format never hold one.

#include "WindowFixture.h"

#include "kx/core/FormText.h"

namespace kx::test {
namespace {

constexpr const char* Spelled = "object OrderForm: TOrderForm\n"
                                "  Left = $12C\n"
                                "  Top = 200\n"
                                "  Caption = 'Order'\n"
                                "  ClientHeight = 240\n"
                                "  ClientWidth = 320\n"
                                "  Tag = -$10\n"
                                "  Scale = 1E3\n"
                                "  object OkButton: TButton\n"
                                "    Left = $8\n"
                                "    Top = 16\n"
                                "    Width = 75\n"
                                "    Height = $19\n"
                                "    Caption = 'OK'\n"
                                "    TabOrder = 0\n"
                                "  end\n"
                                "  object Bar: TStatusBar\n"
                                "    Left = 0\n"
                                "    Top = 221\n"
                                "    Width = 320\n"
                                "    Height = 19\n"
                                "    Panels = <\n"
                                "      item\n"
                                "        Width = $40\n"
                                "      end>\n"
                                "  end\n"
                                "  object Gauge: TFuelGauge\n"
                                "    Level = 7.50\n"
                                "    Marks = (\n"
                                "      $1F\n"
                                "      2)\n"
                                "  end\n"
                                "end\n";

class SpelledNumbers : public TDesignerWindowTest {
protected:
    /// What a program that reads binary forms takes.
    static std::string Plain(const std::string& text) {
        TMemoryStream from(text);
        TMemoryStream to;
        ObjectTextToBinary(from, to);
        return std::string(to.Bytes());
    }
    static std::string Resource(const std::string& text) {
        TMemoryStream from(text);
        TMemoryStream to;
        ObjectTextToResource(from, to);
        return std::string(to.Bytes());
    }
    static std::string Replaced(std::string text, const std::string& from, const std::string& to) {
        text.replace(text.find(from), from.size(), to);
        return text;
    }
    void Rename() {
        The("OkButton").SetCaption("Fine");
        ASSERT_TRUE(Designer().Record("Caption"));
    }
    static std::string Renamed() { return Replaced(Spelled, "'OK'", "'Fine'"); }
};

TEST_F(SpelledNumbers, StayWhenSomethingElseIsChanged) {
    Open(Spelled);
    Rename();
    Window->Command("Save");
    EXPECT_EQ(FileText(), Renamed());
    The("OkButton").SetTop(20);
    ASSERT_TRUE(Designer().Record("Move"));
    EXPECT_EQ(Text(), Replaced(Renamed(), "Top = 16", "Top = 20"));
    The("OkButton").SetLeft(9);
    ASSERT_TRUE(Designer().Record("Move"));
    EXPECT_THAT(Text(), HasSubstr("    Left = 9\n    Top = 20\n    Width = 75\n    Height = $19\n"));
    The<TControl>("Gauge").SetLeft(9);
    ASSERT_TRUE(Designer().Record("Move"));
    EXPECT_THAT(Text(), HasSubstr("    Level = 7.50\n    Marks = (\n      $1F\n      2)\n"));
}

TEST_F(SpelledNumbers, ComeBackByUndo) {
    Open(Spelled);
    const TControl* const button = &The("OkButton");
    The("OkButton").SetLeft(9);
    ASSERT_TRUE(Designer().Record("Move"));
    const std::string moved = Text();
    Designer().Undo();
    EXPECT_EQ(Text(), Spelled);
    EXPECT_EQ(designer::WriteForm(Designer().Form()), Designer().State());
    EXPECT_EQ(&The("OkButton"), button) << "in place";
    Designer().Redo();
    EXPECT_EQ(Text(), moved);
    Designer().SelectOne(The("OkButton"));
    Designer().DeleteSelected();
    Designer().Undo();
    Designer().Undo();
    EXPECT_EQ(Text(), Spelled);
}

TEST_F(SpelledNumbers, GoThroughTheClipboardAndTheTextView) {
    Open(Spelled);
    Designer().SelectOne(The("OkButton"));
    const std::string copied = Designer().CopyText();
    EXPECT_THAT(copied, HasSubstr("  Left = $8\r\n"));
    Designer().SelectOne(Designer().Form());
    Designer().Paste(copied);
    EXPECT_THAT(Text(), HasSubstr("  object Button1: TButton\n    Left = $8\n    Top = 16\n    Width = 75\n"
                                  "    Height = $19\n"));
    Window->Command("ViewText");
    Window->TextView().SetText(Replaced(Window->TextView().Text(), "Top = 200", "Top = $C8"));
    Window->Command("ViewForm");
    EXPECT_THAT(Text(), HasSubstr("  Top = $C8\n"));
}

TEST_F(SpelledNumbers, AreNotInFilesOfTheBinaryFormat) {
    Open(Plain("object OrderForm: TOrderForm\nend\n"));
    Designer().Replace(Spelled, "Text");
    EXPECT_EQ(Text(), Spelled);
    Window->Command("Save");
    EXPECT_EQ(FileText(), Plain(Spelled));
    Rename();
    Window->Command("Save");
    EXPECT_EQ(FileText(), Plain(Renamed()));
}

TEST_F(SpelledNumbers, AreNotInFilesThatAreResources) {
    Open(Resource("object OrderForm: TOrderForm\nend\n"));
    EXPECT_FALSE(Window->Document()->IsModified());
    Designer().Replace(Spelled, "Text");
    Window->Command("Save");
    EXPECT_EQ(FileText(), Resource(Spelled));
    const std::string path = Folder.Path("OrderForm.dfm");
    Window->Command("CloseForm");
    ASSERT_TRUE(Window->OpenPath(path));
    EXPECT_EQ(The("OkButton").Left(), 8);
}

TEST_F(SpelledNumbers, AreInTheCopyOfATextThatIsNotSaved) {
    Open(Spelled);
    Rename();
    Window->Document()->UpdateRecovery();
    Window.reset(); // as in a crash: nobody is asked
    ASSERT_TRUE(Folder.Contains("OrderForm.dfm.~recover"));
    Window.reset(NewForm<designer::TDesignerForm>(nullptr));
    AnswerTo([&] { Window->OpenPath(Path); }, IDYES);
    EXPECT_EQ(Text(), Renamed());
    Designer().Undo();
    EXPECT_EQ(Text(), Spelled);
}

TEST_F(SpelledNumbers, AreNotInTheCopyOfABinaryForm) {
    Open(Plain("object OrderForm: TOrderForm\nend\n"));
    Designer().Replace(Spelled, "Text");
    Window->Document()->UpdateRecovery();
    EXPECT_EQ(designer::ReadWholeFile(Folder.Path("OrderForm.dfm.~recover")), Plain(Spelled));
}

/// A change that ends in an error is taken back, and may wait for the user's answer before.
TEST_F(SpelledNumbers, NoCopyIsMadeOfAFormThatIsHalfChanged) {
    Open();
    Designer().Do("Both", [&] {
        The("OkButton").SetCaption("half");
        Window->Document()->UpdateRecovery();
        EXPECT_FALSE(Folder.Contains("OrderForm.dfm.~recover"));
        The("OkButton").SetCaption("whole");
    });
    Window->Document()->UpdateRecovery();
    EXPECT_THAT(designer::ReadWholeFile(Folder.Path("OrderForm.dfm.~recover")), HasSubstr("'whole'"));
}

} // namespace
} // namespace kx::test
