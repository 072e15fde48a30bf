// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Components.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

// What the units of form streaming share among themselves.

namespace kx::detail {

inline constexpr size_t MaxShortString = 255; ///< Characters behind a length byte.

/// Puts a variable back to what it was.
template <class T> class TRestore {
public:
    explicit TRestore(T& variable) : FVariable(variable), FSaved(variable) {}
    TRestore(T& variable, T value) : FVariable(variable), FSaved(std::exchange(variable, std::move(value))) {}
    TRestore(const TRestore&) = delete;
    TRestore& operator=(const TRestore&) = delete;
    ~TRestore() { FVariable = std::move(FSaved); }

private:
    T& FVariable;
    T FSaved;
};

/// Components in the order of their coming. Those that are gone are forgotten; one that came again counts where it came
/// last.
class TLiveComponents {
public:
    void Add(TComponent& component) {
        FPlaces[&component] = FOrder.size();
        FOrder.push_back(&component);
    }
    void Forget(TComponent& component) { FPlaces.erase(&component); }
    bool Contains(TComponent* component) const { return FPlaces.count(component) != 0; }
    size_t Size() const { return FOrder.size(); } ///< Those that are gone included.
    TComponent* At(size_t index) const {          ///< Null when it is gone.
        const auto found = FPlaces.find(FOrder[index]);
        return found != FPlaces.end() && found->second == index ? found->first : nullptr;
    }
    void Truncate(size_t size) { FOrder.resize(size); } ///< Those behind must be gone.

private:
    std::vector<TComponent*> FOrder;
    std::unordered_map<TComponent*, size_t> FPlaces;
};

/// The double nearest to a number of ten bytes: 64 bits of mantissa, 15 of exponent, one of sign, lowest first.
double DecodeExtended(const std::array<unsigned char, 10>& bytes);

// --- UTF-8

/// Number of bytes of the character at `at`; 0 when there is no valid one.
size_t Utf8Length(std::string_view text, size_t at);
bool IsUtf8(std::string_view text);
bool IsAscii(std::string_view text);
char32_t DecodeUtf8(std::string_view text, size_t at, size_t length); ///< `length` as of Utf8Length.
void AppendUtf8(std::string& text, char32_t c);
inline bool IsSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }
/// The character that two halves of UTF-16 stand for; 0 when they are no pair.
char32_t JoinSurrogates(char32_t high, char32_t low);

/// True for identifiers joined by dots.
bool IsIdentPath(std::string_view text);

} // namespace kx::detail
