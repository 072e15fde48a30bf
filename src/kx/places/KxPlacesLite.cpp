// What the lite dialogs know of places.

#include "kx/places/KxPlaces.h"

namespace kx {

// In a file of its own, since the linker takes object files whole: programs with lite dialogs alone do without places.

const TClass& TKxPlacesBarLiteOptions::StaticClass() {
    using T = TKxPlacesBarLiteOptions;
    static const TClassBuilder<T> cls("TKxPlacesBarLiteOptions", TPersistent::StaticClass(), [](auto& c) {
        c.Property("Visible", &T::Visible, &T::SetVisible).Default = true;
    });
    return cls.Class();
}

} // namespace kx
