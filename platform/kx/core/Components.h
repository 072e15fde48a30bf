// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Alive.h"
#include "kx/core/Barrier.h"
#include "kx/core/ClassBuilder.h"
#include "kx/core/SystemNames.h"

#include <atomic>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kx {

class TFiler;
class TReader;
class TWriter;

namespace detail {
struct TKept;
}

/// An object that can copy another one and be streamed.
class TPersistent : public TObject {
    KX_CLASS()

    /// Copies `source` into this object. A class that knows `source`'s class overrides it; otherwise the source is
    /// asked by its `AssignTo`. Null stands for the empty value where a class has one.
    /// @throws EConvertError "Cannot assign a %s to a %s" when neither side knows the other.
    virtual void Assign(const TPersistent* source);

    /// The object that this one is part of; null when there is none.
    virtual TPersistent* GetOwner() const { return nullptr; }

    /// Name for messages: the owner's name path, or the class name.
    virtual std::string GetNamePath() const;

    /// Announces values that are streamed though no published property holds them.
    virtual void DefineProperties(TFiler& filer);

protected:
    virtual void AssignTo(TPersistent& dest) const;

private:
    friend class TFiler;

    /// Where it keeps what its form file said; null when that belongs to an object around it.
    virtual std::unique_ptr<detail::TKept>* KeptPlace() { return nullptr; }
};

enum TComponentStateFlag : uint8_t {
    csLoading,    ///< Being read from a form file; `Loaded` has not run yet.
    csReading,    ///< Its own properties are being read just now.
    csWriting,    ///< Being written to a form file.
    csDestroying, ///< Will be gone soon.
    csDesigning,  ///< Manipulated in a form designer.
    csAncestor,   ///< Introduced in an ancestor form.
    csUpdating,   ///< Being updated to reflect changes in an ancestor form.
    csFixups,     ///< Refers to components that have not been read yet.
    csFreeNotification,
    csInline
};
using TComponentState = TSet<TComponentStateFlag>;

enum TOperation : uint8_t { opInsert, opRemove };

/// A named object with an owner, which frees it, and with components of its own. Form files hold components.
///
/// An owner frees its components by `Free`, wherever they live. A component on the stack, in a field or in a smart
/// pointer has no owner, or one that is sure to outlive it: when it goes first, it leaves its owner's list by itself.
class TComponent : public TPersistent {
    KX_CLASS()

    explicit TComponent(TComponent* owner = nullptr);
    ~TComponent() override;

    void BeforeDestruction() override;
    /// Does nothing while the component is being destroyed already, by whomever: a handler that runs meanwhile may free
    /// it again, or its owner.
    void Free() override;

    /// Marks the component and everything that it owns as going. Destructors of descendants call it first, so that
    /// whoever looks at a half-destroyed component can tell.
    void Destroying();

    /// The life of the component, for `Outlives` and `TAlive`. It ends in the destructor at the latest; a descendant
    /// that cannot be used any more from an earlier moment on ends it there.
    const TLifetime& Lifetime() const { return FLife; }

    TComponent* Owner() const { return FOwner; }
    int ComponentCount() const { return static_cast<int>(FComponents.size()); }
    /// @throws EListError for an index outside [0, ComponentCount).
    TComponent* Components(int index) const;
    /// All of them, to go through; only as long as none comes or goes.
    const std::vector<TComponent*>& Components() const { return FComponents; }
    int ComponentIndex() const;                             ///< Among the owner's components; -1 without an owner.
    TComponent* FindComponent(std::string_view name) const; ///< Any letter case; null when there is none.
    virtual void InsertComponent(TComponent* component);    ///< Becomes the owner of `component`.
    virtual void RemoveComponent(TComponent* component);    ///< Gives up `component` without freeing it.
    void DestroyComponents();

    const std::string& Name() const { return FName; }
    /// @throws EComponentError for a text that is no identifier or a word of form files (True, False, nil, Null), or a
    /// name that the owner's components have already.
    virtual void SetName(const std::string& value);
    intptr_t Tag() const { return FTag; }
    void SetTag(intptr_t value) { FTag = value; }
    /// Where a form designer shows a component that is no control: its left edge in the lower 16 bits, its top in the
    /// upper ones, both signed, in pixels of the form's client area. Form files hold them as Left and Top.
    int32_t DesignInfo() const { return FDesignInfo; }
    void SetDesignInfo(int32_t value) { FDesignInfo = value; }
    void DefineProperties(TFiler& filer) override; ///< Streams DesignInfo when the class publishes no Left or Top.

