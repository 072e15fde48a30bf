// SPDX-License-Identifier: MIT
#pragma once

#define ID_HOST 1
#define ID_OPEN 101
#define ID_BROWSE 102
#define ID_EXIT 103
#define ID_STATUS 200
