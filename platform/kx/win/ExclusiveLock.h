// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Windows.h"

namespace kx {

/// A lock held for the length of a scope.
class TExclusiveLock {
public:
    explicit TExclusiveLock(SRWLOCK& lock) : FLock(lock) { AcquireSRWLockExclusive(&lock); }
    TExclusiveLock(const TExclusiveLock&) = delete;
    TExclusiveLock& operator=(const TExclusiveLock&) = delete;
    ~TExclusiveLock() { ReleaseSRWLockExclusive(&FLock); }

private:
    SRWLOCK& FLock;
};

} // namespace kx
