// SPDX-License-Identifier: MIT
// PNG and JPEG files in pictures.

#include "kx/graphics/ImageFiles.h"
#include "kx/graphics/GraphicFormats.h"

#include "kx/core/Classes.h"
#include "support/TempFolder.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/FormFiles.h"

#include <gtest/gtest.h>

namespace kx {
namespace {

using namespace test;

// Two pixels by two: red, green; blue, and one that is fully transparent.
constexpr uint8_t Png[] = {
    0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A, 0x00, 0x00, 0x00, 0x0D, 0x49, 0x48, 0x44, 0x52,
    0x00, 0x00, 0x00, 0x02, 0x00, 0x00, 0x00, 0x02, 0x08, 0x06, 0x00, 0x00, 0x00, 0x72, 0xB6, 0x0D,
    0x24, 0x00, 0x00, 0x00, 0x15, 0x49, 0x44, 0x41, 0x54, 0x78, 0xDA, 0x63, 0xF8, 0xCF, 0xC0, 0xF0,
    0x1F, 0x0C, 0x81, 0xF4, 0x7F, 0x4E, 0x4E, 0x4E, 0x06, 0x00, 0x40, 0x23, 0x06, 0x16, 0xF6, 0x79,
    0x80, 0x60, 0x00, 0x00, 0x00, 0x00, 0x49, 0x45, 0x4E, 0x44, 0xAE, 0x42, 0x60, 0x82,
};

// Eight pixels by eight, all of one red.
constexpr uint8_t Jpeg[] = {
    0xFF, 0xD8, 0xFF, 0xE0, 0x00, 0x10, 0x4A, 0x46, 0x49, 0x46, 0x00, 0x01, 0x01, 0x00, 0x00, 0x01, 0x00, 0x01,
    0x00, 0x00, 0xFF, 0xDB, 0x00, 0x43, 0x00, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08,
    0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08,
    0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08,
    0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0xFF,
    0xC0, 0x00, 0x11, 0x08, 0x00, 0x08, 0x00, 0x08, 0x03, 0x01, 0x11, 0x00, 0x02, 0x11, 0x00, 0x03, 0x11, 0x00,
    0xFF, 0xC4, 0x00, 0x16, 0x00, 0x00, 0x03, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
    0x00, 0x00, 0x00, 0x05, 0x06, 0x07, 0xFF, 0xC4, 0x00, 0x14, 0x10, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xFF, 0xDA, 0x00, 0x0C, 0x03, 0x01, 0x00, 0x02,
    0x00, 0x03, 0x00, 0x00, 0x3F, 0x00, 0x50, 0x02, 0x55, 0x5F, 0xFF, 0xD9,
};

template <size_t Size> std::string Bytes(const uint8_t (&bytes)[Size]) {
    return std::string(reinterpret_cast<const char*>(bytes), Size);
}

void LoadBytes(TGraphic& graphic, const std::string& bytes) {
    TMemoryStream stream(bytes);
    graphic.LoadFromStream(stream);
}

std::string Saved(const TGraphic& graphic) {
    TMemoryStream stream;
    graphic.SaveToStream(stream);
    return std::string(stream.Bytes());
}

TEST(ImageFiles, APngIsDrawnWithItsTransparency) {
    TPngImage image;
    EXPECT_TRUE(image.Empty());
    EXPECT_EQ(image.Width(), 0);
    LoadBytes(image, Bytes(Png));
    ASSERT_FALSE(image.Empty());
    EXPECT_EQ(image.Width(), 2);
    EXPECT_EQ(image.Height(), 2);
    TBitmap bitmap(4, 2);
    bitmap.Canvas().Brush().SetColor(clYellow);
    bitmap.Canvas().FillRect({0, 0, 4, 2});
    bitmap.Canvas().Draw(1, 0, image);
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 0), clYellow);
    EXPECT_EQ(bitmap.Canvas().Pixels(1, 0), clRed);
    EXPECT_EQ(bitmap.Canvas().Pixels(2, 0), clLime);
    EXPECT_EQ(bitmap.Canvas().Pixels(1, 1), clBlue);
    EXPECT_EQ(bitmap.Canvas().Pixels(2, 1), clYellow) << "what was there";
}

