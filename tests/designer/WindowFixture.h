// SPDX-License-Identifier: MIT
#pragma once

#include "DesignerFixture.h"
#include "designer/DesignerForm.h"
#include "designer/Files.h"
#include "designer/Settings.h"
#include "designer/StandardPackage.h"
#include "support/TempFolder.h"
#include "tests/support/TestKey.h"

#include <memory>
#include <string>

namespace kx::test {

/// The designer's window with the sample form open in it, driven by mouse and keyboard.
class TDesignerWindowTest : public testing::Test {
protected:
    TDesignerWindowTest() : Folder("designer") {
        designer::SetSettingsKey(Settings.Path());
        designer::RegisterStandardPackage();
        Path = Folder.Path("OrderForm.dfm");
        designer::WriteWholeFile(Path, SampleForm);
        Window.reset(NewForm<designer::TDesignerForm>(nullptr));
        Window->SetPosition(poDesigned);
        Window->SetBounds(0, 0, 1000, 720);
        Window->Show();
        EXPECT_TRUE(Until([this] { return Window->Active(); }));
    }

    /// Opens the sample form, or another one.
    void Open(const std::string& text) {
        designer::WriteWholeFile(Path, text);
        Open();
    }
    void Open() {
        ASSERT_TRUE(Window->OpenPath(Path));
        Settle();
    }

    /// Runs the program's message loop until the condition holds.
    static bool Until(const TCondition& condition) {
        return PumpUntil([&] {
            Application().ProcessMessages();
            return condition();
        });
    }
    /// Until all input has been handled.
    static void Settle() {
        bool done = false;
        Application().QueueCall([&] { done = true; });
        EXPECT_TRUE(Until([&] { return done && MouseInputTaken(); }));
        Application().ProcessMessages();
    }

    designer::TFormDesigner& Designer() const { return Window->Document()->Designer(); }
    designer::TDesignSurface& Surface() const { return Window->DesignSurface(); }
    template <class T = TControl> T& The(const std::string& name) const {
        return dynamic_cast<T&>(*Designer().Form().FindComponent(name));
    }
    /// Of the client area of the designed form.
    COLORREF PixelOfForm(int x, int y) const {
        const HWND form = Designer().Form().WindowHandle();
        RedrawWindow(form, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        const HDC dc = GetDC(form);
        const COLORREF color = GetPixel(dc, x, y);
        ReleaseDC(form, dc);
        return color;
    }
    bool Has(const std::string& name) const { return Designer().Form().FindComponent(name) != nullptr; }
    std::string Text() const { return designer::FormText(Designer().State(), "\n"); }
    std::string FileText() const { return designer::ReadWholeFile(Path); }
    std::string PrimaryName() const { return Designer().Primary() ? Designer().Primary()->Name() : std::string(); }

    /// The middle of a component on the surface, on the screen.
    TPoint At(const std::string& name) const {
        const TRect r = Surface().PlaceOf(The<TComponent>(name));
        return Surface().ClientToScreen({(r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2});
    }
    TPoint Corner(const std::string& name, bool right, bool bottom) const {
        const TRect r = Surface().PlaceOf(The<TComponent>(name));
        return Surface().ClientToScreen({right ? r.Right : r.Left, bottom ? r.Bottom : r.Top});
    }
    /// A point of the form's client area, on the screen.
    TPoint OnForm(int x, int y) const { return Designer().Form().ClientToScreen({x, y}); }
    void ClickOn(TPoint screen) const {
        ClickAt(screen);
        Settle();
    }
    void DragFrom(TPoint from, int dx, int dy) const {
        Drag(from, {from.X + dx, from.Y + dy});
        Settle();
    }
    void Press(WORD key, std::initializer_list<WORD> held = {}) const {
        PressKey(key, held);
        Settle();
    }

    /// The window of that class which is shown; null when there is none.
    static TForm* FormOfClass(const std::string& className) {
        for (int i = 0; i < Screen().FormCount(); ++i) {
            auto* const form = dynamic_cast<TForm*>(Screen().Forms(i));
            if (form && form->Visible() && form->ClassName() == className) {
                return form;
            }
        }
        return nullptr;
    }

    /// Does `act`, which opens a message box, and answers that.
    static std::string AnswerTo(const TAction& act, int answer) {
        std::string text;
        TTestDriver driver({AnswerBox(answer, [&](const std::string& shown) { text = shown; })});
        driver.Run([&] {
            act();
            return true;
        });
        return text;
    }

    TTestKey Settings;
    TTempFolder Folder;
    std::string Path;
    std::unique_ptr<designer::TDesignerForm, TFreeDeleter> Window;
};

} // namespace kx::test
