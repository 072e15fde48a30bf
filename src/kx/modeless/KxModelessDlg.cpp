// SPDX-License-Identifier: MIT
// Shows a dialog in a thread of its own.

#include "kx/modeless/KxModelessDlg.h"

#include "kx/core/Barrier.h"
#include "kx/win/Apartment.h"
#include "kx/win/System.h"
#include "kx/win/Windows.h"

namespace kx {

namespace {

/// The shell's dialogs, and what they load, need OLE in their thread. Wine is the exception: with OLE its shell view
/// registers for drag and drop. Where apartments come and go, the system's server for calls between them fails to start
/// now and then, and the dialog waits for ever. So under Wine the thread gets an apartment without drag and drop.
TApartmentKind DialogApartment() { return System().Wine ? TApartmentKind::MultiThreaded : TApartmentKind::Ole; }

TComponent* ComponentOf(ICommonDialog* dialog) { return dynamic_cast<TComponent*>(dialog); }

} // namespace

// --- TKxModelessThread

const TClass& TKxModelessThread::StaticClass() {
    static const TClassBuilder<TKxModelessThread> cls("TKxModelessThread", TThread::StaticClass());
    return cls.Class();
}

TKxModelessThread::TKxModelessThread() : TThread(true) {}

ICommonDialog* TKxModelessThread::Dialog() const { return FHold && !FHold->Dialog() ? nullptr : FDialog; }

void TKxModelessThread::ComponentGone(const TComponent* component) {
    if (FComponent == component) {
        FDialog = nullptr;
    }
}

void TKxModelessThread::SetDialog(ICommonDialog* value) {
    ReleaseDialog();
    FDialog = value;
    FComponent = ComponentOf(value);
    if (auto* const dialog = dynamic_cast<TCommonDialog*>(value)) {
        FHold = std::make_unique<TDialogHold>(*dialog, ThreadID());
    }
    if (value) {
        FShowBefore = value->GetCommonDialogInternalShowEvent();
        value->SetCommonDialogInternalShowEvent({this, &TKxModelessThread::OnInitDialog1, "OnInitDialog1"});
    }
}

/// From now on the dialog may be executed in other ways again. Forms that it has not docked become windows again.
void TKxModelessThread::ReleaseDialog() {
    for (TComponentRef<TForm>& form : FForms) {
        if (form && form->ParentWindow() == Application().Handle()) {
            form->Hide();
        }
        if (form && form->ParentWindow() == Application().Handle()) {
            form->SetParentWindow(nullptr);
        }
    }
    FForms.clear();
    if (ICommonDialog* const dialog = Dialog()) {
        dialog->SetCommonDialogInternalShowEvent(FShowBefore);
    }
    FDialog = nullptr;
    FShowBefore = {};
    FHold.reset(); // the last step: whoever frees the dialog has waited for this
}

void TKxModelessThread::Execute() {
    const TApartment apartment(DialogApartment());
    ICommonDialog* dialog = nullptr;
    Synchronize([&] {
        dialog = Dialog();
        if (!dialog) {
            throw EInvalidOperation("There is no dialog to show");
        }
        const auto wanted = [this] { return Dialog() && (!FHold || FHold->IsWanted()); };
        FForms = TKxModelessDialog::CreateDockedForms(*dialog, wanted);
        if (!wanted()) {
            throw EAbort("The dialog has been freed");
        }
    });
    FDialogResult = dialog->Execute();
}

void TKxModelessThread::DoTerminate() {
    Synchronize([this] { ReleaseDialog(); });
    TThread::DoTerminate();
}

void TKxModelessThread::TerminatedSet() {
    Synchronize([this] {
        if (FHold) {
            FHold->Cancel();
        }
    });
}

void TKxModelessThread::OnInitDialog1(TObject*) { Synchronize(EnableTaskWindows); }

/// The framework and the system have disabled the application's windows, as for any dialog: this one does not block it.
void TKxModelessThread::EnableTaskWindows() { EnumThreadWindows(GetCurrentThreadId(), DoEnableWindow, 0); }

BOOL CALLBACK TKxModelessThread::DoEnableWindow(HWND window, LPARAM) noexcept {
    if (!IsWindowEnabled(window)) {
        EnableWindow(window, TRUE);
    }
    return TRUE;
}

// --- TKxModelessDialog

const TClass& TKxModelessDialog::StaticClass() {
    using T = TKxModelessDialog;
    static const TClassBuilder<T> cls("TKxModelessDialog", TComponent::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Interface("Dialog", &T::Dialog, &T::SetDialog);
        c.Property("OnDialogClosed", &T::OnDialogClosed, &T::SetOnDialogClosed);
        c.Property("AutoClosePopups", &T::AutoClosePopups, &T::SetAutoClosePopups).Default = true;
    });
    return cls.Class();
}

