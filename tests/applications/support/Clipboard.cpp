// SPDX-License-Identifier: Apache-2.0
#include "applications/support/Clipboard.h"

#include "applications/support/GnomeClipboard.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/Screen.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// On Wayland, an application without the focus has no access to the clipboard. On GNOME a session of the
// compositor's has, elsewhere wl-clipboard.
void setText(const QString &text)
{
    switch (Screen::session()) {
    case Screen::Session::X11:
        return QGuiApplication::clipboard()->setText(text);
    case Screen::Session::Gnome:
        return GnomeClipboard::copy({{GnomeClipboard::plainText, text.toUtf8()}});
    case Screen::Session::Sway:
    case Screen::Session::Plasma:
    case Screen::Session::Labwc:
        QProcess::execute(u"wl-copy"_s, {text});
    }
}

QString text()
{
    if (Screen::session() == Screen::Session::X11)
        return QGuiApplication::clipboard()->text();
    if (Screen::session() == Screen::Session::Gnome)
        return QString::fromUtf8(GnomeClipboard::content());
    QProcess tool;
    tool.start(u"wl-paste"_s, {u"--no-newline"_s});
    tool.waitForFinished(PrivateDesktop::patience);
    return QString::fromUtf8(tool.readAllStandardOutput());
}

} // namespace

QString Clipboard::copiedWith(const QStringList &keys)
{
    constexpr int limitMilliseconds = 3'000;
    const QString nothing = u"nothing copied yet"_s;
    setText(nothing);
    for (const QString &key : keys)
        Screen::pressKey(key);
    QString copied;
    const auto isCopied = [&] { return (copied = text()) != nothing; };
    return QTest::qWaitFor(isCopied, limitMilliseconds) ? copied : QString();
}
