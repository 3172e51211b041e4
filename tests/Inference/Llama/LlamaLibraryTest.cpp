// SPDX-License-Identifier: Apache-2.0
#include "Inference/Llama/LlamaLibrary.h"

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class LlamaLibraryTest : public QObject
{
    Q_OBJECT

    QProcessEnvironment m_environment; // before initialisation

private Q_SLOTS:
    void initTestCase()
    {
        LlamaLibrary::prepareEnvironment();
        m_environment = QProcessEnvironment::systemEnvironment();
    }

    // The library's default plug-in folder. Must run first, since back ends are loaded once.
    void nothingOfTheCurrentFolderIsLoaded()
    {
        const QFile plugIn(QStringLiteral(ORVANE_LLAMA_BACK_ENDS "/libggml-blas.so"));
        if (!plugIn.exists())
            QSKIP("There is no back end here that is a plug-in and not needed");
        const QTemporaryDir folder;
        QVERIFY(QFile::copy(plugIn.fileName(), folder.filePath(u"libggml-rpc.so"_s)));
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder.path()));
        QStringList devices = LlamaLibrary::describe().devices;
        QVERIFY(QDir::setCurrent(before));
        QVERIFY(devices.size() > 1);
        QCOMPARE(devices.removeDuplicates(), 0);
    }

    // Other threads may be reading the environment.
    void initialisingLeavesTheEnvironmentAlone()
    {
        LlamaLibrary::describe();
        QCOMPARE(QProcessEnvironment::systemEnvironment(), m_environment);
    }

    void theBuildAndTheDevicesAreNamed()
    {
        const LlamaLibrary::Description description = LlamaLibrary::describe();
        static const QRegularExpression version(u"^ggml \\d+\\.\\d+\\.\\d+(, commit \\S+)?$"_s);
        QVERIFY2(version.match(description.build).hasMatch(), qPrintable(description.build));
        // The CPU is always a device.
        const QStringList processors = description.devices.filter(u"CPU"_s);
        QVERIFY2(!processors.isEmpty(), qPrintable(description.devices.join(u'\n')));
    }

    void describingTwiceGivesTheSame()
    {
        const LlamaLibrary::Description first = LlamaLibrary::describe();
        const LlamaLibrary::Description second = LlamaLibrary::describe();
        QCOMPARE(second.build, first.build);
        QCOMPARE(second.devices, first.devices);
    }
};

QTEST_GUILESS_MAIN(LlamaLibraryTest)
#include "LlamaLibraryTest.moc"
