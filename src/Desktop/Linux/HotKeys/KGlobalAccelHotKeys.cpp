// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/HotKeys/KGlobalAccelHotKeys.h"

#include "Base/Text.h"
#include "Desktop/Linux/DBus/DBusQuestion.h"
#include "Desktop/Linux/Typing/VirtualKeys.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QObject>

#include <xkbcommon/xkbcommon.h>

using namespace Qt::StringLiterals;

// A key sequence as KGlobalAccel transfers it: up to four of Qt's key codes with modifiers, or zeros. Here
// only the first is used.
struct KeySequence
{
    QList<int> keys;
};
Q_DECLARE_METATYPE(KeySequence)

QDBusArgument &operator<<(QDBusArgument &argument, const KeySequence &sequence)
{
    argument.beginStructure();
    argument << sequence.keys;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, KeySequence &sequence)
{
    argument.beginStructure();
    argument >> sequence.keys;
    argument.endStructure();
    return argument;
}

namespace {

const QString component = u"orvane"_s;

// Makes the key active. The service keeps what the user has chosen instead.
constexpr uint present = 2;

void registerTypes()
{
    qDBusRegisterMetaType<KeySequence>();
    qDBusRegisterMetaType<QList<KeySequence>>();
}

// 0 for keys that type no character.
int keyOf(std::uint16_t virtualKey, HotKeyModifiers modifiers)
{
    const std::optional<std::uint32_t> symbol = symbolOfVirtualKey(virtualKey);
    const char32_t character = symbol ? xkb_keysym_to_utf32(*symbol) : 0;
    if (character < U' ' || character > U'~')
        return 0;
    Qt::KeyboardModifiers held;
    held.setFlag(Qt::ShiftModifier, modifiers.testFlag(HotKeyModifier::Shift));
    held.setFlag(Qt::AltModifier, modifiers.testFlag(HotKeyModifier::Option));
    held.setFlag(Qt::ControlModifier,
                 modifiers.testAnyFlags(HotKeyModifier::Command | HotKeyModifier::Control));
    return int(QChar(char16_t(character)).toUpper().unicode()) | int(held);
}

// The action's name for the service and for the user, each after that of the program.
QStringList actionOf(const HotKeyIdentifier &identifier)
{
    return {component, u"toggle-%1"_s.arg(identifier.number), u"Orvane"_s, u"Show or Hide"_s};
}

// Whether the service has given the action a key.
bool hasKey(const QVariantList &reply)
{
    if (reply.isEmpty())
        return false;
    const auto sequences = qdbus_cast<QList<KeySequence>>(reply.constFirst());
    return !sequences.isEmpty() && sequences.constFirst().keys.value(0) != 0;
}

class AcceleratedKey : public QObject, public HotKeyReference
{
    Q_OBJECT

public:
    AcceleratedKey(const QStringList &action, std::function<void()> pressed)
        : m_action(action), m_pressed(std::move(pressed))
    {
    }
    ~AcceleratedKey() override;

    // Listens to the service's object at this path.
    bool listen(const QString &path);

private Q_SLOTS:
    void press(const QString &program, const QString &action, qlonglong time);

private:
    QStringList m_action;
    std::function<void()> m_pressed;
};

QDBusMessage messageFor(const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        KGlobalAccelHotKeys::serviceName, u"/kglobalaccel"_s, u"org.kde.KGlobalAccel"_s, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    return message;
}

AcceleratedKey::~AcceleratedKey()
{
    QDBusConnection::sessionBus().send(messageFor(u"setInactive"_s, {m_action}));
}

bool AcceleratedKey::listen(const QString &path)
{
    // Without the service's name: looking up its owner would block.
    return QDBusConnection::sessionBus().connect(QString(), path, u"org.kde.kglobalaccel.Component"_s,
                                                 u"globalShortcutPressed"_s, this,
                                                 SLOT(press(QString, QString, qlonglong)));
}

void AcceleratedKey::press(const QString &program, const QString &action, qlonglong /* time */)
{
    if (program == m_action.at(0) && action == m_action.at(1))
        m_pressed();
}

} // namespace

QCoro::Task<QVariantList> KGlobalAccelHotKeys::ask(QString method, QVariantList arguments)
{
    const DBusQuestion question{QString(serviceName), u"/kglobalaccel"_s, u"org.kde.KGlobalAccel"_s, method,
                                arguments};
    return DBusQuestion::answer(question, &QDBusConnection::sessionBus, m_bus, Deadlines::answer);
}

QCoro::Task<KGlobalAccelHotKeys::Standing> KGlobalAccelHotKeys::standing(std::uint16_t virtualKey,
                                                                         HotKeyModifiers modifiers,
                                                                         HotKeyIdentifier identifier)
{
    registerTypes();
    Standing result;
    const QVariantList action{actionOf(identifier)};
    const QVariantList chosen = co_await ask(u"shortcutKeys"_s, action);
    result.isOffered = !chosen.isEmpty();
    result.hasKey = hasKey(chosen);
    const QVariantList key{keyOf(virtualKey, modifiers)};
    const QVariantList owner = co_await ask(u"action"_s, key);
    // Empty if the key is free; otherwise the third name is that of the program for the user.
    result.owner = Text::cleaned(owner.value(0).toStringList().value(2));
    co_return result;
}

QCoro::Task<std::shared_ptr<HotKeyReference>>
KGlobalAccelHotKeys::registerHotKey(std::uint16_t virtualKey, HotKeyModifiers modifiers,
                                    HotKeyIdentifier identifier, std::function<void()> pressed)
{
    registerTypes();
    const int key = keyOf(virtualKey, modifiers);
    const QStringList action = actionOf(identifier);
    if (key == 0)
        co_return std::shared_ptr<HotKeyReference>();
    const QVariantList onlyAction{action};
    co_await ask(u"doRegister"_s, onlyAction);
    const QList<KeySequence> sequences{{{key, 0, 0, 0}}};
    const QVariantList wish{action, QVariant::fromValue(sequences), present};
    const QVariantList granted = co_await ask(u"setShortcutKeys"_s, wish);
    if (!hasKey(granted))
        co_return std::shared_ptr<HotKeyReference>();
    const QVariantList onlyComponent{component};
    const QVariantList path = co_await ask(u"getComponent"_s, onlyComponent);
    const auto reference = std::make_shared<AcceleratedKey>(action, std::move(pressed));
    if (!reference->listen(path.value(0).value<QDBusObjectPath>().path()))
        co_return std::shared_ptr<HotKeyReference>();
    co_return std::shared_ptr<HotKeyReference>(reference);
}

#include "KGlobalAccelHotKeys.moc"
