#include "ui/Dialogs.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace kx {

namespace {

// What the system's own dialogs check at run time, checked for the reference word size at compile time.
static_assert(sizeof(void*) != 4 || sizeof(OPENFILENAMEA) == 88, "the record with the extended flags");
static_assert(sizeof(void*) != 4 || offsetof(OPENFILENAMEA, FlagsEx) == 84, "the record with the extended flags");

/// The longest path that the system knows, in characters.
constexpr size_t FirstBufferSize = 32768;

/// At most, in any code page. The dialog counts its answers in characters, and fills its buffers with bytes.
constexpr size_t BytesPerCharacter = 4;

/// System flag of each option; 0 for the one that is the absence of a flag.
constexpr std::array<DWORD, 22> OptionFlags = {
    OFN_READONLY,
    OFN_OVERWRITEPROMPT,
    OFN_HIDEREADONLY,
    OFN_NOCHANGEDIR,
    OFN_SHOWHELP,
    OFN_NOVALIDATE,
    OFN_ALLOWMULTISELECT,
    OFN_EXTENSIONDIFFERENT,
    OFN_PATHMUSTEXIST,
    OFN_FILEMUSTEXIST,
    OFN_CREATEPROMPT,
    OFN_SHAREAWARE,
    OFN_NOREADONLYRETURN,
    OFN_NOTESTFILECREATE,
    OFN_NONETWORKBUTTON,
    OFN_NOLONGNAMES,
    0, // ofOldStyleDialog
    OFN_NODEREFERENCELINKS,
    OFN_ENABLEINCLUDENOTIFY,
    OFN_ENABLESIZING,
    OFN_DONTADDTORECENT,
    OFN_FORCESHOWHIDDEN,
};

DWORD FlagsOf(TOpenOptions options) {
    DWORD flags = OFN_ENABLEHOOK;
    for (size_t i = 0; i < OptionFlags.size(); ++i) {
        if (options.Contains(static_cast<TOpenOption>(i))) {
            flags |= OptionFlags[i];
        }
    }
    // Names of several files come separated by NUL in both styles only with long names on.
    return options.Contains(ofOldStyleDialog) ? flags | OFN_LONGNAMES : flags | OFN_EXPLORER;
}

/// "Text|*.txt" as the system wants it: each text followed by a NUL, another NUL at the end.
std::string SystemFilter(const std::string& filter) {
    std::string result;
    size_t start = 0;
    while (start < filter.size()) {
        const size_t bar = std::min(FindChar(filter, '|', start), filter.size());
        result.append(filter, start, bar - start).push_back('\0');
        start = bar + 1;
    }
    return result + std::string(2, '\0'); // two: the last description may lack its patterns
}

std::string CurrentFolder() {
    std::string path(GetCurrentDirectoryA(0, nullptr), '\0');
    path.resize(GetCurrentDirectoryA(static_cast<DWORD>(path.size()), path.data()));
    return path;
}

bool IsFolder(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsFullPath(const std::string& name) {
    return name.starts_with("\\\\") || (name.size() > 2 && name[1] == ':' && name[2] == '\\');
}

/// Length in UTF-16 units, in which the system limits paths.
size_t Characters(const std::string& text) {
    return static_cast<size_t>(MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), nullptr, 0));
}

