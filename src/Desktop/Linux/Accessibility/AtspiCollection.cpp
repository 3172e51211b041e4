// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Accessibility/AtspiCollection.h"

#include <QDBusArgument>

namespace {

enum class Match { All = 1, Any = 2 };

QList<int> bitsOf(const QList<AtspiRole> &wanted)
{
    QList<int> bits{0, 0, 0, 0};
    for (const AtspiRole role : wanted) {
        const auto number = static_cast<unsigned>(role);
        bits[number / 32] |= static_cast<int>(1U << number % 32);
    }
    return bits;
}

} // namespace

QDBusMessage Atspi::matches(const AtspiReference &top, const AtspiRule &rule, int most)
{
    const int all = static_cast<int>(Match::All);
    const int anyRole = static_cast<int>(rule.roles.isEmpty() ? Match::All : Match::Any);
    QDBusArgument structure;
    structure.beginStructure();
    structure << bitsOf(rule.states) << all;
    structure.beginMap(QMetaType::fromType<QString>(), QMetaType::fromType<QString>());
    structure.endMap(); // attributes
    structure << all << ::bitsOf(rule.roles) << anyRole;
    structure << QStringList() << all; // interfaces
    structure << false;                // not those that do not match
    structure.endStructure();
    const uint treeOrder = 1;
    const bool deep = true;
    const QVariantList arguments{QVariant::fromValue(structure), treeOrder, most, deep};
    return call(top, QStringLiteral("org.a11y.atspi.Collection"), QStringLiteral("GetMatches"), arguments);
}
