// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Window/MacWindowStyler.h"

#include "Desktop/Mac/Window/StylingKeeper.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <AppKit/AppKit.h>
#include <objc/runtime.h>

// The material behind the window's content, told from other views by its class.
@interface OrvaneMaterialView : NSVisualEffectView
@end

@implementation OrvaneMaterialView
@end

namespace {

NSView *viewOf(const QWindow &window)
{
    // What Qt gives as the window's identifier is its view, which Qt goes on owning.
    return (__bridge NSView *)reinterpret_cast<void *>(window.winId());
}

BOOL answerNo(id, SEL)
{
    return NO;
}

// A view that is not opaque counts as background by which the window is moved, with all the controls in it.
// Which part of ours is background, its views know.
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

// The window comes to where the user is, not the user to the window: to the Space that is shown, also if that
// belongs to another application in full screen. For that it must not want a Space of its own.
void followTheUser(NSWindow *window)
{
    // What it is in a Space of its own is not to be taken from it there.
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

// Behind the view, since whatever lies in it would be drawn over what Qt draws. A view that is there already
// is only put in its place again: when the style changes, AppKit puts the views of a window's frame in order
// anew.
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

// AppKit centres a window on the screen that it is on.
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
    // A window without a frame would have neither buttons nor shadow.
    window.setFlag(Qt::FramelessWindowHint, false);
    QSurfaceFormat format = window.requestedFormat();
    format.setAlphaBufferSize(8);
    window.setFormat(format);
    const auto dressThis = [&window] { dress(window); };
    new StylingKeeper(window, dressThis); // belongs to the window
    window.create();
}

void MacWindowStyler::bringForward(QWindow &window, const QString & /* activation takes no token here */)
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
