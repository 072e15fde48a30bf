// SPDX-License-Identifier: MIT
#pragma once

// What all file dialogs share: their controls, the texts of those, the file list and its filter, the places.

#include "kx/opensave/KxFileDlgControls.h"
#include "kx/opensave/KxFileFilter.h"
#include "kx/opensave/KxListViewStyles.h"
#include "kx/opensave/KxNamesList.h"
#include "kx/opensave/KxNativePlacesBar.h"
#include "kx/opensave/KxOpenDlgCaptions.h"
#include "kx/places/KxPlaces.h"

#include <string>

namespace kx {

using TKxViewStyleQueryEvent = TEvent<void(TObject* sender, TViewStyle style, bool& allowChange)>;
using TKxViewStyleEvent = TEvent<void(TObject* sender, TViewStyle style)>;
using TKxFolderCreationEvent = TEvent<void(TObject* sender, std::string& newFolderName)>;
using TKxShareViolationEvent = TEvent<void(TObject* sender, int32_t& dlgResult, const std::string& fileName)>;

} // namespace kx
