// SPDX-License-Identifier: MIT
// The window that owns a message box.

#include "tests/support/ImportPatch.h"
#include "tests/support/TestDriver.h"
#include "tests/support/TestForms.h"

// The application's message box, and the windows around it.

namespace kx {
namespace {

using namespace test;

bool OwnerWasEnabled = false;

/// Stands in for the system's box: notes the state in which it gets its owner, and is answered at once.
int WINAPI NoteOwner(HWND owner, LPCSTR, LPCSTR, UINT) {
    OwnerWasEnabled = IsWindowEnabled(owner) != 0;
    return IDOK;
}

class MessageBoxOwner : public testing::Test {
protected:
    MessageBoxOwner() : Owner(NewForm<TForm>(nullptr)), Other(NewForm<TForm>(nullptr)) {
        Other->SetBounds(500, 100, 200, 100);
        Other->Show();
        Owner->SetBounds(100, 100, 200, 100);
        Owner->Show();
        EXPECT_TRUE(PumpUntil([this] { return Owner->Active(); }));
    }
    void ShowBox(const TAction& end) {
        RunDialog(
            [] {
                Application().MessageBox("text", "caption", MB_OK);
                return true;
            },
            {{"the box is shown", BoxShown(), [&] {
                  EXPECT_EQ(GetWindow(ShownMessageBox(), GW_OWNER), Owner->Handle());
                  EXPECT_FALSE(IsWindowEnabled(Owner->Handle()));
                  EXPECT_FALSE(IsWindowEnabled(Other->Handle()));
                  end();
              }}});
        EXPECT_TRUE(IsWindowEnabled(Owner->Handle()));
        EXPECT_TRUE(IsWindowEnabled(Other->Handle()));
        EXPECT_TRUE(PumpUntil([this] { return Owner->Active(); }));
    }

    TFormPtr Owner;
    TFormPtr Other;
};

TEST_F(MessageBoxOwner, IsTheSystemsToDisableAndToEnable) {
    ShowBox([] { PressButton(GetDlgItem(ShownMessageBox(), IDOK)); });
    // One that the system finds disabled it does not enable before the box goes: another program would come to the
    // front.
    const TImportPatch patch("MessageBoxA", reinterpret_cast<void*>(NoteOwner));
    OwnerWasEnabled = false;
    EXPECT_EQ(Application().MessageBox("text", "caption", MB_OK), IDOK);
    EXPECT_TRUE(OwnerWasEnabled);
}

TEST_F(MessageBoxOwner, IsEnabledAgainWhenTheBoxIsDestroyed) {
    ShowBox([] {
        DestroyWindow(ShownMessageBox());
        PostThreadMessageA(GetCurrentThreadId(), WM_NULL, 0, 0);
    });
}

} // namespace
} // namespace kx
