// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/Clipboard.h"

#include "Desktop/Linux/Pasting/DataPipes.h"
#include "Desktop/Linux/Wayland/Object.h"

#include <wlr-data-control-unstable-v1-client-protocol.h>

using namespace std::chrono_literals;

// What this program hands out.
struct WaylandClipboard::Source
{
    WaylandObject<zwlr_data_control_source_v1, zwlr_data_control_source_v1_destroy> handle;
    std::shared_ptr<ClipboardOffer> offer;
};

// What is in the clipboard.
struct WaylandClipboard::Selection
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
        auto added = std::make_unique<Selection>();
        added->handle.reset(handle);
        zwlr_data_control_offer_v1_add_listener(handle, &offer, added.get());
        of(data).m_selections.push_back(std::move(added));
    }
    static void selection(void *data, Device *, zwlr_data_control_offer_v1 *handle)
    {
        WaylandClipboard &self = of(data);
        std::erase_if(self.m_selections, [handle](const auto &each) { return each->handle.get() != handle; });
        self.m_selection = self.m_selections.empty() ? nullptr : self.m_selections.front().get();
    }
    static void finished(void *, Device *) {}
    static void primarySelection(void *, Device *, zwlr_data_control_offer_v1 *) {}

    static void format(void *data, zwlr_data_control_offer_v1 *, const char *format)
    {
        Selection &selection = *static_cast<Selection *>(data);
        if (!selection.formats.contains(format))
            selection.formats.append(format);
    }

    static void send(void *data, zwlr_data_control_source_v1 *, const char *format, int descriptor)
    {
        static_cast<Source *>(data)->offer->deliver(format, descriptor);
    }
    static void cancelled(void *data, zwlr_data_control_source_v1 *)
    {
        static_cast<Source *>(data)->offer->isReplaced = true;
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

WaylandClipboard::WaylandClipboard(WaylandConnection &connection)
    : m_connection(connection),
      m_manager(connection.bind<zwlr_data_control_manager_v1>(zwlr_data_control_manager_v1_interface, 1)),
      m_device(zwlr_data_control_manager_v1_get_data_device(m_manager, connection.seat()))
{
    zwlr_data_control_device_v1_add_listener(m_device, &Listener::device, this);
    m_connection.flush();
}

WaylandClipboard::~WaylandClipboard()
{
    m_source.reset();
    m_selections.clear();
    zwlr_data_control_device_v1_destroy(m_device);
    zwlr_data_control_manager_v1_destroy(m_manager);
}

QCoro::Task<void> WaylandClipboard::update()
{
    return m_connection.roundTrip();
}

QCoro::Task<ClipboardContent> WaylandClipboard::read(ClipboardFormats::Choice wanted)
{
    ClipboardContent content;
    QList<DataPipes::SharedDescriptor> pipes;
    if (m_selection) {
        content.formats = wanted(m_selection->formats);
        for (const QByteArray &format : std::as_const(content.formats)) {
            const DataPipes::Pipe pipe = DataPipes::create();
            zwlr_data_control_offer_v1_receive(m_selection->handle.get(), format.constData(),
                                               pipe.writing->number());
            pipes.append(pipe.reading);
        }
        m_connection.flush();
    }
    const auto read = [pipes] { return DataPipes::readAll(pipes, DataPipes::slowestApplication); };
    content.data = co_await m_reader.run(read, DataPipes::slowestApplication + 500ms);
    co_return content;
}

void WaylandClipboard::put(std::shared_ptr<ClipboardOffer> offer)
{
    auto source = offer ? std::make_unique<Source>() : nullptr;
    if (source) {
        source->offer = std::move(offer);
        source->handle.reset(zwlr_data_control_manager_v1_create_data_source(m_manager));
        zwlr_data_control_source_v1_add_listener(source->handle.get(), &Listener::source, source.get());
        for (const QByteArray &format : source->offer->content().formats)
            zwlr_data_control_source_v1_offer(source->handle.get(), format.constData());
    }
    zwlr_data_control_device_v1_set_selection(m_device, source ? source->handle.get() : nullptr);
    m_connection.flush();
    m_source = std::move(source);
}
