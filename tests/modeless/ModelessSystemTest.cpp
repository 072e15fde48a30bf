// SPDX-License-Identifier: MIT
// What the system does for dialogs of other threads.

#include "ModelessTest.h"

#include "kx/colorprint/KxColorDlg.h"
#include "kx/folder/KxFolderDlg.h"
#include "kx/win/System.h"
#include "tests/support/ImportPatch.h"

#include <ole2.h>
#include <thread>

// The dialog's thread as the system's dialogs need it, and what other dialogs than those for files do in it.

namespace kx {
namespace {

using namespace test;

class ModelessSystem : public TModelessTest {
protected:
    /// A new dialog of another kind, owned by the main form.
    template <class T> T& NewOther() {
        auto* dialog = new T(Main);
        Runner->SetDialog(dialog);
        return *dialog;
    }
};

TEST_F(ModelessSystem, TheShellsDialogsHaveOleInTheirThreadExceptUnderWine) {
    for (const bool wine : {true, false}) {
        const TAssumedSystem system({.Wine = wine});
        auto& dialog = NewOther<TKxColorDialog>();
        HRESULT ole = E_FAIL;
        dialog.SetOnShow([&](TObject*) {
            ole = OleInitialize(nullptr);
            if (SUCCEEDED(ole)) {
                OleUninitialize();
            }
        });
        Show(dialog, {}, {Cancel(dialog)});
        EXPECT_EQ(ole, wine ? RPC_E_CHANGED_MODE : S_FALSE) << "the thread has its apartment already";
        dialog.Free();
    }
}

int Foregrounds;

BOOL WINAPI CountForeground(HWND) {
    ++Foregrounds;
    return TRUE;
}

TEST_F(ModelessSystem, ASecondShowTakesTheForegroundUnderWineOnly) {
    auto& dialog = NewDialog();
    ShowAndCancel(dialog, [&] {
        const TImportPatch patch("SetForegroundWindow", reinterpret_cast<void*>(CountForeground));
        for (const bool wine : {false, true}) {
            const TAssumedSystem system({.Wine = wine});
            Foregrounds = 0;
            Runner->Show();
            EXPECT_EQ(Foregrounds, wine ? 1 : 0);
        }
    });
}

TEST_F(ModelessSystem, ADialogWithoutFormsDoesNotWaitForABusyApplication) {
    auto& dialog = NewDialog<TKxOpenDialog>();
    ShowAndCancel(dialog, [&] {
        HWND window = dialog.DlgHandle();
        const TRect client = ClientRectOf(window);
        bool sized = false;
        bool painted = false;
        std::thread other([&] { // this one handles no messages meanwhile
            constexpr UINT patience = 10'000;
            DWORD_PTR result = 0;
            sized = SendMessageTimeoutA(window, WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.Right, client.Bottom),
                                        SMTO_NORMAL, patience, &result) != 0;
            painted = SendMessageTimeoutA(window, WM_NCPAINT, 1, 0, SMTO_NORMAL, patience, &result) != 0;
        });
        other.join();
        EXPECT_TRUE(sized);
        EXPECT_TRUE(painted);
    });
}

TEST_F(ModelessSystem, AFolderDialogIsOwnedByItsParentFormWhoseWindowIsTheApplications) {
    auto& dialog = NewOther<TKxFolderDialog>();
    dialog.SetInitialDir(Folder.Path());
    const TFormPtr parent(NewForm<TForm>(nullptr));
    parent->SetBounds(600, 400, 200, 100);
    dialog.SetParentForm(parent.get()); // has no window yet
    Show(dialog,
         [&] {
             EXPECT_EQ(GetWindow(dialog.DialogWindow(), GW_OWNER), parent->WindowHandle());
             EXPECT_EQ(ThreadOf(parent->WindowHandle()), MainThread);
             EXPECT_TRUE(IsWindowEnabled(parent->WindowHandle()));
             EXPECT_TRUE(IsWindowEnabled(Main->Handle()));
         },
         {Press(dialog, IDOK)});
    EXPECT_TRUE(IsWindow(parent->WindowHandle()));
    EXPECT_TRUE(IsWindowEnabled(parent->WindowHandle()));
    EXPECT_EQ(Results.size(), 1u);
}

TEST_F(ModelessSystem, AColourDialogOpensItsFullPartAboveTheForm) {
    TNoteForm* note = nullptr;
    Application().CreateForm(&note);
    const TFormPtr owned(note);
    auto& dialog = NewOther<TKxColorDialog>();
    dialog.CustDlgParams().SetBottomForm(note);
    constexpr int DefineButton = 719;
    constexpr int RedEdit = 706;
    DWORD opening = 0;
    DWORD opened = 0;
    TRect before;
    dialog.SetOnFullOpening([&](TObject*, bool&) { opening = GetCurrentThreadId(); });
    dialog.SetOnFullOpen([&](TObject*) { opened = GetCurrentThreadId(); });
    Show(dialog,
         [&] {
             before = ScreenRectOf(dialog.DialogWindow());
             PostMessageA(GetDlgItem(dialog.DialogWindow(), DefineButton), BM_CLICK, 0, 0);
         },
         {{"the full part is open, and the form below it",
           [&] {
               const TRect outer = ScreenRectOf(dialog.DialogWindow());
               return opened != 0 && IsWindowVisible(GetDlgItem(dialog.DialogWindow(), RedEdit)) &&
                      Width(outer) > Width(before) && Height(outer) == Height(before);
           },
           [&] {
               EXPECT_EQ(opening, ThreadOf(dialog.DialogWindow()));
               EXPECT_EQ(opened, opening);
               EXPECT_EQ(ThreadOf(note->WindowHandle()), MainThread);
               const TRect form = RectIn(dialog.DialogWindow(), note->WindowHandle());
               EXPECT_EQ(Height(form), note->Height());
               EXPECT_EQ(form.Bottom, ClientRectOf(dialog.DialogWindow()).Bottom);
               EXPECT_EQ(Width(form), ClientRectOf(dialog.DialogWindow()).Right);
               Screenshot("modeless_color_full", dialog.DialogWindow());
           }},
          Cancel(dialog)});
    EXPECT_THAT(Results, ElementsAre(false));
    EXPECT_FALSE(note->IsDocked());
}

} // namespace
} // namespace kx
