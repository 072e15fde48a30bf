#pragma once

#include "core/Components.h"

namespace kx {

/// A reference to a form that somebody else owns. It is empty from the moment on in which the form is being freed.
template <class Form> class TKxFormRef final : private TComponent {
public:
    Form* Get() const { return FForm && !FForm->IsDestroying() ? FForm : nullptr; }
    void Set(Form* form) {
        if (form == FForm) {
            return;
        }
        if (FForm) {
            RemoveFreeNotification(FForm);
        }
        FForm = form;
        if (FForm) {
            FreeNotification(FForm);
        }
    }
    explicit operator bool() const { return Get() != nullptr; }
    /// A form is referred to. Said without touching the form, which may be going in its own thread: whoever would have
    /// to wait for that thread is spared it.
    bool IsSet() const { return FForm != nullptr; }
    Form* operator->() const { return FForm; }

protected:
    void Notification(TComponent* component, TOperation operation) override {
        if (operation == opRemove && component == FForm) {
            FForm = nullptr;
        }
        TComponent::Notification(component, operation);
    }

private:
    Form* FForm = nullptr;
};

} // namespace kx
