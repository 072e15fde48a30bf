// SPDX-License-Identifier: MIT
// Keeps the services of the host.

#include "kx/ide/Projects.h"

namespace kx {

namespace {
IModuleServices* Services = nullptr;
}

IModuleServices* ModuleServices() { return Services; }

void SetModuleServices(IModuleServices* services) { Services = services; }

} // namespace kx
