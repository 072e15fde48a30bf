// SPDX-License-Identifier: MIT
#pragma once

namespace kx {
class TTreeNode;
}

namespace kx::test {

/// What a piece of ordinary Win32 code, in a source that uses our components too, found out.
struct TUserResults {
    bool WindowWorks = false;  ///< A window of a class of its own got a message from the loop.
    bool DrawingWorks = false; ///< Text was measured and drawn.
    bool ObjectsWork = false;  ///< A bitmap told its size, an icon was there.
    bool OursWork = false;     ///< Our functions of the same names did what they do.
    bool Unicode = false;      ///< The W functions were called.
};

TUserResults SystemHeadersFirst(); ///< windows.h with all that belongs to it, then our headers.
TUserResults OurHeadersFirst();    ///< The other way round.
TUserResults UnicodeProgram();     ///< System headers first, with UNICODE defined.
TUserResults CoreHeadersFirst();   ///< Headers of kx/core, then windows.h, then ours.

/// Our functions and the macros of windowsx.h that have the same names do what they do, when those come first. `node`
/// has two children.
bool WalkBehindSystemHeaders(const TTreeNode& node);

} // namespace kx::test
