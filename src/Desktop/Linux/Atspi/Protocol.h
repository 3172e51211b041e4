// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusArgument>
#include <QDBusMessage>
#include <QHashFunctions>
#include <QList>
#include <QString>
#include <QVariant>

#include <optional>

// The calls of the accessibility protocol as messages, and what their replies hold. Pure values, usable from
// any thread. A reply that is an error, or of another shape than it should be, reads as nothing.

// Where an accessible object lives: a connection on the accessibility bus and a path there.
struct AtspiReference
{
    QString service;
    QString path;

    // How the protocol says "no object".
    bool isNull() const;
    friend bool operator==(const AtspiReference &, const AtspiReference &) = default;
};

size_t qHash(const AtspiReference &reference, size_t seed = 0);

// Reads the protocol's pair of service and path.
const QDBusArgument &operator>>(const QDBusArgument &argument, AtspiReference &reference);

namespace Atspi {

inline const QString accessibleInterface = QStringLiteral("org.a11y.atspi.Accessible");
inline const QString actionInterface = QStringLiteral("org.a11y.atspi.Action");
inline const QString applicationInterface = QStringLiteral("org.a11y.atspi.Application");
inline const QString textInterface = QStringLiteral("org.a11y.atspi.Text");
inline const QString valueInterface = QStringLiteral("org.a11y.atspi.Value");
inline const QString rootPath = QStringLiteral("/org/a11y/atspi/accessible/root");
inline const QString registryService = QStringLiteral("org.a11y.atspi.Registry");

QDBusMessage call(const AtspiReference &object, const QString &interface, const QString &method,
                  const QVariantList &arguments = {});

// One property at a time: asking for all of them at once crashes applications made with Qt.
QDBusMessage property(const AtspiReference &object, const QString &interface, const QString &name);

// A set of numbers as the protocol's bits, in so many words of 32.
template <typename Number>
QList<int> bitSet(const QList<Number> &numbers, int words)
{
    QList<int> bits(words, 0);
    for (const Number each : numbers) {
        const auto number = static_cast<unsigned>(each);
        bits[number / 32] |= static_cast<int>(1U << number % 32);
    }
    return bits;
}

// What a method or a property gave, none after an error.
std::optional<QString> text(const QDBusMessage &reply);
std::optional<double> number(const QDBusMessage &reply);
bool truth(const QDBusMessage &reply);
// The one object that a property gave.
AtspiReference reference(const QDBusMessage &reply);
// The objects in the reply's order, "no object" left out.
QList<AtspiReference> references(const QDBusMessage &reply);

} // namespace Atspi
