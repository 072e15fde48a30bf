// SPDX-License-Identifier: MIT
// Edits of many lines.

#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/CodePage.h"
#include "kx/win/ReflectedMessages.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <climits>
#include <iterator>
#include <optional>
#include <utility>

namespace kx {

namespace detail {

/// The text of a memo as lines. They are read once and kept until the text changes; a change of a line changes just its
/// place in the window's text. Without a window, and between BeginUpdate and EndUpdate, they are the text: the control
/// gets what has changed in one piece, at the end or when it is asked for its text.
class TMemoLines : public TStrings {
public:
    explicit TMemoLines(TMemo& memo) : FMemo(memo) {}

    int Count() const override { return static_cast<int>(Lines().size()); }
    std::string Get(int index) const override;
    void Put(int index, const std::string& text) override;
    void Clear() override;
    void Delete(int index) override;
    void Insert(int index, const std::string& text) override;
    void SetText(std::string_view text) override { FMemo.SetText(std::string(text)); }

    void TextChanged(); ///< The memo tells of a change.
    void Flush();       ///< Brings the control's own text up to date. May run foreign code, which may free the memo.
    bool IsUnsaved() const { return FHeldBack.has_value(); } ///< The control's own text is older than the lines.

protected:
    void SetUpdateState(bool updating) override;

private:
    // Lengths are counted in UTF-16, as the window counts.

    struct TLine {
        std::string Text;
        std::string_view Break; ///< Empty at most at the end of the whole text.
        size_t Length;          ///< With the break.

        TLine(const std::string& text, std::string_view lineBreak)
            : Text(text, 0, text.find('\0')), // where a window's text ends, without the lines behind
              Break(lineBreak), Length((IsAscii(Text) ? Text.size() : ToWide(Text).size()) + Break.size()) {}
    };
    using TLines = std::vector<TLine>;
    /// A change of the text: some other text takes the place of what is `Removed`.
    struct TChange {
        size_t Before = 0; ///< Of the whole text.
        size_t Start = 0;
        size_t Removed = 0;
        size_t Inserted = 0;
        std::string Text;
        bool IsKnown = true; ///< The memo will hold the lines as they are here.
    };

    /// What the control has yet to be told: which lines at either end it holds as they are here, and how long all its
    /// lines are.
    struct THeldBack {
        size_t Head;
        size_t Tail;
        size_t Before;
        bool IsKnown = true; ///< As in TChange.
    };

    TLines& Lines() const;
    void Read(std::string_view text) const;
    size_t LengthOf(size_t first, size_t count) const;
    void Change(size_t first, size_t count, TLines lines);
    void HoldBack(size_t head, size_t tail, const TChange& change);
    void ChangeWindow(const TChange& change);
    bool IsHeldAsItIs(const std::string& line) const;
    std::string Joined(size_t first, size_t count) const;
    std::string Joined() const { return Joined(0, FLines.size()); }

