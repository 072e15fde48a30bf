// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace kx::designer {

/// The states that a form has had, each in the binary form, and which of them it has now. A step is kept as what it
/// changed, so that pictures in a form do not count for each step.
class TUndoStack {
public:
    /// Forgets everything: the form begins in this state.
    void Start(std::string state);
    /// The form has got another state; what was undone cannot be redone any more. False when the state is no other.
    bool Add(std::string state, std::string what);

    const std::string& State() const { return FState; }
    bool CanUndo() const { return FPosition > 0; }
    bool CanRedo() const { return FPosition < FSteps.size(); }
    const std::string& UndoText() const { return FSteps[FPosition - 1].What; } ///< What would be undone.
    const std::string& RedoText() const { return FSteps[FPosition].What; }
    size_t Position() const { return FPosition; } ///< Steps that can be undone.

    const std::string& Undo(); ///< Goes one state back, and returns it.
    const std::string& Redo();

private:
    struct TStep {
        size_t Begin;       ///< Where the two states begin to differ.
        std::string Before; ///< From there on, up to where they agree again.
        std::string After;
        std::string What;
    };
    std::string FState;
    std::vector<TStep> FSteps;
    size_t FPosition = 0;
};

} // namespace kx::designer
