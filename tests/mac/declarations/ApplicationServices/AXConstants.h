// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CoreFoundation/CFString.h>

#define kAXRoleAttribute CFSTR("AXRole")
#define kAXSubroleAttribute CFSTR("AXSubrole")
#define kAXTitleAttribute CFSTR("AXTitle")
#define kAXDescriptionAttribute CFSTR("AXDescription")
#define kAXValueAttribute CFSTR("AXValue")
#define kAXHelpAttribute CFSTR("AXHelp")
#define kAXChildrenAttribute CFSTR("AXChildren")

#define kAXSecureTextFieldSubrole CFSTR("AXSecureTextField")

#define kAXPressAction CFSTR("AXPress")
