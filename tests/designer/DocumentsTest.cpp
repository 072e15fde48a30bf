// SPDX-License-Identifier: MIT
// Files of forms and projects: under other names, changed by others, and the copies of what is not saved.

#include "WindowFixture.h"

#include "kx/win/FileStreams.h"
#include "kx/win/Registry.h"
#include "tests/support/ErrorOf.h"

namespace kx::test {
namespace {

class Documents : public TDesignerWindowTest {
protected:
    void Change(int left = 24) {
        The("OkButton").SetLeft(left);
        ASSERT_TRUE(Designer().Record("Move"));
    }
    static std::string Changed(const std::string& text, const std::string& from, const std::string& to) {
        std::string changed = text;
        return changed.replace(changed.find(from), from.size(), to);
    }
    designer::TDocument& Document() const { return *Window->Document(); }
    /// Does a command that asks for a file name, enters one, and answers the message boxes that follow.
    std::string CommandWithFile(const char* command, const std::string& path, const std::vector<int>& answers = {}) {
        std::string said;
        std::vector<TStep> steps{{"the file dialog", [] { return ActiveDialog() && FileNameEditOf(ActiveDialog()); },
                                  [&] {
                                      SetWindowTextA(FileNameEditOf(ActiveDialog()), path.c_str());
                                      PressButton(GetDlgItem(ActiveDialog(), IDOK));
                                  }}};
        for (const int answer : answers) {
            steps.push_back(AnswerBox(answer, [&](const std::string& text) { said = text; }));
        }
        TTestDriver driver(std::move(steps));
        driver.Run([&] {
            Window->Command(command);
            return true;
        });
        return said;
    }
    std::string AddOther() const {
        return Folder.AddFile("Other.dfm", "object Other: TOther\n  ClientHeight = 100\n  ClientWidth = 100\nend\n");
    }
    std::string AddProject(const std::string& mainForm) const {
        AddOther();
        return Folder.AddFile("Shop.kxproj",
                              "object Project: TProject\n  MainForm = '" + mainForm +
                                  "'\n  Forms.Strings = (\n    'OrderForm.dfm'\n    'Other.dfm')\nend\n");
    }
    bool HasCopy() const { return Folder.Contains("OrderForm.dfm.~recover"); }
    TMenuItem& Item(const char* name) const { return dynamic_cast<TMenuItem&>(*Window->FindComponent(name)); }
    void OpenMenus() const { dynamic_cast<TMenuItem&>(*Window->FindComponent("FileMenu")).Click(); }
};

// --- Names

TEST_F(Documents, TheNameOfAFormStandsInItsFirstLine) {
    const auto nameOf = [this](const char* bytes) {
        designer::WriteWholeFile(Folder.Path("Name.dfm"), bytes);
        return designer::TDocument(*Window, Folder.Path("Name.dfm")).FormName();
    };
    EXPECT_EQ(nameOf("object Detail: TDetail\nend\n"), "Detail");
    EXPECT_EQ(nameOf("inherited Detail : TDetail\nend\n"), "Detail");
    EXPECT_EQ(nameOf("object TDetail\n  Caption = 'a: b'\nend\n"), "");
    EXPECT_EQ(nameOf(designer::FormBinaryOfText(SampleForm).c_str()), "");
    designer::WriteWholeFile(Folder.Path("Name.dfm"), designer::FormBinaryOfText(SampleForm));
    EXPECT_EQ(designer::TDocument(*Window, Folder.Path("Name.dfm")).FormName(), "OrderForm");
}

TEST_F(Documents, AnOpenFormHasOneEditor) {
    Open();
    EXPECT_EQ(Document().EditorCount(), 1);
    EXPECT_THROW(Document().Editor(1), EListError);
    Document().Editor(0).Show();
}

TEST_F(Documents, PathsAreCompared) {
    EXPECT_EQ(designer::FolderOfFile("Order.dfm"), "");
    EXPECT_EQ(designer::JoinPath("C:\\a", "\\\\server\\share\\b.dfm"), "\\\\server\\share\\b.dfm");
    EXPECT_EQ(designer::JoinPath("", "b.dfm"), "b.dfm");
    const std::string tooLong = "C:\\" + std::string(5000, 'x');
    EXPECT_EQ(designer::FullPath(tooLong), tooLong);
}

// --- Under another name

TEST_F(Documents, AFormIsSavedUnderAnotherName) {
    Open();
    Change();
    Document().UpdateRecovery();
    ASSERT_TRUE(HasCopy());
    CommandWithFile("SaveAs", Folder.Path("Second.dfm"));
    EXPECT_EQ(FileText(), SampleForm) << "the first file stays";
    EXPECT_EQ(designer::ReadWholeFile(Folder.Path("Second.dfm")), Changed(SampleForm, "Left = 8\n", "Left = 24\n"));
    EXPECT_THAT(Window->Caption(), testing::StartsWith("Second.dfm -"));
    EXPECT_FALSE(HasCopy()) << "nothing is lost any more";
    EXPECT_FALSE(Document().IsModified());
}

TEST_F(Documents, ANameThatCannotBeUsedLeavesTheFormUnderItsOwn) {
    ASSERT_TRUE(Window->OpenPath(AddProject("OrderForm")));
    Change();
    EXPECT_THAT(CommandWithFile("SaveAs", Folder.Path("Other.dfm"), {IDYES, IDOK}),
                HasSubstr("Other.dfm belongs to the project already"));
    EXPECT_THAT(designer::ReadWholeFile(Folder.Path("Other.dfm")), testing::StartsWith("object Other"));
    EXPECT_THROW(Document().SaveAs(Folder.Path("no such folder\\Second.dfm")), Exception);
    EXPECT_EQ(Document().FileName(), Path);
    EXPECT_TRUE(Document().IsModified());
    Window->Command("Save");
    EXPECT_THAT(FileText(), HasSubstr("Left = 24"));
}

TEST_F(Documents, ANewFormDoesNotTakeTheFileOfOneThatIsOpen) {
    Open();
    EXPECT_THAT(CommandWithFile("NewForm", Path, {IDYES, IDOK}), HasSubstr("OrderForm.dfm is open already"));
    EXPECT_EQ(FileText(), SampleForm);
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(Documents, AFormNeedsANameThatCodeCanUse) {
    for (const char* name : {"2nd.dfm", "two words.dfm", "delete.dfm"}) {
        EXPECT_THAT(CommandWithFile("NewForm", Folder.Path(name), {IDOK}), HasSubstr("cannot be the name of a form"));
        EXPECT_FALSE(Folder.Contains(name));
        EXPECT_EQ(Window->Document(), nullptr);
    }
}

// --- Changed by others

TEST_F(Documents, AFileThatIsHeldForAMomentIsNotChanged) {
    Open();
    {
        const TFileStream held(Path, fmOpenReadWrite | fmShareExclusive);
        EXPECT_FALSE(Document().IsChangedByOthers());
    }
    DeleteFileA(Path.c_str());
    EXPECT_TRUE(Document().IsChangedByOthers());
}

TEST_F(Documents, AFormThatTheUserKeepsIsNotSavedAnyMore) {
    Open();
    Change();
    designer::WriteWholeFile(Path, Changed(SampleForm, "'OK'", "'Yes'"));
    std::string said;
    said = AnswerTo(
        [&] {
            SendMessageA(Window->Handle(), WM_ACTIVATEAPP, TRUE, 0);
            SendMessageA(Window->Handle(), WM_ACTIVATEAPP, TRUE, 0); // one question is enough
            Settle();
        },
        IDNO);
    EXPECT_THAT(said, HasSubstr("got back by Undo"));
    EXPECT_EQ(ShownMessageBox(), nullptr);
    EXPECT_EQ(The("OkButton").Left(), 24);
    EXPECT_FALSE(Document().IsChangedByOthers()) << "it has been answered";
    Designer().Undo();
    EXPECT_TRUE(Document().IsModified()) << "the file holds something else";
    Window->Command("Save");
    EXPECT_EQ(FileText(), SampleForm);
}

TEST_F(Documents, AFileThatOthersHaveBrokenLeavesTheForm) {
    Open();
    designer::WriteWholeFile(Path, "object A: TA\n  Left = \nend\n");
    std::string question, error;
    TTestDriver driver({AnswerBox(IDYES, [&](const std::string& text) { question = text; }),
                        AnswerBox(IDOK, [&](const std::string& text) { error = text; })});
    driver.Run([&] {
        SendMessageA(Window->Handle(), WM_ACTIVATEAPP, TRUE, 0);
        Settle();
        return true;
    });
    EXPECT_THAT(question, testing::Not(HasSubstr("Undo"))) << "there is nothing of one's own to lose";
    EXPECT_THAT(error, HasSubstr("line"));
    EXPECT_EQ(Text(), SampleForm);
    EXPECT_TRUE(Document().IsModified());
}

// --- Copies of what is not saved

TEST_F(Documents, TheCopyFollowsTheFormAndGoesWithTheLastChange) {
    Open();
    Change();
    Document().UpdateRecovery();
    const auto copy = [this] { return designer::ReadWholeFile(Document().RecoveryPath()); };
    EXPECT_THAT(copy(), HasSubstr("Left = 24"));
    Change(32);
    Document().UpdateRecovery();
    EXPECT_THAT(copy(), HasSubstr("Left = 32"));
    DeleteFileA(Document().RecoveryPath().c_str());
    Document().UpdateRecovery();
    EXPECT_FALSE(HasCopy()) << "it is written when something has changed, and not each time";
    Change(40);
    Document().UpdateRecovery();
    EXPECT_TRUE(HasCopy());
    while (Designer().CanUndo()) {
        Designer().Undo();
    }
    Document().UpdateRecovery();
    EXPECT_FALSE(HasCopy());
}

TEST_F(Documents, TheCopyOfAnEarlierSessionStaysUntilTheUserHasAnswered) {
    Folder.AddFile("OrderForm.dfm.~recover", Changed(SampleForm, "'OK'", "'Yes'"));
    TTestDriver driver({AnswerBox(IDYES, [this](const std::string&) {
        Document().UpdateRecovery(); // as the timer does meanwhile
        EXPECT_TRUE(HasCopy());
    })});
    driver.Run([&] { return Window->OpenPath(Path); });
    EXPECT_EQ(The("OkButton").Caption(), "Yes");
}

TEST_F(Documents, TheUserMayDoWithoutTheCopy) {
    Folder.AddFile("OrderForm.dfm.~recover", Changed(SampleForm, "'OK'", "'Yes'"));
    AnswerTo([&] { Window->OpenPath(Path); }, IDNO);
    EXPECT_FALSE(HasCopy());
    EXPECT_EQ(Text(), SampleForm);
    EXPECT_FALSE(Document().IsModified());
}

TEST_F(Documents, WhatIsClosedWithoutSavingLeavesNoCopy) {
    Open();
    Change();
    Document().UpdateRecovery();
    AnswerTo([&] { Window->Command("CloseForm"); }, IDNO);
    EXPECT_FALSE(HasCopy());
}

// --- Several forms

TEST_F(Documents, AFormThatIsOpenedJoinsTheProject) {
    const std::string project = AddProject("Other");
    ASSERT_TRUE(Window->OpenPath(project));
    EXPECT_EQ(Designer().Form().Name(), "Other") << "the main form first";
    const std::string third = Folder.AddFile("Third.dfm", "object Third: TThird\nend\n");
    ASSERT_TRUE(Window->OpenPath(third));
    EXPECT_EQ(Window->Project()->ModuleCount(), 3);
    EXPECT_TRUE(Window->Project()->IsModified());
    EXPECT_TRUE(Window->OpenPath(Folder.Path("ORDERFORM.DFM"))) << "it is the same file";
    EXPECT_EQ(Window->Project()->ModuleCount(), 3);
    const std::string bad = Folder.AddFile("Bad.dfm", "object");
    AnswerTo([&] { EXPECT_FALSE(Window->OpenPath(bad)); }, IDOK);
    EXPECT_EQ(Window->Project()->ModuleCount(), 3) << "what cannot be opened does not stay";
    bool canClose = false;
    Window->FormCloseQuery(nullptr, canClose);
    EXPECT_TRUE(canClose);
    EXPECT_THAT(designer::ReadWholeFile(project), HasSubstr("'Third.dfm'")) << "saved with the end";
}

TEST_F(Documents, TheListOfTheProjectOpensItsForms) {
    ASSERT_TRUE(Window->OpenPath(AddProject("Other")));
    auto& list = dynamic_cast<TListBox&>(*Window->FindComponent("ProjectList"));
    ASSERT_EQ(list.Items().CommaText(), "OrderForm.dfm,Other.dfm");
    EXPECT_EQ(list.ItemIndex(), 1);
    RECT r;
    SendMessageA(list.Handle(), LB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&r));
    ClickOn(list.ClientToScreen({r.left + 10, (r.top + r.bottom) / 2}));
    EXPECT_EQ(Designer().Form().Name(), "OrderForm");
    Window->Command("CloseForm");
    ASSERT_NE(Window->Document(), nullptr) << "the other one is still open";
    EXPECT_EQ(Designer().Form().Name(), "Other");
}

TEST_F(Documents, TheTabsChooseAmongTheOpenForms) {
    ASSERT_TRUE(Window->OpenPath(AddProject("OrderForm")));
    Window->Project()->Module(1).Open();
    auto& tabs = dynamic_cast<TTabControl&>(*Window->FindComponent("FormTabs"));
    EXPECT_EQ(tabs.TabIndex(), 1);
    RECT r;
    SendMessageA(tabs.Handle(), TCM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&r));
    ClickOn(tabs.ClientToScreen({(r.left + r.right) / 2, (r.top + r.bottom) / 2}));
    EXPECT_EQ(Designer().Form().Name(), "OrderForm");
    Window->Command("ViewText");
    Window->TextView().SetText("object");
    SendMessageA(tabs.Handle(), TCM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&r));
    AnswerTo([&] { ClickOn(tabs.ClientToScreen({(r.left + r.right) / 2, (r.top + r.bottom) / 2})); }, IDOK);
    EXPECT_EQ(Designer().Form().Name(), "OrderForm") << "a wrong text is not left";
    EXPECT_EQ(tabs.TabIndex(), 0);
    EXPECT_EQ(Window->TextView().Text(), "object");
    AnswerTo([&] { Window->Command("CloseForm"); }, IDOK);
    ASSERT_NE(Window->Document(), nullptr) << "nor closed with";
    AnswerTo([&] { Window->Command("Run"); }, IDOK);
    EXPECT_EQ(Window->RunningForm(), nullptr) << "nor run with";
    Window->TextView().SetText(designer::FormText(Designer().State()));
    Window->Command("ViewForm");
}

