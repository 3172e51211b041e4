// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Window/MacMenuBar.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>

#include <AppKit/AppKit.h>

#include <functional>

namespace {

// Qt's text fields accept these commands only as keys. Qt calls the Command key Control.
void sendKey(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QWindow *window = QGuiApplication::focusWindow();
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        if (window)
            QCoreApplication::postEvent(window, new QKeyEvent(type, key, Qt::ControlModifier | modifiers));
    }
}

} // namespace

// The target of the menu items' actions.
@interface OrvaneMenuTarget : NSObject
@property(nonatomic) std::function<void()> historyCleared;
- (void)clearHistory:(nullable id)sender;
- (void)undoTyping:(nullable id)sender;
- (void)redoTyping:(nullable id)sender;
- (void)cutText:(nullable id)sender;
- (void)copyText:(nullable id)sender;
- (void)pasteText:(nullable id)sender;
- (void)selectAllText:(nullable id)sender;
@end

@implementation OrvaneMenuTarget

- (void)clearHistory:(nullable id)sender
{
    Q_UNUSED(sender)
    self.historyCleared();
}

- (void)undoTyping:(nullable id)sender
{
    Q_UNUSED(sender)
    sendKey(Qt::Key_Z);
}

- (void)redoTyping:(nullable id)sender
{
    Q_UNUSED(sender)
    sendKey(Qt::Key_Z, Qt::ShiftModifier);
}

- (void)cutText:(nullable id)sender
{
    Q_UNUSED(sender)
    sendKey(Qt::Key_X);
}

- (void)copyText:(nullable id)sender
{
    Q_UNUSED(sender)
    sendKey(Qt::Key_C);
}

- (void)pasteText:(nullable id)sender
{
    Q_UNUSED(sender)
    sendKey(Qt::Key_V);
}

- (void)selectAllText:(nullable id)sender
{
    Q_UNUSED(sender)
    sendKey(Qt::Key_A);
}

@end

namespace {

NSMenu *addMenu(NSMenu *bar, NSString *title)
{
    NSMenuItem *const item = [bar addItemWithTitle:title action:nil keyEquivalent:@""];
    NSMenu *const menu = [[NSMenu alloc] initWithTitle:title];
    item.submenu = menu;
    return menu;
}

// An upper-case key implies Shift. Without a target, the key window handles the action.
void addItem(NSMenu *menu, NSString *title, SEL action, NSString *key, id target = nil)
{
    [menu addItemWithTitle:title action:action keyEquivalent:key].target = target;
}

void fillEditMenu(NSMenu *menu, OrvaneMenuTarget *target)
{
    addItem(menu, @"Undo", @selector(undoTyping:), @"z", target);
    addItem(menu, @"Redo", @selector(redoTyping:), @"Z", target);
    [menu addItem:[NSMenuItem separatorItem]];
    addItem(menu, @"Cut", @selector(cutText:), @"x", target);
    addItem(menu, @"Copy", @selector(copyText:), @"c", target);
    addItem(menu, @"Paste", @selector(pasteText:), @"v", target);
    addItem(menu, @"Select All", @selector(selectAllText:), @"a", target);
    [menu addItem:[NSMenuItem separatorItem]];
    addItem(menu, @"Clear History", @selector(clearHistory:), @"k", target);
}

} // namespace

struct MacMenuBar::Menus
{
    explicit Menus(std::function<void()> historyCleared)
    {
        target.historyCleared = std::move(historyCleared);
        NSMenu *const bar = NSApp.mainMenu;
        addItem(addMenu(bar, @"File"), @"Close", @selector(performClose:), @"w");
        fillEditMenu(addMenu(bar, @"Edit"), target);
        NSMenu *const windowMenu = addMenu(bar, @"Window");
        addItem(windowMenu, @"Minimize", @selector(performMiniaturize:), @"m");
        addItem(windowMenu, @"Zoom", @selector(performZoom:), @"");
        NSApp.windowsMenu = windowMenu;
    }

    // Menu items hold weak references; without a target they do nothing.
    OrvaneMenuTarget *const target = [[OrvaneMenuTarget alloc] init];
};

MacMenuBar::MacMenuBar() : m_menus(std::make_unique<Menus>([this] { Q_EMIT clearHistoryChosen(); })) {}

MacMenuBar::~MacMenuBar() = default;
