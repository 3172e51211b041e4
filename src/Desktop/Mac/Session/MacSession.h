// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Session.h"

// The login session on macOS. Thread: main.
class MacSession : public Session
{
public:
    std::optional<QString> obstacle() const override { return std::nullopt; }
    QCoro::Task<bool> isLocked() override;
};
