// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

#include <functional>

class QWindow;

// Keeps a native window styled. Qt creates the native window, and resets its style whenever the window's
// state changes, for example on entering and leaving full screen. Independent of macOS. Thread: main.
class StylingKeeper : public QObject
{
    Q_OBJECT

public:
    // Owned by the window. Calls `style` at once and whenever the styling may have been lost, but only while
    // there is a native window; so `style` must be idempotent.
    StylingKeeper(QWindow &window, std::function<void()> style);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void style();
    void styleLater();

    QWindow &m_window;
    std::function<void()> m_style;
    bool m_isDue = false;
};
