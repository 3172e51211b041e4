// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QString>

class QWindow;

// Reaches the window that hosts the interface, as the platform's window system sees it: makes it the floating
// panel without a title that it is to be, and brings it to the user. Main thread; nothing here waits, and
// nothing fails: what the window system does not do stays undone.
class WindowStyler : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isCompositing READ isCompositing NOTIFY isCompositingChanged)

public:
    // A window's property of this name is the radius of its corners as it draws them, in device-independent
    // pixels: none, or 0, where they are square.
    static constexpr const char *cornerRadiusProperty = "cornerRadius";

    // Styles the window: no title bar, a background that may be translucent (blurred where the desktop offers
    // it), an ordinary entry in the task bar. Call it once, before the window is first shown. It stays in
    // force as long as the window lives, also when its native window is made anew after closing.
    virtual void style(QWindow &window) = 0;

    // Shows the window on the workspace that the user sees, in the middle of the screen where the pointer is,
    // above all others and with the keyboard focus, even though another application is in front. It is not
    // there yet on return; calling again meanwhile, hiding or destroying the window is safe.
    //
    // `activationToken` is what the desktop gave for the user's deed that led here, if it gave anything (see
    // ProgramInstance).
    virtual void bringForward(QWindow &window, const QString &activationToken = QString()) = 0;

    // Hides the program as a whole, so that the one that the user was in before is active again, where the
    // window system knows of that; tells whether it does. Otherwise it is for the caller to hide the windows.
    virtual bool hideApplication() { return false; }

    // The height, in device-independent pixels, of the title bar with the window's buttons that the window
    // system lays over the top of a styled window; 0 where there is none. With one, the window's edge, its
    // corners, resizing and the material behind it are the window system's, too.
    virtual int titleBarHeight() const { return 0; }

    // Whether translucent windows show what lies behind them; otherwise their background must be opaque. Up
    // to date by the time that `bringForward` shows a window.
    bool isCompositing() const { return m_isCompositing; }

Q_SIGNALS:
    void isCompositingChanged();

protected:
    using QObject::QObject;

    // For the platform's body; tells of real changes only.
    void setCompositing(bool isCompositing);

private:
    bool m_isCompositing = false;
};
