// SPDX-License-Identifier: MIT
// Parameters of a dialog: forms and names, copies, values of new ones.

#include "FrameDialog.h"

#include "tests/support/FormFiles.h"
#include "tests/support/TestDriver.h"

namespace kx::test {
namespace {

TIcon& FillIcon(TIcon& icon) {
    icon.SetHandle(CopyIcon(LoadIconA(nullptr, reinterpret_cast<LPCSTR>(IDI_WARNING))));
    return icon;
}

// --- TKxPosParams

TEST(PosParams, SettingTheNameForgetsTheForm) {
    const auto form = MakeForm<TLeftForm>();
    TKxPosParams params;
    params.SetForm(form.get());
    params.SetFormName("TopForm");
    EXPECT_EQ(params.Form(), nullptr);
    EXPECT_EQ(params.FormName(), "TopForm");
}

TEST(PosParams, SettingTheFormKeepsTheName) {
    const auto form = MakeForm<TLeftForm>();
    TKxPosParams params;
    params.SetFormName("TopForm");
    params.SetForm(form.get());
    EXPECT_EQ(params.Form(), form.get());
    EXPECT_EQ(params.FormName(), "TopForm");
}

TEST(PosParams, AssignCopiesAllButTheName) {
    const auto form = MakeForm<TLeftForm>();
    TKxPosParams source;
    source.SetFormName("TopForm");
    source.SetForm(form.get());
    source.SetShiftX(11);
    source.SetShiftY(22);
    source.SetFitToScreen(true);
    TKxPosParams target;
    target.SetFormName("RightForm");
    target.Assign(&source);
    EXPECT_EQ(target.FormName(), "RightForm");
    EXPECT_EQ(target.Form(), form.get());
    EXPECT_EQ(target.ShiftX(), 11);
    EXPECT_EQ(target.ShiftY(), 22);
    EXPECT_TRUE(target.FitToScreen());
}

TEST(PosParams, AssignOfAnythingElseIsAnError) {
    TKxPosParams target;
    const TKxDlgCaptions captions;
    EXPECT_THROW(target.Assign(&captions), EConvertError);
    EXPECT_THROW(target.Assign(nullptr), EConvertError);
}

TEST(PosParams, AFreedFormIsForgotten) {
    auto form = MakeForm<TLeftForm>();
    TKxPosParams params;
    params.SetForm(form.get());
    form.reset();
    EXPECT_EQ(params.Form(), nullptr);
}

// --- TKxCustDlgParams

TEST(CustDlgParams, ANewOneHasNoFormsAndSupportsAllSides) {
    TKxCustDlgParams params;
    for (const TForm* form :
         {params.LeftForm(), params.TopForm(), params.RightForm(), params.BottomForm(), params.CustomForm()}) {
        EXPECT_EQ(form, nullptr);
    }
    EXPECT_TRUE(params.CanLeft() && params.CanTop() && params.CanRight() && params.CanBottom());
    EXPECT_EQ(params.Handle(), nullptr);
    EXPECT_EQ(params.IncX(), 0);
    EXPECT_EQ(params.IncY(), 0);
    EXPECT_TRUE(params.Icon().Empty());
}

TEST(CustDlgParams, AnEmptyIconIsNotStored) {
    TKxCustDlgParams params;
    EXPECT_FALSE(GetPropInfo(params, "Icon").IsStored(params));
    FillIcon(params.Icon());
    EXPECT_TRUE(GetPropInfo(params, "Icon").IsStored(params));
}

/// One of the five forms: its accessors and those of its name.
struct TFormProperty {
    const char* Name;
    TForm* (TKxCustDlgParams::*Form)() const;
    void (TKxCustDlgParams::*SetForm)(TForm*);
    const std::string& (TKxCustDlgParams::*FormName)() const;
    void (TKxCustDlgParams::*SetFormName)(const std::string&);
    void (TKxCustDlgParams::*SetSupported)(bool); ///< Null for the custom form, which every dialog supports.
    const char* Side;
};
using P = TKxCustDlgParams;
const TFormProperty FormProperties[] = {
    {"Left", &P::LeftForm, &P::SetLeftForm, &P::LeftFormName, &P::SetLeftFormName, &P::SetCanLeft, "left"},
    {"Top", &P::TopForm, &P::SetTopForm, &P::TopFormName, &P::SetTopFormName, &P::SetCanTop, "top"},
    {"Right", &P::RightForm, &P::SetRightForm, &P::RightFormName, &P::SetRightFormName, &P::SetCanRight, "right"},
    {"Bottom", &P::BottomForm, &P::SetBottomForm, &P::BottomFormName, &P::SetBottomFormName, &P::SetCanBottom,
     "bottom"},
    {"Custom", &P::CustomForm, &P::SetCustomForm, &P::CustFormName, &P::SetCustFormName, nullptr, ""}};

class FormProperty : public testing::TestWithParam<TFormProperty> {
protected:
    TForm* Form() const { return (FParams.*GetParam().Form)(); }
    void SetForm(TForm* form) { (FParams.*GetParam().SetForm)(form); }
    const std::string& FormName() const { return (FParams.*GetParam().FormName)(); }
    void SetFormName(const std::string& name) { (FParams.*GetParam().SetFormName)(name); }

