#pragma once

#include "kx/core/Objects.h"

#include <cstdint>
#include <initializer_list>
#include <limits>
#include <optional>
#include <type_traits>
#include <typeindex>

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
    std::function<bool(const TObject&)> Stored; ///< Empty: always.
    const TClass* Introduced = nullptr;         ///< The first class that publishes a property of this name.

    /// Name of its type: of an enumeration or a class; "set of TAlign"; "Integer", "Byte", "string" and the like; of an
    /// event the signature as C++ has it, "void(TObject*)"; else the C++ type's own, as "TColor".
    std::string TypeName() const;

    bool IsOrdinal() const {
        return Kind == TTypeKind::Integer || Kind == TTypeKind::Int64 || Kind == TTypeKind::Char ||
               Kind == TTypeKind::Enumeration || Kind == TTypeKind::Set;
    }
    bool IsReadOnly() const;
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

private:
    template <class T> friend class TClassBuilder;

    [[noreturn]] void Misused() const;

    std::string FTypeName; ///< When the other fields do not tell.
    std::function<int64_t(const TObject&)> FGetOrd;
    std::function<void(TObject&, int64_t)> FSetOrd;
    std::function<double(const TObject&)> FGetFloat;
    std::function<void(TObject&, double)> FSetFloat;
    std::function<std::string(const TObject&)> FGetStr;
    std::function<void(TObject&, const std::string&)> FSetStr;
    std::function<TObject*(const TObject&)> FGetObj;
    std::function<bool(TObject&, TObject*)> FSetObj;
    std::function<TEventTargetPtr(const TObject&)> FGetEvent;
    std::function<bool(TObject&, const TEventTargetPtr&)> FSetEvent;
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

namespace detail {

template <class T> struct TIsSet : std::false_type {};
template <class E> struct TIsSet<TSet<E>> : std::true_type {};

template <class T> struct TIsEvent : std::false_type {};
template <class S> struct TIsEvent<TEvent<S>> : std::true_type { using TSignature = S; };

/// True for types that name their identifiers: `const TIdentInfo& KxIdentInfo(T)` in the type's namespace.
template <class T>
concept HasIdents = requires(T value) {
    KxIdentInfo(value);
};

} // namespace detail

namespace detail {

/// What the compiler calls a function that is made for T.
template <class T> const char* FunctionNamedFor() {
#ifdef _MSC_VER
    return __FUNCSIG__;
#else
    return __PRETTY_FUNCTION__;
#endif
}
/// The name of T in it, without the namespaces around it.
std::string TypeNameIn(std::string_view function);
template <class T> std::string TypeNameOf() { return TypeNameIn(FunctionNamedFor<T>()); }

/// "Integer", "Byte", ...
std::string NumberTypeName(size_t size, bool isSigned);

} // namespace detail

