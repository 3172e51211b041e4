// SPDX-License-Identifier: Apache-2.0
// Which desktop entry a window belongs to.
#include "Desktop/Linux/Applications/DesktopEntry.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

DesktopEntry entry(const QString &identifier, const QString &windowClass, const QString &executable,
                   bool isShown = true)
{
    DesktopEntry result;
    result.identifier = identifier;
    result.windowClass = windowClass;
    result.executable = executable;
    result.isShown = isShown;
    return result;
}

} // namespace

class DesktopEntryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void entryOfWindowByRule_data()
    {
        QTest::addColumn<QString>("instance");
        QTest::addColumn<QString>("className");
        QTest::addColumn<QString>("identifier");

        QTest::newRow("the named window class") << "Navigator"
                                                << "firefox-esr"
                                                << "firefox-esr";
        QTest::newRow("the class in another letter case") << "chromium"
                                                          << "Chromium"
                                                          << "chromium";
        QTest::newRow("a web application's own instance") << "crx_42"
                                                          << "Chromium"
                                                          << "chrome-42-Default";
        QTest::newRow("the id is the lower-cased class") << "thunar"
                                                         << "Thunar"
                                                         << "thunar";
        QTest::newRow("the id's last component") << "mousepad"
                                                 << "Mousepad"
                                                 << "org.xfce.mousepad";
        QTest::newRow("the program's name") << "gnome-calculator"
                                            << "gnome-calculator"
                                            << "org.gnome.Calculator";
        QTest::newRow("a shown entry before a hidden one") << "viewer"
                                                           << "viewer"
                                                           << "zviewer";
        QTest::newRow("no entry") << "xterm"
                                  << "XTerm" << QString();
        QTest::newRow("no class at all") << QString() << QString() << QString();
    }

    void entryOfWindowByRule()
    {
        const QList<DesktopEntry> entries{
            entry(u"settings-of-mousepad"_s, {}, u"mousepad"_s),
            entry(u"org.xfce.mousepad"_s, {}, u"mousepad"_s),
            entry(u"thunar-settings"_s, {}, u"thunar"_s),
            entry(u"thunar"_s, {}, u"thunar"_s),
            entry(u"firefox-esr"_s, u"firefox-esr"_s, u"firefox-esr"_s),
            entry(u"chromium"_s, u"chromium"_s, u"chromium"_s),
            entry(u"chrome-42-Default"_s, u"crx_42"_s, u"chromium"_s),
            entry(u"org.gnome.Calculator"_s, {}, u"gnome-calculator"_s),
            entry(u"aviewer"_s, {}, u"viewer"_s, false),
            entry(u"zviewer"_s, {}, u"viewer"_s),
            entry(u"nameless"_s, {}, {}),
        };
        QFETCH(QString, instance);
        QFETCH(QString, className);
        const DesktopEntry *found = entryOfWindow(entries, instance, className);
        QTEST(found ? found->identifier : QString(), "identifier");
    }

    void entryOfWindowInASandbox_data()
    {
        QTest::addColumn<QString>("sandbox");
        QTest::addColumn<QString>("applicationIdentifier");
        QTest::addColumn<QString>("className");
        QTest::addColumn<QString>("identifier");

        QTest::newRow("the sandbox before the class")
            << u"org.gnome.Editor"_s << QString() << u"firefox"_s << u"org.gnome.Editor"_s;
        QTest::newRow("the sandbox before what the window names")
            << u"org.gnome.Editor"_s << u"firefox"_s << u"Editor"_s << u"org.gnome.Editor"_s;
        QTest::newRow("of its entries the one for the class")
            << u"org.office.Office"_s << QString() << u"office-calc"_s << u"org.office.Office.calc"_s;
        QTest::newRow("of its entries the main one")
            << u"org.office.Office"_s << QString() << u"soffice"_s << u"org.office.Office"_s;
        QTest::newRow("a snap") << u"firefox_firefox"_s << QString() << u"firefox"_s << u"firefox_firefox"_s;
        QTest::newRow("a snap's other program")
            << u"firefox_geckodriver"_s << QString() << u"other"_s << u"firefox_firefox"_s;
        QTest::newRow("a sandbox without an entry")
            << u"org.example.None"_s << QString() << u"firefox"_s << u"firefox"_s;
        QTest::newRow("what the window names before its class")
            << QString() << u"org.gnome.Editor"_s << u"firefox"_s << u"org.gnome.Editor"_s;
        QTest::newRow("a name without an entry, and a class")
            << QString() << u"org.example.None"_s << u"firefox"_s << u"firefox"_s;
    }

    void entryOfWindowInASandbox()
    {
        DesktopEntry calc = entry(u"org.office.Office.calc"_s, u"office-calc"_s, u"flatpak"_s);
        calc.flatpak = u"org.office.Office"_s;
        const QList<DesktopEntry> entries{
            entry(u"firefox"_s, {}, u"firefox"_s),           entry(u"firefox_firefox"_s, {}, u"firefox"_s),
            entry(u"org.gnome.Editor"_s, {}, u"flatpak"_s),  calc,
            entry(u"org.office.Office"_s, {}, u"flatpak"_s),
        };
        QFETCH(QString, sandbox);
        QFETCH(QString, applicationIdentifier);
        QFETCH(QString, className);
        DesktopWindow window;
        window.sandbox = sandbox;
        window.applicationIdentifier = applicationIdentifier;
        window.className = className;
        const DesktopEntry *found = entryOfWindow(entries, window);
        QTEST(found ? found->identifier : QString(), "identifier");
    }
};

QTEST_GUILESS_MAIN(DesktopEntryTest)
#include "DesktopEntryTest.moc"
