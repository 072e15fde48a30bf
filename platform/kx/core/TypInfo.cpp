// Access to published properties by their names.

#include "kx/core/TypInfo.h"

namespace kx {

std::optional<int> TEnumInfo::Find(std::string_view value) const {
    for (size_t i = 0; i < Values.size(); ++i) {
        if (SameText(Values[i], value)) {
            return static_cast<int>(i);
        }
    }
    return std::nullopt;
}

const std::string& TEnumInfo::NameOf(int64_t ordinal) const {
    if (ordinal < 0 || ordinal >= static_cast<int64_t>(Values.size())) {
        throw ERangeError(Format("%s has no value with ordinal %s", {Name, IntToStr(ordinal)}));
    }
    return Values[static_cast<size_t>(ordinal)];
}

std::optional<int32_t> TIdentInfo::Find(std::string_view name) const {
    for (const TEntry& entry : Entries) {
        if (SameText(entry.Name, name)) {
            return entry.Value;
        }
    }
    return std::nullopt;
}

const std::string* TIdentInfo::NameOf(int32_t value) const {
    for (const TEntry& entry : Entries) {
        if (entry.Value == value) {
            return &entry.Name;
        }
    }
    return nullptr;
}

const TEnumInfo& BooleanInfo() {
    static const TEnumInfo info{"Boolean", {"False", "True"}};
    return info;
}

// --- Names of types

namespace detail {

namespace {

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

bool IsIdentChar(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

} // namespace

std::string TypeNameIn(std::string_view function) {
    // "... [with T = kx::TColor]", "... [T = kx::TColor]", "... FunctionNamedFor<enum kx::TColor>(void)"
    constexpr std::string_view ours = "T = ";
    constexpr std::string_view theirs = "FunctionNamedFor<";
    const bool isOurs = function.find(ours) != std::string_view::npos;
    const std::string_view before = isOurs ? ours : theirs;
    const size_t start = function.find(before) + before.size();
    const size_t end = isOurs ? function.rfind(']') : function.rfind(">(");
    std::string name(function.substr(start, end - start));
    for (const std::string_view text : {"std::__cxx11::basic_string<char>", "std::basic_string<char>",
                                        "std::basic_string<char,struct std::char_traits<char>,class "
                                        "std::allocator<char> >"}) {
        ReplaceAll(name, text, "$"); // a name without a namespace, until all others have lost theirs
    }
    for (const std::string_view word : {"class ", "struct ", "enum ", "__cdecl", "(anonymous namespace)::",
                                        "{anonymous}::", "`anonymous namespace'::", "(void)"}) {
        ReplaceAll(name, word, word == "(void)" ? "()" : "");
    }
    for (size_t colons = name.find("::"); colons != std::string::npos; colons = name.find("::")) {
        size_t first = colons;
        while (first > 0 && IsIdentChar(name[first - 1])) {
            --first;
        }
        name.erase(first, colons + 2 - first);
    }
    ReplaceAll(name, " *", "*");
    ReplaceAll(name, " &", "&");
    ReplaceAll(name, " (", "(");
    ReplaceAll(name, "$", "std::string");
    ReplaceAll(name, ", ", ",");
    ReplaceAll(name, ",", ", ");
    return name;
}

std::string NumberTypeName(size_t size, bool isSigned) {
    switch (size) {
    case 1: return isSigned ? "ShortInt" : "Byte";
    case 2: return isSigned ? "SmallInt" : "Word";
    case 4: return isSigned ? "Integer" : "Cardinal";
    default: return isSigned ? "Int64" : "UInt64";
    }
}

} // namespace detail

// --- TPropInfo

std::string TPropInfo::TypeName() const {
    switch (Kind) {
    case TTypeKind::Char: return "Char";
    case TTypeKind::String: return "string";
    case TTypeKind::Enumeration: return Enum->Name;
    case TTypeKind::Set: return "set of " + Enum->Name;
    case TTypeKind::SubObject:
    case TTypeKind::Reference: return Class().Name();
    default: return FTypeName;
    }
}

void TPropInfo::Misused() const { throw EPropertyError(Format("Property %s is read-only or of another type", {Name})); }

bool TPropInfo::IsReadOnly() const { return !FSetOrd && !FSetFloat && !FSetStr && !FSetObj && !FSetEvent; }

int64_t TPropInfo::GetOrd(const TObject& object) const {
    if (!FGetOrd) {
        Misused();
    }
    return FGetOrd(object);
}

void TPropInfo::SetOrd(TObject& object, int64_t value) const {
    if (!FSetOrd) {
        Misused();
    }
    // A set keeps to its elements' bits; identifiers such as colours use all 32 bits, signed or not.
    if (value < MinValue || value > MaxValue) {
        throw ERangeError(Format("Value %s is out of range for property %s", {IntToStr(value), Name}));
    }
    FSetOrd(object, value);
}

double TPropInfo::GetFloat(const TObject& object) const {
    if (!FGetFloat) {
        Misused();
    }
    return FGetFloat(object);
}

void TPropInfo::SetFloat(TObject& object, double value) const {
    if (!FSetFloat) {
        Misused();
    }
    FSetFloat(object, value);
}

std::string TPropInfo::GetStr(const TObject& object) const {
    if (!FGetStr) {
        Misused();
    }
    return FGetStr(object);
}

void TPropInfo::SetStr(TObject& object, const std::string& value) const {
    if (!FSetStr) {
        Misused();
    }
    FSetStr(object, value);
}

TObject* TPropInfo::GetObj(const TObject& object) const {
    if (!FGetObj) {
        Misused();
    }
    return FGetObj(object);
}

void TPropInfo::SetObj(TObject& object, TObject* value) const {
    if (!FSetObj) {
        Misused();
    }
    if (!FSetObj(object, value)) {
        throw EInvalidCast(Format("Invalid class typecast: %s cannot be set to %s",
                                  {Name, value ? value->ClassName() : std::string("nil")}));
    }
}

TEventTargetPtr TPropInfo::GetEvent(const TObject& object) const {
    if (!FGetEvent) {
        Misused();
    }
    return FGetEvent(object);
}

void TPropInfo::SetEvent(TObject& object, const TEventTargetPtr& target) const {
    if (!FSetEvent || !FSetEvent(object, target)) {
        Misused();
    }
}

// --- Access by name

const TPropInfo& GetPropInfo(const TObject& object, std::string_view name) {
    if (const TPropInfo* property = object.ClassType().FindProperty(name)) {
        return *property;
    }
    throw EPropertyError(Format("Property %s does not exist", {name}));
}

bool IsPublishedProp(const TObject& object, std::string_view name) {
    return object.ClassType().FindProperty(name) != nullptr;
}

int64_t GetOrdProp(const TObject& object, std::string_view name) { return GetPropInfo(object, name).GetOrd(object); }
void SetOrdProp(TObject& object, std::string_view name, int64_t value) {
    GetPropInfo(object, name).SetOrd(object, value);
}
std::string GetStrProp(const TObject& object, std::string_view name) {
    return GetPropInfo(object, name).GetStr(object);
}
void SetStrProp(TObject& object, std::string_view name, const std::string& value) {
    GetPropInfo(object, name).SetStr(object, value);
}

namespace {

const TPropInfo& PropOfKind(const TObject& object, std::string_view name, TTypeKind kind) {
    const TPropInfo& property = GetPropInfo(object, name);
    if (property.Kind != kind) {
        throw EPropertyError(Format("Property %s is read-only or of another type", {name}));
    }
    return property;
}

} // namespace

std::string GetEnumProp(const TObject& object, std::string_view name) {
    const TPropInfo& property = PropOfKind(object, name, TTypeKind::Enumeration);
    return property.Enum->NameOf(property.GetOrd(object));
}

void SetEnumProp(TObject& object, std::string_view name, std::string_view value) {
    const TPropInfo& property = PropOfKind(object, name, TTypeKind::Enumeration);
    const auto ordinal = property.Enum->Find(value);
    if (!ordinal) {
        throw EPropertyError(Format("Invalid property element: %s", {value}));
    }
    property.SetOrd(object, *ordinal);
}

std::string GetSetProp(const TObject& object, std::string_view name) {
    const TPropInfo& property = PropOfKind(object, name, TTypeKind::Set);
    return SetToString(*property.Enum, static_cast<uint32_t>(property.GetOrd(object)));
}

void SetSetProp(TObject& object, std::string_view name, std::string_view value) {
    const TPropInfo& property = PropOfKind(object, name, TTypeKind::Set);
    property.SetOrd(object, StringToSet(*property.Enum, value));
}

TObject* GetObjectProp(const TObject& object, std::string_view name) {
    return GetPropInfo(object, name).GetObj(object);
}
void SetObjectProp(TObject& object, std::string_view name, TObject* value) {
    GetPropInfo(object, name).SetObj(object, value);
}

std::string SetToString(const TEnumInfo& elements, uint32_t bits) {
    std::string text = "[";
    for (size_t i = 0; i < elements.Values.size(); ++i) {
        if (bits & (uint32_t{1} << i)) {
            text += text.size() > 1 ? "," : "";
            text += elements.Values[i];
        }
    }
    return text + "]";
}

uint32_t StringToSet(const TEnumInfo& elements, std::string_view text) {
    uint32_t bits = 0;
    std::string inner = Trim(text);
    if (!inner.empty() && inner.front() == '[' && inner.back() == ']') {
        inner = inner.substr(1, inner.size() - 2);
    }
    for (size_t start = 0; start <= inner.size();) {
        const size_t comma = std::min(inner.find(',', start), inner.size());
        const std::string element = Trim(std::string_view(inner).substr(start, comma - start));
        start = comma + 1;
        if (element.empty()) {
            continue;
        }
        const auto ordinal = elements.Find(element);
        if (!ordinal) {
            throw EPropertyError(Format("Invalid property element: %s", {element}));
        }
        bits |= uint32_t{1} << *ordinal;
    }
    return bits;
}

} // namespace kx
