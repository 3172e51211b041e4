// SPDX-License-Identifier: Apache-2.0
#include "applications/support/Kwin.h"

#include "Desktop/Linux/Wayland/PlasmaWindows.h"
#include "applications/support/PrivateDesktop.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <QTemporaryFile>
#include <QTest>

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
    if (!number.isValid())
        return {};
    QDBusInterface(kwin, u"/Scripting/Script%1"_s.arg(number.value()), u"org.kde.kwin.Script"_s)
        .call(u"run"_s);
    const bool isTold =
        QTest::qWaitFor([&listener] { return listener.told.has_value(); }, PrivateDesktop::patience);
    scripting.call(u"unloadScript"_s, file.fileName());
    bus.unregisterObject(objectPath);
    return isTold ? *listener.told : QString();
}

bool Kwin::permitThisProgram()
{
    const QString entries = PrivateDesktop::home(u".local/share/applications"_s);
    QDir().mkpath(entries);
    PrivateDesktop::write(entries + u"/orvane-test.desktop"_s,
                          "[Desktop Entry]\nType=Application\nName=Test\nNoDisplay=true\nExec=" +
                              QFile::encodeName(QCoreApplication::applicationFilePath()) +
                              "\nX-KDE-Wayland-Interfaces=org_kde_plasma_window_management,"
                              "org_kde_kwin_fake_input,org_kde_kwin_keystate\n");
    return QTest::qWaitFor([] { return PlasmaWindows::isOfferedBy(WaylandConnection()); },
                           PrivateDesktop::patience);
}

#include "Kwin.moc"
