// File dialogs that remember what the user did.

#include "OpenDialogTest.h"

#include "kx/opensave/KxOpenDlgEx.h"
#include "kx/opensave/KxSaveDlg.h"
#include "kx/win/Registry.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/TestKey.h"

#include <commdlg.h>

namespace kx::test {
namespace {

constexpr const char* Filter = "All|*.*|Text|*.txt|Logs|*.log";
constexpr WORD ReportButton = 40964;

TPoint operator+(TPoint a, TPoint b) { return {a.X + b.X, a.Y + b.Y}; }
TPoint operator-(TPoint a, TPoint b) { return {a.X - b.X, a.Y - b.Y}; }

class Remember : public TFileDlgTest {
protected:
    Remember() {
        Folder.AddFile("inner\\deep.txt");
        Other.AddFile("other.txt");
        RECT area{};
        SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
        WorkArea = {area.right - area.left, area.bottom - area.top};
    }

    /// A new dialog that remembers, and says nothing of its folder.
    template <class T> T& New() {
        auto* dialog = new T(Owner.get());
        dialog->SetFilter(Filter);
        dialog->SetRememberKey(Key.Path());
        return *dialog;
    }
    void Write(const char* name, int value) const {
        TRegistry registry;
        registry.OpenKey(Key.Path(), true);
        registry.WriteInteger(name, value);
    }
    void Write(const char* name, const std::string& value) const {
        TRegistry registry;
        registry.OpenKey(Key.Path(), true);
        registry.WriteString(name, value);
    }
    int Number(const char* name) const {
        TRegistry registry;
        return registry.OpenKeyReadOnly(Key.Path()) && registry.ValueExists(name) ? registry.ReadInteger(name) : -1;
    }
    std::string TextAt(const char* name) const {
        TRegistry registry;
        return registry.OpenKeyReadOnly(Key.Path()) ? registry.ReadString(name) : std::string();
    }

