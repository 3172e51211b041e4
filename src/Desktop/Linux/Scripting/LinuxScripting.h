// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Scripting/Clipboard.h"
#include "Desktop/Linux/Scripting/DesktopLook.h"
#include "Desktop/Linux/Scripting/MediaPlayers.h"
#include "Desktop/Linux/Scripting/Notifications.h"
#include "Desktop/Linux/Scripting/Sound.h"
#include "Desktop/Linux/Scripting/TrashFolders.h"
#include "Desktop/Scripting.h"

#include <memory>
#include <stop_token>

// Interprets AppleScript, which Linux doesn't have; docs/scripts.md describes what is understood. Scripts
// that are running when this object is destroyed end at their next step.
class LinuxScripting : public Scripting
{
public:
    // `clipboard` must outlive this object.
    explicit LinuxScripting(ClipboardText &clipboard);
    ~LinuxScripting() override;
    LinuxScripting(const LinuxScripting &) = delete;
    LinuxScripting &operator=(const LinuxScripting &) = delete;

    QCoro::Task<ScriptOutcome> run(QString source, ScriptHost &host) override;
    void interrupt() override;

private:
    struct Services
    {
        explicit Services(ClipboardText &clipboardText) : clipboard(clipboardText) {}

        Clipboard clipboard;
        ScriptBus bus;
        DesktopLook look{bus};
        Notifications notifications{bus};
        MediaPlayers players{bus};
        Sound sound;
        TrashFolders trash;
    };

    std::shared_ptr<Services> m_services; // shared with the running scripts
    std::stop_source m_end;
};
