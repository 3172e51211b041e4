// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

// A pseudo-terminal with the test as its user.
class PseudoTerminal
{
public:
    PseudoTerminal() : m_person(posix_openpt(O_RDWR | O_NOCTTY))
    {
        grantpt(m_person);
        unlockpt(m_person);
        m_program = open(ptsname(m_person), O_RDWR | O_NOCTTY);
    }
    ~PseudoTerminal()
    {
        hangUp();
        close(m_program);
    }
    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    // The side used as a program's standard input.
    int descriptor() const { return m_program; }

    bool type(const QByteArray &text)
    {
        return write(m_person, text.data(), size_t(text.size())) == text.size();
    }

    void hangUp()
    {
        if (m_person >= 0)
            close(m_person);
        m_person = -1;
    }

private:
    int m_person;
    int m_program;
};
