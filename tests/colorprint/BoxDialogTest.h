// SPDX-License-Identifier: MIT
#pragma once

#include "kx/colorprint/KxColorDlg.h"
#include "kx/colorprint/KxPrintDlg.h"
#include "tests/support/DialogTest.h"

#include <string>
#include <vector>

namespace kx::test {

std::string ItemText(const TCommonDialog& dialog, int id);

/// A step that clicks a control of the dialog with the mouse.
TStep ClickItem(const TCommonDialog& dialog, int id);

/// The form lies in the dialog, in these client coordinates of it, and all of it shows the form's colour.
void ExpectDocked(const TCommonDialog& dialog, TForm& form, const TRect& place);

/// An event handler that notes its name, and one that answers a query too. Both check that `sender` fires them.
TNotifyEvent Note(std::vector<std::string>& log, const TObject& sender, const std::string& name);
TKxCtrlQueryEvent Answer(std::vector<std::string>& log, const TObject& sender, const std::string& name,
                         bool allow = true);

} // namespace kx::test
