// SPDX-License-Identifier: MIT
// The system's open and save dialogs.

#include "kx/ui/dialogs/DialogsOpenRun.h"

#include "kx/win/Windows.h"

#include <commdlg.h>

namespace kx {

const TClass& TOpenDialog::StaticClass() {
    static const TClassBuilder<TOpenDialog> cls("TOpenDialog", TCommonDialog::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("DefaultExt", &TOpenDialog::DefaultExt, &TOpenDialog::SetDefaultExt);
        c.Property("FileName", &TOpenDialog::FileName, &TOpenDialog::SetFileName);
        c.Property("Filter", &TOpenDialog::Filter, &TOpenDialog::SetFilter);
        c.Property("FilterIndex", &TOpenDialog::FilterIndex, &TOpenDialog::SetFilterIndex).Default = 1;
        c.Property("InitialDir", &TOpenDialog::InitialDir, &TOpenDialog::SetInitialDir);
        c.Property("Options", &TOpenDialog::Options, &TOpenDialog::SetOptions).Default =
            TOpenOptions{ofHideReadOnly, ofEnableSizing}.Bits();
        c.Property("OptionsEx", &TOpenDialog::OptionsEx, &TOpenDialog::SetOptionsEx).Default = 0;
        c.Property("Title", &TOpenDialog::Title, &TOpenDialog::SetTitle);
        c.Property("OnCanClose", &TOpenDialog::OnCanClose, &TOpenDialog::SetOnCanClose);
        c.Property("OnFolderChange", &TOpenDialog::OnFolderChange, &TOpenDialog::SetOnFolderChange);
        c.Property("OnSelectionChange", &TOpenDialog::OnSelectionChange, &TOpenDialog::SetOnSelectionChange);
        c.Property("OnTypeChange", &TOpenDialog::OnTypeChange, &TOpenDialog::SetOnTypeChange);
        c.Property("OnIncludeItem", &TOpenDialog::OnIncludeItem, &TOpenDialog::SetOnIncludeItem);
    });
    return cls.Class();
}

TOpenDialog::TOpenDialog(TComponent* owner) : TCommonDialog(owner) {}

TOpenDialog::~TOpenDialog() { CloseShown(); }

void TOpenDialog::SetFileName(const std::string& value) {
    FFileName = value;
    FFiles.Clear();
    if (!value.empty()) {
        FFiles.Add(value);
    }
}

HWND TOpenDialog::DialogWindow() const { return Handle() ? GetAncestor(Handle(), GA_ROOT) : nullptr; }

bool TOpenDialog::Execute() {
    return DoExecute([](OPENFILENAMEA& record) { return GetOpenFileNameA(&record) != FALSE; });
}

bool TOpenDialog::DoExecute(const TSystemDialogFunc& dialogFunc) {
    TRun run(*this);
    OPENFILENAMEA& record = run.Record;
    const bool confirmed = TaskModalDialog(record.hwndOwner, [&] {
        FRun = &run;
        bool done = dialogFunc(record);
        while (!done && run.Alive && run.Mend(SystemError())) {
            done = dialogFunc(record);
        }
        return done;
    });
    if (!run.Alive) {
        return false;
    }
    if (confirmed) {
        TakeFiles();
        FFilterIndex = static_cast<int>(record.nFilterIndex);
        run.Has(OFN_READONLY) ? FOptions.Include(ofReadOnly) : FOptions.Exclude(ofReadOnly);
        run.Has(OFN_EXTENSIONDIFFERENT) ? FOptions.Include(ofExtensionDifferent)
                                        : FOptions.Exclude(ofExtensionDifferent);
    }
    FRun = nullptr;
    return confirmed;
}

DWORD TOpenDialog::SystemError() const { return CommDlgExtendedError(); }

/// Sets FileName and Files by the names that the system has left.
void TOpenDialog::TakeFiles() {
    FFiles.Clear();
    for (const std::string& file : FRun->Files()) {
        FFiles.Add(file);
    }
    FFileName = FFiles.Get(0);
}

namespace {

/// The message by which a dialog of the old style asks its hook whether it may close.
UINT FileOkMessage() {
    static const UINT message = RegisterWindowMessageW(FILEOKSTRINGW);
    return message;
}

} // namespace

UINT_PTR CALLBACK TOpenDialog::HookProc(HWND window, UINT message, WPARAM, LPARAM lParam) {
    if (message != WM_INITDIALOG && message != FileOkMessage()) {
        return 0;
    }
    return Guarded(UINT_PTR{0}, [&]() -> UINT_PTR {
        auto* record = reinterpret_cast<OPENFILENAMEA*>(lParam);
        auto& run = *reinterpret_cast<TRun*>(record->lCustData);
        if (message == FileOkMessage()) { // a dialog of the Explorer style sends it too, beside its notification
            return run.Alive && !run.Has(OFN_EXPLORER) && !run.Dialog->AllowsClose() ? 1 : 0;
        }
        run.SystemRecord = record;
        if (!run.Alive) { // the component was freed when there was no window; the system cannot close this one yet
            PostMessageW(GetAncestor(window, GA_ROOT), WM_COMMAND, IDCANCEL, 0);
        } else {
            run.Dialog->SystemDialogCreated(window);
        }
        return 0;
    });
}

