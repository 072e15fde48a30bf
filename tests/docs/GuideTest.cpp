// SPDX-License-Identifier: MIT
// The dialog of docs/guide.md after each of its steps, used as the page says. Each leaves a picture; with KX_UPDATE=1
// in the environment the pictures of the page are made anew.

#include "examples/guide/OptionsForm.h"
#include "examples/guide/PreviewForm.h"
#include "examples/guide/Steps.h"
#include "kx/dropdown/KxDropDownButton.h"
#include "kx/opensave/KxFileDlgControls.h"
#include "kx/places/KxPlacesBar.h"
#include "kx/places/KxPlacesBarForm.h"
#include "kx/win/Registry.h"
#include "tests/docs/PagePicture.h"
#include "tests/support/DialogTest.h"
#include "tests/support/Process.h"

namespace kx {
namespace {

using namespace test;

constexpr const char* drawingsKey = "Software\\Acme\\Drawings";

void AddDrawing(const std::string& path, TColor paper, TColor ink) {
    TBitmap drawing;
    drawing.SetSize(120, 90);
    TCanvas& canvas = drawing.Canvas();
    canvas.Brush().SetColor(paper);
    canvas.FillRect({0, 0, 120, 90});
    canvas.Brush().SetColor(ink);
    canvas.Ellipse({20, 15, 100, 75});
    drawing.SaveToFile(path);
}

class Guide : public TDialogTest {
protected:
    Guide() {
        TRegistry().DeleteKey(drawingsKey);
        Application().CreateForm(&guide::PreviewForm);
        Application().CreateForm(&guide::OptionsForm);
        Folder.AddFolder("Drawings");
        for (const char* name : {"Drawings\\House.bmp", "Drawings\\Lake.bmp", "Drawings\\~House.bmp"}) {
            AddDrawing(Folder.Path(name), clSkyBlue, clNavy);
        }
        Folder.AddFile("Drawings\\Broken.bmp", "no drawing");
        Dialog.SetInitialDir(Folder.Path("Drawings"));
        MoveMouse({1, 1}); // what is under it would look different in the pictures
    }
    ~Guide() override {
        guide::PreviewForm->Free();
        guide::OptionsForm->Free();
        guide::PreviewForm = nullptr;
        guide::OptionsForm = nullptr;
        TRegistry().DeleteKey(drawingsKey);
        RegDeleteKeyA(HKEY_CURRENT_USER, "Software\\Acme"); // unless somebody else has something there
    }

    HWND Window() const { return Dialog.DlgHandle(); }
    HWND List() const { return FileListOf(Window()); }
    std::string ShownName() const {
        return dynamic_cast<TLabel&>(*guide::PreviewForm->FindComponent("NameLabel")).Caption();
    }
    bool ShowsDrawing() const {
        return dynamic_cast<TImage&>(*guide::PreviewForm->FindComponent("DrawingImage")).Picture().Graphic() != nullptr;
    }
    /// Selects a file, has the dialog's picture taken, and goes on when all is shown.
    TStep Select(const std::string& name) {
        return {"the file " + name, [this, name] { return FindItem(List(), name) >= 0; },
                [this, name] {
                    SetFocus(List());
                    SelectItem(List(), name);
                }};
    }
    TStep TakePicture(int step) {
        return Perform("the picture", [this, step] { PagePicture("guide-" + IntToStr(step), Window()); });
    }
    TStep Choose(const std::string& name) { return EnterFileName(Dialog, name); }
    std::string Path(const std::string& name) const { return Folder.Path("Drawings\\" + name); }

