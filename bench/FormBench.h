#pragma once

namespace kx::bench {

/// Seconds that reading a form takes which holds that many components, a hundred to a panel, each with a few properties
/// and a reference to its neighbour; from its text form, or from its binary form.
double ReadFormSeconds(int components, bool text);

} // namespace kx::bench
