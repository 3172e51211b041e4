// SPDX-License-Identifier: Apache-2.0
#include "applications/support/X11Names.h"

#include <QHash>

using namespace Qt::StringLiterals;

QString X11Names::classOf(const QString &applicationIdentifier)
{
    static const QHash<QString, QString> classes{
        {u"mousepad"_s, u"Mousepad"_s},
        {u"featherpad"_s, u"FeatherPad"_s},
        {u"org.gnome.Calculator"_s, u"gnome-calculator"_s},
        {u"org.gnome.TextEditor"_s, u"gnome-text-editor"_s},
        {u"thunar"_s, u"Thunar"_s},
        {u"xfce4-terminal"_s, u"Xfce4-terminal"_s},
        {u"chromium"_s, u"Chromium"_s},
        {u"orvane-desktop-sample"_s, u"orvane_desktop_sample"_s},
    };
    return classes.value(applicationIdentifier, applicationIdentifier);
}

// Keys other than modifiers are named after their keysyms.
QString X11Names::keyName(const QString &name)
{
    if (name == "ctrl"_L1)
        return u"Control_L"_s;
    if (name == "shift"_L1)
        return u"Shift_L"_s;
    return name == "alt"_L1 ? u"Alt_L"_s : name;
}
