// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Alive.h"

#include <optional>
#include <string>
#include <vector>

namespace kx {

class TComponent;

namespace detail {

/// A property in the binary form: its name, which may be a path ("Font.Size"), and the bytes of its value.
struct TKeptProperty {
    std::string Name;
    std::string Value;
};
using TKeptProperties = std::vector<TKeptProperty>;

/// What a form file said of a component, or of an item of a collection, so that the file can be written again as it
/// was. What has not changed since the reading is written as it stood, at its place; properties that nobody knows never
/// change.
struct TKept {
    TKeptProperties Stood;      ///< The file's properties, in its order.
    TKeptProperties Loaded;     ///< What a writer wrote of the object just after the reading.
    std::string RootName;       ///< Of the file; references may be said by it.
    bool LacksAncestor = false; ///< Of a root: its file inherits from a form that was not read before.
    bool IsNoted = false;       ///< `Loaded` and what else is compared are there.

    // --- Of components alone

    bool InFile = false;         ///< Else it was there without the file: its parent's class makes it.
    std::string ClassName;       ///< The file's, when the component is of another class.
    std::string Name;            ///< The file's...
    std::string LoadedName;      ///< ...and what the component was called when it had been read.
    bool IsInherited = false;    ///< The file called it so.
    bool IsInline = false;       ///< The same.
    std::optional<int> ChildPos; ///< The file's [n].
    bool IsPlaceholder = false;  ///< Stands in for a class that is not there.
    std::string Children;        ///< Of a placeholder: the components inside, in the binary form.
    int Place = 0;               ///< Ascends in the order of the file.
    int LoadedPlace = 0;         ///< Among the children of `Parent`, just after the reading.
    const TComponent* Parent = nullptr;
    const TComponent* Home = nullptr; ///< Inside which it stood in the file, whether that one holds it or not.
    std::optional<TAlive> HomeAlive;
};

} // namespace detail
} // namespace kx
