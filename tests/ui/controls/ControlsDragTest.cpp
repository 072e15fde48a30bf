// SPDX-License-Identifier: MIT
// Dragging from control to control.

#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/win/Handles.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/FormTest.h"

#include <shellapi.h>
#include <shlobj.h>

#include <algorithm>

namespace kx {
namespace {

using namespace test;
using TLines = std::vector<std::string>;

/// Two panels to drag between, a graphic control, and a log of what they are told.
class Drag : public TFormTest {
protected:
    Drag() {
        Form->SetBorderStyle(bsNone);
        Source = Add<TPanel>("source", 10, 10);
        Target = Add<TPanel>("target", 150, 10);
        Graphic = Add<TPaintBox>("graphic", 10, 150);
        Source->SetOnMouseMove([this](TObject*, TShiftState shift, int, int) {
            if (shift.Contains(ssLeft)) {
                Source->BeginDrag(false);
            }
        });
        Source->SetOnStartDrag([this](TObject*, TDragObject*&) { Log.emplace_back("start"); });
        Source->SetOnEndDrag([this](TObject*, TObject* target, int x, int y) {
            Log.push_back("end " + NameOf(target) + " " + IntToStr(x) + "," + IntToStr(y));
        });
        Source->SetOnClick([this](TObject*) { Log.emplace_back("click"); });
        Source->SetOnMouseUp([this](TObject*, TMouseButton, TShiftState, int, int) { Log.emplace_back("up"); });
        Show();
    }
    ~Drag() override { ReleaseAt({5, 5}); }

    template <class T> T* Add(const char* name, int left, int top) {
        auto* const control = TFormTest::Add<T>(left, top, 100, 100);
        control->SetName(name);
        return control;
    }
    static std::string NameOf(TObject* object) {
        auto* const component = dynamic_cast<TComponent*>(object);
        return component ? component->Name() : object ? object->ClassName() : "nobody";
    }
    /// Logs what it is told, and accepts.
    void Accept(TControl& control) {
        control.SetOnDragOver([this](TObject* sender, TObject* source, int, int, TDragState state, bool& accept) {
            static const char* const states[] = {" entered by ", " left by ", " over "};
            const std::string line = NameOf(sender) + states[state] + NameOf(source);
            if (Log.empty() || Log.back() != line) {
                Log.push_back(line);
            }
            accept = true;
        });
        control.SetOnDragDrop([this](TObject* sender, TObject* source, int x, int y) {
            Log.push_back(NameOf(sender) + " gets " + NameOf(source) + " " + IntToStr(x) + "," + IntToStr(y));
        });
    }
    TPoint In(TControl& control, int x = 50, int y = 50) { return control.ClientToScreen({x, y}); }
    bool Logged(const std::string& line) { return std::find(Log.begin(), Log.end(), line) != Log.end(); }
    /// The button is down and the mouse over the target.
    void DragOnto(TControl& control) {
        PressAt(In(*Source));
        MoveMouse(In(*Source, 60, 60));
        ASSERT_TRUE(PumpUntil([&] { return Source->Dragging(); }));
        MoveMouse(In(control));
    }

