// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/MacWindowStyler.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPlatformSurfaceEvent>
#include <QScreen>
#include <QWindow>

#include <AppKit/AppKit.h>
#include <objc/runtime.h>

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

void restyle(NSWindow *window)
{
    window.titlebarAppearsTransparent = YES;
    window.titleVisibility = NSWindowTitleHidden;
    window.movableByWindowBackground = YES;
    window.styleMask |= NSWindowStyleMaskFullSizeContentView;
    window.opaque = NO;
    window.backgroundColor = NSColor.clearColor;
    // Where the user is, not where the window was last.
    window.collectionBehavior |= NSWindowCollectionBehaviorMoveToActiveSpace;
}

// Behind the view, since whatever lies in it would be drawn over what Qt draws.
void addMaterialBehind(NSView *view)
{
    NSView *const frame = view.superview;
    NSVisualEffectView *const effect = [[NSVisualEffectView alloc] initWithFrame:frame.bounds];
    effect.material = NSVisualEffectMaterialUnderWindowBackground;
    effect.blendingMode = NSVisualEffectBlendingModeBehindWindow;
    effect.state = NSVisualEffectStateActive;
    effect.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    [frame addSubview:effect positioned:NSWindowBelow relativeTo:view];
}

void dress(const QWindow &window)
{
    NSView *const view = viewOf(window);
    NSWindow *const nativeWindow = view.window;
    if (nativeWindow == nil)
        return;
    keepControlsFromMovingTheWindow(view);
    restyle(nativeWindow);
    addMaterialBehind(view);
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
    window.installEventFilter(this);
    if (window.handle())
        dress(window);
    else
        window.create();
}

bool MacWindowStyler::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::PlatformSurface) {
        const auto *surface = static_cast<QPlatformSurfaceEvent *>(event);
        const auto *window = qobject_cast<QWindow *>(watched);
        if (window && surface->surfaceEventType() == QPlatformSurfaceEvent::SurfaceCreated)
            dress(*window);
    }
    return WindowStyler::eventFilter(watched, event);
}

void MacWindowStyler::bringForward(QWindow &window, const QString & /* activation takes no token here */)
{
    [NSApp activateIgnoringOtherApps:YES];
    moveToScreenOfPointer(window);
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.show();
    NSWindow *const nativeWindow = viewOf(window).window;
    [nativeWindow makeKeyAndOrderFront:nil];
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
