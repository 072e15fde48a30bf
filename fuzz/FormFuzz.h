// SPDX-License-Identifier: MIT
#pragma once

#include "support/SampleForm.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace kx::sample {

struct TFreeComponent {
    void operator()(TComponent* component) const { component->Free(); }
};
using TOwnedRoot = std::unique_ptr<TComponent, TFreeComponent>;

/// Text as it stands, other bytes as \xNN
inline std::string Legible(std::string_view bytes) {
    std::string out;
    for (const char c : bytes) {
        char hex[8];
        std::snprintf(hex, sizeof hex, "\\x%02X", static_cast<unsigned char>(c));
        out += c == '\n' || (c >= ' ' && c <= '~') ? std::string(1, c) : hex;
    }
    return out;
}

[[noreturn]] inline void Differs(const char* what, const std::string& first, const std::string& second) {
    std::fprintf(stderr, "%s\n--- first\n%s\n--- second\n%s\n", what, Legible(first).c_str(), Legible(second).c_str());
    std::abort();
}

inline std::string Written(TComponent& root, TStreamFormat format) {
    TMemoryStream stream;
    WriteComponent(stream, root, format);
    return std::string(stream.Bytes());
}

/// What a reader does with what it cannot read.
enum class TTrouble { Fail, Skip, Keep };

inline TOwnedRoot Read(std::string_view form, TTrouble trouble) {
    TMemoryStream stream(form);
    return TOwnedRoot(ReadComponent(stream, nullptr, [trouble](TReader& reader) {
        reader.SetKeepsUnknown(trouble == TTrouble::Keep);
        reader.SetOnError(
            [trouble](TReader&, const std::string&, bool& handled) { handled = trouble == TTrouble::Skip; });
    }));
}

/// Reads a form. What could be read must be written and read again alike, in both forms; what could not must leave
/// nothing behind.
inline void CheckRead(std::string_view form, TTrouble trouble) {
    const TTrouble later = trouble == TTrouble::Keep ? trouble : TTrouble::Fail;
    for (const TStreamFormat format : {TStreamFormat::Binary, TStreamFormat::Text}) {
        std::string first;
        try {
            first = Written(*Read(form, trouble), format);
        } catch (const Exception&) {
            break; // an error of the framework is a fair answer
        }
        // A control that stood in something that holds none has no parent and is written behind all that have one. Read
        // again it stands in the form: from then on nothing changes any more.
        first = Written(*Read(first, later), format);
        const std::string second = Written(*Read(first, later), format);
        if (first != second) {
            Differs("What was written reads as something else", first, second);
        }
    }
    if (TControl::Alive != 0 || TServer::Alive != 0) {
        Differs("Components are left behind", std::to_string(TControl::Alive), std::to_string(TServer::Alive));
    }
    TControl::LoadedOrder.clear();
}

/// The text of a binary form must give itself again.
inline void CheckConversion(std::string_view binaryForm) {
    const auto toText = [](std::string_view binary) {
        TMemoryStream source(binary);
        TMemoryStream text;
        ObjectBinaryToText(source, text);
        return std::string(text.Bytes());
    };
    std::string first;
    try {
        first = toText(binaryForm);
    } catch (const Exception&) {
        return;
    }
    TMemoryStream text(first);
    TMemoryStream binary;
    ObjectTextToBinary(text, binary);
    const std::string second = toText(binary.Bytes());
    if (first != second) {
        Differs("A text converts to something else", first, second);
    }
}

} // namespace kx::sample
