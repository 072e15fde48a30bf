// SPDX-License-Identifier: MIT
// The pages of docs against the sources: what they quote is what the tests compile, and what they point to is there.
//
// A code block of a page is a quotation. The line before it says of what: "<!-- from examples/guide/Steps.cpp: step 1
// -->" is the part of that file between two lines that hold "[step 1]" and nothing else but a comment sign;
// "<!-- from examples/guide/PreviewForm.dfm -->" is the whole file. Run it with KX_UPDATE=1 in the environment to write
// the quotations anew.

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;

using TLines = std::vector<std::string>;

const fs::path& Root() {
    static const fs::path root = KX_SOURCES;
    return root;
}

TLines LinesOf(std::istream&& text) {
    TLines lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

TLines LinesOf(const fs::path& file) { return LinesOf(std::ifstream(file)); }

std::string Trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(" \t");
    return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// The name of the part that begins or ends at this line of a source; empty: none does.
std::string MarkIn(const std::string& line) {
    std::string text = Trimmed(line);
    for (const char* comment : {"// ", "# "}) {
        if (text.starts_with(comment)) {
            text.erase(0, std::string(comment).size());
            return text.size() > 2 && text.front() == '[' && text.back() == ']' ? text.substr(1, text.size() - 2) : "";
        }
    }
    return {};
}

/// Without the indentation that all lines have.
TLines Outdented(TLines lines) {
    size_t common = std::string::npos;
    for (const std::string& line : lines) {
        const size_t first = line.find_first_not_of(' ');
        common = first == std::string::npos ? common : std::min(common, first);
    }
    for (std::string& line : lines) {
        line.erase(0, std::min(common, line.size()));
    }
    return lines;
}

/// The marked parts of a file by their names, without the marks of other parts in them; the whole file has no name.
std::map<std::string, TLines> PartsOf(const fs::path& file) {
    std::map<std::string, TLines> parts;
    std::set<std::string> open;
    parts[""];
    open.insert("");
    for (const std::string& line : LinesOf(file)) {
        const std::string mark = MarkIn(line);
        if (mark.empty()) {
            for (const std::string& name : open) {
                parts[name].push_back(line);
            }
        } else if (open.erase(mark) == 0) {
            EXPECT_EQ(parts.count(mark), 0u) << file << " has two parts named " << mark;
            open.insert(mark);
        }
    }
    EXPECT_EQ(open.size(), 1u) << file << " has a part that does not end";
    for (auto& [name, lines] : parts) {
        lines = Outdented(lines);
    }
    return parts;
}

struct TBlock {
    std::string Language;
    std::string From; ///< What the line before it names; empty: nothing.
    size_t Line = 0;
    TLines Lines;
};

std::vector<TBlock> BlocksOf(const TLines& page) {
    const std::string mark = "<!-- from ";
    std::vector<TBlock> blocks;
    bool isOpen = false;
    for (size_t i = 0; i < page.size(); ++i) {
        const std::string& line = page[i];
        if (line.starts_with("```")) {
            isOpen = !isOpen;
            if (isOpen) {
                TBlock& block = blocks.emplace_back();
                block.Language = line.substr(3);
                block.Line = i + 1;
                const std::string before = i == 0 ? "" : page[i - 1];
                if (before.starts_with(mark) && before.ends_with(" -->")) {
                    block.From = before.substr(mark.size(), before.size() - mark.size() - 4);
                }
            }
        } else if (isOpen) {
            blocks.back().Lines.push_back(line);
        }
    }
    EXPECT_FALSE(isOpen) << "a block does not end";
    return blocks;
}

std::vector<fs::path> Pages() {
    std::vector<fs::path> pages;
    for (const auto& entry : fs::directory_iterator(Root() / "docs")) {
        if (entry.path().extension() == ".md") {
            pages.push_back(entry.path());
        }
    }
    std::sort(pages.begin(), pages.end());
    return pages;
}

/// File and part that a block is from.
std::pair<std::string, std::string> SourceOf(const std::string& from) {
    const size_t colon = from.find(": ");
    return colon == std::string::npos ? std::pair(from, std::string())
                                      : std::pair(from.substr(0, colon), from.substr(colon + 2));
}

std::string Joined(const TLines& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + '\n';
    }
    return text;
}

/// Writes the sources' lines into the page's blocks.
void Update(const fs::path& page) {
    TLines lines = LinesOf(page);
    std::vector<TBlock> blocks = BlocksOf(lines);
    std::reverse(blocks.begin(), blocks.end());
    for (const TBlock& block : blocks) {
        const auto [file, part] = SourceOf(block.From);
        if (!block.From.empty()) {
            const TLines source = PartsOf(Root() / file)[part];
            const auto first = lines.begin() + static_cast<std::ptrdiff_t>(block.Line);
            const auto at = lines.erase(first, first + static_cast<std::ptrdiff_t>(block.Lines.size()));
            lines.insert(at, source.begin(), source.end());
        }
    }
    std::ofstream(page) << Joined(lines);
}

