// SPDX-License-Identifier: MIT
#pragma once

#include "kx/colorprint/KxColorDlg.h"
#include "kx/colorprint/KxPrintDlg.h"
#include "kx/folder/KxFolderDlg.h"
#include "kx/modeless/KxModelessDlg.h"
#include "kx/opensave/KxOpenDlgEx.h"
#include "kx/opensave/KxOpenLite.h"
#include "kx/opensave/KxSaveDlg.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Timers.h"

#include <string>
#include <vector>

namespace cookbook {

using namespace kx;

// Each answers one question of docs/cookbook.md. What they are given lives as long as the dialog.

// The look
void ShowMyForm(TKxOpenLiteDialog& dialog, TForm& form);
void GrowWithDialog(TForm& form, TListBox& list);
void ReplaceFileList(TKxOpenDialog& dialog, TForm& form);
void AddButtonMenu(TKxOpenDialog& dialog, TPopupMenu& menu);
void LendToolBar(TKxOpenDialog& dialog, TToolBar& bar);
void CentreOverOwner(TKxOpenLiteDialog& dialog);
void GiveIcon(TKxOpenLiteDialog& dialog, const std::string& iconFile);
void ForceDetails(TKxOpenDialog& dialog);
void ShowPreview(TKxOpenLiteDialog& dialog, TLabel& label);
std::string AskQuickly();

// What the user does
void FollowSelection(TKxOpenLiteDialog& dialog, TLabel& label);
void CheckChoice(TKxOpenLiteDialog& dialog);
void StayBelow(TKxOpenLiteDialog& dialog, const std::string& top);
void ProtectFiles(TKxOpenDialog& dialog);
void HideFiles(TKxOpenDialog& dialog);
void CompleteExtension(TKxSaveDialog& dialog);
void SuggestName(TKxSaveDialog& dialog, const std::string& name);
std::string SaveWithEncoding(TKxSaveDialog& dialog, TForm& form, TComboBox& encodings);
std::vector<std::string> PickSeveral(TKxOpenLiteDialog& dialog);
void CloseAfter(TKxOpenLiteDialog& dialog, TTimer& timer);
void NoteMessages(TKxOpenLiteDialog& dialog, std::vector<unsigned>& messages);
void HandleErrors(std::vector<std::string>& log);

// What is kept
void RememberPerPurpose(TKxOpenDialog& drawings, TKxSaveDialog& tables);
void OfferPlaces(TKxOpenDialog& dialog, const std::string& folder);
void OpenRecent(TKxOpenDialogEx& dialog);

// Other dialogs
std::string AskForFolder(TKxFolderDialog& dialog);
void PickFilesInTree(TKxFolderDialog& dialog);
void ChooseColour(TKxColorDialog& dialog, TForm& form);
void WatchPrinter(TKxPrintDialog& dialog, TLabel& label);
void ShowBeside(TKxModelessDialog& runner, TKxOpenLiteDialog& dialog, TLabel& label);

} // namespace cookbook
