// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/Controls.h"

namespace sample {

/// A rating of up to five stars, which the user gives by a click.
class TStarRating : public kx::TGraphicControl {
    KX_CLASS()

    explicit TStarRating(kx::TComponent* owner = nullptr);

    int Stars() const { return FStars; }
    void SetStars(int value); ///< @throws kx::ERangeError outside of 0 to 5.
    kx::TColor StarColor() const { return FStarColor; }
    void SetStarColor(kx::TColor value);

    const kx::TNotifyEvent& OnChange() const { return FOnChange; }
    void SetOnChange(kx::TNotifyEvent value) { FOnChange = std::move(value); }

    static constexpr int MostStars = 5;

protected:
    void Paint() override;
    void MouseDown(kx::TMouseButton button, kx::TShiftState shift, int x, int y) override;

private:
    int FStars = 0;
    kx::TColor FStarColor = kx::clOlive;
    kx::TNotifyEvent FOnChange;
};

} // namespace sample
