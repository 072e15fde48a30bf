// SPDX-License-Identifier: MIT
// Forms that are written as if they inherited from no other.

#include "FormFixture.h"

namespace kx::sample {
namespace {

using testing::HasSubstr;

class FormWhole : public FormTest {
protected:
    /// Reads files over one another, the first ancestor first, as a form designer does.
    static TOwned<TForm> ReadChain(const std::vector<std::string>& files) {
        TOwned<TForm> form(new TForm);
        for (const std::string& file : files) {
            TMemoryStream stream(file);
            ReadComponent(stream, form.get(), [](TReader& reader) { reader.SetKeepsUnknown(true); });
        }
        return form;
    }
    static std::string WrittenWhole(TComponent& root, TStreamFormat format = TStreamFormat::Text) {
        TMemoryStream stream;
        WriteComponent(stream, root, format, nullptr, [](TWriter& writer) { writer.SetWritesWhole(); });
        return std::string(stream.Bytes());
    }
    static std::string ErrorOfWhole(const std::vector<std::string>& files) {
        const auto form = ReadChain(files);
        TMemoryStream stream;
        std::string error = ErrorOf<EWriteError>([&] {
            WriteComponent(stream, *form, TStreamFormat::Binary, nullptr,
                           [](TWriter& writer) { writer.SetWritesWhole(); });
        });
        EXPECT_TRUE(error == "no error" || stream.Bytes().empty());
        return error;
    }
};

const std::string Base = Lines("object F: TBase\n"
                               "  Caption = 'base'\n"
                               "  Foo = 1\n"
                               "  object P: TPanel\n"
                               "    Caption = 'panel'\n"
                               "    object A: TButton\n"
                               "      Left = 5\n"
                               "      OnClick = AClick\n"
                               "    end\n"
                               "    object B: TButton\n"
                               "      Caption = 'of the base'\n"
                               "      Target = A\n"
                               "    end\n"
                               "  end\n"
                               "  object Empty: TServer\n"
                               "  end\n"
                               "end\n");
const std::string Middle = Lines("inherited F: TMiddle\n"
                                 "  inherited P: TPanel\n"
                                 "    inherited B: TButton\n"
                                 "      Caption = 'of the middle'\n"
                                 "      Bar = 2\n"
                                 "    end\n"
                                 "    object C: TButton\n"
                                 "    end\n"
                                 "  end\n"
                                 "end\n");
const std::string Last = Lines("inherited F: TLast\n"
                               "  Caption = 'last'\n"
                               "  inherited P: TPanel\n"
                               "    inherited C: TButton [0]\n"
                               "      Left = 0\n"
                               "    end\n"
                               "    inherited A: TButton\n"
                               "      Left = 7\n"
                               "    end\n"
                               "  end\n"
                               "end\n");
const std::string Whole = Lines("object F: TLast\n"
                                "  Caption = 'last'\n"
                                "  object P: TPanel\n"
                                "    Caption = 'panel'\n"
                                "    object A: TButton\n"
                                "      Left = 7\n"
                                "      OnClick = AClick\n"
                                "    end\n"
                                "    object B: TButton\n"
                                "      Caption = 'of the middle'\n"
                                "      Target = A\n"
                                "    end\n"
                                "    object C: TButton [0]\n"
                                "    end\n"
                                "  end\n"
                                "  object Empty: TServer\n"
                                "  end\n"
                                "end\n");

TEST_F(FormWhole, WhatAllAncestorsBroughtIsThereAsTheLastOneLeavesIt) {
    const auto form = ReadChain({Base, Middle, Last});
    EXPECT_EQ(WrittenWhole(*form), Whole);
    EXPECT_EQ(Written(*form), Last) << "in the ordinary way it stays what it was";
}

TEST_F(FormWhole, EveryFormatTakesIt) {
    const auto form = ReadChain({Base, Middle, Last});
    EXPECT_EQ(ToText(WrittenWhole(*form, TStreamFormat::Binary)), Whole);
    TMemoryStream resource(WrittenWhole(*form, TStreamFormat::Resource));
    TMemoryStream text;
    ObjectResourceToText(resource, text);
    EXPECT_EQ(text.Bytes(), Whole);
}

TEST_F(FormWhole, ChangesOfTheLivingFormAreIn) {
    const auto form = ReadChain({Base, Middle, Last});
    ButtonOf(*form, "A").SetLeft(0);
    ButtonOf(*form, "B").SetCaption("now");
    const std::string text = WrittenWhole(*form);
    EXPECT_THAT(text, HasSubstr("    object A: TButton\r\n      OnClick = AClick\r\n"));
    EXPECT_THAT(text, HasSubstr("      Caption = 'now'\r\n"));
}

TEST_F(FormWhole, AFormThatInheritsFromNoneIsWrittenWithoutWhatNobodyKnows) {
    const auto form = ReadChain({Base});
    std::string known = Base;
    known.erase(known.find("  Foo = 1\r\n"), 11);
    EXPECT_EQ(WrittenWhole(*form), known);
    EXPECT_EQ(Written(*form), Base);
}

TEST_F(FormWhole, AFormWhoseAncestorWasNotThereIsAnError) {
    EXPECT_EQ(ErrorOfWhole({Last}), "The form from which F inherits is not there");
    EXPECT_EQ(ErrorOfWhole({Middle, Last}), "The form from which F inherits is not there");
    EXPECT_EQ(ErrorOfWhole({"inherited F: TLast\nend"}), "The form from which F inherits is not there");
    EXPECT_EQ(ErrorOfWhole({"object F: TBase\nend", "inherited F: TLast\nend"}), "no error");
    const auto form = ReadChain({Last});
    EXPECT_EQ(Written(*form), Last) << "in the ordinary way it is none";
}

TEST_F(FormWhole, WhatNoAncestorBringsStaysInherited) {
    const auto form =
        ReadChain({"object F: TBase\nend", "inherited F: TLast\n  inherited Nobody: TButton\n  end\nend"});
    const std::string text = WrittenWhole(*form);
    EXPECT_THAT(text, HasSubstr("  inherited Nobody: TButton\r\n")) << "nobody knows what it was";
    TForm copy;
    TMemoryStream stream(text);
    EXPECT_THAT(ErrorOf<EReadError>([&] { ReadComponent(stream, &copy); }),
                HasSubstr("Ancestor for 'Nobody' not found"));
}

} // namespace
} // namespace kx::sample
