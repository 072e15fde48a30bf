// SPDX-License-Identifier: MIT
// Fixtures of the colour and the print dialog.

#include "BoxDialogTest.h"

namespace kx::test {

std::string ItemText(const TCommonDialog& dialog, int id) { return TextOf(ItemOf(dialog, id)); }

TStep ClickItem(const TCommonDialog& dialog, int id) {
    return {"the control " + IntToStr(id) + " can be clicked", Shown(dialog),
            [&dialog, id] { Click(ItemOf(dialog, id)); }};
}

void ExpectDocked(const TCommonDialog& dialog, TForm& form, const TRect& place) {
    HWND window = form.WindowHandle();
    ASSERT_EQ(GetParent(window), dialog.DialogWindow());
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_EQ(RectIn(dialog.DialogWindow(), window), place);
    const TRect client = ClientRectOf(dialog.DialogWindow());
    EXPECT_LE(place.Right, client.Right);
    EXPECT_LE(place.Bottom, client.Bottom);
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    const TRect screen = ScreenRectOf(window);
    for (int y = screen.Top + 1; y < screen.Bottom; y += 7) {
        for (int x = screen.Left + 1; x < screen.Right; x += 7) {
            HWND hit = WindowFromPoint({x, y});
            ASSERT_TRUE(hit == window || IsChild(window, hit))
                << "the form is covered at " << x << "," << y << " by " << ClassOf(hit) << " " << TextOf(hit);
        }
    }
    const TWindowDC own(window);
    const TRect area = ClientRectOf(window);
    for (int y = 1; y < area.Bottom; y += 9) {
        for (int x = 1; x < area.Right; x += 9) {
            ASSERT_EQ(GetPixel(own.Handle(), x, y), ColorToRGB(form.Color())) << x << "," << y;
        }
    }
}

TNotifyEvent Note(std::vector<std::string>& log, const TObject& sender, const std::string& name) {
    return [&log, component = &sender, name](TObject* who) {
        EXPECT_EQ(who, component);
        log.push_back(name);
    };
}

TKxCtrlQueryEvent Answer(std::vector<std::string>& log, const TObject& sender, const std::string& name, bool allow) {
    return [&log, component = &sender, name, allow](TObject* who, bool& proceed) {
        EXPECT_EQ(who, component);
        EXPECT_TRUE(proceed);
        log.push_back(name);
        proceed = allow;
    };
}

} // namespace kx::test
