// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Filer.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

// A form as data: what its binary form says, without any component. Undo compares two of these, the clipboard takes
// parts of them.

namespace kx::designer {

struct TFormProperty {
    std::string Name;  ///< May be a path, "Font.Size".
    std::string Value; ///< With its type byte.
    bool operator==(const TFormProperty&) const = default;
};

/// A component, with those inside it.
struct TFormNode {
    TFilerFlags Flags;
    int ChildPos = -1;
    std::string ClassName;
    std::string Name;
    std::vector<TFormProperty> Properties;
    std::vector<TFormNode> Children;
    bool operator==(const TFormNode&) const = default;

    const TFormProperty* Find(std::string_view property) const;
};

/// @throws EReadError for bytes that are no form.
TFormNode ParseForm(const std::string& binary);
/// The flags of the form itself, without reading on. @throws EReadError
TFilerFlags FormFlags(const std::string& binary);
std::string FormBinary(const TFormNode& root);

std::string FormText(const std::string& binary, std::string_view lineBreak = "\r\n");
/// Numbers keep the spelling that they have in the text: what comes out is for memory alone.
/// @throws EParserError with the line.
std::string FormBinaryOfText(const std::string& text);

/// The node of that name, `root` included; null when there is none. `parent` receives the one around it.
TFormNode* FindNode(TFormNode& root, std::string_view name, TFormNode** parent = nullptr);

/// What leads from one form to another.
struct TFormDifference {
    struct TRename {
        std::string From, To;
    };
    struct TChange {
        std::string Component; ///< As it is called afterwards.
        std::string Property;
        std::optional<std::string> Value; ///< Empty: as if it had never been set.
    };
    struct TInsertion {
        TFormNode Node;
        std::string Parent;
        size_t Index; ///< Among the parent's children.
    };
    std::vector<TRename> Renames;
    std::vector<std::string> Deletions;
    std::vector<TInsertion> Insertions;
    std::vector<TChange> Changes;
    /// The rest of the two differs in a way that these do not tell, as in the order of components.
    bool IsWhole = true;
};
TFormDifference Difference(const TFormNode& from, const TFormNode& to);

} // namespace kx::designer
