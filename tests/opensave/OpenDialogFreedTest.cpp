// SPDX-License-Identifier: MIT
// The open dialog is freed by its handlers.

#include "OpenDialogTest.h"

#include "kx/ui/controls/Menus.h"
#include "tests/support/FreedAtMessages.h"
#include "tests/support/Grow.h"

#include <commdlg.h>

namespace kx {
namespace {

using namespace test;

/// A dialog with places, docked forms, a filter and a menu at its OK button that is freed in one of its events. The
/// events come from the mouse and the keyboard: the system is in the middle of its own work then.
class OpenDialogFreed : public TOpenDialogTest {
protected:
    OpenDialogFreed() {
        Left = MakeMarkedForm(clMoneyGreen, 80, 50);
        Bottom = MakeMarkedForm(clCream, 80, 50);
        Item.SetCaption("Free it");
        Menu.Items().Add(&Item);
        Folder.AddFile("picture.png");
        Victim = &NewVictim();
    }

    TKxOpenDialog& NewVictim() {
        auto& dialog = NewDialog<TKxOpenDialog>();
        dialog.SetFilter("Text|*.txt|Pictures|*.png");
        dialog.SetTitle("Open");
        dialog.PlacesBar().SetNative(false);
        TKxPlace& place = *dialog.PlacesBar().Places().Add();
        place.SetPlaceName("Inner");
        place.SetPlacePath(Folder.Path("inner"));
        dialog.CustDlgParams().SetLeftForm(Left.get());
        dialog.CustDlgParams().SetBottomForm(Bottom.get());
        dialog.SetOkButtonMenu(&Menu);
        dialog.ExtFilter().SetEnabled(true);
        return dialog;
    }

    void FreeIt() {
        if (Victim) {
            std::exchange(Victim, nullptr)->Free();
        }
    }
    TNotifyEvent Freeing() {
        return [this](TObject*) { FreeIt(); };
    }
    TKxCtrlQueryEvent FreeingQuery() {
        return [this](TObject*, bool&) { FreeIt(); };
    }

    HWND Part(int id) const { return ItemOf(*Victim, id); }
    TPoint FileAt(const char* name) const { return ItemCenter(ListOf(*Victim), FindItem(ListOf(*Victim), name)); }
    TPoint ToolButtonAt(WORD command) const {
        HWND bar = NavigationBarOf(*Victim);
        RECT r{};
        SendMessageA(bar, TB_GETITEMRECT, static_cast<WPARAM>(SendMessageA(bar, TB_COMMANDTOINDEX, command, 0)),
                     reinterpret_cast<LPARAM>(&r));
        MapWindowPoints(bar, nullptr, reinterpret_cast<POINT*>(&r), 2);
        return {(r.left + r.right) / 2, (r.top + r.bottom) / 2};
    }

    /// Once the dialog is shown, `act` brings about what frees it.
    void RunToItsEnd(const TAction& act = {}) {
        TKxOpenDialog* const running = Victim;
        std::vector<TStep> steps;
        if (act) {
            steps.push_back({"the dialog is shown", Shown(*running), act});
        }
        EXPECT_FALSE(RunDialog([&] { return running->Execute(); }, std::move(steps)));
        ExpectNoTrace();
    }
    void ExpectNoTrace() const {
        EXPECT_EQ(Victim, nullptr) << "the event came";
        EXPECT_EQ(TKxCustomOpenDialog::CreationControl(), nullptr);
        EXPECT_EQ(ActiveDialog(), nullptr) << AllWindowTrees();
        EXPECT_TRUE(IsWindowEnabled(Owner->WindowHandle()));
        for (const TFormPtr* form : {&Left, &Bottom}) {
            EXPECT_FALSE((*form)->Visible());
            EXPECT_EQ((*form)->ParentWindow(), nullptr);
        }
    }

