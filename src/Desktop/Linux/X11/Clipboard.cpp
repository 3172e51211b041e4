// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/X11/Clipboard.h"

#include "Desktop/BoundedQueue.h"
#include "Desktop/Linux/X11/Connection.h"

#include <QSocketNotifier>

#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

constexpr std::uint32_t longestText = 1 << 20; // in units of four bytes

constexpr std::chrono::milliseconds limit = 3 * Deadlines::answer;

} // namespace

// This program's part in the protocol of selections. Thread: the clipboard's, except for `interrupt`.
class X11Clipboard::Worker : public QObject
{
public:
    void put(const QByteArray &text);
    std::optional<QString> read();

    // Ends current and future waits.
    void interrupt() { m_isInterrupted = true; }

private:
    void connectToServer();
    void handle(const xcb_generic_event_t &event);
    void answer(const xcb_selection_request_event_t &request);
    bool store(const xcb_selection_request_event_t &request, xcb_atom_t property);
    xcb_window_t currentOwner() const;
    std::optional<QByteArray> readAs(xcb_atom_t format);
    xcb_connection_t *x() const { return m_connection->get(); }

    std::atomic_bool m_isInterrupted = false;
    std::optional<X11Connection> m_connection; // made at the first use
    std::optional<QSocketNotifier> m_notifier;
    xcb_atom_t m_clipboard = XCB_ATOM_NONE;
    xcb_atom_t m_targets = XCB_ATOM_NONE;
    xcb_atom_t m_incremental = XCB_ATOM_NONE;
    xcb_atom_t m_ownProperty = XCB_ATOM_NONE;
    QList<xcb_atom_t> m_textFormats; // in UTF-8
    QByteArray m_text;
    std::optional<xcb_atom_t> m_arrived; // the property with the text that was asked for, or none
};

