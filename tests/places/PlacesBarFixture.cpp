// SPDX-License-Identifier: MIT
// A places bar with its form.

#include "PlacesBarFixture.h"

namespace kx::test {

TPlacesBarTest::TPlacesBarTest() : Host(NewForm<TForm>(nullptr)), Frm(NewForm<TKxPlacesBarFrm>(&Application())) {
    Host->SetBorderStyle(bsNone);
    Host->SetBounds(200, 100, 300, 400);
    MoveAway();
}

TPlacesBarTest::~TPlacesBarTest() {
    ReleaseAt({5, 5});
    if (Frm) {
        Frm->Free();
    }
    EXPECT_EQ(Log.Messages(), ExpectedErrors);
}

void TPlacesBarTest::Show() {
    Host->Show();
    ASSERT_TRUE(PumpUntil([&] { return Host->Active(); }));
    Frm->SetParentWindow(Host->Handle());
    Frm->SetBounds(10, 10, 91, 232);
    Frm->SetPlaces(&Options.Places());
    Frm->SetVisible(true);
    Rebuild();
    Frm->Update();
}

void TPlacesBarTest::AddPlaces(std::initializer_list<const char*> captions, int icon) {
    for (const char* caption : captions) {
        TKxPlace& place = AddPlace(Options.Places(), caption);
        place.SetPlaceIconDll("Shell32.dll");
        place.SetPlaceIcon(icon);
        place.SetPlaceHotIcon(icon + 1);
        place.SetPlaceDesc(std::string("hint of ") + caption);
        ++icon;
    }
}

std::vector<std::string> TPlacesBarTest::ButtonCaptions() const {
    std::vector<std::string> captions;
    for (int i = 0; i < Frm->ToolBar1->ButtonCount(); ++i) {
        EXPECT_EQ(Button(i).Index(), i);
        captions.push_back(Button(i).Caption());
    }
    return captions;
}

void TPlacesBarTest::DragButton(int from, const TPoint& end) {
    TKxPlaceButton* const source = &Button(from);
    const TPoint start = Middle(from);
    PressAt(start);
    MoveMouse({start.X + 10, start.Y + 8});
    ASSERT_TRUE(PumpUntil([&] { return source->Dragging(); }));
    MoveMouse(end);
    ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
    ReleaseAt(end);
    ASSERT_TRUE(PumpUntil([] { return MouseInputTaken() && GetCapture() == nullptr; }));
}

std::vector<TStep> TPlacesBarTest::ChooseFromMenu(int index, const TMenuItem& item) {
    const auto row = std::make_shared<int>(item.MenuIndex());
    return {{"the menu opens", {}, [this, index] { ClickAt(Middle(index), mbRight); }},
            {"the item is chosen", [] { return ShownMenu() != nullptr; },
             [row] {
                 RECT r{};
                 const auto menu = reinterpret_cast<HMENU>(SendMessageA(ShownMenu(), 0x1E1, 0, 0)); // MN_GETHMENU
                 GetMenuItemRect(nullptr, menu, static_cast<UINT>(*row), &r);
                 ClickAt({static_cast<int32_t>(r.left + 20), static_cast<int32_t>((r.top + r.bottom) / 2)});
             }}};
}

} // namespace kx::test
