// SPDX-License-Identifier: MIT
// Access to published properties by their names.

#include "kx/core/TypInfo.h"

#include <algorithm>

namespace kx {

TEnumInfo::TEnumInfo(std::string_view name, std::initializer_list<const char*> values)
    : Name(name), Values(values.begin(), values.end()) {}

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

TIdentInfo::TIdentInfo(std::initializer_list<TGiven> entries) {
    for (const TGiven& entry : entries) {
        Entries.push_back({entry.Value, entry.Name});
    }
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

// --- TPropInfo

TPropInfo::TPropInfo(std::string_view name, const detail::TPropShape& shape, detail::TMemberPointer get,
                     detail::TMemberPointer set)
    : Name(name), FShape(shape), FGet(get), FSet(set) {
    shape.Describe(*this);
}

std::string TPropInfo::TypeName() const {
    switch (Kind) {
    case TTypeKind::Char: return "Char";
    case TTypeKind::String: return "string";
    case TTypeKind::Enumeration: return Enum->Name;
    case TTypeKind::Set: return "set of " + Enum->Name;
    case TTypeKind::SubObject:
    case TTypeKind::Reference: return Class().Name();
    default: return NameOfType();
    }
}

bool TPropInfo::HoldsObject() const {
    return Kind == TTypeKind::SubObject || Kind == TTypeKind::Reference || Kind == TTypeKind::Interface;
}

void TPropInfo::Check(bool isRightUse) const {
    if (!isRightUse) {
        throw EPropertyError(Format("Property %s is read-only or of another type", {Name}));
    }
}

int64_t TPropInfo::GetOrd(const TObject& object) const {
    Check(IsOrdinal());
    return FShape.Get.Ord(object, FGet);
}

void TPropInfo::SetOrd(TObject& object, int64_t value) const {
    Check(IsOrdinal() && FShape.CanSet);
    // A set keeps to its elements' bits; identifiers such as colours use all 32 bits, signed or not.
    if (value < MinValue || value > MaxValue) {
        throw ERangeError(Format("Value %s is out of range for property %s", {IntToStr(value), Name}));
    }
    FShape.Set.Ord(object, FSet, value);
}

double TPropInfo::GetFloat(const TObject& object) const {
    Check(Kind == TTypeKind::Float);
    return FShape.Get.Float(object, FGet);
}

void TPropInfo::SetFloat(TObject& object, double value) const {
    Check(Kind == TTypeKind::Float && FShape.CanSet);
    FShape.Set.Float(object, FSet, value);
}

std::string TPropInfo::GetStr(const TObject& object) const {
    Check(Kind == TTypeKind::String);
    return FShape.Get.Str(object, FGet);
}

void TPropInfo::SetStr(TObject& object, const std::string& value) const {
    Check(Kind == TTypeKind::String && FShape.CanSet);
    FShape.Set.Str(object, FSet, value);
}

TObject* TPropInfo::GetObj(const TObject& object) const {
    Check(HoldsObject());
    return FShape.Get.Obj(object, FGet);
}

void TPropInfo::SetObj(TObject& object, TObject* value) const {
    Check(HoldsObject() && FShape.CanSet);
    if (!FShape.Set.Obj(object, FSet, value)) {
        throw EInvalidCast(Format("Invalid class typecast: %s cannot be set to %s",
                                  {Name, value ? value->ClassName() : std::string("nil")}));
    }
}

TEventTargetPtr TPropInfo::GetEvent(const TObject& object) const {
    Check(Kind == TTypeKind::Event);
    return FShape.Get.Event(object, FGet);
}

void TPropInfo::SetEvent(TObject& object, const TEventTargetPtr& target) const {
    Check(Kind == TTypeKind::Event && FShape.CanSet);
    Check(FShape.Set.Event(object, FSet, target));
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
