// SPDX-License-Identifier: MIT
// docs/published.md is docs/published-classes.txt, which another test compares with the class tables, for readers: a
// table for each class, with what form files hold of a member. Run it with KX_UPDATE=1 in the environment to write the
// page.

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

const std::string& Docs() {
    static const std::string docs = std::string(KX_SOURCES) + "/docs/";
    return docs;
}

/// A line of the document, as "  Align: TAlign = alNone, stored by a rule".
struct TMember {
    std::string Name;
    std::string Type;
    std::string Default;
    bool IsReadOnly = false;
    bool HasRule = false;
};

struct TClassText {
    std::string Name;
    std::string Parent;
    std::vector<TMember> Members;
    std::vector<std::string> New; ///< What a new object has besides: "Width = 75".
};

bool Cut(std::string& text, const std::string& end) {
    const bool has = text.ends_with(end);
    text.erase(has ? text.size() - end.size() : text.size());
    return has;
}

TMember MemberOf(const std::string& line) {
    TMember member;
    std::string rest = line;
    member.HasRule = Cut(rest, ", stored by a rule");
    member.IsReadOnly = Cut(rest, ", read only");
    const size_t colon = rest.find(": ");
    member.Name = rest.substr(0, colon);
    member.Type = rest.substr(colon + 2);
    if (const size_t equal = member.Type.find(" = "); equal != std::string::npos) {
        member.Default = member.Type.substr(equal + 3);
        member.Type.erase(equal);
    }
    return member;
}

std::vector<TClassText> Classes() {
    const std::string isNew = "  a new one: ";
    std::vector<TClassText> classes;
    std::ifstream document(Docs() + "published-classes.txt");
    for (std::string line; std::getline(document, line);) {
        Cut(line, "\r");
        if (line.starts_with(isNew)) {
            classes.back().New.push_back(line.substr(isNew.size()));
        } else if (line.starts_with("  ")) {
            classes.back().Members.push_back(MemberOf(line.substr(2)));
        } else if (!line.empty()) {
            const size_t colon = line.find(": ");
            classes.push_back(
                {line.substr(0, colon), colon == std::string::npos ? "" : line.substr(colon + 2), {}, {}});
        }
    }
    return classes;
}

std::string Lower(std::string text) {
    for (char& c : text) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return text;
}

/// The name, as a link to the class's own table where there is one.
std::string Linked(const std::string& name, const std::set<std::string>& known) {
    return known.contains(name) ? "[" + name + "](#" + Lower(name) + ")" : name;
}

std::string TypeText(const std::string& type, const std::set<std::string>& known) {
    const std::string reference = "reference to ";
    return type.starts_with(reference) ? reference + Linked(type.substr(reference.size()), known) : Linked(type, known);
}

/// Of a published object.
std::string PartText(const TClassText& cls) {
    return cls.Name == "TStrings"                               ? "its lines"
           : cls.Parent == "TCollection"                        ? "its items"
           : cls.Parent == "TGraphic" || cls.Name == "TPicture" ? "its picture, if there is one"
                                                                : "what it publishes";
}

std::string StoredText(const TMember& member, const std::map<std::string, TClassText>& classes) {
    const auto part = classes.find(member.Type);
    return member.IsReadOnly                      ? "no: it can only be read"
           : member.HasRule                       ? "by a rule of the class"
           : member.Type == "event"               ? "the handler's name"
           : !member.Default.empty()              ? "unless it is the default"
           : part != classes.end()                ? PartText(part->second)
           : member.Type == "text"                ? "unless it is empty"
           : member.Type.starts_with("reference") ? "the name"
                                                  : "unless it is nothing";
}

std::string Page() {
    const std::vector<TClassText> classes = Classes();
    std::set<std::string> known;
    std::map<std::string, TClassText> byName;
    for (const TClassText& cls : classes) {
        known.insert(cls.Name);
        byName[cls.Name] = cls;
    }
    std::string page = "# Published members\n\n"
                       "What each class publishes: for form files, for the inspector of the form designer, and for "
                       "access by name. A class has\n"
                       "besides what its ancestor publishes; a member that is named again has another default there. "
                       "Nobody writes this page by\n"
                       "hand: it is made from the tables of the classes.\n";
    for (const TClassText& cls : classes) {
        page += "\n## " + cls.Name + "\n\n";
        page += cls.Parent.empty() ? "" : "Derives from " + Linked(cls.Parent, known) + ".\n";
        if (!cls.Members.empty()) {
            page += "\n| member | type | default | in form files |\n|---|---|---|---|\n";
        }
        for (const TMember& member : cls.Members) {
            page += "| `" + member.Name + "` | " + TypeText(member.Type, known) + " | " +
                    (member.Default.empty() ? "" : "`" + member.Default + "`") + " | " + StoredText(member, byName) +
                    " |\n";
        }
        for (size_t i = 0; i < cls.New.size(); ++i) {
            page += (i == 0 ? "\nA new one has " : ", ") + ("`" + cls.New[i] + "`") +
                    (i + 1 == cls.New.size() ? ".\n" : "");
        }
    }
    return page;
}

TEST(PublishedPage, HasATableOfEachClass) {
    const std::string file = Docs() + "published.md";
    const std::string page = Page();
    if (std::getenv("KX_UPDATE")) {
        std::ofstream(file, std::ios::binary) << page;
    }
    std::istringstream expected(page);
    std::ifstream written(file);
    std::string a;
    std::string b;
    for (int line = 1; std::getline(expected, a); ++line) {
        ASSERT_TRUE(std::getline(written, b)) << "docs/published.md ends before " << a;
        ASSERT_EQ(b, a) << "in line " << line << " of docs/published.md";
    }
    EXPECT_FALSE(std::getline(written, b)) << "nobody publishes " << b;
    EXPECT_GT(Classes().size(), 100u);
}

} // namespace
