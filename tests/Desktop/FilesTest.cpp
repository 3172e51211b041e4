// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Files.h"
#include "Desktop/PlatformError.h"
#include "Support/Awaited.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The message of the task's error, or "done".
QCoro::Task<QString> outcomeOf(QCoro::Task<void> task)
{
    try {
        co_await task;
    } catch (const PlatformError &error) {
        co_return error.errorDescription();
    }
    co_return u"done"_s;
}

QString outcome(QCoro::Task<void> task)
{
    return Awaited::result(outcomeOf(std::move(task)));
}

} // namespace

class FilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aFolderIsListedOneLevelDeepWithoutHiddenEntries();
    void danglingLinksAreListed();
    void modificationDatesAreThoseOfTheDisk();
    void onlyFoldersCanBeListed_data();
    void onlyFoldersCanBeListed();
    void existsForFilesAndFolders();
    void missingParentFoldersAreCreated();
    void anExistingFolderIsNoError();
    void aFileInTheWayIsAnError_data();
    void aFileInTheWayIsAnError();
    void aNullInANameIsAnError();
    void wellKnownFoldersResolveToUserFolders_data();
    void wellKnownFoldersResolveToUserFolders();
    void aListingTellsWhatIsAFolder();
    void movesAndCopiesWithAllContent_data();
    void movesAndCopiesWithAllContent();
    void neverReplacesAnything_data();
    void neverReplacesAnything();
    void trashingMovesTheItemAway_data();
    void trashingMovesTheItemAway();
    void trashingShortensTooLongNames();
    void trashingAMissingItemIsAnError();

private:
    void addFile(const QString &name) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    QString path(const QString &name) const { return m_home->path() + u'/' + name; }

    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<Files> m_files;
};

void FilesTest::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_home->path()).mkdir(u"data"_s));
    qputenv("XDG_DATA_HOME", path(u"data"_s).toUtf8());
    m_files = std::make_unique<Files>(m_home->path());
}

void FilesTest::cleanup()
{
    m_files.reset();
    m_home.reset();
    qunsetenv("XDG_DATA_HOME");
}

void FilesTest::aFolderIsListedOneLevelDeepWithoutHiddenEntries()
{
    QVERIFY(QDir(m_home->path()).mkpath(u"a/b/c"_s));
    addFile(u"a/x.txt"_s);
    addFile(u"a/.hidden"_s);
    addFile(u"a/b/deep.txt"_s);
    const auto listing = Awaited::result(m_files->contentsOfDirectory(path(u"a"_s)));
    QVERIFY(listing);
    QStringList names;
    for (const FolderEntry &entry : *listing)
        names.append(entry.name);
    names.sort();
    QCOMPARE(names, (QStringList{u"b"_s, u"x.txt"_s}));
}

void FilesTest::danglingLinksAreListed()
{
    QVERIFY(QDir(m_home->path()).mkdir(u"a"_s));
    QVERIFY(QFile::link(path(u"nowhere"_s), path(u"a/link"_s)));
    const auto listing = Awaited::result(m_files->contentsOfDirectory(path(u"a"_s)));
    QVERIFY(listing);
    QCOMPARE(listing->size(), 1);
    QCOMPARE(listing->first().name, u"link"_s);
}

void FilesTest::modificationDatesAreThoseOfTheDisk()
{
    QVERIFY(QDir(m_home->path()).mkdir(u"a"_s));
    addFile(u"a/x"_s);
    const QDateTime date(QDate(2001, 2, 3), QTime(4, 5, 6));
    QFile file(path(u"a/x"_s));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(date, QFileDevice::FileModificationTime));
    const auto listing = Awaited::result(m_files->contentsOfDirectory(path(u"a"_s)));
    QVERIFY(listing);
    QCOMPARE(listing->first().modificationDate, std::optional(date));
}

void FilesTest::onlyFoldersCanBeListed_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("nothing there") << u"none"_s;
    QTest::newRow("a file") << u"file"_s;
}

void FilesTest::onlyFoldersCanBeListed()
{
    QFETCH(QString, name);
    addFile(u"file"_s);
    QVERIFY(!Awaited::result(m_files->contentsOfDirectory(path(name))));
}

