// SPDX-License-Identifier: Apache-2.0
// A Qt Widgets window with a button whose press action is its last, and a menu whose only action shows it. A
// label displays the performed action.
#include <QAccessibleWidget>
#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

const QString buttonName = u"Save"_s;
QLabel *told = nullptr; // owned by the window

class ButtonPressedLast : public QAccessibleWidget
{
public:
    explicit ButtonPressedLast(QWidget *widget) : QAccessibleWidget(widget, QAccessible::Button, buttonName)
    {
    }

    QStringList actionNames() const override { return {showMenuAction(), setFocusAction(), pressAction()}; }
    void doAction(const QString &action) override { told->setText(action); }
};

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    const bool isButton = object->objectName() == buttonName;
    return isButton ? new ButtonPressedLast(static_cast<QWidget *>(object)) : nullptr;
}

} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    QAccessible::installFactory(makeInterface);
    QMainWindow window;
    auto *contents = new QWidget;
    auto *layout = new QVBoxLayout(contents);
    told = new QLabel(u"Nothing yet"_s);
    auto *button = new QWidget;
    button->setObjectName(buttonName);
    layout->addWidget(told);
    layout->addWidget(button);
    const QMenu *menu = window.menuBar()->addMenu(u"Tools"_s);
    QObject::connect(menu, &QMenu::aboutToShow, told, [] { told->setText(u"Menu"_s); });
    window.setCentralWidget(contents);
    window.show();
    return QApplication::exec();
}
