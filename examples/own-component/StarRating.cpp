// SPDX-License-Identifier: MIT
// A component of one's own.

#include "StarRating.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace sample {

const kx::TClass& TStarRating::StaticClass() {
    static const kx::TClassBuilder<TStarRating> cls("TStarRating", kx::TGraphicControl::StaticClass(), [](auto& c) {
        using T = TStarRating;
        c.Creatable();
        c.Property("Stars", &T::Stars, &T::SetStars).Default = 0;
        c.Property("StarColor", &T::StarColor, &T::SetStarColor).Default = kx::clOlive;
        c.Property("OnChange", &T::OnChange, &T::SetOnChange);
    });
    return cls.Class();
}

TStarRating::TStarRating(kx::TComponent* owner) : TGraphicControl(owner) {
    constexpr int size = 20;
    SetBounds(0, 0, MostStars * size, size);
}

void TStarRating::SetStars(int value) {
    if (value < 0 || value > MostStars) {
        throw kx::ERangeError("There are 0 to 5 stars");
    }
    if (FStars != value) {
        FStars = value;
        Invalidate();
        FOnChange(this);
    }
}

void TStarRating::SetStarColor(kx::TColor value) {
    FStarColor = value;
    Invalidate();
}

void TStarRating::MouseDown(kx::TMouseButton button, kx::TShiftState shift, int x, int y) {
    TGraphicControl::MouseDown(button, shift, x, y);
    if (button == kx::mbLeft && Width() > 0) {
        SetStars(x * MostStars / Width() + 1);
    }
}

void TStarRating::Paint() {
    constexpr int corners = 10;
    constexpr double inner = 0.4; // of the outer radius
    const double size = std::min(Width() / static_cast<double>(MostStars), static_cast<double>(Height()));
    kx::TCanvas& canvas = Canvas();
    canvas.Pen().SetColor(FStarColor);
    for (int star = 0; star < MostStars; ++star) {
        std::array<kx::TPoint, corners> points;
        for (int i = 0; i < corners; ++i) {
            const double radius = size / 2.0 * (i % 2 == 0 ? 0.95 : inner);
            const double angle = i * 2 * std::numbers::pi / corners;
            points[static_cast<size_t>(i)] = {
                static_cast<int>(std::lround((star + 0.5) * size + radius * std::sin(angle))),
                static_cast<int>(std::lround(size / 2.0 - radius * std::cos(angle)))};
        }
        canvas.Brush().SetColor(star < FStars ? FStarColor : kx::clWindow);
        canvas.Polygon(points);
    }
}

} // namespace sample
