// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusContext>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

// The object by which desktops start and activate the program over the session bus, as the desktop entry
// specification lays down. What it exports are its public slots. Main thread.
class ApplicationService : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    // The only action: what the hot key does. The desktop entry names it too.
    static constexpr auto toggleAction = QLatin1StringView("toggle");

    using QObject::QObject;

    // The token of the user's deed in the data that comes with a call; empty when there is none.
    static QString tokenIn(const QVariantMap &platformData);
    static QVariantMap platformData(const QString &token);

public Q_SLOTS:
    void Activate(const QVariantMap &platformData);
    // There is nothing to open; whoever asks sees the window.
    void Open(const QStringList &uris, const QVariantMap &platformData);
    void ActivateAction(const QString &action, const QVariantList &parameter,
                        const QVariantMap &platformData);

Q_SIGNALS:
    void activated(const QString &token);
    void toggleRequested(const QString &token);
};
