// SPDX-License-Identifier: MIT
// What all classes publish, against docs/published-classes.txt: names, types, order and defaults are in form files, in
// users' programs and in what an object inspector shows. So is what a new object has where it differs from the default
// or, without one, from nothing. Run it with KX_UPDATE=1 in the environment to write that file anew, and read the
// difference.

#include "kx/colorprint/KxColorDlg.h"
#include "kx/colorprint/KxPrintDlg.h"
#include "kx/core/FormText.h"
#include "kx/core/Streams.h"
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
#include "kx/ui/forms/Frames.h"
#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ComCtrlsBars.h"
#include "kx/ui/widgets/ComCtrlsPageScroller.h"
#include "kx/ui/widgets/ComCtrlsPages.h"
#include "kx/ui/widgets/ComCtrlsTree.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/ExtCtrlsRadioGroup.h"
#include "kx/ui/widgets/GridsString.h"
#include "kx/ui/widgets/ScrollBoxes.h"
#include "kx/ui/widgets/Splitters.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/FileStreams.h"
#include "kx/win/Timers.h"
#include "kx/win/Windows.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace kx {
namespace {

/// Each class that programs make objects of, by its name, with a way to make one.
using TMakers = std::map<std::string, std::function<std::unique_ptr<TPersistent>()>>;
using TClasses = std::map<std::string, const TClass*>;

template <class... T> TMakers MakersOf() {
    return {{T::StaticClass().Name(), [] { return std::make_unique<T>(nullptr); }}...};
}

const TMakers& Makers() {
    static const TMakers makers =
        MakersOf<TAction, TActionList, TBevel, TButton, TCheckBox, TColorDialog, TComboBox, TDrawGrid, TEdit, TForm,
                 TFrame, TGroupBox, TImage, TImageList, TKxBitBtn, TKxColorDialog, TKxFolderDialog, TKxModelessDialog,
                 TKxOpenDialog, TKxOpenDialogEx, TKxOpenLiteDialog, TKxPlace, TKxPrintDialog, TKxSaveDialog,
                 TKxSaveLiteDialog, TLabel, TListBox, TListColumn, TListView, TMainMenu, TMemo, TMenuItem, TOpenDialog,
                 TPageControl, TPageScroller, TPaintBox, TPanel, TPopupMenu, TPrintDialog, TProgressBar, TRadioButton,
                 TRadioGroup, TSaveDialog, TScrollBox, TSpeedButton, TSplitter, TStatusBar, TStatusPanel, TStringGrid,
                 TTabControl, TTabSheet, TTimer, TToolBar, TToolButton, TTreeView>();
    return makers;
}

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

TClasses AllClasses() {
    TClasses classes;
    for (const auto& [name, make] : Makers()) {
        Add(classes, make()->ClassType());
    }
    return classes;
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

std::string OrdText(const TPropInfo& property, int64_t value) {
    if (property.Kind == TTypeKind::Enumeration) {
        return property.Enum->NameOf(value);
    }
    if (property.Kind == TTypeKind::Set) {
        return SetToString(*property.Enum, static_cast<uint32_t>(value));
    }
    const std::string* const name = property.Idents ? property.Idents->NameOf(static_cast<int32_t>(value)) : nullptr;
    return name ? *name : IntToStr(value);
}

/// What the property of a new object has, where it is neither the default nor nothing.
std::string FirstText(const TPropInfo& property, const TObject& object) {
    if (property.IsOrdinal()) {
        const int64_t value = property.GetOrd(object);
        return value == property.Default.value_or(0) ? "" : OrdText(property, value);
    }
    switch (property.Kind) {
    case TTypeKind::Float: return property.GetFloat(object) != 0 ? "not zero" : "";
    case TTypeKind::String: return property.GetStr(object);
    case TTypeKind::Event: return property.GetEvent(object) ? "a handler" : "";
    default: break;
    }
    const TObject* const value = property.GetObj(object);
    const auto* const lines = dynamic_cast<const TStrings*>(value);
    const bool isSubObject = property.Kind == TTypeKind::SubObject;
    return lines                   ? (lines->Count() > 0 ? (*lines)[0] + "..." : "")
           : value && !isSubObject ? "a " + value->ClassType().Name()
                                   : "";
}

/// Fonts and what depends on the screen is left out.
bool IsTheSystems(const TPropInfo& property) {
    return property.Name == "Font" || property.Name.starts_with("Client") || property.Name == "PixelsPerInch";
}

std::string DescribeNew(const TObject& object, const std::string& path = {}) {
    std::string text;
    for (const TPropInfo* property : object.ClassType().Properties()) {
        if (IsTheSystems(*property)) {
            continue;
        }
        const std::string first = FirstText(*property, object);
        text += first.empty() ? "" : "  a new one: " + path + property->Name + " = " + first + '\n';
        if (property->Kind == TTypeKind::SubObject) {
            text += DescribeNew(*property->GetObj(object), path + property->Name + '.');
        }
    }
    return text;
}

std::string Describe(const TClass& cls) {
    std::string text = cls.Name() + (cls.Parent() ? ": " + cls.Parent()->Name() : std::string()) + '\n';
    for (const TPropInfo* property : cls.Properties()) {
        if (!cls.Parent() || cls.Parent()->FindProperty(property->Name) != property) {
            text += "  " + property->Name + ": " + TypeText(*property) +
                    (property->Default ? " = " + OrdText(*property, *property->Default) : std::string()) +
                    (property->IsReadOnly() && property->Kind != TTypeKind::SubObject ? ", read only" : "") +
                    (property->Stored ? ", stored by a rule" : "") + '\n';
        }
    }
    const auto maker = Makers().find(cls.Name());
    return maker == Makers().end() ? text : text + DescribeNew(*maker->second());
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

// --- Values

/// The values of all properties with their paths, also those of the objects that the object publishes. Of an event and
/// of a reference: whether there is one.
using TValues = std::map<std::string, std::string>;

template <class F> void ForEachProperty(TObject& object, const F& act, const std::string& path = {}) {
    for (const TPropInfo* property : object.ClassType().Properties()) {
        if (property->Kind == TTypeKind::SubObject) {
            ForEachProperty(*property->GetObj(object), act, path + property->Name + '.');
        } else {
            act(path + property->Name, *property, object);
        }
    }
}

std::string ValueText(const TPropInfo& property, const TObject& object) {
    switch (property.Kind) {
    case TTypeKind::String: return property.GetStr(object);
    case TTypeKind::Event: return property.GetEvent(object) ? "set" : "";
    case TTypeKind::Reference:
    case TTypeKind::Interface: return property.GetObj(object) ? "set" : "";
    default: return OrdText(property, property.GetOrd(object));
    }
}

TValues ValuesOf(TObject& object) {
    TValues values;
    ForEachProperty(object, [&](const std::string& path, const TPropInfo& property, TObject& holder) {
        values[path] = ValueText(property, holder);
    });
    return values;
}

template <class... Event> TEventTargetPtr HandlerFor(std::type_index signature) {
    TEventTargetPtr handler;
    ((Event::Signature() == signature ? void(handler = Event([](auto&&...) {}).Target()) : void()), ...);
    return handler;
}

int64_t OtherOrd(const TPropInfo& property, int64_t value) {
    if (property.Kind == TTypeKind::Set) {
        return value ^ 1;
    }
    if (property.Kind == TTypeKind::Enumeration) {
        return (value + 1) % static_cast<int64_t>(property.Enum->Values.size());
    }
    if (property.Idents) {
        return property.Idents->Entries[property.Idents->Entries[0].Value == value ? 1 : 0].Value;
    }
    return value < property.MaxValue ? value + 1 : value - 1;
}

/// Gives the property another value than it has, perhaps one of these components.
void Change(const TPropInfo& property, TObject& object, const std::vector<std::unique_ptr<TPersistent>>& others) {
    switch (property.Kind) {
    case TTypeKind::String: property.SetStr(object, "Other"); break;
    case TTypeKind::Event:
        property.SetEvent(
            object,
            HandlerFor<TCanResizeEvent, TCloseEvent, TCloseQueryEvent, TConstrainedResizeEvent, TContextPopupEvent,
                       TDragDropEvent, TDragOverEvent, TDrawCellEvent, TDrawItemEvent, TDrawPanelEvent, TEndDragEvent,
                       TGetEditEvent, TIncludeItemEvent, TKeyEvent, TKeyPressEvent, TKxColorEvent, TKxColorQueryEvent,
                       TKxDialogClosedEvent, TKxFileFilterEvent, TKxFolderCreationEvent, TKxMsgQueryEvent,
                       TKxShareViolationEvent, TKxViewStyleEvent, TKxViewStyleQueryEvent, TLVChangeEvent,
                       TLVColumnClickEvent, TLVCompareEvent, TLVSelectItemEvent, TMeasureItemEvent, TMouseEvent,
                       TMouseMoveEvent, TMouseWheelEvent, TMouseWheelUpDownEvent, TMovedEvent, TNotifyEvent,
                       TPageScrollEvent, TSelectCellEvent, TSetEditEvent, TShortCutEvent, TStartDragEvent,
                       TTabChangingEvent, TTBCustomDrawBtnEvent, TTBCustomDrawEvent, TTVChangedEvent, TTVChangingEvent,
                       TTVEditedEvent, TWndMethod>(property.Signature));
        break;
    case TTypeKind::Reference:
    case TTypeKind::Interface:
        for (const std::unique_ptr<TPersistent>& other : others) {
            if (property.Class ? other->InheritsFrom(property.Class()) : other->ClassName() == "TKxOpenDialog") {
                property.SetObj(object, other.get());
                break;
            }
        }
        break;
    default: property.SetOrd(object, OtherOrd(property, property.GetOrd(object)));
    }
}

/// The object once it was written and read again.
std::unique_ptr<TPersistent> Read(TComponent& component, TStreamFormat format) {
    TMemoryStream stream;
    WriteComponent(stream, component, format);
    stream.SetPosition(0);
    std::unique_ptr<TPersistent> read = Makers().at(component.ClassName())();
    ReadComponent(stream, static_cast<TComponent*>(read.get()));
    return read;
}

/// A label is as large as its text, and a page stands where its page control puts it.
bool SizesItself(const TPersistent& object, const std::string& path) {
    const bool isPlace = path == "Left" || path == "Width" || path == "Height";
    return (object.InheritsFrom(TLabel::StaticClass()) && isPlace) ||
           (object.InheritsFrom(TTabSheet::StaticClass()) && (isPlace || path == "Top"));
}

std::vector<std::unique_ptr<TPersistent>> OneOfEach() {
    std::vector<std::unique_ptr<TPersistent>> objects;
    for (const auto& [name, make] : Makers()) {
        objects.push_back(make());
    }
    return objects;
}

/// What comes of a change of one value of a new object, besides that it has it and keeps it in form files.
void NoteConsequences(std::set<std::string>& notes, const std::function<std::unique_ptr<TPersistent>()>& make,
                      const std::string& path) {
    const std::unique_ptr<TPersistent> object = make();
    std::vector<std::unique_ptr<TPersistent>> others; // they go first: the object may have become the parent of one
    const TValues first = ValuesOf(*object);
    bool travels = false;
    ForEachProperty(*object, [&](const std::string& at, const TPropInfo& property, TObject& holder) {
        if (at == path) {
            if (property.Kind == TTypeKind::Reference || property.Kind == TTypeKind::Interface) {
                others = OneOfEach();
            }
            try {
                Change(property, holder, others);
            } catch (const Exception& e) {
                notes.insert(path + ": " + e.Message());
            }
            travels = property.IsOrdinal() || property.Kind == TTypeKind::String;
        }
    });
    const TValues now = ValuesOf(*object);
    if (now.at(path) == first.at(path)) {
        notes.insert(path + " is not taken");
    }
    for (const auto& [other, value] : now) {
        if (other != path && value != first.at(other) && !SizesItself(*object, other)) {
            notes.insert(path + " changes " + other);
        }
    }
    if (auto* const component = dynamic_cast<TComponent*>(object.get()); component && travels) {
        for (const TStreamFormat format : {TStreamFormat::Text, TStreamFormat::Binary}) {
            if (ValuesOf(*Read(*component, format)).at(path) != now.at(path) && !SizesItself(*object, path)) {
                notes.insert(path + " is lost in a form file");
            }
        }
    }
}

TEST(Published, EachValueIsTakenChangesNoOtherAndTravelsWithFormFiles) {
    std::set<std::string> notes;
    for (const auto& [name, maker] : Makers()) {
        ForEachProperty(*maker(), [&, &make = maker](const std::string& path, const TPropInfo& property, TObject&) {
            if (!property.IsReadOnly()) {
                NoteConsequences(notes, make, path);
            }
        });
    }
    for (const char* known : {"Action changes Visible",
                              "ActiveControl is not taken",
                              "ActivePage is not taken",
                              "ActiveControl: Cannot focus a disabled or invisible window",
                              "BiDiMode changes ParentBiDiMode",
                              "BorderStyle changes ClientHeight",
                              "BorderStyle changes ClientWidth",
                              "BorderWidth changes ClientHeight",
                              "BorderWidth changes ClientWidth",
                              "Checked changes State",
                              "Checked changes TabStop",
                              "ClientHeight changes Height",
                              "ClientWidth changes Width",
                              "Color changes ParentColor",
                              "Constraints.MaxHeight changes ClientHeight",
                              "Constraints.MaxHeight changes Height",
                              "Constraints.MaxWidth changes ClientWidth",
                              "Constraints.MaxWidth changes Width",
                              "Constraints.MinWidth changes Width",
                              "CustDlgParams.LeftFormName is not taken",
                              "CustDlgParams.RightFormName is not taken",
                              "CustDlgParams.TopFormName is not taken",
                              "Down is not taken",
                              "ExtFilter.OnIncludeFile changes OnIncludeFile",
                              "Font.Charset changes ParentFont",
                              "Font.Color changes ParentFont",
                              "Font.Height changes ParentFont",
                              "Font.Name changes ParentFont",
                              "Font.Pitch changes ParentFont",
                              "Font.Size changes Font.Height",
                              "Font.Size changes ParentFont",
                              "Font.Style changes ParentFont",
                              "Height changes ClientHeight",
                              "HorzScrollBar.Position is not taken",
                              "HorzScrollBar.Range changes AutoScroll",
                              "ItemIndex is not taken",
                              "Min changes Position",
                              "Name changes Caption",
                              "Name changes Text",
                              "Name is lost in a form file", // a second form of a name gets one of its own
                              "OnIncludeFile changes ExtFilter.OnIncludeFile",
                              "OptionsEx is lost in a form file",
                              "Orientation changes Height",
                              "Orientation changes Width",
                              "PageIndex is not taken",
                              "ShowHint changes ParentShowHint",
                              "State changes Checked",
                              "TabOrder is not taken",
                              "VertScrollBar.Position is not taken",
                              "VertScrollBar.Range changes AutoScroll",
                              "Visible is lost in a form file",
                              "Width changes ClientWidth"}) {
        EXPECT_EQ(notes.erase(known), 1u) << known << " no more";
    }
    EXPECT_THAT(notes, testing::IsEmpty());
}

} // namespace
} // namespace kx
