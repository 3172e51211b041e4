// SPDX-License-Identifier: Apache-2.0
// expected: no matching function for call to 'CGEventPost'
#include <ApplicationServices/ApplicationServices.h>

void post(CGEventRef event)
{
    CGEventPost(kCGEventSourceStateHIDSystemState, event);
}
