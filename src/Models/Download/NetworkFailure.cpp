// SPDX-License-Identifier: Apache-2.0
#include "Models/Download/NetworkFailure.h"

#include "Base/Text.h"

using namespace Qt::StringLiterals;

namespace {

// Qt's error texts may or may not end with a full stop.
QString ended(const QString &text)
{
    const QString line = Text::cleaned(text).trimmed();
    return line.endsWith(u'.') ? line : line + u'.';
}

} // namespace

QString networkFailureSentence(QNetworkReply::NetworkError error, const QString &detail)
{
    switch (error) {
    case QNetworkReply::HostNotFoundError:
        return u"The download server couldn't be found. Check the internet connection."_s;
    case QNetworkReply::ConnectionRefusedError:
        return u"The download server refused the connection."_s;
    case QNetworkReply::RemoteHostClosedError:
        return u"The connection was lost during the download."_s;
    case QNetworkReply::TimeoutError:
    case QNetworkReply::OperationCanceledError: // by the transfer's own timeout
        return u"The download server stopped answering."_s;
    case QNetworkReply::SslHandshakeFailedError:
        return u"The download server's identity couldn't be verified: "_s + ended(detail);
    default:
        return u"The download failed: "_s + ended(detail);
    }
}
