#include "colorprint/KxColorDlg.h"

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

bool IsCommandOf(const TMessage& message, int control) {
    return message.Msg == WM_COMMAND && message.WParamLo() == control;
}

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
    FParams.DisconnectForms();
    DetachDialog();
    TColorDialog::DoClose();
}

// --- Messages of the dialog window

TKxMsgVerdict TKxCustomColorDialog::BeforeSystem(TMessage& message) {
    bool allow = true;
    if (IsCommand(message, IDOK, BN_CLICKED)) {
        allow = AllowsClosing();
    } else if (IsCommandOf(message, AddButton)) {
        allow = AllowsAdding();
    } else if (IsCommandOf(message, DefineButton)) {
        allow = AllowsFullOpening();
    }
    return allow ? mvPass : mvStop;
}

void TKxCustomColorDialog::AfterSystem(TMessage& message) {
    if (message.Msg == WM_SIZE) {
        FParams.OnResizeWindow(message);
    } else if (IsCommandOf(message, AddButton)) {
        DoAddCustomColor(FAdded);
    } else if (IsCommandOf(message, DefineButton)) {
        FullOpened();
    }
}

bool TKxCustomColorDialog::AllowsAdding() {
    const std::weak_ptr<const void> alive = Alive();
    const TColor color = ColorIn(Handle());
    bool allow = true;
    DoAddingCustomColor(color, allow);
    if (alive.expired()) {
        return false;
    }
    // Deliberate: the colour before the event, where one would expect the one that the system adds.
    FAdded = color;
    return allow;
}

void TKxCustomColorDialog::DoAddingCustomColor(TColor color, bool& allow) {
    const std::weak_ptr<const void> alive = Alive();
    FOnCustomColorAdding(this, color, allow);
    if (!allow || alive.expired()) {
        return;
    }
    HWND window = Handle();
    const COLORREF rgb = ColorToRGB(color);
    SetDlgItemTextA(window, RedEdit, IntToStr(GetRValue(rgb)).c_str());
    SetDlgItemTextA(window, GreenEdit, IntToStr(GetGValue(rgb)).c_str());
    SetDlgItemTextA(window, BlueEdit, IntToStr(GetBValue(rgb)).c_str());
}

bool TKxCustomColorDialog::AllowsFullOpening() {
    const std::weak_ptr<const void> alive = Alive();
    bool allow = true;
    DoFullOpening(allow);
    if (alive.expired()) {
        return false;
    }
    FOuterBefore = KxWindowRect(Handle());
    return allow;
}

void TKxCustomColorDialog::FullOpened() {
    const std::weak_ptr<const void> alive = Alive();
    HideSolidButton(Handle()); // the system shows it with the rest
    if (alive.expired()) {
        return;
    }
    Guarded([this] { DoFullOpen(); }); // a handler that fails must not leave the form hidden
    if (alive.expired() || !FParams.BottomForm()) {
        return;
    }
    // The system has given the window the size that it knows, without the docked form.
    const TRect outer = KxWindowRect(Handle());
    if (Width(outer) != Width(FOuterBefore) || Height(outer) != Height(FOuterBefore)) {
        SetWindowPos(Handle(), nullptr, 0, 0, Width(outer), CheckedAdd(Height(outer), FParams.BottomForm()->Height()),
                     SWP_NOMOVE);
    }
}

} // namespace kx
