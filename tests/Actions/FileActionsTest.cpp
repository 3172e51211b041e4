// SPDX-License-Identifier: Apache-2.0
#include "ActionBench.h"
#include "Actions/Operations/FileSearch.h"
#include "Actions/Operations/Locations.h"
#include "Actions/Operations/Screenshot.h"
#include "Base/PlatformWords.h"
#include "Support/Awaited.h"

#include <QTest>

using namespace Qt::StringLiterals;

class FileActionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void locations_data();
    void locations();
    void pathsInsideFolders_data();
    void pathsInsideFolders();
    void lastComponents_data();
    void lastComponents();
    void anEmptyFolderHasNoMatchingFiles();
    void aMissingFolderCannotBeRead();
    void filesAreListedNewestFirstAndTheNewestIsRevealed();
    void filters_data();
    void filters();
    void entriesWithEqualDatesKeepTheOrderOfTheListing();
    void hiddenEntriesAreLeftOut();
    void aScreenshotLeavesAFile();
    void aScreenshotIntoAMissingFolderFails();
    void aScreenshotThatLeavesNoFileFails();
    void aCaptureThatCannotStartPassesItsErrorThrough();

private:
    // Creates a file in Downloads, last modified this many minutes ago.
    static void addFile(ActionBench &bench, const QString &name, int minutesOld)
    {
        bench.addFile(u"Downloads/"_s + name);
        QFile file(bench.path(u"Downloads/"_s + name));
        QVERIFY(file.open(QIODevice::ReadWrite));
        const QDateTime date = QDateTime(QDate(2024, 5, 1), QTime(12, 0)).addSecs(-60 * minutesOld);
        QVERIFY(file.setFileTime(date, QFileDevice::FileModificationTime));
    }

    static QString found(ActionBench &bench, const std::optional<QString> &extension,
                         const std::optional<QString> &query)
    {
        return bench.outcome(FileSearch::findFiles(u"Downloads"_s, extension, query, bench.services()));
    }
};

void FileActionsTest::locations_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("path");
    const auto row = [](const char *text, const char *path) {
        QTest::addRow("“%s”", text) << QString::fromUtf8(text) << QString::fromUtf8(path);
    };

    row("Desktop", "/home/kim/Desktop");
    row("desktop", "/home/kim/Desktop");
    row("  my desktop ", "/home/kim/Desktop");
    row("\tDESKTOP\t", "/home/kim/Desktop");
    row("~/Desktop", "/home/kim/Desktop");
    row("~/my desktop", "/home/kim/Desktop");
    row("downloads", "/home/kim/Downloads");
    row("my downloads folder", "/home/kim/Downloads");
    row("Downloads Folder", "/home/kim/Downloads");
    row("My Documents", "/home/kim/Documents");
    row("pictures", "/home/kim/Pictures");
    row("~", "/home/kim");
    row("~/", "/home/kim");
    row("home", "/home/kim");
    row("my home", "/home/kim");
    row("~/Projects/x", "/home/kim/Projects/x");
    row("~/Projects/", "/home/kim/Projects");
    row("~lee/x", "/home/kim/~lee/x");
    row("Downloads/old.zip", "/home/kim/Downloads/old.zip");
    row("downloads/old.zip", "/home/kim/downloads/old.zip");
    row("/tmp", "/tmp");
    row("/tmp/", "/tmp");
    row("/", "/");
    row("/Desktop", "/Desktop");
    row("economy report", "/home/kim/economy report");
    row("music", "/home/kim/music");
    row("\nDesktop", "/home/kim/\nDesktop");
    row("", "/home/kim");
}

void FileActionsTest::locations()
{
    QFETCH(QString, text);
    QTEST(Locations::resolveFolder(text, u"/home/kim"_s), "path");
    QCOMPARE(Locations::resolveFolder(text, u"/home/kim/"_s), Locations::resolveFolder(text, u"/home/kim"_s));
}

