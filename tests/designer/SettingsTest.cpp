// SPDX-License-Identifier: MIT
// What the designer remembers from start to start.

#include "WindowFixture.h"

#include "designer/GridForm.h"
#include "kx/win/Monitors.h"

namespace kx::test {
namespace {

class DesignerSettings : public TDesignerWindowTest {
protected:
    TControl& Part(const char* name) const { return dynamic_cast<TControl&>(*Window->FindComponent(name)); }
    TRect Place() const { return ScreenRectOf(Window->Handle()); }
    bool IsZoomed() const { return ::IsZoomed(Window->Handle()) != FALSE; }

    /// Ends the designer as a user does, and starts it again.
    void Restart() {
        Window->Close();
        ASSERT_FALSE(Window->Visible());
        Start();
    }
    void Start() {
        Window.reset();
        Window.reset(NewForm<designer::TDesignerForm>(nullptr));
        Window->Show();
        EXPECT_TRUE(Until([this] { return Window->Active(); }));
        Settle();
    }
    /// Writes the value in each way that is wrong, and starts the designer with it.
    void ForEachBadValue(const std::string& group, const std::string& name, const TAction& check) {
        using TWrite = std::function<void(TRegistry&)>;
        const auto text = [&](const char* value) { return [=](TRegistry& key) { key.WriteString(name, value); }; };
        const std::vector<std::pair<std::string, TWrite>> values = {
            {"empty", text("")},
            {"letters", text("wide")},
            {"a fraction", text("100.5")},
            {"beyond 64 bits", text("99999999999999999999")},
            {"beyond 32 bits", text("4294967396")}, // 100, if its upper half were lost
            {"huge", text("2147483647")},
            {"below all", text("-2147483648")},
            {"a number", [=](TRegistry& key) { key.WriteInteger(name, 100); }},
            {"bytes", [=](TRegistry& key) { key.WriteBinaryData(name, "100", 3); }},
            {"long", [=](TRegistry& key) { key.WriteString(name, std::string(20000, '1')); }}};
        for (const auto& [what, write] : values) {
            SCOPED_TRACE(name + ": " + what);
            TRegistry key;
            ASSERT_TRUE(key.OpenKey(Settings.Path() + "\\" + group, true));
            write(key);
            Start();
            check();
        }
    }
    void Write(const std::string& group, const char* name, const std::string& value) const {
        designer::TSettings(group).SetText(name, value);
    }
};

// --- The window

TEST_F(DesignerSettings, TheWindowComesBackWhereItWasClosed) {
    Window->SetBounds(70, 50, 900, 640);
    Restart();
    EXPECT_EQ(Place(), (TRect{70, 50, 970, 690}));
    EXPECT_FALSE(IsZoomed());
}

TEST_F(DesignerSettings, WithoutAPlaceTheWindowIsInTheMiddle) {
    Start();
    const TRect r = Place();
    const TRect screen = Screen().BoundsRect();
    EXPECT_EQ(Window->ClientWidth(), 1180);
    const int middle = (screen.Right - Width(r)) / 2;
    EXPECT_NEAR(r.Left, middle, 1);
}

TEST_F(DesignerSettings, AWindowAsLargeAsTheScreenComesBackSo) {
    Window->SetBounds(70, 50, 900, 640);
    Window->SetWindowState(wsMaximized);
    ASSERT_TRUE(Until([this] { return IsZoomed(); }));
    Restart();
    EXPECT_TRUE(IsZoomed());
    Window->SetWindowState(wsNormal);
    EXPECT_EQ(Place(), (TRect{70, 50, 970, 690})) << "its own place is behind it";
    Restart();
    EXPECT_FALSE(IsZoomed());
}

TEST_F(DesignerSettings, AnIconComesBackAsTheWindowThatItWas) {
    Window->SetBounds(70, 50, 900, 640);
    const int pane = Part("LeftPanel").Width();
    Window->SetWindowState(wsMinimized);
    ASSERT_TRUE(IsIconic(Window->Handle()));
    Restart();
    EXPECT_FALSE(IsIconic(Window->Handle()));
    EXPECT_EQ(Place(), (TRect{70, 50, 970, 690}));
    EXPECT_EQ(Part("LeftPanel").Width(), pane);
    Window->SetWindowState(wsMaximized);
    Window->SetWindowState(wsMinimized);
    Restart();
    EXPECT_TRUE(IsZoomed());
}

TEST_F(DesignerSettings, AWindowThatCannotBeReachedComesOntoAMonitor) {
    const TRect area = MonitorAt({0, 0, 1, 1}).Free;
    const auto start = [&](int left, int top, int width, int height) {
        Write("Window", "Left", IntToStr(left));
        Write("Window", "Top", IntToStr(top));
        Write("Window", "Width", IntToStr(width));
        Write("Window", "Height", IntToStr(height));
        Start();
        return Place();
    };
    EXPECT_EQ(start(20000, 60, 800, 600), (TRect{area.Right - 800, 60, area.Right, 660}));
    EXPECT_EQ(start(-20000, 60, 800, 600), (TRect{area.Left, 60, area.Left + 800, 660}));
    EXPECT_EQ(start(60, 20000, 800, 600), (TRect{60, area.Bottom - 600, 860, area.Bottom}));
    EXPECT_EQ(start(60, -300, 800, 600), (TRect{60, area.Top, 860, area.Top + 600})) << "its caption is above";
    EXPECT_EQ(start(area.Right - 99, 60, 800, 600).Right, area.Right) << "too little of its caption";
    EXPECT_EQ(start(area.Left - 701, 60, 800, 600).Left, area.Left);
    EXPECT_EQ(start(60, area.Bottom - 10, 800, 600).Bottom, area.Bottom);
    // No larger than the monitor. In one direction at a time: Wine 10 does not come to rest with a window all over the
    // screen.
    EXPECT_EQ(start(20000, 60, 30000, 600), (TRect{area.Left, 60, area.Right, 660}));
    EXPECT_EQ(start(60, 20000, 800, 30000), (TRect{60, area.Top, 860, area.Bottom}));
    // What the user has left half outside stays there.
    EXPECT_EQ(start(area.Right - 100, 60, 800, 600).Left, area.Right - 100);
    EXPECT_EQ(start(area.Left - 700, 60, 800, 600).Left, area.Left - 700);
    EXPECT_EQ(start(60, area.Bottom - 60, 800, 600).Top, area.Bottom - 60);
}

TEST_F(DesignerSettings, APlaceThatIsNoneCountsAsNone) {
    Window->SetBounds(70, 50, 900, 640);
    Window->Close();
    for (const char* name : {"Left", "Top", "Width", "Height"}) {
        const std::string good = designer::TSettings("Window").Text(name);
        ForEachBadValue("Window", name, [this] { EXPECT_EQ(Window->ClientWidth(), 1180); });
        TRegistry key;
        key.OpenKey(Settings.Path() + "\\Window", false);
        key.DeleteValue(name);
        Start();
        EXPECT_EQ(Window->ClientWidth(), 1180) << "without its " << name;
        Write("Window", name, good);
    }
    for (const char* name : {"Width", "Height"}) {
        const std::string good = designer::TSettings("Window").Text(name);
        for (const char* bad : {"0", "-900"}) {
            Write("Window", name, bad);
            Start();
            EXPECT_EQ(Window->ClientWidth(), 1180) << name << " " << bad;
        }
        Write("Window", name, good);
    }
    ForEachBadValue("Window", "Maximized", [this] { EXPECT_FALSE(IsZoomed()); });
    EXPECT_EQ(Place(), (TRect{70, 50, 970, 690}));
}

TEST_F(DesignerSettings, WhoDoesNotCloseIsNotRemembered) {
    Open();
    The("OkButton").SetLeft(24);
    Designer().Record("Move");
    Window->SetBounds(70, 50, 900, 640);
    AnswerTo([this] { Window->Close(); }, IDCANCEL);
    EXPECT_EQ(designer::TSettings("Window").Text("Left"), "");
    AnswerTo([this] { Window->Close(); }, IDNO);
    EXPECT_EQ(designer::TSettings("Window").Text("Left"), "70");
}

// --- Panes

TEST_F(DesignerSettings, PanesKeepTheSizesThatTheUserGivesThem) {
    Start(); // the height of its form file
    const auto drag = [this](const char* splitter, int dx, int dy) {
        const TControl& bar = Part(splitter);
        const TPoint at = bar.ClientToScreen({bar.Width() / 2, bar.Height() / 2});
        DragFrom(at, dx, dy);
    };
    drag("LeftSplitter", 70, 0);
    drag("ProjectSplitter", 0, 30);
    drag("StructureSplitter", 0, -20);
    EXPECT_EQ(Part("LeftPanel").Width(), 360);
    EXPECT_EQ(Part("ProjectList").Height(), 110);
    EXPECT_EQ(Part("Structure").Height(), 130);
    Restart();
    EXPECT_EQ(Part("LeftPanel").Width(), 360);
    EXPECT_EQ(Part("ProjectList").Height(), 110);
    EXPECT_EQ(Part("Structure").Height(), 130);
    EXPECT_EQ(Part("ViewPanel").Left(), 364);
    EXPECT_EQ(Part("Inspector").Top(), 3 + 16 + 110 + 4 + 18 + 130 + 4);
    drag("ProjectSplitter", 0, -300); // it disappears
    EXPECT_EQ(Part("ProjectList").Height(), 0);
    Restart();
    EXPECT_EQ(Part("ProjectList").Height(), 0);
    EXPECT_EQ(Part("Structure").Height(), 130);
}

TEST_F(DesignerSettings, PanesOfALargeWindowAreLargeAgain) {
    Window->SetBounds(20, 20, 700, 600);
    Window->SetWindowState(wsMaximized);
    ASSERT_TRUE(Until([this] { return IsZoomed(); }));
    const int width = Window->ClientWidth() - 100;
    const int height = Part("LeftPanel").Height() - 200;
    Part("LeftPanel").SetWidth(width);
    Part("Structure").SetHeight(height);
    ASSERT_GT(width, 700);
    Restart();
    ASSERT_TRUE(IsZoomed());
    EXPECT_EQ(Part("LeftPanel").Width(), width);
    EXPECT_EQ(Part("Structure").Height(), height);
}

TEST_F(DesignerSettings, PanesLeaveRoomForTheRest) {
    Part("LeftPanel").SetWidth(800);
    Part("ProjectList").SetHeight(300);
    Part("Structure").SetHeight(100);
    Window->SetBounds(20, 20, 700, 560);
    EXPECT_EQ(Part("LeftPanel").Width(), Window->ClientWidth() - 34);
    EXPECT_EQ(Part("ViewPanel").Width(), 30);
    EXPECT_EQ(Part("ProjectList").Height(), 300) << "that of the next one goes first";
    EXPECT_LT(Part("Structure").Height(), 100);
    EXPECT_EQ(Part("Inspector").Height(), 30);
    const int room = 300 + Part("Structure").Height();
    Part("ProjectList").SetHeight(900);
    Window->SetBounds(20, 20, 700, 561);
    EXPECT_EQ(Part("ProjectList").Height(), room + 1);
    EXPECT_EQ(Part("Structure").Height(), 0);
    EXPECT_EQ(Part("Inspector").Height(), 30);
    Window->SetWindowState(wsMinimized);
    Window->SetWindowState(wsNormal);
    EXPECT_EQ(Part("LeftPanel").Width(), Window->ClientWidth() - 34) << "an icon has no room, and needs none";
    EXPECT_EQ(Part("ProjectList").Height(), room + 1);
}

TEST_F(DesignerSettings, APaneOfNoSizeHasThatOfItsFormFile) {
    const std::pair<const char*, std::function<void()>> panes[] = {
        {"LeftPane", [this] { EXPECT_EQ(Part("LeftPanel").Width(), 290); }},
        {"ProjectPane", [this] { EXPECT_EQ(Part("ProjectList").Height(), 80); }},
        {"StructurePane", [this] { EXPECT_EQ(Part("Structure").Height(), 150); }}};
    for (const auto& [name, check] : panes) {
        ForEachBadValue("Window", name, check);
        Write("Window", name, "-1");
        Start();
        check();
    }
    Write("Window", "LeftPane", "32767"); // a length, but more than there is
    Write("Window", "ProjectPane", "32767");
    Write("Window", "StructurePane", "32767");
    Start();
    EXPECT_EQ(Part("ViewPanel").Width(), 30);
    EXPECT_EQ(Part("Inspector").Height(), 30);
}

// --- The grid

class GridSettings : public DesignerSettings {
protected:
    /// Opens the window with the grid, and does something in it.
    void InGridForm(const std::function<void(designer::TGridForm&)>& act, std::vector<TStep> steps = {}) {
        steps.insert(steps.begin(), {"the grid", [] { return FormOfClass("TGridForm") != nullptr; },
                                     [act] { act(dynamic_cast<designer::TGridForm&>(*FormOfClass("TGridForm"))); }});
        TTestDriver driver(std::move(steps));
        driver.Run([&] {
            Window->Command("Grid");
            return true;
        });
        Settle();
    }
    static void Enter(designer::TGridForm& form, const char* width, const char* height) {
        dynamic_cast<TEdit&>(*form.FindComponent("WidthEdit")).SetText(width);
        dynamic_cast<TEdit&>(*form.FindComponent("HeightEdit")).SetText(height);
    }
    static void Push(TForm& form, const char* button) {
        PressButton(dynamic_cast<TWinControl&>(*form.FindComponent(button)).Handle());
    }
    TPoint GridSize() const { return Surface().Grid().Size; }
};

TEST_F(GridSettings, AreSetInAWindow) {
    Open();
    Window->Command("ShowGuides"); // off
    InGridForm([](designer::TGridForm& form) {
        EXPECT_EQ(form.Grid(), designer::TDesignGrid());
        Screenshot("designer-grid", form.Handle());
        Enter(form, "10", "5");
        Push(form, "OkButton");
    });
    EXPECT_EQ(GridSize(), (TPoint{10, 5}));
    Screenshot("designer-grid-10-5", Window->Handle());
    const COLORREF dots = GetSysColor(COLOR_BTNSHADOW);
    EXPECT_EQ(PixelOfForm(0, 200), dots);
    EXPECT_EQ(PixelOfForm(250, 205), dots);
    EXPECT_NE(PixelOfForm(8, 208), dots);
    EXPECT_NE(PixelOfForm(250, 206), dots);
    EXPECT_NE(PixelOfForm(251, 205), dots);
    DragFrom(At("OkButton"), 15, 1);
    EXPECT_EQ(The("OkButton").Left(), 20) << "23";
    EXPECT_EQ(The("OkButton").Top(), 15) << "17";
    DragFrom(Corner("OkButton", true, true), 3, 1);
    EXPECT_EQ(The("OkButton").BoundsRect(), (TRect{20, 15, 100, 40})) << "98 and 41";
    Press(VK_RIGHT, {VK_CONTROL, VK_SHIFT});
    Press(VK_DOWN, {VK_CONTROL, VK_SHIFT});
    EXPECT_EQ(The("OkButton").Left(), 30);
    EXPECT_EQ(The("OkButton").Top(), 20);
    Surface().SetTool(&TCheckBox::StaticClass());
    ClickOn(OnForm(234, 167));
    EXPECT_EQ(The("CheckBox1").Left(), 230);
    EXPECT_EQ(The("CheckBox1").Top(), 165);
    Designer().SelectOne(The("NameLabel"));
    Window->Command("ToGrid");
    EXPECT_EQ(The("NameLabel").Left(), 20);
    EXPECT_EQ(The("NameLabel").Top(), 15);
}

TEST_F(GridSettings, WithoutSnappingTheMouseMovesByPixels) {
    Open();
    Window->Command("ShowGuides"); // off
    InGridForm([](designer::TGridForm& form) {
        Push(form, "SnapCheck");
        Push(form, "OkButton");
    });
    EXPECT_FALSE(Surface().Grid().Snaps);
    EXPECT_EQ(PixelOfForm(0, 200), GetSysColor(COLOR_BTNSHADOW)) << "it is still seen";
    DragFrom(At("OkButton"), 15, 1);
    EXPECT_EQ(The("OkButton").Left(), 23);
    EXPECT_EQ(The("OkButton").Top(), 17);
    DragFrom(Corner("OkButton", true, true), 3, 1);
    EXPECT_EQ(The("OkButton").Width(), 78);
    EXPECT_EQ(The("OkButton").Height(), 26);
    Surface().SetTool(&TCheckBox::StaticClass());
    ClickOn(OnForm(235, 166));
    EXPECT_EQ(The("CheckBox1").Left(), 235);
    EXPECT_EQ(The("CheckBox1").Top(), 166);
    Press(VK_RIGHT, {VK_CONTROL, VK_SHIFT});
    EXPECT_EQ(The("CheckBox1").Left(), 243) << "these keys are about the grid";
}

TEST_F(GridSettings, ALengthThatIsNoneIsToldAndNothingIsChanged) {
    Open();
    struct TBad {
        const char* Width;
        const char* Height;
        const char* Says;
    };
    for (const TBad& bad :
         {TBad{"1", "8", "width"}, TBad{"129", "8", "width"}, TBad{"", "8", "width"}, TBad{"ten", "8", "width"},
          TBad{"8", "1", "height"}, TBad{"8", "129", "height"}, TBad{"8", "99999999999999999999", "height"},
          TBad{"8", "-8", "height"}, TBad{"8", "8.5", "height"}}) {
        std::string said;
        InGridForm(
            [&](designer::TGridForm& form) {
                Enter(form, bad.Width, bad.Height);
                Push(form, "ShowCheck");
                PressKey(VK_RETURN);
            },
            {AnswerBox(IDOK, [&](const std::string& text) { said = text; }),
             {"the field", NoBoxShown(), [&] {
                  TForm& form = *FormOfClass("TGridForm");
                  const bool isWidth = bad.Says == std::string("width");
                  auto& edit = dynamic_cast<TEdit&>(*form.FindComponent(isWidth ? "WidthEdit" : "HeightEdit"));
                  EXPECT_TRUE(edit.Focused()) << bad.Width << ", " << bad.Height;
                  EXPECT_EQ(edit.SelText(), edit.Text());
                  Push(form, "CancelButton");
              }}});
        EXPECT_EQ(said, std::string("The ") + bad.Says + " has to be a number from 2 to 128");
        EXPECT_EQ(Surface().Grid(), designer::TDesignGrid());
        EXPECT_EQ(designer::TSettings("Grid").Text("Width"), "");
    }
    InGridForm([](designer::TGridForm& form) {
        Enter(form, " 2", "128 ");
        Push(form, "OkButton");
    });
    EXPECT_EQ(GridSize(), (TPoint{2, 128}));
}

TEST_F(GridSettings, AreRemembered) {
    InGridForm([](designer::TGridForm& form) {
        Enter(form, "10", "5");
        Push(form, "SnapCheck");
        Push(form, "ShowCheck");
        Push(form, "OkButton");
    });
    Window->Command("ShowGuides");
    Start(); // even without having been closed
    EXPECT_EQ(Surface().Grid(), (designer::TDesignGrid{{10, 5}, false, false}));
    EXPECT_FALSE(Surface().UsesGuides());
    Open();
    EXPECT_EQ(PixelOfForm(0, 200), GetSysColor(COLOR_BTNFACE));
    Window->Command("ShowGrid");
    Window->Command("ShowGuides");
    Start();
    EXPECT_EQ(Surface().Grid(), (designer::TDesignGrid{{10, 5}, true, false}));
    EXPECT_TRUE(Surface().UsesGuides());
}

TEST_F(GridSettings, WhatIsNoGridIsTheUsualOne) {
    const TAction isUsual = [this] {
        EXPECT_EQ(Surface().Grid(), designer::TDesignGrid());
        EXPECT_TRUE(Surface().UsesGuides());
    };
    for (const char* name : {"Width", "Height"}) {
        for (const char* bad : {"1", "0", "-8", "129"}) {
            Write("Grid", name, bad);
            Start();
            isUsual();
        }
        Write("Grid", name, "8");
    }
    for (const char* name : {"Width", "Height"}) {
        TRegistry key;
        ForEachBadValue("Grid", name, [&] { EXPECT_EQ(Surface().Grid(), designer::TDesignGrid()); });
        key.OpenKey(Settings.Path() + "\\Grid", false);
        key.DeleteValue(name);
    }
    for (const char* name : {"Show", "Snap", "Guides"}) {
        ForEachBadValue("Grid", name, isUsual);
        Write("Grid", name, "2");
        Start();
        isUsual();
    }
}

// --- What was open

TEST_F(DesignerSettings, APathThatIsNoTextIsNotOffered) {
    ASSERT_TRUE(Window->OpenPath(Folder.Path()));
    TRegistry key;
    ASSERT_TRUE(key.OpenKey(Settings.Path() + "\\Recent", false));
    key.WriteString("2", Folder.Path());
    key.WriteInteger("1", 7);
    key.WriteBinaryData("3", "abc", 3);
    SendMessageA(Window->Handle(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(GetSubMenu(GetMenu(Window->Handle()), 0)),
                 0);
    const auto& recent = dynamic_cast<TMenuItem&>(*Window->FindComponent("RecentMenu"));
    ASSERT_EQ(recent.Count(), 1);
    EXPECT_EQ(recent[0]->Caption(), Folder.Path());
    EXPECT_EQ(ShownMessageBox(), nullptr);
}

TEST_F(DesignerSettings, AKeyThatCannotBeWrittenIsNoHindrance) {
    TRegistry parent;
    ASSERT_TRUE(parent.OpenKey(Settings.Path(), true));
    parent.CloseKey();
    designer::SetSettingsKey(Settings.Path() + "\\" + std::string(300, 'x')); // no key has such a name
    Start();
    ASSERT_TRUE(Window->OpenPath(Folder.Path()));
    Window->Command("ShowGrid");
    EXPECT_FALSE(Surface().Grid().IsShown);
    Restart();
    EXPECT_TRUE(Surface().Grid().IsShown);
    EXPECT_EQ(ShownMessageBox(), nullptr);
}

} // namespace
} // namespace kx::test
