// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Protocol.h"

#include "Base/Text.h"

#include <QDBusObjectPath>
#include <QDBusVariant>

using namespace Qt::StringLiterals;

namespace {

const QString propertiesInterface = u"org.freedesktop.DBus.Properties"_s;

// The match type of each set in a rule.
enum class Match { All = 1, Any = 2 };

// The reply's first value, unwrapped if it is a variant.
QVariant firstValue(const QDBusMessage &reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return {};
    const QVariant value = reply.arguments().constFirst();
    return value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value;
}

} // namespace

bool AtspiReference::isNull() const
{
    return service.isEmpty() || path.isEmpty() || path == Atspi::nullPath;
}

size_t qHash(const AtspiReference &reference, size_t seed)
{
    // Nearly all objects of a tree share one service, so hashing it gains nothing.
    return qHash(reference.path, seed);
}

const QDBusArgument &operator>>(const QDBusArgument &argument, AtspiReference &reference)
{
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> reference.service >> path;
    argument.endStructure();
    reference.path = path.path();
    return argument;
}

QDBusMessage Atspi::call(const AtspiReference &object, const QString &interface, const QString &method,
                         const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(object.service, object.path, interface, method);
    message.setArguments(arguments);
    return message;
}

QDBusMessage Atspi::property(const AtspiReference &object, const QString &interface, const QString &name)
{
    return call(object, propertiesInterface, u"Get"_s, {interface, name});
}

QDBusMessage Atspi::setProperty(const AtspiReference &object, const QString &interface, const QString &name,
                                const QVariant &value)
{
    const QVariant wrapped = QVariant::fromValue(QDBusVariant(value));
    return call(object, propertiesInterface, u"Set"_s, {interface, name, wrapped});
}

QDBusMessage Atspi::getRole(const AtspiReference &object)
{
    return call(object, accessibleInterface, u"GetRole"_s);
}

QDBusMessage Atspi::getState(const AtspiReference &object)
{
    return call(object, accessibleInterface, u"GetState"_s);
}

QDBusMessage Atspi::getName(const AtspiReference &object)
{
    return property(object, accessibleInterface, u"Name"_s);
}

QDBusMessage Atspi::getDescription(const AtspiReference &object)
{
    return property(object, accessibleInterface, u"Description"_s);
}

QDBusMessage Atspi::getHelpText(const AtspiReference &object)
{
    return property(object, accessibleInterface, u"HelpText"_s);
}

QDBusMessage Atspi::getParent(const AtspiReference &object)
{
    return property(object, accessibleInterface, u"Parent"_s);
}

QDBusMessage Atspi::getIndexInParent(const AtspiReference &object)
{
    return call(object, accessibleInterface, u"GetIndexInParent"_s);
}

QDBusMessage Atspi::getChildren(const AtspiReference &object)
{
    return call(object, accessibleInterface, u"GetChildren"_s);
}

QDBusMessage Atspi::getChildCount(const AtspiReference &object)
{
    return property(object, accessibleInterface, u"ChildCount"_s);
}

QDBusMessage Atspi::getApplication(const AtspiReference &object)
{
    return call(object, accessibleInterface, u"GetApplication"_s);
}

QDBusMessage Atspi::getMatches(const AtspiReference &top, const AtspiRule &rule, int most)
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
    structure << false;                // don't invert the rule
    structure.endStructure();
    const uint treeOrder = 1;
    const bool deep = true;
    const QVariantList arguments{QVariant::fromValue(structure), treeOrder, most, deep};
    return call(top, collectionInterface, u"GetMatches"_s, arguments);
}

QDBusMessage Atspi::getActionCount(const AtspiReference &object)
{
    return property(object, actionInterface, u"NActions"_s);
}

QDBusMessage Atspi::getActionName(const AtspiReference &object, int action)
{
    return call(object, actionInterface, u"GetName"_s, {action});
}

QDBusMessage Atspi::doAction(const AtspiReference &object, int action)
{
    return call(object, actionInterface, u"DoAction"_s, {action});
}

QDBusMessage Atspi::getDocumentAttributes(const AtspiReference &object)
{
    return call(object, documentInterface, u"GetAttributes"_s);
}

QDBusMessage Atspi::getCharacterCount(const AtspiReference &object)
{
    return property(object, textInterface, u"CharacterCount"_s);
}

QDBusMessage Atspi::getText(const AtspiReference &object, int end)
{
    return call(object, textInterface, u"GetText"_s, {0, end});
}

