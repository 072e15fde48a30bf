// SPDX-License-Identifier: MIT
// Keeps the states of a form.

#include "designer/UndoStack.h"

#include <algorithm>
#include <utility>

namespace kx::designer {

void TUndoStack::Start(std::string state) {
    FState = std::move(state);
    FSteps.clear();
    FPosition = 0;
}

bool TUndoStack::Add(std::string state, std::string what) {
    if (state == FState) {
        return false;
    }
    const size_t shorter = std::min(state.size(), FState.size());
    const auto begin = static_cast<size_t>(
        std::mismatch(state.begin(), state.begin() + static_cast<std::ptrdiff_t>(shorter), FState.begin()).first -
        state.begin());
    size_t end = 0; // how many bytes agree at the end
    while (end < shorter - begin && state[state.size() - 1 - end] == FState[FState.size() - 1 - end]) {
        ++end;
    }
    FSteps.resize(FPosition);
    FSteps.push_back({begin, FState.substr(begin, FState.size() - begin - end),
                      state.substr(begin, state.size() - begin - end), std::move(what)});
    ++FPosition;
    FState = std::move(state);
    return true;
}

const std::string& TUndoStack::Undo() {
    const TStep& step = FSteps[--FPosition];
    return FState.replace(step.Begin, step.After.size(), step.Before);
}

const std::string& TUndoStack::Redo() {
    const TStep& step = FSteps[FPosition++];
    return FState.replace(step.Begin, step.Before.size(), step.After);
}

} // namespace kx::designer
