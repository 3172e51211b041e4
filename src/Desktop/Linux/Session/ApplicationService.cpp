// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Session/ApplicationService.h"

#include <QDBusError>

using namespace Qt::StringLiterals;

namespace {

const QString activationToken = u"activation-token"_s;
const QString startupIdentifier = u"desktop-startup-id"_s;

} // namespace

QString ApplicationService::tokenIn(const QVariantMap &platformData)
{
    const QString token = platformData.value(activationToken).toString();
    return token.isEmpty() ? platformData.value(startupIdentifier).toString() : token;
}

QVariantMap ApplicationService::platformData(const QString &token)
{
    if (token.isEmpty())
        return {};
    return {{activationToken, token}, {startupIdentifier, token}};
}

void ApplicationService::Activate(const QVariantMap &platformData)
{
    Q_EMIT activated(tokenIn(platformData));
}

void ApplicationService::Open(const QStringList & /*uris*/, const QVariantMap &platformData)
{
    Q_EMIT activated(tokenIn(platformData));
}

void ApplicationService::ActivateAction(const QString &action, const QVariantList & /*parameter*/,
                                        const QVariantMap &platformData)
{
    if (action == toggleAction)
        Q_EMIT toggleRequested(tokenIn(platformData));
    else
        sendErrorReply(QDBusError::InvalidArgs, u"There is no action “%1”."_s.arg(action));
}
