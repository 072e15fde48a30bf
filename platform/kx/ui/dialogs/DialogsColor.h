// SPDX-License-Identifier: MIT
#pragma once

#include "kx/graphics/GraphicsTools.h"
#include "kx/ui/dialogs/Dialogs.h"

namespace kx {

enum TColorDialogOption : uint8_t {
    cdFullOpen,        ///< The part in which the user makes colours is open from the start.
    cdPreventFullOpen, ///< The user cannot open it.
    cdShowHelp,
    cdSolidColor, ///< The system rounds to the nearest colour that the screen shows without mixing.
    cdAnyColor    ///< Colours that the screen has to mix can be chosen.
};
KX_ENUM(TColorDialogOption, "cdFullOpen", "cdPreventFullOpen", "cdShowHelp", "cdSolidColor", "cdAnyColor")
using TColorDialogOptions = TSet<TColorDialogOption>;

/// The system's dialog for choosing a colour.
class TColorDialog : public TCommonDialog {
    KX_CLASS()

    static constexpr int MaxCustomColors = 16;

    explicit TColorDialog(TComponent* owner = nullptr);
    ~TColorDialog() override;

    bool Execute() override;

    /// The chosen colour; before the showing, the one to start with.
    TColor Color() const { return FColor; }
    void SetColor(TColor value) { FColor = value; }
    /// The custom colours: "ColorA=FFEEDD" to "ColorP=...", the hexadecimal digits of a colour of 0x00BBGGRR. A box
    /// without an entry, or with one that is no colour, is white. A showing rewrites all of them, also one that the
    /// user cancels: a custom colour stays once it has been added.
    TStrings& CustomColors() { return FCustomColors; }
    const TStrings& CustomColors() const { return FCustomColors; }
    void SetCustomColors(const TStrings& value) { FCustomColors.Assign(&value); }
    TColorDialogOptions Options() const { return FOptions; }
    void SetOptions(TColorDialogOptions value) { FOptions = value; }

private:
    struct TRun;

    static UINT_PTR KX_CALLBACK HookProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void SystemDialogCreated(HWND window);

    TColor FColor = clBlack;
    TStringList FCustomColors;
    TColorDialogOptions FOptions;
};

} // namespace kx