/// Answer of the dialog to one of its requests for a text.
std::string DialogText(HWND dialog, UINT request) {
    const LRESULT size = SendMessageA(dialog, request, 0, 0);
    if (size <= 0) {
        return {};
    }
    // One more: a text that just fits may come without its NUL.
    std::string text(static_cast<size_t>(size) * BytesPerCharacter + 1, '\0');
    SendMessageA(dialog, request, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return text.substr(0, text.find('\0'));
}

std::string WindowText(HWND window) {
    std::string text(static_cast<size_t>(GetWindowTextLengthA(window)) + 1, '\0');
    text.resize(static_cast<size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

const char* TextOrNull(const std::string& text) { return text.empty() ? nullptr : text.c_str(); }

} // namespace

/// One showing: the record for the system and what it points to.
struct TOpenDialog::TRun {
    explicit TRun(TOpenDialog& dialog) : Dialog(&dialog), Alive(dialog) {}

    std::vector<char> Buffer; ///< Of the file names.
    OPENFILENAMEA Record{};
    OPENFILENAMEA* SystemRecord = &Record; ///< The one that the system uses: a wrapper may have given it another.
    TOpenDialog* Dialog;
    TAlive Alive;             ///< Of the component.
    bool Asking = false;      ///< The system waits to hear whether it may take the names.
    TSubclass DialogMessages; ///< Of the dialog window.

    bool Has(DWORD flag) const { return (Record.Flags & flag) != 0; }
    bool NamesFit() const;
    void ReserveNames();
    void NoteExtension(const std::string& fileName);
};

/// False when the edit holds a name that makes a path longer than the system knows: Wine 8 would write it over its
/// stack.
bool TOpenDialog::TRun::NamesFit() const {
    HWND dialog = Dialog->DialogWindow();
    const std::string names = DialogText(dialog, CDM_GETSPEC);
    const size_t folder = Characters(DialogText(dialog, CDM_GETFOLDERPATH)) + 1;
    const size_t longest = MAX_PATH - 1;
    const auto fits = [&](const std::string& name) {
        return Characters(name) + (IsFullPath(name) ? 0 : folder) <= longest;
    };
    size_t open = FindChar(names, '"');
    if (open == std::string::npos) {
        return fits(names);
    }
    while (open != std::string::npos) { // several names, each in quotes
        const size_t close = std::min(FindChar(names, '"', open + 1), names.size());
        if (!fits(names.substr(open + 1, close - open - 1))) {
            return false;
        }
        open = FindChar(names, '"', close + 1);
    }
    return true;
}

/// Makes room in the system's record for all that is selected or typed.
void TOpenDialog::TRun::ReserveNames() {
    HWND dialog = Dialog->DialogWindow();
    const LRESULT names = std::max<LRESULT>(0, SendMessageA(dialog, CDM_GETSPEC, 0, 0));
    const LRESULT folder = std::max<LRESULT>(0, SendMessageA(dialog, CDM_GETFOLDERPATH, 0, 0));
    const size_t needed = static_cast<size_t>(names + folder) * BytesPerCharacter + FirstBufferSize;
    if (needed > Buffer.size()) {
        Buffer.resize(needed * 2);
        SystemRecord->lpstrFile = Buffer.data();
        SystemRecord->nMaxFile = static_cast<DWORD>(Buffer.size());
    }
}

/// Whether the chosen name has another extension than the default one, for systems that do not tell.
void TOpenDialog::TRun::NoteExtension(const std::string& fileName) {
    if (Record.lpstrDefExt && !SameText(ExtractFileExt(fileName), std::string(".") + Record.lpstrDefExt)) {
        SystemRecord->Flags |= OFN_EXTENSIONDIFFERENT;
    } else {
        SystemRecord->Flags &= ~static_cast<DWORD>(OFN_EXTENSIONDIFFERENT);
    }
}

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
    run.Buffer.resize(FirstBufferSize);
    if (Characters(FFileName) < MAX_PATH) { // a longer one is no file's name
        std::copy(FFileName.begin(), FFileName.end(), run.Buffer.begin());
    }
    const std::string filter = SystemFilter(FFilter);
    const std::string folder = IsFolder(FInitialDir) ? FInitialDir : CurrentFolder();
    const std::string extension = FDefaultExt.substr(FDefaultExt.starts_with('.') ? 1 : 0);
    const std::string title = FTitle;
    OPENFILENAMEA& record = run.Record;
    record.lStructSize = sizeof(record);
    record.hwndOwner = OwnerWindow();
    record.hInstance = HInstance();
    record.lpstrFilter = FFilter.empty() ? nullptr : filter.c_str();
    record.nFilterIndex = static_cast<DWORD>(std::max(FFilterIndex, 1));
    record.lpstrFile = run.Buffer.data();
    record.nMaxFile = static_cast<DWORD>(run.Buffer.size());
    record.lpstrInitialDir = folder.c_str();
    record.lpstrTitle = TextOrNull(title);
    record.lpstrDefExt = TextOrNull(extension);
    // No template: the system lays the child of a template over the whole client area, above every window that comes
    // later, and would bury the forms and bars that belong into the dialog. Without one it is empty, out of the way,
    // and gets the notifications just the same.
    record.Flags = FlagsOf(FOptions);
    record.FlagsEx = FOptionsEx.Contains(ofExNoPlacesBar) ? OFN_EX_NOPLACESBAR : 0;
    record.lpfnHook = HookProc;
    record.lCustData = reinterpret_cast<LPARAM>(&run);
    const bool confirmed = TaskModalDialog(record.hwndOwner, [&] {
        FRun = &run;
        return dialogFunc(record);
    });
    if (!run.Alive) {
        return false;
    }
    if (confirmed) {
        TakeFiles();
        FFilterIndex = static_cast<int>(record.nFilterIndex);
        for (const TOpenOption option : {ofReadOnly, ofExtensionDifferent}) {
            (record.Flags & OptionFlags[option]) != 0 ? FOptions.Include(option) : FOptions.Exclude(option);
        }
    }
    FRun = nullptr;
    return confirmed;
}

/// FileName and Files from the names that the system left in the buffer: one full path, or a folder and the names in
/// it.
void TOpenDialog::TakeFiles() {
    FFiles.Clear();
    const std::vector<char>& buffer = FRun->Buffer;
    const auto textAt = [&](size_t at) {
        const auto start = buffer.begin() + static_cast<std::ptrdiff_t>(std::min(at, buffer.size()));
        return std::string(start, std::find(start, buffer.end(), '\0'));
    };
    const std::string first = textAt(0);
    size_t at = first.size() + 1;
    if (FRun->Has(OFN_ALLOWMULTISELECT)) {
        for (std::string name = textAt(at); !name.empty(); name = textAt(at)) {
            at += name.size() + 1;
            FFiles.Add(IsFullPath(name) ? name : IncludeTrailingPathDelimiter(first) + name);
        }
    }
    if (FFiles.Count() == 0) {
        FFiles.Add(first);
    }
    FFileName = FFiles.Get(0);
}

UINT_PTR CALLBACK TOpenDialog::HookProc(HWND window, UINT message, WPARAM, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        Guarded([&] {
            auto* record = reinterpret_cast<OPENFILENAMEA*>(lParam);
            auto& run = *reinterpret_cast<TRun*>(record->lCustData);
            run.SystemRecord = record;
            if (!run.Alive) { // freed when there was no window to close; here the system bears no closing yet
                PostMessageA(GetAncestor(window, GA_ROOT), WM_COMMAND, IDCANCEL, 0);
            } else {
                run.Dialog->SystemDialogCreated(window);
            }
        });
    }
    return 0;
}

