// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "OrvaneApp/CommandLine/Terminal.h"

#include <QBuffer>
#include <QString>

// A terminal that writes into memory.
class TerminalBench
{
public:
    // A file or pipe, a terminal without colours, and one with colours.
    static constexpr TerminalTraits plain{};
    static constexpr TerminalTraits colourless{.interactive = true, .colours = false, .columns = 60};
    static constexpr TerminalTraits colourful{.interactive = true, .colours = true, .columns = 60};

    explicit TerminalBench(const TerminalTraits &traits = plain) : terminal(outputDevice, errorDevice, traits)
    {
        outputDevice.open(QIODevice::WriteOnly);
        errorDevice.open(QIODevice::WriteOnly);
    }

    // All output, with control characters made readable: "␛" for escape, "␍" for carriage return.
    QString output() const { return readable(outputDevice.data()); }
    QString errors() const { return readable(errorDevice.data()); }

    // The screen of an interactive terminal, without erased progress lines.
    QString screen() const
    {
        QString result;
        for (const QString &line : output().split(u'\n'))
            result += line.mid(line.lastIndexOf(eraseLine) < 0 ? 0 : line.lastIndexOf(eraseLine) + 4) + u'\n';
        return result.chopped(1);
    }

private:
    static inline const QString eraseLine = QStringLiteral("␍␛[K");

    static QString readable(const QByteArray &written)
    {
        return QString::fromUtf8(written).replace(u'\x1b', u'␛').replace(u'\r', u'␍');
    }

    QBuffer outputDevice;
    QBuffer errorDevice;

public:
    Terminal terminal;
};
