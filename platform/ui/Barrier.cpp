#include "ui/Barrier.h"

#include "ui/Forms.h"

namespace kx {

void ReportException() noexcept {
    try {
        Application().HandleException(nullptr);
    } catch (...) {
        // The handler of exceptions failed itself. There is nobody left to tell.
    }
}

} // namespace kx
