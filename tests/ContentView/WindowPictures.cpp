// SPDX-License-Identifier: Apache-2.0
//
// Draws the window in every state, light and dark, into PNG files. The views, view models, session and model
// manager are real; the language model and the desktop are scripted.
#include "Agent/SessionBench.h"
#include "ContentView/ViewModels/ContentViewModel.h"
#include "ContentView/Window/MainWindow.h"
#include "Support/Gate.h"

#include <QDir>
#include <QGuiApplication>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

#include <cstdio>

using namespace Qt::StringLiterals;

Q_IMPORT_QML_PLUGIN(Orvane_ContentViewPlugin)

namespace {

using ModelFile = SessionBench::ModelFile;

// One state of the window and how to reach it.
struct Scene
{
    QString name;
    ModelFile file = ModelFile::Present;
    std::function<void(SessionBench &, ContentViewModel &)> play;
    QSize size = {720, 620};
};

void waitUntil(const std::function<bool()> &isThere)
{
    if (!QTest::qWaitFor(isThere))
        qFatal("A scene cannot be played.");
}

void load(SessionBench &bench, ContentViewModel &content)
{
    content.appear();
    waitUntil([&bench] { return bench.models.state().kind == ModelManager::State::Kind::Loaded; });
}

void reportProgress(SessionBench &bench, qint64 perMille)
{
    ScriptedDownloadSession::onSessionThread(
        [&] { bench.downloads->delegate->downloadProgressed(1, perMille, 1000); });
    QCoreApplication::processEvents();
}

void install(SessionBench &bench)
{
    for (const QString &name : {u"Safari"_s, u"Mail"_s, u"TextEdit"_s, u"Finder"_s})
        bench.desktop.workspace.install(name);
}

void runTask(SessionBench &bench, const QString &task, const QStringList &replies)
{
    for (const QString &reply : replies)
        bench.engine->replies.append(reply);
    bench.runTask(task);
}

void askFor(SessionBench &bench, ContentViewModel &content, const QString &task, const QString &reply)
{
    bench.engine->replies.append(reply);
    content.setInput(task);
    content.send();
    waitUntil([&bench] { return bench.session->pending().has_value(); });
}

void showEachKindOfLine(SessionBench &bench, ContentViewModel &content)
{
    load(bench, content);
    install(bench);
    runTask(bench, u"Open TextEdit and type quarterly numbers look fine"_s,
            {openApp(u"TextEdit"_s), typeText(u"quarterly numbers look fine"_s),
             done(u"Typed “quarterly numbers look fine” in TextEdit."_s)});
    runTask(bench, u"Open Blender"_s, {openApp(u"Blender"_s), done(u"Blender is not installed."_s)});
    askFor(bench, content, u"Quit Mail"_s, quitApp(u"Mail"_s));
    content.resolve(false);
    waitUntil([&bench] { return !bench.session->isRunning(); });
}

// A script's question, which stays open.
void askQuestion(SessionBench &bench, const Dialog &dialog)
{
    static QCoro::Task<std::optional<DialogAnswer>> asking;
    asking = bench.desktop.dialogs.ask(dialog);
}

// Stopped while the model was generating.
void stopATask(SessionBench &bench, ContentViewModel &content)
{
    Gate gate;
    bench.engine->replies = {done(u"Done."_s)};
    bench.engine->beforeReply = [&gate] { return gate.passed(); };
    const qsizetype before = bench.engine->conversations.size();
    content.setInput(u"Open Safari"_s);
    content.send();
    waitUntil([&] { return bench.engine->conversations.size() > before; });
    content.stop();
    gate.open();
    waitUntil([&bench] { return !bench.session->isRunning(); });
    bench.engine->beforeReply = nullptr;
}

void showStreamedReply(SessionBench &bench, ContentViewModel &content, const std::shared_ptr<Gate> &gate)
{
    load(bench, content);
    install(bench);
    bench.engine->replies = {openApp(u"Safari"_s),
                             uR"({"action":"web_search","query":"MacBook Air","app":"Safari"})"_s};
    const auto open = std::make_shared<Gate>();
    open->open();
    const auto replies = std::make_shared<int>(0);
    bench.engine->beforeReply = [gate, open, replies] {
        const bool isFirst = ++*replies == 1;
        return (isFirst ? open : gate)->passed();
    };
    bench.session->submit(u"Open Safari and search Google for MacBook Air"_s);
    waitUntil([&bench] { return bench.engine->conversations.size() == 2; });
    bench.engine->callbacks.constLast()(uR"({"action":"web_search","query":"MacBook)"_s);
    QCoreApplication::processEvents();
}

QString longScript()
{
    QStringList lines;
    for (int i = 1; i <= 40; ++i)
        lines.append(uR"(tell application \"System Events\" to keystroke \"line %1\")"_s.arg(i));
    return uR"({"action":"applescript","script":"%1"})"_s.arg(lines.join(uR"(\n)"_s));
}

QList<Scene> scenes(const std::shared_ptr<Gate> &gate)
{
    return {
        {u"setup-download-offered"_s, ModelFile::Missing, [](SessionBench &, ContentViewModel &) {}},
        {u"setup-downloading"_s, ModelFile::Missing,
         [](SessionBench &bench, ContentViewModel &content) {
             content.setup()->download();
             reportProgress(bench, 375);
         }},
        {u"setup-ready"_s, ModelFile::Present, [](SessionBench &, ContentViewModel &) {}},
        {u"setup-loading"_s, ModelFile::Present,
         [gate](SessionBench &bench, ContentViewModel &content) {
             bench.engine->beforeLoaded = [gate] { return gate->passed(); };
             content.appear();
         }},
        {u"setup-failed"_s, ModelFile::Present,
         [](SessionBench &bench, ContentViewModel &content) {
             bench.engine->loadError = InferenceError(InferenceError::Code::LoadFailed);
             content.appear();
             waitUntil([&content] { return content.setup()->step() == SetupViewModel::Failed; });
         }},
        {u"empty"_s, ModelFile::Present,
         [](SessionBench &bench, ContentViewModel &content) { load(bench, content); }},
        {u"running"_s, ModelFile::Present,
         [gate](SessionBench &bench, ContentViewModel &content) { showStreamedReply(bench, content, gate); }},
        {u"finished"_s, ModelFile::Present,
         [](SessionBench &bench, ContentViewModel &content) {
             showEachKindOfLine(bench, content);
             stopATask(bench, content);
         }},
        {u"confirmation"_s, ModelFile::Present,
         [](SessionBench &bench, ContentViewModel &content) {
             showEachKindOfLine(bench, content);
             askFor(bench, content, u"Quit Safari"_s, quitApp(u"Safari"_s));
         }},
        {u"confirmation-marks"_s, ModelFile::Present,
         [](SessionBench &bench, ContentViewModel &content) {
             showEachKindOfLine(bench, content);
             askFor(bench, content, u"Quit שלום"_s, quitApp(u"שלום\u202E\u200B עולם (12)"_s));
         }},
        {u"confirmation-script"_s,
         ModelFile::Present,
         [](SessionBench &bench, ContentViewModel &content) {
             load(bench, content);
             askFor(bench, content, u"Run my script"_s, longScript());
         },
         {640, 460}},
        {u"dialog-text"_s, ModelFile::Present,
         [](SessionBench &bench, ContentViewModel &content) {
             load(bench, content);
             Dialog dialog;
             dialog.title = u"Invoices"_s;
             dialog.text = u"What shall the folder be called?"_s;
             dialog.buttons = {u"Cancel"_s, u"OK"_s};
             dialog.defaultButton = 1;
             dialog.answer = u"Invoices 2026"_s;
             askQuestion(bench, dialog);
         }},
        {u"dialog-list"_s, ModelFile::Present,
         [](SessionBench &bench, ContentViewModel &content) {
             load(bench, content);
             Dialog dialog;
             dialog.text = u"Please make your selection:"_s;
             dialog.buttons = {u"Cancel"_s, u"OK"_s};
             dialog.defaultButton = 1;
             dialog.items = QStringList{u"Downloads"_s, u"Documents"_s, u"Pictures"_s, u"Music"_s};
             dialog.chosen = {1, 2};
             dialog.takesSeveral = true;
             askQuestion(bench, dialog);
         }},
        {u"banner"_s, ModelFile::Present,
         [](SessionBench &bench, ContentViewModel &content) {
             load(bench, content);
             bench.desktop.accessibility.trusted = false;
             content.becameActive();
             waitUntil([&content] { return !content.trusted(); });
         }},
    };
}

bool draw(const Scene &scene, bool dark, const QString &folder)
{
    SessionBench bench(scene.file);
    ContentViewModel content(bench.models, *bench.session, bench.desktop.services());
    QQmlEngine engine;
    const std::unique_ptr<QQuickWindow> window = MainWindow::make(
        engine, content,
        {{u"dark"_s, dark}, {u"width"_s, scene.size.width()}, {u"height"_s, scene.size.height()}});
    if (!window)
        return false;
    window->show();
    window->requestActivate();
    scene.play(bench, content);
    // Let animations finish; this is a picture, not a test.
    QTest::qWait(600);
    const QString file = u"%1/%2-%3.png"_s.arg(folder, scene.name, dark ? u"dark"_s : u"light"_s);
    const bool saved = window->grabWindow().save(file);
    std::printf("%s\n", qPrintable(file));
    return saved;
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    const QString folder = QCoreApplication::arguments().value(1);
    if (folder.isEmpty() || folder.startsWith(u'-') || !QDir().mkpath(folder)) {
        std::fprintf(stderr, "Usage: window-pictures FOLDER\n");
        return 64;
    }
    for (const bool dark : {false, true}) {
        const auto gate = std::make_shared<Gate>();
        for (const Scene &scene : scenes(gate))
            if (!draw(scene, dark, folder))
                return 1;
    }
    return 0;
}
