// SPDX-License-Identifier: Apache-2.0
#include "applications/matrix/MatrixReport.h"

#include <QTest>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

struct Part
{
    QString title;
    QList<MatrixAction> actions;
};

QList<Part> parts()
{
    using enum MatrixAction;
    return {
        {u"Applications"_s,
         {OpenByName, OpenByPart, OpenByAlias, OpenByRole, Focus, Quit, QuitUnsaved, NewTab}},
        {u"Text and keys, windows and pictures"_s,
         {TypeText, PressKey, ReadControls, ListWindows, Screenshot}},
        {u"Controls"_s, {Click, ClickPart, ClickClosedMenu, ClickOpenMenu, ClickSecondWindow}},
        {u"The web"_s, {OpenAddress, OpenAddressNamed, SearchWeb, SearchWebNamed}},
    };
}

QString titleOf(MatrixAction action)
{
    static const QHash<MatrixAction, QString> titles{
        {MatrixAction::OpenByName, u"open_app: its name"_s},
        {MatrixAction::OpenByPart, u"a part of it"_s},
        {MatrixAction::OpenByAlias, u"an alias"_s},
        {MatrixAction::OpenByRole, u"its role"_s},
        {MatrixAction::Focus, u"focus_app"_s},
        {MatrixAction::Quit, u"quit_app"_s},
        {MatrixAction::QuitUnsaved, u"with unsaved work"_s},
        {MatrixAction::NewTab, u"new_tab"_s},
        {MatrixAction::TypeText, u"type_text"_s},
        {MatrixAction::PressKey, u"press_key"_s},
        {MatrixAction::Click, u"click: a label"_s},
        {MatrixAction::ClickPart, u"a part of it"_s},
        {MatrixAction::ClickClosedMenu, u"in a closed menu"_s},
        {MatrixAction::ClickOpenMenu, u"in an open menu"_s},
        {MatrixAction::ClickSecondWindow, u"in a second window"_s},
        {MatrixAction::ReadControls, u"read_ui"_s},
        {MatrixAction::ListWindows, u"list_windows"_s},
        {MatrixAction::Screenshot, u"screenshot"_s},
        {MatrixAction::OpenAddress, u"open_url: default"_s},
        {MatrixAction::OpenAddressNamed, u"by name"_s},
        {MatrixAction::SearchWeb, u"web_search: default"_s},
        {MatrixAction::SearchWebNamed, u"by name"_s},
    };
    return titles.value(action);
}

// The text's index, after it has been added if necessary.
qsizetype placeIn(QStringList &texts, const QString &text)
{
    if (!texts.contains(text))
        texts << text;
    return texts.indexOf(text);
}

QChar letter(qsizetype index)
{
    return QChar(u'a' + static_cast<char16_t>(index));
}

QString line(const QStringList &cells)
{
    return u"| "_s + cells.join(u" | "_s) + u" |\n"_s;
}

} // namespace

MatrixReport::~MatrixReport()
{
    if (m_verdicts.isEmpty())
        return;
    QString text = u"\n"_s;
    for (const Part &part : parts())
        text += table(part.title, part.actions);
    for (qsizetype index = 0; index < m_reasons.size(); ++index)
        text += u"%1. %2\n"_s.arg(index + 1).arg(m_reasons.at(index));
    for (qsizetype index = 0; index < m_limits.size(); ++index)
        text += u"%1. %2\n"_s.arg(letter(index)).arg(m_limits.at(index));
    std::fputs(text.toUtf8().constData(), stdout);
    std::fflush(stdout);
}

void MatrixReport::set(const QString &heading, MatrixAction action, Verdict verdict)
{
    m_verdicts.insert({heading, action}, verdict);
}

QString MatrixReport::table(const QString &title, const QList<MatrixAction> &actions)
{
    QStringList titles{title};
    QStringList rule{u"---"_s};
    for (const MatrixAction action : actions) {
        titles << titleOf(action);
        rule << u"---"_s;
    }
    QString text = line(titles) + line(rule);
    for (const MatrixApplication &application : MatrixApplications::all()) {
        const auto isPossible = [&](MatrixAction action) { return !application.cannot.contains(action); };
        if (std::ranges::none_of(actions, isPossible))
            continue; // nothing to compare
        QStringList cells{application.heading};
        for (const MatrixAction action : actions)
            cells << cell(application, action);
        text += line(cells);
    }
    return text + u'\n';
}

QString MatrixReport::cell(const MatrixApplication &application, MatrixAction action)
{
    const QString reason = application.cannot.value(action);
    if (!reason.isEmpty())
        return u"cannot (%1)"_s.arg(placeIn(m_reasons, reason) + 1);
    switch (m_verdicts.value({application.heading, action}, Verdict::NotRun)) {
    case Verdict::NotRun:
        return u"not run"_s;
    case Verdict::Failed:
        return u"FAILED"_s;
    case Verdict::Works:
        break;
    }
    const QString limit = application.limits.value(action);
    return limit.isEmpty() ? u"works"_s : u"works (%1)"_s.arg(letter(placeIn(m_limits, limit)));
}

MatrixCell::MatrixCell(MatrixReport &report, const QString &heading, MatrixAction action)
    : m_report(report), m_heading(heading), m_action(action)
{
    m_report.set(m_heading, m_action, MatrixReport::Verdict::Failed);
}

MatrixCell::~MatrixCell()
{
    if (!QTest::currentTestFailed())
        m_report.set(m_heading, m_action, MatrixReport::Verdict::Works);
}
