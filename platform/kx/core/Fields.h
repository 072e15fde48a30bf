// SPDX-License-Identifier: MIT
#pragma once

#include <type_traits>

namespace kx {
template <class T> class TClassBuilder;
} // namespace kx

/// Declares the components of a form class that its code uses, each of them once: as a pointer, null at first, of that
/// name, and as a published field, which gets the component of its name while the form file is read. It stands
/// anywhere in the class and leaves the access as it is; the class's TClassBuilder finds the fields by itself.
///
///     KX_FIELDS(TMainForm, (TButton, OkButton, CancelButton), (TEdit, NameEdit))
///
/// is `TButton* OkButton = nullptr;` and so on, with `c.Field("OkButton", &TMainForm::OkButton);` and so on.
#define KX_FIELDS(cls, ...)                                                                                            \
    KX_FIELDS_EXPAND(KX_FIELDS_LISTS(KX_FIELDS_DECLARE, __VA_ARGS__))                                                  \
    template <class> friend class ::kx::TClassBuilder;                                                                 \
    template <class TBuilder>                                                                                          \
    requires ::std::is_same_v<TBuilder, ::kx::TClassBuilder<cls>>                                                      \
    static void DescribeFields(TBuilder& builder) {                                                                    \
        using TFieldsOf = cls;                                                                                         \
        KX_FIELDS_EXPAND(KX_FIELDS_LISTS(KX_FIELDS_DESCRIBE, __VA_ARGS__))                                             \
    }

// What it is made of. A macro that names itself is not expanded again at once, but when it is read again:
// KX_FIELDS_EXPAND reads what it is given some 300 times, once for each list and for each name.

#define KX_FIELDS_DECLARE(type, name) type* name = nullptr;
#define KX_FIELDS_DESCRIBE(type, name) builder.Field(#name, &TFieldsOf::name);

#define KX_FIELDS_LISTS(what, list, ...)                                                                               \
    KX_FIELDS_LIST(what, KX_FIELDS_BARE list)                                                                          \
    __VA_OPT__(KX_FIELDS_NEXT_LIST KX_FIELDS_PARENS(what, __VA_ARGS__))
#define KX_FIELDS_NEXT_LIST() KX_FIELDS_LISTS
#define KX_FIELDS_LIST(...) KX_FIELDS_NAMES(__VA_ARGS__)
#define KX_FIELDS_NAMES(what, type, name, ...)                                                                         \
    what(type, name) __VA_OPT__(KX_FIELDS_NEXT_NAME KX_FIELDS_PARENS(what, type, __VA_ARGS__))
#define KX_FIELDS_NEXT_NAME() KX_FIELDS_NAMES
#define KX_FIELDS_BARE(...) __VA_ARGS__
#define KX_FIELDS_PARENS ()

#define KX_FIELDS_EXPAND(...) KX_FIELDS_EXPAND4(KX_FIELDS_EXPAND4(KX_FIELDS_EXPAND4(KX_FIELDS_EXPAND4(__VA_ARGS__))))
#define KX_FIELDS_EXPAND4(...) KX_FIELDS_EXPAND3(KX_FIELDS_EXPAND3(KX_FIELDS_EXPAND3(KX_FIELDS_EXPAND3(__VA_ARGS__))))
#define KX_FIELDS_EXPAND3(...) KX_FIELDS_EXPAND2(KX_FIELDS_EXPAND2(KX_FIELDS_EXPAND2(KX_FIELDS_EXPAND2(__VA_ARGS__))))
#define KX_FIELDS_EXPAND2(...) KX_FIELDS_EXPAND1(KX_FIELDS_EXPAND1(KX_FIELDS_EXPAND1(KX_FIELDS_EXPAND1(__VA_ARGS__))))
#define KX_FIELDS_EXPAND1(...) __VA_ARGS__
