// SPDX-License-Identifier: Apache-2.0
// The desktop entry that makes a program known which isn't installed.
#include "Desktop/Linux/Applications/OwnEntry.h"

#include "Desktop/PlatformError.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <utility>

#include <glib.h>

using namespace Qt::StringLiterals;

namespace {

using KeyFile = std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)>;

QString value(const QByteArray &entry, const char *key, const char *group = "Desktop Entry")
{
    const KeyFile file(g_key_file_new(), &g_key_file_unref);
    if (!g_key_file_load_from_data(file.get(), entry.constData(), gsize(entry.size()), G_KEY_FILE_NONE,
                                   nullptr))
        return {};
    const std::unique_ptr<char, decltype(&g_free)> text(
        g_key_file_get_string(file.get(), group, key, nullptr), &g_free);
    return QString::fromUtf8(text.get());
}

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

template <typename Call>
QString errorOf(Call call)
{
    try {
        call();
    } catch (const PlatformError &error) {
        return error.errorDescription();
    }
    return {};
}

} // namespace

class OwnEntryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_folder->filePath(u"data"_s)));
    }

    void theProgramIsNamedByItsPath_data()
    {
        QTest::addColumn<QString>("executable");
        QTest::newRow("plain") << u"/opt/orvane-1.0/bin/orvane"_s;
        QTest::newRow("blank") << u"/home/me/my programs/orvane"_s;
        QTest::newRow("special") << u"/tmp/a\"b`c$d\\e%f'g/orvane"_s;
    }

    void theProgramIsNamedByItsPath()
    {
        QFETCH(const QString, executable);
        const QByteArray entry = OwnEntry::textFor(executable);
        for (const auto &[group, arguments] :
             {std::pair("Desktop Entry", 1), std::pair("Desktop Action toggle", 2)}) {
            QByteArray command = value(entry, "Exec", group).toUtf8();
            command.replace("%%", "%");
            int count = 0;
            char **words = nullptr;
            QVERIFY(g_shell_parse_argv(command.constData(), &count, &words, nullptr));
            const QString program = QString::fromUtf8(words[0]);
            g_strfreev(words);
            QCOMPARE(program, executable);
            QCOMPARE(count, arguments);
        }
    }

    void itNamesTheInterfacesThatKwinGuards()
    {
        const QStringList interfaces =
            value(OwnEntry::textFor(u"/bin/orvane"_s), "X-KDE-Wayland-Interfaces").split(u',');
        QCOMPARE(interfaces, QStringList({u"org_kde_plasma_window_management"_s, u"org_kde_kwin_fake_input"_s,
                                          u"org_kde_kwin_keystate"_s}));
    }

    // The bus doesn't know a program that isn't installed.
    void itIsNotStartedByTheBus()
    {
        QCOMPARE(value(OwnEntry::textFor(u"/bin/orvane"_s), "DBusActivatable"), QString());
    }

    void itIsWrittenAndRemoved()
    {
        QCOMPARE(OwnEntry::path(), m_folder->filePath(u"data/applications/org.orvane.Orvane.desktop"_s));
        QVERIFY(!OwnEntry::remove());
        OwnEntry::write(u"/bin/orvane"_s);
        QCOMPARE(read(OwnEntry::path()), OwnEntry::textFor(u"/bin/orvane"_s));
        OwnEntry::write(u"/opt/orvane"_s);
        QCOMPARE(read(OwnEntry::path()), OwnEntry::textFor(u"/opt/orvane"_s));
        QVERIFY(OwnEntry::remove());
        QVERIFY(!QFile::exists(OwnEntry::path()));
    }

    void anotherEntryIsKept()
    {
        OwnEntry::write(u"/bin/orvane"_s);
        QFile file(OwnEntry::path());
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write("[Desktop Entry]\nName=Mine\n");
        file.close();
        const auto write = [] { OwnEntry::write(u"/bin/orvane"_s); };
        QCOMPARE(errorOf(write), u"There is another desktop entry: %1"_s.arg(OwnEntry::path()));
        QVERIFY(!OwnEntry::remove());
        QCOMPARE(read(OwnEntry::path()), "[Desktop Entry]\nName=Mine\n");
    }

    void aFolderThatCannotBeMadeIsReported()
    {
        QFile inTheWay(m_folder->filePath(u"data"_s));
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        const auto write = [] { OwnEntry::write(u"/bin/orvane"_s); };
        QCOMPARE(errorOf(write), u"The desktop entry can't be written: %1"_s.arg(OwnEntry::path()));
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(OwnEntryTest)
#include "OwnEntryTest.moc"
