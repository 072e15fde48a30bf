// SPDX-License-Identifier: MIT
// The pictures of component classes.

#include "designer/ClassIcons.h"

#include "kx/win/Windows.h"

#include <array>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

namespace kx::designer {

namespace {

/// The bitmap resource of the class; null when the program has none.
const TBitmap* ResourceOf(const TClass& cls) {
    static std::map<const TClass*, std::unique_ptr<TBitmap>> loaded;
    const auto known = loaded.find(&cls);
    if (known != loaded.end()) {
        return known->second.get();
    }
    const std::string name = UpperCase(cls.Name());
    std::unique_ptr<TBitmap> bitmap;
    const HMODULE module = GetModuleHandleA(nullptr);
    if (FindResourceA(module, name.c_str(), reinterpret_cast<LPCSTR>(RT_BITMAP))) {
        bitmap = std::make_unique<TBitmap>();
        bitmap->LoadFromResourceName(module, name);
        bitmap->SetTransparent(true);
    }
    return (loaded[&cls] = std::move(bitmap)).get();
}

// --- Pictures of our own: a few shapes each, on a field of 24 x 24.

enum TShape : char { Box, Fill, Line, Text, Dot, Arrow };

struct TStroke {
    TShape Shape;
    int X, Y, X2, Y2;
    TColor Color;
    const char* Letters = "";
};

struct TPictureOf {
    std::string_view Class;
    std::vector<TStroke> Strokes;
};

const std::vector<TPictureOf>& Pictures() {
    constexpr TColor ink = clNavy;
    constexpr TColor gray = clGray;
    constexpr TColor light = clSilver;
    constexpr TColor mark = clGreen;
    static const std::vector<TPictureOf> pictures{
        {"TLabel", {{Text, 3, 2, 21, 22, ink, "A"}}},
        {"TEdit",
         {{Fill, 2, 7, 22, 17, clWhite},
          {Box, 2, 7, 22, 17, gray},
          {Text, 4, 6, 14, 18, ink, "ab"},
          {Line, 16, 9, 16, 15, ink}}},
        {"TMemo",
         {{Fill, 3, 3, 21, 21, clWhite},
          {Box, 3, 3, 21, 21, gray},
          {Line, 6, 7, 18, 7, ink},
          {Line, 6, 10, 16, 10, ink},
          {Line, 6, 13, 18, 13, ink},
          {Line, 6, 16, 12, 16, ink}}},
        {"TButton", {{Fill, 2, 6, 22, 18, light}, {Box, 2, 6, 22, 18, gray}, {Text, 3, 6, 21, 18, ink, "OK"}}},
        {"TBitBtn",
         {{Fill, 2, 6, 22, 18, light},
          {Box, 2, 6, 22, 18, gray},
          {Fill, 5, 10, 9, 14, mark},
          {Text, 10, 6, 22, 18, ink, "ok"}}},
        {"TSpeedButton", {{Fill, 5, 5, 19, 19, light}, {Box, 5, 5, 19, 19, gray}, {Fill, 9, 9, 15, 15, mark}}},
        {"TCheckBox",
         {{Fill, 5, 5, 19, 19, clWhite},
          {Box, 5, 5, 19, 19, gray},
          {Line, 8, 12, 11, 15, mark},
          {Line, 8, 13, 11, 16, mark},
          {Line, 11, 15, 17, 8, mark},
          {Line, 11, 16, 17, 9, mark}}},
        {"TRadioButton", {{Dot, 4, 4, 20, 20, clWhite}, {Dot, 9, 9, 15, 15, mark}}},
        {"TListBox",
         {{Fill, 3, 2, 21, 22, clWhite},
          {Box, 3, 2, 21, 22, gray},
          {Fill, 5, 5, 19, 9, ink},
          {Line, 6, 12, 17, 12, gray},
          {Line, 6, 15, 15, 15, gray},
          {Line, 6, 18, 17, 18, gray}}},
        {"TComboBox",
         {{Fill, 2, 7, 22, 17, clWhite},
          {Box, 2, 7, 22, 17, gray},
          {Fill, 14, 8, 21, 16, light},
          {Arrow, 15, 11, 20, 14, ink}}},
        {"TGroupBox", {{Box, 3, 6, 21, 21, gray}, {Fill, 6, 4, 16, 8, light}, {Text, 5, 1, 17, 11, ink, "xy"}}},
        {"TRadioGroup",
         {{Box, 3, 6, 21, 21, gray},
          {Dot, 6, 9, 11, 14, mark},
          {Dot, 6, 15, 11, 20, clWhite},
          {Line, 13, 11, 18, 11, ink},
          {Line, 13, 17, 18, 17, ink}}},
        {"TPanel",
         {{Fill, 2, 4, 22, 20, light},
          {Line, 2, 4, 22, 4, clWhite},
          {Line, 2, 4, 2, 20, clWhite},
          {Line, 2, 19, 22, 19, gray},
          {Line, 21, 4, 21, 20, gray}}},
        {"TBevel", {{Box, 3, 5, 20, 18, clWhite}, {Box, 4, 6, 21, 19, gray}}},
        {"TImage",
         {{Fill, 3, 4, 21, 20, TColor(0xF0C890)},
          {Box, 3, 4, 21, 20, gray},
          {Dot, 13, 6, 18, 11, clYellow},
          {Fill, 4, 15, 20, 19, mark},
          {Line, 6, 15, 10, 10, mark},
          {Line, 10, 10, 14, 15, mark}}},
        {"TPaintBox",
         {{Box, 3, 4, 21, 20, gray},
          {Line, 5, 17, 9, 9, clRed},
          {Line, 9, 9, 13, 15, clRed},
          {Line, 13, 15, 19, 6, clRed}}},
        {"TMainMenu",
         {{Fill, 2, 4, 22, 9, light},
          {Box, 2, 4, 22, 9, gray},
          {Fill, 4, 9, 15, 21, clWhite},
          {Box, 4, 8, 15, 21, gray},
          {Line, 6, 12, 13, 12, ink},
          {Line, 6, 15, 13, 15, ink},
          {Line, 6, 18, 11, 18, ink}}},
        {"TPopupMenu",
         {{Fill, 7, 6, 20, 21, clWhite},
          {Box, 7, 6, 20, 21, gray},
          {Line, 9, 10, 18, 10, ink},
          {Line, 9, 13, 18, 13, ink},
          {Line, 9, 16, 15, 16, ink},
          {Arrow, 2, 2, 8, 6, ink}}},
        {"TImageList",
         {{Fill, 3, 3, 14, 14, TColor(0xF0C890)},
          {Box, 3, 3, 14, 14, gray},
          {Fill, 6, 6, 17, 17, clYellow},
          {Box, 6, 6, 17, 17, gray},
          {Fill, 9, 9, 21, 21, mark},
          {Box, 9, 9, 21, 21, gray}}},
        {"TActionList",
         {{Fill, 4, 2, 20, 22, clWhite},
          {Box, 4, 2, 20, 22, gray},
          {Dot, 7, 5, 11, 9, mark},
          {Line, 13, 7, 18, 7, ink},
          {Dot, 7, 13, 11, 17, mark},
          {Line, 13, 15, 18, 15, ink}}},
        {"TTabControl",
         {{Fill, 2, 8, 22, 21, light},
          {Box, 2, 8, 22, 21, gray},
          {Fill, 3, 4, 10, 9, light},
          {Box, 3, 4, 10, 9, gray},
          {Box, 10, 5, 17, 9, gray}}},
        {"TPageControl",
         {{Fill, 2, 8, 22, 21, clWhite},
          {Box, 2, 8, 22, 21, gray},
          {Fill, 3, 4, 10, 9, clWhite},
          {Box, 3, 4, 10, 9, gray},
          {Box, 10, 5, 17, 9, gray},
          {Line, 5, 12, 18, 12, ink},
          {Line, 5, 15, 14, 15, ink}}},
        {"TListView",
         {{Fill, 2, 3, 22, 21, clWhite},
          {Box, 2, 3, 22, 21, gray},
          {Fill, 5, 6, 10, 11, clYellow},
          {Fill, 14, 6, 19, 11, clYellow},
          {Fill, 5, 14, 10, 19, clYellow},
          {Fill, 14, 14, 19, 19, clYellow}}},
        {"TTreeView",
         {{Fill, 4, 3, 9, 8, clYellow},
          {Line, 6, 8, 6, 19, gray},
          {Line, 6, 12, 12, 12, gray},
          {Line, 6, 18, 12, 18, gray},
          {Fill, 12, 10, 17, 15, clYellow},
          {Fill, 12, 16, 17, 21, clYellow}}},
        {"TToolBar",
         {{Fill, 1, 7, 23, 17, light},
          {Box, 1, 7, 23, 17, gray},
          {Fill, 4, 9, 9, 15, ink},
          {Fill, 11, 9, 16, 15, mark},
          {Fill, 18, 9, 21, 15, clMaroon}}},
        {"TProgressBar", {{Fill, 2, 9, 22, 15, clWhite}, {Box, 2, 9, 22, 15, gray}, {Fill, 3, 10, 14, 14, mark}}},
        {"TStatusBar",
         {{Fill, 2, 15, 22, 21, light},
          {Box, 2, 3, 22, 21, gray},
          {Line, 2, 15, 22, 15, gray},
          {Line, 12, 15, 12, 21, gray}}},
        {"TSplitter",
         {{Fill, 3, 3, 11, 21, clWhite},
          {Box, 3, 3, 11, 21, gray},
          {Fill, 14, 3, 21, 21, clWhite},
          {Box, 14, 3, 21, 21, gray}}},
        {"TScrollBox",
         {{Fill, 3, 3, 21, 21, clWhite},
          {Box, 3, 3, 21, 21, gray},
          {Fill, 17, 4, 20, 20, light},
          {Fill, 17, 6, 20, 11, gray}}},
        {"TScrollBar", {{Fill, 2, 8, 22, 16, light}, {Box, 2, 8, 22, 16, gray}, {Fill, 8, 9, 14, 15, gray}}},
        {"TPageScroller", {{Fill, 2, 8, 22, 16, light}, {Box, 2, 8, 22, 16, gray}, {Fill, 8, 9, 16, 15, clWhite}}},
        {"TStringGrid",
         {{Fill, 2, 3, 22, 21, clWhite},
          {Fill, 2, 3, 22, 8, light},
          {Fill, 2, 3, 8, 21, light},
          {Box, 2, 3, 22, 21, gray},
          {Line, 8, 3, 8, 21, gray},
          {Line, 15, 3, 15, 21, gray},
          {Line, 2, 8, 22, 8, gray},
          {Line, 2, 14, 22, 14, gray}}},
        {"TTimer", {{Dot, 3, 3, 21, 21, clWhite}, {Line, 12, 12, 12, 6, ink}, {Line, 12, 12, 16, 14, ink}}},
        {"TOpenDialog",
         {{Fill, 2, 8, 19, 19, clYellow},
          {Box, 2, 8, 19, 19, gray},
          {Fill, 3, 5, 9, 8, clYellow},
          {Arrow, 15, 2, 22, 7, ink}}},
        {"TSaveDialog", {{Fill, 4, 4, 20, 20, ink}, {Fill, 7, 4, 17, 10, clWhite}, {Fill, 8, 13, 16, 20, light}}},
        {"TColorDialog",
         {{Fill, 3, 3, 11, 11, clRed},
          {Fill, 13, 3, 21, 11, clYellow},
          {Fill, 3, 13, 11, 21, mark},
          {Fill, 13, 13, 21, 21, ink}}},
        {"TPrintDialog",
         {{Fill, 6, 3, 18, 10, clWhite},
          {Box, 6, 3, 18, 10, gray},
          {Fill, 3, 9, 21, 17, light},
          {Box, 3, 9, 21, 17, gray},
          {Fill, 6, 14, 18, 21, clWhite},
          {Box, 6, 14, 18, 21, gray}}},
    };
    return pictures;
}

class TPainter {
public:
    TPainter(TCanvas& canvas, const TRect& rect)
        : FCanvas(canvas), FLeft(rect.Left + (Width(rect) - ClassIconSize) / 2),
          FTop(rect.Top + (Height(rect) - ClassIconSize) / 2) {}

