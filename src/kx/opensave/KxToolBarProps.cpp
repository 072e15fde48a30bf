// SPDX-License-Identifier: MIT
// The tool bar that a dialog borrows from a form.

#include "kx/opensave/KxToolBarProps.h"

namespace kx {

const TClass& TKxToolBarOptions::StaticClass() {
    using T = TKxToolBarOptions;
    static const TClassBuilder<T> cls("TKxToolBarOptions", TPersistent::StaticClass(), [](auto& c) {
        c.Property("Flat", &T::Flat, &T::SetFlat).Default = false;
        c.Reference("CustomBar", &T::CustomBar, &T::SetCustomBar);
    });
    return cls.Class();
}

} // namespace kx
