// SPDX-License-Identifier: MIT
// The state that a life shares with those who ask about it.

#include "kx/core/Alive.h"

namespace kx {

/// Of every life that ended before anybody asked. Its own first user never leaves.
TLifetime::TState TLifetime::Ended{1, true};

TLifetime::~TLifetime() {
    End();
    FState.load(std::memory_order_acquire)->Leave();
}

void TLifetime::End() noexcept {
    TState* state = FState.load(std::memory_order_acquire);
    if (!state) {
        Ended.Users.fetch_add(1, std::memory_order_relaxed);
        if (FState.compare_exchange_strong(state, &Ended, std::memory_order_acq_rel)) {
            return;
        }
        Ended.Users.fetch_sub(1, std::memory_order_relaxed); // another thread asked just now
    }
    state->Over.store(true, std::memory_order_release);
}

TLifetime::TState& TLifetime::State() const {
    TState* state = FState.load(std::memory_order_acquire);
    if (!state) {
        auto* const made = new TState;
        if (FState.compare_exchange_strong(state, made, std::memory_order_acq_rel)) {
            return *made;
        }
        delete made; // another thread was first
    }
    return *state;
}

} // namespace kx
