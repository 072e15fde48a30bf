// SPDX-License-Identifier: MIT
// The answers of docs/cookbook.md whose results can be seen, in real dialogs.

#include "examples/cookbook/Recipes.h"
#include "kx/dropdown/KxDropDownButton.h"
#include "kx/opensave/KxFileDlgControls.h"
#include "kx/places/KxPlacesBarForm.h"
#include "kx/win/Registry.h"
#include "tests/folder/FolderDlgTest.h"
#include "tests/support/DialogTest.h"

namespace kx {
namespace {

using namespace test;

constexpr const char* editorKey = "Software\\Acme\\Editor";

class Cookbook : public TDialogTest {
protected:
    Cookbook() {
        ForgetAcme();
        for (const char* name : {"Folder\\one.txt", "Folder\\two.txt", "Folder\\~two.txt", "Folder\\tool.exe"}) {
            Folder.AddFile(name, name);
        }
        Folder.AddFolder("Folder\\inner");
        Form->SetBounds(30, 40, 200, 60);
        Label->SetParent(Form.get());
    }
    ~Cookbook() override { ForgetAcme(); }

    static void ForgetAcme() {
        TRegistry().DeleteKey(editorKey);
        RegDeleteKeyA(HKEY_CURRENT_USER, "Software\\Acme"); // unless somebody else has something there
    }

    template <class T> T& NewDialog() {
        auto* dialog = new T(Owner.get());
        dialog->SetInitialDir(Top());
        return *dialog;
    }
    std::string Top() const { return Folder.Path("Folder"); }
    std::string Path(const std::string& name) const { return Folder.Path("Folder\\" + name); }
    static HWND ListOf(const TOpenDialog& dialog) { return FileListOf(dialog.DialogWindow()); }
    static TStep Select(const TOpenDialog& dialog, const std::string& name) {
        return {"the file " + name, [&dialog, name] { return IsShown(dialog) && FindItem(ListOf(dialog), name) >= 0; },
                [&dialog, name] {
                    SetFocus(ListOf(dialog));
                    SelectItem(ListOf(dialog), name);
                }};
    }
    /// A command of the navigation bar, as a click on its button sends it.
    static TStep Command(const TOpenDialog& dialog, WORD command) {
        return Perform("the command " + IntToStr(command), [&dialog, command] {
            const HWND window = dialog.DialogWindow();
            SendMessageA(window, WM_COMMAND, command, reinterpret_cast<LPARAM>(KxFindToolbar(window)));
        });
    }

