// SPDX-License-Identifier: MIT
// The print dialog as the system has it.

#include "kx/ui/dialogs/DialogsPrint.h"
#include "kx/win/Handles.h"
#include "tests/support/Printers.h"
#include "tests/support/TestDriver.h"

#include <algorithm>

namespace kx {
namespace {

using namespace test;

constexpr int PrintToFileBox = 1040;
constexpr int CollateBox = 1041;
constexpr int AllRadio = 1056;
constexpr int SelectionRadio = 1057;
constexpr int PagesRadio = 1058;
constexpr int PrinterCombo = 1139;
constexpr int FromEdit = 1152;
constexpr int ToEdit = 1153;
constexpr int CopiesEdit = 1154;
constexpr int HelpButton = 1038;

/// What a system dialog answers with; the caller frees it.
HGLOBAL DevNames(const std::string& driver, const std::string& device, const std::string& port) {
    std::string texts;
    DEVNAMES names{};
    WORD* const offsets[] = {&names.wDriverOffset, &names.wDeviceOffset, &names.wOutputOffset};
    const std::string* const sources[] = {&driver, &device, &port};
    for (size_t i = 0; i < 3; ++i) {
        *offsets[i] = static_cast<WORD>(sizeof(names) + texts.size());
        texts.append(*sources[i]).push_back('\0');
    }
    const HGLOBAL memory = GlobalAlloc(GHND, sizeof(names) + texts.size());
    auto* const bytes = static_cast<char*>(GlobalLock(memory));
    *reinterpret_cast<DEVNAMES*>(bytes) = names;
    std::copy(texts.begin(), texts.end(), bytes + sizeof(names));
    GlobalUnlock(memory);
    return memory;
}

class PrintDialogComponent : public testing::Test {
protected:
    void SetUp() override {
        Printers = InstalledPrinters();
        ASSERT_GE(Printers.size(), 2u) << NoPrinters;
        Dialog.SetOptions({poPrintToFile, poPageNums, poSelection});
        Dialog.SetMinPage(1);
        Dialog.SetMaxPage(20);
    }

    bool IsChecked(int id) const { return IsDlgButtonChecked(Dialog.Handle(), id) == BST_CHECKED; }
    bool IsEnabled(int id) const { return IsWindowEnabled(ItemOf(Dialog, id)) != 0; }
    bool IsVisible(int id) const { return IsWindowVisible(ItemOf(Dialog, id)) != 0; }

    bool Confirm(const TAction& act = {}) { return RunDialog(Dialog, act, {Press(Dialog, IDOK)}); }

    int ComboIndex(const std::string& printer) const {
        return static_cast<int>(SendMessageA(ItemOf(Dialog, PrinterCombo), CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                             reinterpret_cast<LPARAM>(printer.c_str())));
    }

