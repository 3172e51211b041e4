// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <AppKit/NSAppearance.h>
#include <AppKit/NSApplication.h>
#include <AppKit/NSColor.h>
#include <AppKit/NSMenu.h>
#include <AppKit/NSMenuItem.h>
#include <AppKit/NSResponder.h>
#include <AppKit/NSRunningApplication.h>
#include <AppKit/NSView.h>
#include <AppKit/NSVisualEffectView.h>
#include <AppKit/NSWindow.h>
#include <AppKit/NSWorkspace.h>
#include <Foundation/Foundation.h>
