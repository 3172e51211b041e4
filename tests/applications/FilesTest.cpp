// SPDX-License-Identifier: Apache-2.0
// Files and folders on the real desktop, judged by the disk and the file manager's windows.
#include "applications/support/DesktopTest.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace {

bool isUniform(const QImage &picture)
{
    for (int x = 0; x < picture.width(); x += 8) {
        for (int y = 0; y < picture.height(); y += 8) {
            if (picture.pixel(x, y) != picture.pixel(0, 0))
                return false;
        }
    }
    return true;
}

} // namespace

class FilesTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void createsAFolderAndShowsIt();
    void findsFoldersWithNamesInTheUsersLanguage();
    void savesAPictureOfTheScreen();
    void failsToSaveAPictureWhereThereIsNoFolder();
    void findsTheNewestFileAndShowsIt();
    void opensAFileWithItsApplication();
    void opensAFolderInTheFileManager();
    void saysThatNothingExists();
    void movesAFileToTheTrash();
    void failsToTrashWhatIsNotThere();
};

void FilesTest::createsAFolderAndShowsIt()
{
    const Outcome outcome = perform("create_folder", {{"name", u"Projects"_s}, {"in", u"Desktop"_s}});
    const QString folder = PrivateDesktop::home(u"Desktop/Projects"_s);
    QVERIFY2(QDir(folder).exists(), qPrintable(outcome.line));
    QCOMPARE(outcome.line, u"Created folder at %1."_s.arg(folder));
    VERIFY_EFFECT(Screen::windowsOf(u"Thunar"_s).value(0).title.startsWith("Desktop"_L1), outcome);
}

void FilesTest::findsFoldersWithNamesInTheUsersLanguage()
{
    const QString settings = PrivateDesktop::home(u".config/user-dirs.dirs"_s);
    const QByteArray before = PrivateDesktop::read(settings);
    QDir home(PrivateDesktop::home(QString()));
    QVERIFY(home.rename(u"Desktop"_s, u"Schreibtisch"_s) && home.rename(u"Music"_s, u"Musik"_s));
    const auto restore = qScopeGuard([&] {
        PrivateDesktop::write(settings, before);
        home.rename(u"Schreibtisch"_s, u"Desktop"_s);
        home.rename(u"Musik"_s, u"Music"_s);
    });
    PrivateDesktop::write(settings,
                          "XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\nXDG_MUSIC_DIR=\"$HOME/Musik\"\n");

    const Outcome created = perform("create_folder", {{"name", u"Projekte"_s}, {"in", u"my desktop"_s}});
    const QString folder = PrivateDesktop::home(u"Schreibtisch/Projekte"_s);
    QVERIFY2(QDir(folder).exists(), qPrintable(created.line));
    QCOMPARE(created.line, u"Created folder at %1."_s.arg(folder));
    PrivateDesktop::write(PrivateDesktop::home(u"Musik/lied.ogg"_s), "la");
    const Outcome found = perform("find_files", {{"folder", u"Music"_s}});
    QVERIFY2(found.line.startsWith(u"Found 1 file(s), newest first: lied.ogg."_s), qPrintable(found.line));
    const Outcome trashed = perform("trash", {{"path", u"Music/lied.ogg"_s}});
    QVERIFY2(!QFile::exists(PrivateDesktop::home(u"Musik/lied.ogg"_s)), qPrintable(trashed.line));
    QVERIFY(!QDir(PrivateDesktop::home(u"Desktop"_s)).exists());
}

void FilesTest::savesAPictureOfTheScreen()
{
    if (!PrivateDesktop::takesPictures())
        QSKIP("No pictures can be taken here.");
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    // A new window may have the focus before it is drawn.
    QTRY_VERIFY_WITH_TIMEOUT(!isUniform(PrivateDesktop::picture()), PrivateDesktop::patience);
    const Outcome outcome = perform("screenshot", {{"save_to", u"Pictures"_s}});
    const QDir pictures(PrivateDesktop::home(u"Pictures"_s));
    const QStringList names = pictures.entryList({u"Screenshot *.png"_s});
    QVERIFY2(names.size() == 1, qPrintable(outcome.line));
    const QImage picture(pictures.filePath(names.first()), "PNG");
    QCOMPARE(picture.size(), QSize(1280, 800));
    QVERIFY(!isUniform(picture));
}

