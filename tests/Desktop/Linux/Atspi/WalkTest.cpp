// SPDX-License-Identifier: Apache-2.0
// The traversals used by actions, with caches and pipelined calls, yield the same elements in the same order
// as the reference implementation, for every toolkit, on the same live tree.
#include "Actions/Operations/AccessibilityWalk.h"
#include "Desktop/Linux/Atspi/Bench.h"
#include "Support/Awaited.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The limits of clicking and of reading the interface, one that ends within a level, and a depth limit.
const QList<WalkLimits> allLimits{{3000, 11}, {1500, 9}, {37, 11}, {3000, 4}};

const QByteArray quickWindow = R"(import QtQuick
import QtQuick.Controls
ApplicationWindow {
    visible: true
    title: "Sample"
    menuBar: MenuBar { Menu { title: "File"; MenuItem { text: "Open" } } }
    Column {
        Button { text: "Save" }
        CheckBox { text: "Remember" }
        TextField { text: "pears"; Accessible.name: "Basket" }
        ComboBox { model: ["One", "Two"] }
        Repeater { model: 60; Label { required property int index; text: "Line " + index } }
    }
})";

// Its last element is a button, to wait for.
QByteArray webPage()
{
    QByteArray page("<title>Shop</title><h1>Fruit</h1><p>Fresh every <b>morning</b>.</p><input value=pears>"
                    "<label><input type=checkbox>Gift wrap</label><input type=password value=secret>");
    for (int i = 0; i < 300; ++i) {
        const QByteArray number = QByteArray::number(i);
        page += "<p>Line " + number + " with <a href='#" + number + "'>Link " + number + "</a>.</p>";
    }
    return page + "<button>Buy</button>";
}

QCoro::Task<QList<WalkedNode>> walked(AtspiBench::Tree tree, WalkLimits limits)
{
    QList<WalkedNode> nodes;
    const WalkVisitor visit = [&nodes](AccessibilityElement, const AccessibilityAttributes &attributes) {
        nodes.append({attributes.role, AtspiBench::label(attributes), attributes.children.size()});
        return WalkStep::Continue;
    };
    co_await walkBreadthFirst(tree, limits, visit);
    co_return nodes;
}

// Describes the first difference; empty if there is none.
QString difference(const QList<WalkedNode> &seen, const QList<WalkedNode> &expected)
{
    const auto text = [](const QList<WalkedNode> &nodes, qsizetype place) {
        const WalkedNode node = nodes.value(place);
        return u"%1 “%2” with %3 children"_s.arg(node.role, node.label, QString::number(node.children));
    };
    for (qsizetype i = 0; i < std::max(seen.size(), expected.size()); ++i) {
        if (i >= seen.size() || i >= expected.size() || seen.at(i) != expected.at(i))
            return u"entry %1: %2 instead of %3"_s.arg(QString::number(i), text(seen, i), text(expected, i));
    }
    return {};
}

} // namespace

class AtspiWalkTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aWalkMatchesTheReference_data();
    void aWalkMatchesTheReference();
    void aPageOpenedLaterIsIncluded_data();
    void aPageOpenedLaterIsIncluded();

private:
    QString write(const QString &name, const QByteArray &contents) const;
    AtspiBench::Program open(const QString &program, const QString &argument) const;
    void compareWalks(const QProcess &process);

    AtspiBench m_bench;
    QTemporaryDir m_folder;
};

void AtspiWalkTest::initTestCase()
{
    QVERIFY(m_folder.isValid());
    QVERIFY(QDir(m_folder.path()).mkdir(u"files"_s));
    for (int i = 0; i < 30; ++i)
        write(u"files/%1.txt"_s.arg(i), QByteArray::number(i));
    write(u"Window.qml"_s, quickWindow);
    write(u"page.html"_s, webPage());
    write(u"empty.html"_s, "<title>Empty</title><button>First</button>");
}

QString AtspiWalkTest::write(const QString &name, const QByteArray &contents) const
{
    QFile file(m_folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) < 0)
        qFatal("A file cannot be written.");
    return file.fileName();
}

