// SPDX-License-Identifier: MIT
// Texts in binary blocks of form files.

#include "kx/ui/widgets/ComCtrlsBlock.h"

#include "kx/win/Windows.h"

namespace kx::detail {

std::string TBlock::Text(bool isOld) {
    const size_t length = Byte();
    if (isOld) {
        return std::string(Take(length));
    }
    std::wstring text;
    for (size_t i = 0; i < length; ++i) {
        const unsigned low = Byte();
        text.push_back(static_cast<wchar_t>(low | static_cast<unsigned>(Byte()) << 8));
    }
    return FromWide(text);
}

} // namespace kx::detail
