// SPDX-License-Identifier: Apache-2.0
#include "Inference/Llama/EngineFixture.h"

#include <QSemaphore>
#include <QTest>

#include <llama.h>

#include <memory>

#include <sys/resource.h>

using namespace Qt::StringLiterals;
using Code = InferenceError::Code;

namespace {

const QString processSizePath = u"/proc/self/statm"_s;

// A model whose reply is one letter.
TinyModel modelSaying(char letter)
{
    TinyModel model;
    model.reply({TinyModel::byteToken(letter)});
    return model;
}

// Limits the process's memory to its current use plus `bytes`.
class MemoryLimit
{
public:
    explicit MemoryLimit(rlim_t spareBytes)
    {
        getrlimit(RLIMIT_AS, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = usedBytes() + spareBytes;
        setrlimit(RLIMIT_AS, &limit);
    }
    ~MemoryLimit() { setrlimit(RLIMIT_AS, &m_before); }
    MemoryLimit(const MemoryLimit &) = delete;
    MemoryLimit &operator=(const MemoryLimit &) = delete;

private:
    static rlim_t usedBytes()
    {
        QFile file(processSizePath);
        if (!file.open(QFile::ReadOnly))
            qFatal("The process's size is not known");
        return file.readAll().split(' ').first().toULong() * 4096;
    }

    rlimit m_before = {};
};

// Signals the library's first log message and delays the messages, so that a test can act during a load.
class SlowLibraryLog
{
public:
    SlowLibraryLog()
    {
        LlamaLog::keep(LlamaLog::Kept::Errors);
        llama_log_get(&m_before, &m_beforeData);
        const auto pass = [](ggml_log_level, const char *, void *begun) {
            static_cast<QSemaphore *>(begun)->release();
            QThread::msleep(2);
        };
        llama_log_set(pass, &m_begun);
    }
    // No engine is there any more.
    ~SlowLibraryLog() { llama_log_set(m_before, m_beforeData); }
    SlowLibraryLog(const SlowLibraryLog &) = delete;
    SlowLibraryLog &operator=(const SlowLibraryLog &) = delete;

    bool waitForAMessage() const { return m_begun.tryAcquire(1, Awaited::timeoutMilliseconds); }

private:
    mutable QSemaphore m_begun;
    ggml_log_callback m_before = nullptr;
    void *m_beforeData = nullptr;
};

} // namespace

// Loading, replacing and releasing models.
class LlamaEngineLoadingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void generateBeforeLoadThrowsNotLoaded()
    {
        EngineFixture fixture;
        QVERIFY(!fixture.engine().isLoaded());
        try {
            fixture.reply(10);
            QFAIL("There was a reply");
        } catch (const LocalizedError &error) {
            QCOMPARE(error.errorDescription(), u"The language model isn't loaded yet."_s);
        }
    }

    void aModelFileIsLoaded()
    {
        EngineFixture fixture;
        fixture.load(modelSaying('a'));
        QVERIFY(fixture.engine().isLoaded());
        QCOMPARE(fixture.reply(10), u"a"_s);
    }

    void aModelThatWouldMakeTheMachineSwapIsNotLoaded()
    {
        std::optional<qint64> free = 1'000'000;
        EngineFixture fixture({}, [&free] { return free; });
        try {
            fixture.load(modelSaying('a'));
            QFAIL("It was loaded");
        } catch (const InferenceError &error) {
            QVERIFY(error.code() == Code::TooLittleMemory);
        }
        QVERIFY(!fixture.engine().isLoaded());

        free = 1'000'000'000;
        fixture.load(modelSaying('a'));
        QCOMPARE(fixture.reply(10), u"a"_s);
    }

    void aModelIsLoadedWhereTheFreeMemoryIsUnknown()
    {
        EngineFixture fixture({}, [] { return std::nullopt; });
        fixture.load(modelSaying('a'));
        QVERIFY(fixture.engine().isLoaded());
    }

    void aSecondLoadReplacesTheModel()
    {
        EngineFixture fixture;
        fixture.load(modelSaying('a'));
        fixture.load(modelSaying('b'));
        QVERIFY(fixture.engine().isLoaded());
        QCOMPARE(fixture.reply(10), u"b"_s);
    }

