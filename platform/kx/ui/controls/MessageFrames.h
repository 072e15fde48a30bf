#pragma once

namespace kx::detail {

/// A message that is being handled in this thread, on the stack. A form that was released goes when the message is done
/// in which that happened, also when a dialog or another loop handles messages meanwhile.
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
