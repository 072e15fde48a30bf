// SPDX-License-Identifier: MIT
#pragma once

#include "kx/dropdown/KxDropDownButton.h"
#include "kx/ui/forms/Forms.h"
#include "tests/support/FormTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace kx::test {

inline bool MenuShown() { return ShownMenu() != nullptr; }

inline TStep MenuKey(WPARAM key) {
    return {"key " + IntToStr(static_cast<int64_t>(key)), MenuShown,
            [key] { PostMessageA(ShownMenu(), WM_KEYDOWN, key, 0); }};
}

/// A form with a drop-down button of 100 x 25 pixels, which another button keeps the focus from.
class BitBtn : public TFormTest {
protected:
    BitBtn() {
        Other->SetCaption("Other");
        Button->SetCaption("Open");
        Button->SetOnClick([this](TObject*) { ++Clicks; });
        FillMenu(MenuA, "a");
        FillMenu(MenuB, "b");
    }

    void FillMenu(TPopupMenu& menu, const std::string& prefix) {
        for (int i = 0; i < 3; ++i) {
            auto* const item = new TMenuItem(&menu);
            item->SetCaption(prefix + IntToStr(i));
            item->SetOnClick([this, item](TObject* sender) {
                EXPECT_EQ(sender, item);
                Chosen.push_back(item->Caption());
            });
            menu.Items().Add(item);
        }
        menu.SetOnPopup([this](TObject*) { ++Popups; });
    }
    void Show() {
        TFormTest::Show();
        Other->SetFocus();
        Settle();
    }
    void Settle() {
        MoveMouse({5, 5});
        ASSERT_TRUE(PumpUntil([] {
            MSG message;
            return !PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);
        }));
        UpdateWindow(Button->Handle());
    }
    TPoint At(int x, int y = 12) const { return Button->ClientToScreen({x, y}); }

    /// Clicks with the mouse and waits for the menu to open and, by the steps, to close.
    void ClickForMenu(TPoint screen, std::vector<TStep> steps) {
        const int before = Popups;
        RunDialog(
            [&] {
                ClickAt(screen);
                return PumpUntil([&] { return Popups > before && !MenuShown(); });
            },
            std::move(steps));
        PumpUntil([] {
            MSG message;
            return !PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);
        });
    }

    // --- Looks

    COLORREF Pixel(int x, int y) const {
        const TWindowDC dc(Button->WindowHandle());
        return GetPixel(dc.Handle(), x, y);
    }
    /// Bounds of what is black behind the caption, inside the frame.
    TRect Arrow() const {
        TRect bounds{INT_MAX, INT_MAX, 0, 0};
        for (int y = 5; y < 20; ++y) {
            for (int x = 86; x < 97; ++x) {
                if (Pixel(x, y) == 0) {
                    bounds = {std::min(bounds.Left, x), std::min(bounds.Top, y), std::max(bounds.Right, x + 1),
                              std::max(bounds.Bottom, y + 1)};
                }
            }
        }
        return bounds;
    }
    /// The leftmost column with pixels of the caption's colour.
    int CaptionLeft() const {
        for (int x = 8; x < 80; ++x) {
            for (int y = 6; y < 19; ++y) {
                if (Pixel(x, y) == ColorToRGB(clWindowText)) {
                    return x;
                }
            }
        }
        return -1;
    }

    TPopupMenu MenuA;
    TPopupMenu MenuB;
    TButton* Other = Add<TButton>(20, 100, 75, 25);
    TKxBitBtn* Button = Add<TKxBitBtn>(20, 20, 100, 25);
    int Clicks = 0;
    int Popups = 0;
    std::vector<std::string> Chosen;
};

} // namespace kx::test
