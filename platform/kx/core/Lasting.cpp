// SPDX-License-Identifier: MIT
// Objects that stay as long as the module.

#include "kx/core/Lasting.h"

#include <atomic>
#include <utility>

namespace kx {

namespace {

struct TLastingObject {
    void* Object;
    void (*Free)(void* object);
    TLastingObject* Before;
};

constinit std::atomic<TLastingObject*> Last{nullptr};
constinit std::atomic<bool> Ends{false};

/// Static objects that are made after this one, while the module is used, go before it.
struct TLastingEnd {
    ~TLastingEnd() {
        TLastingObject* one = Ends ? Last.exchange(nullptr) : nullptr;
        while (one) {
            one->Free(one->Object);
            delete std::exchange(one, one->Before);
        }
    }
};

const TLastingEnd LastingEnd;

} // namespace

void SetLastingEnds(bool value) noexcept { Ends = value; }

void detail::NoteLasting(void* object, void (*free)(void* object)) {
    auto* const one = new TLastingObject{object, free, Last};
    while (!Last.compare_exchange_weak(one->Before, one)) {
    }
}

} // namespace kx
