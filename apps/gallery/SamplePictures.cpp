// SPDX-License-Identifier: MIT
// Draws the sample pictures.

#include "SampleFiles.h"

#include "kx/graphics/Graphics.h"
#include "kx/win/FileStreams.h"
#include "kx/win/Windows.h"

#include <array>
#include <vector>

namespace kx::gallery {

namespace {

constexpr TColor Rgb(int red, int green, int blue) { return static_cast<TColor>(blue << 16 | green << 8 | red); }

struct TRgb {
    int Red;
    int Green;
    int Blue;
};

/// Fills `rect` from the colour `top` to the colour `bottom`.
void Gradient(TCanvas& canvas, const TRect& rect, TRgb top, TRgb bottom) {
    const int height = rect.Bottom - rect.Top;
    for (int y = 0; y < height; ++y) {
        const auto mix = [&](int from, int to) { return from + (to - from) * y / height; };
        canvas.Brush().SetColor(
            Rgb(mix(top.Red, bottom.Red), mix(top.Green, bottom.Green), mix(top.Blue, bottom.Blue)));
        canvas.FillRect({rect.Left, rect.Top + y, rect.Right, rect.Top + y + 1});
    }
}

template <size_t N> void Shape(TCanvas& canvas, TColor color, const std::array<TPoint, N>& points) {
    canvas.Brush().SetColor(color);
    canvas.Pen().SetColor(color);
    canvas.Polygon(points);
}

void Disc(TCanvas& canvas, TColor color, int x, int y, int radius) {
    canvas.Brush().SetColor(color);
    canvas.Pen().SetColor(color);
    canvas.Ellipse({x - radius, y - radius, x + radius, y + radius});
}

TBitmap& Prepare(TBitmap& picture) {
    picture.SetHandleType(bmDIB);
    picture.SetPixelFormat(pf24bit);
    return picture;
}

} // namespace

void SaveLakePicture(const std::string& path) {
    TBitmap picture(480, 320);
    TCanvas& canvas = Prepare(picture).Canvas();
    Gradient(canvas, {0, 0, 480, 200}, {92, 158, 214}, {246, 226, 196});
    Disc(canvas, Rgb(255, 244, 214), 372, 62, 26);
    Shape(canvas, Rgb(128, 146, 178),
          std::array<TPoint, 9>{
              {{0, 150}, {70, 92}, {118, 130}, {190, 62}, {262, 138}, {330, 96}, {400, 142}, {480, 104}, {480, 200}}});
    Shape(canvas, Rgb(128, 146, 178), std::array<TPoint, 3>{{{0, 150}, {480, 200}, {0, 200}}});
    Shape(canvas, Rgb(244, 247, 252), std::array<TPoint, 5>{{{190, 62}, {217, 91}, {198, 86}, {184, 96}, {164, 87}}});
    Shape(canvas, Rgb(244, 247, 252), std::array<TPoint, 5>{{{70, 92}, {86, 105}, {72, 104}, {62, 112}, {50, 109}}});
    Shape(canvas, Rgb(74, 104, 96),
          std::array<TPoint, 8>{
              {{0, 176}, {58, 150}, {130, 178}, {214, 160}, {300, 182}, {392, 158}, {480, 180}, {480, 204}}});
    Shape(canvas, Rgb(74, 104, 96), std::array<TPoint, 3>{{{0, 176}, {480, 204}, {0, 204}}});
    Gradient(canvas, {0, 204, 480, 320}, {146, 182, 204}, {36, 74, 112});
    for (int i = 0; i < 11; ++i) { // the sun on the water
        const int half = 8 + i * 3;
        const int y = 212 + i * 9;
        canvas.Brush().SetColor(Rgb(236 - i * 9, 224 - i * 8, 204 - i * 4));
        canvas.FillRect({372 - half, y, 372 + half, y + 2});
    }
    for (int x = 12; x < 150; x += 23) { // the trees on the shore
        const int top = 222 + x % 5 * 6;
        Shape(canvas, Rgb(24, 52, 46), std::array<TPoint, 3>{{{x, top}, {x + 17, 320}, {x - 17, 320}}});
    }
    picture.SaveToFile(path);
}

void SaveCityPicture(const std::string& path) {
    TBitmap picture(420, 420);
    TCanvas& canvas = Prepare(picture).Canvas();
    Gradient(canvas, {0, 0, 420, 420}, {16, 20, 52}, {124, 78, 112});
    Disc(canvas, Rgb(250, 244, 220), 320, 76, 30);
    Disc(canvas, Rgb(24, 26, 58), 308, 68, 27);
    constexpr std::array<TRect, 8> houses{{{0, 220, 62, 420},
                                           {56, 150, 118, 420},
                                           {112, 250, 170, 420},
                                           {162, 110, 226, 420},
                                           {220, 200, 280, 420},
                                           {274, 166, 330, 420},
                                           {324, 246, 376, 420},
                                           {370, 190, 420, 420}}};
    int shade = 0;
    for (const TRect& house : houses) {
        shade = (shade + 11) % 24;
        canvas.Brush().SetColor(Rgb(20 + shade, 22 + shade, 42 + shade));
        canvas.FillRect(house);
        for (int y = house.Top + 12; y < 412; y += 20) {
            for (int x = house.Left + 9; x < house.Right - 12; x += 15) {
                const bool isLit = (x * 7 + y * 13) % 5 < 2;
                canvas.Brush().SetColor(isLit ? Rgb(250, 214, 130) : Rgb(46 + shade, 48 + shade, 72 + shade));
                canvas.FillRect({x, y, x + 7, y + 10});
            }
        }
    }
    picture.SaveToFile(path);
}

void SaveChartPicture(const std::string& path) {
    TBitmap picture(460, 300);
    TCanvas& canvas = Prepare(picture).Canvas();
    canvas.Brush().SetColor(clWhite);
    canvas.FillRect({0, 0, 460, 300});
    canvas.Pen().SetColor(Rgb(220, 224, 230));
    for (int y = 50; y < 250; y += 40) {
        canvas.MoveTo(40, y);
        canvas.LineTo(430, y);
    }
    constexpr std::array<std::array<int, 3>, 4> sales{{{90, 60, 40}, {120, 84, 62}, {104, 130, 80}, {164, 148, 110}}};
    constexpr std::array<TColor, 3> colors{Rgb(38, 106, 176), Rgb(96, 168, 112), Rgb(238, 164, 72)};
    int x = 58;
    for (const auto& quarter : sales) {
        for (size_t i = 0; i < quarter.size(); ++i) {
            canvas.Brush().SetColor(colors[i]);
            canvas.FillRect({x, 250 - quarter[i], x + 22, 250});
            x += 25;
        }
        x += 22;
    }
    canvas.Pen().SetColor(Rgb(90, 98, 110));
    canvas.MoveTo(40, 250);
    canvas.LineTo(430, 250);
    canvas.Brush().SetStyle(bsClear);
    canvas.Font().SetName("Tahoma");
    canvas.Font().SetHeight(-17);
    canvas.TextOut(40, 12, "Sales by quarter");
    canvas.Font().SetHeight(-12);
    for (int i = 0; i < 4; ++i) {
        canvas.TextOut(84 + i * 97, 258, "Q" + IntToStr(i + 1));
    }
    picture.SaveToFile(path);
}

void SaveIcon(const std::string& path) {
    // An icon file: its directory of one entry, then a bitmap header, the colours from the bottom row to the top, and
    // the mask, which 32-bit icons leave empty.
    constexpr int size = 32;
    constexpr DWORD colorBytes = size * size * 4;
    constexpr DWORD maskBytes = size * size / 8;
    TBitmap picture(size, size);
    TCanvas& canvas = Prepare(picture).Canvas();
    Gradient(canvas, {0, 0, size, size}, {64, 132, 206}, {24, 66, 128});
    canvas.Brush().SetColor(clWhite);
    canvas.FillRect({5, 8, 27, 25});
    canvas.Brush().SetColor(Rgb(238, 164, 72));
    canvas.FillRect({5, 8, 10, 25});
    canvas.FillRect({5, 21, 27, 25});

    BITMAPINFOHEADER header{};
    header.biSize = sizeof(header);
    header.biWidth = size;
    header.biHeight = size * 2; // colours and mask
    header.biPlanes = 1;
    header.biBitCount = 32;
    header.biSizeImage = colorBytes + maskBytes;

    const WORD directory[] = {0, 1, 1};                   // reserved, an icon, one picture
    const BYTE entry[] = {size, size, 0, 0, 1, 0, 32, 0}; // width, height, colours, reserved, planes, bits per pixel
    const DWORD extent[] = {sizeof(header) + colorBytes + maskBytes, sizeof(directory) + sizeof(entry) + 8};

    std::vector<BYTE> pixels(colorBytes + maskBytes);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const COLORREF color = ColorToRGB(canvas.Pixels(x, size - 1 - y));
            BYTE* pixel = &pixels[static_cast<size_t>((y * size + x) * 4)];
            pixel[0] = GetBValue(color);
            pixel[1] = GetGValue(color);
            pixel[2] = GetRValue(color);
            pixel[3] = 255;
        }
    }
    TFileStream file(path, fmCreate);
    file.WriteBuffer(directory, sizeof(directory));
    file.WriteBuffer(entry, sizeof(entry));
    file.WriteBuffer(extent, sizeof(extent));
    file.WriteBuffer(&header, sizeof(header));
    file.WriteBuffer(pixels.data(), pixels.size());
}

} // namespace kx::gallery
