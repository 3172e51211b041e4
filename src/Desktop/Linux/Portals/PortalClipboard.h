// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Pasting/ClipboardAccess.h"
#include "Desktop/Linux/Portals/PortalBus.h"

#include <QDBusObjectPath>

// The clipboard through the portal Clipboard, in a session of another portal. What this program has put there
// goes with the session; then the desktop keeps it in one format. `bus` must outlive this object. Thread:
// main.
class PortalClipboard : public QObject, public ClipboardAccess
{
    Q_OBJECT

public:
    PortalClipboard(PortalBus &bus, const QString &session);

    // Asks for the access together with the session's devices: call it before the session starts. False if
    // the portal knows no clipboard.
    QCoro::Task<bool> request();

    QCoro::Task<void> update() override;
    QCoro::Task<ClipboardContent> read(ClipboardFormats::Choice wanted) override;
    void put(std::shared_ptr<ClipboardOffer> offer) override;
    bool isReadByDesktop() const override { return true; }

Q_SIGNALS:
    void ownerChanged();

private Q_SLOTS:
    void changeOwner(const QDBusObjectPath &session, const QVariantMap &change);
    void transfer(const QDBusObjectPath &session, const QString &format, uint serial);

private:
    QCoro::Task<QDBusMessage> call(QString method, QVariantList arguments);
    QCoro::Task<QByteArray> dataOf(QByteArray format);
    static QCoro::Task<void> deliver(PortalClipboard &self, QString format, uint serial);

    PortalBus &m_bus;
    const QString m_session;
    bool m_isKnown = false;   // whether the portal has told about the content
    QByteArrayList m_formats; // of another program's content
    std::shared_ptr<ClipboardOffer> m_offer;
    bool m_isOfferThere = true; // the desktop has taken the offer
    BoundedQueue m_reader{QStringLiteral("desktop.clipboard"), QStringLiteral("The clipboard")};
};
