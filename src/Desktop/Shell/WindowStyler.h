// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QString>

class QWindow;

// Turns the program's window into a floating panel without a title bar, and brings it to the front. Never
// blocks or fails; what the window system doesn't support is skipped. Thread: main.
class WindowStyler : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isCompositing READ isCompositing NOTIFY isCompositingChanged)

public:
    // The dynamic property of a QWindow that holds the corner radius it draws, in device-independent pixels;
    // unset or 0 for square corners.
    static constexpr const char *cornerRadiusProperty = "cornerRadius";

    // Styles the window: no title bar, a background that may be translucent (and is blurred if the desktop
    // supports it), a normal task bar entry. Call once, before the window is first shown. The style survives
    // re-creation of the native window.
    virtual void style(QWindow &window) = 0;

    // Shows the window on the current workspace, centred on the screen with the pointer, above all others and
    // with the keyboard focus, even if another application is active. Completes asynchronously; meanwhile the
    // window may be hidden or destroyed, or this called again.
    //
    // `activationToken` identifies the user input that caused this, if known (see ProgramInstance).
    virtual void bringForward(QWindow &window, const QString &activationToken = QString()) = 0;

    // Hides the whole application, so that the previously active one is activated again. Returns false if the
    // window system can't do that; the caller then hides the windows.
    virtual bool hideApplication() { return false; }

    // The height, in device-independent pixels, of the title bar with buttons that the window system draws
    // over the top of a styled window; 0 if none. If there is one, the window system also provides border,
    // corners, resizing and background material.
    virtual int titleBarHeight() const { return 0; }

    // Whether a compositor makes translucent windows possible; if not, backgrounds must be opaque. Up to date
    // when `bringForward` shows a window.
    bool isCompositing() const { return m_isCompositing; }

Q_SIGNALS:
    void isCompositingChanged();

protected:
    using QObject::QObject;

    // Called by the backend; emits only if the value changes.
    void setCompositing(bool isCompositing);

private:
    bool m_isCompositing = false;
};
