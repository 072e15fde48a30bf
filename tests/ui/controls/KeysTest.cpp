// SPDX-License-Identifier: MIT
// Accelerators of all letters.

#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ComCtrlsPages.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
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

TEST(Accelerators, OfOtherAlphabetsMatchInAnyCase) {
    struct {
        const char* Caption;
        wchar_t Upper, Lower, Other;
    } const cases[] = {{"Вы&Ход", L'\u0425', L'\u0445', L'\u0412'},
                       {"&Ωμέγα", L'\u03A9', L'\u03C9', L'\u039C'},
                       {"&Ænder", L'\u00C6', L'\u00E6', L'A'},
                       {"&文字", L'\u6587', L'\u6587', L'\u5B57'}};
    for (const auto& each : cases) {
        if (CodePageHolds(each.Caption)) {
            const std::string caption = FromUtf8(each.Caption);
            EXPECT_TRUE(IsAccel(each.Upper, caption)) << each.Caption;
            EXPECT_TRUE(IsAccel(each.Lower, caption)) << each.Caption;
            EXPECT_FALSE(IsAccel(each.Other, caption)) << each.Caption;
        }
    }
}

TEST(Accelerators, AreNoHalvesOfCharacters) {
    const char* const smile = "&\xF0\x9F\x98\x80";
    if (CodePageHolds(smile)) {
        EXPECT_EQ(GetHotkey(smile), 0);
        EXPECT_FALSE(IsAccel(wchar_t{0xD83D}, smile));
    }
    EXPECT_FALSE(IsAccel(wchar_t{0xD83D}, "none"));
}

TEST(Accelerators, ChooseAmongMenuItems) {
    TPopupMenu menu;
    std::string log;
    for (const char* caption : {"&Öffnen", "&Ändern", "&Offen", "&Übrige"}) {
        auto* const item = new TMenuItem(&menu);
        item->SetCaption(FromUtf8(caption));
        item->SetOnClick([&log, caption](TObject*) { log += caption; });
        menu.Items().Add(item);
    }
    for (const wchar_t key : {L'\u00E4', L'\u00DC', L'\u00F6'}) {
        RunDialog(
            [&] {
                menu.Popup(200, 150);
                return true;
            },
            {{"the menu is open", [] { return ShownMenu() != nullptr; },
              [key] { PostMessageW(ShownMenu(), WM_CHAR, key, 0); }}});
        Application().ProcessMessages();
    }
    EXPECT_TRUE(PumpUntil([&] { return log.size() >= std::string("&Ändern&Übrige&Öffnen").size(); }));
    EXPECT_EQ(log, "&Ändern&Übrige&Öffnen");
}

TEST(Accelerators, WorkOnControlsOfAllKinds) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    std::string log;
    const auto place = [&](auto* control, int top) {
        control->SetParent(form.get());
        control->SetBounds(0, top, 200, 24);
        return control;
    };
    auto* const first = place(new TEdit(form.get()), 0);
    auto* const target = place(new TEdit(form.get()), 25);
    auto* const label = place(new TLabel(form.get()), 50);
    label->SetCaption(FromUtf8("L&änge"));
    label->SetFocusControl(target);
    auto* const check = place(new TCheckBox(form.get()), 75);
    check->SetCaption(FromUtf8("&Übersicht"));
    auto* const radio = place(new TRadioButton(form.get()), 100);
    radio->SetCaption(FromUtf8("&Îles"));
    auto* const tabs = place(new TTabControl(form.get()), 125);
    tabs->Tabs().Add("one");
    tabs->Tabs().Add(FromUtf8("&Ñandu"));
    auto* const pages = place(new TPageControl(form.get()), 150);
    for (const char* caption : {"one", "&Éclair"}) {
        auto* const page = new TTabSheet(form.get());
        page->SetPageControl(pages);
        page->SetCaption(FromUtf8(caption));
    }
    auto* const speed = place(new TSpeedButton(form.get()), 175);
    speed->SetCaption(FromUtf8("&Çà"));
    speed->SetOnClick([&](TObject*) { log += "speed "; });
    auto* const bar = place(new TToolBar(form.get()), 200);
    bar->SetShowCaptions(true);
    auto* const tool = new TToolButton(form.get());
    tool->SetCaption(FromUtf8("&Õmu"));
    tool->SetParent(bar);
    tool->SetOnClick([&](TObject*) { log += "tool "; });
    form->Show();
    ASSERT_TRUE(PumpUntil([&] { return form->Active(); }));
    first->SetFocus();
    const auto press = [&](wchar_t letter) {
        PostMessageW(first->Handle(), WM_SYSCHAR, letter, 0);
        Application().ProcessMessages();
    };
    for (const wchar_t letter : {L'\u00EF', L'\u00E8', L'\u00D4', L'O', L'A', L'E'}) {
        press(letter); // of nobody
    }
    EXPECT_TRUE(first->Focused());
    press(L'\u00C4');
    EXPECT_TRUE(target->Focused());
    press(L'\u00FC');
    EXPECT_TRUE(check->Checked());
    press(L'\u00EE');
    EXPECT_TRUE(radio->Checked());
    press(L'\u00F1');
    EXPECT_EQ(tabs->TabIndex(), 1);
    press(L'\u00E9');
    EXPECT_EQ(pages->ActivePageIndex(), 1);
    press(L'\u00E7');
    press(L'\u00F5');
    EXPECT_EQ(log, "speed tool ");
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
