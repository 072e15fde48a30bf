// SPDX-License-Identifier: MIT
// Takes forms apart, and compares them.

#include "designer/FormTree.h"

#include "kx/core/FormText.h"

#include <algorithm>

namespace kx::designer {

namespace {

TFormNode ReadNode(TReader& reader, const std::string& bytes) {
    TFormNode node;
    reader.ReadPrefix(node.Flags, node.ChildPos);
    node.ClassName = reader.ReadStr();
    node.Name = reader.ReadStr();
    while (!reader.EndOfList()) {
        TFormProperty property{reader.ReadStr(), {}};
        const auto start = static_cast<size_t>(reader.Position());
        reader.SkipValue();
        property.Value = bytes.substr(start, static_cast<size_t>(reader.Position()) - start);
        node.Properties.push_back(std::move(property));
    }
    reader.ReadListEnd();
    while (!reader.EndOfList()) {
        node.Children.push_back(ReadNode(reader, bytes));
    }
    reader.ReadListEnd();
    return node;
}

void WriteNode(TWriter& writer, const TFormNode& node) {
    writer.WritePrefix(node.Flags, node.ChildPos);
    writer.WriteStr(node.ClassName);
    writer.WriteStr(node.Name);
    for (const TFormProperty& property : node.Properties) {
        writer.WriteStr(property.Name);
        writer.Write(property.Value.data(), property.Value.size());
    }
    writer.WriteListEnd();
    for (const TFormNode& child : node.Children) {
        WriteNode(writer, child);
    }
    writer.WriteListEnd();
}

bool IsSameComponent(const TFormNode& a, const TFormNode& b) {
    return a.Name == b.Name && a.ClassName == b.ClassName && a.Flags == b.Flags && a.ChildPos == b.ChildPos;
}

class TComparison {
public:
    TFormDifference Result;

    void Compare(const TFormNode& from, const TFormNode& to) {
        if (from.ClassName != to.ClassName || from.Flags != to.Flags || from.ChildPos != to.ChildPos) {
            Result.IsWhole = false;
            return;
        }
        if (from.Name != to.Name) {
            Result.Renames.push_back({from.Name, to.Name});
        }
        CompareProperties(from, to);
        CompareChildren(from, to);
    }

private:
    void CompareProperties(const TFormNode& from, const TFormNode& to) {
        for (const TFormProperty& property : from.Properties) {
            if (!to.Find(property.Name)) {
                Result.Changes.push_back({to.Name, property.Name, std::nullopt});
            }
        }
        for (const TFormProperty& property : to.Properties) {
            const TFormProperty* const before = from.Find(property.Name);
            if (!before || before->Value != property.Value) {
                Result.Changes.push_back({to.Name, property.Name, property.Value});
            }
        }
    }

    void CompareChildren(const TFormNode& from, const TFormNode& to) {
        const auto has = [](const std::vector<TFormNode>& nodes, const TFormNode& wanted) {
            return std::ranges::any_of(nodes, [&](const TFormNode& node) { return IsSameComponent(node, wanted); });
        };
        if (from.Children.size() == to.Children.size()) {
            CompareInOrder(from, to);
            return;
        }
        std::vector<const TFormNode*> kept;
        for (const TFormNode& child : from.Children) {
            if (has(to.Children, child)) {
                kept.push_back(&child);
            } else {
                Result.Deletions.push_back(child.Name);
                Result.IsWhole = Result.IsWhole && !child.Name.empty();
            }
        }
        auto next = kept.begin();
        for (size_t i = 0; i < to.Children.size(); ++i) {
            const TFormNode& child = to.Children[i];
            if (!has(from.Children, child)) {
                Result.Insertions.push_back({child, to.Name, i});
            } else if (next != kept.end() && IsSameComponent(**next, child)) {
                Compare(**next++, child);
            } else {
                Result.IsWhole = false;
                return;
            }
        }
    }

    /// As many as before: each one is the one at its place, perhaps by another name.
    void CompareInOrder(const TFormNode& from, const TFormNode& to) {
        for (size_t i = 0; i < to.Children.size(); ++i) {
            const std::string& name = to.Children[i].Name;
            const bool isElsewhere = std::ranges::count(from.Children, name, &TFormNode::Name) > 0;
            if (from.Children[i].Name != name && isElsewhere) {
                Result.IsWhole = false;
                return;
            }
            Compare(from.Children[i], to.Children[i]);
        }
    }
};

} // namespace

const TFormProperty* TFormNode::Find(std::string_view property) const {
    const auto found =
        std::ranges::find_if(Properties, [&](const TFormProperty& one) { return SameText(one.Name, property); });
    return found == Properties.end() ? nullptr : &*found;
}

TFormNode ParseForm(const std::string& binary) {
    TStaticMemoryStream stream(binary.data(), binary.size());
    TReader reader(stream);
    reader.ReadSignature();
    return ReadNode(reader, binary);
}

TFilerFlags FormFlags(const std::string& binary) {
    TStaticMemoryStream stream(binary.data(), binary.size());
    TReader reader(stream);
    TFilerFlags flags;
    int childPos = -1;
    reader.ReadSignature();
    reader.ReadPrefix(flags, childPos);
    return flags;
}

std::string FormBinary(const TFormNode& root) {
    TMemoryStream stream;
    TWriter writer(stream);
    writer.WriteSignature();
    WriteNode(writer, root);
    writer.FlushBuffer();
    return std::string(stream.Bytes());
}

std::string FormText(const std::string& binary, std::string_view lineBreak) {
    TStaticMemoryStream from(binary.data(), binary.size());
    TMemoryStream to;
    ObjectBinaryToText(from, to, lineBreak);
    return std::string(to.Bytes());
}

std::string FormBinaryOfText(const std::string& text) {
    TStaticMemoryStream from(text.data(), text.size());
    TMemoryStream to;
    ObjectTextToBinary(from, to, nullptr, TFormNumbers::Spelled);
    return std::string(to.Bytes());
}

TFormNode* FindNode(TFormNode& root, std::string_view name, TFormNode** parent) {
    if (SameText(root.Name, name)) {
        return &root;
    }
    for (TFormNode& child : root.Children) {
        if (SameText(child.Name, name)) {
            if (parent) {
                *parent = &root;
            }
            return &child;
        }
        if (TFormNode* const found = FindNode(child, name, parent)) {
            return found;
        }
    }
    return nullptr;
}

TFormDifference Difference(const TFormNode& from, const TFormNode& to) {
    TComparison comparison;
    comparison.Compare(from, to);
    return std::move(comparison.Result);
}

} // namespace kx::designer
