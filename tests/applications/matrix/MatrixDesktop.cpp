// SPDX-License-Identifier: Apache-2.0
#include "applications/matrix/MatrixDesktop.h"

#include "Desktop/Linux/Applications/DesktopEntries.h"
#include "applications/support/Browser.h"
#include "applications/support/PrivateDesktop.h"

#include <QDir>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

void writeEntry(const QString &name, const QByteArray &content)
{
    const QString folder = PrivateDesktop::home(u".local/share/applications/"_s);
    QDir().mkpath(folder);
    PrivateDesktop::write(folder + name, content);
}

void addSample()
{
    writeEntry(u"orvane-desktop-sample.desktop"_s, "[Desktop Entry]\nType=Application\nName=Orvane Sample\n"
                                                   "MimeType=text/plain;\nCategories=Utility;TextEditor;\n"
                                                   "StartupWMClass=orvane_desktop_sample\nExec=\"" +
                                                       MatrixDesktop::sample().toUtf8() + "\" %f\n");
}

// A user's entry overrides the system's entry of the same name. As with a switch, the proxy is the same on
// all desktops: on GNOME, Chromium would take that of the settings.
void addSwitchesToChromium(quint16 proxyPort)
{
    const QString entry = QStandardPaths::locate(QStandardPaths::ApplicationsLocation, u"chromium.desktop"_s);
    const QByteArray program = "Exec=/usr/bin/chromium";
    const QStringList proxy{u"--proxy-server=http://127.0.0.1:%1"_s.arg(proxyPort)};
    const QByteArray switches = (MatrixDesktop::chromiumSwitches() + proxy).join(u' ').toUtf8();
    writeEntry(u"chromium.desktop"_s, PrivateDesktop::read(entry).replace(program, program + ' ' + switches));
}

} // namespace

void MatrixDesktop::prepare(quint16 proxyPort)
{
    addSample();
    addSwitchesToChromium(proxyPort);
    Browser::useProxy(proxyPort);
}

QString MatrixDesktop::sample()
{
    return QString::fromUtf8(ORVANE_DESKTOP_SAMPLE);
}

QStringList MatrixDesktop::chromiumSwitches()
{
    return {u"--no-sandbox"_s, u"--no-first-run"_s, u"--disable-gpu"_s, u"--hide-crash-restore-bubble"_s};
}

void MatrixDesktop::makeDefault(const QString &entry, const QStringList &types)
{
    const QString path = PrivateDesktop::home(u".config/mimeapps.list"_s);
    QList<QByteArray> lines = PrivateDesktop::read(path).trimmed().split('\n');
    for (const QString &type : types) {
        const QByteArray key = type.toUtf8() + '=';
        lines.removeIf([&key](const QByteArray &line) { return line.startsWith(key); });
        lines << key + entry.toUtf8();
    }
    // Atomic, as on real desktops: a program that watches the file never reads a partial one.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(lines.join('\n') + '\n') < 0 || !file.commit())
        qFatal("%s cannot be written", qPrintable(path));
    // GIO re-reads the file once it is notified of the change.
    const auto isChosen = [&entry](const QString &type) {
        const auto chosen = DesktopEntries::defaultForType(type);
        return chosen && chosen->path.endsWith(u'/' + entry);
    };
    if (!QTest::qWaitFor([&] { return std::ranges::all_of(types, isChosen); }, PrivateDesktop::patience))
        qFatal("%s does not become the default", qPrintable(entry));
}