    static TPoint SizeOf(const TKxFileDlgCore& dialog) {
        const TRect r = ScreenRectOf(dialog.DlgHandle());
        return {Width(r), Height(r)};
    }
    static int FilterOf(const TKxFileDlgCore& dialog) {
        return static_cast<int>(SendMessageA(GetDlgItem(dialog.DlgHandle(), KxFileTypeId), CB_GETCURSEL, 0, 0)) + 1;
    }
    /// Chooses a filter as the user does.
    static void ChooseFilter(const TKxFileDlgCore& dialog, int index) {
        HWND types = GetDlgItem(dialog.DlgHandle(), KxFileTypeId);
        SendMessageA(types, CB_SETCURSEL, static_cast<WPARAM>(index - 1), 0);
        SendMessageA(dialog.DlgHandle(), WM_COMMAND, MAKEWPARAM(KxFileTypeId, CBN_SELENDOK),
                     reinterpret_cast<LPARAM>(types));
    }
    static void Resize(const TKxFileDlgCore& dialog, int dx, int dy) {
        const TPoint size = SizeOf(dialog);
        SetWindowPos(dialog.DlgHandle(), nullptr, 0, 0, size.X + dx, size.Y + dy,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    /// What the dialog has besides the system's own part: forms, a bar of places.
    static TPoint ExtraOf(TKxFileDlgCore& dialog) {
        return {dialog.CustDlgParams().IncX(), dialog.CustDlgParams().IncY()};
    }
    static int ColumnOf(HWND list, int index) {
        return static_cast<int>(SendMessageA(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(index), 0));
    }

    TTestKey Key;
    TTempFolder Other{"other"};
    TPoint WorkArea{};
};

/// What all file dialogs remember, whatever their class.
struct TKind {
    const char* Name;
    TOpenDialog& (*Make)(TForm& owner, const std::string& key);
};

template <class T> TOpenDialog& MakeKind(TForm& owner, const std::string& key) {
    auto* const dialog = new T(&owner);
    dialog->SetFilter(Filter);
    dialog->SetRememberKey(key);
    return *dialog;
}

class RememberAll : public Remember, public testing::WithParamInterface<TKind> {
protected:
    TOpenDialog& Make() { return Make(Key.Path()); }
    TOpenDialog& Make(const std::string& key) { return GetParam().Make(*Owner, key); }
    static TKxFileDlgCore& Core(TOpenDialog& dialog) { return dynamic_cast<TKxFileDlgCore&>(dialog); }
};

INSTANTIATE_TEST_SUITE_P(Kinds, RememberAll,
                         testing::Values(TKind{"Open", MakeKind<TKxOpenDialog>}, TKind{"Save", MakeKind<TKxSaveDialog>},
                                         TKind{"OpenEx", MakeKind<TKxOpenDialogEx>},
                                         TKind{"OpenLite", MakeKind<TKxOpenLiteDialog>},
                                         TKind{"SaveLite", MakeKind<TKxSaveLiteDialog>}),
                         [](const auto& each) { return std::string(each.param.Name); });

TEST_P(RememberAll, BeginsInTheFolderAndWithTheFilterAndSizeOfTheLastChoice) {
    auto& first = Make();
    first.SetInitialDir(Folder.Path());
    TPoint size{};
    EXPECT_TRUE(RunDialog(first,
                          [&] {
                              Resize(Core(first), 40, 30);
                              size = SizeOf(Core(first));
                              ChooseFilter(Core(first), 2);
                          },
                          {EnterFileName(first, "one.txt")}));
    EXPECT_EQ(TextAt("Folder"), Folder.Path());
    EXPECT_EQ(Number("FilterIndex"), 2);
    auto& second = Make();
    Look(second, [&] {
        EXPECT_EQ(Core(second).SelectedFolder(), Folder.Path());
        EXPECT_EQ(FilterOf(Core(second)), 2);
        EXPECT_EQ(SizeOf(Core(second)), size);
        ExpectCleanLayout(Core(second));
        Screenshot(std::string("remember-") + GetParam().Name, Core(second).DlgHandle());
    });
    EXPECT_EQ(second.InitialDir(), "") << "what the program has set is as it was";
    EXPECT_EQ(second.FilterIndex(), 1);
}

TEST_P(RememberAll, ACancelledDialogKeepsItsSizeButNeitherFolderNorFilter) {
    Write("Folder", Other.Path());
    Write("FilterIndex", 3);
    auto& dialog = Make();
    TPoint size{};
    Look(dialog, [&] {
        EXPECT_EQ(FilterOf(Core(dialog)), 3);
        Resize(Core(dialog), 40, 30);
        size = SizeOf(Core(dialog));
        Core(dialog).SetSelectedFolder(Folder.Path());
        ChooseFilter(Core(dialog), 2);
    });
    EXPECT_EQ(TextAt("Folder"), Other.Path());
    EXPECT_EQ(Number("FilterIndex"), 3);
    auto& second = Make();
    Look(second, [&] {
        EXPECT_EQ(SizeOf(Core(second)), size);
        EXPECT_EQ(Core(second).SelectedFolder(), Other.Path());
        EXPECT_EQ(FilterOf(Core(second)), 3);
    });
}

TEST_P(RememberAll, WhatTheProgramSaysIsStronger) {
    Write("Folder", Other.Path());
    Write("FilterIndex", 3);
    Write("Width", 700);
    Write("Height", 500);
    auto& dialog = Make();
    dialog.SetInitialDir(Folder.Path());
    dialog.SetFilterIndex(2);
    dialog.SetOptions(dialog.Options() - TOpenOptions{ofEnableSizing});
    Look(dialog, [&] {
        EXPECT_EQ(Core(dialog).SelectedFolder(), Folder.Path());
        EXPECT_EQ(FilterOf(Core(dialog)), 2);
        EXPECT_NE(SizeOf(Core(dialog)), (TPoint{700, 500}));
    });
    EXPECT_EQ(Number("Width"), 700) << "a size that the user cannot change is not his";
    auto& named = Make();
    named.SetFileName(Folder.Path("one.txt"));
    Look(named, [&] { EXPECT_EQ(Core(named).SelectedFolder(), Folder.Path()); });
    auto& nameless = Make();
    nameless.SetFileName("one.txt");
    Look(nameless, [&] {
        EXPECT_EQ(Core(nameless).SelectedFolder(), Other.Path()) << "a name alone says nothing of a folder";
        EXPECT_EQ(SizeOf(Core(nameless)), (TPoint{700, 500}) + ExtraOf(Core(nameless)));
    });
}

TEST_P(RememberAll, ADialogOfFixedSizeIsNotClipped) {
    Write("Width", 700);
    Write("Height", 500);
    const TFormPtr bottom = MakeMarkedForm(clSkyBlue, 60, WorkArea.Y);
    auto& dialog = Make();
    dialog.SetOptions(dialog.Options() - TOpenOptions{ofEnableSizing});
    Core(dialog).CustDlgParams().SetBottomForm(bottom.get());
    Look(dialog, [&] { EXPECT_GT(SizeOf(Core(dialog)).Y, WorkArea.Y); });
}

TEST_P(RememberAll, WithoutAKeyNothingIsRemembered) {
    auto& dialog = Make("");
    dialog.SetInitialDir(Folder.Path());
    EXPECT_TRUE(RunDialog(dialog, {EnterFileName(dialog, "one.txt")}));
    EXPECT_FALSE(TRegistry().KeyExists(Key.Path()));
}

TEST_P(RememberAll, BrokenValuesMeanNothingToRecall) {
    TPoint size{};
    auto& plain = Make("");
    Look(plain, [&] { size = SizeOf(Core(plain)); });
    Write("Folder", Folder.Path("nothing"));
    Write("FilterIndex", 4);
    Write("Width", "wide");
    Write("Height", 500);
    Write("ViewStyle", 99);
    Write("ColumnWidths", "1,2,many");
    auto& dialog = Make();
    Look(dialog, [&] {
        EXPECT_EQ(SizeOf(Core(dialog)), size);
        EXPECT_EQ(FilterOf(Core(dialog)), 1) << "there are three";
        EXPECT_NE(Core(dialog).SelectedFolder(), Folder.Path("nothing"));
    });
}

TEST_P(RememberAll, ASizeBeyondTheScreenIsClippedToIt) {
    Write("Width", 30000);
    Write("Height", 30000);
    const TFormPtr bottom = MakeMarkedForm(clSkyBlue, 60, 70);
    auto& dialog = Make();
    Core(dialog).CustDlgParams().SetBottomForm(bottom.get());
    Look(dialog, [&] { EXPECT_EQ(SizeOf(Core(dialog)), WorkArea) << "with all that is docked"; });
    auto& narrow = Make();
    Write("Width", 700);
    Write("Height", 30000);
    Look(narrow, [&] { EXPECT_EQ(SizeOf(Core(narrow)), (TPoint{700 + ExtraOf(Core(narrow)).X, WorkArea.Y})); });
}

TEST_P(RememberAll, TheSizeIsThatWithoutTheDockedForms) {
    const TFormPtr right = MakeMarkedForm(clSkyBlue, 90, 70);
    auto& dialog = Make();
    Core(dialog).CustDlgParams().SetBottomForm(right.get());
    TPoint with{};
    int extra = 0;
    Look(dialog, [&] {
        Resize(Core(dialog), 40, 30);
        with = SizeOf(Core(dialog));
        extra = Core(dialog).CustDlgParams().IncY();
    });
    EXPECT_GE(extra, 70);
    auto& plain = Make();
    Look(plain, [&] {
        EXPECT_EQ(SizeOf(Core(plain)), (TPoint{with.X, with.Y - extra + Core(plain).CustDlgParams().IncY()}));
    });
}

TEST_P(RememberAll, AKeyThatCannotBeMadeIsPassedOver) {
    constexpr size_t tooLong = 300; // characters in the name of a key
    auto& dialog = Make(Key.Path() + '\\' + std::string(tooLong, 'k'));
    dialog.SetInitialDir(Folder.Path());
    EXPECT_TRUE(RunDialog(dialog, {EnterFileName(dialog, "one.txt")}));
    EXPECT_EQ(dialog.FileName(), Folder.Path("one.txt"));
    EXPECT_FALSE(TRegistry().KeyExists(Key.Path()));
}

TEST_P(RememberAll, ADialogThatIsFreedMeanwhileKeepsNothing) {
    auto* dialog = &Make();
    EXPECT_FALSE(RunDialog(*dialog, [&] { std::exchange(dialog, nullptr)->Free(); }));
    EXPECT_FALSE(TRegistry().KeyExists(Key.Path()));
}

TEST_P(RememberAll, ToExecuteARunningDialogDisturbsNothing) {
    auto& dialog = Make();
    dialog.SetInitialDir(Folder.Path());
    TPoint size{};
    EXPECT_TRUE(RunDialog(dialog,
                          [&] {
                              Write("Width", 900);
                              Write("Height", 650);
                              EXPECT_THROW(dialog.Execute(), EInvalidOperation);
                              Resize(Core(dialog), 40, 30);
                              size = SizeOf(Core(dialog)) - ExtraOf(Core(dialog));
                          },
                          {EnterFileName(dialog, "one.txt")}));
    EXPECT_EQ((TPoint{Number("Width"), Number("Height")}), size);
    EXPECT_EQ(TextAt("Folder"), Folder.Path());
}

TEST_P(RememberAll, ANewKeyHoldsFromTheNextExecuteOn) {
    auto& dialog = Make();
    dialog.SetInitialDir(Folder.Path());
    const std::string other = Key.Path() + "\\Other";
    EXPECT_TRUE(RunDialog(dialog, [&] { Core(dialog).SetRememberKey(other); }, {EnterFileName(dialog, "one.txt")}));
    EXPECT_EQ(TextAt("Folder"), Folder.Path());
    EXPECT_FALSE(TRegistry().KeyExists(other));
}

/// Notes what the system is given.
struct TPeek : TKxOpenDialog {
    using TKxOpenDialog::TKxOpenDialog;
    std::string FirstFolder() const override { return GivenFolder = TKxOpenDialog::FirstFolder(); }
    int FirstFilterIndex() const override { return GivenFilter = TKxOpenDialog::FirstFilterIndex(); }
    mutable std::string GivenFolder;
    mutable int GivenFilter = 0;
};

TEST_F(Remember, TheSystemIsGivenNothingThatItWouldHaveToCorrect) {
    Write("Folder", Other.Path());
    Write("FilterIndex", 4); // there are three
    auto& dialog = New<TPeek>();
    Look(dialog);
    EXPECT_EQ(dialog.GivenFilter, 1);
    EXPECT_EQ(dialog.GivenFolder, Other.Path());
    dialog.SetFileName(Folder.Path("one.txt"));
    Look(dialog);
    EXPECT_EQ(dialog.GivenFolder, "") << "the name has a folder";
    dialog.SetFilter("All|*.*|Text|*.txt|Logs|*.log|Rest|*.rest");
    Look(dialog);
    EXPECT_EQ(dialog.GivenFilter, 4);
    Write("FilterIndex", 0);
    Look(dialog);
    EXPECT_EQ(dialog.GivenFilter, 1);
}

BOOL WINAPI ShowNothing(OPENFILENAMEA*) { return FALSE; }
LSTATUS WINAPI RefuseValue(HKEY, LPCSTR, DWORD, DWORD, const BYTE*, DWORD) { return ERROR_ACCESS_DENIED; }

TEST_F(Remember, ADialogThatTheSystemDoesNotShowKeepsNothing) {
    auto& dialog = New<TKxOpenLiteDialog>();
    const TImportPatch patch("GetOpenFileNameA", reinterpret_cast<void*>(ShowNothing));
    EXPECT_FALSE(dialog.Execute());
    EXPECT_FALSE(TRegistry().KeyExists(Key.Path()));
}

TEST_F(Remember, WhatCannotBeWrittenIsReportedAndTheChoiceStands) {
    auto& dialog = New<TKxOpenDialog>();
    dialog.SetInitialDir(Folder.Path());
    {
        const TImportPatch patch("RegSetValueExA", reinterpret_cast<void*>(RefuseValue));
        EXPECT_TRUE(RunDialog(dialog, {EnterFileName(dialog, "one.txt")}));
    }
    EXPECT_EQ(dialog.FileName(), Folder.Path("one.txt"));
    EXPECT_THAT(TakeExceptions(), ElementsAre("Failed to set data for 'Width'"));
}

// --- The look of the file list

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
    static void Run(TKxOpenDialog& dialog, std::vector<std::vector<TStep>> parts) {
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
    Write("ViewStyle", lvsReport);
    Write("ColumnWidths", "11,12");
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
    Write("ViewStyle", lvsReport);
    auto& dialog = NewInFolder();
    dialog.SetOnShow([&](TObject*) { dialog.SetFileListViewStyle(lvsSmallIcon); });
    Look(dialog, [&] { EXPECT_EQ(dialog.FileListViewStyle(), lvsSmallIcon); });
}

TEST_F(RememberLook, AnEventMayRefuseTheStyle) {
    Write("ViewStyle", lvsReport);
    auto& dialog = NewInFolder();
    dialog.SetOnSelectionStyleChanging([](TObject*, TViewStyle, bool& allow) { allow = false; });
    Look(dialog, [&] { EXPECT_EQ(dialog.FileListViewStyle(), lvsList); });
}

TEST_F(RememberLook, AStyleThatIsThereAlreadyIsNotSet) {
    Write("ViewStyle", lvsList);
    auto& dialog = NewInFolder();
    int changes = 0;
    dialog.SetOnSelectionStyleChanging([&](TObject*, TViewStyle, bool&) { ++changes; });
    Look(dialog);
    EXPECT_EQ(changes, 0);
}

TEST_F(RememberLook, TheStylesEventMayFreeTheDialog) {
    Write("ViewStyle", lvsReport);
    auto* dialog = &NewInFolder();
    dialog->SetOnSelectionStyleChange([&](TObject*, TViewStyle) { std::exchange(dialog, nullptr)->Free(); });
    EXPECT_FALSE(RunDialog([&] { return dialog->Execute(); }, {}));
    EXPECT_EQ(dialog, nullptr);
}

TEST_F(RememberLook, WithoutAKeyTheLookIsTheShells) {
    Write("ViewStyle", lvsReport);
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
