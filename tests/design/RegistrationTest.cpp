// SPDX-License-Identifier: MIT
// What a form designer is told of the dialogs.

#include "DesignFixture.h"

#include "kx/colorprint/KxColorDlg.h"
#include "kx/colorprint/KxPrintDlg.h"
#include "kx/design/KxDsgnPreviewDummy.h"
#include "kx/folder/KxFolderDlg.h"
#include "kx/ide/Palette.h"
#include "kx/modeless/KxModelessDlg.h"
#include "kx/opensave/KxOpenDlgEx.h"
#include "kx/opensave/KxOpenLite.h"
#include "kx/opensave/KxSaveDlg.h"

namespace kx::test {
namespace {

class DialogRegistration : public TDesignTest {};

TEST_F(DialogRegistration, PutsNineComponentsOnThePageDialogsInThisOrder) {
    EXPECT_THAT(PaletteClasses("Dialogs"), ElementsAre("TKxOpenDialog", "TKxOpenLiteDialog", "TKxSaveLiteDialog",
                                                       "TKxOpenDialogEx", "TKxSaveDialog", "TKxPrintDialog",
                                                       "TKxFolderDialog", "TKxColorDialog", "TKxModelessDialog"));
    EXPECT_EQ(GetClass("TKxBitBtn"), nullptr) << "the drop-down button is the open dialog's own";
}

TEST_F(DialogRegistration, GivesEachComponentAPaletteBitmapOf24By24) {
    for (const std::string& name : PaletteClasses("Dialogs")) {
        const unique_hbitmap bitmap(static_cast<HBITMAP>(
            LoadImageA(GetModuleHandleA(nullptr), UpperCase(name).c_str(), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
        DIBSECTION dib{};
        ASSERT_NE(GetObjectA(bitmap.get(), sizeof dib, &dib), 0) << name;
        EXPECT_EQ(dib.dsBm.bmWidth, 24) << name;
        EXPECT_EQ(dib.dsBm.bmHeight, 24) << name;
        EXPECT_EQ(dib.dsBm.bmBitsPixel, 4) << name;
    }
}

TEST_F(DialogRegistration, GivesAllDialogsButTheModelessRunnerTwoVerbs) {
    for (const TClass* cls :
         {&TKxOpenDialog::StaticClass(), &TKxSaveDialog::StaticClass(), &TKxOpenLiteDialog::StaticClass(),
          &TKxSaveLiteDialog::StaticClass(), &TKxPrintDialog::StaticClass(), &TKxFolderDialog::StaticClass(),
          &TKxColorDialog::StaticClass(), &TKxOpenDialogEx::StaticClass()}) {
        const auto editor = GetComponentEditor(*Add(*cls), Designer);
        EXPECT_EQ(editor->GetVerbCount(), 2) << cls->Name();
        EXPECT_EQ(editor->GetVerb(0), "Customize...");
        EXPECT_EQ(editor->GetVerb(1), "Preview...");
        EXPECT_EQ(editor->GetVerb(2), "");
    }
    EXPECT_EQ(GetComponentEditor(*Add<TKxModelessDialog>(), Designer)->GetVerbCount(), 0);
}

TEST_F(DialogRegistration, TheParametersHaveADialogAndTheirPropertiesBelow) {
    const auto editor = EditorOf(*Add<TKxColorDialog>(), "CustDlgParams");
    ASSERT_NE(dynamic_cast<TKxDlgParamsProperty*>(editor.get()), nullptr);
    const TPropertyAttributes inherited = TClassProperty(Designer, {{&Designer.Form(), nullptr}}).GetAttributes();
    EXPECT_EQ(editor->GetAttributes(), (inherited + TPropertyAttributes{paDialog, paAutoUpdate}));
    EXPECT_TRUE(editor->GetAttributes().Contains(paSubProperties));
}

TEST_F(DialogRegistration, ThePlacesHaveADialogAndNothingBelow) {
    const auto editor = EditorOf(Add<TKxOpenDialog>()->PlacesBar(), "Places");
    ASSERT_NE(dynamic_cast<TKxPlacesProperty*>(editor.get()), nullptr);
    EXPECT_EQ(editor->GetAttributes(), (TPropertyAttributes{paDialog, paAutoUpdate}));
    EXPECT_EQ(editor->GetValue(), "(TKxPlaces)");
}

TEST_F(DialogRegistration, NamesOfDockedFormsAreThoseOfTheProjectWithoutTheDesignedForm) {
    Host.AddModule("Second");
    Host.AddModule("Text", mdOther);
    Host.AddModule("");
    Host.AddModule("First");
    TKxCustDlgParams& params = Add<TKxOpenDialog>()->CustDlgParams();
    for (const char* name : {"TopFormName", "LeftFormName", "BottomFormName", "RightFormName", "CustFormName"}) {
        const auto editor = EditorOf(params, name);
        ASSERT_NE(dynamic_cast<TKxPrjFormsListProperty2*>(editor.get()), nullptr) << name;
        EXPECT_EQ(editor->GetAttributes(), TPropertyAttributes{paValueList});
        EXPECT_THAT(ValuesOf(*editor), ElementsAre("Second", "First")) << name;
    }
    const auto form = EditorOf(params.PosParams(), "FormName");
    EXPECT_EQ(dynamic_cast<TKxPrjFormsListProperty2*>(form.get()), nullptr);
    ASSERT_NE(dynamic_cast<TKxPrjFormsListProperty*>(form.get()), nullptr);
    EXPECT_EQ(form->GetAttributes(), TPropertyAttributes{paValueList});
    EXPECT_THAT(ValuesOf(*form), ElementsAre("Form1", "Second", "First"))
        << "a dialog may be centred over its own form";
}

TEST_F(DialogRegistration, ThereAreNoFormsWithoutAProjectOrAHost) {
    const auto form = EditorOf(Add<TKxOpenDialog>()->CustDlgParams().PosParams(), "FormName");
    Host.HasProject = false;
    EXPECT_THAT(ValuesOf(*form), IsEmpty());
    SetModuleServices(nullptr);
    EXPECT_THAT(ValuesOf(*form), IsEmpty());
    EXPECT_EQ(GetCurrentProject(), nullptr);
    EXPECT_EQ(GetActiveProject(), nullptr);
}

TEST_F(DialogRegistration, TheInspectorShowsNoOptionsExForAnyOpenOrSaveDialog) {
    for (const TClass* cls :
         {&TKxOpenDialog::StaticClass(), &TKxSaveDialog::StaticClass(), &TKxOpenDialogEx::StaticClass(),
          &TKxOpenLiteDialog::StaticClass(), &TKxSaveLiteDialog::StaticClass()}) {
        TComponent& dialog = *Add(*cls);
        EXPECT_EQ(EditorOf(dialog, "OptionsEx"), nullptr) << cls->Name();
        EXPECT_NE(EditorOf(dialog, "Options"), nullptr) << cls->Name();
    }
    EXPECT_NE(EditorOf(*Add<TOpenDialog>(), "OptionsEx"), nullptr) << "the system's own dialog keeps it";
    EXPECT_NE(EditorOf(*Add<TKxFolderDialog>(), "OptionsEx"), nullptr) << "the folder dialog's is another one";
}

TEST_F(DialogRegistration, SeveralDialogsShowNoOptionsExEither) {
    auto* const system = Add<TOpenDialog>();
    auto* const ours = Add<TKxOpenDialog>();
    for (const TDesignSelection& both : {TDesignSelection{system, ours}, TDesignSelection{ours, system}}) {
        std::vector<std::string> names;
        for (const TPropertyEditorPtr& editor : GetPropertyEditors(Designer, both)) {
            names.push_back(editor->GetName());
        }
        EXPECT_THAT(names, testing::Not(testing::Contains("OptionsEx")));
        EXPECT_THAT(names, testing::Contains("Options"));
    }
}

TEST_F(DialogRegistration, TheDialogsHaveNoEditorForButtonsOfToolBars) {
    auto* const dialog = Add<TKxOpenDialog>();
    for (const TPropertyEditorPtr& editor : GetPropertyEditors(Designer, {&dialog->ToolBar()})) {
        EXPECT_EQ(dynamic_cast<TKxTBButtonsProperty*>(editor.get()), nullptr) << editor->GetName();
    }
    EXPECT_EQ(dynamic_cast<TKxTBButtonsProperty*>(EditorOf(*dialog, "ToolBar").get()), nullptr);
}

TEST_F(DialogRegistration, APackageThatRegistersTwiceChangesNothing) {
    const std::vector<std::string> before = PaletteClasses("Dialogs");
    KxDlgsReg::Register();
    EXPECT_EQ(PaletteClasses("Dialogs"), before);
    EXPECT_EQ(GetComponentEditor(*Add<TKxOpenDialog>(), Designer)->GetVerbCount(), 2);
    EXPECT_EQ(EditorOf(*Add<TKxOpenDialog>(), "OptionsEx"), nullptr);
}

TEST_F(DialogRegistration, OnlyOpenAndSaveDialogsHaveAPlacesBar) {
    EXPECT_TRUE(HasPlacesBar(*Add<TKxOpenDialog>()));
    EXPECT_TRUE(HasPlacesBar(*Add<TKxSaveDialog>()));
    EXPECT_TRUE(HasPlacesBar(*Add<TKxOpenDialogEx>()));
    EXPECT_FALSE(HasPlacesBar(*Add<TKxOpenLiteDialog>()));
    EXPECT_FALSE(HasPlacesBar(*Add<TKxFolderDialog>()));
    EXPECT_FALSE(HasPlacesBar(Designer.Form()));
}

} // namespace
} // namespace kx::test
