// SPDX-License-Identifier: MIT
// Texts that the designer makes.

#include "designer/Templates.h"

#include "designer/FormDesigner.h"
#include "kx/core/FormClass.h"

namespace kx::designer {

namespace {

constexpr const char* Font = "  Font.Charset = DEFAULT_CHARSET\n"
                             "  Font.Color = clWindowText\n"
                             "  Font.Height = -11\n"
                             "  Font.Name = 'Tahoma'\n"
                             "  Font.Style = []\n"
                             "  PixelsPerInch = 96\n";

constexpr const char* Buttons = "  object OkButton: TButton\n"
                                "    Left = 192\n"
                                "    Top = 160\n"
                                "    Width = 75\n"
                                "    Height = 25\n"
                                "    Anchors = [akRight, akBottom]\n"
                                "    Caption = 'OK'\n"
                                "    Default = True\n"
                                "    ModalResult = 1\n"
                                "    TabOrder = 0\n"
                                "  end\n"
                                "  object CancelButton: TButton\n"
                                "    Left = 272\n"
                                "    Top = 160\n"
                                "    Width = 75\n"
                                "    Height = 25\n"
                                "    Anchors = [akRight, akBottom]\n"
                                "    Cancel = True\n"
                                "    Caption = 'Cancel'\n"
                                "    ModalResult = 2\n"
                                "    TabOrder = 1\n"
                                "  end\n";

std::string Size(int width, int height) {
    return "  ClientHeight = " + IntToStr(height) + "\n  ClientWidth = " + IntToStr(width) + "\n";
}

} // namespace

std::string NewFormText(const std::string& fileName, TFormTemplate kind) {
    const std::string name = fileName.substr(0, fileName.find_last_of('.'));
    if (!IsValidIdent(name) || IsCppKeyword(name)) {
        throw EDesignError("A form file is named for its form: " + name + " cannot be the name of a form");
    }
    const std::string head = "object " + name + ": T" + name + "\n  Left = 0\n  Top = 0\n";
    const std::string caption = "  Caption = '" + name + "'\n";
    const std::string color = "  Color = clBtnFace\n";
    switch (kind) {
    case TFormTemplate::Dialog:
        return head + "  BorderStyle = bsDialog\n" + caption + Size(360, 200) + color + Font +
               "  Position = poMainFormCenter\n" + Buttons + "end\n";
    case TFormTemplate::Docked:
        return head + "  BorderStyle = bsNone\n" + caption + Size(200, 240) + color + Font + "end\n";
    default: return head + caption + Size(400, 300) + color + Font + "end\n";
    }
}

} // namespace kx::designer