    std::vector<std::string> Printers; ///< The default one first.
    TPrintDialog Dialog;
};

TEST_F(PrintDialogComponent, SettingsReachTheDialog) {
    Dialog.SetCopies(3);
    Dialog.SetCollate(true);
    Dialog.SetPrintToFile(true);
    Dialog.SetPrintRange(prPageNums);
    Dialog.SetFromPage(2);
    Dialog.SetToPage(5);
    Look(Dialog, [&] {
        EXPECT_EQ(TextOf(ItemOf(Dialog, CopiesEdit)), "3");
        EXPECT_TRUE(IsChecked(CollateBox));
        EXPECT_TRUE(IsChecked(PrintToFileBox));
        EXPECT_TRUE(IsChecked(PagesRadio));
        EXPECT_EQ(TextOf(ItemOf(Dialog, FromEdit)), "2");
        EXPECT_EQ(TextOf(ItemOf(Dialog, ToEdit)), "5");
        EXPECT_EQ(TextOf(ItemOf(Dialog, PrinterCombo)), Printers[0]);
    });
    EXPECT_EQ(Dialog.Copies(), 3);
    EXPECT_FALSE(Dialog.Printer());
}

TEST_F(PrintDialogComponent, AnswersComeBackWhenItIsConfirmed) {
    Dialog.SetCopies(3);
    EXPECT_TRUE(Confirm([&] {
        SetDlgItemTextA(Dialog.Handle(), CopiesEdit, "4");
        CheckDlgButton(Dialog.Handle(), CollateBox, BST_CHECKED);
        CheckDlgButton(Dialog.Handle(), PrintToFileBox, BST_CHECKED);
        CheckRadioButton(Dialog.Handle(), AllRadio, PagesRadio, PagesRadio);
        SetDlgItemTextA(Dialog.Handle(), FromEdit, "6");
        SetDlgItemTextA(Dialog.Handle(), ToEdit, "7");
    }));
    EXPECT_EQ(Dialog.Copies(), 4);
    EXPECT_TRUE(Dialog.Collate());
    EXPECT_TRUE(Dialog.PrintToFile());
    EXPECT_EQ(Dialog.PrintRange(), prPageNums);
    EXPECT_EQ(Dialog.FromPage(), 6);
    EXPECT_EQ(Dialog.ToPage(), 7);
}

TEST_F(PrintDialogComponent, TheRangeCanBeTheSelection) {
    Dialog.SetPrintRange(prSelection);
    Look(Dialog, [&] { EXPECT_TRUE(IsChecked(SelectionRadio)); });
    EXPECT_TRUE(Confirm());
    EXPECT_EQ(Dialog.PrintRange(), prSelection);
}

TEST_F(PrintDialogComponent, NothingComesBackWhenItIsCancelled) {
    Dialog.SetCopies(2);
    Look(Dialog, [&] { SetDlgItemTextA(Dialog.Handle(), CopiesEdit, "9"); });
    EXPECT_EQ(Dialog.Copies(), 2);
    EXPECT_FALSE(Dialog.Printer());
    EXPECT_EQ(Dialog.Printer().DevMode(), nullptr);
}

TEST_F(PrintDialogComponent, OptionsReachTheDialog) {
    Dialog.SetOptions({poPrintToFile, poPageNums, poSelection, poHelp, poDisablePrintToFile});
    Look(Dialog, [&] {
        EXPECT_TRUE(IsVisible(PrintToFileBox));
        EXPECT_FALSE(IsEnabled(PrintToFileBox));
        EXPECT_TRUE(IsEnabled(PagesRadio));
        EXPECT_TRUE(IsEnabled(SelectionRadio));
        EXPECT_TRUE(IsVisible(HelpButton));
    });
    Dialog.SetOptions({});
    Look(Dialog, [&] {
        EXPECT_FALSE(IsVisible(PrintToFileBox));
        EXPECT_FALSE(IsEnabled(PagesRadio));
        EXPECT_FALSE(IsEnabled(SelectionRadio));
        EXPECT_FALSE(IsVisible(HelpButton));
    });
}

TEST_F(PrintDialogComponent, PagesOutsideTheLimitsDoNotKeepItFromShowing) {
    Dialog.SetPrintRange(prPageNums);
    Dialog.SetFromPage(-5);
    Dialog.SetToPage(100000);
    Dialog.SetCopies(-1);
    Look(Dialog, [&] {
        EXPECT_EQ(TextOf(ItemOf(Dialog, FromEdit)), "1");
        EXPECT_EQ(TextOf(ItemOf(Dialog, ToEdit)), "20");
    });
}

TEST_F(PrintDialogComponent, TheChosenPrinterIsTheApplications) {
    EXPECT_TRUE(Confirm([&] { ChooseInCombo(ItemOf(Dialog, PrinterCombo), ComboIndex(Printers[1])); }));
    const TPrinterChoice& printer = Dialog.Printer();
    EXPECT_EQ(printer.Device(), Printers[1]);
    EXPECT_NE(printer.Driver(), "");
    EXPECT_NE(printer.Port(), "");
    ASSERT_NE(printer.DevMode(), nullptr);
    EXPECT_GE(printer.DevMode()->dmSize, offsetof(DEVMODEA, dmFields));
    // It can be printed on.
    const unique_hdc dc(CreateDCA(printer.Driver().c_str(), printer.Device().c_str(), nullptr, printer.DevMode()));
    ASSERT_TRUE(dc);
    EXPECT_GT(GetDeviceCaps(dc.get(), HORZRES), 0);
    // The next showing begins with it.
    Look(Dialog, [&] { EXPECT_EQ(TextOf(ItemOf(Dialog, PrinterCombo)), Printers[1]); });
    EXPECT_EQ(Dialog.Printer().Device(), Printers[1]);
}

TEST_F(PrintDialogComponent, APrinterGoesFromOneDialogToAnother) {
    EXPECT_TRUE(Confirm([&] { ChooseInCombo(ItemOf(Dialog, PrinterCombo), ComboIndex(Printers[1])); }));
    TPrintDialog other;
    other.SetPrinter(Dialog.Printer());
    Look(other, [&] { EXPECT_EQ(TextOf(ItemOf(other, PrinterCombo)), Printers[1]); });
}

TEST_F(PrintDialogComponent, APrinterThatIsGoneGivesWayToTheDefaultOne) {
    TPrinterChoice gone;
    const HGLOBAL names = DevNames("nodriver", "Gone Printer", "NUL:");
    gone.Take(names, nullptr);
    GlobalFree(names);
    EXPECT_EQ(gone.Device(), "Gone Printer");
    EXPECT_EQ(gone.Driver(), "nodriver");
    EXPECT_EQ(gone.Port(), "NUL:");
    Dialog.SetPrinter(gone);
    Look(Dialog, [&] { EXPECT_EQ(TextOf(ItemOf(Dialog, PrinterCombo)), Printers[0]); });
}

TEST_F(PrintDialogComponent, MayBeFreedWhileItIsShown) {
    auto* dialog = new TPrintDialog;
    int closed = 0;
    dialog->SetOnClose([&](TObject*) { ++closed; });
    EXPECT_FALSE(RunDialog(*dialog, [&] { dialog->Free(); }));
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(ActiveDialog(), nullptr);
}

// --- No printer

/// A registry without anything in it, for this process and the length of a scope.
class TEmptyRegistry {
public:
    TEmptyRegistry() {
        unique_hkey empty;
        RegCreateKeyExA(HKEY_CURRENT_USER, "Software\\kxqdlgs70 without printers", 0, nullptr, REG_OPTION_VOLATILE,
                        KEY_ALL_ACCESS, nullptr, empty.put(), nullptr);
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, empty.get());
        RegOverridePredefKey(HKEY_CURRENT_USER, empty.get());
    }
    TEmptyRegistry(const TEmptyRegistry&) = delete;
    TEmptyRegistry& operator=(const TEmptyRegistry&) = delete;
    ~TEmptyRegistry() {
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        RegDeleteKeyA(HKEY_CURRENT_USER, "Software\\kxqdlgs70 without printers");
    }
};

TEST(PrintDialogWithoutPrinter, TheSystemSaysSoAndItIsNotConfirmed) {
    const TEmptyRegistry empty;
    ASSERT_THAT(InstalledPrinters(), testing::IsEmpty());
    TPrintDialog dialog;
    dialog.SetOptions({poWarning});
    int shown = 0;
    dialog.SetOnShow([&](TObject*) { ++shown; });
    std::string text;
    EXPECT_FALSE(
        RunDialog([&] { return dialog.Execute(); }, {AnswerBox(IDOK, [&](const std::string& said) { text = said; })}));
    EXPECT_NE(text, "");
    EXPECT_EQ(shown, 0);
    EXPECT_FALSE(dialog.Printer());
}

} // namespace
} // namespace kx
