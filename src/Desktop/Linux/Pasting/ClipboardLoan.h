// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"
#include "Desktop/Linux/Pasting/ClipboardAccess.h"
#include "Desktop/Linux/Pasting/IdleApplication.h"
#include "Desktop/Linux/WindowSystem/WindowSystem.h"

// Lends texts to the clipboard, so that they can be pasted, and gives the user's content back afterwards, in
// all its formats. That is handed out by this program then, until something else is copied. `access` and
// `clock` must outlive this object. Thread: main.
class ClipboardLoan
{
public:
    ClipboardLoan(ClipboardAccess &access, Clock &clock);
    ~ClipboardLoan();
    ClipboardLoan(const ClipboardLoan &) = delete;
    ClipboardLoan &operator=(const ClipboardLoan &) = delete;

    // Puts the text into the clipboard. Throws PlatformError, with the clipboard unchanged, if the user's
    // content can't be kept.
    QCoro::Task<void> lend(QString text);

    // Call it right before pasting; then wait until an application has read the whole text. Keys sent
    // afterwards come after the text, since this also waits, for a second at most, until the receiver has
    // nothing to do. Throws PlatformError after five seconds.
    void expectReader();
    QCoro::Task<void> waitUntilRead(DesktopWindow receiver);

    // Puts the user's content back, unless something else has been copied meanwhile.
    void giveBack();

    // Waits, for a second at most, until the desktop has read what was given back.
    QCoro::Task<void> settle();

    // The user's content as long as this program hands it out; otherwise null.
    std::shared_ptr<const ClipboardOffer> returned() const;

private:
    QCoro::Task<void> keep();
    QCoro::Task<void> waitForManagers();
    QCoro::Task<bool> waitUntilRead(std::shared_ptr<ClipboardOffer> offer, std::chrono::milliseconds limit);

    ClipboardAccess &m_access;
    Clock &m_clock;
    ClipboardContent m_kept; // the user's, while a text is lent
    std::shared_ptr<ClipboardOffer> m_lent;
    std::shared_ptr<ClipboardOffer> m_returned; // the user's content, as long as it is in the clipboard
    IdleApplication m_receiver;
    std::shared_ptr<BoundedQueue> m_writer =
        std::make_shared<BoundedQueue>(QStringLiteral("desktop.paste"), QStringLiteral("The clipboard"));
};