TKxModelessDialog::TKxModelessDialog(TComponent* owner) : TComponent(owner) {}

TKxModelessDialog::~TKxModelessDialog() {
    EndLife();
    Guarded([this] {
        TThread::Synchronize([this] {
            if (!Closed()) {
                Close();
            }
            if (FThread) {
                FThread->SetOnTerminate({});
                FThread->SetModelessDialog(nullptr);
            }
        });
    });
}

void TKxModelessDialog::SetDialog(ICommonDialog* value) {
    if (value == FDialog) {
        return;
    }
    if (FComponent) {
        RemoveFreeNotification(FComponent);
    }
    FDialog = value;
    FComponent = ComponentOf(value);
    if (FComponent) {
        FreeNotification(FComponent);
    }
}

void TKxModelessDialog::Notification(TComponent* component, TOperation operation) {
    if (operation == opRemove) {
        // A handler of the dialog, in its thread, may have freed it.
        Guarded([&] {
            TThread::Synchronize([&] {
                if (component == FComponent) {
                    FDialog = nullptr;
                    FComponent = nullptr;
                }
                if (FThread) {
                    FThread->ComponentGone(component);
                }
            });
        });
    }
    TComponent::Notification(component, operation);
}

bool TKxModelessDialog::GetClosed() const { return !FThread || FThread->Terminated(); }

void TKxModelessDialog::Show() {
    if (!Closed()) {
        if (const ICommonDialog* const dialog = FThread->Dialog()) {
            BringWindowToTop(dialog->GetCommonDialogHandle());
            if (System().Wine) { // Wine does not raise a window of another thread in every case in which Windows does
                SetForegroundWindow(dialog->GetCommonDialogHandle());
            }
        }
        return;
    }
    FThread = new TKxModelessThread;
    FThread->SetModelessDialog(this);
    FThread->SetDialog(FDialog);
    FThread->SetOnTerminate({this, &TKxModelessDialog::DoDialogClosed, "DoDialogClosed"});
    FThread->SetFreeOnTerminate(true);
    FThread->Resume();
}

// Deliberate: it has no effect, where one would expect it to close the dialog.
void TKxModelessDialog::Close() {}

void TKxModelessDialog::DoDialogClosed(TObject* sender) {
    FResult = static_cast<TKxModelessThread*>(sender)->DialogResult();
    if (Outlives(*this, [this] { Guarded([this] { FOnClosed(this, FResult); }); }) && FThread == sender) {
        FThread = nullptr;
    }
}

TComponentRefs TKxModelessDialog::CreateDockedForms(ICommonDialog& dialog, const std::function<bool()>& wanted) {
    TComponentRefs forms;
    using P = TKxCustDlgParams;
    struct TPlace {
        TForm* (P::*Form)() const;
        const std::string& (P::*Name)() const;
        void (P::*SetForm)(TForm* form);
    };
    static constexpr TPlace places[] = {
        {&P::CustomForm, &P::CustFormName, &P::SetCustForm},  {&P::BottomForm, &P::BottomFormName, &P::SetBottomForm},
        {&P::TopForm, &P::TopFormName, &P::SetTopForm},       {&P::LeftForm, &P::LeftFormName, &P::SetLeftForm},
        {&P::RightForm, &P::RightFormName, &P::SetRightForm},
    };
    for (const TPlace& place : places) {
        if (!wanted()) {
            break;
        }
        P& params = dialog.GetCustDlgParams();
        TForm* found = (params.*place.Form)();
        P::CreateFormAs(found, (params.*place.Name)());
        TComponentRef<TForm>& form = forms.emplace_back();
        form.Set(found);
        if (form) {
            form->SetParentWindow(Application().Handle());
        }
        if (form) {
            form->HandleNeeded(); // a window belongs to the thread that makes it: it is to be this one
        }
        if (form && wanted()) {
            (params.*place.SetForm)(form.Get());
        }
    }
    return forms;
}

} // namespace kx
