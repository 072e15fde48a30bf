// What somebody does who uses the designer for the first time, by mouse and keyboard.

#include "WindowFixture.h"

#include "kx/design/KxDlgsReg.h"
#include "kx/ide/Palette.h"
#include "kx/opensave/KxOpenDlg.h"

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
    TForm* FormOfClass(const std::string& className) {
        for (int i = 0; i < Screen().FormCount(); ++i) {
            auto* const form = dynamic_cast<TForm*>(Screen().Forms(i));
            if (form && form->Visible() && form->ClassName() == className) {
                return form;
            }
        }
        return nullptr;
    }
};

TEST_F(NewcomersRoad, FromAnEmptyFolderToADialogWithAPreview) {
    CommandWithFile(
        [] {
            PressKey('F', {VK_MENU});
            PressKey('P');
        },
        Folder.Path("Shop.kxproj"));
    ASSERT_NE(Window->Project(), nullptr);
    EXPECT_TRUE(Folder.Contains("Shop.kxproj"));

    // The form that will be docked: a picture, and two labels below it.
    CommandWithFile([] { PressKey('N', {VK_CONTROL}); }, Folder.Path("PreviewForm.dfm"));
    ASSERT_NE(Window->Document(), nullptr);
    ChooseTool(TImage::StaticClass());
    DragFrom(OnForm(8, 8), 160, 120);
    ChooseTool(TLabel::StaticClass());
    ClickOn(OnForm(8, 144));
    Enter("Caption", "no drawing");
    ChooseTool(TLabel::StaticClass());
    ClickOn(OnForm(8, 168));
    EXPECT_EQ(The("Image1").BoundsRect(), (TRect{8, 8, 168, 128}));
    EXPECT_EQ(The("Label1").Caption(), "no drawing");
    ClickOn(OnForm(350, 280));
    Enter("BorderStyle", "bsNone");
    Screenshot("road-1-preview-form", Window->Handle());

    // The main form with the dialog
    CommandWithFile([] { PressKey('N', {VK_CONTROL}); }, Folder.Path("MainForm.dfm"));
    ChooseTool(TButton::StaticClass());
    ClickOn(OnForm(16, 16));
    Enter("Caption", "open");
    ChooseTool(TKxOpenDialog::StaticClass());
    ClickOn(OnForm(160, 80));
    ASSERT_TRUE(Has("KxOpenDialog1"));
    EXPECT_EQ(PrimaryName(), "KxOpenDialog1");
    Screenshot("road-2-main-form", Window->Handle());

    // Customize...: a double click on its icon
    const TPoint icon = At("KxOpenDialog1");
    TTestDriver customize({{"the dialog designer", [this] { return FormOfClass("TDlgDsgnForm") != nullptr; },
                            [this] {
                                TForm& dialogDesigner = *FormOfClass("TDlgDsgnForm");
                                auto& right = dynamic_cast<TComboBox&>(*dialogDesigner.FindComponent("cbRight"));
                                const int index = right.Items().IndexOf("PreviewForm");
                                EXPECT_GE(index, 0);
                                ChooseInCombo(right.Handle(), index);
                                Screenshot("road-3-dialog-designer", dialogDesigner.Handle());
                                dynamic_cast<TEdit&>(*dialogDesigner.FindComponent("eTitle")).SetText("Open drawing");
                                PressButton(dynamic_cast<TButton&>(*dialogDesigner.FindComponent("Button2")).Handle());
                            }}});
    customize.Run([&] {
        DoubleClickAt(icon);
        Settle();
        return true;
    });
    auto& dialog = The<TKxOpenDialog>("KxOpenDialog1");
    EXPECT_EQ(dialog.CustDlgParams().RightFormName(), "PreviewForm");
    EXPECT_EQ(dialog.Title(), "Open drawing");
    EXPECT_THAT(Text(), HasSubstr("CustDlgParams.RightFormName = 'PreviewForm'"));

    // Save all
    Press('S', {VK_CONTROL, VK_SHIFT});
    EXPECT_THAT(designer::ReadWholeFile(Folder.Path("MainForm.dfm")), HasSubstr("Title = 'Open drawing'"));
    EXPECT_THAT(designer::ReadWholeFile(Folder.Path("PreviewForm.dfm")), HasSubstr("object Image1: TImage"));
    EXPECT_THAT(designer::ReadWholeFile(Folder.Path("Shop.kxproj")), HasSubstr("'MainForm.dfm'"));
    Window->Command("ViewClass");
    EXPECT_THAT(Window->TextView().Text(), HasSubstr("TKxOpenDialog* KxOpenDialog1"));
    Screenshot("road-4-class", Window->Handle());
}

} // namespace
} // namespace kx::test
