// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QIODevice>
#include <QObject>
#include <QString>
#include <QTimer>

// What the place that the output goes to can do.
struct TerminalTraits
{
    bool interactive = false; // a person watches, and a line can be overwritten
    bool colours = false;
    int columns = 80;

    // Of standard output: a terminal that understands escapes; colours unless NO_COLOR is set.
    static TerminalTraits ofStandardOutput();
};

// Shows lines, and on a terminal below them one line of progress that moves and goes away. Whatever a model
// or a window title says, no control character reaches the terminal: a line has a visible mark in its place,
// so that the user misses nothing of what is executed. Main thread. The devices are not owned.
class Terminal : public QObject
{
    Q_OBJECT

public:
    enum class Style { Plain, Dim, Good, Bad, Asking };

    Terminal(QIODevice &output, QIODevice &errors, const TerminalTraits &traits, QObject *parent = nullptr);
    ~Terminal() override;

    bool isInteractive() const { return m_traits.interactive; }

    // One line, whatever the text holds.
    void line(const QString &text, Style style = Style::Plain);

    // A text of several lines: each becomes a line of its own behind `prefix`. Tabs stay.
    void block(const QString &text, const QString &prefix);

    // One line on the error output.
    void error(const QString &text);

    // A question; the cursor stays behind it.
    void prompt(const QString &text);

    // The line of progress: a spinner, the text, and dimmed what fits of the end of `detail`. Nothing where
    // nobody watches. Stays, moving, until it is hidden; lines go above it.
    void showProgress(const QString &text, const QString &detail = QString());
    void hideProgress();

private:
    void writeLine(const QByteArray &line);
    void draw();
    void erase();
    QByteArray styled(const QString &text, Style style) const;

    QIODevice &m_output;
    QIODevice &m_errors;
    const TerminalTraits m_traits;
    QString m_progressText;
    QString m_progressDetail;
    bool m_isDrawn = false;
    int m_frame = 0;
    QTimer m_spin;
};
