// SPDX-License-Identifier: MIT
// Finds the editors of properties.

#include "kx/ide/PropertyEditors.h"

#include "kx/core/Barrier.h"

#include <tuple>

namespace kx {

namespace {

struct TRegistration {
    TPropertyType Type;
    const TClass* Holder;
    std::string Name;
    TPropertyEditorMaker Make;
};

std::vector<TRegistration>& Registrations() {
    static std::vector<TRegistration> registrations;
    return registrations;
}

/// How many classes stand above it.
int Depth(const TClass& cls) {
    int depth = 0;
    for (const TClass* parent = cls.Parent(); parent; parent = parent->Parent()) {
        ++depth;
    }
    return depth;
}

/// How specific the registration is for the property; the first element is 0 when it does not fit.
std::tuple<int, int, int> Specificity(const TRegistration& registration, const TClass& holder,
                                      const TPropInfo& property) {
    const int type = registration.Type.Fit(property);
    if (type == 0 || (registration.Holder && !holder.InheritsFrom(*registration.Holder)) ||
        (!registration.Name.empty() && !SameText(registration.Name, property.Name))) {
        return {};
    }
    return {registration.Holder ? 2 + Depth(*registration.Holder) : 1, registration.Name.empty() ? 0 : 1, type};
}

/// Null when nobody has registered an editor for the property, or when it is hidden.
const TPropertyEditorMaker* MakerFor(const TClass& holder, const TPropInfo& property) {
    const TRegistration* best = nullptr;
    std::tuple<int, int, int> bestSpecificity;
    for (const TRegistration& registration : Registrations()) {
        const auto specificity = Specificity(registration, holder, property);
        if (std::get<0>(specificity) > 0 && specificity >= bestSpecificity) {
            best = &registration;
            bestSpecificity = specificity;
        }
    }
    return best && best->Make ? &best->Make : nullptr;
}

/// The property of that name, type and editor in all selected objects; empty when one does not have it.
std::vector<TInstanceProperty> InAll(const TDesignSelection& selection, const TPropInfo& first,
                                     const TPropertyEditorMaker& make) {
    std::vector<TInstanceProperty> properties;
    for (TPersistent* object : selection) {
        const TPropInfo* info = object->ClassType().FindProperty(first.Name);
        if (!info || info->Kind != first.Kind || info->TypeName() != first.TypeName() ||
            MakerFor(object->ClassType(), *info) != &make) {
            return {};
        }
        properties.push_back({object, info});
    }
    return properties;
}

} // namespace

int TPropertyType::Fit(const TPropInfo& property) const {
    if (FKind) {
        return property.Kind == *FKind ? 1 : 0;
    }
    if (!FClass) {
        return SameText(property.TypeName(), FName) ? 2 : 0;
    }
    return property.Class && property.Class().InheritsFrom(*FClass) ? 2 + Depth(*FClass) : 0;
}

void RegisterPropertyEditor(const TPropertyType& type, const TClass* holder, const std::string& name,
                            TPropertyEditorMaker make) {
    Registrations().push_back({type, holder, name, std::move(make)});
}

std::vector<TPropertyEditorPtr> GetPropertyEditors(IDesigner& designer, const TDesignSelection& selection,
                                                   const std::function<bool(const TPropInfo&)>& wanted) {
    std::vector<TPropertyEditorPtr> editors;
    if (selection.empty()) {
        return editors;
    }
    const TClass& cls = selection.front()->ClassType();
    for (const TPropInfo* info : cls.Properties()) {
        if (wanted && !wanted(*info)) {
            continue;
        }
        const TPropertyEditorMaker* make = MakerFor(cls, *info);
        std::vector<TInstanceProperty> properties;
        if (make) {
            properties = InAll(selection, *info, *make);
        }
        if (properties.empty()) {
            continue;
        }
        // An editor that fails here costs its own property only.
        Guarded([&] {
            TPropertyEditorPtr editor = (*make)(designer, std::move(properties));
            if (editor && (selection.size() == 1 || editor->GetAttributes().Contains(paMultiSelect))) {
                editors.push_back(std::move(editor));
            }
        });
    }
    return editors;
}

/// Of the components among the objects. The other objects are parts of components, and of those nobody tells.
std::vector<TAlive> TPropertyEditor::Lives() const {
    static const TLifetime endless;
    std::vector<TAlive> lives;
    for (const TInstanceProperty& property : FProperties) {
        const auto* const component = dynamic_cast<const TComponent*>(property.Instance);
        lives.push_back(component ? TAlive(*component) : TAlive(endless));
    }
    return lives;
}

bool TPropertyEditor::AllEqual() const { return PropCount() == 1; }

bool TPropertyEditor::IsDefault() const {
    for (const TInstanceProperty& property : FProperties) {
        const TPropInfo& info = *property.Info;
        const bool isDefault = !info.IsStored(*property.Instance) ||
                               (info.IsOrdinal() ? info.Default && info.GetOrd(*property.Instance) == *info.Default
                                : info.Kind == TTypeKind::String    ? info.GetStr(*property.Instance).empty()
                                : info.Kind == TTypeKind::Float     ? info.GetFloat(*property.Instance) == 0
                                : info.Kind == TTypeKind::Event     ? !info.GetEvent(*property.Instance)
                                : info.Kind == TTypeKind::SubObject ? false
                                                                    : !info.GetObj(*property.Instance));
        if (!isDefault) {
            return false;
        }
    }
    return true;
}

} // namespace kx