void FilesTest::existsForFilesAndFolders()
{
    addFile(u"file"_s);
    QVERIFY(Awaited::result(m_files->exists(path(u"file"_s))));
    QVERIFY(Awaited::result(m_files->exists(path(u"data"_s))));
    QVERIFY(!Awaited::result(m_files->exists(path(u"none"_s))));
}

void FilesTest::missingParentFoldersAreCreated()
{
    QCOMPARE(outcome(m_files->createDirectory(path(u"a/b/Été"_s))), u"done"_s);
    QVERIFY(QFileInfo(path(u"a/b/Été"_s)).isDir());
}

void FilesTest::anExistingFolderIsNoError()
{
    QCOMPARE(outcome(m_files->createDirectory(path(u"data"_s))), u"done"_s);
}

void FilesTest::aFileInTheWayIsAnError_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("at the end") << u"file"_s;
    QTest::newRow("on the way") << u"file/a"_s;
}

void FilesTest::aFileInTheWayIsAnError()
{
    QFETCH(QString, folder);
    addFile(u"file"_s);
    const QString expected = u"Couldn't create the folder “%1”: "_s.arg(folder.section(u'/', -1));
    const QString message = outcome(m_files->createDirectory(path(folder)));
    QVERIFY2(message.startsWith(expected), qPrintable(message));
    QVERIFY(QFileInfo(path(u"file"_s)).isFile());
}

void FilesTest::aNullInANameIsAnError()
{
    const QString hostile = path(u"a"_s) + QChar(u'\0') + u"b"_s;
    QCOMPARE(outcome(m_files->createDirectory(hostile)),
             u"Couldn't create the folder “a b”: its name is invalid."_s);
    QVERIFY(!QFileInfo::exists(path(u"a"_s)));
}

void FilesTest::wellKnownFoldersResolveToUserFolders_data()
{
    QTest::addColumn<QString>("path"); // relative to the home folder; the place too, unless absolute
    QTest::addColumn<QString>("place");
    QTest::newRow("the folder") << u"Desktop"_s << u"/elsewhere/Schreibtisch"_s;
    QTest::newRow("something in it") << u"Desktop/a/b.txt"_s << u"/elsewhere/Schreibtisch/a/b.txt"_s;
    QTest::newRow("a folder of that very name") << u"Music/song.ogg"_s << u"Music/song.ogg"_s;
    QTest::newRow("a folder that nobody has chosen") << u"Videos"_s << u"Videos"_s;
    QTest::newRow("another letter case") << u"desktop"_s << u"desktop"_s;
    QTest::newRow("a longer name") << u"Desktops/a"_s << u"Desktops/a"_s;
    QTest::newRow("deeper in the home folder") << u"old/Desktop"_s << u"old/Desktop"_s;
    QTest::newRow("no well-known name") << u"Projects"_s << u"Projects"_s;
    QTest::newRow("the home folder") << QString() << QString();
}

void FilesTest::wellKnownFoldersResolveToUserFolders()
{
    QFETCH(QString, path);
    QFETCH(QString, place);
    const QTemporaryDir home;
    QVERIFY(QDir(home.path()).mkpath(u"Music"_s));
    const Files::FolderFinder find = [](const QString &name) {
        if (name == u"Videos"_s)
            return QString();
        return name == u"Desktop"_s ? u"/elsewhere/Schreibtisch"_s : u"/elsewhere/"_s + name;
    };
    Files files(home.path(), find);
    const auto inHome = [&home](const QString &name) {
        return name.startsWith(u'/') || name.isEmpty() ? (name.isEmpty() ? home.path() : name)
                                                       : home.filePath(name);
    };
    QCOMPARE(Awaited::result(files.located(inHome(path))), inHome(place));
    Files plain(home.path());
    QCOMPARE(Awaited::result(plain.located(inHome(path))), inHome(path));
}

void FilesTest::aListingTellsWhatIsAFolder()
{
    addFile(u"file"_s);
    QVERIFY(QDir(m_home->path()).mkpath(u"parent/folder"_s));
    addFile(u"parent/file"_s);
    const auto entries = Awaited::result(m_files->contentsOfDirectory(path(u"parent"_s)));
    QVERIFY(entries && entries->size() == 2);
    for (const FolderEntry &entry : *entries)
        QCOMPARE(entry.isFolder, entry.name == u"folder");
}

