// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Objects.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace kx {

/// A page of the component palette.
struct TPalettePage {
    std::string Name;
    std::vector<const TClass*> Classes; ///< In the order in which they were registered.
};

/// Puts classes on a page of the component palette, behind those that are there, and lets form files name them. A new
/// page comes behind the others. A class stands once on the palette: registered again, it moves. The palette shows the
/// bitmap resource of 24 x 24 pixels whose name is the class's in capital letters.
/// @throws EInvalidOperation for a class that cannot be created by name.
void RegisterComponents(const std::string& page, std::initializer_list<const TClass*> classes);

const std::vector<TPalettePage>& PalettePages();

/// Names the header that declares the classes, as programs include it: "kx/ui/widgets/StdCtrls.h". A designer writes it
/// into the code of the forms that hold such components.
void RegisterHeader(const std::string& header, std::initializer_list<const TClass*> classes);
/// The header of that class; empty when nobody has named it.
std::string HeaderOf(const std::string& className);

} // namespace kx
