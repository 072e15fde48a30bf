// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace kx::test {

/// A text between UTF-8, in which tests are written, and the process's code page, in which the framework's strings are.
/// Characters that the code page lacks become "?".
std::string FromUtf8(std::string_view text);
std::string ToUtf8(std::string_view text);

/// True when the process's code page can hold the text.
bool CodePageHolds(std::string_view utf8);

/// A new, empty folder with a name of its own, removed with all that it holds at the end of the scope. Names are given
/// in UTF-8, in any script and with folders before them ("a\b.txt"), whatever the process's code page is. What cannot
/// be made raises an Exception that says why.
class TTempFolder {
public:
    /// The folder is made inside the system's folder for temporary files; `name` is the beginning of its name.
    explicit TTempFolder(std::string_view name = "kx");
    TTempFolder(const TTempFolder&) = delete;
    TTempFolder& operator=(const TTempFolder&) = delete;
    ~TTempFolder();

    /// Full path, without a backslash at the end; with `name`, that of an entry. In the process's code page.
    std::string Path() const;
    std::string Path(std::string_view name) const;

    /// Makes a file, and the folders on the way to it, and returns its full path in the process's code page.
    std::string AddFile(std::string_view name, std::string_view content = {}) const;
    std::string AddFolder(std::string_view name) const;
    bool Contains(std::string_view name) const; ///< There is a file or folder of that name.

private:
    std::wstring Wide(std::string_view name) const;

    std::wstring FPath;
};

} // namespace kx::test
