// SPDX-License-Identifier: MIT
// The palette of components.

#include "designer/PaletteBar.h"

#include "designer/ClassIcons.h"
#include "kx/ide/Palette.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx::designer {

const TClass& TPaletteButtons::StaticClass() {
    static const TClassBuilder<TPaletteButtons> cls("TPaletteButtons", TCustomControl::StaticClass());
    return cls.Class();
}

TPaletteButtons::TPaletteButtons(TComponent* owner) : TCustomControl(owner) {
    SetDoubleBuffered(true);
    SetShowHint(true);
}

TPaletteButtons::~TPaletteButtons() = default;

void TPaletteButtons::ShowClasses(std::vector<const TClass*> classes) {
    FClasses = std::move(classes);
    FFirst = 0;
    Invalidate();
}

void TPaletteButtons::SetChosen(const TClass* value) {
    if (FChosen != value) {
        FChosen = value;
        Invalidate();
    }
}

TRect TPaletteButtons::ButtonRect(const TClass* cls) const {
    int index = 0;
    for (size_t i = 0; cls && i < FClasses.size(); ++i) {
        index = FClasses[i] == cls ? static_cast<int>(i) + 1 : index;
    }
    const int place = index == 0 ? 0 : index <= FFirst || index > FFirst + ShownCount() ? -1 : index - FFirst;
    return place < 0 ? TRect{0, 0, 0, 0}
                     : TRect{2 + place * ButtonSize(), 2, 2 + (place + 1) * ButtonSize(), 2 + ButtonSize()};
}

int TPaletteButtons::ButtonAt(int x, int y) const {
    const int place = (x - 2) / ButtonSize();
    const int index = place == 0 ? 0 : place + FFirst;
    const bool isIn =
        x >= 2 && y >= 2 && y < 2 + ButtonSize() && place <= ShownCount() && index <= static_cast<int>(FClasses.size());
    return isIn ? index : -1;
}

// --- More pictures than there is room for

int TPaletteButtons::ShownCount() const {
    const int all = static_cast<int>(FClasses.size());
    const int room = std::max((ClientWidth() - 2) / ButtonSize() - 1, 0);
    return all <= room ? all : std::max((ClientWidth() - 2 - 2 * ScrollWidth()) / ButtonSize() - 1, 1);
}

TRect TPaletteButtons::ScrollRect(bool forward) const {
    if (ShownCount() == static_cast<int>(FClasses.size())) {
        return {0, 0, 0, 0};
    }
    const int left = ClientWidth() - (forward ? 1 : 2) * ScrollWidth();
    return {left, 2, left + ScrollWidth(), 2 + ButtonSize()};
}

void TPaletteButtons::Scroll(int by) {
    FFirst = std::clamp(FFirst + by, 0, static_cast<int>(FClasses.size()) - ShownCount());
    Invalidate();
}

void TPaletteButtons::Resize() {
    TCustomControl::Resize();
    Scroll(0);
}

void TPaletteButtons::WndProc(TMessage& message) {
    if (message.Msg == WM_MOUSEWHEEL) {
        Scroll(FWheel.Lines(static_cast<int16_t>(message.WParamHi()), ShownCount()));
        return;
    }
    TCustomControl::WndProc(message);
}

void TPaletteButtons::MouseDown(TMouseButton button, TShiftState shift, int x, int y) {
    TCustomControl::MouseDown(button, shift, x, y);
    for (const bool forward : {false, true}) {
        const TRect r = ScrollRect(forward);
        if (button == mbLeft && x >= r.Left && x < r.Right) {
            Scroll(forward ? 1 : -1);
            return;
        }
    }
    const int index = ButtonAt(x, y);
    if (button == mbLeft && index >= 0 && !shift.Contains(ssDouble)) { // whose double click has been answered
        SetChosen(index == 0 ? nullptr : FClasses[static_cast<size_t>(index) - 1]);
        FOnChosen(this);
    }
}

void TPaletteButtons::MouseMove(TShiftState shift, int x, int y) {
    TCustomControl::MouseMove(shift, x, y);
    const int index = ButtonAt(x, y);
    SetHint(index < 0 ? "" : index == 0 ? "Select" : FClasses[static_cast<size_t>(index) - 1]->Name());
}

void TPaletteButtons::MouseUp(TMouseButton button, TShiftState shift, int x, int y) {
    TCustomControl::MouseUp(button, shift, x, y);
    if (button == mbLeft && FChosen) {
        FOnDragged(ClientToScreen({x, y}));
    }
}

