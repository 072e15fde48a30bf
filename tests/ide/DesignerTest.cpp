// SPDX-License-Identifier: MIT
// What packages hear of designers, and what they register with the host.

#include "TestDesigner.h"
#include "TestHost.h"

#include "kx/ide/ComponentEditors.h"
#include "kx/ide/DesignWindows.h"
#include "kx/ide/Palette.h"
#include "kx/ide/Projects.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/ExceptionLog.h"

#include <algorithm>
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

TEST(Designers, TellEachListenerOnceInTheOrderOfTheirRegistration) {
    TTestDesigner designer;
    std::vector<std::string> heard;
    /// Says its name when it hears something.
    class TListener : public IDesignNotification {
    public:
        TListener(std::string name, std::vector<std::string>& log) : FName(std::move(name)), FLog(log) {}
        virtual ~TListener() = default;
        void ItemDeleted(IDesigner&, TPersistent&) override {}
        void ItemInserted(IDesigner&, TPersistent&) override {}
        void ItemsModified(IDesigner&) override {
            FLog.push_back(FName);
            if (Act) {
                Act();
            }
        }
        void SelectionChanged(IDesigner&, const TDesignSelection&) override {}
        void DesignerClosed(IDesigner&, bool) override {}
        std::function<void()> Act;

    private:
        std::string FName;
        std::vector<std::string>& FLog;
    };
    TListener first("first", heard);
    TListener second("second", heard);
    TListener late("late", heard);
    RegisterDesignNotification(first);
    RegisterDesignNotification(second);
    RegisterDesignNotification(first);
    first.Act = [&] { RegisterDesignNotification(late); };
    NotifyItemsModified(designer);
    EXPECT_THAT(heard, ElementsAre("first", "second")) << "who joins meanwhile hears of what comes next";
    UnregisterDesignNotification(first);
    heard.clear();
    NotifyItemsModified(designer);
    EXPECT_THAT(heard, ElementsAre("second", "late"));
    second.Act = [&] { UnregisterDesignNotification(late); };
    heard.clear();
    NotifyItemsModified(designer);
    EXPECT_THAT(heard, ElementsAre("second")) << "who leaves meanwhile hears no more";
    UnregisterDesignNotification(second);
    UnregisterDesignNotification(second);
    UnregisterDesignNotification(late);
    NotifyItemsModified(designer);
    EXPECT_EQ(heard.size(), 1U);
}

// --- The host

TEST(HostServices, AreThoseThatWereSetLast) {
    EXPECT_EQ(ModuleServices(), nullptr);
    {
        TTestHost host("Software\\Host");
        EXPECT_EQ(ModuleServices(), &host);
    }
    EXPECT_EQ(ModuleServices(), nullptr);
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
    EXPECT_EQ(GetComponentEditor(radio, designer)->GetVerb(0), "");
    RegisterComponentEditor<TTwoVerbs>(TRadioButton::StaticClass());
    EXPECT_EQ(GetComponentEditor(radio, designer)->GetVerbCount(), 2) << "the later one";
    EXPECT_EQ(&GetComponentEditor(radio, designer)->Component(), &radio);
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

TEST(Palette, HasNoPageWithoutClasses) {
    const auto hasPage = [](const char* name) {
        return std::any_of(PalettePages().begin(), PalettePages().end(),
                           [name](const TPalettePage& page) { return page.Name == name; });
    };
    RegisterComponents("Empty", {});
    EXPECT_FALSE(hasPage("Empty"));
    RegisterComponents("Short", {&TCheckBox::StaticClass()});
    EXPECT_EQ(PalettePages().back().Name, "Short") << "a new page comes behind the others";
    RegisterComponents("Long", {&TCheckBox::StaticClass()});
    EXPECT_FALSE(hasPage("Short")) << "its last class has moved";
    EXPECT_TRUE(hasPage("Long"));
}

TEST(Palette, APackageThatRegistersTwiceChangesNothing) {
    for (int i = 0; i < 2; ++i) {
        RegisterComponents("Twice", {&TListBox::StaticClass()});
        RegisterComponents("Twice", {&TComboBox::StaticClass()});
        EXPECT_THAT(PaletteClasses("Twice"), ElementsAre("TListBox", "TComboBox"));
    }
}

TEST(Palette, RefusesAClassThatCannotBeCreatedByName) {
    EXPECT_THROW(RegisterComponents("Third", {&TCheckBox::StaticClass(), &TControl::StaticClass()}), EInvalidOperation);
    EXPECT_THAT(PaletteClasses("Third"), IsEmpty());
}

} // namespace
} // namespace kx::test
