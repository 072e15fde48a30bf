// SPDX-License-Identifier: MIT
// The system's colour dialog.

#include "kx/ui/dialogs/DialogsColor.h"

#include "kx/win/Windows.h"

#include <array>
#include <commdlg.h>
#include <cstdio>

namespace kx {

namespace {

constexpr COLORREF EmptyBox = RGB(255, 255, 255);
constexpr COLORREF LastColor = 0xFFFFFF;

/// System flag of each option.
constexpr std::array<DWORD, 5> ColorFlags = {CC_FULLOPEN, CC_PREVENTFULLOPEN, CC_SHOWHELP, CC_SOLIDCOLOR, CC_ANYCOLOR};

DWORD FlagsOf(TColorDialogOptions options) {
    DWORD flags = CC_RGBINIT | CC_ENABLEHOOK;
    for (size_t i = 0; i < ColorFlags.size(); ++i) {
        if (options.Contains(static_cast<TColorDialogOption>(i))) {
            flags |= ColorFlags[i];
        }
    }
    return flags;
}

std::string BoxName(size_t index) { return std::string("Color") + static_cast<char>('A' + index); }

} // namespace

/// One showing: the record for the system and what it points to.
struct TColorDialog::TRun {
    explicit TRun(TColorDialog& dialog) : Dialog(&dialog), Alive(dialog) {}

    std::array<COLORREF, MaxCustomColors> CustomColors{};
    CHOOSECOLORA Record{};
    TColorDialog* Dialog;
    TAlive Alive; ///< Of the component.

    void TakeColors(const TStrings& list);
    void GiveColors(TStrings& list) const;
};

void TColorDialog::TRun::TakeColors(const TStrings& list) {
    for (size_t i = 0; i < CustomColors.size(); ++i) {
        const int64_t color = StrToIntDef("$" + Trim(list.Values(BoxName(i))), EmptyBox);
        CustomColors[i] = color >= 0 && color <= LastColor ? static_cast<COLORREF>(color) : EmptyBox;
    }
}

void TColorDialog::TRun::GiveColors(TStrings& list) const {
    list.BeginUpdate();
    list.Clear();
    for (size_t i = 0; i < CustomColors.size(); ++i) {
        char digits[9] = "";
        std::snprintf(digits, sizeof(digits), "%06X", static_cast<unsigned>(CustomColors[i] & LastColor));
        list.Add(BoxName(i) + "=" + digits);
    }
    list.EndUpdate();
}

const TClass& TColorDialog::StaticClass() {
    static const TClassBuilder<TColorDialog> cls("TColorDialog", TCommonDialog::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("Color", &TColorDialog::Color, &TColorDialog::SetColor).Default = clBlack;
        c.SubObject("CustomColors", &TColorDialog::CustomColors, &TColorDialog::SetCustomColors);
        c.Property("Options", &TColorDialog::Options, &TColorDialog::SetOptions).Default = 0;
    });
    return cls.Class();
}

TColorDialog::TColorDialog(TComponent* owner) : TCommonDialog(owner) {}

TColorDialog::~TColorDialog() { CloseShown(); }

bool TColorDialog::Execute() {
    TRun run(*this);
    run.TakeColors(FCustomColors);
    CHOOSECOLORA& record = run.Record;
    record.lStructSize = sizeof(record);
    record.hwndOwner = SystemOwner();
    record.rgbResult = ColorToRGB(FColor);
    record.lpCustColors = run.CustomColors.data();
    record.Flags = FlagsOf(FOptions);
    record.lCustData = reinterpret_cast<LPARAM>(&run);
    record.lpfnHook = HookProc;
    const bool confirmed = TaskModalDialog(record.hwndOwner, [&] { return ChooseColorA(&record) != FALSE; });
    if (!run.Alive) {
        return false;
    }
    run.GiveColors(FCustomColors);
    if (confirmed) {
        FColor = static_cast<TColor>(record.rgbResult);
    }
    return confirmed;
}

UINT_PTR CALLBACK TColorDialog::HookProc(HWND window, UINT message, WPARAM, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        Guarded([&] {
            // The system may hand over a copy of the record: the run is found by the data in it.
            const auto& run = *reinterpret_cast<const TRun*>(reinterpret_cast<const CHOOSECOLORA*>(lParam)->lCustData);
            if (!run.Alive) { // the component was freed when there was no window to close
                PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
            } else {
                run.Dialog->SystemDialogCreated(window);
            }
        });
    }
    return 0;
}

void TColorDialog::SystemDialogCreated(HWND window) {
    AttachHandle(window);
    DialogShown();
}

} // namespace kx
