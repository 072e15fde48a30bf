// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/SystemNames.h"
#include "kx/ui/dialogs/Dialogs.h"

namespace kx {

enum TPrintDialogOption : uint8_t {
    poPrintToFile, ///< The box "print to file" is there.
    poPageNums,    ///< A range of pages can be chosen.
    poSelection,   ///< The selection can be chosen.
    poWarning,     ///< The system warns of a missing default printer. Wine does without it, too.
    poHelp,
    poDisablePrintToFile ///< The box "print to file" is disabled.
};
KX_ENUM(TPrintDialogOption, "poPrintToFile", "poPageNums", "poSelection", "poWarning", "poHelp", "poDisablePrintToFile")
using TPrintDialogOptions = TSet<TPrintDialogOption>;

enum TPrintRange : uint8_t { prAllPages, prSelection, prPageNums };
KX_ENUM(TPrintRange, "prAllPages", "prSelection", "prPageNums")

/// A printer as the system names it, and its settings: what CreateDC and OpenPrinter ask for.
class TPrinterChoice {
public:
    const std::string& Device() const { return FDevice; } ///< Empty: no printer has been chosen.
    const std::string& Driver() const { return FDriver; }
    const std::string& Port() const { return FPort; }
    /// The settings with the driver's own data behind them; null for none. Valid as long as this object is unchanged.
    const DEVMODEA* DevMode() const;
    explicit operator bool() const { return !FDevice.empty(); }

    /// Takes over what the system's dialogs answer with; null handles for nothing. The handles stay the caller's.
    void Take(HGLOBAL devNames, HGLOBAL devMode);
    /// What the system's dialogs are asked with, in new global memory of the caller's; null for no printer, no
    /// settings.
    HGLOBAL NewDevNames() const;
    HGLOBAL NewDevMode() const;

private:
    std::string FDevice;
    std::string FDriver;
    std::string FPort;
    std::vector<std::byte> FDevMode;
};

/// The system's dialog for choosing a printer and what to print.
class TPrintDialog : public TCommonDialog {
    KX_CLASS()

    explicit TPrintDialog(TComponent* owner = nullptr);
    ~TPrintDialog() override;

    /// False also when there is no printer.
    bool Execute() override;

    bool Collate() const { return FCollate; }
    void SetCollate(bool value) { FCollate = value; }
    int Copies() const { return FCopies; }
    void SetCopies(int value) { FCopies = value; }
    int FromPage() const { return FFromPage; } ///< The first page of prPageNums.
    void SetFromPage(int value) { FFromPage = value; }
    int ToPage() const { return FToPage; } ///< The last page of prPageNums.
    void SetToPage(int value) { FToPage = value; }
    int MinPage() const { return FMinPage; } ///< The smallest page that can be chosen.
    void SetMinPage(int value) { FMinPage = value; }
    int MaxPage() const { return FMaxPage; } ///< The largest page that can be chosen.
    void SetMaxPage(int value) { FMaxPage = value; }
    TPrintDialogOptions Options() const { return FOptions; }
    void SetOptions(TPrintDialogOptions value) { FOptions = value; }
    bool PrintToFile() const { return FPrintToFile; } ///< The box is checked.
    void SetPrintToFile(bool value) { FPrintToFile = value; }
    TPrintRange PrintRange() const { return FPrintRange; }
    void SetPrintRange(TPrintRange value) { FPrintRange = value; }

    /// The chosen printer: empty before the first showing that the user confirms, in which the system's default printer
    /// is selected at first. The next showing begins with it. Copies are in Copies alone, not in its settings.
    const TPrinterChoice& Printer() const { return FPrinter; }
    void SetPrinter(const TPrinterChoice& value) { FPrinter = value; }
    KX_AS_SYSTEM_NAMES(void, SetPrinter, (const TPrinterChoice& value), (value), )

private:
    struct TRun;

    static UINT_PTR KX_CALLBACK HookProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void SystemDialogCreated(HWND window);
    void TakeAnswer(const PRINTDLGA& record);

    bool FCollate = false;
    int FCopies = 0;
    int FFromPage = 0;
    int FToPage = 0;
    int FMinPage = 0;
    int FMaxPage = 0;
    TPrintDialogOptions FOptions;
    bool FPrintToFile = false;
    TPrintRange FPrintRange = prAllPages;
    TPrinterChoice FPrinter;
};

} // namespace kx
