// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Protocol.h"
#include "Desktop/Linux/Atspi/Roles.h"

#include <QDBusMessage>
#include <QHash>
#include <QList>

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
