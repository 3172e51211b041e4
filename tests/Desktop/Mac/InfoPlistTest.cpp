// SPDX-License-Identifier: Apache-2.0
#include <QFile>
#include <QHash>
#include <QTest>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

// The bundle's Info.plist, as in the source tree.
class InfoPlistTest : public QObject
{
    Q_OBJECT

private:
    QHash<QString, QString> m_texts; // string values, by key

    void read(QXmlStreamReader &xml)
    {
        QString key;
        while (xml.readNextStartElement()) {
            if (xml.name() == "key"_L1)
                key = xml.readElementText();
            else if (xml.name() == "string"_L1)
                m_texts.insert(key, xml.readElementText());
            else
                xml.skipCurrentElement();
        }
    }

private Q_SLOTS:
    void initTestCase()
    {
        QFile file(QStringLiteral(ORVANE_INFO_PLIST));
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.errorString()));
        QXmlStreamReader xml(&file);
        QVERIFY(xml.readNextStartElement());
        QCOMPARE(xml.name(), u"plist");
        QVERIFY(xml.readNextStartElement());
        QCOMPARE(xml.name(), u"dict");
        read(xml);
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    }

    // Without a usage description, macOS denies some permissions without prompting, and prompts for others
    // without a reason.
    void everyPermissionIsExplained_data()
    {
        QTest::addColumn<QString>("key");
        for (const char *permission : {"AppleEvents", "DesktopFolder", "DocumentsFolder", "DownloadsFolder",
                                       "RemovableVolumes", "NetworkVolumes"})
            QTest::newRow(permission) << u"NS%1UsageDescription"_s.arg(QLatin1StringView(permission));
    }
    void everyPermissionIsExplained()
    {
        QFETCH(QString, key);
        const QString text = m_texts.value(key);
        QVERIFY2(text.startsWith(u"Orvane "_s), qPrintable(text));
        QVERIFY2(text.endsWith(u'.'), qPrintable(text));
    }
};

QTEST_GUILESS_MAIN(InfoPlistTest)
#include "InfoPlistTest.moc"
