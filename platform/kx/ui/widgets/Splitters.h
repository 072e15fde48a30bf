// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/Controls.h"

namespace kx {

/// What the user sees while dragging a splitter.
enum TResizeStyle : uint8_t {
    rsNone,   ///< Nothing moves until the button is released.
    rsLine,   ///< A line goes along.
    rsUpdate, ///< The controls go along.
    rsPattern ///< A dotted bar goes along.
};
KX_ENUM(TResizeStyle, "rsNone", "rsLine", "rsUpdate", "rsPattern")

/// The control beside the splitter is to become `newSize` pixels wide or high; a handler may change that, or refuse.
using TCanResizeEvent = TEvent<void(TObject* sender, int& newSize, bool& accept)>;

/// The bar between an aligned control and the rest of their parent, by which the user changes the control's size. It
/// has the same Align as the control and lies beside it.
class TSplitter : public TGraphicControl {
    KX_CLASS()

    explicit TSplitter(TComponent* owner = nullptr);
    ~TSplitter() override;

    bool AutoSnap() const { return FAutoSnap; } ///< A control that would become smaller than MinSize disappears.
    void SetAutoSnap(bool value) { FAutoSnap = value; }
    bool Beveled() const { return FBeveled; }
    void SetBeveled(bool value);
    /// The least size, in pixels, of the control and of what is left of the parent; 1 at least.
    int MinSize() const { return FMinSize; }
    void SetMinSize(int value);
    TResizeStyle ResizeStyle() const { return FResizeStyle; }
    void SetResizeStyle(TResizeStyle value) { FResizeStyle = value; }

    const TCanResizeEvent& OnCanResize() const { return FOnCanResize; }
    void SetOnCanResize(TCanResizeEvent value) { FOnCanResize = std::move(value); }
    const TNotifyEvent& OnMoved() const { return FOnMoved; } ///< The user has changed the size.
    void SetOnMoved(TNotifyEvent value) { FOnMoved = std::move(value); }

    void WndProc(TMessage& message) override;
    TAccessibleInfo AccessibleInfo() const override;

protected:
    void ChangeScale(int to, int from) override;
    void Paint() override;
    void MouseDown(TMouseButton button, TShiftState shift, int x, int y) override;
    void MouseMove(TShiftState shift, int x, int y) override;
    void MouseUp(TMouseButton button, TShiftState shift, int x, int y) override;
    virtual bool CanResize(int& newSize);

private:
    bool IsUpright() const { return Align() == alLeft || Align() == alRight; }
    TControl* ControlBeside() const;
    int SizeOf(const TControl& control) const;
    int GreatestSize(const TControl& control) const;
    bool Accepts(int& size);
    void Drag(int x, int y);
    void ResizeTo(int size);
    void StopDragging();
    void ShowLine(bool on);

    bool FAutoSnap = true;
    bool FBeveled = false;
    int FMinSize = 30;
    TResizeStyle FResizeStyle = rsPattern;
    TCanResizeEvent FOnCanResize;
    TNotifyEvent FOnMoved;

    // --- While the user drags

    bool FDragging = false;
    TPoint FFrom;         ///< Where the button went down.
    int FSizeAtFirst = 0; ///< Of the control beside,
    int FNewSize = 0;     ///< and the one that it is to get.
    int FGreatest = 0;    ///< The most that it may get.
    TRect FLine;          ///< That is drawn on the parent; empty: none.
};

} // namespace kx
