// SPDX-License-Identifier: MIT
// Colours and their names.

#include "kx/graphics/Graphics.h"

#include "kx/win/Windows.h"

namespace kx {

const TIdentInfo& KxIdentInfo(TColor) {
    // The first name of a value is the one that is written; clLtGray and clDkGray are only read.
    static const TIdentInfo info{{
        {clBlack, "clBlack"},
        {clMaroon, "clMaroon"},
        {clGreen, "clGreen"},
        {clOlive, "clOlive"},
        {clNavy, "clNavy"},
        {clPurple, "clPurple"},
        {clTeal, "clTeal"},
        {clGray, "clGray"},
        {clSilver, "clSilver"},
        {clRed, "clRed"},
        {clLime, "clLime"},
        {clYellow, "clYellow"},
        {clBlue, "clBlue"},
        {clFuchsia, "clFuchsia"},
        {clAqua, "clAqua"},
        {clWhite, "clWhite"},
        {clMoneyGreen, "clMoneyGreen"},
        {clSkyBlue, "clSkyBlue"},
        {clCream, "clCream"},
        {clMedGray, "clMedGray"},
        {clNone, "clNone"},
        {clDefault, "clDefault"},
        {clScrollBar, "clScrollBar"},
        {clBackground, "clBackground"},
        {clActiveCaption, "clActiveCaption"},
        {clInactiveCaption, "clInactiveCaption"},
        {clMenu, "clMenu"},
        {clWindow, "clWindow"},
        {clWindowFrame, "clWindowFrame"},
        {clMenuText, "clMenuText"},
        {clWindowText, "clWindowText"},
        {clCaptionText, "clCaptionText"},
        {clActiveBorder, "clActiveBorder"},
        {clInactiveBorder, "clInactiveBorder"},
        {clAppWorkSpace, "clAppWorkSpace"},
        {clHighlight, "clHighlight"},
        {clHighlightText, "clHighlightText"},
        {clBtnFace, "clBtnFace"},
        {clBtnShadow, "clBtnShadow"},
        {clGrayText, "clGrayText"},
        {clBtnText, "clBtnText"},
        {clInactiveCaptionText, "clInactiveCaptionText"},
        {clBtnHighlight, "clBtnHighlight"},
        {cl3DDkShadow, "cl3DDkShadow"},
        {cl3DLight, "cl3DLight"},
        {clInfoText, "clInfoText"},
        {clInfoBk, "clInfoBk"},
        {clHotLight, "clHotLight"},
        {clGradientActiveCaption, "clGradientActiveCaption"},
        {clGradientInactiveCaption, "clGradientInactiveCaption"},
        {clMenuHighlight, "clMenuHighlight"},
        {clMenuBar, "clMenuBar"},
        {clSilver, "clLtGray"},
        {clGray, "clDkGray"},
    }};
    return info;
}

const TIdentInfo& KxIdentInfo(TFontCharset) {
    static const TIdentInfo info{{
        {ANSI_CHARSET, "ANSI_CHARSET"},
        {DEFAULT_CHARSET, "DEFAULT_CHARSET"},
        {SYMBOL_CHARSET, "SYMBOL_CHARSET"},
        {MAC_CHARSET, "MAC_CHARSET"},
        {SHIFTJIS_CHARSET, "SHIFTJIS_CHARSET"},
        {HANGEUL_CHARSET, "HANGEUL_CHARSET"},
        {JOHAB_CHARSET, "JOHAB_CHARSET"},
        {GB2312_CHARSET, "GB2312_CHARSET"},
        {CHINESEBIG5_CHARSET, "CHINESEBIG5_CHARSET"},
        {GREEK_CHARSET, "GREEK_CHARSET"},
        {TURKISH_CHARSET, "TURKISH_CHARSET"},
        {VIETNAMESE_CHARSET, "VIETNAMESE_CHARSET"},
        {HEBREW_CHARSET, "HEBREW_CHARSET"},
        {ARABIC_CHARSET, "ARABIC_CHARSET"},
        {BALTIC_CHARSET, "BALTIC_CHARSET"},
        {RUSSIAN_CHARSET, "RUSSIAN_CHARSET"},
        {THAI_CHARSET, "THAI_CHARSET"},
        {EASTEUROPE_CHARSET, "EASTEUROPE_CHARSET"},
        {OEM_CHARSET, "OEM_CHARSET"},
    }};
    return info;
}

COLORREF ColorToRGB(TColor color) {
    if (color < 0) {
        return GetSysColor(color & 0xFF);
    }
    return static_cast<COLORREF>(color) & 0x00FFFFFF;
}

std::string ColorToString(TColor color) {
    if (const std::string* name = KxIdentInfo(color).NameOf(color)) {
        return *name;
    }
    static const char digits[] = "0123456789ABCDEF";
    std::string text = "$";
    for (int shift = 28; shift >= 0; shift -= 4) {
        text += digits[(static_cast<uint32_t>(color) >> shift) & 0xF];
    }
    return text;
}

TColor StringToColor(const std::string& text) {
    if (const auto value = KxIdentInfo(TColor{}).Find(text)) {
        return static_cast<TColor>(*value);
    }
    // "$FF00000F" is the same 32 bits as its negative number.
    return static_cast<TColor>(static_cast<int32_t>(static_cast<uint32_t>(StrToInt(text))));
}

} // namespace kx
