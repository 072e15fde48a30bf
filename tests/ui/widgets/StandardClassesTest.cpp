// SPDX-License-Identifier: MIT
// All classes of the framework are registered by one call, and each of them comes back from a form file.

#include "kx/ui/StandardClasses.h"
#include "kx/core/FormEvents.h"
#include "kx/ui/controls/Controls.h"
#include "tests/support/FormFiles.h"

#include <gtest/gtest.h>

#include <set>

namespace kx {
namespace {

constexpr const char* Standard[] = {
    "TAction",      "TActionList",   "TBevel",      "TButton",    "TCheckBox",    "TColorDialog", "TComboBox",
    "TDrawGrid",    "TEdit",         "TForm",       "TFrame",     "TGroupBox",    "TImage",       "TImageList",
    "TLabel",       "TListBox",      "TListView",   "TMainMenu",  "TMemo",        "TMenuItem",    "TOpenDialog",
    "TPageControl", "TPageScroller", "TPaintBox",   "TPanel",     "TPopupMenu",   "TPrintDialog", "TProgressBar",
    "TRadioButton", "TRadioGroup",   "TSaveDialog", "TScrollBox", "TSpeedButton", "TSplitter",    "TStatusBar",
    "TStringGrid",  "TTabControl",   "TTabSheet",   "TTimer",     "TToolBar",     "TToolButton",  "TTreeView"};

TEST(StandardClasses, AreThereByOneCall) {
    RegisterStandardClasses();
    RegisterStandardClasses(); // once more does no harm
    for (const char* name : Standard) {
        const TClass* const cls = GetClass(name);
        ASSERT_NE(cls, nullptr) << name;
        EXPECT_TRUE(cls->IsCreatable()) << name;
    }
}

/// The file of a component of that class that was read from a file.
std::string WrittenAgain(const TClass& cls, const std::string& text) {
    TComponent* const component = cls.Create(nullptr);
    if (!text.empty()) {
        test::ReadFormOver(*component, text);
        component->SetName("");
    }
    std::string written = test::FormTextOf(*component);
    component->Free();
    return written;
}

/// Each can be made, written and read again, as in a designer.
TEST(StandardClasses, ComeBackFromAFormFile) {
    RegisterStandardClasses();
    for (const char* name : Standard) {
        const TClass& cls = FindClass(name);
        const std::string once = WrittenAgain(cls, WrittenAgain(cls, "")); // labels take the size of their text
        EXPECT_EQ(WrittenAgain(cls, once), once);
    }
}

/// What the class view of a form writes for each event is what the event hands over.
TEST(StandardClasses, TheParametersOfAllEventsHaveNames) {
    RegisterStandardClasses();
    std::set<std::string> unnamed;
    for (const char* name : Standard) {
        for (const TPropInfo* property : FindClass(name).Properties()) {
            if (property->Kind == TTypeKind::Event &&
                EventParameters(name, property->Name).find(" value1") != std::string::npos) {
                unnamed.insert(std::string(name) + "." + property->Name + "(" + EventParameters(name, property->Name) +
                               ")");
            }
        }
    }
    EXPECT_EQ(unnamed, std::set<std::string>{});
}

} // namespace
} // namespace kx
