// SPDX-License-Identifier: Apache-2.0
// Which application fills the role of one from another platform.
#include "Desktop/Linux/Applications/ApplicationRoles.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// An entry for a program's settings, which starts the same program.
DesktopEntry settingsOf(const QString &program)
{
    DesktopEntry result;
    result.identifier = program + u"-settings"_s;
    result.executable = program;
    return result;
}

DesktopEntry entry(const QString &identifier, const QStringList &categories, bool isShown = true)
{
    DesktopEntry result;
    result.identifier = identifier;
    result.executable = identifier;
    result.categories = categories;
    result.isShown = isShown;
    return result;
}

const QList<DesktopEntry> installed{
    entry(u"hidden-calculator"_s, {u"Calculator"_s}, false),
    entry(u"calculator"_s, {u"Utility"_s, u"Calculator"_s}),
    entry(u"keyboard-settings"_s, {u"Settings"_s, u"DesktopSettings"_s}),
    entry(u"systemsettings"_s, {u"Settings"_s}),
    entry(u"oddterm"_s, {u"TerminalEmulator"_s}),
    settingsOf(u"qps"_s),
    entry(u"qps"_s, {}),
};

std::optional<DesktopEntry> defaultForType(const QString &type)
{
    if (type == u"inode/directory")
        return entry(u"files"_s, {});
    if (type == u"image/png")
        return entry(u"pictures"_s, {});
    return std::nullopt;
}

QString filling(const QString &name)
{
    const ApplicationRole *role = ApplicationRoles::named(name);
    if (!role)
        return u"no role"_s;
    const auto found = ApplicationRoles::fill(*role, installed, &defaultForType);
    return found ? found->identifier : u"nobody"_s;
}

} // namespace

class ApplicationRolesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void applicationForTheName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("identifier");

        QTest::newRow("by MIME default") << "Finder"
                                         << "files";
        QTest::newRow("in any letter case") << "fINDER"
                                            << "files";
        QTest::newRow("by the second MIME type") << "Preview"
                                                 << "pictures";
        QTest::newRow("by category, hidden ones left out") << "calculator"
                                                           << "calculator";
        QTest::newRow("a settings centre, not one of its panels") << "System Settings"
                                                                  << "systemsettings";
        QTest::newRow("any terminal where no known one is") << "Terminal"
                                                            << "oddterm";
        QTest::newRow("a program, not its settings") << "Activity Monitor"
                                                     << "qps";
        QTest::newRow("a role that nobody fills") << "Mail"
                                                  << "nobody";
        QTest::newRow("a name that is no role") << "Photoshop"
                                                << "no role";
        QTest::newRow("no name") << ""
                                 << "no role";
    }

    void applicationForTheName()
    {
        QFETCH(QString, name);
        QTEST(filling(name), "identifier");
    }
};

QTEST_GUILESS_MAIN(ApplicationRolesTest)
#include "ApplicationRolesTest.moc"
