#include "FileDlgTest.h"

#include "opensave/KxSaveDlg.h"

namespace kx {
namespace {

using namespace test;

class OpenDialogShow : public TFileDlgTest {};

TEST_F(OpenDialogShow, OpensAndReturnsTheChosenFile) {
    auto& dialog = NewDialog<TKxOpenDialog>();
    EXPECT_TRUE(RunDialog(dialog, {EnterFileName(dialog, "one.txt")}));
    EXPECT_EQ(dialog.FileName(), Folder.Path() + "\\one.txt");
}

TEST_F(OpenDialogShow, TheSaveDialogIsTheSystemsToo) {
    auto& dialog = NewDialog<TKxSaveDialog>();
    EXPECT_TRUE(RunDialog(dialog, {{"it is the system's save dialog", Shown(dialog),
                                    [&] { EXPECT_EQ(TextOf(dialog.DlgHandle()), "Save As"); }},
                                   EnterFileName(dialog, "new.txt")}));
    EXPECT_EQ(dialog.FileName(), Folder.Path() + "\\new.txt");
}

} // namespace
} // namespace kx
