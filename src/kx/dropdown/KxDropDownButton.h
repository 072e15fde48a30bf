// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <memory>
#include <vector>

namespace kx {

class TButtonGlyph;

enum TBitBtnKind : uint8_t {
    bkCustom,
    bkOK,
    bkCancel,
    bkHelp,
    bkYes,
    bkNo,
    bkClose,
    bkAbort,
    bkRetry,
    bkIgnore,
    bkAll
};

/// A push button with an arrow at its right edge. A press on the arrow opens a menu below the button, and without a
/// menu only changes how the arrow looks; a press on the rest is that of an ordinary button.
class TKxBitBtn : public TButton, public IAccessibleParts {
    KX_CLASS()

    explicit TKxBitBtn(TComponent* owner = nullptr);
    ~TKxBitBtn() override;

    /// The arrow: a strip of up to four pictures, for the button up, disabled, down and held. Painting on it shows.
    TBitmap& Glyph();
    void SetGlyph(const TBitmap& value);
    int NumGlyphs() const; ///< Pictures in the strip, 1 to 4.
    /// @throws ERangeError above 4; values below 1 are ignored.
    void SetNumGlyphs(int value);
    HPALETTE GetPalette() const;           ///< Of the arrow's picture; null when it has none.
    int Margin() const { return FMargin; } ///< Pixels from the left edge to the caption; -1: it is centred.
    void SetMargin(int value) { Change(FMargin, value); }
    int Spacing() const { return FSpacing; } ///< Pixels on both sides of the arrow.
    void SetSpacing(int value) { Change(FSpacing, value); }
    TButtonStyle Style() const { return FStyle; } ///< Kept, without effect; so is CaptionAlignment.
    void SetStyle(TButtonStyle value) { Change(FStyle, value); }
    TAlignment CaptionAlignment() const { return FAlignment; }
    void SetCaptionAlignment(TAlignment value) { Change(FAlignment, value); }
    TBitBtnKind Kind() const { return FKind; } ///< A click closes the form with bkClose, shows help with bkHelp.
    void SetKind(TBitBtnKind value) { FKind = value; }

    /// Not owned. While the menu is attached, the items of its top level call their handlers through the button, which
    /// lets go of the mouse first.
    TPopupMenu* DropDownMenu() const { return FMenu; }
    void SetDropDownMenu(TPopupMenu* value) { SetMenu(value); }
    void SetMenu(TPopupMenu* value);
    void ShowDropDownMenu();                                    ///< Returns when the menu has closed.
    bool PressingDropDown() const { return FPressingDropDown; } ///< The arrow is shown pressed.
    /// Deliberate: always -1, where one would expect the item that was chosen.
    int SelectedDropDownMenuIndex() const { return FSelectedMenuItemIndex; }

    // --- Screen readers: a split button, whose arrow is a part of it

    TAccessibleInfo AccessibleInfo() const override;
    void AccessibleAction() override { Click(); }
    int AccessiblePartCount() const override { return FMenu ? 1 : 0; }
    TAccessibleInfo AccessiblePart(int part) const override;
    TRect AccessiblePartRect(int part) const override;
    int AccessiblePartAt(const TPoint& point) const override;
    void AccessiblePartAction(int) override { OpenMenu(); }

    void Click() override;
    void CreateParams(TCreateParams& params) override;
    void WndProc(TMessage& message) override;

protected:
    void SetButtonStyle(bool isDefault) override;
    void ActionChange(TObject* sender, bool checkDefaults) override;
    void FontChanged() override;
    void ColorChanged() override;
    void EnabledChanged() override;
    void ChangeScale(int to, int from) override;
    void MouseLeave() override;
    void Notification(TComponent* component, TOperation operation) override;
    void KeyDown(uint16_t& key, TShiftState shift) override;

private:
    /// A menu item's own handler, and the one that the item has instead.
    struct THandler {
        const TMenuItem* Item;
        TNotifyEvent Own;
        TNotifyEvent Borrowed;
    };

    template <class V> void Change(V& field, V value) {
        if (field != value) {
            field = value;
            Repaint();
        }
    }

    int Split() const; ///< The arrow is right of it.
    void OpenMenu();
    void WMLButtonClk(TMessage& message);
    void WMKillFocus(TMessage& message);
    void DrawItem(const DRAWITEMSTRUCT& item);
    void DrawFrame(TRect& face, bool isDown, bool isDisabled);
    void BorrowHandlers();
    void ReturnHandlers();
    void DoClickDropDownMenuItem(TObject* sender);

    bool FPressingDropDown = false;
    std::unique_ptr<TCanvas> FCanvas;
    std::unique_ptr<TButtonGlyph> FGlyph;
    TButtonStyle FStyle = bsAutoDetect;
    TBitBtnKind FKind = bkCustom;
    int32_t FSpacing = 4;
    int32_t FMargin = -1;
    bool FIsFocused = false; ///< Return presses it now.
    TAlignment FAlignment = taLeftJustify;
    TPopupMenu* FMenu = nullptr;
    int32_t FSelectedMenuItemIndex = -1;
    std::vector<THandler> FHandlers;
    [[maybe_unused]] bool FCancelNextClickEvent = false; ///< Kept, and not used.
};

} // namespace kx
