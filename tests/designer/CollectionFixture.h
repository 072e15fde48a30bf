// SPDX-License-Identifier: MIT
#pragma once

#include "WindowFixture.h"

#include "designer/CollectionEditor.h"

namespace kx::test {

/// A form designer with the window of a collection.
class TCollectionEditorTest : public TDesignerWindowTest {
protected:
    designer::TInspectorGrid& Grid() const { return Window->ObjectInspector().Grid(); }
    std::string Value(const std::string& name) const { return Grid().RowValue(Grid().FindRow(name)); }

    static std::vector<designer::TCollectionForm*> ShownWindows() {
        std::vector<designer::TCollectionForm*> shown;
        for (int i = 0; i < Screen().FormCount(); ++i) {
            auto* const form = dynamic_cast<designer::TCollectionForm*>(Screen().Forms(i));
            if (form && form->Visible()) {
                shown.push_back(form);
            }
        }
        return shown;
    }
    static designer::TCollectionForm* Items() { return ShownWindows().empty() ? nullptr : ShownWindows().front(); }
    static std::string Lines() { return Items()->Items().Items().CommaText(); }
    static std::vector<int> Chosen() {
        std::vector<int> chosen;
        for (int i = 0; i < Items()->Items().Items().Count(); ++i) {
            if (Items()->Items().Selected(i)) {
                chosen.push_back(i);
            }
        }
        return chosen;
    }
    static TButton& Button(const char* name) { return dynamic_cast<TButton&>(*Items()->FindComponent(name)); }
    void Push(const char* button) const { ClickOn(CenterOf(Button(button).Handle())); }
    /// Clicks a line of the list.
    void ChooseLine(int index, std::initializer_list<WORD> held = {}) const {
        RECT r;
        const HWND list = Items()->Items().Handle();
        SendMessageA(list, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&r));
        for (const WORD key : held) {
            keybd_event(static_cast<BYTE>(key), 0, 0, 0);
        }
        ClickOn(Items()->Items().ClientToScreen({r.left + 10, (r.top + r.bottom) / 2}));
        for (const WORD key : held) {
            keybd_event(static_cast<BYTE>(key), 0, KEYEVENTF_KEYUP, 0);
        }
        Settle();
    }
    void UndoAll() const {
        while (Designer().CanUndo()) {
            Designer().Undo();
        }
    }
};

} // namespace kx::test
