// SPDX-License-Identifier: Apache-2.0
#include "Models/FileMove.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

bool putFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The paths of flushed files at that moment.
QStringList syncedFiles;

} // namespace

// Replaces the C library's fsync to record calls.
extern "C" int fsync(int file)
{
    syncedFiles.append(QFile::symLinkTarget(u"/proc/self/fd/%1"_s.arg(file)));
    return static_cast<int>(::syscall(SYS_fsync, file));
}

// The move that publishes a download.
class FileMoveTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void movesToAFreeName();
    void replacesAnEarlierFile();
    void failureLeavesBothFiles();
    void crossesFileSystems();
    void failureAcrossFileSystemsLeavesNothingBehind();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void FileMoveTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(putFile(path(u"source"_s), "new"));
}

void FileMoveTest::movesToAFreeName()
{
    QVERIFY(!moveReplacing(path(u"source"_s), path(u"destination"_s)));
    QCOMPARE(content(path(u"destination"_s)), "new");
    QVERIFY(!QFile::exists(path(u"source"_s)));
}

void FileMoveTest::replacesAnEarlierFile()
{
    QVERIFY(putFile(path(u"destination"_s), "earlier"));
    QVERIFY(!moveReplacing(path(u"source"_s), path(u"destination"_s)));
    QCOMPARE(content(path(u"destination"_s)), "new");
}

void FileMoveTest::failureLeavesBothFiles()
{
    QVERIFY(QDir().mkpath(path(u"destination/inside"_s)));
    QCOMPARE(moveReplacing(path(u"source"_s), path(u"destination"_s)), std::errc::is_a_directory);
    QCOMPARE(content(path(u"source"_s)), "new");
    QVERIFY(QDir(path(u"destination/inside"_s)).exists());
}

void FileMoveTest::crossesFileSystems()
{
    const QTemporaryDir elsewhere(u"/dev/shm/orvane-move"_s);
    if (!elsewhere.isValid())
        QSKIP("There is no second file system to write to.");
    QVERIFY(putFile(elsewhere.filePath(u"destination"_s), "earlier"));
    syncedFiles.clear();
    QVERIFY(!moveReplacing(path(u"source"_s), elsewhere.filePath(u"destination"_s)));
    QCOMPARE(syncedFiles, {elsewhere.filePath(u"destination.moving"_s)});
    QCOMPARE(content(elsewhere.filePath(u"destination"_s)), "new");
    QVERIFY(!QFile::exists(path(u"source"_s)));
    QCOMPARE(QDir(elsewhere.path()).entryList(QDir::Files | QDir::Hidden), {u"destination"_s});
}

void FileMoveTest::failureAcrossFileSystemsLeavesNothingBehind()
{
    const QTemporaryDir elsewhere(u"/dev/shm/orvane-move"_s);
    if (!elsewhere.isValid())
        QSKIP("There is no second file system to write to.");
    QVERIFY(QDir().mkpath(elsewhere.filePath(u"destination/inside"_s)));
    QVERIFY(moveReplacing(path(u"source"_s), elsewhere.filePath(u"destination"_s)));
    QCOMPARE(content(path(u"source"_s)), "new");
    QCOMPARE(QDir(elsewhere.path()).entryList(QDir::Files | QDir::Hidden), QStringList());
}

QTEST_GUILESS_MAIN(FileMoveTest)
#include "FileMoveTest.moc"
