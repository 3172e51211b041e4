// SPDX-License-Identifier: Apache-2.0
// How the theme is determined from the desktop's settings.
#include "Desktop/Linux/Window/AppearanceFacts.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace {

template <typename Number>
QByteArray number(Number value, bool isBigEndian)
{
    const Number encoded = isBigEndian ? qToBigEndian(value) : qToLittleEndian(value);
    return QByteArray(reinterpret_cast<const char *>(&encoded), sizeof(encoded));
}

QByteArray padded(QByteArray text)
{
    while (text.size() % 4 != 0)
        text.append('\0');
    return text;
}

QByteArray setting(std::uint8_t type, const QByteArray &name, const QByteArray &value, bool isBigEndian)
{
    return number(type, isBigEndian) + QByteArray(1, '\0') + number(std::uint16_t(name.size()), isBigEndian) +
           padded(name) + number(std::uint32_t(7), isBigEndian) + value;
}

// XSETTINGS data with one setting of each type; the theme's name is last.
QByteArray xSettings(const QByteArray &theme, bool isBigEndian, std::uint32_t count = 3)
{
    const QByteArray text = number(std::uint32_t(theme.size()), isBigEndian) + padded(theme);
    return QByteArray(1, isBigEndian ? 1 : 0) + QByteArray(3, '\0') + number(std::uint32_t(12), isBigEndian) +
           number(count, isBigEndian) +
           setting(0, "Net/DoubleClickTime", number(std::uint32_t(250), isBigEndian), isBigEndian) +
           setting(2, "Some/Colour", QByteArray(8, '\x11'), isBigEndian) +
           setting(1, "Net/ThemeName", text, isBigEndian);
}

} // namespace

class AppearanceFactsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theBestSourceDecides_data()
    {
        QTest::addColumn<AppearanceFacts>("facts");
        QTest::addColumn<bool>("isDark");
        const AppearanceFacts light{.portalScheme = {},
                                    .themeOverride = {},
                                    .themeName = u"Adwaita"_s,
                                    .prefersDarkTheme = false,
                                    .windowLightness = 240,
                                    .windowTextLightness = 10};
        const auto row = [&light](const char *name, bool isDark, auto change) {
            AppearanceFacts facts = light;
            change(facts);
            QTest::newRow(name) << facts << isDark;
        };
        const auto darken = [](AppearanceFacts &facts) {
            facts.themeOverride = u"Adwaita:dark"_s;
            facts.themeName = u"Adwaita-dark"_s;
            facts.prefersDarkTheme = true;
            facts.windowLightness = 30;
            facts.windowTextLightness = 220;
        };
        row("nothing is dark", false, [](AppearanceFacts &) {});
        row("the portal says dark", true, [](AppearanceFacts &facts) { facts.portalScheme = 1; });
        row("the portal says light, all else is dark", false, [&](AppearanceFacts &facts) {
            darken(facts);
            facts.portalScheme = 2;
        });
        row("the portal has no preference, all else is dark", true, [&](AppearanceFacts &facts) {
            darken(facts);
            facts.portalScheme = 0;
        });
        row("the portal has no preference", false, [](AppearanceFacts &facts) { facts.portalScheme = 0; });
        row("the portal says something new", false, [](AppearanceFacts &facts) { facts.portalScheme = 9; });
        row("the theme is overridden by a dark one", true,
            [](AppearanceFacts &facts) { facts.themeOverride = u"Yaru:dark"_s; });
        row("the theme is overridden by a light one", false,
            [](AppearanceFacts &facts) { facts.themeOverride = u"Yaru"_s; });
        row("the theme is dark", true, [](AppearanceFacts &facts) { facts.themeName = u"Greybird-dark"_s; });
        row("the theme is dark, in capitals", true,
            [](AppearanceFacts &facts) { facts.themeName = u"Arc-Dark"_s; });
        row("the theme's name begins darkly", false,
            [](AppearanceFacts &facts) { facts.themeName = u"darkness-light"_s; });
        row("dark themes are preferred", true, [](AppearanceFacts &facts) { facts.prefersDarkTheme = true; });
        row("text is lighter than windows", true, [](AppearanceFacts &facts) {
            facts.windowLightness = 40;
            facts.windowTextLightness = 41;
        });
        row("text is as light as windows", false, [](AppearanceFacts &facts) {
            facts.windowLightness = 40;
            facts.windowTextLightness = 40;
        });
    }

    void theBestSourceDecides()
    {
        QFETCH(AppearanceFacts, facts);
        QTEST(facts.isDark(), "isDark");
    }

    void gtkSettingsAreRead_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("themeName");
        QTest::addColumn<bool>("prefersDark");
        QTest::newRow("theme") << QByteArray("[Settings]\ngtk-theme-name=Adwaita-dark\n") << u"Adwaita-dark"_s
                               << false;
        QTest::newRow("preference as a number")
            << QByteArray("[Settings]\ngtk-application-prefer-dark-theme=1\n") << QString() << true;
        QTest::newRow("preference as a word")
            << QByteArray("[Settings]\ngtk-application-prefer-dark-theme = true\n") << QString() << true;
        QTest::newRow("no preference")
            << QByteArray("[Settings]\ngtk-application-prefer-dark-theme=0\n") << QString() << false;
        QTest::newRow("another group")
            << QByteArray("[Other]\ngtk-theme-name=Adwaita-dark\n") << QString() << false;
        QTest::newRow("no settings at all") << QByteArray("\x00\xff garbage [") << QString() << false;
    }

    void gtkSettingsAreRead()
    {
        QFETCH(QByteArray, file);
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"settings.ini"_s);
        QFile settings(path);
        QVERIFY(settings.open(QIODevice::WriteOnly));
        settings.write(file);
        settings.close();
        const ThemeSettings read = ThemeSettings::read(path);
        QTEST(read.themeName, "themeName");
        QTEST(read.prefersDarkTheme, "prefersDark");
        QCOMPARE(ThemeSettings::read(folder.filePath(u"none.ini"_s)).themeName, QString());
    }

    void theThemeIsFoundInXSettings_data()
    {
        QTest::addColumn<bool>("isBigEndian");
        QTest::newRow("little endian") << false;
        QTest::newRow("big endian") << true;
    }

    void theThemeIsFoundInXSettings()
    {
        QFETCH(bool, isBigEndian);
        QCOMPARE(textInXSettings(xSettings("Adwaita-dark", isBigEndian), "Net/ThemeName"), u"Adwaita-dark"_s);
        QCOMPARE(textInXSettings(xSettings("Sjöö", isBigEndian), "Net/ThemeName"), u"Sjöö"_s);
        QCOMPARE(textInXSettings(xSettings("Adwaita", isBigEndian), "Net/IconThemeName"), std::nullopt);
        QCOMPARE(textInXSettings(xSettings("Adwaita", isBigEndian), "Net/DoubleClickTime"), std::nullopt);
    }

    void malformedXSettingsYieldNothing()
    {
        for (const bool isBigEndian : {false, true}) {
            const QByteArray whole = xSettings("Adwaita-dark", isBigEndian);
            for (qsizetype length = 0; length < whole.size() - 12; ++length)
                QCOMPARE(textInXSettings(whole.first(length), "Net/ThemeName").value_or(QString()),
                         QString());
            // Claims more settings than it contains.
            const QByteArray promising = xSettings("Adwaita-dark", isBigEndian, 0xFFFFFFFF);
            QCOMPARE(textInXSettings(promising, "Net/Other"), std::nullopt);
        }
        const QByteArray unknownType =
            QByteArray(8, '\0') + number(std::uint32_t(1), false) + setting(9, "Net/ThemeName", {}, false);
        QCOMPARE(textInXSettings(unknownType, "Net/ThemeName"), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(AppearanceFactsTest)
#include "AppearanceFactsTest.moc"
