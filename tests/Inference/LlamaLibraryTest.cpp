// SPDX-License-Identifier: Apache-2.0
#include "Inference/LlamaLibrary.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

class LlamaLibraryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theBuildAndTheDevicesAreNamed()
    {
        const LlamaLibrary::Description description = LlamaLibrary::describe();
        static const QRegularExpression version(u"^ggml \\d+\\.\\d+\\.\\d+(, commit \\S+)?$"_s);
        QVERIFY2(version.match(description.build).hasMatch(), qPrintable(description.build));
        // There is always a processor to compute on.
        const QStringList processors = description.devices.filter(u"CPU"_s);
        QVERIFY2(!processors.isEmpty(), qPrintable(description.devices.join(u'\n')));
    }

    void askingAgainSaysTheSame()
    {
        const LlamaLibrary::Description first = LlamaLibrary::describe();
        const LlamaLibrary::Description second = LlamaLibrary::describe();
        QCOMPARE(second.build, first.build);
        QCOMPARE(second.devices, first.devices);
    }
};

QTEST_GUILESS_MAIN(LlamaLibraryTest)
#include "LlamaLibraryTest.moc"
