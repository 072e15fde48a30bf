// SPDX-License-Identifier: MIT
// Code of the application frees a control, or has its window made anew, while it is painted.

#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/Grids.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Handles.h"
#include "kx/win/ReflectedMessages.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/FormTest.h"

namespace kx {
namespace {

using namespace test;

bool CanBeDrawnOn(HDC dc) { return GetObjectType(dc) != 0 && GetDeviceCaps(dc, HORZRES) != 0; }

/// A control that has something done once, in front of a message of its painting.
template <class T> class TInterrupted : public T {
public:
    using T::T;
    UINT Message = 0;
    std::function<void()> Deed;
    int Paintings = 0;

protected:
    void WndProc(TMessage& message) override {
        if (Deed && message.Msg == Message) {
            HWND window = this->WindowHandle();
            const auto deed = std::exchange(Deed, nullptr);
            if (!Outlives(*this, deed) || (message.WParam && this->WindowHandle() != window)) {
                return; // nobody is left whose message, or context, it is
            }
        }
        T::WndProc(message);
    }
    void PaintWindow(HDC dc) override {
        ++Paintings;
        EXPECT_TRUE(CanBeDrawnOn(dc));
        T::PaintWindow(dc);
    }
};

class PaintingEnds : public TFormTest {
protected:
    ~PaintingEnds() override { EXPECT_TRUE(Exceptions.Messages().empty()) << Exceptions.Messages().front(); }

    template <class T> T* Add(TWinControl* parent = nullptr) {
        auto* const control = new T(Form.get());
        control->SetAlign(alNone);
        control->SetBounds(10, 10, 200, 100);
        control->SetParent(parent ? parent : Form.get());
        return control;
    }
    /// Two of them side by side in `parent`.
    std::pair<TPaintBox*, TPaintBox*> AddPaintBoxes(TWinControl& parent) {
        auto* const first = Add<TPaintBox>(&parent);
        auto* const second = Add<TPaintBox>(&parent);
        first->SetBounds(20, 40, 20, 20);
        second->SetBounds(50, 40, 20, 20);
        return {first, second};
    }

