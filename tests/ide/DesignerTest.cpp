// What packages hear of designers, and what they register with the host.

#include "TestDesigner.h"

#include "kx/ide/ComponentEditors.h"
#include "kx/ide/DesignWindows.h"
#include "kx/ide/Palette.h"
#include "kx/ide/Projects.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/ExceptionLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Writes down what it hears.
class TListeningWindow : public TDesignWindow {
public:
    using TDesignWindow::TDesignWindow;

    std::vector<std::string> Heard;
    std::function<void()> OnModified;

protected:
    void ItemDeleted(IDesigner&, TPersistent& item) override { Heard.push_back("deleted " + item.ClassName()); }
    void ItemInserted(IDesigner&, TPersistent& item) override { Heard.push_back("inserted " + item.ClassName()); }
    void ItemsModified(IDesigner&) override {
        Heard.emplace_back("modified");
        if (OnModified) {
            OnModified();
        }
    }
    void SelectionChanged(IDesigner&, const TDesignSelection& selection) override {
        Heard.push_back("selected " + IntToStr(static_cast<int64_t>(selection.size())));
    }
    void DesignerClosed(IDesigner& designer, bool goingDormant) override {
        Heard.push_back("closed " + static_cast<TComponent*>(designer.Root())->Name() +
                        (goingDormant ? " for now" : ""));
    }
};

TEST(Designers, TellEveryWindowOfWhatHappens) {
    TTestDesigner designer;
    TEdit edit(nullptr);
    TListeningWindow first;
    {
        TListeningWindow second;
        NotifyItemInserted(designer, edit);
        EXPECT_THAT(second.Heard, ElementsAre("inserted TEdit"));
    }
    NotifyItemsModified(designer);
    NotifySelectionChanged(designer, {&edit, &designer.Form()});
    NotifyItemDeleted(designer, edit);
    NotifyDesignerClosed(designer, true);
    NotifyDesignerClosed(designer, false);
    EXPECT_THAT(first.Heard, ElementsAre("inserted TEdit", "modified", "selected 2", "deleted TEdit",
                                         "closed Form1 for now", "closed Form1"));
}

TEST(Designers, GoOnWhenAWindowFailsOrEndsAnother) {
    TTestDesigner designer;
    const TExceptionLog exceptions;
    TListeningWindow first;
    auto* doomed = new TListeningWindow;
    TListeningWindow last;
    first.OnModified = [&] {
        doomed->Free();
        throw Exception("no");
    };
    NotifyItemsModified(designer);
    EXPECT_THAT(last.Heard, ElementsAre("modified"));
    EXPECT_THAT(exceptions.Messages(), ElementsAre("no"));
}

// --- Component editors

class TTwoVerbs : public TComponentEditor {
public:
    using TComponentEditor::TComponentEditor;
    void ExecuteVerb(int index) override { Component().SetTag(index + 10); }
    std::string GetVerb(int index) const override { return index == 0 ? "Paint" : "Polish"; }
    int GetVerbCount() const override { return 2; }
};

TEST(ComponentEditors, AreThoseOfTheNearestClassAndADoubleClickIsTheFirstVerb) {
    TTestDesigner designer;
    TRadioButton radio(nullptr);
    EXPECT_EQ(GetComponentEditor(radio, designer)->GetVerbCount(), 0);
    GetComponentEditor(radio, designer)->Edit(); // does nothing
    RegisterComponentEditor<TTwoVerbs>(TButtonControl::StaticClass());
    const auto editor = GetComponentEditor(radio, designer);
    EXPECT_EQ(editor->GetVerbCount(), 2);
    EXPECT_EQ(editor->GetVerb(1), "Polish");
    EXPECT_EQ(&editor->Designer(), &designer);
    editor->Edit();
    EXPECT_EQ(radio.Tag(), 10);
    RegisterComponentEditor<TComponentEditor>(TRadioButton::StaticClass());
    EXPECT_EQ(GetComponentEditor(radio, designer)->GetVerbCount(), 0);
    TEdit edit(nullptr);
    EXPECT_EQ(GetComponentEditor(edit, designer)->GetVerbCount(), 0);
}

// --- The palette

TEST(Palette, KeepsPagesAndClassesInTheOrderOfTheirRegistration) {
    RegisterComponents("First", {&TEdit::StaticClass(), &TButton::StaticClass()});
    RegisterComponents("Second", {&TLabel::StaticClass()});
    RegisterComponents("FIRST", {&TMemo::StaticClass()});
    EXPECT_THAT(PaletteClasses("First"), ElementsAre("TEdit", "TButton", "TMemo"));
    EXPECT_EQ(GetClass("TMemo"), &TMemo::StaticClass());
    RegisterComponents("Second", {&TEdit::StaticClass()});
    EXPECT_THAT(PaletteClasses("First"), ElementsAre("TButton", "TMemo"));
    EXPECT_THAT(PaletteClasses("Second"), ElementsAre("TLabel", "TEdit"));
}

TEST(Palette, RefusesAClassThatCannotBeCreatedByName) {
    EXPECT_THROW(RegisterComponents("Third", {&TCheckBox::StaticClass(), &TControl::StaticClass()}), EInvalidOperation);
    EXPECT_THAT(PaletteClasses("Third"), IsEmpty());
}

} // namespace
} // namespace kx::test