TEST(Pages, QuoteWhatIsCompiled) {
    size_t quoted = 0;
    for (const fs::path& page : Pages()) {
        if (std::getenv("KX_UPDATE")) {
            Update(page);
        }
        for (const TBlock& block : BlocksOf(LinesOf(page))) {
            const std::string at = page.filename().string() + ", line " + std::to_string(block.Line);
            if (block.From.empty()) {
                continue;
            }
            const auto [file, part] = SourceOf(block.From);
            ASSERT_TRUE(fs::exists(Root() / file)) << at << " is from " << file;
            const auto parts = PartsOf(Root() / file);
            ASSERT_EQ(parts.count(part), 1u) << at << ": " << file << " has no part " << part;
            EXPECT_EQ(Joined(block.Lines), Joined(parts.at(part))) << at << " is not what " << file << " says";
            ++quoted;
        }
    }
    EXPECT_GT(quoted, 10u);
}

/// Code that nobody compiles ages unseen.
TEST(Pages, HaveNoCodeOfTheirOwn) {
    for (const fs::path& page : Pages()) {
        const std::string name = page.filename().string();
        if (name == "install.md" || name == "other-programs.md") { // they quote programs of other build systems
            continue;
        }
        for (const TBlock& block : BlocksOf(LinesOf(page))) {
            if (block.Language == "cpp" || block.Language == "dfm" || block.Language == "cmake") {
                EXPECT_NE(block.From, "") << name << ", line " << block.Line << " does not say where it is from";
            }
        }
    }
}

/// Each marked part of the examples of the pages is on a page.
TEST(Pages, QuoteEachMarkedPart) {
    std::set<std::string> quoted;
    for (const fs::path& page : Pages()) {
        for (const TBlock& block : BlocksOf(LinesOf(page))) {
            quoted.insert(block.From);
        }
    }
    for (const char* folder : {"guide", "cookbook"}) {
        for (const auto& entry : fs::recursive_directory_iterator(Root() / "examples" / folder)) {
            if (!entry.is_regular_file()) {
                continue;
            }
            const std::string file = fs::relative(entry.path(), Root()).generic_string();
            for (const auto& [part, lines] : PartsOf(entry.path())) {
                EXPECT_TRUE(part.empty() || quoted.contains(file + ": " + part)) << file << ": " << part;
            }
        }
    }
}

// --- Links

/// As the page's readers make anchors of headings: small letters, blanks as hyphens, no other signs.
std::string AnchorOf(const std::string& heading) {
    std::string anchor;
    for (const char c : heading) {
        const auto u = static_cast<unsigned char>(c);
        if (std::isalnum(u) || c == '-' || c == '_' || u >= 0x80) {
            anchor += static_cast<char>(std::tolower(u));
        } else if (c == ' ') {
            anchor += '-';
        }
    }
    return anchor;
}

std::set<std::string> AnchorsOf(const fs::path& page) {
    std::set<std::string> anchors;
    bool isCode = false;
    for (const std::string& line : LinesOf(page)) {
        isCode = line.starts_with("```") ? !isCode : isCode;
        if (!isCode && line.starts_with("#")) {
            anchors.insert(AnchorOf(Trimmed(line.substr(line.find_first_not_of('#')))));
        }
    }
    return anchors;
}

/// The targets of "[text](target)" outside of code.
TLines LinksOf(const fs::path& page) {
    TLines links;
    bool isCode = false;
    for (const std::string& line : LinesOf(page)) {
        isCode = line.starts_with("```") ? !isCode : isCode;
        for (size_t at = line.find("]("); !isCode && at != std::string::npos; at = line.find("](", at + 1)) {
            links.push_back(line.substr(at + 2, line.find(')', at) - at - 2));
        }
    }
    return links;
}

std::string Broken(const fs::path& page, const std::string& link) {
    const size_t hash = link.find('#');
    const std::string path = link.substr(0, hash);
    const fs::path target = path.empty() ? page : page.parent_path() / path;
    if (!fs::exists(target)) {
        return "there is no " + path;
    }
    return hash == std::string::npos || AnchorsOf(target).contains(link.substr(hash + 1)) ? ""
                                                                                          : "no heading of that name";
}

TEST(Pages, PointToWhatIsThere) {
    TLines broken;
    size_t links = 0;
    TLines names;
    for (const fs::path& page : Pages()) {
        for (const std::string& link : LinksOf(page)) {
            ++links;
            const std::string why = link.starts_with("https://") ? "" : Broken(page, link);
            if (!why.empty()) {
                broken.push_back(page.filename().string() + ": " + link + ": " + why);
            }
        }
    }
    EXPECT_THAT(broken, IsEmpty());
    EXPECT_GT(links, 10u);
}

/// From the first page one gets to every other one.
TEST(Pages, AreAllOnTheFirstOne) {
    const TLines links = LinksOf(Root() / "docs" / "index.md");
    for (const fs::path& page : Pages()) {
        const std::string name = page.filename().string();
        EXPECT_TRUE(name == "index.md" || std::find(links.begin(), links.end(), name) != links.end()) << name;
    }
}

} // namespace
