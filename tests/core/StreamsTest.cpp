// SPDX-License-Identifier: MIT
// Streams in memory.

#include "kx/core/Streams.h"

#include <gtest/gtest.h>

#include <limits>

namespace kx {
namespace {

/// A stream that gives and takes a byte at a time, and only so many.
class TSlowStream : public TMemoryStream {
public:
    using TMemoryStream::TMemoryStream;
    size_t Read(void* buffer, size_t count) override { return TMemoryStream::Read(buffer, count > 0 ? 1 : 0); }
    size_t Write(const void* buffer, size_t count) override {
        return Size() < 4 && count > 0 ? TMemoryStream::Write(buffer, 1) : 0;
    }
};

TEST(MemoryStream, ReadsWhatWasWritten) {
    TMemoryStream stream;
    EXPECT_EQ(stream.Write("hello", 5), 5u);
    EXPECT_EQ(stream.Position(), 5);
    EXPECT_EQ(stream.Size(), 5);
    stream.SetPosition(1);
    char buffer[10] = {};
    EXPECT_EQ(stream.Read(buffer, 3), 3u);
    EXPECT_STREQ(buffer, "ell");
    EXPECT_EQ(stream.Read(buffer, 10), 1u);
    EXPECT_EQ(stream.Read(buffer, 10), 0u);
    EXPECT_EQ(stream.Bytes(), "hello");
}

TEST(MemoryStream, WritingInTheMiddleReplaces) {
    TMemoryStream stream("abcdef");
    stream.SetPosition(4);
    stream.WriteBuffer("XYZ", 3);
    EXPECT_EQ(stream.Bytes(), "abcdXYZ");
}

TEST(MemoryStream, WritingBehindTheEndFillsWithZeros) {
    TMemoryStream stream("a");
    stream.SetPosition(3);
    EXPECT_EQ(stream.Size(), 1);
    stream.WriteBuffer("b", 1);
    EXPECT_EQ(stream.Bytes(), std::string_view("a\0\0b", 4));
    stream.SetPosition(10);
    char c = 0;
    EXPECT_EQ(stream.Read(&c, 1), 0u);
}

TEST(MemoryStream, SeeksFromEachOrigin) {
    TMemoryStream stream("0123456789");
    EXPECT_EQ(stream.Seek(-2, TSeekOrigin::End), 8);
    EXPECT_EQ(stream.Seek(-3, TSeekOrigin::Current), 5);
    EXPECT_EQ(stream.Seek(1, TSeekOrigin::Beginning), 1);
    EXPECT_THROW(stream.Seek(-2, TSeekOrigin::Current), EStreamError);
    EXPECT_THROW(stream.SetPosition(-1), EStreamError);
    EXPECT_THROW(stream.Seek(std::numeric_limits<int64_t>::max(), TSeekOrigin::End), EStreamError);
    EXPECT_THROW(stream.Seek(std::numeric_limits<int64_t>::min(), TSeekOrigin::End), EStreamError);
    EXPECT_EQ(stream.Position(), 1);
}

TEST(MemoryStream, ChangesItsSize) {
    TMemoryStream stream("abcdef");
    stream.SetPosition(5);
    stream.SetSize(3);
    EXPECT_EQ(stream.Bytes(), "abc");
    EXPECT_EQ(stream.Position(), 3);
    stream.SetSize(4);
    EXPECT_EQ(stream.Bytes(), std::string_view("abc\0", 4));
    EXPECT_THROW(stream.SetSize(-1), EStreamError);
    stream.Clear();
    EXPECT_EQ(stream.Size(), 0);
    EXPECT_EQ(stream.Position(), 0);
}

TEST(MemoryStream, AnAbsurdPositionIsAnErrorOfWriting) {
    TMemoryStream stream;
    stream.SetPosition(std::numeric_limits<ptrdiff_t>::max());
    EXPECT_THROW(stream.Write("ab", 2), EStreamError);
    EXPECT_EQ(stream.Size(), 0);
}

TEST(StaticMemoryStream, IsReadOnly) {
    TStaticMemoryStream stream("abc", 3);
    char buffer[4] = {};
    stream.ReadBuffer(buffer, 3);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(stream.Write("x", 1), 0u);
    EXPECT_THROW(stream.WriteBuffer("x", 1), EWriteError);
    EXPECT_THROW(stream.SetSize(1), EStreamError);
    EXPECT_EQ(stream.Seek(-1, TSeekOrigin::End), 2);
    EXPECT_EQ(stream.Size(), 3);
}

TEST(Stream, ReadBufferAndWriteBufferDoAllOrRaise) {
    TSlowStream stream("abc");
    char buffer[4] = {};
    stream.ReadBuffer(buffer, 3); // in three steps
    EXPECT_STREQ(buffer, "abc");
    EXPECT_THROW(stream.ReadBuffer(buffer, 1), EReadError);
    stream.ReadBuffer(buffer, 0);
    EXPECT_THROW(stream.WriteBuffer("de", 2), EWriteError);
    EXPECT_EQ(stream.Bytes(), "abcd");
}

TEST(Stream, CopiesFromAnotherStream) {
    TMemoryStream source("0123456789");
    source.SetPosition(4);
    TMemoryStream dest;
    EXPECT_EQ(dest.CopyFrom(source, 3), 3);
    EXPECT_EQ(dest.Bytes(), "456");
    EXPECT_EQ(dest.CopyFrom(source, 0), 10); // all of it, from the beginning
    EXPECT_EQ(dest.Bytes(), "4560123456789");
    EXPECT_THROW(dest.CopyFrom(source, 1), EReadError);
    TMemoryStream empty;
    EXPECT_EQ(dest.CopyFrom(empty, 0), 0);
    const std::string big(200000, 'x');
    TMemoryStream bigSource(big);
    TMemoryStream bigDest;
    EXPECT_EQ(bigDest.CopyFrom(bigSource, 0), 200000);
    EXPECT_EQ(bigDest.Bytes(), big);
}

TEST(Stream, SizeLeavesThePosition) {
    class TSeekable : public TStream {
    public:
        size_t Read(void*, size_t) override { return 0; }
        size_t Write(const void*, size_t) override { return 0; }
        int64_t Seek(int64_t offset, TSeekOrigin origin) override {
            FPosition = offset + (origin == TSeekOrigin::End ? 100 : origin == TSeekOrigin::Current ? FPosition : 0);
            return FPosition;
        }

    private:
        int64_t FPosition = 7;
    };
    TSeekable stream;
    EXPECT_EQ(stream.Size(), 100);
    EXPECT_EQ(stream.Position(), 7);
    EXPECT_THROW(stream.SetSize(5), EStreamError);
}

} // namespace
} // namespace kx
