// SPDX-License-Identifier: Apache-2.0
#include "applications/support/Browser.h"

#include "applications/support/Clipboard.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/Screen.h"

#include <QFile>

#include <algorithm>

using namespace Qt::StringLiterals;

bool Browser::isShown()
{
    return Screen::shows(QString::fromLatin1(windowClass));
}

bool Browser::isActive()
{
    return Screen::activeClass().compare(QLatin1StringView(windowClass), Qt::CaseInsensitive) == 0;
}

bool Browser::showsPage(const QString &title)
{
    const auto windows = Screen::windowsOf(QString::fromLatin1(windowClass));
    return std::ranges::any_of(windows,
                               [&](const ScreenWindow &window) { return window.title.startsWith(title); });
}

void Browser::useProxy(quint16 port)
{
    QFile settings(PrivateDesktop::home(u".mozilla/firefox/private/user.js"_s));
    if (!settings.open(QIODevice::Append))
        qFatal("the private desktop has no Firefox profile");
    for (const char *kind : {"http", "ssl"}) {
        const QByteArray name = QByteArray("\"network.proxy.") + kind + "_port\"";
        settings.write("user_pref(" + name + ", " + QByteArray::number(port) + ");\n");
    }
}

QString Browser::address()
{
    return Clipboard::copiedWith({u"ctrl+l"_s, u"ctrl+c"_s});
}
