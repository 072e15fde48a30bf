// SPDX-License-Identifier: MIT
// The program's dialogs.

#include "examples/win32-host/HostDialogs.h"

#include "examples/win32-host/Host.h"
#include "examples/win32-host/PlainPanel.h"
#include "kx/modeless/KxModelessDlg.h"
#include "kx/opensave/KxOpenDlg.h"
#include "kx/ui/forms/ForeignControl.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <memory>

using namespace kx;

namespace {

/// A form of the library: tells of the file that is selected, and takes a remark.
class TPreviewForm : public TForm {
public:
    explicit TPreviewForm(TComponent* owner)
        : TForm(owner), NameLabel(new TLabel(this)), RemarkLabel(new TLabel(this)), Remark(new TEdit(this)) {
        SetBorderStyle(bsNone);
        SetBounds(0, 0, 160, 200);
        NameLabel->SetBounds(8, 8, 144, 60);
        RemarkLabel->SetBounds(8, 80, 144, 16);
        RemarkLabel->SetCaption("&Remark:");
        RemarkLabel->SetFocusControl(Remark);
        Remark->SetBounds(8, 100, 144, 24);
        for (TControl* control :
             {static_cast<TControl*>(NameLabel), static_cast<TControl*>(RemarkLabel), static_cast<TControl*>(Remark)}) {
            control->SetParent(this);
        }
    }

    TLabel* NameLabel;
    TLabel* RemarkLabel;
    TEdit* Remark;
};

/// A form that holds nothing but a window of plain controls.
class TPanelForm : public TForm {
public:
    explicit TPanelForm(TComponent* owner) : TForm(owner), Panel(new TForeignControl(this)) {
        SetBorderStyle(bsNone);
        SetBounds(0, 0, 300, 40);
        Panel->SetOnCreateForeign([](TObject*, HWND parent, HWND& window) { window = CreatePlainPanel(parent); });
        Panel->SetAlign(alClient);
        Panel->SetParent(this);
    }

    TForeignControl* Panel;
};

/// A dialog with its forms. The dialog goes before them.
struct TOpenParts {
    explicit TOpenParts(HWND owner)
        : Preview(NewForm<TPreviewForm>(nullptr)), Panel(NewForm<TPanelForm>(nullptr)), Dialog(nullptr) {
        Dialog.SetOwnerWindow(owner);
        Dialog.CustDlgParams().SetPosition(dpOwnerCenter);
        Dialog.CustDlgParams().SetRightForm(Preview.get());
        Dialog.CustDlgParams().SetBottomForm(Panel.get());
        Dialog.PlacesBar().SetNative(false);
        TKxPlace& place = *Dialog.PlacesBar().Places().Add();
        place.SetPlaceName("Temporary");
        place.SetPlacePath("C:\\windows\\temp");
        Dialog.SetOnSelectionChange([this](TObject*) { Preview->NameLabel->SetCaption(Dialog.SelectedFiles()); });
        Dialog.SetOnCanClose([this](TObject*, bool&) {
            if (IsPanelReadOnly(Panel->Panel->ForeignWindow())) {
                throw Exception("Files that are read only cannot be opened here");
            }
        });
    }

    std::unique_ptr<TPreviewForm, TFreeDeleter> Preview;
    std::unique_ptr<TPanelForm, TFreeDeleter> Panel;
    TKxOpenDialog Dialog;
};

/// What lives as long as the main window.
struct TBrowseParts {
    explicit TBrowseParts(HWND owner) : Open(owner), Runner(nullptr) {
        Runner.SetDialog(&Open.Dialog);
        Runner.SetOnDialogClosed([this, owner](TObject*, bool chosen) {
            ShowStatus(owner, chosen ? Open.Dialog.FileName().c_str() : "Nothing was chosen");
        });
    }

    TOpenParts Open;
    TKxModelessDialog Runner;
};

std::unique_ptr<TBrowseParts> Browse;

/// Runs `f`; the program is told of what it throws.
template <class F> void Reported(F&& f) noexcept {
    try {
        f();
    } catch (...) {
        Application().HandleException(nullptr);
    }
}

} // namespace

void StartDialogs(HWND window) {
    Application().SetOnException([window](TObject*, const std::exception& e) { ShowStatus(window, e.what()); });
}

void EndDialogs() {
    Reported([] { Browse.reset(); });
    Application().SetOnException({});
}

bool OfferToDialogs(MSG& message) { return Application().PreTranslateMessage(message); }

void ShowOpenDialog(HWND window) {
    Reported([=] {
        TOpenParts parts(window);
        if (parts.Dialog.Execute()) {
            ShowStatus(window, parts.Dialog.FileName().c_str());
        }
    });
}

void ShowBrowseDialog(HWND window) {
    Reported([=] {
        if (!Browse) {
            Browse = std::make_unique<TBrowseParts>(window);
        }
        Browse->Runner.Show();
    });
}
