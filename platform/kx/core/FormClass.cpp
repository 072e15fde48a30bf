// SPDX-License-Identifier: MIT
// The C++ class that belongs to a form file.

#include "kx/core/FormClass.h"

#include "kx/core/FormEvents.h"
#include "kx/core/FormText.h"
#include "kx/core/TypInfo.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <unordered_map>
#include <unordered_set>

namespace kx {

namespace {

constexpr std::string_view ReservedWords[] = {
    "alignas",     "alignof",  "and",        "and_eq",    "asm",       "auto",         "bitand",
    "bitor",       "bool",     "break",      "case",      "catch",     "char",         "char16_t",
    "char32_t",    "char8_t",  "class",      "co_await",  "co_return", "co_yield",     "compl",
    "concept",     "const",    "const_cast", "consteval", "constexpr", "constinit",    "continue",
    "decltype",    "default",  "delete",     "do",        "double",    "dynamic_cast", "else",
    "enum",        "explicit", "export",     "extern",    "false",     "float",        "for",
    "friend",      "goto",     "if",         "inline",    "int",       "long",         "mutable",
    "namespace",   "new",      "noexcept",   "not",       "not_eq",    "nullptr",      "operator",
    "or",          "or_eq",    "private",    "protected", "public",    "register",     "reinterpret_cast",
    "requires",    "return",   "short",      "signed",    "sizeof",    "static",       "static_assert",
    "static_cast", "struct",   "switch",     "template",  "this",      "thread_local", "throw",
    "true",        "try",      "typedef",    "typeid",    "typename",  "union",        "unsigned",
    "using",       "virtual",  "void",       "volatile",  "wchar_t",   "while",        "xor",
    "xor_eq"};

} // namespace

bool IsCppKeyword(std::string_view word) {
    return std::find(std::begin(ReservedWords), std::end(ReservedWords), word) != std::end(ReservedWords);
}

namespace {

/// Reads a binary form and notes what its class has to publish.
class TFormClassReader {
public:
    TFormClassReader(TStream& binary, const TFormLines* lines) : FReader(binary) { FReader.SetLines(lines); }

    TFormClass Read() {
        FReader.ReadSignature();
        Component(0, false);
        return std::move(FClass);
    }

private:
    struct TOwner {
        std::string Name;
        std::string ClassName;
    };

    void Component(int depth, bool isInside);
    void Root(const TOwner& form, TFilerFlags flags);
    void Field(const TOwner& component);
    void Properties(const TOwner& component, const std::string& path, int depth);
    void Items(const TOwner& component, const std::string& path, int depth);
    void Handler(const TOwner& component, const std::string& event, const std::string& method);
    void CheckName(const std::string& name);
    void CheckDepth(int depth);

