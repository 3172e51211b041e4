// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <utility>

// `orvane doctor` on the private desktop, and what it must leave alone there. Main thread.
namespace Doctor {

// What it says to scripts.
struct Report
{
    int status = -1;
    QString text; // all of it
    QJsonObject object = {};

    QStringList identifiers() const;
    // Of the check with that identifier; empty when there is none.
    QString state(const QString &identifier) const { return entry(identifier, QStringLiteral("state")); }
    QString finding(const QString &identifier) const { return entry(identifier, QStringLiteral("finding")); }
    QString advice(const QString &identifier) const { return entry(identifier, QStringLiteral("advice")); }

private:
    QString entry(const QString &identifier, const QString &key) const;
};

// Variables of the environment and their values; those with an empty one are taken out.
using Environment = QList<std::pair<QString, QString>>;

Report consult(const Environment &changes = {});

// The desktop's switch, which must be running: asking for it starts it.
bool isAccessibilityOn();
void switchAccessibility(bool on);

// Everything that an examination might change, as it is at this moment.
struct DesktopState
{
    QString windows;
    QString activeClass;
    QByteArray keyboard;
    QStringList files;
    QList<qint64> processes;

    static DesktopState now();
};

} // namespace Doctor
