// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Pasting/ClipboardLoan.h"

#include "Desktop/Linux/Pasting/DataPipes.h"

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// A clipboard manager reads what is new at once; it must not be taken for the application that pastes.
constexpr auto managersTurn = 20ms;

} // namespace

ClipboardLoan::ClipboardLoan(ClipboardAccess &access, Clock &clock)
    : m_access(access), m_clock(clock), m_receiver(clock)
{
}

ClipboardLoan::~ClipboardLoan()
{
    giveBack();
}

QCoro::Task<void> ClipboardLoan::lend(QString text)
{
    co_await m_access.update();
    if (!m_lent || m_lent->isReplaced)
        co_await keep();
    m_lent = ClipboardOffer::ofText(text, ClipboardOffer::Recording::Unwanted, m_writer);
    m_access.put(m_lent);
    co_await m_access.update();
    co_await waitForManagers();
}

// Remembers the user's content.
QCoro::Task<void> ClipboardLoan::keep()
{
    if (m_returned && !m_returned->isReplaced) {
        m_kept = m_returned->content();
        m_returned.reset();
        co_return;
    }
    m_returned.reset();
    m_kept = co_await m_access.read(&ClipboardFormats::all);
}

QCoro::Task<void> ClipboardLoan::waitForManagers()
{
    if (m_access.isReadByDesktop())
        co_await waitUntilRead(m_lent, DataPipes::slowestApplication);
    co_await m_clock.sleep(managersTurn);
}

void ClipboardLoan::expectReader()
{
    m_lent->expectReader();
}

QCoro::Task<void> ClipboardLoan::waitUntilRead(DesktopWindow receiver)
{
    const bool isRead = co_await waitUntilRead(m_lent, DataPipes::slowestApplication);
    if (!isRead)
        throw PlatformError(
            u"“%1” hasn't taken the text from the clipboard, so typing was stopped."_s.arg(receiver.title));
    // It may not yet have inserted the text.
    co_await m_receiver.wait(receiver.process);
}

// False on timeout.
QCoro::Task<bool> ClipboardLoan::waitUntilRead(std::shared_ptr<ClipboardOffer> offer,
                                               std::chrono::milliseconds limit)
{
    QElapsedTimer elapsed;
    elapsed.start();
    while (!offer->isRead() && !elapsed.hasExpired(limit.count()))
        co_await m_clock.sleep(5ms);
    co_return offer->isRead();
}

QCoro::Task<void> ClipboardLoan::settle()
{
    const std::shared_ptr<ClipboardOffer> offer = m_returned;
    if (offer && offer->hasText() && m_access.isReadByDesktop())
        co_await waitUntilRead(offer, 1s);
}

void ClipboardLoan::giveBack()
{
    if (!m_lent)
        return;
    if (!m_lent->isReplaced) {
        m_returned = m_kept.formats.isEmpty() ? nullptr : std::make_shared<ClipboardOffer>(m_kept, m_writer);
        m_access.put(m_returned);
    }
    m_lent.reset();
    m_kept = {};
}

std::shared_ptr<const ClipboardOffer> ClipboardLoan::returned() const
{
    return m_returned && !m_returned->isReplaced ? m_returned : nullptr;
}
