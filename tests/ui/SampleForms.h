// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/Menus.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ComCtrlsPageScroller.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/Grids.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <string>
#include <vector>

// Forms of these tests, streamed from the form files beside this header.

namespace kx::test {

/// One of each control.
class TAllControlsForm : public TForm {
    KX_CLASS()

    explicit TAllControlsForm(TComponent* owner = nullptr);

    KX_FIELDS(TAllControlsForm, (TLabel, Label1), (TEdit, Edit1), (TMemo, Memo1), (TButton, OkButton, CancelButton),
              (TCheckBox, CheckBox1), (TRadioButton, RadioButton1, RadioButton2), (TGroupBox, GroupBox1),
              (TListBox, ListBox1), (TComboBox, ComboBox1, ComboBox2), (TPanel, Panel1), (TBevel, Bevel1),
              (TPaintBox, PaintBox1), (TTabControl, TabControl1), (TListView, ListView1), (TSpeedButton, SpeedButton1),
              (TDrawGrid, DrawGrid1), (TPageScroller, PageScroller1), (TToolBar, ToolBar1),
              (TToolButton, ToolButton1, ToolButton2), (TPopupMenu, PopupMenu1), (TMenuItem, Item1))

    std::vector<std::string> Log; ///< Handlers that ran, in order.

    void FormCreate(TObject* sender);
    void FormShow(TObject* sender);
    void FormDestroy(TObject* sender);
    void OkButtonClick(TObject* sender);
    void PaintBox1Paint(TObject* sender);
    void Item1Click(TObject* sender);
    std::vector<std::string>* DestroyLog = nullptr;
};

/// A form and one that inherits from it.
class TBaseForm : public TForm {
    KX_CLASS()

    explicit TBaseForm(TComponent* owner = nullptr);
    TEdit* NameEdit = nullptr;
    TButton* CloseButton = nullptr;
    int Creates = 0;
    std::string CreatedAs; ///< Class at the time of OnCreate.
    void FormCreate(TObject* sender);
    void CloseClick(TObject* sender);
    int Closes = 0;
};

class TDerivedForm : public TBaseForm {
    KX_CLASS()

    explicit TDerivedForm(TComponent* owner = nullptr);
    TCheckBox* Extra = nullptr;
};

} // namespace kx::test
