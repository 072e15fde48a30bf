// SPDX-License-Identifier: MIT
// The parameters of a dialog's placement and docked forms.

#include "kx/frame/KxCustDlgParams.h"

#include "kx/core/Barrier.h"
#include "kx/win/Windows.h"

namespace kx {

// --- TKxPosParams

const TClass& TKxPosParams::StaticClass() {
    static const TClassBuilder<TKxPosParams> cls("TKxPosParams", TPersistent::StaticClass(), [](auto& c) {
        c.Property("ShiftX", &TKxPosParams::ShiftX, &TKxPosParams::SetShiftX);
        c.Property("ShiftY", &TKxPosParams::ShiftY, &TKxPosParams::SetShiftY);
        c.Property("FormName", &TKxPosParams::FormName, &TKxPosParams::SetFormName);
        c.Property("FitToScreen", &TKxPosParams::FitToScreen, &TKxPosParams::SetFitToScreen);
    });
    return cls.Class();
}

void TKxPosParams::SetFormName(const std::string& value) {
    FFormName = value;
    FForm.Set(nullptr);
}

void TKxPosParams::Assign(const TPersistent* source) {
    const auto* const that = dynamic_cast<const TKxPosParams*>(source);
    if (!that) {
        TPersistent::Assign(source);
        return;
    }
    // Deliberate: FFormName stays, where one would expect a full copy.
    FShiftY = that->FShiftY;
    FShiftX = that->FShiftX;
    FForm.Set(that->FForm.Get());
    FFit = that->FFit;
}

// --- TKxCustDlgParams

const TClass& TKxCustDlgParams::StaticClass() {
    using P = TKxCustDlgParams;
    static const TClassBuilder<P> cls("TKxCustDlgParams", TPersistent::StaticClass(), [](auto& c) {
        c.Property("Position", &P::Position, &P::SetPosition).Default = dpDefault;
        c.SubObject("PosParams", &P::PosParams, &P::SetPosParams);
        c.Property("BottomFormName", &P::BottomFormName, &P::SetBottomFormName);
        c.Property("RightFormName", &P::RightFormName, &P::SetRightFormName);
        c.Property("TopFormName", &P::TopFormName, &P::SetTopFormName);
        c.Property("LeftFormName", &P::LeftFormName, &P::SetLeftFormName);
        c.Property("CustFormName", &P::CustFormName, &P::SetCustFormName);
        c.SubObject("Icon", &P::Icon, &P::SetIcon).Stored = [](const TObject& o) {
            return static_cast<const P&>(o).IsIconStored();
        };
    });
    return cls.Class();
}

TKxCustDlgParams::TKxCustDlgParams() = default;

TKxCustDlgParams::~TKxCustDlgParams() {
    if (FConnected) {
        // Forms that have gone to another window by now are left alone.
        Guarded([this] { UndockForms([](const TForm& form, HWND dialog) { return form.ParentWindow() == dialog; }); });
    }
}

void TKxCustDlgParams::SetLeftPanel(const std::string& value) { SetSide(FCanLeft, FLFName, FLeftForm, value, "left"); }

void TKxCustDlgParams::SetTopPanel(const std::string& value) { SetSide(FCanTop, FTFName, FTopForm, value, "top"); }

void TKxCustDlgParams::SetRightPanel(const std::string& value) {
    SetSide(FCanRight, FRFName, FRightForm, value, "right");
}

void TKxCustDlgParams::SetBottomPanel(const std::string& value) {
    SetSide(FCanBottom, FBFName, FBottomForm, value, "bottom");
}

void TKxCustDlgParams::SetSide(bool supported, std::string& name, TFormRef& form, const std::string& value,
                               const char* side) {
    if (supported) {
        name = value;
        form.Set(nullptr);
    } else if (!value.empty() && value != "Not supported" && FDlg && FDlg->IsDesigning()) {
        // "Not supported" is what form designers show for such a side; writing it back is no mistake.
        Application().MessageBox(
            Format("KXQDialogs\rCould not insert %s panel: not implemented in this version", {side}), "Information",
            MB_OK | MB_ICONINFORMATION);
    }
}

void TKxCustDlgParams::SetCustPanel(const std::string& value) {
    FCFName = value;
    FCustForm.Set(nullptr);
}

void TKxCustDlgParams::SetBottomForm(TForm* value) {
    FBottomForm.Set(value);
    FBFName.clear();
}

void TKxCustDlgParams::SetLeftForm(TForm* value) {
    FLeftForm.Set(value);
    FLFName.clear();
}

void TKxCustDlgParams::SetRightForm(TForm* value) {
    FRightForm.Set(value);
    FRFName.clear();
}

void TKxCustDlgParams::SetTopForm(TForm* value) {
    FTopForm.Set(value);
    FTFName.clear();
}

void TKxCustDlgParams::SetCustForm(TForm* value) {
    FCustForm.Set(value);
    FCFName.clear();
}

void TKxCustDlgParams::SetIcon2(HWND handle) const {
    if (const HICON icon = FIcon.Handle()) {
        SendMessageW(handle, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icon));
    }
}

void TKxCustDlgParams::Assign(const TPersistent* source) {
    const auto* const that = dynamic_cast<const TKxCustDlgParams*>(source);
    if (!that) {
        TPersistent::Assign(source);
        return;
    }
    FTopForm.Set(that->FTopForm.Get());
    FLeftForm.Set(that->FLeftForm.Get());
    FBottomForm.Set(that->FBottomForm.Get());
    FRightForm.Set(that->FRightForm.Get());
    FCustForm.Set(that->FCustForm.Get());
    FBFName = that->FBFName;
    FRFName = that->FRFName;
    FTFName = that->FTFName;
    FLFName = that->FLFName;
    FCFName = that->FCFName;
    FPosition = that->FPosition;
    FPosParams.Assign(&that->FPosParams);
    // Deliberate: of the sides only the left one's support is copied, and no icon, where one would expect all of them.
    FCanLeft = that->FCanLeft;
}

} // namespace kx
