// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// What the program KeyReceiver has printed.
namespace ReceivedKeys {

struct Event
{
    bool isPress = false;
    int key = 0;
    int modifiers = 0;
    QString text;
};

inline QList<Event> eventsIn(const QByteArray &told)
{
    QList<Event> events;
    for (const QByteArray &line : told.split('\n')) {
        const QByteArrayList words = line.split(' ');
        if (words.size() == 5)
            events.append({words[0] == "press", words[1].toInt(nullptr, 16), words[2].toInt(nullptr, 16),
                           QString::fromUtf8(QByteArray::fromHex(words[3]))});
        else if (words[0] == "paste")
            events.append({true, 0, 0, QString::fromUtf8(QByteArray::fromHex(words[1]))});
    }
    return events;
}

// The text that was typed or pasted.
inline QString textIn(const QByteArray &told)
{
    QString text;
    for (const Event &event : eventsIn(told)) {
        const bool isPasteKey = event.key == Qt::Key_V && (event.modifiers & int(Qt::ControlModifier));
        if (event.isPress && !isPasteKey)
            text += event.text;
    }
    return text;
}

// The keys that were pressed more often than released.
inline QList<int> pressedKeys(const QByteArray &told)
{
    QList<int> keys;
    for (const Event &event : eventsIn(told)) {
        if (event.isPress && event.key != 0)
            keys.append(event.key);
        else
            keys.removeOne(event.key);
    }
    return keys;
}

} // namespace ReceivedKeys