    TReader FReader;
    TFormClass FClass;
    std::unordered_set<std::string> FFieldNames; // in upper case
    std::unordered_map<std::string, size_t> FHandlerPlaces;
};

void TFormClassReader::CheckDepth(int depth) {
    if (depth >= MaxFormNesting) {
        FReader.ReadError("The form is nested too deeply");
    }
}

/// `isInside`: of a frame, whose own class has the fields. The handlers are the form's there too.
void TFormClassReader::Component(int depth, bool isInside) {
    CheckDepth(depth);
    TFilerFlags flags;
    int childPos = -1;
    FReader.ReadPrefix(flags, childPos);
    TOwner component;
    component.ClassName = FReader.ReadStr();
    component.Name = FReader.ReadStr();
    CheckName(component.ClassName);
    if (!component.Name.empty()) {
        CheckName(component.Name);
    }
    if (depth == 0) {
        Root(component, flags);
    } else if (!component.Name.empty() && !isInside && !flags.Contains(ffInherited)) {
        Field(component);
    }
    Properties(component, {}, depth);
    while (!FReader.EndOfList()) {
        Component(depth + 1, isInside || (depth > 0 && flags.Contains(ffInline)));
    }
    FReader.ReadListEnd();
}

void TFormClassReader::Root(const TOwner& form, TFilerFlags flags) {
    FClass.Name = form.ClassName;
    FClass.FormName = form.Name;
    FClass.IsInherited = flags.Contains(ffInherited);
    const TClass* const cls = GetClass(form.ClassName);
    FClass.Ancestor = cls && cls->Parent() ? cls->Parent()->Name() : "TForm";
}

void TFormClassReader::Field(const TOwner& component) {
    if (!FFieldNames.insert(UpperCase(component.Name)).second) {
        FReader.ReadError(Format("A component named %s exists already", {component.Name}));
    }
    FClass.Fields.push_back({component.Name, component.ClassName});
}

/// True for the name of an event among names whose values are identifiers: "OnClick", not "OnlyOne"
bool IsEventName(std::string_view name) {
    return name.size() > 2 && name.starts_with("On") && std::isupper(static_cast<unsigned char>(name[2]));
}

/// `path` leads from the component to the object that has the properties: "", or "Columns."
void TFormClassReader::Properties(const TOwner& component, const std::string& path, int depth) {
    while (!FReader.EndOfList()) {
        const std::string name = path + FReader.ReadStr();
        const TValueType type = FReader.NextValue();
        if (type == vaCollection) {
            FReader.ReadValue();
            Items(component, name + ".", depth + 1);
        } else if (type == vaIdent && IsEventName(std::string_view(name).substr(name.rfind('.') + 1))) {
            Handler(component, name, FReader.ReadIdent());
        } else {
            FReader.SkipValue();
        }
    }
    FReader.ReadListEnd();
}

void TFormClassReader::Items(const TOwner& component, const std::string& path, int depth) {
    CheckDepth(depth);
    while (!FReader.EndOfList()) {
        if (FReader.NextValue() != vaList) {
            FReader.ReadInteger(); // its position
        }
        FReader.ReadListBegin();
        Properties(component, path, depth);
    }
    FReader.ReadListEnd();
}

void TFormClassReader::Handler(const TOwner& component, const std::string& event, const std::string& method) {
    CheckName(method);
    const std::string parameters = EventParameters(component.ClassName, event);
    const std::string path = component.Name.empty() ? event : component.Name + "." + event;
    const auto [place, isNew] = FHandlerPlaces.try_emplace(UpperCase(method), FClass.Handlers.size());
    if (isNew) {
        FClass.Handlers.push_back(
            {method, parameters.empty() ? "TObject* sender" : parameters, path, !parameters.empty(), {}});
        return;
    }
    TFormClass::THandler* const same = &FClass.Handlers[place->second];
    if (!same->IsKnown && !parameters.empty()) { // this event tells more than the one before
        same->Parameters = parameters;
        same->Event = path;
        same->IsKnown = true;
    } else if (same->Other.empty() && !parameters.empty() &&
               detail::TypesOfParameters(parameters) != detail::TypesOfParameters(same->Parameters)) {
        same->Other = path + " (" + parameters + ")";
    }
}

void TFormClassReader::CheckName(const std::string& name) {
    if (!IsValidIdent(name)) {
        FReader.ReadError(Format("%s is no identifier", {"'" + name + "'"}));
    }
}

/// @throws EInvalidOperation for a name that C++ does not take, or that the class would have twice
void CheckNames(const TFormClass& cls) {
    std::unordered_set<std::string> names{cls.Name};
    const auto add = [&](const std::string& name) {
        if (IsCppKeyword(name)) {
            throw EInvalidOperation(Format("%s is a word of C++ and cannot be a name there", {name}));
        }
        if (!names.insert(name).second) {
            throw EInvalidOperation(Format("%s would be two things in class %s", {name, cls.Name}));
        }
    };
    for (const TFormClass::TField& field : cls.Fields) {
        add(field.Name);
    }
    for (const TFormClass::THandler& handler : cls.Handlers) {
        add(handler.Name);
    }
}

} // namespace

TFormClass FormClassOf(TStream& form) {
    TMemoryStream binary;
    TFormLines lines;
    TFormClass cls;
    switch (TestStreamFormat(form)) {
    case TStreamFormat::Resource: ReadResHeader(form); [[fallthrough]];
    case TStreamFormat::Binary: cls = TFormClassReader(form, nullptr).Read(); break;
    case TStreamFormat::Text:
        ObjectTextToBinary(form, binary, &lines);
        binary.SetPosition(0);
        cls = TFormClassReader(binary, &lines).Read();
        break;
    case TStreamFormat::Unknown: throw EInvalidImage("Invalid stream format: no form");
    }
    return cls;
}

std::string FieldsDeclaration(const std::string& cls, const std::vector<TFormClass::TField>& fields) {
    std::string text = "KX_FIELDS(" + cls;
    for (const TFormClass::TField& field : fields) {
        text += ",\n              (" + field.ClassName + ", " + field.Name + ")";
    }
    return text + ")";
}

std::string FormClassDeclaration(const TFormClass& cls) {
    CheckNames(cls);
    std::string text;
    if (cls.IsInherited) {
        text +=
            "// The form file inherits, and does not say from what: put the class in " + cls.Ancestor + "'s place.\n";
    }
    text += "class " + cls.Name + " : public " + cls.Ancestor + " {\n    KX_CLASS()\n\n";
    text += "    explicit " + cls.Name + "(TComponent* owner = nullptr);\n";
    for (size_t i = 0; i < cls.Handlers.size(); ++i) {
        const TFormClass::THandler& handler = cls.Handlers[i];
        text += i == 0 ? "\n" : "";
        if (!handler.IsKnown) {
            text += "    // What " + handler.Event + " hands over is not known here.\n";
        }
        if (!handler.Other.empty()) {
            text += "    // It cannot be the handler of " + handler.Other + " too.\n";
        }
        text += "    void " + handler.Name + "(" + handler.Parameters + ");\n";
    }
    text += cls.Fields.empty() ? "" : "\nprivate:\n    " + FieldsDeclaration(cls.Name, cls.Fields) + "\n";
    text += "};\n";
    if (!cls.FormName.empty()) {
        text += "\ninline " + cls.Name + "* " + cls.FormName + " = nullptr;\n";
    }
    return text;
}

std::string FormClassDefinition(const TFormClass& cls) {
    CheckNames(cls);
    const std::string member = cls.Name + "::";
    std::string text = "const TClass& " + member + "StaticClass() {\n    static const TClassBuilder<" + cls.Name +
                       "> cls(\"" + cls.Name + "\", " + cls.Ancestor + "::StaticClass()";
    if (cls.Handlers.empty()) {
        text += ");\n";
    } else {
        text += ", [](auto& c) {\n";
        for (const TFormClass::THandler& handler : cls.Handlers) {
            text += "        c.Method(\"" + handler.Name + "\", &" + member + handler.Name + ");\n";
        }
        text += "    });\n";
    }
    text += "    return cls.Class();\n}\n\n";
    text +=
        member + cls.Name + "(TComponent* owner) : " + cls.Ancestor + "(owner) { InitForm(*this, StaticClass()); }\n";
    for (const TFormClass::THandler& handler : cls.Handlers) {
        text += "\nvoid " + member + handler.Name + "(" + handler.Parameters + ") {\n}\n";
    }
    return text;
}

} // namespace kx