    TMemo& FMemo;
    mutable TLines FLines;
    mutable size_t FLength = 0; ///< Of all lines.
    mutable bool FRead = false;
    std::optional<THeldBack> FHeldBack;
    bool FOwnChange = false; ///< The next change that is told of is ours.
};

constexpr std::string_view LineBreak = "\r\n";

// --- Reading

TMemoLines::TLines& TMemoLines::Lines() const {
    // A foreign parent window may not hand on the notification that the text has changed.
    if (!FRead || (FMemo.HandleAllocated() && !FMemo.Parent() && !FHeldBack)) {
        Read(FMemo.Text());
        FRead = true;
    }
    return FLines;
}

void TMemoLines::Read(std::string_view text) const {
    FLines.clear();
    FLength = 0;
    while (!text.empty()) {
        const size_t end = std::min(text.find_first_of("\r\n"), text.size());
        std::string_view lineBreak;
        if (text.substr(end).starts_with(LineBreak)) {
            lineBreak = LineBreak;
        } else if (end < text.size()) {
            lineBreak = text[end] == '\r' ? LineBreak.substr(0, 1) : LineBreak.substr(1, 1);
        }
        FLines.emplace_back(std::string(text.substr(0, end)), lineBreak);
        FLength += FLines.back().Length;
        text.remove_prefix(end + lineBreak.size());
    }
}

std::string TMemoLines::Get(int index) const {
    CheckIndex(index);
    return Lines()[static_cast<size_t>(index)].Text;
}

size_t TMemoLines::LengthOf(size_t first, size_t count) const {
    if (first == 0 && count == FLines.size()) {
        return FLength; // lines are added most often at the end
    }
    size_t length = 0;
    for (size_t i = first; i < first + count; ++i) {
        length += FLines[i].Length;
    }
    return length;
}

std::string TMemoLines::Joined(size_t first, size_t count) const {
    std::string text;
    text.reserve(LengthOf(first, count));
    for (size_t i = first; i < first + count; ++i) {
        text.append(FLines[i].Text).append(FLines[i].Break);
    }
    return text;
}

// --- Changing

void TMemoLines::Put(int index, const std::string& text) {
    CheckIndex(index);
    const auto at = static_cast<size_t>(index);
    Change(at, 1, {{text, Lines()[at].Break}});
}

void TMemoLines::Delete(int index) {
    CheckIndex(index);
    Change(static_cast<size_t>(index), 1, {});
}

void TMemoLines::Clear() {
    if (UpdateCount() == 0) {
        FMemo.SetText("");
    } else if (Count() > 0) {
        Change(0, FLines.size(), {});
    }
}

void TMemoLines::Insert(int index, const std::string& text) {
    if (index != Count()) {
        CheckIndex(index);
    }
    const auto at = static_cast<size_t>(index);
    if (at > 0 && at == FLines.size() && FLines.back().Break.empty()) {
        Change(at - 1, 1, {{FLines.back().Text, LineBreak}, {text, LineBreak}});
    } else {
        Change(at, 0, {{text, LineBreak}});
    }
}

/// Puts other lines into the place of `count` ones.
void TMemoLines::Change(size_t first, size_t count, TLines lines) {
    TChange change;
    change.Before = FLength;
    change.Start = LengthOf(0, first);
    change.Removed = LengthOf(first, count);
    const size_t tail = FLines.size() - first - count;
    for (const TLine& line : lines) {
        change.Inserted += line.Length;
        change.Text.append(line.Text).append(line.Break);
        change.IsKnown = change.IsKnown && IsHeldAsItIs(line.Text);
    }
    const auto at = FLines.begin() + static_cast<ptrdiff_t>(first);
    const auto rest = FLines.erase(at, at + static_cast<ptrdiff_t>(count));
    FLines.insert(rest, std::make_move_iterator(lines.begin()), std::make_move_iterator(lines.end()));
    FLength = FLength - change.Removed + change.Inserted;
    if (FMemo.HandleAllocated() && UpdateCount() == 0) {
        return ChangeWindow(change);
    }
    HoldBack(first, tail, change);
    if (!change.IsKnown && UpdateCount() == 0) {
        Flush();
    }
}

void TMemoLines::HoldBack(size_t head, size_t tail, const TChange& change) {
    if (!FHeldBack) {
        FHeldBack = {head, tail, change.Before};
    }
    FHeldBack->Head = std::min(FHeldBack->Head, head);
    FHeldBack->Tail = std::min(FHeldBack->Tail, tail);
    FHeldBack->IsKnown = FHeldBack->IsKnown && change.IsKnown;
}

void TMemoLines::ChangeWindow(const TChange& change) {
    const HWND window = FMemo.WindowHandle();
    const auto caret = [window] {
        DWORD end = 0;
        SendMessageW(window, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&end));
        return size_t{end};
    };
    const auto select = [window](size_t start, size_t end) {
        SendMessageW(window, EM_SETSEL, start, static_cast<LPARAM>(end));
    };
    select(INT_MAX, INT_MAX);
    if (caret() != change.Before) {
        FMemo.SetText(Joined()); // the window has another text than the lines say
        return;
    }
    select(change.Start, change.Start + change.Removed);
    FOwnChange = true;
    if (!Outlives(FMemo, [&] { FMemo.SetSelText(change.Text); })) {
        return; // a handler of the change freed the memo, and these lines with it
    }
    FOwnChange = false;
    if (!change.IsKnown || caret() != change.Start + change.Inserted) {
        TextChanged();
    }
}

bool TMemoLines::IsHeldAsItIs(const std::string& line) const {
    return FMemo.CharCase() == ecNormal && line.find_first_of("\r\n") == std::string::npos &&
           (IsAscii(line) || FromWide(ToWide(line)) == line);
}

void TMemoLines::TextChanged() {
    if (!std::exchange(FOwnChange, false)) {
        FRead = false;
        FHeldBack.reset(); // the control has another text
    }
}

void TMemoLines::Flush() {
    if (!FHeldBack) {
        return;
    }
    const THeldBack held = *std::exchange(FHeldBack, std::nullopt);
    if (!FMemo.HandleAllocated()) {
        FOwnChange = true;
        FMemo.TWinControl::SetText(Joined());
        FOwnChange = false;
        FRead = held.IsKnown;
        return;
    }
    TChange change;
    change.Before = held.Before;
    change.Start = LengthOf(0, held.Head);
    const size_t kept = change.Start + LengthOf(FLines.size() - held.Tail, held.Tail);
    change.Removed = held.Before - kept;
    change.Inserted = FLength - kept;
    change.Text = Joined(held.Head, FLines.size() - held.Head - held.Tail);
    change.IsKnown = held.IsKnown;
    ChangeWindow(change);
}

void TMemoLines::SetUpdateState(bool updating) {
    const bool hasWindow = FMemo.HandleAllocated();
    if (hasWindow) {
        SendMessageW(FMemo.WindowHandle(), WM_SETREDRAW, !updating, 0);
    }
    if (hasWindow && !updating) {
        FMemo.Invalidate();
    }
    if (!updating && FHeldBack && (hasWindow || !FHeldBack->IsKnown)) {
        Flush(); // which may free the memo
    }
}

} // namespace detail

