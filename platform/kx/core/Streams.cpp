// SPDX-License-Identifier: MIT
// Streams of bytes.

#include "kx/core/Streams.h"

#include "kx/core/ClassBuilder.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace kx {

namespace {

/// Where a seek in memory leads. @throws EStreamError in front of the beginning, or beyond what memory can hold.
size_t SeekTarget(int64_t offset, TSeekOrigin origin, size_t position, size_t size) {
    int64_t base = 0;
    if (origin != TSeekOrigin::Beginning) {
        base = static_cast<int64_t>(origin == TSeekOrigin::Current ? position : size);
    }
    constexpr auto limit = static_cast<int64_t>(std::numeric_limits<ptrdiff_t>::max());
    if (offset < -base || offset > limit - base) {
        throw EStreamError("Stream seek error");
    }
    return static_cast<size_t>(base + offset);
}

size_t ReadMemory(const uint8_t* data, size_t size, size_t& position, void* buffer, size_t count) {
    if (position >= size) {
        return 0;
    }
    const size_t got = std::min(count, size - position);
    if (got > 0) {
        std::memcpy(buffer, data + position, got);
        position += got;
    }
    return got;
}

} // namespace

// --- TStream

const TClass& TStream::StaticClass() {
    static const TClassBuilder<TStream> cls("TStream", TObject::StaticClass());
    return cls.Class();
}

int64_t TStream::Size() {
    const int64_t position = Position();
    const int64_t size = Seek(0, TSeekOrigin::End);
    SetPosition(position);
    return size;
}

void TStream::SetSize(int64_t) { throw EStreamError("The stream cannot change its size"); }

void TStream::ReadBuffer(void* buffer, size_t count) {
    auto* to = static_cast<uint8_t*>(buffer);
    while (count > 0) {
        const size_t got = Read(to, count);
        if (got == 0) {
            throw EReadError("Stream read error");
        }
        to += got;
        count -= got;
    }
}

void TStream::WriteBuffer(const void* buffer, size_t count) {
    const auto* from = static_cast<const uint8_t*>(buffer);
    while (count > 0) {
        const size_t written = Write(from, count);
        if (written == 0) {
            throw EWriteError("Stream write error");
        }
        from += written;
        count -= written;
    }
}

int64_t TStream::CopyFrom(TStream& source, int64_t count) {
    if (count == 0) {
        source.SetPosition(0);
        count = source.Size();
    }
    std::vector<uint8_t> buffer(static_cast<size_t>(std::clamp<int64_t>(count, 0, 0x10000)));
    for (int64_t left = count; left > 0;) {
        const auto part = static_cast<size_t>(std::min<int64_t>(left, static_cast<int64_t>(buffer.size())));
        source.ReadBuffer(buffer.data(), part);
        WriteBuffer(buffer.data(), part);
        left -= static_cast<int64_t>(part);
    }
    return count;
}

// --- TMemoryStream

const TClass& TMemoryStream::StaticClass() {
    static const TClassBuilder<TMemoryStream> cls("TMemoryStream", TStream::StaticClass());
    return cls.Class();
}

size_t TMemoryStream::Read(void* buffer, size_t count) {
    return ReadMemory(FBytes.data(), FBytes.size(), FPosition, buffer, count);
}

size_t TMemoryStream::Write(const void* buffer, size_t count) {
    if (count == 0) {
        return 0;
    }
    if (count > FBytes.max_size() - FPosition) {
        throw EStreamError("Out of memory while expanding memory stream");
    }
    if (FPosition + count > FBytes.size()) {
        FBytes.resize(FPosition + count); // the vector grows by factors, so many small writes take linear time
    }
    std::memcpy(FBytes.data() + FPosition, buffer, count);
    FPosition += count;
    return count;
}

int64_t TMemoryStream::Seek(int64_t offset, TSeekOrigin origin) {
    FPosition = SeekTarget(offset, origin, FPosition, FBytes.size());
    return static_cast<int64_t>(FPosition);
}

void TMemoryStream::SetSize(int64_t value) {
    if (value < 0 || static_cast<uint64_t>(value) > FBytes.max_size()) {
        throw EStreamError("Out of memory while expanding memory stream");
    }
    FBytes.resize(static_cast<size_t>(value));
    FPosition = std::min(FPosition, FBytes.size());
}

void TMemoryStream::Clear() {
    FBytes.clear();
    FPosition = 0;
}

// --- TStaticMemoryStream

const TClass& TStaticMemoryStream::StaticClass() {
    static const TClassBuilder<TStaticMemoryStream> cls("TStaticMemoryStream", TStream::StaticClass());
    return cls.Class();
}

size_t TStaticMemoryStream::Read(void* buffer, size_t count) {
    return ReadMemory(FData, FSize, FPosition, buffer, count);
}

size_t TStaticMemoryStream::Write(const void*, size_t) { return 0; }

int64_t TStaticMemoryStream::Seek(int64_t offset, TSeekOrigin origin) {
    FPosition = SeekTarget(offset, origin, FPosition, FSize);
    return static_cast<int64_t>(FPosition);
}

} // namespace kx
