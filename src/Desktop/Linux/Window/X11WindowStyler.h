// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"
#include "Desktop/Linux/X11/Display.h"
#include "Desktop/MainThreadCalls.h"
#include "Desktop/Shell/WindowStyler.h"

#include <QPointer>
#include <QWindow>

#include <memory>

// Styles and activates the window on X11. Changes to the window itself use Qt's connection, so that they stay
// in order with Qt's own requests; all queries run on the X thread. Thread: main.
class X11WindowStyler : public WindowStyler
{
    Q_OBJECT

public:
    // Both must outlive this object.
    X11WindowStyler(X11Display &display, Clock &clock);

    void style(QWindow &window) override;
    void bringForward(QWindow &window, const QString &activationToken) override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Interned once, at construction.
    struct Atoms
    {
        xcb_atom_t windowType, normalWindow, blurBehind;
    };

    void followCompositor();
    void setHints(const QWindow &window) const;
    void setBlurredArea(const QWindow &window) const;
    QCoro::Task<void> summon(QPointer<QWindow> window, QString activationToken);
    QCoro::Task<std::optional<QPoint>> pointer();
    enum class Wanted { Managed, ManagedAndMapped };
    QCoro::Task<std::optional<DesktopWindow>> managed(QPointer<QWindow> window, Wanted wanted);
    QCoro::Task<void> activate(DesktopWindow window, QString activationToken);

    X11Display &m_display;
    Clock &m_clock;
    Atoms m_atoms;
    MainThreadCalls m_calls;
    int m_summons = 0; // a counter: a newer call supersedes one in progress
    QCoro::Task<void> m_summoning;
};
