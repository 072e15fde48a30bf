#pragma once

#include "kx/opensave/KxOpenLite.h"
#include "tests/support/TestDriver.h"
#include "tests/support/ExceptionLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace kx::test {

using TFormPtr = std::unique_ptr<TForm, TFreeDeleter>;

/// A form for docking: of one colour, framed and crossed from corner to corner, so that a picture shows whether all of
/// it is there.
class TMarkedForm : public TForm {
public:
    TMarkedForm(TComponent* owner, TColor color, int width, int height);

protected:
    void Paint() override;
};

/// A marked form that docking finds by its name, "previewform" in any letter case.
class TPreviewForm : public TMarkedForm {
    KX_CLASS()

    explicit TPreviewForm(TComponent* owner) : TMarkedForm(owner, clSkyBlue, 130, 90) {}
};

TFormPtr MakeForm(TColor color, int width, int height);

inline std::vector<std::string> TextsOf(const TStrings& strings) {
    std::vector<std::string> texts;
    for (int i = 0; i < strings.Count(); ++i) {
        texts.push_back(strings[i]);
    }
    return texts;
}

/// A step that only waits.
inline TStep Await(std::string what, TCondition condition) { return {std::move(what), std::move(condition), {}}; }

/// The control of that id in the dialog; for the navigation tool bar see NavigationBarOf.
HWND ItemOf(const TKxFileDlgCore& dialog, int id);
HWND NavigationBarOf(const TKxFileDlgCore& dialog);
HWND PlacesBarOf(const TKxFileDlgCore& dialog);
HWND ListOf(const TKxFileDlgCore& dialog);
/// Sends a command of the navigation tool bar as a click on its button does.
void PressToolButton(const TKxFileDlgCore& dialog, WORD command);

/// Steps that drag the lower right corner of the dialog by so many pixels.
std::vector<TStep> DragCorner(const TKxFileDlgCore& dialog, int dx, int dy);

/// Has every event of the navigation bar and the file name noted in `log`, which outlives the dialog's running; `veto`
/// names the query that says no. `sender` is the dialog component.
void LogNavigation(TKxFileDlgCore& dialog, const TObject& sender, std::vector<std::string>& log,
                   const std::string& veto = {});

/// Every visible part of the dialog lies inside its client area, none overlaps a docked form, and all is painted.
void ExpectCleanLayout(const TKxFileDlgCore& dialog);

/// A folder with two text files and a folder, a form that owns the dialogs, and a look at the exceptions that reach the
/// application: none is expected unless a test takes them out.
class TFileDlgTest : public testing::Test {
protected:
    TFileDlgTest();
    ~TFileDlgTest() override;

    /// A new dialog, owned by `Owner`, that starts in the folder.
    template <class T = TKxOpenLiteDialog> T& NewDialog() {
        auto* dialog = new T(Owner.get());
        dialog->SetInitialDir(Folder.Path());
        return *dialog;
    }

    /// Runs the dialog; `look` acts in it once it is shown, then it is cancelled.
    bool Look(TOpenDialog& dialog, const TAction& look);

    /// The messages of the exceptions so far; forgets them.
    std::vector<std::string> TakeExceptions();

    TTempFolder Folder{"lite"};
    TFormPtr Owner;

private:
    TExceptionEvent FPrevious;
    std::vector<std::string> FExceptions;
};

} // namespace kx::test
