// SPDX-License-Identifier: Apache-2.0
#include "applications/support/Kwin.h"

#include "Desktop/Linux/Applications/OwnEntry.h"
#include "Desktop/Linux/Wayland/PlasmaWindows.h"
#include "applications/support/PrivateDesktop.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusReply>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryFile>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

const QString objectPath = u"/orvane/test"_s;
const QString interface = u"org.orvane.Test"_s;

// Receives what a script tells.
class Listener : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.orvane.Test")

public:
    std::optional<QString> told;

public Q_SLOTS:
    void tell(const QString &text) { told = text; }
};

const QString listWindows = uR"(
    const all = workspace.stackingOrder.filter(window => window.normalWindow || window.dialog);
    tell(JSON.stringify(all.map(window => ({
        title: window.caption, app: window.desktopFileName, process: window.pid, focused: window.active
    }))));
)"_s;

} // namespace

QString Kwin::run(const QString &script)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    Listener listener;
    bus.registerObject(objectPath, &listener, QDBusConnection::ExportAllSlots);
    QTemporaryFile file(PrivateDesktop::home(u"script-XXXXXX.js"_s)); // KWin sees the home folder
    if (!file.open())
        return {};
    file.write(u"const tell = text => callDBus('%1', '%2', '%3', 'tell', text);\n"_s
                   .arg(bus.baseService(), objectPath, interface)
                   .toUtf8() +
               script.toUtf8());
    file.close();
    const QString kwin = u"org.kde.KWin"_s;
    QDBusInterface scripting(kwin, u"/Scripting"_s, u"org.kde.kwin.Scripting"_s);
    const QDBusReply<int> number = scripting.call(u"loadScript"_s, file.fileName(), file.fileName());
    QDBusInterface(kwin, u"/Scripting/Script%1"_s.arg(number.value()), u"org.kde.kwin.Script"_s)
        .call(u"run"_s);
    const bool isTold =
        QTest::qWaitFor([&listener] { return listener.told.has_value(); }, PrivateDesktop::patience);
    scripting.call(u"unloadScript"_s, file.fileName());
    bus.unregisterObject(objectPath);
    return isTold ? *listener.told : QString();
}

QList<KwinWindow> Kwin::windows()
{
    QList<KwinWindow> windows;
    for (const QJsonValue &value : QJsonDocument::fromJson(run(listWindows).toUtf8()).array()) {
        windows.prepend({value["title"_L1].toString(), value["app"_L1].toString(),
                         value["process"_L1].toInteger(), value["focused"_L1].toBool()});
    }
    return windows;
}

std::optional<KwinWindow> Kwin::focused()
{
    for (const KwinWindow &window : windows()) {
        if (window.isFocused)
            return window;
    }
    return std::nullopt;
}

QString Kwin::described()
{
    QStringList all;
    for (const KwinWindow &window : windows()) {
        all.append(u"“%1” of %2%3"_s.arg(window.title, window.applicationIdentifier,
                                         window.isFocused ? u" (focused)"_s : QString()));
    }
    return all.join(u", "_s);
}

bool Kwin::clear()
{
    for (const KwinWindow &window : windows()) {
        if (window.process > 0 && window.process != QCoreApplication::applicationPid())
            ::kill(static_cast<pid_t>(window.process), SIGKILL);
    }
    return QTest::qWaitFor([] { return windows().isEmpty(); }, PrivateDesktop::patience);
}

bool Kwin::permitThisProgram()
{
    OwnEntry::write(QCoreApplication::applicationFilePath());
    return QTest::qWaitFor([] { return PlasmaWindows::isOfferedBy(WaylandConnection()); },
                           PrivateDesktop::patience);
}

#include "Kwin.moc"
