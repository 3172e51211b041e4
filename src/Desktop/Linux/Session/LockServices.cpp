// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Session/LockServices.h"

#include "Desktop/Linux/DBus/DBusQuestion.h"

#include <QDBusObjectPath>
#include <QDBusVariant>

#include <vector>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

constexpr auto limit = 5s; // generous, for a busy computer

// The interface and object path of each are derived from its name. KDE and LXQt use the first.
const QStringList screenSavers{u"org.freedesktop.ScreenSaver"_s, u"org.gnome.ScreenSaver"_s,
                               u"org.cinnamon.ScreenSaver"_s, u"org.mate.ScreenSaver"_s,
                               u"org.xfce.ScreenSaver"_s};

const QString loginManager = u"org.freedesktop.login1"_s;

// Returns the first value of the reply, or an invalid one if there is none.
QCoro::Task<QVariant> answerTo(DBusQuestion question, DBusQuestion::Bus connect, BoundedQueue &worker)
{
    const QVariantList values = co_await DBusQuestion::answer(question, connect, worker, limit);
    co_return values.value(0);
}

} // namespace

QCoro::Task<bool> LockServices::isScreenLocked()
{
    // Start all before waiting.
    std::vector<QCoro::Task<bool>> asking;
    for (const QString &service : screenSavers)
        asking.push_back(isScreenSaverActive(service));
    asking.push_back(isSessionLocked());
    bool isLocked = false;
    for (const QCoro::Task<bool> &each : asking) {
        const bool says = co_await each;
        isLocked = isLocked || says;
    }
    co_return isLocked;
}

QCoro::Task<bool> LockServices::isScreenSaverActive(QString service)
{
    QString path = u'/' + service;
    path.replace(u'.', u'/');
    const DBusQuestion question{service, path, service, u"GetActive"_s};
    const QVariant answer = co_await answerTo(question, &QDBusConnection::sessionBus, m_sessionBus);
    co_return answer.toBool();
}

// Queries the login session of this process; a nested private session has no identifier.
QCoro::Task<bool> LockServices::isSessionLocked()
{
    const QString identifier = qEnvironmentVariable("XDG_SESSION_ID");
    if (identifier.isEmpty())
        co_return false;
    const DBusQuestion whichSession{loginManager,
                                    u"/org/freedesktop/login1"_s,
                                    u"org.freedesktop.login1.Manager"_s,
                                    u"GetSession"_s,
                                    {identifier}};
    const QVariant session = co_await answerTo(whichSession, &QDBusConnection::systemBus, m_systemBus);
    if (!session.isValid())
        co_return false;
    const DBusQuestion isLocked{loginManager,
                                session.value<QDBusObjectPath>().path(),
                                u"org.freedesktop.DBus.Properties"_s,
                                u"Get"_s,
                                {u"org.freedesktop.login1.Session"_s, u"LockedHint"_s}};
    const QVariant hint = co_await answerTo(isLocked, &QDBusConnection::systemBus, m_systemBus);
    co_return hint.value<QDBusVariant>().variant().toBool();
}
