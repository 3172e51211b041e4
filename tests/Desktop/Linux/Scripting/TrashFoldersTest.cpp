// SPDX-License-Identifier: Apache-2.0
// Emptying the trash deletes what is in it, and nothing else.
#include "Desktop/Linux/Scripting/TrashFolders.h"
#include "Support/Awaited.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

ScriptCommand emptyTrash()
{
    ScriptCommand command;
    command.name = u"empty"_s;
    command.application = u"Finder"_s;
    return command;
}

void write(const QString &path)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("x");
}

constexpr QFile::Permissions readable = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                        QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther |
                                        QFile::ExeOther;

constexpr uid_t nobody = 65534;

// The administrator may delete everything.
class WithoutPrivileges
{
public:
    WithoutPrivileges()
    {
        if (::getuid() == 0 && ::seteuid(nobody) != 0)
            qFatal("The privileges can't be given up");
    }
    ~WithoutPrivileges()
    {
        if (::seteuid(::getuid()) != 0)
            qFatal("The privileges can't be taken back");
    }
};

} // namespace

class TrashFoldersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void deletesWhatWasTrashed();
    void deletesWhatWasTrashedOnAnotherVolume();
    void ignoresAFolderOfAnotherUser();
    void followsNoLinks();
    void ignoresAFolderThatIsALink();
    void succeedsWithoutATrash();
    void tellsWhatItCannotDelete();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    // The error's sentence; empty after success. Only the folder's volumes have a trash.
    QString outcome();

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TrashFoldersTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    qputenv("XDG_DATA_HOME", m_folder->path().toLocal8Bit());
}

QString TrashFoldersTest::outcome()
{
    TrashFolders trash([this] { return QStringList{path(u"volume"_s)}; });
    try {
        const std::optional<ScriptValue> answer = Awaited::result(trash.perform(emptyTrash()));
        return answer ? QString() : u"Not understood."_s;
    } catch (const LocalizedError &error) {
        return error.errorDescription();
    }
}

void TrashFoldersTest::deletesWhatWasTrashed()
{
    write(path(u"Trash/files/a.txt"_s));
    write(path(u"Trash/files/folder/.hidden/b.txt"_s));
    write(path(u"Trash/info/a.txt.trashinfo"_s));
    write(path(u"Trash/info/folder.trashinfo"_s));
    write(path(u"kept.txt"_s));
    QCOMPARE(outcome(), QString());
    QVERIFY(QDir(path(u"Trash/files"_s)).isEmpty());
    QVERIFY(QDir(path(u"Trash/info"_s)).isEmpty());
    QVERIFY(QFile::exists(path(u"kept.txt"_s)));
}

void TrashFoldersTest::deletesWhatWasTrashedOnAnotherVolume()
{
    const QString user = QString::number(::getuid());
    write(path(u"volume/.Trash-%1/files/a.txt"_s.arg(user)));
    write(path(u"volume/.Trash/%1/files/b.txt"_s.arg(user)));
    write(path(u"volume/.Trash/4711/files/c.txt"_s));
    write(path(u"volume/kept.txt"_s));
    QCOMPARE(outcome(), QString());
    QVERIFY(!QFile::exists(path(u"volume/.Trash-%1/files/a.txt"_s.arg(user))));
    QVERIFY(!QFile::exists(path(u"volume/.Trash/%1/files/b.txt"_s.arg(user))));
    QVERIFY(QFile::exists(path(u"volume/.Trash/4711/files/c.txt"_s)));
    QVERIFY(QFile::exists(path(u"volume/kept.txt"_s)));
}

void TrashFoldersTest::ignoresAFolderOfAnotherUser()
{
    if (::getuid() != 0)
        QSKIP("giving a folder away takes the administrator");
    const QString user = QString::number(::getuid());
    write(path(u"volume/.Trash-%1/files/a.txt"_s.arg(user)));
    const QByteArray folder = path(u"volume/.Trash-%1"_s.arg(user)).toLocal8Bit();
    QCOMPARE(::chown(folder.constData(), nobody, nobody), 0);
    QCOMPARE(outcome(), QString());
    QVERIFY(QFile::exists(path(u"volume/.Trash-%1/files/a.txt"_s.arg(user))));
}

void TrashFoldersTest::followsNoLinks()
{
    write(path(u"kept/a.txt"_s));
    QDir().mkpath(path(u"Trash/files/folder"_s));
    QVERIFY(QFile::link(path(u"kept"_s), path(u"Trash/files/link"_s)));
    QVERIFY(QFile::link(path(u"kept"_s), path(u"Trash/files/folder/link"_s)));
    QCOMPARE(outcome(), QString());
    QVERIFY(QDir(path(u"Trash/files"_s)).isEmpty());
    QVERIFY(QFile::exists(path(u"kept/a.txt"_s)));
}

void TrashFoldersTest::ignoresAFolderThatIsALink()
{
    write(path(u"kept/files/a.txt"_s));
    QVERIFY(QFile::link(path(u"kept"_s), path(u"Trash"_s)));
    QCOMPARE(outcome(), QString());
    QVERIFY(QFile::exists(path(u"kept/files/a.txt"_s)));
}

void TrashFoldersTest::succeedsWithoutATrash()
{
    QCOMPARE(outcome(), QString());
}

void TrashFoldersTest::tellsWhatItCannotDelete()
{
    write(path(u"Trash/files/locked/a.txt"_s));
    write(path(u"Trash/info/locked.trashinfo"_s));
    QVERIFY(QFile::setPermissions(path(u"Trash/files/locked"_s), readable & ~QFile::WriteOwner));
    QVERIFY(QFile::setPermissions(m_folder->path(), readable));
    {
        const WithoutPrivileges ordinary;
        QCOMPARE(outcome(), u"The trash could not be emptied completely."_s);
    }
    QVERIFY(QFile::exists(path(u"Trash/info/locked.trashinfo"_s)));
    QFile::setPermissions(path(u"Trash/files/locked"_s), readable);
}

QTEST_GUILESS_MAIN(TrashFoldersTest)
#include "TrashFoldersTest.moc"
