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

// The accessibility protocol, AT-SPI over D-Bus: its names, roles and states, its calls as messages, and what
// their replies hold. Pure values, usable from any thread. A reply that is an error, or of another shape than
// it should be, reads as nothing.

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

// The numbers of the roles that mean something here.
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

// The numbers of the states that mean something here.
enum class AtspiState : std::uint32_t {
    Active = 1, // of a window: it has the focus
    Focused = 12,
    Selected = 23,
    Sensitive = 24, // not greyed out
    Showing = 25,
};

// Which elements are looked for.
struct AtspiRule
{
    QList<AtspiRole> roles;   // one of them; whatever its role where there are none
    QList<AtspiState> states; // all of them
};

namespace Atspi {

inline const QString accessibleInterface = QStringLiteral("org.a11y.atspi.Accessible");
inline const QString actionInterface = QStringLiteral("org.a11y.atspi.Action");
inline const QString applicationInterface = QStringLiteral("org.a11y.atspi.Application");
inline const QString cacheInterface = QStringLiteral("org.a11y.atspi.Cache");
inline const QString collectionInterface = QStringLiteral("org.a11y.atspi.Collection");
inline const QString componentInterface = QStringLiteral("org.a11y.atspi.Component");
inline const QString registryInterface = QStringLiteral("org.a11y.atspi.Registry");
inline const QString selectionInterface = QStringLiteral("org.a11y.atspi.Selection");
inline const QString textInterface = QStringLiteral("org.a11y.atspi.Text");
inline const QString valueInterface = QStringLiteral("org.a11y.atspi.Value");
// On the session bus: where the accessibility bus is, and the switch that makes toolkits show their trees.
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

// One property at a time: asking for all of them at once crashes applications made with Qt.
QDBusMessage property(const AtspiReference &object, const QString &interface, const QString &name);
QDBusMessage setProperty(const AtspiReference &object, const QString &interface, const QString &name,
                         const QVariant &value);

// The calls, each named after what the protocol calls it. Of any element:
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
// The elements below `top` that the rule is met by, in the order of their tree and no more than `most`.
QDBusMessage getMatches(const AtspiReference &top, const AtspiRule &rule, int most);

// Of elements that can be pressed, hold a text or a number, take the focus, or let a child be chosen. Actions
// and children go by their positions; a text's end of -1 is that of the whole text.
QDBusMessage getActionCount(const AtspiReference &object);
QDBusMessage getActionName(const AtspiReference &object, int action);
QDBusMessage doAction(const AtspiReference &object, int action);
QDBusMessage getCharacterCount(const AtspiReference &object);
QDBusMessage getText(const AtspiReference &object, int end);
QDBusMessage getCurrentValue(const AtspiReference &object);
QDBusMessage grabFocus(const AtspiReference &object);
QDBusMessage selectChild(const AtspiReference &object, int child);

// Of an application: its root object, or its name on the bus.
QDBusMessage getToolkitName(const AtspiReference &root);
QDBusMessage getApplicationBusAddress(const AtspiReference &root);
QDBusMessage getItems(const QString &service);

// What a method or a property gave, none after an error.
std::optional<QString> text(const QDBusMessage &reply);
std::optional<double> number(const QDBusMessage &reply);
bool truth(const QDBusMessage &reply);
AtspiRole role(const QDBusMessage &reply);
bool hasState(const QDBusMessage &reply, AtspiState state);
// The one object that a property gave.
AtspiReference reference(const QDBusMessage &reply);
// The objects in the reply's order, "no object" left out.
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

// The AX name of the role of an element whose parent has the role `parent`; empty where it has none.
QString axRole(AtspiRole role, AtspiRole parent);

} // namespace Atspi
