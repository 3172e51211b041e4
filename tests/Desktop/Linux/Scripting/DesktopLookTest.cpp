// SPDX-License-Identifier: Apache-2.0
// Dark mode and the desktop's picture, with the services of sample desktops and real settings.
#include "Desktop/Linux/Scripting/DesktopLook.h"

#include "Desktop/Linux/Scripting/DesktopSettings.h"
#include "Desktop/Linux/Scripting/SampleDesktop.h"
#include "Desktop/Linux/Scripting/SampleScripts.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using SampleScripts::run;

class DesktopLookTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void tellsWhetherItIsDark_data();
    void tellsWhetherItIsDark();
    void becomesDarkAndLight();
    void darknessThatTheDesktopDoesNotFollowIsUndone();
    void needsTheDesktopsWord();

    void changesThePictureOfPlasma_data();
    void changesThePictureOfPlasma();
    void aPictureThatPlasmaDoesNotTakeIsAnError();
    void tellsThePictureOfPlasma();
    void refusesOtherFiles_data();
    void refusesOtherFiles();
    void needsADesktopWithAPicture();

private:
    static QString inPreferences(const QString &statement)
    {
        return run(u"tell application \"System Events\" to tell appearance preferences to "_s + statement);
    }
    QString picture() const { return m_folder.filePath(u"blue sky.png"_s); }
    QString url() const { return u"file://"_s + m_folder.filePath(u"blue%20sky.png"_s); }

    const DesktopSettings::Key m_scheme{"org.gnome.desktop.interface", "color-scheme"};
    QTemporaryDir m_folder;
};

void DesktopLookTest::init()
{
    DesktopSettings::setText(m_scheme, u"prefer-light"_s);
    QFile file(picture());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("\x89PNG\r\n\x1a\n");
}

void DesktopLookTest::tellsWhetherItIsDark_data()
{
    QTest::addColumn<uint>("scheme");
    QTest::addColumn<QString>("dark");
    QTest::newRow("no preference") << 0U << u"false"_s;
    QTest::newRow("dark") << 1U << u"true"_s;
    QTest::newRow("light") << 2U << u"false"_s;
}

void DesktopLookTest::tellsWhetherItIsDark()
{
    QFETCH(uint, scheme);
    SamplePortal portal;
    portal.colorScheme = [scheme] { return scheme; };
    QTEST(inPreferences(u"return dark mode"_s), "dark");
    QTEST(run(u"tell application \"System Events\" to get dark mode of appearance preferences"_s), "dark");
}

// As the portals of GNOME and GTK do.
void DesktopLookTest::becomesDarkAndLight()
{
    SamplePortal portal;
    portal.colorScheme = [this] { return DesktopSettings::text(m_scheme) == u"prefer-dark" ? 1U : 0U; };
    QCOMPARE(inPreferences(u"set dark mode to true"_s), u"true"_s);
    QCOMPARE(DesktopSettings::text(m_scheme), u"prefer-dark"_s);
    QCOMPARE(inPreferences(u"set dark mode to not dark mode"_s), u"false"_s);
    QCOMPARE(DesktopSettings::text(m_scheme), u"default"_s);
}

void DesktopLookTest::darknessThatTheDesktopDoesNotFollowIsUndone()
{
    const SamplePortal portal;
    QCOMPARE(inPreferences(u"set dark mode to true"_s),
             u"Error: Scripts can't make this desktop light or dark."_s);
    QCOMPARE(DesktopSettings::text(m_scheme), u"prefer-light"_s);
}

void DesktopLookTest::needsTheDesktopsWord()
{
    const QString error = u"Error: This desktop doesn't tell whether it is dark."_s;
    QCOMPARE(inPreferences(u"get dark mode"_s), error);
    QCOMPARE(inPreferences(u"set dark mode to true"_s), error);
    QCOMPARE(DesktopSettings::text(m_scheme), u"prefer-light"_s);
}

void DesktopLookTest::changesThePictureOfPlasma_data()
{
    QTest::addColumn<QString>("statement");
    QTest::newRow("Finder") << u"tell application \"Finder\" to set desktop picture to POSIX file \"%1\""_s;
    QTest::newRow("every desktop")
        << u"tell application \"System Events\" to tell every desktop to set picture to \"%1\""_s;
    QTest::newRow("desktops") << u"tell application \"System Events\" to set picture of desktops to \"%1\""_s;
    QTest::newRow("the current desktop")
        << u"tell application \"System Events\" to tell current desktop to set picture to \"%1\""_s;
    QTest::newRow("a desktop by number")
        << u"tell application \"System Events\" to set picture of desktop 1 to \"%1\""_s;
}

void DesktopLookTest::changesThePictureOfPlasma()
{
    QFETCH(QString, statement);
    const SamplePlasma plasma(2);
    QCOMPARE(run(statement.arg(picture())), picture());
    const QVariantMap expected{{u"Image"_s, url()}};
    QCOMPARE(plasma.pictures, QList<QVariantMap>(2, expected));
}

void DesktopLookTest::aPictureThatPlasmaDoesNotTakeIsAnError()
{
    SamplePlasma plasma(1);
    plasma.follows = false;
    QCOMPARE(run(u"tell application \"Finder\" to set desktop picture to POSIX file \"%1\""_s.arg(picture())),
             u"Error: Scripts can't change the picture of this desktop."_s);
}

void DesktopLookTest::tellsThePictureOfPlasma()
{
    SamplePlasma plasma(1);
    plasma.pictures = {{{u"Image"_s, url()}}};
    QCOMPARE(run(u"tell application \"System Events\" to get picture of desktop 1"_s), picture());
}

void DesktopLookTest::refusesOtherFiles_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("error");
    QTest::newRow("missing") << u"/nowhere/at/all.png"_s
                             << u"Error: Nothing exists at /nowhere/at/all.png."_s;
    QTest::newRow("a folder") << u"/usr"_s << u"Error: Nothing exists at /usr."_s;
    QTest::newRow("no picture") << u"/etc/passwd"_s << u"Error: “passwd” is no picture."_s;
}

void DesktopLookTest::refusesOtherFiles()
{
    QFETCH(QString, file);
    const SamplePlasma plasma(1);
    QTEST(run(u"tell application \"Finder\" to set desktop picture to POSIX file \"%1\""_s.arg(file)),
          "error");
    QVERIFY(plasma.pictures.first().isEmpty());
}

void DesktopLookTest::needsADesktopWithAPicture()
{
    QCOMPARE(run(u"tell application \"Finder\" to set desktop picture to POSIX file \"%1\""_s.arg(picture())),
             u"Error: Scripts can't change the picture of this desktop."_s);
    QCOMPARE(run(u"tell application \"Finder\" to get desktop picture"_s),
             u"Error: This desktop doesn't tell its picture."_s);
}

QTEST_GUILESS_MAIN(DesktopLookTest)
#include "DesktopLookTest.moc"
