// SPDX-License-Identifier: Apache-2.0
#include "Models/Download/ResponseHead.h"

#include <QCryptographicHash>
#include <QTest>

// Parsing of response headers.
class ResponseHeadTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsTheAnnouncedDigest_data();
    void readsTheAnnouncedDigest();
    void readsSizeAndFirstByte_data();
    void readsSizeAndFirstByte();
    void aRedirectNeedsALocation();
};

void ResponseHeadTest::readsTheAnnouncedDigest_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("isRead");

    const QByteArray digest = QCryptographicHash::hash("model", QCryptographicHash::Sha256);
    const QByteArray digits = digest.toHex();
    const QByteArray base64 = digest.toBase64();
    QTest::newRow("tag of the model host")
        << 302 << QByteArray("X-Linked-Etag") << '"' + digits + '"' << true;
    QTest::newRow("tag in upper case") << 200 << QByteArray("x-linked-etag") << digits.toUpper() << true;
    QTest::newRow("tag of another digest") << 302 << QByteArray("X-Linked-Etag") << digits.left(40) << false;
    QTest::newRow("tag that is no digest")
        << 302 << QByteArray("X-Linked-Etag") << QByteArray(64, 'z') << false;
    QTest::newRow("plain entity tag says nothing")
        << 200 << QByteArray("ETag") << '"' + digits + '"' << false;
    QTest::newRow("Digest") << 200 << QByteArray("Digest") << "SHA-256=" + base64 << true;
    QTest::newRow("Digest of a part") << 206 << QByteArray("Digest") << "md5=abc,sha-256=" + base64 << true;
    QTest::newRow("Repr-Digest") << 206 << QByteArray("Repr-Digest") << "sha-256=:" + base64 + ':' << true;
    QTest::newRow("Content-Digest of the whole")
        << 200 << QByteArray("Content-Digest") << "sha-256=:" + base64 + ':' << true;
    QTest::newRow("Content-Digest of a part")
        << 206 << QByteArray("Content-Digest") << "sha-256=:" + base64 + ':' << false;
    QTest::newRow("another algorithm") << 200 << QByteArray("Digest") << "sha-512=" + base64 << false;
}

void ResponseHeadTest::readsTheAnnouncedDigest()
{
    QFETCH(int, status);
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, value);
    QFETCH(bool, isRead);
    const QByteArray digest = QCryptographicHash::hash("model", QCryptographicHash::Sha256);
    QCOMPARE(ResponseHead::parsed(status, {{name, value}}).sha256, isRead ? digest : QByteArray());
}

void ResponseHeadTest::readsSizeAndFirstByte_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<ResponseHead::Headers>("headers");
    QTest::addColumn<qint64>("size");
    QTest::addColumn<qint64>("firstByte");
    using Headers = ResponseHead::Headers;

    QTest::newRow("whole") << 200 << Headers{{"Content-Length", "986000000"}} << qint64(986000000)
                           << qint64(-1);
    QTest::newRow("part") << 206 << Headers{{"Content-Length", "60"}, {"Content-Range", "bytes 40-99/100"}}
                          << qint64(100) << qint64(40);
    QTest::newRow("part of unknown") << 206 << Headers{{"Content-Range", "bytes 40-99/*"}} << qint64(-1)
                                     << qint64(40);
    QTest::newRow("redirect that names the size")
        << 302 << Headers{{"Content-Length", "12"}, {"X-Linked-Size", "986000000"}} << qint64(986000000)
        << qint64(-1);
    QTest::newRow("nothing said") << 200 << Headers{} << qint64(-1) << qint64(-1);
    QTest::newRow("nonsense") << 200 << Headers{{"Content-Length", "-5"}} << qint64(-1) << qint64(-1);
    QTest::newRow("range without numbers")
        << 206 << Headers{{"Content-Range", "bytes"}} << qint64(-1) << qint64(-1);
}

void ResponseHeadTest::readsSizeAndFirstByte()
{
    QFETCH(int, status);
    QFETCH(ResponseHead::Headers, headers);
    QFETCH(qint64, size);
    QFETCH(qint64, firstByte);
    const ResponseHead head = ResponseHead::parsed(status, headers);
    QCOMPARE(head.size.value_or(-1), size);
    QCOMPARE(head.firstByte.value_or(-1), firstByte);
}

void ResponseHeadTest::aRedirectNeedsALocation()
{
    QVERIFY(ResponseHead::parsed(302, {{"Location", "https://example.org/file"}}).isRedirect());
    QVERIFY(ResponseHead::parsed(308, {{"location", "/file"}}).isRedirect());
    QVERIFY(!ResponseHead::parsed(302, {}).isRedirect());
    QVERIFY(!ResponseHead::parsed(200, {{"Location", "/file"}}).isRedirect());
    QVERIFY(!ResponseHead::parsed(304, {{"Location", "/file"}}).isRedirect());
}

QTEST_GUILESS_MAIN(ResponseHeadTest)
#include "ResponseHeadTest.moc"