    TExceptionLog Exceptions;
};

// --- While the background is erased

TEST_F(PaintingEnds, WithAControlThatIsFreedWhileItsBackgroundIsErased) {
    for (const bool buffered : {false, true}) {
        auto* const control = Add<TInterrupted<TCustomControl>>();
        control->SetDoubleBuffered(buffered);
        Show();
        const TAlive alive(*control);
        control->Message = WM_ERASEBKGND;
        control->Deed = [=] { control->Free(); };
        control->Invalidate();
        control->Update();
        EXPECT_FALSE(alive);
    }
}

TEST_F(PaintingEnds, WithAWindowThatIsMadeAnewWhileItsBackgroundIsErased) {
    for (const bool buffered : {false, true}) {
        auto* const control = Add<TInterrupted<TCustomControl>>();
        control->SetDoubleBuffered(buffered);
        Show();
        control->Update();
        HWND before = control->WindowHandle();
        control->Message = WM_ERASEBKGND;
        control->Deed = [=] {
            control->RecreateWnd();
            control->Paintings = 0;
        };
        control->Invalidate();
        SendMessageA(before, WM_PAINT, 0, 0);
        ASSERT_NE(control->WindowHandle(), before);
        EXPECT_EQ(control->Paintings, 0) << "there is nothing left to paint on";
        control->Update();
        EXPECT_EQ(control->Paintings, 1) << "the new window is painted";
    }
}

TEST_F(PaintingEnds, WithAToolBarThatMovesAwayWhileItsBackgroundIsErased) {
    auto* const bar = Add<TInterrupted<TToolBar>>();
    auto* const panel = Add<TPanel>();
    panel->SetTop(150);
    Show();
    bar->Update();
    bar->Message = WM_ERASEBKGND;
    bar->Deed = [=] {
        bar->SetParent(panel);
        bar->Paintings = 0;
    };
    bar->Invalidate();
    SendMessageA(bar->WindowHandle(), WM_PAINT, 0, 0);
    EXPECT_EQ(bar->Parent(), panel);
    EXPECT_EQ(bar->Paintings, 0);
    EXPECT_TRUE(PumpUntil([=] { return bar->Paintings == 1; }));
}

TEST_F(PaintingEnds, WithAToolBarThatHasLostItsWindow) {
    auto* const bar = Add<TInterrupted<TToolBar>>();
    bar->SetEdgeBorders({ebLeft, ebTop, ebRight, ebBottom});
    Show();
    const auto screenAt = [](int x, int y) { return GetPixel(TWindowDC(nullptr).Handle(), x, y); };
    const COLORREF before = screenAt(5, 0);
    bar->Message = WM_NCPAINT;
    bar->Deed = [=] { bar->SetParent(nullptr); };
    SendMessageA(bar->WindowHandle(), WM_NCPAINT, 1, 0);
    ASSERT_EQ(bar->WindowHandle(), nullptr);
    EXPECT_EQ(screenAt(5, 0), before) << "its edges are not drawn on the screen";
}

TEST_F(PaintingEnds, BeforeItBeginsWithAToolBarThatGoesOrMovesAwayWhileItsWindowIsFilled) {
    auto* const panel = Add<TPanel>();
    panel->SetTop(150);
    Show();
    for (const UINT message : {UINT{TB_BUTTONSTRUCTSIZE}, UINT{TB_SETINDENT}, UINT{TB_SETIMAGELIST},
                               UINT{TB_SETBITMAPSIZE}, UINT{WM_SETREDRAW}, UINT{TB_ADDBUTTONSW}}) {
        for (const bool frees : {false, true}) {
            auto* const bar = new TInterrupted<TToolBar>(Form.get());
            auto* const button = new TToolButton(bar);
            button->SetParent(bar);
            const TAlive alive(*bar);
            bar->Message = message;
            bar->Deed = [=] { frees ? bar->Free() : bar->SetParent(panel); };
            bar->SetParent(Form.get());
            ASSERT_EQ(static_cast<bool>(alive), !frees) << message;
            if (alive) {
                EXPECT_EQ(bar->Parent(), panel) << message;
                EXPECT_EQ(SendMessageA(bar->Handle(), TB_BUTTONCOUNT, 0, 0), 1) << message;
                bar->Free();
            }
        }
    }
}

// --- While the control or what is in it paints

TEST_F(PaintingEnds, WithAWindowThatIsMadeAnewByAControlThatPaintsOnIt) {
    auto* const tabs = Add<TTabControl>();
    const auto boxes = AddPaintBoxes(*tabs);
    Show();
    bool once = true;
    int before = 0;
    HWND window = tabs->WindowHandle();
    boxes.first->SetOnPaint([&](TObject*) {
        if (std::exchange(once, false)) {
            tabs->RecreateWnd();
        }
    });
    boxes.second->SetOnPaint([&](TObject*) {
        HDC dc = boxes.second->Canvas().Handle();
        EXPECT_TRUE(CanBeDrawnOn(dc));
        before += WindowFromDC(dc) == window ? 1 : 0;
    });
    tabs->Repaint();
    EXPECT_FALSE(once);
    EXPECT_EQ(before, 0) << "the other one has nothing left to paint on";
}

TEST_F(PaintingEnds, WithAContextThatGoesWhileAControlIsPaintedOnIt) {
    auto* const control = Add<TInterrupted<TCustomControl>>();
    const auto boxes = AddPaintBoxes(*control);
    Show();
    int painted = 0;
    boxes.second->SetOnPaint([&](TObject*) { ++painted; });

    // by the control itself
    class TRemaking : public TCustomControl {
    public:
        using TCustomControl::TCustomControl;
        bool Remakes = false;

    protected:
        void Paint() override {
            if (std::exchange(Remakes, false)) {
                RecreateWnd();
            }
        }
    };
    auto* const remaking = Add<TRemaking>();
    remaking->SetTop(150);
    const auto inside = AddPaintBoxes(*remaking);
    inside.first->SetOnPaint([&](TObject*) { ++painted; });
    remaking->HandleNeeded();
    remaking->Remakes = true;
    painted = 0;
    remaking->PaintTo(TWindowDC(remaking->WindowHandle()).Handle(), 0, 0);
    EXPECT_EQ(painted, 0);

    // by a control in it
    boxes.first->SetOnPaint([&](TObject*) {
        boxes.first->SetOnPaint({});
        control->RecreateWnd();
    });
    control->PaintTo(TWindowDC(control->WindowHandle()).Handle(), 0, 0);
    EXPECT_EQ(painted, 0);
    EXPECT_FALSE(boxes.first->OnPaint());
}

TEST_F(PaintingEnds, AndLeavesAContextInMemoryAsItWas) {
    auto* const control = Add<TCustomControl>();
    const auto boxes = AddPaintBoxes(*control);
    Show();
    boxes.first->SetOnPaint([&](TObject*) {
        boxes.first->SetOnPaint({});
        control->RecreateWnd();
    });
    const unique_hdc memory(CreateCompatibleDC(nullptr));
    const unique_hbitmap bitmap(CreateCompatibleBitmap(TWindowDC(nullptr).Handle(), 300, 300));
    const TSelectObject selected(memory.get(), bitmap.get());
    const RECT corner{250, 250, 260, 260};
    control->Perform(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(memory.get()), PRF_CLIENT);
    EXPECT_FALSE(boxes.first->OnPaint());
    POINT origin;
    GetWindowOrgEx(memory.get(), &origin);
    EXPECT_EQ(FromPOINT(origin), (TPoint{0, 0}));
    EXPECT_TRUE(RectVisible(memory.get(), &corner));
}

// --- Cells and items

TEST_F(PaintingEnds, WithAGridWhoseCellHasItsWindowMadeAnew) {
    auto* const grid = Add<TDrawGrid>();
    Show();
    HWND window = grid->WindowHandle();
    int onTheOld = 0;
    int cells = 0;
    grid->SetOnDrawCell([&](TObject*, int, int, const TRect&, TGridDrawState) {
        HDC dc = grid->Canvas().Handle();
        EXPECT_TRUE(CanBeDrawnOn(dc));
        ++cells;
        onTheOld += WindowFromDC(dc) == window ? 1 : 0;
        if (cells == 2) {
            grid->RecreateWnd();
        }
    });
    grid->Invalidate();
    SendMessageA(window, WM_PAINT, 0, 0);
    EXPECT_EQ(cells, 2) << "the new window is painted for itself";
    EXPECT_EQ(onTheOld, 2);
    grid->Update();
    EXPECT_GT(cells, 6);
    EXPECT_EQ(onTheOld, 2);
}

TEST_F(PaintingEnds, WithAComboBoxWhoseItemHasItsWindowMadeAnew) {
    auto* const combo = Add<TComboBox>();
    combo->SetStyle(csOwnerDrawFixed);
    combo->Items().Add("item");
    Show();
    int drawn = 0;
    combo->SetOnDrawItem([&](TWinControl*, int, const TRect&, TOwnerDrawState) {
        ++drawn;
        combo->Canvas().Font().SetColor(clRed);
        combo->Canvas().TextOut(0, 0, "x");
        combo->RecreateWnd();
    });
    const TWindowDC dc(combo->WindowHandle());
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_COMBOBOX;
    item.hwndItem = combo->WindowHandle();
    item.hDC = dc.Handle();
    item.itemState = ODS_FOCUS;
    item.rcItem = {0, 0, 50, 16};
    combo->Perform(CN_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item));
    EXPECT_EQ(drawn, 1);
    EXPECT_THROW(combo->Canvas().Handle(), EInvalidOperation) << "it draws on nothing between the items";
    combo->Free();
}

} // namespace
} // namespace kx
