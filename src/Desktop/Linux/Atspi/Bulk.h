// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Protocol.h"
#include "Desktop/Linux/Atspi/Roles.h"

#include <QDBusMessage>
#include <QHash>
#include <QList>

// One object as an application's bulk answer describes it.
struct AtspiCacheItem
{
    AtspiReference object;
    AtspiReference parent;
    int indexInParent = -1;
    int childCount = 0; // negative where the application did not count
    QString name;
    QString description;
    AtspiRole role = AtspiRole::Invalid;
};

// All objects that an application knows of, as it told them in one answer, with the tree rebuilt from
// parents and indices: the answer's own order is that of a hash. Immutable once made, so that it can be built
// on a worker thread and read on the main thread.
class AtspiCache
{
public:
    AtspiCache() = default;
    explicit AtspiCache(QList<AtspiCacheItem> items);

    // Of the reply to "GetItems"; empty after an error, or from a toolkit that answers in another format.
    static AtspiCache fromReply(const QDBusMessage &reply);

    // In no order that means anything.
    const QList<AtspiCacheItem> &items() const { return m_items; }

    // The object's item, or null where the answer left it out; valid as long as the cache.
    const AtspiCacheItem *find(const AtspiReference &object) const;

    // Whether the answer held every child of one of the items, so that `children` is what the application
    // itself would answer. Toolkits that build their tree only where it is looked at leave children out.
    bool hasAllChildren(const AtspiCacheItem &item) const;

    // The known children of one of the items, in the order of their indices.
    QList<AtspiReference> children(const AtspiCacheItem &item) const;

private:
    void link();
    void sortChildren();
    const QList<qsizetype> &childrenOf(const AtspiCacheItem &item) const;

    QList<AtspiCacheItem> m_items;
    QHash<AtspiReference, qsizetype> m_positions;
    QList<QList<qsizetype>> m_children; // of each item its children's positions, by index in the parent
};
