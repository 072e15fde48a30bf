// SPDX-License-Identifier: MIT
// The limits of a control's size.

#include "kx/ui/controls/Controls.h"
#include "kx/win/Dpi.h"

namespace kx {

const TClass& TSizeConstraints::StaticClass() {
    static const TClassBuilder<TSizeConstraints> cls("TSizeConstraints", TPersistent::StaticClass(), [](auto& c) {
        using T = TSizeConstraints;
        c.Property("MaxHeight", &T::MaxHeight, &T::SetMaxHeight).Default = 0;
        c.Property("MaxWidth", &T::MaxWidth, &T::SetMaxWidth).Default = 0;
        c.Property("MinHeight", &T::MinHeight, &T::SetMinHeight).Default = 0;
        c.Property("MinWidth", &T::MinWidth, &T::SetMinWidth).Default = 0;
    });
    return cls.Class();
}

void TSizeLimits::Apply(int& width, int& height) const {
    const auto limit = [](int& value, int least, int greatest) {
        if (greatest > 0 && value > greatest) {
            value = greatest;
        }
        if (least > 0 && value < least) {
            value = least;
        }
    };
    limit(width, MinWidth, MaxWidth);
    limit(height, MinHeight, MaxHeight);
}

void TSizeConstraints::Assign(const TPersistent* source) {
    if (const auto* other = dynamic_cast<const TSizeConstraints*>(source)) {
        FLimits = other->FLimits;
        FControl.SetBoundsRect(FControl.BoundsRect());
    } else {
        TPersistent::Assign(source);
    }
}

void TSizeConstraints::Change(int& field, int value) {
    field = value < 0 ? 0 : value;
    FControl.SetBoundsRect(FControl.BoundsRect());
}

void TSizeConstraints::ChangeScale(int to, int from) {
    for (int* limit : {&FLimits.MinWidth, &FLimits.MinHeight, &FLimits.MaxWidth, &FLimits.MaxHeight}) {
        *limit = ScaleValue(*limit, to, from);
    }
}

TSizeLimits TControl::SizeLimits() {
    TSizeLimits limits = FConstraints.Limits();
    if (!IsIncomplete()) {
        ConstrainedResize(limits);
    }
    return limits;
}

void TControl::ConstrainedResize(TSizeLimits& limits) {
    FOnConstrainedResize(this, limits.MinWidth, limits.MinHeight, limits.MaxWidth, limits.MaxHeight);
}

} // namespace kx
