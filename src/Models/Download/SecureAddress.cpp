// SPDX-License-Identifier: Apache-2.0
#include "Models/Download/SecureAddress.h"

#include <QHostAddress>

using namespace Qt::StringLiterals;

bool isSecureAddress(const QUrl &url)
{
    const QString host = url.host();
    if (!url.isValid() || host.isEmpty())
        return false;
    const bool isLocal = host == u"localhost" || QHostAddress(host).isLoopback();
    return url.scheme() == u"https" || (url.scheme() == u"http" && isLocal);
}

bool isSafeRedirect(const QUrl &from, const QUrl &to)
{
    const bool weakens = from.scheme() == u"https" && to.scheme() != u"https";
    return isSecureAddress(to) && !weakens;
}
