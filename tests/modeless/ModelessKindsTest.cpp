// SPDX-License-Identifier: MIT
// Every kind of dialog shown without blocking.

#include "DialogKinds.h"
#include "ModelessTest.h"

#include "tests/support/FormFiles.h"

// What holds for every dialog of the library, through ICommonDialog alone.

namespace kx {
namespace {

using namespace test;

class ModelessKinds : public TModelessTest, public testing::WithParamInterface<TDialogKind> {
protected:
    ModelessKinds() : Component(GetParam().Make(Main, Folder)), Dialog(dynamic_cast<ICommonDialog*>(Component)) {
        Runner->SetDialog(Dialog);
    }
    TStep CloseBy(TModalResult result) {
        return {"the dialog is shown", Shown(*Component), [this, result] { Dialog->CloseDialog(result); }};
    }

    TCommonDialog* Component;
    ICommonDialog* Dialog;
};

TEST_P(ModelessKinds, ShowWithoutBlockingAndTellTheirResult) {
    TNoteForm* note = nullptr;
    Application().CreateForm(&note);
    const TFormPtr owned(note);
    Dialog->GetCustDlgParams().SetBottomFormName("NoteForm");
    Show(*Component,
         [&] {
             HWND window = Dialog->GetCommonDialogHandle();
             EXPECT_EQ(window, Component->DialogWindow());
             EXPECT_NE(ThreadOf(window), MainThread);
             EXPECT_EQ(GetParent(note->WindowHandle()), window);
             EXPECT_TRUE(IsWindowEnabled(Main->Handle()));
             SetWindowPos(window, nullptr, 330, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
             Click(Main->Button->Handle());
         },
         {{"the button was clicked", [&] { return Main->Clicks == 1; }, [&] { Runner->Close(); }}, CloseBy(mrCancel)});
    Show({CloseBy(mrOk)});
    EXPECT_THAT(Results, ElementsAre(false, true));
    EXPECT_FALSE(note->IsDocked());
    EXPECT_EQ(Dialog->GetCommonDialogHandle(), nullptr);
}

TEST_P(ModelessKinds, MayBeFreedWhileTheyAreShown) {
    Runner->Show();
    EXPECT_TRUE(PumpUntil(Shown(*Component)));
    Component->Free();
    EXPECT_TRUE(PumpUntil([&] { return Runner->Closed(); }));
    EXPECT_EQ(ActiveDialog(), nullptr);
    EXPECT_THAT(Results, ElementsAre(false));
}

TEST_P(ModelessKinds, AreNamedByAFormFile) {
    RegisterClass(TKxModelessDialog::StaticClass());
    RegisterClass(Component->ClassType());
    const std::string text = "object Form: TForm\n"
                             "  object Runner: TKxModelessDialog\n"
                             "    Dialog = TheDialog\n"
                             "    AutoClosePopups = False\n"
                             "  end\n"
                             "  object TheDialog: " +
                             Component->ClassName() + "\n  end\nend\n";
    TForm form;
    ReadFormOver(form, text);
    const auto* const runner = dynamic_cast<TKxModelessDialog*>(form.FindComponent("Runner"));
    ASSERT_NE(runner, nullptr);
    EXPECT_EQ(dynamic_cast<const TComponent*>(runner->Dialog()), form.FindComponent("TheDialog"));
    EXPECT_FALSE(runner->AutoClosePopups());
}

INSTANTIATE_TEST_SUITE_P(All, ModelessKinds, testing::ValuesIn(DialogKinds),
                         [](const testing::TestParamInfo<TDialogKind>& param) {
                             return std::string(param.param.Name);
                         });

} // namespace
} // namespace kx
