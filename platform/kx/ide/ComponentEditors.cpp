// SPDX-License-Identifier: MIT
// Finds the editor of a component.

#include "kx/ide/ComponentEditors.h"

#include <unordered_map>

namespace kx {

namespace {

std::unordered_map<const TClass*, TComponentEditorMaker>& Makers() {
    static std::unordered_map<const TClass*, TComponentEditorMaker> makers;
    return makers;
}

} // namespace

void RegisterComponentEditor(const TClass& cls, TComponentEditorMaker make) { Makers()[&cls] = std::move(make); }

std::unique_ptr<TComponentEditor> GetComponentEditor(TComponent& component, IDesigner& designer) {
    for (const TClass* cls = &component.ClassType(); cls; cls = cls->Parent()) {
        const auto found = Makers().find(cls);
        if (found != Makers().end()) {
            return found->second(component, designer);
        }
    }
    return std::make_unique<TComponentEditor>(component, designer);
}

} // namespace kx
