// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Portals/PortalClipboard.h"

#include "Desktop/Linux/Pasting/DataPipes.h"

#include <QCoroSignal>
#include <QDBusArgument>
#include <QDBusUnixFileDescriptor>
#include <QPointer>

#include <unistd.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

const QString interface = u"org.freedesktop.portal.Clipboard"_s;

// The desktop keeps a text whose owner has gone, unless a content without texts has followed.
const QString nothing = u"application/x-orvane-nothing"_s;

// Of X11, not the content's.
const QByteArrayList protocolFormats{"TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS", "DELETE"};

// The portal tells what is in the clipboard soon after the session has started; of an empty one, nothing.
constexpr auto firstNews = 500ms;

// GNOME wraps them into a structure.
QByteArrayList formatsIn(const QVariantMap &change)
{
    const auto value = change.value(u"mime_types"_s).value<QDBusArgument>();
    QStringList texts;
    if (value.currentType() == QDBusArgument::StructureType) {
        value.beginStructure();
        value >> texts;
        value.endStructure();
    } else {
        texts = qdbus_cast<QStringList>(change.value(u"mime_types"_s));
    }
    QByteArrayList formats;
    for (const QString &text : std::as_const(texts)) {
        if (!protocolFormats.contains(text.toUtf8()))
            formats.append(text.toUtf8());
    }
    return formats;
}

QStringList texts(const QByteArrayList &bytes)
{
    QStringList result;
    for (const QByteArray &each : bytes)
        result.append(QString::fromUtf8(each));
    return result;
}

} // namespace

PortalClipboard::PortalClipboard(PortalBus &bus, const QString &session) : m_bus(bus), m_session(session)
{
    m_bus.listen(interface, u"SelectionOwnerChanged"_s, this,
                 SLOT(changeOwner(QDBusObjectPath, QVariantMap)));
    m_bus.listen(interface, u"SelectionTransfer"_s, this, SLOT(transfer(QDBusObjectPath, QString, uint)));
}

QCoro::Task<QDBusMessage> PortalClipboard::call(QString method, QVariantList arguments)
{
    arguments.prepend(QVariant::fromValue(QDBusObjectPath(m_session)));
    return m_bus.call(PortalBus::path(), interface, method, arguments);
}

QCoro::Task<bool> PortalClipboard::request()
{
    const QVariantList options{QVariantMap()};
    try {
        co_await call(u"RequestClipboard"_s, options);
        co_return true;
    } catch (const PlatformError &) {
        co_return false;
    }
}

QCoro::Task<void> PortalClipboard::update()
{
    const QPointer<PortalClipboard> self(this);
    if (!m_isKnown) {
        co_await qCoro(this, &PortalClipboard::ownerChanged, firstNews);
        if (!self)
            co_return;
        m_isKnown = true;
    }
    while (self && !m_isOfferThere) {
        const auto changed = co_await qCoro(this, &PortalClipboard::ownerChanged, Deadlines::answer);
        if (!changed)
            throw PlatformError(u"The desktop doesn't take what is put into the clipboard."_s);
    }
}

void PortalClipboard::changeOwner(const QDBusObjectPath &session, const QVariantMap &change)
{
    if (session.path() != m_session)
        return;
    const bool isOurs = change.value(u"session_is_owner"_s).toBool();
    m_isKnown = true;
    m_isOfferThere = m_isOfferThere || isOurs;
    if (m_offer)
        m_offer->isReplaced = m_isOfferThere && !isOurs;
    m_formats = isOurs ? QByteArrayList() : formatsIn(change);
    Q_EMIT ownerChanged();
}

QCoro::Task<ClipboardContent> PortalClipboard::read(ClipboardFormats::Choice wanted)
{
    const QPointer<PortalClipboard> self(this);
    ClipboardContent content;
    content.formats = wanted(m_formats);
    for (const QByteArray &format : std::as_const(content.formats)) {
        content.data.append(co_await dataOf(format));
        if (!self)
            break;
    }
    co_return content;
}

QCoro::Task<QByteArray> PortalClipboard::dataOf(QByteArray format)
{
    const QVariantList arguments{QString::fromUtf8(format)};
    const QDBusMessage answer = co_await call(u"SelectionRead"_s, arguments);
    const auto descriptor = qvariant_cast<QDBusUnixFileDescriptor>(answer.arguments().value(0));
    const QList<DataPipes::SharedDescriptor> pipes{
        std::make_shared<DataPipes::Descriptor>(dup(descriptor.fileDescriptor()))};
    const auto read = [pipes] { return DataPipes::readAll(pipes, DataPipes::slowestApplication); };
    const QList<QByteArray> data = co_await m_reader.run(read, DataPipes::slowestApplication + 500ms);
    co_return data.value(0);
}

void PortalClipboard::put(std::shared_ptr<ClipboardOffer> offer)
{
    m_offer = std::move(offer);
    m_isOfferThere = false;
    const QStringList formats = m_offer ? texts(m_offer->content().formats) : QStringList{nothing};
    m_bus.send(PortalBus::path(), interface, u"SetSelection"_s,
               {QVariant::fromValue(QDBusObjectPath(m_session)), QVariantMap{{u"mime_types"_s, formats}}});
}

void PortalClipboard::transfer(const QDBusObjectPath &session, const QString &format, uint serial)
{
    if (session.path() == m_session)
        deliver(*this, format, serial);
}

// Errors concern the reader only.
QCoro::Task<void> PortalClipboard::deliver(PortalClipboard &clipboard, QString format, uint serial)
{
    const QPointer<PortalClipboard> self(&clipboard);
    try {
        const std::shared_ptr<ClipboardOffer> offer = self->m_offer;
        const QVariantList arguments{serial};
        const QDBusMessage answer = co_await self->call(u"SelectionWrite"_s, arguments);
        const auto descriptor = qvariant_cast<QDBusUnixFileDescriptor>(answer.arguments().value(0));
        bool isDelivered = false;
        if (offer)
            isDelivered = co_await offer->deliver(format.toUtf8(), dup(descriptor.fileDescriptor()));
        const QVariantList result{serial, isDelivered};
        if (self)
            co_await self->call(u"SelectionWriteDone"_s, result);
    } catch (const PlatformError &) {
    }
}
