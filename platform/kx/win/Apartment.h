// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/WinTypes.h"

namespace kx {

enum class TApartmentKind {
    Ole,          ///< OLE with drag and drop, for this thread alone.
    MultiThreaded ///< COM without OLE, shared with the other threads of the kind.
};

/// Lets the calling thread use components of the system for the length of a scope.
class TApartment {
public:
    explicit TApartment(TApartmentKind kind);
    TApartment(const TApartment&) = delete;
    TApartment& operator=(const TApartment&) = delete;
    ~TApartment();

    /// The thread was in an apartment of the other kind, and stays there.
    bool IsOtherKind() const;

private:
    TApartmentKind FKind;
    HRESULT FResult;
};

} // namespace kx
