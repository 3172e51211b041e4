// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/Clipboard.h"

#include "Desktop/Linux/Processes/RunningProcess.h"
#include "Desktop/Linux/Wayland/DataPipes.h"
#include "Desktop/Linux/Wayland/Object.h"

#include <QCoroFuture>
#include <QElapsedTimer>

#include <algorithm>

#include <wlr-data-control-unstable-v1-client-protocol.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

const QByteArrayList textFormats{"text/plain;charset=utf-8", "text/plain", "UTF8_STRING"};

// Asks clipboard managers to record nothing.
const QByteArray secrecyFormat = "x-kde-passwordManagerHint";
const QByteArray secrecy = "secret";

// A clipboard manager reads what is new at once; it must not be taken for the application that pastes.
constexpr auto managersTurn = 20ms;

// Some applications read more than once.
constexpr qint64 quiet = 50; // ms

constexpr auto slowestApplication = 5000ms;

// An application may have read the text and not yet inserted it.
constexpr qint64 insertion = 1000; // ms; for applications that are never idle, such as video players
constexpr int idleLooks = 3;

} // namespace

// By format, in the order of the source.
struct WaylandClipboard::Content
{
    QByteArrayList formats;
    QList<QByteArray> data;
};

// The reading of a lent text. Shared with the worker's result.
struct WaylandClipboard::Reading
{
    int underWay = 0;
    int complete = 0;
    QElapsedTimer sinceLast;
};

struct WaylandClipboard::Source
{
    WaylandClipboard *owner = nullptr;
    WaylandObject<zwlr_data_control_source_v1, zwlr_data_control_source_v1_destroy> handle;
    std::shared_ptr<Content> content;
    std::shared_ptr<Reading> reading = std::make_shared<Reading>();
    bool isReplaced = false;
};

struct WaylandClipboard::Offer
{
    WaylandObject<zwlr_data_control_offer_v1, zwlr_data_control_offer_v1_destroy> handle;
    QByteArrayList formats;
};

// The protocol's callbacks.
struct WaylandClipboard::Listener
{
    using Device = zwlr_data_control_device_v1;

    static WaylandClipboard &of(void *data) { return *static_cast<WaylandClipboard *>(data); }

    static void newOffer(void *data, Device *, zwlr_data_control_offer_v1 *handle)
    {
        auto added = std::make_unique<Offer>();
        added->handle.reset(handle);
        zwlr_data_control_offer_v1_add_listener(handle, &offer, added.get());
        of(data).m_offers.push_back(std::move(added));
    }
    static void selection(void *data, Device *, zwlr_data_control_offer_v1 *handle)
    {
        WaylandClipboard &self = of(data);
        std::erase_if(self.m_offers, [handle](const auto &each) { return each->handle.get() != handle; });
        self.m_selection = self.m_offers.empty() ? nullptr : self.m_offers.front().get();
    }
    static void finished(void *, Device *) {}
    static void primarySelection(void *, Device *, zwlr_data_control_offer_v1 *) {}

    static void format(void *data, zwlr_data_control_offer_v1 *, const char *format)
    {
        Offer &offer = *static_cast<Offer *>(data);
        if (!offer.formats.contains(format))
            offer.formats.append(format);
    }

    static void send(void *data, zwlr_data_control_source_v1 *, const char *format, int descriptor)
    {
        const Source &source = *static_cast<Source *>(data);
        source.owner->handOut(source, format, descriptor);
    }
    static void cancelled(void *data, zwlr_data_control_source_v1 *)
    {
        static_cast<Source *>(data)->isReplaced = true;
    }

    static constexpr zwlr_data_control_device_v1_listener device{&newOffer, &selection, &finished,
                                                                 &primarySelection};
    static constexpr zwlr_data_control_offer_v1_listener offer{&format};
    static constexpr zwlr_data_control_source_v1_listener source{&send, &cancelled};
};

bool WaylandClipboard::isOfferedBy(const WaylandConnection &connection)
{
    return connection.seat() && connection.offers(zwlr_data_control_manager_v1_interface);
}

WaylandClipboard::WaylandClipboard(WaylandConnection &connection, Clock &clock)
    : m_connection(connection), m_clock(clock),
      m_manager(connection.bind<zwlr_data_control_manager_v1>(zwlr_data_control_manager_v1_interface, 1)),
      m_device(zwlr_data_control_manager_v1_get_data_device(m_manager, connection.seat()))
{
    zwlr_data_control_device_v1_add_listener(m_device, &Listener::device, this);
    m_connection.flush();
}

WaylandClipboard::~WaylandClipboard()
{
    giveBack();
    m_offers.clear();
    zwlr_data_control_device_v1_destroy(m_device);
    zwlr_data_control_manager_v1_destroy(m_manager);
}

