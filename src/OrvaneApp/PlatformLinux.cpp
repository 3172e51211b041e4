// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/LinuxDesktop.h"
#include "OrvaneApp/Platform.h"

namespace {

class LinuxDesktopServices : public DesktopServices
{
public:
    Desktop desktop() override { return m_desktop.desktop(); }

private:
    LinuxDesktop m_desktop;
};

} // namespace

std::unique_ptr<DesktopServices> Platform::connectToDesktop()
{
    return std::make_unique<LinuxDesktopServices>();
}
