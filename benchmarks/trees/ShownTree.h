// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Bench.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <optional>

// When a browser opens the page.
enum class PageMoment {
    BeforeBulk, // before the first bulk request
    AfterBulk   // after an empty page was read in bulk, as in a browser already in use
};

// An application of one toolkit that shows a tree of at least `elements` elements. The constructor returns
// when the tree is complete; the destructor ends the application. Needs a desktop session.
class ShownTree
{
public:
    ShownTree(const QString &toolkit, qsizetype elements, PageMoment moment);

    static QStringList toolkits();
    // The Debian package missing for that toolkit; empty if installed.
    static QString missing(const QString &toolkit);
    // Whether that toolkit's tree can have this many elements.
    static bool canShow(const QString &toolkit, qsizetype elements);

    // Read the first `most` elements as the system does, and with sequential calls.
    QList<WalkedNode> readInBulk(qsizetype most);
    QList<WalkedNode> readNodeByNode(qsizetype most);

    // Milliseconds libatspi takes for the first `most` elements; nothing if it is not installed or stops
    // early.
    std::optional<double> readWithLibatspi(qsizetype most) const;

    // The application's bulk reply. Blocks.
    QDBusMessage askForAll();

    qint64 process() const { return m_program->processId(); }

private:
    QStringList arguments(const QString &toolkit, qsizetype count) const;
    QString file(const QString &name, const QString &contents) const;
    void waitUntilRead(qsizetype elements);

    AtspiBench m_bench;
    NodeByNode m_plain;
    QTemporaryDir m_folder;
    AtspiBench::Program m_program{nullptr, nullptr};
};
