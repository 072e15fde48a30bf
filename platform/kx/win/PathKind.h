// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace kx {

/// What a path names.
enum TPathKind : uint8_t {
    pkNothing,
    pkFile,
    pkFolder,
    pkUnreachable ///< Nobody knows: the computer or drive that should have it does not answer, or not in time.
};

/// Milliseconds that a user may be made to wait for a drive that is asleep, or a computer that is far away.
constexpr unsigned PathPatience = 2000;

/// The question what a path names. A path on a fixed drive of this computer is looked at once. Any other is looked at
/// by another thread: a computer that is not there is known to be missing only after half a minute or more. Whoever
/// asks the same meanwhile shares the question.
class TPathQuestion {
public:
    explicit TPathQuestion(const std::string& path); ///< Asks. Does not wait.

    bool IsAnswered() const;
    bool IsOverdue() const; ///< There is no answer, and the user's patience is at its end.
    /// Waits until `patience` milliseconds have gone by since the question was asked first. Without an answer the path
    /// is unreachable so far.
    TPathKind Answer(unsigned patience = PathPatience) const;

    /// True for a path for which one may have to wait.
    static bool IsSlow(const std::string& path);

private:
    struct TState;
    class TWorkers;

    std::shared_ptr<TState> FState;
};

/// What the path names, with little patience; see TPathQuestion.
TPathKind KindOfPath(const std::string& path);

} // namespace kx
