// SPDX-License-Identifier: Apache-2.0
#include "ui/support/WindowDriver.h"

#include "Models/LocalModel.h"
#include "applications/support/PrivateDesktop.h"
#include "ui/support/Pointer.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <algorithm>
#include <csignal>

using namespace Qt::StringLiterals;

namespace {

using State = AccessibleElement::State;

constexpr auto fieldName = "Tell your computer what to do…";

constexpr QByteArrayView watching = "watching\n"; // the guard's first line

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool eventually(const std::function<bool()> &condition)
{
    return QTest::qWaitFor(condition, PrivateDesktop::patience);
}

std::optional<int> statusOnceEnded(QProcess &process)
{
    if (!eventually([&] { return process.state() == QProcess::NotRunning; }) ||
        process.exitStatus() != QProcess::NormalExit)
        return std::nullopt;
    return process.exitCode();
}

} // namespace

WindowDriver::WindowDriver()
{
    m_environment.insert(u"ORVANE_HOME"_s, m_folder.path());
    m_environment.insert(u"LD_PRELOAD"_s, QStringLiteral(ORVANE_STANDSTILL_GUARD));
    m_environment.insert(u"ORVANE_STANDSTILLS"_s, standstillsPath());
    QDir().mkpath(QFileInfo(modelPath()).path());
}

WindowDriver::~WindowDriver()
{
    if (!isRunning())
        return;
    m_program->terminate();
    if (!eventually([this] { return !isRunning(); })) {
        m_program->kill();
        m_program->waitForFinished();
    }
}

void WindowDriver::setVariable(const QString &name, const QString &value)
{
    if (value.isNull())
        m_environment.remove(name);
    else
        m_environment.insert(name, value);
}

QString WindowDriver::modelPath() const
{
    return m_folder.filePath(u"Orvane/Models/"_s + LocalModel::catalog().constFirst().fileName);
}

void WindowDriver::installPracticeModel()
{
    QFile::remove(modelPath());
    if (!QFile::copy(QStringLiteral(ORVANE_PRACTICE_MODEL), modelPath()))
        qFatal("the practice model cannot be put in its place");
}

std::unique_ptr<QProcess> WindowDriver::begun(const QStringList &arguments) const
{
    auto program = std::make_unique<QProcess>();
    program->setProcessEnvironment(m_environment);
    program->setProcessChannelMode(QProcess::ForwardedChannels);
    if (!m_errorFile.isNull()) {
        program->setProcessChannelMode(QProcess::ForwardedOutputChannel);
        program->setStandardErrorFile(m_errorFile);
    }
    program->start(QStringLiteral(ORVANE_PROGRAM), arguments);
    return program;
}

bool WindowDriver::start(const QStringList &arguments)
{
    m_program = begun(arguments);
    if (!m_program->waitForStarted())
        return false;
    m_accessible.emplace(process());
    return true;
}

bool WindowDriver::startShown()
{
    return start() && waitForActive() && waitForFocus(QString::fromUtf8(fieldName)) &&
           eventually([this] { return isWatched(); });
}

bool WindowDriver::waitForWindow()
{
    const auto isWindow = [](const AccessibleElement &element) { return element.role == "frame"_L1; };
    return eventually([&] { return std::ranges::any_of(m_accessible->elements(), isWindow); });
}

void WindowDriver::signal(int number) const
{
    ::kill(static_cast<pid_t>(process()), number);
}

bool WindowDriver::isWatched() const
{
    return contentsOf(standstillsPath()).startsWith(watching);
}

QByteArray WindowDriver::standstills() const
{
    return contentsOf(standstillsPath()).replace(watching, "");
}

std::optional<int> WindowDriver::waitForEnd()
{
    return statusOnceEnded(*m_program);
}

std::optional<int> WindowDriver::startOnceMore(const QStringList &arguments)
{
    const std::unique_ptr<QProcess> another = begun(arguments);
    const std::optional<int> status = statusOnceEnded(*another);
    another->kill();
    another->waitForFinished();
    return status;
}

