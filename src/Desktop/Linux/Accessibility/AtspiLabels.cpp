// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Accessibility/AtspiLabels.h"

#include "Base/Text.h"

#include <QRegularExpression>

namespace {

// Stands in a text for a picture, a link or another object of its own.
constexpr char16_t objectMark = 0xFFFC;

// "7 7" → "7"; any other text as it is.
QString saidOnce(const QString &text)
{
    const qsizetype middle = text.size() / 2;
    if (text.size() % 2 == 0 || text.at(middle) != u' ')
        return text;
    const QString half = text.left(middle);
    return text.endsWith(half) ? half : text;
}

bool isClassName(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("^(Gtk|Adw)(Source)?[A-Z][A-Za-z]+$"));
    return pattern.match(text).hasMatch();
}

} // namespace

AtspiToolkit Atspi::toolkit(const QString &name)
{
    // GTK before 4 writes itself in small letters.
    if (name == QLatin1String("GTK"))
        return AtspiToolkit::Gtk4;
    if (name == QLatin1String("Gecko"))
        return AtspiToolkit::Gecko;
    return name == QLatin1String("Chromium") ? AtspiToolkit::Chromium : AtspiToolkit::Other;
}

QString Atspi::label(const QString &text, AtspiToolkit toolkit)
{
    QString visible = text;
    visible.remove(QChar(objectMark));
    const QString tidy = Text::trimmed(Text::cleaned(visible));
    if (toolkit != AtspiToolkit::Gtk4)
        return tidy;
    return isClassName(tidy) ? QString() : saidOnce(tidy);
}
