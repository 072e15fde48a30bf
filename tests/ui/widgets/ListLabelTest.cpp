// SPDX-License-Identifier: MIT
// Labels edited in a list view, from either kind of notification.

#include "kx/ui/widgets/ComCtrls.h"
#include "tests/support/FormTest.h"

// The label of an item that the user has edited, as lists tell of it.

namespace kx {
namespace {

using namespace test;

class ListLabel : public TFormTest {
protected:
    ListLabel() {
        List->Items().Add().SetCaption("first");
        List->Items().Add().SetCaption("second");
        List->HandleNeeded();
    }
    /// Tells the list's parent that the label of an item was changed; `Info` is NMLVDISPINFOA or -W.
    template <class Info, class Text> LRESULT Tell(UINT code, int index, Text text) {
        Info info{};
        info.hdr.hwndFrom = List->Handle();
        info.hdr.code = code;
        info.item.iItem = index;
        info.item.pszText = text;
        return SendMessageA(Form->Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&info));
    }

    TListView* List = Add<TListView>(0, 0, 250, 150);
};

TEST_F(ListLabel, IsTakenFromAUnicodeNotification) {
    wchar_t text[] = L"Gr\u00F6\u00DFe";
    EXPECT_EQ(Tell<NMLVDISPINFOW>(LVN_ENDLABELEDITW, 1, text), TRUE);
    EXPECT_EQ(List->Items()[1].Caption(), FromUtf8("Größe"));
    EXPECT_EQ(List->Items()[0].Caption(), "first");
    wchar_t empty[] = L"";
    EXPECT_EQ(Tell<NMLVDISPINFOW>(LVN_ENDLABELEDITW, 0, empty), TRUE);
    EXPECT_EQ(List->Items()[0].Caption(), "");
}

TEST_F(ListLabel, IsTakenFromAnAnsiNotification) {
    char text[] = "changed";
    EXPECT_EQ(Tell<NMLVDISPINFOA>(LVN_ENDLABELEDITA, 0, text), TRUE);
    EXPECT_EQ(List->Items()[0].Caption(), "changed");
}

TEST_F(ListLabel, StaysWhenTheEditingWasCancelledOrTheItemIsNone) {
    wchar_t text[] = L"x";
    EXPECT_EQ(Tell<NMLVDISPINFOW>(LVN_ENDLABELEDITW, 0, static_cast<wchar_t*>(nullptr)), 0);
    EXPECT_EQ(Tell<NMLVDISPINFOW>(LVN_ENDLABELEDITW, 2, text), 0);
    EXPECT_EQ(Tell<NMLVDISPINFOW>(LVN_ENDLABELEDITW, -1, text), 0);
    EXPECT_EQ(List->Items()[0].Caption(), "first");
    EXPECT_EQ(List->Items()[1].Caption(), "second");
}

} // namespace
} // namespace kx
