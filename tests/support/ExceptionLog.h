// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"

#include <string>
#include <utility>
#include <vector>

namespace kx::test {

/// Collects the messages of all exceptions that reach the application, in place of its own way of showing them.
class TExceptionLog {
public:
    TExceptionLog() : FPrevious(Application().OnException()) {
        Application().SetOnException([this](TObject*, const std::exception& e) { FMessages.emplace_back(e.what()); });
    }
    TExceptionLog(const TExceptionLog&) = delete;
    TExceptionLog& operator=(const TExceptionLog&) = delete;
    ~TExceptionLog() { Application().SetOnException(FPrevious); }

    const std::vector<std::string>& Messages() const { return FMessages; }
    /// The messages so far; forgets them.
    std::vector<std::string> Take() { return std::exchange(FMessages, {}); }

private:
    TExceptionEvent FPrevious;
    std::vector<std::string> FMessages;
};

} // namespace kx::test
