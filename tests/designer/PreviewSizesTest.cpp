// SPDX-License-Identifier: MIT
// Previews of dialogs that give the designed forms the sizes which docking gave their copies.

#include "WindowFixture.h"

#include "kx/design/KxDlgsReg.h"
#include "kx/design/KxServices.h"
#include "kx/frame/KxCustDlgParams.h"
#include "kx/opensave/KxOpenDlg.h"

namespace kx::test {
namespace {

constexpr const char* DialogForm = "object OrderForm: TOrderForm\n"
                                   "  Left = 300\n"
                                   "  Top = 200\n"
                                   "  ClientHeight = 160\n"
                                   "  ClientWidth = 240\n"
                                   "  object Dialog: TKxOpenDialog\n"
                                   "    Left = 80\n"
                                   "    Top = 40\n"
                                   "  end\n"
                                   "end\n";
constexpr const char* SideForm = "object SideForm: TSideForm\n"
                                 "  Left = 0\n"
                                 "  Top = 0\n"
                                 "  ClientHeight = 90\n"
                                 "  ClientWidth = 140\n"
                                 "  object Ok: TButton\n"
                                 "    Left = 8\n"
                                 "    Top = 8\n"
                                 "    Width = 75\n"
                                 "    Height = 25\n"
                                 "    TabOrder = 0\n"
                                 "  end\n"
                                 "end\n";

class PreviewSizes : public TDesignerWindowTest {
protected:
    PreviewSizes() {
        static const bool once = [] {
            KxDlgsReg::Register();
            return true;
        }();
        static_cast<void>(once);
        designer::WriteWholeFile(Path, DialogForm);
        Folder.AddFile("SideForm.dfm", SideForm);
        EXPECT_TRUE(Window->OpenPath(Folder.Path()));
        Main().Open();
        Side().Open();
    }

    designer::TDocument& Main() const { return Window->Project()->Module(0); }
    designer::TDocument& Side() const { return Window->Project()->Module(1); }
    static std::string TextOfForm(const designer::TDocument& document) {
        return designer::FormText(document.Designer().State(), "\n");
    }
    static TKxOpenDialog& DialogOf(const designer::TDocument& document) {
        return dynamic_cast<TKxOpenDialog&>(*document.Designer().Form().FindComponent("Dialog"));
    }
    std::string FormTab(int index) const {
        return dynamic_cast<TTabControl&>(*Window->FindComponent("FormTabs")).Tabs()[index];
    }
    static void Press(const char* button) {
        TForm& window = *FormOfClass("TDlgDsgnForm");
        PressButton(dynamic_cast<TButton&>(*window.FindComponent(button)).Handle());
    }
    /// Previews a dialog that is no part of a form, with the form at its bottom.
    static void PreviewBelow(const std::string& formName, bool resize) {
        TKxOpenDialog dialog(nullptr);
        RunDialog(
            [&] {
                KxPreviewDialog(dialog, {}, {}, {}, formName, resize);
                return true;
            },
            {Await("the dialog", Shown(dialog)), Cancel(dialog)});
    }
};

TEST_F(PreviewSizes, AFormThatIsNotShownIsModifiedAndComesBackByUndo) {
    Main().Editor(0).Show();
    Settle();
    const TPoint icon = At("Dialog");
    TTestDriver driver({{"the dialog designer", [] { return FormOfClass("TDlgDsgnForm") != nullptr; },
                         [] {
                             TForm& window = *FormOfClass("TDlgDsgnForm");
                             auto& left = dynamic_cast<TComboBox&>(*window.FindComponent("cbLeft"));
                             EXPECT_TRUE(ChooseInCombo(left.Handle(), left.Items().IndexOf("SideForm")));
                             Press("Button3");
                         }},
                        Await("the preview", [this] { return Shown(DialogOf(Main()))(); }),
                        {"the form in it", [this] { return DialogOf(Main()).CustDlgParams().LeftForm() != nullptr; },
                         [] { PressButton(GetDlgItem(ActiveDialog(), IDCANCEL)); }},
                        {"the dialog designer again", [] { return FormOfClass("TDlgDsgnForm") != nullptr; },
                         [] { Press("Button1"); }}});
    driver.Run([&] {
        DoubleClickAt(icon);
        Settle();
        return true;
    });
    EXPECT_EQ(TextOfForm(Main()), DialogForm) << "the preview changes nothing of the dialog's form";
    EXPECT_GT(Side().Designer().Form().ClientHeight(), 200) << "as high as the dialog";
    EXPECT_THAT(TextOfForm(Side()), testing::Not(HasSubstr("ClientHeight = 90\n")));
    EXPECT_THAT(TextOfForm(Side()), HasSubstr("ClientWidth = 140\n"));
    EXPECT_TRUE(Side().IsModified());
    EXPECT_EQ(FormTab(1), "SideForm.dfm*");
    EXPECT_EQ(Side().Designer().Steps().UndoText(), "Size");
    Side().Designer().Undo();
    EXPECT_EQ(TextOfForm(Side()), SideForm);
    EXPECT_FALSE(Side().IsModified());
    EXPECT_EQ(FormTab(1), "SideForm.dfm");
}

TEST_F(PreviewSizes, TheHandlesOfTheFormThatIsShownFollow) {
    Side().Editor(0).Show();
    Designer().SelectOne(Designer().Form());
    Settle();
    PreviewBelow("SideForm", true);
    const int width = Designer().Form().Width();
    ASSERT_GT(width, 300) << "as wide as the dialog";
    EXPECT_THAT(Window->Caption(), HasSubstr("SideForm.dfm*"));
    // The handle in the middle of the lower edge is where that edge is now.
    const TRect r = Designer().Form().BoundsRect();
    const int height = Designer().Form().ClientHeight();
    DragFrom(Surface().ClientToScreen({(r.Left + r.Right) / 2, r.Bottom + 4}), 0, 40);
    EXPECT_NEAR(Designer().Form().ClientHeight(), height + 40, 8);
    EXPECT_EQ(Designer().Form().Width(), width);
    EXPECT_EQ(Designer().Steps().Position(), 2U);
    Designer().Undo();
    Designer().Undo();
    EXPECT_EQ(Text(), SideForm);
}

TEST_F(PreviewSizes, WithoutTheWishAFormStaysAsItIs) {
    PreviewBelow("SideForm", false);
    EXPECT_EQ(TextOfForm(Side()), SideForm);
    EXPECT_FALSE(Side().Designer().CanUndo());
}

} // namespace
} // namespace kx::test