    TComponentState ComponentState() const { return FState; }
    bool IsDesigning() const { return FState.Contains(csDesigning); }
    bool IsLoading() const { return FState.Contains(csLoading); }
    bool IsDestroying() const { return FState.Contains(csDestroying); }
    bool IsGoing() const { return FGoing; } ///< Its own destruction is under way, not only that of its owner.
    /// Sets or clears csDesigning on the component and, with `children`, on everything that it owns.
    void SetDesigning(bool value, bool children = true);

    /// Has `component` told, by its `Notification`, when this one goes, and the other way round; once per pair.
    void FreeNotification(TComponent* component);
    void RemoveFreeNotification(TComponent* component);

    // --- Streaming

    /// Where the component shows; null for components that do not show.
    virtual TComponent* GetParentComponent() const { return nullptr; }
    bool HasParent() const { return GetParentComponent() != nullptr; }
    virtual void SetParentComponent(TComponent* parent);
    using TGetChildProc = std::function<void(TComponent* child)>;
    /// Calls `proc` for each component that a form file holds inside this one. `root` is the form being written.
    virtual void GetChildren(const TGetChildProc& proc, TComponent* root);
    /// Owner of the components read inside this one; null: the form that is being read.
    virtual TComponent* GetChildOwner() { return nullptr; }
    /// Runs on each component after the whole form file has been read.
    virtual void Loaded();
    virtual void ReadState(TReader& reader);
    virtual void WriteState(TWriter& writer);
    /// Name of the class that its form file gives it: that of its class, unless it was read in place of a class that is
    /// not there.
    const std::string& FormClassName() const;
    /// It stands in for a component whose class is not there, with all that the form file holds inside that one.
    bool IsPlaceholder() const;

    TPersistent* GetOwner() const override { return FOwner; }
    std::string GetNamePath() const override { return FName; }

protected:
    /// Told of each component that joins or leaves this one's ownership, and of the going of every component that it
    /// asked about by `FreeNotification`. Whoever keeps a reference to a component asks, so that telling costs nothing
    /// per sibling; descendants clear their references here and call the inherited method.
    virtual void Notification(TComponent* component, TOperation operation);
    /// Refuses a new name. @throws EComponentError
    virtual void ValidateRename(TComponent* component, const std::string& currentName, const std::string& newName);
    void ChangeName(const std::string& value);
    void EndLife() noexcept { FLife.End(); } ///< From now on the component counts as gone.
    /// Runs what may run foreign code. Out of a component that is being destroyed nothing may be thrown: there it is
    /// reported.
    template <class F> void CallOut(F&& foreign) {
        if (FGoing) {
            Guarded(std::forward<F>(foreign));
        } else {
            std::forward<F>(foreign)();
        }
    }
    void SetState(TComponentStateFlag flag, bool on) { on ? FState.Include(flag) : FState.Exclude(flag); }

    /// Binds the owner's published field of this component's name to it, or unbinds it.
    void SetReference(bool enable);

private:
    friend class TReader;
    friend class TWriter;

    /// Told of each component that goes. Who reads components from a stream asks to be, from the first reading on.
    static inline std::atomic<void (*)(TComponent& component)> OnGone{nullptr};

    std::unique_ptr<detail::TKept>* KeptPlace() override { return &FKept; }
    void MarkDestroying();
    void Insert(TComponent* component);
    void Remove(TComponent* component);
    void Unindex(TComponent* component);

    TLifetime FLife;
    TComponent* FOwner = nullptr;
    std::string FName;
    intptr_t FTag = 0;
    int32_t FDesignInfo = 0;
    TComponentState FState;
    bool FGoing = false;
    std::vector<TComponent*> FComponents;
    std::unordered_map<std::string, TComponent*> FByName; ///< Keys in upper case.
    std::vector<TComponent*> FFreeNotifies;
    std::unique_ptr<detail::TKept> FKept;
};

/// True for a letter or underscore followed by letters, digits and underscores.
bool IsValidIdent(std::string_view text);

// --- Classes that form files may name.

void RegisterClass(const TClass& cls);
inline void RegisterClassA(const TClass& cls) { RegisterClass(cls); } // as windows.h calls it in the sources
inline void RegisterClassW(const TClass& cls) { RegisterClass(cls); } // that include it behind this header
template <class... T> void RegisterClasses() { (RegisterClass(T::StaticClass()), ...); }
std::vector<const TClass*> RegisteredClasses(); ///< In the order of their names.
const TClass* GetClass(std::string_view name);  ///< Null when no such class is registered.
/// @throws EClassNotFound "Class %s not found"
const TClass& FindClass(std::string_view name);

} // namespace kx
