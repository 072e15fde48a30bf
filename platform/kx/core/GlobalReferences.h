// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Components.h"
#include "kx/core/TypInfo.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace kx {

// --- Components of other forms, for references that the form itself does not resolve.

using TFindGlobalComponent = TComponent* (*)(const std::string& name);
void RegisterFindGlobalComponentProc(TFindGlobalComponent find);
void UnregisterFindGlobalComponentProc(TFindGlobalComponent find);
TComponent* FindGlobalComponent(const std::string& name); ///< Asks the latest first; null when nobody knows it.

// --- References to components of forms that are not there yet. What a form file names and nobody knows waits, as long
// as its component lives: each form that is read afterwards sets what waits for it, if FindGlobalComponent finds it.
// A writer writes the name meanwhile. Forms wait and come in one thread.

/// Sets the references that wait for a form that is there now. Readers do it; so does who makes a form without one. A
/// reference that has got another target meanwhile keeps it.
void GlobalFixupReferences();

/// The name that the property of `instance` waits for; empty when it does not wait.
std::string PendingReference(const TObject& instance, const TPropInfo& property);
/// It waits no more.
void DropPendingReference(const TObject& instance, const TPropInfo& property);

namespace detail {

struct TPendingReference {
    TAlive Alive;                    ///< Of the component.
    std::function<TObject*()> Owner; ///< The object that has the property: the component, or a part of it; or null.
    const TPropInfo* Property;
    std::string Name;
    uint64_t Number = 0; ///< Ascends in the order of their coming.
};
void AddPendingReference(TPendingReference reference);

/// The component that a path of names leads to; null when there is none.
TComponent* FindNested(TComponent* from, std::string_view path);

} // namespace detail

} // namespace kx
