// SPDX-License-Identifier: MIT
#pragma once

#include "kx/graphics/Graphics.h"

#include <memory>
#include <string>

namespace kx {

/// Makes an empty graphic.
using TCreateGraphic = std::unique_ptr<TGraphic> (*)();

/// Lets pictures hold graphics of a further kind: from files with this extension (".png", or empty for none), and from
/// form files that call its class so. A name or an extension that is registered again means the later kind. TBitmap and
/// TIcon are known from the beginning.
void RegisterGraphic(const std::string& className, const std::string& extension, TCreateGraphic create);

template <class T> std::unique_ptr<TGraphic> CreateGraphicOf() { return std::make_unique<T>(); }

} // namespace kx