void TOpenDialog::SystemDialogCreated(HWND window) {
    TRun* const run = FRun;
    AttachHandle(window);
    run->DialogMessages.SetHandler([run](TMessage& message) { run->HandleMessage(message); });
    run->DialogMessages.Install(DialogWindow());
    if (!run->Has(OFN_EXPLORER)) {
        DialogShown(); // the old dialog sends no notifications
    }
}

/// The system forbids hooks to end its dialog. So the dialog is cancelled as soon as it takes messages again.
void TOpenDialog::EndSystemDialog(HWND dialog) {
    // Enables the owner as the end of a dialog does: else another program's window would become the active one.
    if (FRun->OwnerEnabled) {
        EnableWindow(FRun->Record.hwndOwner, TRUE);
    }
    ShowWindow(dialog, SW_HIDE);
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
}

bool TOpenDialog::DoCanClose() {
    bool canClose = true;
    FOnCanClose(this, canClose);
    return canClose;
}

void TOpenDialog::DoFolderChange() { FOnFolderChange(this); }
void TOpenDialog::DoSelectionChange() { FOnSelectionChange(this); }
void TOpenDialog::DoTypeChange() { FOnTypeChange(this); }
void TOpenDialog::DoIncludeItem(const OFNOTIFYEXA& notification, bool& include) {
    FOnIncludeItem(notification, include);
}

void TOpenDialog::WndProc(TMessage& message) {
    if (message.Msg == WM_NOTIFY) {
        WMNotify(message);
    } else {
        TCommonDialog::WndProc(message);
    }
}

void TOpenDialog::WMNotify(TMessage& message) {
    switch (static_cast<int>(message.LParamAs<NMHDR>().code)) {
    case static_cast<int>(CDN_INITDONE):
        // This is the first moment at which all controls have their places, and nothing is visible yet. The file list
        // may come later, as it does on Windows. A resizable dialog may still get the size of an earlier one, before
        // the next notification.
        DialogShown();
        break;
    case static_cast<int>(CDN_FOLDERCHANGE): DoFolderChange(); break;
    case static_cast<int>(CDN_SELCHANGE):
        if (!FRun->Has(OFN_ALLOWMULTISELECT) || Outlives(*this, [run = FRun] { run->ReserveNames(); })) {
            DoSelectionChange();
        }
        break;
    case static_cast<int>(CDN_TYPECHANGE): DoTypeChange(); break;
    case static_cast<int>(CDN_INCLUDEITEM): IncludeItem(message); break;
    case static_cast<int>(CDN_FILEOK): message.Result = AllowsClose() ? 0 : 1; break;
    default: DefaultHandler(message);
    }
}

/// Answers the system whether its dialog may close. A handler that throws refuses it.
bool TOpenDialog::AllowsClose() {
    TRun* const run = FRun;
    HWND window = Handle();
    HWND dialog = DialogWindow();
    const std::string fileName = FFileName;
    TStringList files;
    files.Assign(&FFiles);
    run->Asking = true;
    bool allowed = Guarded(false, [this] {
        TakeFiles();
        return DoCanClose();
    });
    run->Asking = false;
    if (!run->Alive) {
        // A dialog whose component has gone must not be closed by this answer as well: the system would use what it has
        // freed. The command that cancels the dialog has been kept back if it came already.
        allowed = false;
        PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    } else if (allowed) {
        run->NoteExtension(FFileName);
    } else {
        FFileName = fileName;
        FFiles.Assign(&files);
    }
    SetWindowLongPtrA(window, DWLP_MSGRESULT, allowed ? 0 : 1);
    return allowed;
}

void TOpenDialog::IncludeItem(TMessage& message) {
    HWND window = Handle();
    bool include = true;
    DoIncludeItem(message.LParamAs<OFNOTIFYEXA>(), include);
    message.Result = include ? 1 : 0;
    SetWindowLongPtrA(window, DWLP_MSGRESULT, message.Result);
}

const TClass& TSaveDialog::StaticClass() {
    static const TClassBuilder<TSaveDialog> cls("TSaveDialog", TOpenDialog::StaticClass(),
                                                [](auto& c) { c.Creatable(); });
    return cls.Class();
}

bool TSaveDialog::Execute() {
    return DoExecute([](OPENFILENAMEA& record) { return GetSaveFileNameA(&record) != FALSE; });
}

} // namespace kx
