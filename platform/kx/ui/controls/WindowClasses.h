// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/WinTypes.h"

#include <string>

namespace kx {

struct TCreateParams;

namespace detail {

/// A registered window class. Its windows are Unicode windows whatever the program's code page is: the system's
/// procedures keep their texts as UTF-16, and characters that the user types come whole.
struct TWindowClass {
    std::wstring Name;
    WNDPROC DefWndProc = nullptr;
};

/// The class, of this module, for windows of a control class; `initial` gets their first message.
/// @throws EOSError when the system refuses it, or does not know the class that it is based on.
TWindowClass WindowClassFor(const std::string& className, const TCreateParams& params, WNDPROC initial);

/// Gives the classes of all controls back to the system, which keeps them when a library is unloaded. They are
/// registered again when they are needed.
void ReleaseWindowClasses();

} // namespace detail

} // namespace kx
