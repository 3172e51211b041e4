// SPDX-License-Identifier: Apache-2.0
#include "Inference/Llama/LlamaLog.h"

#include <QTest>

#include <llama.h>

using namespace Qt::StringLiterals;
using LlamaLog::Kept;

namespace {

ggml_log_callback callback()
{
    ggml_log_callback current = nullptr;
    void *data = nullptr;
    llama_log_get(&current, &data);
    return current;
}

void say(ggml_log_level level, const char *text)
{
    callback()(level, text, nullptr);
}

} // namespace

// Filtering of the library's log.
class LlamaLogTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The library reads the callback without a lock, on any thread.
    void theLibrarysLogIsTakenOverOnce()
    {
        LlamaLog::keep(Kept::Errors);
        const ggml_log_callback first = callback();
        for (const Kept kept : {Kept::Nothing, Kept::Everything, Kept::Errors}) {
            LlamaLog::keep(kept);
            QVERIFY(callback() == first);
        }
    }

    void errorsGoThroughOurLog()
    {
        LlamaLog::keep(Kept::Errors);
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        say(GGML_LOG_LEVEL_INFO, "loading\n");
        QTest::ignoreMessage(QtWarningMsg, "out of memory");
        say(GGML_LOG_LEVEL_ERROR, "out of memory\n");
    }

    void nothingIsSaidAtTheEnd()
    {
        LlamaLog::keep(Kept::Nothing);
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        say(GGML_LOG_LEVEL_ERROR, "aborted\n");
    }
};

QTEST_GUILESS_MAIN(LlamaLogTest)
#include "LlamaLogTest.moc"
