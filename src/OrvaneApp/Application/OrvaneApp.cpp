// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/Application/OrvaneApp.h"

#include "ContentView/Window/MainWindow.h"
#include "Desktop/PlatformError.h"
#include "OrvaneApp/Application/HotKey.h"

#include <QGuiApplication>
#include <QtQml/QQmlExtensionPlugin>

using namespace Qt::StringLiterals;

Q_IMPORT_QML_PLUGIN(Orvane_ContentViewPlugin)

OrvaneApp::OrvaneApp(ModelManager &models, const Desktop &desktop, const Shell &shell,
                     ProgramInstance &instance, IdleModel::Patience patience, QObject *parent)
    : QObject(parent), m_shell(shell), m_session(models, desktop),
      m_activityReport(models, m_session, shell.activity),
      m_idleModel(models, m_session, std::move(patience)), m_content(models, m_session, desktop),
      m_delegate(shell, instance)
{
    // Not QCoreApplication::quit, which closes the windows first, and ours only hides.
    connect(&m_engine, &QQmlEngine::quit, qApp, [] { QCoreApplication::exit(); });
}

OrvaneApp::~OrvaneApp() = default;

void OrvaneApp::start(AppDelegate::StartUp startUp)
{
    loadWindow();
    followTheDesktop();
    connect(&HotKey::shared(), &HotKey::summonPalette, &m_content, &ContentViewModel::summoned);
    m_delegate.applicationDidFinishLaunching(startUp);
}

void OrvaneApp::loadWindow()
{
    m_window = MainWindow::make(m_engine, m_content,
                                {{u"dark"_s, m_shell.appearance.isDark()},
                                 {u"translucent"_s, m_shell.windowStyler.isCompositing()},
                                 {u"titleBarHeight"_s, m_shell.windowStyler.titleBarHeight()}});
    if (!m_window)
        throw PlatformError(u"The window's views cannot be loaded; is this installation complete?"_s);
    m_window->installEventFilter(this);
    // Load the model only when the window is shown: a start in the background may last for days and should
    // not hold the model in memory.
    connect(m_window.get(), &QWindow::visibleChanged, &m_content, &ContentViewModel::appear,
            Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
    m_shell.windowStyler.style(*m_window);
}

void OrvaneApp::followTheDesktop()
{
    Appearance &appearance = m_shell.appearance;
    connect(&appearance, &Appearance::isDarkChanged, m_window.get(),
            [this, &appearance] { m_window->setProperty("dark", appearance.isDark()); });
    WindowStyler &styler = m_shell.windowStyler;
    connect(&styler, &WindowStyler::isCompositingChanged, m_window.get(),
            [this, &styler] { m_window->setProperty("translucent", styler.isCompositing()); });
    connect(&m_shell.menuBar, &MenuBar::clearHistoryChosen, &m_content, &ContentViewModel::clearHistory);
    connect(qApp, &QGuiApplication::applicationStateChanged, &m_content, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            m_content.becameActive();
    });
}

bool OrvaneApp::eventFilter(QObject *object, QEvent *event)
{
    if (object != m_window.get() || event->type() != QEvent::Close)
        return QObject::eventFilter(object, event);
    // Hide only, so that the hot key and a running task survive.
    m_window->hide();
    event->ignore();
    return true;
}
