// SPDX-License-Identifier: MIT
// Prepares threads for components of the system.

#include "kx/win/Apartment.h"

#include "kx/win/Windows.h"

#include <ole2.h>

namespace kx {

TApartment::TApartment(TApartmentKind kind)
    : FKind(kind),
      FResult(kind == TApartmentKind::Ole ? OleInitialize(nullptr) : CoInitializeEx(nullptr, COINIT_MULTITHREADED)) {}

TApartment::~TApartment() {
    if (SUCCEEDED(FResult)) {
        FKind == TApartmentKind::Ole ? OleUninitialize() : CoUninitialize();
    }
}

bool TApartment::IsOtherKind() const { return FResult == RPC_E_CHANGED_MODE; }

} // namespace kx
