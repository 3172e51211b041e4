// SPDX-License-Identifier: Apache-2.0
// Shows the Qt Quick window of a file: an application of that toolkit, for tests to read and press.
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QUrl>

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    const QQmlApplicationEngine engine(QUrl::fromLocalFile(QGuiApplication::arguments().value(1)));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
