// SPDX-License-Identifier: Apache-2.0
#include "Models/Download/TransferOptions.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TransferOptionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aMirrorHasTheFilesUnderTheirPaths_data();
    void aMirrorHasTheFilesUnderTheirPaths();
};

void TransferOptionsTest::aMirrorHasTheFilesUnderTheirPaths_data()
{
    QTest::addColumn<QString>("mirror");
    QTest::addColumn<QString>("address");
    QTest::newRow("none") << QString() << u"https://models.example/a/b.gguf"_s;
    QTest::newRow("a server") << u"http://127.0.0.1:8080"_s << u"http://127.0.0.1:8080/a/b.gguf"_s;
    QTest::newRow("a folder") << u"https://mirror.example/models"_s
                              << u"https://mirror.example/models/a/b.gguf"_s;
    QTest::newRow("a folder with a slash")
        << u"https://mirror.example/models/"_s << u"https://mirror.example/models/a/b.gguf"_s;
}

void TransferOptionsTest::aMirrorHasTheFilesUnderTheirPaths()
{
    QFETCH(QString, mirror);
    TransferOptions options;
    if (!mirror.isEmpty())
        options.mirror = QUrl(mirror);
    const QUrl address = options.addressOf(QUrl(u"https://models.example/a/b.gguf"_s));
    QTEST(address.toString(), "address");
}

QTEST_GUILESS_MAIN(TransferOptionsTest)
#include "TransferOptionsTest.moc"
