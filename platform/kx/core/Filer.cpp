// SPDX-License-Identifier: MIT
// What reading and writing components have in common.

#include "kx/core/Filer.h"

#include "kx/core/FilerTools.h"
#include "kx/core/KeptForm.h"
#include "kx/core/TypInfo.h"

#include <algorithm>

namespace kx {

// --- What a form file said of an object

detail::TKept* TFiler::Kept(TPersistent& instance) {
    auto* const place = instance.KeptPlace();
    return place ? place->get() : nullptr;
}

detail::TKept& TFiler::MakeKept(TPersistent& instance) {
    auto& place = *instance.KeptPlace();
    if (!place) {
        place = std::make_unique<detail::TKept>();
    }
    return *place;
}

// --- Design positions

namespace {

/// One half of a DesignInfo: the lower one begins at bit 0, the upper one at bit 16.
int16_t HalfOf(int32_t info, int shift) { return static_cast<int16_t>(static_cast<uint32_t>(info) >> shift); }

int32_t WithHalf(int32_t info, int shift, int32_t half) {
    const uint32_t mask = 0xFFFFU << shift;
    return static_cast<int32_t>((static_cast<uint32_t>(info) & ~mask) | (static_cast<uint32_t>(half) << shift & mask));
}

} // namespace

void TComponent::DefineProperties(TFiler& filer) {
    TPersistent::DefineProperties(filer);
    const auto* const ancestor = dynamic_cast<const TComponent*>(filer.Ancestor());
    const int32_t inherited = ancestor ? ancestor->FDesignInfo : 0;
    const auto define = [&](std::string_view name, int shift) {
        if (ClassType().FindProperty(name)) {
            return; // a control's own
        }
        const auto read = [this, shift](TReader& reader) {
            const int32_t value = reader.ReadInteger();
            if (value < INT16_MIN || value > UINT16_MAX) { // some files have them unsigned
                reader.ReadError(Format("The position %s is out of range", {IntToStr(value)}));
            }
            FDesignInfo = WithHalf(FDesignInfo, shift, value);
        };
        const auto write = [this, shift](TWriter& writer) { writer.WriteInteger(HalfOf(FDesignInfo, shift)); };
        filer.DefineProperty(name, read, write, HalfOf(FDesignInfo, shift) != HalfOf(inherited, shift));
    };
    define("Left", 0);
    define("Top", 16);
}

/// Here and not among the parts of the writer: those who only read forms need none.
void TComponent::WriteState(TWriter& writer) { writer.WriteData(*this); }

// --- Resources

namespace {

// The header of a resource of type RCDATA, which has the number 10: a type, a name, flags and the size.
constexpr unsigned char ResourceType[] = {0xFF, 10, 0};
constexpr uint16_t ResourceFlags = 0x1030; // moveable, pure, discardable: what resource compilers write
constexpr size_t MaxResourceName = 255;

} // namespace

uint32_t ReadResHeader(TStream& stream) {
    unsigned char type[sizeof ResourceType] = {};
    size_t got = 0;
    while (got < sizeof type) {
        const size_t part = stream.Read(type + got, sizeof type - got);
        if (part == 0) {
            break;
        }
        got += part;
    }
    if (got != sizeof type || !std::equal(std::begin(type), std::end(type), std::begin(ResourceType))) {
        throw EInvalidImage("Invalid stream format: no resource header");
    }
    try {
        char c = 1;
        for (size_t length = 0; c != 0; ++length) {
            if (length > MaxResourceName) {
                throw EInvalidImage("Invalid stream format: the name of the resource has no end");
            }
            stream.ReadBuffer(&c, 1);
        }
        std::array<unsigned char, sizeof ResourceFlags> flags;
        stream.ReadBuffer(flags.data(), flags.size());
        std::array<unsigned char, sizeof(uint32_t)> size;
        stream.ReadBuffer(size.data(), size.size());
        return detail::FromBytes<uint32_t>(size);
    } catch (const EReadError&) {
        throw EInvalidImage("Invalid stream format: the resource header is cut off");
    }
}

void WriteResHeader(TStream& stream, std::string_view name, uint32_t size) {
    if (name.size() > MaxResourceName || name.find('\0') != std::string_view::npos) {
        throw EWriteError(Format("Invalid resource name: %s", {name}));
    }
    stream.WriteBuffer(ResourceType, sizeof ResourceType);
    const std::string upper = UpperCase(name);
    stream.WriteBuffer(upper.c_str(), upper.size() + 1);
    const auto flags = detail::ToBytes(ResourceFlags);
    stream.WriteBuffer(flags.data(), flags.size());
    const auto sizeBytes = detail::ToBytes(size);
    stream.WriteBuffer(sizeBytes.data(), sizeBytes.size());
}

} // namespace kx
