// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusContext>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

// The D-Bus object through which desktops start and activate the program, as defined by the Desktop Entry
// Specification. Its public slots are exported. Thread: main.
class ApplicationService : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    // The only action, equivalent to the hot key. Also named in the desktop entry.
    static constexpr auto toggleAction = QLatin1StringView("toggle");

    using QObject::QObject;

    // Extracts the activation token from a call's platform data; empty if there is none.
    static QString tokenIn(const QVariantMap &platformData);
    static QVariantMap platformData(const QString &token);

public Q_SLOTS:
    void Activate(const QVariantMap &platformData);
    // The program opens no files; this only activates it.
    void Open(const QStringList &uris, const QVariantMap &platformData);
    void ActivateAction(const QString &action, const QVariantList &parameter,
                        const QVariantMap &platformData);

Q_SIGNALS:
    void activated(const QString &token);
    void toggleRequested(const QString &token);
};
