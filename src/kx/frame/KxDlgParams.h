// SPDX-License-Identifier: MIT
#pragma once

// What every customised dialog shares: its place on the screen, the application's forms docked into it, its captions,
// and the interface through which tools drive it. The pipeline of its messages is in KxDlgPipeline.h.

#include "kx/frame/KxCommonDialog.h"
#include "kx/frame/KxCustDlgParams.h"
#include "kx/frame/KxDlgCaptions.h"
#include "kx/frame/KxDlgGeometry.h"
