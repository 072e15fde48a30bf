// SPDX-License-Identifier: MIT
// What handlers of events are declared with.

#include "kx/core/FormEvents.h"

#include "kx/core/Components.h"
#include "kx/core/TypInfo.h"

#include <algorithm>
#include <iterator>

namespace kx {

namespace {

constexpr std::string_view JustSender = "TObject* sender";

constexpr std::string_view NotifyEvents[] = {"OnActivate",
                                             "OnChange",
                                             "OnClick",
                                             "OnClose",
                                             "OnCopiesChange",
                                             "OnCreate",
                                             "OnDblClick",
                                             "OnDeactivate",
                                             "OnDestroy",
                                             "OnDesktopNavigate",
                                             "OnDropDown",
                                             "OnEnter",
                                             "OnExecute",
                                             "OnExit",
                                             "OnFilenameChange",
                                             "OnFolderChange",
                                             "OnFullOpen",
                                             "OnHide",
                                             "OnHint",
                                             "OnLastFolderNavigate",
                                             "OnMouseEnter",
                                             "OnMouseLeave",
                                             "OnMoved",
                                             "OnPaint",
                                             "OnPopup",
                                             "OnPrinterChange",
                                             "OnPrinterSetupShow",
                                             "OnResize",
                                             "OnSelectionChange",
                                             "OnShow",
                                             "OnTabChange",
                                             "OnTimer",
                                             "OnTypeChange",
                                             "OnUpLevelNavigate",
                                             "OnUpdate"};

struct TEventOf {
    std::string_view Class; ///< Empty: every class that no other line names.
    std::string_view Event;
    std::string_view Parameters;
};

constexpr std::string_view Closing = "TObject* sender, bool& canClose";
constexpr std::string_view Key = "TObject* sender, uint16_t& key, TShiftState shift";
constexpr std::string_view MouseButton = "TObject* sender, TMouseButton button, TShiftState shift, int x, int y";
constexpr std::string_view MouseWheelNotch =
    "TObject* sender, TShiftState shift, const TPoint& mousePos, bool& handled";
constexpr std::string_view Proceeding = "TObject* sender, bool& allowProceed";
constexpr std::string_view Changing = "TObject* sender, bool& allowChange";
constexpr std::string_view Node = "TObject* sender, TTreeNode* node";
constexpr std::string_view Section = "TStatusBar* bar, TStatusPanel* panel, const TRect& rect";

constexpr TEventOf Events[] = {
    {"TForm", "OnClose", "TObject* sender, TCloseAction& action"},
    {"TListView", "OnChange", "TObject* sender, TListItem* item, TItemChange change"},
    {"TStatusBar", "OnDrawPanel", Section},
    {"TTreeView", "OnChange", Node},
    {"TTreeView", "OnChanging", "TObject* sender, TTreeNode* node, bool& allowChange"},
    {"TTreeView", "OnCollapsing", "TObject* sender, TTreeNode* node, bool& allowCollapse"},
    {"TTreeView", "OnExpanding", "TObject* sender, TTreeNode* node, bool& allowExpansion"},
    {"", "OnCanClose", Closing},
    {"", "OnCanResize", "TObject* sender, int& newSize, bool& accept"},
    {"", "OnChanging", Changing},
    {"", "OnCloseQuery", Closing},
    {"", "OnCollapsed", Node},
    {"", "OnColumnClick", "TObject* sender, TListColumn* column"},
    {"", "OnColumnMoved", "TObject* sender, int fromIndex, int toIndex"},
    {"", "OnCompare", "TObject* sender, TListItem* item1, TListItem* item2, int data, int& compare"},
    {"", "OnConstrainedResize", "TObject* sender, int& minWidth, int& minHeight, int& maxWidth, int& maxHeight"},
    {"", "OnContextPopup", "TObject* sender, const TPoint& position, bool& handled"},
    {"", "OnCustomColorAdd", "TObject* sender, TColor color"},
    {"", "OnCustomColorAdding", "TObject* sender, TColor& color, bool& allowedColor"},
    {"", "OnCustomDraw", "TToolBar* sender, const TRect& rect, bool& defaultDraw"},
    {"", "OnCustomDrawButton", "TToolBar* sender, TToolButton* button, TCustomDrawState state, bool& defaultDraw"},
    {"", "OnDeletion", Node},
    {"", "OnDesktopNavigating", Proceeding},
    {"", "OnDialogClosed", "TObject* sender, bool dialogResult"},
    {"", "OnDragDrop", "TObject* sender, TObject* source, int x, int y"},
    {"", "OnDragOver", "TObject* sender, TObject* source, int x, int y, TDragState state, bool& accept"},
    {"", "OnDrawCell", "TObject* sender, int col, int row, const TRect& rect, TGridDrawState state"},
    {"", "OnDrawItem", "TWinControl* control, int index, const TRect& rect, TOwnerDrawState state"},
    {"", "OnEdited", "TObject* sender, TTreeNode* node, std::string& text"},
    {"", "OnEditing", "TObject* sender, TTreeNode* node, bool& allowEdit"},
    {"", "OnEndDrag", "TObject* sender, TObject* target, int x, int y"},
    {"", "OnEventHook", "TMessage& message"},
    {"", "OnEventHooking", "TObject* sender, TMessage& message, bool& allowDispatch"},
    {"", "OnExpanded", Node},
    {"", "OnFilenameEntering", Proceeding},
    {"", "OnFolderCreating", Proceeding},
    {"", "OnFullOpening", Proceeding},
    {"", "OnGetEditText", "TObject* sender, int col, int row, std::string& value"},
    {"", "OnHelp", "uint16_t command, LPARAM data, bool& callHelp"},
    {"", "OnIncludeFile", "TObject* sender, const std::string& fileName, bool& includeFile"},
    {"", "OnIncludeItem", "const OFNOTIFYEXA& notification, bool& include"},
    {"", "OnKeyDown", Key},
    {"", "OnKeyPress", "TObject* sender, char32_t& key"},
    {"", "OnKeyUp", Key},
    {"", "OnLastFolderNavigating", Proceeding},
    {"", "OnMeasureItem", "TWinControl* control, int index, int& height"},
    {"", "OnMouseDown", MouseButton},
    {"", "OnMouseMove", "TObject* sender, TShiftState shift, int x, int y"},
    {"", "OnMouseUp", MouseButton},
    {"", "OnMouseWheel", "TObject* sender, TShiftState shift, int wheelDelta, const TPoint& mousePos, bool& handled"},
    {"", "OnMouseWheelDown", MouseWheelNotch},
    {"", "OnMouseWheelUp", MouseWheelNotch},
    {"", "OnPrinterChanging", Proceeding},
    {"", "OnPrinterSetupShowing", Proceeding},
    {"", "OnRowMoved", "TObject* sender, int fromIndex, int toIndex"},
    {"", "OnScroll",
     "TObject* sender, TShiftState shift, int x, int y, TPageScrollerOrientation orientation, int& delta"},
    {"", "OnSelectCell", "TObject* sender, int col, int row, bool& canSelect"},
    {"", "OnSelectItem", "TObject* sender, TListItem* item, bool selected"},
    {"", "OnSelectionStyleChange", "TObject* sender, TViewStyle style"},
    {"", "OnSelectionStyleChanging", "TObject* sender, TViewStyle style, bool& allowChange"},
    {"", "OnSetEditText", "TObject* sender, int col, int row, const std::string& value"},
    {"", "OnShareViolation", "TObject* sender, int32_t& dlgResult, const std::string& fileName"},
    {"", "OnShortCut", "MSG& message, bool& handled"},
    {"", "OnStartDrag", "TObject* sender, TDragObject*& object"},
    {"", "OnTabChanging", Changing},
    {"", "OnUpLevelNavigating", Proceeding},
};

std::string_view FromTable(std::string_view className, std::string_view event) {
    for (const TEventOf& known : Events) {
        if (SameText(known.Event, event) && (known.Class.empty() || SameText(known.Class, className))) {
            return known.Parameters;
        }
    }
    const bool isNotify =
        std::any_of(std::begin(NotifyEvents), std::end(NotifyEvents), [&](auto name) { return SameText(name, event); });
    return isNotify ? JustSender : std::string_view();
}

/// The list at commas that stand in no brackets
std::vector<std::string> SplitList(std::string_view list) {
    std::vector<std::string> parts;
    std::string part;
    int depth = 0;
    for (const char c : list) {
        depth += c == '<' || c == '(' ? 1 : c == '>' || c == ')' ? -1 : 0;
        if (c == ',' && depth == 0) {
            parts.push_back(Trim(part));
            part.clear();
        } else {
            part.push_back(c);
        }
    }
    if (!Trim(part).empty()) {
        parts.push_back(Trim(part));
    }
    return parts;
}

void Substitute(std::string& text, std::string_view from, std::string_view to) {
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

/// The type as users write it, however the compiler calls it.
std::string Readable(std::string type) {
    constexpr struct {
        std::string_view Compilers;
        std::string_view Ours;
    } names[] = {{" *", "*"},
                 {" &", "&"},
                 {"basic_string<char>", "std::string"},
                 {"short unsigned int", "uint16_t"},
                 {"unsigned short", "uint16_t"},
                 {"unsigned char", "uint8_t"},
                 {"_OFNOTIFYEXA", "OFNOTIFYEXA"},
                 {"tagMSG", "MSG"},
                 {"TSet<TCustomDrawStateFlag>", "TCustomDrawState"},
                 {"TSet<TGridDrawFlag>", "TGridDrawState"},
                 {"TSet<TOwnerDrawStateFlag>", "TOwnerDrawState"},
                 {"TSet<TShiftStateFlag>", "TShiftState"}};
    for (const auto& name : names) {
        Substitute(type, name.Compilers, name.Ours);
    }
    return type;
}

std::string Joined(const std::vector<std::string>& types) {
    std::string list;
    for (size_t i = 0; i < types.size(); ++i) {
        const std::string name = i == 0 && types[i] == "TObject*" ? "sender" : "value" + IntToStr(static_cast<int>(i));
        list += (i > 0 ? ", " : "") + types[i] + " " + name;
    }
    return list;
}

} // namespace

std::vector<std::string> detail::ParameterTypes(std::string_view signature) {
    const size_t open = signature.find('(');
    const size_t close = signature.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open) {
        return {};
    }
    std::vector<std::string> types = SplitList(signature.substr(open + 1, close - open - 1));
    std::transform(types.begin(), types.end(), types.begin(), Readable);
    return types;
}

std::vector<std::string> detail::TypesOfParameters(std::string_view parameters) {
    std::vector<std::string> types = SplitList(parameters);
    for (std::string& type : types) {
        type = Trim(std::string_view(type).substr(0, type.rfind(' ')));
    }
    return types;
}

namespace {

/// What stands at the path of names from a class on; null when it leads to no property.
const TPropInfo* PropertyAt(const TClass* cls, std::string_view path) {
    const TPropInfo* property = nullptr;
    for (size_t start = 0; cls && start <= path.size();) {
        const size_t dot = std::min(path.find('.', start), path.size());
        property = cls->FindProperty(path.substr(start, dot - start));
        cls = property && property->Class ? &property->Class() : nullptr;
        start = dot + 1;
        if (!property || (!cls && start <= path.size())) {
            return nullptr;
        }
    }
    return property;
}

} // namespace

std::string EventParameters(std::string_view className, std::string_view event) {
    const std::string_view known = FromTable(className, event.substr(event.rfind('.') + 1));
    const TPropInfo* const property = PropertyAt(GetClass(className), event);
    if (!property || property->Kind != TTypeKind::Event) {
        return std::string(known);
    }
    const std::vector<std::string> types = detail::ParameterTypes(property->TypeName());
    return detail::TypesOfParameters(known) == types ? std::string(known) : Joined(types);
}

} // namespace kx
