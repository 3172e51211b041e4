// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/SwayTree.h"

#include "Base/Text.h"
#include "Desktop/BoundedQueue.h"
#include "Desktop/Deadlines.h"
#include "Desktop/Linux/Processes/RunningProcess.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalSocket>
#include <QPromise>

#include <cstring>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView magic("i3-ipc");
constexpr std::uint32_t getTree = 4;
constexpr qsizetype headerSize =
    14; // the magic, then the payload's length and the type in the native byte order
constexpr qsizetype mostBytes = 16 << 20;

void append(QByteArray &message, std::uint32_t number)
{
    message.append(reinterpret_cast<const char *>(&number), sizeof number);
}

std::uint32_t numberAt(const QByteArray &message, qsizetype position)
{
    std::uint32_t number = 0;
    std::memcpy(&number, message.constData() + position, sizeof number);
    return number;
}

// A question for the tree. Ends with its reply, or with an empty one.
class Question
{
public:
    explicit Question(qint64 compositor)
    {
        m_ended.start();
        QObject::connect(&m_socket, &QLocalSocket::connected, &m_socket, [this, compositor] {
            if (peerProcess(m_socket.socketDescriptor()) == compositor)
                ask();
            else
                m_socket.abort();
        });
        QObject::connect(&m_socket, &QLocalSocket::readyRead, &m_socket, [this] { read(); });
        QObject::connect(&m_socket, &QLocalSocket::disconnected, &m_socket, [this] { end({}); });
        QObject::connect(&m_socket, &QLocalSocket::errorOccurred, &m_socket, [this] { end({}); });
        m_socket.connectToServer(qEnvironmentVariable("SWAYSOCK"));
    }
    ~Question() { m_socket.disconnect(); }
    Question(const Question &) = delete;
    Question &operator=(const Question &) = delete;

    QFuture<void> ended() const { return m_ended.future(); }
    QByteArray reply() const { return m_reply; }

private:
    void ask()
    {
        QByteArray message = magic.toByteArray();
        append(message, 0);
        append(message, getTree);
        m_socket.write(message);
    }

    void read()
    {
        m_received += m_socket.readAll();
        if (m_received.size() > mostBytes)
            return end({});
        if (m_received.size() < headerSize)
            return;
        if (m_received.size() >= headerSize + numberAt(m_received, magic.size()))
            end(m_received.sliced(headerSize));
    }

    void end(const QByteArray &reply)
    {
        if (m_ended.future().isFinished())
            return;
        m_reply = reply;
        m_ended.finish();
    }

    QPromise<void> m_ended;
    QByteArray m_received;
    QByteArray m_reply;
    QLocalSocket m_socket;
};

void collect(const QJsonObject &node, QList<SwayTree::Window> &windows)
{
    if (const qint64 process = node.value("pid"_L1).toInteger(); process > 0) {
        const QString className = node.value("window_properties"_L1).toObject().value("class"_L1).toString();
        windows.append({process, node.value("app_id"_L1).toString(className),
                        Text::cleaned(node.value("name"_L1).toString()), node.value("focused"_L1).toBool()});
    }
    for (const QLatin1StringView children : {"nodes"_L1, "floating_nodes"_L1}) {
        for (const QJsonValue &child : node.value(children).toArray())
            collect(child.toObject(), windows);
    }
}

} // namespace

QCoro::Task<std::optional<QList<SwayTree::Window>>> SwayTree::windows(qint64 compositor)
{
    const auto question = std::make_shared<Question>(compositor);
    const QFuture<bool> ended = finishedWithin(question->ended(), Deadlines::answer);
    co_await ended;
    co_return windowsIn(question->reply());
}

std::optional<QList<SwayTree::Window>> SwayTree::windowsIn(const QByteArray &reply)
{
    const QJsonDocument tree = QJsonDocument::fromJson(reply);
    if (!tree.isObject())
        return std::nullopt;
    QList<Window> windows;
    collect(tree.object(), windows);
    return windows;
}
