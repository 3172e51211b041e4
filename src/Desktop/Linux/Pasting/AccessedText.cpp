// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Pasting/AccessedText.h"

#include "Desktop/Linux/Pasting/DataPipes.h"

#include <QCoroTimer>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

QCoro::Task<std::optional<QString>> AccessedText::read()
{
    return readFrom(access());
}

QCoro::Task<void> AccessedText::write(QString text)
{
    return writeTo(access(), text);
}

ClipboardAccess &AccessedText::access()
{
    if (!m_access)
        m_access = m_open();
    if (!m_access)
        throw PlatformError(u"This desktop gives no access to its clipboard."_s);
    return *m_access;
}

QCoro::Task<std::optional<QString>> AccessedText::readFrom(ClipboardAccess &access)
{
    co_await access.update();
    const ClipboardContent content = co_await access.read(&ClipboardFormats::text);
    std::optional<QString> text;
    if (!content.data.isEmpty())
        text = QString::fromUtf8(content.data.first());
    co_return text;
}

QCoro::Task<void> AccessedText::writeTo(ClipboardAccess &access, QString text)
{
    const auto writer = std::make_shared<BoundedQueue>(u"desktop.clipboard"_s, u"The clipboard"_s);
    const auto offer = ClipboardOffer::ofText(text, ClipboardOffer::Recording::Allowed, writer);
    access.put(offer);
    co_await access.update();
    if (!access.isReadByDesktop())
        co_return;
    QElapsedTimer elapsed;
    elapsed.start();
    while (!offer->isRead() && !elapsed.hasExpired(DataPipes::slowestApplication.count())) {
        const auto moment = 5ms;
        co_await QCoro::sleepFor(moment);
    }
}
