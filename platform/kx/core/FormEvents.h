// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kx {

/// The parameters of an event's handler as C++ declares them: "TObject* sender, char32_t& key". The event may be that
/// of a part, "FileFilter.OnIncludeFile". A registered class tells the types. A table of what form files usually have
/// tells the names, and the types of classes that are not there. Empty when nobody knows the event.
std::string EventParameters(std::string_view className, std::string_view event);

namespace detail {

/// "void(TObject*, char32_t&)" taken apart: "TObject*" and "char32_t&". Names of types are as users write them.
std::vector<std::string> ParameterTypes(std::string_view signature);
/// The types in a list of parameters: each without its name.
std::vector<std::string> TypesOfParameters(std::string_view parameters);

} // namespace detail

} // namespace kx
