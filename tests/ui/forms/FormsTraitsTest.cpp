// SPDX-License-Identifier: MIT
// Forms that show through, that hear of all keys, and that refer to each other.

#include "kx/core/GlobalReferences.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/FormFiles.h"
#include "tests/support/FormTest.h"
#include "tests/ui/FocusPump.h"

#include <gmock/gmock.h>

namespace kx {
namespace {

using namespace test;
using testing::ElementsAre;

// --- Showing through

class AlphaBlend : public TFormTest {
protected:
    /// 0 to 255; -1 for a window that hides what is behind it.
    int Shown() const {
        BYTE alpha = 0;
        DWORD flags = 0;
        const bool isLayered = (GetWindowLongA(Form->WindowHandle(), GWL_EXSTYLE) & WS_EX_LAYERED) != 0;
        if (!isLayered || !GetLayeredWindowAttributes(Form->WindowHandle(), nullptr, &alpha, &flags)) {
            return -1;
        }
        return flags & LWA_ALPHA ? alpha : -1;
    }
};

TEST_F(AlphaBlend, ReachesTheWindow) {
    EXPECT_FALSE(Form->AlphaBlend());
    Form->SetAlphaBlendValue(100);
    Show();
    EXPECT_EQ(Shown(), -1);
    Form->SetAlphaBlend(true);
    EXPECT_EQ(Shown(), 100);
    Form->SetAlphaBlendValue(50);
    EXPECT_EQ(Shown(), 50);
    Form->SetBorderStyle(bsDialog);
    EXPECT_EQ(Shown(), 50);
    Form->RecreateWnd();
    EXPECT_EQ(Shown(), 50);
    Form->SetAlphaBlend(false);
    EXPECT_EQ(Shown(), -1);
}

TEST_F(AlphaBlend, ADockedFormHidesWhatIsBehindIt) {
    Form->SetAlphaBlend(true);
    Form->SetAlphaBlendValue(70);
    Show();
    const HWND host = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 300, 300, nullptr, nullptr, nullptr, nullptr);
    Form->SetParentWindow(host);
    EXPECT_EQ(Shown(), -1);
    Form->SetParentWindow(nullptr);
    EXPECT_EQ(Shown(), 70);
    DestroyWindow(host);
}

// --- Keys

class OnShortCut : public TFormTest {};

TEST_F(OnShortCut, HearsOfEachKeyBeforeMenuAndControls) {
    auto* const edit = Add<TEdit>(0, 0, 100, 21);
    edit->SetText("ab");
    auto* const menu = new TMainMenu(Form.get());
    auto* const item = new TMenuItem(menu);
    item->SetShortCut(ShortCut(VK_F5, {}));
    int clicks = 0;
    item->SetOnClick([&](TObject*) { ++clicks; });
    menu->Items().Add(item);
    Form->SetMenu(menu);
    Show();
    edit->SetFocus();
    edit->SetSelStart(0);
    edit->SetSelLength(0);
    std::vector<WPARAM> keys;
    Form->SetOnShortCut([&](MSG& message, bool& handled) {
        keys.push_back(message.wParam);
        handled = message.wParam == VK_DELETE || message.wParam == VK_F5;
    });
    PressKey(VK_F5);
    PressKey(VK_DELETE);
    PressKey(VK_END);
    EXPECT_TRUE(FocusPump([&] { return edit->SelStart() == 2; }));
    EXPECT_EQ(edit->Text(), "ab");
    EXPECT_EQ(clicks, 0);
    EXPECT_THAT(keys, ElementsAre(WPARAM{VK_F5}, WPARAM{VK_DELETE}, WPARAM{VK_END}));
    Form->SetOnShortCut(nullptr);
    PressKey(VK_F5);
    EXPECT_TRUE(FocusPump([&] { return clicks == 1; }));
}

TEST_F(OnShortCut, AHandlerMayFreeTheForm) {
    auto* const edit = Add<TEdit>(0, 0, 100, 21);
    Show();
    edit->SetFocus();
    Form->SetOnShortCut([&](MSG&, bool&) { Form.reset(); });
    PressKey(VK_END);
    EXPECT_TRUE(FocusPump([&] { return !Form; }));
}

// --- References

/// Forms that refer to one another by name.
class FormReferences : public TFormTest {
protected:
    void SetUp() override { RegisterClasses<TPopupMenu, TEdit>(); }
    static constexpr char Later[] = "object Later: TForm object PopupMenu1: TPopupMenu end end";
};

TEST_F(FormReferences, WaitForAFormOfTheScreen) {
    ReadFormOver(*Form, "object First: TForm PopupMenu = Later.PopupMenu1 end");
    EXPECT_EQ(Form->PopupMenu(), nullptr);
    EXPECT_NE(FormTextOf(*Form).find("PopupMenu = Later.PopupMenu1"), std::string::npos);
    TFormPtr later(new TForm(nullptr));
    ReadFormOver(*later, Later);
    ASSERT_NE(Form->PopupMenu(), nullptr);
    EXPECT_EQ(Form->PopupMenu(), later->FindComponent("PopupMenu1"));
    EXPECT_NE(FormTextOf(*Form).find("PopupMenu = Later.PopupMenu1"), std::string::npos);
    later.reset();
    EXPECT_EQ(Form->PopupMenu(), nullptr);
}

TEST_F(FormReferences, FindAFormThatIsThere) {
    const TFormPtr later(new TForm(nullptr));
    ReadFormOver(*later, Later);
    ReadFormOver(*Form, "object First: TForm PopupMenu = later.popupmenu1 end");
    EXPECT_EQ(Form->PopupMenu(), later->FindComponent("PopupMenu1"));
    EXPECT_EQ(FindGlobalComponent("first"), Form.get());
    Form.reset();
    EXPECT_EQ(FindGlobalComponent("First"), nullptr);
}

TEST_F(FormReferences, OfAFormThatHasGoneWaitNoMore) {
    ReadFormOver(*Form, "object First: TForm PopupMenu = Later.PopupMenu1 end");
    Form.reset();
    const TFormPtr later(new TForm(nullptr));
    ReadFormOver(*later, Later);
}

TEST_F(FormReferences, FindAFormWithoutAFileOnceItIsComplete) {
    ReadFormOver(*Form, "object First: TForm PopupMenu = Later.PopupMenu1 end");
    class TMade : public TForm {
    public:
        explicit TMade(TComponent* owner) : TForm(owner) {
            SetName("Later");
            (new TPopupMenu(this))->SetName("PopupMenu1");
        }
    };
    TPopupMenu* atCreation = nullptr;
    std::unique_ptr<TMade, TFreeDeleter> made(new TMade(nullptr));
    EXPECT_EQ(Form->PopupMenu(), nullptr);
    made->SetOnCreate([&](TObject*) { atCreation = Form->PopupMenu(); });
    made->AfterConstruction();
    EXPECT_EQ(Form->PopupMenu(), made->FindComponent("PopupMenu1"));
    EXPECT_EQ(atCreation, Form->PopupMenu()) << "OnCreate finds all in place";
}

TEST_F(FormReferences, DoNotFindFormsThatAreBeingDesigned) {
    const TFormPtr later(new TForm(nullptr));
    ReadFormOver(*later, Later);
    later->SetDesigning(true);
    EXPECT_EQ(FindGlobalComponent("Later"), nullptr);
    later->SetDesigning(false);
    EXPECT_EQ(FindGlobalComponent("Later"), later.get());
}

TEST_F(FormReferences, ASecondFormOfAFileGetsANameOfItsOwn) {
    const TFormPtr first(new TForm(nullptr));
    ReadFormOver(*first, Later);
    const TFormPtr second(new TForm(nullptr));
    ReadFormOver(*second, Later);
    EXPECT_EQ(first->Name(), "Later");
    EXPECT_EQ(second->Name(), "Later_1");
}

} // namespace
} // namespace kx
