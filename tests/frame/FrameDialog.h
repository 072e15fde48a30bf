// SPDX-License-Identifier: MIT
#pragma once

#include "kx/frame/KxDlgCore.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/TestForms.h"

#include <functional>
#include <string>
#include <vector>

namespace kx::test {

/// The system's open dialog with all that the frame offers, put together as the library's own dialogs do it.
class TFrameDialog : public TOpenDialog, public TKxDlgCore {
public:
    explicit TFrameDialog(TComponent* owner = nullptr);
    ~TFrameDialog() override;

    TKxDlgCaptions& DlgItemsCaptions() { return FCaptions; }
    using TKxDlgCore::OnShow;
    using TKxDlgCore::SetOnShow;

    /// The dialog's own cases, before those that it always has.
    void SetOwnCases(std::function<TKxMsgVerdict(TMessage&)> value) { FOwnCases = std::move(value); }
    void SetOwnCasesAfter(std::function<void(TMessage&)> value) { FOwnCasesAfter = std::move(value); }

    // --- What the system made, before anything was docked

    const TRect& SystemRect() const { return FSystemRect; }     ///< The dialog window on the screen.
    const TRect& SystemClient() const { return FSystemClient; } ///< Its client area.
    struct TChild {
        HWND Window;
        TRect Rect; ///< In client coordinates of the dialog.
    };
    const std::vector<TChild>& SystemChildren() const { return FSystemChildren; } ///< Direct ones.

    bool Execute() override;
    using TKxDlgCore::DetachDialog;

protected:
    void DoShow() override;
    void DoClose() override;

private:
    TKxMsgVerdict BeforeSystem(TMessage& message, int&) override;
    void AfterSystem(TMessage& message, int) override;
    void Leave();
    void LeaveAtLast();
    void FireInheritedClose() { TOpenDialog::DoClose(); }

    TKxDlgCaptions FCaptions;
    std::function<TKxMsgVerdict(TMessage&)> FOwnCases;
    std::function<void(TMessage&)> FOwnCasesAfter;
    TRect FSystemRect;
    TRect FSystemClient;
    std::vector<TChild> FSystemChildren;
    bool FFirstTime = false;
    bool FClosing = false;
};

/// A form of one colour, owned by the application. Its class name is "T" and its name.
class TSideForm : public TForm {
    KX_CLASS()

    TSideForm(TColor color, int width, int height);
};
class TLeftForm : public TSideForm {
    KX_CLASS()
    TLeftForm() : TSideForm(clGreen, 120, 77) {}
};
class TTopForm : public TSideForm {
    KX_CLASS()
    TTopForm() : TSideForm(clBlue, 99, 50) {}
};
class TRightForm : public TSideForm {
    KX_CLASS()
    TRightForm() : TSideForm(clPurple, 70, 66) {}
};
class TBottomForm : public TSideForm {
    KX_CLASS()
    TBottomForm() : TSideForm(clMaroon, 55, 80) {}
};
class TCentreForm : public TSideForm {
    KX_CLASS()
    TCentreForm() : TSideForm(clTeal, 200, 100) {}
};

template <class F> TFormPtr MakeForm() { return TFormPtr(new F); }

/// A main form of the application for the length of a scope, at these screen coordinates.
class TMainFormScope {
public:
    explicit TMainFormScope(const TRect& bounds);
    TMainFormScope(const TMainFormScope&) = delete;
    TMainFormScope& operator=(const TMainFormScope&) = delete;
    ~TMainFormScope();
    TForm& Form() { return *FForm; }

private:
    TForm* FForm = nullptr;
};

} // namespace kx::test
