// SPDX-License-Identifier: MIT
#pragma once

namespace kx::detail {

/// A message that is being handled in this thread, on the stack. A form that is released goes when the message in which
/// that happened is done, even if a dialog or another loop handles messages in between.
class TMessageFrame {
public:
    TMessageFrame() noexcept { ++Count(); }
    TMessageFrame(const TMessageFrame&) = delete;
    TMessageFrame& operator=(const TMessageFrame&) = delete;
    ~TMessageFrame();

    /// How many are under way in this thread.
    static int Depth() noexcept { return Count(); }

private:
    static int& Count() noexcept;
};

} // namespace kx::detail
