// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"
#include "Desktop/Linux/Wayland/Connection.h"
#include "Desktop/Linux/Wayland/PlasmaDesktops.h"
#include "Desktop/Linux/WindowSystem/WindowSystem.h"

#include <memory>
#include <vector>

struct org_kde_plasma_window_management;

// The windows of a compositor with the protocol plasma-window-management, which Plasma 6 offers to programs
// whose desktop entry names it. `connection` and `clock` must outlive this object. Thread: main.
class PlasmaWindows : public WindowSystem
{
public:
    static bool isOfferedBy(const WaylandConnection &connection);

    // Whether the compositor seems to offer it only to other programs: those with a desktop entry.
    static bool isWithheldBy(const WaylandConnection &connection);

    PlasmaWindows(WaylandConnection &connection, Clock &clock);
    ~PlasmaWindows() override;
    PlasmaWindows(const PlasmaWindows &) = delete;
    PlasmaWindows &operator=(const PlasmaWindows &) = delete;

    QCoro::Task<WindowSnapshot> snapshot() override;
    QCoro::Task<void> bringForward(DesktopWindow window) override;
    QCoro::Task<void> close(QList<DesktopWindow> windows) override;
    QCoro::Task<QString> startupIdentifier() override;

private:
    struct Window;
    struct Listener;
    using StackingOrder = std::shared_ptr<QStringList>; // the windows' UUIDs, from the bottom to the top

    QCoro::Task<void> activate(std::uint32_t window);
    void add(const char *uuid);
    void remove(const Window *window);
    Window *find(std::uint32_t identifier) const;
    StackingOrder requestStackingOrder();
    QList<std::uint32_t> frontToBack(const QStringList &bottomToTop) const;
    DesktopWindow described(const Window &window) const;

    WaylandConnection &m_connection;
    Clock &m_clock;
    PlasmaDesktops m_desktops;
    org_kde_plasma_window_management *m_management = nullptr;
    std::vector<std::unique_ptr<Window>> m_windows; // oldest first
    QList<std::uint32_t> m_recentlyActivated;       // latest first
    std::uint32_t m_lastIdentifier = 0;
    int m_launches = 0;
};