QCoro::Task<void> WaylandClipboard::lend(QString text)
{
    co_await m_connection.roundTrip();
    if (!m_lent || m_lent->isReplaced)
        co_await keep();
    const QByteArray bytes = text.toUtf8();
    const auto content = std::make_shared<Content>();
    content->formats = textFormats;
    content->data = QList<QByteArray>(textFormats.size(), bytes);
    content->formats.append(secrecyFormat);
    content->data.append(secrecy);
    m_lent = makeSource(content);
    select(m_lent);
    co_await m_connection.roundTrip();
    co_await m_clock.sleep(managersTurn);
}

// Remembers the user's content.
QCoro::Task<void> WaylandClipboard::keep()
{
    if (m_returned && !m_returned->isReplaced) {
        m_kept = m_returned->content;
        co_return;
    }
    const auto content = std::make_shared<Content>();
    QList<DataPipes::SharedDescriptor> pipes;
    if (m_selection) {
        content->formats = m_selection->formats;
        for (const QByteArray &format : std::as_const(content->formats)) {
            const DataPipes::Pipe pipe = DataPipes::create();
            zwlr_data_control_offer_v1_receive(m_selection->handle.get(), format.constData(),
                                               pipe.writing->number());
            pipes.append(pipe.reading);
        }
        m_connection.flush();
    }
    const auto read = [pipes] { return DataPipes::readAll(pipes, slowestApplication); };
    content->data = co_await m_reader.run(read, slowestApplication + 500ms);
    m_kept = content;
}

std::shared_ptr<WaylandClipboard::Source>
WaylandClipboard::makeSource(const std::shared_ptr<Content> &content)
{
    auto source = std::make_shared<Source>();
    source->owner = this;
    source->content = content;
    source->handle.reset(zwlr_data_control_manager_v1_create_data_source(m_manager));
    zwlr_data_control_source_v1_add_listener(source->handle.get(), &Listener::source, source.get());
    for (const QByteArray &format : std::as_const(content->formats))
        zwlr_data_control_source_v1_offer(source->handle.get(), format.constData());
    return source;
}

void WaylandClipboard::select(const std::shared_ptr<Source> &source)
{
    zwlr_data_control_device_v1_set_selection(m_device, source ? source->handle.get() : nullptr);
    m_connection.flush();
}

void WaylandClipboard::handOut(const Source &source, const QByteArray &format, int descriptor)
{
    const qsizetype index = source.content->formats.indexOf(format);
    const auto reading = textFormats.contains(format) ? source.reading : std::make_shared<Reading>();
    deliver(m_writer, source.content->data.value(index), descriptor, reading);
}

QCoro::Task<void> WaylandClipboard::deliver(BoundedQueue &queue, QByteArray data, int descriptor,
                                            std::shared_ptr<Reading> reading)
{
    auto job = [data, pipe = std::make_shared<DataPipes::Descriptor>(descriptor)]() mutable {
        const bool isRead = DataPipes::deliver(data, pipe, slowestApplication);
        pipe.reset(); // tells the reader that this is the end
        return isRead;
    };
    ++reading->underWay;
    bool isRead = false;
    try {
        isRead = co_await queue.run(std::move(job), 2 * slowestApplication);
    } catch (const PlatformError &) {
        // Another reader doesn't read.
    }
    --reading->underWay;
    reading->complete += isRead;
    reading->sinceLast.start();
}

void WaylandClipboard::expectReader()
{
    m_lent->reading = std::make_shared<Reading>();
}

QCoro::Task<bool> WaylandClipboard::waitUntilRead(qint64 reader)
{
    const std::shared_ptr<Reading> reading = m_lent->reading;
    QElapsedTimer elapsed;
    elapsed.start();
    while (!elapsed.hasExpired(slowestApplication.count())) {
        if (reading->underWay == 0 && reading->complete > 0 && reading->sinceLast.hasExpired(quiet)) {
            co_await waitUntilIdle(reader);
            co_return true;
        }
        co_await m_clock.sleep(5ms);
    }
    co_return false;
}

QCoro::Task<void> WaylandClipboard::waitUntilIdle(qint64 process)
{
    QElapsedTimer elapsed;
    elapsed.start();
    for (int looks = 0; looks < idleLooks && !elapsed.hasExpired(insertion);) {
        const auto look = [process] { return isBusyProcess(process); };
        const bool isBusy = co_await m_reader.run(look);
        looks = isBusy ? 0 : looks + 1;
        co_await m_clock.sleep(5ms);
    }
}

void WaylandClipboard::giveBack()
{
    if (!m_lent)
        return;
    if (!m_lent->isReplaced) {
        m_returned = m_kept->formats.isEmpty() ? nullptr : makeSource(m_kept);
        select(m_returned);
    }
    m_lent.reset();
    m_kept.reset();
}
