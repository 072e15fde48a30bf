// SPDX-License-Identifier: MIT
// Forms and frames at the resolution of the screen.

#include "kx/core/Filer.h"
#include "kx/graphics/ImgList.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/forms/Frames.h"
#include "kx/win/Dpi.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <utility>

namespace kx {

namespace {

/// The lists of images that came with a form or frame. Their handlers may free it.
void ScaleImages(const TComponent& owner, int to, int from) {
    const TAlive alive(owner);
    for (int i = 0; alive && i < owner.ComponentCount(); ++i) {
        if (auto* const images = dynamic_cast<TImageList*>(owner.Components(i))) {
            images->ChangeScale(to, from);
        }
    }
}

} // namespace

// --- Forms

/// A file is about to be read. What there is by now is brought to the sizes that files are written for: they name their
/// resolution, where it is another one, at their end only.
void TCustomForm::ReadState(TReader& reader) {
    if (!FHasFileSizes) {
        if (!Outlives(*this, [this] { ScaleForDpi(DefaultDpi, std::max(FPixelsPerInch, 1)); })) {
            return;
        }
        FPixelsPerInch = DefaultDpi;
        FHasFileSizes = true;
    }
    FFileClass = &ClassType();
    TParentForm::ReadState(reader);
}

void TCustomForm::ScaleFileSizes() {
    if (!std::exchange(FHasFileSizes, false) || !FScaled || IsDesigning()) {
        return;
    }
    const TFieldScope scaling(*this, FScalingFile, true);
    ScaleForDpi(SystemDpi(), std::max(FPixelsPerInch, 1));
}

void TCustomForm::FollowScreen(int dpi) {
    if (FScaled && !FHasFileSizes && !IsDesigning()) {
        ScaleForDpi(dpi, std::max(FPixelsPerInch, 1));
    }
}

/// The form has come to a screen of another resolution. The system says where it is to be there.
void TCustomForm::ScreenChanged(TMessage& message) {
    const RECT bounds = message.LParamAs<RECT>();
    const auto scale = [&] {
        const TFieldScope keeps(*this, FKeepsBounds, true);
        FollowScreen(message.WParamLo());
    };
    if (FScaled && Outlives(*this, scale) && HandleAllocated()) {
        SetWindowPos(WindowHandle(), nullptr, bounds.left, bounds.top, bounds.right - bounds.left,
                     bounds.bottom - bounds.top, SWP_NOZORDER | SWP_NOACTIVATE);
    }
    message.Result = 0;
}

/// A form on another one, which may have been made by its constructor, may have been scaled before that.
void TCustomForm::ChangeScale(int to, int from) {
    if (Parent() && HasFinalSizes() && FPixelsPerInch == to) {
        return;
    }
    FPixelsPerInch = to;
    FHasFileSizes = false;
    FBorderWidth = ScaleValue(FBorderWidth, to, from);
    if (Outlives(*this, [&] { ScaleImages(*this, to, from); })) {
        TParentForm::ChangeScale(to, from);
    }
}

/// The frame is the system's to size, and a form's place is not measured by what is in it.
void TCustomForm::ScaleBounds(int to, int from) {
    if (!FKeepsBounds) {
        const TRect client = ClientRect();
        SetClientSize(ScaleValue(client.Right, to, from), ScaleValue(client.Bottom, to, from));
    }
}

// --- Frames

void TCustomFrame::ReadState(TReader& reader) {
    if (!FHasFileSizes) {
        ScaleFont(DefaultDpi, Font().PixelsPerInch());
        FHasFileSizes = true;
    }
    if (reader.Root() == this) {
        FFileClass = &ClassType();
    }
    TScrollingWinControl::ReadState(reader);
}

/// A frame is scaled with the form that it came with, or when it is put on one that is complete.
void TCustomFrame::SetParent(TWinControl* value) {
    if (!Outlives(*this, [&] { TScrollingWinControl::SetParent(value); }) || !FHasFileSizes || IsLoading() ||
        IsDesigning()) {
        return;
    }
    if (const TCustomForm* const form = GetParentForm(this); form && form->HasFinalSizes()) {
        ScaleForDpi(form->PixelsPerInch(), DefaultDpi);
        FHasFileSizes = false;
    }
}

void TCustomFrame::ChangeScale(int to, int from) {
    FHasFileSizes = false;
    if (Outlives(*this, [&] { ScaleImages(*this, to, from); })) {
        TScrollingWinControl::ChangeScale(to, from);
    }
}

} // namespace kx