QList<AccessibleElement> WindowDriver::shown()
{
    QList<AccessibleElement> elements;
    if (isRunning() && m_accessible)
        elements = m_accessible->elements();
    // On Wayland, a program doesn't know where its window is.
    if (const auto own = window(); own && Screen::session() != Screen::Session::X11) {
        for (AccessibleElement &element : elements)
            element.area.translate(own->area.topLeft());
    }
    elements.removeIf([](const AccessibleElement &element) { return !element.has(State::Showing); });
    return elements;
}

std::optional<AccessibleElement> WindowDriver::find(const QString &role, const QString &name)
{
    const auto elements = shown();
    const auto found = std::ranges::find_if(elements, [&](const AccessibleElement &element) {
        return element.role == role && element.name == name;
    });
    return found == elements.end() ? std::nullopt : std::optional(*found);
}

bool WindowDriver::waitFor(const QString &role, const QString &name)
{
    return eventually([&] { return shows(role, name); });
}

bool WindowDriver::waitForNone(const QString &role, const QString &name)
{
    return eventually([&] { return !shows(role, name); });
}

QStringList WindowDriver::texts()
{
    QStringList found;
    for (const AccessibleElement &element : shown()) {
        if (element.role == Role::label)
            found << element.name;
    }
    return found;
}

QString WindowDriver::focused()
{
    QString found;
    for (const AccessibleElement &element : shown()) {
        if (element.has(State::Focused))
            found = element.role + u' ' + element.name; // the innermost one
    }
    return found;
}

bool WindowDriver::waitForFocus(const QString &name)
{
    return eventually([&] { return focused().endsWith(u' ' + name); });
}

QString WindowDriver::described()
{
    QString lines;
    for (const AccessibleElement &element : shown())
        lines += u"\n%1 “%2” %3%4"_s.arg(element.role, element.name, element.description,
                                         element.has(State::Focused) ? u" (focused)"_s : QString());
    return lines;
}

bool WindowDriver::press(const QString &role, const QString &name)
{
    std::optional<AccessibleElement> control;
    const auto isThere = [&] {
        control = find(role, name);
        return control.has_value();
    };
    return eventually(isThere) && m_accessible->press(*control);
}

bool WindowDriver::click(const QString &role, const QString &name)
{
    if (!waitFor(role, name))
        return false;
    const std::optional<AccessibleElement> control = find(role, name);
    if (control)
        Pointer::click(control->area.center());
    return control.has_value();
}

QString WindowDriver::fieldText()
{
    const auto field = find(Role::field, QString::fromUtf8(fieldName));
    return field ? m_accessible->contents(*field) : QString();
}

bool WindowDriver::waitForFieldText(const QString &text)
{
    return eventually([&] { return fieldText() == text; });
}

bool WindowDriver::waitForEndOfRun()
{
    constexpr int longestRun = 240'000; // ms
    return QTest::qWaitFor([this] { return shows(Role::button, u"Send"_s); }, longestRun);
}

std::optional<ScreenWindow> WindowDriver::window() const
{
    const auto windows = Screen::windows();
    const auto found =
        std::ranges::find_if(windows, [this](const ScreenWindow &each) { return each.process == process(); });
    return found == windows.end() ? std::nullopt : std::optional(*found);
}

bool WindowDriver::isActive() const
{
    const auto active = Screen::activeWindow();
    return active && active->process == process();
}

bool WindowDriver::waitForActive() const
{
    return eventually([this] { return isActive(); });
}

bool WindowDriver::waitForInactive()
{
    const auto isActiveFrame = [](const AccessibleElement &element) { return element.has(State::Active); };
    return eventually([&] { return !isActive() && std::ranges::none_of(shown(), isActiveFrame); });
}

bool WindowDriver::waitForHidden() const
{
    return eventually([this] { return !window(); });
}
