// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/FormText.h"
#include "kx/core/Streams.h"

#include <string>
#include <string_view>

namespace kx::test {

/// The component as a form file in text.
inline std::string FormTextOf(TComponent& component) {
    TMemoryStream stream;
    WriteComponent(stream, component, TStreamFormat::Text);
    return std::string(stream.Bytes());
}

/// The same with the ends of lines as in a source.
inline std::string FormLinesOf(TComponent& component) {
    std::string text = FormTextOf(component);
    std::erase(text, '\r');
    return text;
}

/// Reads a form file, of either format, over the component.
inline void ReadFormOver(TComponent& component, std::string_view form) {
    TMemoryStream stream(form);
    ReadComponent(stream, &component);
}

} // namespace kx::test
