// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/NodeByNode.h"

#include "Desktop/Linux/Atspi/Reader.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString connectionName = u"node-by-node"_s;

QDBusConnection accessibilityBus()
{
    const QDBusMessage call = QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
                                                             u"org.a11y.Bus"_s, u"GetAddress"_s);
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call);
    return QDBusConnection::connectToBus(Atspi::text(reply).value_or(QString()), connectionName);
}

} // namespace

NodeByNode::NodeByNode() : m_bus(accessibilityBus()) {}

NodeByNode::~NodeByNode()
{
    QDBusConnection::disconnectFromBus(connectionName);
}

QList<WalkedNode> NodeByNode::walk(qint64 processIdentifier, qsizetype most, int depth)
{
    const AtspiReference root = rootOf(processIdentifier);
    if (root.isNull())
        return {};
    const QDBusMessage toolkitCall = Atspi::property(root, Atspi::applicationInterface, u"ToolkitName"_s);
    const AtspiToolkit toolkit = Atspi::toolkit(Atspi::text(ask(toolkitCall)).value_or(QString()));
    QList<Place> queue{Place{root, AtspiRole::Invalid, 0}};
    QList<WalkedNode> nodes;
    while (nodes.size() < queue.size() && nodes.size() < most) {
        const Place place = queue.at(nodes.size());
        QList<Place> children;
        nodes.append(read(place, toolkit, children));
        if (place.depth <= depth)
            queue += children;
    }
    return nodes;
}

QDBusMessage NodeByNode::ask(const QDBusMessage &call)
{
    return m_bus.call(call, QDBus::Block, 5000);
}

QString NodeByNode::property(const AtspiReference &object, const QString &interface, const QString &name,
                             AtspiToolkit toolkit)
{
    const QDBusMessage reply = ask(Atspi::property(object, interface, name));
    return Atspi::label(Atspi::text(reply).value_or(QString()), toolkit);
}

AtspiReference NodeByNode::rootOf(qint64 processIdentifier)
{
    const AtspiReference registry{Atspi::registryService, Atspi::rootPath};
    const AtspiReference daemon{u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s};
    const QList<AtspiReference> roots =
        Atspi::references(ask(Atspi::call(registry, Atspi::accessibleInterface, u"GetChildren"_s)));
    for (const AtspiReference &root : roots) {
        const QDBusMessage owner =
            ask(Atspi::call(daemon, daemon.service, u"GetConnectionUnixProcessID"_s, {root.service}));
        if (static_cast<qint64>(Atspi::number(owner).value_or(0)) == processIdentifier)
            return root;
    }
    return {};
}

WalkedNode NodeByNode::read(const Place &place, AtspiToolkit toolkit, QList<Place> &children)
{
    const QDBusMessage roleReply = ask(Atspi::call(place.object, Atspi::accessibleInterface, u"GetRole"_s));
    const auto role = static_cast<AtspiRole>(static_cast<quint32>(Atspi::number(roleReply).value_or(0)));
    const QList<AtspiReference> references =
        Atspi::references(ask(Atspi::call(place.object, Atspi::accessibleInterface, u"GetChildren"_s)));
    for (const AtspiReference &child : references)
        children.append(Place{child, role, place.depth + 1});
    WalkedNode node;
    node.role = Atspi::axRole(role, place.parentRole);
    node.children = children.size();
    if (!node.role.isEmpty())
        node.label = label(place.object, role, node.role, toolkit, !children.isEmpty());
    return node;
}

// The first non-empty text of name, description, contents and help.
QString NodeByNode::label(const AtspiReference &object, AtspiRole role, const QString &axRole,
                          AtspiToolkit toolkit, bool hasChildren)
{
    for (const QString &name : {u"Name"_s, u"Description"_s}) {
        const QString text = property(object, Atspi::accessibleInterface, name, toolkit);
        if (!text.isEmpty())
            return text;
    }
    if (axRole == "AXStaticText"_L1)
        return toolkit == AtspiToolkit::Chromium && hasChildren ? QString() : contents(object, -1);
    if (axRole == "AXTextField"_L1 && role != AtspiRole::PasswordText) {
        const QDBusMessage length = ask(Atspi::property(object, Atspi::textInterface, u"CharacterCount"_s));
        const double most = std::min<double>(Atspi::number(length).value_or(0), AtspiReader::longestText);
        const QString text = contents(object, static_cast<int>(most));
        if (!text.isEmpty())
            return text;
    }
    return property(object, Atspi::accessibleInterface, u"HelpText"_s, toolkit);
}

QString NodeByNode::contents(const AtspiReference &object, int end)
{
    const QVariantList range{0, end};
    const QDBusMessage reply = ask(Atspi::call(object, Atspi::textInterface, u"GetText"_s, range));
    return Atspi::label(Atspi::text(reply).value_or(QString()), AtspiToolkit::Other);
}
