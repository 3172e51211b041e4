// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Protocol.h"

#include <QDBusMessage>
#include <QHash>
#include <QList>

// One object in an application's reply to GetItems.
struct AtspiCacheItem
{
    AtspiReference object;
    AtspiReference parent;
    int indexInParent = -1;
    int childCount = 0; // negative if unknown
    QString name;
    QString description;
    AtspiRole role = AtspiRole::Invalid;
};

// All objects in an application's reply to GetItems. The reply is unordered, so the tree is rebuilt from
// parents and indices. Immutable, so that it can be built on a worker thread and read on the main thread.
class AtspiCache
{
public:
    AtspiCache() = default;
    explicit AtspiCache(QList<AtspiCacheItem> items);

    // Parses the reply to GetItems; empty after an error or if the toolkit uses a different format.
    static AtspiCache fromReply(const QDBusMessage &reply);

    // Unordered.
    const QList<AtspiCacheItem> &items() const { return m_items; }

    // The object's item, or null if the reply doesn't contain it. Valid for the cache's lifetime.
    const AtspiCacheItem *find(const AtspiReference &object) const;

    // Whether the cache holds every child of the item, so that `children` is complete. Toolkits that build
    // their tree lazily omit children.
    bool hasAllChildren(const AtspiCacheItem &item) const;

    // The item's cached children, ordered by index.
    QList<AtspiReference> children(const AtspiCacheItem &item) const;

private:
    void link();
    void sortChildren();
    const QList<qsizetype> &childrenOf(const AtspiCacheItem &item) const;

    QList<AtspiCacheItem> m_items;
    QHash<AtspiReference, qsizetype> m_positions;
    QList<QList<qsizetype>> m_children; // the positions of each item's children, ordered by index
};

// The descendants of an element and their roles, read with GetMatches in a few calls. For pages that Firefox
// omits from GetItems, which returns only what existed at its first call. Matches come in tree order, and
// roles are encoded in which of six queries an element matches, so neither takes a call per element.
//
// If the page changes meanwhile, the outline knows less, but nothing false. Thread: main.
class AtspiOutline
{
public:
    // `tops` limits how many subtrees are queried, since each query traverses the whole subtree.
    explicit AtspiOutline(int tops = 8) : m_topsLeft(tops) {}
    bool mayAsk() const { return m_topsLeft > 0; }

    // The queries for the descendants of `top`: the first matches all, the others some roles each.
    static QList<QDBusMessage> questions(const AtspiReference &top);
    static QList<AtspiRole> rolesOfQuestion(int question);
    // Adds the results of all queries.
    void add(const AtspiReference &top, const QList<QList<AtspiReference>> &answers);

    static constexpr int questionCount = 7;
    // More than any traversal examines; the rest of a longer page is read element by element.
    static constexpr int longestAnswer = 4000;

    bool knows(const AtspiReference &object) const { return m_places.contains(object); }
    // Invalid if unknown.
    AtspiRole role(const AtspiReference &object) const;
    // Whether the element is known to have no children.
    bool isLeaf(const AtspiReference &object) const;
    // Adds the complete list of an element's children, which determines where each child's subtree ends.
    void setChildren(const AtspiReference &parent, const QList<AtspiReference> &children);

private:
    struct Place
    {
        qsizetype begin = 0;
        qsizetype end = unknown; // one past the element's descendants
        AtspiRole role = AtspiRole::Invalid;
    };

    static constexpr qsizetype unknown = -1;

    void setRoles(const QList<QList<AtspiReference>> &answers);

    QHash<AtspiReference, Place> m_places;
    qsizetype m_end = 0;
    int m_topsLeft;
};
