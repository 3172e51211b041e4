// SPDX-License-Identifier: Apache-2.0
#include "Support/KeyboardDevices.h"

#include <QProcess>
#include <QStringList>

#include <xcb/xinput.h>
#include <xcb/xtest.h>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

// Device events, relative to the input extension's first event.
constexpr int devicePress = 1;
constexpr int deviceRelease = 2;

QByteArray output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return process.readAllStandardOutput();
}

void roundTrip(xcb_connection_t *connection)
{
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

void load(QStringList arguments, const QString &layout, const QString &options)
{
    arguments << u"-layout"_s << layout << u"-option"_s << QString();
    if (!options.isEmpty())
        arguments << u"-option"_s << options;
    output(u"setxkbmap"_s, arguments);
}

} // namespace

KeyboardDevices::KeyboardDevices() : m_connection(xcb_connect(nullptr, nullptr), &xcb_disconnect)
{
    const std::unique_ptr<xcb_input_xi_query_device_reply_t, decltype(&std::free)> reply(
        xcb_input_xi_query_device_reply(
            m_connection.get(), xcb_input_xi_query_device(m_connection.get(), XCB_INPUT_DEVICE_ALL), nullptr),
        &std::free);
    if (!reply)
        return;
    auto devices = xcb_input_xi_query_device_infos_iterator(reply.get());
    for (; devices.rem > 0; xcb_input_xi_device_info_next(&devices)) {
        const QByteArray name(xcb_input_xi_device_info_name(devices.data), devices.data->name_len);
        if (name == "Xvfb keyboard")
            physical = devices.data->deviceid;
        else if (name == "Virtual core XTEST keyboard")
            sending = devices.data->deviceid;
        else if (name == "Virtual core keyboard")
            master = devices.data->deviceid;
    }
}

KeyboardDevices::~KeyboardDevices()
{
    setLayout(u"us"_s);
}

QByteArray KeyboardDevices::map(int device)
{
    return output(u"xkbcomp"_s, {u"-w0"_s, u"-i"_s, QString::number(device), u"-xkb"_s,
                                 qEnvironmentVariable("DISPLAY"), u"-"_s});
}

void KeyboardDevices::setLayout(int device, const QString &layout, const QString &options)
{
    load({u"-device"_s, QString::number(device)}, layout, options);
}

void KeyboardDevices::setLayout(const QString &layout, const QString &options)
{
    load({}, layout, options);
}

void KeyboardDevices::pressPhysicalKey(std::uint8_t code) const
{
    const auto *extension = xcb_get_extension_data(m_connection.get(), &xcb_input_id);
    for (const int event : {devicePress, deviceRelease}) {
        xcb_test_fake_input(m_connection.get(), std::uint8_t(extension->first_event + event), code,
                            XCB_CURRENT_TIME, XCB_NONE, 0, 0, std::uint8_t(physical));
    }
    roundTrip(m_connection.get());
}
