// SPDX-License-Identifier: MIT
// The items of a list view in form files.

#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ComCtrlsBlock.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

using detail::AddNumber;
using detail::BytesOf;
using detail::TBlock;

// Data is the length of the block, the number of items, and each item: the numbers of its image, its state and its
// overlay image, the number of its further texts, a number of the program that means nothing here, and its texts, each
// behind a byte with its length. At the end, in two bytes each, the images of all further texts; older tools leave them
// out. ItemData, of newer tools, has a version byte in front, one number more for each item, four bytes more for each
// further text, and texts in UTF-16. A block that is neither shows no items, and is written as it stood.

namespace {

constexpr uint8_t ListVersion = 3;
constexpr size_t LongestText = 255; // its length is a byte

void AddText(std::string& bytes, const std::string& text) {
    const size_t length = std::min(text.size(), LongestText);
    bytes.push_back(static_cast<char>(length));
    bytes.append(text, 0, length);
}

} // namespace

void TListItems::ReadItems(std::string_view bytes, bool isOld) {
    TBlock block(bytes);
    if (!isOld && block.Byte() != ListVersion) {
        throw EReadError("The items of the list are of an unknown version");
    }
    block.Number(); // the length
    size_t further = 0;
    for (int count = block.Number(); count > 0; --count) {
        TListItem& item = Add();
        item.FImageIndex = block.Number();
        item.FStateIndex = block.Number();
        item.FOverlayIndex = block.Number();
        const int texts = block.Number();
        if (!isOld) {
            block.Number(); // the group
        }
        block.Number(); // the data of the program
        item.FCaption = block.Text(isOld);
        for (int i = 0; i < texts; ++i, ++further) {
            item.FSubItems->Add(block.Text(isOld));
            if (!isOld) {
                block.Number(); // the object of the text
            }
        }
        item.Show();
    }
    if (block.IsAtEnd()) {
        return;
    }
    if (block.Rest() != 2 * further) {
        throw EReadError("The items of the list are damaged");
    }
    for (const auto& item : FItems) {
        for (int i = 0; i < item->FSubItems->Count(); ++i) {
            const unsigned low = block.Byte();
            item->FSubItemImages.push_back(static_cast<int16_t>(low | static_cast<unsigned>(block.Byte()) << 8));
        }
    }
}

void TListItems::ReadData(TStream& stream, bool isOld) {
    const std::string bytes = BytesOf(stream);
    BeginUpdate();
    Clear();
    try {
        ReadItems(bytes, isOld);
    } catch (const EReadError&) {
        Clear();
    }
    EndUpdate();
    FStood = bytes;
    FStoodAsOld = isOld;
}

void TListItems::WriteData(TStream& stream) const {
    std::string bytes = FStood;
    if (bytes.empty()) {
        std::string images;
        for (const auto& item : FItems) {
            TStrings& texts = *item->FSubItems;
            for (const int number : {item->FImageIndex, item->FStateIndex, item->FOverlayIndex, texts.Count(), 0}) {
                AddNumber(bytes, number);
            }
            AddText(bytes, item->FCaption);
            for (int i = 0; i < texts.Count(); ++i) {
                AddText(bytes, texts.Get(i));
                const auto at = static_cast<size_t>(i);
                const int image = at < item->FSubItemImages.size() ? item->FSubItemImages[at] : -1;
                images += {static_cast<char>(image & 0xFF), static_cast<char>(image >> 8 & 0xFF)};
            }
        }
        bytes += images;
        constexpr size_t headSize = 8;
        std::string head;
        AddNumber(head, static_cast<int32_t>(headSize + bytes.size()));
        AddNumber(head, Count());
        bytes.insert(0, head);
    }
    stream.WriteBuffer(bytes.data(), bytes.size());
}

/// Items of the ancestor form are not written again.
bool TListItems::IsSame(const TListItems* other) const {
    static const std::vector<std::unique_ptr<TListItem>> none;
    return std::ranges::equal(FItems, other ? other->FItems : none, [](const auto& a, const auto& b) {
        return a->FCaption == b->FCaption && a->FImageIndex == b->FImageIndex && a->FStateIndex == b->FStateIndex &&
               a->FOverlayIndex == b->FOverlayIndex && a->FSubItemImages == b->FSubItemImages &&
               a->FSubItems->Text() == b->FSubItems->Text();
    });
}

void TListItems::DefineProperties(TFiler& filer) {
    TPersistent::DefineProperties(filer);
    const auto* const ancestor = dynamic_cast<const TListItems*>(filer.Ancestor());
    const bool differs =
        !IsSame(ancestor) || (FItems.empty() && FStood != (ancestor ? ancestor->FStood : std::string()));
    const bool isNew = !FStood.empty() && !FStoodAsOld;
    const auto write = [this](TStream& stream) { WriteData(stream); };
    filer.DefineBinaryProperty(
        "Data", [this](TStream& stream) { ReadData(stream, true); }, write, differs && !isNew);
    filer.DefineBinaryProperty(
        "ItemData", [this](TStream& stream) { ReadData(stream, false); }, write, differs && isNew);
}

} // namespace kx
