// SPDX-License-Identifier: MIT
#pragma once

#include "kx/frame/KxDlgCore.h"

namespace kx {

/// What the colour and the print dialog share: a dialog of the system, T, whose one window the library takes over as
/// soon as it is complete.
template <class T> class TKxBoxDialog : public T, public TKxDlgCore {
public:
    bool Execute() override { return T::Execute(); }
    HWND GetCommonDialogHandle() const override { return T::Handle(); }

    /// The user pressed OK; may keep the dialog open.
    const TCloseQueryEvent& OnCanClose() const { return FOnCanClose; }
    void SetOnCanClose(TCloseQueryEvent value) { FOnCanClose = std::move(value); }

    // The library's own event takes the place of the inherited one.
    using TKxDlgCore::OnShow;
    using TKxDlgCore::SetOnShow;

protected:
    explicit TKxBoxDialog(TComponent* owner) : T(owner), TKxDlgCore(static_cast<TCommonDialog&>(*this)) {}

    void DoShow() override;
    /// Attaches the window, once the forms are docked, and does whatever else the dialog does before it is seen.
    virtual void TakeOver() = 0;
    virtual const TKxDlgCaptions& Captions() const = 0;

    /// Takes the forms out of the window. False: a handler of theirs has freed the dialog.
    bool UndockForms() {
        const TStillThere there(*static_cast<T*>(this));
        FParams.DisconnectForms();
        return static_cast<bool>(there);
    }
    bool AllowsClosing() {
        bool allow = true;
        FOnCanClose(this, allow);
        return allow;
    }

private:
    // Steps of the showing
    void FireInheritedShow() { T::DoShow(); }
    void ShowCaptions() { Captions().SetCaptions(FDlgHandle); }

    /// Takes the forms out of the window before it goes.
    void DestroyVetoed() override { this->DoClose(); }

    TCloseQueryEvent FOnCanClose;
};

template <class T> void TKxBoxDialog<T>::DoShow() {
    using D = TKxBoxDialog;
    RunSteps<D>(*this, {&D::FireInheritedShow, &D::DockForms, &D::TakeOver, &D::ShowCaptions, &D::ShowTitle, &D::Place,
                        &D::FireShow});
}

} // namespace kx
