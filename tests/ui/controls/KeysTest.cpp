// Accelerators of all letters.

#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/ui/ControlFixture.h"

// Built twice: into a program whose code page is the system's, and into one whose code page is UTF-8.

namespace kx {
namespace {

using namespace test;

TEST(Accelerators, AreWholeLettersOfAnyCase) {
    const std::string open = FromUtf8("&Öffnen");
    const std::string change = FromUtf8("&Ändern");
    EXPECT_TRUE(IsAccel(L'\x00D6', open));
    EXPECT_TRUE(IsAccel(L'\x00F6', open));
    EXPECT_FALSE(IsAccel(L'\x00E4', open));
    EXPECT_TRUE(IsAccel(L'\x00E4', change));
    EXPECT_FALSE(IsAccel(L'\x00D6', change));
    EXPECT_TRUE(IsAccel(L's', "Save && &Send"));
    EXPECT_FALSE(IsAccel(L'&', "Save && Send"));
    EXPECT_FALSE(IsAccel(L'\0', "Save"));
    EXPECT_EQ(GetHotkey(FromUtf8("Grü&ße")), L'\x00DF');
    EXPECT_EQ(GetHotkey(FromUtf8("Grö&ße && mehr")), L'\x00DF');
}

TEST(Accelerators, OfBothUmlautsPressTheirOwnButtons) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    std::string log;
    const auto add = [&](const std::string& caption, const char* what) {
        auto* const button = new TButton(form.get());
        button->SetParent(form.get());
        button->SetCaption(caption);
        button->SetOnClick([&log, what](TObject*) { log += what; });
        return button;
    };
    TButton* const open = add(FromUtf8("&Öffnen"), "open ");
    add(FromUtf8("&Ändern"), "change ");
    form->Show();
    ASSERT_TRUE(PumpUntil([&] { return form->Active(); }));
    const auto press = [&](wchar_t letter) {
        PostMessageW(open->Handle(), WM_SYSCHAR, letter, 0);
        Application().ProcessMessages();
    };
    press(L'\x00E4');
    press(L'\x00F6');
    press(L'\x00C4');
    EXPECT_EQ(log, "change open change ");
}

TEST(Accelerators, AreThoseOfLettersInADialogsMessageLoopToo) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    const HWND host =
        CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 300, nullptr, nullptr, nullptr, nullptr);
    std::string log;
    for (const char* caption : {"&Öffnen", "&Ändern"}) {
        auto* const button = new TButton(form.get());
        button->SetParent(form.get());
        button->SetCaption(FromUtf8(caption));
        button->SetOnClick([&log, caption](TObject*) { log += caption; });
    }
    form->SetBorderStyle(bsNone);
    form->SetParentWindow(host);
    form->Show();
    SendMessageW(form->WindowHandle(), WM_SYSCHAR, 0x00E4, 0); // as a loop does that is not ours
    EXPECT_EQ(log, "&Ändern");
    SendMessageW(form->WindowHandle(), WM_SYSCHAR, 0x00F6, 0);
    EXPECT_EQ(log, "&Ändern&Öffnen");
    form->SetParentWindow(nullptr);
    DestroyWindow(host);
}

} // namespace
} // namespace kx
