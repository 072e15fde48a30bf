// What all classes publish, against docs/published-classes.txt: names, types, order and defaults are in form files, in
// users' programs and in what an object inspector shows. Run it with KX_UPDATE=1 in the environment to write that file
// anew, and read the difference.

#include "kx/colorprint/KxColorDlg.h"
#include "kx/colorprint/KxPrintDlg.h"
#include "kx/core/TypInfo.h"
#include "kx/dropdown/KxDropDownButton.h"
#include "kx/folder/KxFolderDlg.h"
#include "kx/modeless/KxModelessDlg.h"
#include "kx/opensave/KxOpenDlgEx.h"
#include "kx/opensave/KxOpenLite.h"
#include "kx/opensave/KxSaveDlg.h"
#include "kx/ui/controls/ActnList.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/dialogs/DialogsColor.h"
#include "kx/ui/dialogs/DialogsPrint.h"
#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ComCtrlsPageScroller.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/Grids.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/FileStreams.h"
#include "kx/win/Timers.h"

#include <gtest/gtest.h>
#include <map>

namespace kx {
namespace {

using TClasses = std::map<std::string, const TClass*>;

/// The class, those that it derives from, and those of the objects that it publishes.
void Add(TClasses& classes, const TClass& cls) {
    if (!classes.emplace(cls.Name(), &cls).second) {
        return;
    }
    if (cls.Parent()) {
        Add(classes, *cls.Parent());
    }
    for (const TPropInfo* property : cls.Properties()) {
        if (property->Class) {
            Add(classes, property->Class());
        }
    }
}

template <class... T> TClasses ClassesFrom() {
    TClasses classes;
    (Add(classes, T::StaticClass()), ...);
    return classes;
}

TClasses AllClasses() {
    return ClassesFrom<TAction, TActionList, TBevel, TButton, TCheckBox, TColorDialog, TComboBox, TDrawGrid, TEdit,
                       TForm, TGroupBox, TImage, TImageList, TKxBitBtn, TKxColorDialog, TKxFolderDialog,
                       TKxModelessDialog, TKxOpenDialog, TKxOpenDialogEx, TKxOpenLiteDialog, TKxPlace, TKxPrintDialog,
                       TKxSaveDialog, TKxSaveLiteDialog, TLabel, TListBox, TListColumn, TListView, TMainMenu, TMemo,
                       TMenuItem, TOpenDialog, TPageScroller, TPaintBox, TPanel, TPopupMenu, TPrintDialog, TRadioButton,
                       TSaveDialog, TSpeedButton, TTabControl, TTimer, TToolBar, TToolButton>();
}

std::string SetText(const TEnumInfo& info, int64_t bits) {
    std::string text;
    for (size_t i = 0; i < info.Values.size(); ++i) {
        if ((bits >> i & 1) != 0) {
            text += (text.empty() ? "" : ", ") + info.Values[i];
        }
    }
    return '[' + text + ']';
}

std::string TypeText(const TPropInfo& property) {
    switch (property.Kind) {
    case TTypeKind::Integer:
    case TTypeKind::Int64: return property.Idents ? "identifier" : "integer"; // some have a pointer's size
    case TTypeKind::Char: return "character";
    case TTypeKind::Enumeration: return property.Enum->Name;
    case TTypeKind::Set: return "set of " + property.Enum->Name;
    case TTypeKind::Float: return "number";
    case TTypeKind::String: return "text";
    case TTypeKind::SubObject: return property.Class().Name();
    case TTypeKind::Reference: return "reference to " + property.Class().Name();
    case TTypeKind::Interface: return "reference by interface";
    case TTypeKind::Event: return "event";
    }
    return {};
}

std::string DefaultText(const TPropInfo& property) {
    if (!property.Default) {
        return {};
    }
    const int64_t value = *property.Default;
    std::string text = IntToStr(value);
    if (property.Kind == TTypeKind::Enumeration) {
        text = property.Enum->NameOf(value);
    } else if (property.Kind == TTypeKind::Set) {
        text = SetText(*property.Enum, value);
    } else if (property.Idents) {
        const std::string* const name = property.Idents->NameOf(static_cast<int32_t>(value));
        text = name ? *name : text;
    }
    return " = " + text;
}

std::string Describe(const TClass& cls) {
    std::string text = cls.Name() + (cls.Parent() ? ": " + cls.Parent()->Name() : std::string()) + '\n';
    for (const TPropInfo* property : cls.Properties()) {
        if (!cls.Parent() || cls.Parent()->FindProperty(property->Name) != property) {
            text += "  " + property->Name + ": " + TypeText(*property) + DefaultText(*property) +
                    (property->IsReadOnly() && property->Kind != TTypeKind::SubObject ? ", read only" : "") +
                    (property->Stored ? ", stored by a rule" : "") + '\n';
        }
    }
    return text;
}

TEST(Published, AllClassesPublishWhatTheDocumentSays) {
    std::string now;
    for (const auto& [name, cls] : AllClasses()) {
        now += Describe(*cls) + '\n';
    }
    const std::string file = KX_TEST_DATA "/../../../docs/published-classes.txt";
    TStringList lines;
    if (GetEnvironmentVariableA("KX_UPDATE", nullptr, 0) != 0) {
        TFileStream(file, fmCreate).WriteBuffer(now.data(), now.size());
    }
    LoadFromFile(lines, file);
    TStringList expected;
    expected.SetText(now);
    for (int i = 0; i < std::max(lines.Count(), expected.Count()); ++i) {
        ASSERT_LT(i, lines.Count()) << "the document ends before " << expected[i];
        ASSERT_LT(i, expected.Count()) << "nobody publishes " << lines[i];
        ASSERT_EQ(lines[i], expected[i]) << "in line " << i + 1 << " of docs/published-classes.txt";
    }
}

} // namespace
} // namespace kx
