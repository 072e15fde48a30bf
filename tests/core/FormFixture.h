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
