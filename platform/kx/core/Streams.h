// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Objects.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kx {

enum class TSeekOrigin : uint8_t { Beginning, Current, End };

/// A sequence of bytes with a position.
class TStream : public TObject {
    KX_CLASS()

    /// Reads or writes up to `count` bytes at the position, moves it, and returns how many there were.
    virtual size_t Read(void* buffer, size_t count) = 0;
    virtual size_t Write(const void* buffer, size_t count) = 0;
    /// Moves the position and returns it, counted from the beginning.
    virtual int64_t Seek(int64_t offset, TSeekOrigin origin) = 0;
    virtual int64_t Size();
    /// @throws EStreamError when the stream cannot change its size.
    virtual void SetSize(int64_t value);

    int64_t Position() { return Seek(0, TSeekOrigin::Current); }
    void SetPosition(int64_t value) { Seek(value, TSeekOrigin::Beginning); }

    /// Exactly `count` bytes. @throws EReadError "Stream read error", EWriteError "Stream write error"
    void ReadBuffer(void* buffer, size_t count);
    void WriteBuffer(const void* buffer, size_t count);
    /// Copies `count` bytes from the source's position; 0 copies the whole source from its beginning. Returns how many.
    int64_t CopyFrom(TStream& source, int64_t count);
};

/// Bytes in memory that the stream owns.
class TMemoryStream : public TStream {
    KX_CLASS()

    TMemoryStream() = default;
    explicit TMemoryStream(std::string_view bytes) : FBytes(bytes.begin(), bytes.end()) {}

    size_t Read(void* buffer, size_t count) override;
    size_t Write(const void* buffer, size_t count) override;
    int64_t Seek(int64_t offset, TSeekOrigin origin) override;
    int64_t Size() override { return static_cast<int64_t>(FBytes.size()); }
    void SetSize(int64_t value) override;

    const uint8_t* Memory() const { return FBytes.data(); }
    std::string_view Bytes() const { return {reinterpret_cast<const char*>(FBytes.data()), FBytes.size()}; }
    void Clear();

private:
    std::vector<uint8_t> FBytes;
    size_t FPosition = 0;
};

/// Bytes in memory that somebody else owns and keeps alive; read only.
class TStaticMemoryStream : public TStream {
    KX_CLASS()

    TStaticMemoryStream(const void* data, size_t size) : FData(static_cast<const uint8_t*>(data)), FSize(size) {}

    size_t Read(void* buffer, size_t count) override;
    size_t Write(const void* buffer, size_t count) override; ///< Writes nothing.
    int64_t Seek(int64_t offset, TSeekOrigin origin) override;
    int64_t Size() override { return static_cast<int64_t>(FSize); }

private:
    const uint8_t* FData;
    size_t FSize;
    size_t FPosition = 0;
};

} // namespace kx