    TFormPtr Left;
    TFormPtr Bottom;
    TPopupMenu Menu;
    TMenuItem Item{nullptr};
    TKxOpenDialog* Victim = nullptr; ///< Null once it is freed.
};

TEST_F(OpenDialogFreed, InTheShow) {
    Victim->SetOnShow(Freeing());
    RunToItsEnd();
}

TEST_F(OpenDialogFreed, InTheFirstFolderChange) {
    Victim->SetOnFolderChange(Freeing());
    RunToItsEnd();
}

TEST_F(OpenDialogFreed, InTheFirstPassOfTheFilter) {
    Victim->SetOnIncludeFile([this](TObject*, const std::string&, bool&) { FreeIt(); });
    RunToItsEnd();
}

TEST_F(OpenDialogFreed, InAPassOfTheFilterByAnotherType) {
    RunToItsEnd([this] {
        Victim->SetOnIncludeFile([this](TObject*, const std::string&, bool&) { FreeIt(); });
        SetFocus(Part(KxFileTypeId));
        PressKey(VK_DOWN);
        PressKey(VK_RETURN);
    });
}

TEST_F(OpenDialogFreed, InTheTypeChange) {
    Victim->SetOnTypeChange(Freeing());
    RunToItsEnd([this] {
        SetFocus(Part(KxFileTypeId));
        PressKey(VK_DOWN);
        PressKey(VK_RETURN);
    });
}

TEST_F(OpenDialogFreed, InAFolderChangeByADoubleClick) {
    RunToItsEnd([this] {
        Victim->SetOnFolderChange(Freeing());
        DoubleClickAt(FileAt("inner"));
    });
}

TEST_F(OpenDialogFreed, InAFolderChangeByAPlace) {
    RunToItsEnd([this] {
        Victim->SetOnFolderChange(Freeing());
        ClickAt(Victim->PlacesForm()->ToolBar1->Buttons(0)->ClientToScreen({40, 20}));
    });
}

TEST_F(OpenDialogFreed, InTheSelectionChange) {
    RunToItsEnd([this] {
        Victim->SetOnSelectionChange(Freeing());
        ClickAt(FileAt("one.txt"));
    });
}

TEST_F(OpenDialogFreed, InTheQueryOfANavigation) {
    Victim->SetOnUpLevelNavigating(FreeingQuery());
    RunToItsEnd([this] { ClickAt(ToolButtonAt(KxCmdUpLevel)); });
}

TEST_F(OpenDialogFreed, InTheReportOfANavigation) {
    Victim->SetOnUpLevelNavigate(Freeing());
    RunToItsEnd([this] { ClickAt(ToolButtonAt(KxCmdUpLevel)); });
}

TEST_F(OpenDialogFreed, WhenTheNameChanges) {
    RunToItsEnd([this] {
        Victim->SetOnFilenameChange(Freeing());
        SetFocus(FileNameEditOf(Victim->DlgHandle()));
        PressKey('X');
    });
}

TEST_F(OpenDialogFreed, WhenTheNameIsEntered) {
    Victim->SetOnFilenameEntering(FreeingQuery());
    RunToItsEnd([this] {
        SetFocus(FileNameEditOf(Victim->DlgHandle()));
        PressKey(VK_RETURN);
    });
}

TEST_F(OpenDialogFreed, WhenItMayClose) {
    Victim->SetOnCanClose([this](TObject*, bool&) { FreeIt(); });
    RunToItsEnd([this] { DoubleClickAt(FileAt("one.txt")); });
}

TEST_F(OpenDialogFreed, WhenItCloses) {
    Victim->SetOnClose(Freeing());
    RunToItsEnd([this] { Click(Part(IDCANCEL)); });
}

TEST_F(OpenDialogFreed, InTheShareViolation) {
    for (const int32_t own : {-1, OFN_SHAREFALLTHROUGH}) {
        Victim->SetOnShareViolation([=, this](TObject*, int32_t& result, const std::string&) {
            result = own;
            FreeIt();
        });
        RunToItsEnd([=, this] {
            char name[] = "C:\\one.txt";
            OFNOTIFYA violation{};
            violation.hdr.code = static_cast<UINT>(CDN_SHAREVIOLATION);
            violation.pszFile = name;
            const LRESULT answer = SendMessageA(Victim->Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&violation));
            EXPECT_EQ(answer, own == -1 ? OFN_SHARENOWARN : own) << "the system is not to say anything";
        });
        Victim = &NewVictim();
    }
}

TEST_F(OpenDialogFreed, BeforeItsStyleChanges) {
    Victim->SetOnSelectionStyleChanging([this](TObject*, TViewStyle, bool&) { FreeIt(); });
    RunToItsEnd([this] { Victim->SetFileListViewStyle(lvsReport); });
}

TEST_F(OpenDialogFreed, WhenItsStyleHasChanged) {
    Victim->SetOnSelectionStyleChange([this](TObject*, TViewStyle) { FreeIt(); });
    RunToItsEnd([this] { Victim->SetFileListViewStyle(lvsReport); });
}

TEST_F(OpenDialogFreed, BeforeAMessage) {
    Victim->SetOnEventHooking([this](TObject*, TMessage& m, bool&) {
        if (m.Msg == WM_COMMAND && m.WParamLo() == IDCANCEL) {
            FreeIt();
        }
    });
    RunToItsEnd([this] { Click(Part(IDCANCEL)); });
}

TEST_F(OpenDialogFreed, BehindAMessage) {
    Victim->SetOnEventHook([this](TMessage& m) {
        if (m.Msg == WM_COMMAND && m.WParamLo() == IDCANCEL) {
            FreeIt();
        }
    });
    RunToItsEnd([] { PressKey(VK_ESCAPE); });
}

TEST_F(OpenDialogFreed, InTheSizing) {
    RunToItsEnd([this] {
        Victim->SetOnEventHook([this](TMessage& m) {
            if (m.Msg == WM_SIZE) {
                FreeIt();
            }
        });
        Grow(Victim->DlgHandle());
    });
}

class OpenDialogFreedAtAMessage : public OpenDialogFreed, public testing::WithParamInterface<bool> {};

TEST_P(OpenDialogFreedAtAMessage, IsGoneWithoutATrace) {
    FreeAtEachMessage<TKxOpenDialog>(
        GetParam(), [this] { return &NewVictim(); },
        [this] {
            Victim = nullptr;
            ExpectNoTrace();
            EXPECT_THAT(TakeExceptions(), testing::IsEmpty());
        });
}

TEST_P(OpenDialogFreedAtAMessage, IsGoneWithoutATraceAsALiteOne) {
    FreeAtEachMessage<TKxOpenLiteDialog>(
        GetParam(),
        [this] {
            auto& dialog = NewDialog<TKxOpenLiteDialog>();
            dialog.SetTitle("Open");
            dialog.CustDlgParams().SetTopForm(Left.get());
            dialog.CustDlgParams().SetRightForm(Bottom.get());
            return &dialog;
        },
        [this] { EXPECT_THAT(TakeExceptions(), testing::IsEmpty()); });
    EXPECT_EQ(TKxCustomOpenLiteDialog::Running(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Hooks, OpenDialogFreedAtAMessage, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& hook) { return hook.param ? "Behind" : "Before"; });

TEST_F(OpenDialogFreed, ByItsOwnMenu) {
    Item.SetOnClick(Freeing());
    Victim->SetOnShow([this](TObject*) { PostMessageA(Victim->DlgHandle(), WM_APP, 0, 0); });
    Victim->SetOnEventHooking([this](TObject*, TMessage& m, bool&) {
        if (m.Msg == WM_APP) {
            Menu.Popup(300, 300);
        }
    });
    TKxOpenDialog* const running = Victim;
    EXPECT_FALSE(
        RunDialog([&] { return running->Execute(); }, {{"the menu is open", [] { return ShownMenu() != nullptr; },
                                                        [] {
                                                            PressKey(VK_DOWN);
                                                            PressKey(VK_RETURN);
                                                        }}}));
    EXPECT_EQ(Victim, nullptr);
}

TEST_F(OpenDialogFreed, WhileItsContextMenuIsOpen) {
    TKxOpenDialog* const running = Victim;
    EXPECT_FALSE(RunDialog([&] { return running->Execute(); },
                           {{"the dialog is shown", Shown(*running), [this] { ClickAt(FileAt("one.txt"), mbRight); }},
                            {"the menu is open", [] { return ShownMenu() != nullptr; }, [this] { FreeIt(); }}}));
    EXPECT_EQ(ShownMenu(), nullptr);
    EXPECT_EQ(ActiveDialog(), nullptr);
}

} // namespace
} // namespace kx
