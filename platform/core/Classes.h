#pragma once

// Everything that a unit with components needs.

#include "core/Collections.h"
#include "core/Components.h"
#include "core/Filer.h"
#include "core/FormText.h"
#include "core/Streams.h"
#include "core/Strings.h"
