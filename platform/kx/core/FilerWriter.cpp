// SPDX-License-Identifier: MIT
// Writes components in the binary form.

#include "kx/core/Filer.h"

#include "kx/core/FilerTools.h"
#include "kx/core/TypInfo.h"

namespace kx {

namespace {

std::string EventName(const TPropInfo& property, const TObject& instance) {
    const TEventTargetPtr target = property.GetEvent(instance);
    return target ? target->MethodName() : std::string();
}

/// Name of a component that `owner` owns, itself or through others: "Button1", "Frame1.Button1". Empty when it does
/// not.
std::string NameBelow(const TComponent* component, const TComponent* owner) {
    std::string path;
    for (; component && component != owner; component = component->Owner()) {
        if (component->Name().empty()) {
            return {};
        }
        path = component->Name() + (path.empty() ? "" : "." + path);
    }
    return component ? path : std::string();
}

/// Name of a component of another form: as far up as the form that is found by its name.
std::string GlobalName(const TComponent* component) {
    std::string path = component->Name();
    while (!path.empty() && FindGlobalComponent(component->Name()) != component) {
        component = component->Owner();
        if (!component || component->Name().empty()) {
            break;
        }
        path = component->Name() + "." + path;
    }
    return path;
}

/// How a reference of the form `lookupRoot`, part of the form `root`, names its target; empty when it has no name.
std::string ReferenceName(const TObject* object, const TComponent* lookupRoot, const TComponent* root) {
    const auto* const component = dynamic_cast<const TComponent*>(object);
    if (!component) {
        return {};
    }
    if (component == lookupRoot) {
        return component->FindComponent("Owner") ? component->Name() : "Owner";
    }
    std::string name = NameBelow(component, lookupRoot);
    if (!name.empty() || !root || component->Name().empty()) {
        return name;
    }
    if (component == root) {
        return root->Name();
    }
    const std::string nameInRoot = NameBelow(component, root);
    return nameInRoot.empty() ? GlobalName(component) : root->Name() + "." + nameInRoot;
}

} // namespace

// --- Properties

void TWriter::Enter() {
    if (++FNesting > MaxFormNesting) {
        throw EWriteError("The form is nested too deeply");
    }
}

void TWriter::WriteProperties(TPersistent& instance) {
    for (const TPropInfo* property : instance.ClassType().Properties()) {
        if (property->IsStored(instance)) {
            WriteProperty(instance, *property);
        }
    }
    instance.DefineProperties(*this);
}

void TWriter::WritePropName(std::string_view name) {
    if (FPropertyStarts) {
        FPropertyStarts->push_back(FBuffer.size());
    }
    WriteStr(FPrefix + std::string(name));
}

/// The ancestor, when it has this very property; else null.
const TObject* TWriter::AncestorWith(const TPropInfo& property) const {
    return FAncestor && FAncestor->ClassType().FindProperty(property.Name) == &property ? FAncestor : nullptr;
}

void TWriter::WriteProperty(TPersistent& instance, const TPropInfo& property) {
    if (property.Kind == TTypeKind::SubObject) {
        return WriteSubObject(instance, property);
    }
    if (property.IsReadOnly()) {
        return;
    }
    switch (property.Kind) {
    case TTypeKind::Float: return WriteFloatProperty(instance, property);
    case TTypeKind::String: return WriteStringProperty(instance, property);
    case TTypeKind::Event: return WriteEvent(instance, property);
    case TTypeKind::Reference:
    case TTypeKind::Interface: return WriteReference(instance, property);
    default: return WriteOrdinal(instance, property);
    }
}

void TWriter::WriteOrdinal(const TPersistent& instance, const TPropInfo& property) {
    const int64_t value = property.GetOrd(instance);
    const TObject* const ancestor = AncestorWith(property);
    if (ancestor ? property.GetOrd(*ancestor) == value : property.Default == value) {
        return;
    }
    WritePropName(property.Name);
    switch (property.Kind) {
    case TTypeKind::Enumeration: return WriteIdent(property.Enum->NameOf(value));
    case TTypeKind::Set: return WriteSet(*property.Enum, static_cast<uint32_t>(value));
    case TTypeKind::Char: return WriteChar(static_cast<char>(value));
    default:
        if (const std::string* name =
                property.Idents ? property.Idents->NameOf(static_cast<int32_t>(value)) : nullptr) {
            return WriteIdent(*name);
        }
        return WriteInteger(value);
    }
}

void TWriter::WriteFloatProperty(const TPersistent& instance, const TPropInfo& property) {
    const double value = property.GetFloat(instance);
    const TObject* const ancestor = AncestorWith(property);
    const bool isDefault = ancestor
                               ? std::bit_cast<uint64_t>(property.GetFloat(*ancestor)) == std::bit_cast<uint64_t>(value)
                               : !property.Stored && std::bit_cast<uint64_t>(value) == 0;
    if (!isDefault) {
        WritePropName(property.Name);
        WriteFloat(value);
    }
}

void TWriter::WriteStringProperty(const TPersistent& instance, const TPropInfo& property) {
    const std::string value = property.GetStr(instance);
    const TObject* const ancestor = AncestorWith(property);
    if (ancestor ? property.GetStr(*ancestor) != value : property.Stored || !value.empty()) {
        WritePropName(property.Name);
        WriteString(value);
    }
}

void TWriter::WriteReference(const TPersistent& instance, const TPropInfo& property) {
    const auto nameOf = [&property](const TObject& object, const TComponent* lookupRoot, const TComponent* root) {
        const TObject* const target = property.GetObj(object);
        return target ? ReferenceName(target, lookupRoot, root) : PendingReference(object, property);
    };
    const TObject* const target = property.GetObj(instance);
    const std::string name = nameOf(instance, FLookupRoot, FRoot);
    if (target && name.empty()) {
        return; // a component without a name cannot be found again
    }
    const TObject* const ancestor = AncestorWith(property);
    const bool isDefault =
        ancestor ? nameOf(*ancestor, FLookupAncestor, FRootAncestor) == name : !property.Stored && name.empty();
    if (!isDefault) {
        WritePropName(property.Name);
        WriteIdent(name.empty() ? "nil" : name);
    }
}

void TWriter::WriteEvent(const TPersistent& instance, const TPropInfo& property) {
    const TEventTargetPtr target = property.GetEvent(instance);
    const auto* const receiver = target ? dynamic_cast<const TComponent*>(target->Receiver()) : nullptr;
    if (receiver && receiver != FRoot && receiver->ComponentState().Contains(csInline)) {
        return; // a frame's own method, which its own form file names; the form does not know it
    }
    const std::string name = EventName(property, instance);
    if (name.empty() && property.GetEvent(instance)) {
        return; // a handler without a name cannot be found again
    }
    const TObject* const ancestor = AncestorWith(property);
    if ((ancestor ? EventName(property, *ancestor) : std::string()) != name) {
        WritePropName(property.Name);
        WriteIdent(name.empty() ? "nil" : name);
    }
}

void TWriter::WriteSubObject(const TPersistent& instance, const TPropInfo& property) {
    auto* const part = dynamic_cast<TPersistent*>(property.GetObj(instance));
    const TObject* const ancestor = AncestorWith(property);
    auto* const ancestorPart = ancestor ? dynamic_cast<TPersistent*>(property.GetObj(*ancestor)) : nullptr;
    if (const auto* collection = dynamic_cast<TCollection*>(part)) {
        const auto* const ancestorCollection = dynamic_cast<TCollection*>(ancestorPart);
        if (!ancestorCollection || !EqualsAncestor(*collection, *ancestorCollection)) {
            WritePropName(property.Name);
            WriteCollection(*collection);
        }
    } else if (part) {
        const detail::TRestore prefix(FPrefix, FPrefix + property.Name + ".");
        if (FPrefix.size() > detail::MaxShortString) { // an object that is part of itself never ends
            throw EWriteError("Objects are nested too deeply");
        }
        const detail::TRestore ancestorObject(FAncestor, ancestorPart);
        WriteProperties(*part);
    }
}

// --- Collections

void TWriter::WriteCollection(const TCollection& collection) {
    const detail::TRestore nesting(FNesting);
    Enter();
    const detail::TRestore prefix(FPrefix, {});
    const detail::TRestore<TPersistent*> ancestor(FAncestor, nullptr);
    const detail::TRestore<std::vector<size_t>*> starts(FPropertyStarts, nullptr);
    WriteValue(vaCollection);
    for (int i = 0; i < collection.Count(); ++i) {
        WriteListBegin();
        WriteInstance(*collection.GetItem(i));
        WriteListEnd();
    }
    WriteListEnd();
}

/// Collections are equal when they would be written alike.
bool TWriter::EqualsAncestor(const TCollection& collection, const TCollection& ancestor) {
    const auto written = [this](const TCollection& items, TComponent* root, TComponent* lookupRoot) {
        TWriter writer(FStream); // never flushed
        writer.FRoot = root;
        writer.FLookupRoot = lookupRoot;
        writer.FNesting = FNesting;
        writer.FMode = TMode::Plain;
        writer.WriteCollection(items);
        return std::move(writer.FBuffer);
    };
    return collection.Count() == ancestor.Count() &&
           written(collection, FRoot, FLookupRoot) == written(ancestor, FRootAncestor, FLookupAncestor);
}

// --- Values without a published property

void TWriter::DefineProperty(std::string_view name, const TReaderProc&, const TWriterProc& write, bool hasData) {
    if (hasData && write) {
        WritePropName(name);
        write(*this);
    }
}

void TWriter::DefineBinaryProperty(std::string_view name, const TStreamProc&, const TStreamProc& write, bool hasData) {
    if (hasData && write) {
        TMemoryStream block;
        write(block);
        WritePropName(name);
        WriteBinary(block.Bytes());
    }
}

} // namespace kx
