// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Strings.h"

#include <string>

namespace kx {

/// Splits the text of a file name field into names: `"a.txt" "b.txt"` gives a.txt and b.txt; a text that does not begin
/// with a double quote, or holds no closed pair of them, is one name as it stands. `list` is cleared first.
void KxCommonGetNamesList(const std::string& names, TStrings& list);

/// The text of a file name field that stands for the names in `list`: none is empty, one is the name followed by a line
/// break, more are each in double quotes, separated by one blank.
std::string KxNamesListText(const TStrings& list);

} // namespace kx
