// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Window/StylingKeeper.h"

#include <QPlatformSurfaceEvent>
#include <QWindow>

#include <utility>

StylingKeeper::StylingKeeper(QWindow &window, std::function<void()> style)
    : QObject(&window), m_window(window), m_style(std::move(style))
{
    window.installEventFilter(this);
    connect(&window, &QWindow::screenChanged, this, &StylingKeeper::styleLater);
    this->style();
}

bool StylingKeeper::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::PlatformSurface:
        if (static_cast<QPlatformSurfaceEvent *>(event)->surfaceEventType() ==
            QPlatformSurfaceEvent::SurfaceCreated)
            style();
        break;
    case QEvent::WindowStateChange:
        // Qt sends this event after setting its own style; the deferred call covers later changes.
        style();
        styleLater();
        break;
    case QEvent::Show:
        // Sent before the native window is shown.
        styleLater();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void StylingKeeper::style()
{
    if (m_window.handle())
        m_style();
}

void StylingKeeper::styleLater()
{
    if (std::exchange(m_isDue, true))
        return;
    const auto styleNow = [this] {
        m_isDue = false;
        style();
    };
    QMetaObject::invokeMethod(this, styleNow, Qt::QueuedConnection);
}
