// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Toolkits.h"

#include "Base/Text.h"

#include <QRegularExpression>

#include <array>

using namespace Qt::StringLiterals;

namespace {

// The object replacement character: an embedded picture, link or other object.
constexpr char16_t objectMark = 0xFFFC;

// "7 7" → "7"; "_Retry Retry" (with a mnemonic) → "Retry"; other texts unchanged.
QString withoutRepetition(const QString &text)
{
    const QString second = text.right((text.size() - 1) / 2);
    QString first = text.chopped(second.size());
    if (!first.endsWith(u' '))
        return text;
    first.chop(1);
    if (const qsizetype key = first.indexOf(u'_'); key >= 0 && first.size() > second.size())
        first.remove(key, 1);
    return first == second ? second : text;
}

// GTK's class names, and similarly named classes derived by applications.
bool isClassName(const QString &text)
{
    static const QRegularExpression pattern(
        u"^((Gtk|Adw)(Source)?[A-Z][A-Za-z]+|([A-Z][a-z]+)+(View|Entry|Button|Label|Image))$"_s);
    return pattern.match(text).hasMatch();
}

// Removes the markup of a rich text tooltip. "<none>" is plain text in angle brackets.
QString withoutMarkup(const QString &text)
{
    static const QRegularExpression tag(u"<[^<>]*>"_s);
    if (!text.startsWith(u'<') || !text.endsWith(u'>'))
        return text;
    const QString inside = Text::trimmed(QString(text).replace(tag, u" "_s));
    return inside.isEmpty() ? text : inside;
}

} // namespace

AtspiToolkit Atspi::toolkit(const QString &name)
{
    if (name == "GTK"_L1)
        return AtspiToolkit::Gtk4;
    if (name == "gtk"_L1)
        return AtspiToolkit::Gtk3;
    if (name == "Gecko"_L1)
        return AtspiToolkit::Gecko;
    if (name == "Qt"_L1)
        return AtspiToolkit::Qt;
    return name == "Chromium"_L1 ? AtspiToolkit::Chromium : AtspiToolkit::Other;
}

QString Atspi::label(const QString &text, AtspiToolkit toolkit)
{
    QString visible = text;
    visible.remove(QChar(objectMark));
    const QString tidy = Text::trimmed(Text::cleaned(visible));
    if (toolkit == AtspiToolkit::Qt)
        return withoutMarkup(tidy);
    if (toolkit != AtspiToolkit::Gtk4)
        return tidy;
    return isClassName(tidy) ? QString() : withoutRepetition(tidy);
}

int Atspi::pressAction(const QStringList &names)
{
    // In order of preference. Browsers name an action after its effect on the current state: a checked box
    // offers "uncheck", an open list "close". Qt's menus only offer "ShowMenu".
    static constexpr std::array presses{
        "press"_L1,  "click"_L1, "activate"_L1, "toggle"_L1, "check"_L1, "open"_L1,
        "select"_L1, "jump"_L1,  "uncheck"_L1,  "switch"_L1, "close"_L1, "showmenu"_L1,
    };
    for (const QLatin1String press : presses) {
        for (int i = 0; i < names.size(); ++i) {
            if (names.at(i).compare(press, Qt::CaseInsensitive) == 0)
                return i;
        }
    }
    return -1;
}