TEST(ImageFiles, AJpegIsDrawn) {
    TJPEGImage image;
    LoadBytes(image, Bytes(Jpeg));
    EXPECT_EQ(image.Width(), 8);
    EXPECT_EQ(image.Height(), 8);
    TBitmap bitmap;
    bitmap.Assign(&image);
    ASSERT_EQ(bitmap.Width(), 8);
    const auto color = static_cast<uint32_t>(bitmap.Canvas().Pixels(4, 4));
    EXPECT_NEAR(static_cast<int>(color & 0xFF), 200, 4);
    EXPECT_NEAR(static_cast<int>(color >> 8 & 0xFF), 30, 4);
    EXPECT_NEAR(static_cast<int>(color >> 16 & 0xFF), 30, 4);
}

TEST(ImageFiles, StayTheFilesThatTheyWere) {
    TPngImage png;
    LoadBytes(png, Bytes(Png));
    EXPECT_EQ(Saved(png), Bytes(Png));
    TPngImage copy;
    int changes = 0;
    copy.SetOnChange([&](TObject*) { ++changes; });
    copy.Assign(&png);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(Saved(copy), Bytes(Png));
    png.Assign(nullptr);
    EXPECT_TRUE(png.Empty());
    EXPECT_EQ(Saved(png), "");
    EXPECT_EQ(Saved(copy), Bytes(Png));
    TJPEGImage jpeg;
    EXPECT_EQ(ErrorOf<EConvertError>([&] { jpeg.Assign(&copy); }), "Cannot assign a TPngImage to a TJPEGImage");
    EXPECT_EQ(ErrorOf<EInvalidOperation>([&] { copy.SetWidth(5); }), "The size of an image file cannot be changed");
    EXPECT_EQ(ErrorOf<EInvalidOperation>([&] { copy.SetHeight(5); }), "The size of an image file cannot be changed");
    EXPECT_EQ(ErrorOf<EInvalidOperation>([&] { copy.SetWidth(2); }), "no error");
}

TEST(ImageFiles, OtherBytesAreErrorsAndChangeNothing) {
    TPngImage png;
    LoadBytes(png, Bytes(Png));
    TJPEGImage jpeg;
    LoadBytes(jpeg, Bytes(Jpeg));
    for (const std::string& bytes : {std::string(), std::string("no picture"), Bytes(Png).substr(0, 20)}) {
        EXPECT_THROW(LoadBytes(png, bytes), EInvalidImage) << bytes.size();
        EXPECT_THROW(LoadBytes(jpeg, bytes), EInvalidImage) << bytes.size();
    }
    EXPECT_THROW(LoadBytes(png, Bytes(Jpeg)), EInvalidImage) << "of the other kind";
    EXPECT_THROW(LoadBytes(jpeg, Bytes(Png)), EInvalidImage);
    EXPECT_EQ(Saved(png), Bytes(Png));
    EXPECT_EQ(Saved(jpeg), Bytes(Jpeg));
}

/// A component with a picture, as a form file holds it.
class TFramed : public TComponent {
    KX_CLASS()
    explicit TFramed(TComponent* owner = nullptr) : TComponent(owner) {}
    TPicture& Picture() { return FPicture; }
    void SetPicture(const TPicture& value) { FPicture.Assign(&value); }

private:
    TPicture FPicture;
};

const TClass& TFramed::StaticClass() {
    static const TClassBuilder<TFramed> cls("TFramed", TComponent::StaticClass(), [](auto& c) {
        c.Creatable();
        c.SubObject("Picture", &TFramed::Picture, &TFramed::SetPicture);
    });
    return cls.Class();
}

std::string FormWith(const std::string& data) {
    std::string text = "object F: TFramed\r\n  Picture.Data = {";
    for (size_t i = 0; i < data.size(); ++i) {
        const auto byte = static_cast<unsigned char>(data[i]);
        text += i % 32 == 0 ? "\r\n    " : "";
        text += std::string{"0123456789ABCDEF"[byte >> 4], "0123456789ABCDEF"[byte & 15]};
    }
    return text + "}\r\nend\r\n";
}

