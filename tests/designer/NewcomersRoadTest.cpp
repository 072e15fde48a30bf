// SPDX-License-Identifier: MIT
// What somebody does who uses the designer for the first time, by mouse and keyboard.

#include "WindowFixture.h"

#include "examples/shop/MainForm.h"
#include "examples/shop/PreviewForm.h"
#include "kx/design/KxDlgsReg.h"
#include "kx/ide/Palette.h"
#include "kx/opensave/KxOpenDlg.h"
#include "kx/ui/widgets/ExtCtrlsRadioGroup.h"

#include <algorithm>

namespace kx::test {
namespace {

class NewcomersRoad : public TDesignerWindowTest {
protected:
    NewcomersRoad() {
        static const bool once = [] {
            KxDlgsReg::Register();
            return true;
        }();
        static_cast<void>(once);
        Window->ComponentPalette().ReadPages();
    }

    static bool FileDialogShown() { return ActiveDialog() && FileNameEditOf(ActiveDialog()); }
    static void EnterName(const std::string& name) {
        SetWindowTextA(FileNameEditOf(ActiveDialog()), name.c_str());
        PressButton(GetDlgItem(ActiveDialog(), IDOK));
    }
    /// Presses the keys of a command that asks for a file name, and enters one.
    void CommandWithFile(const TAction& keys, const std::string& name) {
        bool entered = false;
        TTestDriver driver({{"the file dialog", FileDialogShown, [&] {
                                 entered = true;
                                 EnterName(name);
                             }}});
        driver.Run([&] {
            keys();
            return Until([&] { return entered && !ActiveDialog(); });
        });
        Settle();
    }
    /// Chooses the page that has the class, and clicks its picture there.
    void ChooseTool(const TClass& cls) {
        TTabControl& tabs = Window->ComponentPalette().Tabs();
        for (size_t i = 0; i < PalettePages().size(); ++i) {
            const auto& classes = PalettePages()[i].Classes;
            if (std::find(classes.begin(), classes.end(), &cls) != classes.end()) {
                RECT r;
                SendMessageA(tabs.Handle(), TCM_GETITEMRECT, i, reinterpret_cast<LPARAM>(&r));
                ClickOn(tabs.ClientToScreen({(r.left + r.right) / 2, (r.top + r.bottom) / 2}));
            }
        }
        const TRect r = Window->ComponentPalette().Buttons().ButtonRect(&cls);
        ClickOn(Window->ComponentPalette().Buttons().ClientToScreen({r.Left + 15, r.Top + 15}));
        ASSERT_EQ(Surface().Tool(), &cls);
    }
    void Enter(const std::string& property, std::string_view text) {
        designer::TInspectorGrid& grid = Window->ObjectInspector().Grid();
        grid.SelectRow(grid.FindRow(property));
        const TRect r = grid.ValueRect(grid.FindRow(property));
        ClickOn(grid.ClientToScreen({r.Left + 20, (r.Top + r.Bottom) / 2}));
        Press('A', {VK_CONTROL});
        TypeText(text);
        Press(VK_RETURN);
    }
    /// A button of the window that is shown, once it is.
    static TStep PressIn(const std::string& what, const std::function<TForm*()>& window, const char* button) {
        return {what, [window] { return window() != nullptr; },
                [window, button] { PressButton(dynamic_cast<TButton&>(*window()->FindComponent(button)).Handle()); }};
    }
    /// What a file holds, with the line breaks of this source, and without the widths of components: those of labels
    /// are the system's fonts'.
    static std::string Content(const std::string& path) {
        std::string text = designer::ReadWholeFile(path);
        std::erase(text, '\r');
        const std::string width = "\n    Width = ";
        for (size_t at = text.find(width); at != std::string::npos; at = text.find(width, at)) {
            text.erase(at, text.find('\n', at + 1) - at);
        }
        return text;
    }
    static std::string Example(const std::string& name) {
        return Content(std::string(KX_SOURCES) + "/examples/shop/" + name);
    }
    std::string Made(const std::string& name) const { return Content(Folder.Path(name)); }

