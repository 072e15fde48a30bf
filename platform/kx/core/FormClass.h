// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Streams.h"

#include <string>
#include <string_view>
#include <vector>

namespace kx {

/// The C++ class that belongs to a form file: what the file needs it to publish.
struct TFormClass {
    struct TField {
        std::string Name;
        std::string ClassName;
    };
    struct THandler {
        std::string Name;
        std::string Parameters; ///< As C++ declares them; those of a notification when nobody knows the event.
        std::string Event;      ///< The first one that it handles: "SearchEdit.OnKeyPress".
        bool IsKnown = true;    ///< The parameters are the event's.
        std::string Other;      ///< An event with other parameters that it is to handle too; else empty.
    };

    std::string Name;               ///< "TPreviewForm"
    std::string FormName;           ///< "PreviewForm"; empty when the file has none.
    std::string Ancestor;           ///< The registered class's; else "TForm".
    bool IsInherited = false;       ///< The file stands on that of an ancestor, which it does not name.
    std::vector<TField> Fields;     ///< In the file's order, without what an ancestor or a frame brings.
    std::vector<THandler> Handlers; ///< In the order in which the file names them first.
};

/// Reads the form of any format at the stream's position; its classes need not be there.
/// @throws EParserError, EReadError (for two components of one name too), EInvalidImage
TFormClass FormClassOf(TStream& form);

bool IsCppKeyword(std::string_view word); ///< Nothing in a C++ class can be called so.

// --- Its code. @throws EInvalidOperation for a name that C++ does not take, or that would be two things in the class.

/// "KX_FIELDS(TMyForm, (TButton, OkButton))" over several lines, the first of which is indented by 4.
std::string FieldsDeclaration(const std::string& cls, const std::vector<TFormClass::TField>& fields);
/// The declaration for the header, with the variable that holds the form.
std::string FormClassDeclaration(const TFormClass& cls);
/// What stands in its source: the property table, the constructor and empty handlers.
std::string FormClassDefinition(const TFormClass& cls);

} // namespace kx
