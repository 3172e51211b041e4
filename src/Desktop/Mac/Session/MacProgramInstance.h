// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Mac/Session/SocketProgramInstance.h"

#include <memory>

// The single instance, which also handles a click on its icon in the Dock. Create it before the application
// object, which adopts the existing delegate. Thread: main.
class MacProgramInstance : public SocketProgramInstance
{
    Q_OBJECT

public:
    MacProgramInstance();
    ~MacProgramInstance() override;
    MacProgramInstance(const MacProgramInstance &) = delete;
    MacProgramInstance &operator=(const MacProgramInstance &) = delete;

private:
    struct Delegate;
    std::unique_ptr<Delegate> m_delegate;
};
