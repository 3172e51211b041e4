// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CoreFoundation/CFDictionary.h>

extern "C" CFDictionaryRef _Nullable CGSessionCopyCurrentDictionary(void) CF_RETURNS_RETAINED;
