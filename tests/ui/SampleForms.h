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

    TLabel* Label1 = nullptr;
    TEdit* Edit1 = nullptr;
    TMemo* Memo1 = nullptr;
    TButton* OkButton = nullptr;
    TButton* CancelButton = nullptr;
    TCheckBox* CheckBox1 = nullptr;
    TRadioButton* RadioButton1 = nullptr;
    TRadioButton* RadioButton2 = nullptr;
    TGroupBox* GroupBox1 = nullptr;
    TListBox* ListBox1 = nullptr;
    TComboBox* ComboBox1 = nullptr;
    TComboBox* ComboBox2 = nullptr;
    TPanel* Panel1 = nullptr;
    TBevel* Bevel1 = nullptr;
    TPaintBox* PaintBox1 = nullptr;
    TTabControl* TabControl1 = nullptr;
    TListView* ListView1 = nullptr;
    TSpeedButton* SpeedButton1 = nullptr;
    TDrawGrid* DrawGrid1 = nullptr;
    TPageScroller* PageScroller1 = nullptr;
    TToolBar* ToolBar1 = nullptr;
    TToolButton* ToolButton1 = nullptr;
    TToolButton* ToolButton2 = nullptr;
    TPopupMenu* PopupMenu1 = nullptr;
    TMenuItem* Item1 = nullptr;

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
