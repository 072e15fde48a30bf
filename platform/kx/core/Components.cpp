// SPDX-License-Identifier: MIT
// Components: owners, names, who is told when one goes, and the classes that form files may name.

#include "kx/core/Components.h"

#include "kx/core/KeptForm.h"

#include <algorithm>
#include <iterator>
#include <map>

namespace kx {

// --- TPersistent

const TClass& TPersistent::StaticClass() {
    static const TClassBuilder<TPersistent> cls("TPersistent", TObject::StaticClass());
    return cls.Class();
}

void TPersistent::Assign(const TPersistent* source) {
    if (source) {
        source->AssignTo(*this);
    } else {
        throw EConvertError(Format("Cannot assign a %s to a %s", {"nil", ClassName()}));
    }
}

void TPersistent::AssignTo(TPersistent& dest) const {
    throw EConvertError(Format("Cannot assign a %s to a %s", {ClassName(), dest.ClassName()}));
}

std::string TPersistent::GetNamePath() const {
    const TPersistent* owner = GetOwner();
    const std::string path = owner ? owner->GetNamePath() : std::string();
    return path.empty() ? ClassName() : path + "." + ClassName();
}

void TPersistent::DefineProperties(TFiler&) {}

// --- TComponent

const TClass& TComponent::StaticClass() {
    static const TClassBuilder<TComponent> cls("TComponent", TPersistent::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("Name", &TComponent::Name, &TComponent::SetName).Stored = [](const TObject&) { return false; };
        c.Property("Tag", &TComponent::Tag, &TComponent::SetTag).Default = 0;
    });
    return cls.Class();
}

TComponent::TComponent(TComponent* owner) {
    if (owner) {
        owner->InsertComponent(this);
    }
}

TComponent::~TComponent() {
    EndLife();
    Destroying();
    // Whoever asked to be told is told once; a listener may ask others to be told meanwhile, but not about this one.
    while (!FFreeNotifies.empty()) {
        TComponent* const listener = FFreeNotifies.back();
        RemoveFreeNotification(listener);
        Guarded([&] { listener->Notification(this, opRemove); });
    }
    DestroyComponents();
    if (FOwner) {
        FOwner->RemoveComponent(this);
    }
    if (auto* const tell = OnGone.load()) {
        tell(*this);
    }
}

void TComponent::BeforeDestruction() { Destroying(); }

void TComponent::Free() {
    if (!FGoing) {
        FGoing = true;
        TPersistent::Free();
    }
}

void TComponent::Destroying() {
    FGoing = true;
    MarkDestroying();
}

void TComponent::MarkDestroying() {
    if (IsDestroying()) {
        return;
    }
    FState.Include(csDestroying);
    for (TComponent* child : FComponents) {
        child->MarkDestroying();
    }
}

TComponent* TComponent::Components(int index) const {
    if (index < 0 || index >= ComponentCount()) {
        throw EListError(Format("List index out of bounds (%s)", {IntToStr(index)}));
    }
    return FComponents[static_cast<size_t>(index)];
}

int TComponent::ComponentIndex() const {
    if (!FOwner) {
        return -1;
    }
    const auto& siblings = FOwner->FComponents;
    return static_cast<int>(std::find(siblings.begin(), siblings.end(), this) - siblings.begin());
}

TComponent* TComponent::FindComponent(std::string_view name) const {
    const auto found = name.empty() ? FByName.end() : FByName.find(UpperCase(name));
    return found == FByName.end() ? nullptr : found->second;
}

void TComponent::InsertComponent(TComponent* component) {
    if (component->FOwner == this) {
        return;
    }
    if (!component->FName.empty() && FindComponent(component->FName)) {
        throw EComponentError(Format("A component named %s already exists", {component->FName}));
    }
    if (component->FOwner) {
        component->FOwner->RemoveComponent(component);
    }
    Insert(component);
    component->SetReference(true);
    if (IsDesigning()) {
        component->SetDesigning(true);
    }
    Notification(component, opInsert);
}

void TComponent::RemoveComponent(TComponent* component) {
    if (component->FOwner != this) {
        return;
    }
    component->CallOut([&] { Notification(component, opRemove); });
    if (component->FOwner == this) { // else it has been taken out meanwhile
        component->SetReference(false);
        Remove(component);
    }
}

void TComponent::DestroyComponents() {
    while (!FComponents.empty()) {
        TComponent* const component = FComponents.back();
        if (component->FGoing) {
            RemoveComponent(component); // its destruction goes on without its owner
        } else {
            component->Free(); // takes itself off the list
        }
    }
}

void TComponent::Insert(TComponent* component) {
    FComponents.push_back(component);
    component->FOwner = this;
    if (!component->FName.empty()) {
        FByName[UpperCase(component->FName)] = component;
    }
}

