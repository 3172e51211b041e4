// SPDX-License-Identifier: Apache-2.0
#pragma once

// <xcb/xkb.h> uses a C++ keyword as a name. Include this header instead.
#define explicit explicitly
#include <xcb/xkb.h>
#undef explicit
