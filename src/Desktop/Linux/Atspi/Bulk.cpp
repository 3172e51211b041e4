// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Bulk.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

namespace {

// The current format; the one before 2012 lists children instead of counting them.
constexpr QLatin1String itemsSignature("a((so)(so)(so)iiassusau)");

// Skips one value: entering and leaving a structure doesn't read its contents.
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
    list.endStructure(); // skips the states
    item.role = static_cast<AtspiRole>(role);
    return item;
}

// Each role is in a unique set of three of the six queries. An element matched by more or fewer changed
// between the queries or lies beyond the limit of one.
constexpr std::array roles{
    AtspiRole::CheckBox,     AtspiRole::CheckMenuItem, AtspiRole::ComboBox,     AtspiRole::Label,
    AtspiRole::Menu,         AtspiRole::MenuBar,       AtspiRole::MenuItem,     AtspiRole::PageTab,
    AtspiRole::PasswordText, AtspiRole::PushButton,    AtspiRole::RadioButton,  AtspiRole::RadioMenuItem,
    AtspiRole::SpinButton,   AtspiRole::Text,          AtspiRole::ToggleButton, AtspiRole::Paragraph,
    AtspiRole::Entry,        AtspiRole::Heading,       AtspiRole::Link,         AtspiRole::Static,
};

using Code = unsigned; // one bit per query except the first

constexpr std::array<Code, roles.size()> makeCodes()
{
    std::array<Code, roles.size()> codes{};
    std::size_t next = 0;
    for (Code code = 0; code < 1U << 6U; ++code) {
        if (std::popcount(code) == 3)
            codes.at(next++) = code;
    }
    return codes;
}

constexpr std::array codes = makeCodes();

AtspiRole roleOf(Code code)
{
    for (std::size_t i = 0; i < roles.size(); ++i) {
        if (codes.at(i) == code)
            return roles.at(i);
    }
    return AtspiRole::Invalid;
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

QList<AtspiRole> AtspiOutline::rolesOfQuestion(int question)
{
    QList<AtspiRole> wanted;
    for (std::size_t i = 0; i < roles.size() && question > 0; ++i) {
        if ((codes.at(i) >> (question - 1) & 1U) != 0)
            wanted.append(roles.at(i));
    }
    return wanted;
}

QList<QDBusMessage> AtspiOutline::questions(const AtspiReference &top)
{
    QList<QDBusMessage> calls;
    for (int question = 0; question < questionCount; ++question)
        calls.append(Atspi::getMatches(top, AtspiRule{rolesOfQuestion(question), {}}, longestAnswer));
    return calls;
}

void AtspiOutline::add(const AtspiReference &top, const QList<QList<AtspiReference>> &answers)
{
    --m_topsLeft;
    const QList<AtspiReference> &below = answers.constFirst();
    if (below.isEmpty())
        return;
    const qsizetype begin = m_end;
    m_end += below.size() + 1;
    m_places.insert(top, Place{begin, below.size() < longestAnswer ? m_end : unknown, AtspiRole::Invalid});
    for (qsizetype i = 0; i < below.size(); ++i)
        m_places.insert(below.at(i), Place{begin + i + 1, unknown, AtspiRole::Invalid});
    setRoles(answers);
}

void AtspiOutline::setRoles(const QList<QList<AtspiReference>> &answers)
{
    QHash<AtspiReference, Code> found;
    for (int question = 1; question < questionCount; ++question) {
        for (const AtspiReference &object : answers.at(question))
            found[object] |= 1U << (question - 1);
    }
    for (auto each = found.cbegin(); each != found.cend(); ++each) {
        if (const auto place = m_places.find(each.key()); place != m_places.end())
            place->role = roleOf(each.value());
    }
}

AtspiRole AtspiOutline::role(const AtspiReference &object) const
{
    return m_places.value(object).role;
}

bool AtspiOutline::isLeaf(const AtspiReference &object) const
{
    const auto place = m_places.constFind(object);
    return place != m_places.cend() && place->end == place->begin + 1;
}

void AtspiOutline::setChildren(const AtspiReference &parent, const QList<AtspiReference> &children)
{
    if (!knows(parent))
        return;
    const Place place = m_places.value(parent);
    qsizetype end = place.end;
    // In reverse, since each subtree ends where the next sibling begins.
    for (auto child = children.crbegin(); child != children.crend(); ++child) {
        const auto found = m_places.find(*child);
        const bool isInside = found != m_places.end() && found->begin > place.begin;
        if (isInside && (end == unknown || found->begin < end))
            found->end = end;
        end = isInside ? found->begin : unknown;
    }
}
