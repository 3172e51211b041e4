// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSInteger, NSVisualEffectMaterial) {
    NSVisualEffectMaterialTitlebar = 3,
    NSVisualEffectMaterialSelection = 4,
    NSVisualEffectMaterialMenu = 5,
    NSVisualEffectMaterialPopover = 6,
    NSVisualEffectMaterialSidebar = 7,
    NSVisualEffectMaterialHeaderView API_AVAILABLE(macos(10.14)) = 10,
    NSVisualEffectMaterialSheet API_AVAILABLE(macos(10.14)) = 11,
    NSVisualEffectMaterialWindowBackground API_AVAILABLE(macos(10.14)) = 12,
    NSVisualEffectMaterialHUDWindow API_AVAILABLE(macos(10.14)) = 13,
    NSVisualEffectMaterialFullScreenUI API_AVAILABLE(macos(10.14)) = 15,
    NSVisualEffectMaterialToolTip API_AVAILABLE(macos(10.14)) = 17,
    NSVisualEffectMaterialContentBackground API_AVAILABLE(macos(10.14)) = 18,
    NSVisualEffectMaterialUnderWindowBackground API_AVAILABLE(macos(10.14)) = 21,
    NSVisualEffectMaterialUnderPageBackground API_AVAILABLE(macos(10.14)) = 22,
};

typedef NS_ENUM(NSInteger, NSVisualEffectBlendingMode) {
    NSVisualEffectBlendingModeBehindWindow,
    NSVisualEffectBlendingModeWithinWindow,
};

typedef NS_ENUM(NSInteger, NSVisualEffectState) {
    NSVisualEffectStateFollowsWindowActiveState,
    NSVisualEffectStateActive,
    NSVisualEffectStateInactive,
};

@interface NSVisualEffectView : NSView
@property NSVisualEffectMaterial material;
@property NSVisualEffectBlendingMode blendingMode;
@property NSVisualEffectState state;
@end

NS_ASSUME_NONNULL_END
