// SPDX-License-Identifier: MIT
// Fixture of dialogs that do not block.

#include "ModelessTest.h"

namespace kx::test {

const TClass& TNoteForm::StaticClass() {
    static const TClassBuilder<TNoteForm> cls("TNoteForm", TForm::StaticClass());
    return cls.Class();
}

TNoteForm::TNoteForm(TComponent* owner) : TForm(owner), Edit(new TEdit(this)) {
    SetBounds(0, 0, 160, 80);
    SetColor(clCream);
    Edit->SetParent(this);
    Edit->SetBounds(10, 20, 120, 21);
}

TMainForm::TMainForm(TComponent* owner) : TForm(owner), Button(new TButton(this)), Edit(new TEdit(this)) {
    SetCaption("Main");
    SetBounds(10, 10, 300, 220);
    Button->SetParent(this);
    Button->SetBounds(20, 20, 120, 25);
    Button->SetCaption("Press me");
    Button->SetOnClick([this](TObject*) {
        ++Clicks;
        ClickThreads.push_back(GetCurrentThreadId());
    });
    Edit->SetParent(this);
    Edit->SetBounds(20, 60, 200, 21);
}

TModelessTest::TModelessTest() : TDialogTest(NewForm<TMainForm>(nullptr)), Runner(new TKxModelessDialog(Main)) {
    Folder.AddFile("one.txt");
    Folder.AddFile("two.txt");
    Folder.AddFile("inner\\deep.txt");
    Runner->SetOnDialogClosed([this](TObject* sender, bool result) {
        EXPECT_EQ(sender, Runner);
        EXPECT_EQ(GetCurrentThreadId(), MainThread);
        Results.push_back(result);
    });
}

void TModelessTest::Show(std::vector<TStep> steps) {
    const size_t before = Results.size();
    EXPECT_TRUE(RunDialog(
        [&] {
            Runner->Show();
            return PumpUntil([&] { return Results.size() > before; }, 60);
        },
        std::move(steps)));
}

void TModelessTest::Show(const TCommonDialog& dialog, TAction act, std::vector<TStep> steps) {
    steps.insert(steps.begin(), {"the dialog is shown", Shown(dialog), std::move(act)});
    Show(std::move(steps));
}

void TModelessTest::ShowAndCancel(TOpenDialog& dialog, const TAction& look) { Show(dialog, look, {Cancel(dialog)}); }

TStep MoveAside(const TCommonDialog& dialog) {
    return {"the dialog is shown", Shown(dialog), [&dialog] {
                SetWindowPos(dialog.DialogWindow(), nullptr, 330, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
            }};
}

} // namespace kx::test
