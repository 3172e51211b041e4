// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Pasting/ClipboardOffer.h"

#include "Desktop/Linux/Pasting/DataPipes.h"

#include <algorithm>

namespace {

const QByteArrayList textFormats{"text/plain;charset=utf-8", "text/plain", "UTF8_STRING"};

const QByteArray secrecyFormat = "x-kde-passwordManagerHint";
const QByteArray secrecy = "secret";

constexpr qint64 quiet = 50; // ms

} // namespace

QByteArrayList ClipboardFormats::all(const QByteArrayList &formats)
{
    return formats;
}

QByteArrayList ClipboardFormats::text(const QByteArrayList &formats)
{
    for (const QByteArray &format : textFormats) {
        if (formats.contains(format))
            return {format};
    }
    return {};
}

ClipboardOffer::ClipboardOffer(const ClipboardContent &content, std::shared_ptr<BoundedQueue> writer)
    : m_content(content), m_writer(std::move(writer))
{
}

std::shared_ptr<ClipboardOffer> ClipboardOffer::ofText(const QString &text, Recording recording,
                                                       std::shared_ptr<BoundedQueue> writer)
{
    ClipboardContent content;
    content.formats = textFormats;
    content.data = QList<QByteArray>(textFormats.size(), text.toUtf8());
    if (recording == Recording::Unwanted) {
        content.formats.append(secrecyFormat);
        content.data.append(secrecy);
    }
    return std::make_shared<ClipboardOffer>(content, std::move(writer));
}

QCoro::Task<bool> ClipboardOffer::deliver(QByteArray format, int descriptor)
{
    const std::shared_ptr<ClipboardOffer> self = shared_from_this();
    const QByteArray data = m_content.data.value(m_content.formats.indexOf(format));
    const auto readings = textFormats.contains(format) ? m_readings : std::make_shared<Readings>();
    auto job = [data, pipe = std::make_shared<DataPipes::Descriptor>(descriptor)]() mutable {
        const bool isRead = DataPipes::deliver(data, pipe, DataPipes::slowestApplication);
        pipe.reset();
        return isRead;
    };
    ++readings->underWay;
    bool isRead = false;
    try {
        isRead = co_await m_writer->run(std::move(job), 2 * DataPipes::slowestApplication);
    } catch (const PlatformError &) {
        // Another reader doesn't read.
    }
    --readings->underWay;
    readings->complete += isRead;
    readings->sinceLast.start();
    co_return isRead;
}

bool ClipboardOffer::hasText() const
{
    return std::any_of(textFormats.cbegin(), textFormats.cend(),
                       [this](const QByteArray &format) { return m_content.formats.contains(format); });
}

void ClipboardOffer::expectReader()
{
    m_readings = std::make_shared<Readings>();
}

bool ClipboardOffer::isRead() const
{
    return m_readings->underWay == 0 && m_readings->complete > 0 && m_readings->sinceLast.hasExpired(quiet);
}
