// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Availability.h>

#define MAC_OS_X_VERSION_10_6 1060
#define MAC_OS_X_VERSION_MIN_REQUIRED __MAC_OS_X_VERSION_MIN_REQUIRED
#define MAC_OS_X_VERSION_MAX_ALLOWED __MAC_OS_X_VERSION_MAX_ALLOWED
