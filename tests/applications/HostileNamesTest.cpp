// SPDX-License-Identifier: Apache-2.0
// Files and folders with difficult names and locations, judged by the disk and the applications' windows.
#include "applications/support/DesktopTest.h"

#include "Base/Text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <QTemporaryDir>

#include <memory>

#include <unistd.h>

using namespace Qt::StringLiterals;

class HostileNamesTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data();
    void init();
    void isCreatedAsAFolder();
    void isFound();
    void isOpened();
    void isMovedToTheTrash();

private:
    // The path of the item, in a folder of its own.
    QString path() const { return m_folder->filePath(m_name); }
    void makeFile();
    QString trashed() const;

    QString m_name;
    bool m_isElsewhere = false;
    bool m_isLink = false;
    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

const QString otherFileSystem = u"/dev/shm"_s;
const QByteArray content = "the content\n";

bool isAnotherFileSystem(const QString &folder)
{
    return QStorageInfo(folder).device() != QStorageInfo(QDir::homePath()).device();
}

} // namespace

void HostileNamesTest::initTestCase_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isElsewhere");
    QTest::addColumn<bool>("isLink");
    const QString accents = QString(125, u'é'); // 250 bytes
    QTest::newRow("spaces") << u"two  words and more.txt"_s << false << false;
    QTest::newRow("quotes") << u"it's \"quoted\" `twice` \\.txt"_s << false << false;
    QTest::newRow("a line break") << u"two\nlines.txt"_s << false << false;
    QTest::newRow("leading dashes") << u"--version.txt"_s << false << false;
    QTest::newRow("what shells and addresses read") << u"50% of $HOME; #1 & *?~.txt"_s << false << false;
    QTest::newRow("a letter and its accent apart")
        << u"cafe\u0301 Łódź 漢字 👩🏿‍🚀.txt"_s << false << false;
    QTest::newRow("255 bytes") << accents + u"x.txt"_s << false << false;
    QTest::newRow("a symbolic link") << u"a link.txt"_s << false << true;
    QTest::newRow("another file system") << u"over there.txt"_s << true << false;
    QTest::newRow("a link on another file system") << u"a link there.txt"_s << true << true;
}

void HostileNamesTest::init()
{
    QFETCH_GLOBAL(QString, name);
    QFETCH_GLOBAL(bool, isElsewhere);
    QFETCH_GLOBAL(bool, isLink);
    if (isElsewhere && !isAnotherFileSystem(otherFileSystem))
        QSKIP("There is no other file system here.");
    m_name = name;
    m_isLink = isLink;
    m_isElsewhere = isElsewhere;
    const QString place = isElsewhere ? otherFileSystem : PrivateDesktop::home(u"Documents"_s);
    m_folder = std::make_unique<QTemporaryDir>(place + u"/hostile-XXXXXX"_s);
    QVERIFY(m_folder->isValid());
}

// A link's target is a file in the home folder.
void HostileNamesTest::makeFile()
{
    const QString file = m_isLink ? PrivateDesktop::home(u"Documents/linked.txt"_s) : path();
    PrivateDesktop::write(file, content);
    if (m_isLink)
        QVERIFY(QFile::link(file, path()));
}

void HostileNamesTest::isCreatedAsAFolder()
{
    const Outcome outcome = perform("create_folder", {{"name", m_name}, {"in", m_folder->path()}});
    QVERIFY2(QFileInfo(path()).isDir(), qPrintable(outcome.line));
    QCOMPARE(outcome.line, u"Created folder at %1."_s.arg(Text::cleaned(path())));
    const QString parent = QFileInfo(m_folder->path()).fileName();
    VERIFY_EFFECT(Screen::showsTitle(parent), outcome);
}

void HostileNamesTest::isFound()
{
    makeFile();
    const Outcome outcome = perform("find_files", {{"folder", m_folder->path()}, {"extension", u"txt"_s}});
    const QString name = Text::cleaned(m_name);
    QCOMPARE(outcome.line, u"Found 1 file(s), newest first: %1. Revealed “%1” in Finder."_s.arg(name));
    const QString parent = QFileInfo(m_folder->path()).fileName();
    VERIFY_EFFECT(Screen::showsTitle(parent), outcome);
}

// Text typed into the opened editor is saved to the same file.
void HostileNamesTest::isOpened()
{
    makeFile();
    const Outcome outcome = perform("open_path", {{"path", path()}});
    QCOMPARE(outcome.line, u"Opened %1."_s.arg(Text::cleaned(m_name)));
    VERIFY_EFFECT(Screen::activeClass() == "Mousepad"_L1, outcome);
    const auto isSaved = [this] { return PrivateDesktop::read(path()) == 'x' + content; };
    QVERIFY(!perform("press_key", {{"key", u"x"_s}}).hasFailed);
    QVERIFY(!perform("press_key", {{"key", u"s"_s}, {"modifiers", u"command"_s}}).hasFailed);
    VERIFY_EFFECT(isSaved(), outcome);
}

void HostileNamesTest::isMovedToTheTrash()
{
    makeFile();
    const Outcome outcome = perform("trash", {{"path", path()}});
    if (m_isLink && m_isElsewhere) {
        // Qt looks for the trash of the link's target. Nothing may be lost.
        QVERIFY2(outcome.hasFailed && isOneClearLine(outcome.line), qPrintable(outcome.line));
        QVERIFY(QFileInfo(path()).isSymLink());
        QCOMPARE(PrivateDesktop::read(path()), content);
        return;
    }
    QVERIFY2(!QFileInfo::exists(path()) && !QFileInfo(path()).isSymLink(), qPrintable(outcome.line));
    QCOMPARE(outcome.line, u"Moved %1 to the Trash."_s.arg(Text::cleaned(m_name)));
    const QString there = trashed();
    QVERIFY2(!there.isEmpty(), qPrintable(outcome.line));
    QCOMPARE(QFileInfo(there).isSymLink(), m_isLink);
    QCOMPARE(PrivateDesktop::read(there), content);
    if (m_isElsewhere) {
        QVERIFY(QFile::remove(there));
        QVERIFY(QFile::remove(QFileInfo(there).path() + u"/../info/"_s + m_name + u".trashinfo"_s));
    }
}

// The item's path in a trash, or empty. Long names are truncated there.
QString HostileNamesTest::trashed() const
{
    const QStringList trashes{PrivateDesktop::home(u".local/share/Trash"_s),
                              otherFileSystem + u"/.Trash-%1"_s.arg(::getuid())};
    for (const QString &trash : trashes) {
        const QDir files(trash + u"/files"_s);
        for (const QString &name : files.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
            if (name == m_name || (name.size() > 100 && m_name.startsWith(name)))
                return files.filePath(name);
        }
    }
    return {};
}

QTEST_MAIN(HostileNamesTest)
#include "HostileNamesTest.moc"
