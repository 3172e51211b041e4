// SPDX-License-Identifier: Apache-2.0
// The extension of GNOME Shell in the user's folders, and its entry in GNOME's settings.
#include "Desktop/Linux/ShellExtension/ExtensionFiles.h"
#include "Desktop/Linux/ShellExtension/ExtensionStanding.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray schema = R"(<schemalist>
  <schema id="org.gnome.shell" path="/org/gnome/shell/">
    <key name="enabled-extensions" type="as"><default>[]</default></key>
  </schema>
</schemalist>)";

const QString program = u"/opt/orvane/bin/orvane"_s;
const QByteArray extension = "windows@orvane.org";

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s can't be written", qPrintable(path));
}

} // namespace

class ExtensionFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void theExtensionIsWrittenAndEnabled();
    void itAnswersTheProgramThatWroteItLast();
    void anOlderExtensionIsNoticed();
    void theVersionIsTheScripts();
    void onlyTheUsersOwnRemain();

private:
    QByteArray settings() const { return contentOf(m_folder.filePath(u"glib-2.0/settings/keyfile"_s)); }

    QTemporaryDir m_folder;
};

// GNOME's settings as they are described where its shell is installed, with an extension of the user's.
void ExtensionFilesTest::initTestCase()
{
    write(m_folder.filePath(u"org.gnome.shell.gschema.xml"_s), schema);
    QCOMPARE(QProcess::execute(u"glib-compile-schemas"_s, {m_folder.path()}), 0);
    qputenv("GSETTINGS_SCHEMA_DIR", m_folder.path().toUtf8());
    qputenv("GSETTINGS_BACKEND", "keyfile");
    qputenv("XDG_CONFIG_HOME", m_folder.path().toUtf8());
    qputenv("XDG_DATA_HOME", m_folder.path().toUtf8());
    QVERIFY(QDir(m_folder.path()).mkpath(u"glib-2.0/settings"_s));
    write(m_folder.filePath(u"glib-2.0/settings/keyfile"_s),
          "[org/gnome/shell]\nenabled-extensions=['dash@example.org']\n");
    QVERIFY(ExtensionFiles::areUseful());
}

void ExtensionFilesTest::init()
{
    ExtensionFiles::remove();
}

void ExtensionFilesTest::theExtensionIsWrittenAndEnabled()
{
    ExtensionFiles::write(program);
    const QDir folder(ExtensionFiles::folder());
    QCOMPARE(folder.dirName().toUtf8(), extension);
    // The shell loads an extension only from a folder of its name.
    const QJsonObject metadata =
        QJsonDocument::fromJson(contentOf(folder.filePath(u"metadata.json"_s))).object();
    QCOMPARE(metadata.value("uuid"_L1).toString().toUtf8(), extension);
    QVERIFY(contentOf(folder.filePath(u"extension.js"_s)).contains("export default class"));
    QCOMPARE(contentOf(folder.filePath(u"programs"_s)), program.toUtf8() + '\n');
    QVERIFY2(settings().contains("=['dash@example.org', '" + extension + "']"), settings().constData());
}

void ExtensionFilesTest::itAnswersTheProgramThatWroteItLast()
{
    ExtensionFiles::write(program);
    ExtensionFiles::write(u"/home/me/orvane"_s);
    QCOMPARE(contentOf(ExtensionFiles::folder() + u"/programs"_s), QByteArray("/home/me/orvane\n"));
    QVERIFY2(settings().contains("=['dash@example.org', '" + extension + "']"), settings().constData());
}

void ExtensionFilesTest::anOlderExtensionIsNoticed()
{
    QVERIFY(!ExtensionFiles::areCurrent());
    const QString current = ExtensionFiles::version();
    QCOMPARE(extensionStanding(std::nullopt, false), ExtensionStanding::IsMissing);
    QCOMPARE(extensionStanding(QString(), false), ExtensionStanding::IsOutdated); // tells none
    ExtensionFiles::write(program);
    QVERIFY(ExtensionFiles::areCurrent());
    QCOMPARE(extensionStanding(std::nullopt, true), ExtensionStanding::NeedsLogin);
    QCOMPARE(extensionStanding(u"older"_s, true), ExtensionStanding::NeedsLogin);
    QCOMPARE(extensionStanding(current, true), ExtensionStanding::Works);
    write(ExtensionFiles::folder() + u"/extension.js"_s, "// older");
    QVERIFY(!ExtensionFiles::areCurrent());
    QVERIFY(obstacleOf(ExtensionStanding::IsOutdated)->contains(u"orvane integrate"_s));
    QVERIFY(!obstacleOf(ExtensionStanding::NeedsLogin)->contains(u"integrate"_s));
    QCOMPARE(obstacleOf(ExtensionStanding::Works), std::nullopt);
}

void ExtensionFilesTest::theVersionIsTheScripts()
{
    ExtensionFiles::write(program);
    const QByteArray script = contentOf(ExtensionFiles::folder() + u"/extension.js"_s);
    QVERIFY(script.contains("const version = '" + ExtensionFiles::version().toUtf8() + "';"));
    QVERIFY(ExtensionFiles::version().size() > 10);
}

void ExtensionFilesTest::onlyTheUsersOwnRemain()
{
    ExtensionFiles::write(program);
    QVERIFY(ExtensionFiles::remove());
    QVERIFY(!QDir(ExtensionFiles::folder()).exists());
    QVERIFY2(settings().contains("=['dash@example.org']"), settings().constData());
    QVERIFY(!ExtensionFiles::remove());
}

QTEST_GUILESS_MAIN(ExtensionFilesTest)
#include "ExtensionFilesTest.moc"
