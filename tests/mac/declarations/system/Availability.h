// SPDX-License-Identifier: Apache-2.0
#pragma once

// The newest system that is declared here is macOS 14; the oldest that the sources run on comes from the
// target.
#define __MAC_10_0 1000
#define __MAC_10_6 1060
#define __MAC_10_14 101400
#define __MAC_10_15 101500
#define __MAC_11_0 110000
#define __MAC_12_0 120000
#define __MAC_13_0 130000
#define __MAC_14_0 140000
#define __MAC_NA 9999
#define __IPHONE_NA 9999
#define __TVOS_NA 9999
#define __WATCHOS_NA 9999
#define __MAC_OS_X_VERSION_MAX_ALLOWED __MAC_14_0
#define __MAC_OS_X_VERSION_MIN_REQUIRED __ENVIRONMENT_MAC_OS_X_VERSION_MIN_REQUIRED__

#define API_AVAILABLE(platform) __attribute__((availability(ORVANE_INTRODUCED_##platform)))
#define ORVANE_INTRODUCED_macos(version) macos, introduced = version
#define API_DEPRECATED(reason, platform)                                                                     \
    __attribute__((availability(ORVANE_DEPRECATED_##platform, message = reason)))
#define API_DEPRECATED_WITH_REPLACEMENT(other, platform)                                                     \
    __attribute__((availability(ORVANE_DEPRECATED_##platform, replacement = other)))
#define ORVANE_DEPRECATED_macos(first, last) macos, introduced = first, deprecated = last
