// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/Controls.h"
#include "kx/win/Subclass.h"

namespace kx {

/// Makes a window as a child of `parent`, visible, and gives it in `window`; null: there is none.
using TCreateForeignEvent = TEvent<void(TObject* sender, HWND parent, HWND& window)>;
/// The control's sizes are for `dpi` dots per inch now.
using TForeignDpiEvent = TEvent<void(TObject* sender, int dpi)>;

/// Holds a window that another framework, or plain code for Windows, has made, so that it can be put on forms and, with
/// those, be docked into dialogs. It fills the control.
///
/// OnCreateForeign asks for the window whenever the control gets a window of its own, which may happen several times.
/// The foreign window goes with the control's; its maker may destroy it at any time before. Both are of one thread.
///
/// The Tab key goes into the foreign window, through the windows in it that have WS_TABSTOP, and out again; a window
/// around them needs WS_EX_CONTROLPARENT. Inside it the system's rules for the keys of dialogs hold.
class TForeignControl : public TWinControl {
    KX_CLASS()

    explicit TForeignControl(TComponent* owner = nullptr);
    ~TForeignControl() override;

    HWND ForeignWindow() const { return FForeign; } ///< Null when there is none, or none any more.

    void CreateParams(TCreateParams& params) override;
    void WndProc(TMessage& message) override;

    /// An exception goes to the application, as does the error of a window that is no child of `parent`; then the
    /// control stays empty.
    const TCreateForeignEvent& OnCreateForeign() const { return FOnCreateForeign; }
    void SetOnCreateForeign(TCreateForeignEvent value) { FOnCreateForeign = std::move(value); }
    /// The foreign window has been destroyed, by whomever. It does not fire when the control itself is freed.
    const TNotifyEvent& OnForeignGone() const { return FOnForeignGone; }
    void SetOnForeignGone(TNotifyEvent value) { FOnForeignGone = std::move(value); }
    /// The form has come to a screen of another resolution. For windows that the system does not tell of that.
    const TForeignDpiEvent& OnForeignDpi() const { return FOnForeignDpi; }
    void SetOnForeignDpi(TForeignDpiEvent value) { FOnForeignDpi = std::move(value); }

protected:
    void CreateWnd() override;
    bool PreTranslate(MSG& message) override;
    void ChangeScale(int to, int from) override;

    virtual void DoCreateForeign(HWND parent, HWND& window);
    virtual void DoForeignGone();
    virtual void DoForeignDpi(int dpi);

private:
    void AskForWindow();
    void ForeignMessage(TMessage& message);
    void FitForeign() const;
    void FocusForeign();
    void NoteFocus();
    HWND Edge(bool last) const;
    bool StaysInside(const MSG& message) const;

    HWND FForeign = nullptr;
    HWND FLastFocus = nullptr; ///< The window inside that had the focus last.
    TSubclass FMessages;       ///< Of the foreign window.
    TCreateForeignEvent FOnCreateForeign;
    TNotifyEvent FOnForeignGone;
    TForeignDpiEvent FOnForeignDpi;
};

} // namespace kx