void FileActionsTest::pathsInsideFolders_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("path");

    QTest::newRow("a plain name") << u"/a"_s << u"b"_s << u"/a/b"_s;
    QTest::newRow("nested folders") << u"/a"_s << u"b/c"_s << u"/a/b/c"_s;
    QTest::newRow("slashes at the seam") << u"/a/"_s << u"/b/"_s << u"/a/b"_s;
    QTest::newRow("the root") << u"/"_s << u"b"_s << u"/b"_s;
    QTest::newRow("nothing") << u"/a"_s << QString() << u"/a"_s;
}

void FileActionsTest::pathsInsideFolders()
{
    QFETCH(QString, folder);
    QFETCH(QString, name);
    QTEST(Locations::pathInside(folder, name), "path");
}

void FileActionsTest::lastComponents_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("name");

    QTest::newRow("a file") << u"/a/b.txt"_s << u"b.txt"_s;
    QTest::newRow("the root") << u"/"_s << u"/"_s;
}

void FileActionsTest::lastComponents()
{
    QFETCH(QString, path);
    QTEST(Locations::lastComponent(path), "name");
}

void FileActionsTest::anEmptyFolderHasNoMatchingFiles()
{
    ActionBench bench;
    QVERIFY(QDir(bench.home.path()).mkdir(u"Downloads"_s));
    QCOMPARE(found(bench, std::nullopt, std::nullopt), u"No matching files in Downloads."_s);
    QCOMPARE(bench.journal(), QStringList());
}

void FileActionsTest::aMissingFolderCannotBeRead()
{
    ActionBench bench;
    QCOMPARE(found(bench, std::nullopt, std::nullopt), u"Error: Couldn't read Downloads."_s);
    QCOMPARE(bench.outcome(FileSearch::findFiles(u"my downloads folder"_s, std::nullopt, std::nullopt,
                                                 bench.services())),
             u"Error: Couldn't read my downloads folder."_s);
}

void FileActionsTest::filesAreListedNewestFirstAndTheNewestIsRevealed()
{
    ActionBench bench;
    for (int i = 1; i <= 7; ++i)
        addFile(bench, u"%1.pdf"_s.arg(i), i == 4 ? 0 : i);
    addFile(bench, u"newest.txt"_s, -5);
    QCOMPARE(
        found(bench, u".PDF"_s, std::nullopt),
        u"Found 7 file(s), newest first: 4.pdf, 1.pdf, 2.pdf, 3.pdf, 5.pdf. Revealed “4.pdf” in Finder."_s);
    QCOMPARE(bench.journal(), QStringList(u"reveal "_s + bench.path(u"Downloads/4.pdf"_s)));
}

void FileActionsTest::filters_data()
{
    QTest::addColumn<std::optional<QString>>("extension");
    QTest::addColumn<std::optional<QString>>("query");
    QTest::addColumn<QString>("names");
    const std::optional<QString> none;

    QTest::newRow("no filter keeps folders too")
        << none << none << u"invoice-march.pdf, Report.PDF, archive.tar.gz, Readme, pdf"_s;
    QTest::newRow("an extension, in any letter case")
        << std::optional(u"pdf"_s) << none << u"invoice-march.pdf, Report.PDF"_s;
    QTest::newRow("dots and blanks around the extension")
        << std::optional(u" .pdf. "_s) << none << u"invoice-march.pdf, Report.PDF"_s;
    QTest::newRow("the last extension counts") << std::optional(u"gz"_s) << none << u"archive.tar.gz"_s;
    QTest::newRow("the whole extension counts") << std::optional(u"pd"_s) << none << QString();
    QTest::newRow("an extension of dots only means none")
        << std::optional(u"."_s) << none << u"Readme, pdf"_s;
    QTest::newRow("a query, in any letter case")
        << none << std::optional(u"Invoice"_s) << u"invoice-march.pdf"_s;
    QTest::newRow("a query that the extension matches")
        << none << std::optional(u"PDF"_s) << u"invoice-march.pdf, Report.PDF, pdf"_s;
    QTest::newRow("both") << std::optional(u"pdf"_s) << std::optional(u"port"_s) << u"Report.PDF"_s;
}

