// SPDX-License-Identifier: MIT
// Tells the shapes of a form file apart, and turns one into the other.

#include "kx/core/FormText.h"

#include "kx/core/FormTextLexer.h"
#include "kx/core/TypInfo.h"

#include <algorithm>
#include <limits>

namespace kx {

TStreamFormat TestStreamFormat(TStream& stream) {
    const int64_t start = stream.Position();
    std::string head(4096, '\0');
    head.resize(stream.Read(head.data(), head.size()));
    stream.SetPosition(start);
    if (head.starts_with("TPF0")) {
        return TStreamFormat::Binary;
    }
    if (head.starts_with(std::string_view("\xFF\x0A\0", 3))) {
        return TStreamFormat::Resource;
    }
    std::string_view text = head;
    if (text.starts_with(detail::Utf8Mark)) {
        text.remove_prefix(detail::Utf8Mark.size());
    }
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    for (const std::string_view keyword : {"object", "inherited", "inline"}) {
        const std::string_view behind = text.substr(std::min(keyword.size(), text.size())).substr(0, 1);
        if (SameText(text.substr(0, keyword.size()), keyword) && !behind.empty() &&
            behind.find_first_of(" \t\r\n") == 0) {
            return TStreamFormat::Text;
        }
    }
    return TStreamFormat::Unknown;
}

std::string_view LineBreakOf(std::string_view text) {
    const size_t end = text.find('\n');
    const bool isBare = end != std::string_view::npos && (end == 0 || text[end - 1] != '\r');
    return isBare ? "\n" : "\r\n";
}

void ObjectTextToResource(TStream& text, TStream& resource) {
    TMemoryStream binary;
    ObjectTextToBinary(text, binary);
    if (binary.Size() > int64_t{std::numeric_limits<uint32_t>::max()}) {
        throw EWriteError("The form is too large for a resource");
    }
    binary.SetPosition(0);
    TReader reader(binary);
    reader.ReadSignature();
    TFilerFlags flags;
    int childPos = -1;
    reader.ReadPrefix(flags, childPos);
    WriteResHeader(resource, reader.ReadStr(), static_cast<uint32_t>(binary.Size()));
    resource.WriteBuffer(binary.Memory(), binary.Bytes().size());
}

TComponent* ReadComponent(TStream& stream, TComponent* root, const std::function<void(TReader&)>& prepare) {
    const auto read = [&](TStream& binary, const TFormLines* lines) {
        TReader reader(binary);
        reader.SetLines(lines);
        if (prepare) {
            prepare(reader);
        }
        return reader.ReadRootComponent(root);
    };
    switch (TestStreamFormat(stream)) {
    case TStreamFormat::Text: {
        TMemoryStream binary;
        TFormLines lines;
        ObjectTextToBinary(stream, binary, &lines, TFormNumbers::Spelled);
        binary.SetPosition(0);
        return read(binary, &lines);
    }
    case TStreamFormat::Resource: ReadResHeader(stream); [[fallthrough]];
    case TStreamFormat::Binary: return read(stream, nullptr);
    case TStreamFormat::Unknown: break;
    }
    throw EInvalidImage("Invalid stream format: no form");
}

} // namespace kx
