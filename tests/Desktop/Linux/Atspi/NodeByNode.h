// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Protocol.h"
#include "Desktop/Linux/Atspi/Toolkits.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QString>

// One element as seen by a traversal.
struct WalkedNode
{
    QString role;
    QString label;
    qsizetype children = 0;

    friend bool operator==(const WalkedNode &, const WalkedNode &) = default;
};

// A reference implementation of the traversal: breadth first, one blocking call at a time, without a cache,
// on a connection of its own.
class NodeByNode
{
public:
    NodeByNode();
    ~NodeByNode();

    const QDBusConnection &bus() const { return m_bus; }

    // The first `most` elements of this process's application. Elements deeper than `depth` (the root has
    // depth 0) aren't expanded.
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
