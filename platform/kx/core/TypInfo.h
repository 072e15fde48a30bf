// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Objects.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <typeindex>
#include <vector>

namespace kx {

enum class TTypeKind : uint8_t {
    Integer,     ///< Integers of up to 32 bits, also those written by identifiers (colours, cursors).
    Int64,       ///< Integers of 64 bits.
    Char,        ///< One byte of text.
    Enumeration, ///< Enumerations and Booleans, written by name.
    Set,         ///< Sets of an enumeration.
    Float,
    String,
    SubObject, ///< An object that the instance owns; its properties are written as Name.Property.
    Reference, ///< A component that the instance does not own; written by its name.
    Interface, ///< A component that implements an interface, not owned; written by its name.
    Event      ///< A handler; written by the name of its method.
};

/// Names of an enumeration's values, in ordinal order from 0.
struct TEnumInfo {
    TEnumInfo(std::string_view name, std::initializer_list<const char*> values);

    std::string Name;
    std::vector<std::string> Values;

    /// Ordinal of a value's name in any letter case; empty when there is no such value.
    std::optional<int> Find(std::string_view value) const;
    const std::string& NameOf(int64_t ordinal) const; ///< @throws ERangeError for an ordinal without a name.
};

/// Identifiers that stand for certain integers ("clBtnFace", "crDrag").
struct TIdentInfo {
    struct TEntry {
        int32_t Value;
        std::string Name;
    };
    struct TGiven {
        int32_t Value;
        const char* Name;
    };
    TIdentInfo(std::initializer_list<TGiven> entries);

    std::vector<TEntry> Entries;

