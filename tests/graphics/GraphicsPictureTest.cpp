// SPDX-License-Identifier: MIT
// Pictures, and what graphics leave in form files.

#include "GraphicsSamples.h"
#include "kx/core/Classes.h"
#include "support/TempFolder.h"
#include "tests/support/FormFiles.h"

#include <gtest/gtest.h>

namespace kx {
namespace {

using namespace test;

/// A component with pictures, as a form file holds it.
class TAlbum : public TComponent {
    KX_CLASS()

    explicit TAlbum(TComponent* owner = nullptr) : TComponent(owner) {}

    TBitmap& Glyph() { return FGlyph; }
    void SetGlyph(const TBitmap& value) { FGlyph.Assign(&value); }
    TIcon& Icon() { return FIcon; }
    void SetIcon(const TIcon& value) { FIcon.Assign(&value); }
    TPicture& Picture() { return FPicture; }
    void SetPicture(const TPicture& value) { FPicture.Assign(&value); }
    TFont& Font() { return FFont; }
    void SetFont(const TFont& value) { FFont.Assign(&value); }
    TColor Color() const { return FColor; }
    void SetColor(TColor value) { FColor = value; }

private:
    TBitmap FGlyph;
    TIcon FIcon;
    TPicture FPicture;
    TFont FFont;
    TColor FColor = clBtnFace;
};

const TClass& TAlbum::StaticClass() {
    static const TClassBuilder<TAlbum> cls("TAlbum", TComponent::StaticClass(), [](auto& c) {
        c.Property("Color", &TAlbum::Color, &TAlbum::SetColor).Default = clBtnFace;
        c.SubObject("Font", &TAlbum::Font, &TAlbum::SetFont);
        c.SubObject("Glyph", &TAlbum::Glyph, &TAlbum::SetGlyph);
        c.SubObject("Icon", &TAlbum::Icon, &TAlbum::SetIcon);
        c.SubObject("Picture", &TAlbum::Picture, &TAlbum::SetPicture);
        c.Creatable();
    });
    return cls.Class();
}

std::string Hex(const std::string& bytes) {
    std::string text;
    for (const char byte : bytes) {
        text += "0123456789ABCDEF"[static_cast<unsigned char>(byte) >> 4];
        text += "0123456789ABCDEF"[byte & 15];
    }
    return text;
}

/// The text without its line ends and indentation.
std::string Squeezed(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c > ' ') {
            result += c;
        }
    }
    return result;
}

TEST(FormFile, EmptyPicturesAreNotStored) {
    TAlbum album;
    const std::string text = FormTextOf(album);
    EXPECT_EQ(text.find("Glyph"), std::string::npos) << text;
    EXPECT_EQ(text.find("Icon"), std::string::npos);
    EXPECT_EQ(text.find("Picture"), std::string::npos);
}

