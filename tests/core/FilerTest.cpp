// SPDX-License-Identifier: MIT
// Single values in binary forms.

#include "FormFixture.h"

#include <cmath>
#include <limits>

namespace kx::sample {
namespace {

using testing::HasSubstr;

/// What `write` writes
std::string BytesWrittenBy(const std::function<void(TWriter&)>& write) {
    TMemoryStream stream;
    TWriter writer(stream);
    write(writer);
    writer.FlushBuffer();
    return std::string(stream.Bytes());
}

/// Reads back what `write` wrote.
template <class T> T ReadBack(const std::function<void(TWriter&)>& write, T (TReader::*read)()) {
    TMemoryStream stream(BytesWrittenBy(write));
    TReader reader(stream);
    T value = (reader.*read)();
    EXPECT_EQ(reader.Remaining(), 0);
    return value;
}

TEST(Filer, IntegersComeBack) {
    for (const int64_t value :
         {int64_t{0}, int64_t{-1}, int64_t{127}, int64_t{-128}, int64_t{128}, int64_t{-32768}, int64_t{32768},
          int64_t{INT32_MIN}, int64_t{INT32_MAX}, int64_t{INT32_MAX} + 1, INT64_MIN, INT64_MAX}) {
        const auto write = [value](TWriter& writer) { writer.WriteInteger(value); };
        EXPECT_EQ(ReadBack(write, &TReader::ReadInt64), value);
        if (value >= INT32_MIN && value <= INT32_MAX) {
            EXPECT_EQ(ReadBack(write, &TReader::ReadInteger), value);
        } else {
            EXPECT_THROW(ReadBack(write, &TReader::ReadInteger), EReadError);
        }
    }
}

TEST(Filer, FloatsComeBack) {
    for (const double value : {0.0, -0.0, 0.1, 1e300, 5e-324, std::numeric_limits<double>::infinity()}) {
        const double back = ReadBack([value](TWriter& w) { w.WriteFloat(value); }, &TReader::ReadFloat);
        EXPECT_EQ(back, value);
        EXPECT_EQ(std::signbit(back), std::signbit(value));
    }
    EXPECT_TRUE(std::isnan(ReadBack([](TWriter& w) { w.WriteFloat(std::nan("")); }, &TReader::ReadFloat)));
    EXPECT_EQ(ReadBack([](TWriter& w) { w.WriteInteger(-7); }, &TReader::ReadFloat), -7.0);
}

TEST(Filer, StringsComeBack) {
    for (const std::string& value : {std::string(), std::string("a\0b", 3), std::string("gr\xC3\xBCn"),
                                     std::string(255, 'x'), std::string(256, 'x'), std::string(100000, '\xC3') + "x"}) {
        const std::string back = ReadBack([&](TWriter& w) { w.WriteString(value); }, &TReader::ReadString);
        EXPECT_EQ(back, AnsiToFormText(value)); // what is no UTF-8 becomes it
    }
}

TEST(Filer, OtherValuesComeBack) {
    EXPECT_TRUE(ReadBack([](TWriter& w) { w.WriteBoolean(true); }, &TReader::ReadBoolean));
    EXPECT_FALSE(ReadBack([](TWriter& w) { w.WriteBoolean(false); }, &TReader::ReadBoolean));
    EXPECT_EQ(ReadBack([](TWriter& w) { w.WriteChar('\n'); }, &TReader::ReadChar), '\n');
    for (const std::string name : {"clRed", "Form1.Button1", "True", "False", "nil", "Null"}) {
        EXPECT_EQ(ReadBack([&](TWriter& w) { w.WriteIdent(name); }, &TReader::ReadIdent), name);
    }
    TMemoryStream stream(BytesWrittenBy([](TWriter& w) {
        w.WriteSet(KxTypeInfo(TOption{}), 5);
        w.WriteBinary(std::string(10000, 'b'));
        w.WriteListBegin();
        w.WriteInteger(1);
        w.WriteListEnd();
    }));
    TReader reader(stream, 16);
    EXPECT_EQ(reader.ReadSet(KxTypeInfo(TOption{})), 5u);
    TMemoryStream block("in front ");
    block.Seek(0, TSeekOrigin::End);
    reader.ReadBinary(block);
    EXPECT_EQ(block.Bytes(), "in front " + std::string(10000, 'b'));
    EXPECT_EQ(reader.NextValue(), vaList);
    reader.ReadListBegin();
    EXPECT_FALSE(reader.EndOfList());
    EXPECT_EQ(reader.ReadInteger(), 1);
    EXPECT_TRUE(reader.EndOfList());
    reader.ReadListEnd();
}

TEST(Filer, EveryTypeOfValueCanBeSkipped) {
    const std::string values = "(1 300 70000 5000000000 1.5 1.5s 1.5c 1.5d 'x' #228 True False nil Ident [a, b] {0102} "
                               "< item [3] A = 1 B = <> end item end > (1 (2)))";
    const std::string form = ToBinary("object F: T A = " + values + " end");
    const std::string old = std::string("\5\0\0\0\0\0\0\0\x80\xff\x3f", 11) + std::string("\x12\1\0\0\0a\0", 7) +
                            std::string("\x0C\1\0\0\0a", 6);
    for (const size_t bufferSize : {size_t{1}, size_t{2}, size_t{3}, size_t{7}, size_t{4096}}) {
        TMemoryStream stream(form.substr(10, form.size() - 12) + old);
        TReader reader(stream, bufferSize);
        for (int i = 0; i < 4; ++i) {
            reader.SkipValue();
        }
        EXPECT_EQ(reader.Remaining(), 0);
    }
}

TEST(Filer, TheBufferMayHaveAnySize) {
    RegisterSampleClasses();
    const std::string form = Written(*ReadForm(RichForm), TStreamFormat::Binary);
    for (size_t size = 0; size < 70; ++size) {
        TMemoryStream stream(form);
        TForm root;
        TReader(stream, size).ReadRootComponent(&root);
        EXPECT_EQ(Written(root, TStreamFormat::Binary), form);
    }
}

TEST(Filer, TheStreamIsLeftBehindTheForm) {
    RegisterSampleClasses();
    const std::string form = ToBinary("object F: TForm Left = 5 end");
    TMemoryStream stream("xx" + form + form + "rest");
    stream.SetPosition(2);
    TForm first;
    TForm second;
    ReadComponent(stream, &first);
    EXPECT_EQ(stream.Position(), int64_t(2 + form.size()));
    ReadComponent(stream, &second);
    EXPECT_EQ(second.Left(), 5);
    EXPECT_EQ(stream.Position(), int64_t(2 + 2 * form.size()));
    EXPECT_THROW(ReadComponent(stream, &second), EInvalidImage);
}

TEST(Filer, OffsetsOfErrorsCountFromTheBeginningOfTheStream) {
    TMemoryStream stream("xxxxx\x06");
    stream.SetPosition(5);
    TReader reader(stream);
    EXPECT_EQ(ErrorOf<EReadError>([&] { reader.ReadInteger(); }),
              "Invalid property value: an integer expected, a string found at offset 5");
}

TEST(Filer, ValuesCanBeReadAndWrittenWithoutAForm) {
    TColumns columns;
    columns.Add();
    columns[0].SetTitle("T");
    const std::string bytes = BytesWrittenBy([&](TWriter& w) { w.WriteCollection(columns); });
    TMemoryStream stream(bytes);
    TReader reader(stream);
    TColumns back;
    EXPECT_EQ(reader.ReadValue(), vaCollection);
    reader.ReadCollection(back);
    ASSERT_EQ(back.Count(), 1);
    EXPECT_EQ(back[0].Title(), "T");
    for (const std::string value : {"Link = X", "OnClick = X", "Link = nil"}) {
        const std::string form = ToBinary("object F: T A = < item " + value + " end > end");
        TMemoryStream items(form.substr(11, form.size() - 13));
        TReader itemReader(items);
        EXPECT_THAT(ErrorOf<EReadError>([&] { itemReader.ReadCollection(back); }), HasSubstr("stands outside a "));
    }
}

TEST(Filer, ANameThatIsTooLongIsAnErrorOfWriting) {
    EXPECT_THROW(BytesWrittenBy([](TWriter& w) { w.WriteIdent(std::string(256, 'x')); }), EWriteError);
    EXPECT_THROW(BytesWrittenBy([](TWriter& w) { w.WriteStr(std::string(256, 'x')); }), EWriteError);
}

TEST(Filer, AFormThatCannotBeWrittenLeavesTheStreamAlone) {
    TForm form;
    form.SetName(std::string(256, 'x'));
    TMemoryStream stream;
    EXPECT_THROW(WriteComponent(stream, form, TStreamFormat::Binary), EWriteError);
    EXPECT_EQ(stream.Size(), 0);
    EXPECT_FALSE(form.ComponentState().Contains(csWriting));
}

TEST(Filer, GlobalComponentsAreAskedForTheLatestFirst) {
    static TComponent older;
    static TComponent newer;
    const TFindGlobalComponent findOlder = [](const std::string&) -> TComponent* { return &older; };
    const TFindGlobalComponent findNewer = [](const std::string& name) -> TComponent* {
        return name == "New" ? &newer : nullptr;
    };
    RegisterFindGlobalComponentProc(findOlder);
    RegisterFindGlobalComponentProc(findNewer);
    EXPECT_EQ(FindGlobalComponent("New"), &newer);
    EXPECT_EQ(FindGlobalComponent("Old"), &older);
    UnregisterFindGlobalComponentProc(findOlder);
    EXPECT_EQ(FindGlobalComponent("Old"), nullptr);
    UnregisterFindGlobalComponentProc(findNewer);
    EXPECT_EQ(FindGlobalComponent("New"), nullptr);
}

} // namespace
} // namespace kx::sample
