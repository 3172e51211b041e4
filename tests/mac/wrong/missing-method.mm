// SPDX-License-Identifier: Apache-2.0
// expected: field type 'Incomplete' is an abstract class
#include "Desktop/ScreenCapture.h"

class Incomplete : public ScreenCapture
{
};

struct Holder
{
    Incomplete service;
};
