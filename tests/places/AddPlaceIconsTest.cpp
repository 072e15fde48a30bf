// SPDX-License-Identifier: MIT
// The icons among which a place's are chosen.

#include "AddPlaceFixture.h"
#include "IconLibrary.h"

#include "kx/places/KxPlacesStrings.h"

#include <dlgs.h>

namespace kx {
namespace {

using namespace test;

/// The dialog and a library of 200 icons, each of a colour of its own.
class AddPlaceIcons : public AddPlaceForm {
protected:
    AddPlaceIcons() : Library(MakeIconLibrary(Folder, "icons.dll", 200)) {}

    void LoadIcons(const std::string& file) {
        Form->eIconLib->SetText(file);
        Click(Form->btnShowIcons);
        ASSERT_TRUE(PumpUntil([&] { return MouseInputTaken() && Form->IconLib() == file; }));
        MoveMouse({5, 5});
        UpdateGrids();
    }
    void Click(const TSpeedButton* button) { ClickAt(button->Parent()->ClientToScreen(MiddleOf(*button))); }
    static TPoint MiddleOf(const TControl& control) {
        return {control.Left() + control.Width() / 2, control.Top() + control.Height() / 2};
    }
    void UpdateGrids() {
        Form->dg1->Update();
        Form->dg2->Update();
    }
    /// What a user sees in a cell: a pixel 8 beside its middle.
    static TColor ColorIn(TDrawGrid& grid, int col) {
        const TRect r = grid.CellRect(col, 0);
        return At(grid, (r.Left + r.Right) / 2 - 8, (r.Top + r.Bottom) / 2);
    }
    static TColor At(TDrawGrid& grid, int x, int y) {
        const HDC dc = GetDC(grid.Handle());
        const COLORREF color = GetPixel(dc, x, y);
        ReleaseDC(grid.Handle(), dc);
        return static_cast<TColor>(color);
    }
    void ExpectIcons(TDrawGrid& grid) {
        for (int i = 0; i < 3; ++i) {
            const int col = grid.LeftCol() + i;
            EXPECT_EQ(ColorIn(grid, col), IconColor(col)) << grid.Name() << ", column " << col;
        }
    }
    /// The icon in a message box.
    static HICON IconOf(HWND box) {
        for (HWND text = nullptr; (text = FindWindowExA(box, text, "Static", nullptr)) != nullptr;) {
            if ((GetWindowLongA(text, GWL_STYLE) & SS_TYPEMASK) == SS_ICON) {
                return reinterpret_cast<HICON>(SendMessageA(text, STM_GETICON, 0, 0));
            }
        }
        return nullptr;
    }
    /// Presses the button that loads the icons and answers the box that tells of a file without any.
    void LoadWithout(const std::string& file) {
        Form->eIconLib->SetText(file);
        RunDialog(
            [&] {
                Form->btnShowIconsClick(Form->btnShowIcons);
                return true;
            },
            {AnswerBox(IDOK, [](const std::string& text) {
                EXPECT_EQ(text, FromUtf8("Die Datei enthält keine Icons"));
                EXPECT_EQ(TextOf(ShownMessageBox()), "New place - Icon library");
                EXPECT_EQ(IconOf(ShownMessageBox()), LoadIconA(nullptr, IDI_HAND));
            })});
    }

