// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Protocol.h"

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

// What Firefox tells of all elements below one of them, for pages that are missing in its bulk answer: that
// keeps what there was when it was first asked for. The elements come in the order of their tree, and which
// roles they have is asked in six questions for all of them; so neither has to be asked of every element.
//
// Main thread. A page that changes meanwhile makes it know less, not wrong things.
class AtspiOutline
{
public:
    // Of how many elements it may be asked what is below them: each asking goes through all of that.
    explicit AtspiOutline(int tops = 8) : m_topsLeft(tops) {}
    bool mayAsk() const { return m_topsLeft > 0; }

    // The questions about everything below `top`: the first is for all of it, each other one for some roles.
    static QList<QDBusMessage> questions(const AtspiReference &top);
    static QList<AtspiRole> rolesOfQuestion(int question);
    // The answers to all of them.
    void add(const AtspiReference &top, const QList<QList<AtspiReference>> &answers);

    static constexpr int questionCount = 7;
    // More than a walk examines. The rest of a longer page is asked for element by element.
    static constexpr int longestAnswer = 4000;

    bool knows(const AtspiReference &object) const { return m_places.contains(object); }
    // Invalid where it is not known.
    AtspiRole role(const AtspiReference &object) const;
    // Whether the element is known to have no children.
    bool isLeaf(const AtspiReference &object) const;
    // All children of an element, as it told them itself: they show where each of them ends.
    void setChildren(const AtspiReference &parent, const QList<AtspiReference> &children);

private:
    struct Place
    {
        qsizetype begin = 0;
        qsizetype end = unknown; // behind everything below the element
        AtspiRole role = AtspiRole::Invalid;
    };

    static constexpr qsizetype unknown = -1;

    void setRoles(const QList<QList<AtspiReference>> &answers);

    QHash<AtspiReference, Place> m_places;
    qsizetype m_end = 0;
    int m_topsLeft;
};
