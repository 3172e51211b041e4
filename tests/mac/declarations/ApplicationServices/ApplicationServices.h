// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ApplicationServices/AXConstants.h>
#include <ApplicationServices/AXError.h>
#include <ApplicationServices/AXUIElement.h>
#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>