void FileActionsTest::filters()
{
    QFETCH(std::optional<QString>, extension);
    QFETCH(std::optional<QString>, query);
    QFETCH(QString, names);
    ActionBench bench;
    addFile(bench, u"invoice-march.pdf"_s, 1);
    addFile(bench, u"Report.PDF"_s, 2);
    addFile(bench, u"archive.tar.gz"_s, 3);
    addFile(bench, u"Readme"_s, 4);
    addFile(bench, u"pdf/x"_s, 5);
    // Qt cannot set a folder's date; all other entries are made newer instead.
    const QStringList files{u"invoice-march.pdf"_s, u"Report.PDF"_s, u"archive.tar.gz"_s, u"Readme"_s};
    const QDateTime later = QDateTime::currentDateTime().addDays(1);
    for (qsizetype i = 0; i < files.size(); ++i) {
        QFile file(bench.path(u"Downloads/"_s + files.at(i)));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(later.addSecs(-60 * i), QFileDevice::FileModificationTime));
    }
    const QString line = found(bench, extension, query);
    if (names.isEmpty()) {
        QCOMPARE(line, u"No matching files in Downloads."_s);
        return;
    }
    const QStringList kept = names.split(u", "_s);
    QCOMPARE(line, u"Found %1 file(s), newest first: %2. Revealed “%3” in Finder."_s.arg(
                       QString::number(kept.size()), names, kept.first()));
}

void FileActionsTest::entriesWithEqualDatesKeepTheOrderOfTheListing()
{
    ActionBench bench;
    for (const QString &name : {u"d"_s, u"a"_s, u"c"_s, u"b"_s, u"e"_s})
        addFile(bench, name, 1);
    const auto listing = Awaited::result(bench.desktop.files.contentsOfDirectory(bench.path(u"Downloads"_s)));
    QStringList names;
    for (const FolderEntry &entry : *listing)
        names.append(entry.name);
    QCOMPARE(found(bench, std::nullopt, std::nullopt),
             u"Found 5 file(s), newest first: %1. Revealed “%2” in Finder."_s.arg(names.join(u", "_s),
                                                                                  names.first()));
}

void FileActionsTest::hiddenEntriesAreLeftOut()
{
    ActionBench bench;
    addFile(bench, u".hidden.pdf"_s, 1);
    QCOMPARE(found(bench, std::nullopt, std::nullopt), u"No matching files in Downloads."_s);
}

void FileActionsTest::aScreenshotLeavesAFile()
{
    ActionBench bench;
    const QString path = bench.path(u"a.png"_s);
    QCOMPARE(bench.outcome(screenshot(path, bench.services())), u"done"_s);
    QVERIFY(QFile::exists(path));
}

void FileActionsTest::aScreenshotIntoAMissingFolderFails()
{
    ActionBench bench;
    QCOMPARE(bench.outcome(screenshot(bench.path(u"none/a.png"_s), bench.services())),
             u"Error: "_s + PlatformWords::current().screenshotFailure);
}

void FileActionsTest::aScreenshotThatLeavesNoFileFails()
{
    ActionBench bench;
    bench.desktop.screenCapture.writesFile = false;
    QCOMPARE(bench.outcome(screenshot(bench.path(u"a.png"_s), bench.services())),
             u"Error: "_s + PlatformWords::current().screenshotFailure);
}

void FileActionsTest::aCaptureThatCannotStartPassesItsErrorThrough()
{
    ActionBench bench;
    bench.desktop.journal.failures.insert(RecordedOperation::Capture, u"No screen."_s);
    QCOMPARE(bench.outcome(screenshot(bench.path(u"a.png"_s), bench.services())), u"Error: No screen."_s);
}

QTEST_GUILESS_MAIN(FileActionsTest)
#include "FileActionsTest.moc"
