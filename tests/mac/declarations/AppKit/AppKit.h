// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <AppKit/NSRunningApplication.h>
#include <AppKit/NSWorkspace.h>
#include <Foundation/Foundation.h>
