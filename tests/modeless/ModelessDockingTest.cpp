// SPDX-License-Identifier: MIT
// The application's forms in a dialog of another thread.

#include "ModelessTest.h"

#include <stdexcept>

namespace kx {
namespace {

using namespace test;

class ModelessDocking : public TModelessTest {
protected:
    /// A form that the application owns, and finds by its name.
    TNoteForm& NewNoteForm() {
        auto* form = new TNoteForm(&Application());
        FForms.emplace_back(form);
        return *form;
    }

private:
    std::vector<TFormPtr> FForms;
};

void ExpectDocked(const TForm& form, HWND dialog, DWORD thread) {
    EXPECT_EQ(GetParent(form.WindowHandle()), dialog);
    EXPECT_TRUE(IsWindowVisible(form.WindowHandle()));
    EXPECT_EQ(ThreadOf(form.WindowHandle()), thread);
    const TRect r = RectIn(dialog, form.WindowHandle());
    EXPECT_EQ(r.Right - r.Left, form.Width());
    EXPECT_EQ(r.Bottom - r.Top, form.Height());
}

TEST_F(ModelessDocking, FormsAreFoundByNameAndStayTheApplications) {
    TNoteForm& form = NewNoteForm();
    std::vector<DWORD> threads;
    form.SetOnShow([&](TObject*) { threads.push_back(GetCurrentThreadId()); });
    form.SetOnHide([&](TObject*) { threads.push_back(GetCurrentThreadId()); });
    form.SetOnCreate([&](TObject*) { threads.push_back(GetCurrentThreadId()); });
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetRightFormName("noteform");
    HWND window = nullptr;
    ShowAndCancel(dialog, [&] {
        EXPECT_EQ(dialog.CustDlgParams().RightForm(), &form);
        EXPECT_EQ(dialog.CustDlgParams().RightFormName(), "");
        window = form.WindowHandle();
        ExpectDocked(form, dialog.DlgHandle(), MainThread);
        EXPECT_EQ(dialog.CustDlgParams().IncX(), 160);
        Screenshot("modeless_docked", dialog.DlgHandle());
    });
    EXPECT_EQ(form.WindowHandle(), window);
    EXPECT_TRUE(IsWindow(window));
    EXPECT_FALSE(form.IsDocked());
    EXPECT_FALSE(form.Visible());
    EXPECT_THAT(threads, testing::SizeIs(testing::Ge(3u)));
    EXPECT_THAT(threads, Each(MainThread));
}

TEST_F(ModelessDocking, AFormAtEachSideAndInPlaceOfTheList) {
    auto& dialog = NewDialog<TKxOpenDialog>();
    std::vector<TNoteForm*> forms;
    for (int i = 0; i < 5; ++i) {
        forms.push_back(&NewNoteForm());
    }
    TKxCustDlgParams& params = dialog.CustDlgParams();
    params.SetLeftForm(forms[0]);
    params.SetTopForm(forms[1]);
    params.SetRightForm(forms[2]);
    params.SetBottomForm(forms[3]);
    params.SetCustForm(forms[4]);
    dialog.SetSelectionType(stCustom);
    dialog.PlacesBar().SetNative(false);
    for (int round = 0; round < 2; ++round) {
        Show({{"the dialog is shown",
               [&] { return dialog.DlgHandle() && IsWindowVisible(dialog.DlgHandle()) && forms[4]->IsDocked(); },
               [&] {
                   for (const TNoteForm* form : forms) {
                       ExpectDocked(*form, dialog.DlgHandle(), MainThread);
                   }
                   Screenshot("modeless_all_forms", dialog.DlgHandle());
               }},
              Cancel(dialog)});
        for (const TNoteForm* form : forms) {
            EXPECT_FALSE(form->IsDocked());
            EXPECT_TRUE(IsWindow(form->WindowHandle()));
        }
    }
}

TEST_F(ModelessDocking, FormsAreFoundForAllPlacesInTheirOrder) {
    TNoteForm& form = NewNoteForm();
    TKxOpenDialog dialog;
    TKxCustDlgParams& params = dialog.CustDlgParams();
    params.SetCustFormName("NoteForm");
    params.SetBottomFormName("NoteForm");
    params.SetTopFormName("NOTEFORM");
    params.SetLeftFormName("NoteForm");
    params.SetRightFormName("NoSuchForm");
    TKxModelessDialog::CreateDockedForms(dialog);
    EXPECT_EQ(params.CustomForm(), &form);
    EXPECT_EQ(params.BottomForm(), &form);
    EXPECT_EQ(params.TopForm(), &form);
    EXPECT_EQ(params.LeftForm(), &form);
    EXPECT_EQ(params.RightForm(), nullptr);
    EXPECT_EQ(params.CustFormName() + params.BottomFormName() + params.TopFormName() + params.LeftFormName(), "");
    EXPECT_EQ(params.RightFormName(), "NoSuchForm"); // may come to be
    EXPECT_EQ(form.ParentWindow(), Application().Handle());
    EXPECT_EQ(GetParent(form.WindowHandle()), Application().Handle());
    form.SetParentWindow(nullptr);
}

TEST_F(ModelessDocking, FormsFollowTheDialogsSize) {
    TNoteForm& form = NewNoteForm();
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetBottomForm(&form);
    ShowAndCancel(dialog, [&] {
        const TRect outer = ScreenRectOf(dialog.DlgHandle());
        const int before = form.Width();
        SetWindowPos(dialog.DlgHandle(), nullptr, 0, 0, outer.Right - outer.Left + 60, outer.Bottom - outer.Top + 40,
                     SWP_NOMOVE | SWP_NOZORDER);
        EXPECT_EQ(form.Width(), before + 60);
    });
}

TEST_F(ModelessDocking, ADockedFormTakesTheKeyboardAndTheMouse) {
    TNoteForm& form = NewNoteForm();
    std::vector<DWORD> threads;
    form.Edit->SetOnChange([&](TObject*) { threads.push_back(GetCurrentThreadId()); });
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetTopForm(&form);
    Show({MoveAside(dialog),
          {"it is aside", {}, [&] { Click(form.Edit->WindowHandle()); }},
          {"the edit has the focus", [&] { return form.Edit->Focused(); }, [] { TypeText("docked"); }},
          {"the text is there", [&] { return form.Edit->Text() == "docked"; }, [&] { Click(dialog.EditHandle()); }},
          {"the focus has left the form", [&] { return !form.Edit->Focused(); }, [] { TypeText("one.txt"); }},
          {"the name is there", [&] { return dialog.FilenameText() == "one.txt"; }, [] { PressKey(VK_RETURN); }}});
    EXPECT_THAT(threads, Each(MainThread));
    EXPECT_THAT(Results, ElementsAre(true));
    EXPECT_EQ(dialog.FileName(), Folder.Path("one.txt"));
}

TEST_F(ModelessDocking, TheDialogIsCentredOverAFormOfTheApplication) {
    auto& dialog = NewDialog();
    Main->SetBounds(400, 300, 500, 400);
    dialog.CustDlgParams().SetPosition(dpOwnerCenter);
    ShowAndCancel(dialog, [&] {
        const TPoint at = CenterOf(dialog.DlgHandle());
        const TPoint main = CenterOf(Main->Handle());
        EXPECT_NEAR(at.X, main.X, 1);
        EXPECT_NEAR(at.Y, main.Y, 1);
    });
}

TEST_F(ModelessDocking, AFormFreedWhileItIsDockedIsGone) {
    TFormPtr form(new TNoteForm);
    TNoteForm& other = NewNoteForm();
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetRightForm(form.get());
    dialog.CustDlgParams().SetBottomForm(&other);
    ShowAndCancel(dialog, [&] {
        form.reset();
        EXPECT_EQ(dialog.CustDlgParams().RightForm(), nullptr);
        const TRect outer = ScreenRectOf(dialog.DlgHandle());
        SetWindowPos(dialog.DlgHandle(), nullptr, 0, 0, outer.Right - outer.Left + 30, outer.Bottom - outer.Top + 30,
                     SWP_NOMOVE | SWP_NOZORDER);
    });
    EXPECT_FALSE(other.IsDocked());
    ShowAndCancel(dialog);
}

TEST_F(ModelessDocking, AFormThatFailsToShowCostsTheDialogNothing) {
    TNoteForm& form = NewNoteForm();
    form.SetOnShow([](TObject*) { throw std::runtime_error("form"); });
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetRightForm(&form);
    ShowAndCancel(dialog, [&] { ExpectDocked(form, dialog.DlgHandle(), MainThread); });
    EXPECT_THAT(TakeExceptions(), ElementsAre("form"));
}

TEST_F(ModelessDocking, FormsAreDockedAgainInABlockingDialog) {
    TNoteForm& form = NewNoteForm();
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetLeftForm(&form);
    ShowAndCancel(dialog);
    EXPECT_FALSE(Look(dialog, [&] { ExpectDocked(form, dialog.DlgHandle(), MainThread); }));
}

TEST_F(ModelessDocking, AFormThatTheDialogDidNotComeToDockIsAWindowAgainThatNobodySees) {
    TNoteForm& form = NewNoteForm();
    auto& dialog = NewDialog();
    Look(dialog, [&] {
        form.Show();
        dialog.CustDlgParams().SetLeftForm(&form);
        Show({});
        EXPECT_FALSE(form.IsDocked());
        EXPECT_FALSE(form.Visible());
        dialog.CustDlgParams().SetLeftForm(nullptr);
    });
    EXPECT_THAT(Results, ElementsAre(false));
}

TEST_F(ModelessDocking, AFormThatHasAnotherPlaceByTheEndKeepsIt) {
    TNoteForm& form = NewNoteForm();
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetLeftForm(&form);
    dialog.SetOnClose([&](TObject*) { TThread::Synchronize([&] { form.Show(); }); });
    ShowAndCancel(dialog);
    EXPECT_FALSE(form.IsDocked());
    EXPECT_TRUE(form.Visible());
}

TEST_F(ModelessDocking, ThePlacesBarIsTheDialogs) {
    auto& dialog = NewDialog<TKxOpenDialog>();
    dialog.PlacesBar().SetNative(false);
    dialog.PlacesBar().Places().Add()->SetPlacePath(Folder.Path("inner"));
    const int owned = Application().ComponentCount();
    Show({{"the bar is shown", [&] { return Shown(dialog)() && dialog.PlacesForm(); },
           [&] {
               EXPECT_EQ(ThreadOf(dialog.PlacesForm()->WindowHandle()), ThreadOf(dialog.DlgHandle()));
               Screenshot("modeless_places", dialog.DlgHandle());
               SetWindowPos(dialog.DlgHandle(), nullptr, 330, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
               const TRect bar = ScreenRectOf(dialog.PlacesForm()->ToolBar1->WindowHandle());
               ClickAt({(bar.Left + bar.Right) / 2, bar.Top + 20});
           }},
          {"the place is shown", FolderIs(dialog, Folder.Path("inner")), [&] {
               // As from the keyboard: the dialog's thread takes it when it is done with the place.
               HWND edit = FileNameEditOf(dialog.DlgHandle());
               for (const char c : std::string("deep.txt")) {
                   PostMessageA(edit, WM_CHAR, static_cast<WPARAM>(c), 0);
               }
               PostMessageA(FindChild(dialog.DlgHandle(), "Button", IDOK), BM_CLICK, 0, 0);
           }}});
    EXPECT_EQ(dialog.FileName(), Folder.Path("inner\\deep.txt"));
    EXPECT_EQ(Application().ComponentCount(), owned);
}

} // namespace
} // namespace kx
