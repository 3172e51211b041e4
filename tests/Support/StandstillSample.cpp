// SPDX-License-Identifier: Apache-2.0
// A program with a window. Sleeps for given milliseconds before it shows the window and again later, then
// ends.
#include <QGuiApplication>
#include <QRasterWindow>
#include <QTimer>

#include <chrono>
#include <thread>

namespace {

void sleep(const char *milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(QByteArray(milliseconds).toInt()));
}

} // namespace

int main(int argc, char *argv[])
{
    using namespace std::chrono_literals;
    const QGuiApplication application(argc, argv);
    if (argc < 3)
        return 1;
    QRasterWindow window;
    QTimer::singleShot(0, [&window, argv] {
        sleep(argv[1]);
        window.show();
    });
    QTimer::singleShot(1500ms, [argv] { sleep(argv[2]); });
    QTimer::singleShot(2500ms, &application, &QCoreApplication::quit);
    return QCoreApplication::exec();
}
