// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/AnswerReader.h"

#include <array>

#include <termios.h>
#include <unistd.h>

AnswerReader::AnswerReader(int descriptor, QObject *parent) : QObject(parent), m_descriptor(descriptor) {}

AnswerReader::~AnswerReader() = default;

bool AnswerReader::canAsk() const
{
    return isatty(m_descriptor) == 1;
}

void AnswerReader::start(Expected expected)
{
    m_expected = expected;
    tcflush(m_descriptor, TCIFLUSH);
    m_typed.clear();
    if (!m_notifier) {
        m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
        connect(m_notifier.get(), &QSocketNotifier::activated, this, &AnswerReader::readMore);
    }
    m_notifier->setEnabled(true);
}

void AnswerReader::cancel()
{
    if (m_notifier)
        m_notifier->setEnabled(false);
}

std::optional<bool> AnswerReader::meaning(const QByteArray &line)
{
    const QByteArray word = line.trimmed().toLower();
    if (word == "y" || word == "yes")
        return true;
    if (word == "n" || word == "no")
        return false;
    return std::nullopt;
}

void AnswerReader::readMore()
{
    std::array<char, 256> buffer{};
    const ssize_t count = read(m_descriptor, buffer.data(), buffer.size());
    if (count <= 0) {
        // End of input: nobody can answer.
        cancel();
        if (m_expected == Expected::AnyLine)
            Q_EMIT closed();
        else
            Q_EMIT answered(false);
        return;
    }
    m_typed.append(buffer.data(), count);
    const qsizetype end = m_typed.indexOf('\n');
    if (end >= 0)
        take(m_typed.first(end));
}

void AnswerReader::take(const QByteArray &line)
{
    cancel();
    const std::optional<bool> answer = meaning(line);
    if (m_expected == Expected::AnyLine)
        Q_EMIT typed(QString::fromLocal8Bit(line));
    else if (answer)
        Q_EMIT answered(*answer);
    else
        Q_EMIT notUnderstood();
}
