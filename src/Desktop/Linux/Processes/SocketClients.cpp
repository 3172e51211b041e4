// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Processes/SocketClients.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <linux/sock_diag.h>
#include <linux/unix_diag.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

using Inodes = QSet<quint32>;

// The kernel's list of local sockets, over netlink.
class SocketList
{
public:
    SocketList() : m_kernel(socket(AF_NETLINK, SOCK_DGRAM | SOCK_CLOEXEC, NETLINK_SOCK_DIAG)) {}
    ~SocketList()
    {
        if (m_kernel >= 0)
            close(m_kernel);
    }
    SocketList(const SocketList &) = delete;
    SocketList &operator=(const SocketList &) = delete;

    // The sockets at the other ends of those that were accepted at `path`.
    Inodes peersOf(const QByteArray &path)
    {
        Inodes peers;
        if (!request())
            return peers;
        alignas(nlmsghdr) std::array<char, 32768> reply;
        for (;;) {
            const ssize_t size = recv(m_kernel, reply.data(), reply.size(), 0);
            if (size <= 0 || !take({reply.data(), size}, path, peers))
                return peers;
        }
    }

private:
    bool request() const
    {
        struct
        {
            nlmsghdr header{};
            unix_diag_req body{};
        } message;
        message.header.nlmsg_len = sizeof message;
        message.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
        message.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
        message.body.sdiag_family = AF_UNIX;
        message.body.udiag_states = ~0U;
        message.body.udiag_show = UDIAG_SHOW_NAME | UDIAG_SHOW_PEER;
        return send(m_kernel, &message, sizeof message, 0) == ssize_t(sizeof message);
    }

    // Returns whether more follows.
    static bool take(QByteArrayView reply, const QByteArray &path, Inodes &peers)
    {
        auto rest = static_cast<unsigned>(reply.size());
        const auto *message = reinterpret_cast<const nlmsghdr *>(reply.data());
        for (; NLMSG_OK(message, rest); message = NLMSG_NEXT(message, rest)) {
            if (message->nlmsg_type == NLMSG_DONE || message->nlmsg_type == NLMSG_ERROR)
                return false;
            if (const auto peer = peerIn(*message, path))
                peers.insert(*peer);
        }
        return true;
    }

    static std::optional<quint32> peerIn(const nlmsghdr &message, const QByteArray &path)
    {
        const auto *socket = static_cast<const unix_diag_msg *>(NLMSG_DATA(&message));
        auto rest = static_cast<unsigned>(message.nlmsg_len - NLMSG_LENGTH(sizeof *socket));
        QByteArrayView name;
        std::optional<quint32> peer;
        const auto *attribute = reinterpret_cast<const rtattr *>(socket + 1);
        for (; RTA_OK(attribute, rest); attribute = RTA_NEXT(attribute, rest)) {
            if (attribute->rta_type == UNIX_DIAG_NAME)
                name = {static_cast<const char *>(RTA_DATA(attribute)), qsizetype(RTA_PAYLOAD(attribute))};
            else if (attribute->rta_type == UNIX_DIAG_PEER)
                std::memcpy(&peer.emplace(), RTA_DATA(attribute), sizeof(quint32));
        }
        // The kernel counts the zero byte at the end.
        return name == path + '\0' ? peer : std::nullopt;
    }

    const int m_kernel;
};

bool hasSocket(qint64 process, const Inodes &inodes)
{
    const QDir descriptors(u"/proc/%1/fd"_s.arg(process));
    const QStringList names = descriptors.entryList(QDir::System | QDir::Files);
    return std::any_of(names.cbegin(), names.cend(), [&](const QString &name) {
        std::array<char, 64> target{};
        const QByteArray file = QFile::encodeName(descriptors.filePath(name));
        const ssize_t size = readlink(file.constData(), target.data(), target.size());
        // "socket:[inode]"
        const QByteArrayView text(target.data(), std::max<ssize_t>(size, 0));
        return text.startsWith("socket:[") && inodes.contains(text.sliced(8).chopped(1).toUInt());
    });
}

} // namespace

QByteArray peerPath(qintptr socket)
{
    sockaddr_un address{};
    socklen_t size = sizeof address;
    const int result = getpeername(static_cast<int>(socket), reinterpret_cast<sockaddr *>(&address), &size);
    const bool isLocal = result == 0 && address.sun_family == AF_UNIX;
    return isLocal
               ? QByteArray(address.sun_path, qsizetype(strnlen(address.sun_path, sizeof address.sun_path)))
               : QByteArray();
}

QList<qint64> clientsAmong(const QList<qint64> &processes, const QByteArray &path)
{
    if (processes.isEmpty() || path.isEmpty())
        return {};
    const Inodes inodes = SocketList().peersOf(path);
    QList<qint64> clients = processes;
    clients.removeIf([&inodes](qint64 process) { return !hasSocket(process, inodes); });
    return clients;
}
