#pragma once

#include "kx/colorprint/KxColorDlg.h"
#include "kx/colorprint/KxPrintDlg.h"
#include "tests/support/TestDriver.h"
#include "tests/support/ExceptionLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace kx::test {

/// A form for docking, all of one colour, freed at the end of its scope.
class TDockedForm {
public:
    TDockedForm(TColor color, int width, int height) : FForm(new TForm(nullptr)) {
        FForm->SetColor(color);
        FForm->SetBounds(30, 40, width, height);
    }
    TForm* get() const { return FForm.get(); }
    TForm* operator->() const { return FForm.get(); }
    void Free() { FForm.reset(); }

private:
    std::unique_ptr<TForm, TFreeDeleter> FForm;
};

/// A form that owns the dialogs, and a look at the exceptions that reach the application: none is expected unless a
/// test takes them out.
class TBoxDialogTest : public testing::Test {
public:
    TBoxDialogTest();
    ~TBoxDialogTest() override;

protected:
    /// Runs the dialog; `look` acts in it once it is shown, then it is cancelled.
    bool Look(TCommonDialog& dialog, const TAction& look);

    /// The messages of the exceptions so far; forgets them.
    std::vector<std::string> TakeExceptions() { return std::exchange(FExceptions, {}); }
    bool HasExceptions() const { return !FExceptions.empty(); }

    std::unique_ptr<TForm, TFreeDeleter> Owner;

private:
    TExceptionEvent FPrevious;
    std::vector<std::string> FExceptions;
};

HWND ItemOf(const TCommonDialog& dialog, int id);
std::string ItemText(const TCommonDialog& dialog, int id);

/// A step that clicks a control of the dialog with the mouse.
TStep ClickItem(const TCommonDialog& dialog, int id);
/// A step that only waits.
inline TStep WaitFor(std::string what, TCondition condition) { return {std::move(what), std::move(condition), {}}; }

/// The form lies in the dialog, in these client coordinates of it, and all of it shows the form's colour.
void ExpectDocked(const TCommonDialog& dialog, TForm& form, const TRect& place);

/// An event handler that notes its name, and one that answers a query too. Both check that `sender` fires them.
TNotifyEvent Note(std::vector<std::string>& log, const TObject& sender, const std::string& name);
TKxCtrlQueryEvent Answer(std::vector<std::string>& log, const TObject& sender, const std::string& name,
                         bool allow = true);

/// The component as a form file, and back.
std::string WriteText(TComponent& component);
void ReadText(TComponent& component, const std::string& text);

/// Names of the properties that the class itself publishes, in their order.
std::vector<std::string> OwnProperties(const TClass& cls);

} // namespace kx::test