AtspiBench::Program AtspiWalkTest::open(const QString &program, const QString &argument) const
{
    QStringList arguments;
    if (program == u"chromium"_s)
        arguments = {u"--no-sandbox"_s, u"--no-first-run"_s, u"--disable-gpu"_s,
                     u"--force-renderer-accessibility"_s};
    if (argument.endsWith(u".html"_s))
        arguments.append(QUrl::fromLocalFile(m_folder.filePath(argument)).toString());
    else if (!argument.isEmpty())
        arguments.append(m_folder.filePath(argument));
    return AtspiBench::start(program, arguments);
}

void AtspiWalkTest::compareWalks(const QProcess &process)
{
    NodeByNode plain;
    for (const WalkLimits limits : allLimits) {
        QString different;
        qsizetype count = 0;
        // Retry: an application that is still building its window may change in between.
        const auto same = [&] {
            const AtspiBench::Tree tree = m_bench.tree(process);
            const QList<WalkedNode> seen = tree ? Awaited::result(walked(tree, limits)) : QList<WalkedNode>();
            different = difference(seen, plain.walk(process.processId(), limits.elements, limits.depth));
            count = seen.size();
            return different.isEmpty();
        };
        QVERIFY2(QTest::qWaitFor(same, AtspiBench::patience), qPrintable(different));
        QVERIFY2(count >= std::min<qsizetype>(limits.elements, limits.depth < 9 ? 5 : 50),
                 qPrintable(QString::number(count)));
    }
}

void AtspiWalkTest::aWalkMatchesTheReference_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QString>("button"); // present once the window is complete
    QTest::newRow("GTK 3 editor") << u"mousepad"_s << QString() << u"Undo"_s;
    QTest::newRow("GTK 3 file manager") << u"thunar"_s << u"files"_s << u"Reload"_s;
    QTest::newRow("GTK 4 calculator") << u"gnome-calculator"_s << QString() << u"7"_s;
    QTest::newRow("GTK 4 editor") << u"gnome-text-editor"_s << QString() << u"Retry"_s;
    QTest::newRow("Qt 5") << u"featherpad"_s << QString() << u"Undo"_s;
    QTest::newRow("Qt 6 Quick") << QStringLiteral(QUICK_SAMPLE) << u"Window.qml"_s << u"Save"_s;
    QTest::newRow("Chromium") << u"chromium"_s << u"page.html"_s << u"Buy"_s;
    QTest::newRow("Firefox") << u"firefox-esr"_s << u"page.html"_s << u"Buy"_s;
}

void AtspiWalkTest::aWalkMatchesTheReference()
{
    QFETCH(QString, program);
    QFETCH(QString, argument);
    QFETCH(QString, button);
    if (program == u"gnome-text-editor"_s && QStandardPaths::findExecutable(program).isEmpty())
        QSKIP("It is not installed; the calculator stands for its toolkit.");
    const auto process = open(program, argument);
    QVERIFY2(m_bench.waitForLabel(*process, u"AXButton"_s, button),
             qPrintable(m_bench.labels(*process, u"AXButton"_s).join(u" | ")));
    compareWalks(*process);
}

void AtspiWalkTest::aPageOpenedLaterIsIncluded_data()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("Chromium") << u"chromium"_s;
    QTest::newRow("Firefox") << u"firefox-esr"_s;
}

// Browsers may omit elements from GetItems that were created after its first call.
void AtspiWalkTest::aPageOpenedLaterIsIncluded()
{
    QFETCH(QString, program);
    const auto process = open(program, u"empty.html"_s);
    QVERIFY(m_bench.waitForLabel(*process, u"AXButton"_s, u"First"_s));
    const auto messenger = open(program, u"page.html"_s);
    QVERIFY(m_bench.waitForLabel(*process, u"AXButton"_s, u"Buy"_s));
    compareWalks(*process);
}

QTEST_GUILESS_MAIN(AtspiWalkTest)
#include "WalkTest.moc"
