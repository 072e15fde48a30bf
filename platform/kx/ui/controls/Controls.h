// SPDX-License-Identifier: MIT
#pragma once

// Controls: what is seen, with a window of its own or without, and how to find it.

#include "kx/ui/controls/Control.h"
#include "kx/ui/controls/ScrollingControl.h"
#include "kx/ui/controls/WinControl.h"
