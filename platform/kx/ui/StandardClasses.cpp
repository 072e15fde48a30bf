// SPDX-License-Identifier: MIT
// All classes that form files may name.

#include "kx/ui/StandardClasses.h"

#include "kx/graphics/ImageFiles.h"
#include "kx/graphics/ImgList.h"
#include "kx/ui/controls/ActnList.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/dialogs/Dialogs.h"
#include "kx/ui/dialogs/DialogsColor.h"
#include "kx/ui/dialogs/DialogsPrint.h"
#include "kx/ui/forms/Forms.h"
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

namespace kx {

void RegisterStandardClasses() {
    RegisterClasses<TAction, TActionList, TMainMenu, TMenuItem, TPopupMenu, TTimer, TImageList>();
    RegisterClasses<TForm, TFrame>();
    RegisterClasses<TButton, TCheckBox, TComboBox, TEdit, TGroupBox, TLabel, TListBox, TMemo, TRadioButton>();
    RegisterClasses<TBevel, TImage, TPaintBox, TPanel, TRadioGroup, TScrollBox, TSpeedButton, TSplitter, TDrawGrid,
                    TStringGrid>();
    RegisterClasses<TListView, TPageControl, TPageScroller, TProgressBar, TStatusBar, TTabControl, TTabSheet, TToolBar,
                    TToolButton, TTreeView>();
    RegisterClasses<TColorDialog, TOpenDialog, TPrintDialog, TSaveDialog>();
    RegisterImageFiles();
}

} // namespace kx