TEST_F(Documents, SavingAllStopsAtTheFirstThatCannotBeSaved) {
    ASSERT_TRUE(Window->OpenPath(AddProject("OrderForm")));
    Change();
    Window->Project()->Module(1).Open();
    Designer().Form().SetCaption("changed");
    Designer().Record("Caption");
    SetFileAttributesA(Path.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_THAT(AnswerTo([&] { Window->Command("SaveAll"); }, IDOK), HasSubstr("read-only"));
    SetFileAttributesA(Path.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_TRUE(Window->Project()->Module(1).IsModified());
    Window->Command("SaveAll");
    EXPECT_FALSE(Window->Project()->Module(0).IsModified());
    EXPECT_FALSE(Window->Project()->Module(1).IsModified());
    SetFileAttributesA(Path.c_str(), FILE_ATTRIBUTE_READONLY);
    Window->Project()->Module(0).Editor(0).Show();
    Change(32);
    TTestDriver driver({AnswerBox(IDYES), AnswerBox(IDOK)});
    driver.Run([&] {
        Window->Command("CloseForm");
        return true;
    });
    SetFileAttributesA(Path.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_TRUE(Window->Project()->Module(0).IsOpen()) << "what cannot be saved is not closed";
}

TEST_F(Documents, AnotherProjectWaitsForWhatIsNotSaved) {
    Open();
    Change();
    Folder.AddFolder("empty");
    AnswerTo([&] { EXPECT_FALSE(Window->OpenPath(Folder.Path("empty"))); }, IDCANCEL);
    ASSERT_NE(Window->Document(), nullptr);
    EXPECT_EQ(The("OkButton").Left(), 24);
}

// --- Menus

TEST_F(Documents, MenusOfferWhatCanBeDone) {
    ASSERT_TRUE(Window->OpenPath(Folder.Path()));
    OpenMenus();
    EXPECT_FALSE(Item("MainFormItem").Enabled()) << "a folder has no project file";
    EXPECT_FALSE(Item("RemoveFormItem").Enabled());
    EXPECT_FALSE(Item("UndoItem").Enabled());
    EXPECT_EQ(Item("UndoItem").Caption(), "&Undo");
    Change();
    OpenMenus();
    EXPECT_TRUE(Item("UndoItem").Enabled());
    EXPECT_EQ(Item("UndoItem").Caption(), "&Undo Move");
    EXPECT_FALSE(Item("RedoItem").Enabled());
    EXPECT_FALSE(Item("LockControlsItem").Checked());
    Window->Command("LockControls");
    OpenMenus();
    EXPECT_TRUE(Item("LockControlsItem").Checked());
    Designer().Undo();
    ASSERT_TRUE(Window->OpenPath(AddProject("Other")));
    Window->Project()->Module(0).Open();
    OpenMenus();
    EXPECT_TRUE(Item("MainFormItem").Enabled());
    EXPECT_FALSE(Item("MainFormItem").Checked());
    Window->Command("MainForm");
    EXPECT_TRUE(Item("MainFormItem").Checked());
    EXPECT_TRUE(Window->Project()->IsModified());
    Window->Command("MainForm");
    EXPECT_EQ(Window->Project()->MainForm(), "") << "none";
}

TEST_F(Documents, WhatWasOpenedLastIsOffered) {
    TMenuItem& recent = Item("RecentMenu");
    std::vector<std::string> paths;
    for (int i = 0; i < 10; ++i) {
        Folder.AddFolder("p" + IntToStr(i));
        paths.push_back(Folder.Path("p" + IntToStr(i)));
        ASSERT_TRUE(Window->OpenPath(paths.back()));
    }
    ASSERT_TRUE(Window->OpenPath(paths[8]));
    OpenMenus();
    ASSERT_EQ(recent.Count(), 8);
    EXPECT_TRUE(recent.Enabled());
    EXPECT_EQ(recent[0]->Caption(), paths[8]);
    EXPECT_EQ(recent[1]->Caption(), paths[9]);
    EXPECT_EQ(recent[2]->Caption(), paths[7]) << "each of them once";
    EXPECT_EQ(designer::TSettings("Recent").Text("9"), "");
    recent[2]->Click();
    EXPECT_EQ(Window->Project()->FileName(), paths[7]);
}

TEST_F(Documents, ANewProjectTakesThePlaceOfTheFile) {
    Folder.AddFile("Shop.kxproj", "something else");
    CommandWithFile("NewProject", Folder.Path("Shop.kxproj"), {IDYES});
    ASSERT_NE(Window->Project(), nullptr);
    EXPECT_EQ(Window->Project()->ModuleCount(), 0);
    EXPECT_THAT(designer::ReadWholeFile(Folder.Path("Shop.kxproj")), testing::StartsWith("object Project: TProject"));
    CommandWithFile("NewForm", Folder.Path("First.dfm"));
    CommandWithFile("NewForm", Folder.Path("Second.dfm"));
    EXPECT_EQ(Window->Project()->MainForm(), "First");
}

TEST_F(Documents, AFolderTakesFormFilesOnly) {
    Folder.AddFile("Other.dfm.bak", "object");
    Folder.AddFile("Zebra.dfm", SampleForm);
    Folder.AddFile("apple.dfm", SampleForm);
    Folder.AddFile(".dfm", "object");
    ASSERT_TRUE(Window->OpenPath(Folder.Path()));
    ASSERT_EQ(Window->Project()->ModuleCount(), 3);
    EXPECT_EQ(designer::NameOfFile(Window->Project()->Module(0).FileName()), "apple.dfm");
    EXPECT_EQ(designer::NameOfFile(Window->Project()->Module(2).FileName()), "Zebra.dfm");
}

} // namespace
} // namespace kx::test
