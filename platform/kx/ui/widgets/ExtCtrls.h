// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/Controls.h"

namespace kx {

enum TBevelCut : uint8_t { bvNone, bvLowered, bvRaised, bvSpace };
KX_ENUM(TBevelCut, "bvNone", "bvLowered", "bvRaised", "bvSpace")

/// A surface for other controls, with up to two bevels around it and a caption in the middle.
class TPanel : public TCustomControl {
    KX_CLASS()

    explicit TPanel(TComponent* owner = nullptr);

    TAlignment Alignment() const { return FAlignment; }
    void SetAlignment(TAlignment value) { Change(FAlignment, value); }
    TBevelCut BevelInner() const { return FBevelInner; }
    void SetBevelInner(TBevelCut value) { Change(FBevelInner, value); }
    TBevelCut BevelOuter() const { return FBevelOuter; }
    void SetBevelOuter(TBevelCut value) { Change(FBevelOuter, value); }
    int BevelWidth() const { return FBevelWidth; } ///< Pixels of each bevel.
    void SetBevelWidth(int value) { Change(FBevelWidth, value); }
    int BorderWidth() const { return FBorderWidth; } ///< Pixels between the bevels.
    void SetBorderWidth(int value) { Change(FBorderWidth, value); }
    TBorderStyle BorderStyle() const { return FBorderStyle; }
    void SetBorderStyle(TBorderStyle value);

    void CreateParams(TCreateParams& params) override;

protected:
    void ChangeScale(int to, int from) override;
    void Paint() override;
    void AdjustClientRect(TRect& rect) const override;
    bool DialogChar(wchar_t letter) override;

private:
    template <class V> void Change(V& field, V value) {
        if (field != value) {
            field = value;
            Realign();
            Invalidate();
        }
    }

    TAlignment FAlignment = taCenter;
    TBevelCut FBevelInner = bvNone;
    TBevelCut FBevelOuter = bvRaised;
    TBorderStyle FBorderStyle = bsNone;
    int FBevelWidth = 1;
    int FBorderWidth = 0;
};

enum TBevelStyle : uint8_t { bsLowered, bsRaised };
KX_ENUM(TBevelStyle, "bsLowered", "bsRaised")
enum TBevelShape : uint8_t { bsBox, bsFrame, bsTopLine, bsBottomLine, bsLeftLine, bsRightLine, bsSpacer };
KX_ENUM(TBevelShape, "bsBox", "bsFrame", "bsTopLine", "bsBottomLine", "bsLeftLine", "bsRightLine", "bsSpacer")

/// A bevelled box, frame or line.
class TBevel : public TGraphicControl {
    KX_CLASS()

    explicit TBevel(TComponent* owner = nullptr);

    TBevelShape Shape() const { return FShape; }
    void SetShape(TBevelShape value);
    TBevelStyle Style() const { return FStyle; }
    void SetStyle(TBevelStyle value);
    TAccessibleInfo AccessibleInfo() const override;

protected:
    void Paint() override;

private:
    TBevelShape FShape = bsBox;
    TBevelStyle FStyle = bsLowered;
};

/// A picture.
class TImage : public TGraphicControl {
    KX_CLASS()

    explicit TImage(TComponent* owner = nullptr);

    TPicture& Picture() { return FPicture; }
    const TPicture& Picture() const { return FPicture; }
    void SetPicture(const TPicture& value) { FPicture.Assign(&value); }
    bool AutoSize() const { return FAutoSize; } ///< The control takes the picture's size.
    void SetAutoSize(bool value);
    bool Center() const { return FCenter; }
    void SetCenter(bool value);
    /// The picture keeps its proportions in the control's size, and does not go beyond it.
    bool Proportional() const { return FProportional; }
    void SetProportional(bool value);
    bool Stretch() const { return FStretch; } ///< The picture takes the control's size.
    void SetStretch(bool value);
    bool Transparent() const { return FTransparent; }
    void SetTransparent(bool value);

protected:
    void Paint() override;

private:
    void PictureChanged();
    TRect PictureRect() const;

    TPicture FPicture;
    bool FAutoSize = false;
    bool FCenter = false;
    bool FProportional = false;
    bool FStretch = false;
    bool FTransparent = false;
};

/// A surface that its OnPaint draws, on `Canvas`.
class TPaintBox : public TGraphicControl {
    KX_CLASS()

    explicit TPaintBox(TComponent* owner = nullptr);

    TCanvas& Canvas() { return TGraphicControl::Canvas(); }
    const TNotifyEvent& OnPaint() const { return FOnPaint; }
    void SetOnPaint(TNotifyEvent value) { FOnPaint = std::move(value); }

protected:
    void Paint() override;

private:
    TNotifyEvent FOnPaint;
};

} // namespace kx
