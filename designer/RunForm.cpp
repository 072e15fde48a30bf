// Forms as they show when they run.

#include "designer/RunForm.h"

#include "kx/core/FormText.h"

#include <algorithm>

namespace kx::designer {

namespace {

void ScaleInside(TWinControl& parent, int percent) {
    for (int i = 0; i < parent.ControlCount(); ++i) {
        TControl& control = *parent.Controls(i);
        const auto scale = [percent](int value) { return value * percent / 100; };
        const bool ownFont = !control.ParentFont();
        const TAnchors anchors = control.Anchors();
        control.SetAnchors({akLeft, akTop});
        control.SetBounds(scale(control.Left()), scale(control.Top()), scale(control.Width()), scale(control.Height()));
        control.SetAnchors(anchors);
        if (ownFont) {
            control.Font().SetHeight(scale(control.Font().Height()));
        }
        if (auto* const inner = dynamic_cast<TWinControl*>(&control)) {
            ScaleInside(*inner, percent);
        }
    }
}

} // namespace

void ScaleForm(TCustomForm& form, int percent) {
    if (percent == 100) {
        return;
    }
    ScaleInside(form, percent);
    form.SetClientSize(form.ClientWidth() * percent / 100, form.ClientHeight() * percent / 100);
    form.Font().SetHeight(form.Font().Height() * percent / 100);
}

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
    constexpr int designed = 96;
    ScaleForm(*form, dotsPerInch * 100 / designed);
    form->AfterConstruction();
    return form.release();
}

} // namespace kx::designer
