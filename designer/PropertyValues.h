// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Components.h"

#include <optional>
#include <string>

namespace kx::designer {

/// Sets a property, whose name may be a path ("Font.Size"), to a value of the binary form, or without one to what it is
/// when nobody has set it. Names of components are looked up in `root`. False when that cannot be done here, as for
/// values that no published property holds: only a reader can set those.
/// @throws EReadError for a value that the property does not take; whatever the setter does.
bool SetPropertyValue(TComponent& root, TPersistent& instance, const std::string& path,
                      const std::optional<std::string>& value);

} // namespace kx::designer
