// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Filer.h"
#include "kx/core/FormLines.h"
#include "kx/core/FormTextBytes.h"

#include <functional>
#include <string_view>

namespace kx {

// --- Conversion of forms, from the first stream's position to its end, or to the end of the form in a binary one.
// The text is UTF-8. @throws EParserError "... on line 3" for bad text, EReadError "... at offset 12" for a bad binary
// form, EInvalidImage for a bad resource header; the second stream is then unchanged.

void ObjectTextToBinary(TStream& text, TStream& binary, TFormLines* lines = nullptr,
                        TFormNumbers numbers = TFormNumbers::Plain);
void ObjectBinaryToText(TStream& binary, TStream& text, std::string_view lineBreak = "\r\n");
void ObjectTextToResource(TStream& text, TStream& resource); ///< The resource is named for the form's class.
void ObjectResourceToText(TStream& resource, TStream& text);

enum class TStreamFormat : uint8_t { Unknown, Binary, Resource, Text };

/// What ends the lines of a text: "\r\n", or "\n" when its first line ends so.
std::string_view LineBreakOf(std::string_view text);

/// What stands at the stream's position, which stays where it is.
TStreamFormat TestStreamFormat(TStream& stream);

// --- Whole components, in whichever format

/// Reads the form at the stream's position into `root`, or into a new component with null; see
/// `TReader::ReadRootComponent`. `prepare` may install the reader's events.
/// @throws EParserError, EReadError, EClassNotFound, EInvalidImage
TComponent* ReadComponent(TStream& stream, TComponent* root, const std::function<void(TReader&)>& prepare = {});

/// Writes `root`; with an ancestor, what differs from it. In a text, numbers that have been kept are spelled as they
/// were in the text from which they came. `prepare` may set up the writer.
void WriteComponent(TStream& stream, TComponent& root, TStreamFormat format, TComponent* ancestor = nullptr,
                    const std::function<void(TWriter&)>& prepare = {});

} // namespace kx
