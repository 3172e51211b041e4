// SPDX-License-Identifier: Apache-2.0
// The estimate of a model's memory, from the file's metadata.
#include "Inference/Llama/ModelMemory.h"
#include "Inference/ShapedModel.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class ModelMemoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theCopyHasALimit();
    void growsWithTheContextTwice();
    void growsWithTheBatchByTheVocabulary();
    void isTheFilesSizeForAFileWithoutMetadata();

private:
    QString file(const ShapedModel &model)
    {
        const QString path = m_folder.filePath(u"model.gguf"_s);
        model.write(path);
        return path;
    }

    static constexpr qint32 layers = 2;
    static constexpr qint32 tokens = 2000;
    // Of Qwen2.5 1.5B: 2 key heads of 1536 / 12 numbers.
    static constexpr qint64 cachedNumbers = layers * 2LL * (1536 / 12) * 2;

    QTemporaryDir m_folder;
};

// The context itself and its copy, with two bytes for a number.
void ModelMemoryTest::growsWithTheContextTwice()
{
    const QString path = file(ShapedModel::qwen2_1_5b().cut(layers, tokens));
    const qint64 growth = ModelMemory::needed(path, 4096, 0) - ModelMemory::needed(path, 0, 0);
    QCOMPARE(growth, 2 * 2 * cachedNumbers * 4096);
    QVERIFY(ModelMemory::needed(path, 0, 0) > QFileInfo(path).size());
}

void ModelMemoryTest::theCopyHasALimit()
{
    const QString path = file(ShapedModel::qwen2_1_5b().cut(layers, tokens));
    const qint64 growth = ModelMemory::needed(path, 10'000'000, 0) - ModelMemory::needed(path, 0, 0);
    QCOMPARE(growth, 2 * cachedNumbers * 10'000'000 + 256 * 1024 * 1024);
}

void ModelMemoryTest::growsWithTheBatchByTheVocabulary()
{
    const QString path = file(ShapedModel::qwen2_1_5b().cut(layers, tokens));
    QCOMPARE(ModelMemory::needed(path, 0, 512) - ModelMemory::needed(path, 0, 0), 4LL * tokens * 512);
}

void ModelMemoryTest::isTheFilesSizeForAFileWithoutMetadata()
{
    const QString path = m_folder.filePath(u"none"_s);
    QFile none(path);
    QVERIFY(none.open(QIODevice::WriteOnly));
    none.write("no model");
    none.close();
    QCOMPARE(ModelMemory::needed(path, 4096, 512), 8);
}

QTEST_GUILESS_MAIN(ModelMemoryTest)
#include "ModelMemoryTest.moc"