    TFormPtr FForm = MakeForm<TCentreForm>();
    TKxCustDlgParams FParams;
};
INSTANTIATE_TEST_SUITE_P(Forms, FormProperty, testing::ValuesIn(FormProperties),
                         [](const auto& tested) { return std::string(tested.param.Name); });

TEST_P(FormProperty, GivingTheFormClearsItsName) {
    SetFormName("CentreForm");
    SetForm(FForm.get());
    EXPECT_EQ(Form(), FForm.get());
    EXPECT_EQ(FormName(), "");
}

TEST_P(FormProperty, GivingTheNameForgetsTheForm) {
    SetForm(FForm.get());
    SetFormName("CentreForm");
    EXPECT_EQ(Form(), nullptr);
    EXPECT_EQ(FormName(), "CentreForm");
}

TEST_P(FormProperty, AFreedFormIsForgotten) {
    SetForm(FForm.get());
    FForm.reset();
    EXPECT_EQ(Form(), nullptr);
}

TEST_P(FormProperty, TheFormMayOutliveTheParameters) {
    {
        TKxCustDlgParams params;
        (params.*GetParam().SetForm)(FForm.get());
    }
    EXPECT_EQ(FForm->ClassName(), "TCentreForm");
    FForm.reset();
}

TEST_P(FormProperty, AFormMaySitInSeveralPlaces) {
    TKxCustDlgParams other;
    SetForm(FForm.get());
    (other.*GetParam().SetForm)(FForm.get());
    FParams.PosParams().SetForm(FForm.get());
    SetForm(nullptr);
    FForm.reset();
    EXPECT_EQ((other.*GetParam().Form)(), nullptr);
    EXPECT_EQ(FParams.PosParams().Form(), nullptr);
}

TEST_P(FormProperty, AnUnsupportedSideIsSilentlyIgnoredAtRunTime) {
    if (!GetParam().SetSupported) {
        SetFormName("CentreForm");
        EXPECT_EQ(FormName(), "CentreForm"); // there is no flag for it
        return;
    }
    TFrameDialog dialog;
    FParams.SetDlg(&dialog);
    (FParams.*GetParam().SetSupported)(false);
    SetFormName("CentreForm");
    EXPECT_EQ(FormName(), "");
}

TEST_P(FormProperty, AnUnsupportedSideIsReportedInAFormDesigner) {
    if (!GetParam().SetSupported) {
        SetFormName("CentreForm");
        EXPECT_EQ(FormName(), "CentreForm");
        return;
    }
    TFrameDialog dialog;
    dialog.SetDesigning(true);
    FParams.SetDlg(&dialog);
    (FParams.*GetParam().SetSupported)(false);
    // Neither an empty name nor what designers show for such a side brings up the box.
    SetFormName("");
    SetFormName("Not supported");
    std::string text;
    RunDialog(
        [&] {
            SetFormName("CentreForm");
            return true;
        },
        {AnswerBox(IDOK, [&](const std::string& shown) { text = shown; })});
    std::string expected =
        "KXQDialogs\rCould not insert " + std::string(GetParam().Side) + " panel: not implemented in this version";
    EXPECT_EQ(text, expected);
    EXPECT_EQ(FormName(), "");
    EXPECT_EQ(Form(), nullptr);
}

TEST_P(FormProperty, AnUnsupportedSideKeepsWhatItHad) {
    if (!GetParam().SetSupported) {
        return;
    }
    SetFormName("CentreForm");
    (FParams.*GetParam().SetSupported)(false);
    SetFormName("LeftForm");
    EXPECT_EQ(FormName(), "CentreForm");
}

TEST(CustDlgParams, AssignCopiesFormsNamesPlacementAndTheLeftSidesSupportAlone) {
    const auto left = MakeForm<TLeftForm>();
    const auto centre = MakeForm<TCentreForm>();
    TFrameDialog sourceDialog;
    TKxCustDlgParams source;
    source.SetDlg(&sourceDialog);
    source.SetTopFormName("TopForm");
    source.SetRightFormName("RightForm");
    source.SetBottomFormName("BottomForm");
    source.SetLeftForm(left.get());
    source.SetCustomForm(centre.get());
    source.SetPosition(dpOwnerCenter);
    source.PosParams().SetShiftX(5);
    source.PosParams().SetFormName("LeftForm");
    source.SetCanLeft(false);
    source.SetCanTop(false);
    source.SetCanRight(false);
    source.SetCanBottom(false);
    FillIcon(source.Icon());

    TKxCustDlgParams target;
    target.PosParams().SetFormName("CentreForm");
    target.Assign(&source);
    EXPECT_EQ(target.TopFormName(), "TopForm");
    EXPECT_EQ(target.RightFormName(), "RightForm");
    EXPECT_EQ(target.BottomFormName(), "BottomForm");
    EXPECT_EQ(target.LeftFormName(), "");
    EXPECT_EQ(target.LeftForm(), left.get());
    EXPECT_EQ(target.CustomForm(), centre.get());
    EXPECT_EQ(target.Position(), dpOwnerCenter);
    EXPECT_EQ(target.PosParams().ShiftX(), 5);
    EXPECT_EQ(target.PosParams().FormName(), "CentreForm");
    EXPECT_FALSE(target.CanLeft());
    EXPECT_TRUE(target.CanTop());
    EXPECT_TRUE(target.CanRight());
    EXPECT_TRUE(target.CanBottom());
    EXPECT_TRUE(target.Icon().Empty());
    EXPECT_EQ(target.Dlg(), nullptr);
}

TEST(CustDlgParams, AssignKeepsFormAndNameOfTheSourceTogether) {
    const auto left = MakeForm<TLeftForm>();
    TKxCustDlgParams source;
    source.SetLeftFormName("LeftForm");
    TForm* found = nullptr;
    TKxCustDlgParams::CreateFormAs(found, "LeftForm");
    ASSERT_EQ(found, left.get());
    TKxCustDlgParams target;
    target.SetLeftForm(left.get());
    target.Assign(&source);
    EXPECT_EQ(target.LeftForm(), nullptr);
    EXPECT_EQ(target.LeftFormName(), "LeftForm");
}

TEST(CustDlgParams, AssignOfAnythingElseIsAnError) {
    TKxCustDlgParams target;
    const TKxPosParams position;
    EXPECT_THROW(target.Assign(&position), EConvertError);
}

TEST(CustDlgParams, AFormNamePassesOverComponentsThatAreNoForms) {
    /// A component with the class name of a form.
    class TDataForm : public TComponent {
    public:
        static const TClass& StaticClass() {
            static const TClass cls("TDataForm", &TComponent::StaticClass());
            return cls;
        }
        const TClass& ClassType() const override { return StaticClass(); }
        using TComponent::TComponent;
    };
    const std::unique_ptr<TDataForm, TFreeDeleter> data(new TDataForm(&Application()));
    TForm* found = nullptr;
    TKxCustDlgParams::CreateFormAs(found, "DataForm");
    EXPECT_EQ(found, nullptr);
}

// --- Form files

/// A dialog component as the designer sees it: its parameters are published.
class TStreamedDialog : public TComponent {
    KX_CLASS()
    using TComponent::TComponent;
    TKxCustDlgParams& CustDlgParams() { return FParams; }
    void SetCustDlgParams(const TKxCustDlgParams& value) { FParams.Assign(&value); }
    TKxDlgCaptions& DlgItemsCaptions() { return FCaptions; }

private:
    TKxCustDlgParams FParams;
    TKxDlgCaptions FCaptions;
};
const TClass& TStreamedDialog::StaticClass() {
    static const TClassBuilder<TStreamedDialog> cls("TStreamedDialog", TComponent::StaticClass(), [](auto& c) {
        c.Creatable();
        c.SubObject("CustDlgParams", &TStreamedDialog::CustDlgParams, &TStreamedDialog::SetCustDlgParams);
        c.SubObject("DlgItemsCaptions", &TStreamedDialog::DlgItemsCaptions, nullptr);
    });
    return cls.Class();
}

TEST(CustDlgParamsStreaming, IconsAndTextsOfTheCodePageComeBackFromAFormFile) {
    Application(); // its start-up tells form files the code page
    TStreamedDialog dialog;
    dialog.CustDlgParams().SetCustFormName("It's \xD7\xE9");
    FillIcon(dialog.CustDlgParams().Icon());
    dialog.DlgItemsCaptions().SetHelp("&Why?");
    for (const TStreamFormat format : {TStreamFormat::Text, TStreamFormat::Binary}) {
        TMemoryStream stream;
        WriteComponent(stream, dialog, format);
        stream.SetPosition(0);
        TStreamedDialog read;
        ReadComponent(stream, &read);
        EXPECT_EQ(read.CustDlgParams().CustFormName(), dialog.CustDlgParams().CustFormName());
        EXPECT_FALSE(read.CustDlgParams().Icon().Empty());
        EXPECT_EQ(read.CustDlgParams().Icon().Width(), dialog.CustDlgParams().Icon().Width());
        EXPECT_EQ(FormTextOf(read), FormTextOf(dialog));
    }
}

} // namespace
} // namespace kx::test
