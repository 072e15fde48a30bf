// References that wait for forms to come.

#include "kx/core/GlobalReferences.h"

#include "kx/core/Barrier.h"

#include <algorithm>
#include <memory>
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

using TPendingReferences = std::vector<TPendingReference>;

/// Null when there are none. A mere pointer, since GCC's runtime library for Windows frees the memory of a thread's
/// variables before it runs their destructors.
thread_local TPendingReferences* Pending = nullptr;

/// Forgets those of which `isDone` says so, and those without a component.
template <class F> void ForgetPending(F isDone) {
    if (Pending) {
        std::erase_if(*Pending, [&](const TPendingReference& one) { return !one.Alive || isDone(one); });
        if (Pending->empty()) {
            delete std::exchange(Pending, nullptr);
        }
    }
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
    const std::unique_ptr<TPendingReferences> all(std::exchange(Pending, nullptr));
    std::vector<std::pair<TPendingReference, TComponent*>> ready;
    for (const TPendingReference& reference : *all) {
        TComponent* const target = reference.Alive ? FindTarget(reference.Name) : nullptr;
        if (target) {
            ready.emplace_back(reference, target);
        } else if (reference.Alive) {
            detail::AddPendingReference(reference);
        }
    }
    std::vector<TAlive> targets;
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
    if (Pending) {
        for (const TPendingReference& reference : *Pending) {
            if (reference.Alive && reference.Property == &property && reference.Owner() == &instance) {
                return reference.Name;
            }
        }
    }
    return {};
}

void DropPendingReference(const TObject& instance, const TPropInfo& property) {
    ForgetPending([&](const TPendingReference& reference) {
        return reference.Property == &property && reference.Owner() == &instance;
    });
}

void detail::AddPendingReference(TPendingReference reference) {
    ForgetPending([](const TPendingReference&) { return false; });
    if (!Pending) {
        Pending = new TPendingReferences;
    }
    Pending->push_back(std::move(reference));
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
