// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

// The clipboard of the private GNOME desktop, as another application uses it. Runs the event loop while it
// waits, since this program may own the clipboard. Thread: main.
namespace GnomeClipboard {

inline const QString plainText = QStringLiteral("text/plain;charset=utf-8");

// Copies a content, by format, as an application does that stays open; none empties the clipboard.
void copy(const QMap<QString, QByteArray> &content);

// Whether the content that was copied is handed out; it is at first.
void setHandedOut(bool isHandedOut);

QStringList formats();

// What is in the clipboard in this format; null on timeout.
QByteArray content(const QString &format = plainText);

} // namespace GnomeClipboard
