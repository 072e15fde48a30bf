// SPDX-License-Identifier: MIT
// Whole files, and the standard streams in their place.

#include "Files.h"

#include "kx/core/SysUtils.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace kx::tool {

namespace {

struct TCloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using TFile = std::unique_ptr<std::FILE, TCloseFile>;

[[noreturn]] void Fail(const char* what) { throw EStreamError(std::string(what) + ": " + std::strerror(errno)); }

std::string ReadAll(std::FILE* file) {
    std::string bytes;
    char buffer[65536];
    for (size_t count; (count = std::fread(buffer, 1, sizeof buffer, file)) > 0;) {
        bytes.append(buffer, count);
    }
    if (std::ferror(file)) {
        Fail("Cannot be read");
    }
    return bytes;
}

bool WriteAll(std::FILE* file, const std::string& bytes) {
    return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && std::fflush(file) == 0;
}

} // namespace

void UseBytes() {
#ifdef _WIN32
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
#endif
}

std::string ReadFile(const std::string& name) {
    if (name == "-") {
        return ReadAll(stdin);
    }
    const TFile file(std::fopen(name.c_str(), "rb"));
    if (!file) {
        Fail("Cannot be opened");
    }
    return ReadAll(file.get());
}

void WriteFile(const std::string& name, const std::string& bytes) {
    if (name == "-") {
        if (!WriteAll(stdout, bytes)) {
            Fail("Cannot be written");
        }
        return;
    }
    const std::string beside = name + ".new";
    TFile file(std::fopen(beside.c_str(), "wb"));
    if (!file) {
        Fail("Cannot be written");
    }
    bool isWritten = WriteAll(file.get(), bytes);
    isWritten = std::fclose(file.release()) == 0 && isWritten;
    std::error_code error;
    if (isWritten) {
        std::filesystem::rename(beside, name, error);
    }
    if (!isWritten || error) {
        const std::string reason = error ? error.message() : std::strerror(errno);
        std::filesystem::remove(beside, error);
        throw EStreamError("Cannot be written: " + reason);
    }
}

} // namespace kx::tool
