// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/X11/Clients.h"

#include <QCoreApplication>
#include <QSysInfo>

#include <xcb/res.h>

namespace {

X11Claims::Surroundings surroundings(bool serverReports)
{
    return {QCoreApplication::applicationPid(), QSysInfo::machineHostName().toUtf8(), serverReports};
}

} // namespace

qint64 X11Claims::processOf(const Claim &claim, std::uint32_t client, qint64 reported,
                            const Surroundings &surroundings)
{
    const bool isHere = claim.machine.isEmpty() || claim.machine == surroundings.machine;
    if (!surroundings.serverReports) {
        // Our own windows must still be recognised.
        const bool isOwn = isHere && claim.process == surroundings.ownProcess;
        return isOwn ? surroundings.ownProcess : -qint64(client);
    }
    // A remote program's connection belongs to a local forwarder such as ssh, which may serve several
    // programs.
    const bool isForwarded = !isHere && claim.process != reported;
    return reported <= 0 || isForwarded ? -qint64(client) : reported;
}

X11Clients::X11Clients(X11Connection &connection) : m_connection(connection)
{
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(m_connection.get(), &xcb_res_id);
    if (!extension || !extension->present)
        return;
    const std::uint32_t own = m_connection.ownWindow();
    m_serverReports = askServer({own}).value(clientOf(own)) == QCoreApplication::applicationPid();
}

std::uint32_t X11Clients::clientOf(std::uint32_t window) const
{
    return window & ~xcb_get_setup(m_connection.get())->resource_id_mask;
}

QList<qint64> X11Clients::processes(const QList<std::uint32_t> &windows) const
{
    QList<xcb_get_property_cookie_t> processes;
    QList<xcb_get_property_cookie_t> machines;
    for (const std::uint32_t window : windows) {
        processes.append(m_connection.request(window, m_connection.atoms()._NET_WM_PID));
        machines.append(m_connection.request(window, XCB_ATOM_WM_CLIENT_MACHINE));
    }
    QHash<std::uint32_t, qint64> reported;
    if (m_serverReports)
        reported = askServer(windows);
    const X11Claims::Surroundings here = surroundings(m_serverReports);
    QList<qint64> result;
    for (qsizetype i = 0; i < windows.size(); ++i) {
        const auto process = m_connection.read(processes.at(i));
        const auto machine = m_connection.read(machines.at(i));
        const X11Claims::Claim claim{process ? process->values().value(0, 0) : 0,
                                     machine ? machine->bytes : QByteArray()};
        const std::uint32_t client = clientOf(windows.at(i));
        result.append(X11Claims::processOf(claim, client, reported.value(client), here));
    }
    return result;
}

// Returns processes by client, without clients that have disconnected.
QHash<std::uint32_t, qint64> X11Clients::askServer(const QList<std::uint32_t> &windows) const
{
    QList<xcb_res_client_id_spec_t> questions;
    for (const std::uint32_t window : windows)
        questions.append({window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID});
    QHash<std::uint32_t, qint64> result;
    if (questions.isEmpty())
        return result;
    const auto cookie =
        xcb_res_query_client_ids(m_connection.get(), std::uint32_t(questions.size()), questions.constData());
    const X11Reply<xcb_res_query_client_ids_reply_t> reply(
        xcb_res_query_client_ids_reply(m_connection.get(), cookie, nullptr));
    if (!reply)
        return result;
    for (auto each = xcb_res_query_client_ids_ids_iterator(reply.get()); each.rem > 0;
         xcb_res_client_id_value_next(&each)) {
        const bool isProcess = each.data->spec.mask == XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID;
        if (isProcess && xcb_res_client_id_value_value_length(each.data) == 1)
            result.insert(clientOf(each.data->spec.client), *xcb_res_client_id_value_value(each.data));
    }
    return result;
}
