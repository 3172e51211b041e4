// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/TerminalDialogs.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// Behind a bar, so that the script's text cannot pass for the program's.
const QString bar = u"  │ "_s;

QString numbered(const QStringList &names)
{
    QStringList lines;
    for (qsizetype i = 0; i < names.size(); ++i)
        lines.append(u"%1 %2"_s.arg(i + 1).arg(names.at(i)));
    return lines.join(u'\n');
}

// The number as an index, or nothing if there is no such item.
std::optional<int> indexOf(const QString &number, qsizetype count)
{
    bool isNumber = false;
    const int index = number.toInt(&isNumber) - 1;
    return isNumber && index >= 0 && index < count ? std::optional(index) : std::nullopt;
}

} // namespace

TerminalDialogs::TerminalDialogs(Dialogs &dialogs, Terminal &terminal, AnswerReader &answers, QObject *parent)
    : QObject(parent), m_dialogs(dialogs), m_terminal(terminal), m_answers(answers)
{
    connect(&dialogs, &Dialogs::pendingChanged, this, &TerminalDialogs::takeChange);
    connect(&answers, &AnswerReader::typed, this, &TerminalDialogs::take);
    connect(&answers, &AnswerReader::closed, &dialogs, &Dialogs::withdraw);
}

void TerminalDialogs::takeChange()
{
    const std::optional<Dialog> &dialog = m_dialogs.pending();
    if (!dialog) {
        close();
        return;
    }
    show(*dialog);
    if (!m_answers.canAsk() || !m_terminal.isInteractive()) {
        m_terminal.line(u"  There is no terminal to ask at, so the dialog is cancelled."_s);
        m_dialogs.withdraw();
    } else if (dialog->hidesAnswer) {
        m_terminal.line(u"  Hidden text can't be typed at a terminal, so the dialog is cancelled."_s);
        m_dialogs.withdraw();
    } else {
        m_answer = {};
        ask(dialog->answer ? Part::Text : dialog->items ? Part::Choice : Part::Button);
    }
}

void TerminalDialogs::show(const Dialog &dialog)
{
    m_terminal.hideProgress();
    m_terminal.line(u"? A script asks"_s, Terminal::Style::Asking);
    for (const QString &text : {dialog.title, dialog.text, dialog.message}) {
        if (!text.isEmpty())
            m_terminal.block(text, bar);
    }
    if (dialog.items)
        m_terminal.block(numbered(*dialog.items), bar);
}

void TerminalDialogs::ask(Part part)
{
    m_part = part;
    if (part == Part::Button)
        m_terminal.block(numbered(m_dialogs.pending()->buttons), bar);
    // In this order: the reader discards input typed before it starts.
    m_answers.start(AnswerReader::Expected::AnyLine);
    m_terminal.prompt(prompt());
}

QString TerminalDialogs::prompt() const
{
    const Dialog &dialog = *m_dialogs.pending();
    if (m_part == Part::Text)
        return dialog.answer->isEmpty() ? u"Text:"_s : u"Text (Return for “%1”):"_s.arg(*dialog.answer);
    if (m_part == Part::Choice)
        return dialog.takesSeveral ? u"Numbers, or c to cancel:"_s : u"Number, or c to cancel:"_s;
    if (dialog.defaultButton == Dialog::noButton)
        return u"Number:"_s;
    return u"Number (Return for %1):"_s.arg(dialog.defaultButton + 1);
}

void TerminalDialogs::take(const QString &line)
{
    switch (m_part) {
    case Part::None:
        return;
    case Part::Text:
        m_answer.text = line.isEmpty() ? *m_dialogs.pending()->answer : line;
        return ask(Part::Button);
    case Part::Choice:
        return takeChoice(line.trimmed());
    case Part::Button:
        return takeButton(line.trimmed());
    }
}

// An unclear answer is asked for again.
void TerminalDialogs::takeChoice(const QString &line)
{
    const Dialog &dialog = *m_dialogs.pending();
    if (line == u"c")
        return end(dialog.cancelButton);
    QList<int> chosen = line.isEmpty() ? dialog.chosen : QList<int>();
    for (const QString &number : line.split(u' ', Qt::SkipEmptyParts)) {
        const std::optional<int> index = indexOf(number, dialog.items->size());
        if (!index)
            return ask(Part::Choice);
        if (!chosen.contains(*index))
            chosen.append(*index);
    }
    std::sort(chosen.begin(), chosen.end());
    const bool isTooMuch = !dialog.takesSeveral && chosen.size() > 1;
    const bool isTooLittle = !dialog.takesNone && chosen.isEmpty();
    if (isTooMuch || isTooLittle)
        return ask(Part::Choice);
    m_answer.chosen = chosen;
    end(dialog.defaultButton);
}

void TerminalDialogs::takeButton(const QString &line)
{
    const Dialog &dialog = *m_dialogs.pending();
    const bool isDefault = line.isEmpty() && dialog.defaultButton != Dialog::noButton;
    const std::optional<int> button =
        isDefault ? std::optional(dialog.defaultButton) : indexOf(line, dialog.buttons.size());
    if (button)
        end(*button);
    else
        ask(Part::Button);
}

void TerminalDialogs::end(int button)
{
    // The line with the answer is complete.
    m_part = Part::None;
    m_answer.button = button;
    m_dialogs.answer(m_answer);
}

void TerminalDialogs::close()
{
    if (std::exchange(m_part, Part::None) != Part::None) {
        m_answers.cancel();
        m_terminal.line(QString()); // ends the question's line
    }
    Q_EMIT asked();
}