/// Builds the identity of class T. Used once, in its `StaticClass`:
///
///     const TClass& TPosParams::StaticClass() {
///         static const TClassBuilder<TPosParams> cls("TPosParams", TPersistent::StaticClass(), [](auto& c) {
///             c.Property("ShiftX", &TPosParams::ShiftX, &TPosParams::SetShiftX).Default = 0;
///         });
///         return cls.Class();
///     }
///
/// `Property` and its sisters return the new property, whose `Default` and `Stored` may be set there and then.
template <class T> class TClassBuilder {
public:
    template <class Describe>
    TClassBuilder(std::string name, const TClass& parent, Describe describe)
        : FClass(*new TClass(std::move(name), &parent)) {
        describe(*this);
        FClass.Finish();
    }
    TClassBuilder(std::string name, const TClass& parent) : TClassBuilder(std::move(name), parent, [](auto&) {}) {}

    const TClass& Class() const { return FClass; }

    /// Form files may create the class: T is made by `new T(owner)`.
    void Creatable() {
        FClass.FCreate = [](TComponent* owner) -> TComponent* { return new T(owner); };
    }

    /// A value property: integer, Boolean, enumeration, set, floating-point number, string or event.
    /// `get` and `set` are member functions of T or of an ancestor; `set` may be null for a read-only property.
    template <class Get, class Set> TPropInfo& Property(std::string name, Get get, Set set) {
        using V = std::remove_cvref_t<std::invoke_result_t<Get, const T&>>;
        TPropInfo& p = New(std::move(name));
        if constexpr (std::is_same_v<V, std::string>) {
            p.Kind = TTypeKind::String;
            p.FGetStr = [get](const TObject& o) -> std::string { return std::invoke(get, As(o)); };
            if constexpr (HasSetter<Set>) {
                p.FSetStr = [set](TObject& o, const std::string& v) { std::invoke(set, As(o), v); };
            }
        } else if constexpr (std::is_floating_point_v<V>) {
            p.Kind = TTypeKind::Float;
            p.FTypeName = sizeof(V) == sizeof(float) ? "Single" : "Double";
            p.FGetFloat = [get](const TObject& o) { return static_cast<double>(std::invoke(get, As(o))); };
            if constexpr (HasSetter<Set>) {
                p.FSetFloat = [set](TObject& o, double v) { std::invoke(set, As(o), static_cast<V>(v)); };
            }
        } else if constexpr (detail::TIsEvent<V>::value) {
            p.Kind = TTypeKind::Event;
            p.Signature = V::Signature();
            p.FTypeName = detail::TypeNameOf<typename detail::TIsEvent<V>::TSignature>();
            p.FGetEvent = [get](const TObject& o) { return std::invoke(get, As(o)).Target(); };
            if constexpr (HasSetter<Set>) {
                p.FSetEvent = [set](TObject& o, const TEventTargetPtr& v) {
                    V event = V::FromTarget(v);
                    if (v && !event.Target()) {
                        return false;
                    }
                    std::invoke(set, As(o), event);
                    return true;
                };
            }
        } else {
            DescribeOrdinal<V>(p);
            p.FGetOrd = [get](const TObject& o) { return ToOrd(V(std::invoke(get, As(o)))); };
            if constexpr (HasSetter<Set>) {
                p.FSetOrd = [set](TObject& o, int64_t v) { std::invoke(set, As(o), FromOrd<V>(v)); };
            }
        }
        return p;
    }

    /// An object that every instance owns. `get` returns a reference to it from a non-const T; `set`, if not null,
    /// takes `const S&` and copies from it.
    template <class Get, class Set> TPropInfo& SubObject(std::string name, Get get, Set set) {
        using S = std::remove_cvref_t<std::invoke_result_t<Get, T&>>;
        TPropInfo& p = New(std::move(name));
        p.Kind = TTypeKind::SubObject;
        p.Class = &S::StaticClass;
        p.FGetObj = [get](const TObject& o) -> TObject* { return &std::invoke(get, const_cast<T&>(As(o))); };
        if constexpr (HasSetter<Set>) {
            p.FSetObj = [set](TObject& o, TObject* v) {
                const auto* source = dynamic_cast<S*>(v);
                if (source) {
                    std::invoke(set, As(o), *source);
                }
                return source != nullptr;
            };
        }
        return p;
    }

    /// A component that the instance refers to and does not own; null for none.
    template <class Get, class Set> TPropInfo& Reference(std::string name, Get get, Set set) {
        using C = std::remove_pointer_t<std::invoke_result_t<Get, const T&>>;
        TPropInfo& p = New(std::move(name));
        p.Kind = TTypeKind::Reference;
        p.Class = &C::StaticClass;
        DescribePointer<C>(p, get, set);
        return p;
    }

    /// A component that implements interface I, not owned; null for none. `get` and `set` deal in `I*`.
    template <class Get, class Set> TPropInfo& Interface(std::string name, Get get, Set set) {
        using I = std::remove_pointer_t<std::invoke_result_t<Get, const T&>>;
        TPropInfo& p = New(std::move(name));
        p.Kind = TTypeKind::Interface;
        p.FTypeName = detail::TypeNameOf<I>();
        DescribePointer<I>(p, get, set);
        return p;
    }

    /// A published method, to which form files may bind events.
    template <class C, class... Args> void Method(std::string name, void (C::*method)(Args...)) {
        FClass.FMethods.push_back(
            {name, TEvent<void(Args...)>::Signature(),
             [name, method](TObject& o) { return TEvent<void(Args...)>(&As(o), method, name).Target(); },
             detail::TypeNameOf<void(Args...)>()});
    }

    /// A published field `F* T::*`: receives the component of that name while a form file is read.
    template <class F> void Field(std::string name, F* T::*field) {
        FClass.FFields.push_back({std::move(name), &F::StaticClass, [field](TObject& o, TObject* value) {
                                      auto* typed = dynamic_cast<F*>(value);
                                      As(o).*field = typed;
                                      return typed || !value;
                                  }});
    }

private:
    template <class Set> static constexpr bool HasSetter = !std::is_null_pointer_v<Set>;

    static T& As(TObject& o) { return static_cast<T&>(o); }
    static const T& As(const TObject& o) { return static_cast<const T&>(o); }

    TPropInfo& New(std::string name) {
        auto property = std::make_unique<TPropInfo>();
        property->Name = std::move(name);
        return FClass.AddProperty(std::move(property));
    }

    template <class V> static void DescribeOrdinal(TPropInfo& p) {
        if constexpr (std::is_same_v<V, bool>) {
            p.Kind = TTypeKind::Enumeration;
            p.Enum = &BooleanInfo();
            p.MinValue = 0;
            p.MaxValue = 1;
        } else if constexpr (detail::TIsSet<V>::value) {
            p.Kind = TTypeKind::Set;
            p.Enum = &KxTypeInfo(typename V::TElement{});
            p.MinValue = 0;
            p.MaxValue = static_cast<int64_t>((uint64_t{1} << p.Enum->Values.size()) - 1);
        } else if constexpr (detail::HasIdents<V>) {
            p.Kind = TTypeKind::Integer;
            p.Idents = &KxIdentInfo(V{});
            p.FTypeName = detail::TypeNameOf<V>();
            LimitTo<TIntegerOf<V>>(p);
        } else if constexpr (std::is_enum_v<V>) {
            p.Kind = TTypeKind::Enumeration;
            p.Enum = &KxTypeInfo(V{});
            p.MinValue = 0;
            p.MaxValue = static_cast<int64_t>(p.Enum->Values.size()) - 1;
        } else if constexpr (std::is_same_v<V, char>) {
            p.Kind = TTypeKind::Char;
            p.MinValue = 0;
            p.MaxValue = 255;
        } else {
            static_assert(std::is_integral_v<V>, "no published property can be of this type");
            p.Kind = sizeof(V) > 4 ? TTypeKind::Int64 : TTypeKind::Integer;
            p.FTypeName = detail::NumberTypeName(sizeof(V), std::is_signed_v<V>);
            LimitTo<V>(p);
        }
    }

    /// The integer type whose values V takes.
    template <class V> static auto IntegerOf() {
        if constexpr (std::is_enum_v<V>) {
            return std::underlying_type_t<V>{};
        } else {
            return V{};
        }
    }
    template <class V> using TIntegerOf = decltype(IntegerOf<V>());

    template <class I> static void LimitTo(TPropInfo& p) {
        p.MinValue = static_cast<int64_t>((std::numeric_limits<I>::min)());
        p.MaxValue = sizeof(I) > 4 ? INT64_MAX : static_cast<int64_t>((std::numeric_limits<I>::max)());
    }

    template <class V> static int64_t ToOrd(V v) {
        if constexpr (detail::TIsSet<V>::value) {
            return v.Bits();
        } else if constexpr (std::is_same_v<V, char>) {
            return static_cast<unsigned char>(v);
        } else {
            return static_cast<int64_t>(v);
        }
    }

    template <class V> static V FromOrd(int64_t v) {
        if constexpr (detail::TIsSet<V>::value) {
            return V::FromBits(static_cast<uint32_t>(v));
        } else {
            return static_cast<V>(v);
        }
    }

    template <class I, class Get, class Set> static void DescribePointer(TPropInfo& p, Get get, Set set) {
        p.FGetObj = [get](const TObject& o) -> TObject* {
            I* target = std::invoke(get, As(o));
            if constexpr (std::is_convertible_v<I*, TObject*>) {
                return target;
            } else {
                return dynamic_cast<TObject*>(target);
            }
        };
        if constexpr (HasSetter<Set>) {
            p.FSetObj = [set](TObject& o, TObject* v) {
                I* target = dynamic_cast<I*>(v);
                if (v && !target) {
                    return false;
                }
                std::invoke(set, As(o), target);
                return true;
            };
        }
    }

    TClass& FClass; ///< Never freed: objects that go when the program ends still ask it.
};

} // namespace kx