void TComponent::Remove(TComponent* component) {
    Unindex(component);
    // Components mostly go in the reverse order of their coming.
    const auto at = std::find(FComponents.rbegin(), FComponents.rend(), component);
    if (at != FComponents.rend()) {
        FComponents.erase(std::next(at).base());
    }
    component->FOwner = nullptr;
}

void TComponent::Unindex(TComponent* component) {
    const auto entry = FByName.find(UpperCase(component->FName));
    if (entry != FByName.end() && entry->second == component) {
        FByName.erase(entry);
    }
}

namespace {

/// Words of form files are no names: a reference to a component called True would be read as the value.
bool IsValidName(std::string_view text) {
    constexpr std::string_view words[] = {"True", "False", "nil", "Null"};
    return IsValidIdent(text) &&
           std::none_of(std::begin(words), std::end(words), [text](auto word) { return SameText(word, text); });
}

} // namespace

void TComponent::SetName(const std::string& value) {
    if (FName == value) {
        return;
    }
    if (!value.empty() && !IsValidName(value)) {
        throw EComponentError(Format("'%s' is not a valid component name", {value}));
    }
    if (FOwner) {
        FOwner->ValidateRename(this, FName, value);
    }
    SetReference(false);
    ChangeName(value);
    SetReference(true);
}

void TComponent::ChangeName(const std::string& value) {
    if (FOwner) {
        FOwner->Unindex(this);
    }
    FName = value;
    if (FOwner && !FName.empty()) {
        FOwner->FByName[UpperCase(FName)] = this;
    }
}

void TComponent::ValidateRename(TComponent* component, const std::string& currentName, const std::string& newName) {
    const TComponent* const other = FindComponent(newName);
    if (other && other != component && !SameText(currentName, newName)) {
        throw EComponentError(Format("A component named %s already exists", {newName}));
    }
}

void TComponent::SetReference(bool enable) {
    if (!FOwner || FName.empty()) {
        return;
    }
    const TFieldInfo* const field = FOwner->ClassType().FindField(FName);
    if (field && !field->Set(*FOwner, enable ? this : nullptr)) {
        throw EInvalidCast(Format("Component %s is a %s, not a %s", {FName, ClassName(), field->Class().Name()}));
    }
}

void TComponent::SetDesigning(bool value, bool children) {
    SetState(csDesigning, value);
    if (children) {
        for (TComponent* child : FComponents) {
            child->SetDesigning(value, true);
        }
    }
}

void TComponent::FreeNotification(TComponent* component) {
    if (component == this || component->FOwner == this || FOwner == component) {
        return; // owner and owned tell each other anyway
    }
    const auto add = [](TComponent* to, TComponent* listener) {
        auto& list = to->FFreeNotifies;
        if (std::find(list.begin(), list.end(), listener) == list.end()) {
            list.push_back(listener);
        }
    };
    add(component, this);
    add(this, component);
}

void TComponent::RemoveFreeNotification(TComponent* component) {
    std::erase(FFreeNotifies, component);
    std::erase(component->FFreeNotifies, this);
}

void TComponent::Notification(TComponent* component, TOperation operation) {
    if (operation == opRemove && component) {
        RemoveFreeNotification(component);
    }
}

void TComponent::SetParentComponent(TComponent*) {}
void TComponent::GetChildren(const TGetChildProc&, TComponent*) {}
void TComponent::Loaded() { FState.Exclude(csLoading); }

const std::string& TComponent::FormClassName() const {
    return FKept && !FKept->ClassName.empty() ? FKept->ClassName : ClassName();
}

bool TComponent::IsPlaceholder() const { return FKept && FKept->IsPlaceholder; }

bool IsValidIdent(std::string_view text) {
    const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'; };
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    return !text.empty() && isLetter(text[0]) &&
           std::all_of(text.begin(), text.end(), [&](char c) { return isLetter(c) || isDigit(c); });
}

// --- Registered classes

namespace {

std::map<std::string, const TClass*>& Registry() {
    static std::map<std::string, const TClass*> classes;
    return classes;
}

} // namespace

void RegisterClass(const TClass& cls) { Registry()[UpperCase(cls.Name())] = &cls; }

std::vector<const TClass*> RegisteredClasses() {
    std::vector<const TClass*> classes;
    for (const auto& [name, cls] : Registry()) {
        classes.push_back(cls);
    }
    return classes;
}

const TClass* GetClass(std::string_view name) {
    const auto found = Registry().find(UpperCase(name));
    return found == Registry().end() ? nullptr : found->second;
}

const TClass& FindClass(std::string_view name) {
    if (const TClass* cls = GetClass(name)) {
        return *cls;
    }
    throw EClassNotFound(Format("Class %s not found", {name}));
}

} // namespace kx
