// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/TypInfo.h"

#include <functional>
#include <limits>
#include <type_traits>
#include <utility>

namespace kx {

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

/// An enumeration or a set of these values.
void DescribeNamed(TPropInfo& p, TTypeKind kind, const TEnumInfo& values);

// --- How values pass through pointers to members. S is a class of which the pointer, of type M, is a member.

/// The class of which M is a member when its objects are known to be TObjects, else T.
template <class T, class M> struct TSelf { using TType = T; };
template <class T, class C, class F> struct TSelf<T, F C::*> {
    using TType = std::conditional_t<std::is_base_of_v<TObject, C>, C, T>;
};

template <class S, class M> decltype(auto) GetBy(const TObject& object, TMemberPointer get) {
    return std::invoke(get.As<M>(), static_cast<const S&>(object));
}
template <class S, class M, class V> void SetBy(TObject& object, TMemberPointer set, V&& value) {
    std::invoke(set.As<M>(), static_cast<S&>(object), std::forward<V>(value));
}

/// Integers, characters, Booleans, enumerations and sets.
template <class V> struct TOrdinals {
    static void Describe(TPropInfo& p) {
        if constexpr (std::is_same_v<V, bool>) {
            DescribeNamed(p, TTypeKind::Enumeration, BooleanInfo());
        } else if constexpr (TIsSet<V>::value) {
            DescribeNamed(p, TTypeKind::Set, KxTypeInfo(typename V::TElement{}));
        } else if constexpr (HasIdents<V>) {
            p.Kind = TTypeKind::Integer;
            p.Idents = &KxIdentInfo(V{});
            p.NameOfType = &TypeNameOf<V>;
            LimitTo<typename TIntegerOf<V>::type>(p);
        } else if constexpr (std::is_enum_v<V>) {
            DescribeNamed(p, TTypeKind::Enumeration, KxTypeInfo(V{}));
        } else if constexpr (std::is_same_v<V, char>) {
            p.Kind = TTypeKind::Char;
            LimitTo<unsigned char>(p);
        } else {
            static_assert(std::is_integral_v<V>, "no published property can be of this type");
            p.Kind = sizeof(V) > 4 ? TTypeKind::Int64 : TTypeKind::Integer;
            p.NameOfType = [] { return NumberTypeName(sizeof(V), std::is_signed_v<V>); };
            LimitTo<V>(p);
        }
    }

    template <class S, class M> static int64_t Get(const TObject& object, TMemberPointer get) {
        const V value = GetBy<S, M>(object, get);
        if constexpr (TIsSet<V>::value) {
            return value.Bits();
        } else if constexpr (std::is_same_v<V, char>) {
            return static_cast<unsigned char>(value);
        } else {
            return static_cast<int64_t>(value);
        }
    }

    template <class S, class M> static void Set(TObject& object, TMemberPointer set, int64_t value) {
        if constexpr (TIsSet<V>::value) {
            SetBy<S, M>(object, set, V::FromBits(static_cast<uint32_t>(value)));
        } else {
            SetBy<S, M>(object, set, static_cast<V>(value));
        }
    }

private:
    /// The integer type whose values V takes.
    template <class E, bool = std::is_enum_v<E>> struct TIntegerOf { using type = E; };
    template <class E> struct TIntegerOf<E, true> : std::underlying_type<E> {};

    template <class I> static void LimitTo(TPropInfo& p) {
        p.MinValue = static_cast<int64_t>((std::numeric_limits<I>::min)());
        p.MaxValue = sizeof(I) > 4 ? INT64_MAX : static_cast<int64_t>((std::numeric_limits<I>::max)());
    }
};

template <class V> struct TFloats {
    static void Describe(TPropInfo& p) {
        p.Kind = TTypeKind::Float;
        p.NameOfType = [] { return std::string(sizeof(V) == sizeof(float) ? "Single" : "Double"); };
    }
    template <class S, class M> static double Get(const TObject& object, TMemberPointer get) {
        return static_cast<double>(GetBy<S, M>(object, get));
    }
    template <class S, class M> static void Set(TObject& object, TMemberPointer set, double value) {
        SetBy<S, M>(object, set, static_cast<V>(value));
    }
};

struct TTexts {
    static void Describe(TPropInfo& p) { p.Kind = TTypeKind::String; }
    template <class S, class M> static std::string Get(const TObject& object, TMemberPointer get) {
        return GetBy<S, M>(object, get);
    }
    template <class S, class M> static void Set(TObject& object, TMemberPointer set, const std::string& value) {
        SetBy<S, M>(object, set, value);
    }
};

template <class V> struct TEvents {
    static void Describe(TPropInfo& p) {
        p.Kind = TTypeKind::Event;
        p.Signature = V::Signature();
        p.NameOfType = &TypeNameOf<typename TIsEvent<V>::TSignature>;
    }
    template <class S, class M> static TEventTargetPtr Get(const TObject& object, TMemberPointer get) {
        return GetBy<S, M>(object, get).Target();
    }
    template <class S, class M> static bool Set(TObject& object, TMemberPointer set, const TEventTargetPtr& value) {
        const V event = V::FromTarget(value);
        const bool fits = !value || event.Target();
        if (fits) {
            SetBy<S, M>(object, set, event);
        }
        return fits;
    }
};

/// Objects of class V that every instance owns.
template <class V> struct TSubObjects {
    static void Describe(TPropInfo& p) {
        p.Kind = TTypeKind::SubObject;
        p.Class = &V::StaticClass;
    }
    template <class S, class M> static TObject* Get(const TObject& object, TMemberPointer get) {
        return &std::invoke(get.As<M>(), const_cast<S&>(static_cast<const S&>(object)));
    }
    template <class S, class M> static bool Set(TObject& object, TMemberPointer set, TObject* value) {
        const auto* const source = dynamic_cast<V*>(value);
        if (source) {
            SetBy<S, M>(object, set, *source);
        }
        return source != nullptr;
    }
};

/// Components, or interfaces of components, to which the instance refers.
template <class V> struct TPointers {
    template <class S, class M> static TObject* Get(const TObject& object, TMemberPointer get) {
        V* const target = GetBy<S, M>(object, get);
        if constexpr (std::is_convertible_v<V*, TObject*>) {
            return target;
        } else {
            return dynamic_cast<TObject*>(target);
        }
    }
    template <class S, class M> static bool Set(TObject& object, TMemberPointer set, TObject* value) {
        V* const target = dynamic_cast<V*>(value);
        const bool fits = !value || target;
        if (fits) {
            SetBy<S, M>(object, set, target);
        }
        return fits;
    }
};

template <class V> struct TReferences : TPointers<V> {
    static void Describe(TPropInfo& p) {
        p.Kind = TTypeKind::Reference;
        p.Class = &V::StaticClass;
    }
};

template <class V> struct TInterfaces : TPointers<V> {
    static void Describe(TPropInfo& p) {
        p.Kind = TTypeKind::Interface;
        p.NameOfType = &TypeNameOf<V>;
    }
};

/// How values of type V pass.
template <class V> struct TValues : TOrdinals<V> {};
template <class V>
requires std::is_floating_point_v<V>
struct TValues<V> : TFloats<V> {
};
template <> struct TValues<std::string> : TTexts {};
template <class F> struct TValues<TEvent<F>> : TEvents<TEvent<F>> {};

template <class How, class S, class M> constexpr TPropShape::TSetter SetterOf() {
    if constexpr (std::is_null_pointer_v<M>) {
        return nullptr;
    } else {
        return &How::template Set<S, M>;
    }
}

template <class How, class GetSelf, class Get, class SetSelf, class Set>
inline constexpr TPropShape Shape{&How::Describe, &How::template Get<GetSelf, Get>, SetterOf<How, SetSelf, Set>(),
                                  !std::is_null_pointer_v<Set>};

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
    TClassBuilder(std::string_view name, const TClass& parent, Describe describe) : FClass(*new TClass(name, &parent)) {
        if constexpr (requires { T::DescribeFields(*this); }) { // by KX_FIELDS in T itself
            T::DescribeFields(*this);
        }
        describe(*this);
        FClass.Finish();
    }
    TClassBuilder(std::string_view name, const TClass& parent) : TClassBuilder(name, parent, [](auto&) {}) {}

