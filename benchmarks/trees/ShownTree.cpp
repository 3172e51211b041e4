// SPDX-License-Identifier: Apache-2.0
#include "trees/ShownTree.h"
#include "Support/Awaited.h"

#include <QFile>
#include <QStandardPaths>
#include <QTest>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 4 * AtspiBench::patience; // ms; reads thousands of elements repeatedly

constexpr int buttonsInARow = 40;

struct Recipe
{
    QString toolkit;
    QString program;
    QString package;
    qsizetype frame; // elements of the window without generated content
    qsizetype each;  // minimum elements per generated item; 0 if none can be generated
};

const QList<Recipe> &recipes()
{
    static const QList<Recipe> all{
        {u"gtk3"_s, u"gtk-builder-tool"_s, u"libgtk-3-bin"_s, 6, 1},
        {u"chromium"_s, u"chromium"_s, u"chromium"_s, 80, 3},
        {u"firefox"_s, u"firefox-esr"_s, u"firefox-esr"_s, 70, 1},
        {u"gtk4"_s, u"gtk4-builder-tool"_s, u"libgtk-4-bin"_s, 5, 2},
        {u"qt5"_s, u"featherpad"_s, u"featherpad"_s, 100, 0},
        {u"qt6"_s, QStringLiteral(QUICK_SAMPLE), u"the build itself"_s, 2, 1},
    };
    return all;
}

const Recipe &recipe(const QString &toolkit)
{
    const auto found = std::find_if(recipes().cbegin(), recipes().cend(),
                                    [&](const Recipe &each) { return each.toolkit == toolkit; });
    if (found == recipes().cend())
        qFatal("There is no such toolkit: %s", qUtf8Printable(toolkit));
    return *found;
}

// Repeats `pattern`, replacing %1 by the index.
QString repeated(qsizetype count, const QString &pattern)
{
    QString text;
    for (qsizetype i = 0; i < count; ++i)
        text += pattern.arg(i);
    return text;
}

QString object(const QString &name, const QString &contents)
{
    return u"<object class='%1'><property name='visible'>1</property>%2</object>"_s.arg(name, contents);
}

QString child(const QString &contents)
{
    return u"<child>"_s + contents + u"</child>"_s;
}

// A window full of rows of buttons, for gtk-builder-tool and gtk4-builder-tool.
QString gtkWindow(qsizetype count)
{
    const QString button = child(object(u"GtkButton"_s, u"<property name='label'>Button</property>"_s));
    const QString row = child(object(u"GtkBox"_s, QString(button).repeated(buttonsInARow)));
    const QString rows = object(u"GtkBox"_s, u"<property name='orientation'>vertical</property>"_s +
                                                 row.repeated(count / buttonsInARow + 1));
    return u"<interface>"_s + object(u"GtkWindow"_s, child(object(u"GtkScrolledWindow"_s, child(rows)))) +
           u"</interface>"_s;
}

QString quickWindow(qsizetype count)
{
    return uR"(import QtQuick
Window {
    visible: true
    width: 400
    height: 400
    Repeater {
        model: %1
        Text {
            required property int index
            text: "Text " + index
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
})"_s.arg(count);
}

QString webPage(qsizetype count)
{
    return u"<title>Links</title>"_s + repeated(count, u"<a href='#%1'>Link %1</a> "_s);
}

} // namespace

QStringList ShownTree::toolkits()
{
    QStringList names;
    for (const Recipe &each : recipes())
        names.append(each.toolkit);
    return names;
}

QString ShownTree::missing(const QString &toolkit)
{
    const Recipe &wanted = recipe(toolkit);
    return QStandardPaths::findExecutable(wanted.program).isEmpty() ? wanted.package : QString();
}

bool ShownTree::canShow(const QString &toolkit, qsizetype elements)
{
    const Recipe &wanted = recipe(toolkit);
    return wanted.each > 0 || elements <= wanted.frame;
}

ShownTree::ShownTree(const QString &toolkit, qsizetype elements, PageMoment moment)
{
    const Recipe &wanted = recipe(toolkit);
    const qsizetype room = std::max<qsizetype>(elements - wanted.frame, 0);
    const qsizetype count = wanted.each == 0 ? 0 : (room + wanted.each - 1) / wanted.each;
    const bool isLate = moment == PageMoment::AfterBulk;
    m_program = AtspiBench::start(wanted.program, arguments(toolkit, isLate ? 0 : count));
    if (isLate) {
        waitUntilRead(1);
        const auto messenger = AtspiBench::start(wanted.program, arguments(toolkit, count));
        waitUntilRead(elements);
    }
    // Firefox's bulk reply stays as it was at the first request, so request it only when the page and the
    // window are complete.
    qsizetype shown = 0;
    const auto isBuilt = [&] {
        shown = readNodeByNode(elements).size();
        return shown == elements;
    };
    if (!QTest::qWaitFor(isBuilt, patience))
        qFatal("%s shows %lld elements only.", qPrintable(wanted.program), static_cast<long long>(shown));
    waitUntilRead(elements);
}

void ShownTree::waitUntilRead(qsizetype elements)
{
    const auto isRead = [&] {
        const QList<WalkedNode> read = readNodeByNode(elements);
        return read.size() == elements && read == readInBulk(elements);
    };
    if (!QTest::qWaitFor(isRead, patience))
        qFatal("The two ways to read the tree never agree.");
}

QStringList ShownTree::arguments(const QString &toolkit, qsizetype count) const
{
    if (toolkit.startsWith(u"gtk"_s))
        return {u"preview"_s, file(u"window.ui"_s, gtkWindow(count))};
    if (toolkit == u"qt5"_s)
        return {};
    if (toolkit == u"qt6"_s)
        return {file(u"Window.qml"_s, quickWindow(count))};
    const QString page = QUrl::fromLocalFile(file(u"page%1.html"_s.arg(count), webPage(count))).toString();
    if (toolkit == u"firefox"_s)
        return {page};
    return {u"--no-sandbox"_s, u"--no-first-run"_s, u"--disable-gpu"_s, u"--force-renderer-accessibility"_s,
            page};
}

QString ShownTree::file(const QString &name, const QString &contents) const
{
    QFile file(m_folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(contents.toUtf8()) < 0)
        qFatal("A file cannot be written.");
    return file.fileName();
}

QList<WalkedNode> ShownTree::readInBulk(qsizetype most)
{
    const AtspiBench::Tree tree = m_bench.tree(*m_program);
    return tree ? AtspiBench::nodes(Awaited::result(AtspiBench::walk(tree, most))) : QList<WalkedNode>();
}

QList<WalkedNode> ShownTree::readNodeByNode(qsizetype most)
{
    return m_plain.walk(process(), most);
}

std::optional<double> ShownTree::readWithLibatspi(qsizetype most) const
{
    QProcess walk;
    walk.start(QStringLiteral(LIBATSPI_WALK), {QString::number(process()), QString::number(most)});
    if (!walk.waitForFinished(patience) || walk.exitCode() != 0)
        return std::nullopt;
    const QList<QByteArray> words = walk.readAllStandardOutput().split(' ');
    return words.constFirst().toLongLong() == most ? std::optional(words.constLast().toDouble())
                                                   : std::nullopt;
}

QDBusMessage ShownTree::askForAll()
{
    return m_plain.ask(Atspi::getItems(m_plain.rootOf(process()).service));
}
