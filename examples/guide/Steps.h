// SPDX-License-Identifier: MIT
#pragma once

#include "kx/opensave/KxOpenDlg.h"

namespace guide {

using namespace kx;

constexpr int StepCount = 9;

/// Gives the dialog what the first `count` steps of the guide add to it. PreviewForm and OptionsForm are there.
void TakeSteps(TKxOpenDialog& dialog, int count);

// Each of them adds one thing.
void AskForDrawings(TKxOpenDialog& dialog);
void DockForms(TKxOpenDialog& dialog);
void HandleEvents(TKxOpenDialog& dialog);
void ChooseControls(TKxOpenDialog& dialog);
void PlaceDialog(TKxOpenDialog& dialog);
void AddPlaces(TKxOpenDialog& dialog);
void AddOpenMenu(TKxOpenDialog& dialog);
void ChooseFiles(TKxOpenDialog& dialog);
void KeepState(TKxOpenDialog& dialog);

} // namespace guide
