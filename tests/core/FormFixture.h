// SPDX-License-Identifier: MIT
#pragma once

#include "support/SampleForm.h"
#include "tests/support/ErrorOf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace kx::sample {

using test::ErrorOf;

struct TFreeComponent {
    void operator()(TComponent* component) const { component->Free(); }
};
template <class T> using TOwned = std::unique_ptr<T, TFreeComponent>;

/// Text with the line ends of form files
inline std::string Lines(std::string_view text) {
    std::string result;
    for (const char c : text) {
        result += c == '\n' ? "\r\n" : std::string(1, c);
    }
    return result;
}

inline std::string ToBinary(std::string_view text) {
    TMemoryStream source(text);
    TMemoryStream binary;
    ObjectTextToBinary(source, binary);
    return std::string(binary.Bytes());
}

inline std::string ToText(std::string_view binary) {
    TMemoryStream source(binary);
    TMemoryStream text;
    ObjectBinaryToText(source, text);
    return std::string(text.Bytes());
}

inline std::string Written(TComponent& root, TStreamFormat format = TStreamFormat::Text,
                           TComponent* ancestor = nullptr) {
    TMemoryStream stream;
    WriteComponent(stream, root, format, ancestor);
    return std::string(stream.Bytes());
}

/// Reads a form of any format into a new root.
inline TOwned<TForm> ReadForm(std::string_view form, const std::function<void(TReader&)>& prepare = {}) {
    TMemoryStream stream(form);
    return TOwned<TForm>(dynamic_cast<TForm*>(ReadComponent(stream, nullptr, prepare)));
}

/// Reads a form as a form designer does.
inline TOwned<TForm> ReadKeeping(std::string_view form, const std::function<void(TReader&)>& prepare = {}) {
    return ReadForm(form, [&](TReader& reader) {
        reader.SetKeepsUnknown(true);
        if (prepare) {
            prepare(reader);
        }
    });
}

/// A form's text with these lines inside, two blanks in front of each.
inline std::string FormOf(std::string_view lines) {
    std::string text = "object F: TForm\r\n";
    for (size_t start = 0; start < lines.size();) {
        const size_t end = std::min(lines.find('\n', start), lines.size());
        text += "  " + std::string(lines.substr(start, end - start)) + "\r\n";
        start = end + 1;
    }
    return text + "end\r\n";
}

/// Read as a form designer does and written, the form is what it was: as text, as a binary form, and from one to the
/// other.
inline void ExpectToComeBack(const std::string& text, const std::function<void(TReader&)>& prepare = {}) {
    const std::string binary = ToBinary(text);
    EXPECT_EQ(Written(*ReadKeeping(text, prepare)), text);
    EXPECT_EQ(Written(*ReadKeeping(binary, prepare)), text);
    EXPECT_EQ(Written(*ReadKeeping(binary, prepare), TStreamFormat::Binary), binary);
}

inline TButton& ButtonOf(TForm& form, std::string_view name) {
    return dynamic_cast<TButton&>(*form.FindComponent(name));
}

/// Registers the sample classes, and sees to it that a test leaves no component behind.
class FormTest : public testing::Test {
protected:
    void SetUp() override {
        RegisterSampleClasses();
        TControl::LoadedOrder.clear();
    }
    void TearDown() override {
        EXPECT_EQ(TControl::Alive, 0);
        EXPECT_EQ(TServer::Alive, 0);
    }
};

} // namespace kx::sample