    void MakePreviewForm();
    void MakeMainForm();
    void Customize();
    void Preview();
    void SaveAndWriteClasses();
};

/// The form that will be docked: a picture, and two labels below it.
void NewcomersRoad::MakePreviewForm() {
    CommandWithFile(
        [] {
            PressKey('F', {VK_MENU});
            PressKey('B');
        },
        Folder.Path("PreviewForm.dfm"));
    ASSERT_NE(Window->Document(), nullptr);
    ChooseTool(TImage::StaticClass());
    DragFrom(OnForm(8, 8), 160, 120);
    ChooseTool(TLabel::StaticClass());
    ClickOn(OnForm(8, 144));
    Enter("Caption", "no drawing");
    ChooseTool(TLabel::StaticClass());
    ClickOn(OnForm(8, 168));
    Enter("Caption", "0 bytes");
    EXPECT_EQ(The("Image1").BoundsRect(), (TRect{8, 8, 168, 128}));
    EXPECT_EQ(The("Label1").Caption(), "no drawing");
    Screenshot("road-1-preview-form", Window->Handle());
}

/// The main form with a button, its handler, and the dialog
void NewcomersRoad::MakeMainForm() {
    CommandWithFile([] { PressKey('N', {VK_CONTROL}); }, Folder.Path("MainForm.dfm"));
    ChooseTool(TButton::StaticClass());
    ClickOn(OnForm(16, 16));
    Enter("Caption", "open");
    ChooseTool(TKxOpenDialog::StaticClass());
    ClickOn(OnForm(160, 80));
    ASSERT_TRUE(Has("KxOpenDialog1"));
    EXPECT_EQ(PrimaryName(), "KxOpenDialog1");
    DoubleClickAt(At("Button1"));
    Settle();
    EXPECT_THAT(Window->Status(), HasSubstr("Button1Click"));
    EXPECT_THAT(Text(), HasSubstr("OnClick = Button1Click"));
    Screenshot("road-2-main-form", Window->Handle());
}

/// A double click on the dialog's icon
void NewcomersRoad::Customize() {
    const TPoint icon = At("KxOpenDialog1");
    TTestDriver customize({{"the dialog designer", [] { return FormOfClass("TDlgDsgnForm") != nullptr; },
                            [] {
                                TForm& dialogDesigner = *FormOfClass("TDlgDsgnForm");
                                auto& right = dynamic_cast<TComboBox&>(*dialogDesigner.FindComponent("cbRight"));
                                const int index = right.Items().IndexOf("PreviewForm");
                                EXPECT_GE(index, 0);
                                ChooseInCombo(right.Handle(), index);
                                dynamic_cast<TEdit&>(*dialogDesigner.FindComponent("eTitle")).SetText("Open drawing");
                                dynamic_cast<TRadioGroup&>(*dialogDesigner.FindComponent("rg1")).SetItemIndex(1);
                                Screenshot("road-3-dialog-designer", dialogDesigner.Handle());
                                PressButton(dynamic_cast<TButton&>(*dialogDesigner.FindComponent("Button2")).Handle());
                            }}});
    customize.Run([&] {
        DoubleClickAt(icon);
        Settle();
        return true;
    });
    auto& dialog = The<TKxOpenDialog>("KxOpenDialog1");
    EXPECT_EQ(dialog.CustDlgParams().RightFormName(), "PreviewForm");
    EXPECT_EQ(dialog.CustDlgParams().Position(), dpScrCenter);
    EXPECT_EQ(dialog.Title(), "Open drawing");
    EXPECT_THAT(Text(), HasSubstr("CustDlgParams.RightFormName = 'PreviewForm'"));
}

/// By the menu of the icon: the system's dialog with a copy of the form
void NewcomersRoad::Preview() {
    bool isOver = false;
    TTestDriver preview({{"the menu", [] { return ShownMenu() != nullptr; },
                          [] {
                              PressKey(VK_DOWN);
                              PressKey(VK_DOWN);
                              PressKey(VK_RETURN);
                          }},
                         PressIn(
                             "the preview's window", [] { return FormOfClass("TKxPreviewDummyFrm"); }, "Button1"),
                         {"the dialog", FileDialogShown, [&] {
                              auto& dialog = The<TKxOpenDialog>("KxOpenDialog1");
                              const TForm* const copy = dialog.CustDlgParams().RightForm();
                              ASSERT_NE(copy, nullptr);
                              EXPECT_TRUE(IsChild(dialog.DlgHandle(), copy->WindowHandle()));
                              EXPECT_EQ(TextOf(dialog.DlgHandle()), "Open drawing");
                              EXPECT_EQ(dynamic_cast<TLabel&>(*copy->FindComponent("Label1")).Caption(), "no drawing");
                              Screenshot("road-4-preview", dialog.DlgHandle());
                              isOver = true;
                              PressButton(GetDlgItem(ActiveDialog(), IDCANCEL));
                          }}});
    preview.Run([&] {
        ClickAt(At("KxOpenDialog1"), mbRight);
        return Until([&] { return isOver && !ActiveDialog() && !FormOfClass("TKxPreviewDummyFrm"); });
    });
    Settle();
    EXPECT_THAT(Text(), HasSubstr("CustDlgParams.RightFormName = 'PreviewForm'")) << "a preview changes nothing";
}

void NewcomersRoad::SaveAndWriteClasses() {
    Press('S', {VK_CONTROL, VK_SHIFT});
    EXPECT_FALSE(Window->Project()->IsModified());
    for (int i = 0; i < Window->Project()->ModuleCount(); ++i) {
        Window->Project()->Module(i).Editor(0).Show();
        Window->Command("ViewClass");
        PressButton(dynamic_cast<TButton&>(*Window->FindComponent("WriteClassButton")).Handle());
        EXPECT_FALSE(Window->Project()->Module(i).IsModified());
    }
    EXPECT_THAT(Window->TextView().Text(), HasSubstr("(TKxOpenDialog, KxOpenDialog1)"));
    Screenshot("road-5-class", Window->Handle());
}

TEST_F(NewcomersRoad, FromAnEmptyFolderToTheFilesOfAProgram) {
    CommandWithFile(
        [] {
            PressKey('F', {VK_MENU});
            PressKey('P');
        },
        Folder.Path("Shop.kxproj"));
    ASSERT_NE(Window->Project(), nullptr);
    EXPECT_TRUE(Folder.Contains("Shop.kxproj"));
    ASSERT_NO_FATAL_FAILURE(MakePreviewForm());
    ASSERT_NO_FATAL_FAILURE(MakeMainForm());
    Customize();
    Preview();
    SaveAndWriteClasses();
    // They are those of the example, which is a program.
    for (const char* name :
         {"Shop.kxproj", "PreviewForm.dfm", "PreviewForm.h", "PreviewForm.cpp", "MainForm.dfm", "MainForm.h"}) {
        EXPECT_EQ(Made(name), Example(name)) << name;
    }
    // What its developer has written himself is the body of the handler.
    std::string source = Example("MainForm.cpp");
    const size_t handler = source.find("void TMainForm::Button1Click");
    ASSERT_NE(handler, std::string::npos);
    source.replace(handler, std::string::npos, "void TMainForm::Button1Click(TObject* sender) {\n}\n");
    EXPECT_EQ(Made("MainForm.cpp"), source);
}

TEST_F(NewcomersRoad, TheProgramShowsWhatWasDrawn) {
    Window.reset();
    const std::unique_ptr<TMainForm, TFreeDeleter> mainForm(NewForm<TMainForm>(&Application()));
    const std::unique_ptr<TPreviewForm, TFreeDeleter> previewForm(NewForm<TPreviewForm>(&Application()));
    mainForm->Show();
    auto& button = dynamic_cast<TButton&>(*mainForm->FindComponent("Button1"));
    EXPECT_EQ(button.Caption(), "open");
    const auto& dialog = dynamic_cast<TKxOpenDialog&>(*mainForm->FindComponent("KxOpenDialog1"));
    bool shown = false;
    TTestDriver driver({{"the dialog", FileDialogShown, [&] {
                             shown = true;
                             EXPECT_EQ(TextOf(dialog.DlgHandle()), "Open drawing");
                             EXPECT_TRUE(IsChild(dialog.DlgHandle(), previewForm->WindowHandle()));
                             EXPECT_TRUE(IsWindowVisible(previewForm->WindowHandle()));
                             const TRect list = ScreenRectOf(FileListOf(dialog.DlgHandle()));
                             EXPECT_GE(ScreenRectOf(previewForm->WindowHandle()).Left, list.Right) << "on the right";
                             EXPECT_EQ(dynamic_cast<TLabel&>(*previewForm->FindComponent("Label1")).Caption(),
                                       "no drawing");
                             Screenshot("road-6-program", dialog.DlgHandle());
                             PressButton(GetDlgItem(ActiveDialog(), IDCANCEL));
                         }}});
    driver.Run([&] {
        Click(button.Handle());
        return Until([&] { return shown && !ActiveDialog(); });
    });
}

} // namespace
} // namespace kx::test
