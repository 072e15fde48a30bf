// SPDX-License-Identifier: MIT
// Forms of many megabytes: what they take grows as they do.

#include "FormFixture.h"

#include "kx/core/FormClass.h"

#include <ctime>

namespace kx::sample {
namespace {

/// Tests for 64 bits run under a memory guard or sanitizers, which take twenty times as long: there the forms are
/// smaller.
constexpr size_t Scale = sizeof(void*) > 4 ? 20 : 1;
constexpr size_t FormSize = 20 * 1024 * 1024 / Scale;
constexpr size_t ComponentCount = 100'000 / Scale;

/// Each test takes seconds. A step that looks at all that came before would take minutes.
class LargeForms : public FormTest {
protected:
    void TearDown() override {
        EXPECT_LT(static_cast<double>(std::clock() - FStart) / CLOCKS_PER_SEC, 120);
        FormTest::TearDown();
    }

    /// Read by an ordinary reader and by one that keeps, and written, the form is what it was.
    static void ExpectToComeBackWhole(const std::string& text) {
        const std::string binary = ToBinary(text);
        EXPECT_TRUE(ToText(binary) == text);
        EXPECT_TRUE(Written(*ReadForm(binary)) == text);
        const auto form = ReadKeeping(text);
        EXPECT_TRUE(Written(*form) == text);
        EXPECT_TRUE(Written(*form, TStreamFormat::Binary) == binary);
    }

    static TFormClass ClassOf(const std::string& text) {
        TMemoryStream stream(text);
        return FormClassOf(stream);
    }

private:
    const std::clock_t FStart = std::clock();
};

TEST_F(LargeForms, AStringListOfManyLinesComesBack) {
    std::string text = "object F: TForm\r\n  Items.Strings = (";
    for (int i = 0; text.size() < FormSize; ++i) {
        text += "\r\n    'line " + std::to_string(i) + " of a text that somebody keeps in a form file'";
    }
    ExpectToComeBackWhole(text + ")\r\nend\r\n");
}

TEST_F(LargeForms, AStringOfManyPiecesComesBack) {
    std::string text = "object F: TForm\r\n  Caption = ";
    for (int i = 0; text.size() < FormSize; ++i) {
        text += std::string(i > 0 ? " +" : "") + "\r\n    '" + std::string(64, static_cast<char>('a' + i % 26)) + "'";
    }
    ExpectToComeBackWhole(text + "\r\nend\r\n");
}

TEST_F(LargeForms, ABlockOfBytesComesBack) {
    std::string text = "object F: TForm\r\n  Picture = {";
    while (text.size() < FormSize) {
        text += "\r\n    000102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F";
    }
    ExpectToComeBackWhole(text + "}\r\nend\r\n");
}

TEST_F(LargeForms, ManyComponentsComeBack) {
    std::string text = "object F: TForm\r\n";
    for (size_t i = 0; i < ComponentCount; ++i) {
        text += "  object Button" + std::to_string(i) + ": TButton\r\n    Caption = 'a'\r\n" + "    Target = Button" +
                std::to_string(i / 2) + "\r\n    OnClick = Button1Click\r\n  end\r\n";
    }
    text += "end\r\n";
    ExpectToComeBackWhole(text);
    EXPECT_EQ(ClassOf(text).Fields.size(), ComponentCount);
}

TEST_F(LargeForms, AsManyHandlersAndItemsComeBack) {
    std::string text = "object F: TForm\r\n  Columns = <";
    for (size_t i = 0; i < ComponentCount; ++i) {
        text += "\r\n    item\r\n      OnClick = Item" + std::to_string(i) + "Click\r\n    end";
    }
    text += ">\r\nend\r\n";
    EXPECT_TRUE(Written(*ReadKeeping(text)) == text);
    EXPECT_EQ(ClassOf(text).Handlers.size(), ComponentCount);
    EXPECT_EQ(FormClassDefinition(ClassOf(text)).substr(0, 15), "const TClass& T");
}

TEST_F(LargeForms, AsManyReferencesThatWaitComeBack) {
    std::string text = "object F: TForm\r\n";
    for (size_t i = 0; i < ComponentCount; ++i) {
        text += "  object Button" + std::to_string(i) + ": TButton\r\n    Target = Later.A\r\n  end\r\n";
    }
    text += "end\r\n";
    ExpectToComeBackWhole(text);
}

TEST_F(LargeForms, ADeepNestingOfAnySizeIsRefused) {
    std::string deep;
    while (deep.size() < FormSize) {
        deep += "object X: TPanel ";
    }
    EXPECT_THROW(ToBinary(deep), EParserError);
    EXPECT_THROW(ToBinary("object F: T A = " + std::string(FormSize, '(')), EParserError);
}

} // namespace
} // namespace kx::sample