void TOpenDialog::SystemDialogCreated(HWND window) {
    AttachHandle(window);
    if (!FRun->Has(OFN_EXPLORER)) {
        DialogShown(); // the old dialog sends no notifications
    } else {
        FRun->DialogMessages.SetHandler([this, run = FRun](TMessage& message) {
            run->Alive ? DialogMessage(message) : run->DialogMessages.CallPrevious(message);
        });
        FRun->DialogMessages.Install(DialogWindow());
    }
}

/// OK takes names that were typed or pasted, of which nothing was heard before.
void TOpenDialog::DialogMessage(TMessage& message) {
    if (message.Msg == WM_COMMAND && message.WParamLo() == IDCANCEL && FRun->Asking) {
        return; // by a loop of OnCanClose: the system, in the middle of the names, would use what it has freed
    }
    if (message.Msg == WM_COMMAND && message.WParamLo() == IDOK) {
        if (!FRun->NamesFit()) {
            HWND dialog = DialogWindow();
            const std::string title = WindowText(dialog);
            MessageBoxA(dialog, "The path of the file is too long.", title.c_str(), MB_OK | MB_ICONWARNING);
            return;
        }
        if (FRun->Has(OFN_ALLOWMULTISELECT)) {
            FRun->ReserveNames();
        }
    }
    FRun->DialogMessages.CallPrevious(message);
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
        // The first moment at which the file list is there and all controls have their places; nothing is visible yet.
        // A resizable dialog may still get the size that an earlier one was given, before the next notification.
        DialogShown();
        break;
    case static_cast<int>(CDN_FOLDERCHANGE): DoFolderChange(); break;
    case static_cast<int>(CDN_SELCHANGE):
        if (FRun->Has(OFN_ALLOWMULTISELECT)) {
            FRun->ReserveNames();
        }
        DoSelectionChange();
        break;
    case static_cast<int>(CDN_TYPECHANGE): DoTypeChange(); break;
    case static_cast<int>(CDN_INCLUDEITEM): IncludeItem(message); break;
    case static_cast<int>(CDN_FILEOK): QueryClose(message); break;
    default: DefaultHandler(message);
    }
}

/// Stays open unless the handler has allowed the closing: an exception refuses it too.
void TOpenDialog::QueryClose(TMessage& message) {
    const TAlive alive(*this);
    HWND window = Handle();
    const std::string fileName = FFileName;
    TStringList files;
    files.Assign(&FFiles);
    FRun->Asking = true;
    const bool canClose = Guarded(false, [this] {
        TakeFiles();
        return DoCanClose();
    });
    // A dialog that went with the component must not be closed once more: the system would reach for what is gone.
    message.Result = canClose && alive ? 0 : 1;
    SetWindowLongPtrA(window, DWLP_MSGRESULT, message.Result);
    if (!alive) {
        return;
    }
    FRun->Asking = false;
    if (canClose) {
        FRun->NoteExtension(FFileName);
    } else {
        FFileName = fileName;
        FFiles.Assign(&files);
    }
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