void FilesTest::movesAndCopiesWithAllContent_data()
{
    QTest::addColumn<bool>("isMove");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("content"); // in it
    QTest::newRow("move a file") << true << u"file"_s << QString();
    QTest::newRow("copy a file") << false << u"file"_s << QString();
    QTest::newRow("move a folder") << true << u"folder"_s << u"/inner/x"_s;
    QTest::newRow("copy a folder") << false << u"folder"_s << u"/inner/x"_s;
}

void FilesTest::movesAndCopiesWithAllContent()
{
    QFETCH(bool, isMove);
    QFETCH(QString, item);
    QFETCH(QString, content);
    addFile(u"file"_s);
    QVERIFY(QDir(m_home->path()).mkpath(u"folder/inner"_s));
    addFile(u"folder/inner/x"_s);
    const QString from = path(item);
    const QString to = path(u"target"_s);
    QCOMPARE(outcome(isMove ? m_files->move(from, to) : m_files->copy(from, to)), u"done"_s);
    QVERIFY(QFile::exists(to + content));
    QCOMPARE(QFile::exists(from + content), !isMove);
}

void FilesTest::neverReplacesAnything_data()
{
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("reason");
    QTest::newRow("the target exists") << u"file"_s << u"“target” exists already."_s;
    QTest::newRow("the item is missing") << u"none"_s << u"it doesn't exist."_s;
}

void FilesTest::neverReplacesAnything()
{
    QFETCH(QString, item);
    QFETCH(QString, reason);
    addFile(u"file"_s);
    addFile(u"target"_s);
    QCOMPARE(outcome(m_files->move(path(item), path(u"target"_s))),
             u"“%1” couldn't be moved: %2"_s.arg(item, reason));
    QCOMPARE(outcome(m_files->copy(path(item), path(u"target"_s))),
             u"“%1” couldn't be copied: %2"_s.arg(item, reason));
    QVERIFY(QFile::exists(path(u"file"_s)));
}

void FilesTest::trashingMovesTheItemAway_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a file") << u"file"_s;
    QTest::newRow("a folder that is not empty") << u"folder"_s;
    QTest::newRow("a link, but not what it leads to") << u"link"_s;
}

void FilesTest::trashingMovesTheItemAway()
{
    QFETCH(QString, name);
    addFile(u"file"_s);
    QVERIFY(QDir(m_home->path()).mkdir(u"folder"_s));
    addFile(u"folder/x"_s);
    addFile(u"target"_s);
    QVERIFY(QFile::link(path(u"target"_s), path(u"link"_s)));
    QCOMPARE(outcome(m_files->trash(path(name))), u"done"_s);
    QVERIFY(!QDir(m_home->path()).entryList(QDir::AllEntries | QDir::System).contains(name));
    QVERIFY(QFile::exists(path(u"target"_s)));
    if (QSysInfo::kernelType() != u"linux")
        return; // On other platforms, the trash folder is fixed.
    const QDir trash(path(u"data/Trash/files"_s));
    QVERIFY(trash.entryList(QDir::AllEntries | QDir::System).contains(name));
}

void FilesTest::trashingShortensTooLongNames()
{
    const QString name = QString(127, u'é') + u'x'; // 255 bytes, the longest file name
    addFile(name);
    QCOMPARE(outcome(m_files->trash(path(name))), u"done"_s);
    QVERIFY(!QFile::exists(path(name)));
    if (QSysInfo::kernelType() != u"linux")
        return; // On other platforms, the trash folder is fixed.
    const QStringList trashed = QDir(path(u"data/Trash/files"_s)).entryList(QDir::Files);
    QCOMPARE(trashed.size(), 1);
    QVERIFY2(name.startsWith(trashed.first()) && trashed.first().size() > 100, qPrintable(trashed.first()));
}

void FilesTest::trashingAMissingItemIsAnError()
{
    QCOMPARE(outcome(m_files->trash(path(u"none.txt"_s))),
             u"“none.txt” couldn't be moved to the Trash because it doesn't exist."_s);
}

QTEST_GUILESS_MAIN(FilesTest)
#include "FilesTest.moc"
