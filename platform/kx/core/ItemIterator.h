// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <iterator>

namespace kx {

/// Goes through the items, of class T, of a list that holds pointers to them. Position is the list's own iterator. As
/// with that, no item may come or go meanwhile.
template <class T, class Position> class TItemIterator {
public:
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using reference = T&;
    using pointer = T*;
    using iterator_category = std::forward_iterator_tag;

    TItemIterator() = default;
    explicit TItemIterator(Position at) : FAt(at) {}
    T& operator*() const { return static_cast<T&>(**FAt); }
    T* operator->() const { return &**this; }
    TItemIterator& operator++() {
        ++FAt;
        return *this;
    }
    TItemIterator operator++(int) { return TItemIterator(FAt++); }
    friend bool operator==(const TItemIterator& a, const TItemIterator& b) { return a.FAt == b.FAt; }

private:
    Position FAt{};
};

} // namespace kx
