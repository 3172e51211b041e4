// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Window/MacDisplay.h"

#include <CoreGraphics/CoreGraphics.h>

bool MacDisplay::isPresent()
{
    CFDictionaryRef session = CGSessionCopyCurrentDictionary();
    if (!session)
        return false;
    CFRelease(session);
    return true;
}
