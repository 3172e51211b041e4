// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Window/WaylandWindowStyler.h"

#include <QWindow>

namespace {

// Compositors that tile windows let those float whose size is fixed when they appear. It isn't any more once
// the window has the focus.
void appear(QWindow &window)
{
    const QSize least = window.minimumSize();
    const QSize most = window.maximumSize();
    if (least != most) {
        window.setMinimumSize(window.size());
        window.setMaximumSize(window.size());
        const auto release = [&window, least, most] {
            window.setMinimumSize(least);
            window.setMaximumSize(most);
        };
        QObject::connect(&window, &QWindow::activeChanged, &window, release, Qt::SingleShotConnection);
    }
    window.show();
}

} // namespace

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
    if (!window.isVisible())
        appear(window);
    window.raise();
    window.requestActivate();
}
