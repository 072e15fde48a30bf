// SPDX-License-Identifier: MIT
// The components of the framework, for the designer.

#include "designer/StandardPackage.h"

#include "designer/DialogEditors.h"
#include "designer/FormDesigner.h"
#include "kx/graphics/ImgList.h"
#include "kx/ide/Palette.h"
#include "kx/ide/StockEditors.h"
#include "kx/ui/StandardClasses.h"
#include "kx/ui/controls/ActnList.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/dialogs/Dialogs.h"
#include "kx/ui/dialogs/DialogsColor.h"
#include "kx/ui/dialogs/DialogsPrint.h"
#include "kx/ui/forms/Frames.h"
#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ComCtrlsBars.h"
#include "kx/ui/widgets/ComCtrlsPageScroller.h"
#include "kx/ui/widgets/ComCtrlsPages.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/ui/widgets/ComCtrlsTree.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/ExtCtrlsRadioGroup.h"
#include "kx/ui/widgets/Grids.h"
#include "kx/ui/widgets/GridsString.h"
#include "kx/ui/widgets/ScrollBoxes.h"
#include "kx/ui/widgets/Splitters.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Timers.h"

namespace kx::designer {

namespace {

/// The name of a component: of a form in this designer it is one that C++ takes too.
class TNameProperty : public TComponentNameProperty {
public:
    using TComponentNameProperty::TComponentNameProperty;
    void SetValue(const std::string& value) override {
        if (const auto* const designer = dynamic_cast<TFormDesigner*>(&Designer())) {
            designer->CheckName(value);
            designer->CheckOwn({dynamic_cast<TComponent*>(&Instance())}, "renamed");
        }
        TComponentNameProperty::SetValue(value);
    }
};

template <class... T> void Declares(const char* header) { RegisterHeader(header, {&T::StaticClass()...}); }

void RegisterStandardHeaders() {
    Declares<TForm>("kx/ui/forms/Forms.h");
    Declares<TFrame>("kx/ui/forms/Frames.h");
    Declares<TAction, TActionList>("kx/ui/controls/ActnList.h");
    Declares<TMainMenu, TMenuItem, TPopupMenu>("kx/ui/controls/Menus.h");
    Declares<TImageList>("kx/graphics/ImgList.h");
    Declares<TTimer>("kx/win/Timers.h");
    Declares<TButton, TCheckBox, TComboBox, TEdit, TGroupBox, TLabel, TListBox, TMemo, TRadioButton>(
        "kx/ui/widgets/StdCtrls.h");
    Declares<TBevel, TImage, TPaintBox, TPanel>("kx/ui/widgets/ExtCtrls.h");
    Declares<TRadioGroup>("kx/ui/widgets/ExtCtrlsRadioGroup.h");
    Declares<TScrollBox>("kx/ui/widgets/ScrollBoxes.h");
    Declares<TSpeedButton>("kx/ui/widgets/Buttons.h");
    Declares<TSplitter>("kx/ui/widgets/Splitters.h");
    Declares<TDrawGrid>("kx/ui/widgets/Grids.h");
    Declares<TStringGrid>("kx/ui/widgets/GridsString.h");
    Declares<TListView, TTabControl>("kx/ui/widgets/ComCtrls.h");
    Declares<TPageControl, TTabSheet>("kx/ui/widgets/ComCtrlsPages.h");
    Declares<TPageScroller>("kx/ui/widgets/ComCtrlsPageScroller.h");
    Declares<TProgressBar, TStatusBar>("kx/ui/widgets/ComCtrlsBars.h");
    Declares<TToolBar, TToolButton>("kx/ui/widgets/ComCtrlsToolBar.h");
    Declares<TTreeView>("kx/ui/widgets/ComCtrlsTree.h");
    Declares<TOpenDialog, TSaveDialog>("kx/ui/dialogs/Dialogs.h");
    Declares<TColorDialog>("kx/ui/dialogs/DialogsColor.h");
    Declares<TPrintDialog>("kx/ui/dialogs/DialogsPrint.h");
}

} // namespace

void RegisterStandardPackage() {
    static bool done = false;
    if (std::exchange(done, true)) {
        return;
    }
    RegisterStandardClasses();
    RegisterStandardHeaders();
    RegisterStockEditors();
    RegisterPropertyEditor(TTypeKind::String, &TComponent::StaticClass(), "Name", MakePropertyEditor<TNameProperty>);
    RegisterDialogEditors();
    RegisterComponents("Standard", {&TMainMenu::StaticClass(), &TPopupMenu::StaticClass(), &TLabel::StaticClass(),
                                    &TEdit::StaticClass(), &TMemo::StaticClass(), &TButton::StaticClass(),
                                    &TCheckBox::StaticClass(), &TRadioButton::StaticClass(), &TListBox::StaticClass(),
                                    &TComboBox::StaticClass(), &TGroupBox::StaticClass(), &TRadioGroup::StaticClass(),
                                    &TPanel::StaticClass(), &TActionList::StaticClass()});
    RegisterComponents("Additional", {&TSpeedButton::StaticClass(), &TStringGrid::StaticClass(),
                                      &TDrawGrid::StaticClass(), &TImage::StaticClass(), &TBevel::StaticClass(),
                                      &TScrollBox::StaticClass(), &TSplitter::StaticClass()});
    RegisterComponents("Win32", {&TTabControl::StaticClass(), &TPageControl::StaticClass(), &TImageList::StaticClass(),
                                 &TProgressBar::StaticClass(), &TTreeView::StaticClass(), &TListView::StaticClass(),
                                 &TToolBar::StaticClass(), &TStatusBar::StaticClass(), &TPageScroller::StaticClass()});
    RegisterComponents("System", {&TTimer::StaticClass(), &TPaintBox::StaticClass()});
    RegisterComponents("Dialogs", {&TOpenDialog::StaticClass(), &TSaveDialog::StaticClass(),
                                   &TColorDialog::StaticClass(), &TPrintDialog::StaticClass()});
}

} // namespace kx::designer
