// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Components.h"
#include "kx/core/Fields.h"

namespace kx {

#ifdef NDEBUG
constexpr bool ChecksFormFields = false;
#else
constexpr bool ChecksFormFields = true; ///< In debug builds of the program.
#endif

/// Reads the form file of class `cls` over the form or frame; see TCustomForm and TCustomFrame.
/// `checksFields` tells the debugger when class and file do not agree: which fields of the class have no component, and
/// which components of the file no field.
/// @throws EResNotFound when the program holds no form file of that name.
/// @throws EReadError and others of TReader for a form file that cannot be read.
void InitForm(TComponent& root, const TClass& cls, bool checksFields = ChecksFormFields);

/// True when the program holds a form file for the class.
bool HasFormFile(const TClass& cls);

namespace detail {
/// @throws EInvalidOperation when there is a form file for `cls` or an ancestor that a constructor forgot to read.
/// `read` is the class up to which files have been read; null: none.
void CheckFormFileRead(const TClass& cls, const TClass* read);
} // namespace detail

} // namespace kx
