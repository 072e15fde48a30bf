// SPDX-License-Identifier: MIT
// File dialogs that remember how the user looks at his files.

#include "RememberFixture.h"

#include "kx/opensave/KxOpenDlgEx.h"

#include <memory>

namespace kx::test {
namespace {

constexpr WORD ReportButton = 40964;

class RememberLook : public Remember {
protected:
    /// The user shows the details, and makes the first column this wide.
    static std::vector<TStep> ShowDetails(TKxOpenDialog& dialog, int width) {
        return {Perform("details", [&] { PressToolButton(dialog, ReportButton); }),
                Await("they are shown", [&] { return dialog.FileListViewStyle() == lvsReport; }),
                SetColumn(dialog, width)};
    }
    /// The dialog has had the time for what it does to a new list.
    static TStep AwaitLookedAfter() {
        const auto begin = std::make_shared<DWORD>(0);
        return Await("the list is looked after", [=] {
            *begin = *begin ? *begin : GetTickCount();
            return GetTickCount() - *begin > 200;
        });
    }
    static TStep SetColumn(TKxOpenDialog& dialog, int width) {
        TStep step = AwaitLookedAfter();
        step.Do = [=, &dialog] { SendMessageA(ListOf(dialog), LVM_SETCOLUMNWIDTH, 0, width); };
        return step;
    }
    static TStep AwaitColumn(TKxOpenDialog& dialog, int width) {
        return Await("the first column is " + IntToStr(width) + " pixels wide",
                     [=, &dialog] { return ColumnOf(ListOf(dialog), 0) == width; });
    }
    static TStep GoTo(TKxOpenDialog& dialog, const std::string& folder) {
        return Perform("to " + folder, [=, &dialog] { dialog.SetSelectedFolder(folder); });
    }
    template <class T = TKxOpenDialog> T& NewInFolder() {
        T& dialog = New<T>();
        dialog.SetInitialDir(Folder.Path());
        return dialog;
    }
    static void Run(TKxOpenDialog& dialog, const std::vector<std::vector<TStep>>& parts) {
        std::vector<TStep> steps;
        for (const std::vector<TStep>& part : parts) {
            steps.insert(steps.end(), part.begin(), part.end());
        }
        RunDialog(dialog, steps);
    }
};

TEST_F(RememberLook, TheStyleAndTheColumnsComeBackWhetherTheUserChoseOrNot) {
    for (const bool confirmed : {true, false}) {
        const int width = confirmed ? 211 : 187;
        auto& first = NewInFolder();
        Run(first, {ShowDetails(first, width), {confirmed ? EnterFileName(first, "one.txt") : Cancel(first)}});
        EXPECT_EQ(Number("ViewStyle"), lvsReport);
        EXPECT_THAT(TextAt("ColumnWidths"), testing::StartsWith(IntToStr(width) + ","));
        auto& second = NewInFolder<TKxOpenDialogEx>();
        Run(second, {{Perform("the details", [&] { EXPECT_EQ(second.FileListViewStyle(), lvsReport); }),
                      AwaitColumn(second, width),
                      Perform("look", [&] { Screenshot("remember-details", second.DlgHandle()); }), Cancel(second)}});
    }
}

TEST_F(RememberLook, EachFolderHasTheColumns) {
    auto& dialog = NewInFolder();
    Run(dialog, {ShowDetails(dialog, 211),
                 {GoTo(dialog, Folder.Path("inner")), AwaitColumn(dialog, 211), GoTo(dialog, Other.Path()),
                  AwaitColumn(dialog, 211), Cancel(dialog)}});
    EXPECT_THAT(TextAt("ColumnWidths"), testing::StartsWith("211,"));
}

TEST_F(RememberLook, ColumnsOfAFolderThatHasOthersAreLeftAlone) {
    Key.Write("ViewStyle", lvsReport);
    Key.Write("ColumnWidths", "11,12");
    auto& dialog = NewInFolder();
    Run(dialog, {{SetColumn(dialog, 90),
                  Perform("look",
                          [&] {
                              EXPECT_EQ(dialog.FileListViewStyle(), lvsReport);
                              EXPECT_NE(ColumnOf(ListOf(dialog), 1), 12);
                          }),
                  Cancel(dialog)}});
    EXPECT_THAT(TextAt("ColumnWidths"), testing::StartsWith("90,")) << "what the user changes here counts";
}

TEST_F(RememberLook, ColumnsThatTheUserDidNotChangeAreNotWritten) {
    auto& dialog = NewInFolder();
    Run(dialog, {{Perform("details", [&] { PressToolButton(dialog, ReportButton); }),
                  Await("they are shown", [&] { return dialog.FileListViewStyle() == lvsReport; }), AwaitLookedAfter(),
                  Cancel(dialog)}});
    EXPECT_EQ(Number("ViewStyle"), lvsReport);
    EXPECT_EQ(TextAt("ColumnWidths"), "");
}

TEST_F(RememberLook, ColumnsAreRememberedThoughTheUserTurnsToAnotherStyle) {
    auto& dialog = NewInFolder();
    Run(dialog, {ShowDetails(dialog, 211),
                 {Perform("icons", [&] { dialog.SetFileListViewStyle(lvsSmallIcon); }), Cancel(dialog)}});
    EXPECT_EQ(Number("ViewStyle"), lvsSmallIcon);
    EXPECT_THAT(TextAt("ColumnWidths"), testing::StartsWith("211,"));
    auto& second = NewInFolder();
    Run(second, {{Perform("look", [&] { EXPECT_EQ(second.FileListViewStyle(), lvsSmallIcon); }),
                  Perform("details", [&] { PressToolButton(second, ReportButton); }), AwaitColumn(second, 211),
                  Cancel(second)}});
}

TEST_F(RememberLook, AStyleThatTheProgramSetsIsStronger) {
    Key.Write("ViewStyle", lvsReport);
    auto& dialog = NewInFolder();
    dialog.SetOnShow([&](TObject*) { dialog.SetFileListViewStyle(lvsSmallIcon); });
    Look(dialog, [&] { EXPECT_EQ(dialog.FileListViewStyle(), lvsSmallIcon); });
}

TEST_F(RememberLook, AnEventMayRefuseTheStyle) {
    Key.Write("ViewStyle", lvsReport);
    auto& dialog = NewInFolder();
    dialog.SetOnSelectionStyleChanging([](TObject*, TViewStyle, bool& allow) { allow = false; });
    Look(dialog, [&] { EXPECT_EQ(dialog.FileListViewStyle(), lvsList); });
}

TEST_F(RememberLook, AStyleThatIsThereAlreadyIsNotSet) {
    Key.Write("ViewStyle", lvsList);
    auto& dialog = NewInFolder();
    int changes = 0;
    dialog.SetOnSelectionStyleChanging([&](TObject*, TViewStyle, bool&) { ++changes; });
    Look(dialog);
    EXPECT_EQ(changes, 0);
}

TEST_F(RememberLook, TheStylesEventMayFreeTheDialog) {
    Key.Write("ViewStyle", lvsReport);
    auto* dialog = &NewInFolder();
    dialog->SetOnSelectionStyleChange([&](TObject*, TViewStyle) { std::exchange(dialog, nullptr)->Free(); });
    EXPECT_FALSE(RunDialog([&] { return dialog->Execute(); }, {}));
    EXPECT_EQ(dialog, nullptr);
}

TEST_F(RememberLook, WithoutAKeyTheLookIsTheShells) {
    Key.Write("ViewStyle", lvsReport);
    auto& dialog = NewInFolder();
    Look(dialog, [&] { EXPECT_EQ(dialog.FileListViewStyle(), lvsReport); });
    dialog.SetRememberKey("");
    Look(dialog, [&] { EXPECT_EQ(dialog.FileListViewStyle(), lvsList); });
}

TEST_F(RememberLook, TheSizeWithPlacesIsThatOfTheDialogAlone) {
    auto& dialog = NewInFolder();
    dialog.PlacesBar().SetNative(false);
    TPoint size{};
    Look(dialog, [&] {
        Resize(dialog, 30, 20);
        size = SizeOf(dialog);
    });
    auto& again = NewInFolder();
    again.PlacesBar().SetNative(false);
    Look(again, [&] {
        EXPECT_EQ(SizeOf(again), size);
        ExpectCleanLayout(again);
    });
    auto& plain = NewInFolder();
    plain.PlacesBar().SetVisible(false);
    Look(plain, [&] { EXPECT_EQ(SizeOf(plain), (TPoint{size.X - 87, size.Y})); });
}

} // namespace
} // namespace kx::test