TEST(FormFile, ColorsAndFontsAreStoredByTheirNames) {
    TAlbum album;
    album.SetColor(clInfoBk);
    album.Font().SetColor(clRed);
    album.Font().SetHeight(-13);
    album.Font().SetName("Tahoma");
    album.Font().SetStyle({fsBold});
    const std::string text = FormTextOf(album);
    for (const char* line : {"Color = clInfoBk", "Font.Charset = DEFAULT_CHARSET", "Font.Color = clRed",
                             "Font.Height = -13", "Font.Name = 'Tahoma'", "Font.Style = [fsBold]"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line << "\n" << text;
    }
    EXPECT_EQ(text.find("Font.Size"), std::string::npos);
    TAlbum again;
    ReadFormOver(again, text);
    EXPECT_EQ(again.Color(), clInfoBk);
    EXPECT_TRUE(again.Font().Equals(album.Font()));
    ReadFormOver(again, "object TAlbum\n  Color = -2147483633\nend\n");
    EXPECT_EQ(ColorToRGB(again.Color()), GetSysColor(COLOR_BTNFACE));
}

TEST(FormFile, ABitmapIsALengthAndABitmapFile) {
    TAlbum album;
    Load(album.Glyph(), Bitmap4());
    TMemoryStream file;
    album.Glyph().SaveToStream(file);
    const std::string bytes(file.Bytes());
    const std::string text = FormTextOf(album);
    EXPECT_NE(Squeezed(text).find("Glyph.Data={" + Hex(TBytes().Add(static_cast<DWORD>(bytes.size())).Text()) +
                                  Hex(bytes) + "}"),
              std::string::npos)
        << text;
    TAlbum again;
    ReadFormOver(again, text);
    EXPECT_EQ(again.Glyph().PixelFormat(), pf4bit);
    EXPECT_EQ(again.Glyph().Canvas().Pixels(2, 1), Color4(6));
    EXPECT_EQ(FormTextOf(again), text);
}

TEST(FormFile, AnIconIsTheIconFile) {
    TAlbum album;
    const TBytes file = IconFile({{16, clRed}, {32, clBlue}});
    Load(album.Icon(), file);
    const std::string text = FormTextOf(album);
    EXPECT_NE(Squeezed(text).find("Icon.Data={" + Hex(file.Text()) + "}"), std::string::npos);
    TAlbum again;
    ReadFormOver(again, text);
    EXPECT_EQ(FormTextOf(again), text);
}

TEST(FormFile, APictureIsItsClassNameAndItsData) {
    TAlbum album;
    Load(album.Picture().Bitmap(), Bitmap24());
    std::string text = FormTextOf(album);
    EXPECT_NE(Squeezed(text).find("Picture.Data={0754426974"
                                  "6D6170"),
              std::string::npos)
        << text;
    TAlbum again;
    ReadFormOver(again, text);
    ASSERT_NE(dynamic_cast<TBitmap*>(again.Picture().Graphic()), nullptr);
    EXPECT_EQ(again.Picture().Bitmap().Canvas().Pixels(0, 1), clBlue);
    EXPECT_EQ(FormTextOf(again), text);

    Load(album.Picture().Icon(), IconFile({{32, clRed}}));
    text = FormTextOf(album);
    EXPECT_NE(Squeezed(text).find("Picture.Data={055449636F6E"), std::string::npos);
    ReadFormOver(again, text);
    ASSERT_NE(dynamic_cast<TIcon*>(again.Picture().Graphic()), nullptr);
    EXPECT_EQ(FormTextOf(again), text);
}

TEST(FormFile, DamagedPicturesAreToldByTheReader) {
    for (const char* data :
         {"Glyph.Data = {FFFFFFFF}", "Glyph.Data = {01}", "Glyph.Data = {0400000042414400}", "Icon.Data = {00000100}",
          "Picture.Data = {07}", "Picture.Data = {0754426974}", "Picture.Data = {03414243}", "Picture.Data = {}"}) {
        TAlbum album;
        EXPECT_THROW(ReadFormOver(album, std::string("object TAlbum\n  ") + data + "\nend\n"), Exception) << data;
    }
}

// --- TPicture

TEST(Picture, HoldsACopyOfAnyKind) {
    TPicture picture;
    EXPECT_EQ(picture.Graphic(), nullptr);
    EXPECT_EQ(picture.Width(), 0);
    TBitmap bitmap(5, 6);
    picture.SetGraphic(&bitmap);
    EXPECT_NE(picture.Graphic(), &bitmap);
    EXPECT_EQ(picture.Width(), 5);
    EXPECT_EQ(picture.Height(), 6);
    TIcon icon;
    Load(icon, IconFile({{32, clRed}}));
    picture.Assign(&icon);
    EXPECT_EQ(picture.Width(), 32);
    EXPECT_EQ(picture.Icon().Handle(), icon.Handle());
    EXPECT_TRUE(picture.Bitmap().Empty()) << "asked for as a bitmap, it becomes an empty one";
    picture.Assign(nullptr);
    EXPECT_EQ(picture.Graphic(), nullptr);
}

TEST(Picture, IsAssignedToGraphicsOfItsKind) {
    TPicture picture;
    Load(picture.Bitmap(), Bitmap24());
    TBitmap bitmap;
    bitmap.Assign(&picture);
    EXPECT_EQ(bitmap.Width(), 2);
    TIcon icon;
    EXPECT_THROW(icon.Assign(&picture), EConvertError);
    TPicture other;
    other.Assign(&picture);
    EXPECT_EQ(other.Width(), 2);
    EXPECT_THROW(picture.Assign(&bitmap.Canvas()), EConvertError);
}

TEST(Picture, TellsOfChangesOfItsGraphic) {
    TPicture picture;
    int changes = 0;
    picture.SetOnChange([&](TObject* sender) {
        EXPECT_EQ(sender, &picture);
        ++changes;
    });
    picture.Bitmap().SetSize(3, 3);
    EXPECT_EQ(changes, 2) << "a new bitmap, and its size";
    picture.Bitmap().Canvas().FillRect({0, 0, 3, 3});
    EXPECT_EQ(changes, 3);
}

TEST(Picture, ChoosesTheKindByTheFilesExtension) {
    const TTempFolder folder;
    folder.AddFile("a.BMP", Bitmap24().Text());
    folder.AddFile("b.ico", IconFile({{32, clRed}}).Text());
    folder.AddFile("c.gif", "GIF89a");
    TPicture picture;
    picture.LoadFromFile(folder.Path("a.BMP"));
    EXPECT_EQ(picture.Width(), 2);
    picture.LoadFromFile(folder.Path("b.ico"));
    EXPECT_EQ(picture.Width(), 32);
    try {
        picture.LoadFromFile(folder.Path("c.gif"));
        FAIL();
    } catch (const EInvalidImage& e) {
        EXPECT_EQ(e.Message(), "Unknown picture file extension (.gif)");
    }
    EXPECT_EQ(picture.Width(), 32);
    picture.SaveToFile(folder.Path("d.ico"));
    picture.LoadFromFile(folder.Path("d.ico"));
}

} // namespace
} // namespace kx
