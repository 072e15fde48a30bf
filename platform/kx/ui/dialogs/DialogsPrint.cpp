// SPDX-License-Identifier: MIT
// The system's print dialog.

#include "kx/ui/dialogs/DialogsPrint.h"

#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <array>
#include <commdlg.h>
#include <cstring>

namespace kx {

namespace {

struct TGlobalTraits {
    using THandle = HGLOBAL;
    static void Close(HGLOBAL memory) { GlobalFree(memory); }
};
using unique_hglobal = unique_handle<TGlobalTraits>;

/// Movable global memory, locked for the length of a scope. Null for no memory.
template <class T> class TGlobalLock {
public:
    explicit TGlobalLock(HGLOBAL memory) : FMemory(memory), FData(static_cast<T*>(GlobalLock(memory))) {}
    TGlobalLock(const TGlobalLock&) = delete;
    TGlobalLock& operator=(const TGlobalLock&) = delete;
    ~TGlobalLock() {
        if (FData) {
            GlobalUnlock(FMemory);
        }
    }
    T* Get() const { return FData; }

private:
    HGLOBAL FMemory;
    T* FData;
};

HGLOBAL NewGlobal(const void* data, size_t size) {
    HGLOBAL memory = GlobalAlloc(GHND, size);
    if (const TGlobalLock<char> lock(memory); lock.Get()) {
        std::memcpy(lock.Get(), data, size);
    }
    return memory;
}

/// Pages and copies travel in 16 bits.
WORD ToWord(int value) { return static_cast<WORD>(std::clamp(value, 0, 0xFFFF)); }

/// The range that each flag stands for; prAllPages is the absence of both others.
constexpr std::array<DWORD, 3> RangeFlags = {PD_ALLPAGES, PD_SELECTION, PD_PAGENUMS};

} // namespace

// --- TPrinterChoice

const DEVMODEA* TPrinterChoice::DevMode() const {
    return FDevMode.empty() ? nullptr : reinterpret_cast<const DEVMODEA*>(FDevMode.data());
}

void TPrinterChoice::Take(HGLOBAL devNames, HGLOBAL devMode) {
    *this = {};
    if (const TGlobalLock<const DEVNAMES> names(devNames); names.Get()) {
        const auto textAt = [&](WORD offset) { return reinterpret_cast<const char*>(names.Get()) + offset; };
        FDevice = textAt(names.Get()->wDeviceOffset);
        FDriver = textAt(names.Get()->wDriverOffset);
        FPort = textAt(names.Get()->wOutputOffset);
    }
    if (const TGlobalLock<const DEVMODEA> mode(devMode); mode.Get()) {
        const auto* const bytes = reinterpret_cast<const std::byte*>(mode.Get());
        FDevMode.assign(bytes, bytes + mode.Get()->dmSize + mode.Get()->dmDriverExtra);
    }
}

HGLOBAL TPrinterChoice::NewDevNames() const {
    if (FDevice.empty()) {
        return nullptr;
    }
    DEVNAMES names{};
    names.wDriverOffset = sizeof(names);
    names.wDeviceOffset = static_cast<WORD>(names.wDriverOffset + FDriver.size() + 1);
    names.wOutputOffset = static_cast<WORD>(names.wDeviceOffset + FDevice.size() + 1);
    std::string bytes(reinterpret_cast<const char*>(&names), sizeof(names));
    for (const std::string* text : {&FDriver, &FDevice, &FPort}) {
        bytes.append(*text).push_back('\0');
    }
    return NewGlobal(bytes.data(), bytes.size());
}

HGLOBAL TPrinterChoice::NewDevMode() const {
    return FDevMode.empty() ? nullptr : NewGlobal(FDevMode.data(), FDevMode.size());
}

// --- TPrintDialog

/// One showing: the record for the system and what it points to.
struct TPrintDialog::TRun {
    PRINTDLGA Record{};
    TPrintDialog* Dialog;
    TAlive Alive; ///< Of the component.

    explicit TRun(TPrintDialog& dialog) : Dialog(&dialog), Alive(dialog) {}
    TRun(const TRun&) = delete;
    TRun& operator=(const TRun&) = delete;
    ~TRun() { // the system may have replaced our blocks of memory by its own
        const unique_hglobal names(Record.hDevNames);
        const unique_hglobal mode(Record.hDevMode);
    }

