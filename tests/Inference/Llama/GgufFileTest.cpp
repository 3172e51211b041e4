// SPDX-License-Identifier: Apache-2.0
#include "Inference/Llama/GgufFile.h"

#include <QDataStream>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;
using GgufFile::Verdict;

namespace {

constexpr quint32 typeUnsigned32 = 4;
constexpr quint32 typeString = 8;
constexpr quint32 typeArray = 9;

// Builds the bytes of a model file, field by field.
class Bytes
{
public:
    Bytes() { m_stream.setByteOrder(QDataStream::LittleEndian); }

    Bytes &raw(const QByteArray &bytes)
    {
        m_stream.writeRawData(bytes.constData(), static_cast<int>(bytes.size()));
        return *this;
    }
    Bytes &u32(quint32 value) { return *this << value; }
    Bytes &u64(quint64 value) { return *this << value; }
    Bytes &string(const QByteArray &text) { return u64(static_cast<quint64>(text.size())).raw(text); }

    Bytes &header(quint32 version, quint64 tensors, quint64 values)
    {
        return raw("GGUF").u32(version).u64(tensors).u64(values);
    }
    Bytes &text(const QByteArray &key, const QByteArray &value)
    {
        return string(key).u32(typeString).string(value);
    }
    Bytes &number(const QByteArray &key, quint32 value) { return string(key).u32(typeUnsigned32).u32(value); }
    Bytes &texts(const QByteArray &key, const QList<QByteArray> &values)
    {
        string(key).u32(typeArray).u32(typeString).u64(static_cast<quint64>(values.size()));
        for (const QByteArray &value : values)
            string(value);
        return *this;
    }
    Bytes &tensor(const QByteArray &name, quint64 offset)
    {
        return string(name).u32(1).u64(8).u32(0).u64(offset);
    }
    Bytes &data(qsizetype size)
    {
        const qsizetype padding = (32 - m_bytes.size() % 32) % 32;
        return raw(QByteArray(padding + size, 'w'));
    }

    QByteArray bytes() const { return m_bytes; }

private:
    template <typename Number>
    Bytes &operator<<(Number value)
    {
        m_stream << value;
        return *this;
    }

    QByteArray m_bytes;
    QDataStream m_stream{&m_bytes, QIODevice::WriteOnly};
};

// A small consistent file.
QByteArray goodFile(quint32 version = 3)
{
    return Bytes()
        .header(version, 2, 4)
        .text("general.architecture", "llama")
        .number("general.alignment", 32)
        .texts("tokenizer.ggml.tokens", {"<s>", "a", "", ""})
        .texts("tokenizer.ggml.merges", {"a a", "a a"})
        .tensor("output.weight", 0)
        .tensor("output_norm.weight", 32)
        .data(64)
        .bytes();
}

} // namespace