    std::optional<int32_t> Find(std::string_view name) const; ///< Any letter case.
    const std::string* NameOf(int32_t value) const;           ///< Null when no identifier stands for it.
};

/// A set of an enumeration's values, at most 32 of them. The enumeration names its values by `KxTypeInfo`.
template <class E> class TSet {
public:
    using TElement = E;

    constexpr TSet() = default;
    constexpr TSet(std::initializer_list<E> values) {
        for (const E value : values) {
            Include(value);
        }
    }

    constexpr bool Contains(E value) const { return (FBits & Bit(value)) != 0; }
    constexpr bool IsEmpty() const { return FBits == 0; }
    // Of a set that is kept: what a property returns is a copy, and `Options().Include(x)` would change nothing.
    constexpr TSet& Include(E value) & {
        FBits |= Bit(value);
        return *this;
    }
    constexpr TSet& Exclude(E value) & {
        FBits &= ~Bit(value);
        return *this;
    }
    constexpr uint32_t Bits() const { return FBits; } ///< Bit n stands for the value of ordinal n.
    static constexpr TSet FromBits(uint32_t bits) {
        TSet set;
        set.FBits = bits;
        return set;
    }

    friend constexpr bool operator==(TSet, TSet) = default;
    friend constexpr TSet operator+(TSet a, TSet b) { return FromBits(a.FBits | b.FBits); }
    friend constexpr TSet operator-(TSet a, TSet b) { return FromBits(a.FBits & ~b.FBits); }
    friend constexpr TSet operator*(TSet a, TSet b) { return FromBits(a.FBits & b.FBits); }

private:
    static constexpr uint32_t Bit(E value) { return uint32_t{1} << static_cast<unsigned>(value); }
    uint32_t FBits = 0;
};

/// Gives an enumeration its published name and the names of its values: `KX_ENUM(TAlign, "alNone", "alTop", ...)`,
/// in the enumeration's own namespace, beside its declaration.
#define KX_ENUM(Type, ...)                                                                                             \
    inline const ::kx::TEnumInfo& KxTypeInfo(Type) {                                                                   \
        static const ::kx::TEnumInfo info{#Type, {__VA_ARGS__}};                                                       \
        return info;                                                                                                   \
    }

/// The names "False" and "True".
const TEnumInfo& BooleanInfo();

namespace detail {

/// How values of one type pass through pointers to members: one for all properties whose pointers are of the same type.
struct TPropShape {
    union TGetter {
        constexpr TGetter(int64_t (*get)(const TObject&, TMemberPointer)) : Ord(get) {}
        constexpr TGetter(double (*get)(const TObject&, TMemberPointer)) : Float(get) {}
        constexpr TGetter(std::string (*get)(const TObject&, TMemberPointer)) : Str(get) {}
        constexpr TGetter(TObject* (*get)(const TObject&, TMemberPointer)) : Obj(get) {}
        constexpr TGetter(TEventTargetPtr (*get)(const TObject&, TMemberPointer)) : Event(get) {}
        int64_t (*Ord)(const TObject&, TMemberPointer);
        double (*Float)(const TObject&, TMemberPointer);
        std::string (*Str)(const TObject&, TMemberPointer);
        TObject* (*Obj)(const TObject&, TMemberPointer);
        TEventTargetPtr (*Event)(const TObject&, TMemberPointer);
    };
    /// Those that give back a Boolean say with false that the value is of a wrong type.
    union TSetter {
        constexpr TSetter(std::nullptr_t) : Ord(nullptr) {}
        constexpr TSetter(void (*set)(TObject&, TMemberPointer, int64_t)) : Ord(set) {}
        constexpr TSetter(void (*set)(TObject&, TMemberPointer, double)) : Float(set) {}
        constexpr TSetter(void (*set)(TObject&, TMemberPointer, const std::string&)) : Str(set) {}
        constexpr TSetter(bool (*set)(TObject&, TMemberPointer, TObject*)) : Obj(set) {}
        constexpr TSetter(bool (*set)(TObject&, TMemberPointer, const TEventTargetPtr&)) : Event(set) {}
        void (*Ord)(TObject&, TMemberPointer, int64_t);
        void (*Float)(TObject&, TMemberPointer, double);
        void (*Str)(TObject&, TMemberPointer, const std::string&);
        bool (*Obj)(TObject&, TMemberPointer, TObject*);
        bool (*Event)(TObject&, TMemberPointer, const TEventTargetPtr&);
    };

    void (*Describe)(TPropInfo& property); ///< Fills in what the type tells, the kind first of all.
    TGetter Get;                           ///< The one that goes with the kind...
    TSetter Set;                           ///< ...as is this.
    bool CanSet;
};

} // namespace detail

/// One published property of a class. Values travel by kind: ordinals (integers, enumerations, sets, characters) as
/// 64-bit integers, everything else in its own accessor. An accessor of the wrong kind is a programming error and
/// raises EPropertyError, as does writing a read-only property.
class TPropInfo {
public:
    std::string Name;
    TTypeKind Kind = TTypeKind::Integer;
    const TEnumInfo* Enum = nullptr;          ///< Enumeration, or the elements of a set.
    const TIdentInfo* Idents = nullptr;       ///< Identifiers of an integer property; null when it has none.
    const TClass& (*Class)() = nullptr;       ///< Declared class of a sub-object or reference; may be the owner's own.
    int64_t MinValue = INT32_MIN;             ///< Smallest ordinal that the property's type holds.
    int64_t MaxValue = INT32_MAX;             ///< Largest ordinal that the property's type holds.
    std::type_index Signature = typeid(void); ///< Of an event.
    std::optional<int64_t> Default;           ///< A value that is not written to form files; only ordinals have one.
    bool (*Stored)(const TObject&) = nullptr; ///< Null: always.
    const TClass* Introduced = nullptr;       ///< The first class that publishes a property of this name.

    /// Name of its type: of an enumeration or a class; "set of TAlign"; "Integer", "Byte", "string" and the like; of an
    /// event the signature as C++ has it, "void(TObject*)"; else the C++ type's own, as "TColor".
    std::string TypeName() const;

    bool IsOrdinal() const {
        return Kind == TTypeKind::Integer || Kind == TTypeKind::Int64 || Kind == TTypeKind::Char ||
               Kind == TTypeKind::Enumeration || Kind == TTypeKind::Set;
    }
    bool HoldsObject() const; ///< A sub-object, a reference or an interface.
    bool IsReadOnly() const { return !FShape.CanSet; }
    bool IsStored(const TObject& object) const { return !Stored || Stored(object); }

    int64_t GetOrd(const TObject& object) const;
    /// @throws ERangeError when the value is outside [MinValue, MaxValue].
    void SetOrd(TObject& object, int64_t value) const;
    double GetFloat(const TObject& object) const;
    void SetFloat(TObject& object, double value) const;
    std::string GetStr(const TObject& object) const;
    void SetStr(TObject& object, const std::string& value) const;
    /// Sub-object, referenced component, or the component behind an interface; null when there is none.
    TObject* GetObj(const TObject& object) const;
    /// Assigns to a sub-object, or sets a reference. @throws EInvalidCast when the object is of another class.
    void SetObj(TObject& object, TObject* value) const;
    TEventTargetPtr GetEvent(const TObject& object) const;
    /// @throws EPropertyError when the target has another signature.
    void SetEvent(TObject& object, const TEventTargetPtr& target) const;

    /// `TypeName` of the kinds whose other fields do not tell it.
    std::string (*NameOfType)() = nullptr;

private:
    friend class TClass;

    TPropInfo(std::string_view name, const detail::TPropShape& shape, detail::TMemberPointer get,
              detail::TMemberPointer set);
    void Check(bool isRightUse) const;

    const detail::TPropShape& FShape;
    detail::TMemberPointer FGet;
    detail::TMemberPointer FSet;
};

// --- Access by name. @throws EPropertyError "Property %s does not exist" for a name that is not published.

const TPropInfo& GetPropInfo(const TObject& object, std::string_view name);
bool IsPublishedProp(const TObject& object, std::string_view name);
int64_t GetOrdProp(const TObject& object, std::string_view name);
void SetOrdProp(TObject& object, std::string_view name, int64_t value);
std::string GetStrProp(const TObject& object, std::string_view name);
void SetStrProp(TObject& object, std::string_view name, const std::string& value);
std::string GetEnumProp(const TObject& object, std::string_view name); ///< The value's name.
void SetEnumProp(TObject& object, std::string_view name, std::string_view value);
std::string GetSetProp(const TObject& object, std::string_view name); ///< "[a,b]".
void SetSetProp(TObject& object, std::string_view name, std::string_view value);
TObject* GetObjectProp(const TObject& object, std::string_view name);
void SetObjectProp(TObject& object, std::string_view name, TObject* value);

/// Text of a set value, "[a,b]", and back. @throws EPropertyError for a name that is no value of the enumeration.
std::string SetToString(const TEnumInfo& elements, uint32_t bits);
uint32_t StringToSet(const TEnumInfo& elements, std::string_view text);

} // namespace kx