    const TTempFolder Folder;
    const std::string Library;
};

TEST_F(AddPlaceIcons, TwoHundredIconsAreTwoHundredColumnsOf40Pixels) {
    Show();
    LoadIcons(Library);
    for (TDrawGrid* grid : {Form->dg1, Form->dg2}) {
        SCOPED_TRACE(grid->Name());
        EXPECT_EQ(grid->ColCount(), 200);
        EXPECT_EQ(grid->RowCount(), 1);
        EXPECT_EQ(grid->FixedCols(), 0);
        EXPECT_EQ(grid->FixedRows(), 0);
        const TRect cell = grid->CellRect(1, 0);
        EXPECT_EQ(cell.Right - cell.Left, 40);
        EXPECT_EQ(cell.Bottom - cell.Top, 40);
        ExpectIcons(*grid);

        const LONG style = GetWindowLongA(grid->Handle(), GWL_STYLE);
        EXPECT_TRUE(style & WS_HSCROLL);
        EXPECT_FALSE(style & WS_VSCROLL);
        const TRect bounds = ScreenRectOf(grid->Handle());
        const int edge = GetSystemMetrics(SM_CXEDGE);
        const int arrow = GetSystemMetrics(SM_CXHSCROLL);
        ClickAt({bounds.Right - edge - arrow / 2, bounds.Bottom - edge - GetSystemMetrics(SM_CYHSCROLL) / 2});
        EXPECT_TRUE(PumpUntil([&] { return grid->LeftCol() == 1; })) << "the arrow scrolls by a column";
        SendMessageA(grid->Handle(), WM_HSCROLL, SB_BOTTOM, 0);
        EXPECT_EQ(grid->LeftCol() + grid->VisibleColCount(), 200);
        grid->Update();
        ExpectIcons(*grid);
    }
}

TEST_F(AddPlaceIcons, TheChosenColumnsBecomeThePlacesIcons) {
    const TModalResult result = ShowModal(
        {Perform("the button that loads the icons",
                 [this] {
                     Form->eIconLib->SetText(Library);
                     Click(Form->btnShowIcons);
                 }),
         {"the icons", [this] { return Form->dg2->ColCount() == 200; }, {}},
         Perform("the third", [this] { ClickAt(CellOf(*Form->dg1, 2)); }),
         {"its choice", [this] { return Form->dg1->Col() == 2; },
          [this] {
              Form->dg2->SetLeftCol(100);
              Form->dg2->Update();
              ClickAt(CellOf(*Form->dg2, 101));
          }},
         {"the choice by the mouse", [this] { return Form->dg2->Col() == 101; }, [] { PressKey(VK_RIGHT); }},
         {"the choice by the keyboard", [this] { return Form->dg2->Col() == 102; }, [] { PressKey(VK_RETURN); }}});
    EXPECT_EQ(result, mrOk);
    ASSERT_EQ(Places.Count(), 1);
    EXPECT_EQ(Places[0].PlaceIconDll(), Library);
    EXPECT_EQ(Places[0].PlaceIcon(), 2);
    EXPECT_EQ(Places[0].PlaceHotIcon(), 102);
}

TEST_F(AddPlaceIcons, TheIconIsCentredInItsCell) {
    Show();
    LoadIcons(Library);
    const TRect cell = Form->dg1->CellRect(1, 0);
    const int left = cell.Left + 4; // 32 of 40 pixels
    const int top = cell.Top + 4;
    EXPECT_EQ(At(*Form->dg1, left, top), IconColor(1));
    EXPECT_EQ(At(*Form->dg1, left - 1, top), ColorToRGB(clWindow));
    EXPECT_EQ(At(*Form->dg1, left + 31, top), IconColor(1));
    EXPECT_EQ(At(*Form->dg1, left + 32, top), ColorToRGB(clWindow));
}

TEST_F(AddPlaceIcons, TheCellWithTheFocusHasTheColourOfActiveCaptions) {
    Show();
    LoadIcons(Library);
    Form->dg1->SetFocus();
    Form->dg1->Update();
    const TRect cell = Form->dg1->CellRect(0, 0);
    EXPECT_EQ(At(*Form->dg1, cell.Left + 2, cell.Top + 2), ColorToRGB(clActiveCaption));
    EXPECT_EQ(At(*Form->dg1, cell.Right + 3, cell.Top + 2), ColorToRGB(clWindow));
    Form->dg2->SetFocus();
    Form->dg1->Update();
    EXPECT_EQ(At(*Form->dg1, cell.Left + 2, cell.Top + 2), ColorToRGB(clHighlight)) << "still chosen";
}

TEST_F(AddPlaceIcons, OnlyTheFirstRowIsDrawnAndANegativeColumnIsARangeError) {
    Show();
    const TRect cell{0, 0, 40, 40};
    Form->dg1DrawCell(Form->dg1, -1, 0, cell, {}); // without a library
    LoadIcons(Library);
    EXPECT_THROW(Form->dg1DrawCell(Form->dg1, -1, 0, cell, {}), ERangeError);
    EXPECT_THROW(Form->dg2DrawCell(Form->dg2, -1, 0, cell, {}), ERangeError);
    Form->dg1DrawCell(Form->dg1, -1, 1, cell, {});
    Form->dg1DrawCell(Form->dg1, 5, 1, cell, {});
    EXPECT_EQ(ColorIn(*Form->dg1, 0), IconColor(0));
    Form->dg1DrawCell(Form->dg1, 200, 0, cell, {}); // there is no such icon
    EXPECT_EQ(ColorIn(*Form->dg1, 0), IconColor(0));
}

TEST_F(AddPlaceIcons, AnIconThatHasBeenSeenIsNotExtractedAgain) {
    Show();
    LoadIcons(Library);
    ExpectIcons(*Form->dg1);
    Form->dg1->SetLeftCol(50);
    Form->dg1->Update();
    ASSERT_TRUE(DeleteFileA(Library.c_str()));
    for (TDrawGrid* grid : {Form->dg1, Form->dg2}) {
        for (const int left : {0, 50, 0, 1}) {
            grid->SetLeftCol(left);
            grid->Invalidate();
            grid->Update();
            ExpectIcons(*grid);
        }
    }
    Form->dg1->SetLeftCol(100);
    Form->dg1->Update();
    EXPECT_EQ(ColorIn(*Form->dg1, 101), ColorToRGB(clWindow)) << "one that has not been seen was not extracted before";
}

TEST_F(AddPlaceIcons, AnotherLibraryReplacesTheIconsOfTheFirst) {
    Show();
    LoadIcons(Library);
    const std::string second = MakeIconLibrary(Folder, "few.dll", 3, 70);
    LoadIcons(second);
    EXPECT_EQ(Form->dg1->ColCount(), 3);
    EXPECT_EQ(Form->dg2->ColCount(), 3);
    EXPECT_EQ(ColorIn(*Form->dg1, 1), IconColor(71));
    ASSERT_TRUE(DeleteFileA(second.c_str()));
    MakeIconLibrary(Folder, "few.dll", 4, 90);
    LoadIcons(second);
    EXPECT_EQ(Form->dg1->ColCount(), 4);
    EXPECT_EQ(ColorIn(*Form->dg1, 1), IconColor(91)) << "the button reads the file anew";
}

TEST_F(AddPlaceIcons, AFileWithoutIconsIsToldAndEmptiesTheGrids) {
    Show();
    LoadIcons(Library);
    for (const std::string& file :
         {Folder.Path("no such file.dll"), Folder.AddFile("text.txt", "no icons"), Folder.AddFile("empty.ico"),
          Folder.Path(), std::string("kernel32.dll"), std::string()}) {
        SCOPED_TRACE(file);
        LoadWithout(file);
        EXPECT_EQ(Form->dg1->ColCount(), 0);
        EXPECT_EQ(Form->dg2->ColCount(), 0);
        EXPECT_EQ(Form->IconLib(), Library) << "the last one that had icons";
        EXPECT_TRUE(Form->Visible());
        UpdateGrids();
    }
    Form->Button1->Click();
    ASSERT_EQ(Places.Count(), 1);
    EXPECT_EQ(Places[0].PlaceIcon(), 0);
}

TEST_F(AddPlaceIcons, APlaceKeepsTheIconThatItsFileDoesNotHave) {
    TKxPlace& place = *Places.Add();
    place.SetPlaceIconDll(Library);
    place.SetPlaceIcon(500);
    place.SetPlaceHotIcon(-3);
    Edit(place);
    EXPECT_EQ(ShowModal({PressOk()}), mrOk);
    EXPECT_EQ(place.PlaceIcon(), 500);
    EXPECT_EQ(place.PlaceHotIcon(), -3);

    EXPECT_EQ(ShowModal({Perform("click the first icon", [this] { ClickAt(CellOf(*Form->dg1, 0)); }),
                         {"the focus", [this] { return Form->dg1->Focused(); }, {}},
                         PressOk()}),
              mrOk);
    EXPECT_EQ(place.PlaceIcon(), 0) << "now it is chosen";
    EXPECT_EQ(place.PlaceHotIcon(), -3);
}

TEST_F(AddPlaceIcons, AMissingLibraryDoesNotCostAPlaceItsIcons) {
    TKxPlace& place = *Places.Add();
    place.SetPlaceIconDll(Folder.Path("gone.dll"));
    place.SetPlaceIcon(7);
    place.SetPlaceHotIcon(8);
    Form->SetPlace(&place);
    RunDialog(
        [&] {
            Form->InitControls();
            return true;
        },
        {AnswerBox(IDOK)});
    EXPECT_EQ(ShowModal({PressOk()}), mrOk);
    EXPECT_EQ(place.PlaceIcon(), 7);
    EXPECT_EQ(place.PlaceHotIcon(), 8);

    Form->eIconLib->SetText(Library);
    Form->btnShowIconsClick(nullptr);
    EXPECT_EQ(Form->dg1->Col(), 7) << "the library is back";
    EXPECT_EQ(Form->dg1->LeftCol(), 7);
    EXPECT_EQ(Form->dg2->Col(), 8);
}

TEST_F(AddPlaceIcons, AFileWithoutIconsBringsThePlacesOwnIconBack) {
    TKxPlace& place = *Places.Add();
    place.SetPlaceIconDll(Library);
    place.SetPlaceIcon(3);
    place.SetPlaceHotIcon(4);
    Edit(place);
    Show();
    Form->dg1->SetCol(9);
    LoadWithout(Folder.Path("no such file.dll"));
    Form->Button1->Click();
    EXPECT_EQ(place.PlaceIcon(), 3) << "not the one of a file that is not meant any more";
    EXPECT_EQ(place.PlaceHotIcon(), 4);
}

TEST_F(AddPlaceIcons, APressBesideTheIconsChoosesNone) {
    TKxPlace& place = *Places.Add();
    place.SetPlaceIconDll(MakeIconLibrary(Folder, "two.dll", 2));
    place.SetPlaceIcon(50);
    place.SetPlaceHotIcon(60);
    Edit(place);
    Show();
    ClickAt(Form->dg1->ClientToScreen({Form->dg1->ClientWidth() - 5, 10})); // where a third icon would be
    ASSERT_TRUE(PumpUntil([this] { return MouseInputTaken() && Form->dg1->Focused(); }));
    ClickAt(CellOf(*Form->dg2, 0), mbRight);
    ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
    LoadWithout(Folder.Path("no such file.dll"));
    Form->dg1->SetColCount(0);
    ClickAt(Form->dg1->ClientToScreen({10, 10}));
    ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
    Form->Button1->Click();
    EXPECT_EQ(place.PlaceIcon(), 50);
    EXPECT_EQ(place.PlaceHotIcon(), 60);
}

// --- The dialog for the file

TEST_F(AddPlaceIcons, AFileIsChosenInTheSystemsDialogAndItsIconsAreNotLoadedYet) {
    Show();
    LoadIcons(Library);
    const std::string second = MakeIconLibrary(Folder, "few.dll", 3);
    const auto dialogShown = [] { return ActiveDialog() != nullptr && FileListOf(ActiveDialog()) != nullptr; };
    const auto browse = [&](int button) {
        RunDialog(
            [&] {
                Form->btnBrowseLib->Click();
                return true;
            },
            {{"the dialog", dialogShown, [&, button] {
                  const HWND dialog = ActiveDialog();
                  EXPECT_EQ(TextOf(dialog), "Suche nach einer Icondatei");
                  EXPECT_EQ(TextOf(FileNameEditOf(dialog)), "icons.dll");
                  const HWND types = GetDlgItem(dialog, cmb1);
                  ASSERT_EQ(SendMessageA(types, CB_GETCOUNT, 0, 0), 3);
                  char text[200] = {};
                  SendMessageA(types, CB_GETLBTEXT, 0, reinterpret_cast<LPARAM>(text));
                  EXPECT_EQ(std::string(text).substr(0, FromUtf8("Ausführbare Dateien").size()),
                            FromUtf8("Ausführbare Dateien"));
                  SetWindowTextA(FileNameEditOf(dialog), second.c_str());
                  PressButton(GetDlgItem(dialog, button));
              }}});
    };
    browse(IDCANCEL);
    EXPECT_EQ(Form->eIconLib->Text(), Library);
    browse(IDOK);
    EXPECT_TRUE(SameText(Form->eIconLib->Text(), second)) << Form->eIconLib->Text();
    EXPECT_EQ(Form->IconLib(), Library);
    EXPECT_EQ(Form->dg1->ColCount(), 200);
    Click(Form->btnShowIcons);
    EXPECT_TRUE(PumpUntil([&] { return Form->dg1->ColCount() == 3; }));
}

TEST_F(AddPlaceForm, TheTextsAreThoseOfThePlacesBar) {
    EXPECT_EQ(LoadPlacesString(SKxFileWithoutIcons), FromUtf8("Die Datei enthält keine Icons"));
    EXPECT_EQ(LoadPlacesString(SKxIconFileFilter),
              FromUtf8("Ausführbare Dateien|*.exe;*.dll;*.ocx;*.bpl;*.cpl;|Icon-Dateien|*.ico|Alle Dateien|*.*"));
    EXPECT_EQ(LoadPlacesString(SKxIconFileTitle), "Suche nach einer Icondatei");
    EXPECT_EQ(LoadPlacesString(SKxConfirmPlaceDelete),
              FromUtf8("Wollen Sie diesen Verzeichnis-Shortcut wirklich löschen ?"));
}

} // namespace
} // namespace kx
