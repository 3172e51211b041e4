// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <objc/NSObject.h>

typedef struct objc_method *Method;
typedef void (*IMP)(void);

extern "C" {
Class _Nullable object_getClass(id _Nullable object);
Method _Nullable class_getInstanceMethod(Class _Nullable aClass, SEL _Nonnull name);
const char *_Nullable method_getTypeEncoding(Method _Nonnull method);
BOOL class_addMethod(Class _Nullable aClass, SEL _Nonnull name, IMP _Nonnull implementation,
                     const char *_Nullable types);
}
