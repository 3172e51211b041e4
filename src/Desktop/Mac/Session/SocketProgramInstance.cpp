// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Session/SocketProgramInstance.h"

#include "Desktop/Deadlines.h"
#include "Desktop/PlatformError.h"

#include <QCoreApplication>
#include <QCoroLocalSocket>
#include <QDir>
#include <QFile>
#include <QLocalSocket>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds answerLimit = 3s;
constexpr int attempts = 3;

// The protocol: one letter in each direction.
constexpr char activateLetter = 'a';
constexpr char toggleLetter = 't';

QString socketIn(const QString &folder)
{
    return folder + u"/instance.socket"_s;
}

} // namespace

SocketProgramInstance::SocketProgramInstance(const QString &folder) : m_folder(folder)
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &SocketProgramInstance::answerNext);
}

SocketProgramInstance::~SocketProgramInstance()
{
    leave();
}

QCoro::Task<InstanceStanding> SocketProgramInstance::claim(InstanceRequest request)
{
    // Shutdown may take a while without an event loop; a new start need not wait for it.
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
            &SocketProgramInstance::leave);
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (becomeFirst())
            co_return InstanceStanding::First;
        const Delivery delivery = co_await deliver(request);
        if (delivery == Delivery::Taken)
            co_return InstanceStanding::Later;
        // Don't repeat the request: a slow instance would carry it out twice.
        if (delivery == Delivery::Unanswered)
            break;
    }
    // The instance may have ended instead of replying.
    if (becomeFirst())
        co_return InstanceStanding::First;
    throw PlatformError(u"Orvane is already running, but doesn't answer."_s);
}

bool SocketProgramInstance::becomeFirst()
{
    QDir().mkpath(m_folder);
    if (m_lock == -1) {
        const QByteArray path = QFile::encodeName(m_folder + u"/instance.lock"_s);
        m_lock = open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    }
    // If locking fails for any other reason, instances can't detect each other.
    if (m_lock != -1 && flock(m_lock, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return false;
    // A crashed process leaves its socket behind.
    QLocalServer::removeServer(socketIn(m_folder));
    m_server.listen(socketIn(m_folder));
    return true;
}

void SocketProgramInstance::leave()
{
    m_server.close();
    if (m_lock != -1)
        close(m_lock);
    m_lock = -1;
}

QCoro::Task<SocketProgramInstance::Delivery> SocketProgramInstance::deliver(InstanceRequest request) const
{
    if (request == InstanceRequest::Nothing)
        co_return Delivery::Taken;
    QLocalSocket socket;
    auto asynchronous = qCoro(socket);
    socket.connectToServer(socketIn(m_folder));
    if (socket.state() == QLocalSocket::ConnectingState)
        co_await asynchronous.waitForConnected(Deadlines::answer);
    if (socket.state() != QLocalSocket::ConnectedState)
        co_return Delivery::Refused;
    socket.putChar(request == InstanceRequest::Toggle ? toggleLetter : activateLetter);
    socket.flush();
    const QByteArray reply = co_await asynchronous.read(1, answerLimit);
    co_return reply.isEmpty() ? Delivery::Unanswered : Delivery::Taken;
}

void SocketProgramInstance::answerNext()
{
    while (QLocalSocket *start = m_server.nextPendingConnection()) {
        connect(start, &QLocalSocket::disconnected, start, &QObject::deleteLater);
        connect(start, &QLocalSocket::readyRead, this, [this, start] { answer(*start); });
    }
}

void SocketProgramInstance::answer(QLocalSocket &start)
{
    char letter = 0;
    if (!start.getChar(&letter))
        return;
    // Reply first: the request may take longer than the other process waits.
    start.putChar(letter);
    start.flush();
    if (letter == activateLetter)
        Q_EMIT activated(QString());
    else if (letter == toggleLetter)
        Q_EMIT toggleRequested(QString());
}
