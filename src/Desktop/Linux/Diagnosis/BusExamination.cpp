// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Diagnosis/BusExamination.h"

#include "Desktop/Deadlines.h"
#include "Desktop/Linux/Applications/GLibPointers.h"
#include "Desktop/Linux/ShellExtension/ShellExtension.h"
#include "Desktop/PlatformError.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

struct VariantRelease
{
    void operator()(GVariant *variant) const { g_variant_unref(variant); }
};
using VariantPointer = std::unique_ptr<GVariant, VariantRelease>;

[[noreturn]] void fail(GError *error)
{
    const GErrorPointer owned(error);
    throw PlatformError(QString::fromUtf8(error->message));
}

// Not with Qt: a hung QDBusConnection blocks all others and the process's exit.
GObjectPointer<GDBusConnection> connectTo(const QString &address)
{
    GError *error = nullptr;
    const auto flags = GDBusConnectionFlags(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                            G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    GObjectPointer<GDBusConnection> connection(g_dbus_connection_new_for_address_sync(
        address.toUtf8().constData(), flags, nullptr, nullptr, &error));
    if (!connection)
        fail(error);
    return connection;
}

QStringList names(GDBusConnection *connection, const char *method)
{
    constexpr auto limit = static_cast<int>(Deadlines::answer.count());
    GError *error = nullptr;
    const VariantPointer reply(g_dbus_connection_call_sync(
        connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method, nullptr,
        G_VARIANT_TYPE("(as)"), G_DBUS_CALL_FLAGS_NO_AUTO_START, limit, nullptr, &error));
    if (!reply)
        fail(error);
    QStringList result;
    const VariantPointer list(g_variant_get_child_value(reply.get(), 0));
    for (gsize i = 0; i < g_variant_n_children(list.get()); ++i) {
        const VariantPointer name(g_variant_get_child_value(list.get(), i));
        result.append(QString::fromUtf8(g_variant_get_string(name.get(), nullptr)));
    }
    return result;
}

// Older ones have none.
QString versionOfExtension(GDBusConnection *connection)
{
    constexpr auto limit = static_cast<int>(Deadlines::answer.count());
    const char *name = ShellExtension::busName.data();
    const VariantPointer reply(
        g_dbus_connection_call_sync(connection, name, "/org/orvane/Shell", "org.freedesktop.DBus.Properties",
                                    "Get", g_variant_new("(ss)", name, "Version"), G_VARIANT_TYPE("(v)"),
                                    G_DBUS_CALL_FLAGS_NO_AUTO_START, limit, nullptr, nullptr));
    if (!reply)
        return {};
    const VariantPointer boxed(g_variant_get_child_value(reply.get(), 0));
    const VariantPointer value(g_variant_get_variant(boxed.get()));
    return g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING)
               ? QString::fromUtf8(g_variant_get_string(value.get(), nullptr))
               : QString();
}

} // namespace

QString BusExamination::sessionBusAddress()
{
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    // This address would start a new bus.
    if (!address.isEmpty())
        return address.startsWith("autolaunch:"_L1) ? QString() : address;
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString socket = folder + u"/bus"_s;
    return !folder.isEmpty() && QFileInfo::exists(socket) ? u"unix:path="_s + socket : QString();
}

BusExamination BusExamination::take(const QString &address)
{
    if (address.isEmpty())
        throw PlatformError(u"There is no bus."_s);
    const GObjectPointer<GDBusConnection> connection = connectTo(address);
    BusExamination result;
    result.running = names(connection.get(), "ListNames");
    result.startable = names(connection.get(), "ListActivatableNames");
    if (result.isRunning(ShellExtension::busName))
        result.extensionVersion = versionOfExtension(connection.get());
    g_dbus_connection_close_sync(connection.get(), nullptr, nullptr);
    return result;
}