    TPanel* Source;
    TPanel* Target;
    TPaintBox* Graphic;
    TLines Log;
};

TEST_F(Drag, TheTargetGetsWhatIsDroppedOnIt) {
    Accept(*Target);
    test::Drag(In(*Source), In(*Target, 30, 40));
    ASSERT_TRUE(PumpUntil([&] { return Logged("end target 30,40"); }));
    EXPECT_EQ(Log.front(), "start");
    EXPECT_TRUE(Logged("target entered by source"));
    EXPECT_TRUE(Logged("target gets source 30,40"));
    EXPECT_FALSE(Logged("click")) << "a drag is no click";
    EXPECT_FALSE(Logged("up"));
    EXPECT_FALSE(Source->Dragging());
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(Drag, GraphicControlsAndDisabledOnesAreTargets) {
    Accept(*Graphic);
    test::Drag(In(*Source), In(*Graphic, 7, 8));
    ASSERT_TRUE(PumpUntil([&] { return Logged("end graphic 7,8"); }));
    Log.clear();
    Graphic->SetEnabled(false);
    Target->SetEnabled(false);
    Accept(*Target);
    test::Drag(In(*Source), In(*Graphic));
    ASSERT_TRUE(PumpUntil([&] { return Logged("end graphic 50,50"); }));
    test::Drag(In(*Source), In(*Target));
    ASSERT_TRUE(PumpUntil([&] { return Logged("end target 50,50"); }));
}

TEST_F(Drag, AGraphicControlIsDragged) {
    Accept(*Target);
    Graphic->SetOnMouseMove([this](TObject*, TShiftState shift, int, int) {
        if (shift.Contains(ssLeft)) {
            Graphic->BeginDrag(false);
        }
    });
    Graphic->SetOnEndDrag([this](TObject*, TObject* target, int, int) { Log.push_back("end " + NameOf(target)); });
    test::Drag(In(*Graphic), In(*Target));
    EXPECT_TRUE(PumpUntil([&] { return Logged("end target"); }));
    EXPECT_TRUE(Logged("target gets graphic 50,50"));
}

TEST_F(Drag, APressBelowTheThresholdStaysAClick) {
    PressAt(In(*Source));
    MoveMouse(In(*Source, 51, 52));
    ReleaseAt(In(*Source, 51, 52));
    ASSERT_TRUE(PumpUntil([&] { return Logged("up"); }));
    EXPECT_EQ(Log, (TLines{"click", "up"}));
    MoveMouse(In(*Target));
    ClickAt(In(*Source, 20, 20)); // elsewhere, else it were a double click
    ASSERT_TRUE(PumpUntil([&] { return Log.size() == 4; }));
    EXPECT_FALSE(Logged("start")) << "nothing was left over";
}

TEST_F(Drag, TheThresholdIsTheCallersOrTheSystems) {
    Source->SetOnMouseMove([this](TObject*, TShiftState shift, int, int) {
        if (shift.Contains(ssLeft)) {
            Source->BeginDrag(false, 30);
        }
    });
    int moves = 0;
    Source->SetOnMouseUp([&](TObject*, TMouseButton, TShiftState, int, int) { ++moves; });
    PressAt(In(*Source));
    MoveMouse(In(*Source, 75, 75));
    ReleaseAt(In(*Source, 75, 75));
    ASSERT_TRUE(PumpUntil([&] { return moves == 1; }));
    EXPECT_FALSE(Logged("start"));
    PressAt(In(*Source));
    MoveMouse(In(*Source, 81, 50));
    EXPECT_TRUE(PumpUntil([&] { return Source->Dragging(); }));
}

TEST_F(Drag, ThePointerTellsWhetherADropWouldBeAccepted) {
    Accept(*Target);
    Source->SetDragCursor(crSizeWE);
    DragOnto(*Graphic);
    EXPECT_TRUE(PumpUntil([&] { return GetCursor() == Screen().Cursors(crNoDrop); }));
    MoveMouse(In(*Target));
    EXPECT_TRUE(PumpUntil([&] { return GetCursor() == Screen().Cursors(crSizeWE); }));
    ReleaseAt(In(*Target));
    EXPECT_TRUE(PumpUntil([&] { return !Source->Dragging() && GetCursor() == Screen().Cursors(crArrow); }));
}

TEST_F(Drag, ATargetThatDoesNotAcceptGetsNothing) {
    Accept(*Target);
    Target->SetOnDragOver([](TObject*, TObject*, int, int, TDragState, bool& accept) { accept = false; });
    test::Drag(In(*Source), In(*Target));
    ASSERT_TRUE(PumpUntil([&] { return Logged("end nobody 0,0"); }));
    EXPECT_EQ(Log, (TLines{"start", "end nobody 0,0"}));
}

TEST_F(Drag, ATargetIsToldWhenTheMouseLeavesIt) {
    Accept(*Target);
    DragOnto(*Target);
    ASSERT_TRUE(PumpUntil([&] { return Logged("target entered by source"); }));
    MoveMouse(In(*Target, 55, 55));
    ASSERT_TRUE(PumpUntil([&] { return Logged("target over source"); }));
    MoveMouse(In(*Graphic));
    ASSERT_TRUE(PumpUntil([&] { return Logged("target left by source"); }));
    ReleaseAt(In(*Graphic));
    ASSERT_TRUE(PumpUntil([&] { return Logged("end nobody 0,0"); }));
}

TEST_F(Drag, EscapeCancels) {
    Accept(*Target);
    int keys = 0;
    Form->SetKeyPreview(true);
    Form->SetOnKeyDown([&](TObject*, uint16_t&, TShiftState) { ++keys; });
    DragOnto(*Target);
    ASSERT_TRUE(PumpUntil([&] { return Logged("target entered by source"); }));
    PressKey(VK_ESCAPE);
    ASSERT_TRUE(PumpUntil([&] { return Logged("end nobody 0,0"); }));
    EXPECT_TRUE(Logged("target left by source"));
    EXPECT_EQ(keys, 0) << "the key is used up";
    ReleaseAt(In(*Target));
    PressKey('A');
    ASSERT_TRUE(PumpUntil([&] { return keys == 1; }));
    EXPECT_FALSE(Logged("target gets source 50,50"));
}

TEST_F(Drag, LosingTheMouseCancels) {
    Accept(*Target);
    DragOnto(*Target);
    ASSERT_TRUE(PumpUntil([&] { return Logged("target entered by source"); }));
    SetCapture(Target->Handle());
    EXPECT_TRUE(Logged("end nobody 0,0"));
    EXPECT_FALSE(Source->Dragging());
    EXPECT_EQ(GetCapture(), Target->Handle()) << "it stays with whoever took it";
    ReleaseCapture();
}

TEST_F(Drag, TheProgramDropsOrCancels) {
    Accept(*Target);
    DragOnto(*Target);
    ASSERT_TRUE(PumpUntil([&] { return Logged("target entered by source"); }));
    Target->EndDrag(true);
    EXPECT_TRUE(Source->Dragging()) << "another control's drag";
    Source->EndDrag(true);
    EXPECT_TRUE(Logged("end target 50,50"));
    ReleaseAt(In(*Target));
    Log.clear();
    Application().ProcessMessages();
    DragOnto(*Target);
    ASSERT_TRUE(PumpUntil([&] { return Logged("target entered by source"); }));
    Source->EndDrag(false);
    EXPECT_EQ(Log.back(), "end nobody 0,0");
}

TEST_F(Drag, AnImmediateDragBeginsWithThePress) {
    Accept(*Target);
    Source->SetOnMouseDown([this](TObject*, TMouseButton, TShiftState, int, int) { Source->BeginDrag(true); });
    PressAt(In(*Source));
    ASSERT_TRUE(PumpUntil([&] { return Source->Dragging(); }));
    ReleaseAt(In(*Target, 1, 2));
    EXPECT_TRUE(PumpUntil([&] { return Logged("end target 1,2"); }));
}

TEST_F(Drag, AutomaticDraggingNeedsNoHandler) {
    Accept(*Target);
    Source->SetOnMouseMove({});
    Source->SetDragMode(dmAutomatic);
    test::Drag(In(*Source), In(*Target, 9, 9));
    EXPECT_TRUE(PumpUntil([&] { return Logged("end target 9,9"); }));
    Log.clear();
    ClickAt(In(*Source, 20, 20));
    ASSERT_TRUE(PumpUntil([&] { return Logged("up"); }));
    EXPECT_EQ(Log, (TLines{"click", "up"}));
}

class TParcel : public TDragObject {
    KX_CLASS()

    explicit TParcel(int& alive) : FAlive(alive) { ++FAlive; }
    ~TParcel() override { --FAlive; }
    TCursor GetDragCursor(bool accepted) const override { return accepted ? crHelp : crCross; }

private:
    int& FAlive;
};

const TClass& TParcel::StaticClass() {
    static const TClassBuilder<TParcel> cls("TParcel", TDragObject::StaticClass());
    return cls.Class();
}

TEST_F(Drag, ADragObjectOfTheHandlersTakesTheSourcesPlace) {
    Accept(*Target);
    int parcels = 0;
    TControl* control = nullptr;
    Source->SetOnStartDrag([&](TObject*, TDragObject*& object) { object = new TParcel(parcels); });
    Target->SetOnDragDrop([&](TObject*, TObject* source, int, int) {
        control = dynamic_cast<TParcel&>(*source).Control();
        EXPECT_EQ(parcels, 1);
    });
    DragOnto(*Target);
    EXPECT_TRUE(PumpUntil([&] { return GetCursor() == Screen().Cursors(crHelp); }));
    EXPECT_TRUE(Logged("target entered by TParcel"));
    ReleaseAt(In(*Target));
    EXPECT_TRUE(PumpUntil([&] { return Logged("end target 50,50"); }));
    EXPECT_EQ(control, Source);
    EXPECT_EQ(parcels, 0);
}

TEST_F(Drag, TheSourceMayGoMeanwhile) {
    Accept(*Target);
    DragOnto(*Target);
    ASSERT_TRUE(PumpUntil([&] { return Logged("target entered by source"); }));
    Source->Free();
    EXPECT_EQ(GetCapture(), nullptr);
    ReleaseAt(In(*Target));
    Application().ProcessMessages();
    EXPECT_FALSE(Logged("target gets source 50,50"));
}

TEST_F(Drag, TheTargetMayGoMeanwhile) {
    Accept(*Target);
    DragOnto(*Target);
    ASSERT_TRUE(PumpUntil([&] { return Logged("target entered by source"); }));
    const TPoint at = In(*Target);
    Target->Free();
    EXPECT_TRUE(Source->Dragging());
    ReleaseAt(at);
    ASSERT_TRUE(PumpUntil([&] { return Logged("end nobody 0,0"); }));
}

TEST_F(Drag, HandlersMayFreeTheirSender) {
    Target->SetOnDragOver([this](TObject* sender, TObject*, int, int, TDragState, bool&) {
        Log.emplace_back("freed");
        static_cast<TPanel*>(sender)->Free();
    });
    test::Drag(In(*Source), In(*Target));
    ASSERT_TRUE(PumpUntil([&] { return Logged("end nobody 0,0"); }));
    EXPECT_TRUE(Logged("freed"));
    Accept(*Graphic);
    Graphic->SetOnDragDrop([](TObject* sender, TObject*, int, int) { static_cast<TPaintBox*>(sender)->Free(); });
    Source->SetOnEndDrag([this](TObject* sender, TObject* target, int, int) {
        Log.push_back("last " + NameOf(target));
        static_cast<TPanel*>(sender)->Free();
    });
    test::Drag(In(*Source), In(*Graphic));
    ASSERT_TRUE(PumpUntil([&] { return Logged("last nobody"); }));
    EXPECT_EQ(Form->ControlCount(), 0);
}

TEST_F(Drag, AStartHandlerMayFreeItsSenderOrEndTheDrag) {
    Source->SetOnStartDrag([this](TObject*, TDragObject*&) {
        Log.emplace_back("start");
        Source->EndDrag(false);
    });
    test::Drag(In(*Source), In(*Target));
    ASSERT_TRUE(PumpUntil([&] { return Logged("start"); }));
    Application().ProcessMessages();
    EXPECT_EQ(Log.front(), "start");
    EXPECT_FALSE(Source->Dragging());
    Log.clear();
    Source->SetOnStartDrag([this](TObject* sender, TDragObject*&) {
        Log.emplace_back("gone");
        static_cast<TPanel*>(sender)->Free();
    });
    ReleaseAt(In(*Target));
    Application().ProcessMessages();
    test::Drag(In(*Source), In(*Target));
    ASSERT_TRUE(PumpUntil([&] { return Logged("gone"); }));
    EXPECT_EQ(Form->ControlCount(), 2);
}

TEST_F(Drag, HandlersThatThrowEndTheDragAndAreReported) {
    TExceptionLog log;
    Target->SetOnDragOver([](TObject*, TObject*, int, int, TDragState, bool&) { throw Exception("over"); });
    DragOnto(*Target);
    ASSERT_TRUE(PumpUntil([&] { return !log.Messages().empty(); }));
    EXPECT_FALSE(Source->Dragging());
    EXPECT_TRUE(Logged("end nobody 0,0"));
    EXPECT_EQ(GetCapture(), nullptr);
    ReleaseAt(In(*Target));
    Application().ProcessMessages();

    Log.clear();
    Accept(*Target);
    Target->SetOnDragDrop([](TObject*, TObject*, int, int) { throw Exception("drop"); });
    test::Drag(In(*Source), In(*Target));
    ASSERT_TRUE(PumpUntil([&] { return log.Messages().back() == "drop"; }));
    EXPECT_TRUE(Logged("end target 50,50")) << "the source is told all the same";

    Source->SetOnStartDrag([](TObject*, TDragObject*&) { throw Exception("start"); });
    test::Drag(In(*Source), In(*Target));
    ASSERT_TRUE(PumpUntil([&] { return log.Messages().back() == "start"; }));
    EXPECT_FALSE(Source->Dragging());

    Source->SetOnStartDrag({});
    Source->SetOnEndDrag([](TObject*, TObject*, int, int) { throw Exception("end"); });
    test::Drag(In(*Source), In(*Target));
    ASSERT_TRUE(PumpUntil([&] { return log.Messages().back() == "end"; }));
    EXPECT_EQ(GetCapture(), nullptr);
}

// --- Right clicks on graphic controls

TEST_F(Drag, ARightClickOnAGraphicControlOpensAMenu) {
    TPopupMenu menu(nullptr);
    auto* const item = new TMenuItem(&menu);
    item->SetCaption("item");
    menu.Items().Add(item);
    Graphic->SetPopupMenu(&menu);
    bool opened = false;
    menu.SetOnPopup([&](TObject*) { opened = true; });
    RunDialog(
        [&] {
            ClickAt(In(*Graphic, 20, 30), mbRight);
            return PumpUntil([&] { return opened && !ShownMenu(); });
        },
        {{"the menu", [] { return ShownMenu() != nullptr; }, [] { PressKey(VK_ESCAPE); }}});
    EXPECT_EQ(menu.PopupPoint(), In(*Graphic, 20, 30));
    EXPECT_EQ(menu.PopupComponent(), Graphic);
}

// --- Files from the shell

/// Handles the raw message.
class TDropForm : public TForm {
    KX_CLASS()

    using TForm::TForm;
    TLines Names;

    void WndProc(TMessage& message) override {
        if (message.Msg == WM_DROPFILES) {
            const auto drop = reinterpret_cast<HDROP>(message.WParam);
            const UINT count = DragQueryFileA(drop, 0xFFFFFFFF, nullptr, 0);
            for (UINT i = 0; i < count; ++i) {
                char name[MAX_PATH];
                Names.emplace_back(name, DragQueryFileA(drop, i, name, MAX_PATH));
            }
            DragFinish(drop);
        } else {
            TForm::WndProc(message);
        }
    }
};

const TClass& TDropForm::StaticClass() {
    static const TClassBuilder<TDropForm> cls("TDropForm", TForm::StaticClass());
    return cls.Class();
}

HDROP DropOf(std::string_view names) {
    const HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + names.size() + 1);
    auto* const drop = static_cast<DROPFILES*>(GlobalLock(memory));
    drop->pFiles = sizeof(DROPFILES);
    std::copy(names.begin(), names.end(), reinterpret_cast<char*>(drop + 1));
    GlobalUnlock(memory);
    return reinterpret_cast<HDROP>(memory);
}

bool Accepts(HWND window) { return (GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_ACCEPTFILES) != 0; }

TEST(DropFiles, ReachTheFormsOwnHandlerAlsoInANewWindow) {
    const std::unique_ptr<TDropForm, TFreeDeleter> form(NewForm<TDropForm>(nullptr));
    const unique_hwnd host(
        CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 300, 300, nullptr, nullptr, HInstance(), nullptr));
    form->SetAcceptFiles(true);
    EXPECT_TRUE(Accepts(form->Handle()));
    using namespace std::string_view_literals;
    PostMessageA(form->Handle(), WM_DROPFILES, reinterpret_cast<WPARAM>(DropOf("C:\\a.txt\0C:\\b\0"sv)), 0);
    EXPECT_TRUE(PumpUntil([&] { return form->Names.size() == 2; }));
    EXPECT_EQ(form->Names, (TLines{"C:\\a.txt", "C:\\b"}));
    form->RecreateWnd();
    EXPECT_TRUE(Accepts(form->Handle()));
    form->SetParentWindow(host.get());
    EXPECT_TRUE(Accepts(form->Handle())) << "docked";
    form->SetAcceptFiles(false);
    EXPECT_FALSE(Accepts(form->Handle()));
    form->SetParentWindow(nullptr);
}

} // namespace
} // namespace kx
