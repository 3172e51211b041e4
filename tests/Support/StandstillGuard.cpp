// SPDX-License-Identifier: Apache-2.0
// Watches the main thread of an unmodified program. Preloaded, it starts with the program's first window,
// writes "watching" into the file named by ORVANE_STANDSTILLS, then the milliseconds of each standstill, one
// per line. The time before the first window does not count.
#include "Support/StandstillWatch.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>

#include <memory>

namespace {

void append(const QString &path, const QByteArray &line)
{
    QFile file(path);
    if (file.open(QIODevice::Append))
        file.write(line + '\n');
}

class Guard : public QObject
{
public:
    Guard(const QString &path, QObject *parent) : QObject(parent), m_path(path)
    {
        QObject::connect(qApp, &QCoreApplication::aboutToQuit, this, [this] { m_watch.reset(); });
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Expose) {
            qApp->removeEventFilter(this);
            QMetaObject::invokeMethod(
                this, [this] { begin(); }, Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void begin()
    {
        append(m_path, "watching");
        const auto report = [path = m_path](StandstillWatch::Duration asleep) {
            const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(asleep);
            append(path, QByteArray::number(milliseconds.count()));
        };
        m_watch = std::make_unique<StandstillWatch>(report);
    }

    QString m_path;
    std::unique_ptr<StandstillWatch> m_watch;
};

void guard()
{
    const QString path = qEnvironmentVariable("ORVANE_STANDSTILLS");
    qunsetenv("ORVANE_STANDSTILLS"); // child processes are not watched
    qunsetenv("LD_PRELOAD");
    if (!path.isEmpty())
        qApp->installEventFilter(new Guard(path, qApp));
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(guard)