// The check of a model file before llama.cpp loads it.
class GgufFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFileGetsItsVerdict_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Verdict>("verdict");
        QTest::newRow("good") << goodFile() << Verdict::Plausible;
        QTest::newRow("version 2") << goodFile(2) << Verdict::Plausible;
        QTest::newRow("empty file") << QByteArray() << Verdict::NotGguf;
        QTest::newRow("three bytes") << QByteArray("GGU") << Verdict::NotGguf;
        QTest::newRow("another kind of file") << QByteArray("PK\3\4 is no model") << Verdict::NotGguf;
        QTest::newRow("version 1") << goodFile(1) << Verdict::UnknownVersion;
        QTest::newRow("version 4") << goodFile(4) << Verdict::UnknownVersion;
        QTest::newRow("the other byte order") << goodFile(0x03000000) << Verdict::UnknownVersion;
        QTest::newRow("magic only") << QByteArray("GGUF") << Verdict::CutShort;
        QTest::newRow("no metadata and no tensors") << Bytes().header(3, 0, 0).bytes() << Verdict::NoModel;
        QTest::newRow("no tensors") << Bytes().header(3, 0, 1).text("general.architecture", "llama").bytes()
                                    << Verdict::NoModel;
        QTest::newRow("no architecture")
            << Bytes().header(3, 1, 0).tensor("output.weight", 0).data(32).bytes() << Verdict::NoModel;
        QTest::newRow("more tensors than bytes") << Bytes().header(3, ~0ULL, 0).bytes() << Verdict::CutShort;
        QTest::newRow("more values than bytes")
            << Bytes().header(3, 0, 1ULL << 62).bytes() << Verdict::CutShort;
    }

    void everyFileGetsItsVerdict() { compareVerdict(); }

    void everyContradictionIsFound_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Verdict>("verdict");
        const QByteArray longEnough(100, 'x');
        QTest::newRow("text longer than the file")
            << Bytes().header(3, 0, 1).string("key").u32(typeString).u64(1ULL << 63).raw(longEnough).bytes()
            << Verdict::CutShort;
        QTest::newRow("array longer than the file") << Bytes()
                                                           .header(3, 0, 1)
                                                           .string("key")
                                                           .u32(typeArray)
                                                           .u32(typeUnsigned32)
                                                           .u64(~0ULL)
                                                           .raw(longEnough)
                                                           .bytes()
                                                    << Verdict::CutShort;
        QTest::newRow("texts beyond the end") << Bytes()
                                                     .header(3, 0, 1)
                                                     .string("key")
                                                     .u32(typeArray)
                                                     .u32(typeString)
                                                     .u64(1ULL << 40)
                                                     .raw(longEnough)
                                                     .bytes()
                                              << Verdict::CutShort;
        QTest::newRow("unknown type of value")
            << Bytes().header(3, 0, 1).string("key").u32(13).raw(longEnough).bytes() << Verdict::Malformed;
        QTest::newRow("array of arrays") << Bytes()
                                                .header(3, 0, 1)
                                                .string("key")
                                                .u32(typeArray)
                                                .u32(typeArray)
                                                .u64(1)
                                                .raw(longEnough)
                                                .bytes()
                                         << Verdict::Malformed;
        QTest::newRow("alignment of nought")
            << Bytes().header(3, 0, 1).number("general.alignment", 0).bytes() << Verdict::Malformed;
        QTest::newRow("alignment of no power of two")
            << Bytes().header(3, 0, 1).number("general.alignment", 24).bytes() << Verdict::Malformed;
        QTest::newRow("no layers") << Bytes().header(3, 0, 1).number("llama.block_count", 0).bytes()
                                   << Verdict::Malformed;
        QTest::newRow("too many layers")
            << Bytes().header(3, 0, 1).number("llama.block_count", 513).bytes() << Verdict::Malformed;
        QTest::newRow("most layers") << Bytes()
                                            .header(3, 1, 2)
                                            .text("general.architecture", "llama")
                                            .number("llama.block_count", 512)
                                            .tensor("t", 0)
                                            .data(32)
                                            .bytes()
                                     << Verdict::Plausible;
        QTest::newRow("a token twice")
            << Bytes().header(3, 0, 1).texts("tokenizer.ggml.tokens", {"a", "b", "a"}).bytes()
            << Verdict::Malformed;
        QTest::newRow("tensor with five dimensions")
            << Bytes().header(3, 1, 0).string("t").u32(5).raw(longEnough).bytes() << Verdict::Malformed;
        QTest::newRow("tensor of negative size")
            << Bytes().header(3, 1, 0).string("t").u32(1).u64(~0ULL).u32(0).u64(0).data(64).bytes()
            << Verdict::Malformed;
        QTest::newRow("tensor behind the end")
            << Bytes().header(3, 1, 0).tensor("t", 64).data(64).bytes() << Verdict::CutShort;
        QTest::newRow("tensor over the end")
            << Bytes().header(3, 1, 0).tensor("t", 0).data(31).bytes() << Verdict::CutShort;
        QTest::newRow("more elements than can be counted") << Bytes()
                                                                  .header(3, 1, 0)
                                                                  .string("t")
                                                                  .u32(2)
                                                                  .u64(1ULL << 40)
                                                                  .u64(1ULL << 40)
                                                                  .u32(0)
                                                                  .u64(0)
                                                                  .data(64)
                                                                  .bytes()
                                                           << Verdict::Malformed;
        QTest::newRow("more bytes than can be counted")
            << Bytes().header(3, 1, 0).string("t").u32(1).u64(1ULL << 62).u32(0).u64(0).data(64).bytes()
            << Verdict::Malformed;
        QTest::newRow("offset that cannot be counted")
            << Bytes().header(3, 1, 0).tensor("t", ~0ULL).data(64).bytes() << Verdict::Malformed;
        QTest::newRow("type that nobody knows") << Bytes()
                                                       .header(3, 1, 1)
                                                       .text("general.architecture", "llama")
                                                       .string("t")
                                                       .u32(1)
                                                       .u64(8)
                                                       .u32(~0U)
                                                       .u64(0)
                                                       .data(64)
                                                       .bytes()
                                                << Verdict::Plausible;
        QTest::newRow("no data") << Bytes().header(3, 1, 0).tensor("t", 0).bytes() << Verdict::CutShort;
    }

    void everyContradictionIsFound() { compareVerdict(); }

    void aFileThatWasCutIsNeverPlausible()
    {
        const QByteArray whole = goodFile();
        for (qsizetype length = 0; length < whole.size(); ++length)
            QVERIFY2(examined(whole.first(length)) != Verdict::Plausible,
                     qPrintable(QString::number(length)));
    }

    void aMissingFileIsUnreadable()
    {
        QCOMPARE(GgufFile::examine(m_folder.filePath(u"none.gguf"_s)), Verdict::Unreadable);
    }

    void aFolderIsUnreadable() { QCOMPARE(GgufFile::examine(m_folder.path()), Verdict::Unreadable); }

private:
    Verdict examined(const QByteArray &bytes)
    {
        QFile file(m_folder.filePath(u"model.gguf"_s));
        if (!file.open(QFile::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("The file could not be written");
        file.close();
        return GgufFile::examine(file.fileName());
    }

    void compareVerdict()
    {
        QFETCH(QByteArray, bytes);
        QTEST(examined(bytes), "verdict");
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(GgufFileTest)
#include "GgufFileTest.moc"
