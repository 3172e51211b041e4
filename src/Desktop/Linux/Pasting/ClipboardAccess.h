// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Pasting/ClipboardOffer.h"

// The desktop's clipboard, as one way to it offers it. Thread: main.
class ClipboardAccess
{
public:
    virtual ~ClipboardAccess() = default;

    // Returns once this program knows what is in the clipboard, and the desktop has taken what was put there.
    // Throws PlatformError.
    virtual QCoro::Task<void> update() = 0;

    // Reads the clipboard in the formats that `wanted` chooses. Throws PlatformError.
    virtual QCoro::Task<ClipboardContent> read(ClipboardFormats::Choice wanted) = 0;

    // Puts the offer into the clipboard, or empties it if null. This object hands the content out as long as
    // it is there.
    virtual void put(std::shared_ptr<ClipboardOffer> offer) = 0;

    // Whether the desktop itself reads each text that is put into the clipboard, at once.
    virtual bool isReadByDesktop() const = 0;
};
