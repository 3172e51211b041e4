// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Dialogs.h"

#include "Desktop/PlatformError.h"

#include <QCoroFuture>
#include <QMetaMethod>

#include <utility>

using namespace Qt::StringLiterals;

Dialogs::Dialogs()
{
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, &Dialogs::giveUp);
}

Dialogs::~Dialogs()
{
    withdraw();
}

QCoro::Task<std::optional<DialogAnswer>> Dialogs::ask(Dialog dialog)
{
    if (!isSignalConnected(QMetaMethod::fromSignal(&Dialogs::pendingChanged)))
        throw PlatformError(u"There is nobody to ask."_s);
    withdraw();
    m_promise.emplace();
    m_promise->start();
    const QFuture<std::optional<DialogAnswer>> answer = m_promise->future();
    m_pending = dialog;
    if (dialog.givesUpAfter)
        m_patience.start(*dialog.givesUpAfter);
    Q_EMIT pendingChanged();
    co_return co_await answer;
}

void Dialogs::settle(const std::optional<DialogAnswer> &answer)
{
    if (!m_pending)
        return;
    // A slot may already ask the next question.
    std::optional promise = std::exchange(m_promise, std::nullopt);
    m_pending.reset();
    m_patience.stop();
    Q_EMIT pendingChanged();
    promise->addResult(answer);
    promise->finish();
}

void Dialogs::giveUp()
{
    DialogAnswer answer;
    answer.text = m_pending->answer.value_or(QString());
    settle(answer);
}
