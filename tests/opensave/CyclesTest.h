#pragma once

#include "FileDlgTest.h"

#include "support/Cycles.h"
