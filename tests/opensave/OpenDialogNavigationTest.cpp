// SPDX-License-Identifier: MIT
// What the open dialog asks and tells as the user navigates.

#include "OpenDialogTest.h"

namespace kx {
namespace {

using namespace test;

class OpenDialogNavigation : public TOpenDialogTest {
protected:
    /// Has the events noted in `Log`; `veto` names the query that says no.
    void LogEvents(const std::string& veto = {}) { LogNavigation(Dialog, Dialog, Log, veto); }
    /// What the commands of the navigation bar bring about, with the query of that name vetoed.
    std::vector<std::string> LogOf(std::initializer_list<WORD> commands, const std::string& veto = {}) {
        Log.clear();
        LogEvents(veto);
        Look(Dialog, [&] {
            for (const WORD command : commands) {
                PressToolButton(Dialog, command);
            }
        });
        return Log;
    }

    std::vector<std::string> Log;
};

TEST_F(OpenDialogNavigation, IsAskedAndReported) {
    EXPECT_THAT(LogOf({40961, 40969, 40971}), ElementsAre("up?", "up", "desktop?", "desktop", "back?", "back"));
}

TEST_F(OpenDialogNavigation, UpOneLevelCanBeVetoed) {
    Dialog.SetInitialDir(Folder.Path("inner"));
    std::string folder;
    Dialog.SetOnClose([&](TObject*) { folder = Dialog.SelectedFolder(); });
    EXPECT_THAT(LogOf({40961}, "up?"), ElementsAre("up?"));
    Log.clear();
    LogEvents("up?");
    Look(Dialog, [&] {
        PressToolButton(Dialog, 40961);
        EXPECT_EQ(Dialog.SelectedFolder(), Folder.Path("inner"));
    });
}

TEST_F(OpenDialogNavigation, TheOthersCanBeVetoedToo) {
    EXPECT_THAT(LogOf({40969}, "desktop?"), ElementsAre("desktop?"));
    EXPECT_THAT(LogOf({40971}, "back?"), ElementsAre("back?"));
    EXPECT_THAT(LogOf({40962}, "folder?"), ElementsAre("folder?"));
    EXPECT_FALSE(Folder.Contains("New Folder"));
}

TEST_F(OpenDialogNavigation, OkIsAskedAboutWhereverTheFocusIs) {
    LogEvents("enter?");
    RunDialog(Dialog,
              [&] {
                  FocusList();
                  SelectItem(List(), "one.txt");
                  Log.clear();
                  Click(ItemOf(Dialog, IDOK));
              },
              {Await("it was asked", [&] { return Log == std::vector<std::string>{"enter?"}; }), Cancel(Dialog)});
}

TEST_F(OpenDialogNavigation, TypingANameIsReported) {
    LogEvents();
    RunDialog(Dialog,
              [&] {
                  SetFocus(FileNameEditOf(Dialog.DlgHandle()));
                  TypeText("ab");
              },
              {Await("they are there", [&] { return Dialog.FilenameText() == "ab"; }),
               Await("both were reported", [&] { return Log.size() == 2; }), Cancel(Dialog)});
    EXPECT_THAT(Log, ElementsAre("change", "change"));
}

TEST_F(OpenDialogNavigation, TypingIntoTheClassicEditIsReportedToo) {
    LogEvents();
    Look(Dialog, [&] {
        // The classic dialog's edit tells the dialog of its changes in this way.
        SendMessageA(Dialog.DlgHandle(), WM_COMMAND, MAKEWPARAM(KxFileNameEditId, EN_CHANGE), 0);
    });
    EXPECT_THAT(Log, ElementsAre("change"));
}

} // namespace
} // namespace kx
