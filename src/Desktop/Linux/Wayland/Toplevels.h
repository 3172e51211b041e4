// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"
#include "Desktop/Linux/Wayland/Connection.h"
#include "Desktop/Linux/Wayland/SwayTree.h"
#include "Desktop/Linux/WindowSystem/ApplicationNumbers.h"
#include "Desktop/Linux/WindowSystem/WindowSystem.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

struct zwlr_foreign_toplevel_handle_v1;
struct zwlr_foreign_toplevel_manager_v1;

// The windows of a compositor with the protocol wlr-foreign-toplevel-management. The protocol reports neither
// processes nor the stacking order. The order is that of use. sway is asked for the processes otherwise. With
// other compositors, a window's process is the only one that is connected to the compositor and runs its
// application's program; if there are none or several, all windows with this application identifier count as
// one application of unknown process. This program's own window is the one with its application identifier.
// `connection` and `clock` must outlive this object. Thread: main.
class WaylandToplevels : public WindowSystem
{
public:
    // The names of the programs that may show windows with this application identifier.
    using ProgramsOf = std::function<QCoro::Task<QStringList>(QString applicationIdentifier)>;

    static bool isOfferedBy(const WaylandConnection &connection);

    WaylandToplevels(WaylandConnection &connection, ProgramsOf programsOf, Clock &clock);
    ~WaylandToplevels() override;
    WaylandToplevels(const WaylandToplevels &) = delete;
    WaylandToplevels &operator=(const WaylandToplevels &) = delete;

    QCoro::Task<WindowSnapshot> snapshot() override;
    QCoro::Task<void> bringForward(DesktopWindow window) override;
    QCoro::Task<void> close(QList<DesktopWindow> windows) override;
    QCoro::Task<QString> startupIdentifier() override;

private:
    struct Toplevel;
    struct Listener;

    QCoro::Task<void> activate(std::uint32_t window);
    void add(zwlr_foreign_toplevel_handle_v1 *handle);
    void remove(const Toplevel *toplevel);
    void remember(const Toplevel &toplevel);
    Toplevel *find(std::uint32_t identifier) const;
    DesktopWindow described(const Toplevel &toplevel);
    QCoro::Task<void> learnProcesses();
    QList<std::uint32_t> withUndecidedProcess() const;
    QCoro::Task<void> learnProcessesFromSway();
    QCoro::Task<qint64> processRunning(QString applicationIdentifier) const;
    static std::optional<qint64> processAmong(QList<SwayTree::Window> windows, const Toplevel &toplevel);
    qint64 processOf(const Toplevel &toplevel);

    WaylandConnection &m_connection;
    ProgramsOf m_programsOf;
    Clock &m_clock;
    zwlr_foreign_toplevel_manager_v1 *m_manager = nullptr;
    std::vector<std::unique_ptr<Toplevel>> m_toplevels; // oldest first
    QList<std::uint32_t> m_recentlyActivated;           // latest first
    ApplicationNumbers m_applications;                  // of those whose process is unknown
    bool m_isSway = true;                               // until the opposite is known
    std::uint32_t m_lastIdentifier = 0;
    int m_launches = 0;
};
