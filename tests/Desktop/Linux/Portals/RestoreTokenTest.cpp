// SPDX-License-Identifier: Apache-2.0
// The permission to press keys is kept for the user alone.
#include "Desktop/Linux/Portals/RestoreToken.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class RestoreTokenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void withoutAFileThereIsNone();
    void aTokenIsKept();
    void onlyTheUserMayReadIt();
    void withoutAWritableFolderNothingIsKept();

private:
    QTemporaryDir m_folder;
    QString m_path;
};

void RestoreTokenTest::init()
{
    qputenv("XDG_DATA_HOME", m_folder.path().toUtf8());
    m_path = m_folder.filePath(u"Orvane/keyboard-permission"_s);
}

void RestoreTokenTest::withoutAFileThereIsNone()
{
    QCOMPARE(RestoreToken::read(), QString());
}

void RestoreTokenTest::aTokenIsKept()
{
    RestoreToken::write(u"first"_s);
    RestoreToken::write(u"second"_s);
    QCOMPARE(RestoreToken::read(), u"second"_s);
}

void RestoreTokenTest::onlyTheUserMayReadIt()
{
    RestoreToken::write(u"secret"_s);
    const QFile::Permissions others =
        QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    QVERIFY(!(QFileInfo(m_path).permissions() & others));
}

void RestoreTokenTest::withoutAWritableFolderNothingIsKept()
{
    qputenv("XDG_DATA_HOME", "/proc");
    RestoreToken::write(u"lost"_s);
    QCOMPARE(RestoreToken::read(), QString());
}

QTEST_GUILESS_MAIN(RestoreTokenTest)
#include "RestoreTokenTest.moc"
