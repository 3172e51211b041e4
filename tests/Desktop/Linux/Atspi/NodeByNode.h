// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Protocol.h"
#include "Desktop/Linux/Atspi/Toolkits.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QString>

// What a walk says of one element.
struct WalkedNode
{
    QString role;
    QString label;
    qsizetype children = 0;

    friend bool operator==(const WalkedNode &, const WalkedNode &) = default;
};

// The plain way to read a tree, to measure the other one against: breadth first, one call after the other,
// each waited for, nothing remembered. It blocks, and has a connection of its own.
class NodeByNode
{
public:
    NodeByNode();
    ~NodeByNode();

    const QDBusConnection &bus() const { return m_bus; }

    // The first `most` elements of the application with this process; children are taken from elements no
    // deeper than `depth` (the root has depth 0).
    QList<WalkedNode> walk(qint64 processIdentifier, qsizetype most, int depth = 1000);

    AtspiReference rootOf(qint64 processIdentifier);
    QDBusMessage ask(const QDBusMessage &call);

private:
    struct Place
    {
        AtspiReference object;
        AtspiRole parentRole = AtspiRole::Invalid;
        int depth = 0;
    };

    QString property(const AtspiReference &object, const QString &interface, const QString &name,
                     AtspiToolkit toolkit);
    WalkedNode read(const Place &place, AtspiToolkit toolkit, QList<Place> &children);
    QString label(const AtspiReference &object, AtspiRole role, const QString &axRole, AtspiToolkit toolkit,
                  bool hasChildren);
    QString contents(const AtspiReference &object, int end);

    QDBusConnection m_bus;
};
