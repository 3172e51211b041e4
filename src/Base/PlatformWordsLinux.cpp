// SPDX-License-Identifier: Apache-2.0
#include "Base/PlatformWords.h"

const PlatformWords &PlatformWords::current()
{
    return ofLinux();
}
