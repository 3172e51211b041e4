// SPDX-License-Identifier: Apache-2.0
// What an action costs in a Wayland session, each beside a single plain way of doing the same, alternating
// with it. Needs a private desktop session; the applications are those of the typing tests.
#include "Actions/Executor.h"
#include "Desktop/Linux/Atspi/Bus.h"
#include "Desktop/Linux/Atspi/Protocol.h"
#include "Desktop/Linux/LinuxDesktop.h"
#include "Desktop/Linux/Session/LinuxProgramInstance.h"
#include "Support/Awaited.h"
#include "applications/support/AccessibleProgram.h"
#include "applications/support/LocalSite.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/Screen.h"
#include "applications/support/TextFields.h"
#include "wayland/Comparison.h"
#include "wayland/PlainWays.h"

#include <benchmark/benchmark.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QRasterWindow>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;
using namespace Comparison;

namespace {

constexpr int rounds = 15;
constexpr std::uint16_t virtualKeyS = 0x01;

// 209 characters: ASCII, accents, 120 Chinese ones, Cyrillic and emoji; only the last one is an exclamation
// mark.
QString mixedText(int round)
{
    QString text = u"Round %1: {brackets} [and] \"quotes\" ~ ^ "_s.arg(round % 10);
    text += u"Été à Łódź, žluťoučký kůň 🎉👍"_s;
    for (int index = 0; index < 120; ++index)
        text += QChar(0x4E00 + 120 * (round % 10) + index);
    return text + u"булок"_s.repeated(8).left(208 - (text.size() - 2)) + u'!';
}

LinuxDesktop &desktop()
{
    static LinuxDesktop desktop;
    return desktop;
}

void post(const KeyStroke &stroke)
{
    Desktop services = desktop().desktop();
    const auto receiver = Awaited::result(services.workspace.frontmostApplication());
    const QList<KeyStroke> strokes{stroke};
    Awaited::result(services.keyboard.post(strokes, {}, receiver));
}

// The text field with the focus, over the accessibility bus.
class Field
{
public:
    Field() : m_bus(Awaited::result(m_atspi->connection()))
    {
        const auto isFound = [this] {
            AccessibleProgram program(Screen::activeWindow()->process);
            for (const AccessibleElement &element : program.elements()) {
                if (element.role == "text"_L1 && element.has(AccessibleElement::State::Focused))
                    m_field = element.reference;
            }
            return !m_field.service.isEmpty();
        };
        require(QTest::qWaitFor(isFound, PrivateDesktop::patience), "No text field has the focus.");
    }

    QString text() const
    {
        return m_bus.call(Atspi::call(m_field, Atspi::textInterface, u"GetText"_s, {0, -1}))
            .arguments()
            .value(0)
            .toString();
    }

