// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Collections.h"

#include <functional>
#include <string>

namespace kx::designer {

class TFormDesigner;

using TCollectionProc = std::function<void(const std::string& path, TCollection& collection)>;

/// Visits each collection that is published by the object or by something inside it; `path` goes from the object to the
/// collection, ".Panels" or ".Bands[2].Buttons".
void ForEachCollection(TPersistent& object, const TCollectionProc& visit);

/// A collection of the form, as users know it.
struct TCollectionPlace {
    TComponent* Component = nullptr; ///< Null: no component of the form publishes it.
    std::string Path;                ///< In the component, ".Panels".
};
TCollectionPlace PlaceOf(const TFormDesigner& designer, const TCollection& collection);

/// What the user is told of a selected object: "OkButton: TButton", "StatusBar1.Panels[2]: TStatusPanel".
std::string TitleOf(const TFormDesigner& designer, const TPersistent& object);

} // namespace kx::designer