    void Draw(const TStroke& stroke) {
        const TRect r{FLeft + stroke.X, FTop + stroke.Y, FLeft + stroke.X2, FTop + stroke.Y2};
        FCanvas.Brush().SetColor(stroke.Color);
        FCanvas.Pen().SetColor(stroke.Color);
        switch (stroke.Shape) {
        case Box: FCanvas.FrameRect(r); break;
        case Fill: FCanvas.FillRect(r); break;
        case Line:
            FCanvas.MoveTo(r.Left, r.Top);
            FCanvas.LineTo(r.Right, r.Bottom);
            break;
        case Dot:
            FCanvas.Pen().SetColor(clGray);
            FCanvas.Ellipse(r);
            break;
        case Arrow: {
            const std::array<TPoint, 3> points{TPoint{r.Left, r.Top}, TPoint{r.Right, r.Top},
                                               TPoint{(r.Left + r.Right) / 2, r.Bottom}};
            FCanvas.Polygon(points);
            break;
        }
        case Text: DrawLetters(r, stroke.Color, stroke.Letters, stroke.Y2 - stroke.Y > 16 ? -18 : -9); break;
        }
    }

    void DrawLetters(TRect r, TColor color, const std::string& letters, int height) {
        const TBrushStyle before = FCanvas.Brush().Style();
        FCanvas.Brush().SetStyle(bsClear);
        FCanvas.Font().SetName("Tahoma");
        FCanvas.Font().SetHeight(height);
        FCanvas.Font().SetStyle({fsBold});
        FCanvas.Font().SetColor(color);
        FCanvas.DrawText(letters, r, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
        FCanvas.Font().SetStyle({});
        FCanvas.Brush().SetStyle(before);
    }

private:
    TCanvas& FCanvas;
    int FLeft;
    int FTop;
};

/// "KOD" of TKxOpenDialog: the capital letters behind the T, three at most.
std::string LettersOf(const std::string& className) {
    std::string letters;
    for (size_t i = 1; i < className.size() && letters.size() < 3; ++i) {
        if (className[i] >= 'A' && className[i] <= 'Z') {
            letters += className[i];
        }
    }
    return letters.empty() ? className.substr(0, 2) : letters;
}

} // namespace

void DrawClassIcon(TCanvas& canvas, const TRect& rect, const TClass* cls) {
    TPainter painter(canvas, rect);
    if (!cls) {
        const std::array<TStroke, 4> arrow{TStroke{Line, 8, 4, 8, 18, clBlack}, TStroke{Line, 8, 4, 18, 14, clBlack},
                                           TStroke{Line, 8, 17, 12, 13, clBlack},
                                           TStroke{Line, 12, 13, 18, 13, clBlack}};
        for (const TStroke& stroke : arrow) {
            painter.Draw(stroke);
        }
        return;
    }
    if (const TBitmap* const bitmap = ResourceOf(*cls)) {
        canvas.Draw(rect.Left + (Width(rect) - bitmap->Width()) / 2, rect.Top + (Height(rect) - bitmap->Height()) / 2,
                    *bitmap);
        return;
    }
    for (const TPictureOf& picture : Pictures()) {
        if (picture.Class == cls->Name()) {
            for (const TStroke& stroke : picture.Strokes) {
                painter.Draw(stroke);
            }
            return;
        }
    }
    painter.Draw({Fill, 2, 2, 22, 22, clWhite});
    painter.Draw({Box, 2, 2, 22, 22, clGray});
    painter.DrawLetters({rect.Left, rect.Top, rect.Right, rect.Bottom}, clTeal, LettersOf(cls->Name()), -9);
}

} // namespace kx::designer
