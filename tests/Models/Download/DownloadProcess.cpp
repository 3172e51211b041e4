// SPDX-License-Identifier: Apache-2.0
// Downloads one file and prints its progress, as a second process for tests, which may kill it:
//     DownloadProcess URL DOWNLOADS_DIRECTORY
#include "Models/Download/HttpDownloadSession.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

class PrintingDelegate : public DownloadDelegate
{
public:
    void downloadProgressed(quint64 /*task*/, qint64 written, qint64 /*expected*/) override
    {
        print(QByteArray::number(written));
    }

    void downloadFinished(const FinishedDownload & /*download*/) override { print("finished"); }

    void downloadEnded(quint64 /*task*/, const std::optional<DownloadError> &error) override
    {
        print(error ? error->message.toUtf8() : QByteArray("ended"));
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    }

private:
    static void print(const QByteArray &line)
    {
        std::puts(line.constData());
        std::fflush(stdout);
    }
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    PrintingDelegate delegate;
    HttpDownloadSession session(arguments.value(2));
    session.setDelegate(&delegate);
    session.start({QUrl(arguments.value(1)), 0});
    return QCoreApplication::exec();
}
