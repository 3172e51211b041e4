// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Portals/PortalClipboardText.h"

#include "Desktop/Linux/Pasting/AccessedText.h"
#include "Desktop/Linux/Portals/RestoreToken.h"

using namespace Qt::StringLiterals;

QCoro::Task<std::unique_ptr<RemoteKeys>> PortalClipboardText::open()
{
    std::unique_ptr<RemoteKeys> session = co_await RemoteKeys::open(m_bus);
    if (!session->clipboard()) {
        RestoreToken::write({});
        throw PlatformError(u"You didn't allow Orvane to use the clipboard; it asks again next time."_s);
    }
    co_return session;
}

QCoro::Task<std::optional<QString>> PortalClipboardText::read()
{
    const std::unique_ptr<RemoteKeys> session = co_await open();
    co_return co_await AccessedText::readFrom(*session->clipboard());
}

QCoro::Task<void> PortalClipboardText::write(QString text)
{
    const std::unique_ptr<RemoteKeys> session = co_await open();
    co_await AccessedText::writeTo(*session->clipboard(), text);
}
