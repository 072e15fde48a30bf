// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Collections.h"
#include "kx/ui/controls/Controls.h"

namespace kx {

// --- TProgressBar

enum TProgressBarOrientation : uint8_t { pbHorizontal, pbVertical };
KX_ENUM(TProgressBarOrientation, "pbHorizontal", "pbVertical")

/// Shows how far something has come.
class TProgressBar : public TWinControl {
    KX_CLASS()

    explicit TProgressBar(TComponent* owner = nullptr);

    int Min() const { return FMin; }
    /// @throws EInvalidOperation for a least value above the greatest.
    void SetMin(int value) { SetRange(value, FMax); }
    int Max() const { return FMax; }
    void SetMax(int value) { SetRange(FMin, value); }
    /// Both ends at once. @throws EInvalidOperation "The least position %s is above the greatest, %s"
    void SetRange(int min, int max);
    int Position() const { return FPosition; }
    void SetPosition(int value); ///< Brought into the range.
    int Step() const { return FStep; }
    void SetStep(int value) { FStep = value; }
    void StepIt() { StepBy(FStep); }
    void StepBy(int delta);
    TProgressBarOrientation Orientation() const { return FOrientation; }
    void SetOrientation(TProgressBarOrientation value);
    bool Smooth() const { return FSmooth; } ///< One bar instead of blocks, where the system's theme leaves the choice.
    void SetSmooth(bool value);

    void CreateParams(TCreateParams& params) override;

protected:
    void CreateWnd() override;

private:
    void Apply();

    int FMin = 0;
    int FMax = 100;
    int FPosition = 0;
    int FStep = 10;
    TProgressBarOrientation FOrientation = pbHorizontal;
    bool FSmooth = false;
};

// --- TStatusBar

class TStatusBar;

enum TStatusPanelStyle : uint8_t { psText, psOwnerDraw };
KX_ENUM(TStatusPanelStyle, "psText", "psOwnerDraw")
enum TStatusPanelBevel : uint8_t { pbNone, pbLowered, pbRaised };
KX_ENUM(TStatusPanelBevel, "pbNone", "pbLowered", "pbRaised")

/// A part of a status bar.
class TStatusPanel : public TCollectionItem {
    KX_CLASS()

    explicit TStatusPanel(TCollection* collection) : TCollectionItem(collection) {}

    const std::string& Text() const { return FText; }
    void SetText(const std::string& value) { Set(FText, value); }
    int Width() const { return FWidth; } ///< Pixels. The last panel takes the rest of the bar instead.
    void SetWidth(int value) { Set(FWidth, value, true); }
    TAlignment Alignment() const { return FAlignment; }
    void SetAlignment(TAlignment value) { Set(FAlignment, value); }
    TStatusPanelBevel Bevel() const { return FBevel; }
    void SetBevel(TStatusPanelBevel value) { Set(FBevel, value); }
    TStatusPanelStyle Style() const { return FStyle; }
    void SetStyle(TStatusPanelStyle value) { Set(FStyle, value); }

    void Assign(const TPersistent* source) override;
    std::string GetDisplayName() const override { return FText.empty() ? TCollectionItem::GetDisplayName() : FText; }

private:
    template <class V> void Set(V& field, const V& value, bool allItems = false) {
        if (field != value) {
            field = value;
            Changed(allItems);
        }
    }

    std::string FText;
    int FWidth = 50;
    TAlignment FAlignment = taLeftJustify;
    TStatusPanelBevel FBevel = pbLowered;
    TStatusPanelStyle FStyle = psText;
};

class TStatusPanels : public TCollectionOf<TStatusPanel> {
    KX_CLASS()

    explicit TStatusPanels(TStatusBar& bar);

    TPersistent* GetOwner() const override;

protected:
    void Update(TCollectionItem* item) override;

private:
    TStatusBar& FBar;
};

/// Draws a panel on the bar's `Canvas`; `rect` is its inside, in client coordinates.
using TDrawPanelEvent = TEvent<void(TStatusBar* bar, TStatusPanel* panel, const TRect& rect)>;

/// The row at the bottom of a window that says what is going on: in panels, or in one text.
class TStatusBar : public TWinControl {
    KX_CLASS()

    explicit TStatusBar(TComponent* owner = nullptr);
    ~TStatusBar() override;

    TStatusPanels& Panels() { return FPanels; }
    const TStatusPanels& Panels() const { return FPanels; }
    void SetPanels(const TStatusPanels& value) { FPanels.Assign(&value); }
    bool SimplePanel() const { return FSimplePanel; } ///< SimpleText shows instead of the panels.
    void SetSimplePanel(bool value);
    const std::string& SimpleText() const { return FSimpleText; }
    void SetSimpleText(const std::string& value);
    bool SizeGrip() const { return FSizeGrip; } ///< The corner by which the user sizes the form.
    void SetSizeGrip(bool value);
    TCanvas& Canvas(); ///< Of the panel that OnDrawPanel draws.

    const TDrawPanelEvent& OnDrawPanel() const { return FOnDrawPanel; }
    void SetOnDrawPanel(TDrawPanelEvent value) { FOnDrawPanel = std::move(value); }

    void CreateParams(TCreateParams& params) override;
    void WndProc(TMessage& message) override;

protected:
    void ChangeScale(int to, int from) override;
    void CreateWnd() override;
    void Resize() override;
    void BiDiModeChanged() override;
    virtual void DrawPanel(TStatusPanel& panel, const TRect& rect);

private:
    friend class TStatusPanels;
    void PanelsChanged(const TCollectionItem* panel);
    void ApplyParts();
    void ApplyPanel(int index);
    void ApplySimple();
    void SetPartText(int part, DWORD style, const std::string& text);
    void DrawItem(const DRAWITEMSTRUCT& item);

    TStatusPanels FPanels;
    std::string FSimpleText;
    std::unique_ptr<TCanvas> FCanvas;
    bool FSimplePanel = false;
    bool FSizeGrip = true;
    TDrawPanelEvent FOnDrawPanel;
};

} // namespace kx