// --- TMemo

const TClass& TMemo::StaticClass() {
    static const TClassBuilder<TMemo> cls("TMemo", TCustomEdit::StaticClass(), [](auto& c) {
        using T = TMemo;
        c.Creatable();
        c.SubObject("Lines", &T::Lines, &T::SetLines);
        c.Property("ScrollBars", &T::ScrollBars, &T::SetScrollBars).Default = ssNone;
        c.Property("WordWrap", &T::WordWrap, &T::SetWordWrap).Default = true;
        c.Property("WantReturns", &T::WantReturns, &T::SetWantReturns).Default = true;
        c.Property("WantTabs", &T::WantTabs, &T::SetWantTabs).Default = false;
    });
    return cls.Class();
}

TMemo::TMemo(TComponent* owner) : TCustomEdit(owner), FLines(std::make_unique<detail::TMemoLines>(*this)) {
    SetBoundsFields(0, 0, 185, 89);
}

TMemo::~TMemo() = default;

void TMemo::CreateParams(TCreateParams& params) {
    TCustomEdit::CreateParams(params);
    params.Style |= ES_MULTILINE | ES_AUTOVSCROLL;
    if (FWordWrap) {
        params.Style &= ~static_cast<DWORD>(ES_AUTOHSCROLL);
    }
    params.Style |= FWantReturns ? DWORD{ES_WANTRETURN} : 0;
    params.Style |= FScrollBars == ssHorizontal || FScrollBars == ssBoth ? DWORD{WS_HSCROLL} : 0;
    params.Style |= FScrollBars == ssVertical || FScrollBars == ssBoth ? DWORD{WS_VSCROLL} : 0;
}

void TMemo::CreateWnd() {
    FLines->Flush();
    TCustomEdit::CreateWnd();
}

TStrings& TMemo::Lines() { return *FLines; }

const TStrings& TMemo::Lines() const { return *FLines; }

void TMemo::SetLines(const TStrings& value) { FLines->Assign(&value); }

std::string TMemo::Text() const {
    if (!HandleAllocated()) {
        FLines->Flush();
    }
    return TCustomEdit::Text();
}

void TMemo::SetText(const std::string& value) {
    if (!HandleAllocated()) {
        FLines->Flush(); // else a text equal to the outdated one would count as no change
    }
    TCustomEdit::SetText(value);
}

void TMemo::TextChanged() {
    FLines->TextChanged();
    TCustomEdit::TextChanged();
}

namespace {

/// Messages that ask for an edit's text, or change it in part.
bool ConcernsText(UINT message) {
    return message == WM_GETTEXT || message == WM_GETTEXTLENGTH ||
           (message >= EM_GETSEL && message <= EM_CHARFROMPOS) || (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
           (message >= WM_CUT && message <= WM_UNDO);
}

} // namespace

void TMemo::WndProc(TMessage& message) {
    if (FLines->IsUnsaved() && HandleAllocated() && ConcernsText(message.Msg) &&
        !Outlives(*this, [&] { FLines->Flush(); })) {
        return;
    }
    if (message.Msg == CN_COMMAND && message.WParamHi() == EN_CHANGE) {
        FLines->TextChanged();
    }
    if (!Outlives(*this, [&] { TCustomEdit::WndProc(message); })) {
        return;
    }
    if (message.Msg == WM_SETTEXT && !IsCreating()) {
        DoChange(); // an edit with lines does not tell of this change
    } else if (message.Msg == WM_GETDLGCODE) {
        // The system's edit with lines asks for every key.
        message.Result &= ~static_cast<LRESULT>(DLGC_WANTTAB | DLGC_WANTALLKEYS);
        message.Result |= FWantTabs ? DLGC_WANTTAB : 0;
        const auto* const key = reinterpret_cast<const MSG*>(message.LParam);
        if (key && key->message == WM_KEYDOWN &&
            ((key->wParam == VK_RETURN && (FWantReturns || GetKeyState(VK_CONTROL) < 0)) ||
             (key->wParam == VK_TAB && FWantTabs))) {
            message.Result |= DLGC_WANTMESSAGE;
        }
    }
}

} // namespace kx
