// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/Terminal.h"

#include "Base/Text.h"

#include <algorithm>

#include <sys/ioctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString spinnerFrames = u"⠋⠙⠹⠸⠼⠴⠦⠧⠇⠏"_s;
constexpr auto spinnerPace = 100ms;

constexpr auto eraseLine = "\r\x1b[K";
// Without wrapping, the terminal cuts off what is too wide for the line.
constexpr auto wrapOff = "\x1b[?7l";
constexpr auto wrapOn = "\x1b[?7h";

QByteArray codeOf(Terminal::Style style)
{
    switch (style) {
    case Terminal::Style::Plain:
        return {};
    case Terminal::Style::Dim:
        return "\x1b[2m";
    case Terminal::Style::Good:
        return "\x1b[32m";
    case Terminal::Style::Bad:
        return "\x1b[31m";
    case Terminal::Style::Asking:
        return "\x1b[33m";
    }
    Q_UNREACHABLE();
}

// The last `count` characters, with an ellipsis if text was omitted.
QString lastCharacters(const QString &text, qsizetype count)
{
    if (count <= 1)
        return {};
    const QStringList characters = Text::chunked(text, 1);
    if (characters.size() <= count)
        return text;
    return u'…' + characters.last(count - 1).join(QString());
}

} // namespace

TerminalTraits TerminalTraits::ofStandardOutput()
{
    TerminalTraits traits;
    const bool understandsEscapes = qEnvironmentVariable("TERM", u"dumb"_s) != "dumb"_L1;
    traits.interactive = isatty(STDOUT_FILENO) == 1 && understandsEscapes;
    traits.colours = traits.interactive && qEnvironmentVariableIsEmpty("NO_COLOR");
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0)
        traits.columns = size.ws_col;
    return traits;
}

Terminal::Terminal(QIODevice &output, QIODevice &errors, const TerminalTraits &traits, QObject *parent)
    : QObject(parent), m_output(output), m_errors(errors), m_traits(traits)
{
    m_spin.setInterval(spinnerPace);
    connect(&m_spin, &QTimer::timeout, this, [this] {
        ++m_frame;
        draw();
    });
}

Terminal::~Terminal()
{
    hideProgress();
}

void Terminal::line(const QString &text, Style style)
{
    writeLine(styled(Text::withVisibleMarks(text), style));
}

void Terminal::block(const QString &text, const QString &prefix)
{
    const QString shown = Text::withVisibleMarks(text, Text::Layout::Lines);
    for (const QString &part : shown.split(u'\n'))
        writeLine((prefix + part).toUtf8());
}

void Terminal::error(const QString &text)
{
    erase();
    m_errors.write("orvane: " + Text::cleaned(text).toUtf8() + '\n');
    if (m_spin.isActive())
        draw();
}

void Terminal::prompt(const QString &text)
{
    hideProgress();
    m_output.write(styled(Text::withVisibleMarks(text), Style::Asking) + ' ');
}

void Terminal::showProgress(const QString &text, const QString &detail)
{
    if (!m_traits.interactive)
        return;
    m_progressText = Text::withVisibleMarks(text);
    m_progressDetail = Text::cleaned(detail).trimmed();
    if (!m_spin.isActive())
        m_spin.start();
    draw();
}

void Terminal::hideProgress()
{
    m_spin.stop();
    erase();
}

void Terminal::writeLine(const QByteArray &line)
{
    erase();
    m_output.write(line + '\n');
    if (m_spin.isActive())
        draw();
}

void Terminal::draw()
{
    const QString spinner = spinnerFrames.mid(m_frame % spinnerFrames.size(), 1) + u' ';
    const qsizetype room = m_traits.columns - m_progressText.size() - spinner.size() - 3;
    const QString detail = lastCharacters(m_progressDetail, room);
    // One write, so that an interrupted program leaves the terminal in its normal state.
    QByteArray frame = eraseLine + QByteArray(wrapOff) + (spinner + m_progressText).toUtf8();
    if (!detail.isEmpty())
        frame += "  " + styled(detail, Style::Dim);
    m_output.write(frame + wrapOn);
    m_isDrawn = true;
}

void Terminal::erase()
{
    if (m_isDrawn)
        m_output.write(eraseLine);
    m_isDrawn = false;
}

QByteArray Terminal::styled(const QString &text, Style style) const
{
    if (!m_traits.colours || style == Style::Plain)
        return text.toUtf8();
    return codeOf(style) + text.toUtf8() + "\x1b[0m";
}
