// SPDX-License-Identifier: MIT
// Passes on what designers tell.

#include "kx/ide/Designer.h"

#include "kx/core/Barrier.h"

#include <algorithm>

namespace kx {

namespace {

std::vector<IDesignNotification*>& Listeners() {
    // Never freed: windows that belong to the application outlive static objects.
    static auto& listeners = *new std::vector<IDesignNotification*>;
    return listeners;
}

bool Listens(const IDesignNotification* listener) {
    return std::find(Listeners().begin(), Listeners().end(), listener) != Listeners().end();
}

template <class F> void TellAll(F tell) {
    const std::vector<IDesignNotification*> listeners = Listeners(); // a copy: what is told may end a listener
    for (IDesignNotification* listener : listeners) {
        if (Listens(listener)) {
            Guarded([&] { tell(*listener); });
        }
    }
}

} // namespace

void RegisterDesignNotification(IDesignNotification& listener) {
    if (!Listens(&listener)) {
        Listeners().push_back(&listener);
    }
}

void UnregisterDesignNotification(IDesignNotification& listener) { std::erase(Listeners(), &listener); }

void NotifyItemDeleted(IDesigner& designer, TPersistent& item) {
    TellAll([&](IDesignNotification& listener) { listener.ItemDeleted(designer, item); });
}

void NotifyItemInserted(IDesigner& designer, TPersistent& item) {
    TellAll([&](IDesignNotification& listener) { listener.ItemInserted(designer, item); });
}

void NotifyItemsModified(IDesigner& designer) {
    TellAll([&](IDesignNotification& listener) { listener.ItemsModified(designer); });
}

void NotifySelectionChanged(IDesigner& designer, const TDesignSelection& selection) {
    TellAll([&](IDesignNotification& listener) { listener.SelectionChanged(designer, selection); });
}

void NotifyDesignerClosed(IDesigner& designer, bool goingDormant) {
    TellAll([&](IDesignNotification& listener) { listener.DesignerClosed(designer, goingDormant); });
}

} // namespace kx