QDBusMessage Atspi::getCurrentValue(const AtspiReference &object)
{
    return property(object, valueInterface, u"CurrentValue"_s);
}

QDBusMessage Atspi::grabFocus(const AtspiReference &object)
{
    return call(object, componentInterface, u"GrabFocus"_s);
}

QDBusMessage Atspi::selectChild(const AtspiReference &object, int child)
{
    return call(object, selectionInterface, u"SelectChild"_s, {child});
}

QDBusMessage Atspi::getToolkitName(const AtspiReference &root)
{
    return property(root, applicationInterface, u"ToolkitName"_s);
}

QDBusMessage Atspi::getApplicationBusAddress(const AtspiReference &root)
{
    return call(root, applicationInterface, u"GetApplicationBusAddress"_s);
}

QDBusMessage Atspi::getItems(const QString &service)
{
    return call({service, cachePath}, cacheInterface, u"GetItems"_s);
}

std::optional<QString> Atspi::text(const QDBusMessage &reply)
{
    const QVariant value = firstValue(reply);
    if (value.metaType() != QMetaType::fromType<QString>())
        return std::nullopt;
    return value.toString();
}

std::optional<double> Atspi::number(const QDBusMessage &reply)
{
    bool isNumber = false;
    const double result = firstValue(reply).toDouble(&isNumber);
    return isNumber ? std::optional(result) : std::nullopt;
}

bool Atspi::truth(const QDBusMessage &reply)
{
    return firstValue(reply).toBool();
}

AtspiRole Atspi::role(const QDBusMessage &reply)
{
    return static_cast<AtspiRole>(static_cast<quint32>(number(reply).value_or(0)));
}

bool Atspi::hasState(const QDBusMessage &reply, AtspiState state)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != "au"_L1)
        return false;
    const auto words = qdbus_cast<QList<uint>>(reply.arguments().constFirst());
    const auto number = static_cast<unsigned>(state);
    return (words.value(number / 32) >> number % 32 & 1U) != 0;
}

std::optional<QString> Atspi::documentAddress(const QDBusMessage &reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != "a{ss}"_L1)
        return std::nullopt;
    const auto attributes = qdbus_cast<QMap<QString, QString>>(reply.arguments().constFirst());
    // Firefox and Chromium name it differently.
    for (const QString &name : {u"DocURL"_s, u"URI"_s}) {
        if (!attributes.value(name).isEmpty())
            return Text::cleaned(attributes.value(name));
    }
    return std::nullopt;
}

AtspiReference Atspi::reference(const QDBusMessage &reply)
{
    const QVariant value = firstValue(reply);
    if (value.metaType() != QMetaType::fromType<QDBusArgument>())
        return {};
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != "(so)"_L1)
        return {};
    AtspiReference object;
    argument >> object;
    return object;
}

QList<AtspiReference> Atspi::references(const QDBusMessage &reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != "a(so)"_L1)
        return {};
    QList<AtspiReference> objects;
    const QDBusArgument list = reply.arguments().constFirst().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        AtspiReference object;
        list >> object;
        if (!object.isNull())
            objects.append(object);
    }
    list.endArray();
    return objects;
}

QString Atspi::axRole(AtspiRole role, AtspiRole parent)
{
    switch (role) {
    case AtspiRole::PushButton:
    case AtspiRole::ToggleButton:
        return u"AXButton"_s;
    case AtspiRole::MenuItem:
    case AtspiRole::CheckMenuItem:
    case AtspiRole::RadioMenuItem:
        return u"AXMenuItem"_s;
    case AtspiRole::Menu:
        return parent == AtspiRole::MenuBar ? u"AXMenuBarItem"_s : QString();
    case AtspiRole::RadioButton:
        return u"AXRadioButton"_s;
    case AtspiRole::CheckBox:
    case AtspiRole::Switch:
        return u"AXCheckBox"_s;
    case AtspiRole::Link:
        return u"AXLink"_s;
    case AtspiRole::PageTab:
        return u"AXTab"_s;
    case AtspiRole::ComboBox:
        return u"AXPopUpButton"_s;
    case AtspiRole::Entry:
    case AtspiRole::PasswordText:
    case AtspiRole::Text:
    case AtspiRole::SpinButton:
        return u"AXTextField"_s;
    case AtspiRole::Label:
    case AtspiRole::Static:
    case AtspiRole::Heading:
    case AtspiRole::Paragraph:
        return u"AXStaticText"_s;
    case AtspiRole::Invalid:
    case AtspiRole::MenuBar:
    case AtspiRole::DocumentWeb:
        break;
    }
    return {};
}
