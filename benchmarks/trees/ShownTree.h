// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Bench.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <optional>

// When a browser's page is opened.
enum class PageMoment {
    BeforeBulk, // and the browser is asked for nothing in bulk before the page is there
    AfterBulk   // an empty page was read in bulk before, as in a browser that the user has had open
};

// An application of one toolkit that shows a tree of at least so many elements: it is started by the
// constructor, which returns when the tree is there, and ended by the destructor. Needs a desktop session.
class ShownTree
{
public:
    ShownTree(const QString &toolkit, qsizetype elements, PageMoment moment);

    static QStringList toolkits();
    // What is missing on this machine to show that toolkit's tree; empty when nothing is.
    static QString missing(const QString &toolkit);
    // Whether that toolkit's tree can have so many elements.
    static bool canShow(const QString &toolkit, qsizetype elements);

    // The first so many elements, as the system reads them and one call after the other.
    QList<WalkedNode> readInBulk(qsizetype most);
    QList<WalkedNode> readNodeByNode(qsizetype most);

    // The time that libatspi takes for the first so many elements, in ms; none where it is not installed or
    // stops before.
    std::optional<double> readWithLibatspi(qsizetype most) const;

    // What the application itself answers when it is asked for all in one go; blocks.
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
