// SPDX-License-Identifier: MIT
// The colour dialog: its captions, its docked form, and the events of the full part.

#include "kx/colorprint/KxColorDlg.h"

#include "kx/win/Windows.h"

#include <array>

namespace kx {

namespace {

// Controls of the system's dialog
constexpr int RedEdit = 706;
constexpr int GreenEdit = 707;
constexpr int BlueEdit = 708;
constexpr int AddButton = 712;
constexpr int SolidButton = 713;
constexpr int DefineButton = 719;

/// A component of the colour, as its edit has it. @throws EConvertError, ERangeError
BYTE ComponentIn(HWND window, int edit) {
    std::array<char, 5> text{};
    GetDlgItemTextA(window, edit, text.data(), 4);
    const int64_t value = StrToInt(text.data());
    if (value < 0 || value > 255) {
        RaiseRangeError();
    }
    return static_cast<BYTE>(value);
}

TColor ColorIn(HWND window) {
    const BYTE red = ComponentIn(window, RedEdit);
    const BYTE green = ComponentIn(window, GreenEdit);
    const BYTE blue = ComponentIn(window, BlueEdit);
    return static_cast<TColor>(RGB(red, green, blue));
}

void HideSolidButton(HWND window) { ShowWindow(GetDlgItem(window, SolidButton), SW_HIDE); }

} // namespace

// --- Classes

const TClass& TKxColorDlgCaptions::StaticClass() {
    using C = TKxColorDlgCaptions;
    static const TClassBuilder<C> cls("TKxColorDlgCaptions", TKxDlgCaptions::StaticClass(), [](auto& c) {
        c.Property("AddCustomColor", &C::AddCustomColor, &C::SetAddCustomColor);
        c.Property("DefineCustomColor", &C::DefineCustomColor, &C::SetDefineCustomColor);
    });
    return cls.Class();
}

void TKxColorDlgCaptions::SetCaptions(HWND handle) const {
    TKxDlgCaptions::SetCaptions(handle);
    SetCaption(handle, AddButton, FAddCustomColor);
    SetCaption(handle, DefineButton, FDefineCustomColor);
}

const TClass& TKxCustomColorDialog::StaticClass() {
    using T = TKxCustomColorDialog;
    static const TClassBuilder<T> cls("TKxCustomColorDialog", TColorDialog::StaticClass(),
                                      [](auto& c) { c.Property("OnShow", &T::OnShow, &T::SetOnShow); });
    return cls.Class();
}

const TClass& TKxColorDialog::StaticClass() {
    using T = TKxColorDialog;
    static const TClassBuilder<T> cls("TKxColorDialog", TKxCustomColorDialog::StaticClass(), [](auto& c) {
        c.Creatable();
        c.SubObject("CustDlgParams", &T::CustDlgParams, &T::SetCustDlgParams);
        c.SubObject("DlgItemsCaptions", &T::DlgItemsCaptions, nullptr);
        c.Property("Title", &T::Title, &T::SetTitle);
        c.Property("OnFullOpen", &T::OnFullOpen, &T::SetOnFullOpen);
        c.Property("OnFullOpening", &T::OnFullOpening, &T::SetOnFullOpening);
        c.Property("OnCustomColorAdd", &T::OnCustomColorAdd, &T::SetOnCustomColorAdd);
        c.Property("OnCustomColorAdding", &T::OnCustomColorAdding, &T::SetOnCustomColorAdding);
        c.Property("OnEventHook", &T::OnEventHook, &T::SetOnEventHook);
        c.Property("OnEventHooking", &T::OnEventHooking, &T::SetOnEventHooking);
        c.Property("OnCanClose", &T::OnCanClose, &T::SetOnCanClose);
    });
    return cls.Class();
}

// --- Showing

TKxCustomColorDialog::TKxCustomColorDialog(TComponent* owner) : TKxBoxDialog(owner) {
    FParams.SetCanLeft(false);
    FParams.SetCanTop(false);
    FParams.SetCanRight(false);
}

TKxCustomColorDialog::~TKxCustomColorDialog() { CloseShown(); }

void TKxCustomColorDialog::TakeOver() {
    FParams.SetClientRect(KxClientRect(Handle()));
    AttachDialog(Handle());
    HideSolidButton(Handle());
}

void TKxCustomColorDialog::DoClose() {
    if (UndockForms()) {
        DetachDialog();
        TColorDialog::DoClose();
    }
}

// --- Messages of the dialog window

TKxMsgVerdict TKxCustomColorDialog::BeforeSystem(TMessage& message, int& command) {
    bool allow = true;
    if (message.Msg == WM_COMMAND) {
        command = message.WParamLo();
        switch (command) {
        case IDOK: allow = message.WParamHi() != BN_CLICKED || AllowsClosing(); break;
        case AddButton: allow = AllowsAdding(); break;
        case DefineButton: allow = AllowsFullOpening(); break;
        default: break;
        }
    }
    return allow ? mvPass : mvStop;
}

void TKxCustomColorDialog::AfterSystem(TMessage& message, int command) {
    if (message.Msg == WM_SIZE) {
        FParams.OnResizeWindow(message);
    } else if (command == AddButton) {
        DoAddCustomColor(FAdded);
    } else if (command == DefineButton) {
        FullOpened();
    }
}

bool TKxCustomColorDialog::AllowsAdding() {
    const TColor color = ColorIn(Handle());
    bool allow = true;
    if (!Outlives(*this, [&] { DoAddingCustomColor(color, allow); })) {
        return false;
    }
    // Deliberate: OnCustomColorAdd tells the colour before the event, where one would expect the added one.
    FAdded = color;
    return allow;
}

void TKxCustomColorDialog::DoAddingCustomColor(TColor color, bool& allow) {
    if (!Outlives(*this, [&] { FOnCustomColorAdding(this, color, allow); }) || !allow) {
        return;
    }
    HWND window = Handle();
    const COLORREF rgb = ColorToRGB(color);
    SetDlgItemTextA(window, RedEdit, IntToStr(GetRValue(rgb)).c_str());
    SetDlgItemTextA(window, GreenEdit, IntToStr(GetGValue(rgb)).c_str());
    SetDlgItemTextA(window, BlueEdit, IntToStr(GetBValue(rgb)).c_str());
}

bool TKxCustomColorDialog::AllowsFullOpening() {
    bool allow = true;
    if (!Outlives(*this, [&] { DoFullOpening(allow); })) {
        return false;
    }
    FOuterBefore = KxWindowRect(Handle());
    return allow;
}

void TKxCustomColorDialog::FullOpened() {
    // The system shows the solid button with the rest of the full part. A handler that fails must not keep the window
    // from growing for the docked form.
    if (!Outlives(*this, [this] { HideSolidButton(Handle()); }) ||
        !Outlives(*this, [this] { Guarded([this] { DoFullOpen(); }); })) {
        return;
    }
    int32_t formHeight = 0;
    KxInFormsThread([&] {
        const TForm* const form = FParams.BottomForm();
        formHeight = form ? form->Height() : 0;
    });
    // The system does not know of the docked form, and has given the window a size without room for it.
    const TRect outer = KxWindowRect(Handle());
    const bool grew = Width(outer) != Width(FOuterBefore) || Height(outer) != Height(FOuterBefore);
    if (formHeight != 0 && grew) {
        SetWindowPos(Handle(), nullptr, 0, 0, Width(outer), CheckedAdd(Height(outer), formHeight), SWP_NOMOVE);
    }
}

} // namespace kx
