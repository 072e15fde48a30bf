// SPDX-License-Identifier: MIT
// What the lite dialogs know of places.

#include "kx/places/KxPlaces.h"

namespace kx {

// This is a file of its own because the linker takes object files whole: programs that use lite dialogs alone do
// without the rest of the places.

const TClass& TKxPlacesBarLiteOptions::StaticClass() {
    using T = TKxPlacesBarLiteOptions;
    static const TClassBuilder<T> cls("TKxPlacesBarLiteOptions", TPersistent::StaticClass(), [](auto& c) {
        c.Property("Visible", &T::Visible, &T::SetVisible).Default = true;
    });
    return cls.Class();
}

} // namespace kx
