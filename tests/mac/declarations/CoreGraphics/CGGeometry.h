// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CoreFoundation/CFBase.h>

typedef double CGFloat;

struct CGPoint
{
    CGFloat x;
    CGFloat y;
};
typedef struct CGPoint CGPoint;

struct CGSize
{
    CGFloat width;
    CGFloat height;
};
typedef struct CGSize CGSize;

struct CGRect
{
    CGPoint origin;
    CGSize size;
};
typedef struct CGRect CGRect;

static inline CGPoint CGPointMake(CGFloat x, CGFloat y)
{
    return {x, y};
}
static inline CGSize CGSizeMake(CGFloat width, CGFloat height)
{
    return {width, height};
}
static inline CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height)
{
    return {{x, y}, {width, height}};
}
