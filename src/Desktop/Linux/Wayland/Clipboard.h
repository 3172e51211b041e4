// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Desktop/Clock.h"
#include "Desktop/Linux/Wayland/Connection.h"

#include <QByteArrayList>

#include <memory>
#include <vector>

struct zwlr_data_control_device_v1;
struct zwlr_data_control_manager_v1;
struct zwlr_data_control_offer_v1;

// The clipboard of a compositor with the protocol wlr-data-control: lends a text to it, so that it can be
// pasted, and gives the user's content back afterwards, in all its formats. That is handed out by this
// program then, until something else is copied. `connection` and `clock` must outlive this object. Thread:
// main.
class WaylandClipboard
{
public:
    static bool isOfferedBy(const WaylandConnection &connection);

    WaylandClipboard(WaylandConnection &connection, Clock &clock);
    ~WaylandClipboard();
    WaylandClipboard(const WaylandClipboard &) = delete;
    WaylandClipboard &operator=(const WaylandClipboard &) = delete;

    // Puts the text into the clipboard. Throws PlatformError, with the clipboard unchanged, if the user's
    // content can't be kept.
    QCoro::Task<void> lend(QString text);

    // Call it right before pasting; then wait. Returns whether an application has read the whole text since:
    // false after five seconds. Keys sent afterwards come after the text, since this also waits, for a second
    // at most, until the process `reader` has nothing to do.
    void expectReader();
    QCoro::Task<bool> waitUntilRead(qint64 reader);

    // Puts the user's content back, unless something else has been copied meanwhile.
    void giveBack();

private:
    struct Content;
    struct Reading;
    struct Source;
    struct Offer;
    struct Listener;

    QCoro::Task<void> keep();
    std::shared_ptr<Source> makeSource(const std::shared_ptr<Content> &content);
    void select(const std::shared_ptr<Source> &source);
    void handOut(const Source &source, const QByteArray &format, int descriptor);
    QCoro::Task<void> waitUntilIdle(qint64 process);
    static QCoro::Task<void> deliver(BoundedQueue &queue, QByteArray data, int descriptor,
                                     std::shared_ptr<Reading> reading);

    WaylandConnection &m_connection;
    Clock &m_clock;
    zwlr_data_control_manager_v1 *m_manager = nullptr;
    zwlr_data_control_device_v1 *m_device = nullptr;
    std::vector<std::unique_ptr<Offer>> m_offers; // at most the selection and new ones
    Offer *m_selection = nullptr;                 // null if the clipboard is empty
    std::shared_ptr<Content> m_kept;              // the user's, while a text is lent
    std::shared_ptr<Source> m_lent;
    std::shared_ptr<Source> m_returned; // the user's content, as long as it is in the clipboard
    BoundedQueue m_reader{QStringLiteral("desktop.clipboard"), QStringLiteral("The clipboard")};
    BoundedQueue m_writer{QStringLiteral("desktop.paste"), QStringLiteral("The clipboard")};
};
