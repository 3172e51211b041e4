// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Mac/Session/SocketProgramInstance.h"

#include <memory>

// One running instance, which also answers a click on its icon in the Dock. Main thread; made before the
// application object, which takes the delegate over that is there by then.
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
