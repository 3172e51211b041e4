// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/WindowSystem/ClipboardText.h"
#include "Desktop/Linux/Portals/PortalBus.h"
#include "Desktop/Linux/Portals/RemoteKeys.h"

// The clipboard's text through a portal, in a session that lasts as long as the operation. The first time,
// the desktop asks the user. What is written is kept by the desktop. `bus` must outlive this object. Thread:
// main.
class PortalClipboardText : public ClipboardText
{
public:
    explicit PortalClipboardText(PortalBus &bus) : m_bus(bus) {}

    QCoro::Task<std::optional<QString>> read() override;
    QCoro::Task<void> write(QString text) override;

private:
    QCoro::Task<std::unique_ptr<RemoteKeys>> open();

    PortalBus &m_bus;
};
