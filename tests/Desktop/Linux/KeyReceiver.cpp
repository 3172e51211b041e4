// SPDX-License-Identifier: Apache-2.0
// The target application of the keyboard tests: prints one line per key event. A line contains "press" or
// "release", Qt's key and modifiers in hexadecimal, the text's UTF-8 bytes in hexadecimal, and the keycode.
// With Ctrl+V it pastes, and prints "paste" and the text's UTF-8 bytes in hexadecimal. Opens a window for
// each argument, its title.
#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QRasterWindow>

#include <cstdio>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

void tell(const QString &line)
{
    std::fputs((line + u'\n').toUtf8().constData(), stdout);
    std::fflush(stdout);
}

class ReceivingWindow : public QRasterWindow
{
protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        tell(u"press"_s, *event);
        if (event->matches(QKeySequence::Paste))
            ::tell(u"paste "_s + QString::fromLatin1(QGuiApplication::clipboard()->text().toUtf8().toHex()));
    }
    void keyReleaseEvent(QKeyEvent *event) override { tell(u"release"_s, *event); }

private:
    static void tell(const QString &what, const QKeyEvent &event)
    {
        ::tell(u"%1 %2 %3 %4 %5"_s.arg(
            what, QString::number(event.key(), 16), QString::number(event.modifiers(), 16),
            QString::fromLatin1(event.text().toUtf8().toHex()), QString::number(event.nativeScanCode())));
    }
};

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    std::vector<std::unique_ptr<ReceivingWindow>> windows;
    for (const QString &title : QGuiApplication::arguments().sliced(1)) {
        windows.push_back(std::make_unique<ReceivingWindow>());
        windows.back()->setTitle(title);
        windows.back()->resize(300, 200);
        windows.back()->show();
    }
    return QGuiApplication::exec();
}
