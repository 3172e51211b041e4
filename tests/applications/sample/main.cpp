// SPDX-License-Identifier: Apache-2.0
// A small Qt Quick application for the tests. Arguments: [--keys FILE] [DOCUMENT]. With "--keys", the key
// field has the focus and a line is added to FILE for each key pressed in it.
#include "KeyReport.h"
#include "SampleDocument.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QQmlApplicationEngine>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(u"orvane-desktop-sample"_s);
    QCommandLineParser arguments;
    const QCommandLineOption keys(u"keys"_s, u"Where to report keys."_s, u"FILE"_s);
    arguments.addOption(keys);
    arguments.process(application);

    SampleDocument document(arguments.positionalArguments().value(0));
    KeyReport report(arguments.value(keys));
    QQmlApplicationEngine engine;
    engine.addImportPath(u"qrc:/qt/qml"_s);
    engine.setInitialProperties(
        {{u"document"_s, QVariant::fromValue(&document)}, {u"report"_s, QVariant::fromValue(&report)}});
    engine.load(u"qrc:/qt/qml/Orvane/DesktopSample/SampleWindow.qml"_s);
    return engine.rootObjects().isEmpty() ? EXIT_FAILURE : QGuiApplication::exec();
}
