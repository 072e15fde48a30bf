// SPDX-License-Identifier: MIT
// Texts of any script and length in the open dialog and in the forms docked in it.

#include "OpenDialogTest.h"

#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/TypingForm.h"

namespace kx {
namespace {

using namespace test;

// --- What the user types into a docked form

class OpenDialogTyping : public TOpenDialogTest, public testing::WithParamInterface<TField> {};

TEST_P(OpenDialogTyping, ArrivesWholeInADockedForm) {
    const TField field = GetParam();
    TTypingForm form;
    std::vector<TStep> steps;
    for (const TScript& script : AllScripts) {
        const std::wstring text = script.Text;
        steps.push_back(Perform(std::string("enter for ") + script.Name, [&form, field] { form.Enter(field); }));
        steps.push_back({"the field has the focus", [&form, field] { return form.IsReady(field); },
                         [text] { TypeCharacters(text); }});
        steps.push_back({"all is typed", [&form, field, text] { return form.Typed(field).size() >= text.size(); },
                         [&form, field, text, name = script.Name] {
                             EXPECT_EQ(form.Typed(field), text) << name;
                             if (TTypingForm::TellsKeys(field)) {
                                 EXPECT_EQ(form.Keys, CharactersOf(text)) << name;
                             }
                             Screenshot(std::string("docked_") + NameOf(field) + "_" + name);
                             form.Accept(field);
                         }});
        steps.push_back(
            Await("the program has it", [&form, field, text] { return form.Kept(field) == FromWide(text); }));
    }
    steps.push_back(test::Cancel(Dialog));
    Dialog.CustDlgParams().SetBottomForm(&form);
    RunDialog(Dialog, steps);
}

INSTANTIATE_TEST_SUITE_P(Fields, OpenDialogTyping, testing::ValuesIn(AllFields),
                         [](const auto& field) { return NameOf(field.param); });

TEST_F(TOpenDialogTest, AcceleratorsBeyondAsciiPressButtonsOfADockedForm) {
    TFormPtr form(NewForm<TForm>(nullptr));
    form->SetBounds(0, 0, 200, 60);
    std::string log;
    struct TCaption {
        const char* Text;
        wchar_t Key;
    };
    std::vector<TCaption> captions;
    for (const TCaption& caption :
         {TCaption{"&Öffnen", L'\u00F6'}, {"&Ändern", L'\u00E4'}, {"&Я", L'\u044F'}, {"&Ω", L'\u03C9'}}) {
        if (CodePageHolds(caption.Text)) {
            captions.push_back(caption);
        }
    }
    ASSERT_GE(captions.size(), 2u);
    for (const TCaption& caption : captions) {
        auto* const button = new TButton(form.get());
        button->SetParent(form.get());
        button->SetBounds(static_cast<int>(&caption - captions.data()) * 45, 0, 40, 24);
        button->SetCaption(FromUtf8(caption.Text));
        button->SetOnClick([&log, caption](TObject*) { log += caption.Text; });
    }
    Dialog.CustDlgParams().SetBottomForm(form.get());
    std::string wanted;
    Look(Dialog, [&] {
        for (auto i = captions.rbegin(); i != captions.rend(); ++i) {
            wanted += i->Text;
            SendMessageW(form->Handle(), WM_SYSCHAR, i->Key, 0);
        }
    });
    EXPECT_EQ(log, wanted);
}

// --- Names and paths

class OpenDialogLongNames : public TOpenDialogTest {
protected:
    /// A folder whose path has more bytes than the system allows a path characters: two times a hundred letters.
    std::string LongFolder() const {
        std::string letters;
        for (int i = 0; i < 100; ++i) {
            letters += "Ж";
        }
        return CodePageHolds(letters) ? letters + "\\" + letters : "plain\\plain"; // there it is as long as any
    }
};

TEST_F(OpenDialogLongNames, OfFoldersAreShownGivenAndTaken) {
    const std::string name = LongFolder();
    const std::string folder = Folder.AddFolder(name);
    const std::string file = Folder.AddFile(name + "\\in it.txt");
    EXPECT_EQ(GetPathFromPIDL(CreatePIDLFromPath(folder).get()), folder);
    Dialog.SetInitialDir(folder);
    Look(Dialog, [&] {
        EXPECT_EQ(Dialog.SelectedFolder(), folder);
        EXPECT_EQ(GetPathFromPIDL(Dialog.SelectedFolderPidl()), folder);
        EXPECT_THAT(ListedNames(), ElementsAre("in it.txt"));
    });
    Dialog.SetInitialDir(Folder.Path());
    EXPECT_TRUE(RunDialog(
        Dialog, {Perform("go there", [&] { Dialog.SetSelectedFolder(folder); }),
                 {"it is there", FolderIs(Dialog, folder), [&] { EXPECT_EQ(Dialog.SelectedFolder(), folder); }},
                 EnterFileName(Dialog, "in it.txt")}));
    EXPECT_EQ(Dialog.FileName(), file);
}

TEST_F(OpenDialogLongNames, OfSixHundredCharactersOutliveAChangeOfTheFolder) {
    std::string text;
    while (text.size() < 600) {
        text += FromUtf8("\"Größe ") + IntToStr(static_cast<int64_t>(text.size())) + ".txt\" ";
    }
    const std::string folder = Folder.AddFolder("other");
    RunDialog(Dialog, {Perform("go to the other folder",
                               [&] {
                                   SetWindowTextW(FileNameEditOf(Dialog.DlgHandle()), ToWide(text).c_str());
                                   EXPECT_EQ(Dialog.FilenameText(), text);
                                   Dialog.SetSelectedFolder(folder);
                               }),
                       {"it is there", FolderIs(Dialog, folder), [&] { EXPECT_EQ(Dialog.FilenameText(), text); }},
                       test::Cancel(Dialog)});
}

} // namespace
} // namespace kx
