// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"

#include <memory>

namespace kx::test {

using TFormPtr = std::unique_ptr<TForm, TFreeDeleter>;

/// A form of one colour, for docking.
inline TFormPtr MakeForm(TColor color, int width, int height) {
    TFormPtr form(NewForm<TForm>(nullptr));
    form->SetColor(color);
    form->SetBounds(30, 40, width, height);
    return form;
}

} // namespace kx::test