    TTempFolder Folder{"cookbook"};
    TFormPtr Form{NewForm<TForm>(nullptr)};
    TLabel* const Label = new TLabel(Form.get());
};

// --- The look

TEST_F(Cookbook, AFormIsInTheDialog) {
    auto& dialog = NewDialog<TKxOpenLiteDialog>();
    cookbook::ShowMyForm(dialog, *Form);
    Look(dialog, [&] { EXPECT_TRUE(IsChild(dialog.DlgHandle(), Form->WindowHandle())); });
}

TEST_F(Cookbook, APartGrowsWithTheDialog) {
    auto* const list = new TListBox(Form.get());
    list->SetParent(Form.get());
    list->SetBounds(0, 0, 100, 40);
    cookbook::GrowWithDialog(*Form, *list);
    Form->SetWidth(Form->Width() + 50);
    EXPECT_EQ(list->Width(), 150);
    Form->SetWidth(1);
    EXPECT_EQ(Form->Width(), 120);
}

TEST_F(Cookbook, AFormStandsInThePlaceOfTheList) {
    auto& dialog = NewDialog<TKxOpenDialog>();
    cookbook::ReplaceFileList(dialog, *Form);
    RunDialog(dialog, {{"the form", [&] { return dialog.DlgHandle() && IsWindowVisible(Form->WindowHandle()); },
                        [&] {
                            EXPECT_FALSE(IsWindowVisible(dialog.GetLVHandle()));
                            PressButton(ItemOf(dialog, IDCANCEL));
                        }}});
}

TEST_F(Cookbook, TheButtonHasAMenu) {
    auto& dialog = NewDialog<TKxOpenDialog>();
    TPopupMenu menu(nullptr);
    cookbook::AddButtonMenu(dialog, menu);
    EXPECT_TRUE(RunDialog(dialog, {Select(dialog, "one.txt"),
                                   {"the name", [&] { return dialog.FilenameText() == "one.txt"; },
                                    [&] {
                                        EXPECT_NE(FindDescendant(dialog.DlgHandle(), "TKxBitBtn"), nullptr);
                                        menu.Items().Items(0)->Click();
                                    }}}));
    EXPECT_EQ(dialog.Tag(), 1);
    EXPECT_EQ(dialog.FileName(), Path("one.txt"));
}

TEST_F(Cookbook, AToolBarIsLent) {
    auto* const bar = new TToolBar(Owner.get());
    bar->SetParent(Owner.get());
    auto& dialog = NewDialog<TKxOpenDialog>();
    cookbook::LendToolBar(dialog, *bar);
    Look(dialog, [&] { EXPECT_TRUE(IsChild(dialog.DlgHandle(), bar->WindowHandle())); });
    EXPECT_TRUE(IsChild(Owner->Handle(), bar->WindowHandle()));
}

TEST_F(Cookbook, TheDialogStandsOverItsOwner) {
    auto& dialog = NewDialog<TKxOpenLiteDialog>();
    cookbook::CentreOverOwner(dialog);
    Look(dialog, [&] {
        const TRect mine = ScreenRectOf(dialog.DlgHandle());
        const TRect owners = ScreenRectOf(Owner->Handle());
        EXPECT_NEAR(mine.Left + mine.Right, owners.Left + owners.Right, 2);
        EXPECT_NEAR(mine.Top + mine.Bottom, owners.Top + owners.Bottom, 2);
    });
}

TEST_F(Cookbook, TheDialogHasAnIcon) {
    TIcon icon;
    icon.SetHandle(CopyIcon(LoadIconA(nullptr, IDI_QUESTION)));
    icon.SaveToFile(Folder.Path("sample.ico"));
    auto& dialog = NewDialog<TKxOpenLiteDialog>();
    cookbook::GiveIcon(dialog, Folder.Path("sample.ico"));
    Look(dialog, [&] { EXPECT_NE(SendMessageA(dialog.DlgHandle(), WM_GETICON, ICON_SMALL, 0), 0); });
}

TEST_F(Cookbook, DetailsAreShownAndKept) {
    auto& dialog = NewDialog<TKxOpenDialog>();
    cookbook::ForceDetails(dialog);
    RunDialog(dialog, {{"the details", [&] { return IsShown(dialog) && dialog.FileListViewStyle() == lvsReport; },
                        [&] { SendMessageA(dialog.GetDVHandle(), WM_COMMAND, KxViewCommand(lvsIcon), 0); }},
                       Perform("the refused icons", [&] { EXPECT_EQ(dialog.FileListViewStyle(), lvsReport); }),
                       Cancel(dialog)});
}

TEST_F(Cookbook, ThePreviewFollows) {
    auto& dialog = NewDialog<TKxOpenLiteDialog>();
    cookbook::ShowPreview(dialog, *Label);
    RunDialog(dialog, {Select(dialog, "two.txt"),
                       Await("its preview", [&] { return Label->Caption() == "Preview of two.txt"; }), Cancel(dialog)});
}

TEST_F(Cookbook, AQuickQuestionIsAnswered) {
    std::string answer = "none";
    TTestDriver driver({{"the dialog", [] { return ActiveDialog() && FileNameEditOf(ActiveDialog()); },
                         [&] {
                             EXPECT_EQ(TextOf(ActiveDialog()), "Open drawing");
                             SetWindowTextA(FileNameEditOf(ActiveDialog()), Path("one.txt").c_str());
                             PressButton(GetDlgItem(ActiveDialog(), IDOK));
                         }}});
    driver.Run([&] {
        answer = cookbook::AskQuickly();
        return true;
    });
    EXPECT_EQ(answer, Path("one.txt"));
}

// --- The choice

TEST_F(Cookbook, TheSelectionIsKnown) {
    auto& dialog = NewDialog<TKxOpenLiteDialog>();
    cookbook::FollowSelection(dialog, *Label);
    RunDialog(dialog,
              {Select(dialog, "one.txt"),
               Await("it is told", [&] { return Label->Caption() == "1 selected in " + Top(); }), Cancel(dialog)});
}

TEST_F(Cookbook, AWrongChoiceKeepsTheDialogOpen) {
    auto& dialog = NewDialog<TKxOpenLiteDialog>();
    cookbook::CheckChoice(dialog);
    std::string said;
    EXPECT_TRUE(RunDialog(dialog, {Await("it is shown", Shown(dialog)), EnterFileName(dialog, "tool.exe"),
                                   AnswerBox(IDOK, [&](const std::string& text) { said = text; }),
                                   Await("it is back", Shown(dialog)), EnterFileName(dialog, "one.txt")}));
    EXPECT_EQ(said, "Programs cannot be opened.");
    EXPECT_EQ(dialog.FileName(), Path("one.txt"));
}

TEST_F(Cookbook, TheUserStaysBelowAFolder) {
    auto& dialog = NewDialog<TKxOpenLiteDialog>();
    cookbook::StayBelow(dialog, Top());
    RunDialog(dialog, {Await("the top", FolderIs(dialog, Top())), Command(dialog, KxCmdUpLevel),
                       Perform("still the top",
                               [&] {
                                   EXPECT_EQ(dialog.SelectedFolder(), Top());
                                   EXPECT_FALSE(IsWindowVisible(ItemOf(dialog, KxFolderComboId)));
                                   dialog.SetSelectedFolder(Path("inner"));
                               }),
                       Await("inside", FolderIs(dialog, Path("inner"))), Command(dialog, KxCmdUpLevel),
                       Await("back again", FolderIs(dialog, Top())), Cancel(dialog)});
}

TEST_F(Cookbook, FilesAreProtected) {
    auto& dialog = NewDialog<TKxOpenDialog>();
    cookbook::ProtectFiles(dialog);
    int before = 0;
    RunDialog(dialog, {Select(dialog, "two.txt"),
                       {"names stay", [&] { return (GetWindowLongA(ListOf(dialog), GWL_STYLE) & LVS_EDITLABELS) == 0; },
                        [&] {
                            before = ItemCount(ListOf(dialog));
                            PressKey(VK_DELETE);
                            PressKey(VK_HOME); // what it does tells that the first one has been handled
                        }},
                       Await("the first file",
                             [&] {
                                 return SendMessageA(ListOf(dialog), LVM_GETNEXTITEM, static_cast<WPARAM>(-1),
                                                     LVNI_FOCUSED) == 0;
                             }),
                       Command(dialog, KxCmdNewFolder),
                       Perform("the files", [&] { EXPECT_EQ(ItemCount(ListOf(dialog)), before); }),
                       Cancel(dialog)});
    EXPECT_TRUE(Folder.Contains("Folder\\two.txt"));
}

TEST_F(Cookbook, FilesAreHidden) {
    auto& dialog = NewDialog<TKxOpenDialog>();
    cookbook::HideFiles(dialog);
    RunDialog(dialog, {{"the list", [&] { return IsShown(dialog) && ItemCount(ListOf(dialog)) == 4; },
                        [&] {
                            EXPECT_THAT(ItemTexts(ListOf(dialog)),
                                        UnorderedElementsAre("inner", "one.txt", "two.txt", "tool.exe"));
                        }},
                       Cancel(dialog)});
}

TEST_F(Cookbook, TheExtensionFollowsTheType) {
    auto& dialog = NewDialog<TKxSaveDialog>();
    cookbook::CompleteExtension(dialog);
    dialog.SetFileName("sales");
    RunDialog(dialog,
              {{"it is shown", Shown(dialog), [&] { ChooseInCombo(ItemOf(dialog, KxFileTypeId), 1, CBN_SELENDOK); }},
               Await("the texts' extension", [&] { return dialog.FilenameText() == "sales.txt"; }),
               Cancel(dialog)});
    dialog.SetFilterIndex(1);
    EXPECT_TRUE(RunDialog(dialog, {Await("it is shown", Shown(dialog)), EnterFileName(dialog, "plain")}));
    EXPECT_EQ(dialog.FileName(), Path("plain.csv"));
}

TEST_F(Cookbook, ANameIsSuggestedAndNothingOverwritten) {
    auto& dialog = NewDialog<TKxSaveDialog>();
    cookbook::SuggestName(dialog, Path("two.txt"));
    EXPECT_FALSE(RunDialog(dialog, {{"the name", [&] { return IsShown(dialog) && dialog.FilenameText() == "two.txt"; },
                                     [&] { PressButton(ItemOf(dialog, IDOK)); }},
                                    AnswerBox(IDNO),
                                    Await("it is back", Shown(dialog)),
                                    Cancel(dialog)}));
}

TEST_F(Cookbook, AnEncodingIsChosen) {
    auto& dialog = NewDialog<TKxSaveDialog>();
    auto* const box = new TComboBox(Form.get());
    box->SetParent(Form.get());
    std::string answer;
    RunDialog(
        [&] {
            answer = cookbook::SaveWithEncoding(dialog, *Form, *box);
            return true;
        },
        {{"it is shown", Shown(dialog), [&] { box->SetItemIndex(1); }}, EnterFileName(dialog, "new.txt")});
    EXPECT_EQ(answer, Path("new.txt") + " in UTF-16");
}

TEST_F(Cookbook, SeveralFilesArePicked) {
    auto& dialog = NewDialog<TKxOpenLiteDialog>();
    std::vector<std::string> files;
    RunDialog(
        [&] {
            files = cookbook::PickSeveral(dialog);
            return true;
        },
        {Await("it is shown", Shown(dialog)), EnterFileName(dialog, "\"one.txt\" \"two.txt\"")});
    EXPECT_THAT(files, UnorderedElementsAre(Path("one.txt"), Path("two.txt")));
}

TEST_F(Cookbook, ATimerClosesTheDialog) {
    auto& dialog = NewDialog<TKxOpenLiteDialog>();
    TTimer timer;
    cookbook::CloseAfter(dialog, timer);
    EXPECT_EQ(timer.Interval(), 30'000u);
    EXPECT_FALSE(RunDialog(dialog, [&] { timer.SetInterval(10); }));
}

TEST_F(Cookbook, MessagesAreSeen) {
    auto& dialog = NewDialog<TKxOpenLiteDialog>();
    std::vector<unsigned> messages;
    cookbook::NoteMessages(dialog, messages);
    Look(dialog, [&] {
        messages.clear();
        SendMessageA(dialog.DlgHandle(), WM_APP + 1, 0, 0);
    });
    EXPECT_THAT(messages, Contains(unsigned{WM_APP + 1}));
}

TEST_F(Cookbook, ExceptionsOfHandlersAreLogged) {
    std::vector<std::string> log;
    const TExceptionEvent before = Application().OnException();
    cookbook::HandleErrors(log);
    auto& dialog = NewDialog<TKxOpenLiteDialog>();
    dialog.SetOnShow([](TObject*) { throw Exception("a fault of the handler"); });
    Look(dialog);
    Application().SetOnException(before);
    EXPECT_THAT(log, ElementsAre("a fault of the handler"));
}

// --- Memory

TEST_F(Cookbook, EachPurposeHasAMemory) {
    auto& drawings = *new TKxOpenDialog(Owner.get());
    auto& tables = *new TKxSaveDialog(Owner.get());
    cookbook::RememberPerPurpose(drawings, tables);
    drawings.SetInitialDir(Top());
    EXPECT_TRUE(RunDialog(drawings, {Await("it is shown", Shown(drawings)), EnterFileName(drawings, "one.txt")}));
    tables.SetInitialDir(Path("inner"));
    EXPECT_TRUE(RunDialog(tables, {Await("it is shown", Shown(tables)), EnterFileName(tables, "new.csv")}));
    for (TOpenDialog* dialog : {static_cast<TOpenDialog*>(&drawings), static_cast<TOpenDialog*>(&tables)}) {
        dialog->SetInitialDir("");
        dialog->SetFileName("");
        SetCurrentDirectoryA(Folder.Path().c_str()); // where neither of them was
    }
    RunDialog(drawings, {Await("the folder of drawings", FolderIs(drawings, Top())), Cancel(drawings)});
    RunDialog(tables, {Await("the folder of tables", FolderIs(tables, Path("inner"))), Cancel(tables)});
    SetCurrentDirectoryA("C:\\"); // the folder goes with the test
}

TEST_F(Cookbook, PlacesAreOffered) {
    auto& dialog = NewDialog<TKxOpenDialog>();
    cookbook::OfferPlaces(dialog, Path("inner"));
    RunDialog(dialog, {{"the bar", [&] { return IsShown(dialog) && dialog.PlacesForm(); },
                        [&] {
                            TToolButton& place = *dialog.PlacesForm()->ToolBar1->Buttons(0);
                            EXPECT_EQ(place.Caption(), "Project");
                            ClickAt(place.ClientToScreen({40, 20}));
                        }},
                       Await("its folder", FolderIs(dialog, Path("inner"))),
                       Cancel(dialog)});
}

TEST_F(Cookbook, RecentFilesAreOffered) {
    auto& dialog = NewDialog<TKxOpenDialogEx>();
    RunDialog(
        [&] {
            cookbook::OpenRecent(dialog);
            return true;
        },
        {{"it is shown", Shown(dialog), [&] { EXPECT_EQ(dialog.Tabs()[1], "Recent files"); }},
         EnterFileName(dialog, "two.txt")});
    auto& next = NewDialog<TKxOpenDialogEx>();
    next.SetRecentRegKey(editorKey);
    ASSERT_EQ(next.RecentFiles().Count(), 1);
    EXPECT_EQ(next.RecentFiles()[0], Path("two.txt"));
}

// --- Other dialogs

TEST_F(Cookbook, AFolderIsChosen) {
    auto& dialog = NewDialog<TKxFolderDialog>();
    std::string answer;
    RunDialog(
        [&] {
            answer = cookbook::AskForFolder(dialog);
            return true;
        },
        {{"the tree", [&] { return IsShown(dialog) && FindTreeItem(TreeOf(dialog), "inner"); },
          [&] { SelectTreeItem(TreeOf(dialog), "inner"); }},
         {"the folder", [&] { return dialog.SelFolder() == Path("inner"); }, [&] { dialog.CloseDialog(mrOk); }}});
    EXPECT_EQ(answer, Path("inner"));
}

TEST_F(Cookbook, FilesAreInTheTree) {
    auto& dialog = *new TKxFolderDialog(Owner.get());
    cookbook::PickFilesInTree(dialog);
    EXPECT_TRUE(dialog.OptionsEx().Contains(ffIncludeFiles));
    Look(dialog, [&] { EXPECT_TRUE(IsWindowVisible(FindDescendant(dialog.DialogWindow(), "Edit"))); });
}

TEST_F(Cookbook, TheColourDialogIsRestricted) {
    auto& dialog = *new TKxColorDialog(Owner.get());
    cookbook::ChooseColour(dialog, *Form);
    RunDialog(dialog, {{"it is shown", Shown(dialog),
                        [&] {
                            constexpr int defineButton = 719;
                            EXPECT_TRUE(IsChild(dialog.DialogWindow(), Form->WindowHandle()));
                            const TRect before = ScreenRectOf(dialog.DialogWindow());
                            SendMessageA(dialog.DialogWindow(), WM_COMMAND, defineButton,
                                         reinterpret_cast<LPARAM>(ItemOf(dialog, defineButton)));
                            EXPECT_EQ(ScreenRectOf(dialog.DialogWindow()), before);
                        }},
                       Cancel(dialog)});
}

TEST_F(Cookbook, ThePrinterIsFollowed) {
    auto& dialog = *new TKxPrintDialog(Owner.get());
    cookbook::WatchPrinter(dialog, *Label);
    constexpr int printers = 1139;
    RunDialog(dialog, {{"it is shown", Shown(dialog), [&] { ChooseInCombo(ItemOf(dialog, printers), 1); }},
                       {"it is told", [&] { return Label->Caption().starts_with("Paper of "); },
                        [&] { EXPECT_EQ(Label->Caption(), "Paper of " + TextOf(ItemOf(dialog, printers))); }},
                       Cancel(dialog)});
}

TEST_F(Cookbook, TheProgramGoesOn) {
    auto& dialog = NewDialog<TKxOpenLiteDialog>();
    TKxModelessDialog runner(nullptr);
    bool isOver = false;
    RunDialog(
        [&] {
            cookbook::ShowBeside(runner, dialog, *Label);
            EXPECT_FALSE(runner.Closed());
            return PumpUntil([&] { return isOver && runner.Closed(); });
        },
        {{"it is shown beside", [&] { return IsShown(dialog) && IsWindowEnabled(Owner->Handle()); },
          [&] { isOver = true; }},
         EnterFileName(dialog, "one.txt")});
    EXPECT_EQ(Label->Caption(), Path("one.txt"));
}

} // namespace
} // namespace kx
