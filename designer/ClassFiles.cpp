// SPDX-License-Identifier: MIT
// Writes the C++ code of a form's class, and completes what is there.

#include "designer/ClassFiles.h"

#include "designer/CodeText.h"
#include "designer/Files.h"
#include "designer/FormDesigner.h"
#include "kx/core/FormText.h"
#include "kx/ide/Palette.h"
#include "kx/win/FileStreams.h"

#include <algorithm>
#include <set>

namespace kx::designer {

namespace {

constexpr size_t npos = std::string::npos;

/// The path of the form file without its extension.
std::string CodeFileBase(const std::string& formFile) {
    const size_t name = formFile.size() - NameOfFile(formFile).size();
    const size_t dot = formFile.find_last_of('.');
    return formFile.substr(0, dot == npos || dot < name ? npos : dot);
}

std::string Declaration(const TFormClass::THandler& handler) {
    return "void " + handler.Name + "(" + handler.Parameters + ")";
}

/// The names of all classes that the class of the form has to know; some of them several times.
std::vector<std::string> UsedClasses(const TFormClass& cls) {
    std::vector<std::string> names{cls.Ancestor};
    for (const TFormClass::TField& field : cls.Fields) {
        names.push_back(field.ClassName);
    }
    return names;
}

/// The #include of each class that the code does not include yet.
std::vector<std::string> IncludesFor(const std::vector<std::string>& classes, const std::string& code) {
    std::set<std::string> lines; // in order: # stands before /
    for (const std::string& name : classes) {
        const std::string header = HeaderOf(name);
        if (header.empty()) {
            lines.insert("// The header of " + name + " belongs here.");
        } else if (code.find("\"" + header + "\"") == npos && code.find("<" + header + ">") == npos) {
            lines.insert("#include \"" + header + "\"");
        }
    }
    return {lines.begin(), lines.end()};
}

std::string WithBreaks(const std::string& text, std::string_view lineBreak) {
    std::string result;
    for (const char c : text) {
        c == '\n' ? static_cast<void>(result.append(lineBreak)) : result.push_back(c);
    }
    return result;
}

struct TPart {
    size_t Begin = npos;
    size_t End = npos; ///< Its closing bracket.
    bool IsThere() const { return End != npos; }
    std::string Of(const std::string& code) const {
        return IsThere() ? code.substr(Begin, End - Begin) : std::string();
    }
};

/// The braces of the class.
TPart ClassBody(const std::string& bare, const std::string& name) {
    for (size_t at = FindWord(bare, name); at != npos; at = FindWord(bare, name, at + 1)) {
        const std::string before = bare.substr(LineStart(bare, at), at - LineStart(bare, at));
        const size_t next = bare.find_first_of("{;(", at);
        if ((FindWord(before, "class") != npos || FindWord(before, "struct") != npos) && next != npos &&
            bare[next] == '{') {
            return {next, MatchingBracket(bare, next)};
        }
    }
    return {};
}

/// The parentheses of the class's KX_FIELDS.
TPart FieldList(const std::string& bare, const std::string& cls) {
    const TPart body = ClassBody(bare, cls);
    for (size_t at = body.Begin; body.IsThere() && (at = FindWord(bare, "KX_FIELDS", at)) < body.End; ++at) {
        const size_t open = bare.find('(', at);
        if (open < body.End && FindWord(bare, cls, open) == SkipBlanks(bare, open + 1)) { // not one of a class inside
            return {open, MatchingBracket(bare, open)};
        }
    }
    return {};
}

/// A member function of the class that is defined outside of it.
struct TDefinition {
    size_t Begin = npos; ///< Of its name.
    size_t End = npos;   ///< Its closing brace.
};

TDefinition DefinitionAt(const std::string& bare, size_t name) {
    const size_t open = bare.find_first_of("(;{}&", name);
    if (open == npos || bare[open] != '(') {
        return {};
    }
    size_t at = MatchingBracket(bare, open);
    size_t end = npos;
    while (at != npos) { // of a constructor's initializers some may stand in braces
        const size_t next = bare.find_first_of("{;(", at + 1);
        if (next == npos || bare[next] == ';') {
            break;
        }
        at = MatchingBracket(bare, next);
        end = bare[next] == '{' ? at : end;
        const size_t behind = at == npos ? npos : SkipBlanks(bare, at + 1);
        if (behind == npos || behind >= bare.size() || (bare[behind] != ',' && bare[behind] != '{')) {
            break;
        }
    }
    return {name, end};
}

int DepthAt(const std::string& bare, size_t at) {
    const auto count = [&](char c) {
        return static_cast<int>(std::count(bare.begin(), bare.begin() + static_cast<std::ptrdiff_t>(at), c));
    };
    return count('{') - count('}');
}

/// All definitions "TForm1::member" of the code; any member when that is empty.
std::vector<TDefinition> Definitions(const std::string& bare, const std::string& cls, const std::string& member) {
    std::vector<TDefinition> found;
    int depth = 0; // of the first one: deeper ones are calls
    for (size_t at = FindWord(bare, cls); at != npos; at = FindWord(bare, cls, at + 1)) {
        const size_t colons = SkipBlanks(bare, at + cls.size());
        if (bare.substr(colons, 2) != "::") {
            continue;
        }
        const size_t name = SkipBlanks(bare, colons + 2);
        if (!member.empty() && FindWord(bare.substr(name, member.size() + 1), member) != 0) {
            continue;
        }
        const TDefinition definition = DefinitionAt(bare, name);
        if (definition.End == npos) {
            continue;
        }
        depth = found.empty() ? DepthAt(bare, at) : depth;
        if (DepthAt(bare, at) == depth) {
            found.push_back(definition);
        }
    }
    return found;
}

/// The parentheses of "TClassBuilder<TForm1> cls(...)" in the class's StaticClass.
TPart TableCall(const std::string& bare, const std::string& cls) {
    for (const TDefinition& definition : Definitions(bare, cls, "StaticClass")) {
        const size_t builder = FindWord(bare, "TClassBuilder", definition.Begin);
        const size_t open = builder == npos ? npos : bare.find('(', builder);
        if (open < definition.End) {
            return {open, MatchingBracket(bare, open)};
        }
    }
    return {};
}

std::string Lines(const std::vector<std::string>& lines, const std::string& indent) {
    std::string text;
    for (const std::string& line : lines) {
        text += indent + line + "\n";
    }
    return text;
}

std::vector<std::string> Statements(const TClassMembers& members) {
    std::vector<std::string> lines;
    for (const TClassMember& member : members) {
        lines.push_back(member.Code + ";");
    }
    return lines;
}

/// Puts lines in front of a closing bracket: on lines of their own when the bracket has one.
void InsertBefore(std::string& code, size_t bracket, const std::vector<std::string>& lines, const std::string& indent,
                  std::string_view lineBreak) {
    const size_t start = LineStart(code, bracket);
    const bool isAlone = code.find_first_not_of(" \t", start) == bracket;
    code.insert(isAlone ? start : bracket, WithBreaks((isAlone ? "" : "\n") + Lines(lines, indent), lineBreak));
}

/// Puts lines behind the last #include, else at the top behind "#pragma once".
void InsertIncludes(std::string& code, const std::vector<std::string>& includes, std::string_view lineBreak) {
    if (includes.empty()) {
        return;
    }
    const std::string bare = BareCode(code);
    size_t last = bare.rfind("#include");
    last = last == npos ? bare.find("#pragma once") : last;
    const size_t end = last == npos ? npos : code.find('\n', last);
    code.insert(end == npos ? 0 : end + 1, WithBreaks(Lines(includes, ""), lineBreak));
}

} // namespace

std::string NewClassHeader(const TFormClass& cls) {
    return "#pragma once\n\n" + Lines(IncludesFor(UsedClasses(cls), {}), "") + "\nusing namespace kx;\n\n" +
           FormClassDeclaration(cls);
}

std::string NewClassSource(const TFormClass& cls, const std::string& headerName) {
    return "#include \"" + headerName + "\"\n\n" + FormClassDefinition(cls);
}

std::string BaseInCode(const std::string& formFile, const std::string& className) {
    for (const char* extension : {".h", ".cpp"}) {
        const std::string path = CodeFileBase(formFile) + extension;
        const std::string bare = FileExists(path) ? BareCode(ReadWholeFile(path)) : std::string();
        const TPart body = ClassBody(bare, className);
        if (!body.IsThere()) {
            continue;
        }
        // "class TForm2 : public forms::TForm1 {": the last name before the first comma
        const size_t colon = bare.rfind(className, body.Begin) + className.size();
        const std::string bases = bare.substr(colon, std::min(bare.find(',', colon), body.Begin) - colon);
        const size_t end = bases.find_last_not_of(" \t\r\n");
        const size_t begin = end == npos ? npos : bases.find_last_of(" \t\r\n:", end);
        return begin == npos ? std::string() : bases.substr(begin + 1, end - begin);
    }
    return {};
}

TClassFiles::TClassFiles(const std::string& formFile, const TFormClass& cls, std::string_view lineBreak) : FClass(cls) {
    const std::string base = CodeFileBase(formFile);
    FHeader.Path = base + ".h";
    FSource.Path = base + ".cpp";
    const std::string header = NewClassHeader(cls); // which checks the names
    Read(FHeader);
    Read(FSource);
    const bool isInSource = ClassBody(BareCode(FSource.Before), cls.Name).IsThere();
    if (FHeader.IsThere) {
        CompleteDeclaration(FHeader);
    } else if (isInSource) {
        CompleteDeclaration(FSource);
    } else {
        FHeader.After = WithBreaks(header, lineBreak);
    }
    if (FSource.IsThere) {
        CompleteDefinition(FSource);
    } else {
        FSource.After = WithBreaks(NewClassSource(cls, NameOfFile(FHeader.Path)), lineBreak);
    }
}

void TClassFiles::Read(TFile& file) const {
    file.IsThere = FileExists(file.Path);
    file.Before = file.IsThere ? ReadWholeFile(file.Path) : std::string();
    file.After = file.Before;
}

void TClassFiles::Note(const TFile& file, const std::string& what) {
    FMissing.push_back(NameOfFile(file.Path) + ": " + what);
}

/// Of the members that part of a file is to name, those that it does not.
TClassMembers TClassFiles::TakeMissing(const TFile& file, std::string_view part, TClassMembers members) {
    std::erase_if(members, [&](const TClassMember& member) { return FindWord(part, member.Name) != npos; });
    for (const TClassMember& member : members) {
        Note(file, member.Code);
    }
    return members;
}

/// Fields and handlers that the class does not declare.
void TClassFiles::CompleteDeclaration(TFile& file) {
    const std::string bare = BareCode(file.After);
    const TPart body = ClassBody(bare, FClass.Name);
    TClassMembers handlers;
    for (const TFormClass::THandler& handler : FClass.Handlers) {
        handlers.push_back({handler.Name, Declaration(handler)});
    }
    handlers = TakeMissing(file, body.Of(bare), std::move(handlers));
    std::vector<TFormClass::TField> fields = FClass.Fields;
    std::erase_if(fields, [&](const TFormClass::TField& field) { return FindWord(body.Of(bare), field.Name) != npos; });
    std::vector<std::string> classes;
    for (const TFormClass::TField& field : fields) {
        Note(file, field.ClassName + "* " + field.Name);
        classes.push_back(field.ClassName);
    }
    if (!body.IsThere()) {
        FProblem = NameOfFile(file.Path) + " declares no class " + FClass.Name;
        return;
    }
    const std::string lineBreak(LineBreakOf(file.Before));
    std::vector<std::string> lines = Statements(handlers);
    const TPart list = FieldList(bare, FClass.Name);
    if (!fields.empty() && !list.IsThere()) {
        lines.push_back(FieldsDeclaration(FClass.Name, fields));
    }
    // From behind: places that were found before those that change stay where they are.
    if (!lines.empty()) {
        InsertBefore(file.After, body.End, lines, "    ", lineBreak);
    }
    if (!fields.empty() && list.IsThere()) {
        std::string more;
        for (const TFormClass::TField& field : fields) {
            more += ",\n" + std::string(list.Begin + 1 - LineStart(bare, list.Begin), ' ') + "(" + field.ClassName +
                    ", " + field.Name + ")";
        }
        file.After.insert(bare.find_last_not_of(" \t\r\n", list.End - 1) + 1, WithBreaks(more, lineBreak));
    }
    InsertIncludes(file.After, IncludesFor(classes, file.After), lineBreak);
}

/// Fields that the class declares, in either file, as KX_FIELDS does: they need no line of the table.
std::string TClassFiles::FieldsWithoutTable() const {
    std::string lists;
    for (const TFile* const file : {&FHeader, &FSource}) {
        const std::string bare = BareCode(file->After);
        lists += FieldList(bare, FClass.Name).Of(bare);
    }
    return lists;
}

/// Lines of the property table, and bodies of handlers.
void TClassFiles::CompleteDefinition(TFile& file) {
    const std::string lineBreak(LineBreakOf(file.Before));
    const std::string bareHeader = BareCode(FHeader.Before);
    std::string bare = BareCode(file.After);
    // Handlers first: they come behind everything, so that the places found before them stay.
    std::string bodies;
    for (const TFormClass::THandler& handler : FClass.Handlers) {
        const auto isInline = [&](const std::string& code) {
            const TPart body = ClassBody(code, FClass.Name);
            const size_t at = body.IsThere() ? FindWord(code, handler.Name, body.Begin) : npos;
            return at != npos && at < body.End && DefinitionAt(code, at).End != npos;
        };
        if (Definitions(bare, FClass.Name, handler.Name).empty() && !isInline(bare) && !isInline(bareHeader)) {
            bodies += "\n\nvoid " + FClass.Name + "::" + handler.Name + "(" + handler.Parameters + ") {\n}";
            Note(file, FClass.Name + "::" + handler.Name);
        }
    }
    if (!bodies.empty()) {
        const std::vector<TDefinition> all = Definitions(bare, FClass.Name, {});
        const size_t end = all.empty() ? file.After.size() : all.back().End + 1;
        file.After.insert(end, WithBreaks(bodies, lineBreak));
        bare = BareCode(file.After);
    }
    const TPart call = TableCall(bare, FClass.Name);
    TClassMembers members;
    const auto add = [&](const std::string& what, const std::string& name) {
        members.push_back({name, "c." + what + "(\"" + name + "\", &" + FClass.Name + "::" + name + ")"});
    };
    const std::string withoutTable = FieldsWithoutTable();
    for (const TFormClass::TField& field : FClass.Fields) {
        if (FindWord(withoutTable, field.Name) == npos) {
            add("Field", field.Name);
        }
    }
    for (const TFormClass::THandler& handler : FClass.Handlers) {
        add("Method", handler.Name);
    }
    members = TakeMissing(file, call.Of(bare), std::move(members));
    if (!call.IsThere() && !(FClass.Fields.empty() && FClass.Handlers.empty())) {
        FProblem = NameOfFile(file.Path) + " has no property table of " + FClass.Name;
    }
    if (members.empty() || !call.IsThere()) {
        return;
    }
    if (const size_t open = bare.find('{', call.Begin + 1); open < call.End) {
        InsertBefore(file.After, MatchingBracket(bare, open), Statements(members), "        ", lineBreak);
    } else {
        const std::string table = ", [](auto& c) {\n" + Lines(Statements(members), "        ") + "    }";
        file.After.insert(call.End, WithBreaks(table, lineBreak));
    }
}

bool TClassFiles::IsComplete() const {
    return FProblem.empty() && FHeader.After == FHeader.Before && FSource.After == FSource.Before;
}

void TClassFiles::Write() {
    if (!FProblem.empty()) {
        throw EDesignError(FProblem);
    }
    for (TFile* file : {&FHeader, &FSource}) {
        if (file->After != file->Before) {
            WriteWholeFile(file->Path, file->After);
            file->Before = file->After;
        }
    }
}

} // namespace kx::designer
