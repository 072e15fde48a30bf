// SPDX-License-Identifier: MIT
#pragma once

#include "designer/FormDesigner.h"
#include "kx/ide/StockEditors.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/TestDriver.h"

#include <memory>
#include <string>

namespace kx::test {

/// A form with some controls, as its file has it.
inline const char* const SampleForm = "object OrderForm: TOrderForm\n"
                                      "  Left = 300\n"
                                      "  Top = 200\n"
                                      "  Caption = 'Order'\n"
                                      "  ClientHeight = 240\n"
                                      "  ClientWidth = 320\n"
                                      "  Color = clBtnFace\n"
                                      "  OldCreateOrder = False\n"
                                      "  PixelsPerInch = 96\n"
                                      "  TextHeight = 13\n"
                                      "  object NameLabel: TLabel\n"
                                      "    Left = 16\n"
                                      "    Top = 16\n"
                                      "    Width = 31\n"
                                      "    Height = 13\n"
                                      "    Caption = '&Name'\n"
                                      "    FocusControl = NameEdit\n"
                                      "  end\n"
                                      "  object NameEdit: TEdit\n"
                                      "    Left = 80\n"
                                      "    Top = 12\n"
                                      "    Width = 121\n"
                                      "    Height = 21\n"
                                      "    TabOrder = 0\n"
                                      "  end\n"
                                      "  object Box: TPanel\n"
                                      "    Left = 16\n"
                                      "    Top = 48\n"
                                      "    Width = 200\n"
                                      "    Height = 100\n"
                                      "    TabOrder = 1\n"
                                      "    object OkButton: TButton\n"
                                      "      Left = 8\n"
                                      "      Top = 16\n"
                                      "      Width = 75\n"
                                      "      Height = 25\n"
                                      "      Caption = 'OK'\n"
                                      "      Default = True\n"
                                      "      ModalResult = 1\n"
                                      "      TabOrder = 0\n"
                                      "      OnClick = OkButtonClick\n"
                                      "    end\n"
                                      "  end\n"
                                      "  object Gauge: TFuelGauge\n"
                                      "    Left = 230\n"
                                      "    Top = 60\n"
                                      "    Width = 60\n"
                                      "    Height = 60\n"
                                      "    Level = 75\n"
                                      "  end\n"
                                      "end\n";

/// The standard classes are known to form files, and have their editors.
inline void RegisterForDesigner() {
    static const bool once = [] {
        RegisterClasses<TLabel, TEdit, TMemo, TButton, TCheckBox, TRadioButton, TGroupBox, TListBox, TComboBox, TPanel,
                        TBevel, TImage, TMainMenu, TPopupMenu, TMenuItem, TTabControl>();
        RegisterStockEditors();
        return true;
    }();
    static_cast<void>(once);
}

/// The sample form, open in a designer without windows.
class TDesignerTest : public testing::Test {
protected:
    TDesignerTest() {
        RegisterForDesigner();
        Open(SampleForm);
    }

    void Open(const std::string& text) { Designer = std::make_unique<designer::TFormDesigner>(text, nullptr); }
    /// Of the form as it was recorded last, with lines that end as in this source.
    std::string Text() const { return designer::FormText(Designer->State(), "\n"); }
    template <class T = TControl> T& The(const std::string& name) const {
        return dynamic_cast<T&>(*Designer->Form().FindComponent(name));
    }
    bool Has(const std::string& name) const { return Designer->Form().FindComponent(name) != nullptr; }

    std::unique_ptr<designer::TFormDesigner> Designer;
};

} // namespace kx::test
