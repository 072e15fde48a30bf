// SPDX-License-Identifier: MIT
#pragma once

namespace kx {

/// What a control is to scroll when the mouse wheel is turned: as many lines as the user has chosen, but no more than a
/// page. Fine wheels turn by less than a line; what is left over counts with the next turn in that direction.
class TMouseWheel {
public:
    /// `delta` is the message's, positive away from the user; `page` the lines that are seen. Returns the lines to
    /// scroll, positive downwards.
    int Lines(int delta, int page);

private:
    int FRest = 0;
};

} // namespace kx
