// SPDX-License-Identifier: MIT
// References that wait for forms to come.

#include "kx/core/GlobalReferences.h"

#include "kx/core/Barrier.h"

#include <algorithm>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kx {

// --- Components of other forms

namespace {

std::vector<TFindGlobalComponent>& GlobalFinders() {
    static std::vector<TFindGlobalComponent> finders;
    return finders;
}

} // namespace

void RegisterFindGlobalComponentProc(TFindGlobalComponent find) {
    UnregisterFindGlobalComponentProc(find);
    GlobalFinders().push_back(find);
}

void UnregisterFindGlobalComponentProc(TFindGlobalComponent find) { std::erase(GlobalFinders(), find); }

TComponent* FindGlobalComponent(const std::string& name) {
    const auto& finders = GlobalFinders();
    for (size_t i = finders.size(); i-- > 0;) {
        if (TComponent* component = finders[i](name)) {
            return component;
        }
    }
    return nullptr;
}

// --- References that wait

namespace {

using detail::TPendingReference;

/// By the component that holds the reference, itself or through its parts; null for objects that belong to none.
using TPendingReferences = std::unordered_multimap<const TComponent*, TPendingReference>;

/// Null when there are none. A mere pointer, since GCC's runtime library for Windows frees the memory of a thread's
/// variables before it runs their destructors.
thread_local TPendingReferences* Pending = nullptr;

const TComponent* ComponentOf(const TObject& instance) {
    for (const auto* part = dynamic_cast<const TPersistent*>(&instance); part; part = part->GetOwner()) {
        if (const auto* component = dynamic_cast<const TComponent*>(part)) {
            return component;
        }
    }
    return nullptr;
}

/// The reference of that property, or the end.
TPendingReferences::iterator FindPending(const TObject& instance, const TPropInfo& property) {
    const auto [begin, end] = Pending->equal_range(ComponentOf(instance));
    const auto found = std::find_if(begin, end, [&](const auto& entry) {
        const TPendingReference& one = entry.second;
        return one.Alive && one.Property == &property && one.Owner() == &instance;
    });
    return found == end ? Pending->end() : found;
}

TComponent* FindTarget(const std::string& name) {
    const size_t dot = std::min(name.find('.'), name.size());
    const std::string_view rest = std::string_view(name).substr(std::min(dot + 1, name.size()));
    return detail::FindNested(FindGlobalComponent(name.substr(0, dot)), rest);
}

void SetReference(const TPendingReference& reference, TComponent& target) {
    TObject* const object = reference.Alive ? reference.Owner() : nullptr;
    if (object && !reference.Property->GetObj(*object)) {
        reference.Property->SetObj(*object, &target);
    }
}

} // namespace

void GlobalFixupReferences() {
    if (!Pending) {
        return;
    }
    const std::unique_ptr<TPendingReferences> pending(std::exchange(Pending, nullptr));
    std::vector<TPendingReference> all;
    for (const auto& [component, reference] : *pending) {
        if (reference.Alive) {
            all.push_back(reference);
        }
    }
    std::ranges::sort(all, {}, &TPendingReference::Number);
    std::vector<std::pair<TPendingReference, TComponent*>> ready;
    for (const TPendingReference& reference : all) {
        if (TComponent* const target = FindTarget(reference.Name)) {
            ready.emplace_back(reference, target);
        } else {
            detail::AddPendingReference(reference);
        }
    }
    std::vector<TAlive> targets;
    targets.reserve(ready.size());
    for (const auto& [reference, target] : ready) {
        targets.emplace_back(*target);
    }
    for (size_t i = 0; i < ready.size(); ++i) {
        if (targets[i]) { // what a setter runs may free it
            Guarded([&] { SetReference(ready[i].first, *ready[i].second); });
        }
    }
}

std::string PendingReference(const TObject& instance, const TPropInfo& property) {
    if (!Pending) {
        return {};
    }
    const auto found = FindPending(instance, property);
    return found == Pending->end() ? std::string() : found->second.Name;
}

void DropPendingReference(const TObject& instance, const TPropInfo& property) {
    if (!Pending) {
        return;
    }
    for (auto found = FindPending(instance, property); found != Pending->end();
         found = FindPending(instance, property)) {
        Pending->erase(found);
    }
    if (Pending->empty()) {
        delete std::exchange(Pending, nullptr);
    }
}

void detail::AddPendingReference(TPendingReference reference) {
    const TObject* const owner = reference.Owner();
    if (!owner) {
        return; // a later value has replaced it
    }
    if (!Pending) {
        Pending = new TPendingReferences;
    }
    thread_local uint64_t number = 0;
    reference.Number = ++number;
    Pending->emplace(ComponentOf(*owner), std::move(reference));
}

TComponent* detail::FindNested(TComponent* from, std::string_view path) {
    while (from && !path.empty()) {
        const size_t dot = path.find('.');
        from = from->FindComponent(path.substr(0, dot));
        path = dot == std::string_view::npos ? std::string_view{} : path.substr(dot + 1);
    }
    return from;
}

} // namespace kx
