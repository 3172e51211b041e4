// SPDX-License-Identifier: Apache-2.0
// Opening, focusing and quitting.
#include "applications/matrix/MatrixTest.h"

#include "applications/matrix/MatrixDesktop.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Pages respond to F9, so that tests can detect when a page receives keys.
const QString probe = u"<script>addEventListener('keydown', event => {"
                      "if (event.key === 'F9') { event.preventDefault(); report('awake'); } });</script>"_s;

const QString page =
    u"<p>Zebra</p><button onclick=\"report('Zebra crossing')\">Zebra crossing</button>"
    "<button onclick=\"report('Zebra')\">Zebra</button>"
    "<select aria-label='Fruit' onchange='report(this.value)'><option>Apple<option>Pear</select>"
    "<button onclick=\"open('/second', '', 'width=400,height=300')\">Open another window</button>"
    "<textarea id='area' rows='9' cols='80' autofocus oninput='report(this.value)'></textarea>"
    // The browser's prompt blocks the page, so this report must not wait for an earlier one.
    "<script>addEventListener('beforeunload', event => {"
    "if (area.value) { navigator.sendBeacon('/report', 'leaving');"
    "event.preventDefault(); event.returnValue = true; } });</script>"_s;

const QString keysPage = u"<textarea autofocus></textarea><script>const keys = [];"
                         "addEventListener('keydown', event => {"
                         "if (['Control', 'Alt', 'Shift', 'F9'].includes(event.key)) return;"
                         "event.preventDefault();"
                         "keys.push((event.ctrlKey ? 'Ctrl+' : '') + (event.altKey ? 'Alt+' : '') +"
                         "(event.shiftKey ? 'Shift+' : '') + event.code);"
                         "report(keys.join('\\n')); });</script>"_s;

} // namespace

void MatrixTest::initTestCase_data()
{
    QTest::addColumn<QString>("heading");
    for (const MatrixApplication &application : MatrixApplications::all())
        QTest::newRow(qPrintable(application.heading)) << application.heading;
}

void MatrixTest::init()
{
    QFETCH_GLOBAL(QString, heading);
    if (!m_site) {
        m_site = std::make_unique<LocalSite>();
        m_site->setPage(u"/matrix"_s, u"Matrix page"_s, probe + page);
        m_site->setPage(u"/keys"_s, u"Keys page"_s, probe + keysPage);
        m_site->setPage(u"/second"_s, u"Second page"_s,
                        u"<button onclick=\"report('The bell rang')\">Ring the bell</button>"_s);
        MatrixDesktop::prepare(m_site->port());
    }
    const QList<MatrixApplication> all = MatrixApplications::all();
    m_application = *std::ranges::find(all, heading, &MatrixApplication::heading);
    m_document = PrivateDesktop::home(u"Documents/letter.txt"_s);
    PrivateDesktop::write(m_document, "");
    m_site->clearReport();
}

std::optional<MatrixCell> MatrixTest::begin(MatrixAction action)
{
    if (m_application.cannot.contains(action) ||
        (action == MatrixAction::Screenshot && !PrivateDesktop::takesPictures()))
        return std::nullopt;
    return std::optional<MatrixCell>(std::in_place, m_report, m_application.heading, action);
}

bool MatrixTest::start()
{
    switch (m_application.kind) {
    case Kind::Editor:
        return startWith({m_document}, m_application.startTitle) && takesKeysInDocument();
    case Kind::FileManager:
        return startWith({PrivateDesktop::home(u"Downloads"_s)}, m_application.startTitle);
    case Kind::Browser:
        return startWith({m_site->address(u"/matrix"_s)}, m_application.startTitle) && takesKeysInPage();
    case Kind::Terminal:
        break;
    }
    return startWith({}, m_application.startTitle);
}

bool MatrixTest::startWith(const QStringList &arguments, const QString &title)
{
    return PrivateDesktop::open(m_application.program, m_application.arguments + arguments,
                                m_application.windowClass) &&
           QTest::qWaitFor([&] { return showsTitle(title); }, PrivateDesktop::patience);
}

bool MatrixTest::takesKeysInDocument()
{
    const auto isSaved = [this] { return !PrivateDesktop::read(m_document).isEmpty(); };
    const auto saves = [&] {
        Screen::pressKey(u"x"_s);
        Screen::pressKey(u"ctrl+s"_s);
        return QTest::qWaitFor(isSaved, answerTime);
    };
    // The file exists shortly before the editor clears its modified state; after answering many calls, it has
    // done so.
    const bool hasSaved = QTest::qWaitFor(saves, PrivateDesktop::patience);
    perform("read_ui");
    return hasSaved;
}

bool MatrixTest::takesKeysInPage() const
{
    const auto isAwake = [this] { return m_site->report() == "awake"_L1; };
    const auto answers = [&] {
        Screen::pressKey(u"F9"_s);
        return QTest::qWaitFor(isAwake, answerTime);
    };
    return QTest::qWaitFor(answers, PrivateDesktop::patience);
}

