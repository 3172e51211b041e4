// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Collection.h"

#include <QDBusArgument>

namespace {

enum class Match { All = 1, Any = 2 };

} // namespace

QDBusMessage Atspi::matches(const AtspiReference &top, const AtspiRule &rule, int most)
{
    const int all = static_cast<int>(Match::All);
    const int anyRole = static_cast<int>(rule.roles.isEmpty() ? Match::All : Match::Any);
    QDBusArgument structure;
    structure.beginStructure();
    structure << bitSet(rule.states, 2) << all;
    structure.beginMap(QMetaType::fromType<QString>(), QMetaType::fromType<QString>());
    structure.endMap(); // attributes
    structure << all << bitSet(rule.roles, 4) << anyRole;
    structure << QStringList() << all; // interfaces
    structure << false;                // not those that do not match
    structure.endStructure();
    const uint treeOrder = 1;
    const bool deep = true;
    const QVariantList arguments{QVariant::fromValue(structure), treeOrder, most, deep};
    return call(top, QStringLiteral("org.a11y.atspi.Collection"), QStringLiteral("GetMatches"), arguments);
}
