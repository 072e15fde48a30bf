#pragma once

#include "kx/core/Barrier.h"
#include "kx/frame/KxDlgCore.h"

namespace kx {

namespace detail {
bool IsLastMessage(const TMessage& message); ///< The window is being destroyed.
void SetTitle(HWND window, const std::string& title);
} // namespace detail

/// What the colour and the print dialog share: a dialog of the system, T, whose one window the library takes over as
/// soon as it is complete.
template <class T> class TKxBoxDialog : public T, public TKxDlgCore {
public:
    bool Execute() override { return T::Execute(); }
    HWND GetCommonDialogHandle() const override { return T::Handle(); }

    /// The user pressed OK; may keep the dialog open.
    const TCloseQueryEvent& OnCanClose() const { return FOnCanClose; }
    void SetOnCanClose(TCloseQueryEvent value) { FOnCanClose = std::move(value); }

    // The library's own takes the place of the inherited one.
    using TKxDlgCore::OnShow;
    using TKxDlgCore::SetOnShow;

protected:
    explicit TKxBoxDialog(TComponent* owner) : T(owner), TKxDlgCore(static_cast<TCommonDialog&>(*this)) {}

    void DoShow() override;
    /// The forms are docked: attaches the window, and does what else the dialog does with it before it is seen.
    virtual void TakeOver() = 0;
    virtual const TKxDlgCaptions& Captions() const = 0;

    /// Takes the forms out of the window. False: a handler of theirs has freed the dialog.
    bool UndockForms() {
        const TAlive alive(*static_cast<T*>(this));
        const bool going = !alive; // then the destructor waits for this
        FParams.DisconnectForms();
        return going || alive;
    }
    bool AllowsClosing() {
        bool allow = true;
        FOnCanClose(this, allow);
        return allow;
    }

    /// Fires OnEventHooking, by the method that the dialog has for it.
    virtual void Ask(TMessage& message, bool& allow) = 0;

private:
    // Steps of the showing
    void FireInheritedShow() { T::DoShow(); }
    void ShowCaptions() { Captions().SetCaptions(FDlgHandle); }
    void ShowTitle();

    void FireHooking(TMessage& message, bool& allow) override;

    TCloseQueryEvent FOnCanClose;
};

template <class T> void TKxBoxDialog<T>::DoShow() {
    using D = TKxBoxDialog;
    RunSteps<D>(*this, {&D::FireInheritedShow, &D::DockForms, &D::TakeOver, &D::ShowCaptions, &D::ShowTitle, &D::Place,
                        &D::FireShow});
}

template <class T> void TKxBoxDialog<T>::ShowTitle() {
    const std::string title = Title(); // handlers of the message may free the dialog
    if (!title.empty()) {
        detail::SetTitle(FDlgHandle, title);
    }
}

template <class T> void TKxBoxDialog<T>::FireHooking(TMessage& message, bool& allow) {
    const TAlive alive(*static_cast<T*>(this));
    const bool going = !alive; // then its destructor waits for this message
    const bool destroyed = detail::IsLastMessage(message);
    Ask(message, allow);
    if (destroyed && !allow && (going || alive)) {
        // The system is kept from the message, but the window goes all the same: with the forms, were they left in it.
        Guarded([this] { this->DoClose(); });
    }
}

} // namespace kx