std::string JpegData() {
    std::string data = "\x0ATJPEGImage";
    data += static_cast<char>(sizeof Jpeg & 0xFF);
    data += static_cast<char>(sizeof Jpeg >> 8);
    return data + std::string(2, '\0') + Bytes(Jpeg);
}

TEST(ImageFiles, PicturesOfFormsHoldThemByteForByte) {
    RegisterImageFiles();
    RegisterImageFiles(); // once more does no harm
    for (const std::string& data : {"\x09TPngImage" + Bytes(Png), JpegData()}) {
        TFramed component;
        ReadFormOver(component, FormWith(data));
        ASSERT_NE(component.Picture().Graphic(), nullptr);
        EXPECT_FALSE(component.Picture().Graphic()->Empty());
        EXPECT_EQ(FormTextOf(component), FormWith(data));
        TFramed copy;
        copy.SetName("F");
        copy.SetPicture(component.Picture());
        EXPECT_EQ(FormTextOf(copy), FormWith(data));
    }
}

TEST(ImageFiles, ADesignerKeepsTheNameThatAnOlderFileGivesTheirClass) {
    RegisterImageFiles();
    const std::string form = FormWith("\x0ATPNGObject" + Bytes(Png));
    TFramed component;
    TMemoryStream stream(form);
    ReadComponent(stream, &component, [](TReader& reader) { reader.SetKeepsUnknown(true); });
    EXPECT_EQ(component.Picture().Width(), 2);
    EXPECT_EQ(FormTextOf(component), form);
}

TEST(ImageFiles, APictureWhoseClassIsNotThereIsAnErrorButForADesigner) {
    const std::string form = FormWith("\x0DTUnknownImage" + Bytes(Png));
    TFramed component;
    const std::string error = ErrorOf<EReadError>([&] { ReadFormOver(component, form); });
    EXPECT_EQ(error, "Error reading F.Picture.Data on line 2: Class TUnknownImage not found");
    TMemoryStream stream(form);
    ReadComponent(stream, &component, [](TReader& reader) { reader.SetKeepsUnknown(true); });
    EXPECT_EQ(component.Picture().Graphic(), nullptr);
    EXPECT_EQ(FormTextOf(component), form);
    component.Picture().Bitmap().SetSize(1, 1);
    EXPECT_EQ(FormTextOf(component).find("Data = {\r\n    0D"), std::string::npos) << "another picture takes its place";
}

TEST(ImageFiles, DamagedDataOfFormsIsAnErrorWithItsLine) {
    RegisterImageFiles();
    std::string cut = JpegData();
    cut.pop_back();
    for (const std::string& data :
         {cut, JpegData() + "x", std::string("\x0ATJPEGImage\1"), std::string("\x09TPngImage")}) {
        TFramed component;
        const std::string error = ErrorOf<EReadError>([&] { ReadFormOver(component, FormWith(data)); });
        EXPECT_NE(error.find("F.Picture"), std::string::npos) << error;
        EXPECT_NE(error.find("on line 2"), std::string::npos) << error;
    }
}

TEST(ImageFiles, PicturesLoadThemByTheirExtension) {
    RegisterImageFiles();
    const TTempFolder folder;
    TPicture picture;
    for (const auto& [name, bytes] :
         {std::pair("a.png", Bytes(Png)), std::pair("a.JPG", Bytes(Jpeg)), std::pair("a.jpeg", Bytes(Jpeg))}) {
        folder.AddFile(name, bytes);
        picture.LoadFromFile(folder.Path(name));
        EXPECT_EQ(Saved(*picture.Graphic()), bytes);
    }
}

TEST(ImageFiles, ALaterKindOfTheSameNameIsTheOneThatIsMade) {
    class TOther : public TPngImage {};
    RegisterGraphic("TTestGraphic", ".tst", CreateGraphicOf<TPngImage>);
    RegisterGraphic("TTestGraphic", ".tst", CreateGraphicOf<TOther>);
    TFramed component;
    ReadFormOver(component, FormWith("\x0CTTestGraphic" + Bytes(Png)));
    EXPECT_NE(dynamic_cast<TOther*>(component.Picture().Graphic()), nullptr);
}

} // namespace
} // namespace kx
