// SPDX-License-Identifier: MIT
// Properties as they are read, and references that are resolved at the end.

#include "kx/core/FilerSession.h"
#include "kx/core/KeptForm.h"
#include "kx/core/Updates.h"

#include <algorithm>

namespace kx {

namespace {

using detail::FindNested;

/// A property that the object does not have, or that cannot be set.
class EUnknownProperty : public EPropertyError {
public:
    using EPropertyError::EPropertyError;
};

/// Properties that form files of all ages hold and that have no meaning any more: facts about the machine of the one
/// who made the form, looks and input methods of older systems, styles that only their maker's programs draw. Their
/// values are read over. One short list serves all classes, so that none carries the dead names along.
constexpr std::string_view PastProperties[] = {
    "Ctl3D",         "DesignSize",     "ExplicitHeight", "ExplicitLeft", "ExplicitTop", "ExplicitWidth",
    "GlassFrame",    "ImeMode",        "ImeName",        "OEMConvert",   "ParentCtl3D", "IncrementalDisplay",
    "PixelsPerInch", "OldCreateOrder", "StyleElements",  "TextHeight"};

bool IsPast(const TPersistent& instance, std::string_view path) {
    const auto isName = [name = path.substr(0, path.find('.'))](std::string_view past) { return SameText(past, name); };
    return dynamic_cast<const TComponent*>(&instance) && std::ranges::any_of(PastProperties, isName);
}

bool Publishes(const TObject& object, const TPropInfo& property) {
    return object.ClassType().FindProperty(property.Name) == &property;
}

} // namespace

// --- Properties

void TReader::ReadProperties(TPersistent& instance) {
    while (!EndOfList()) {
        ReadProperty(instance);
    }
    ReadListEnd();
}

void TReader::ReadProperty(TPersistent& instance) {
    const int64_t start = Position();
    const std::string name = ReadStr();
    const int64_t value = Position();
    if (!TryProperty(instance, name, start)) {
        SetPosition(value);
        SkipValue();
    }
    if (KeepsUnknown()) {
        MakeKept(instance).Stood.push_back({name, ReadAgain(value)});
    }
}

/// False: its value has to be skipped.
bool TReader::TryProperty(TPersistent& instance, const std::string& name, int64_t start) {
    std::string message;
    try {
        const TPathScope path(*this);
        ReadPropertyPath(instance, name);
        return true;
    } catch (const EAbort&) {
        throw;
    } catch (const Exception& error) {
        const auto* const component = dynamic_cast<const TComponent*>(&instance);
        // A class that is not found is that of a value, of a picture for instance.
        if (KeepsUnknown() &&
            (dynamic_cast<const EUnknownProperty*>(&error) || dynamic_cast<const EClassNotFound*>(&error) ||
             (component && component->IsPlaceholder()))) {
            return false;
        }
        const auto* const failure = dynamic_cast<const TFailure*>(&error);
        if (failure && failure->Reported) {
            throw;
        }
        const std::string path = instance.GetNamePath();
        message = ErrorReading(path.empty() ? name : path + "." + name, start, error);
    }
    if (!Error(message)) {
        throw TFailure(message, true);
    }
    return false;
}

void TReader::ReadPropertyPath(TPersistent& instance, const std::string& path) {
    TPersistent* object = &instance;
    std::string_view rest = path;
    for (;;) {
        const size_t dot = rest.find('.');
        const TPropInfo* const property = object->ClassType().FindProperty(rest.substr(0, dot));
        if (!property) {
            break;
        }
        if (dot == std::string_view::npos) {
            return ReadPropertyValue(*object, *property);
        }
        if (property->Kind == TTypeKind::SubObject) {
            object = dynamic_cast<TPersistent*>(property->GetObj(*object));
        }
        if (property->Kind != TTypeKind::SubObject || !object) {
            throw EUnknownProperty(Format("Property %s has no properties of its own", {property->Name}));
        }
        FPath.push_back({property, nullptr, -1, {}});
        rest.remove_prefix(dot + 1);
    }
    if (ReadDefinedProperty(*object, rest)) {
        return;
    }
    if (object != &instance || !IsPast(instance, path)) {
        throw EUnknownProperty(Format("Property %s does not exist in %s", {path, instance.ClassName()}));
    }
    SkipValue();
}

bool TReader::ReadDefinedProperty(TPersistent& instance, std::string_view name) {
    if (name.empty()) { // which is how FDefinedName tells that the value has been read
        return false;
    }
    const detail::TRestore defined(FDefinedName, std::string(name));
    instance.DefineProperties(*this);
    return FDefinedName.empty();
}

void TReader::DefineProperty(std::string_view name, const TReaderProc& read, const TWriterProc&, bool) {
    if (read && !FDefinedName.empty() && SameText(name, FDefinedName)) {
        FDefinedName.clear();
        read(*this);
    }
}

void TReader::DefineBinaryProperty(std::string_view name, const TStreamProc& read, const TStreamProc&, bool hasData) {
    if (!read) {
        return;
    }
    const auto readBlock = [&read](TReader& reader) {
        TMemoryStream block;
        reader.ReadBinary(block);
        block.SetPosition(0);
        read(block);
    };
    DefineProperty(name, readBlock, {}, hasData);
}

void TReader::ReadPropertyValue(TPersistent& instance, const TPropInfo& property) {
    if (property.Kind == TTypeKind::SubObject) {
        auto* const collection = dynamic_cast<TCollection*>(property.GetObj(instance));
        const TValueType type = ReadValue();
        if (type != vaCollection || !collection) {
            WrongType(type, collection ? "a collection" : "a property of the object");
        }
        FPath.push_back({&property, nullptr, -1, {}});
        return ReadItems(*collection, nullptr);
    }
    if (property.IsReadOnly()) {
        throw EUnknownProperty(Format("Property %s is read-only", {property.Name}));
    }
    switch (property.Kind) {
    case TTypeKind::Float: return property.SetFloat(instance, ReadFloat());
    case TTypeKind::String: return property.SetStr(instance, ReadString());
    case TTypeKind::Event: return ReadEvent(instance, property);
    case TTypeKind::Reference:
    case TTypeKind::Interface: return ReadReference(property);
    default: return property.SetOrd(instance, ReadOrdinal(property));
    }
}

int64_t TReader::ReadOrdinal(const TPropInfo& property) {
    const int64_t start = Position();
    const TValueType type = NextValue();
    switch (property.Kind) {
    case TTypeKind::Char: return static_cast<unsigned char>(ReadChar());
    case TTypeKind::Set: return ReadSet(*property.Enum);
    case TTypeKind::Enumeration:
        if (type == vaIdent || type == vaFalse || type == vaTrue) {
            const std::string name = ReadIdent();
            if (const auto ordinal = property.Enum->Find(name)) {
                return *ordinal;
            }
            Fail(start, Format("Invalid property value: %s is no %s", {name, property.Enum->Name}));
        }
        ReadValue();
        WrongType(type, property.Enum->Name);
    default:
        if (property.Idents && type == vaIdent) {
            const std::string name = ReadIdent();
            if (const auto value = property.Idents->Find(name)) {
                return *value;
            }
            Fail(start, Format("Invalid property value: %s is unknown", {name}));
        }
        return ReadInt64();
    }
}

void TReader::ReadEvent(TPersistent& instance, const TPropInfo& property) {
    const TValueType type = NextValue();
    if (type != vaIdent && type != vaNil) {
        ReadValue();
        WrongType(type, "the name of a method");
    }
    if (!FRoot) {
        ReadError("An event stands outside a form");
    }
    const std::string name = ReadIdent();
    property.SetEvent(instance, type == vaNil ? nullptr : FindMethod(*FRoot, name));
}

void TReader::ReadReference(const TPropInfo& property) {
    const int64_t start = Position();
    const TValueType type = NextValue();
    if (type != vaIdent && type != vaNil) {
        ReadValue();
        WrongType(type, "the name of a component");
    }
    if (!FComponent) {
        ReadError("A reference stands outside a component");
    }
    const std::string name = ReadIdent();
    FComponent->FState.Include(csFixups);
    FSession->Fixups.push_back({FComponent, FLookupRoot, FPath, &property, type == vaNil ? "" : name, start});
}

// --- Collections

void TReader::ReadCollection(TCollection& collection) {
    const TPathScope path(*this);
    ReadItems(collection, &collection);
}

/// `known` is the collection when no published property leads to it.
void TReader::ReadItems(TCollection& collection, TCollection* known) {
    const std::optional<TAlive> alive = known ? std::optional<TAlive>(*known) : std::nullopt;
    const detail::TRestore nesting(FNesting);
    Enter();
    AsOneUpdate(collection, [&] {
        collection.Clear();
        while (!EndOfList()) {
            const TValueType type = NextValue();
            if (type == vaInt8 || type == vaInt16 || type == vaInt32) {
                ReadInteger(); // a position, which the order tells anyway
            }
            ReadListBegin();
            TCollectionItem* const item = collection.Add();
            const TPathScope path(*this);
            FPath.push_back({nullptr, known, collection.Count() - 1, alive});
            ReadProperties(*item);
        }
        ReadListEnd();
    });
}

// --- References

void TReader::ResolveFixups() {
    for (const TFixup& fixup : FSession->Fixups) {
        if (!FSession->Known.Contains(fixup.Component) || !FSession->Known.Contains(fixup.LookupRoot)) {
            continue;
        }
        try {
            ResolveFixup(fixup);
        } catch (const EAbort&) {
            throw;
        } catch (const Exception& error) {
            const std::string what = fixup.Component->GetNamePath() + "." + fixup.Property->Name;
            const std::string message = ErrorReading(what, fixup.Position, error);
            if (!Error(message)) {
                throw TFailure(message, true);
            }
        }
    }
    for (const TFixup& fixup : FSession->Fixups) {
        if (FSession->Known.Contains(fixup.Component)) {
            fixup.Component->FState.Exclude(csFixups);
        }
    }
}

/// The object whose property it is; null when a later value has replaced it.
TObject* TReader::TFixup::FindOwner() const {
    TObject* object = Component;
    for (const TPathStep& step : Path) {
        if (step.Property) {
            object = Publishes(*object, *step.Property) ? step.Property->GetObj(*object) : nullptr;
        } else if (step.Alive && !*step.Alive) {
            object = nullptr;
        } else {
            auto* const collection = step.Collection ? step.Collection : dynamic_cast<TCollection*>(object);
            object = collection && step.Index < collection->Count() ? collection->GetItem(step.Index) : nullptr;
        }
        if (!object) {
            return nullptr;
        }
    }
    return Publishes(*object, *Property) ? object : nullptr;
}

void TReader::ResolveFixup(const TFixup& fixup) {
    TObject* const object = fixup.FindOwner();
    if (!object) {
        return;
    }
    DropPendingReference(*object, *fixup.Property);
    TComponent* const target = FindReference(fixup);
    try {
        fixup.Property->SetObj(*object, target);
    } catch (const EInvalidCast&) {
        if (!target || !target->IsPlaceholder()) { // the name of the component for which it stands in is kept
            throw;
        }
    }
    if (!target && !fixup.Name.empty()) {
        detail::AddPendingReference(
            {TAlive(*fixup.Component), [fixup] { return fixup.FindOwner(); }, fixup.Property, fixup.Name});
    }
}

TComponent* TReader::FindReference(const TFixup& fixup) {
    std::string name = fixup.Name;
    if (!name.empty()) {
        FOnReferenceName(*this, name);
    }
    if (name.empty()) {
        return nullptr;
    }
    if (TComponent* found = FindNested(fixup.LookupRoot, name)) {
        return found;
    }
    if (TComponent* found = FindNested(FRoot, name)) {
        return found;
    }
    const size_t dot = name.find('.');
    const std::string first = name.substr(0, dot);
    const std::string rest = dot == std::string::npos ? std::string() : name.substr(dot + 1);
    if (SameText(first, "Owner")) {
        return FindNested(fixup.LookupRoot, rest);
    }
    if (SameText(first, FRootName) || SameText(first, FRoot->Name())) {
        return FindNested(FRoot, rest);
    }
    return FindNested(FindGlobalComponent(first), rest);
}

} // namespace kx
