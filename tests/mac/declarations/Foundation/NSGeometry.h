// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CoreGraphics/CGGeometry.h>

typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;

static inline NSPoint NSMakePoint(CGFloat x, CGFloat y)
{
    return {x, y};
}
static inline NSSize NSMakeSize(CGFloat width, CGFloat height)
{
    return {width, height};
}
static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height)
{
    return {{x, y}, {width, height}};
}

extern "C" BOOL NSPointInRect(NSPoint point, NSRect rect);
