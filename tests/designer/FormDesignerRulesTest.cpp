// SPDX-License-Identifier: MIT
// What forms in the designer do with parts of changes that fail, with selections, and with components in odd places.

#include "DesignerFixture.h"

#include "designer/Arrange.h"
#include "kx/ui/widgets/ComCtrlsPages.h"
#include "tests/support/ErrorOf.h"

namespace kx::test {
namespace {

using designer::EDesignError;

/// Counts what packages are told.
class TListener final : public IDesignNotification {
public:
    TListener() { RegisterDesignNotification(*this); }
    TListener(const TListener&) = delete;
    TListener& operator=(const TListener&) = delete;
    ~TListener() { UnregisterDesignNotification(*this); }

    void ItemDeleted(IDesigner&, TPersistent& item) override { Deleted.push_back(NameOf(item)); }
    void ItemInserted(IDesigner&, TPersistent& item) override { Inserted.push_back(NameOf(item)); }
    void ItemsModified(IDesigner&) override { ++Modified; }
    void SelectionChanged(IDesigner&, const TDesignSelection&) override { ++Selected; }
    void DesignerClosed(IDesigner&, bool goingDormant) override { ++(goingDormant ? Dormant : Closed); }

    std::vector<std::string> Deleted, Inserted;
    int Modified = 0, Selected = 0, Dormant = 0, Closed = 0;

private:
    static std::string NameOf(const TPersistent& item) { return dynamic_cast<const TComponent&>(item).Name(); }
};

/// A button that goes into nothing.
class TLoner : public TButton {
    KX_CLASS()
    explicit TLoner(TComponent* owner = nullptr) : TButton(owner) {}
    void SetParentComponent(TComponent*) override {}
};
const TClass& TLoner::StaticClass() {
    static const TClassBuilder<TLoner> cls("TLoner", TButton::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

class FormDesignerRules : public TDesignerTest {
protected:
    FormDesignerRules() { RegisterClasses<TPageControl, TTabSheet, TLoner>(); }
    void UndoAll() const {
        while (Designer->CanUndo()) {
            Designer->Undo();
        }
        EXPECT_EQ(Text(), SampleForm);
        EXPECT_EQ(designer::WriteForm(Designer->Form()), Designer->State());
    }
};

// --- Changes

TEST_F(FormDesignerRules, APartThatFailsLeavesTheRestOfAChange) {
    Designer->Do("Both", [&] {
        The("OkButton").SetLeft(24);
        EXPECT_THROW(Designer->Do("Inner", [] { throw EInvalidOperation("no"); }), EInvalidOperation);
        EXPECT_TRUE(Designer->IsBusy());
        The("NameEdit").SetLeft(90);
    });
    EXPECT_EQ(The("OkButton").Left(), 24);
    EXPECT_EQ(The("NameEdit").Left(), 90);
    EXPECT_EQ(Designer->Steps().Position(), 1U);
    UndoAll();
}

TEST_F(FormDesignerRules, AChangeWithinAChangeIsNoStepOfItsOwn) {
    Designer->Do("Both", [&] {
        Designer->CreateComponent(TButton::StaticClass(), &Designer->Form(), {1, 1, 80, 30});
        Designer->Modified();
        EXPECT_FALSE(Designer->CanUndo());
        Designer->CreateComponent(TButton::StaticClass(), &Designer->Form(), {1, 40, 80, 70});
    });
    EXPECT_EQ(Designer->Steps().Position(), 1U);
    EXPECT_EQ(Designer->Steps().UndoText(), "Both");
    UndoAll();
}

TEST_F(FormDesignerRules, ListenersHearOfEachChange) {
    TListener listener;
    int changes = 0;
    Designer->SetOnChanged([&] { ++changes; });
    The("OkButton").SetLeft(24);
    Designer->Record("Move");
    EXPECT_EQ(listener.Modified, 1);
    EXPECT_EQ(changes, 1);
    Designer->Undo();
    EXPECT_EQ(listener.Modified, 2);
    EXPECT_EQ(changes, 2);
    Designer->CreateComponent(TButton::StaticClass(), &Designer->Form(), {1, 1, 80, 30});
    EXPECT_THAT(listener.Inserted, ElementsAre("Button1"));
    Designer->Undo();
    EXPECT_THAT(listener.Deleted, ElementsAre("Button1"));
    Designer->Redo();
    EXPECT_THAT(listener.Inserted, ElementsAre("Button1", "Button1"));
    Designer->Replace(SampleForm, "Text");
    EXPECT_EQ(listener.Dormant, 1);
    EXPECT_EQ(listener.Closed, 0);
    Designer.reset();
    EXPECT_EQ(listener.Closed, 1);
}

TEST_F(FormDesignerRules, TheSizeThatOthersGiveTheFormIsAStep) {
    Designer->Form().SetHeight(Designer->Form().Height() + 50);
    EXPECT_EQ(Designer->Steps().UndoText(), "Size");
    EXPECT_THAT(Text(), HasSubstr("ClientHeight = 290\n"));
    Designer->Undo();
    EXPECT_EQ(Text(), SampleForm);
    Designer->Replace(SampleForm, "Text"); // another form object
    Designer->Form().SetWidth(Designer->Form().Width() + 50);
    EXPECT_THAT(Text(), HasSubstr("ClientWidth = 370\n"));
    UndoAll();
}

// --- Selection

TEST_F(FormDesignerRules, TheSameSelectionIsNoChange) {
    Designer->SelectOne(The("OkButton"));
    TListener listener;
    Designer->SelectOne(The("OkButton"));
    EXPECT_EQ(listener.Selected, 0);
    Designer->SelectOne(The("Box"));
    EXPECT_EQ(listener.Selected, 1);
}

TEST_F(FormDesignerRules, TheFormIsNoneOfTheControls) {
    Designer->Select({&Designer->Form(), &The("NameEdit")});
    EXPECT_THAT(Designer->SelectedControls(), ElementsAre(&The("NameEdit")));
    TListener listener;
    Designer->DeleteSelected();
    EXPECT_FALSE(Has("NameEdit"));
    EXPECT_EQ(Designer->Primary(), &Designer->Form());
    EXPECT_GE(listener.Selected, 1) << "whoever shows the selection has lost it";
    UndoAll();
}

TEST_F(FormDesignerRules, WhatIsInsideASelectedOneGoesWithIt) {
    Designer->Select({&The("OkButton"), &The("Box")});
    const std::string text = Designer->CopyText();
    EXPECT_THAT(text, testing::StartsWith("object Box: TPanel\r\n"));
    EXPECT_EQ(text.find("object OkButton"), text.rfind("object OkButton")) << "once";
    Designer->DeleteSelected();
    EXPECT_FALSE(Has("OkButton"));
    EXPECT_EQ(Designer->Steps().Position(), 1U);
    UndoAll();
}

TEST_F(FormDesignerRules, ATextThatIsRefusedLeavesTheName) {
    const std::string name = Designer->Form().Name();
    EXPECT_THROW(Designer->Replace("object A: TA\n  Left = ?\nend\n", "Text"), Exception);
    EXPECT_EQ(Designer->Form().Name(), name);
}

TEST_F(FormDesignerRules, AFormWithoutWhatWasSelectedIsSelectedItself) {
    Designer->SelectOne(The("OkButton"));
    Designer->Replace("object OrderForm: TOrderForm\nend\n", "Text");
    EXPECT_EQ(Designer->Primary(), &Designer->Form());
    Designer->Undo();
    Designer->SelectOne(The("OkButton"));
    Designer->SelectParent();
    EXPECT_EQ(Designer->Primary(), &The("Box"));
    Designer->SelectParent();
    EXPECT_EQ(Designer->Primary(), &Designer->Form());
}

TEST_F(FormDesignerRules, WhatComesBackLeavesTheOthersTheObjectsThatTheyAre) {
    const std::string form =
        "object F: TF\n  ClientHeight = 200\n  ClientWidth = 300\n"
        "  object First: TBevel\n    Left = 8\n  end\n"
        "  object Name: TLabel\n    AutoSize = False\n    FocusControl = Box\n  end\n"
        "  object Last: TBevel\n    Left = 80\n  end\n"
        "  object Box: TPanel\n    TabOrder = 0\n    object Inner: TBevel\n      Left = 4\n    end\n"
        "  end\nend\n";
    Open(form);
    const std::string before = Text();
    const std::vector<std::string> names{"First", "Name", "Last", "Box"};
    for (const std::string& deleted : names) {
        std::vector<const TComponent*> objects;
        for (const std::string& name : names) {
            objects.push_back(&The<TComponent>(name));
        }
        const TForm* const object = &Designer->Form();
        Designer->SelectOne(The<TComponent>(deleted));
        Designer->DeleteSelected();
        Designer->Undo();
        EXPECT_EQ(Text(), before);
        EXPECT_EQ(&Designer->Form(), object) << deleted << ": the form was read anew";
        for (size_t i = 0; i < names.size(); ++i) {
            EXPECT_TRUE(names[i] == deleted || &The<TComponent>(names[i]) == objects[i]) << deleted << ", " << names[i];
        }
        EXPECT_EQ(The<TLabel>("Name").FocusControl(), &The("Box")) << deleted;
    }
}

TEST_F(FormDesignerRules, ANameThatIsUndoneIsOfTheSameObject) {
    TControl& button = The("OkButton");
    Designer->Rename(button, "YesButton");
    Designer->Undo();
    EXPECT_EQ(&The("OkButton"), &button);
    Designer->Redo();
    EXPECT_EQ(&The("YesButton"), &button);
    UndoAll();
}

// --- New components

TEST_F(FormDesignerRules, AControlThatGoesNowhereIsNotMade) {
    EXPECT_EQ(ErrorOf<EDesignError>([&] {
                  Designer->CreateComponent(TLoner::StaticClass(), &The("Box"), {1, 1, 80, 30});
              }),
              "A TLoner cannot be put into a TPanel");
    EXPECT_EQ(designer::WriteForm(Designer->Form()), Designer->State());
    EXPECT_FALSE(Designer->CanUndo());
}

TEST_F(FormDesignerRules, PageControlsTakePagesOnly) {
    TComponent* const pages =
        Designer->CreateComponent(TPageControl::StaticClass(), &Designer->Form(), {16, 150, 216, 230});
    TComponent* const page = Designer->CreateComponent(TTabSheet::StaticClass(), pages, {});
    EXPECT_EQ(page->GetParentComponent(), pages);
    TComponent* const button = Designer->CreateComponent(TButton::StaticClass(), pages, {1, 1, 80, 30});
    EXPECT_EQ(button->GetParentComponent(), &Designer->Form());
    UndoAll();
}

TEST_F(FormDesignerRules, AThinControlGetsTheSizeOfItsClass) {
    EXPECT_EQ(Designer->CreateComponent(TButton::StaticClass(), nullptr, {1, 1, 80, 4})->Name(), "Button1");
    EXPECT_EQ(The("Button1").BoundsRect(), (TRect{1, 1, 76, 26}));
}

TEST_F(FormDesignerRules, AnIconMayStandOutsideTheForm) {
    TComponent* const menu = Designer->CreateComponent(TPopupMenu::StaticClass(), nullptr, {-5, 70, -5, 70});
    EXPECT_EQ(designer::IconPlace(*menu), (TPoint{-5, 70}));
    designer::SetIconPlace(*menu, {-300, -2});
    EXPECT_EQ(designer::IconPlace(*menu), (TPoint{-300, -2}));
}

// --- The clipboard

TEST_F(FormDesignerRules, WhatIsPastedTwiceInOneTextGetsTwoNames) {
    Designer->Paste("object Twin: TButton\n  Caption = 'a'\nend\nobject Twin: TButton\n  Caption = 'b'\nend\n"
                    "object NameEdit: TEdit\nend\nobject Mark: TLabel\n  FocusControl = NameEdit\n"
                    "  OnClick = OkButtonClick\nend\n");
    EXPECT_EQ(The("Twin").Caption(), "a");
    EXPECT_EQ(The("Button1").Caption(), "b");
    EXPECT_EQ(The<TLabel>("Mark").FocusControl(), &The("Edit1"));
    EXPECT_THAT(Text(), HasSubstr("    OnClick = OkButtonClick\n"));
    EXPECT_EQ(Designer->Steps().UndoText(), "Paste");
    UndoAll();
}

TEST_F(FormDesignerRules, AClipboardWithoutComponentsSaysSo) {
    EXPECT_EQ(ErrorOf<EDesignError>([&] { Designer->Paste("  Left = 3\n"); }), "The clipboard holds no components");
}

// --- Order and parents

TEST_F(FormDesignerRules, AComponentAndTheOneThatItIsInAreMovedAsOne) {
    Designer->CreateComponent(TPanel::StaticClass(), &Designer->Form(), {220, 150, 310, 230});
    Designer->Place({&The("Box"), &The("OkButton")}, The("Panel1"), nullptr);
    EXPECT_EQ(The("Box").Parent(), &The("Panel1"));
    EXPECT_EQ(The("OkButton").Parent(), &The("Box"));
    UndoAll();
}

TEST_F(FormDesignerRules, NeitherTheFormNorAnythingInAPageControlIsMoved) {
    EXPECT_FALSE(Designer->CanPlace(Designer->Form(), The("Box")));
    auto& pages = dynamic_cast<TPageControl&>(
        *Designer->CreateComponent(TPageControl::StaticClass(), &Designer->Form(), {16, 150, 216, 230}));
    auto& page = dynamic_cast<TTabSheet&>(*Designer->CreateComponent(TTabSheet::StaticClass(), &pages, {}));
    EXPECT_FALSE(Designer->CanPlace(page, The("Box")));
    EXPECT_TRUE(Designer->CanPlace(page, pages));
    EXPECT_TRUE(Designer->CanPlace(The("OkButton"), page));
    EXPECT_FALSE(Designer->CanPlace(pages, page)) << "into what is inside it";
}

// --- Arranging

TEST_F(FormDesignerRules, TwoControlsHaveNoSpacesToShare) {
    Designer->Select({&The("NameLabel"), &The("NameEdit")});
    designer::SpaceSelected(*Designer, true);
    EXPECT_EQ(Text(), SampleForm);
    Designer->SelectOne(The("NameEdit"));
    designer::SpaceSelected(*Designer, true);
    designer::AlignSelected(*Designer, designer::Right);
    designer::SizeSelected(*Designer, true, true);
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(FormDesignerRules, SpacesDoNotDependOnTheOrderOfTheSelection) {
    Designer->CreateComponent(TButton::StaticClass(), &Designer->Form(), {250, 12, 280, 33});
    Designer->Select({&The("Button1"), &The("NameLabel"), &The("NameEdit")});
    designer::SpaceSelected(*Designer, true);
    EXPECT_EQ(The("NameLabel").Left(), 16);
    EXPECT_EQ(The("Button1").Left(), 250);
    const TRect label = The("NameLabel").BoundsRect();
    const TRect edit = The("NameEdit").BoundsRect();
    EXPECT_NEAR(edit.Left - label.Right, 250 - edit.Right, 1) << "the same on both sides";
}

TEST_F(FormDesignerRules, JustTheControlsOfOneParentAreCentered) {
    Designer->Select({&The("NameEdit"), &The("OkButton")});
    designer::CenterSelected(*Designer, false);
    EXPECT_EQ(The("OkButton").Top(), 16) << "it is in the box";
    EXPECT_EQ(The("OkButton").Left(), 8);
    EXPECT_EQ(The("NameEdit").Left(), 80);
    EXPECT_NE(The("NameEdit").Top(), 12);
}

} // namespace
} // namespace kx::test
