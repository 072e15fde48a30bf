#pragma once

#include "PlacesFixture.h"
#include "places/KxPlacesBarForm.h"
#include "support/DialogDriver.h"
#include "support/ExceptionLog.h"
#include "ui/Handles.h"

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
    void DragButton(int from, int to);
    /// Opens the menu over a button with the mouse, and chooses the item.
    std::vector<TStep> ChooseFromMenu(int index, const TMenuItem& item);

    TKxPlacesBarOptions Options;
    std::unique_ptr<TForm, TFreeDeleter> Host; ///< The window that the bar is in.
    TKxPlacesBarFrm* Frm;                      ///< Null when the test has freed it.
    TExceptionLog Log;
    std::vector<std::string> ExpectedErrors; ///< Of exceptions that reach the application.
};

/// The pixels of a part of a window as it is on the screen, or of a picture, by rows from the top; 0x00RRGGBB.
std::vector<uint32_t> PixelsOf(HDC dc, const TRect& rect);

} // namespace kx::test