    TTempFolder Folder{"guide"};
    TKxOpenDialog& Dialog = *new TKxOpenDialog(Owner.get());
};

TEST_F(Guide, Step1AsksForDrawings) {
    guide::TakeSteps(Dialog, 1);
    EXPECT_TRUE(RunDialog(Dialog, {Await("it is shown", Shown(Dialog)), TakePicture(1),
                                   Perform("its texts",
                                           [&] {
                                               EXPECT_EQ(TextOf(Window()), "Open drawing");
                                               EXPECT_EQ(TextOf(ItemOf(Dialog, KxFileTypeId)), "Drawings");
                                               EXPECT_EQ(Dialog.CustDlgParams().RightForm(), nullptr);
                                           }),
                                   Choose("Lake.bmp")}));
    EXPECT_EQ(Dialog.FileName(), Path("Lake.bmp"));
}

TEST_F(Guide, Step2DocksTwoForms) {
    guide::TakeSteps(Dialog, 2);
    RunDialog(Dialog, {Await("it is shown", Shown(Dialog)), TakePicture(2),
                       Perform("the forms",
                               [&] {
                                   const TRect list = RectIn(Window(), List());
                                   const TRect preview = RectIn(Window(), guide::PreviewForm->Handle());
                                   const TRect options = RectIn(Window(), guide::OptionsForm->Handle());
                                   EXPECT_TRUE(IsWindowVisible(guide::PreviewForm->Handle()));
                                   EXPECT_GE(preview.Left, list.Right);
                                   EXPECT_GE(options.Top, list.Bottom);
                                   EXPECT_EQ(options.Bottom, ClientRectOf(Window()).Bottom);
                               }),
                       Cancel(Dialog)});
    EXPECT_FALSE(guide::PreviewForm->IsDocked());
}

TEST_F(Guide, Step3ShowsTheSelectionAndRefusesWhatIsNoDrawing) {
    guide::TakeSteps(Dialog, 3);
    std::string said;
    EXPECT_TRUE(RunDialog(
        Dialog, {Await("it is shown", Shown(Dialog)), Select("House.bmp"),
                 Await("its picture", [&] { return ShowsDrawing() && ShownName() == "House.bmp"; }), TakePicture(3),
                 Perform("a new folder",
                         [&] {
                             const int before = ItemCount(List());
                             SendMessageA(Window(), WM_COMMAND, KxCmdNewFolder,
                                          reinterpret_cast<LPARAM>(KxFindToolbar(Window())));
                             EXPECT_EQ(ItemCount(List()), before);
                         }),
                 Choose("Broken.bmp"), AnswerBox(IDOK, [&](const std::string& text) { said = text; }),
                 Await("it is still open", [&] { return IsShown(Dialog) && !ShowsDrawing(); }), Choose("Lake.bmp")}));
    EXPECT_THAT(said, HasSubstr("This is no drawing."));
    EXPECT_EQ(Dialog.FileName(), Path("Lake.bmp"));
}

TEST_F(Guide, Step4NamesAndHidesControls) {
    guide::TakeSteps(Dialog, 4);
    RunDialog(Dialog, {Await("it is shown", Shown(Dialog)), TakePicture(4),
                       Perform("the controls",
                               [&] {
                                   EXPECT_EQ(TextOf(ItemOf(Dialog, IDOK)), "&Load");
                                   EXPECT_EQ(TextOf(ItemOf(Dialog, KxFileNameLabelId)), "&Drawing:");
                                   EXPECT_FALSE(IsWindowVisible(ItemOf(Dialog, KxFileTypeId)));
                                   EXPECT_FALSE(IsWindowVisible(ItemOf(Dialog, KxFileTypeLabelId)));
                               }),
                       Cancel(Dialog)});
}

TEST_F(Guide, Step5StandsAboveTheMiddleOfTheScreen) {
    guide::TakeSteps(Dialog, 5);
    RunDialog(Dialog, {Await("it is shown", Shown(Dialog)), TakePicture(5),
                       Perform("its place",
                               [&] {
                                   const TRect r = ScreenRectOf(Window());
                                   EXPECT_NEAR((r.Left + r.Right) / 2, Screen().Width() / 2, 1);
                                   EXPECT_NEAR((r.Top + r.Bottom) / 2, Screen().Height() / 2 - 40, 1);
                               }),
                       Cancel(Dialog)});
}

TEST_F(Guide, Step6HasPlacesThatAreKept) {
    guide::TakeSteps(Dialog, 6);
    const std::string templates = ExcludeTrailingPathDelimiter(ExtractFilePath(Application().ExeName()));
    RunDialog(Dialog, {{"the places", [&] { return IsShown(Dialog) && Dialog.PlacesForm(); },
                        [&] {
                            PagePicture("guide-6", Window());
                            TToolBar& bar = *Dialog.PlacesForm()->ToolBar1;
                            ASSERT_EQ(bar.ButtonCount(), 2);
                            EXPECT_EQ(bar.Buttons(1)->Caption(), "Templates");
                            EXPECT_FALSE(bar.Buttons(0)->Caption().empty());
                            ClickAt(bar.Buttons(1)->ClientToScreen({40, 20}));
                        }},
                       Await("the place's folder", FolderIs(Dialog, templates)),
                       Cancel(Dialog)});
    TKxPlacesBarOptions kept;
    kept.SetRegistryKey(std::string(drawingsKey) + "\\Places");
    kept.LoadFromRegistry();
    EXPECT_EQ(kept.Places().Count(), 2);
}

TEST_F(Guide, Step7LoadsACopyByTheButtonsMenu) {
    guide::TakeSteps(Dialog, 7);
    const auto button = [&] { return dynamic_cast<TKxBitBtn*>(FindControl(FindDescendant(Window(), "TKxBitBtn"))); };
    EXPECT_TRUE(RunDialog(Dialog, {Await("it is shown", Shown(Dialog)),
                                   Select("House.bmp"),
                                   {"the button", [&] { return ShowsDrawing() && button(); },
                                    [&] {
                                        PagePicture("guide-7", Window());
                                        EXPECT_EQ(button()->Caption(), "&Load");
                                        button()->ShowDropDownMenu();
                                    }},
                                   {"its menu", [] { return ShownMenu() != nullptr; },
                                    [] {
                                        PostMessageA(ShownMenu(), WM_KEYDOWN, VK_DOWN, 0);
                                        PostMessageA(ShownMenu(), WM_KEYDOWN, VK_RETURN, 0);
                                    }}}));
    EXPECT_TRUE(guide::OptionsForm->CopyBox->Checked());
    EXPECT_EQ(Dialog.FileName(), Path("House.bmp"));
}

TEST_F(Guide, Step8LeavesOutBackups) {
    guide::TakeSteps(Dialog, 8);
    const auto hasStyles = [&] {
        constexpr LRESULT wanted = LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT;
        return (SendMessageA(List(), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & wanted) == wanted;
    };
    Dialog.SetOnShow([&](TObject*) { Dialog.SetFileListViewStyle(lvsReport); });
    RunDialog(Dialog,
              {{"the list",
                [&] {
                    return IsShown(Dialog) && ItemCount(List()) == 3 && hasStyles() &&
                           Dialog.FileListViewStyle() == lvsReport;
                },
                [&] { EXPECT_THAT(ItemTexts(List()), UnorderedElementsAre("Broken.bmp", "House.bmp", "Lake.bmp")); }},
               Select("Lake.bmp"),
               Await("the drawing", [&] { return ShownName() == "Lake.bmp"; }),
               TakePicture(8),
               Cancel(Dialog)});
}

TEST_F(Guide, Step9BringsBackWhatTheUserHasDone) {
    guide::TakeSteps(Dialog, guide::StepCount);
    EXPECT_TRUE(RunDialog(Dialog, {Await("it is shown", Shown(Dialog)),
                                   Perform("a copy", [] { guide::OptionsForm->CopyBox->SetChecked(true); }),
                                   Choose("House.bmp")}));
    guide::OptionsForm->CopyBox->SetChecked(false);
    SetCurrentDirectoryA(Folder.Path().c_str()); // else the next dialog would begin where the first one has left it
    auto& next = *new TKxOpenDialog(Owner.get());
    guide::TakeSteps(next, guide::StepCount);
    EXPECT_TRUE(guide::OptionsForm->CopyBox->Checked());
    RunDialog(next, {Await("the same folder", FolderIs(next, Folder.Path("Drawings"))),
                     {"its list", [&] { return FindItem(FileListOf(next.DlgHandle()), "Lake.bmp") >= 0; },
                      [&] { SelectItem(FileListOf(next.DlgHandle()), "Lake.bmp"); }},
                     {"the drawing", [&] { return ShowsDrawing(); }, [&] { PagePicture("guide-9", next.DlgHandle()); }},
                     Cancel(next)});
    SetCurrentDirectoryA("C:\\"); // the folder goes with the test
}

// --- The program

class GuideProgram : public testing::TestWithParam<int> {};

TEST_P(GuideProgram, ShowsTheDialogAndEnds) {
    HWND dialog = nullptr;
    const DWORD code =
        RunProgram("../../examples/guide/program/guide_program.exe", IntToStr(GetParam()), [&](DWORD process) {
            HWND shown = dialog ? nullptr : FindWindowA("#32770", "Open drawing");
            DWORD owner = 0;
            if (shown && GetWindowThreadProcessId(shown, &owner) && owner == process && IsWindowVisible(shown)) {
                dialog = shown;
                PostMessageA(shown, WM_COMMAND, IDCANCEL, 0);
            }
        });
    EXPECT_NE(dialog, nullptr);
    EXPECT_EQ(code, 0u);
    TRegistry().DeleteKey(drawingsKey);
    RegDeleteKeyA(HKEY_CURRENT_USER, "Software\\Acme");
}

INSTANTIATE_TEST_SUITE_P(AfterEachStep, GuideProgram, testing::Range(0, guide::StepCount + 1));

} // namespace
} // namespace kx
