// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

// C++ code as text: just enough of it to find a class and its members.

namespace kx::designer {

/// The code with blanks in place of comments and of what stands in quotes; every other character keeps its place.
std::string BareCode(std::string_view code);
/// Where the word stands next, as a whole identifier; npos when it does not.
size_t FindWord(std::string_view code, std::string_view word, size_t from = 0);
/// The bracket that ends the one at `open`, of whichever of the three kinds; npos when there is none.
size_t MatchingBracket(std::string_view bare, size_t open);
/// Behind the blanks.
size_t SkipBlanks(std::string_view code, size_t from);
size_t LineStart(std::string_view code, size_t at);

} // namespace kx::designer
