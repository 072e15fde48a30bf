// SPDX-License-Identifier: MIT
// A form that is open in the designer: selection, names and methods.

#include "designer/FormDesigner.h"

#include "kx/core/FormClass.h"

#include <algorithm>

namespace kx::designer {

bool AcceptsControls(const TComponent& component) {
    const auto* const control = dynamic_cast<const TWinControl*>(&component);
    return control && control->ControlStyle().Contains(csAcceptsControls);
}

std::string FirstFreeName(const std::string& className, const std::function<bool(const std::string& name)>& isTaken) {
    const std::string base = className.size() > 1 && className[0] == 'T' ? className.substr(1) : className;
    for (int i = 1;; ++i) {
        std::string name = base + IntToStr(i);
        if (!isTaken(name)) {
            return name;
        }
    }
}

TFormDesigner::TFormDesigner(const std::string& bytes, HWND parent, TAncestorFiles ancestors)
    : FParent(parent), FAncestors(std::move(ancestors)) {
    FForm = ReadForm(bytes, FParent, FAncestors);
    ReadAncestor();
    FUndo.Start(Write());
    FSelection = {FForm.get()};
    WatchSize();
}

TFormDesigner::~TFormDesigner() {
    FForm->SetOnSized(nullptr);
    NotifyDesignerClosed(*this, false);
}

// --- What the form inherits

void TFormDesigner::ReadAncestor() {
    FAncestor.reset();
    if (!FAncestors.empty()) {
        FAncestor = ReadForm(FAncestors.back(), nullptr, {FAncestors.begin(), FAncestors.end() - 1});
        FAncestor->SetName({}); // whoever looks for the ancestor's form means the one that is open
    }
}

void TFormDesigner::SetAncestors(TAncestorFiles value) {
    if (value == FAncestors) {
        return;
    }
    const std::vector<std::string> selected = SelectedNames();
    std::swap(FAncestors, value);
    try {
        Load(FUndo.State());
    } catch (...) {
        FAncestors = std::move(value);
        throw;
    }
    ReadAncestor();
    SelectNames(selected);
    Record("Ancestor");
}

bool TFormDesigner::IsInherited(const TComponent& component) const {
    return FAncestor && &component != FForm.get() && FAncestor->FindComponent(component.Name());
}

std::string TFormDesigner::AncestorClass() const { return FAncestor ? FAncestor->FormClassName() : std::string(); }

bool TFormDesigner::LacksAncestor() const { return !FAncestor && FormFlags(FUndo.State()).Contains(ffInherited); }

void TFormDesigner::CheckOwn(const std::vector<TComponent*>& components, const char* what) const {
    for (const TComponent* component : components) {
        if (IsInherited(*component)) {
            throw EDesignError(component->Name() + " comes from " + AncestorClass() + " and cannot be " + what);
        }
    }
}

// --- Selection

void TFormDesigner::Select(const TDesignSelection& selection) {
    if (FSelection == selection) {
        return;
    }
    FSelection = selection;
    FOnSelectionChanged();
    NotifySelectionChanged(*this, FSelection);
}

std::vector<TComponent*> TFormDesigner::SelectedComponents() const {
    std::vector<TComponent*> components;
    for (TPersistent* object : FSelection) {
        if (auto* const component = dynamic_cast<TComponent*>(object)) {
            components.push_back(component);
        }
    }
    return components;
}

std::vector<TControl*> TFormDesigner::SelectedControls() const {
    std::vector<TControl*> controls;
    for (TPersistent* object : FSelection) {
        auto* const control = dynamic_cast<TControl*>(object);
        if (control && control != FForm.get()) {
            controls.push_back(control);
        }
    }
    return controls;
}

TComponent* TFormDesigner::Primary() const {
    const std::vector<TComponent*> selected = SelectedComponents();
    return selected.empty() ? nullptr : selected.front();
}

bool TFormDesigner::IsSelected(const TComponent& component) const {
    return std::ranges::find(FSelection, &component) != FSelection.end();
}

std::vector<TComponent*> TFormDesigner::AllComponents() const {
    std::vector<TComponent*> all{FForm.get()};
    for (size_t i = 0; i < all.size(); ++i) {
        std::vector<TComponent*> inside;
        all[i]->GetChildren([&](TComponent* child) { inside.push_back(child); }, FForm.get());
        all.insert(all.begin() + static_cast<std::ptrdiff_t>(i) + 1, inside.begin(), inside.end());
    }
    return all;
}

void TFormDesigner::SelectAll() {
    TDesignSelection all;
    for (TComponent* component : AllComponents()) {
        if (component != FForm.get()) {
            all.push_back(component);
        }
    }
    Select(all.empty() ? TDesignSelection{FForm.get()} : all);
}

void TFormDesigner::SelectParent() {
    const TComponent* const primary = Primary();
    TComponent* const parent = primary ? primary->GetParentComponent() : nullptr;
    SelectOne(parent ? *parent : *FForm);
}

std::vector<std::string> TFormDesigner::SelectedNames() const {
    std::vector<std::string> names;
    for (const TComponent* component : SelectedComponents()) {
        names.push_back(component->Name());
    }
    return names;
}

void TFormDesigner::SelectNames(const std::vector<std::string>& names) {
    TDesignSelection selection;
    for (const std::string& name : names) {
        if (TComponent* const component = Find(name)) {
            selection.push_back(component);
        }
    }
    if (selection.empty()) {
        selection.push_back(FForm.get());
    }
    Select(selection);
}

// --- Names

TComponent* TFormDesigner::Find(const std::string& name) const {
    return SameText(name, FForm->Name()) ? FForm.get() : name.empty() ? nullptr : FForm->FindComponent(name);
}

std::string TFormDesigner::UniqueName(const std::string& className) const {
    return FirstFreeName(className, [this](const std::string& name) { return Find(name) != nullptr; });
}

// --- Methods

namespace {

void CollectMethods(const TPersistent& object, std::map<std::string, std::type_index>& methods) {
    for (const TPropInfo* info : object.ClassType().Properties()) {
        if (info->Kind == TTypeKind::Event) {
            const TEventTargetPtr target = info->GetEvent(object);
            if (target && !target->MethodName().empty()) {
                methods.emplace(target->MethodName(), info->Signature);
            }
        }
    }
}

} // namespace

void TFormDesigner::CheckName(const std::string& name) const {
    if (!IsValidIdent(name) || IsCppKeyword(name)) {
        throw EComponentError("'" + name + "' cannot be the name of a component");
    }
    if (MethodExists(name)) {
        throw EComponentError("'" + name + "' is the name of a method");
    }
}

std::map<std::string, std::type_index> TFormDesigner::Methods() const {
    std::map<std::string, std::type_index> methods = FNewMethods;
    CollectMethods(*FForm, methods);
    for (const TComponent* component : FForm->TComponent::Components()) {
        CollectMethods(*component, methods);
    }
    return methods;
}

std::vector<std::string> TFormDesigner::MethodsOf(std::type_index signature) const {
    std::vector<std::string> names;
    for (const auto& [name, type] : Methods()) {
        if (type == signature) {
            names.push_back(name);
        }
    }
    return names;
}

bool TFormDesigner::MethodExists(const std::string& name) const { return Methods().count(name) > 0; }

TEventTargetPtr TFormDesigner::Method(const std::string& name, const TPropInfo& event) {
    if (!IsValidIdent(name) || IsCppKeyword(name)) {
        throw EPropertyError("'" + name + "' cannot be the name of a method");
    }
    if (Find(name)) {
        throw EPropertyError("'" + name + "' is the name of a component");
    }
    const auto methods = Methods();
    const auto found = methods.find(name);
    if (found != methods.end() && found->second != event.Signature) {
        throw EPropertyError("'" + name + "' handles events of another kind");
    }
    FNewMethods.emplace(name, event.Signature);
    return std::make_shared<TMethodName>(name);
}

} // namespace kx::designer
