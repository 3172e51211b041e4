// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusArgument>
#include <QDBusMessage>
#include <QHashFunctions>
#include <QList>
#include <QString>
#include <QVariant>

#include <cstdint>
#include <optional>

// The AT-SPI D-Bus protocol: names, roles, states, method calls, and parsers for replies. An error or
// malformed reply parses as nothing. Any thread.

// An accessible object: a connection on the accessibility bus and an object path.
struct AtspiReference
{
    QString service;
    QString path;

    // Whether this is the protocol's null reference.
    bool isNull() const;
    friend bool operator==(const AtspiReference &, const AtspiReference &) = default;
};

size_t qHash(const AtspiReference &reference, size_t seed = 0);

// Reads a (service, path) pair.
const QDBusArgument &operator>>(const QDBusArgument &argument, AtspiReference &reference);

// The roles used here, with their protocol numbers.
enum class AtspiRole : std::uint32_t {
    Invalid = 0,
    CheckBox = 7,
    CheckMenuItem = 8,
    ComboBox = 11,
    Label = 29,
    Menu = 33,
    MenuBar = 34,
    MenuItem = 35,
    PageTab = 37,
    PasswordText = 40,
    PushButton = 43,
    RadioButton = 44,
    RadioMenuItem = 45,
    SpinButton = 52,
    Text = 61,
    ToggleButton = 62,
    Paragraph = 73,
    Entry = 79,
    Heading = 83,
    Link = 88,
    DocumentWeb = 95,
    Static = 116,
    Switch = 130,
};

// The states used here, with their protocol numbers.
enum class AtspiState : std::uint32_t {
    Active = 1, // of a window with the focus
    Focused = 12,
    Selected = 23,
    Sensitive = 24, // not disabled
    Showing = 25,
};

// A match rule of the Collection interface.
struct AtspiRule
{
    QList<AtspiRole> roles;   // any of these; empty matches every role
    QList<AtspiState> states; // all of these
};

namespace Atspi {

inline const QString accessibleInterface = QStringLiteral("org.a11y.atspi.Accessible");
inline const QString actionInterface = QStringLiteral("org.a11y.atspi.Action");
inline const QString applicationInterface = QStringLiteral("org.a11y.atspi.Application");
inline const QString cacheInterface = QStringLiteral("org.a11y.atspi.Cache");
inline const QString collectionInterface = QStringLiteral("org.a11y.atspi.Collection");
inline const QString componentInterface = QStringLiteral("org.a11y.atspi.Component");
inline const QString documentInterface = QStringLiteral("org.a11y.atspi.Document");
inline const QString registryInterface = QStringLiteral("org.a11y.atspi.Registry");
inline const QString selectionInterface = QStringLiteral("org.a11y.atspi.Selection");
inline const QString textInterface = QStringLiteral("org.a11y.atspi.Text");
inline const QString valueInterface = QStringLiteral("org.a11y.atspi.Value");
// On the session bus: the address of the accessibility bus, and the switch that makes toolkits expose their
// trees.
inline const QString launcherInterface = QStringLiteral("org.a11y.Bus");
inline const QString statusInterface = QStringLiteral("org.a11y.Status");
inline const QString enabledProperty = QStringLiteral("IsEnabled");

inline const QString launcherService = QStringLiteral("org.a11y.Bus");
inline const QString launcherPath = QStringLiteral("/org/a11y/bus");
inline const QString registryService = QStringLiteral("org.a11y.atspi.Registry");
inline const QString registryPath = QStringLiteral("/org/a11y/atspi/registry");
inline const QString rootPath = QStringLiteral("/org/a11y/atspi/accessible/root"); // of each application
inline const QString cachePath = QStringLiteral("/org/a11y/atspi/cache");          // of each application
inline const QString nullPath = QStringLiteral("/org/a11y/atspi/null");

QDBusMessage call(const AtspiReference &object, const QString &interface, const QString &method,
                  const QVariantList &arguments = {});

// Gets a single property; GetAll crashes Qt applications.
QDBusMessage property(const AtspiReference &object, const QString &interface, const QString &name);
QDBusMessage setProperty(const AtspiReference &object, const QString &interface, const QString &name,
                         const QVariant &value);

// Calls, named after the protocol's methods and properties. For any element:
QDBusMessage getRole(const AtspiReference &object);
QDBusMessage getState(const AtspiReference &object);
QDBusMessage getName(const AtspiReference &object);
QDBusMessage getDescription(const AtspiReference &object);
QDBusMessage getHelpText(const AtspiReference &object);
QDBusMessage getParent(const AtspiReference &object);
QDBusMessage getIndexInParent(const AtspiReference &object);
QDBusMessage getChildren(const AtspiReference &object);
QDBusMessage getChildCount(const AtspiReference &object);
QDBusMessage getApplication(const AtspiReference &object);
// The descendants of `top` that match the rule, in tree order, at most `most`.
QDBusMessage getMatches(const AtspiReference &top, const AtspiRule &rule, int most);

// For elements with the interface Action, Document, Text, Value, Component or Selection. Actions and children
// are given by index; an `end` of -1 means the whole text.
QDBusMessage getActionCount(const AtspiReference &object);
QDBusMessage getActionName(const AtspiReference &object, int action);
QDBusMessage doAction(const AtspiReference &object, int action);
QDBusMessage getDocumentAttributes(const AtspiReference &object);
QDBusMessage getCharacterCount(const AtspiReference &object);
QDBusMessage getText(const AtspiReference &object, int end);
QDBusMessage getCurrentValue(const AtspiReference &object);
QDBusMessage grabFocus(const AtspiReference &object);
QDBusMessage selectChild(const AtspiReference &object, int child);

// For an application: its root object or its bus name.
QDBusMessage getToolkitName(const AtspiReference &root);
QDBusMessage getApplicationBusAddress(const AtspiReference &root);
QDBusMessage getItems(const QString &service);

// The returned value, or nothing after an error.
std::optional<QString> text(const QDBusMessage &reply);
std::optional<double> number(const QDBusMessage &reply);
bool truth(const QDBusMessage &reply);
AtspiRole role(const QDBusMessage &reply);
bool hasState(const QDBusMessage &reply, AtspiState state);
// The address among a document's returned attributes, cleaned; nothing if there is none.
std::optional<QString> documentAddress(const QDBusMessage &reply);
// The returned object.
AtspiReference reference(const QDBusMessage &reply);
// The returned objects in order, without null references.
QList<AtspiReference> references(const QDBusMessage &reply);

// Encodes numbers as a bit set of `words` 32-bit words.
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

// The AX role of an element with this role and its parent's; empty if there is none.
QString axRole(AtspiRole role, AtspiRole parent);

} // namespace Atspi
