// SPDX-License-Identifier: Apache-2.0
#include "Models/LocalModel.h"

#include <QSet>
#include <QTest>

#include <nlohmann/json.hpp>

#include <functional>

using namespace Qt::StringLiterals;

// The catalog and its entries.
class LocalModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void catalogHoldsItsTwoEntriesInOrder();
    void identifiersAndFileNamesAreUnique();
    void addressesAreAbsoluteSecureAndEndInTheFileName();
    void unknownIdentifierFallsBackToTheFirstEntry_data();
    void unknownIdentifierFallsBackToTheFirstEntry();
    void entriesThatDifferInOneFieldAreUnequalAndHashDifferently_data();
    void entriesThatDifferInOneFieldAreUnequalAndHashDifferently();
    void equalEntriesHashAlike();
    void encodingHasTheSixKeysInOrder();
    void decodingGivesBackAnEqualEntry();
    void decodingNeedsEveryKey_data();
    void decodingNeedsEveryKey();
};

void LocalModelTest::catalogHoldsItsTwoEntriesInOrder()
{
    const QList<LocalModel> &catalog = LocalModel::catalog();
    QCOMPARE(catalog.size(), 2);

    QCOMPARE(catalog[0].id, u"qwen2.5-1.5b"_s);
    QCOMPARE(catalog[0].name, u"Qwen2.5 1.5B Instruct"_s);
    QCOMPARE(catalog[0].detail, u"Fast and light \u00B7 ~1 GB"_s);
    QCOMPARE(catalog[0].fileName, u"qwen2.5-1.5b-instruct-q4_k_m.gguf"_s);
    QCOMPARE(catalog[0].sizeMB, 986);

    QCOMPARE(catalog[1].id, u"llama3.2-3b"_s);
    QCOMPARE(catalog[1].name, u"Llama 3.2 3B Instruct"_s);
    QCOMPARE(catalog[1].detail, u"Smarter planning \u00B7 ~2 GB"_s);
    QCOMPARE(catalog[1].fileName, u"Llama-3.2-3B-Instruct-Q4_K_M.gguf"_s);
    QCOMPARE(catalog[1].sizeMB, 2019);
}

void LocalModelTest::identifiersAndFileNamesAreUnique()
{
    QSet<QString> identifiers;
    QSet<QString> fileNames;
    for (const LocalModel &model : LocalModel::catalog()) {
        identifiers.insert(model.id);
        fileNames.insert(model.fileName);
    }
    QCOMPARE(identifiers.size(), LocalModel::catalog().size());
    QCOMPARE(fileNames.size(), LocalModel::catalog().size());
}

void LocalModelTest::addressesAreAbsoluteSecureAndEndInTheFileName()
{
    for (const LocalModel &model : LocalModel::catalog()) {
        QVERIFY(model.url.isValid());
        QCOMPARE(model.url.scheme(), u"https"_s);
        QVERIFY(!model.url.host().isEmpty());
        QCOMPARE(model.url.fileName(), model.fileName);
    }
}

void LocalModelTest::unknownIdentifierFallsBackToTheFirstEntry_data()
{
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<QString>("found");
    QTest::newRow("the first") << u"qwen2.5-1.5b"_s << u"qwen2.5-1.5b"_s;
    QTest::newRow("the second") << u"llama3.2-3b"_s << u"llama3.2-3b"_s;
    QTest::newRow("another") << u"gpt-2"_s << u"qwen2.5-1.5b"_s;
    QTest::newRow("other letter case") << u"Llama3.2-3B"_s << u"qwen2.5-1.5b"_s;
    QTest::newRow("empty") << QString() << u"qwen2.5-1.5b"_s;
}

void LocalModelTest::unknownIdentifierFallsBackToTheFirstEntry()
{
    QFETCH(QString, identifier);
    QFETCH(QString, found);
    QCOMPARE(LocalModel::withIdentifier(identifier).id, found);
}

void LocalModelTest::entriesThatDifferInOneFieldAreUnequalAndHashDifferently_data()
{
    const LocalModel base = LocalModel::catalog().first();
    QTest::addColumn<std::function<void(LocalModel &)>>("change");
    const auto row = [](const char *name, const std::function<void(LocalModel &)> &change) {
        QTest::newRow(name) << change;
    };
    row("id", [](LocalModel &model) { model.id = u"other"_s; });
    row("name", [](LocalModel &model) { model.name = u"other"_s; });
    row("detail", [](LocalModel &model) { model.detail = u"other"_s; });
    row("url", [](LocalModel &model) { model.url = QUrl(u"https://example.org/other"_s); });
    row("fileName", [](LocalModel &model) { model.fileName = u"other"_s; });
    row("sizeMB", [](LocalModel &model) { model.sizeMB = 987; });
}

void LocalModelTest::entriesThatDifferInOneFieldAreUnequalAndHashDifferently()
{
    QFETCH(std::function<void(LocalModel &)>, change);
    const LocalModel base = LocalModel::catalog().first();
    LocalModel changed = base;
    change(changed);
    QVERIFY(changed != base);
    QVERIFY(qHash(changed) != qHash(base));
    QVERIFY(std::hash<LocalModel>()(changed) != std::hash<LocalModel>()(base));
}

void LocalModelTest::equalEntriesHashAlike()
{
    const LocalModel copy = LocalModel::catalog().first();
    QCOMPARE(copy, LocalModel::catalog().first());
    QCOMPARE(qHash(copy), qHash(LocalModel::catalog().first()));
}

void LocalModelTest::encodingHasTheSixKeysInOrder()
{
    const nlohmann::ordered_json encoded = LocalModel::catalog().first();
    std::vector<std::string> keys;
    for (const auto &[key, value] : encoded.items())
        keys.push_back(key);
    const std::vector<std::string> expected = {"id", "name", "detail", "url", "fileName", "sizeMB"};
    QCOMPARE(keys, expected);
    QVERIFY(encoded["sizeMB"].is_number_integer());
    QCOMPARE(encoded["sizeMB"].get<qint64>(), 986);
}

void LocalModelTest::decodingGivesBackAnEqualEntry()
{
    for (const LocalModel &model : LocalModel::catalog()) {
        const std::string document = nlohmann::ordered_json(model).dump();
        QCOMPARE(nlohmann::ordered_json::parse(document).get<LocalModel>(), model);
    }
}

void LocalModelTest::decodingNeedsEveryKey_data()
{
    QTest::addColumn<QByteArray>("key");
    for (const char *key : {"id", "name", "detail", "url", "fileName", "sizeMB"})
        QTest::newRow(key) << QByteArray(key);
}

void LocalModelTest::decodingNeedsEveryKey()
{
    QFETCH(QByteArray, key);
    nlohmann::ordered_json document = LocalModel::catalog().first();
    document.erase(key.toStdString());
    QVERIFY_THROWS_EXCEPTION(nlohmann::json::exception, document.get<LocalModel>());
}

QTEST_GUILESS_MAIN(LocalModelTest)
#include "LocalModelTest.moc"
