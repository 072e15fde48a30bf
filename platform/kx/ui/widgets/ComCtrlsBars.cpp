// SPDX-License-Identifier: MIT
// Progress bars and status bars.

#include "kx/ui/widgets/ComCtrlsBars.h"

#include "kx/core/Barrier.h"
#include "kx/win/ReflectedMessages.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

// --- TProgressBar

const TClass& TProgressBar::StaticClass() {
    static const TClassBuilder<TProgressBar> cls("TProgressBar", TWinControl::StaticClass(), [](auto& c) {
        using T = TProgressBar;
        c.Creatable();
        c.Property("Min", &T::Min, &T::SetMin).Default = 0;
        c.Property("Max", &T::Max, &T::SetMax).Default = 100;
        c.Property("Orientation", &T::Orientation, &T::SetOrientation).Default = pbHorizontal;
        c.Property("Position", &T::Position, &T::SetPosition).Default = 0;
        c.Property("Smooth", &T::Smooth, &T::SetSmooth).Default = false;
        c.Property("Step", &T::Step, &T::SetStep).Default = 10;
    });
    return cls.Class();
}

TProgressBar::TProgressBar(TComponent* owner) : TWinControl(owner) {
    SetControlStyle({csClickEvents, csDoubleClicks, csOpaque});
    SetBoundsFields(0, 0, 150, 17);
}

void TProgressBar::CreateParams(TCreateParams& params) {
    TWinControl::CreateParams(params);
    params.BaseClass = PROGRESS_CLASSA;
    params.Style |= FOrientation == pbVertical ? DWORD{PBS_VERTICAL} : 0;
    params.Style |= FSmooth ? DWORD{PBS_SMOOTH} : 0;
}

void TProgressBar::CreateWnd() {
    TWinControl::CreateWnd();
    Apply();
}

void TProgressBar::Apply() {
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), PBM_SETRANGE32, static_cast<WPARAM>(FMin), FMax);
        SendMessageW(WindowHandle(), PBM_SETPOS, static_cast<WPARAM>(FPosition), 0);
    }
}

void TProgressBar::SetRange(int min, int max) {
    if (min > max && IsLoading()) { // the other end may come later
        max = min = min == FMin ? max : min;
    }
    if (min > max) {
        throw EInvalidOperation(
            Format("The least position %s is above the greatest, %s", {IntToStr(min), IntToStr(max)}));
    }
    FMin = min;
    FMax = max;
    FPosition = std::clamp(FPosition, FMin, FMax);
    Apply();
}

void TProgressBar::SetPosition(int value) {
    FPosition = std::clamp(value, FMin, FMax);
    Apply();
}

void TProgressBar::StepBy(int delta) {
    SetPosition(static_cast<int>(std::clamp<int64_t>(int64_t{FPosition} + delta, FMin, FMax)));
}

void TProgressBar::SetOrientation(TProgressBarOrientation value) {
    if (FOrientation == value) {
        return;
    }
    FOrientation = value;
    if (!IsLoading()) { // the file has the size already
        if (!Outlives(*this, [this] { SetBounds(Left(), Top(), Height(), Width()); })) {
            return;
        }
    }
    RecreateWnd();
}

void TProgressBar::SetSmooth(bool value) {
    if (FSmooth != value) {
        FSmooth = value;
        RecreateWnd();
    }
}

// --- TStatusPanel

const TClass& TStatusPanel::StaticClass() {
    static const TClassBuilder<TStatusPanel> cls("TStatusPanel", TCollectionItem::StaticClass(), [](auto& c) {
        using T = TStatusPanel;
        c.Property("Alignment", &T::Alignment, &T::SetAlignment).Default = taLeftJustify;
        c.Property("Bevel", &T::Bevel, &T::SetBevel).Default = pbLowered;
        c.Property("Style", &T::Style, &T::SetStyle).Default = psText;
        c.Property("Text", &T::Text, &T::SetText);
        c.Property("Width", &T::Width, &T::SetWidth); // always written, as form files have it
    });
    return cls.Class();
}

void TStatusPanel::Assign(const TPersistent* source) {
    if (const auto* other = dynamic_cast<const TStatusPanel*>(source)) {
        FText = other->FText;
        FWidth = other->FWidth;
        FAlignment = other->FAlignment;
        FBevel = other->FBevel;
        FStyle = other->FStyle;
        Changed(true);
    } else {
        TCollectionItem::Assign(source);
    }
}

const TClass& TStatusPanels::StaticClass() {
    static const TClassBuilder<TStatusPanels> cls("TStatusPanels", TCollection::StaticClass());
    return cls.Class();
}

TStatusPanels::TStatusPanels(TStatusBar& bar) : FBar(bar) {}

TPersistent* TStatusPanels::GetOwner() const { return &FBar; }

void TStatusPanels::Update(TCollectionItem* item) { FBar.PanelsChanged(item); }

// --- TStatusBar

const TClass& TStatusBar::StaticClass() {
    static const TClassBuilder<TStatusBar> cls("TStatusBar", TWinControl::StaticClass(), [](auto& c) {
        using T = TStatusBar;
        c.Creatable();
        c.Property("Align", &T::Align, &T::SetAlign).Default = alBottom;
        c.SubObject("Panels", &T::Panels, &T::SetPanels);
        c.Property("SimplePanel", &T::SimplePanel, &T::SetSimplePanel).Default = false;
        c.Property("SimpleText", &T::SimpleText, &T::SetSimpleText);
        c.Property("SizeGrip", &T::SizeGrip, &T::SetSizeGrip).Default = true;
        c.Property("OnDrawPanel", &T::OnDrawPanel, &T::SetOnDrawPanel);
    });
    return cls.Class();
}

