// SPDX-License-Identifier: MIT
#pragma once

#include "kx/graphics/Graphics.h"

#include <memory>
#include <string>
#include <vector>

namespace kx {

/// A picture that stays the file that it was loaded from, and is shown by the system's imaging component. Its pixels
/// cannot be changed; a TBitmap takes them by `Assign`.
class TImageFile : public TGraphic {
    KX_CLASS()

    ~TImageFile() override;

    bool Empty() const override { return !FImage; }
    int Width() const override;
    int Height() const override;
    void SetWidth(int value) override;  ///< @throws EInvalidOperation "The size of an image file cannot be changed"
    void SetHeight(int value) override; ///< The same.

    void LoadFromStream(TStream& stream) override;
    void SaveToStream(TStream& stream) const override; ///< The bytes that it was loaded from.
    void Draw(TCanvas& canvas, const TRect& rect) const override;
    void ReadData(TStream& stream) override { LoadFromStream(stream); }
    void WriteData(TStream& stream) const override { SaveToStream(stream); }
    void Assign(const TPersistent* source) override; ///< From a file of the same kind, or null for an empty one.

protected:
    enum class TKind : uint8_t { Png, Jpeg };
    explicit TImageFile(TKind kind);

    void AssignTo(TPersistent& dest) const override;
    /// @throws EInvalidImage when the bytes are no file of this kind; the graphic keeps what it had.
    void Load(std::vector<uint8_t> bytes);
    const std::vector<uint8_t>& Bytes() const; ///< Of the file; none when empty.

private:
    struct TImage;
    TKind FKind;
    std::shared_ptr<const TImage> FImage; ///< Shared by those assigned from each other; null when empty.
};

/// A PNG file, with its transparency.
class TPngImage : public TImageFile {
    KX_CLASS()

    TPngImage() : TImageFile(TKind::Png) {}
};

/// A JPEG file. In form files a length of 32 bits stands in front of its bytes.
class TJPEGImage : public TImageFile {
    KX_CLASS()

    TJPEGImage() : TImageFile(TKind::Jpeg) {}

    void ReadData(TStream& stream) override;
    void WriteData(TStream& stream) const override;
};

/// Lets pictures hold them: from files, and from form files under the names that these know. Once is enough.
void RegisterImageFiles();

} // namespace kx
