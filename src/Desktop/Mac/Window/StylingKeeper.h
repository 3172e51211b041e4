// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

#include <functional>

class QWindow;

// Keeps a styling on a window's native side, beside what Qt sets there. Qt makes the native window, and sets
// its own style on it again whenever the window's state changes, as when it goes to full screen and comes
// back. Main thread. Takes nothing of macOS.
class StylingKeeper : public QObject
{
    Q_OBJECT

public:
    // Belongs to the window. `style` is called, only while there is a native window, at once and whenever the
    // styling may be gone; so it may find its work done.
    StylingKeeper(QWindow &window, std::function<void()> style);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void style();
    void styleLater();

    QWindow &m_window;
    std::function<void()> m_style;
    bool m_isDue = false;
};
