// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Window/MacWindowStyler.h"

#include "Desktop/Mac/Window/StylingKeeper.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <AppKit/AppKit.h>
#include <objc/runtime.h>

// The material behind the window's content; a class of its own so that it can be found.
@interface OrvaneMaterialView : NSVisualEffectView
@end

@implementation OrvaneMaterialView
@end

namespace {

NSView *viewOf(const QWindow &window)
{
    // On macOS, winId() is an NSView owned by Qt.
    return (__bridge NSView *)reinterpret_cast<void *>(window.winId());
}

BOOL answerNo(id, SEL)
{
    return NO;
}

// AppKit treats a non-opaque view as window background, so dragging any of its controls would move the
// window. The QML views handle dragging themselves.
void keepControlsFromMovingTheWindow(NSView *view)
{
    SEL const question = @selector(mouseDownCanMoveWindow);
    Method const method = class_getInstanceMethod([NSView class], question);
    class_addMethod(object_getClass(view), question, reinterpret_cast<IMP>(&answerNo),
                    method_getTypeEncoding(method));
}

bool isFullScreen(NSWindow *window)
{
    return window.styleMask & NSWindowStyleMaskFullScreen;
}

// Makes the window appear on the active Space, even if that belongs to a full-screen application. This
// excludes a full-screen Space of its own.
void followTheUser(NSWindow *window)
{
    // Don't change a full-screen window's behaviour.
    if (isFullScreen(window))
        return;
    NSWindowCollectionBehavior behavior = window.collectionBehavior;
    behavior &= ~NSWindowCollectionBehaviorFullScreenPrimary;
    behavior |= NSWindowCollectionBehaviorMoveToActiveSpace | NSWindowCollectionBehaviorFullScreenAuxiliary |
                NSWindowCollectionBehaviorCanJoinAllApplications;
    window.collectionBehavior = behavior;
}

void restyle(NSWindow *window)
{
    window.titlebarAppearsTransparent = YES;
    window.titleVisibility = NSWindowTitleHidden;
    window.movableByWindowBackground = YES;
    window.styleMask |= NSWindowStyleMaskFullSizeContentView;
    window.opaque = NO;
    window.backgroundColor = NSColor.clearColor;
    followTheUser(window);
}

NSVisualEffectView *materialIn(NSView *frame)
{
    for (NSView *each in frame.subviews) {
        if ([each isKindOfClass:OrvaneMaterialView.class])
            return static_cast<NSVisualEffectView *>(each);
    }
    NSVisualEffectView *const material = [[OrvaneMaterialView alloc] initWithFrame:frame.bounds];
    material.material = NSVisualEffectMaterialUnderWindowBackground;
    material.blendingMode = NSVisualEffectBlendingModeBehindWindow;
    material.state = NSVisualEffectStateActive;
    material.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    return material;
}

// Adds the material as a sibling: a subview would cover Qt's content. An existing material is moved back into
// place, since AppKit reorders the frame's views when the style changes.
void putMaterialBehind(NSView *view)
{
    NSView *const frame = view.superview;
    [frame addSubview:materialIn(frame) positioned:NSWindowBelow relativeTo:view];
}

void dress(const QWindow &window)
{
    NSView *const view = viewOf(window);
    NSWindow *const nativeWindow = view.window;
    if (nativeWindow == nil)
        return;
    keepControlsFromMovingTheWindow(view);
    restyle(nativeWindow);
    putMaterialBehind(view);
}

// Needed because AppKit centres a window on its current screen.
void moveToScreenOfPointer(QWindow &window)
{
    const QScreen *screen = QGuiApplication::screenAt(QCursor::pos());
    if (screen && screen != window.screen())
        window.setPosition(screen->availableGeometry().topLeft());
}

} // namespace

MacWindowStyler::MacWindowStyler()
{
    setCompositing(true);
}

void MacWindowStyler::style(QWindow &window)
{
    // A frameless window would have neither buttons nor a shadow.
    window.setFlag(Qt::FramelessWindowHint, false);
    QSurfaceFormat format = window.requestedFormat();
    format.setAlphaBufferSize(8);
    window.setFormat(format);
    const auto dressThis = [&window] { dress(window); };
    new StylingKeeper(window, dressThis); // owned by the window
    window.create();
}

void MacWindowStyler::bringForward(QWindow &window,
                                   const QString & /* unused: macOS has no activation tokens */)
{
    m_activation.request();
    moveToScreenOfPointer(window);
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.show();
    NSWindow *const nativeWindow = viewOf(window).window;
    [nativeWindow makeKeyAndOrderFront:nil];
    if (!isFullScreen(nativeWindow))
        [nativeWindow center];
}

bool MacWindowStyler::hideApplication()
{
    [NSApp hide:nil];
    return true;
}

int MacWindowStyler::titleBarHeight() const
{
    const NSRect frame = [NSWindow frameRectForContentRect:NSMakeRect(0, 0, 100, 100)
                                                 styleMask:NSWindowStyleMaskTitled];
    return qRound(frame.size.height) - 100;
}
