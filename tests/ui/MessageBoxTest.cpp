#include "support/DialogDriver.h"
#include "ui/Forms.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

// The application's message box, and the windows around it.

namespace kx {
namespace {

using namespace test;

/// Notes whether a window is enabled at the moment in which a message box of this thread is destroyed: from then on the
/// system looks for another window to be the active one.
class TAtTheEndOfTheBox {
public:
    explicit TAtTheEndOfTheBox(HWND window) : FHook(SetWindowsHookExA(WH_CBT, Hook, nullptr, GetCurrentThreadId())) {
        Watched = window;
        Enabled.clear();
    }
    TAtTheEndOfTheBox(const TAtTheEndOfTheBox&) = delete;
    TAtTheEndOfTheBox& operator=(const TAtTheEndOfTheBox&) = delete;
    ~TAtTheEndOfTheBox() { UnhookWindowsHookEx(FHook); }

    static inline std::vector<bool> Enabled;

private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam) {
        if (code == HCBT_DESTROYWND && ClassOf(reinterpret_cast<HWND>(wParam)) == "#32770") {
            Enabled.push_back(IsWindowEnabled(Watched) != 0);
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static inline HWND Watched = nullptr;
    HHOOK FHook;
};

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

    std::unique_ptr<TForm, TFreeDeleter> Owner;
    std::unique_ptr<TForm, TFreeDeleter> Other;
};

TEST_F(MessageBoxOwner, IsEnabledBeforeTheBoxGoes) {
    const TAtTheEndOfTheBox watch(Owner->Handle());
    ShowBox([] { PressButton(GetDlgItem(ShownMessageBox(), IDOK)); });
    EXPECT_EQ(TAtTheEndOfTheBox::Enabled, std::vector<bool>{true});
}

TEST_F(MessageBoxOwner, IsEnabledAgainWhenTheBoxIsDestroyed) {
    ShowBox([] {
        DestroyWindow(ShownMessageBox());
        PostThreadMessageA(GetCurrentThreadId(), WM_NULL, 0, 0);
    });
}

} // namespace
} // namespace kx
