// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Window/LinuxDisplay.h"

#include "Desktop/Linux/Session/SessionType.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>

using namespace Qt::StringLiterals;

namespace {

// Whether Qt has a platform plug-in of this name; if not, Qt would abort the process.
bool hasPlugin(const QString &name)
{
    for (const QString &path : QCoreApplication::libraryPaths()) {
        const QDir folder(path + u"/platforms"_s);
        for (const QString &file : folder.entryList(QDir::Files)) {
            const QJsonObject description = QPluginLoader(folder.filePath(file)).metaData();
            const QJsonValue keys = description[u"MetaData"_s][u"Keys"_s];
            if (keys.toArray().contains(name))
                return true;
        }
    }
    return false;
}

// Whether a compositor accepts connections on the socket that libwayland would use.
bool isCompositorThere()
{
    const QString name = qEnvironmentVariable("WAYLAND_DISPLAY", u"wayland-0"_s);
    const QByteArray path = QDir(qEnvironmentVariable("XDG_RUNTIME_DIR")).filePath(name).toLocal8Bit();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= qsizetype(sizeof(address.sun_path)))
        return false;
    std::memcpy(address.sun_path, path.constData(), std::size_t(path.size()));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    const bool isThere =
        ::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof(address)) == 0;
    ::close(socket);
    return isThere;
}

bool canShowOnWayland()
{
    return Sessions::isWaylandNamed() && hasPlugin(u"wayland"_s) && isCompositorThere();
}

// Empty if there is none. On Xwayland the window would lack the application identifier by which compositors
// of the wlroots family tell it from others; without desktop services, that doesn't matter.
QString windowSystem(DisplayServer server, const std::function<bool()> &areWindowsOperated)
{
    const QString x11 = u"xcb"_s;
    const QString wayland = u"wayland"_s;
    switch (server) {
    case DisplayServer::Xorg:
        return x11;
    case DisplayServer::Xwayland:
        return canShowOnWayland() && areWindowsOperated() ? wayland : x11;
    case DisplayServer::None:
        break;
    }
    return canShowOnWayland() ? wayland : QString();
}

} // namespace

bool LinuxDisplay::prepare(const std::function<bool()> &areWindowsOperated)
{
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        return true;
    const QString choice = windowSystem(Sessions::displayServer(), areWindowsOperated);
    if (Sessions::isWaylandNamed() && !choice.isEmpty())
        qputenv("QT_QPA_PLATFORM", choice.toLatin1());
    return !choice.isEmpty();
}
