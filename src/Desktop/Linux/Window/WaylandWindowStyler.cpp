// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Window/WaylandWindowStyler.h"

#include <QWindow>

WaylandWindowStyler::WaylandWindowStyler()
{
    setCompositing(true);
}

void WaylandWindowStyler::style(QWindow &window)
{
    window.setFlag(Qt::FramelessWindowHint);
    QSurfaceFormat format = window.requestedFormat();
    format.setAlphaBufferSize(8);
    window.setFormat(format);
}

void WaylandWindowStyler::bringForward(QWindow &window, const QString &activationToken)
{
    // Qt reads the token from here when a window requests activation.
    if (!activationToken.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    // Compositors may ignore a request for activation, and leave the window where it is. A window that is
    // shown anew they place on the current workspace, with the focus.
    if (window.isVisible() && !window.isActive())
        window.hide();
    window.show();
    window.raise();
    window.requestActivate();
}