TStatusBar::TStatusBar(TComponent* owner) : TWinControl(owner), FPanels(*this), FCanvas(std::make_unique<TCanvas>()) {
    SetControlStyle({csCaptureMouse, csClickEvents, csDoubleClicks, csOpaque});
    SetBoundsFields(0, 0, 0, 19);
    SetAlign(alBottom);
}

TStatusBar::~TStatusBar() { Destroying(); }

TCanvas& TStatusBar::Canvas() { return *FCanvas; }

void TStatusBar::CreateParams(TCreateParams& params) {
    TWinControl::CreateParams(params);
    params.BaseClass = STATUSCLASSNAMEA;
    params.Style |= CCS_NORESIZE | CCS_NOPARENTALIGN;
    params.Style |= FSizeGrip ? DWORD{SBARS_SIZEGRIP} : 0;
}

void TStatusBar::CreateWnd() {
    TWinControl::CreateWnd();
    ApplyParts();
    ApplySimple();
}

/// The edges of the parts, which need the window's width, and what each shows
void TStatusBar::ApplyParts() {
    if (!HandleAllocated()) {
        return;
    }
    std::vector<int> edges;
    int64_t edge = 0;
    for (int i = 0; i < FPanels.Count(); ++i) {
        edge = std::min<int64_t>(edge + std::max(FPanels[i].Width(), 0), INT32_MAX);
        edges.push_back(static_cast<int>(edge));
    }
    edges.resize(static_cast<size_t>(std::max(FPanels.Count(), 1)));
    edges.back() = -1; // to the end
    SendMessageW(WindowHandle(), SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
    if (FPanels.Count() == 0) {
        SetPartText(0, 0, {});
    }
    for (int i = 0; i < FPanels.Count(); ++i) {
        ApplyPanel(i);
    }
}

void TStatusBar::SetPartText(int part, DWORD style, const std::string& text) {
    SendMessageW(WindowHandle(), SB_SETTEXTW, static_cast<WPARAM>(part) | style,
                 reinterpret_cast<LPARAM>(ToWide(text).c_str()));
}

void TStatusBar::ApplyPanel(int index) {
    constexpr DWORD bevels[] = {SBT_NOBORDERS, 0, SBT_POPOUT};
    constexpr const char* alignments[] = {"", "\t\t", "\t"}; // how the system has it
    const TStatusPanel& panel = FPanels[index];
    if (panel.Style() == psOwnerDraw) {
        SendMessageW(WindowHandle(), SB_SETTEXTW, static_cast<WPARAM>(index) | bevels[panel.Bevel()] | SBT_OWNERDRAW,
                     0);
        InvalidateShown(nullptr, true); // the system sees no difference
    } else {
        SetPartText(index, bevels[panel.Bevel()], alignments[BiDiAlignment(panel.Alignment())] + panel.Text());
    }
}

void TStatusBar::ApplySimple() {
    if (HandleAllocated()) {
        const DWORD reading = UseRightToLeftReading() ? DWORD{SBT_RTLREADING} : 0;
        SendMessageW(WindowHandle(), SB_SIMPLE, FSimplePanel, 0);
        SetPartText(SB_SIMPLEID, reading, FSimpleText);
    }
}

void TStatusBar::PanelsChanged(const TCollectionItem* panel) {
    if (HandleAllocated() && panel) {
        ApplyPanel(panel->Index());
    } else {
        ApplyParts();
    }
}

void TStatusBar::SetSimplePanel(bool value) {
    FSimplePanel = value;
    ApplySimple();
}

void TStatusBar::SetSimpleText(const std::string& value) {
    FSimpleText = value;
    ApplySimple();
}

void TStatusBar::SetSizeGrip(bool value) {
    if (FSizeGrip != value) {
        FSizeGrip = value;
        RecreateWnd();
    }
}

void TStatusBar::Resize() {
    ApplyParts(); // the last part ends where the bar does
    TWinControl::Resize();
}

void TStatusBar::BiDiModeChanged() {
    TWinControl::BiDiModeChanged();
    ApplyParts();
    ApplySimple();
}

void TStatusBar::WndProc(TMessage& message) {
    if (message.Msg == CN_DRAWITEM) {
        DrawItem(message.LParamAs<DRAWITEMSTRUCT>());
        message.Result = TRUE;
        return;
    }
    TWinControl::WndProc(message);
}

void TStatusBar::DrawItem(const DRAWITEMSTRUCT& item) {
    const auto index = static_cast<int>(item.itemID);
    if (index < 0 || index >= FPanels.Count()) {
        return;
    }
    const TAlive alive(*this);
    const TDrawTarget target(item.hDC);
    const TRect rect = FromRECT(item.rcItem);
    FCanvas->SetHandle(item.hDC);
    FCanvas->Font().Assign(&Font());
    FCanvas->Brush().SetColor(Color());
    FCanvas->FillRect(rect);
    Guarded([&] { DrawPanel(FPanels[index], rect); });
    if (alive && target.Lives()) { // else the canvas has let go of the context
        FCanvas->SetHandle(nullptr);
    }
}

void TStatusBar::DrawPanel(TStatusPanel& panel, const TRect& rect) {
    if (FOnDrawPanel) {
        FOnDrawPanel(this, &panel, rect);
    } else {
        FCanvas->TextRect(rect, rect.Left + 1, rect.Top, panel.Text());
    }
}

} // namespace kx
