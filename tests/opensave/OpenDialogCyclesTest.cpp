// SPDX-License-Identifier: MIT
// Showings of the open dialog leave nothing behind.

#include "OpenDialogTest.h"

#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/win/Registry.h"
#include "tests/support/Cycles.h"
#include "tests/support/TestKey.h"

namespace kx {
namespace {

using namespace test;

/// A dialog with everything switched on.
class OpenDialogCycles : public TOpenDialogTest {
protected:
    OpenDialogCycles() {
        for (TFormPtr& form : Forms) {
            form = MakeMarkedForm(clMoneyGreen, 80, 50);
        }
        Item.SetCaption("Item");
        Menu.Items().Add(&Item);
        Bar.SetParent(Owner.get());
    }

    void SwitchAllOn(TKxOpenDialog& dialog) {
        dialog.PlacesBar().SetNative(false);
        dialog.PlacesBar().SetRegistryKey(Key.Path());
        TKxPlace& place = *dialog.PlacesBar().Places().Add();
        place.SetPlaceName("Inner");
        place.SetPlacePath(Folder.Path("inner"));
        place.SetPlaceIconDll("Shell32.dll");
        TKxCustDlgParams& params = dialog.CustDlgParams();
        params.SetLeftForm(Forms[0].get());
        params.SetTopForm(Forms[1].get());
        params.SetRightForm(Forms[2].get());
        params.SetBottomForm(Forms[3].get());
        params.SetCustomForm(Forms[4].get());
        params.SetPosition(dpScrCenter);
        dialog.SetTitle("Cycles");
        dialog.DlgItemsCaptions().SetOK("&Take");
        dialog.SetOkButtonMenu(&Menu);
        dialog.ToolBar().SetCustomBar(&Bar);
        dialog.ToolBar().SetFlat(true);
        dialog.ListViewStyles().SetGridLines(true);
        dialog.ListViewStyles().SetEnableRename(false);
        dialog.ExtFilter().SetEnabled(true);
        dialog.SetOnIncludeFile(
            [](TObject*, const std::string& name, bool& include) { include = ExtractFileName(name) != "two.txt"; });
        dialog.SetOnEventHook([this](TMessage&) { ++Messages; });
    }

    /// What is done in a dialog before it ends.
    void Use(TKxOpenDialog& dialog) {
        dialog.SetSelectedFolder(Folder.Path("inner"));
        dialog.SetSelectionType(stCustom);
        dialog.SetSelectedFolder(Folder.Path());
        dialog.SetSelectionType(stStandard);
        SelectItem(ListOf(dialog), "one.txt");
    }

    /// What the bare dialog loses.
    TCensus SystemGrowth() {
        TOpenDialog plain(Owner.get());
        plain.SetInitialDir(Folder.Path());
        plain.SetOnShow([&](TObject*) { PostMessageA(plain.DialogWindow(), WM_COMMAND, IDCANCEL, 0); });
        return Growth(SystemCycles, [&] { ASSERT_FALSE(plain.Execute()); });
    }
    /// Shows the dialog `cycles` times, by `show`, and expects no loss beyond the system's dialog's.
    template <class F> void ExpectNoLossOf(F show, int cycles = FewCycles) {
        static const TCensus system = SystemGrowth();
        const TCensus ours = Growth(cycles, show);
        EXPECT_GT(Messages, cycles);
        ExpectNoLoss(ours, cycles, system, SystemCycles);
    }
    /// Has `use` run inside the dialog once it is shown.
    void OnceShown(TKxOpenDialog& dialog, const std::function<void()>& use) {
        dialog.SetOnShow([&dialog](TObject*) { PostMessageA(dialog.DlgHandle(), WM_APP, 0, 0); });
        dialog.SetOnEventHooking([use](TObject*, TMessage& m, bool&) {
            if (m.Msg == WM_APP) {
                use();
            }
        });
    }
    /// The dialog is used and ended by `end`; it returns `result`.
    void ExpectNoLossWhenEndedBy(const std::function<void()>& end, bool result, int cycles = FewCycles) {
        SwitchAllOn(Dialog);
        OnceShown(Dialog, [this, end] {
            Use(Dialog);
            end();
        });
        ExpectNoLossOf([&] { EXPECT_EQ(Dialog.Execute(), result); }, cycles);
    }

    static constexpr int SystemCycles = 20;

    TFormPtr Forms[5];
    TPopupMenu Menu;
    TMenuItem Item{nullptr};
    TToolBar& Bar = *new TToolBar(Owner.get());
    int Messages = 0;
    TTestKey Key;
};

TEST_F(OpenDialogCycles, EndedByOkLeaveNothingBehind) {
    ExpectNoLossWhenEndedBy([this] { Dialog.CloseDialog(mrOk); }, true, ManyCycles);
}

TEST_F(OpenDialogCycles, EndedByCancelLeaveNothingBehind) {
    ExpectNoLossWhenEndedBy([this] { Dialog.CloseDialog(mrCancel); }, false);
}

TEST_F(OpenDialogCycles, EndedByEscapeLeaveNothingBehind) {
    ExpectNoLossWhenEndedBy([this] { PostMessageA(List(), WM_KEYDOWN, VK_ESCAPE, 0); }, false);
}

TEST_F(OpenDialogCycles, EndedByClosingTheWindowLeaveNothingBehind) {
    ExpectNoLossWhenEndedBy([this] { PostMessageA(Dialog.DlgHandle(), WM_CLOSE, 0, 0); }, false);
}

TEST_F(OpenDialogCycles, OfDialogsThatAreFreedWhileTheyAreShownLeaveNothingBehind) {
    ExpectNoLossOf([&] {
        auto& dialog = NewDialog<TKxOpenDialog>();
        SwitchAllOn(dialog);
        OnceShown(dialog, [&] {
            Use(dialog);
            dialog.Free();
        });
        EXPECT_FALSE(dialog.Execute());
    });
}

TEST_F(OpenDialogCycles, WithHandlersThatThrowLeaveNothingBehind) {
    SwitchAllOn(Dialog);
    int thrown = 0;
    const auto fail = [&] {
        ++thrown;
        throw Exception("from a handler");
    };
    OnceShown(Dialog, [&] {
        Use(Dialog);
        Dialog.SetFileListViewStyle(lvsReport);
        SendMessageA(Dialog.DlgHandle(), WM_COMMAND, KxCmdUpLevel, 0);
        PostMessageA(Dialog.DlgHandle(), WM_COMMAND, IDCANCEL, 0);
    });
    const TNotifyEvent shown = Dialog.OnShow();
    Dialog.SetOnShow([&, shown](TObject* sender) {
        shown(sender);
        fail();
    });
    Dialog.SetOnFolderChange([&](TObject*) { fail(); });
    Dialog.SetOnSelectionChange([&](TObject*) { fail(); });
    Dialog.SetOnIncludeFile([&](TObject*, const std::string&, bool&) { fail(); });
    Dialog.SetOnSelectionStyleChange([&](TObject*, TViewStyle) { fail(); });
    Dialog.SetOnUpLevelNavigate([&](TObject*) { fail(); });
    Dialog.SetOnFilenameChange([&](TObject*) { fail(); });
    Dialog.SetOnClose([&](TObject*) { fail(); });
    ExpectNoLossOf([&] {
        EXPECT_FALSE(Dialog.Execute());
        TakeExceptions();
    });
    EXPECT_GT(thrown, 7 * FewCycles);
}

} // namespace
} // namespace kx
