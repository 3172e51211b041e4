// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Recording/RecordingJournal.h"

#include "Base/Text.h"
#include "Desktop/PlatformError.h"

#include <QCoroTimer>
#include <QTimer>

void RecordingJournal::note(const QString &line)
{
    lines.append(Text::cleaned(line));
}

QCoro::Task<void> RecordingJournal::turn()
{
    if (!answersLater)
        co_return;
    QTimer nextTurn;
    nextTurn.setSingleShot(true);
    nextTurn.start(0);
    co_await nextTurn;
}

QCoro::Task<void> RecordingJournal::begin(RecordedOperation operation)
{
    co_await turn();
    const auto failure = failures.constFind(operation);
    if (failure != failures.constEnd())
        throw PlatformError(*failure);
}
