// SPDX-License-Identifier: MIT
// The controls that the gallery draws itself.

#include "Views.h"

#include "kx/win/Windows.h"

#include <algorithm>

namespace kx::gallery {

namespace {

constexpr TColor formColor = static_cast<TColor>(0xF5E4D2);
constexpr TColor formFrame = static_cast<TColor>(0xC89A64);

/// `percent` of the colour `a` in the colour `b`
TColor Blend(TColor a, TColor b, int percent) {
    const COLORREF first = ColorToRGB(a);
    const COLORREF second = ColorToRGB(b);
    const auto mix = [percent](int x, int y) { return (x * percent + y * (100 - percent)) / 100; };
    return static_cast<TColor>(RGB(mix(GetRValue(first), GetRValue(second)), mix(GetGValue(first), GetGValue(second)),
                                   mix(GetBValue(first), GetBValue(second))));
}

} // namespace

// --- TPictureView

const TClass& TPictureView::StaticClass() {
    static const TClassBuilder<TPictureView> cls("TPictureView", TCustomControl::StaticClass(),
                                                 [](auto& c) { c.Creatable(); });
    return cls.Class();
}

TPictureView::TPictureView(TComponent* owner) : TCustomControl(owner) {
    SetDoubleBuffered(true);
    FPicture.SetOnChange([this](TObject*) { Invalidate(); });
}

void TPictureView::Resize() {
    Invalidate();
    TCustomControl::Resize();
}

void TPictureView::Paint() {
    const int margin = ScaleLength(6);
    TCanvas& canvas = Canvas();
    const TRect client = ClientRect();
    canvas.Brush().SetColor(clWindow);
    canvas.FillRect(client);
    canvas.Brush().SetColor(clBtnShadow);
    canvas.FrameRect(client);
    const TGraphic* graphic = FPicture.Graphic();
    const int roomX = client.Right - 2 * margin;
    const int roomY = client.Bottom - 2 * margin;
    if (!graphic || graphic->Empty() || roomX <= 0 || roomY <= 0) {
        return;
    }
    const int width = graphic->Width();
    const int height = graphic->Height();
    int shownX = width;
    int shownY = height;
    if (width > roomX || height > roomY) {
        const bool isWide = int64_t{width} * roomY > int64_t{height} * roomX;
        shownX = isWide ? roomX : std::max(1, MulDiv(width, roomY, height));
        shownY = isWide ? std::max(1, MulDiv(height, roomX, width)) : roomY;
    }
    const int left = (client.Right - shownX) / 2;
    const int top = (client.Bottom - shownY) / 2;
    SetStretchBltMode(canvas.Handle(), HALFTONE);
    SetBrushOrgEx(canvas.Handle(), 0, 0, nullptr);
    canvas.StretchDraw({left, top, left + shownX, top + shownY}, *graphic);
}

// --- TDockSketch

const TClass& TDockSketch::StaticClass() {
    static const TClassBuilder<TDockSketch> cls("TDockSketch", TCustomControl::StaticClass(),
                                                [](auto& c) { c.Creatable(); });
    return cls.Class();
}

TDockSketch::TDockSketch(TComponent* owner) : TCustomControl(owner) { SetDoubleBuffered(true); }

void TDockSketch::SetSides(TDockedSides value) {
    if (FSides != value) {
        FSides = value;
        Invalidate();
    }
}

void TDockSketch::Resize() {
    Invalidate();
    TCustomControl::Resize();
}

void TDockSketch::DrawForm(const TRect& rect, const std::string& name) {
    TCanvas& canvas = Canvas();
    canvas.Brush().SetColor(formColor);
    canvas.Pen().SetColor(formFrame);
    canvas.Rectangle(rect);
    TRect text = rect;
    canvas.Brush().SetStyle(bsClear);
    canvas.DrawText(name, text, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
}

void TDockSketch::Paint() {
    TCanvas& canvas = Canvas();
    canvas.SetFont(Font());
    TRect area = ClientRect();
    canvas.Brush().SetColor(Color());
    canvas.FillRect(area);

    const int caption = ScaleLength(18);
    const int width = area.Right;
    const int height = area.Bottom;
    const int left = FSides.Left ? width / 6 : 0;
    const int right = FSides.Right ? width / 4 : 0;
    const int top = FSides.Top ? ScaleLength(30) : 0;
    const int bottom = FSides.Bottom ? ScaleLength(30) : 0;

    canvas.Brush().SetColor(clActiveCaption);
    canvas.Pen().SetColor(clBtnShadow);
    canvas.Rectangle({0, 0, width, caption + 1});
    canvas.Brush().SetColor(clWindow);
    const TRect dialog{left, caption + top, width - right, height - bottom};
    canvas.Rectangle(dialog);

    TRect text = dialog;
    canvas.Brush().SetStyle(bsClear);
    canvas.DrawText("System dialog", text, DT_CENTER | DT_VCENTER | DT_SINGLELINE);

    if (FSides.Left) {
        DrawForm({0, caption, left + 1, height - bottom}, "Left");
    }
    if (FSides.Top) {
        DrawForm({left, caption, width - right, caption + top + 1}, "Top");
    }
    if (FSides.Right) {
        DrawForm({width - right - 1, caption, width, height - bottom}, "Right");
    }
    if (FSides.Bottom) {
        DrawForm({0, height - bottom - 1, width, height}, "Bottom");
    }
}

// --- TPageList

const TClass& TPageList::StaticClass() {
    static const TClassBuilder<TPageList> cls("TPageList", TCustomControl::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("OnChange", &TPageList::OnChange, &TPageList::SetOnChange);
    });
    return cls.Class();
}

TPageList::TPageList(TComponent* owner) : TCustomControl(owner) {
    SetDoubleBuffered(true);
    SetTabStop(true);
}

void TPageList::Add(const std::string& title) {
    FItems.push_back(title);
    Invalidate();
}

void TPageList::SetItemIndex(int value) {
    if (value == FItemIndex || value < 0 || value >= static_cast<int>(FItems.size())) {
        return;
    }
    FItemIndex = value;
    Invalidate();
    FOnChange(this);
}

void TPageList::Paint() {
    const int indent = ScaleLength(16);
    const int mark = ScaleLength(4);
    const int height = ItemHeight();
    TCanvas& canvas = Canvas();
    const TRect client = ClientRect();
    canvas.SetFont(Font());
    canvas.Brush().SetColor(clWindow);
    canvas.FillRect(client);
    canvas.Font().SetColor(clWindowText);
    for (int i = 0; i < static_cast<int>(FItems.size()); ++i) {
        const TRect row{0, i * height, client.Right, (i + 1) * height};
        if (i == FItemIndex) {
            canvas.Brush().SetColor(Blend(clHighlight, clWindow, Focused() ? 28 : 16));
            canvas.FillRect(row);
            canvas.Brush().SetColor(clHighlight);
            canvas.FillRect({0, row.Top, mark, row.Bottom});
        }
        TRect text{indent, row.Top, row.Right, row.Bottom};
        canvas.Brush().SetStyle(bsClear);
        canvas.DrawText(FItems[static_cast<size_t>(i)], text, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    }
}

void TPageList::Resize() {
    Invalidate();
    TCustomControl::Resize();
}

void TPageList::MouseDown(TMouseButton button, TShiftState shift, int x, int y) {
    if (button == mbLeft) {
        SetFocus();
        SetItemIndex(y / ItemHeight());
    }
    TCustomControl::MouseDown(button, shift, x, y);
}

bool TPageList::WantsKey(uint16_t key, TShiftState shift) {
    return key == VK_UP || key == VK_DOWN || key == VK_HOME || key == VK_END || TCustomControl::WantsKey(key, shift);
}

void TPageList::KeyDown(uint16_t& key, TShiftState shift) {
    TCustomControl::KeyDown(key, shift);
    const int last = static_cast<int>(FItems.size()) - 1;
    switch (key) {
    case VK_UP: SetItemIndex(std::max(FItemIndex - 1, 0)); break;
    case VK_DOWN: SetItemIndex(std::min(FItemIndex + 1, last)); break;
    case VK_HOME: SetItemIndex(0); break;
    case VK_END: SetItemIndex(last); break;
    default: break;
    }
}

void TPageList::DoEnter() {
    Invalidate();
    TCustomControl::DoEnter();
}

void TPageList::DoExit() {
    Invalidate();
    TCustomControl::DoExit();
}

} // namespace kx::gallery
