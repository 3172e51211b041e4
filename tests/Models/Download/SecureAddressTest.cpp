// SPDX-License-Identifier: Apache-2.0
#include "Models/Download/SecureAddress.h"

#include <QTest>

using namespace Qt::StringLiterals;

// Addresses that models may be downloaded from.
class SecureAddressTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyAddressIsSecureOrNot_data();
    void everyAddressIsSecureOrNot();
};

void SecureAddressTest::everyAddressIsSecureOrNot_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<bool>("isSecure");
    const auto row = [](const char *address, bool isSecure) {
        QTest::newRow(address) << QString::fromLatin1(address) << isSecure;
    };
    row("https://models.example/a.gguf", true);
    row("https://192.0.2.1", true);
    row("http://127.0.0.1:8080/models", true);
    row("http://127.1.2.3", true);
    row("http://[::1]:8080", true);
    row("http://localhost/models", true);
    row("http://models.example/a.gguf", false);
    row("http://192.0.2.1", false);
    row("http://localhost.example", false);
    row("http://127.0.0.1.example", false);
    row("http://localhost@models.example", false);
    row("ftp://127.0.0.1/a.gguf", false);
    row("file:///etc/hostname", false);
    row("https:///models", false);
    row("models.example", false);
    row("https://[models", false);
    row("", false);
}

void SecureAddressTest::everyAddressIsSecureOrNot()
{
    QFETCH(QString, address);
    QTEST(isSecureAddress(QUrl(address)), "isSecure");
}

QTEST_GUILESS_MAIN(SecureAddressTest)
#include "SecureAddressTest.moc"