void X11Clipboard::Worker::connectToServer()
{
    if (m_connection) {
        m_connection->requireAlive();
        return;
    }
    X11Connection::prepareThread();
    m_connection.emplace();
    m_notifier.emplace(m_connection->fileDescriptor(), QSocketNotifier::Read);
    connect(&*m_notifier, &QSocketNotifier::activated, this, [this] {
        m_connection->drainEvents();
        // A lost connection stays readable.
        m_notifier->setEnabled(!xcb_connection_has_error(x()));
    });
    m_clipboard = m_connection->internAtom("CLIPBOARD");
    m_targets = m_connection->internAtom("TARGETS");
    m_incremental = m_connection->internAtom("INCR");
    m_ownProperty = m_connection->internAtom("ORVANE_CLIPBOARD");
    for (const char *name : {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain"})
        m_textFormats.append(m_connection->internAtom(name));
    m_connection->addEventHandler([this](const xcb_generic_event_t &event) { handle(event); });
}

xcb_window_t X11Clipboard::Worker::currentOwner() const
{
    const auto cookie = xcb_get_selection_owner(x(), m_clipboard);
    const X11Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(x(), cookie, nullptr));
    return reply ? reply->owner : xcb_window_t(XCB_NONE);
}

void X11Clipboard::Worker::put(const QByteArray &text)
{
    connectToServer();
    const qint64 largest = 4LL * xcb_get_maximum_request_length(x()) - sizeof(xcb_change_property_request_t);
    if (text.size() > largest)
        throw PlatformError(u"The text is too long for the clipboard."_s);
    m_text = text;
    xcb_set_selection_owner(x(), m_connection->ownWindow(), m_clipboard, m_connection->serverTime());
    if (currentOwner() != m_connection->ownWindow())
        throw PlatformError(u"The X server doesn't take what is put into the clipboard."_s);
}

std::optional<QString> X11Clipboard::Worker::read()
{
    connectToServer();
    const xcb_window_t owner = currentOwner();
    if (owner == XCB_NONE)
        return std::nullopt;
    if (owner == m_connection->ownWindow())
        return QString::fromUtf8(m_text);
    if (const std::optional<QByteArray> text = readAs(m_textFormats.first()))
        return QString::fromUtf8(*text);
    // Old applications.
    const std::optional<QByteArray> text = readAs(XCB_ATOM_STRING);
    return text ? std::optional(QString::fromLatin1(*text)) : std::nullopt;
}

std::optional<QByteArray> X11Clipboard::Worker::readAs(xcb_atom_t format)
{
    m_arrived.reset();
    xcb_convert_selection(x(), m_connection->ownWindow(), m_clipboard, format, m_ownProperty,
                          m_connection->serverTime());
    xcb_flush(x());
    const auto end = std::chrono::steady_clock::now() + Deadlines::answer;
    while (!m_arrived && !m_isInterrupted && std::chrono::steady_clock::now() < end) {
        m_connection->requireAlive();
        std::this_thread::sleep_for(1ms);
        m_connection->drainEvents();
    }
    if (!m_arrived)
        throw PlatformError(u"The application that filled the clipboard doesn't answer."_s);
    if (*m_arrived == XCB_ATOM_NONE)
        return std::nullopt;
    const auto cookie = xcb_get_property(x(), 1, m_connection->ownWindow(), m_ownProperty,
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, longestText);
    const std::optional<X11Property> property = m_connection->read(cookie);
    if (property && property->type == m_incremental)
        throw PlatformError(u"The text in the clipboard is too long."_s);
    return property ? std::optional(property->bytes) : std::nullopt;
}

void X11Clipboard::Worker::handle(const xcb_generic_event_t &event)
{
    const int type = event.response_type & 0x7F;
    if (type == XCB_SELECTION_REQUEST) {
        answer(reinterpret_cast<const xcb_selection_request_event_t &>(event));
    } else if (type == XCB_SELECTION_NOTIFY) {
        const auto &notice = reinterpret_cast<const xcb_selection_notify_event_t &>(event);
        if (notice.selection == m_clipboard)
            m_arrived = notice.property;
    } else if (type == XCB_SELECTION_CLEAR) {
        const auto &loss = reinterpret_cast<const xcb_selection_clear_event_t &>(event);
        if (loss.selection == m_clipboard)
            m_text.clear();
    }
}

void X11Clipboard::Worker::answer(const xcb_selection_request_event_t &request)
{
    if (request.selection != m_clipboard)
        return;
    // Very old clients name no property.
    const xcb_atom_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    notice.property = store(request, property) ? property : xcb_atom_t(XCB_ATOM_NONE);
    xcb_send_event(x(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char *>(&notice));
    xcb_flush(x());
}

bool X11Clipboard::Worker::store(const xcb_selection_request_event_t &request, xcb_atom_t property)
{
    constexpr std::uint8_t bits = 8;
    constexpr std::uint8_t atomBits = 32;
    const auto put = [&](xcb_atom_t type, std::uint8_t format, qsizetype count, const void *data) {
        xcb_change_property(x(), XCB_PROP_MODE_REPLACE, request.requestor, property, type, format,
                            static_cast<std::uint32_t>(count), data);
        return true;
    };
    if (request.target == m_targets) {
        QList<xcb_atom_t> targets = m_textFormats;
        targets.prepend(m_targets);
        return put(XCB_ATOM_ATOM, atomBits, targets.size(), targets.constData());
    }
    if (m_textFormats.contains(request.target))
        return put(request.target, bits, m_text.size(), m_text.constData());
    return false;
}

X11Clipboard::~X11Clipboard()
{
    if (m_worker)
        m_worker->interrupt();
    m_thread.quit();
    m_thread.wait();
}

template <typename Job>
QFuture<std::optional<QString>> X11Clipboard::run(Job job)
{
    if (m_obstacle)
        throw PlatformError(*m_obstacle);
    if (!m_worker) {
        m_worker = new Worker;
        m_worker->moveToThread(&m_thread);
        QObject::connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
        m_thread.setObjectName(u"desktop.clipboard"_s);
        m_thread.start();
    }
    const auto promise = std::make_shared<QPromise<std::optional<QString>>>();
    promise->start();
    const auto carryOut = [promise, job = std::move(job), worker = m_worker] {
        try {
            promise->addResult(job(*worker));
        } catch (...) {
            promise->setException(std::current_exception());
        }
        promise->finish();
    };
    QMetaObject::invokeMethod(m_worker, carryOut, Qt::QueuedConnection);
    return promise->future();
}

QCoro::Task<std::optional<QString>> X11Clipboard::result(QFuture<std::optional<QString>> future)
{
    const bool isFinished = co_await finishedWithin(future, limit);
    if (!isFinished)
        throw PlatformError(u"The X server doesn't answer."_s);
    co_return future.result();
}

QCoro::Task<std::optional<QString>> X11Clipboard::read()
{
    const auto job = [](Worker &worker) { return worker.read(); };
    return result(run(job));
}

QCoro::Task<void> X11Clipboard::write(QString text)
{
    const auto job = [bytes = text.toUtf8()](Worker &worker) {
        worker.put(bytes);
        return std::optional<QString>();
    };
    const QFuture<std::optional<QString>> writing = run(job);
    co_await result(writing);
}
