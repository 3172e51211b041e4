// SPDX-License-Identifier: Apache-2.0
#include "applications/support/AccessibleProgram.h"

#include "Desktop/Linux/Atspi/Finder.h"
#include "Desktop/Linux/Atspi/Press.h"
#include "Desktop/PlatformError.h"
#include "Support/Awaited.h"

#include <QDBusArgument>

using namespace Qt::StringLiterals;

namespace {

using Application = std::shared_ptr<AtspiApplication>;

// The properties read of each element, in this order.
enum Question { Role, Name, Description, States, Area, Children, QuestionCount };

QList<QDBusMessage> questions(const AtspiReference &object)
{
    using namespace Atspi;
    const QVariantList onTheScreen{quint32(0)};
    return {call(object, accessibleInterface, u"GetRoleName"_s),
            property(object, accessibleInterface, u"Name"_s),
            property(object, accessibleInterface, u"Description"_s),
            call(object, accessibleInterface, u"GetState"_s),
            call(object, u"org.a11y.atspi.Component"_s, u"GetExtents"_s, onTheScreen),
            call(object, accessibleInterface, u"GetChildren"_s)};
}

quint64 stateBits(const QDBusMessage &reply)
{
    const auto words = qdbus_cast<QList<quint32>>(reply.arguments().value(0));
    return words.value(0) | quint64(words.value(1)) << 32;
}

QRect rectangle(const QDBusMessage &reply)
{
    if (reply.signature() != "(iiii)"_L1)
        return {};
    int x = 0, y = 0, width = 0, height = 0;
    const auto numbers = reply.arguments().constFirst().value<QDBusArgument>();
    numbers.beginStructure();
    numbers >> x >> y >> width >> height;
    numbers.endStructure();
    return {x, y, width, height};
}

AccessibleElement described(const AtspiReference &object, const QList<QDBusMessage> &replies)
{
    return {.reference = object,
            .role = Atspi::text(replies.at(Role)).value_or(QString()),
            .name = Atspi::text(replies.at(Name)).value_or(QString()),
            .description = Atspi::text(replies.at(Description)).value_or(QString()),
            .states = stateBits(replies.at(States)),
            .area = rectangle(replies.at(Area))};
}

QCoro::Task<QList<AccessibleElement>> walk(Application application)
{
    QList<AccessibleElement> found;
    QList<AtspiReference> level{application->root()};
    while (!level.isEmpty()) {
        QList<QDBusMessage> calls;
        for (const AtspiReference &object : level)
            calls += questions(object);
        const QList<QDBusMessage> replies = co_await AtspiApplication::exchange(application, calls);
        QList<AtspiReference> next;
        for (qsizetype i = 0; i < level.size(); ++i) {
            const QList<QDBusMessage> answers = replies.mid(i * QuestionCount, QuestionCount);
            found.append(described(level.at(i), answers));
            next += Atspi::references(answers.at(Children));
        }
        level = next;
    }
    co_return found;
}

// Errors are caught inside the coroutines: QCoro::waitFor never returns if a task throws.
QCoro::Task<QList<AccessibleElement>> walkOrNothing(Application application)
{
    try {
        const QList<AccessibleElement> found = co_await walk(application);
        co_return found;
    } catch (const PlatformError &) {
        co_return QList<AccessibleElement>();
    }
}

QCoro::Task<bool> pressOrFalse(Application application, AtspiReference object)
{
    try {
        const bool pressed = co_await Atspi::press(application, object);
        co_return pressed;
    } catch (const PlatformError &) {
        co_return false;
    }
}

QCoro::Task<QString> contentsOrNothing(Application application, AtspiReference object)
{
    const QVariantList all{0, -1};
    const QList<QDBusMessage> calls{Atspi::call(object, Atspi::textInterface, u"GetText"_s, all)};
    try {
        const QList<QDBusMessage> replies = co_await AtspiApplication::exchange(application, calls);
        co_return Atspi::text(replies.constFirst()).value_or(QString());
    } catch (const PlatformError &) {
        co_return QString();
    }
}

QCoro::Task<Application> findOrNone(std::shared_ptr<AtspiBus> bus, qint64 process)
{
    try {
        const QDBusConnection connection = co_await bus->connection();
        const std::optional<AtspiReference> root = co_await Atspi::findApplication(connection, process);
        if (!root)
            co_return Application();
        co_return std::make_shared<AtspiApplication>(connection, *root, u"The program"_s);
    } catch (const PlatformError &) {
        co_return Application();
    }
}

} // namespace

AccessibleProgram::AccessibleProgram(qint64 process) : m_process(process) {}

// The time budget is per application object, so each walk needs a new one.
std::shared_ptr<AtspiApplication> AccessibleProgram::application()
{
    if (!m_found)
        m_found = Awaited::result(findOrNone(m_bus, m_process));
    return m_found ? std::make_shared<AtspiApplication>(*m_found) : nullptr;
}

QList<AccessibleElement> AccessibleProgram::elements()
{
    const Application found = application();
    return found ? Awaited::result(walkOrNothing(found)) : QList<AccessibleElement>();
}

bool AccessibleProgram::press(const AccessibleElement &element)
{
    const Application found = application();
    return found && Awaited::result(pressOrFalse(found, element.reference));
}

QString AccessibleProgram::contents(const AccessibleElement &field)
{
    const Application found = application();
    return found ? Awaited::result(contentsOrNothing(found, field.reference)) : QString();
}