void TPaletteButtons::DblClick() {
    TCustomControl::DblClick();
    POINT mouse;
    GetCursorPos(&mouse);
    const TPoint at = ScreenToClient({mouse.x, mouse.y});
    if (FChosen && ButtonAt(at.X, at.Y) > 0) {
        Drop(*FChosen);
    }
}

void TPaletteButtons::Drop(const TClass& cls) {
    SetChosen(&cls);
    FOnDropWanted(this);
}

void TPaletteButtons::Paint() {
    TCanvas& canvas = Canvas();
    const auto draw = [&](const TClass* cls) {
        const TRect r = ButtonRect(cls);
        if (r.Right == 0) {
            return; // scrolled away
        }
        const bool isChosen = cls == FChosen;
        canvas.Brush().SetColor(isChosen ? clWindow : clBtnFace);
        canvas.FillRect(r);
        if (isChosen) {
            RECT edge{r.Left, r.Top, r.Right, r.Bottom};
            DrawEdge(canvas.Handle(), &edge, BDR_SUNKENOUTER, BF_RECT);
        }
        DrawClassIcon(canvas, r, cls);
    };
    draw(nullptr);
    for (const TClass* cls : FClasses) {
        draw(cls);
    }
    for (const bool forward : {false, true}) {
        const TRect r = ScrollRect(forward);
        const bool isEnd = forward ? FFirst + ShownCount() == static_cast<int>(FClasses.size()) : FFirst == 0;
        RECT frame{r.Left, r.Top, r.Right, r.Bottom};
        if (r.Right > 0) {
            DrawFrameControl(canvas.Handle(), &frame, DFC_SCROLL,
                             (forward ? DFCS_SCROLLRIGHT : DFCS_SCROLLLEFT) | (isEnd ? DFCS_INACTIVE : 0U));
        }
    }
}

const TClass& TPaletteBar::StaticClass() {
    static const TClassBuilder<TPaletteBar> cls("TPaletteBar", TPanel::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

TPaletteBar::TPaletteBar(TComponent* owner) : TPanel(owner) {
    constexpr int searchWidth = 130;
    constexpr int searchHeight = 21;
    constexpr int margin = 4;
    FSearchPanel.SetBevelOuter(bvNone);
    FSearchPanel.SetBounds(0, 0, searchWidth + 2 * margin, Height());
    FSearchPanel.SetAlign(alLeft);
    FSearchPanel.SetParent(this);
    FSearchLabel.SetCaption("Find a compo&nent");
    FSearchLabel.SetFocusControl(&FSearch);
    FSearchLabel.SetBounds(margin, margin, searchWidth, searchHeight);
    FSearchLabel.SetParent(&FSearchPanel);
    FSearch.SetBounds(margin, margin + searchHeight, searchWidth, searchHeight);
    FSearch.SetParent(&FSearchPanel);
    FSearch.SetHint("Find components by a part of their names; Enter puts the first one on the form");
    FSearch.SetOnChange([this](TObject*) { Fill(); });
    FSearch.SetOnKeyDown([this](TObject*, uint16_t& key, TShiftState) { SearchKey(key); });
    FSearch.SetOnKeyPress([](TObject*, char32_t& key) { key = key == '\r' ? 0 : key; }); // or the system beeps
    FTabs.SetAlign(alClient);
    FTabs.SetParent(this);
    FTabs.SetOnChange([this](TObject*) {
        FSearch.SetText("");
        Fill();
    });
    FButtons.SetParent(&FTabs);
    FButtons.SetAlign(alClient);
}

TPaletteBar::~TPaletteBar() {
    FSearch.SetOnChange(nullptr);
    FSearch.SetOnKeyDown(nullptr);
}

void TPaletteBar::SearchKey(uint16_t& key) {
    if (key == VK_RETURN && !FButtons.Classes().empty()) {
        key = 0;
        FButtons.Drop(*FButtons.Classes().front());
    }
}

void TPaletteBar::ReadPages() {
    FTabs.Tabs().Clear();
    for (const TPalettePage& page : PalettePages()) {
        FTabs.Tabs().Add(page.Name);
    }
    FTabs.SetTabIndex(0);
    Fill();
}

void TPaletteBar::Fill() {
    const std::string wanted = UpperCase(FSearch.Text());
    std::vector<const TClass*> classes;
    int index = 0;
    for (const TPalettePage& page : PalettePages()) {
        for (const TClass* cls : page.Classes) {
            if (wanted.empty() ? index == FTabs.TabIndex() : UpperCase(cls->Name()).find(wanted) != std::string::npos) {
                classes.push_back(cls);
            }
        }
        ++index;
    }
    FButtons.ShowClasses(std::move(classes));
}

} // namespace kx::designer
