// SPDX-License-Identifier: MIT
// Forms that stand on others.

#include "WindowFixture.h"

namespace kx::test {
namespace {

constexpr const char* Base = "object BaseForm: TBaseForm\n"
                             "  Left = 10\n"
                             "  Top = 20\n"
                             "  Caption = 'Base'\n"
                             "  ClientHeight = 200\n"
                             "  ClientWidth = 300\n"
                             "  object Bar: TPanel\n"
                             "    Left = 0\n"
                             "    Top = 160\n"
                             "    Width = 300\n"
                             "    Height = 40\n"
                             "    TabOrder = 0\n"
                             "    object Ok: TButton\n"
                             "      Left = 8\n"
                             "      Top = 8\n"
                             "      Width = 75\n"
                             "      Height = 25\n"
                             "      Caption = 'OK'\n"
                             "      TabOrder = 0\n"
                             "    end\n"
                             "  end\n"
                             "  object Gauge: TFuelGauge\n"
                             "    Left = 200\n"
                             "    Top = 10\n"
                             "    Level = 3\n"
                             "  end\n"
                             "end\n";
constexpr const char* Child = "inherited ChildForm: TChildForm\n"
                              "  Caption = 'Child'\n"
                              "  inherited Bar: TPanel\n"
                              "    inherited Ok: TButton\n"
                              "      Caption = 'Send'\n"
                              "    end\n"
                              "  end\n"
                              "  object Note: TLabel\n"
                              "    Left = 8\n"
                              "    Top = 8\n"
                              "    Width = 23\n"
                              "    Height = 13\n"
                              "    Caption = 'Note'\n"
                              "  end\n"
                              "end\n";

class InheritedForms : public TDesignerWindowTest {
protected:
    InheritedForms() {
        DeleteFileA(Path.c_str());
        Folder.AddFile("BaseForm.dfm", Base);
        Folder.AddFile("ChildForm.dfm", Child);
    }
    /// Opens the folder, and the child.
    void OpenChild() {
        ASSERT_TRUE(Window->OpenPath(Folder.Path()));
        for (int i = 0; i < Window->Project()->ModuleCount(); ++i) {
            if (Window->Project()->Module(i).FormName() == "ChildForm") {
                Window->Project()->Module(i).Open();
                Window->Project()->Module(i).Editor(0).Show();
            }
        }
        Settle();
        ASSERT_EQ(Designer().FormClass(), "TChildForm");
    }
    std::string Saved() const { return designer::ReadWholeFile(Folder.Path("ChildForm.dfm")); }
};

TEST_F(InheritedForms, ShowWhatTheirAncestorBrings) {
    OpenChild();
    EXPECT_EQ(Designer().AncestorClass(), "TBaseForm");
    EXPECT_EQ(Designer().Form().ClientWidth(), 300);
    EXPECT_EQ(Designer().Form().Caption(), "Child");
    EXPECT_EQ(The<TButton>("Ok").Caption(), "Send");
    EXPECT_EQ(The("Ok").Width(), 75);
    EXPECT_EQ(The("Ok").Parent(), &The<TPanel>("Bar"));
    EXPECT_EQ(The<TComponent>("Gauge").FormClassName(), "TFuelGauge");
    EXPECT_EQ(Text(), Child);
    EXPECT_FALSE(Window->Document()->IsModified());
    Screenshot("designer-inherited", Window->Handle());
    Window->Command("Run");
    EXPECT_EQ(dynamic_cast<TButton&>(*Window->RunningForm()->FindComponent("Ok")).Caption(), "Send");
    EXPECT_EQ(Window->RunningForm()->ClientWidth(), 300);
}

TEST_F(InheritedForms, HoldJustWhatDiffers) {
    OpenChild();
    The("Ok").SetLeft(16);
    Designer().Record("Move");
    Designer().CreateComponent(TEdit::StaticClass(), &The("Bar"), {100, 8, 180, 29});
    The("Bar").SetTop(150);
    Designer().Record("Move");
    std::string expected = Child;
    expected.insert(expected.find("      Caption = 'Send'"), "      Left = 16\n");
    expected.insert(expected.find("    inherited Ok"), "    Top = 150\n");
    Window->Command("Save");
    EXPECT_THAT(Saved(), HasSubstr("  inherited Bar: TPanel\n    Top = 150\n    inherited Ok: TButton\n"
                                   "      Left = 16\n      Caption = 'Send'\n    end\n"
                                   "    object Edit1: TEdit\n"));
    EXPECT_THAT(Saved(), testing::Not(HasSubstr("Gauge")));
    EXPECT_THAT(Saved(), testing::Not(HasSubstr("ClientWidth")));
    while (Designer().CanUndo()) {
        Designer().Undo();
    }
    EXPECT_EQ(Text(), Child);
    EXPECT_EQ(The("Ok").Left(), 8);
    EXPECT_EQ(The("Bar").Top(), 160);
    while (Designer().CanRedo()) {
        Designer().Redo();
    }
    EXPECT_EQ(The("Edit1").Parent(), &The("Bar"));
    EXPECT_EQ(The("Ok").Left(), 16);
}

TEST_F(InheritedForms, WhatTheAncestorBringsKeepsNameAndPlace) {
    OpenChild();
    Designer().SelectOne(The("Ok"));
    EXPECT_THROW(Designer().DeleteSelected(), designer::EDesignError);
    EXPECT_THROW(Designer().CopyText(), designer::EDesignError);
    EXPECT_THROW(Designer().Rename(The("Ok"), "Other"), designer::EDesignError);
    EXPECT_FALSE(Designer().CanPlace(The("Ok"), Designer().Form()));
    EXPECT_TRUE(Designer().CanPlace(The("Note"), The("Bar")));
    EXPECT_TRUE(Has("Ok"));
    EXPECT_EQ(Text(), Child);
    ClickOn(At("Ok"));
    EXPECT_THAT(AnswerTo([&] { Window->Command("Delete"); }, IDOK), HasSubstr("comes from TBaseForm"));
    Designer().SelectOne(The("Note"));
    Designer().DeleteSelected();
    EXPECT_FALSE(Has("Note"));
}

TEST_F(InheritedForms, AComponentMovesIntoOneThatTheFileDoesNotSpeakOf) {
    std::string child = Child;
    child.erase(child.find("  inherited Bar"), child.find("  object Note") - child.find("  inherited Bar"));
    Folder.AddFile("ChildForm.dfm", child);
    // Without what is inherited nothing tells the ancestor but the class's code.
    Folder.AddFile("ChildForm.h", "class TChildForm final : public forms::TBaseForm {\n};\n");
    OpenChild();
    Designer().Place({&The("Note")}, The("Bar"), nullptr);
    EXPECT_EQ(The("Note").Parent(), &The("Bar"));
    EXPECT_THAT(Text(), HasSubstr("  inherited Bar: TPanel\n    object Note: TLabel\n"));
    Designer().Undo();
    EXPECT_EQ(Text(), child);
    EXPECT_EQ(The("Note").Parent(), &Designer().Form());
}

TEST_F(InheritedForms, FollowTheirAncestor) {
    OpenChild();
    designer::TDocument& child = *Window->Document();
    for (int i = 0; i < Window->Project()->ModuleCount(); ++i) {
        if (&Window->Project()->Module(i) != &child) {
            Window->Project()->Module(i).Open();
            Window->Project()->Module(i).Editor(0).Show();
        }
    }
    ASSERT_EQ(Designer().FormClass(), "TBaseForm");
    The("Ok").SetTop(12);
    Designer().Record("Move");
    Designer().CreateComponent(TEdit::StaticClass(), &Designer().Form(), {100, 8, 180, 29});
    child.Editor(0).Show();
    ASSERT_EQ(Designer().FormClass(), "TChildForm");
    EXPECT_EQ(The("Ok").Top(), 12);
    EXPECT_TRUE(Has("Edit1"));
    EXPECT_EQ(Text(), Child) << "it holds its own differences still";
    EXPECT_FALSE(child.IsModified());
}

TEST_F(InheritedForms, NobodyGuessesBetweenTwoAncestors) {
    std::string other = Base;
    other.replace(other.find("BaseForm: TBaseForm"), 19, "Twin: TTwin");
    Folder.AddFile("Twin.dfm", other);
    OpenChild();
    EXPECT_EQ(Designer().AncestorClass(), "");
    EXPECT_EQ(Text(), Child);
}

TEST_F(InheritedForms, WithoutTheirAncestorTheyAreShownAsBoxesAndKept) {
    DeleteFileA(Folder.Path("BaseForm.dfm").c_str());
    AnswerTo([this] { OpenChild(); }, IDOK);
    EXPECT_EQ(Designer().AncestorClass(), "");
    EXPECT_EQ(Text(), Child);
}

// --- A form alone, without its project

TEST_F(InheritedForms, AFormThatIsOpenedAloneFindsItsAncestorBesideIt) {
    Folder.AddFile("Other.dfm", "object Other: TOther\nend\n");
    ASSERT_TRUE(Window->OpenPath(Folder.Path("ChildForm.dfm")));
    EXPECT_EQ(Window->Project()->ModuleCount(), 1);
    EXPECT_EQ(Designer().AncestorClass(), "TBaseForm");
    EXPECT_EQ(The<TButton>("Ok").Caption(), "Send");
    EXPECT_EQ(The("Ok").Width(), 75);
    EXPECT_EQ(Text(), Child);
    The("Note").SetLeft(16);
    Designer().Record("Move");
    Window->Command("Save");
    std::string expected = Child;
    expected.replace(expected.find("  object Note: TLabel\n    Left = 8"), 34, "  object Note: TLabel\n    Left = 16");
    EXPECT_EQ(Saved(), expected);
    EXPECT_EQ(designer::ReadWholeFile(Folder.Path("BaseForm.dfm")), Base);
}

TEST_F(InheritedForms, AFormThatIsOpenedAloneFindsTheAncestorOfItsAncestorToo) {
    Folder.AddFile("Third.dfm",
                   "inherited Third: TThird\n  inherited Note: TLabel\n    Caption = 'Third'\n  end\nend\n");
    ASSERT_TRUE(Window->OpenPath(Folder.Path("Third.dfm")));
    EXPECT_EQ(Designer().Ancestors().size(), 2U);
    EXPECT_EQ(The<TButton>("Ok").Caption(), "Send");
}

TEST_F(InheritedForms, TheCodeOfAFormThatIsOpenedAloneNamesTheAncestor) {
    std::string twin = Base;
    twin.replace(twin.find("BaseForm: TBaseForm"), 19, "Twin: TTwin");
    twin.replace(twin.find("Width = 75"), 10, "Width = 90");
    Folder.AddFile("Twin.dfm", twin);
    Folder.AddFile("ChildForm.h", "class TChildForm : public TTwin {\n};\n");
    ASSERT_TRUE(Window->OpenPath(Folder.Path("ChildForm.dfm")));
    EXPECT_EQ(Designer().AncestorClass(), "TTwin");
    EXPECT_EQ(The("Ok").Width(), 90);
}

TEST_F(InheritedForms, TheProjectsFormGoesBeforeAnotherOneBesideIt) {
    std::string copy = Base;
    copy.replace(copy.find("Width = 75"), 10, "Width = 90");
    Folder.AddFile("Copy of BaseForm.dfm", copy);
    const std::string project =
        Folder.AddFile("Shop.kxproj", "object Project: TProject\n  MainForm = 'ChildForm'\n"
                                      "  Forms.Strings = (\n    'BaseForm.dfm'\n    'ChildForm.dfm')\nend\n");
    ASSERT_TRUE(Window->OpenPath(project));
    ASSERT_EQ(Designer().FormClass(), "TChildForm");
    EXPECT_EQ(The("Ok").Width(), 75);
}

TEST_F(InheritedForms, AFormWithoutItsAncestorSaysSoAndLosesNothing) {
    DeleteFileA(Folder.Path("BaseForm.dfm").c_str());
    Folder.AddFile("ChildForm.h", "class TChildForm : public TBaseForm {\n};\n");
    Folder.AddFile("Other.dfm", "object Other: TOther\nend\n");
    const std::string said = AnswerTo([&] { Window->OpenPath(Folder.Path("ChildForm.dfm")); }, IDOK);
    EXPECT_THAT(said, testing::StartsWith("TChildForm inherits from TBaseForm, whose form file is neither in the "
                                          "project nor in the folder of ChildForm.dfm."));
    EXPECT_THAT(Window->Status(), HasSubstr("TChildForm inherits from TBaseForm"));
    EXPECT_EQ(Text(), Child);
    Screenshot("designer-without-ancestor", Window->Handle());
    The("Note").SetLeft(16);
    Designer().Record("Move");
    Window->Command("Save");
    std::string expected = Child;
    expected.replace(expected.find("  object Note: TLabel\n    Left = 8"), 34, "  object Note: TLabel\n    Left = 16");
    EXPECT_EQ(Saved(), expected);
}

TEST_F(InheritedForms, AFormWithNothingThatIsInheritedTakesNoAncestorByChance) {
    Folder.AddFile("Lonely.dfm", "inherited Lonely: TLonely\n  Caption = 'alone'\nend\n");
    DeleteFileA(Folder.Path("ChildForm.dfm").c_str());
    EXPECT_THAT(AnswerTo([&] { Window->OpenPath(Folder.Path("Lonely.dfm")); }, IDOK),
                HasSubstr("TLonely inherits from another form"));
    EXPECT_EQ(Designer().AncestorClass(), "");
}

TEST_F(InheritedForms, FormsThatStandOnEachOtherInACircleAreOpened) {
    Folder.AddFile("ChildForm.h", "class TChildForm : public TBaseForm {};");
    Folder.AddFile("BaseForm.h", "class TBaseForm : public TChildForm {};");
    std::string base = Base;
    base.replace(0, 6, "inherited");
    Folder.AddFile("BaseForm.dfm", base);
    AnswerTo([this] { OpenChild(); }, IDOK);
    EXPECT_EQ(Text(), Child);
}

TEST_F(InheritedForms, AThirdOneStandsOnBoth) {
    Folder.AddFile("Third.dfm",
                   "inherited Third: TThird\n  inherited Note: TLabel\n    Caption = 'Third'\n  end\nend\n");
    ASSERT_TRUE(Window->OpenPath(Folder.Path()));
    for (int i = 0; i < Window->Project()->ModuleCount(); ++i) {
        if (Window->Project()->Module(i).FormName() == "Third") {
            Window->Project()->Module(i).Open();
        }
    }
    ASSERT_EQ(Designer().FormClass(), "TThird");
    EXPECT_EQ(Designer().Ancestors().size(), 2U);
    EXPECT_EQ(The<TButton>("Ok").Caption(), "Send");
    EXPECT_EQ(The("Note").Caption(), "Third");
    Window->Command("ViewClass");
    EXPECT_THAT(Window->TextView().Text(), HasSubstr("class TThird : public TChildForm {"));
}

} // namespace
} // namespace kx::test