    void setText(const QString &text) const
    {
        m_bus.call(Atspi::call(m_field, u"org.a11y.atspi.EditableText"_s, u"SetTextContents"_s, {text}));
    }

private:
    std::shared_ptr<AtspiBus> m_atspi = std::make_shared<AtspiBus>();
    QDBusConnection m_bus;
    AtspiReference m_field;
};

// An editor with this many documents, each in its own window.
void openDocuments(const QTemporaryDir &folder, int count)
{
    QStringList arguments{u"--disable-server"_s, u"--opening-mode=window"_s};
    for (int i = 0; i < count; ++i) {
        arguments.append(folder.filePath(u"document %1.txt"_s.arg(i)));
        PrivateDesktop::write(arguments.constLast(), {});
    }
    PrivateDesktop::start(u"mousepad"_s, arguments);
    const auto areOpen = [count] { return Screen::windows().size() == count; };
    require(QTest::qWaitFor(areOpen, PrivateDesktop::patience), "The editor doesn't open its windows.");
}

void observe(benchmark::State &state)
{
    const QTemporaryDir folder(PrivateDesktop::home(u"documents"_s));
    openDocuments(folder, static_cast<int>(state.range(0)));
    const Measurement ours = [] {
        return timed([] { Awaited::result(Executor::observe(desktop().desktop())); }, [] { return true; });
    };
    const Measurement plain = [] { return timed(&PlainWays::askCompositor, [] { return true; }); };
    ours();
    compare(state, ours, plain);
    PrivateDesktop::clear();
}

void openEditor(const QString &path, const QString &program, const QString &windowClass)
{
    require(TextFields::openFile(path, "nothing typed yet", program, windowClass), "No editor opens.");
}

// The plain way is the field's own interface for editing.
void typeInEditor(benchmark::State &state, const QString &program, const QString &windowClass)
{
    openEditor(PrivateDesktop::home(u"Documents/typed.txt"_s), program, windowClass);
    const Field field;
    int round = 0;
    const auto measured = [&](const std::function<void(const QString &)> &enter) {
        const QString text = mixedText(++round);
        field.setText({});
        return timed([&] { enter(text); }, [&] { return field.text().trimmed() == text; });
    };
    const Measurement ours = [&] { return measured([](const QString &text) { post({0, {}, text}); }); };
    const Measurement plain = [&] { return measured([&](const QString &text) { field.setText(text); }); };
    compare(state, ours, plain);
    PrivateDesktop::clear();
}

// The plain way is pasting.
void typeInPage(benchmark::State &state)
{
    LocalSite site;
    // One report a text, since each costs the browser time.
    site.setPage(u"/notes"_s, u"Notes"_s,
                 u"<textarea rows='20' cols='80' autofocus onfocus=\"report('ready')\" "
                 "oninput=\"if (this.value.endsWith('!')) report(this.value)\"></textarea>"_s);
    PrivateDesktop::start(u"firefox-esr"_s, {site.address(u"/notes"_s)});
    const auto isReady = [&site] { return site.report() == "ready"_L1; };
    require(QTest::qWaitFor(isReady, PrivateDesktop::patience), "The page doesn't open.");
    int round = 0;
    const auto measured = [&](const std::function<void(const QString &)> &enter) {
        const QString text = mixedText(++round);
        Screen::pressKey(u"ctrl+a"_s);
        return timed([&] { enter(text); }, [&] { return site.report() == text; });
    };
    const Measurement ours = [&] { return measured([](const QString &text) { post({0, {}, text}); }); };
    const bool canPaste = Screen::session() != Screen::Session::Gnome;
    const Measurement pasting = [&] { return measured(&PlainWays::paste); };
    const Measurement plain = canPaste ? pasting : Measurement();
    compare(state, ours, plain);
    PrivateDesktop::clear();
}

// Saving with Ctrl+S, until the file is written. The plain way is the user's keyboard.
void pressChord(benchmark::State &state)
{
    const QString path = PrivateDesktop::home(u"Documents/saved.txt"_s);
    openEditor(path, u"mousepad"_s, u"Mousepad"_s);
    const Field field;
    int round = 0;
    const auto measured = [&](const std::function<void()> &press) {
        const QString text = u"saved %1 times"_s.arg(++round);
        field.setText(text);
        return timed(press, [&] { return PrivateDesktop::read(path).trimmed() == text.toUtf8(); });
    };
    const Measurement ours = [&] { return measured([] { post({virtualKeyS, EventFlag::Command, {}}); }); };
    const Measurement plain = [&] { return measured([] { Screen::pressKey(u"ctrl+s"_s); }); };
    compare(state, ours, plain);
    PrivateDesktop::clear();
}

// A window that notes its first frame.
class BareWindow : public QRasterWindow
{
public:
    bool isPainted = false;

protected:
    void paintEvent(QPaintEvent *) override { isPainted = true; }
};

// The program, with what it and the compositor tell each other in a file.
class Program
{
public:
    Program()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"ORVANE_HOME"_s, m_folder.path());
        environment.insert(u"WAYLAND_DEBUG"_s, u"client"_s);
        m_process.setProcessEnvironment(environment);
        m_process.setStandardErrorFile(m_log);
        m_process.start(QStringLiteral(ORVANE_PROGRAM), QStringList{u"--background"_s});
    }

    ~Program()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }

    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    // Until the window's first frame is with the compositor.
    double summon()
    {
        const qsizetype before = PrivateDesktop::read(m_log).size();
        const double time = timed([] { send(u"Activate"_s, {QVariantMap()}); },
                                  [&] { return hasFrame(PrivateDesktop::read(m_log).sliced(before)); });
        const auto isActive = [this] {
            const auto window = Screen::activeWindow();
            return window && window->process == m_process.processId();
        };
        require(QTest::qWaitFor(isActive, PrivateDesktop::patience), "The window gets no focus.");
        return time;
    }

    // The window may have the focus before it takes keys.
    static void hide()
    {
        constexpr int patience = 1000; // ms
        const auto isHidden = [] { return Screen::windows().isEmpty(); };
        do
            Screen::pressKey(u"ctrl+w"_s);
        while (!QTest::qWaitFor(isHidden, patience));
    }

private:
    static bool hasFrame(const QByteArray &said)
    {
        const qsizetype picture = said.indexOf(".attach(wl_buffer@");
        return picture >= 0 && said.indexOf(".commit()", picture) > 0;
    }

    static void send(const QString &method, const QVariantList &arguments)
    {
        QDBusMessage message =
            QDBusMessage::createMethodCall(LinuxProgramInstance::busName, LinuxProgramInstance::objectPath,
                                           u"org.freedesktop.Application"_s, method);
        message.setArguments(arguments);
        QDBusConnection::sessionBus().send(message);
    }

    QTemporaryDir m_folder;
    const QString m_log = m_folder.filePath(u"protocol.log"_s);
    QProcess m_process;
};

// The plain way is an empty window of Qt.
void summonToFirstFrame(benchmark::State &state)
{
    Program program;
    const auto isUp = [] {
        return QDBusConnection::sessionBus().interface()->isServiceRegistered(LinuxProgramInstance::busName);
    };
    require(QTest::qWaitFor(isUp, PrivateDesktop::patience), "The program doesn't start.");
    const Measurement ours = [&program] {
        const double time = program.summon();
        Program::hide();
        return time;
    };
    const Measurement plain = [] {
        BareWindow window;
        window.resize(720, 620);
        return timed([&window] { window.show(); }, [&window] { return window.isPainted; });
    };
    ours();
    compare(state, ours, plain);
}

BENCHMARK(observe)->Arg(30)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(rounds);
BENCHMARK_CAPTURE(typeInEditor, GTK, u"mousepad"_s, u"Mousepad"_s)->UseManualTime()->Iterations(rounds);
BENCHMARK_CAPTURE(typeInEditor, Qt, u"featherpad"_s, u"FeatherPad"_s)->UseManualTime()->Iterations(rounds);
BENCHMARK(typeInPage)->UseManualTime()->Iterations(rounds);
BENCHMARK(pressChord)->UseManualTime()->Iterations(rounds);
BENCHMARK(summonToFirstFrame)->UseManualTime()->Iterations(rounds);

} // namespace

int main(int argc, char **argv)
{
    if (!PrivateDesktop::isHere())
        qFatal("This ends every window that it finds: start it with scripts/private-desktop.");
    const QGuiApplication application(argc, argv);
    PrivateDesktop::settle();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
