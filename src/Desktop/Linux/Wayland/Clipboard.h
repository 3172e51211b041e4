// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Pasting/ClipboardAccess.h"
#include "Desktop/Linux/Wayland/Connection.h"

#include <memory>
#include <vector>

struct zwlr_data_control_device_v1;
struct zwlr_data_control_manager_v1;
struct zwlr_data_control_offer_v1;

// The clipboard of a compositor with the protocol wlr-data-control. `connection` must outlive this object.
// Thread: main.
class WaylandClipboard : public ClipboardAccess
{
public:
    static bool isOfferedBy(const WaylandConnection &connection);

    explicit WaylandClipboard(WaylandConnection &connection);
    ~WaylandClipboard() override;
    WaylandClipboard(const WaylandClipboard &) = delete;
    WaylandClipboard &operator=(const WaylandClipboard &) = delete;

    QCoro::Task<void> update() override;
    QCoro::Task<ClipboardContent> read(ClipboardFormats::Choice wanted) override;
    void put(std::shared_ptr<ClipboardOffer> offer) override;
    bool isReadByDesktop() const override { return false; }

private:
    struct Source;
    struct Selection;
    struct Listener;

    WaylandConnection &m_connection;
    zwlr_data_control_manager_v1 *m_manager = nullptr;
    zwlr_data_control_device_v1 *m_device = nullptr;
    std::vector<std::unique_ptr<Selection>> m_selections; // at most the current one and new ones
    Selection *m_selection = nullptr;                     // null if the clipboard is empty
    std::unique_ptr<Source> m_source;                     // the last that was put
    BoundedQueue m_reader{QStringLiteral("desktop.clipboard"), QStringLiteral("The clipboard")};
};