void FilesTest::failsToSaveAPictureWhereThereIsNoFolder()
{
    if (!PrivateDesktop::takesPictures())
        QSKIP("No pictures can be taken here.");
    const Outcome outcome = perform("screenshot", {{"save_to", u"~/no/such/folder"_s}});
    QVERIFY(outcome.hasFailed);
    QCOMPARE(outcome.line, u"The screenshot failed. The folder may be missing or write-protected."_s);
}

void FilesTest::findsTheNewestFileAndShowsIt()
{
    const QDateTime now = QDateTime::currentDateTime();
    const QList<std::pair<QString, int>> minutesOld{
        {u"old.pdf"_s, 300}, {u"latest.PDF"_s, 2}, {u"newer.txt"_s, 1}};
    for (const auto &[name, minutes] : minutesOld) {
        const QString path = PrivateDesktop::home(u"Downloads/"_s + name);
        PrivateDesktop::write(path, "%PDF-1.4");
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(now.addSecs(-60 * minutes), QFileDevice::FileModificationTime));
    }
    const Outcome outcome = perform("find_files", {{"folder", u"my downloads"_s}, {"extension", u"pdf"_s}});
    QCOMPARE(outcome.line,
             u"Found 2 file(s), newest first: latest.PDF, old.pdf. Revealed “latest.PDF” in Finder."_s);
    VERIFY_EFFECT(Screen::windowsOf(u"Thunar"_s).value(0).title.startsWith("Downloads"_L1), outcome);
}

void FilesTest::opensAFileWithItsApplication()
{
    PrivateDesktop::write(PrivateDesktop::home(u"Documents/Grocery list.txt"_s), "bread");
    const Outcome outcome = perform("open_path", {{"path", u"Documents/Grocery list.txt"_s}});
    VERIFY_EFFECT(Screen::windowsOf(u"Mousepad"_s).value(0).title.contains("Grocery list.txt"_L1), outcome);
    QCOMPARE(outcome.line, u"Opened Grocery list.txt."_s);
}

void FilesTest::opensAFolderInTheFileManager()
{
    const Outcome outcome = perform("open_path", {{"path", u"Downloads"_s}});
    VERIFY_EFFECT(Screen::windowsOf(u"Thunar"_s).value(0).title.startsWith("Downloads"_L1), outcome);
}

void FilesTest::saysThatNothingExists()
{
    const Outcome outcome = perform("open_path", {{"path", u"Downloads/none.zip"_s}});
    QVERIFY(outcome.hasFailed);
    QCOMPARE(outcome.line, u"Nothing exists at Downloads/none.zip."_s);
    QVERIFY(Screen::windows().isEmpty());
}

void FilesTest::movesAFileToTheTrash()
{
    const QString path = PrivateDesktop::home(u"Downloads/old receipts.zip"_s);
    PrivateDesktop::write(path, "receipts");
    const Outcome outcome = perform("trash", {{"path", u"Downloads/old receipts.zip"_s}});
    QVERIFY2(!QFile::exists(path), qPrintable(outcome.line));
    QCOMPARE(PrivateDesktop::read(PrivateDesktop::home(u".local/share/Trash/files/old receipts.zip"_s)),
             "receipts"_ba);
    QCOMPARE(outcome.line, u"Moved old receipts.zip to the Trash."_s);
}

void FilesTest::failsToTrashWhatIsNotThere()
{
    const Outcome outcome = perform("trash", {{"path", u"Downloads/never.zip"_s}});
    QVERIFY(outcome.hasFailed);
    QVERIFY2(!outcome.line.isEmpty() && !outcome.line.contains(u'\n'), qPrintable(outcome.line));
}

QTEST_MAIN(FilesTest)
#include "FilesTest.moc"