    const TClass& Class() const { return FClass; }

    /// Form files may create the class: T is made by `new T(owner)`.
    void Creatable() {
        FClass.FCreate = [](TComponent* owner) -> TComponent* { return new T(owner); };
    }

    /// A value property: integer, Boolean, enumeration, set, floating-point number, string or event.
    /// `get` and `set` are member functions of T or of an ancestor; `set` may be null for a read-only property.
    template <class Get, class Set> TPropInfo& Property(std::string_view name, Get get, Set set) {
        return Add<detail::TValues<std::remove_cvref_t<std::invoke_result_t<Get, const T&>>>>(name, get, set);
    }

    /// An object that every instance owns. `get` returns a reference to it from a non-const T; `set`, if not null,
    /// takes `const S&` and copies from it.
    template <class S, class C, class Set> TPropInfo& SubObject(std::string_view name, S& (C::*get)(), Set set) {
        return Add<detail::TSubObjects<S>>(name, get, set);
    }

    /// A component that the instance refers to and does not own; null for none.
    template <class Get, class Set> TPropInfo& Reference(std::string_view name, Get get, Set set) {
        return Add<detail::TReferences<std::remove_pointer_t<std::invoke_result_t<Get, const T&>>>>(name, get, set);
    }

    /// A component that implements interface I, not owned; null for none. `get` and `set` deal in `I*`.
    template <class Get, class Set> TPropInfo& Interface(std::string_view name, Get get, Set set) {
        return Add<detail::TInterfaces<std::remove_pointer_t<std::invoke_result_t<Get, const T&>>>>(name, get, set);
    }

    /// A published method, to which form files may bind events.
    template <class C, class... Args> void Method(std::string_view name, void (C::*method)(Args...)) {
        using TSignature = void(Args...);
        FClass.FMethods.push_back({std::string(name), TEvent<TSignature>::Signature(), detail::TypeNameOf<TSignature>(),
                                   method, [](TObject& self, const TMethodInfo& info) {
                                       const auto member = info.Member.As<void (C::*)(Args...)>();
                                       return TEvent<TSignature>(&static_cast<T&>(self), member, info.Name).Target();
                                   }});
    }

    /// A published field `F* T::*`: receives the component of that name while a form file is read.
    template <class F> void Field(std::string_view name, F* T::*field) {
        FClass.FFields.push_back({std::string(name), &F::StaticClass, field,
                                  [](TObject& self, detail::TMemberPointer member, TObject* value) {
                                      F* const typed = dynamic_cast<F*>(value);
                                      static_cast<T&>(self).*member.As<F * T::*>() = typed;
                                      return typed || !value;
                                  }});
    }

private:
    template <class How, class Get, class Set> TPropInfo& Add(std::string_view name, Get get, Set set) {
        using TGetSelf = typename detail::TSelf<T, Get>::TType;
        using TSetSelf = typename detail::TSelf<T, Set>::TType;
        return FClass.AddProperty(name, detail::Shape<How, TGetSelf, Get, TSetSelf, Set>, get, set);
    }

    TClass& FClass; ///< Never freed: objects that go when the program ends still ask it.
};

} // namespace kx
