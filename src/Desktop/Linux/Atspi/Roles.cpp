// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Roles.h"

#include <array>

QString Atspi::axRole(AtspiRole role, AtspiRole parent)
{
    switch (role) {
    case AtspiRole::PushButton:
    case AtspiRole::ToggleButton:
        return QStringLiteral("AXButton");
    case AtspiRole::MenuItem:
    case AtspiRole::CheckMenuItem:
    case AtspiRole::RadioMenuItem:
        return QStringLiteral("AXMenuItem");
    case AtspiRole::Menu:
        return parent == AtspiRole::MenuBar ? QStringLiteral("AXMenuBarItem") : QString();
    case AtspiRole::RadioButton:
        return QStringLiteral("AXRadioButton");
    case AtspiRole::CheckBox:
    case AtspiRole::Switch:
        return QStringLiteral("AXCheckBox");
    case AtspiRole::Link:
        return QStringLiteral("AXLink");
    case AtspiRole::PageTab:
        return QStringLiteral("AXTab");
    case AtspiRole::ComboBox:
        return QStringLiteral("AXPopUpButton");
    case AtspiRole::Entry:
    case AtspiRole::PasswordText:
    case AtspiRole::Text:
    case AtspiRole::SpinButton:
        return QStringLiteral("AXTextField");
    case AtspiRole::Label:
    case AtspiRole::Static:
    case AtspiRole::Heading:
    case AtspiRole::Paragraph:
        return QStringLiteral("AXStaticText");
    case AtspiRole::Invalid:
    case AtspiRole::MenuBar:
    case AtspiRole::DocumentWeb:
        break;
    }
    return {};
}

int Atspi::pressAction(const QStringList &names)
{
    // Most telling first. Browsers name the action after what it does to the control's present state, so a
    // ticked box offers "uncheck" and an open list "close". Qt's menus only offer to show themselves.
    static constexpr std::array presses{
        QLatin1String("press"),  QLatin1String("click"), QLatin1String("activate"),
        QLatin1String("toggle"), QLatin1String("check"), QLatin1String("open"),
        QLatin1String("select"), QLatin1String("jump"),  QLatin1String("uncheck"),
        QLatin1String("switch"), QLatin1String("close"), QLatin1String("showmenu"),
    };
    for (const QLatin1String press : presses) {
        for (int i = 0; i < names.size(); ++i) {
            if (names.at(i).compare(press, Qt::CaseInsensitive) == 0)
                return i;
        }
    }
    return -1;
}
