// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Components.h"

namespace kx {

/// A reference to a component that somebody else owns, a form or a menu for instance. It is empty from the moment on in
/// which the component is being freed.
template <class T> class TComponentRef final : private TComponent {
public:
    T* Get() const { return FComponent && !FComponent->IsDestroying() ? FComponent : nullptr; }
    void Set(T* component) {
        if (component == FComponent) {
            return;
        }
        if (FComponent) {
            RemoveFreeNotification(FComponent);
        }
        FComponent = component;
        if (FComponent) {
            FreeNotification(FComponent);
        }
    }
    explicit operator bool() const { return Get() != nullptr; }
    /// A component is referred to. Said without touching it, which may be going in its own thread: whoever would have
    /// to wait for that thread is spared it.
    bool IsSet() const { return FComponent != nullptr; }
    T* operator->() const { return FComponent; }

protected:
    void Notification(TComponent* component, TOperation operation) override {
        if (operation == opRemove && component == FComponent) {
            FComponent = nullptr;
        }
        TComponent::Notification(component, operation);
    }

private:
    T* FComponent = nullptr;
};

} // namespace kx
