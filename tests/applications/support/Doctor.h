// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <utility>

// Runs `orvane doctor` on the private desktop, and captures the state that it must not change. Thread: main.
namespace Doctor {

// Its JSON report.
struct Report
{
    int status = -1;
    QString text; // the raw output
    QJsonObject object = {};

    QStringList identifiers() const;
    // Of the check with this identifier; empty if there is none.
    QString state(const QString &identifier) const { return entry(identifier, QStringLiteral("state")); }
    QString finding(const QString &identifier) const { return entry(identifier, QStringLiteral("finding")); }
    QString advice(const QString &identifier) const { return entry(identifier, QStringLiteral("advice")); }

private:
    QString entry(const QString &identifier, const QString &key) const;
};

// Environment variables and their values; an empty value unsets the variable.
using Environment = QList<std::pair<QString, QString>>;

Report consult(const Environment &changes = {});

// The IsEnabled switch. A call starts the AT-SPI launcher if it isn't running.
bool isAccessibilityOn();
void switchAccessibility(bool on);

// A snapshot of everything that an examination might change.
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