    DWORD Flags() const;
    void Prepare();
};

DWORD TPrintDialog::TRun::Flags() const {
    const TPrintDialogOptions options = Dialog->FOptions;
    DWORD flags = PD_ENABLEPRINTHOOK | RangeFlags[Dialog->FPrintRange];
    const auto add = [&flags](bool wanted, DWORD flag) { flags |= wanted ? flag : 0; };
    add(Dialog->FCollate, PD_COLLATE);
    add(Dialog->FPrintToFile, PD_PRINTTOFILE);
    add(!options.Contains(poPrintToFile), PD_HIDEPRINTTOFILE);
    add(!options.Contains(poPageNums), PD_NOPAGENUMS);
    add(!options.Contains(poSelection), PD_NOSELECTION);
    add(!options.Contains(poWarning), PD_NOWARNING);
    add(options.Contains(poHelp), PD_SHOWHELP);
    add(options.Contains(poDisablePrintToFile), PD_DISABLEPRINTTOFILE);
    return flags;
}

void TPrintDialog::TRun::Prepare() {
    Record.lStructSize = sizeof(Record);
    Record.hwndOwner = Dialog->SystemOwner();
    Record.hInstance = HInstance();
    Record.hDevNames = Dialog->FPrinter.NewDevNames();
    Record.hDevMode = Dialog->FPrinter.NewDevMode();
    Record.Flags = Flags();
    Record.nMinPage = ToWord(Dialog->FMinPage);
    Record.nMaxPage = std::max(Record.nMinPage, ToWord(Dialog->FMaxPage));
    // The system refuses to show a range that lies outside the limits.
    Record.nFromPage = std::clamp(ToWord(Dialog->FFromPage), Record.nMinPage, Record.nMaxPage);
    Record.nToPage = std::clamp(ToWord(Dialog->FToPage), Record.nFromPage, Record.nMaxPage);
    Record.nCopies = ToWord(Dialog->FCopies);
    Record.lCustData = reinterpret_cast<LPARAM>(this);
    Record.lpfnPrintHook = HookProc;
}

const TClass& TPrintDialog::StaticClass() {
    static const TClassBuilder<TPrintDialog> cls("TPrintDialog", TCommonDialog::StaticClass(), [](auto& c) {
        using T = TPrintDialog;
        c.Creatable();
        c.Property("Collate", &T::Collate, &T::SetCollate).Default = false;
        c.Property("Copies", &T::Copies, &T::SetCopies).Default = 0;
        c.Property("FromPage", &T::FromPage, &T::SetFromPage).Default = 0;
        c.Property("MinPage", &T::MinPage, &T::SetMinPage).Default = 0;
        c.Property("MaxPage", &T::MaxPage, &T::SetMaxPage).Default = 0;
        c.Property("Options", &T::Options, &T::SetOptions).Default = 0;
        c.Property("PrintToFile", &T::PrintToFile, &T::SetPrintToFile).Default = false;
        c.Property("PrintRange", &T::PrintRange, &T::SetPrintRange).Default = prAllPages;
        c.Property("ToPage", &T::ToPage, &T::SetToPage).Default = 0;
    });
    return cls.Class();
}

TPrintDialog::TPrintDialog(TComponent* owner) : TCommonDialog(owner) {}

TPrintDialog::~TPrintDialog() { CloseShown(); }

bool TPrintDialog::Execute() {
    TRun run(*this);
    run.Prepare();
    const bool confirmed = TaskModalDialog(run.Record.hwndOwner, [&] { return PrintDlgA(&run.Record) != FALSE; });
    if (!run.Alive) {
        return false;
    }
    if (confirmed) {
        TakeAnswer(run.Record);
    }
    return confirmed;
}

void TPrintDialog::TakeAnswer(const PRINTDLGA& record) {
    const auto has = [&](DWORD flag) { return (record.Flags & flag) != 0; };
    FCollate = has(PD_COLLATE);
    FPrintToFile = has(PD_PRINTTOFILE);
    FPrintRange = has(PD_SELECTION) ? prSelection : has(PD_PAGENUMS) ? prPageNums : prAllPages;
    FCopies = record.nCopies;
    FFromPage = record.nFromPage;
    FToPage = record.nToPage;
    FPrinter.Take(record.hDevNames, record.hDevMode);
}

UINT_PTR CALLBACK TPrintDialog::HookProc(HWND window, UINT message, WPARAM, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        Guarded([&] {
            const auto& run = *reinterpret_cast<const TRun*>(reinterpret_cast<const PRINTDLGA*>(lParam)->lCustData);
            if (!run.Alive) { // the component was freed when there was no window to close
                PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
            } else {
                run.Dialog->SystemDialogCreated(window);
            }
        });
    }
    return 0;
}

void TPrintDialog::SystemDialogCreated(HWND window) {
    AttachHandle(window);
    DialogShown();
}

} // namespace kx
