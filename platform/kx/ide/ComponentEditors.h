// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ide/Designer.h"

#include <functional>
#include <memory>

namespace kx {

/// What the user can do with a component in the designer: the commands of its menu, its verbs. Lives no longer than the
/// component and the designer.
class TComponentEditor {
public:
    TComponentEditor(TComponent& component, IDesigner& designer) : FComponent(component), FDesigner(designer) {}
    TComponentEditor(const TComponentEditor&) = delete;
    TComponentEditor& operator=(const TComponentEditor&) = delete;
    virtual ~TComponentEditor() = default;

    TComponent& Component() const { return FComponent; }
    IDesigner& Designer() const { return FDesigner; }

    virtual void ExecuteVerb(int) {}
    virtual std::string GetVerb(int) const { return {}; } ///< The command's text in the menu.
    virtual int GetVerbCount() const { return 0; }
    /// What a double click does: the first verb.
    virtual void Edit() {
        if (GetVerbCount() > 0) {
            ExecuteVerb(0);
        }
    }

private:
    TComponent& FComponent;
    IDesigner& FDesigner;
};

using TComponentEditorMaker =
    std::function<std::unique_ptr<TComponentEditor>(TComponent& component, IDesigner& designer)>;

/// From now on components of that class, and of its descendants that have no editor of their own, get this editor. Of
/// two for the same class the later one holds.
void RegisterComponentEditor(const TClass& cls, TComponentEditorMaker make);
template <class TEditor> void RegisterComponentEditor(const TClass& cls) {
    RegisterComponentEditor(cls, [](TComponent& component, IDesigner& designer) -> std::unique_ptr<TComponentEditor> {
        return std::make_unique<TEditor>(component, designer);
    });
}

/// The editor of the nearest class that has one, else one without verbs.
std::unique_ptr<TComponentEditor> GetComponentEditor(TComponent& component, IDesigner& designer);

} // namespace kx
