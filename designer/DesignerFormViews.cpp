// SPDX-License-Identifier: MIT
// The three views of a form: as a window, as text, and as the code of its class.

#include "designer/ClassFiles.h"
#include "designer/ClipboardText.h"
#include "designer/DesignerForm.h"
#include "designer/Files.h"
#include "kx/core/FormClass.h"
#include "kx/win/Windows.h"

#include <cstdlib>

namespace kx::designer {

void TDesignerForm::SetView(TView view) {
    if (!Current()) {
        view = FormView;
    }
    if (FView == view || !TakeText()) {
        ViewTabs->SetTabIndex(FView);
        return;
    }
    FView = view;
    UpdateView();
}

void TDesignerForm::ViewTabsChange(TObject*) { SetView(static_cast<TView>(ViewTabs->TabIndex())); }

void TDesignerForm::UpdateView() {
    ViewTabs->SetTabIndex(FView);
    if (FView == TextView_) {
        ShowText();
    } else if (FView == ClassView) {
        ShowClass();
    }
    ClassPanel->SetVisible(FView == ClassView);
    TextMemo->SetReadOnly(FView == ClassView);
    TextMemo->SetVisible(FView != FormView);
    Surface->SetVisible(FView == FormView);
}

/// The form has changed: what is shown of it follows, but for a text that the user is changing.
void TDesignerForm::RefreshView() {
    const HWND memo = TextMemo->Handle();
    const auto top = SendMessageA(memo, EM_GETFIRSTVISIBLELINE, 0, 0);
    if (FView == TextView_ && TextMemo->Text() == FShownText) {
        ShowText();
    } else if (FView == ClassView) {
        ShowClass();
    }
    SendMessageA(memo, EM_LINESCROLL, 0, top - SendMessageA(memo, EM_GETFIRSTVISIBLELINE, 0, 0));
}

void TDesignerForm::ShowText() {
    TextMemo->SetText(FormText(Current()->State()));
    FShownText = TextMemo->Text();
}

/// Makes the form of what the user has changed in the text view. False: the text is wrong and stays, and the line is
/// shown.
bool TDesignerForm::TakeText() {
    const std::string problem = TextProblem();
    if (problem.empty()) {
        return true;
    }
    const size_t at = problem.rfind("line ");
    const int line = at == std::string::npos ? 0 : std::atoi(problem.c_str() + at + 5);
    if (line > 0) {
        const auto start = SendMessageA(TextMemo->Handle(), EM_LINEINDEX, static_cast<WPARAM>(line) - 1, 0);
        const auto length = SendMessageA(TextMemo->Handle(), EM_LINELENGTH, static_cast<WPARAM>(start), 0);
        SendMessageA(TextMemo->Handle(), EM_SETSEL, static_cast<WPARAM>(start), start + length);
        SendMessageA(TextMemo->Handle(), EM_SCROLLCARET, 0, 0);
    }
    Say(problem);
    ViewTabs->SetTabIndex(FView);
    Application().MessageBox(problem, Caption(), MB_OK | MB_ICONERROR);
    return false;
}

/// Takes the text if it has changed. Returns what is wrong with it; empty: nothing.
std::string TDesignerForm::TextProblem() {
    if (FView != TextView_ || !Current() || TextMemo->Text() == FShownText) {
        return {};
    }
    const std::string text = TextMemo->Text();
    try {
        Current()->Replace(text, "Text");
        FShownText = text;
        return {};
    } catch (const std::exception& error) {
        return error.what();
    }
}

/// What is done elsewhere in the window, in the inspector for instance, is done to the form that the text tells of.
void TDesignerForm::TextMemoExit(TObject*) {
    if (!IsDestroying()) {
        if (const std::string problem = TextProblem(); !problem.empty()) {
            Say(problem);
        }
    }
}

// --- The class

TFormClass TDesignerForm::ShownClass() const {
    const std::string& state = Current()->State();
    TStaticMemoryStream stream(state.data(), state.size());
    TFormClass cls = FormClassOf(stream);
    if (const std::string ancestor = Current()->AncestorClass(); !ancestor.empty()) {
        cls.Ancestor = ancestor;
        cls.IsInherited = false;
    }
    return cls;
}

void TDesignerForm::ShowClass() {
    std::string text;
    std::string tells;
    try {
        const TFormClass cls = ShownClass();
        const TClassFiles files(FDocument->FileName(), cls, FDocument->LineBreak());
        const std::string header = NameOfFile(files.HeaderPath());
        const std::string source = NameOfFile(files.SourcePath());
        text = "// " + header + "\n\n" + NewClassHeader(cls) + "\n// " + source + "\n\n" + NewClassSource(cls, header);
        tells = files.IsComplete() ? header + " and " + source + " have all that the form needs."
                                   : "To be written to " + header + " and " + source + ".";
        if (!files.Missing().empty()) {
            tells = "Missing in " + files.Missing().front();
            tells += files.Missing().size() > 1
                         ? ", and " + IntToStr(static_cast<int64_t>(files.Missing().size()) - 1) + " more"
                         : "";
        }
    } catch (const Exception& error) {
        text = "// " + error.Message();
        tells = error.Message();
    }
    TextMemo->SetText(text);
    ClassLabel->SetCaption(tells);
}

void TDesignerForm::CopyClass() {
    if (FView == ClassView) {
        Attempt([this] { SetClipboardText(Handle(), TextMemo->Text()); });
    }
}

/// Writes the code of the class beside the form file. Into files that are there goes what they lack, if the user wants
/// that.
void TDesignerForm::WriteClass() {
    if (!Current() || !TakeText()) {
        return;
    }
    Attempt([this] {
        TClassFiles files(FDocument->FileName(), ShownClass(), FDocument->LineBreak());
        const std::string names = NameOfFile(files.HeaderPath()) + " and " + NameOfFile(files.SourcePath());
        if (files.IsComplete()) {
            Say(names + " have all that the form needs");
            return;
        }
        if (!files.Missing().empty()) {
            constexpr size_t most = 20;
            std::string question = "The class lacks what the form needs:\n\n";
            for (size_t i = 0; i < files.Missing().size() && i < most; ++i) {
                question += files.Missing()[i] + "\n";
            }
            question += files.Missing().size() > most ? "...\n" : "";
            question += "\nPut it in? Everything else in the files stays as it is.";
            if (Application().MessageBox(question, Caption(), MB_YESNO | MB_ICONQUESTION) != IDYES) {
                return;
            }
        }
        files.Write();
        if (FView == ClassView) {
            ShowClass();
        }
        Say("Wrote " + names);
    });
}

} // namespace kx::designer
