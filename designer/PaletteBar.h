// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/MouseWheel.h"

#include <string>
#include <vector>

namespace kx::designer {

/// The pictures of a page of the palette, side by side; the first is an arrow, which chooses no component.
class TPaletteButtons : public TCustomControl {
    KX_CLASS()

    explicit TPaletteButtons(TComponent* owner = nullptr);
    ~TPaletteButtons() override;

    void ShowClasses(std::vector<const TClass*> classes);
    const std::vector<const TClass*>& Classes() const { return FClasses; }
    const TClass* Chosen() const { return FChosen; }
    void SetChosen(const TClass* value);
    /// Of the picture, in client coordinates; empty when it is scrolled away. Null: the arrow's.
    TRect ButtonRect(const TClass* cls) const;
    /// Of the button that scrolls; empty when there is room for all pictures.
    TRect ScrollRect(bool forward) const;
    void Drop(const TClass& cls); ///< Chooses the component, and wants it at once.

    const TNotifyEvent& OnChosen() const { return FOnChosen; }
    void SetOnChosen(TNotifyEvent value) { FOnChosen = std::move(value); }
    /// A picture was clicked twice, for instance: its component is wanted in the middle of what is selected.
    void SetOnDropWanted(TNotifyEvent value) { FOnDropWanted = std::move(value); }
    /// A picture was dragged and dropped at that point of the screen.
    void SetOnDragged(TEvent<void(const TPoint& screen)> value) { FOnDragged = std::move(value); }

    void WndProc(TMessage& message) override;

protected:
    void Paint() override;
    void MouseDown(TMouseButton button, TShiftState shift, int x, int y) override;
    void MouseMove(TShiftState shift, int x, int y) override;
    void MouseUp(TMouseButton button, TShiftState shift, int x, int y) override;
    void DblClick() override;
    void Resize() override;

private:
    int ButtonAt(int x, int y) const; ///< 0 is the arrow; -1: none.
    int ButtonSize() const { return ScaleLength(30); }
    int ScrollWidth() const { return ScaleLength(18); } ///< Of each of the two buttons that scroll.
    int ShownCount() const;
    void Scroll(int by);

    std::vector<const TClass*> FClasses;
    int FFirst = 0; ///< How many are scrolled away; the arrow stays.
    TMouseWheel FWheel;
    const TClass* FChosen = nullptr;
    TNotifyEvent FOnChosen;
    TNotifyEvent FOnDropWanted;
    TEvent<void(const TPoint&)> FOnDragged;
};

/// The component palette: pages of pictures, and a field that finds components by parts of their names.
class TPaletteBar : public TPanel {
    KX_CLASS()

    explicit TPaletteBar(TComponent* owner = nullptr);
    ~TPaletteBar() override;

    void ReadPages(); ///< Shows what is registered by now.
    TPaletteButtons& Buttons() { return FButtons; }
    TTabControl& Tabs() { return FTabs; }
    TEdit& Search() { return FSearch; }

private:
    void Fill();
    void SearchKey(uint16_t& key);

    TPanel FSearchPanel;
    TLabel FSearchLabel;
    TEdit FSearch;
    TTabControl FTabs;
    TPaletteButtons FButtons;
};

} // namespace kx::designer
