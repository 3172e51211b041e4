// SPDX-License-Identifier: Apache-2.0
// A Qt Quick application that shows the QML file given as its argument.
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QUrl>

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    const QQmlApplicationEngine engine(QUrl::fromLocalFile(QGuiApplication::arguments().value(1)));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
