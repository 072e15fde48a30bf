// SPDX-License-Identifier: MIT
#pragma once

// Everything that a unit with components needs.

#include "kx/core/Collections.h"
#include "kx/core/Components.h"
#include "kx/core/Filer.h"
#include "kx/core/FormText.h"
#include "kx/core/Streams.h"
#include "kx/core/Strings.h"
