// SPDX-License-Identifier: MIT
// Pictures of any kind, and which class reads which file.

#include "kx/core/Filer.h"
#include "kx/core/Streams.h"
#include "kx/graphics/GraphicFormats.h"
#include "kx/graphics/Graphics.h"
#include "kx/win/FileStreams.h"

#include <algorithm>
#include <vector>

namespace kx {

// --- TGraphic

const TClass& TGraphic::StaticClass() {
    static const TClassBuilder<TGraphic> cls("TGraphic", TPersistent::StaticClass());
    return cls.Class();
}

void TGraphic::Changed() {
    FModified = true;
    FOnChange(this);
}

void TGraphic::SetTransparent(bool value) {
    if (value != FTransparent) {
        FTransparent = value;
        Changed();
    }
}

void TGraphic::SetModified(bool value) {
    if (value) {
        Changed();
    } else {
        FModified = false;
    }
}

void TGraphic::LoadFromFile(const std::string& fileName) {
    TFileStream file(fileName, fmOpenRead | fmShareDenyWrite);
    LoadFromStream(file);
}

void TGraphic::SaveToFile(const std::string& fileName) const {
    TMemoryStream bytes;
    SaveToStream(bytes); // fails before a file of that name is emptied
    TFileStream file(fileName, fmCreate);
    file.WriteBuffer(bytes.Memory(), bytes.Bytes().size());
}

void TGraphic::DefineProperties(TFiler& filer) {
    filer.DefineBinaryProperty(
        "Data", [this](TStream& stream) { ReadData(stream); }, [this](TStream& stream) { WriteData(stream); },
        !Empty());
}

// --- TPicture

namespace {

/// A kind of pictures that pictures in form files may hold.
struct TGraphicKind {
    std::string ClassName;
    std::string Extension;
    TCreateGraphic Create;
};

std::vector<TGraphicKind>& Kinds() {
    static std::vector<TGraphicKind> kinds{{"TBitmap", ".bmp", CreateGraphicOf<TBitmap>},
                                           {"TIcon", ".ico", CreateGraphicOf<TIcon>}};
    return kinds;
}

/// The latest kind with that class name or extension; null when there is none.
std::unique_ptr<TGraphic> CreateGraphic(std::string_view classNameOrExtension) {
    const std::vector<TGraphicKind>& kinds = Kinds();
    const auto found = std::find_if(kinds.rbegin(), kinds.rend(), [&](const TGraphicKind& kind) {
        return SameText(classNameOrExtension, kind.ClassName) ||
               (!kind.Extension.empty() && SameText(classNameOrExtension, kind.Extension));
    });
    return found != kinds.rend() ? found->Create() : nullptr;
}

} // namespace

void RegisterGraphic(const std::string& className, const std::string& extension, TCreateGraphic create) {
    const auto isSame = [&](const TGraphicKind& kind) {
        return SameText(kind.ClassName, className) && SameText(kind.Extension, extension);
    };
    std::erase_if(Kinds(), isSame);
    Kinds().push_back({className, extension, create});
}

const TClass& TPicture::StaticClass() {
    static const TClassBuilder<TPicture> cls("TPicture", TPersistent::StaticClass());
    return cls.Class();
}

TPicture::TPicture() = default;

TPicture::~TPicture() = default;

void TPicture::Changed() { FOnChange(this); }

void TPicture::Adopt(std::unique_ptr<TGraphic> graphic) {
    if (graphic) {
        graphic->SetOnChange([this](TObject*) { Changed(); });
    }
    FGraphic = std::move(graphic);
    Changed();
}

void TPicture::SetGraphic(const TGraphic* value) {
    if (value == FGraphic.get()) {
        return;
    }
    std::unique_ptr<TGraphic> copy;
    if (value) {
        copy = CreateGraphic(value->ClassName());
        if (!copy) {
            throw EInvalidImage(Format("Cannot hold a %s", {value->ClassName()}));
        }
        copy->Assign(value);
    }
    Adopt(std::move(copy));
}

TBitmap& TPicture::Bitmap() {
    if (!dynamic_cast<TBitmap*>(FGraphic.get())) {
        Adopt(std::make_unique<TBitmap>());
    }
    return static_cast<TBitmap&>(*FGraphic);
}

TIcon& TPicture::Icon() {
    if (!dynamic_cast<TIcon*>(FGraphic.get())) {
        Adopt(std::make_unique<TIcon>());
    }
    return static_cast<TIcon&>(*FGraphic);
}

void TPicture::LoadFromFile(const std::string& fileName) {
    const std::string extension = ExtractFileExt(fileName);
    auto graphic = CreateGraphic(extension);
    if (!graphic) {
        throw EInvalidImage(Format("Unknown picture file extension (%s)", {extension}));
    }
    graphic->LoadFromFile(fileName);
    Adopt(std::move(graphic));
}

void TPicture::SaveToFile(const std::string& fileName) const {
    if (FGraphic) {
        FGraphic->SaveToFile(fileName);
    }
}

void TPicture::Assign(const TPersistent* source) {
    if (!source) {
        SetGraphic(nullptr);
    } else if (const auto* picture = dynamic_cast<const TPicture*>(source)) {
        SetGraphic(picture->Graphic());
    } else if (const auto* graphic = dynamic_cast<const TGraphic*>(source)) {
        SetGraphic(graphic);
    } else {
        TPersistent::Assign(source);
    }
}

void TPicture::AssignTo(TPersistent& dest) const {
    if (dynamic_cast<TGraphic*>(&dest)) {
        dest.Assign(FGraphic.get());
    } else {
        TPersistent::AssignTo(dest);
    }
}

void TPicture::DefineProperties(TFiler& filer) {
    filer.DefineBinaryProperty(
        "Data", [this](TStream& stream) { ReadData(stream); }, [this](TStream& stream) { WriteData(stream); },
        FGraphic && !FGraphic->Empty());
}

// The property's bytes are the length and the characters of the graphic's class name, then the graphic's own bytes.

void TPicture::ReadData(TStream& stream) {
    uint8_t length = 0;
    stream.ReadBuffer(&length, sizeof(length));
    std::string name(length, '\0');
    stream.ReadBuffer(name.data(), name.size());
    auto graphic = CreateGraphic(name);
    if (!graphic) {
        throw EClassNotFound(Format("Class %s not found", {name}));
    }
    graphic->ReadData(stream);
    Adopt(std::move(graphic));
}

void TPicture::WriteData(TStream& stream) const {
    const std::string& name = FGraphic->ClassName();
    const auto length = static_cast<uint8_t>(name.size());
    stream.WriteBuffer(&length, sizeof(length));
    stream.WriteBuffer(name.data(), name.size());
    FGraphic->WriteData(stream);
}

} // namespace kx
