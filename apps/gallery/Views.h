// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/Controls.h"

#include <string>
#include <vector>

namespace kx::gallery {

/// Shows a picture as large as fits, in its own proportions, centred on the window colour. A small picture is not
/// enlarged.
class TPictureView : public TCustomControl {
    KX_CLASS()

    explicit TPictureView(TComponent* owner = nullptr);

    TPicture& Picture() { return FPicture; }

protected:
    void Paint() override;
    void Resize() override;
    void EraseBackground(HDC) override {} // Paint covers every pixel

private:
    TPicture FPicture;
};

/// Sides of a dialog to which forms are docked.
struct TDockedSides {
    bool Left = false;
    bool Top = false;
    bool Right = false;
    bool Bottom = false;

    friend bool operator==(const TDockedSides&, const TDockedSides&) = default;
};

/// A sketch of a dialog with the docked forms around it, arranged as the library does it.
class TDockSketch : public TCustomControl {
    KX_CLASS()

    explicit TDockSketch(TComponent* owner = nullptr);

    TDockedSides Sides() const { return FSides; }
    void SetSides(TDockedSides value);

protected:
    void Paint() override;
    void Resize() override;
    void EraseBackground(HDC) override {} // Paint covers every pixel

private:
    void DrawForm(const TRect& rect, const std::string& name);

    TDockedSides FSides;
};

/// A list of pages to choose from, one of which is always chosen.
class TPageList : public TCustomControl {
    KX_CLASS()

    explicit TPageList(TComponent* owner = nullptr);

    void Add(const std::string& title);
    int ItemIndex() const { return FItemIndex; } ///< -1 while the list is empty.
    /// Chooses another page; fires OnChange.
    void SetItemIndex(int value);

    const TNotifyEvent& OnChange() const { return FOnChange; }
    void SetOnChange(TNotifyEvent value) { FOnChange = std::move(value); }

protected:
    void Paint() override;
    void Resize() override;
    void EraseBackground(HDC) override {} // Paint covers every pixel
    void MouseDown(TMouseButton button, TShiftState shift, int x, int y) override;
    void KeyDown(uint16_t& key, TShiftState shift) override;
    bool WantsKey(uint16_t key, TShiftState shift) override;
    void DoEnter() override;
    void DoExit() override;

private:
    int ItemHeight() const { return ScaleLength(36); }
    std::vector<std::string> FItems;
    int FItemIndex = -1;
    TNotifyEvent FOnChange;
};

} // namespace kx::gallery