bool MatrixTest::showsTitle(const QString &part) const
{
    const auto windows = Screen::windowsOf(m_application.windowClass);
    return std::ranges::any_of(windows,
                               [&](const ScreenWindow &window) { return window.title.contains(part); });
}

void MatrixTest::opensByItsNames()
{
    const QList<std::pair<MatrixAction, QString>> names{{MatrixAction::OpenByName, m_application.name},
                                                        {MatrixAction::OpenByPart, m_application.part},
                                                        {MatrixAction::OpenByAlias, m_application.alias},
                                                        {MatrixAction::OpenByRole, m_application.role}};
    MatrixDesktop::makeDefault(m_application.entry, m_application.roleTypes);
    for (const auto &[action, name] : names) {
        const auto cell = begin(action);
        if (!cell)
            continue;
        verifyOpening(name);
        QVERIFY2(PrivateDesktop::clear(), qPrintable(Screen::described()));
        if (QTest::currentTestFailed())
            return;
    }
}

void MatrixTest::verifyOpening(const QString &name)
{
    const Outcome outcome = perform("open_app", {{"app", name}});
    VERIFY_EFFECT(Screen::activeClass().compare(m_application.windowClass, Qt::CaseInsensitive) == 0,
                  outcome);
    QCOMPARE(outcome.line, u"%1 is now frontmost."_s.arg(m_application.name));
    QVERIFY(!outcome.hasFailed);
}

void MatrixTest::comesForwardWhenItRuns()
{
    const auto cell = begin(MatrixAction::Focus);
    QVERIFY(start());
    const bool isFeatherPad = m_application.program == "featherpad"_L1;
    QVERIFY(PrivateDesktop::open(isFeatherPad ? u"mousepad"_s : u"featherpad"_s, {},
                                 isFeatherPad ? u"Mousepad"_s : u"FeatherPad"_s));
    const Outcome outcome = perform("focus_app", {{"app", m_application.name}});
    VERIFY_EFFECT(Screen::activeClass() == m_application.windowClass, outcome);
    QCOMPARE(Screen::windows().size(), 2); // it wasn't started twice
}

void MatrixTest::quitsWithoutUnsavedWork()
{
    const auto cell = begin(MatrixAction::Quit);
    QVERIFY(start());
    const qint64 process = Screen::windowsOf(m_application.windowClass).first().process;
    const Outcome outcome = perform("quit_app", {{"app", m_application.name}});
    VERIFY_EFFECT(windowCount() == 0 && !PrivateDesktop::isRunning(process), outcome);
    QVERIFY2(!outcome.hasFailed, qPrintable(outcome.line));
}

void MatrixTest::asksBeforeUnsavedWorkIsLost()
{
    const auto cell = begin(MatrixAction::QuitUnsaved);
    if (!cell)
        return;
    QVERIFY(start());
    const bool isTerminal = m_application.kind == Kind::Terminal;
    const QString work = isTerminal ? u"sleep 4321\n"_s : u"not saved yet"_s;
    const Outcome typed = perform("type_text", {{"text", work}});
    QVERIFY2(!typed.hasFailed, qPrintable(typed.line));
    if (isTerminal)
        VERIFY_EFFECT(!PrivateDesktop::processesWith("sleep 4321").isEmpty(), typed);
    if (m_application.kind == Kind::Browser) {
        VERIFY_EFFECT(m_site->report() == work, typed);
        // Browsers only ask for pages in which the user has pressed a key; an input method's text counts for
        // nothing.
        Screen::pressKey(u"Right"_s);
    }

    const Outcome outcome = perform("quit_app", {{"app", m_application.name}});
    // A browser prompts inside its window, editors in a dialog.
    if (m_application.kind == Kind::Browser)
        VERIFY_EFFECT(m_site->report() == "leaving"_L1 && windowCount() == 1, outcome);
    else
        VERIFY_EFFECT(windowCount() == 2, outcome);
    QCOMPARE(outcome.line,
             u"Asked %1 to quit (it may be waiting on a save prompt)."_s.arg(m_application.name));
}

// The new tab changes the title; closing it restores the title.
void MatrixTest::opensANewTab()
{
    const auto cell = begin(MatrixAction::NewTab);
    if (!cell)
        return;
    QVERIFY(start());
    QVERIFY(PrivateDesktop::open(u"featherpad"_s, {}, u"FeatherPad"_s));
    const Outcome outcome = perform("new_tab", {{"app", m_application.name}});
    QCOMPARE(outcome.line, u"Opened a new tab."_s);
    QCOMPARE(Screen::activeClass(), m_application.windowClass);
    if (!m_application.keyInNewTab.isEmpty())
        Screen::pressKey(m_application.keyInNewTab);
    VERIFY_EFFECT(!showsTitle(m_application.startTitle), outcome);
    QCOMPARE(windowCount(), 1);
    Screen::pressKey(u"ctrl+w"_s);
    VERIFY_EFFECT(showsTitle(m_application.startTitle), outcome);
}

QTEST_MAIN(MatrixTest)
