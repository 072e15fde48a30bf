// SPDX-License-Identifier: MIT
#pragma once

#include "PlacesFixture.h"
#include "kx/places/KxPlacesBarForm.h"
#include "kx/win/Handles.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/TestDriver.h"
#include "tests/support/TestForms.h"

#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <vector>

namespace kx::test {

/// A places bar as a dialog shows it, but in a window of the test's.
class TPlacesBarTest : public testing::Test {
protected:
    TPlacesBarTest();
    ~TPlacesBarTest() override;

    /// Has the options' places make their buttons and shows the bar, 87 by 232 pixels.
    void Show();
    /// Places of these captions, without paths, with icons of the shell's library from `icon` on.
    void AddPlaces(std::initializer_list<const char*> captions, int icon = 3);
    void Rebuild() { Options.Places().UpdatePlacesOn(*Frm->ToolBar1); }

    TKxPlaceButton& Button(int index) const { return dynamic_cast<TKxPlaceButton&>(*Frm->ToolBar1->Buttons(index)); }
    std::vector<std::string> ButtonCaptions() const;
    TPoint Middle(int index) const { return Button(index).ClientToScreen({40, 20}); }
    void MoveAway() const { MoveMouse({5, 5}); }
    /// Drags one button onto another with the mouse. The last move is one within the target.
    void DragButton(int from, int to) { DragButton(from, Middle(to)); }
    void DragButton(int from, const TPoint& end);
    /// Opens the menu over a button with the mouse, and chooses the item.
    std::vector<TStep> ChooseFromMenu(int index, const TMenuItem& item);

    TKxPlacesBarOptions Options;
    TFormPtr Host;        ///< The window that the bar is in.
    TKxPlacesBarFrm* Frm; ///< Null when the test has freed it.
    TExceptionLog Log;
    std::vector<std::string> ExpectedErrors; ///< Of exceptions that reach the application.
};

/// Logs what it is told.
class TLoggingHost final : public IKxPlacesHost {
public:
    HWND GetCommonDialogHandle() const override { return nullptr; }
    std::string GetSelPath() const override { return "here"; }
    void SetSelPath(const std::string& path) override {
        Log.push_back(path);
        if (OnSetSelPath) {
            OnSetSelPath();
        }
    }
    void SetFNameText(const std::string& text) override { Log.push_back("name " + text); }

    std::vector<std::string> Log;
    TAction OnSetSelPath;
};

class PlacesBar : public TPlacesBarTest {
protected:
    void SetPaths(const std::string& path) {
        for (int i = 0; i < Options.Places().Count(); ++i) {
            Options.Places()[i].SetPlacePath(path);
        }
    }
    /// Clicks a button and waits until it is down.
    void ClickButton(int index) {
        TKxPlaceButton* const button = &Button(index);
        ClickAt(Middle(index));
        ASSERT_TRUE(PumpUntil([&] { return button->Down(); }));
    }
    std::vector<TKxPlaceButton*> AllButtons() const {
        std::vector<TKxPlaceButton*> buttons;
        for (int i = 0; i < Frm->ToolBar1->ButtonCount(); ++i) {
            buttons.push_back(&Button(i));
        }
        return buttons;
    }

    TTempFolder Folder{"bar"};
    TLoggingHost Dialog;
};

} // namespace kx::test
