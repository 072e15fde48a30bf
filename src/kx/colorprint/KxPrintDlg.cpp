// SPDX-License-Identifier: MIT
// The print dialog: its captions, its docked forms, and the events of printers and copies.

#include "kx/colorprint/KxPrintDlg.h"

#include "kx/win/Windows.h"

namespace kx {

namespace {

// Controls of the system's dialog
constexpr int PropertiesButton = 1025;
constexpr int PrinterCombo = 1139;
constexpr int CopiesEdit = 1154;

/// A caption with the control that receives it.
struct TPrintCaption {
    using C = TKxPrintDlgCaptions;
    const char* Name;
    int Control;
    const std::string& (C::*Get)() const;
    void (C::*Set)(const std::string&);
};

#define KX_CAPTION_OF(Name, Control)                                                                                   \
    { #Name, Control, &TKxPrintDlgCaptions::Name, &TKxPrintDlgCaptions::Set##Name }

constexpr TPrintCaption Captions[] = {
    KX_CAPTION_OF(PrnProperties, PropertiesButton),
    KX_CAPTION_OF(PrnStatus, 1095),
    KX_CAPTION_OF(PrnWhere, 1097),
    KX_CAPTION_OF(PrnName, 1093),
    KX_CAPTION_OF(PrnComment, 1096),
    KX_CAPTION_OF(PrnType, 1094),
    KX_CAPTION_OF(CopNumber, 1092),
    KX_CAPTION_OF(CopCollate, 1041),
    KX_CAPTION_OF(RngAll, 1056),
    KX_CAPTION_OF(RngPages, 1058),
    KX_CAPTION_OF(RngPagesFrom, 1089),
    KX_CAPTION_OF(RngPagesTo, 1090),
    KX_CAPTION_OF(RngSelection, 1057),
    KX_CAPTION_OF(PrintToFile, 1040),
    KX_CAPTION_OF(GroupPrinter, 1075),
    KX_CAPTION_OF(GroupRange, 1072),
    KX_CAPTION_OF(GroupCopies, 1073),
};
#undef KX_CAPTION_OF

} // namespace

// --- Classes

const TClass& TKxPrintDlgCaptions::StaticClass() {
    static const TClassBuilder<TKxPrintDlgCaptions> cls("TKxPrintDlgCaptions", TKxDlgCaptions::StaticClass(),
                                                        [](auto& c) {
                                                            for (const TPrintCaption& caption : Captions) {
                                                                c.Property(caption.Name, caption.Get, caption.Set);
                                                            }
                                                        });
    return cls.Class();
}

void TKxPrintDlgCaptions::SetCaptions(HWND handle) const {
    TKxDlgCaptions::SetCaptions(handle);
    for (const TPrintCaption& caption : Captions) {
        SetCaption(handle, caption.Control, (this->*caption.Get)());
    }
}

const TClass& TKxCustomPrintDialog::StaticClass() {
    static const TClassBuilder<TKxCustomPrintDialog> cls("TKxCustomPrintDialog", TPrintDialog::StaticClass());
    return cls.Class();
}

const TClass& TKxPrintDialog::StaticClass() {
    using T = TKxPrintDialog;
    static const TClassBuilder<T> cls("TKxPrintDialog", TKxCustomPrintDialog::StaticClass(), [](auto& c) {
        c.Creatable();
        c.SubObject("CustDlgParams", &T::CustDlgParams, &T::SetCustDlgParams);
        c.SubObject("DlgItemsCaptions", &T::DlgItemsCaptions, nullptr);
        c.Property("Title", &T::Title, &T::SetTitle);
        c.Property("OnEventHook", &T::OnEventHook, &T::SetOnEventHook);
        c.Property("OnEventHooking", &T::OnEventHooking, &T::SetOnEventHooking);
        c.Property("OnPrinterChange", &T::OnPrinterChange, &T::SetOnPrinterChange);
        c.Property("OnPrinterChanging", &T::OnPrinterChanging, &T::SetOnPrinterChanging);
        c.Property("OnPrinterSetupShow", &T::OnPrinterSetupShow, &T::SetOnPrinterSetupShow);
        c.Property("OnPrinterSetupShowing", &T::OnPrinterSetupShowing, &T::SetOnPrinterSetupShowing);
        c.Property("OnCopiesChange", &T::OnCopiesChange, &T::SetOnCopiesChange);
        c.Property("OnCanClose", &T::OnCanClose, &T::SetOnCanClose);
        c.Property("OnShow", &T::OnShow, &T::SetOnShow);
    });
    return cls.Class();
}

// --- Showing

TKxCustomPrintDialog::TKxCustomPrintDialog(TComponent* owner) : TKxBoxDialog(owner) {}

TKxCustomPrintDialog::~TKxCustomPrintDialog() { CloseShown(); }

void TKxCustomPrintDialog::TakeOver() {
    AttachDialog(Handle());
    FPrnDev = ShownPrinter(512);
}

void TKxCustomPrintDialog::DoClose() {
    if (!UndockForms()) {
        return;
    }
    // Deliberate: the window keeps our procedure to its last message, where one would expect it to get its own back.
    Application().HideHint();
    FDlgHandle = nullptr;
    TPrintDialog::DoClose();
}

std::string TKxCustomPrintDialog::ShownPrinter(int size) const {
    std::string text(static_cast<size_t>(size), '\0');
    text.resize(GetDlgItemTextA(Handle(), PrinterCombo, text.data(), size));
    return text;
}

// --- Messages of the dialog window

namespace {

/// The control of the dialog by which the user has done something; 0 for every other notification.
int CommandOf(const TMessage& message) {
    const int control = message.WParamLo();
    switch (control) {
    case IDOK:
    case PropertiesButton: return message.WParamHi() == BN_CLICKED ? control : 0;
    case PrinterCombo: return message.WParamHi() == CBN_SELCHANGE ? control : 0;
    case CopiesEdit: return message.WParamHi() == EN_CHANGE ? control : 0;
    default: return 0;
    }
}

} // namespace

TKxMsgVerdict TKxCustomPrintDialog::BeforeSystem(TMessage& message, int& command) {
    bool allow = true;
    if (message.Msg == WM_COMMAND) {
        command = CommandOf(message);
        switch (command) {
        case IDOK: allow = AllowsClosing(); break;
        // Deliberate: OnEventHook does not hear of a change of the printer, where one would expect it to.
        case PrinterCombo: return AllowsPrinter() ? mvMute : mvStop;
        case PropertiesButton: allow = AllowsSetup(); break;
        default: break;
        }
    }
    return allow ? mvPass : mvStop;
}

void TKxCustomPrintDialog::AfterSystem(TMessage&, int command) {
    switch (command) {
    case PrinterCombo: FOnChangePrn(this); break;
    case CopiesEdit: FOnChangeCopies(this); break;
    case PropertiesButton: FOnSetupPrn(this); break;
    default: break;
    }
}

bool TKxCustomPrintDialog::AllowsPrinter() {
    const TAlive alive(*this);
    // A handler that throws has not consented.
    const bool allow = Guarded(false, [this] {
        bool proceed = true;
        FOnChangingPrn(this, proceed);
        return proceed;
    });
    if (!alive) {
        return false;
    }
    if (allow) {
        FPrnDev = ShownPrinter(256);
        return true;
    }
    // The system keeps the printer that it has, but no message makes the box show that one again.
    HWND combo = GetDlgItem(Handle(), PrinterCombo);
    const std::wstring shown = ToWide(FPrnDev);
    const LRESULT index =
        SendMessageW(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(shown.c_str()));
    if (index >= 0) { // a printer that was removed meanwhile is not there to be shown
        SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    }
    return false;
}

bool TKxCustomPrintDialog::AllowsSetup() {
    bool allow = true;
    FOnSetupShowing(this, allow);
    return allow;
}

} // namespace kx
