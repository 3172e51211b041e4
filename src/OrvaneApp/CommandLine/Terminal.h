// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QIODevice>
#include <QObject>
#include <QString>
#include <QTimer>

// Capabilities of the output.
struct TerminalTraits
{
    bool interactive = false; // a terminal that can overwrite a line
    bool colours = false;
    int columns = 80;

    // Those of standard output; coloured unless NO_COLOR is set.
    static TerminalTraits ofStandardOutput();
};

// Prints lines and, on a terminal, a transient progress line below them. No control character from a model or
// window title reaches the terminal: lines show a visible mark instead, so the user sees all of what is
// executed. Thread: main. The devices are not owned.
class Terminal : public QObject
{
    Q_OBJECT

public:
    enum class Style { Plain, Dim, Good, Bad, Asking };

    Terminal(QIODevice &output, QIODevice &errors, const TerminalTraits &traits, QObject *parent = nullptr);
    ~Terminal() override;

    bool isInteractive() const { return m_traits.interactive; }

    // Prints exactly one line.
    void line(const QString &text, Style style = Style::Plain);

    // Prints each line of the text after `prefix`. Tabs are kept.
    void block(const QString &text, const QString &prefix);

    // Prints one line to the error output.
    void error(const QString &text);

    // Prints a question and leaves the cursor after it.
    void prompt(const QString &text);

    // Shows the progress line: a spinner, the text, and as much of the end of `detail` as fits, dimmed. Does
    // nothing on a non-interactive output. Stays until hidden; lines are printed above it.
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
