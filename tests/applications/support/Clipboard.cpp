// SPDX-License-Identifier: Apache-2.0
#include "applications/support/Clipboard.h"

#include "applications/support/Screen.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

using namespace Qt::StringLiterals;

QString Clipboard::copiedWith(const QStringList &keys)
{
    constexpr int limitMilliseconds = 3'000;
    const QString nothing = u"nothing copied yet"_s;
    QClipboard *clipboard = QGuiApplication::clipboard();
    clipboard->setText(nothing);
    for (const QString &key : keys)
        Screen::pressKey(key);
    const auto isCopied = [&] { return clipboard->text() != nothing; };
    return QTest::qWaitFor(isCopied, limitMilliseconds) ? clipboard->text() : QString();
}
