// SPDX-License-Identifier: MIT
#pragma once

namespace kx {

/// Registers the classes of the framework that form files may name: the stock controls, menus, actions, timers, image
/// lists and the system's dialogs; and lets pictures hold PNG and JPEG files. A program that reads forms whose classes
/// have no fields for their components, a form designer for instance, calls it once at its start; more often does no
/// harm.
void RegisterStandardClasses();

} // namespace kx
