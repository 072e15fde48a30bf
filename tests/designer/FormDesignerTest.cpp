// SPDX-License-Identifier: MIT
// Forms that are open in the designer, without its windows.

#include "DesignerFixture.h"

#include "tests/support/ErrorOf.h"
#include "tests/support/ProcessorTime.h"

#include <random>

namespace kx::test {
namespace {

using designer::TFormDesigner;

class FormDesigner : public TDesignerTest {};

TEST_F(FormDesigner, AFormThatNobodyChangesComesBackByteForByte) { EXPECT_EQ(Text(), SampleForm); }

TEST_F(FormDesigner, WhatIsNotCompiledInIsShownAndKept) {
    EXPECT_EQ(Designer->FormClass(), "TOrderForm");
    EXPECT_EQ(The<TComponent>("Gauge").FormClassName(), "TFuelGauge");
    EXPECT_EQ(The("Gauge").Left(), 230);
    The("Gauge").SetLeft(240);
    EXPECT_TRUE(Designer->Record("Move"));
    EXPECT_THAT(Text(), HasSubstr("Left = 240\n    Top = 60\n    Width = 60\n    Height = 60\n    Level = 75\n"));
}

TEST_F(FormDesigner, WhatWasDoneIsUndoneAndDoneAgain) {
    The("OkButton").SetCaption("Yes");
    ASSERT_TRUE(Designer->Record("Caption"));
    const std::string changed = Text();
    EXPECT_EQ(Designer->Steps().UndoText(), "Caption");
    Designer->Undo();
    EXPECT_EQ(The("OkButton").Caption(), "OK");
    EXPECT_EQ(Text(), SampleForm);
    EXPECT_FALSE(Designer->CanUndo());
    ASSERT_TRUE(Designer->CanRedo());
    Designer->Redo();
    EXPECT_EQ(The("OkButton").Caption(), "Yes");
    EXPECT_EQ(Text(), changed);
    EXPECT_FALSE(Designer->CanRedo());
}

TEST_F(FormDesigner, AChangeThatChangesNothingIsNoStep) {
    EXPECT_FALSE(Designer->Record("Nothing"));
    EXPECT_FALSE(Designer->CanUndo());
}

TEST_F(FormDesigner, AnotherChangeEndsWhatCouldBeDoneAgain) {
    The("OkButton").SetCaption("a");
    Designer->Record("a");
    Designer->Undo();
    The("OkButton").SetCaption("b");
    Designer->Record("b");
    EXPECT_FALSE(Designer->CanRedo());
    Designer->Undo();
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(FormDesigner, UndoKeepsTheComponentsThatAreThere) {
    TControl& button = The("OkButton");
    button.SetLeft(50);
    Designer->Record("Move");
    Designer->Undo();
    EXPECT_EQ(&The("OkButton"), &button);
    EXPECT_EQ(button.Left(), 8);
}

TEST_F(FormDesigner, ADeletedComponentComesBackWithWhatIsInsideItAndWhoReferredToIt) {
    Designer->Select({&The("NameEdit"), &The("Box")});
    Designer->DeleteSelected();
    EXPECT_FALSE(Has("OkButton"));
    EXPECT_EQ(The<TLabel>("NameLabel").FocusControl(), nullptr);
    EXPECT_THAT(Text(), testing::Not(HasSubstr("FocusControl")));
    EXPECT_EQ(Designer->Primary(), &Designer->Form());
    Designer->Undo();
    EXPECT_EQ(Text(), SampleForm);
    EXPECT_EQ(The<TLabel>("NameLabel").FocusControl(), &The("NameEdit"));
    Designer->Redo();
    EXPECT_FALSE(Has("Box"));
}

TEST_F(FormDesigner, TheFormItselfIsNotDeleted) {
    Designer->SelectAll();
    Designer->Select({&Designer->Form()});
    Designer->DeleteSelected();
    EXPECT_EQ(Text(), SampleForm);
    EXPECT_FALSE(Designer->CanUndo());
}

TEST_F(FormDesigner, NewComponentsGetNamesOfTheirOwnAndAreSelected) {
    TComponent* const first = Designer->CreateComponent(TButton::StaticClass(), &The("Box"), {10, 60, 90, 85});
    TComponent* const second = Designer->CreateComponent(TButton::StaticClass(), &The("OkButton"), {5, 5, 6, 6});
    EXPECT_EQ(first->Name(), "Button1");
    EXPECT_EQ(second->Name(), "Button2");
    EXPECT_EQ(The("Button1").BoundsRect(), (TRect{10, 60, 90, 85}));
    EXPECT_EQ(second->GetParentComponent(), &The("Box")) << "a button holds no controls";
    EXPECT_EQ(The("Button2").Width(), 75) << "too small to be meant";
    EXPECT_EQ(Designer->Primary(), second);
    Designer->Undo();
    Designer->Undo();
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(FormDesigner, NonVisualComponentsKeepTheirPlace) {
    Designer->CreateComponent(TPopupMenu::StaticClass(), &The("Box"), {40, 70, 40, 70});
    EXPECT_THAT(Text(), HasSubstr("  object PopupMenu1: TPopupMenu\n    Left = 40\n    Top = 70\n  end\n"));
}

/// Its constructor throws.
class TFailing : public TButton {
    KX_CLASS()
    explicit TFailing(TComponent* owner) : TButton(owner) { throw EInvalidOperation("out of paper"); }
};
const TClass& TFailing::StaticClass() {
    static const TClassBuilder<TFailing> cls("TFailing", TButton::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

TEST_F(FormDesigner, AConstructorThatThrowsLeavesTheFormAsItWas) {
    EXPECT_THROW(Designer->CreateComponent(TFailing::StaticClass(), &Designer->Form(), {1, 1, 1, 1}),
                 EInvalidOperation);
    EXPECT_EQ(designer::WriteForm(Designer->Form()), Designer->State());
    EXPECT_EQ(Text(), SampleForm);
    EXPECT_FALSE(Designer->CanUndo());
}

TEST_F(FormDesigner, AChangeThatFailsHalfwayIsTakenBack) {
    EXPECT_THROW(Designer->Do("Both",
                              [&] {
                                  The("OkButton").SetCaption("half");
                                  throw EInvalidOperation("done");
                              }),
                 EInvalidOperation);
    EXPECT_EQ(The("OkButton").Caption(), "OK");
    EXPECT_FALSE(Designer->CanUndo());
}

TEST_F(FormDesigner, NamesThatNoComponentCanHaveAreRefused) {
    for (const char* name : {"", "1st", "two words", "NameEdit", "nil", "True", "delete", "OkButtonClick"}) {
        EXPECT_THROW(Designer->Rename(The("OkButton"), name), EComponentError) << name;
        EXPECT_EQ(Text(), SampleForm);
    }
    Designer->Rename(The("OkButton"), "YesButton");
    EXPECT_TRUE(Has("YesButton"));
    Designer->Undo();
    EXPECT_EQ(Text(), SampleForm);
}

// --- Methods

TEST_F(FormDesigner, MethodsAreThoseThatEventsAreBoundTo) {
    const TPropInfo& click = GetPropInfo(The("OkButton"), "OnClick");
    const TPropInfo& down = GetPropInfo(The("OkButton"), "OnMouseDown");
    EXPECT_THAT(Designer->MethodsOf(click.Signature), ElementsAre("OkButtonClick"));
    EXPECT_THAT(Designer->MethodsOf(down.Signature), IsEmpty());
    EXPECT_THROW(Designer->Method("OkButtonClick", down), EPropertyError);
    for (const char* name : {"", "2", "a b", "delete", "class", "OkButton", "OrderForm"}) {
        EXPECT_THROW(Designer->Method(name, click), EPropertyError) << name;
    }
    EXPECT_EQ(Designer->Method("OkButtonClick", click)->MethodName(), "OkButtonClick");
    EXPECT_FALSE(Designer->MethodExists("BoxClick"));
    Designer->Method("BoxClick", click);
    EXPECT_TRUE(Designer->MethodExists("BoxClick"));
}

// --- The clipboard

TEST_F(FormDesigner, WhatIsCopiedIsFormTextAndIsPastedUnderNewNames) {
    Designer->Select({&The("OkButton"), &The("Box"), &The("NameEdit"), &The("NameLabel")});
    const std::string text = Designer->CopyText();
    EXPECT_THAT(text, testing::StartsWith("object Box: TPanel\r\n"));
    Designer->SelectOne(Designer->Form());
    Designer->Paste(text);
    EXPECT_TRUE(Has("Panel1"));
    EXPECT_EQ(The<TComponent>("Button1").GetParentComponent(), &The("Panel1"));
    EXPECT_EQ(The<TLabel>("Label1").FocusControl(), &The("Edit1")) << "references follow the new names";
    EXPECT_THAT(Designer->SelectedComponents().size(), 3U);
    Designer->Undo();
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(FormDesigner, ComponentsOfUnknownClassesCanBePasted) {
    Designer->SelectOne(The("Gauge"));
    const std::string text = Designer->CopyText();
    Designer->SelectOne(The("Box"));
    Designer->Paste(text);
    EXPECT_EQ(The("FuelGauge1").Parent(), &The("Box"));
    EXPECT_THAT(Text(),
                HasSubstr("    object FuelGauge1: TFuelGauge\n      Left = 230\n      Top = 60\n      Width = 60\n"
                          "      Height = 60\n      Level = 75\n    end\n"));
}

TEST_F(FormDesigner, AClipboardThatHoldsNoFormTextChangesNothing) {
    for (const char* text : {"", "hello", "object A: TButton", "object A: TButton\n  Left = \nend", "end end",
                             "object A: TButton\n  Left = 99999999999\nend"}) {
        EXPECT_THROW(Designer->Paste(text), Exception) << text;
        EXPECT_EQ(designer::WriteForm(Designer->Form()), Designer->State()) << text;
        EXPECT_EQ(Text(), SampleForm) << text;
    }
}

// --- Parents and order

TEST_F(FormDesigner, AComponentMovesToAnotherParentThatCanHoldIt) {
    Designer->Place({&The("NameEdit")}, The("Box"), nullptr);
    EXPECT_EQ(The("NameEdit").Parent(), &The("Box"));
    EXPECT_THROW(Designer->Place({&The("Box")}, The("Box"), nullptr), designer::EDesignError);
    EXPECT_THROW(Designer->Place({&The("Box")}, The("OkButton"), nullptr), designer::EDesignError);
    EXPECT_THROW(Designer->Place({&The("NameEdit")}, The("OkButton"), nullptr), designer::EDesignError);
    Designer->Undo();
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(FormDesigner, FrontAndBackAreTheOrderOfTheFile) {
    Designer->SelectOne(The("Box"));
    Designer->BringToFront();
    EXPECT_GT(Text().find("object Box"), Text().find("object Gauge"));
    Designer->SendToBack();
    EXPECT_LT(Text().find("object Box"), Text().find("object NameLabel"));
    Designer->Undo();
    Designer->Undo();
    EXPECT_EQ(Text(), SampleForm);
}

// --- Text

TEST_F(FormDesigner, ABadTextIsRefusedWithItsLineAndTheFormStays) {
    const TComponent* const before = Designer->Root();
    EXPECT_THAT(
        ErrorOf<Exception>([&] { Designer->Replace("object A: TA\n  Caption = 'x'\n  Left = ?\nend\n", "Text"); }),
        HasSubstr("line 3"));
    EXPECT_EQ(Designer->Root(), before);
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(FormDesigner, ATextThatIsChangedBecomesTheForm) {
    std::string text = SampleForm;
    text.replace(text.find("'OK'"), 4, "'Fine'");
    Designer->Replace(text, "Text");
    EXPECT_EQ(The("OkButton").Caption(), "Fine");
    EXPECT_EQ(Text(), text);
    Designer->Undo();
    EXPECT_EQ(Text(), SampleForm);
}

// --- Without limit

TEST_F(FormDesigner, FiveHundredRandomChangesAreUndoneInASecond) {
    std::mt19937 random(7); // NOLINT: the same ones each time
    const auto upTo = [&](size_t count) { return random() % count; };
    const TClass* const classes[] = {&TButton::StaticClass(), &TLabel::StaticClass(), &TPanel::StaticClass(),
                                     &TEdit::StaticClass(), &TPopupMenu::StaticClass()};
    size_t steps = 0;
    constexpr bool isGuarded = KX_TEST_GUARDED != 0; // then nothing is as fast as it is
    while (Designer->Steps().Position() < (isGuarded ? 120U : 500U)) {
        const std::vector<TComponent*> all = Designer->AllComponents();
        TComponent& one = *all[upTo(all.size())];
        auto* const control = &one == &Designer->Form() ? nullptr : dynamic_cast<TControl*>(&one);
        switch (upTo(8)) {
        case 0: Designer->CreateComponent(*classes[upTo(std::size(classes))], &one, {3, 4, 60, 40}); break;
        case 1:
            if (all.size() > 12) {
                Designer->SelectOne(one);
                Designer->DeleteSelected();
            }
            break;
        case 2:
            if (&one != &Designer->Form()) {
                Designer->Rename(one, "Name" + IntToStr(static_cast<int64_t>(++steps)));
            }
            break;
        case 3:
            if (control) {
                control->Font().SetSize(static_cast<int>(8 + upTo(9)));
            }
            break;
        case 4:
            if (control) {
                control->SetCaption("Text " + IntToStr(static_cast<int64_t>(upTo(100))));
            }
            break;
        default:
            if (control) {
                control->SetBounds(static_cast<int>(upTo(300)), static_cast<int>(upTo(200)), control->Width(),
                                   control->Height());
            }
        }
        Designer->Record("Random");
    }
    const double start = ProcessorTime();
    while (Designer->CanUndo()) {
        Designer->Undo();
    }
    const double took = ProcessorTime() - start;
    EXPECT_EQ(Text(), SampleForm);
    EXPECT_EQ(designer::WriteForm(Designer->Form()), Designer->State());
    EXPECT_LT(took, isGuarded ? 20'000 : 3000) << "milliseconds: the machine may be a slow one";
    while (Designer->CanRedo()) {
        Designer->Redo();
    }
    EXPECT_EQ(designer::WriteForm(Designer->Form()), Designer->State());
}

} // namespace
} // namespace kx::test
