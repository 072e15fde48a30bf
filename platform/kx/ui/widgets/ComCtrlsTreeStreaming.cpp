// SPDX-License-Identifier: MIT
// The nodes of a tree view in form files.

#include "kx/core/Filer.h"
#include "kx/core/Streams.h"
#include "kx/ui/widgets/ComCtrlsBlock.h"
#include "kx/ui/widgets/ComCtrlsTree.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <string>

namespace kx {

// NodeData is a byte with the version, the number of nodes of the top level, and each node followed by its children: a
// length of 32 bits, six numbers, a byte for a node that the user may use, a byte with the number of characters, and
// the text in UTF-16. Data, of older tools, has no version byte, one number and that byte less, and texts of the code
// page. A block that is neither shows no nodes, and is written as it stood.

using detail::AddNumber;
using detail::BytesOf;
using detail::TBlock;

namespace {

constexpr uint8_t TreeVersion = 3;
constexpr int MaxLevels = 200;

/// What one node of a block says.
struct TNodeRecord {
    int ImageIndex = 0;
    int SelectedIndex = 0;
    int StateIndex = -1;
    int Count = 0;
    std::string Text;
};

TNodeRecord ReadRecord(TBlock& block, bool isOld) {
    TBlock record(block.Take(static_cast<uint32_t>(block.Number())));
    TNodeRecord node;
    node.ImageIndex = record.Number();
    node.SelectedIndex = record.Number();
    node.StateIndex = record.Number();
    record.Number(); // the overlay image
    if (!isOld) {
        record.Number(); // the image while it is expanded
    }
    record.Number(); // the data of the program, which means nothing here
    node.Count = record.Number();
    if (!isOld) {
        record.Byte();
    }
    node.Text = record.Text(isOld);
    if (!record.IsAtEnd() || node.Count < 0) {
        throw EReadError("The nodes of the tree are damaged");
    }
    return node;
}

void ReadNodes(TBlock& block, bool isOld, TTreeNodes& nodes, TTreeNode* parent, int count, int level) {
    if (level > MaxLevels) {
        throw EReadError("The nodes of the tree are nested too deeply");
    }
    for (; count > 0; --count) {
        const TNodeRecord record = ReadRecord(block, isOld);
        TTreeNode& node = nodes.AddChild(parent, record.Text);
        node.SetImageIndex(record.ImageIndex);
        node.SetSelectedIndex(record.SelectedIndex);
        node.SetStateIndex(record.StateIndex);
        ReadNodes(block, isOld, nodes, &node, record.Count, level + 1);
    }
}

void WriteNode(std::string& bytes, const TTreeNode& node) {
    std::wstring text = ToWide(node.Text());
    text.resize(std::min<size_t>(text.size(), 255)); // its length is a byte
    constexpr int32_t fixedSize = 30;
    AddNumber(bytes, fixedSize + static_cast<int32_t>(2 * text.size()));
    for (const int number : {node.ImageIndex(), node.SelectedIndex(), node.StateIndex(), -1, -1, 0, node.Count()}) {
        AddNumber(bytes, number);
    }
    bytes.push_back(1);
    bytes.push_back(static_cast<char>(text.size()));
    for (const wchar_t unit : text) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8 & 0xFF));
    }
    for (int i = 0; i < node.Count(); ++i) {
        WriteNode(bytes, node[i]);
    }
}

/// Nodes of the ancestor form are not written again.
bool IsSame(const TTreeNode* a, const TTreeNode* b) {
    for (; a && b; a = a->GetNext(), b = b->GetNext()) {
        if (a->Text() != b->Text() || a->ImageIndex() != b->ImageIndex() || a->SelectedIndex() != b->SelectedIndex() ||
            a->StateIndex() != b->StateIndex() || a->Level() != b->Level()) {
            return false;
        }
    }
    return a == b;
}

} // namespace

void TTreeNodes::ReadData(TStream& stream, bool isOld) {
    const std::string bytes = BytesOf(stream);
    Clear();
    BeginUpdate();
    try {
        TBlock block(bytes);
        if (!isOld && block.Byte() != TreeVersion) {
            throw EReadError("The nodes of the tree are of an unknown version");
        }
        ReadNodes(block, isOld, *this, nullptr, block.Number(), 0);
        if (!block.IsAtEnd()) {
            throw EReadError("The nodes of the tree are damaged");
        }
    } catch (const EReadError&) {
        Clear();
    }
    EndUpdate();
    FStood = bytes;
    FStoodAsOld = isOld;
}

void TTreeNodes::WriteData(TStream& stream) const {
    std::string bytes = FStood;
    if (bytes.empty()) {
        bytes.push_back(static_cast<char>(TreeVersion));
        AddNumber(bytes, static_cast<int32_t>(FRoots.size()));
        for (const auto& node : FRoots) {
            WriteNode(bytes, *node);
        }
    }
    stream.WriteBuffer(bytes.data(), bytes.size());
}

void TTreeNodes::DefineProperties(TFiler& filer) {
    TPersistent::DefineProperties(filer);
    const auto* const ancestor = dynamic_cast<const TTreeNodes*>(filer.Ancestor());
    const bool differs = !IsSame(GetFirstNode(), ancestor ? ancestor->GetFirstNode() : nullptr) ||
                         (FRoots.empty() && FStood != (ancestor ? ancestor->FStood : std::string()));
    const bool isOld = !FStood.empty() && FStoodAsOld;
    const auto write = [this](TStream& stream) { WriteData(stream); };
    filer.DefineBinaryProperty(
        "Data", [this](TStream& stream) { ReadData(stream, true); }, write, differs && isOld);
    filer.DefineBinaryProperty(
        "NodeData", [this](TStream& stream) { ReadData(stream, false); }, write, differs && !isOld);
}

} // namespace kx
