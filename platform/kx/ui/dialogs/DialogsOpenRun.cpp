// SPDX-License-Identifier: MIT
// One showing of an open or save dialog.

#include "kx/ui/dialogs/DialogsOpenRun.h"

#include "kx/win/PathKind.h"
#include "kx/win/System.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <array>
#include <cderr.h>
#include <commdlg.h>
#include <cstddef>

namespace kx {

namespace {

// The system's dialogs check these at run time; here they are checked for the reference word size.
static_assert(sizeof(void*) != 4 || sizeof(OPENFILENAMEA) == 88, "the record with the extended flags");
static_assert(sizeof(void*) != 4 || offsetof(OPENFILENAMEA, FlagsEx) == 84, "the record with the extended flags");

/// Bytes for one name: the longest path that the system knows, in characters.
constexpr size_t NameSize = 32768;
/// Bytes for several names. Hardly any choice takes more. So the first block is large enough even for a system that
/// does not notice when the record gets another block.
constexpr size_t NamesSize = 1024 * 1024;
constexpr size_t MostNamesSize = 64 * NamesSize;

/// Most bytes of a character in any code page. The dialog counts its answers in characters, and writes bytes.
constexpr size_t BytesPerCharacter = 4;

/// System flag of each option; 0 for the option that means the absence of a flag.
constexpr std::array<DWORD, 22> OpenFlags = {
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
    for (size_t i = 0; i < OpenFlags.size(); ++i) {
        if (options.Contains(static_cast<TOpenOption>(i))) {
            flags |= OpenFlags[i];
        }
    }
    // Only with long names on are several names separated by NUL in both styles.
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
    std::wstring path(GetCurrentDirectoryW(0, nullptr), L'\0');
    path.resize(GetCurrentDirectoryW(static_cast<DWORD>(path.size()), path.data()));
    return FromWide(path);
}

/// The folder to start in. One that cannot be reached is as good as missing: the dialog would look for it for long.
std::string StartFolder(const std::string& wanted) { return KindOfPath(wanted) == pkFolder ? wanted : CurrentFolder(); }

bool IsFullPath(const std::string& name) {
    return name.starts_with("\\\\") || (name.size() > 2 && name[1] == ':' && name[2] == '\\');
}

/// Length in UTF-16 units, in which the system limits paths.
size_t Characters(const std::string& text) {
    return static_cast<size_t>(MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), nullptr, 0));
}

/// Answer of the dialog to one of its requests for a text, which is of the code page, as the function that shows it.
std::string DialogText(HWND dialog, UINT request) {
    const LRESULT size = SendMessageA(dialog, request, 0, 0);
    if (size <= 0) {
        return {};
    }
    // One byte more: a text that just fits may come without its NUL.
    std::string text(static_cast<size_t>(size) * BytesPerCharacter + 1, '\0');
    SendMessageA(dialog, request, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return text.substr(0, text.find('\0'));
}

const char* TextOrNull(const std::string& text) { return text.empty() ? nullptr : text.c_str(); }

} // namespace

// --- Names

const std::vector<char>& TNameBlocks::Filled() const {
    const auto filled =
        std::find_if(FBlocks.rbegin(), FBlocks.rend(), [](const std::vector<char>& block) { return block[0] != '\0'; });
    return filled == FBlocks.rend() ? FBlocks.back() : *filled;
}

/// The names in the block: one full path, or a folder and the names in it.
std::vector<std::string> TOpenDialog::TRun::Files() const {
    std::vector<std::string> files;
    const std::vector<char>& block = FNames.Filled();
    const auto textAt = [&](size_t at) {
        const auto start = block.begin() + static_cast<std::ptrdiff_t>(std::min(at, block.size()));
        return std::string(start, std::find(start, block.end(), '\0'));
    };
    const std::string first = textAt(0);
    size_t at = first.size() + 1;
    if (Has(OFN_ALLOWMULTISELECT)) {
        for (std::string name = textAt(at); !name.empty(); name = textAt(at)) {
            at += name.size() + 1;
            files.push_back(IsFullPath(name) ? name : IncludeTrailingPathDelimiter(first) + name);
        }
    }
    if (files.empty()) {
        files.push_back(first);
    }
    return files;
}

void TOpenDialog::TRun::SetBlock(OPENFILENAMEA& record) {
    record.lpstrFile = FNames.Last().data();
    record.nMaxFile = static_cast<DWORD>(FNames.Last().size());
}

void TOpenDialog::TRun::ReserveNames() {
    HWND dialog = DialogMessages.Handle();
    FShownFolder = DialogText(dialog, CDM_GETFOLDERPATH);
    const auto names = static_cast<size_t>(std::max<LRESULT>(0, SendMessageA(dialog, CDM_GETSPEC, 0, 0)));
    const size_t needed = names * BytesPerCharacter + FShownFolder.size() + NameSize;
    if (needed > SystemRecord->nMaxFile) {
        FNames.Add(needed * 2);
        SetBlock(*SystemRecord);
    }
}

