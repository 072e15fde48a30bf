// SPDX-License-Identifier: MIT
// Forms as they show when they run.

#include "designer/RunForm.h"

#include "kx/core/FormText.h"

#include <algorithm>

namespace kx::designer {

TForm* MakeRunningForm(const std::string& state, int dotsPerInch, const TAncestorFiles& ancestors) {
    std::unique_ptr<TForm, TFreeDeleter> form(new TForm(nullptr));
    const auto read = [&form](const std::string& file) {
        TStaticMemoryStream stream(file.data(), file.size());
        ReadComponent(stream, form.get(), [](TReader& reader) {
            reader.SetKeepsUnknown(true); // handlers without code do nothing
            reader.SetOnPlaceholder(
                [](TReader&, const std::string&, const TClass*& cls) { cls = &TUnknownBox::StaticClass(); });
        });
    };
    std::ranges::for_each(ancestors, read);
    read(state);
    if (form->Scaled()) {
        form->SetScaled(false); // the resolution of the screen does not count
        form->ScaleForDpi(dotsPerInch, std::max(form->PixelsPerInch(), 1));
    }
    form->AfterConstruction();
    return form.release();
}

} // namespace kx::designer
