// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Delegate.h"
#include "kx/core/SysUtils.h"

#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeindex>
#include <unordered_map>
#include <vector>

namespace kx {

class TClass;
class TComponent;
class TPropInfo;

namespace detail {
struct TPropShape;
}

/// Base of every object that has a class identity.
class TObject {
public:
    TObject() = default;
    TObject(const TObject&) = delete;
    TObject& operator=(const TObject&) = delete;
    virtual ~TObject() = default;

    static const TClass& StaticClass();
    virtual const TClass& ClassType() const { return StaticClass(); }

    const std::string& ClassName() const;
    bool InheritsFrom(const TClass& ancestor) const;

    /// Runs on the whole object, before its first destructor, when it is freed by `Free`.
    virtual void BeforeDestruction() {}

    /// Destroys a heap object; the way in which owners free what they own. Nothing can stop it: what
    /// `BeforeDestruction` throws is reported.
    virtual void Free();
};

/// Declares a class's identity; stands first in the class body and leaves the access at `public`.
/// The class's source file defines `StaticClass` with a `TClassBuilder`.
#define KX_CLASS()                                                                                                     \
public:                                                                                                                \
    static const ::kx::TClass& StaticClass();                                                                          \
    const ::kx::TClass& ClassType() const override { return StaticClass(); }

namespace detail {

/// A pointer to some member of a class, or null. What a class publishes is described by such data, not by code of its
/// own for each property: every program carries the descriptions of all classes that it uses.
class TMemberPointer {
public:
    TMemberPointer(std::nullptr_t = nullptr) {}
    template <class M>
    requires std::is_member_pointer_v<M> TMemberPointer(M member) {
        static_assert(sizeof member <= sizeof FBytes);
        std::memcpy(FBytes, &member, sizeof member);
    }

    /// M is the type that it was made from.
    template <class M> M As() const {
        M member;
        std::memcpy(&member, FBytes, sizeof member);
        return member;
    }

private:
    class TSome; // never defined: pointers to its members have the size of the largest
    alignas(void*) unsigned char FBytes[sizeof(void(TSome::*)())] = {};
};

} // namespace detail

/// A published method: what a form file's handler name is bound to.
struct TMethodInfo {
    std::string Name;
    std::type_index Signature;
    std::string TypeName; ///< Of the signature, as C++ has it: "void(TObject*)".
    detail::TMemberPointer Member;
    TEventTargetPtr (*BindMember)(TObject& self, const TMethodInfo& method);

    TEventTargetPtr Bind(TObject& self) const { return BindMember(self, *this); }
};

/// A published field: receives the component of that name while a form file is read.
struct TFieldInfo {
    std::string Name;
    const TClass& (*Class)(); ///< Asked for when needed: it may be the form's own class.
    detail::TMemberPointer Member;
    bool (*SetMember)(TObject& self, detail::TMemberPointer member, TObject* value);

    /// Stores `value` (or null) into the field. False when the object is of another class than the field.
    bool Set(TObject& self, TObject* value) const { return SetMember(self, Member, value); }
};

/// Identity of a class: its name, its ancestor, its published properties, methods and fields, and how to create one.
/// One per class, built on first use by its `StaticClass`, alive until the program ends.
class TClass {
public:
    using TCreate = TComponent* (*)(TComponent* owner);

    TClass(std::string_view name, const TClass* parent);
    TClass(const TClass&) = delete;
    TClass& operator=(const TClass&) = delete;
    ~TClass();

    const std::string& Name() const { return FName; }
    const TClass* Parent() const { return FParent; }
    bool InheritsFrom(const TClass& ancestor) const;

    /// Every published property: those of the ancestors first, each class's in its published order. A property that a
    /// descendant publishes again keeps its ancestor's position.
    const std::vector<const TPropInfo*>& Properties() const { return FAllProperties; }
    const TPropInfo* FindProperty(std::string_view name) const; ///< Any letter case; null when there is none.

    /// What this class publishes itself; `Parent` says what its ancestors do.
    const std::vector<TMethodInfo>& Methods() const { return FMethods; }
    const std::vector<TFieldInfo>& Fields() const { return FFields; }

    const TMethodInfo* FindMethod(std::string_view name) const; ///< Any letter case, ancestors included.
    const TFieldInfo* FindField(std::string_view name) const;   ///< Any letter case, ancestors included.

    /// The class of that name among the classes of the published fields, ancestors included; null when there is none.
    const TClass* FindFieldClass(std::string_view className) const;

    bool IsCreatable() const { return FCreate != nullptr; }
    /// A new component of this class. @throws EInvalidOperation when the class cannot be created by name.
    TComponent* Create(TComponent* owner) const;

private:
    template <class T> friend class TClassBuilder;

    TPropInfo& AddProperty(std::string_view name, const detail::TPropShape& shape, detail::TMemberPointer get,
                           detail::TMemberPointer set);
    void Finish();

    std::string FName;
    const TClass* FParent;
    TCreate FCreate = nullptr;
    std::vector<std::unique_ptr<TPropInfo>> FOwnProperties;
    std::vector<TMethodInfo> FMethods;
    std::vector<TFieldInfo> FFields;
    std::vector<const TPropInfo*> FAllProperties;
    std::unordered_map<std::string, const TPropInfo*> FPropertyByName; ///< Keys in upper case.
};

} // namespace kx