    void aFileThatIsNoModelLeavesNothingLoaded_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QString path = m_folder.filePath(u"whole.gguf"_s);
        modelSaying('a').write(path);
        QFile file(path);
        QVERIFY(file.open(QFile::ReadOnly));
        const QByteArray whole = file.readAll();
        QByteArray unknownVersion = whole;
        unknownVersion[4] = 9;
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("This is no model.");
        QTest::newRow("cut in its header") << whole.first(12);
        QTest::newRow("cut in its metadata") << whole.first(2000);
        QTest::newRow("cut in its weights") << whole.first(whole.size() / 2);
        QTest::newRow("one byte short") << whole.chopped(64);
        QTest::newRow("unknown version") << unknownVersion;
        QTest::newRow("metadata of another kind of file")
            << QByteArray("GGUF\3\0\0\0", 8) + QByteArray(16, '\0');
    }

    void aFileThatIsNoModelLeavesNothingLoaded()
    {
        QFETCH(QByteArray, bytes);
        EngineFixture fixture;
        fixture.load(modelSaying('a'));
        const QString path = fixture.filePath(u"broken.gguf"_s);
        QFile file(path);
        QVERIFY(file.open(QFile::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
        file.close();
        QCOMPARE(loadFailure(fixture, path), Code::LoadFailed);
        QVERIFY(!fixture.engine().isLoaded());
        QCOMPARE(fixture.failureOf([&] { fixture.reply(10); }), Code::NotLoaded);
    }

    void aMissingFileLeavesNothingLoaded()
    {
        EngineFixture fixture;
        fixture.load(modelSaying('a'));
        QCOMPARE(loadFailure(fixture, fixture.filePath(u"missing.gguf"_s)), Code::LoadFailed);
        QVERIFY(!fixture.engine().isLoaded());
    }

    void theLogSaysWhyAFileWasRefused()
    {
        EngineFixture fixture;
        const QString path = fixture.filePath(u"missing.gguf"_s);
        const QString message = u"Not loaded: "_s + path + u" The file cannot be read."_s;
        QTest::ignoreMessage(QtWarningMsg, qPrintable(message));
        QCOMPARE(loadFailure(fixture, path), Code::LoadFailed);
    }

    void aLoadAfterAFailureSucceeds()
    {
        EngineFixture fixture;
        QCOMPARE(loadFailure(fixture, u"/"_s), Code::LoadFailed);
        fixture.load(modelSaying('a'));
        QCOMPARE(fixture.reply(10), u"a"_s);
    }

    void tooLittleMemoryForTheContextLeavesNothingLoaded()
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        QSKIP("The sanitizer needs the address space itself");
#endif
        if (!QFile::exists(processSizePath))
            QSKIP("The process's size is not known on this system");
        EngineFixture fixture;
        fixture.load(modelSaying('a'));
        TinyModel model = modelSaying('b');
        model.setHeadSize(8192); // 128 MiB of KV cache
        const QString path = fixture.filePath(u"wide.gguf"_s);
        model.write(path);
        {
            const MemoryLimit limit(rlim_t(100) << 20);
            QCOMPARE(loadFailure(fixture, path), Code::ContextFailed);
        }
        QVERIFY(!fixture.engine().isLoaded());
        Awaited::result(fixture.engine().load(path));
        QCOMPARE(fixture.reply(10), u"b"_s);
    }

    void aModelWithoutVocabularyCannotGenerate()
    {
        EngineFixture fixture;
        TinyModel model;
        model.setVocabulary(TinyModel::Vocabulary::None);
        fixture.load(model);
        QCOMPARE(fixture.failureOf([&] { fixture.reply(10); }), Code::NotLoaded);
    }

    // As when the user quits during a load of gigabytes.
    void destructionEndsALoadEarly()
    {
        const QString path = m_folder.filePath(u"model.gguf"_s);
        modelSaying('a').write(path);
        auto engine = std::make_unique<LlamaEngine>();
        const SlowLibraryLog log;
        QCoro::Task<void> load = engine->load(path);
        QVERIFY(log.waitForAMessage());
        engine.reset();
        QCOMPARE(EngineFixture::failureOf([&] { Awaited::result(std::move(load)); }), Code::LoadFailed);
    }

    void unloadReturnsAtOnceAndReleasesInItsTurn()
    {
        EngineFixture fixture;
        fixture.load(modelSaying('a'));
        fixture.engine().unload();
        QTRY_VERIFY(!fixture.engine().isLoaded());
        QCOMPARE(fixture.failureOf([&] { fixture.reply(10); }), Code::NotLoaded);
        fixture.engine().unload();
        fixture.load(modelSaying('b'));
        QCOMPARE(fixture.reply(10), u"b"_s);
    }

private:
    static std::optional<Code> loadFailure(EngineFixture &fixture, const QString &path)
    {
        return EngineFixture::failureOf([&] { Awaited::result(fixture.engine().load(path)); });
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(LlamaEngineLoadingTest)
#include "LlamaEngineLoadingTest.moc"
