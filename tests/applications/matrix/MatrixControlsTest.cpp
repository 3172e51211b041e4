// SPDX-License-Identifier: Apache-2.0
// Controls, windows and screenshots.
#include "applications/matrix/MatrixTest.h"

#include <QDir>
#include <QImage>

using namespace Qt::StringLiterals;

namespace {

bool isOneColour(const QImage &picture)
{
    for (int x = 0; x < picture.width(); x += 8) {
        for (int y = 0; y < picture.height(); y += 8) {
            if (picture.pixel(x, y) != picture.pixel(0, 0))
                return false;
        }
    }
    return true;
}

} // namespace

void MatrixTest::pressesControlsByTheirLabels()
{
    QVERIFY(start());
    if (const auto cell = begin(MatrixAction::ClickPart))
        verifyClick(m_application.clickPart);
    if (QTest::currentTestFailed())
        return;
    QVERIFY(PrivateDesktop::clear());
    m_site->clearReport();
    QVERIFY(start());
    if (const auto cell = begin(MatrixAction::Click))
        verifyClick(m_application.click);
}

void MatrixTest::pressesItemsOfMenus()
{
    const QList<std::pair<MatrixAction, MatrixClick>> clicks{
        {MatrixAction::ClickClosedMenu, m_application.clickClosedMenu},
        {MatrixAction::ClickOpenMenu, m_application.clickOpenMenu}};
    for (const auto &[action, click] : clicks) {
        const auto cell = begin(action);
        if (!cell)
            continue;
        PrivateDesktop::write(m_document, "");
        m_site->clearReport();
        QVERIFY(start());
        verifyClick(click);
        QVERIFY(PrivateDesktop::clear());
        if (QTest::currentTestFailed())
            return;
    }
}

void MatrixTest::pressesControlsOfASecondWindow()
{
    const auto cell = begin(MatrixAction::ClickSecondWindow);
    QVERIFY(start());
    verifyClick(m_application.secondWindow);
    if (!QTest::currentTestFailed())
        verifyClick(m_application.clickSecondWindow);
}

void MatrixTest::verifyClick(const MatrixClick &click)
{
    if (click.effect == MatrixEffect::DocumentSaved) {
        QVERIFY(!perform("type_text", {{"text", u"Dear reader"_s}}).hasFailed);
        QVERIFY(QTest::qWaitFor([this] { return showsTitle(u"*"_s); }, PrivateDesktop::patience));
    }
    const qsizetype before = windowCount();
    if (!click.key.isEmpty())
        Screen::pressKey(click.key);
    Outcome outcome;
    for (const QString &label : click.labels) {
        // Retry: a menu just opened or a page just loaded exposes its controls with a delay.
        const auto isPressed = [&] { return !(outcome = perform("click", {{"label", label}})).hasFailed; };
        QVERIFY2(QTest::qWaitFor(isPressed, PrivateDesktop::patience), qPrintable(outcome.line));
        QCOMPARE(outcome.line, u"Clicked “%1”."_s.arg(label));
    }
    VERIFY_EFFECT(isSeen(click, before) || isSeenWhenRepeated(click), outcome);
}

// A list in a page exposes its options before it has fully opened.
bool MatrixTest::isSeenWhenRepeated(const MatrixClick &click)
{
    if (click.effect != MatrixEffect::PageReports || click.labels.size() < 2)
        return false;
    perform("click", {{"label", click.labels.last()}});
    return QTest::qWaitFor([&] { return isSeen(click, 0); }, answerTime);
}

// A new window may be there before it gets the focus.
bool MatrixTest::isNewestActive() const
{
    const auto active = Screen::activeWindow();
    const QList<ScreenWindow> windows = Screen::windowsOf(m_application.windowClass);
    return active && !windows.isEmpty() && active->identifier == windows.constLast().identifier;
}

bool MatrixTest::isSeen(const MatrixClick &click, qsizetype windowsBefore) const
{
    switch (click.effect) {
    case MatrixEffect::TitleShows:
        return showsTitle(click.text);
    case MatrixEffect::AnotherWindow:
        return windowCount() == windowsBefore + 1 && isNewestActive();
    case MatrixEffect::WindowGone:
        return windowCount() == windowsBefore - 1;
    case MatrixEffect::DocumentSaved:
        return PrivateDesktop::read(m_document).contains("Dear reader");
    case MatrixEffect::PageReports:
        return m_site->report() == click.text;
    }
    return false;
}

void MatrixTest::isReadListedAndPictured()
{
    QVERIFY(start());
    if (const auto cell = begin(MatrixAction::ReadControls)) {
        Outcome outcome;
        const auto isRead = [&] {
            outcome = perform("read_ui");
            return outcome.line.split(u" | "_s).contains(m_application.readable);
        };
        QVERIFY2(QTest::qWaitFor(isRead, PrivateDesktop::patience), qPrintable(outcome.line));
        QVERIFY(outcome.line.split(u" | "_s).size() <= 40);
    }
    if (const auto cell = begin(MatrixAction::ListWindows)) {
        const QString title = Screen::windowsOf(m_application.windowClass).first().title.trimmed();
        QCOMPARE(perform("list_windows").line.trimmed(), u"%1 — %2"_s.arg(m_application.name, title));
    }
    if (const auto cell = begin(MatrixAction::Screenshot)) {
        const QDir folder(PrivateDesktop::home(u"Pictures/"_s + m_application.program.section(u'/', -1)));
        QVERIFY(folder.mkpath(u"."_s));
        const Outcome outcome = perform("screenshot", {{"save_to", folder.path()}});
        const QStringList names = folder.entryList({u"Screenshot *.png"_s});
        QVERIFY2(names.size() == 1, qPrintable(outcome.line));
        const QImage picture(folder.filePath(names.first()));
        QCOMPARE(picture.size(), QSize(1280, 800));
        QVERIFY(!isOneColour(picture));
    }
}
