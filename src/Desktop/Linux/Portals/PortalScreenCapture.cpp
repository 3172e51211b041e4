// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Portals/PortalScreenCapture.h"

#include <QFile>
#include <QUrl>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

const PortalBus::Sentences sentences{
    u"You didn't allow Orvane to take pictures of the screen."_s,
    u"The desktop took no picture of the screen. It asks for permission only while Orvane's window is in "
    "front."_s};

// The portal leaves its picture in the user's folder.
QImage taken(const QString &path)
{
    QImage picture(path);
    QFile::remove(path);
    return picture;
}

} // namespace

PortalScreenCapture::PortalScreenCapture(PortalBus &bus) : m_bus(bus) {}

QCoro::Task<void> PortalScreenCapture::capture(QString path)
{
    const QVariantList noWindow{QString()};
    const QVariantMap options{{u"interactive"_s, false}};
    const QVariantMap result = co_await m_bus.request(u"org.freedesktop.portal.Screenshot"_s, u"Screenshot"_s,
                                                      noWindow, options, PortalBus::Partner::User, sentences);
    const QString source = QUrl(result.value(u"uri"_s).toString()).toLocalFile();
    if (source.isEmpty())
        throw PlatformError(u"The desktop portal has left no picture."_s);
    const auto read = [source] { return taken(source); };
    const QImage picture = co_await m_reader.run(read, 10s);
    co_await m_file.write(picture, path);
}
