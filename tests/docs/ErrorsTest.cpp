// SPDX-License-Identifier: MIT
// docs/errors.md against the sources: it has each message that the library raises or shows, and no other.

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;

std::string ContentOf(const fs::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Text of literals as a reader sees it: without escapes and line breaks, and with single blanks.
std::string Spoken(const std::string& source) {
    std::string text;
    for (size_t i = 0; i < source.size(); ++i) {
        char c = source[i];
        if (c == '\\' && i + 1 < source.size()) {
            c = source[++i];
            c = c == 'r' || c == 'n' ? ' ' : c;
        }
        if (c != ' ' || text.empty() || text.back() != ' ') {
            text += c;
        }
    }
    return text;
}

/// Two words or more: a message, or a part of one. Single words are names that are put into messages.
bool IsSaid(const std::string& text) {
    int words = 0;
    size_t letters = 0;
    for (const char c : text + ' ') {
        const bool isLetter = std::isalpha(static_cast<unsigned char>(c)) != 0;
        words += !isLetter && letters >= 2 ? 1 : 0;
        letters = isLetter ? letters + 1 : 0;
    }
    return words >= 2;
}

std::string WithoutComments(const std::string& source) {
    std::string text;
    std::istringstream lines(source);
    for (std::string line; std::getline(lines, line);) {
        text += line.substr(0, line.find("// ")) + '\n';
    }
    return text;
}

/// The literals of a statement that begins at `at`: up to its semicolon.
void AddLiterals(const std::string& source, size_t at, std::set<std::string>& said) {
    std::string literal;
    bool isIn = false;
    for (; at < source.size() && (isIn || source[at] != ';'); ++at) {
        const char c = source[at];
        if (isIn && c == '\\') {
            literal += c;
            literal += source[++at];
        } else if (c == '"') {
            if (isIn && IsSaid(Spoken(literal))) {
                said.insert(Spoken(literal));
            }
            isIn = !isIn;
            literal.clear();
        } else if (isIn) {
            literal += c;
        }
    }
}

/// All sources of the library, one behind the other.
std::string Sources() {
    std::string text;
    for (const char* folder : {"platform/kx", "src/kx"}) {
        for (const auto& entry : fs::recursive_directory_iterator(fs::path(KX_SOURCES) / folder)) {
            const std::string extension = entry.path().extension();
            if (extension == ".cpp" || extension == ".h") {
                text += WithoutComments(ContentOf(entry.path()));
            }
        }
    }
    return text;
}

/// All that the sources raise, or show in a box.
std::set<std::string> MessagesOf(const std::string& sources) {
    std::set<std::string> said;
    for (const std::string begin : {"throw ", "Fail(", "Format(\"Error reading", "Format(\"Invalid property value",
                                    "MessageBox(", "MessageBoxA(", "ShowMessage(", "CreatePIDLFromPath("}) {
        for (size_t at = sources.find(begin); at != std::string::npos; at = sources.find(begin, at + 1)) {
            AddLiterals(sources, at, said);
        }
    }
    return said;
}

/// The messages of the page: the first cells of its tables.
std::vector<std::string> MessagesOfThePage() {
    std::vector<std::string> messages;
    std::ifstream page(fs::path(KX_SOURCES) / "docs/errors.md");
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("| `")) {
            messages.push_back(line.substr(3, line.find('`', 3) - 3));
        }
    }
    return messages;
}

/// What is no error: questions to the user, titles of boxes, and what a designer says of itself.
bool IsNoError(const std::string& text) {
    return text.starts_with("Are you sure to store all these places") || text.starts_with("Dialog Designer ") ||
           text == "New place - Icon library" || text == "Place bar";
}

TEST(Errors, AreAllOnThePage) {
    const std::string page = ContentOf(fs::path(KX_SOURCES) / "docs/errors.md");
    std::vector<std::string> missing;
    const std::set<std::string> said = MessagesOf(Sources());
    for (const std::string& text : said) {
        if (page.find(text) == std::string::npos && !IsNoError(text)) {
            missing.push_back(text);
        }
    }
    EXPECT_THAT(missing, IsEmpty());
    EXPECT_GT(said.size(), 100u);
}

TEST(Errors, OnThePageAreRaised) {
    const std::string sources = Spoken(Sources());
    std::vector<std::string> gone;
    for (const std::string& message : MessagesOfThePage()) {
        for (size_t at = 0; at < message.size();) {
            const size_t end = std::min(message.find("%s", at), message.size());
            const std::string part = message.substr(at, end - at);
            if (IsSaid(part) && sources.find(part) == std::string::npos) {
                gone.push_back(message);
            }
            at = end + 2;
        }
    }
    EXPECT_THAT(gone, IsEmpty());
}

} // namespace
