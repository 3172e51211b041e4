// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Bulk.h"

#include <algorithm>
#include <utility>

namespace {

// What the toolkits of today answer with; the format of before 2012 lists children instead of counting them.
constexpr QLatin1String itemsSignature("a((so)(so)(so)iiassusau)");

// Steps over one value: entering and leaving it reads nothing inside.
void skipStructure(const QDBusArgument &list)
{
    list.beginStructure();
    list.endStructure();
}

void skipArray(const QDBusArgument &list)
{
    list.beginArray();
    list.endArray();
}

AtspiCacheItem readItem(const QDBusArgument &list)
{
    AtspiCacheItem item;
    quint32 role = 0;
    list.beginStructure();
    list >> item.object;
    skipStructure(list); // the application
    list >> item.parent >> item.indexInParent >> item.childCount;
    skipArray(list); // the interfaces
    list >> item.name >> role >> item.description;
    list.endStructure(); // the states are left
    item.role = static_cast<AtspiRole>(role);
    return item;
}

} // namespace

AtspiCache::AtspiCache(QList<AtspiCacheItem> items) : m_items(std::move(items)), m_children(m_items.size())
{
    m_positions.reserve(m_items.size());
    for (qsizetype position = 0; position < m_items.size(); ++position)
        m_positions.insert(m_items.at(position).object, position);
    link();
    sortChildren();
}

void AtspiCache::link()
{
    for (qsizetype position = 0; position < m_items.size(); ++position) {
        const auto parent = m_positions.constFind(m_items.at(position).parent);
        if (parent != m_positions.cend())
            m_children[*parent].append(position);
    }
}

void AtspiCache::sortChildren()
{
    for (QList<qsizetype> &siblings : m_children) {
        std::sort(siblings.begin(), siblings.end(), [this](qsizetype left, qsizetype right) {
            return m_items.at(left).indexInParent < m_items.at(right).indexInParent;
        });
    }
}

AtspiCache AtspiCache::fromReply(const QDBusMessage &reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != itemsSignature)
        return {};
    QList<AtspiCacheItem> items;
    const QDBusArgument list = reply.arguments().constFirst().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd())
        items.append(readItem(list));
    list.endArray();
    return AtspiCache(std::move(items));
}

const AtspiCacheItem *AtspiCache::find(const AtspiReference &object) const
{
    const auto found = m_positions.constFind(object);
    return found == m_positions.cend() ? nullptr : &m_items.at(*found);
}

const QList<qsizetype> &AtspiCache::childrenOf(const AtspiCacheItem &item) const
{
    return m_children.at(&item - m_items.constData());
}

bool AtspiCache::hasAllChildren(const AtspiCacheItem &item) const
{
    const QList<qsizetype> &known = childrenOf(item);
    if (item.childCount != known.size())
        return false;
    for (qsizetype i = 0; i < known.size(); ++i) {
        if (m_items.at(known.at(i)).indexInParent != i)
            return false;
    }
    return true;
}

QList<AtspiReference> AtspiCache::children(const AtspiCacheItem &item) const
{
    const QList<qsizetype> &known = childrenOf(item);
    QList<AtspiReference> children;
    children.reserve(known.size());
    for (const qsizetype position : known)
        children.append(m_items.at(position).object);
    return children;
}
