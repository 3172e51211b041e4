// SPDX-License-Identifier: Apache-2.0
#include "ContentView/ViewModels/DialogViewModel.h"

#include "Base/Text.h"
#include "ContentView/ViewModels/ShownText.h"

#include <algorithm>

namespace {

QStringList shownLines(const QStringList &texts)
{
    QStringList lines;
    for (const QString &text : texts)
        lines.append(ShownText::line(text));
    return lines;
}

} // namespace

DialogViewModel::DialogViewModel(Dialogs &dialogs, QObject *parent) : QObject(parent), m_dialogs(dialogs)
{
    connect(&dialogs, &Dialogs::pendingChanged, this, &DialogViewModel::changed);
}

QString DialogViewModel::title() const
{
    return ShownText::line(shown().title);
}

QString DialogViewModel::text() const
{
    return ShownText::lines(shown().text);
}

QString DialogViewModel::message() const
{
    return ShownText::lines(shown().message);
}

QStringList DialogViewModel::buttons() const
{
    return shownLines(shown().buttons);
}

QStringList DialogViewModel::items() const
{
    return shownLines(shown().items.value_or(QStringList()));
}

void DialogViewModel::press(int button, const QString &typed, QList<int> chosen)
{
    std::sort(chosen.begin(), chosen.end());
    m_dialogs.answer({button, typed, chosen});
}
