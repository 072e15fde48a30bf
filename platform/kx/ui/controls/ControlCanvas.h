// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/Controls.h"
#include "kx/win/Windows.h"

#include <utility>

namespace kx {

/// A canvas on a control: on the context that it is given while the control paints, else on its window's.
class TControlCanvas : public TCanvas {
public:
    explicit TControlCanvas(TControl& control) : FControl(control) {}
    ~TControlCanvas() override { LetGo(); }

    /// Draws on `dc` until the end of the scope, or of the control.
    class TScope {
    public:
        TScope(TCanvas& canvas, HDC dc)
            : FCanvas(static_cast<TControlCanvas&>(canvas)), FControlAlive(FCanvas.FControl) {
            FCanvas.LetGo();
            FCanvas.SetHandle(dc);
        }
        TScope(const TScope&) = delete;
        TScope& operator=(const TScope&) = delete;
        ~TScope() {
            if (FControlAlive) {
                FCanvas.LetGo();
            }
        }

    private:
        TControlCanvas& FCanvas;
        const TAlive FControlAlive;
    };

    /// Leaves the context that it draws on. The next one is asked for when it is needed.
    void LetGo() {
        SetHandle(nullptr);
        if (FWindow) {
            ReleaseDC(std::exchange(FWindow, nullptr), FContext);
        }
    }

protected:
    void CreateHandle() override {
        auto* const windowed = dynamic_cast<TWinControl*>(&FControl);
        TWinControl* const window = windowed ? windowed : FControl.Parent();
        if (!window) {
            return;
        }
        FWindow = window->Handle();
        FContext = FWindow ? GetDC(FWindow) : nullptr;
        if (!windowed) {
            SetWindowOrgEx(FContext, -FControl.Left(), -FControl.Top(), nullptr);
            IntersectClipRect(FContext, 0, 0, FControl.Width(), FControl.Height());
        }
        SetHandle(FContext);
    }

private:
    TControl& FControl;
    HWND FWindow = nullptr; ///< The window whose context is held.
    HDC FContext = nullptr; ///< That context.
};

} // namespace kx