/// False when the edit holds a name that makes a path too long for the system. Wine 8 would write such a path over its
/// stack.
bool TOpenDialog::TRun::NamesFit() const {
    HWND dialog = DialogMessages.Handle();
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

// --- The record

TOpenDialog::TRun::TRun(TOpenDialog& dialog)
    : Dialog(&dialog), Alive(dialog), FNames(dialog.FOptions.Contains(ofAllowMultiSelect) ? NamesSize : NameSize),
      FFilter(SystemFilter(dialog.FFilter)), FFolder(StartFolder(dialog.FirstFolder())),
      FExtension(dialog.FDefaultExt.substr(dialog.FDefaultExt.starts_with('.') ? 1 : 0)), FTitle(dialog.FTitle) {
    const std::string& name = dialog.FFileName;
    if (Characters(name) < MAX_PATH) { // a longer one is no file's name
        std::copy(name.begin(), name.end(), FNames.Last().begin());
    }
    Record.lStructSize = sizeof(Record);
    Record.hwndOwner = dialog.SystemOwner();
    OwnerEnabled = IsWindowEnabled(Record.hwndOwner) != 0;
    Record.hInstance = HInstance();
    Record.lpstrFilter = dialog.FFilter.empty() ? nullptr : FFilter.c_str();
    Record.nFilterIndex = static_cast<DWORD>(std::max(dialog.FirstFilterIndex(), 1));
    SetBlock(Record);
    Record.lpstrInitialDir = FFolder.c_str();
    Record.lpstrTitle = TextOrNull(FTitle);
    Record.lpstrDefExt = TextOrNull(FExtension);
    // No template is given: the system would lay its child window over the whole client area, above every window that
    // comes later, and so bury the forms and bars in the dialog. Without a template the child is empty, out of the way,
    // and gets the notifications just the same.
    Record.Flags = FlagsOf(dialog.FOptions);
    Record.FlagsEx = dialog.FOptionsEx.Contains(ofExNoPlacesBar) ? OFN_EX_NOPLACESBAR : 0;
    Record.lpfnHook = HookProc;
    Record.lCustData = reinterpret_cast<LPARAM>(this);
}

bool TOpenDialog::TRun::Mend(DWORD error) {
    std::vector<char>& block = FNames.Last();
    const std::string name(block.begin(), std::find(block.begin(), block.end(), '\0'));
    if (error == FNERR_INVALIDFILENAME && !name.empty()) { // it is a folder, or nothing that a file can be called
        const std::string folder = KindOfPath(name) == pkFolder ? name : ExtractFilePath(name);
        FFolder = folder.empty() ? FFolder : folder;
        std::fill(block.begin(), block.end(), '\0');
    } else if (error == FNERR_BUFFERTOOSMALL && block.size() < MostNamesSize) { // the user has to choose again
        FFolder = FShownFolder.empty() ? FFolder : FShownFolder;
        std::fill(block.begin(), block.end(), '\0'); // the system has left in it the size that it wanted
        FNames.Add(block.size() * 8);
        SetBlock(Record);
    } else {
        return false;
    }
    Record.lpstrInitialDir = FFolder.c_str();
    return true;
}

void TOpenDialog::TRun::NoteExtension(const std::string& fileName) {
    if (!System().Wine) {
        return;
    }
    if (!FExtension.empty() && !SameText(ExtractFileExt(fileName), "." + FExtension)) {
        SystemRecord->Flags |= OFN_EXTENSIONDIFFERENT;
    } else {
        SystemRecord->Flags &= ~static_cast<DWORD>(OFN_EXTENSIONDIFFERENT);
    }
}

// --- The dialog window

void TOpenDialog::TRun::HandleMessage(TMessage& message) {
    const bool isOk = message.Msg == WM_COMMAND && message.WParamLo() == IDOK;
    if (KeepsBack(message) || (isOk && !TakesNames())) {
        return;
    }
    DialogMessages.CallPrevious(message);
}

/// True for messages that would harm the system, or bring back a dialog that only waits for its end.
bool TOpenDialog::TRun::KeepsBack(const TMessage& message) const {
    if (message.Msg == WM_COMMAND && message.WParamLo() == IDCANCEL) {
        return Asking; // a message loop in OnCanClose got it: the system is using the names that it would free
    }
    if (!Alive && message.Msg == WM_WINDOWPOSCHANGING) {
        message.LParamAs<WINDOWPOS>().flags &= ~static_cast<UINT>(SWP_SHOWWINDOW);
    }
    return !Alive && message.Msg == WM_COMMAND;
}

/// Looks at the names that OK takes: no notification tells of names that were typed or pasted. The application hears of
/// the questions that this asks the dialog, and may free the component.
bool TOpenDialog::TRun::TakesNames() {
    if (System().Wine && !NamesFit()) {
        HWND dialog = DialogMessages.Handle();
        const std::string title = WindowText(dialog);
        MessageBoxA(dialog, "The path of the file is too long.", title.c_str(), MB_OK | MB_ICONWARNING);
        return false;
    }
    if (Has(OFN_ALLOWMULTISELECT)) {
        ReserveNames();
    }
    return static_cast<bool>(Alive);
}

} // namespace kx
