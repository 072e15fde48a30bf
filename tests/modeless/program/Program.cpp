// SPDX-License-Identifier: MIT
// A program that ends while a dialog is shown.

#include "kx/modeless/KxModelessDlg.h"
#include "kx/opensave/KxOpenDlg.h"
#include "kx/win/Timers.h"
#include "kx/win/Windows.h"

#include <cstdlib>
#include <string_view>

// A program as applications write it, with a main form that owns a dialog and its runner. It ends, in the way that its
// argument names, while the dialog is open. Its exit code is 7 when all went well.

namespace kx {

namespace {

constexpr int AllWell = 7;
constexpr int WrongEnd = 3;
constexpr int ClosedEarly = 4;

class TDockedForm : public TForm {
    KX_CLASS()
    using TForm::TForm;
};

const TClass& TDockedForm::StaticClass() {
    static const TClassBuilder<TDockedForm> cls("TDockedForm", TForm::StaticClass());
    return cls.Class();
}

int Ended = 0; ///< How often OnDialogClosed has fired.

class TProgramForm : public TForm {
public:
    explicit TProgramForm(TComponent* owner)
        : TForm(owner), Dialog(new TKxOpenDialog(this)), Runner(new TKxModelessDialog(this)) {
        Dialog->CustDlgParams().SetBottomFormName("DockedForm");
        Dialog->PlacesBar().SetNative(false);
        Runner->SetDialog(Dialog);
        Runner->SetOnDialogClosed([](TObject*, bool) { ++Ended; });
        SetOnShow([this](TObject*) { Runner->Show(); });
    }

    TKxOpenDialog* Dialog;
    TKxModelessDialog* Runner;
};

/// The dialog is shown.
void End(std::string_view how, TProgramForm& form) {
    if (form.Runner->Closed() || Ended != 0) {
        std::_Exit(ClosedEarly);
    }
    HWND dialog = form.Dialog->DlgHandle();
    if (how == "close") {
        PostMessageA(form.Handle(), WM_CLOSE, 0, 0);
    } else if (how == "handler") {
        form.Dialog->SetOnUpLevelNavigating([](TObject*, bool&) { Application().Terminate(); });
        PostMessageA(dialog, WM_COMMAND, 40961, 0);
    } else if (how == "box") {
        form.Dialog->SetOnCanClose([](TObject*, bool& canClose) {
            canClose = false;
            Application().Terminate();
            ShowMessage("Not now");
        });
        form.Dialog->SetFilenameText("any.txt");
        PostMessageA(dialog, WM_COMMAND, IDOK, 0);
    } else {
        if (how == "unowned") {
            form.RemoveComponent(form.Dialog);
            form.RemoveComponent(form.Runner);
        }
        Application().Terminate();
    }
}

int Run(std::string_view how) {
    // Called behind the application's own end.
    std::atexit([] {
        if (Ended != 1) {
            std::_Exit(WrongEnd);
        }
    });
    TProgramForm* form = nullptr;
    TDockedForm* docked = nullptr;
    Application().CreateForm(&form);
    Application().CreateForm(&docked);
    TTimer timer;
    timer.SetInterval(20);
    timer.SetOnTimer([&](TObject*) {
        HWND dialog = form->Dialog->DlgHandle();
        if (dialog && IsWindowVisible(dialog)) {
            timer.SetEnabled(false);
            End(how, *form);
        }
    });
    Application().Run();
    const bool isClosed = form->Runner->Closed() && !form->Dialog->DlgHandle() && !docked->IsDocked();
    return Ended == 1 && isClosed ? AllWell : WrongEnd;
}

} // namespace

} // namespace kx

int main(int argc, char** argv) { return kx::Run(argc > 1 ? argv[1] : ""); }
